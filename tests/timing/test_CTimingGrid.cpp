#include "GridOpsFixture.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

using TG = CTimingGrid;

class TimingGridTest : public GridOpsTest
{
protected:
    CSpreadCellType TypeOf(int col)
    {
        g().setRow(1);
        g().setCol(col);
        return g().CellType();
    }
};

TEST_F(TimingGridTest, SixteenColumnsWithCatalogueTitles)
{
    ASSERT_EQ(g().MaxCols(), 16);
    QStringList titles;
    for (int col = 1; col <= 16; ++col)
        titles << g().headerData(col - 1, Qt::Horizontal).toString();
    EXPECT_EQ(titles,
        QString::fromUtf8("行类型 层次 开始时间 结束时间 字体 说话人 左留空 右留空 垂直留空 效果 开始点 "
                          "结束点 延迟 淡出范围 对白 序列号")
            .split(QLatin1Char(' ')));
}

TEST_F(TimingGridTest, ColumnKindsRangesAndLists)
{
    t.ResetGrid();
    EXPECT_EQ(
        TypeOf(TG::ColLineType).ListItems, QString::fromUtf8("对白 注释 图片 声音 动画 命令").split(' '));
    EXPECT_EQ(g().ListItems(), QString::fromUtf8("对白\t注释\t图片\t声音\t动画\t命令"));
    EXPECT_EQ(TypeOf(TG::ColLayer), CSpreadCellType::IntegerType(0, 9999));
    EXPECT_EQ(TypeOf(TG::ColStartTime).Kind, SpreadCellKind::Text);
    EXPECT_EQ(TypeOf(TG::ColEndTime).Default, "0:00:00.00");
    EXPECT_EQ(TypeOf(TG::ColStyle).ListItems, QStringList { "Default" });
    EXPECT_EQ(TypeOf(TG::ColOwner).ListItems, QStringList { "NTP" });
    for (int col : { TG::ColMarginL, TG::ColMarginR, TG::ColMarginV, TG::ColEffectY1, TG::ColEffectY2,
             TG::ColEffectFade })
        EXPECT_EQ(TypeOf(col), CSpreadCellType::IntegerType(-9999, 9999)) << col;
    EXPECT_EQ(TypeOf(TG::ColEffect).ListItems,
        QString::fromUtf8("普通对白 卡拉OK 从下到上滚动 从上到下滚动 从右到左滚动 从左到右滚动").split(' '));
    const CSpreadCellType delay = TypeOf(TG::ColEffectDelay);
    EXPECT_EQ(delay.Min, 0);
    EXPECT_EQ(delay.Max, 100);
    EXPECT_EQ(delay.Default, "15");
    const CSpreadCellType dialog = TypeOf(TG::ColDialog);
    EXPECT_EQ(dialog.MaxLength, 10000);
    EXPECT_TRUE(dialog.MultiLine);
    EXPECT_EQ(TypeOf(TG::ColSerialNo).Max, 99999);

    // A spin cell refuses what the user types out of its range.
    EXPECT_FALSE(g().setData(g().index(0, TG::ColEffectDelay - 1), QStringLiteral("101")));
    EXPECT_TRUE(g().setData(g().index(0, TG::ColMarginL - 1), QStringLiteral("-9999")));
}

TEST_F(TimingGridTest, OnlyTimesAndDialogueShownAtStart)
{
    for (int col = 1; col <= 16; ++col) {
        const bool shown = col == 3 || col == 4 || col == 15;
        EXPECT_EQ(g().GetColHidden(col), !shown) << col;
    }
}

TEST_F(TimingGridTest, ResetGridMakesTwoBlankRowsWithSerialsAndPreviewLines)
{
    t.ResetGrid();
    ASSERT_EQ(g().MaxRows(), 2);
    EXPECT_EQ(g().GetText(TG::ColSerialNo, 1), "1");
    EXPECT_EQ(g().GetText(TG::ColSerialNo, 2), "2");
    EXPECT_EQ(hooks.Calls, (QStringList { "clear", "create 1 #1", "create 2 #2" }));
    for (int row = 1; row <= 2; ++row) {
        EXPECT_TRUE(t.IsRowBlank(row));
        EXPECT_FALSE(t.RowChanged(row));
        EXPECT_FALSE(t.RowQuestion(row));
        EXPECT_FALSE(t.RowCheckDisabled(row));
        EXPECT_EQ(g().GetText(TG::ColLineType, row), QString::fromUtf8("对白"));
        EXPECT_EQ(g().GetText(TG::ColStyle, row), "Default");
        EXPECT_EQ(g().GetText(TG::ColOwner, row), "NTP");
        EXPECT_EQ(g().GetText(TG::ColEffect, row), QString::fromUtf8("普通对白"));
    }

    // A second reset empties everything, and serials keep growing.
    g().SetText(TG::ColDialog, 1, QStringLiteral("text"));
    t.AppendRow();
    hooks.Calls.clear();
    t.ResetGrid();
    EXPECT_EQ(g().MaxRows(), 2);
    EXPECT_EQ(g().GetText(TG::ColDialog, 1), "");
    EXPECT_EQ(hooks.Calls, (QStringList { "clear", "create 1 #4", "create 2 #5" }));
}

TEST_F(TimingGridTest, ResetGridInAnotherOpenModeKeepsTheRows)
{
    t.ResetGrid();
    g().SetText(TG::ColDialog, 2, QStringLiteral("kept"));
    hooks.Calls.clear();
    t.ResetGrid(1);
    EXPECT_EQ(g().MaxRows(), 2);
    EXPECT_EQ(g().GetText(TG::ColDialog, 2), "kept");
    EXPECT_TRUE(hooks.Calls.isEmpty());
}

TEST_F(TimingGridTest, AppendRowKeepsTheCurrentCell)
{
    t.ResetGrid();
    g().setRow(1);
    g().setCol(TG::ColDialog);
    g().setRow2(2);
    g().setCol2(4);
    hooks.Calls.clear();
    t.AppendRow();
    EXPECT_EQ(g().MaxRows(), 3);
    EXPECT_EQ(g().Row(), 1);
    EXPECT_EQ(g().Col(), TG::ColDialog);
    EXPECT_EQ(g().Row2(), 2);
    EXPECT_EQ(g().Col2(), 4);
    EXPECT_EQ(t.RowSerial(3), 3);
    EXPECT_EQ(hooks.Calls, QStringList { "create 3 #3" });
    for (int col = 1; col <= 16; ++col)
        EXPECT_EQ(g().GetForeColor(col, 3), TG::UnchangedForeColor) << col;
    EXPECT_EQ(g().GetBackColor(TG::ColDialog, 3), TG::NoQuestionBackColor);
}

TEST_F(TimingGridTest, RemoveLastRowDropsItsPreviewLine)
{
    t.ResetGrid();
    t.AppendRow();
    hooks.Calls.clear();
    t.RemoveLastRow();
    EXPECT_EQ(g().MaxRows(), 2);
    EXPECT_EQ(hooks.Calls, QStringList { "delete 3 #3" });
    t.RemoveLastRow();
    t.RemoveLastRow();
    t.RemoveLastRow(); // on an empty grid: nothing
    EXPECT_EQ(g().MaxRows(), 0);
    EXPECT_EQ(hooks.Calls.size(), 3);
}

TEST_F(TimingGridTest, BlankRowsLookOnlyAtTimesAndDialogue)
{
    t.ResetGrid();
    g().SetText(TG::ColStartTime, 1, QStringLiteral("   "));
    g().SetText(TG::ColDialog, 1, QStringLiteral(" "));
    g().SetText(TG::ColMarginL, 1, QStringLiteral("12"));
    EXPECT_TRUE(t.IsRowBlank(1));
    g().SetText(TG::ColDialog, 2, QStringLiteral("only words"));
    EXPECT_FALSE(t.IsRowBlank(2));
    g().SetText(TG::ColDialog, 2, QString());
    g().SetText(TG::ColEndTime, 2, QStringLiteral("0:00:01.00"));
    EXPECT_FALSE(t.IsRowBlank(2));
    g().SetText(TG::ColDialog, 1, QStringLiteral("\t")); // a tab is not a blank
    EXPECT_FALSE(t.IsRowBlank(1));
}

TEST_F(TimingGridTest, FlagsAreKeptAsCellAppearance)
{
    t.ResetGrid();
    t.AppendRow();
    g().setRow(2);
    g().setCol(7);
    t.SetRowChanged(2, true);
    t.SetRowQuestion(3, true);
    t.SetRowCheckDisabled(1, true);
    EXPECT_EQ(g().Row(), 2); // the current cell is kept
    EXPECT_EQ(g().Col(), 7);
    for (int col = 1; col <= 16; ++col)
        EXPECT_EQ(g().GetForeColor(col, 2), 255u) << col;
    EXPECT_EQ(g().GetBackColor(TG::ColDialog, 3), 0xFFFFC0u);
    EXPECT_TRUE(g().GetCellMark(TG::ColStartTime, 1));
    EXPECT_TRUE(g().GetCellMark(TG::ColEndTime, 1));
    EXPECT_TRUE(t.RowChanged(2));
    EXPECT_FALSE(t.RowChanged(1));
    EXPECT_TRUE(t.RowQuestion(3));
    EXPECT_FALSE(t.RowQuestion(2));
    EXPECT_TRUE(t.RowCheckDisabled(1));

    t.SetRowChanged(2, false);
    EXPECT_EQ(g().GetForeColor(1, 2), 0x80000012u);
    EXPECT_FALSE(t.RowChanged(2));
    t.SetRowQuestion(3, false);
    EXPECT_EQ(g().GetBackColor(TG::ColDialog, 3), 0x80000005u);

    // Read back from any one cell, as the grid may have been painted piecemeal.
    g().setRow(1);
    g().setCol(9);
    g().setForeColor(255);
    EXPECT_TRUE(t.RowChanged(1));
    g().setCol(TG::ColEndTime);
    g().setCellMark(false);
    EXPECT_TRUE(t.RowCheckDisabled(1));
    g().setCol(TG::ColStartTime);
    g().setCellMark(false);
    EXPECT_FALSE(t.RowCheckDisabled(1));

    t.SetRowChanged(9, true); // beyond the grid: nothing
    EXPECT_FALSE(t.RowChanged(9));
}

TEST_F(TimingGridTest, HidingTheActiveColumnMovesTheCursorToTheLabel)
{
    t.ResetGrid();
    t.ShowColumn(TG::ColStyle);
    g().setRow(2);
    g().setCol(TG::ColStyle);
    g().ActivateCell();
    g().setRow(1);
    g().setCol(3);
    t.HideColumn(TG::ColStyle);
    EXPECT_TRUE(g().GetColHidden(TG::ColStyle));
    EXPECT_EQ(g().ActiveRow(), 2);
    EXPECT_EQ(g().ActiveCol(), 0);
    EXPECT_EQ(g().Row(), 1);
    EXPECT_EQ(g().Col(), 3);

    g().setRow(2);
    g().setCol(3);
    g().ActivateCell();
    t.HideColumn(TG::ColDialog); // another column: the cursor stays
    EXPECT_EQ(g().ActiveCol(), 3);
}

TEST_F(TimingGridTest, EffectColumnTakesItsParametersAlong)
{
    t.ShowColumn(TG::ColEffect);
    for (int col = TG::ColEffect; col <= TG::ColEffectFade; ++col)
        EXPECT_FALSE(g().GetColHidden(col)) << col;
    EXPECT_TRUE(g().GetColHidden(TG::ColMarginV));
    t.HideColumn(TG::ColEffect);
    for (int col = TG::ColEffect; col <= TG::ColEffectFade; ++col)
        EXPECT_TRUE(g().GetColHidden(col)) << col;
    EXPECT_FALSE(g().GetColHidden(TG::ColDialog));
}

class ColumnViewTest : public TimingGridTest
{
protected:
    CTimingColumnView &view() { return t.ColumnView(); }
    QStringList Marks()
    {
        QStringList marks;
        for (int item = 1; item <= 15; ++item)
            marks << view().ItemText(item).left(2);
        return marks;
    }
    QString Shown()
    {
        QString shown;
        for (int col = 1; col <= 15; ++col)
            shown += g().GetColHidden(col) ? QLatin1Char('.') : QLatin1Char('x');
        return shown;
    }
};

TEST_F(ColumnViewTest, ItemsInMenuOrder)
{
    EXPECT_EQ(view().ItemKey(1), "SSALineType");
    EXPECT_EQ(view().ItemKey(15), "SSAText");
    EXPECT_EQ(view().ItemText(1), QString::fromUtf8("☆ 行类型"));
    EXPECT_EQ(view().ItemText(3), QString::fromUtf8("★ 开始时间"));
    EXPECT_EQ(view().ItemText(11), QString::fromUtf8("--效果(开始点)"));
    EXPECT_EQ(view().ItemText(15), QString::fromUtf8("★ 对白"));
    EXPECT_EQ(CTimingColumnView::ItemColumn(QStringLiteral("SSAName")), 6);
    EXPECT_EQ(CTimingColumnView::ItemColumn(QStringLiteral("SSAEffectDelay")), 0);
    EXPECT_EQ(CTimingColumnView::ItemColumn(QStringLiteral("nonsense")), 0);
    EXPECT_EQ(view().ItemText(0), "");
}

TEST_F(ColumnViewTest, PickingAnItemSwapsItsStarAndTheColumn)
{
    view().PickItem(QStringLiteral("SSAStyle"));
    EXPECT_EQ(view().ItemText(5), QString::fromUtf8("★ 字体"));
    EXPECT_FALSE(g().GetColHidden(TG::ColStyle));
    view().PickItem(5);
    EXPECT_EQ(view().ItemText(5), QString::fromUtf8("☆ 字体"));
    EXPECT_TRUE(g().GetColHidden(TG::ColStyle));

    view().PickItem(QStringLiteral("SSAEffectY1")); // no star, no column
    EXPECT_EQ(view().ItemText(11), QString::fromUtf8("--效果(开始点)"));
    EXPECT_TRUE(g().GetColHidden(TG::ColEffectY1));

    view().PickItem(QStringLiteral("SSAEffect"));
    EXPECT_EQ(Shown(), "..xx.....xxxxxx");
    view().PickItem(QStringLiteral("SSAEffect"));
    // hiding the effect hides its parameters, whose items stay as they were
    EXPECT_EQ(Shown(), "..xx..........x");
    EXPECT_EQ(view().ItemText(12), QString::fromUtf8("--效果(结束点)"));
    view().PickItem(99);
}

TEST_F(ColumnViewTest, TheButtonSwitchesBetweenCompactAndFullView)
{
    const QString full = QString::fromUtf8("★");
    const QString none = QString::fromUtf8("☆");
    view().PressButton(); // the style item shows hidden: everything is shown
    EXPECT_EQ(Shown(), "xxxxxxxxxxxxxxx");
    EXPECT_EQ(view().ItemText(1), QString::fromUtf8("★ 行类型"));
    EXPECT_EQ(view().ItemText(13), QString::fromUtf8("--效果(延迟)")); // no star: unchanged
    view().PressButton();
    EXPECT_EQ(Shown(), "..xx..........x");
    EXPECT_EQ(view().ItemText(2), QString::fromUtf8("☆ 层次"));
    EXPECT_EQ(view().ItemText(4), QString::fromUtf8("★ 结束时间"));
    EXPECT_TRUE(g().ReDraw());
}

TEST_F(ColumnViewTest, TheButtonReadsOnlyTheStyleItem)
{
    // The user showed the style column by hand: the button takes this for the full view.
    view().PickItem(QStringLiteral("SSAStyle"));
    view().PressButton();
    EXPECT_EQ(Shown(), "..xx..........x");
    EXPECT_EQ(view().ItemText(5), QString::fromUtf8("☆ 字体"));
}

} // namespace
