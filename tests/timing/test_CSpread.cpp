#include "core/CSpread.h"

#include <QAbstractItemModelTester>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <limits>

namespace {

// A small grid whose cells say where they started: "r<row>c<col>".
class SpreadTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        g.setMaxCols(3);
        g.setMaxRows(4);
        for (int r = 1; r <= 4; ++r)
            for (int c = 1; c <= 3; ++c)
                g.SetText(c, r, Name(r, c));
    }

    static QString Name(int row, int col) { return QStringLiteral("r%1c%2").arg(row).arg(col); }

    QStringList Column(int col) const
    {
        QStringList texts;
        for (int r = 1; r <= g.MaxRows(); ++r)
            texts << g.GetText(col, r);
        return texts;
    }

    void At(int row, int col)
    {
        g.setRow(row);
        g.setCol(col);
    }
    void SetBlock(int row, int col, int row2, int col2)
    {
        At(row, col);
        g.setRow2(row2);
        g.setCol2(col2);
    }
    void MoveTo(int row, int col)
    {
        g.setDestRow(row);
        g.setDestCol(col);
        g.MoveBlock();
    }

    CSpread g;
};

QStringList L(std::initializer_list<const char *> items)
{
    QStringList list;
    for (const char *item : items)
        list << QString::fromUtf8(item);
    return list;
}

TEST_F(SpreadTest, CurrentCellIsNotTheCursor)
{
    QSignalSpy moved(&g, &CSpread::ActiveCellChanged);
    At(2, 3);
    EXPECT_EQ(g.Text(), "r2c3");
    g.setText(QStringLiteral("x"));
    EXPECT_EQ(g.GetText(3, 2), "x");
    EXPECT_EQ(g.ActiveRow(), 0);
    EXPECT_EQ(moved.count(), 0);

    QSignalSpy left(&g, &CSpread::LeaveCell);
    int activeWhileLeaving = -1;
    QObject::connect(&g, &CSpread::LeaveCell, [&] { activeWhileLeaving = g.ActiveRow(); });
    g.ActivateCell();
    EXPECT_EQ(activeWhileLeaving, 0);
    EXPECT_EQ(g.ActiveRow(), 2);
    EXPECT_EQ(g.ActiveCol(), 3);
    ASSERT_EQ(left.count(), 1);
    EXPECT_EQ(left.at(0), (QVariantList { 0, 0, 3, 2 }));
    EXPECT_EQ(moved.count(), 1);
    g.ActivateCell(); // same cell: no event
    EXPECT_EQ(left.count(), 1);

    g.setRow(99);
    g.ActivateCell(); // outside the grid: the cursor stays
    EXPECT_EQ(g.ActiveRow(), 2);
}

TEST_F(SpreadTest, HeaderRowAndLabelColumn)
{
    At(0, 2);
    g.setText(QStringLiteral("Title"));
    EXPECT_EQ(g.Text(), "Title");
    EXPECT_EQ(g.headerData(1, Qt::Horizontal).toString(), "Title");
    EXPECT_EQ(g.GetText(2, 1), "r1c2"); // the title is not a cell

    At(3, 0);
    g.setText(QStringLiteral("A"));
    EXPECT_EQ(g.Text(), "A");
    EXPECT_EQ(g.headerData(2, Qt::Vertical).toString(), "A");
    EXPECT_EQ(g.headerData(1, Qt::Vertical).toString(), "2"); // unlabelled rows show their number
}

TEST_F(SpreadTest, MaxRowsRaisesAndLowersAtTheEnd)
{
    g.setMaxRows(6);
    EXPECT_EQ(Column(1), L({ "r1c1", "r2c1", "r3c1", "r4c1", "", "" }));
    g.setMaxRows(2);
    EXPECT_EQ(Column(1), L({ "r1c1", "r2c1" }));
    g.setMaxRows(3);
    EXPECT_EQ(Column(1), L({ "r1c1", "r2c1", "" })); // a removed row does not come back
    g.setMaxRows(-5);
    EXPECT_EQ(g.MaxRows(), 0);
    g.setMaxCols(1);
    g.setMaxRows(CSpread::MaxRowsLimit + 100);
    EXPECT_EQ(g.MaxRows(), CSpread::MaxRowsLimit);
    g.setMaxRows(0);
}

TEST_F(SpreadTest, MaxRowsLowerClampsTheCursor)
{
    At(4, 2);
    g.ActivateCell();
    g.setMaxRows(2);
    EXPECT_EQ(g.ActiveRow(), 2);
}

TEST_F(SpreadTest, MaxColsRaisesAndLowers)
{
    g.setMaxCols(5);
    EXPECT_EQ(g.GetText(3, 1), "r1c3");
    EXPECT_EQ(g.GetText(5, 1), "");
    g.setMaxCols(2);
    EXPECT_EQ(g.GetText(3, 1), ""); // gone
    g.setMaxCols(3);
    EXPECT_EQ(g.GetText(3, 1), "");
    EXPECT_EQ(g.columnCount(), 3);
}

TEST_F(SpreadTest, MinusOneTargetsWholeColumnsAndLaterRows)
{
    At(-1, 2);
    g.setForeColor(255);
    for (int r = 1; r <= 4; ++r) {
        EXPECT_EQ(g.GetForeColor(2, r), 255u);
        EXPECT_EQ(g.GetForeColor(1, r), CSpread::ColorWindowText);
    }
    g.setMaxRows(5);
    EXPECT_EQ(g.GetForeColor(2, 5), 255u); // the column default holds for new rows

    At(3, -1);
    g.setBackColor(0x123456);
    for (int c = 1; c <= 3; ++c)
        EXPECT_EQ(g.GetBackColor(c, 3), 0x123456u);
    EXPECT_EQ(g.GetBackColor(1, 2), CSpread::ColorWindow);
    g.setMaxRows(6);
    EXPECT_EQ(g.GetBackColor(1, 6), CSpread::ColorWindow); // one row sets no default

    At(-1, -1);
    g.setText(QStringLiteral("all"));
    EXPECT_EQ(Column(3), L({ "all", "all", "all", "all", "all", "all" }));
}

TEST_F(SpreadTest, NumberCellsReadTheirLeadingNumber)
{
    At(-1, 1);
    g.setCellType(CSpreadCellType::IntegerType(-9999, 9999));
    g.setRow(1);
    g.setText(QString());
    EXPECT_EQ(g.Value(), 0); // an empty number cell reads as 0
    g.setText(QStringLiteral("12abc"));
    EXPECT_EQ(g.Value(), 12);
    g.setText(QStringLiteral("abc"));
    EXPECT_EQ(g.Value(), 0);
    g.setValue(2.5);
    EXPECT_EQ(g.Text(), "2"); // whole-number cells round half to even
    g.setValue(-3.5);
    EXPECT_EQ(g.Text(), "-4");
    g.setValue(123456);
    EXPECT_EQ(g.Text(), "123456"); // the program may write beyond the range

    g.setCol(2); // a text cell keeps fractions
    g.setValue(0.5);
    EXPECT_EQ(g.Text(), "0.5");
    g.setValue(std::numeric_limits<double>::quiet_NaN()); // no number: no fault either
    g.setValue(std::numeric_limits<double>::infinity());
    g.setRow(77);
    EXPECT_EQ(g.Value(), 0);
    g.setValue(1); // beyond the grid: nothing happens
}

TEST_F(SpreadTest, UserEditsAreCheckedAgainstTheKind)
{
    At(-1, 1);
    g.setCellType(CSpreadCellType::IntegerType(0, 100));
    g.setCol(2);
    g.setCellType(CSpreadCellType::TextType(5, false));
    QSignalSpy edited(&g, &CSpread::CellEdited);
    EXPECT_TRUE(g.setData(g.index(0, 0), QStringLiteral("100")));
    EXPECT_FALSE(g.setData(g.index(0, 0), QStringLiteral("101")));
    EXPECT_FALSE(g.setData(g.index(0, 0), QStringLiteral("1.5")));
    EXPECT_FALSE(g.setData(g.index(0, 0), QStringLiteral("x")));
    EXPECT_TRUE(g.setData(g.index(0, 0), QString()));
    EXPECT_TRUE(g.setData(g.index(1, 1), QStringLiteral("abcde")));
    EXPECT_FALSE(g.setData(g.index(1, 1), QStringLiteral("abcdef")));
    EXPECT_FALSE(g.setData(g.index(1, 1), QStringLiteral("a\nb")));
    EXPECT_EQ(g.GetText(1, 1), "");
    EXPECT_EQ(g.GetText(2, 2), "abcde");
    EXPECT_EQ(edited.count(), 3);
    EXPECT_EQ(edited.at(2), (QVariantList { 2, 2 }));
}

TEST_F(SpreadTest, ListCells)
{
    At(-1, 2);
    g.setListItems(QStringLiteral("a\tb\tc"));
    EXPECT_EQ(Column(2), L({ "a", "a", "a", "a" })); // a new list chooses its first item
    g.setRow(2);
    EXPECT_EQ(g.ListCount(), 3);
    EXPECT_EQ(g.ListChoice(), 0);
    EXPECT_EQ(g.ListItems(), "a\tb\tc");

    g.setText(QStringLiteral("c"));
    EXPECT_EQ(g.ListChoice(), 2);
    EXPECT_EQ(g.Value(), 2);
    g.setText(QStringLiteral("zz")); // not an item: the text stays, nothing is chosen
    EXPECT_EQ(g.Text(), "zz");
    EXPECT_EQ(g.ListChoice(), -1);
    g.setListChoice(1);
    EXPECT_EQ(g.Text(), "b");
    g.setListChoice(3); // out of the list: ignored
    EXPECT_EQ(g.Text(), "b");
    g.setListChoice(-1);
    EXPECT_EQ(g.Text(), "");
    g.setValue(2);
    EXPECT_EQ(g.Text(), "c");

    g.setListIndex(1);
    EXPECT_EQ(g.ListString(), "b");
    g.setListIndex(7);
    EXPECT_EQ(g.ListString(), "");

    // One cell gets its own list; the rest of the column keeps the shared one.
    g.setRow(3);
    g.setListItems(QStringLiteral("x\ty"));
    EXPECT_EQ(g.Text(), "x");
    EXPECT_EQ(g.ListCount(), 2);
    g.setRow(4);
    EXPECT_EQ(g.ListCount(), 3);
    g.setRow(-1);
    g.setListItems(QString());
    g.setRow(3);
    EXPECT_EQ(g.ListCount(), 0);
    EXPECT_EQ(g.ListChoice(), -1);
    EXPECT_EQ(g.Text(), "");

    g.setCol(1); // not a list cell
    EXPECT_EQ(g.ListChoice(), -1);
    EXPECT_EQ(g.ListCount(), 0);
}

TEST_F(SpreadTest, ChooseItemKeepsTheChoiceWithoutAMatch)
{
    At(-1, 2);
    g.setListItems(QStringLiteral("a\tb\tb"));
    EXPECT_TRUE(g.ChooseItem(2, 3, QStringLiteral("b")));
    EXPECT_EQ(g.GetListChoice(2, 3), 1); // the first equal item
    EXPECT_FALSE(g.ChooseItem(2, 3, QStringLiteral("B")));
    EXPECT_EQ(g.GetText(2, 3), "b");
    EXPECT_EQ(g.GetListChoice(2, 3), 1);
    EXPECT_FALSE(g.ChooseItem(1, 3, QStringLiteral("r3c1"))); // not a list cell
    EXPECT_FALSE(g.ChooseItem(2, 9, QStringLiteral("a")));
}

TEST_F(SpreadTest, ListChoiceThroughTheModel)
{
    At(-1, 1);
    g.setListItems(QStringLiteral("one\ttwo"));
    EXPECT_TRUE(g.setData(g.index(0, 0), 1, CSpread::ListChoiceRole));
    EXPECT_EQ(g.GetText(1, 1), "two");
    EXPECT_FALSE(g.setData(g.index(0, 0), 2, CSpread::ListChoiceRole));
    EXPECT_EQ(g.data(g.index(0, 0), CSpread::ListItemsRole).toStringList(), L({ "one", "two" }));
    EXPECT_EQ(g.data(g.index(0, 0), CSpread::ListChoiceRole).toInt(), 1);
    EXPECT_EQ(g.data(g.index(0, 0), CSpread::CellKindRole).toInt(), int(SpreadCellKind::List));
}

TEST_F(SpreadTest, ColoursAndMarks)
{
    At(1, 1);
    g.setForeColor(255);
    g.setBackColor(0xFFFFC0);
    g.setCellMark(true);
    EXPECT_EQ(g.ForeColor(), 255u);
    EXPECT_EQ(g.BackColor(), 0xFFFFC0u);
    EXPECT_TRUE(g.CellMark());
    g.setCol(2);
    EXPECT_FALSE(g.CellMark());

    const QModelIndex cell = g.index(0, 0);
    EXPECT_EQ(g.data(cell, Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
    // red in the low byte: 0xFFFFC0 is a light blue-green
    EXPECT_EQ(g.data(cell, Qt::BackgroundRole).value<QColor>(), QColor(0xC0, 0xFF, 0xFF));
    EXPECT_TRUE(g.data(cell, CSpread::CellMarkRole).toBool());
    EXPECT_EQ(g.data(cell, CSpread::ForeColorCodeRole).toUInt(), 255u);
    EXPECT_EQ(CSpread::ToQColor(CSpread::ColorWindow), QGuiApplication::palette().color(QPalette::Base));
    EXPECT_EQ(
        CSpread::ToQColor(CSpread::ColorButtonText), QGuiApplication::palette().color(QPalette::ButtonText));
}

TEST_F(SpreadTest, ReDrawOffSendsNothingThenOneReset)
{
    QSignalSpy changed(&g, &QAbstractItemModel::dataChanged);
    QSignalSpy inserted(&g, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&g, &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(&g, &QAbstractItemModel::modelReset);

    g.setReDraw(false);
    At(1, 1);
    g.setText(QStringLiteral("x"));
    g.setForeColor(255);
    g.setMaxRows(10);
    g.InsertRow();
    g.DeleteRow();
    SetBlock(1, 1, 2, 2);
    g.ClearBlock();
    MoveTo(3, 1);
    g.setMaxRows(5);
    EXPECT_EQ(changed.count() + inserted.count() + removed.count() + reset.count(), 0);
    g.setReDraw(true);
    EXPECT_EQ(reset.count(), 1);
    EXPECT_EQ(changed.count() + inserted.count() + removed.count(), 0);

    g.setReDraw(false);
    g.setReDraw(true); // nothing changed: no reset
    EXPECT_EQ(reset.count(), 1);

    g.setText(QStringLiteral("y"));
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(SpreadTest, ModelStaysConsistentForViews)
{
    QAbstractItemModelTester tester(&g, QAbstractItemModelTester::FailureReportingMode::Fatal);
    g.setMaxRows(8);
    g.setRow(2);
    g.InsertRow();
    g.DeleteRow();
    g.setMaxCols(5);
    g.setMaxCols(2);
    g.setMaxRows(3);
    SetBlock(1, 1, 3, 2);
    MoveTo(2, 1);
    g.setReDraw(false);
    g.setMaxRows(50);
    g.setReDraw(true);
    EXPECT_EQ(g.rowCount(), 50);
    EXPECT_FALSE(g.data(g.index(60, 0)).isValid());
}

TEST_F(SpreadTest, HiddenColumns)
{
    QSignalSpy hidden(&g, &CSpread::ColumnHiddenChanged);
    g.setCol(2);
    g.setColHidden(true);
    EXPECT_TRUE(g.ColHidden());
    g.setColHidden(true); // no change, no signal
    g.setCol(3);
    EXPECT_FALSE(g.ColHidden());
    EXPECT_EQ(hidden.count(), 1);
    EXPECT_EQ(hidden.at(0), (QVariantList { 2, true }));
    g.setCol(-1);
    g.setColHidden(false);
    EXPECT_FALSE(g.GetColHidden(2));
}

TEST_F(SpreadTest, InPlaceEditorWorksOnTheActiveCell)
{
    g.setEditMode(true); // no active cell yet
    EXPECT_FALSE(g.EditMode());
    At(2, 1);
    g.SetText(1, 2, QStringLiteral("abcdef"));
    g.ActivateCell();
    g.setEditMode(true);
    EXPECT_TRUE(g.EditMode());
    g.setSelStart(2);
    g.setSelLength(2);
    EXPECT_EQ(g.SelText(), "cd");
    g.setSelText(QStringLiteral("XY Z"));
    EXPECT_EQ(g.GetText(1, 2), "abXY Zef");
    EXPECT_EQ(g.SelStart(), 6);
    EXPECT_EQ(g.SelLength(), 0);
    g.setSelStart(100);
    EXPECT_EQ(g.SelStart(), 8);
    g.setSelLength(100);
    EXPECT_EQ(g.SelLength(), 0);

    g.setRow(3);
    g.ActivateCell(); // moving the cursor ends the edit
    EXPECT_FALSE(g.EditMode());
}

TEST_F(SpreadTest, SelectedBlocksAndMultiSelection)
{
    EXPECT_FALSE(g.IsBlockSelected());
    g.GetMultiSelection();
    EXPECT_EQ(g.MultiSelCount(), 0);

    g.SetSelection({ CSpreadBlock { 3, 2, 1, 1 }, CSpreadBlock { 2, -1, 4, 3 } });
    EXPECT_TRUE(g.IsBlockSelected());
    // the most recent block; whole rows have columns -1
    EXPECT_EQ(g.SelBlockRow(), 2);
    EXPECT_EQ(g.SelBlockRow2(), 4);
    EXPECT_EQ(g.SelBlockCol(), -1);
    EXPECT_EQ(g.SelBlockCol2(), -1);
    EXPECT_EQ(g.MultiSelCount(), 0); // not gathered yet

    g.GetMultiSelection();
    ASSERT_EQ(g.MultiSelCount(), 2);
    g.setMultiSelIndex(0);
    EXPECT_EQ(g.Row(), 1); // corners come in order
    EXPECT_EQ(g.Row2(), 3);
    EXPECT_EQ(g.Col(), 1);
    EXPECT_EQ(g.Col2(), 2);
    g.setMultiSelIndex(1);
    EXPECT_EQ(g.Col(), -1);
    EXPECT_EQ(g.Col2(), -1);
    g.setMultiSelIndex(5); // ignored
    EXPECT_EQ(g.MultiSelIndex(), 1);
    EXPECT_EQ(g.Row(), 2);

    g.ClearSelection();
    EXPECT_FALSE(g.IsBlockSelected());
    EXPECT_EQ(g.MultiSelCount(), 2); // the gathered blocks stay until gathered again
    g.AddSelection(CSpreadBlock { -1, 2, 3, 2 });
    EXPECT_EQ(g.SelBlockRow(), -1); // whole column
    EXPECT_EQ(g.SelBlockRow2(), -1);
}

TEST_F(SpreadTest, InsertRowKeepsMaxRows)
{
    g.SetText(0, 2, QStringLiteral("L2"));
    g.setRow(2);
    g.InsertRow();
    EXPECT_EQ(g.MaxRows(), 4);
    EXPECT_EQ(Column(1), L({ "r1c1", "", "r2c1", "r3c1" }));
    EXPECT_EQ(Column(3), L({ "r1c3", "", "r2c3", "r3c3" }));
    EXPECT_EQ(g.GetText(0, 3), "L2"); // labels go with their rows

    g.setRow(4); // at the last row: the last row is replaced
    g.InsertRow();
    EXPECT_EQ(Column(1), L({ "r1c1", "", "r2c1", "" }));

    g.setRow(5);
    g.InsertRow(); // beyond the grid: nothing
    g.setRow(0);
    g.InsertRow();
    EXPECT_EQ(Column(1), L({ "r1c1", "", "r2c1", "" }));
}

TEST_F(SpreadTest, NewRowsTakeTheColumnDefaults)
{
    At(-1, 2);
    g.setListItems(QStringLiteral("p\tq"));
    g.setBackColor(0xFF);
    g.setRow(1);
    g.setListChoice(1);
    g.setBackColor(0x00FF00);
    g.InsertRow();
    EXPECT_EQ(g.GetText(2, 1), "p");
    EXPECT_EQ(g.GetBackColor(2, 1), 0xFFu);
    EXPECT_EQ(g.GetText(2, 2), "q");
    EXPECT_EQ(g.GetBackColor(2, 2), 0x00FF00u);
}

TEST_F(SpreadTest, DeleteRowKeepsMaxRows)
{
    g.setRow(2);
    g.DeleteRow();
    EXPECT_EQ(g.MaxRows(), 4);
    EXPECT_EQ(Column(2), L({ "r1c2", "r3c2", "r4c2", "" }));
    g.setRow(4);
    g.DeleteRow();
    EXPECT_EQ(Column(2), L({ "r1c2", "r3c2", "r4c2", "" }));
    g.setRow(1);
    g.DeleteRow();
    EXPECT_EQ(Column(2), L({ "r3c2", "r4c2", "", "" }));

    CSpread empty;
    empty.setRow(1);
    empty.DeleteRow();
    empty.InsertRow();
    EXPECT_EQ(empty.MaxRows(), 0);
}

TEST_F(SpreadTest, ClearBlockEmptiesTextOnly)
{
    At(-1, 3);
    g.setListItems(QStringLiteral("u\tv"));
    At(2, 1);
    g.setForeColor(255);
    g.setCellMark(true);

    SetBlock(3, 3, 2, 1); // corners in any order
    g.ClearBlock();
    EXPECT_EQ(Column(1), L({ "r1c1", "", "", "r4c1" }));
    EXPECT_EQ(Column(2), L({ "r1c2", "", "", "r4c2" }));
    EXPECT_EQ(Column(3), L({ "u", "", "", "u" }));
    EXPECT_EQ(g.GetListChoice(3, 2), -1);
    EXPECT_EQ(g.GetForeColor(1, 2), 255u); // appearance stays
    EXPECT_TRUE(g.GetCellMark(1, 2));

    SetBlock(4, -1, 4, -1); // a whole row
    g.ClearBlock();
    EXPECT_EQ(g.GetText(1, 4), "");
    EXPECT_EQ(g.GetText(3, 4), "");
    EXPECT_EQ(g.GetText(1, 1), "r1c1");

    SetBlock(3, 2, 1000000, 2000); // beyond the grid: clipped
    g.ClearBlock();
    EXPECT_EQ(g.GetText(2, 1), "r1c2");
    SetBlock(9, 9, 12, 12); // wholly beyond: nothing
    g.ClearBlock();
    SetBlock(-1, 1, -1, 1); // the whole column
    g.ClearBlock();
    EXPECT_EQ(Column(1), L({ "", "", "", "" }));
}

TEST_F(SpreadTest, MoveBlockUpLeavesEmptyCellsBehind)
{
    At(4, 2);
    g.setBackColor(0xFFFFC0);
    SetBlock(3, 2, 4, 2);
    MoveTo(2, 2);
    EXPECT_EQ(Column(2), L({ "r1c2", "r3c2", "r4c2", "" }));
    EXPECT_EQ(Column(1), L({ "r1c1", "r2c1", "r3c1", "r4c1" }));
    EXPECT_EQ(g.GetBackColor(2, 3), 0xFFFFC0u); // appearance moves with the cell
    EXPECT_EQ(g.GetBackColor(2, 4), CSpread::ColorWindow);
}

TEST_F(SpreadTest, MoveBlockDownOverlapsAndDropsCellsOutOfTheGrid)
{
    SetBlock(1, 1, 4, 2);
    MoveTo(2, 1);
    EXPECT_EQ(Column(1), L({ "", "r1c1", "r2c1", "r3c1" }));
    EXPECT_EQ(Column(2), L({ "", "r1c2", "r2c2", "r3c2" }));
    EXPECT_EQ(Column(3), L({ "r1c3", "r2c3", "r3c3", "r4c3" }));
}

TEST_F(SpreadTest, MoveBlockFromBeyondTheGridMovesInEmptyCells)
{
    // rows 3 to 5 of column 3, with row 5 beyond the grid, up by two rows
    SetBlock(3, 3, 5, 3);
    MoveTo(1, 3);
    EXPECT_EQ(Column(3), L({ "r3c3", "r4c3", "", "" }));

    SetBlock(2, 1, 2000000000, 1); // a huge block stays cheap
    MoveTo(1, 1);
    EXPECT_EQ(Column(1), L({ "r2c1", "r3c1", "r4c1", "" }));
    SetBlock(1, 1, 1, 1);
    MoveTo(-5, 99); // destination beyond the grid: the cell is dropped
    EXPECT_EQ(g.GetText(1, 1), "");
}

TEST_F(SpreadTest, MoveBlockSideways)
{
    SetBlock(1, 1, 2, 1);
    MoveTo(3, 3);
    EXPECT_EQ(Column(1), L({ "", "", "r3c1", "r4c1" }));
    EXPECT_EQ(Column(3), L({ "r1c3", "r2c3", "r1c1", "r2c1" }));
}

TEST_F(SpreadTest, HeadlessViewport)
{
    g.setMaxRows(40);
    g.HeadlessViewport().setVisibleRows(5);
    EXPECT_EQ(g.TopRow(), 1);
    EXPECT_TRUE(g.IsVisible(1, 5));
    EXPECT_FALSE(g.IsVisible(1, 6));
    At(12, 1);
    g.ActivateCell();
    EXPECT_EQ(g.TopRow(), 8); // scrolled just far enough
    EXPECT_TRUE(g.IsVisible(1, 12));
    g.setRow(3);
    g.ActivateCell();
    EXPECT_EQ(g.TopRow(), 3);
    g.setTopRow(1000);
    EXPECT_EQ(g.TopRow(), 40);
    g.setTopRow(1);
    g.setCol(2);
    g.setColHidden(true);
    EXPECT_FALSE(g.IsVisible(2, 1));
    EXPECT_FALSE(g.IsVisible(1, 0));
    g.SetFocus();
    EXPECT_EQ(g.HeadlessViewport().FocusCount(), 1);
}

} // namespace

namespace {

// A window's viewport stands in for the headless one once installed.
class FakeViewport : public ISpreadViewport
{
public:
    int TopRow() const override { return 7; }
    void setTopRow(int row) override { Calls << QStringLiteral("top %1").arg(row); }
    bool IsVisible(int col, int row) const override { return col == 1 && row == 2; }
    void ShowCell(int col, int row) override { Calls << QStringLiteral("show %1 %2").arg(col).arg(row); }
    void SetFocus() override { Calls << QStringLiteral("focus"); }
    bool EditMode() const override { return Editing; }
    void setEditMode(bool on) override
    {
        Editing = on;
        Calls << QStringLiteral("edit %1").arg(on);
    }
    int SelStart() const override { return 3; }
    void setSelStart(int start) override { Calls << QStringLiteral("start %1").arg(start); }
    int SelLength() const override { return 4; }
    void setSelLength(int length) override { Calls << QStringLiteral("length %1").arg(length); }
    QString SelText() const override { return QStringLiteral("sel"); }
    void setSelText(const QString &text) override { Calls << QStringLiteral("text ") + text; }

    bool Editing = false;
    QStringList Calls;
};

TEST(SpreadViewport, InstalledViewportAnswersForTheView)
{
    CSpread g;
    g.setMaxCols(2);
    g.setMaxRows(3);
    FakeViewport view;
    g.SetViewport(&view);
    EXPECT_EQ(g.TopRow(), 7);
    EXPECT_TRUE(g.IsVisible(1, 2));
    EXPECT_FALSE(g.IsVisible(2, 2));
    g.setRow(2);
    g.setCol(1);
    g.ActivateCell();
    g.setEditMode(true);
    g.setSelStart(1);
    g.setSelLength(2);
    g.setSelText(QStringLiteral("x"));
    g.setTopRow(2);
    g.SetFocus();
    EXPECT_EQ(g.SelStart(), 3);
    EXPECT_EQ(g.SelLength(), 4);
    EXPECT_EQ(g.SelText(), "sel");
    g.setRow(3);
    g.ActivateCell(); // leaving the cell ends the edit first
    EXPECT_EQ(view.Calls,
        (QStringList {
            "show 1 2", "edit 1", "start 1", "length 2", "text x", "top 2", "focus", "edit 0", "show 1 3" }));
    g.SetViewport(nullptr);
    EXPECT_EQ(g.TopRow(), 1);
}

} // namespace
