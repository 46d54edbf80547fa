// The media control over real files: a 10-second test picture made with ffmpeg, opened,
// sought while stopped, played and paused. Skipped when ffmpeg or the media backend is
// not there.
#include "core/CScriptedPrompt.h"
#include "core/Class.h"
#include "player/CPlayers.h"
#include "ui/QtMediaControl.h"

#include <QAudioDevice>
#include <QFile>
#include <QMediaDevices>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QVideoSink>

#include <gtest/gtest.h>

namespace {

constexpr int Timeout = 10000;

// Makes "<dir>/test.<ext>": 10 s, 320×240, 25 frames a second.
QString makeVideo(const QTemporaryDir &dir, const QString &ext)
{
    const QString ffmpeg = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (ffmpeg.isEmpty())
        return {};
    const QString out = dir.filePath(QStringLiteral("test.") + ext);
    for (const QString &codec : { QStringLiteral("libx264"), QStringLiteral("mpeg4") }) {
        QProcess run;
        run.start(ffmpeg,
            { QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"), QStringLiteral("error"),
                QStringLiteral("-y"), QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                QStringLiteral("testsrc=duration=10:size=320x240:rate=25"), QStringLiteral("-c:v"), codec,
                QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p"), out });
        if (run.waitForFinished(60000) && run.exitStatus() == QProcess::NormalExit && run.exitCode() == 0)
            return out;
    }
    return {};
}

// Opens the file in the control; false when the backend does not get it open in time.
bool openIn(QtMediaControl &control, const QString &file)
{
    control.setURL(file);
    return QTest::qWaitFor([&] { return control.openState() == MediaOpenState::MediaOpen; }, Timeout);
}

// True when the picture has more than one colour: a real frame of the test pattern.
bool hasPicture(const QVideoFrame &frame)
{
    const QImage image = frame.toImage();
    if (image.isNull())
        return false;
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); y += 7)
        for (int x = 0; x < image.width(); x += 7)
            if (image.pixel(x, y) != first)
                return true;
    return false;
}

class RealMedia : public ::testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        ASSERT_TRUE(dir.isValid());
        file = makeVideo(dir, QString::fromLatin1(GetParam()));
        if (file.isEmpty())
            GTEST_SKIP() << "ffmpeg is not available";
    }
    void TearDown() override { SetPrompt(nullptr); }

    CScriptedPrompt prompt;
    QTemporaryDir dir;
    QString file;
};

} // namespace

TEST_P(RealMedia, OpenSeekWhileStoppedPlayAndPause)
{
    QtMediaControl control;
    control.resize(320, 240 + control.BarHeight());
    control.setAutoStart(false);
    control.setMode(QStringLiteral("showFrame"), true);
    QSignalSpy openStates(control.Events(), &CMediaControlEvents::OpenStateChange);
    QSignalSpy frames(control.videoSink(), &QVideoSink::videoFrameChanged);

    if (!openIn(control, file))
        GTEST_SKIP() << "the media backend did not open the file";
    EXPECT_EQ(control.URL(), file);
    EXPECT_EQ(openStates.last().at(0).toInt(), MediaOpenState::MediaOpen);
    EXPECT_NEAR(control.duration(), 10.0, 0.1);
    EXPECT_EQ(control.imageSourceWidth(), 320);
    EXPECT_EQ(control.imageSourceHeight(), 240);
    EXPECT_EQ(control.playState(), MediaPlayState::Stopped);
    EXPECT_TRUE(control.isAvailable(QStringLiteral("Play")));
    EXPECT_TRUE(control.isAvailable(QStringLiteral("Rate")));

    // Asked for at once after the open: the decoder takes it only with its first frame.
    control.setCurrentPosition(3.0);
    EXPECT_NEAR(control.currentPosition(), 3.0, 0.1);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return qAbs(control.mediaPlayer()->position() - 3000) <= 100; }, Timeout))
        << "seek while stopped did not take effect, position " << control.mediaPlayer()->position();
    EXPECT_NEAR(control.currentPosition(), 3.0, 0.1);
    EXPECT_EQ(control.playState(), MediaPlayState::Stopped);
    // A stopped video shows its frame: the one at the new position.
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const QVideoFrame f = control.videoSink()->videoFrame();
            return f.isValid() && qAbs(f.startTime() - 3000000) <= 200000;
        },
        Timeout));
    EXPECT_TRUE(control.ShownFrame().isValid());
    std::printf("[ media ] %s: duration %.3f s, size %dx%d, position after stopped seek %.3f s\n", GetParam(),
        control.duration(), control.imageSourceWidth(), control.imageSourceHeight(),
        control.currentPosition());

    frames.clear();
    control.play();
    EXPECT_EQ(control.playState(), MediaPlayState::Playing);
    ASSERT_TRUE(QTest::qWaitFor([&] { return control.currentPosition() >= 3.4; }, Timeout));
    control.pause();
    EXPECT_EQ(control.playState(), MediaPlayState::Paused);
    const double paused = control.currentPosition();
    QTest::qWait(300);
    EXPECT_NEAR(control.currentPosition(), paused, 0.05);
    EXPECT_GT(paused, 3.3);
    EXPECT_LT(paused, 9.0);
    ASSERT_FALSE(frames.isEmpty());
    const QVideoFrame last = control.videoSink()->videoFrame();
    EXPECT_TRUE(last.isValid());
    EXPECT_EQ(last.size(), QSize(320, 240));
    EXPECT_TRUE(hasPicture(last));
    std::printf(
        "[ media ] %s: %d frames while playing, paused at %.3f s\n", GetParam(), int(frames.size()), paused);

    control.stop();
    EXPECT_EQ(control.playState(), MediaPlayState::Stopped);
    EXPECT_NEAR(control.currentPosition(), 0.0, 0.05);
    // Seeks after a stop are kept too.
    control.setCurrentPosition(5.0);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return qAbs(control.mediaPlayer()->position() - 5000) <= 100; }, Timeout));
}

TEST_P(RealMedia, PlayerDocumentOpensThroughTheControl)
{
    QtMediaControl control;
    control.setMode(QStringLiteral("showFrame"), true);
    auto players = Class::MakeCollection<CPlayers>();
    players->setSpeed(1.5);
    CPlayer *player = players->Create(nullptr, &control);
    player->setContent(file);
    if (!QTest::qWaitFor([&] { return control.openState() == MediaOpenState::MediaOpen; }, Timeout))
        GTEST_SKIP() << "the media backend did not open the file";
    EXPECT_TRUE(prompt.Messages().isEmpty());
    EXPECT_EQ(player->ImageSourceWidth(), 320);
    EXPECT_EQ(player->ImageSourceHeight(), 240);
    // Play then stop while loading leaves the film stopped, with the rate written on open.
    EXPECT_EQ(player->PlayState(), MediaPlayState::Stopped);
    EXPECT_DOUBLE_EQ(control.rate(), 1.5);

    player->setCurrentPosition(10.0); // the end: refused
    player->setCurrentPosition(2.0);
    EXPECT_NEAR(player->CurrentPosition(), 2.0, 0.1);
    player->SamllForword();
    EXPECT_NEAR(player->CurrentPosition(), 5.0, 0.1);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return qAbs(control.mediaPlayer()->position() - 5000) <= 100; }, Timeout));

    // Reset while playing: stop, to 0, back to where it was, and on.
    player->Pause();
    ASSERT_TRUE(QTest::qWaitFor([&] { return player->CurrentPosition() > 5.3; }, Timeout));
    player->Reset();
    const double remembered = control.currentPosition();
    EXPECT_GT(remembered, 5.2);
    EXPECT_EQ(player->PlayState(), MediaPlayState::Playing);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return control.mediaPlayer()->position() >= qint64(remembered * 1000) - 100; }, 2000));
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Containers, RealMedia, ::testing::Values("mp4", "mkv"));

TEST(QtMediaControl, FileThatCannotBeTakenLeavesTheUrlEmpty)
{
    QtMediaControl control;
    control.setURL(QStringLiteral("/nonexistent/folder/film.avi"));
    EXPECT_EQ(control.URL(), QString());
    EXPECT_EQ(control.openState(), MediaOpenState::Undefined);
    EXPECT_EQ(control.playState(), MediaPlayState::Undefined);
    EXPECT_FALSE(control.isAvailable(QStringLiteral("Play")));
    EXPECT_EQ(control.duration(), 0.0);
    control.play();
    control.setCurrentPosition(3.0);
    EXPECT_EQ(control.currentPosition(), 0.0);
}

TEST(QtMediaControl, FileThatIsNoVideoNeverOpens)
{
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    const std::unique_ptr<void, void (*)(void *)> restore(&prompt, [](void *) { SetPrompt(nullptr); });
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("bad.avi"));
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(QByteArray(4096, 'x'));
    }
    QtMediaControl control;
    CPlayers players;
    CPlayer *player = players.Create(nullptr, &control);
    player->setContent(file);
    EXPECT_EQ(control.URL(), file);
    if (!QTest::qWaitFor(
            [&] { return control.mediaPlayer()->mediaStatus() == QMediaPlayer::InvalidMedia; }, Timeout))
        GTEST_SKIP() << "the media backend did not judge the file";
    EXPECT_NE(control.openState(), MediaOpenState::MediaOpen);
    EXPECT_EQ(player->ImageSourceWidth(), 640);
    EXPECT_EQ(player->ImageSourceHeight(), 480);
    player->Pause();
    player->SamllForword();
    EXPECT_NE(player->PlayState(), MediaPlayState::Playing);
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST(QtMediaControl, AudioOutputOnlyWhereTheMachineHasOne)
{
    QtMediaControl control;
    EXPECT_EQ(control.hasAudioOutput(), !QMediaDevices::audioOutputs().isEmpty());
    control.setVolume(80);
    EXPECT_EQ(control.volume(), 80);
    control.setVolume(150);
    EXPECT_EQ(control.volume(), 100);
}

TEST(QtMediaControl, UiModeShowsOrHidesTheProgressBar)
{
    QtMediaControl control;
    control.show();
    EXPECT_EQ(control.uiMode(), QStringLiteral("full"));
    EXPECT_GT(control.BarHeight(), 0);
    control.setUiMode(QStringLiteral("none"));
    EXPECT_EQ(control.uiMode(), QStringLiteral("none"));
    EXPECT_EQ(control.BarHeight(), 0);
    control.setUiMode(QStringLiteral("full"));
    EXPECT_GT(control.BarHeight(), 0);
}

TEST(QtMediaControl, ClicksGivePicturePixels)
{
    QtMediaControl control;
    control.setUiMode(QStringLiteral("none"));
    control.resize(640, 480);
    control.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&control));
    // Without media the picture is the whole area, one pixel per pixel.
    EXPECT_EQ(control.ToPicturePixel(QPoint(0, 0)), QPoint(0, 0));
    EXPECT_EQ(control.ToPicturePixel(QPoint(639, 479)), QPoint(639, 479));

    QSignalSpy clicks(control.Events(), &CMediaControlEvents::Click);
    QWidget *picture = control.childAt(10, 20);
    ASSERT_NE(picture, nullptr);
    QTest::mouseClick(picture, Qt::LeftButton, Qt::ShiftModifier, QPoint(10, 20));
    QTest::mouseClick(
        picture, Qt::RightButton, Qt::ControlModifier, QPoint(1, 1)); // (0, 0) means the centre to QTest
    ASSERT_EQ(clicks.size(), 2);
    EXPECT_EQ(clicks[0], (QVariantList { 1, 1, 10, 20 }));
    EXPECT_EQ(clicks[1], (QVariantList { 2, 2, 1, 1 }));
}

TEST(QtMediaControl, ClicksOnAScaledPictureMapToItsPixels)
{
    QTemporaryDir dir;
    const QString file = makeVideo(dir, QStringLiteral("mkv"));
    if (file.isEmpty())
        GTEST_SKIP() << "ffmpeg is not available";
    QtMediaControl control;
    control.setAutoStart(false);
    control.setUiMode(QStringLiteral("none"));
    control.resize(800, 480); // twice the height: 640 wide, 80 px bands left and right
    control.show();
    if (!openIn(control, file))
        GTEST_SKIP() << "the media backend did not open the file";
    EXPECT_EQ(control.PictureRect(), QRect(80, 0, 640, 480));
    EXPECT_EQ(control.ToPicturePixel(QPoint(80, 0)), QPoint(0, 0));
    EXPECT_EQ(control.ToPicturePixel(QPoint(81, 1)), QPoint(0, 0));
    EXPECT_EQ(control.ToPicturePixel(QPoint(82, 2)), QPoint(1, 1));
    EXPECT_EQ(control.ToPicturePixel(QPoint(719, 479)), QPoint(319, 239));
    // The bands clamp to the picture's edge.
    EXPECT_EQ(control.ToPicturePixel(QPoint(5, 240)), QPoint(0, 120));
    EXPECT_EQ(control.ToPicturePixel(QPoint(790, 240)), QPoint(319, 120));
}

TEST(QtMediaControl, StoppedVideoIsBlankWithoutShowFrame)
{
    QTemporaryDir dir;
    const QString file = makeVideo(dir, QStringLiteral("mp4"));
    if (file.isEmpty())
        GTEST_SKIP() << "ffmpeg is not available";
    QtMediaControl control;
    control.setAutoStart(false);
    if (!openIn(control, file))
        GTEST_SKIP() << "the media backend did not open the file";
    EXPECT_EQ(control.playState(), MediaPlayState::Stopped);
    EXPECT_FALSE(control.ShownFrame().isValid());
    control.setMode(QStringLiteral("showFrame"), true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return control.ShownFrame().isValid(); }, Timeout));
    EXPECT_EQ(control.playState(), MediaPlayState::Stopped);
}

TEST(QtMediaControl, AutoStartPlaysOnOpen)
{
    QTemporaryDir dir;
    const QString file = makeVideo(dir, QStringLiteral("mkv"));
    if (file.isEmpty())
        GTEST_SKIP() << "ffmpeg is not available";
    QtMediaControl control;
    if (!openIn(control, file))
        GTEST_SKIP() << "the media backend did not open the file";
    EXPECT_EQ(control.playState(), MediaPlayState::Playing);
    EXPECT_TRUE(QTest::qWaitFor([&] { return control.currentPosition() > 0.2; }, Timeout));
    control.setRate(2.0);
    EXPECT_DOUBLE_EQ(control.rate(), 2.0);
    control.setURL(QString());
    EXPECT_EQ(control.URL(), QString());
    EXPECT_EQ(control.openState(), MediaOpenState::Undefined);
    EXPECT_EQ(control.playState(), MediaPlayState::Undefined);
}
