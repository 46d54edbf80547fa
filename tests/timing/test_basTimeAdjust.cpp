#include "GridOpsFixture.h"

#include "core/basMain.h"
#include "core/basTime.h"
#include "timing/CSliderTimeModel.h"
#include "timing/ITimeValueDialog.h"
#include "timing/basTimeAdjust.h"

#include <functional>
#include <random>

using namespace basTimeAdjust;

namespace {

using TG = CTimingGrid;

const QString fault = QString::fromUtf8("时间轴调整出错");

// A dialog that records the model it was shown and answers through a script.
class ScriptedTimeDialog : public ITimeValueDialog
{
public:
    void ShowModal(CSliderTimeModel &model) override
    {
        Shown = true;
        Value = model.Value();
        Title = model.Title();
        Description = model.Description();
        AllEnabled = model.EnableSign() && model.EnableHour() && model.EnableMinite() && model.EnableSecond()
            && model.EnableMiniSecond();
        if (Answer)
            Answer(model);
    }

    void SetTopMost(bool on) override { TopMost = on; }

    std::function<void(CSliderTimeModel &)> Answer;
    bool Shown = false;
    bool TopMost = false;
    double Value = -1;
    QString Title;
    QString Description;
    bool AllEnabled = false;
};

class TimeAdjustTest : public GridOpsTest
{
protected:
    void TearDown() override
    {
        AvoidOverlapTiming = false;
        GridOpsTest::TearDown();
    }
    void SelectTimes(int row, int row2, int col = 3, int col2 = 4)
    {
        Select({ CSpreadBlock { row, col, row2, col2 } });
    }
};

} // namespace

// ---- shifting ------------------------------------------------------------------------

TEST_F(TimeAdjustTest, ShiftWithoutBlockTakesOnlyAnActiveTimeCell)
{
    Fill({ { "0:00:01.00", "0:00:02.00", "a" } });
    Activate(TG::ColDialog, 1);
    ShiftTimes(t, -0.1);
    EXPECT_EQ(Starts().first(), "0:00:01.00");
    EXPECT_TRUE(hooks.Calls.isEmpty());

    Activate(TG::ColEndTime, 1);
    ShiftTimes(t, -0.1);
    EXPECT_EQ(Starts().first(), "0:00:01.00");
    EXPECT_EQ(Ends().first(), "0:00:01.90");
    EXPECT_EQ(hooks.Calls, QStringList({ "update 4 1" }));
}

TEST_F(TimeAdjustTest, ShiftOfABlockLeavesBlankCellsButTellsThem)
{
    Fill({ { "0:00:01.00", "0:00:02.00", "a" }, { "   ", "0:00:00.05", "b" }, { "", "", "c" } });
    Select({ CSpreadBlock { -1, 3, -1, 4 } });
    ShiftTimes(t, -0.1);
    EXPECT_EQ(Starts(), QStringList({ "0:00:00.90", "   ", "", "", "" }));
    // No lower limit: a time shifted below 0 is written as 0.
    EXPECT_EQ(Ends(), QStringList({ "0:00:01.90", "0:00:00.00", "", "", "" }));
    // Column by column, rows 1 to the row before the last.
    EXPECT_EQ(hooks.Calls,
        QStringList({ "update 3 1", "update 3 2", "update 3 3", "update 3 4", "update 4 1", "update 4 2",
            "update 4 3", "update 4 4" }));
    EXPECT_TRUE(g().ReDraw());
}

TEST_F(TimeAdjustTest, RepeatedShiftsWorkOnTheHundredths)
{
    Fill({ { "0:00:01.00", "0:00:59.95", "a" } });
    SelectTimes(1, 1);
    for (int i = 0; i < 10; ++i)
        ShiftTimes(t, 0.1);
    EXPECT_EQ(Starts().first(), "0:00:02.00");
    EXPECT_EQ(Ends().first(), "0:01:00.95");
    for (int i = 0; i < 10; ++i)
        ShiftTimes(t, -0.01);
    EXPECT_EQ(Starts().first(), "0:00:01.90");
}

TEST_F(TimeAdjustTest, TextThatIsNoTimeReadsAsZero)
{
    Fill({ { "abc", "x:yz:ab.cd", "a" } });
    SelectTimes(1, 1);
    ShiftTimes(t, 1.5);
    EXPECT_EQ(Starts().first(), "0:00:01.50");
    EXPECT_EQ(Ends().first(), "0:00:01.50");
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(TimeAdjustTest, OverlapGuardStopsJustAfterThePreviousLine)
{
    AvoidOverlapTiming = true;
    Fill({ { "0:00:01.00", "0:00:03.00", "a" }, { "0:00:05.00", "0:00:06.00", "b" } });
    Activate(TG::ColStartTime, 2);
    ShiftTimes(t, -3);
    EXPECT_EQ(Starts().at(1), "0:00:03.01");
    // Moving a start later is free.
    ShiftTimes(t, 10);
    EXPECT_EQ(Starts().at(1), "0:00:13.01");

    // An end moved later stops just before the next line; moved earlier it is free.
    Fill({ { "0:00:01.00", "0:00:03.00", "a" }, { "0:00:05.00", "0:00:06.00", "b" } });
    Activate(TG::ColEndTime, 1);
    ShiftTimes(t, 4);
    EXPECT_EQ(Ends().first(), "0:00:04.99");
    ShiftTimes(t, -4);
    EXPECT_EQ(Ends().first(), "0:00:00.99");
}

TEST_F(TimeAdjustTest, OverlapGuardIgnoresOverlapsAndEmptyRows)
{
    AvoidOverlapTiming = true;
    // The other line already ends after this start: nothing holds the start back.
    Fill({ { "0:00:01.00", "0:00:05.50", "a" }, { "0:00:05.00", "0:00:06.00", "b" } });
    EXPECT_DOUBLE_EQ(LimitShiftForOverlap(t, 2, 3, -3), -3);
    // Rows whose times are both 0 limit nothing.
    Fill({ { "0:00:00.00", "0:00:00.00", "a" }, { "0:00:01.00", "0:00:02.00", "b" } });
    EXPECT_DOUBLE_EQ(LimitShiftForOverlap(t, 2, 3, -0.5), -0.5);
    EXPECT_DOUBLE_EQ(LimitShiftForOverlap(t, 2, 4, 0), 0);
    EXPECT_DOUBLE_EQ(LimitShiftForOverlap(t, 2, 15, -7), -7);
}

TEST_F(TimeAdjustTest, OverlapGuardSeesTheBlockAsItMoves)
{
    AvoidOverlapTiming = true;
    Fill({ { "0:00:02.00", "0:00:03.00", "a" }, { "0:00:04.00", "0:00:05.00", "b" } });
    SelectTimes(1, 2, 3, 3);
    ShiftTimes(t, -1.5);
    // Row 1 is free; row 2 then stops after the end of row 1.
    EXPECT_EQ(Starts().mid(0, 2), QStringList({ "0:00:00.50", "0:00:03.01" }));
}

// The guard's rule as stated, row by row over the whole grid, for comparison.
double GuardByTheRule(
    const std::vector<double> &start, const std::vector<double> &end, int row, int col, double delta)
{
    if (delta == 0 || (col == TG::ColStartTime && delta > 0) || (col == TG::ColEndTime && delta < 0))
        return delta;
    const double s = start[size_t(row)];
    const double e = end[size_t(row)];
    double newS = col == TG::ColStartTime ? s + delta : s;
    double newE = col == TG::ColEndTime ? e + delta : e;
    for (size_t other = 1; other < start.size(); ++other) {
        if (int(other) == row)
            continue;
        const double lo = std::min(start[other], end[other]);
        const double hi = std::max(start[other], end[other]);
        if (col == TG::ColStartTime && hi != 0 && hi < s && hi >= newS)
            newS = hi + 0.01;
        if (col == TG::ColEndTime && lo != 0 && lo > e && lo <= newE)
            newE = lo - 0.01;
    }
    return col == TG::ColStartTime ? std::min(newS, s) - s : std::max(newE, e) - e;
}

TEST_F(TimeAdjustTest, OverlapGuardMatchesTheRuleOnRandomGrids)
{
    AvoidOverlapTiming = true;
    std::mt19937 random(7);
    const auto hundredths = [&](int most) { return int(random() % unsigned(most + 1)); };
    for (int round = 0; round < 40; ++round) {
        // Close, equal, reversed and empty times, so that the guard's order matters.
        std::vector<GridRow> rows;
        for (int i = 0; i < 60; ++i) {
            const int a = hundredths(5) == 0 ? 0 : hundredths(1500);
            const int b = hundredths(5) == 0 ? a : a + hundredths(300) - 50;
            const auto text = [](int h) { return TimeToString(std::max(h, 0) / 100.0, 2); };
            rows.push_back({ text(a), text(b), QStringLiteral("x") });
        }
        Fill(rows);
        const int row = 1 + hundredths(59);
        const int col = hundredths(1) ? TG::ColStartTime : TG::ColEndTime;
        const double delta = (hundredths(800) - 400) / 100.0;
        std::vector<double> start(1), end(1);
        for (int r = 1; r <= g().MaxRows(); ++r) {
            start.push_back(StringToTime(g().GetText(TG::ColStartTime, r)));
            end.push_back(StringToTime(g().GetText(TG::ColEndTime, r)));
        }
        SCOPED_TRACE(round);
        EXPECT_EQ(LimitShiftForOverlap(t, row, col, delta), GuardByTheRule(start, end, row, col, delta));

        // A whole block moved: every cell in turn against the rows as they then stand.
        const int first = 1 + hundredths(40);
        SelectTimes(first, first + 15);
        ShiftTimes(t, delta);
        for (int c : { TG::ColStartTime, TG::ColEndTime }) {
            for (int r = first; r <= first + 15; ++r) {
                auto &times = c == TG::ColStartTime ? start : end;
                if (rows[size_t(r - 1)].Start.isEmpty())
                    continue;
                const double moved = times[size_t(r)] + GuardByTheRule(start, end, r, c, delta);
                times[size_t(r)] = StringToTime(TimeToString(moved, 2));
            }
        }
        for (int r = first; r <= first + 15; ++r) {
            EXPECT_EQ(g().GetText(TG::ColStartTime, r), TimeToString(start[size_t(r)], 2)) << r;
            EXPECT_EQ(g().GetText(TG::ColEndTime, r), TimeToString(end[size_t(r)], 2)) << r;
        }
    }
}

// ---- scaling -------------------------------------------------------------------------

TEST_F(TimeAdjustTest, ScaleStretchesFromZeroToTheLatestTime)
{
    Fill({ { "0:00:00.00", "0:00:10.00", "a" }, { "0:00:50.00", "0:01:40.00", "b" } });
    EXPECT_DOUBLE_EQ(LatestTime(t), 100);
    ScaleTimes(t, 10);
    EXPECT_EQ(Starts().mid(0, 2), QStringList({ "0:00:00.00", "0:00:55.00" }));
    EXPECT_EQ(Ends().mid(0, 2), QStringList({ "0:00:11.00", "0:01:50.00" }));

    // A part selected is scaled against the latest time of the whole grid (now 110 s).
    SelectTimes(1, 1, 4, 4);
    ScaleTimes(t, -11);
    EXPECT_EQ(Ends().mid(0, 2), QStringList({ "0:00:09.90", "0:01:50.00" }));
}

TEST_F(TimeAdjustTest, ScaleOfEmptyTimesDoesNothing)
{
    Fill({ { "", "", "a" }, { "", "", "b" } });
    EXPECT_DOUBLE_EQ(LatestTime(t), 0);
    ScaleTimes(t, 5);
    EXPECT_EQ(Starts(), QStringList({ "", "", "", "" }));
    EXPECT_TRUE(hooks.Calls.isEmpty());
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

// ---- asking --------------------------------------------------------------------------

TEST_F(TimeAdjustTest, AskShiftThroughTheDialog)
{
    Fill({ { "0:00:10.00", "0:00:20.00", "a" } });
    SelectTimes(1, 1);
    ScriptedTimeDialog dialog;
    dialog.Answer = [](CSliderTimeModel &model) {
        model.Second = 2;
        model.MiniSecond = 50;
        model.setSign(-1);
        model.OK();
    };
    OnTop = true;
    AskTimeAdjust(t, AdjustShift, &dialog);
    OnTop = false;
    EXPECT_TRUE(dialog.TopMost);
    EXPECT_TRUE(dialog.Shown);
    EXPECT_DOUBLE_EQ(dialog.Value, 0);
    EXPECT_EQ(dialog.Title, QString::fromUtf8("所选时间轴的移动值(秒):"));
    EXPECT_TRUE(dialog.Description.contains(QString::fromUtf8("加上这个时间值")));
    EXPECT_TRUE(dialog.AllEnabled);
    EXPECT_EQ(Starts().first(), "0:00:07.50");
    EXPECT_EQ(Ends().first(), "0:00:17.50");
}

TEST_F(TimeAdjustTest, AskFrameRateScalesStartProportionalToTheLatestTime)
{
    Fill({ { "0:00:10.00", "0:16:40.00", "a" } }); // latest 1000 s
    ScriptedTimeDialog dialog;
    dialog.Answer = [](CSliderTimeModel &model) { model.Cancel(); };
    AskTimeAdjust(t, AdjustScale25To23, &dialog);
    EXPECT_NEAR(dialog.Value, 40.96, 1e-9);
    EXPECT_TRUE(dialog.Description.contains(QString::fromUtf8("伸缩这个时间值")));
    AskTimeAdjust(t, AdjustScale23To25, &dialog);
    EXPECT_NEAR(dialog.Value, -40.96, 1e-9);
    // Cancelled: nothing changed.
    EXPECT_EQ(Ends().first(), "0:16:40.00");
    EXPECT_TRUE(hooks.Calls.isEmpty());

    dialog.Answer = [](CSliderTimeModel &model) { model.OK(); };
    AskTimeAdjust(t, AdjustScale23To25, &dialog);
    EXPECT_EQ(Ends().first(), "0:15:59.04");
}

TEST_F(TimeAdjustTest, AskValueOverflowIsReported)
{
    Fill({ { "0:00:10.00", "0:00:20.00", "a" } });
    SelectTimes(1, 1);
    ScriptedTimeDialog dialog;
    dialog.Answer = [](CSliderTimeModel &model) {
        model.Hour = 9;
        model.Minite = 59;
        model.OK();
    };
    AskTimeAdjust(t, AdjustShift, &dialog);
    EXPECT_EQ(prompt.Messages(), QStringList({ fault }));
    EXPECT_EQ(Starts().first(), "0:00:10.00");
}

TEST_F(TimeAdjustTest, AskThroughTheInputBoxWithoutADialog)
{
    Fill({ { "0:00:10.00", "0:00:20.00", "a" } });
    SelectTimes(1, 1);
    prompt.Inputs.push_back(QStringLiteral("-1:02.5"));
    AskTimeAdjust(t, AdjustShift);
    EXPECT_EQ(Starts().first(), "0:00:00.00");
    EXPECT_EQ(Ends().first(), "0:00:00.00");

    Fill({ { "0:00:10.00", "0:00:20.00", "a" } });
    SelectTimes(1, 1);
    prompt.Inputs.push_back(std::nullopt);
    AskTimeAdjust(t, AdjustShift);
    EXPECT_EQ(Starts().first(), "0:00:10.00");
}

// ---- even steps ----------------------------------------------------------------------

TEST_F(TimeAdjustTest, FillIncrementFromTheFirstTwoRows)
{
    Fill(
        { { "0:00:01.00", "", "a" }, { "0:00:01.50", "", "b" }, { "", "", "c" }, { "0:09:00.00", "", "d" } });
    SelectTimes(1, 4, 3, 3);
    FillIncrement(t, 1);
    EXPECT_EQ(Starts().mid(0, 4), QStringList({ "0:00:01.00", "0:00:01.50", "0:00:02.00", "0:00:02.50" }));
    EXPECT_EQ(hooks.Calls, QStringList({ "update -1 3", "update -1 4" }));

    // Two rows give a step but no row to write.
    hooks.Calls.clear();
    SelectTimes(3, 4, 3, 3);
    FillIncrement(t, 1);
    EXPECT_TRUE(hooks.Calls.isEmpty());
}

TEST_F(TimeAdjustTest, FillIncrementFromFirstAndLastRow)
{
    Fill({ { "0:00:01.00", "", "a" }, { "", "", "b" }, { "", "", "c" }, { "0:00:02.50", "", "d" } });
    SelectTimes(1, 4, 3, 3);
    FillIncrement(t, 2);
    EXPECT_EQ(Starts().mid(0, 4), QStringList({ "0:00:01.00", "0:00:01.50", "0:00:02.00", "0:00:02.50" }));
}

TEST_F(TimeAdjustTest, FillIncrementOfMarginsNeverGoesBelowZero)
{
    Fill({ { "1", "", "a" }, { "2", "", "b" }, { "3", "", "c" }, { "4", "", "d" }, { "5", "", "e" } });
    g().SetText(TG::ColMarginL, 1, QStringLiteral("10"));
    g().SetText(TG::ColMarginL, 5, QStringLiteral("-10"));
    SelectTimes(1, 5, TG::ColMarginL, TG::ColMarginL);
    FillIncrement(t, 2);
    EXPECT_EQ(Column(TG::ColMarginL).mid(0, 5), QStringList({ "10", "5", "0", "0", "0" }));

    // Half steps round to even.
    g().SetText(TG::ColMarginR, 1, QStringLiteral("1"));
    g().SetText(TG::ColMarginR, 2, QStringLiteral("1.5"));
    SelectTimes(1, 4, TG::ColMarginR, TG::ColMarginR);
    FillIncrement(t, 1);
    EXPECT_EQ(Column(TG::ColMarginR).mid(0, 4), QStringList({ "1", "1.5", "2", "2" }));
}

TEST_F(TimeAdjustTest, FillIncrementFaultsAndRefusals)
{
    Fill({ { "0:00:01.00", "", "a" }, { "0:00:02.00", "", "b" }, { "0:00:03.00", "", "c" } });
    // One row, step from first and last: a division by zero, reported, nothing written.
    SelectTimes(2, 2, 3, 3);
    FillIncrement(t, 2);
    EXPECT_EQ(prompt.Messages(), QStringList({ fault }));
    EXPECT_EQ(Starts().mid(0, 3), QStringList({ "0:00:01.00", "0:00:02.00", "0:00:03.00" }));

    // Letters in a margin cell.
    prompt.Reset();
    g().SetText(TG::ColMarginV, 1, QStringLiteral("ten"));
    SelectTimes(1, 3, TG::ColMarginV, TG::ColMarginV);
    FillIncrement(t, 2);
    EXPECT_EQ(prompt.Messages(), QStringList({ fault }));

    // Two blocks, no block, another column: nothing at all.
    prompt.Reset();
    Select({ CSpreadBlock { 1, 3, 3, 3 }, CSpreadBlock { 1, 4, 3, 4 } });
    FillIncrement(t, 1);
    g().ClearSelection();
    FillIncrement(t, 1);
    SelectTimes(1, 3, TG::ColDialog, TG::ColDialog);
    FillIncrement(t, 2);
    EXPECT_TRUE(hooks.Calls.isEmpty());
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(TimeAdjustTest, EmptyGridAndBlocksBeyondIt)
{
    g().setMaxRows(0);
    ShiftTimes(t, 1);
    ScaleTimes(t, 1);
    FillIncrement(t, 2);
    EXPECT_DOUBLE_EQ(LatestTime(t), 0);
    EXPECT_DOUBLE_EQ(LimitShiftForOverlap(t, 3, 3, -1), -1);

    Fill({ { "0:00:01.00", "0:00:02.00", "a" } });
    SelectTimes(0, 99, -5, 40);
    ShiftTimes(t, 1);
    EXPECT_EQ(Starts(), QStringList({ "0:00:02.00", "", "" }));
    EXPECT_TRUE(prompt.Messages().isEmpty());
}
