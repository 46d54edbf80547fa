#include "PlayerFixture.h"

#include "player/CPlayer.h"

#include <QCursor>
#include <QGuiApplication>

using namespace MediaPlayState;

namespace {

class CPlayerTest : public PlayerTest
{
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        player.Init(1, &window, &control);
    }
    // An opened 60-second file of 320 by 240, stopped; the calls so far forgotten.
    void open()
    {
        control.AutoStart = false;
        player.setContent(QStringLiteral("/media/film.mkv"));
        control.Calls.clear();
    }

    FakePlayerWindow window;
    CFakeMediaControl control;
    CPlayer player;
};

} // namespace

TEST_F(CPlayerTest, NewPlayerHasDefaultPictureSizeAndNeverChanges)
{
    EXPECT_EQ(player.ImageSourceWidth(), 640);
    EXPECT_EQ(player.ImageSourceHeight(), 480);
    player.setChanged(true);
    EXPECT_FALSE(player.Changed());
    EXPECT_EQ(player.Content(), QString());
}

TEST_F(CPlayerTest, OpenReadsHeaderWithPlayAndStopAndTakesSize)
{
    control.AutoStart = false;
    player.setContent(QStringLiteral("/media/film.mkv"));
    EXPECT_EQ(control.Calls.join(u'|'), "url /media/film.mkv|rate 1|rate 1|play|stop");
    EXPECT_EQ(player.ImageSourceWidth(), 320);
    EXPECT_EQ(player.ImageSourceHeight(), 240);
    EXPECT_EQ(player.PlayState(), Stopped);
    EXPECT_EQ(player.PlayerFileName(), QStringLiteral("/media/film.mkv"));
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(CPlayerTest, OpenShowsTheBusyPointerWhileItRuns)
{
    int shapeDuringOpen = -1;
    control.WhenURLWritten = [&](const QString &) {
        if (const QCursor *cursor = QGuiApplication::overrideCursor())
            shapeDuringOpen = cursor->shape();
    };
    player.setContent(QStringLiteral("/media/film.mkv"));
    EXPECT_EQ(shapeDuringOpen, Qt::WaitCursor);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

    control.Refuse = true; // put back on the early way out as well
    player.setContent(QStringLiteral("/media/other.mkv"));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(CPlayerTest, OpenOfEmptyNameDoesNothing)
{
    player.setContent(QString());
    player.setPlayerFileName(QString());
    EXPECT_TRUE(control.Calls.isEmpty());
}

TEST_F(CPlayerTest, RefusedFileSaysSoAndKeepsSize)
{
    control.Refuse = true;
    player.setContent(QStringLiteral("/media/missing.avi"));
    EXPECT_EQ(prompt.Messages(), QStringList(QStringLiteral("无法打开文件:")));
    EXPECT_FALSE(control.Calls.contains(QStringLiteral("play")));
    EXPECT_EQ(player.ImageSourceWidth(), 640);

    prompt.Reset();
    player.setPlayerFileName(QStringLiteral("/media/missing.avi"));
    EXPECT_EQ(prompt.Messages(), QStringList(QStringLiteral("无法打开文件:")));
}

TEST_F(CPlayerTest, LateOpeningFileGetsSizeAndRateWhenOpen)
{
    control.OpenLate = true;
    player.setSpeed(1.5); // not open: the rate cannot be written yet
    EXPECT_DOUBLE_EQ(player.Speed(), 1.5);
    player.setContent(QStringLiteral("/media/late.mp4"));
    EXPECT_EQ(player.ImageSourceWidth(), 640);
    control.MediaWidth = 1280;
    control.MediaHeight = 720;
    control.FinishOpen();
    EXPECT_EQ(player.ImageSourceWidth(), 1280);
    EXPECT_EQ(player.ImageSourceHeight(), 720);
    EXPECT_DOUBLE_EQ(control.rate(), 1.5);
}

TEST_F(CPlayerTest, OpenFaultsReportMessage200)
{
    control.Failing << QStringLiteral("setURL");
    player.setContent(QStringLiteral("/media/film.mkv"));
    player.setPlayerFileName(QStringLiteral("/media/film.mkv"));
    EXPECT_EQ(prompt.Messages(), QStringList(2, QStringLiteral("打开文件出错，可能是因为外挂字幕不正确")));
}

TEST_F(CPlayerTest, PositionGuardAcceptsOnlyInsideTheFile)
{
    open();
    player.setCurrentPosition(12.5);
    EXPECT_DOUBLE_EQ(player.CurrentPosition(), 12.5);
    player.setCurrentPosition(60.0); // exactly the duration
    player.setCurrentPosition(-0.01);
    player.setCurrentPosition(75.0);
    EXPECT_DOUBLE_EQ(player.CurrentPosition(), 12.5);
    player.setCurrentPosition(0.0);
    EXPECT_DOUBLE_EQ(player.CurrentPosition(), 0.0);
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(CPlayerTest, PositionFaultsReportTheirMessages)
{
    open();
    control.Failing << QStringLiteral("currentPosition") << QStringLiteral("setCurrentPosition");
    EXPECT_EQ(player.CurrentPosition(), 0.0);
    player.setCurrentPosition(3.0);
    EXPECT_EQ(
        prompt.Messages(), QStringList({ QStringLiteral("取得时间错误"), QStringLiteral("设置时间错误") }));
}

TEST_F(CPlayerTest, MoveStaysInsideTheFile)
{
    open();
    control.setPositionDirect(10.0);
    player.Move(5.0);
    EXPECT_DOUBLE_EQ(control.currentPosition(), 15.0);
    player.Move(-20.0); // before the beginning: to 0
    EXPECT_DOUBLE_EQ(control.currentPosition(), 0.0);
    control.setPositionDirect(58.0);
    player.Move(2.0); // exactly the end: refused
    player.Move(30.0);
    EXPECT_DOUBLE_EQ(control.currentPosition(), 58.0);
    EXPECT_EQ(control.Calls, QStringList({ QStringLiteral("seek 15"), QStringLiteral("seek 0") }));
    EXPECT_EQ(control.playState(), Stopped);
}

TEST_F(CPlayerTest, MoveOutOfPauseResumesEvenWhenRefused)
{
    open();
    control.setPlayStateDirect(Paused);
    control.setPositionDirect(58.0);
    player.Move(10.0);
    EXPECT_EQ(control.Calls, QStringList(QStringLiteral("play")));
    EXPECT_EQ(control.playState(), Playing);

    control.Calls.clear();
    player.Move(-1.0); // playing: no resume call
    EXPECT_EQ(control.Calls, QStringList(QStringLiteral("seek 57")));
}

TEST_F(CPlayerTest, SmallJumpsUseTheirOwnSizes)
{
    open();
    player.setBackStep(2.5);
    player.setForwordStep(4.0);
    control.setPositionDirect(10.0);
    player.SamllForword();
    EXPECT_DOUBLE_EQ(control.currentPosition(), 14.0);
    player.SamllBack();
    EXPECT_DOUBLE_EQ(control.currentPosition(), 11.5);
    control.Failing << QStringLiteral("duration");
    player.SamllBack();
    EXPECT_EQ(prompt.Messages(), QStringList(QStringLiteral("移动位置错误")));
    EXPECT_DOUBLE_EQ(control.currentPosition(), 11.5);
}

TEST_F(CPlayerTest, PauseTogglesByState)
{
    open();
    player.setSpeed(0.5);
    control.Calls.clear();

    player.Pause(); // stopped: play
    EXPECT_EQ(control.Calls, QStringList(QStringLiteral("play")));
    player.Pause(); // playing: pause
    EXPECT_EQ(control.playState(), Paused);
    control.Calls.clear();
    player.Pause(); // paused: speed first, then play
    EXPECT_EQ(control.Calls, QStringList({ QStringLiteral("rate 0.5"), QStringLiteral("play") }));

    control.Calls.clear();
    control.setPlayStateDirect(Undefined);
    player.Pause();
    control.setPlayStateDirect(9);
    player.Pause();
    EXPECT_TRUE(control.Calls.isEmpty());

    control.Failing << QStringLiteral("playState");
    player.Pause();
    EXPECT_EQ(player.PlayState(), Undefined);
    EXPECT_EQ(
        prompt.Messages(), QStringList({ QStringLiteral("状态改变错误"), QStringLiteral("状态取得错误") }));
}

TEST_F(CPlayerTest, SpeedIsClampedAndWrittenWhereRateIsAvailable)
{
    open();
    const std::pair<double, double> cases[]
        = { { 0.0, 0.1 }, { -1.0, 0.1 }, { 0.1, 0.1 }, { 2.0, 2.0 }, { 2.1, 2.0 }, { 1.25, 1.25 } };
    for (auto [given, kept] : cases) {
        player.setSpeed(given);
        EXPECT_DOUBLE_EQ(player.Speed(), kept) << given;
        EXPECT_DOUBLE_EQ(control.rate(), kept) << given;
    }
    control.RateAvailable = false;
    control.Calls.clear();
    player.setSpeed(0.7);
    EXPECT_DOUBLE_EQ(player.Speed(), 0.7);
    EXPECT_TRUE(control.Calls.isEmpty());

    control.Failing << QStringLiteral("isAvailable");
    player.setSpeed(1.9);
    EXPECT_DOUBLE_EQ(player.Speed(), 0.7);
    EXPECT_EQ(prompt.Messages(), QStringList(QStringLiteral("设置速度错误")));
}

TEST_F(CPlayerTest, OpenStateChangeWritesSpeedWithoutAvailabilityTest)
{
    player.setSpeed(1.75);
    control.RateAvailable = false;
    control.setOpenStateDirect(MediaOpenState::MediaOpening);
    EXPECT_DOUBLE_EQ(control.rate(), 1.75);
    control.Failing << QStringLiteral("setRate");
    control.setOpenStateDirect(MediaOpenState::MediaOpen);
    EXPECT_EQ(prompt.Messages(), QStringList(QStringLiteral("设置速度错误")));
}

TEST_F(CPlayerTest, ResetComesBackToThePositionAndPlays)
{
    player.Reset(); // no file
    EXPECT_TRUE(control.Calls.isEmpty());

    open();
    control.setPositionDirect(42.0);
    player.Reset();
    EXPECT_EQ(control.Calls,
        QStringList({ QStringLiteral("stop"), QStringLiteral("seek 0"), QStringLiteral("seek 42"),
            QStringLiteral("play") }));
    EXPECT_DOUBLE_EQ(control.currentPosition(), 42.0);
    control.Failing << QStringLiteral("stop");
    player.Reset();
    EXPECT_EQ(prompt.Messages(), QStringList(QStringLiteral("重新初始化错误")));
}

TEST_F(CPlayerTest, ClearClosesMedia)
{
    open();
    player.Clear();
    EXPECT_EQ(control.URL(), QString());
    control.Failing << QStringLiteral("setURL");
    player.Clear();
    EXPECT_EQ(prompt.Messages(), QStringList(QStringLiteral("初始化错误")));
}

TEST_F(CPlayerTest, ClickGivesPositionFromOneAndTogglesWithMousePause)
{
    open();
    EXPECT_EQ(player.Click(0, 0, true), QPoint(1, 1));
    EXPECT_EQ(control.playState(), Playing);
    EXPECT_EQ(player.Click(319, 239, true), QPoint(320, 240));
    EXPECT_EQ(control.playState(), Paused);

    control.Calls.clear();
    EXPECT_EQ(player.Click(5, 7, false), QPoint(6, 8));
    EXPECT_TRUE(control.Calls.isEmpty());
}

TEST_F(CPlayerTest, NoControlReportsInsteadOfCrashing)
{
    CPlayer bare;
    bare.Init(2, nullptr, nullptr);
    EXPECT_EQ(bare.CurrentPosition(), 0.0);
    bare.Pause();
    bare.Move(1.0);
    bare.setContent(QStringLiteral("x.avi"));
    EXPECT_EQ(bare.PlayerFileName(), QString());
    EXPECT_EQ(prompt.Messages(),
        QStringList({ QStringLiteral("取得时间错误"), QStringLiteral("状态改变错误"),
            QStringLiteral("移动位置错误"), QStringLiteral("打开文件出错，可能是因为外挂字幕不正确") }));
}

TEST_F(CPlayerTest, ReplacedControlNoLongerDrivesTheDocument)
{
    CFakeMediaControl other;
    player.setplayer(&other);
    player.setSpeed(1.5);
    control.setOpenStateDirect(MediaOpenState::MediaOpen);
    EXPECT_DOUBLE_EQ(control.rate(), 1.0);
    other.setOpenStateDirect(MediaOpenState::MediaOpening);
    EXPECT_DOUBLE_EQ(other.rate(), 1.5);
}
