#include "test_capture_fixture.h"

#include "core/Class.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "formats/CTimings.h"
#include "timing/basCapture.h"

#include <QObject>
#include <cmath>

namespace {

using namespace TestKeys;

// ---- the stamping cycle ----------------------------------------------------------------

TEST_F(CaptureTest, StartThenEndThenNextRowWithReactionOffsets)
{
    doc.ReactOffsetStart = -0.3;
    doc.ReactOffsetEnd = 0.1;
    Activate(3, 1);

    At(12.34);
    const CaptureKeyResult start = Down(F8);
    EXPECT_EQ(start.Action, CaptureAction::StartTime);
    EXPECT_TRUE(start.Cancel);
    EXPECT_TRUE(start.Yield);
    EXPECT_EQ(Cell(3, 1), "0:00:12.04");
    EXPECT_EQ(Cursor(), "4,1");
    EXPECT_TRUE(doc.Changed());

    At(15.5);
    Down(F9);
    EXPECT_EQ(Cell(4, 1), "0:00:15.60");
    EXPECT_EQ(Cursor(), "3,2");

    At(3725.0); // past the hour
    Down(F8);
    EXPECT_EQ(Cell(3, 2), "1:02:04.70");
    EXPECT_EQ(hooks.Calls, QStringList({ "update 3 1", "update 4 1", "update 3 2" }));
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(CaptureTest, TimePointKeyFollowsTheCycleAndIsLostOutsideTheTimeColumns)
{
    Activate(3, 4);
    At(1.0);
    capture->KeyDown(CCaptureKey::Down(F7));
    At(2.0);
    capture->KeyDown(CCaptureKey::Down(F7));
    At(3.0);
    capture->KeyDown(CCaptureKey::Down(F7));
    EXPECT_EQ(Cell(3, 4), "0:00:01.00");
    EXPECT_EQ(Cell(4, 4), "0:00:02.00");
    EXPECT_EQ(Cell(3, 5), "0:00:03.00");
    EXPECT_EQ(Cursor(), "4,5");

    // In the dialogue column the stroke is taken and does nothing, silently.
    doc.setChanged(false);
    hooks.Calls.clear();
    g().SetText(15, 6, QStringLiteral("对白"));
    Activate(15, 6);
    const CaptureKeyResult r = Down(F7);
    EXPECT_TRUE(r.Cancel);
    EXPECT_EQ(Cell(15, 6), "对白");
    EXPECT_EQ(Cell(3, 6), "");
    EXPECT_EQ(Cursor(), "15,6");
    EXPECT_FALSE(doc.Changed());
    EXPECT_TRUE(hooks.Calls.isEmpty());
    EXPECT_TRUE(prompt.Messages().isEmpty());

    // The button does what the key does.
    Activate(4, 7);
    At(9.5);
    capture->InsertTimePoint();
    EXPECT_EQ(Cell(4, 7), "0:00:09.50");
    EXPECT_EQ(Cursor(), "3,8");
}

TEST_F(CaptureTest, AStampBelowZeroIsNotClamped)
{
    doc.ReactOffsetStart = -0.3;
    Activate(3, 1);
    At(0.1);
    capture->SetStartTimePoint();
    EXPECT_EQ(Cell(3, 1), "0:00:00.00");
    // A given time is taken as it is, without the reaction offset.
    Activate(3, 2);
    capture->SetStartTimePoint(42.25);
    EXPECT_EQ(Cell(3, 2), "0:00:42.25");
}

TEST_F(CaptureTest, EndStrokeInTheRowBeforeTheLastAppendsARow)
{
    ASSERT_EQ(g().MaxRows(), 12);
    Activate(4, 11);
    At(20);
    Down(F9);
    EXPECT_EQ(g().MaxRows(), 13);
    EXPECT_EQ(Cursor(), "3,12");
    EXPECT_EQ(hooks.Calls, QStringList({ "update 4 11", "create 13" }));
    EXPECT_FALSE(Cell(16, 13).isEmpty());

    // Further up nothing is appended.
    Activate(4, 3);
    Down(F9);
    EXPECT_EQ(g().MaxRows(), 13);
}

// ---- automatic end point ---------------------------------------------------------------

TEST_F(CaptureTest, AutoEndFillsOnlyARowAboveThatHasAStartAndNoEnd)
{
    doc.AutoEndTimePoint = true;
    g().SetText(3, 1, QStringLiteral("0:00:01.00")); // start, no end: filled
    g().SetText(3, 2, QStringLiteral("0:00:05.00")); // start and an end of zero: filled
    g().SetText(4, 2, QStringLiteral("0:00:00.00"));
    g().SetText(3, 4, QStringLiteral("0:00:09.00")); // has an end: stays
    g().SetText(4, 4, QStringLiteral("0:00:10.00"));
    // Row 6 has neither: stays empty.

    At(4.5);
    Activate(3, 2);
    Down(F8);
    EXPECT_EQ(Cell(4, 1), "0:00:04.50");
    EXPECT_EQ(Cursor(), "4,2"); // the cursor waits in the end column

    At(8.0);
    Activate(3, 3);
    Down(F8);
    EXPECT_EQ(Cell(4, 2), "0:00:08.00");

    At(12.0);
    Activate(3, 5);
    Down(F8);
    EXPECT_EQ(Cell(4, 4), "0:00:10.00");

    At(14.0);
    Activate(3, 7);
    Down(F8);
    EXPECT_EQ(Cell(4, 6), "");
    // The row above is written without telling the preview; only the stamped cell is told.
    EXPECT_EQ(hooks.Calls, QStringList({ "update 3 2", "update 3 3", "update 3 5", "update 3 7" }));
}

TEST_F(CaptureTest, AutoEndInRowOneChangesNoOtherRow)
{
    doc.AutoEndTimePoint = true;
    g().SetText(3, 2, QStringLiteral("0:00:30.00"));
    At(2.0);
    Activate(3, 1);
    Down(F8);
    EXPECT_EQ(Cell(3, 1), "0:00:02.00");
    for (int row = 2; row <= g().MaxRows(); ++row)
        EXPECT_EQ(Cell(4, row), "") << row;
    EXPECT_EQ(Cell(3, 2), "0:00:30.00");

    // Without the mode the row above stays as it is.
    doc.AutoEndTimePoint = false;
    Activate(3, 3);
    Down(F8);
    EXPECT_EQ(Cell(4, 2), "");
}

// ---- pause after each line -------------------------------------------------------------

TEST_F(CaptureTest, StepPausePausesAPlayingFilmAndLeavesOthersAlone)
{
    doc.StepPause = true;
    Activate(4, 1);
    Down(F9);
    EXPECT_EQ(control.Calls, QStringList { "pause" });
    EXPECT_EQ(control.playState(), 2);

    // Paused: a second end stroke must not resume it.
    control.Calls.clear();
    Down(F9);
    EXPECT_TRUE(control.Calls.isEmpty());
    EXPECT_EQ(control.playState(), 2);

    // Start strokes never pause.
    control.setPlayStateDirect(3);
    Activate(3, 5);
    Down(F8);
    EXPECT_TRUE(control.Calls.isEmpty());

    // Without the mode the film runs on.
    doc.StepPause = false;
    Down(F9);
    EXPECT_TRUE(control.Calls.isEmpty());
    EXPECT_EQ(control.playState(), 3);
}

// ---- failures and messages -------------------------------------------------------------

TEST_F(CaptureTest, WithoutAPlayerStartSaysErr110AndEndSaysErr109)
{
    doc.setPlayerWindow(nullptr);
    Activate(3, 1);
    Down(F8);
    EXPECT_EQ(prompt.Messages(), QStringList { Msg("TIMING_ERR_110") });
    EXPECT_EQ(prompt.Messages().first(), "设置开始时间点出错");
    EXPECT_EQ(Cell(3, 1), "");
    EXPECT_FALSE(doc.Changed());

    prompt.Reset();
    const int focus = g().HeadlessViewport().FocusCount();
    Activate(4, 1);
    Down(F9);
    EXPECT_EQ(prompt.Messages(), QStringList { "无法取得时间点，可能没有选择播放器" });
    EXPECT_EQ(g().HeadlessViewport().FocusCount(), focus + 1);
    EXPECT_EQ(Cell(4, 1), "");
    EXPECT_EQ(Cursor(), "4,1");
    EXPECT_TRUE(hooks.Calls.isEmpty());

    // A window whose player is gone counts as no player.
    prompt.Reset();
    window.document = nullptr;
    doc.setPlayerWindow(&window);
    Down(F9);
    EXPECT_EQ(prompt.Messages(), QStringList { "无法取得时间点，可能没有选择播放器" });

    // A given time needs no player.
    prompt.Reset();
    EXPECT_TRUE(capture->SetEndTimePoint(7.0));
    EXPECT_EQ(Cell(4, 1), "0:00:07.00");
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(CaptureTest, AFailingControlReportsOnceAndStampsItsFallback)
{
    // The player reports its own fault and gives 0; the stamp goes on with that.
    control.Failing.insert(QStringLiteral("currentPosition"));
    Activate(3, 1);
    Down(F8);
    EXPECT_EQ(prompt.Messages(), QStringList { "取得时间错误" });
    EXPECT_EQ(Cell(3, 1), "0:00:00.00");
}

TEST_F(CaptureTest, ATimeNoStringCanHoldIsAFaultOfTheStroke)
{
    Activate(3, 1);
    EXPECT_FALSE(capture->SetStartTimePoint(std::nan("")));
    EXPECT_FALSE(capture->SetEndTimePoint(1e300));
    EXPECT_EQ(prompt.Messages(), QStringList({ "设置开始时间点出错", "设置结束时间点出错" }));
    EXPECT_EQ(Cell(3, 1), "");
    EXPECT_EQ(Cell(4, 1), "");
    EXPECT_FALSE(doc.Changed());
}

// ---- the time handed out by the document list ------------------------------------------

TEST_F(CaptureTest, SendNewTimeStampsTheActiveCellOfTheActiveWindowOnly)
{
    auto timings = Class::MakeCollection<CTimings>();
    QObject activeWindow;
    QObject otherWindow;
    CTiming *active = timings->Create(&activeWindow);
    CTiming *other = timings->Create(&otherWindow);
    CTimingGrid activeGrid;
    CTimingGrid otherGrid;
    activeGrid.ResetGrid();
    otherGrid.ResetGrid();
    active->setPlayerWindow(&window);
    active->ReactOffsetEnd = -0.3;
    CTimePointCapture activeCapture(*active, activeGrid, &keys);
    CTimePointCapture otherCapture(*other, otherGrid, &keys);
    timings->ActiveWindow = [&activeWindow]() { return &activeWindow; };

    for (CTimingGrid *grid : { &activeGrid, &otherGrid }) {
        grid->Spread().setRow(1);
        grid->Spread().setCol(4);
        grid->Spread().ActivateCell();
    }
    timings->SendNewTime(65.5);
    EXPECT_EQ(activeGrid.Spread().GetText(4, 1), "0:01:05.50"); // no reaction offset
    EXPECT_EQ(activeGrid.Spread().ActiveRow(), 2);
    EXPECT_EQ(otherGrid.Spread().GetText(4, 1), "");

    // A copied text goes the same way while the clipboard is watched.
    const bool watching = AutoGetClipBoard;
    AutoGetClipBoard = false;
    EXPECT_FALSE(SendClipboardTime(*timings, QStringLiteral("1:05")));
    EXPECT_EQ(activeGrid.Spread().GetText(3, 2), "");
    AutoGetClipBoard = true;
    EXPECT_FALSE(SendClipboardTime(*timings, QStringLiteral("not a time")));
    EXPECT_TRUE(SendClipboardTime(*timings, QStringLiteral("1:05")));
    EXPECT_EQ(activeGrid.Spread().GetText(3, 2), "0:01:05.00");
    AutoGetClipBoard = watching;

    // In the dialogue column nothing happens.
    activeGrid.Spread().setCol(15);
    activeGrid.Spread().ActivateCell();
    timings->SendNewTime(70);
    EXPECT_EQ(activeGrid.Spread().GetText(15, 2), "");
    EXPECT_EQ(activeGrid.Spread().GetText(4, 2), "");
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

} // namespace
