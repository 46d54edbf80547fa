#include "test_capture_fixture.h"

#include "core/Class.h"
#include "core/basMessage.h"
#include "formats/CTimings.h"
#include "timing/CSliderTimeModel.h"

#include <QObject>

namespace {

using namespace TestKeys;

// ---- tracing the player --------------------------------------------------------------

TEST_F(CaptureTest, TracingSeeksToTheRowStartLessTheBackStep)
{
    doc.TraceAVI = true;
    player.setBackStep(3);
    g().SetText(3, 2, QStringLiteral("0:01:10.00"));
    g().SetText(3, 3, QStringLiteral("0:00:02.00"));
    g().SetText(3, 4, QStringLiteral("   "));

    Activate(3, 2);
    capture->KeyUp(CCaptureKey::Down(40));
    EXPECT_DOUBLE_EQ(control.currentPosition(), 67.0);

    Activate(15, 3); // any column of the row
    capture->KeyUp(CCaptureKey::Down(38));
    EXPECT_DOUBLE_EQ(control.currentPosition(), 0.0); // never before the start

    control.Calls.clear();
    Activate(3, 4);
    capture->CellClicked();
    EXPECT_TRUE(control.Calls.isEmpty()); // a blank start is no time

    Activate(3, 2);
    capture->KeyUp(CCaptureKey::Down(37)); // left arrow: not a row move
    capture->KeyUp(CCaptureKey::Down(F8));
    EXPECT_TRUE(control.Calls.isEmpty());
    capture->CellClicked();
    EXPECT_EQ(control.Calls, QStringList { "seek 67" });
}

TEST_F(CaptureTest, TracingIsOffUnlessAskedAndSilentWithoutAPlayer)
{
    g().SetText(3, 2, QStringLiteral("0:00:20.00"));
    Activate(3, 2);
    capture->CellClicked();
    capture->KeyUp(CCaptureKey::Down(40));
    EXPECT_TRUE(control.Calls.isEmpty());

    doc.TraceAVI = true;
    doc.setPlayerWindow(nullptr);
    capture->CellClicked();
    capture->TraceToPlayer();
    EXPECT_TRUE(control.Calls.isEmpty());
    EXPECT_TRUE(prompt.Messages().isEmpty());

    // A start beyond the film's end is refused by the player, silently.
    doc.setPlayerWindow(&window);
    g().SetText(3, 2, QStringLiteral("2:00:00.00"));
    capture->TraceToPlayer();
    EXPECT_TRUE(control.Calls.isEmpty());
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

// ---- keeping the working row in view -----------------------------------------------------

class CaptureScrollTest : public CaptureTest
{
protected:
    CaptureScrollTest()
        : CaptureTest(40)
    {
        g().HeadlessViewport().setVisibleRows(10);
    }
};

TEST_F(CaptureScrollTest, VisibleRowsAreThoseWithATimeOrDialogueCellInView)
{
    EXPECT_EQ(capture->VisibleRowCount(), 10);
    g().setTopRow(35);
    EXPECT_EQ(capture->VisibleRowCount(), 6); // to the last row
    g().setTopRow(1);
    grid.HideColumn(3);
    grid.HideColumn(4);
    EXPECT_EQ(capture->VisibleRowCount(), 10);
    grid.HideColumn(15);
    EXPECT_EQ(capture->VisibleRowCount(), 0);
}

TEST_F(CaptureScrollTest, TheWorkingRowStaysInTheMiddleOnceItGetsThere)
{
    // Offsets up to half the view leave the view alone.
    Activate(4, 5);
    capture->MoveToNextRow();
    EXPECT_EQ(g().Row(), 6);
    EXPECT_EQ(g().TopRow(), 1);

    // Row 7 stands 6 below the top: the top goes to 7 - 4.5, rounded half to even.
    Activate(4, 6);
    capture->MoveToNextRow();
    EXPECT_EQ(g().TopRow(), 2);
    Activate(4, 7);
    capture->MoveToNextRow();
    EXPECT_EQ(g().TopRow(), 4); // 8 - 4.5 = 3.5

    // Stamping down the grid keeps the cursor in view all the way.
    Activate(4, 10);
    for (int i = 0; i < 20; ++i) {
        Down(F9);
        EXPECT_TRUE(g().IsVisible(3, g().ActiveRow())) << g().ActiveRow();
        const int offset = g().ActiveRow() - g().TopRow();
        EXPECT_GE(offset, 4);
        EXPECT_LE(offset, 5);
    }
    EXPECT_EQ(g().ActiveRow(), 30);
}

// ---- karaoke recording -----------------------------------------------------------------

class CaptureKaraokeTest : public CaptureTest
{
protected:
    CaptureKaraokeTest()
    {
        doc.TranslateWindow = &translation;
        capture->TranslateKaraOKMode = [this](bool on) { translateMode = on; };
        EXPECT_TRUE(capture->KaraOKToggle(true));
    }
    QObject translation;
    QObject otherTranslation;
    bool translateMode = false;
};

TEST_F(CaptureKaraokeTest, StrokesBecomeSyllableLengthsInHundredths)
{
    g().SetText(15, 3, QStringLiteral("old text"));
    Activate(3, 3);
    At(10.0);
    capture->KaraOKRecordStart(&translation);
    EXPECT_TRUE(doc.KaraOKRecording);
    EXPECT_EQ(Cell(3, 3), "0:00:10.00");
    EXPECT_EQ(Cell(15, 3), "");
    EXPECT_DOUBLE_EQ(doc.KaraOKStartTime, 10.0);

    doc.setChanged(false);
    At(10.5);
    capture->KaraOKRecordNewLyrics(&translation, QStringLiteral("我"));
    At(10.755); // a fractional length is cut: 25.5 hundredths write 25
    capture->KaraOKRecordNewLyrics(&translation, QStringLiteral("们"));
    At(10.5); // going back gives a negative length, taken downwards: -25.5 writes -26
    capture->KaraOKRecordNewLyrics(&translation, QStringLiteral("的"));
    EXPECT_EQ(Cell(15, 3), "{\\K50}我{\\K25}们{\\K-26}的");
    EXPECT_TRUE(doc.Changed());

    At(12.0);
    capture->KaraOKRecordEnd(&translation);
    EXPECT_FALSE(doc.KaraOKRecording);
    EXPECT_DOUBLE_EQ(doc.KaraOKStartTime, 0);
    EXPECT_EQ(Cell(4, 3), "0:00:12.00");
    EXPECT_EQ(Cursor(), "3,4");

    // Not recording: lyrics are ignored.
    capture->KaraOKNewLyrics(QStringLiteral("x"));
    EXPECT_EQ(Cell(15, 4), "");
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(CaptureKaraokeTest, TheStartIsTheStampedTimeWithItsOffset)
{
    doc.ReactOffsetStart = -0.3;
    Activate(3, 1);
    At(10.004);
    capture->KaraOKStartLine();
    EXPECT_EQ(Cell(3, 1), "0:00:09.70");
    EXPECT_DOUBLE_EQ(doc.KaraOKStartTime, 9.7);
    At(10.5); // now = 10.2, so 0.5 s have passed
    capture->KaraOKNewLyrics(QStringLiteral("a"));
    EXPECT_EQ(Cell(15, 1), "{\\K50}a");
}

TEST_F(CaptureKaraokeTest, WhileRecordingStartStrokesOnlyFocusAndEndStrokesWork)
{
    Activate(3, 1);
    At(1.0);
    capture->KaraOKStartLine();
    const int focus = g().HeadlessViewport().FocusCount();
    Activate(3, 2);
    At(2.0);
    Down(F8);
    EXPECT_EQ(Cell(3, 2), "");
    EXPECT_EQ(g().HeadlessViewport().FocusCount(), focus + 1);

    // A hand-made end stroke stamps but does not end the recording.
    Activate(4, 1);
    Down(F9);
    EXPECT_EQ(Cell(4, 1), "0:00:02.00");
    EXPECT_TRUE(doc.KaraOKRecording);
}

TEST_F(CaptureKaraokeTest, EventsFromOtherWindowsOrOutsideTheModeAreIgnored)
{
    Activate(3, 1);
    capture->KaraOKRecordStart(&otherTranslation);
    capture->KaraOKRecordStart(nullptr);
    EXPECT_FALSE(doc.KaraOKRecording);

    EXPECT_FALSE(capture->KaraOKToggle(false));
    EXPECT_FALSE(doc.KaraOKMode);
    EXPECT_FALSE(translateMode);
    capture->KaraOKRecordStart(&translation);
    EXPECT_FALSE(doc.KaraOKRecording);
    EXPECT_EQ(Cell(3, 1), "");
}

TEST_F(CaptureKaraokeTest, TheModeNeedsATranslationWindow)
{
    EXPECT_TRUE(doc.KaraOKMode);
    EXPECT_TRUE(translateMode);
    doc.TranslateWindow = nullptr;
    doc.KaraOKMode = false;
    EXPECT_FALSE(capture->KaraOKToggle(true));
    EXPECT_EQ(prompt.Messages(), QStringList { "可能没有翻译窗口" });
    EXPECT_FALSE(doc.KaraOKMode);
}

TEST_F(CaptureKaraokeTest, LyricsWithoutAPlayerSayErr113AndKeepTheCell)
{
    Activate(3, 1);
    At(1.0);
    capture->KaraOKStartLine();
    At(1.5);
    capture->KaraOKNewLyrics(QStringLiteral("a"));
    doc.setPlayerWindow(nullptr);
    capture->KaraOKNewLyrics(QStringLiteral("b"));
    EXPECT_EQ(prompt.Messages(), QStringList { Msg("TIMING_ERR_113") });
    EXPECT_EQ(prompt.Messages().first(), "卡拉OK生成错误");
    EXPECT_EQ(Cell(15, 1), "{\\K50}a");
}

// ---- reaction offsets ------------------------------------------------------------------

TEST_F(CaptureTest, ReactionOffsetDialogShowsThePresentValueAndStoresTheNewOne)
{
    auto timings = Class::MakeCollection<CTimings>();
    QObject window1;
    CTiming *member = timings->Create(&window1);
    CTimingGrid memberGrid;
    memberGrid.ResetGrid();
    CTimePointCapture memberCapture(*member, memberGrid, &keys);
    member->ReactOffsetStart = -0.3;

    CSliderTimeModel dialog;
    dialog.setEnableHour(false);
    memberCapture.PrepareReactOffsetDialog(dialog, false);
    EXPECT_EQ(dialog.Title(), "反应时间(开始时间点)的自动调整值(秒):");
    EXPECT_EQ(dialog.Description(), "说明: 每次插入时间点时将自动加上所设的这个秒数");
    EXPECT_TRUE(dialog.EnableSign() && dialog.EnableHour() && dialog.EnableMinite() && dialog.EnableSecond()
        && dialog.EnableMiniSecond());
    EXPECT_EQ(dialog.SignCaption(), "-");
    EXPECT_DOUBLE_EQ(dialog.Value(), -0.3);

    // A value beyond a second is clamped, given to every document and stored.
    dialog.setValue(1.5);
    dialog.OK();
    memberCapture.TakeReactOffset(dialog, false);
    EXPECT_DOUBLE_EQ(timings->ReactOffsetStart(), 1.0);
    EXPECT_DOUBLE_EQ(member->ReactOffsetStart, 1.0);
    EXPECT_EQ(GetSetting(QStringLiteral("TimeOffset"), QStringLiteral("TimingOffsetStart"), QString()), "1");

    CSliderTimeModel endDialog;
    memberCapture.PrepareReactOffsetDialog(endDialog, true);
    EXPECT_EQ(endDialog.Title(), "反应时间(结束时间点)的自动调整值(秒):");
    endDialog.setValue(-0.25);
    endDialog.Cancel();
    memberCapture.TakeReactOffset(endDialog, true);
    EXPECT_DOUBLE_EQ(member->ReactOffsetEnd, 0);
    endDialog.OK();
    memberCapture.TakeReactOffset(endDialog, true);
    EXPECT_DOUBLE_EQ(member->ReactOffsetEnd, -0.25);
    EXPECT_DOUBLE_EQ(member->ReactOffsetStart, 1.0);

    // The next end stroke carries it.
    member->setPlayerWindow(&window);
    memberGrid.Spread().setRow(1);
    memberGrid.Spread().setCol(4);
    memberGrid.Spread().ActivateCell();
    At(10);
    memberCapture.KeyDown(CCaptureKey::Down(F9));
    EXPECT_EQ(memberGrid.Spread().GetText(4, 1), "0:00:09.75");
}

} // namespace
