// The player window's subtitles: the toggle, the frames it draws over, and the timing
// windows it follows.
#include "core/CScriptedPrompt.h"
#include "core/IPrompt.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayers.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "timing/CPlayerSubtitles.h"
#include "timing/CTimingGrid.h"
#include "ui/frmPlayer.h"
#include "ui/frmTiming.h"

#include <QAction>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

// One red line (no outline, no shadow) placed by \pos on a 640 x 360 script picture.
QString Script(const QString &text)
{
    return QStringLiteral(
               "[Script Info]\r\nScriptType: v4.00+\r\nPlayResX: 640\r\nPlayResY: 360\r\n\r\n"
               "[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
               "OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, "
               "Spacing, Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, "
               "Encoding\r\nStyle: Red,Noto Sans CJK SC,40,&H000000FF,&H00FF0000,&H00000000,"
               "&H00000000,0,0,0,0,100,100,0,0.00,1,0,0,5,10,10,10,134\r\n\r\n"
               "[Events]\r\nFormat: Layer, Start, End, Style, Actor, MarginL, MarginR, MarginV, "
               "Effect, Text\r\nDialogue: 0,0:00:00.00,0:00:05.00,Red,NTP,0000,0000,0000,,")
        + text + QStringLiteral("\r\n");
}

enum { TopLeft, TopRight, BottomLeft, BottomRight };

// The red pixels in a quarter of the frame.
int RedIn(const QImage &frame, int quarter)
{
    const int w = frame.width() / 2;
    const int h = frame.height() / 2;
    const QRect r((quarter % 2) * w, (quarter / 2) * h, w, h);
    int red = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            red += qRed(frame.pixel(x, y)) > 0 && qBlue(frame.pixel(x, y)) == 0;
    return red;
}

// A player window over a fake control of a 1280 x 720 video (twice the script's picture),
// and a timing window that has chosen it, holding one line in the top left quarter.
class PlayerSubtitlesWindow : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartCore();
        SetPrompt(&prompt);
        prompt.DefaultYesNo = MsgBoxResult::No;
        SaveSetting(QStringLiteral("Player"), QStringLiteral("ShowSubtitles"), QStringLiteral("0"));
        control.MediaWidth = 1280;
        control.MediaHeight = 720;
        player = std::make_unique<frmPlayer>(&control);
        player->Init(Velmar->Players());
        timing = openTiming(QStringLiteral("a.ass"), QStringLiteral("{\\pos(160,90)}第一行"));
        frame.fill(Qt::black);
    }
    void TearDown() override
    {
        timing.reset();
        player.reset();
        SetPrompt(nullptr);
    }
    std::unique_ptr<frmTiming> openTiming(const QString &name, const QString &line)
    {
        auto form = std::make_unique<frmTiming>();
        form->Init(Velmar);
        const QString path = dir.filePath(name);
        WriteTextFile(path, Script(line), true);
        EXPECT_TRUE(form->OpenFile(0, path));
        return form;
    }
    QAction *toggle() const { return player->Button(QStringLiteral("ShowSubtitles")); }
    QString setting() const { return GetSetting(QStringLiteral("Player"), QStringLiteral("ShowSubtitles")); }

    QTemporaryDir dir;
    CScriptedPrompt prompt;
    CFakeMediaControl control;
    std::unique_ptr<frmPlayer> player;
    std::unique_ptr<frmTiming> timing;
    QImage frame { 1280, 720, QImage::Format_RGB32 };
};

} // namespace

// Off (the default), frames are shown as they come and nothing is said. On, the linked
// document's line is drawn at its place on the video's picture, an edit in the grid shows
// in the paused picture, and the state is remembered for the next player. Off again, the
// frames pass unchanged.
TEST_F(PlayerSubtitlesWindow, TheToggleDrawsTheLinkedScriptOverTheFramesAndIsRemembered)
{
    ASSERT_EQ(timing->Document()->PlayerWindow(), player.get());
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_EQ(toggle()->text(), Msg(QStringLiteral("VELMAR_OVERLAY_100")));
    EXPECT_EQ(toggle()->toolTip(), Msg(QStringLiteral("VELMAR_OVERLAY_101")));
    control.FeedFrame(frame, 1.0);
    EXPECT_EQ(control.Picture, frame);
    EXPECT_TRUE(player->lblStatus->isHidden());

    toggle()->trigger();
    EXPECT_EQ(setting(), QStringLiteral("1"));
    EXPECT_GT(RedIn(control.Picture, TopLeft), 400);
    EXPECT_EQ(RedIn(control.Picture, TopRight) + RedIn(control.Picture, BottomRight), 0);
    EXPECT_TRUE(player->lblStatus->isHidden()) << player->lblStatus->text().toStdString();
    control.FeedFrame(frame, 5.5);
    EXPECT_EQ(control.Picture, frame);

    // Paused at 1 s: the edit is drawn without a new frame.
    control.FeedFrame(frame, 1.0);
    const int drawn = control.PicturesDrawn;
    timing->Grid().Spread().SetText(CTimingGrid::ColDialog, 1, QStringLiteral("{\\pos(480,270)}改过"));
    QCoreApplication::processEvents();
    EXPECT_GT(control.PicturesDrawn, drawn);
    EXPECT_EQ(RedIn(control.Picture, TopLeft), 0);
    EXPECT_GT(RedIn(control.Picture, BottomRight), 400);

    // A new player starts on, and says that no timing window uses it.
    CFakeMediaControl otherControl;
    frmPlayer other(&otherControl);
    EXPECT_TRUE(other.Button(QStringLiteral("ShowSubtitles"))->isChecked());
    EXPECT_FALSE(other.lblStatus->isHidden());
    EXPECT_EQ(other.lblStatus->text(), Msg(QStringLiteral("VELMAR_OVERLAY_110")));

    toggle()->trigger();
    EXPECT_EQ(setting(), QStringLiteral("0"));
    EXPECT_EQ(control.Picture, frame);
    EXPECT_TRUE(player->lblStatus->isHidden());
}

// A second timing window on the same player, the first one closed, the second destroyed,
// then the player destroyed: the picture follows each step and nothing gone is touched.
TEST_F(PlayerSubtitlesWindow, TheSubtitlesFollowClosedAndDestroyedWindows)
{
    toggle()->trigger();
    control.FeedFrame(frame, 1.0);
    EXPECT_GT(RedIn(control.Picture, TopLeft), 400);

    std::unique_ptr<frmTiming> second
        = openTiming(QStringLiteral("b.ass"), QStringLiteral("{\\pos(480,90)}乙"));
    ASSERT_EQ(second->Document()->PlayerWindow(), player.get());
    control.FeedFrame(frame, 1.0);
    EXPECT_GT(RedIn(control.Picture, TopLeft), 400); // the document drawn so far stays

    timing->close();
    EXPECT_TRUE(QTest::qWaitFor([this] { return RedIn(control.Picture, TopRight) > 200; }, 2000));
    EXPECT_EQ(RedIn(control.Picture, TopLeft), 0);

    second.reset();
    control.FeedFrame(frame, 1.0);
    EXPECT_EQ(control.Picture, frame);
    EXPECT_EQ(player->lblStatus->text(), Msg(QStringLiteral("VELMAR_OVERLAY_110")));

    player.reset();
    control.FeedFrame(frame, 1.0);
    EXPECT_EQ(control.Picture, frame);
}
