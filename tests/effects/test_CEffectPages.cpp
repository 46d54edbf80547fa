#include "effects/CEffectPages.h"
#include "effects/basEffectExplain.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

class PagesTest : public ::testing::Test
{
protected:
    void SetUp() override { pages.Load(); }

    CEffectControl &ctl(const char *name, int index = -1)
    {
        return *pages.Control(QString::fromLatin1(name), index);
    }
    QStringList visibleKeys() const
    {
        QStringList keys;
        for (const CEffectControl *c : pages.VisibleControls())
            keys << c->Key();
        return keys;
    }

    CEffectPages pages;
};

} // namespace

TEST_F(PagesTest, LoadEndsOnTheTagPage)
{
    EXPECT_EQ(pages.CurrentPage(), 0);
    EXPECT_TRUE(pages.TabStripVisible());
    EXPECT_EQ(ctl("fraEffect").Caption, QStringLiteral("效果符参考"));
    EXPECT_EQ(visibleKeys(), QStringList({ QStringLiteral("cmdCreate") }));
    EXPECT_EQ(pages.Explanation(), basEffectExplain::ExplainTag(0));
    EXPECT_EQ(pages.Tag.txtAccel, QStringLiteral("1"));
}

TEST_F(PagesTest, EachPageShowsItsDeclarationInOrder)
{
    pages.SelectPage(7);
    EXPECT_EQ(ctl("fraEffect").Caption, QStringLiteral("位置差分"));
    EXPECT_EQ(visibleKeys(),
        QStringList({ "lblrtfArg(0)", "rtfArg(0)", "lbltxtArg(0)", "txtArg(0)", "lbltxtArg(1)", "txtArg(1)",
            "lbltxtArg(2)", "txtArg(2)", "lbltxtArg(3)", "txtArg(3)", "cmdCreate" }));
    EXPECT_EQ(ctl("lbltxtArg", 3).Caption, QStringLiteral("Y间距"));
    EXPECT_EQ(ctl("txtArg", 3).Text, QStringLiteral("20"));
    EXPECT_EQ(ctl("txtArg", 3).Unit, QStringLiteral("象素"));
    EXPECT_FALSE(pages.TabStripVisible());

    pages.SelectPage(3);
    EXPECT_EQ(visibleKeys().first(), QStringLiteral("optArg(0)"));
    EXPECT_EQ(ctl("optArg", 2).Caption, QStringLiteral("根据第一行和最后一行生成差分"));
    EXPECT_TRUE(ctl("optArg", 0).Value);
    EXPECT_EQ(ctl("txtArg", 0).Text, QStringLiteral("10"));
    EXPECT_EQ(ctl("spdArg", 0).Spread.ColumnHeaders, QStringList({ "开始时间", "结束时间" }));
    EXPECT_EQ(ctl("spdArg", 0).Spread.Text(1, 1), QStringLiteral("0:00:00.00"));
    EXPECT_EQ(ctl("lblspdArg", 0).Caption, QStringLiteral("时间轴"));
}

TEST_F(PagesTest, DefaultsOfTheGeneratorPages)
{
    pages.SelectPage(2);
    EXPECT_EQ(ctl("txtArg", 0).Text, QStringLiteral("\\\\alpha&HFF&"));
    EXPECT_EQ(ctl("chkArg", 0).Caption, QStringLiteral("保留卡拉OK效果"));
    pages.SelectPage(4);
    const CEffectArgs cycle = pages.Args();
    EXPECT_EQ(cycle.rtfArg, QStringLiteral("1234567890"));
    const char *values[] = { "0", "20", "1", "5", "200", "100", "20", "0", "0", "0", "1" };
    for (int i = 0; i < 11; ++i)
        EXPECT_EQ(cycle.txtArg[i], QString::fromLatin1(values[i])) << i;
    EXPECT_EQ(cycle.optArg, 0);
    EXPECT_EQ(ctl("txtArg", 3).Unit, QStringLiteral("* 2   个"));
    pages.SelectPage(6);
    const CEffectArgs move = pages.Args();
    EXPECT_EQ(move.rtfArg, basEffectExplain::MoveSampleText());
    EXPECT_EQ(move.txtArg[2], QStringLiteral("300"));
    EXPECT_EQ(move.txtArg[8], QStringLiteral("10"));
    EXPECT_EQ(ctl("lbltxtArg", 9).Caption, QStringLiteral("加速度"));
    EXPECT_FALSE(move.sldArg.HasSelection());
    EXPECT_EQ(ctl("lblSldArg", 0).Caption, QStringLiteral("淡入淡出范围选择"));
}

TEST_F(PagesTest, PageFiveKeepsThePageShownBeforeWithItsValues)
{
    pages.SelectPage(4);
    ctl("txtArg", 1).Text = QStringLiteral("33");
    const QStringList shown = visibleKeys();
    pages.SelectPage(5);
    EXPECT_EQ(visibleKeys(), shown);
    EXPECT_TRUE(shown.contains(QStringLiteral("cmdCreate")));
    EXPECT_EQ(pages.Args().txtArg[1], QStringLiteral("33"));
    EXPECT_TRUE(pages.Explanation().isEmpty());
    // leaving it keeps the values typed on the page before
    pages.SelectPage(6);
    pages.SelectPage(4);
    EXPECT_EQ(ctl("txtArg", 1).Text, QStringLiteral("33"));
}

TEST_F(PagesTest, TextTypedOnAPageSurvivesAVisitElsewhere)
{
    pages.SelectPage(6);
    ctl("rtfArg", 0).Text = QStringLiteral("滚动的通知");
    ctl("txtArg", 0).Text = QStringLiteral("42");
    pages.SelectPage(4);
    EXPECT_EQ(ctl("rtfArg", 0).Text, QStringLiteral("1234567890"));
    EXPECT_EQ(ctl("txtArg", 0).Text, QStringLiteral("0"));
    pages.SelectPage(6);
    EXPECT_EQ(ctl("rtfArg", 0).Text, QStringLiteral("滚动的通知"));
    EXPECT_EQ(ctl("txtArg", 0).Text, QStringLiteral("42"));
}

TEST_F(PagesTest, GridRowsSurviveAPageChange)
{
    pages.SelectPage(1);
    CEffectSpread &grid = ctl("spdArg", 0).Spread;
    grid.setMaxRows(5);
    for (int row = 1; row <= 5; ++row) {
        grid.setText(row, 1, QString::number(row * 10));
        grid.setText(row, 2, QString::number(row * 20));
    }
    pages.SelectPage(3); // shares the grid
    EXPECT_EQ(ctl("spdArg", 0).Spread.Text(1, 1), QStringLiteral("0:00:00.00"));
    pages.SelectPage(1);
    const CEffectSpread &back = ctl("spdArg", 0).Spread;
    ASSERT_EQ(back.MaxRows(), 5);
    EXPECT_EQ(back.Text(5, 1), QStringLiteral("50"));
    EXPECT_EQ(back.Text(5, 2), QStringLiteral("100"));
    EXPECT_EQ(back.ColumnHeaders, QStringList({ "X坐标", "Y坐标" }));
}

TEST_F(PagesTest, ACheckBoxIsNeverRestored)
{
    pages.SelectPage(2);
    ctl("chkArg", 0).Value = true;
    pages.SelectPage(4);
    EXPECT_TRUE(ctl("chkArg", 0).Value) << "nothing puts the box back to its own state";
    ctl("chkArg", 0).Value = false;
    pages.SelectPage(2);
    EXPECT_FALSE(ctl("chkArg", 0).Value) << "the tick made on page 2 is lost";
    EXPECT_FALSE(pages.Backup(2)[0].Name.isEmpty());
}

TEST_F(PagesTest, SliderSelectionKeepsStartAndLength)
{
    pages.SelectPage(6);
    CEffectSlider &slider = ctl("sldArg", 0).Slider;
    slider.SelectRange(80, 20);
    EXPECT_EQ(slider.SelStart, 20);
    EXPECT_EQ(slider.SelLength, 60);
    pages.SelectPage(1); // the same slider as the scale
    EXPECT_FALSE(ctl("sldArg", 0).Slider.HasSelection());
    EXPECT_EQ(ctl("sldArg", 0).Slider.Value, 1);
    pages.SelectPage(6);
    EXPECT_EQ(ctl("sldArg", 0).Slider, (CEffectSlider { 100, 0, 20, 60 }));
}

TEST_F(PagesTest, OptionsComeBackAsAGroup)
{
    pages.SelectPage(3);
    pages.SetOption(QStringLiteral("optArg"), 2);
    pages.SelectPage(4);
    EXPECT_TRUE(ctl("optArg", 0).Value);
    EXPECT_FALSE(ctl("optArg", 2).Value);
    pages.SelectPage(3);
    EXPECT_EQ(pages.Args().optArg, 2);
    EXPECT_FALSE(ctl("optArg", 0).Value);
}

TEST_F(PagesTest, TagPageKeepsItsOwnValues)
{
    pages.Tag.txtFontSize = QStringLiteral("33");
    pages.Tag.chkAccel = true;
    pages.SelectPage(4);
    pages.SelectPage(0);
    EXPECT_EQ(pages.Tag.txtFontSize, QStringLiteral("33"));
    EXPECT_TRUE(pages.Tag.chkAccel);
    EXPECT_TRUE(pages.TabStripVisible());
}

TEST_F(PagesTest, TabChangeMovesTextAndGradualFrameTogether)
{
    EXPECT_FALSE(pages.IsAccelEnabled());
    pages.SelectTab(3);
    EXPECT_TRUE(pages.IsAccelEnabled());
    EXPECT_EQ(pages.Explanation(), basEffectExplain::ExplainTag(3));
    pages.SelectTab(4);
    EXPECT_FALSE(pages.IsAccelEnabled());
    EXPECT_EQ(pages.Explanation(), basEffectExplain::ExplainTag(4));
}

TEST_F(PagesTest, BackupRowsNameEveryControlOfTheFrame)
{
    const auto &rows = pages.Backup(4);
    ASSERT_EQ(rows.size(), qsizetype(pages.Controls().size()));
    EXPECT_EQ(rows[0].Name, QStringLiteral("fraEffect"));
    EXPECT_FALSE(rows[0].Index.isValid());
    EXPECT_EQ(rows[1].Name, QStringLiteral("txtArg"));
    EXPECT_EQ(rows[1].Index.toInt(), 0);
    // the page seen before page 7 lent its text: page 7 declares none of its own
    pages.SelectPage(7);
    EXPECT_EQ(ctl("rtfArg", 0).Text, basEffectExplain::MoveSampleText());
}

TEST_F(PagesTest, UnknownPagesAreIgnored)
{
    pages.SelectPage(2);
    pages.SelectPage(9);
    pages.SelectPage(-1);
    EXPECT_EQ(pages.CurrentPage(), 2);
}

TEST_F(PagesTest, PlayerClicksFillTheFocusedCoordinatePair)
{
    pages.SelectPage(6);
    pages.PosSelected(QStringLiteral("txtArg(1)"), 30, 450);
    pages.PosSelected(QStringLiteral("txtArg(2)"), 31, 50);
    EXPECT_EQ(pages.Args().txtArg[0], QStringLiteral("30"));
    EXPECT_EQ(pages.Args().txtArg[1], QStringLiteral("450"));
    EXPECT_EQ(pages.Args().txtArg[3], QStringLiteral("50"));
    pages.SelectPage(7);
    pages.PosSelected(QStringLiteral("txtArg(2)"), 5, 5); // a spacing box takes no point
    EXPECT_EQ(pages.Args().txtArg[2], QStringLiteral("0"));
    pages.SelectPage(4);
    pages.PosSelected(QStringLiteral("txtArg(0)"), 5, 5);
    EXPECT_EQ(pages.Args().txtArg[0], QStringLiteral("0"));
}

TEST_F(PagesTest, DraggingMeasuresTheSpacing)
{
    pages.SelectPage(7);
    pages.ChangePosSelected(QStringLiteral("txtArg(3)"), 100, 100); // no drag yet
    EXPECT_EQ(pages.Args().txtArg[3], QStringLiteral("20"));
    pages.StartPosSelected(QStringLiteral("txtArg(3)"), 10, 10);
    pages.ChangePosSelected(QStringLiteral("txtArg(3)"), 13, 14);
    EXPECT_EQ(pages.Args().txtArg[3], QStringLiteral("5"));
    pages.ChangePosSelected(QStringLiteral("txtArg(3)"), 11, 12); // 2.24 rounds to 2
    EXPECT_EQ(pages.Args().txtArg[3], QStringLiteral("2"));
    pages.EndPosSelected();
    pages.ChangePosSelected(QStringLiteral("txtArg(3)"), 50, 50);
    EXPECT_EQ(pages.Args().txtArg[3], QStringLiteral("2"));
    pages.SelectPage(6);
    pages.StartPosSelected(QStringLiteral("txtArg(4)"), 0, 0);
    pages.ChangePosSelected(QStringLiteral("txtArg(4)"), 6, 8);
    EXPECT_EQ(pages.Args().txtArg[4], QStringLiteral("10"));
}
