#include "GridOpsFixture.h"

#include "timing/basLineOps.h"

#include <QRandomGenerator>

using namespace basLineOps;

namespace {

using TG = CTimingGrid;

const QString t1 = QStringLiteral("0:00:01.00");
const QString e1 = QStringLiteral("0:00:01.50");
const QString t2 = QStringLiteral("0:00:02.00");
const QString e2 = QStringLiteral("0:00:02.50");
const QString t3 = QStringLiteral("0:00:03.00");
const QString e3 = QStringLiteral("0:00:03.50");

class LineOpsTest : public GridOpsTest
{
protected:
    // Three timed lines a, b, c and two spare rows (serial numbers 1 to 5).
    void FillThree() { Fill({ { t1, e1, "a" }, { t2, e2, "b" }, { t3, e3, "c" } }); }
};

} // namespace

// ---- inserting -----------------------------------------------------------------------

TEST_F(LineOpsTest, InsertWholeRowAtTheActiveRow)
{
    FillThree();
    g().SetText(TG::ColMarginL, 2, QStringLiteral("7"));
    Activate(TG::ColDialog, 2);
    InsertRows(t, WholeRows);
    EXPECT_EQ(Starts(), QStringList({ t1, "", t2, t3, "", "" }));
    EXPECT_EQ(Ends(), QStringList({ e1, "", e2, e3, "", "" }));
    EXPECT_EQ(Dialogs(), QStringList({ "a", "", "b", "c", "", "" }));
    EXPECT_EQ(Column(TG::ColMarginL), QStringList({ "", "", "7", "", "", "" }));
    // The appended row (serial 6) falls off again; the new row is number 7.
    EXPECT_EQ(Serials(), QList<qint32>({ 1, 7, 2, 3, 4, 5 }));
    EXPECT_EQ(hooks.Calls,
        QStringList({ "create 6 #6", "delete 6 #6", "create 2 #7", "update -1 2", "update -1 3",
            "update -1 4", "update -1 5", "update -1 6" }));
    EXPECT_TRUE(g().ReDraw());
}

TEST_F(LineOpsTest, InsertTimeCellsMovesOnlyTheTimesDown)
{
    FillThree();
    g().SetText(TG::ColMarginL, 1, QStringLiteral("7"));
    Activate(TG::ColStartTime, 1);
    InsertRows(t, TimeCells);
    EXPECT_EQ(Starts(), QStringList({ "", t1, t2, t3, "", "" }));
    EXPECT_EQ(Ends(), QStringList({ "", e1, e2, e3, "", "" }));
    EXPECT_EQ(Dialogs(), QStringList({ "a", "b", "c", "", "", "" }));
    // The other cells went down with the row insert and stay there.
    EXPECT_EQ(Column(TG::ColMarginL), QStringList({ "", "7", "", "", "", "" }));
    EXPECT_EQ(Serials(), QList<qint32>({ 7, 1, 2, 3, 4, 5 }));
}

TEST_F(LineOpsTest, InsertDialogCellsForTwoSelectedRowsAddsTwoRows)
{
    FillThree();
    Select({ CSpreadBlock { 2, 1, 3, 15 } });
    InsertRows(t, DialogCells);
    ASSERT_EQ(g().MaxRows(), 7);
    EXPECT_EQ(Starts(), QStringList({ t1, t2, t3, "", "", "", "" }));
    EXPECT_EQ(Dialogs(), QStringList({ "a", "", "", "b", "c", "", "" }));
}

// ---- deleting ------------------------------------------------------------------------

TEST_F(LineOpsTest, DeleteWholeRowsKeepsTheOtherSerialNumbers)
{
    FillThree();
    Activate(TG::ColDialog, 5);
    Select({ CSpreadBlock { 1, -1, 2, -1 } });
    DeleteRows(t, WholeRows);
    EXPECT_EQ(g().MaxRows(), 3);
    EXPECT_EQ(Dialogs(), QStringList({ "c", "", "" }));
    EXPECT_EQ(Serials(), QList<qint32>({ 3, 4, 5 }));
    EXPECT_EQ(
        hooks.Calls.mid(0, 4), QStringList({ "delete 1 #1", "delete 5 #0", "delete 1 #2", "delete 4 #0" }));
}

TEST_F(LineOpsTest, DeleteWholeRowKeepsASpareRowBelowTheCursor)
{
    FillThree();
    Activate(TG::ColDialog, 3);
    Select({ CSpreadBlock { 1, 1, 1, 15 } });
    DeleteRows(t, WholeRows);
    // Row 3 was about to become the row before the last: a row is appended.
    EXPECT_EQ(g().MaxRows(), 5);
    EXPECT_EQ(Dialogs(), QStringList({ "b", "c", "", "", "" }));
    EXPECT_EQ(Serials(), QList<qint32>({ 2, 3, 4, 5, 6 }));
}

TEST_F(LineOpsTest, DeleteTimeCellsMovesTheTimesBelowUp)
{
    FillThree();
    Activate(TG::ColEndTime, 1);
    DeleteRows(t, TimeCells);
    EXPECT_EQ(Starts(), QStringList({ t2, t3, "", "", "" }));
    EXPECT_EQ(Ends(), QStringList({ e2, e3, "", "", "" }));
    EXPECT_EQ(Dialogs(), QStringList({ "a", "b", "c", "", "" }));
    EXPECT_EQ(g().MaxRows(), 5);
}

TEST_F(LineOpsTest, DeleteDialogCellsOfTwoRows)
{
    FillThree();
    Select({ CSpreadBlock { 1, 15, 2, 15 } });
    DeleteRows(t, DialogCells);
    EXPECT_EQ(Dialogs(), QStringList({ "c", "", "", "", "" }));
    EXPECT_EQ(Starts(), QStringList({ t1, t2, t3, "", "" }));
}

TEST_F(LineOpsTest, DeleteDialogOnTheLastRowOnlyClearsIt)
{
    FillThree();
    g().SetText(TG::ColDialog, 5, QStringLiteral("last"));
    Activate(TG::ColDialog, 5);
    DeleteRows(t, DialogCells);
    EXPECT_EQ(Dialogs(), QStringList({ "a", "b", "c", "", "" }));
    EXPECT_EQ(hooks.Calls, QStringList({ "update -1 5" }));
}

// Inserting cells on a row and deleting them again on the same row gives the grid back.
TEST_F(LineOpsTest, InsertThenDeleteOnTheSameRowRestoresTheGrid)
{
    QRandomGenerator random(20261122);
    for (int round = 0; round < 60; ++round) {
        const int lines = random.bounded(1, 8);
        std::vector<GridRow> rows;
        for (int i = 0; i < lines; ++i)
            rows.push_back({ QStringLiteral("0:00:%1.00").arg(10 + i),
                QStringLiteral("0:00:%1.50").arg(10 + i), QStringLiteral("line %1").arg(i) });
        Fill(rows);
        const QStringList starts = Starts();
        const QStringList ends = Ends();
        const QStringList dialogs = Dialogs();
        const QList<qint32> serials = Serials();
        const int which = std::array { WholeRows, TimeCells, DialogCells }[size_t(round % 3)];
        const int row = random.bounded(1, g().MaxRows() + 1);
        // A block that lies inside the grid, so that both operations see the same rows.
        const int count = random.bounded(1, std::min(3, g().MaxRows() - row + 1) + 1);
        SCOPED_TRACE(QStringLiteral("which %1 row %2 count %3 lines %4")
                         .arg(which)
                         .arg(row)
                         .arg(count)
                         .arg(lines)
                         .toStdString());
        Activate(TG::ColDialog, row);
        Select({ CSpreadBlock { row, 1, row + count - 1, 15 } });
        InsertRows(t, which);
        DeleteRows(t, which);
        const int n = int(starts.size());
        EXPECT_EQ(Dialogs().mid(0, n), dialogs);
        EXPECT_EQ(Starts().mid(0, n - 1), starts.mid(0, n - 1));
        EXPECT_EQ(Ends().mid(0, n - 1), ends.mid(0, n - 1));
        if (which == WholeRows) {
            // With the cursor just above the end, a spare row may have been added.
            EXPECT_EQ(Serials().mid(0, n), serials);
        } else {
            EXPECT_EQ(g().MaxRows(), n + count);
        }
    }
}

// ---- clearing ------------------------------------------------------------------------

TEST_F(LineOpsTest, ClearCellsOfTheActiveCell)
{
    FillThree();
    Activate(TG::ColStartTime, 2);
    ClearCells(t);
    EXPECT_EQ(Starts(), QStringList({ t1, "", t3, "", "" }));
    EXPECT_EQ(hooks.Calls, QStringList({ "update -1 2" }));

    hooks.Calls.clear();
    Activate(TG::ColSerialNo, 2);
    ClearCells(t);
    EXPECT_EQ(t.RowSerial(2), 2);
    EXPECT_TRUE(hooks.Calls.isEmpty());
}

TEST_F(LineOpsTest, ClearCellsNeverClearsTheSerialNumbers)
{
    FillThree();
    g().SetText(TG::ColMarginV, 1, QStringLiteral("9"));
    Select({ CSpreadBlock { 1, -1, 2, -1 }, CSpreadBlock { 3, 14, 3, 16 } });
    ClearCells(t);
    EXPECT_EQ(Starts(), QStringList({ "", "", t3, "", "" }));
    EXPECT_EQ(Dialogs(), QStringList({ "", "", "", "", "" }));
    EXPECT_EQ(Column(TG::ColMarginV).first(), "");
    EXPECT_EQ(Serials(), QList<qint32>({ 1, 2, 3, 4, 5 }));
    EXPECT_EQ(hooks.Calls, QStringList({ "update -1 1", "update -1 2", "update -1 3" }));
}

// ---- flags and list choices ----------------------------------------------------------

TEST_F(LineOpsTest, FlagsOnWholeColumnsLeaveOutTheLastTwoRows)
{
    FillThree();
    Select({ CSpreadBlock { -1, 15, -1, 15 } });
    SetChangedFlag(t, true);
    SetQuestionFlag(t, true);
    SetCheckDisabledFlag(t, true);
    for (int row = 1; row <= 5; ++row) {
        EXPECT_EQ(t.RowChanged(row), row <= 3) << row;
        EXPECT_EQ(t.RowQuestion(row), row <= 3) << row;
        EXPECT_EQ(t.RowCheckDisabled(row), row <= 3) << row;
    }
    EXPECT_EQ(g().GetForeColor(TG::ColSerialNo, 2), TG::ChangedForeColor);
    // Flags tell no preview, so the document stays unchanged.
    EXPECT_TRUE(hooks.Calls.isEmpty());

    g().ClearSelection();
    Activate(TG::ColDialog, 2);
    SetQuestionFlag(t, false);
    EXPECT_FALSE(t.RowQuestion(2));
    EXPECT_EQ(g().GetBackColor(TG::ColDialog, 2), TG::NoQuestionBackColor);
    EXPECT_TRUE(t.RowQuestion(1));
}

TEST_F(LineOpsTest, SetListChoiceOnlyWhereTheListHasTheText)
{
    FillThree();
    t.RefreshOwnerColumn({ "NTP", "Bob" });
    Select({ CSpreadBlock { 1, 1, 2, 15 } });
    SetListChoice(t, QStringLiteral("Nobody"), TG::ColOwner);
    EXPECT_EQ(Column(TG::ColOwner), QStringList({ "NTP", "NTP", "NTP", "NTP", "NTP" }));
    SetListChoice(t, QStringLiteral("Bob"), TG::ColOwner);
    EXPECT_EQ(Column(TG::ColOwner), QStringList({ "Bob", "Bob", "NTP", "NTP", "NTP" }));
    EXPECT_EQ(hooks.Calls, QStringList({ "update -1 1", "update -1 2", "update -1 1", "update -1 2" }));

    hooks.Calls.clear();
    Select({ CSpreadBlock { -1, 6, -1, 6 } });
    SetListChoice(t, QStringLiteral("NTP"), TG::ColOwner);
    EXPECT_EQ(Column(TG::ColOwner).first(), "Bob");
    EXPECT_TRUE(hooks.Calls.isEmpty());
}

// ---- pasting -------------------------------------------------------------------------

TEST_F(LineOpsTest, PasteLinesWritesDownAndGrowsTheGrid)
{
    Fill({ { t1, e1, "a" }, { t2, e2, "b" } });
    Activate(TG::ColDialog, 2);
    PasteLines(t, QStringLiteral("x\r\ny\r\nz"));
    EXPECT_EQ(Dialogs(), QStringList({ "a", "x", "y", "z", "", "" }));
    EXPECT_EQ(g().ActiveRow(), 2);
    EXPECT_EQ(g().ActiveCol(), TG::ColDialog);
    EXPECT_EQ(hooks.Calls,
        QStringList({ "update 15 2", "update 15 3", "create 5 #5", "update 15 4", "create 6 #6" }));
}

// ---- popup menu ----------------------------------------------------------------------

TEST(LineOpsPopup, EnablingFollowsTheSelection)
{
    using B = CSpreadBlock;
    const auto on
        = [](const QList<B> &blocks, int activeCol) { return PopupMenuEnabling(blocks, activeCol); };

    EXPECT_TRUE(on({}, 3).AjustTime);
    EXPECT_FALSE(on({}, 15).AjustTime);
    EXPECT_TRUE(on({}, 15).Effect);
    EXPECT_TRUE(on({}, 15).InsertLines);
    EXPECT_FALSE(on({}, 3).Increace);

    EXPECT_TRUE(on({ B { 1, 4, 2, 6 } }, 15).AjustTime);
    EXPECT_TRUE(on({ B { 1, -1, 2, -1 } }, 15).AjustTime); // whole rows cover every column
    EXPECT_FALSE(on({ B { 1, 5, 2, 15 } }, 3).AjustTime);

    EXPECT_FALSE(on({ B { 1, 3, 1, 3 }, B { 4, 3, 4, 3 } }, 3).InsertLines);
    EXPECT_FALSE(on({ B { 1, 3, 1, 3 }, B { 4, 3, 4, 3 } }, 3).DeleteLines);
    EXPECT_FALSE(on({ B { -1, 3, -1, 4 } }, 3).InsertLines);
    EXPECT_TRUE(on({ B { 2, -1, 5, -1 } }, 3).DeleteLines);

    for (int col : { 3, 4, 7, 8, 9 })
        EXPECT_TRUE(on({ B { 1, col, 5, col } }, 1).Increace) << col;
    EXPECT_FALSE(on({ B { 1, 3, 5, 4 } }, 1).Increace);
    EXPECT_FALSE(on({ B { 1, 10, 5, 10 } }, 1).Increace);

    EXPECT_TRUE(on({ B { 1, 15, 2, 15 }, B { 5, 15, 5, 15 } }, 3).Effect);
    EXPECT_FALSE(on({ B { 1, 14, 2, 15 } }, 15).Effect);
}

// ---- bad input -----------------------------------------------------------------------

TEST_F(LineOpsTest, EmptyGridAndBlocksBeyondTheGrid)
{
    g().setMaxRows(0);
    for (int which : { WholeRows, TimeCells, DialogCells }) {
        InsertRows(t, which);
        DeleteRows(t, which);
    }
    ClearCells(t);
    SetChangedFlag(t, true);
    PasteLines(t, QStringLiteral("x"));
    EXPECT_EQ(g().MaxRows(), 0);

    FillThree();
    Select({ CSpreadBlock { 4, 1, 40, 15 } });
    DeleteRows(t, TimeCells);
    DeleteRows(t, WholeRows);
    EXPECT_EQ(Dialogs(), QStringList({ "a", "b", "c" }));
    Select({ CSpreadBlock { 30, -1, 40, -1 } });
    InsertRows(t, WholeRows);
    ClearCells(t);
    SetQuestionFlag(t, true);
    EXPECT_EQ(Dialogs(), QStringList({ "a", "b", "c" }));
}
