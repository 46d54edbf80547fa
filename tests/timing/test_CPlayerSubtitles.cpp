#include "core/CScriptedPrompt.h"
#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/basMessage.h"
#include "formats/CTiming.h"
#include "formats/CTimings.h"
#include "script/CFonts.h"
#include "timing/CPlayerSubtitles.h"
#include "timing/CTimingGrid.h"

#include <QCoreApplication>
#include <QImage>
#include <QObject>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

using TG = CTimingGrid;

// A red line of one style without outline or shadow, placed by \pos on a 640 x 360
// picture from 0 to 5 seconds: every lit pixel of the frame is red.
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

class PlayerWindow : public IPlayerWindow
{
public:
    QString Tag() const override { return {}; }
    void setTag(const QString &) override { }
    QString Caption() const override { return {}; }
    void setCaption(const QString &) override { }
    CPlayer *player() const override { return nullptr; }
};

// A timing document with its window and grid, as a timing window holds them.
struct Document
{
    Document(CTimings &list, const QString &text)
    {
        doc = list.Create(&window);
        doc->TimingWindow = &window;
        doc->Read(Script(text));
        grid = std::make_unique<CTimingGrid>();
        grid->SetDocument(doc);
        grid->LoadGridFromContent(*doc->SSAContent);
    }
    // Closing as the window does: the grid lets go of the document, which then goes.
    void Close(CTimings &list)
    {
        grid->SetDocument(nullptr);
        list.Delete(QString::number(doc->SerialNo()));
        doc = nullptr;
    }
    QObject window;
    CTiming *doc = nullptr;
    std::unique_ptr<CTimingGrid> grid;
};

// The red pixels in a quarter of a 640 x 360 frame.
int RedIn(const QImage &frame, int quarter)
{
    const QRect r((quarter % 2) * 320, (quarter / 2) * 180, 320, 180);
    int red = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            red += qRed(frame.pixel(x, y)) > 0 && qBlue(frame.pixel(x, y)) == 0;
    return red;
}
enum { TopLeft, TopRight, BottomLeft, BottomRight };

class PlayerSubtitlesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        subtitles.Documents = [this] { return &list; };
        subtitles.setPlayer(&player);
        frame.fill(Qt::black);
    }
    void TearDown() override { SetPrompt(nullptr); }

    CScriptedPrompt prompt;
    CTimings list;
    PlayerWindow player;
    PlayerWindow otherPlayer;
    CPlayerSubtitles subtitles;
    QImage frame { 640, 360, QImage::Format_RGB32 };
};

} // namespace

// Off, nothing is attached and frames pass unchanged; on, the linked document's lines
// are drawn at their time; an edit in the grid asks for the picture again and shows in it;
// a style changed outside the grid reaches it by the poll; off again lets go.
TEST_F(PlayerSubtitlesTest, DrawsTheLinkedDocumentOnlyWhileOnAndFollowsItsChanges)
{
    Document a(list, QStringLiteral("{\\pos(160,90)}第一行"));
    a.doc->setPlayerWindow(&player);
    EXPECT_FALSE(subtitles.Follow());
    EXPECT_EQ(subtitles.Overlay().Grid(), nullptr);
    EXPECT_EQ(subtitles.Compose(frame, 1.0), frame);
    EXPECT_EQ(subtitles.Status(), QString());

    QSignalSpy picture(&subtitles, &CPlayerSubtitles::PictureChanged);
    subtitles.setEnabled(true);
    EXPECT_EQ(picture.count(), 1);
    EXPECT_EQ(subtitles.Document(), a.doc);
    const QImage shown = subtitles.Compose(frame, 1.0);
    EXPECT_GT(RedIn(shown, TopLeft), 100);
    EXPECT_EQ(RedIn(shown, TopRight) + RedIn(shown, BottomLeft) + RedIn(shown, BottomRight), 0);
    EXPECT_EQ(RedIn(subtitles.Compose(frame, 6.0), TopLeft), 0);
    EXPECT_EQ(RedIn(frame, TopLeft), 0); // the frame given is left as it was
    EXPECT_EQ(subtitles.Status(), QString()) << subtitles.Status().toStdString();

    // Paused: the same frame at the same time, redrawn after an edit.
    a.grid->Spread().SetText(TG::ColDialog, 1, QStringLiteral("{\\pos(480,270)}改过"));
    QCoreApplication::processEvents();
    EXPECT_EQ(picture.count(), 2);
    const QImage edited = subtitles.Compose(frame, 1.0);
    EXPECT_EQ(RedIn(edited, TopLeft), 0);
    EXPECT_GT(RedIn(edited, BottomRight), 100);

    a.doc->Fonts->Item(QStringLiteral("Red"))->setPrimaryColour(QStringLiteral("&H00FF0000"));
    EXPECT_TRUE(picture.wait(1000));
    EXPECT_EQ(RedIn(subtitles.Compose(frame, 1.0), BottomRight), 0);

    subtitles.setEnabled(false);
    EXPECT_EQ(subtitles.Overlay().Grid(), nullptr);
    EXPECT_EQ(subtitles.Compose(frame, 1.0), frame);
}

// Which document: the active timing window's when it is linked, else the one drawn so far
// while it stays linked, else the first linked. Relinks and closed windows are followed
// without touching what is gone.
TEST_F(PlayerSubtitlesTest, FollowsRelinksAndClosedDocuments)
{
    Document a(list, QStringLiteral("{\\pos(160,90)}甲"));
    Document b(list, QStringLiteral("{\\pos(480,90)}乙"));
    QObject *active = nullptr;
    list.ActiveWindow = [&active] { return active; };
    subtitles.setEnabled(true);
    EXPECT_EQ(subtitles.Document(), nullptr);
    EXPECT_EQ(subtitles.Status(), Msg(QStringLiteral("VELMAR_OVERLAY_110")));
    EXPECT_EQ(subtitles.Compose(frame, 1.0), frame);

    a.doc->setPlayerWindow(&player);
    b.doc->setPlayerWindow(&player);
    EXPECT_TRUE(subtitles.Follow());
    EXPECT_EQ(subtitles.Document(), a.doc);
    active = &b.window;
    EXPECT_GT(RedIn(subtitles.Compose(frame, 1.0), TopRight), 100);
    EXPECT_EQ(subtitles.Document(), b.doc);
    active = nullptr; // the player itself, say: the document drawn stays
    EXPECT_FALSE(subtitles.Follow());

    b.doc->setPlayerWindow(&otherPlayer);
    EXPECT_GT(RedIn(subtitles.Compose(frame, 1.0), TopLeft), 100);
    EXPECT_EQ(subtitles.Document(), a.doc);

    b.doc->setPlayerWindow(&player);
    a.Close(list);
    EXPECT_TRUE(subtitles.Follow());
    EXPECT_EQ(subtitles.Document(), b.doc);
    a.grid.reset(); // the closed window goes later
    // The last window goes with its grid before the links are looked at again.
    b.Close(list);
    b.grid.reset();
    EXPECT_EQ(subtitles.Overlay().Grid(), nullptr);
    EXPECT_EQ(subtitles.Compose(frame, 1.0), frame);
    EXPECT_EQ(subtitles.Document(), nullptr);
    EXPECT_EQ(subtitles.Status(), Msg(QStringLiteral("VELMAR_OVERLAY_110")));
}

// A script that does not show as written (its style gone) is drawn as well as the
// renderer can, and says why in one status line; the style back, the line clears.
TEST_F(PlayerSubtitlesTest, WhatKeepsTheScriptFromShowingIsOneStatusLine)
{
    Document a(list, QStringLiteral("{\\pos(160,90)}第一行"));
    a.doc->setPlayerWindow(&player);
    subtitles.setEnabled(true);
    EXPECT_GT(RedIn(subtitles.Compose(frame, 1.0), TopLeft), 100);
    QSignalSpy status(&subtitles, &CPlayerSubtitles::StatusChanged);
    a.doc->Fonts->Clear();
    EXPECT_TRUE(status.wait(1000));
    EXPECT_EQ(subtitles.Status(), Msg(QStringLiteral("VELMAR_OVERLAY_240")).arg(QStringLiteral("Red")));
    const QImage fallback = subtitles.Compose(frame, 1.0);
    EXPECT_EQ(RedIn(fallback, TopLeft), 0);
    EXPECT_NE(fallback, frame);

    a.doc->Read(Script(QStringLiteral("{\\pos(160,90)}又来了")));
    a.grid->LoadGridFromContent(*a.doc->SSAContent);
    EXPECT_GT(RedIn(subtitles.Compose(frame, 1.0), TopLeft), 100);
    EXPECT_EQ(subtitles.Status(), QString()) << subtitles.Status().toStdString();
}
