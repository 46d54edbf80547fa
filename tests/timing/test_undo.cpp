// Undo and redo in the timing grid: every kind of action is one step that goes back to the
// exact grid it found and forward to the one it left, with the preview and the document's
// changed state following.
#include "core/CGridAction.h"
#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "formats/CTiming.h"
#include "player/CPreview.h"
#include "script/CSSAContent.h"
#include "timing/CGridFind.h"
#include "timing/CGridHistory.h"
#include "timing/CTimePointCapture.h"
#include "timing/CTimingGrid.h"
#include "timing/basLineOps.h"
#include "timing/basTimeAdjust.h"

#include "core/CUndoStack.h"
#include <QCoreApplication>
#include <QSet>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <random>

namespace {

using TG = CTimingGrid;

// Everything undo must put back: each cell's text, colours, mark, choice and kind, the
// row labels, the columns' defaults, the row count and the cursor.
struct GridState
{
    struct Cell
    {
        QString Text;
        quint32 Fore;
        quint32 Back;
        int Choice;
        bool Mark;
        CSpreadCellType Type;
        bool operator==(const Cell &) const = default;
    };
    struct Column
    {
        quint32 Fore;
        quint32 Back;
        CSpreadCellType Type;
        bool operator==(const Column &) const = default;
    };
    std::vector<std::vector<Cell>> Rows;
    std::vector<Column> Columns;
    std::pair<int, int> Cursor;
    // The content; where the cursor stands is compared on its own.
    bool operator==(const GridState &other) const { return Rows == other.Rows && Columns == other.Columns; }
};

GridState Snapshot(CSpread &g)
{
    const int row = g.Row(), col = g.Col();
    GridState s;
    for (int r = 1; r <= g.MaxRows(); ++r) {
        std::vector<GridState::Cell> cells;
        for (int c = 0; c <= g.MaxCols(); ++c) {
            g.setRow(r);
            g.setCol(c);
            cells.push_back({ g.GetText(c, r), g.GetForeColor(c, r), g.GetBackColor(c, r),
                g.GetListChoice(c, r), g.GetCellMark(c, r), c > 0 ? g.CellType() : CSpreadCellType() });
        }
        s.Rows.push_back(std::move(cells));
    }
    for (int c = 1; c <= g.MaxCols(); ++c) {
        g.setRow(-1);
        g.setCol(c);
        s.Columns.push_back({ g.ForeColor(), g.BackColor(), g.CellType() });
    }
    g.setRow(row);
    g.setCol(col);
    s.Cursor = { g.ActiveCol(), g.ActiveRow() };
    return s;
}

// Where two states part, for a failure message.
std::string Difference(const GridState &a, const GridState &b)
{
    if (a.Rows.size() != b.Rows.size())
        return "rows " + std::to_string(a.Rows.size()) + " against " + std::to_string(b.Rows.size());
    for (size_t r = 0; r < a.Rows.size(); ++r)
        for (size_t c = 0; c < a.Rows[r].size(); ++c)
            if (!(a.Rows[r][c] == b.Rows[r][c]))
                return "cell " + std::to_string(c) + "," + std::to_string(r + 1) + ": '"
                    + a.Rows[r][c].Text.toStdString() + "' against '" + b.Rows[r][c].Text.toStdString() + "'";
    if (!(a.Columns == b.Columns))
        return "column defaults";
    return "cursor " + std::to_string(a.Cursor.first) + "," + std::to_string(a.Cursor.second) + " against "
        + std::to_string(b.Cursor.first) + "," + std::to_string(b.Cursor.second);
}

// The content and the cursor.
bool Same(const GridState &a, const GridState &b)
{
    return a == b && a.Cursor == b.Cursor;
}

// A timing document with its grid and preview, as a window sets them up.
class UndoTest : public ::testing::Test
{
protected:
    UndoTest()
    {
        doc.Init(1);
        t.SetPreviewHooks(doc.Preview.get());
        t.SetDocument(&doc);
        t.ResetGrid();
        doc.Preview->AttachGrid(&g());
        capture = std::make_unique<CTimePointCapture>(doc, t);
        doc.setChanged(false);
    }
    void SetUp() override { SetPrompt(&prompt); }
    void TearDown() override { SetPrompt(nullptr); }

    CSpread &g() { return t.Spread(); }
    CGridHistory &history() { return t.History(); }
    CUndoStack &stack() { return doc.UndoStack(); }

    void Fill(int lines)
    {
        const CGridAction action(t, nullptr, CGridAction::Reset);
        for (int r = 1; r <= lines; ++r) {
            g().SetText(TG::ColStartTime, r, TimeToString(r * 2.0, 2));
            g().SetText(TG::ColEndTime, r, TimeToString(r * 2.0 + 1.5, 2));
            g().SetText(TG::ColDialog, r, QStringLiteral("第%1句").arg(r));
            t.TellPreview(-1, r);
            t.AppendRow();
        }
    }
    void Activate(int col, int row)
    {
        g().setRow(row);
        g().setCol(col);
        g().ActivateCell();
    }
    QStringList Starts()
    {
        QStringList texts;
        for (int r = 1; r <= g().MaxRows(); ++r)
            texts << g().GetText(TG::ColStartTime, r);
        return texts;
    }

    // The preview holds one line for each serial number in the grid and no other.
    void ExpectPreviewInStep()
    {
        QSet<qint32> lines;
        for (const CPreviewLine *line : *doc.Preview)
            lines.insert(line->SerialNo());
        QSet<qint32> serials;
        for (int r = 1; r <= g().MaxRows(); ++r)
            if (const qint32 serial = t.RowSerial(r); serial > 0)
                serials.insert(serial);
        ASSERT_EQ(lines, serials);
    }

    CTiming doc;
    CTimingGrid t;
    std::unique_ptr<CTimePointCapture> capture;
    CScriptedPrompt prompt;
};

TEST_F(UndoTest, EveryKindOfActionIsOneStepThatGoesBackAndForthExactly)
{
    CGridFind find;
    find.Init(&g());
    const auto at = [&](int col, int row) { return [this, col, row] { Activate(col, row); }; };
    const auto selected = [&](CSpreadBlock block) { return [this, block] { g().SetSelection({ block }); }; };
    // Each action with what the user does first (the cursor or the selection, which are
    // no step of their own), then the action itself.
    const struct
    {
        const char *Name;
        std::function<void()> Prepare;
        std::function<void()> Run;
    } actions[] = {
        { "start stroke", at(TG::ColStartTime, 2), [&] { capture->SetStartTimePoint(61.5); } },
        { "end stroke on the row before the last", [&] { Activate(TG::ColEndTime, g().MaxRows() - 1); },
            [&] { capture->SetEndTimePoint(62.25); } },
        { "stroke at the cell", at(TG::ColEndTime, 1), [&] { capture->TimePointAtCell(7); } },
        { "dragged edge", nullptr, [&] { capture->SetRowTime(3, TG::ColEndTime, 9.5); } },
        { "committed edit", nullptr,
            [&] { g().setData(g().index(0, TG::ColDialog - 1), QStringLiteral("改过")); } },
        { "insert rows", selected({ 2, -1, 3, -1 }),
            [&] { basLineOps::InsertRows(t, basLineOps::WholeRows); } },
        { "insert time cells", at(TG::ColStartTime, 1),
            [&] { basLineOps::InsertRows(t, basLineOps::TimeCells); } },
        { "insert dialogue cells", at(TG::ColDialog, 2),
            [&] { basLineOps::InsertRows(t, basLineOps::DialogCells); } },
        { "delete rows", selected({ 1, -1, 2, -1 }),
            [&] { basLineOps::DeleteRows(t, basLineOps::WholeRows); } },
        { "delete time cells", at(TG::ColEndTime, 3),
            [&] { basLineOps::DeleteRows(t, basLineOps::TimeCells); } },
        { "delete dialogue cells", at(TG::ColDialog, 1),
            [&] { basLineOps::DeleteRows(t, basLineOps::DialogCells); } },
        { "clear", at(TG::ColDialog, 2), [&] { basLineOps::ClearCells(t); } },
        { "flag", at(TG::ColDialog, 2), [&] { basLineOps::SetQuestionFlag(t, true); } },
        { "list choice", at(TG::ColDialog, 2),
            [&] { basLineOps::SetListChoice(t, QStringLiteral("注释"), 1); } },
        { "shift all", selected({ -1, -1, -1, -1 }), [&] { basTimeAdjust::ShiftTimes(t, 1.25); } },
        { "scale", nullptr, [&] { basTimeAdjust::ScaleTimes(t, 3); } },
        { "fill", selected({ 1, 4, 4, 4 }), [&] { basTimeAdjust::FillIncrement(t, 2); } },
        { "paste", at(TG::ColDialog, 4), [&] { basLineOps::PasteLines(t, QStringLiteral("a\r\nb\r\nc")); } },
        { "replace all", nullptr,
            [&] {
                find.setTxtFind(QStringLiteral("句"));
                find.setTxtReplace(QStringLiteral("行"));
                find.cmdReplaceAll();
            } },
        { "speaker list", nullptr,
            [&] {
                t.RefreshOwnerCells({ QStringLiteral("甲"), QStringLiteral("NTP") });
            } },
        { "append a file", nullptr,
            [&] {
                CSSAContent lines;
                lines.Read(
                    u"[Events]\r\nDialogue: 0,0:00:01.00,0:00:02.00,Default,,0000,0000,0000,,新的\r\n");
                t.OpenMode = 1;
                t.LoadGridFromContent(lines);
                t.OpenMode = 0;
            } },
        { "dialogue poured in", nullptr,
            [&] {
                t.FillTextColumn({ QStringLiteral("x"), QStringLiteral("y") });
            } },
    };
    Fill(6);
    for (const auto &action : actions) {
        SCOPED_TRACE(action.Name);
        g().ClearSelection();
        if (action.Prepare)
            action.Prepare();
        const GridState before = Snapshot(g());
        const int steps = stack().Count();
        action.Run();
        const GridState after = Snapshot(g());
        ASSERT_FALSE(before == after);
        EXPECT_EQ(stack().Count(), steps + 1);
        EXPECT_EQ(stack().UndoText().isEmpty(), false);
        ASSERT_TRUE(history().Undo());
        EXPECT_TRUE(Same(Snapshot(g()), before)) << Difference(Snapshot(g()), before);
        ExpectPreviewInStep();
        ASSERT_TRUE(history().Redo());
        EXPECT_TRUE(Same(Snapshot(g()), after)) << Difference(Snapshot(g()), after);
        ExpectPreviewInStep();
    }
    // An action that changes nothing (a stroke in the dialogue column) is no step.
    const int steps = stack().Count();
    Activate(TG::ColDialog, 1);
    capture->TimePointAtCell(5);
    EXPECT_EQ(stack().Count(), steps);
}

TEST_F(UndoTest, ChangesOutsideActionsTypingAndSpareRowsJoinAsTheySay)
{
    Fill(3);
    // A change outside any action is a step of its own once control is back in the loop.
    g().SetText(TG::ColDialog, 1, QStringLiteral("无人看管"));
    EXPECT_EQ(stack().Count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(stack().Count(), 1);
    EXPECT_EQ(stack().UndoText(), Msg("VELMAR_UNDO_200"));

    // Typing into one cell goes back in one step; typing into another cell is another.
    for (const QString &text : { QStringLiteral("a"), QStringLiteral("ab"), QStringLiteral("abc") }) {
        const CGridAction typing(t, "VELMAR_UNDO_202", CGridAction::Typing);
        g().SetText(TG::ColDialog, 2, text);
    }
    {
        const CGridAction typing(t, "VELMAR_UNDO_202", CGridAction::Typing);
        g().SetText(TG::ColDialog, 3, QStringLiteral("z"));
    }
    EXPECT_EQ(stack().Count(), 3);
    // A spare row made where the cursor went goes with the step before it.
    const int rows = g().MaxRows();
    {
        const CGridAction spare(t, "VELMAR_UNDO_219", CGridAction::FollowsPrevious);
        t.AppendRow();
    }
    EXPECT_EQ(stack().Count(), 3);
    history().Undo();
    EXPECT_EQ(g().MaxRows(), rows);
    EXPECT_EQ(g().GetText(TG::ColDialog, 3), QStringLiteral("第3句"));
    history().Undo();
    EXPECT_EQ(g().GetText(TG::ColDialog, 2), QStringLiteral("第2句"));
    history().Undo();
    EXPECT_EQ(g().GetText(TG::ColDialog, 1), QStringLiteral("第1句"));
    EXPECT_FALSE(history().CanUndo());

    // Undo is refused inside an action, and a nested action is part of the outer step.
    {
        const CGridAction outer(t, "VELMAR_UNDO_215");
        g().SetText(TG::ColDialog, 1, QStringLiteral("外"));
        EXPECT_FALSE(history().Undo());
        const CGridAction inner(t, "VELMAR_UNDO_203");
        g().SetText(TG::ColDialog, 2, QStringLiteral("内"));
    }
    EXPECT_EQ(stack().Count(), 1);
    EXPECT_EQ(stack().UndoText(), Msg("VELMAR_UNDO_215"));
    // Opening a file over the grid leaves nothing to undo.
    const CGridAction reset(t, nullptr, CGridAction::Reset);
    t.ResetGrid();
}

TEST_F(UndoTest, ChangedFollowsTheCleanStateThroughSaveAndUndo)
{
    Fill(4);
    doc.setChanged(false);
    // A replace leaves Changed as it is, as without undo; the flags too.
    CGridFind find;
    find.Init(&g());
    find.setTxtFind(QStringLiteral("句"));
    find.setTxtReplace(QStringLiteral("行"));
    find.cmdReplaceAll();
    Activate(TG::ColDialog, 2);
    basLineOps::SetChangedFlag(t, true);
    EXPECT_FALSE(doc.Changed());
    EXPECT_EQ(stack().Count(), 2);
    // Taken back it leaves the document as read: unchanged.
    history().Undo();
    history().Undo();
    EXPECT_FALSE(doc.Changed());
    history().Redo();
    EXPECT_TRUE(doc.Changed());
    history().Undo();

    Activate(TG::ColStartTime, 1);
    capture->SetStartTimePoint(1.5);
    EXPECT_TRUE(doc.Changed());
    history().Undo();
    EXPECT_FALSE(doc.Changed());
    history().Redo();
    EXPECT_TRUE(doc.Changed());
    // A save moves the clean state: undoing now makes it changed, redoing clean again.
    doc.setChanged(false);
    history().Undo();
    EXPECT_TRUE(doc.Changed());
    history().Redo();
    EXPECT_FALSE(doc.Changed());
    // A new step over undone ones drops them; the saved state can no longer come back.
    history().Undo();
    capture->SetEndTimePoint(3);
    EXPECT_FALSE(history().CanRedo());
    EXPECT_TRUE(doc.Changed());
    history().Undo();
    EXPECT_TRUE(doc.Changed());
}

TEST_F(UndoTest, PreviewShowsWhatUndoAndRedoPutBack)
{
    Fill(3);
    const auto line = [&](int row) { return doc.Preview->RowLine(row); };
    Activate(TG::ColDialog, 2);
    basLineOps::PasteLines(t, QStringLiteral("新一\r\n新二"));
    ASSERT_TRUE(line(2) && line(3));
    EXPECT_EQ(line(2)->Dialog(), QStringLiteral("新一"));
    history().Undo();
    EXPECT_EQ(line(2)->Dialog(), QStringLiteral("第2句"));
    EXPECT_EQ(line(3)->Dialog(), QStringLiteral("第3句"));
    history().Redo();
    EXPECT_EQ(line(3)->Dialog(), QStringLiteral("新二"));

    // Deleted rows come back with their serial numbers and their lines.
    const qint32 serial = t.RowSerial(2);
    g().SetSelection({ { 1, -1, 2, -1 } });
    basLineOps::DeleteRows(t, basLineOps::WholeRows);
    EXPECT_EQ(doc.Preview->Line(serial), nullptr);
    history().Undo();
    EXPECT_EQ(t.RowSerial(2), serial);
    ASSERT_NE(doc.Preview->Line(serial), nullptr);
    EXPECT_EQ(doc.Preview->Line(serial)->Dialog(), QStringLiteral("新一"));
    EXPECT_DOUBLE_EQ(doc.Preview->Line(serial)->StartTime(), 4);
    ExpectPreviewInStep();
}

TEST_F(UndoTest, TheBudgetDropsTheOldestStepsAndNeverTheNewest)
{
    Fill(8);
    // The start times after each stroke: column 3 of the grid after step i.
    std::vector<QStringList> starts { Starts() };
    for (int i = 0; i < 40; ++i) {
        Activate(TG::ColStartTime, 1 + i % 8);
        capture->SetStartTimePoint(10 + i);
        starts.push_back(Starts());
    }
    ASSERT_EQ(stack().Count(), 40);
    const qint64 each = history().Bytes() / 40;
    EXPECT_GT(each, 0);
    EXPECT_LT(each, 1024);

    // Twenty steps' worth: the oldest go until the rest fit.
    doc.setChanged(false);
    const int cleanAt = stack().Index();
    history().SetBudget(each * 20);
    EXPECT_LE(history().Bytes(), each * 20);
    EXPECT_GE(stack().Count(), 15);
    EXPECT_LT(stack().Count(), 40);
    EXPECT_EQ(stack().Index(), stack().Count());
    EXPECT_EQ(stack().CleanIndex(), cleanAt - (40 - stack().Count()));
    // What is left still goes back and forth: all the way back is the grid after the
    // last step that was dropped.
    const int left = stack().Count();
    while (history().Undo()) { }
    EXPECT_EQ(Starts(), starts[size_t(40 - left)]);
    while (history().Redo()) { }
    EXPECT_EQ(Starts(), starts[40]);

    // A budget below one step keeps the newest step all the same. The state saved is
    // still there below it, until a new step pushes it out.
    history().SetBudget(1);
    EXPECT_EQ(stack().Count(), 1);
    Activate(TG::ColDialog, 1);
    basLineOps::PasteLines(t, QStringLiteral("大的一步\r\n大的一步"));
    EXPECT_EQ(stack().Count(), 1);
    EXPECT_EQ(stack().UndoText(), Msg("VELMAR_UNDO_215"));
    history().Undo();
    EXPECT_FALSE(doc.Changed());
    history().Redo();
    EXPECT_TRUE(doc.Changed());
    basLineOps::ClearCells(t);
    EXPECT_EQ(stack().Count(), 1);
    history().Undo();
    EXPECT_TRUE(doc.Changed());
    EXPECT_FALSE(history().CanUndo());
}

// A random run of mixed actions, branches among undone steps included. After each action
// its step goes back to the state before and forth again, and every so often the whole
// history is undone and redone, each state compared cell by cell with the one kept.
TEST_F(UndoTest, RandomActionsUndoAndRedoToTheKeptStates)
{
    std::mt19937 random(20260419);
    const auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random); };
    const auto row = [&] { return pick(1, g().MaxRows()); };
    // Blocks of what a user can select: the serial numbers are hidden.
    const auto block = [&] {
        const int r1 = pick(-1, g().MaxRows() + 1);
        const int c1 = pick(-1, 15);
        return CSpreadBlock { r1, c1, r1 < 0 ? -1 : pick(r1, r1 + 3), c1 < 0 ? -1 : pick(c1, 15) };
    };
    const auto select = [&] {
        QList<CSpreadBlock> blocks;
        for (int i = pick(0, 2); i > 0; --i)
            blocks << block();
        g().SetSelection(blocks);
    };
    const auto text = [&] { return QStringLiteral("t%1").arg(pick(0, 99)); };
    const auto time = [&] { return pick(0, 40000) / 100.0; };
    CGridFind find;
    find.Init(&g());
    Fill(6);
    history().SetBudget(qint64(1) << 40);

    // The grid after each step, where that step left the cursor, and where the cursor
    // stood when the next step began: undo comes back with the one, redo with the other.
    std::vector<GridState> states { Snapshot(g()) };
    std::vector<std::pair<int, int>> nextBegan(1);
    const auto check = [&](int index, const char *what, int step, bool undone) {
        const GridState now = Snapshot(g());
        ASSERT_TRUE(now == states[size_t(index)])
            << what << " at step " << step << ": " << Difference(now, states[size_t(index)]);
        ASSERT_EQ(now.Cursor, undone ? nextBegan[size_t(index)] : states[size_t(index)].Cursor)
            << what << " at step " << step;
        ExpectPreviewInStep();
        ASSERT_FALSE(HasFatalFailure()) << what << " at step " << step;
    };

    for (int step = 0; step < 3000; ++step) {
        bool joins = false;
        bool branch = false;
        const int before = stack().Index();
        select();
        Activate(pick(0, 15), row());
        const std::pair<int, int> began { g().ActiveCol(), g().ActiveRow() };
        const int kind = pick(0, 19);
        switch (kind) {
        case 0:
            capture->SetStartTimePoint(time());
            break;
        case 1:
            capture->SetEndTimePoint(time());
            break;
        case 2:
            capture->SetRowTime(row(), pick(TG::ColStartTime, TG::ColEndTime), time());
            break;
        case 3: {
            joins = true;
            const CGridAction typing(t, "VELMAR_UNDO_202", CGridAction::Typing);
            g().SetText(TG::ColDialog, pick(1, 3), text());
            break;
        }
        case 4:
            g().setData(g().index(row() - 1, pick(1, 15) - 1), text());
            break;
        case 5:
            basLineOps::InsertRows(t, std::array { -1, 3, 15 }[size_t(pick(0, 2))]);
            break;
        case 6:
            basLineOps::DeleteRows(t, std::array { -1, 3, 15 }[size_t(pick(0, 2))]);
            break;
        case 7:
            basLineOps::ClearCells(t);
            break;
        case 8:
            (pick(0, 1) ? basLineOps::SetChangedFlag : basLineOps::SetCheckDisabledFlag)(t, pick(0, 1));
            break;
        case 9:
            basLineOps::SetListChoice(
                t, std::array { QStringLiteral("注释"), QStringLiteral("对白") }[size_t(pick(0, 1))], 1);
            break;
        case 10:
            basTimeAdjust::ShiftTimes(t, pick(-300, 300) / 100.0);
            break;
        case 11:
            basTimeAdjust::ScaleTimes(t, pick(-50, 50) / 10.0);
            break;
        case 12:
            basLineOps::PasteLines(t, text() + QStringLiteral("\r\n") + text());
            break;
        case 13:
            find.setTxtFind(QStringLiteral("t%1").arg(pick(0, 9)));
            find.setTxtReplace(text());
            find.cmdReplaceAll();
            break;
        case 14: {
            // The grid's own operations, with column defaults and list kinds among them.
            // They tell no preview: its lines are made again from the grid afterwards.
            const CGridAction action(t, "VELMAR_UNDO_200");
            g().setRow(pick(-1, g().MaxRows()));
            g().setCol(pick(-1, 16));
            switch (pick(0, 5)) {
            case 0:
                g().setMaxRows(pick(2, 40));
                break;
            case 1: {
                const CSpreadBlock b = block();
                g().setRow(b.Row), g().setCol(b.Col), g().setRow2(b.Row2), g().setCol2(b.Col2);
                g().setDestRow(pick(-1, g().MaxRows() + 1));
                g().setDestCol(pick(-1, 17));
                g().MoveBlock();
                break;
            }
            case 2:
                g().setForeColor(quint32(pick(0, 3)));
                break;
            case 3:
                g().setCol(pick(5, 6));
                g().setListItems(text() + QStringLiteral("\t") + text());
                break;
            case 4:
                g().setCellMark(pick(0, 1));
                g().setBackColor(quint32(pick(0, 3)));
                break;
            default:
                g().InsertRow();
                g().setRow(row());
                g().DeleteRow();
                break;
            }
            doc.Preview->Clear();
            doc.Preview->AttachGrid(&g());
            break;
        }
        case 15:
            t.RefreshOwnerCells({ text(), QStringLiteral("NTP") });
            break;
        case 16:
            // A change outside any action.
            g().SetText(pick(1, 15), row(), text());
            history().CloseImplicitStep();
            break;
        case 17: {
            joins = true;
            if (g().MaxRows() > 60)
                break;
            const CGridAction spare(t, "VELMAR_UNDO_219", CGridAction::FollowsPrevious);
            t.AppendRow();
            break;
        }
        case 18:
            // A branch: some steps back, then the run goes on from there.
            branch = true;
            for (int back = pick(1, 3); back > 0 && history().Undo(); --back)
                check(stack().Index(), "branch", step, true);
            break;
        default:
            g().SetSelection({ { pick(1, 4), pick(3, 4), pick(5, 8), 0 } });
            basTimeAdjust::FillIncrement(t, pick(1, 2));
            break;
        }
        if (HasFatalFailure())
            return;
        const int index = stack().Index();
        if (index == before + 1) {
            // A new step, and the steps that were undone are gone.
            ASSERT_EQ(stack().Count(), index) << step;
            states.resize(size_t(index));
            states.push_back(Snapshot(g()));
            nextBegan.resize(size_t(index) + 1);
            nextBegan[size_t(index) - 1] = began;
        } else if (!branch) {
            ASSERT_EQ(index, before) << "step " << step << " kind " << kind;
            const GridState now = Snapshot(g());
            if (joins && stack().Count() == index && !(now == states[size_t(index)])) {
                // Joined the step before: that step now ends here.
                states.resize(size_t(index) + 1);
                nextBegan.resize(size_t(index) + 1);
                states[size_t(index)] = now;
            } else {
                ASSERT_TRUE(now == states[size_t(index)]) << "an action that made no step at " << step << ": "
                                                          << Difference(now, states[size_t(index)]);
            }
        }

        if (history().Undo()) {
            check(index - 1, "undo", step, true);
            history().Redo();
            check(index, "redo", step, false);
        }
        if (step % 400 == 399) {
            for (int i = index - 1; history().Undo(); --i)
                check(i, "undo all", step, true);
            for (int i = 1; history().Redo(); ++i)
                check(i, "redo all", step, false);
        }
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(stack().Count(), 100);
}

} // namespace
