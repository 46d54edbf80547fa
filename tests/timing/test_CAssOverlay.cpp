#include "core/CScriptedPrompt.h"
#include "core/Class.h"
#include "core/IPrompt.h"
#include "formats/CTiming.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"
#include "script/CSubInfo.h"
#include "timing/CAssOverlay.h"
#include "timing/CTimingGrid.h"
#include "timing/basLineOps.h"

#include <QCoreApplication>
#include <QImage>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

using TG = CTimingGrid;

// Three red lines in the three corners of a 640 x 360 picture, from 0 to 5 seconds;
// the styles have no outline nor shadow, so every lit pixel has the style's colour.
const char16_t *kScript
    = u"[Script Info]\r\nScriptType: v4.00+\r\nPlayResX: 640\r\nPlayResY: 360\r\n\r\n"
      u"[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
      u"OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, "
      u"Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n"
      u"Style: Red,Noto Sans CJK SC,40,&H000000FF,&H00FF0000,&H00000000,&H00000000,0,0,0,0,"
      u"100,100,0,0.00,1,0,0,5,10,10,10,134\r\n\r\n"
      u"[Events]\r\nFormat: Layer, Start, End, Style, Actor, MarginL, MarginR, MarginV, "
      u"Effect, Text\r\n"
      u"Dialogue: 0,0:00:00.00,0:00:05.00,Red,NTP,0000,0000,0000,,{\\pos(160,90)}第一行\r\n"
      u"Dialogue: 0,0:00:00.00,0:00:05.00,Red,NTP,0000,0000,0000,,{\\pos(480,90)}第二行\r\n"
      u"Dialogue: 0,0:00:00.00,0:00:05.00,Red,NTP,0000,0000,0000,,{\\pos(320,270)}第三行\r\n";

// The lit pixels of one quarter-ish area of the frame: the top left, the top right or
// the bottom half, where the three lines stand.
enum Area { TopLeft, TopRight, Bottom };

QRect AreaRect(Area area)
{
    switch (area) {
    case TopLeft:
        return { 0, 0, 320, 180 };
    case TopRight:
        return { 320, 0, 320, 180 };
    default:
        return { 0, 180, 640, 180 };
    }
}

struct Ink
{
    int Red = 0;
    int Blue = 0;
    int Lit() const { return Red + Blue; }
};

Ink InkIn(const QImage &frame, Area area)
{
    Ink ink;
    const QRect r = AreaRect(area);
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x) {
            const QRgb p = frame.pixel(x, y);
            ink.Red += qRed(p) > 0 && qBlue(p) == 0;
            ink.Blue += qBlue(p) > 0 && qRed(p) == 0;
        }
    return ink;
}

bool SameIn(const QImage &a, const QImage &b, Area area)
{
    return a.copy(AreaRect(area)) == b.copy(AreaRect(area));
}

class AssOverlayTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        doc = Class::Make<CTiming>();
        doc->Read(QString::fromUtf16(kScript));
        grid.SetDocument(doc.get());
        grid.LoadGridFromContent(*doc->SSAContent);
        overlay.Attach(&grid);
        ASSERT_EQ(overlay.Renderer().EventCount(), 3) << overlay.Status().toStdString();
    }
    void TearDown() override { SetPrompt(nullptr); }

    QImage Frame(double seconds)
    {
        QImage frame(640, 360, QImage::Format_RGB32);
        frame.fill(Qt::black);
        overlay.Render(frame, seconds);
        return frame;
    }
    CSpread &g() { return grid.Spread(); }

    CScriptedPrompt prompt;
    std::unique_ptr<CTiming> doc;
    CTimingGrid grid;
    CAssOverlay overlay;
};

} // namespace

// Typing in one row remakes that row's event alone, on the next turn of the event loop:
// the frame changes where that line stands and nowhere else, and the track holds the new
// text. A stamp moves a line in time; a cell without a number keeps the line as it was.
TEST_F(AssOverlayTest, AnEditedRowReachesTheTrackAlone)
{
    const QImage before = Frame(1.0);
    ASSERT_GT(InkIn(before, TopLeft).Red, 100);
    ASSERT_GT(InkIn(before, TopRight).Red, 100);
    ASSERT_GT(InkIn(before, Bottom).Red, 100);
    const qint64 parsed = overlay.Renderer().ParsedLines();
    QSignalSpy changed(&overlay, &CAssOverlay::TrackChanged);

    g().SetText(TG::ColDialog, 2, QStringLiteral("{\\pos(480,90)}改过的第二行"));
    EXPECT_TRUE(overlay.Pending());
    QCoreApplication::processEvents();
    EXPECT_FALSE(overlay.Pending());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(overlay.Renderer().ParsedLines(), parsed + 1);
    EXPECT_EQ(overlay.Renderer().EventText(grid.RowSerial(2)), QStringLiteral("{\\pos(480,90)}改过的第二行"));

    const QImage after = Frame(1.0);
    EXPECT_FALSE(SameIn(before, after, TopRight));
    EXPECT_TRUE(SameIn(before, after, TopLeft));
    EXPECT_TRUE(SameIn(before, after, Bottom));

    // A stamp: the third line now starts at 2 seconds.
    g().SetText(TG::ColStartTime, 3, QStringLiteral("0:00:02.00"));
    EXPECT_EQ(InkIn(Frame(1.0), Bottom).Lit(), 0);
    EXPECT_GT(InkIn(Frame(2.5), Bottom).Red, 100);

    // Letters in a margin cell: the row cannot be made, its line stays as it was.
    g().SetText(TG::ColMarginL, 1, QStringLiteral("abc"));
    EXPECT_TRUE(SameIn(before, Frame(1.0), TopLeft));
    EXPECT_FALSE(overlay.Status().isEmpty());
    g().SetText(TG::ColMarginL, 1, QStringLiteral("0"));
    overlay.Flush();
    EXPECT_EQ(overlay.Status(), QString()) << overlay.Status().toStdString();
}

// Deleting and inserting rows (operations that reset the grid's model) drop the deleted
// line's event and read no other line again; the lines below keep their events.
TEST_F(AssOverlayTest, DeletedRowsLoseTheirEventsAndNothingElseIsRead)
{
    const qint32 first = grid.RowSerial(1);
    const qint32 second = grid.RowSerial(2);
    const qint64 parsed = overlay.Renderer().ParsedLines();

    g().SetActiveCell(TG::ColDialog, 1);
    basLineOps::DeleteRows(grid, basLineOps::WholeRows);
    overlay.Flush();
    EXPECT_EQ(overlay.Renderer().EventCount(), 2);
    EXPECT_FALSE(overlay.Renderer().HasEvent(first));
    EXPECT_TRUE(overlay.Renderer().HasEvent(second));
    EXPECT_EQ(InkIn(Frame(1.0), TopLeft).Lit(), 0);
    EXPECT_GT(InkIn(Frame(1.0), TopRight).Red, 100);

    g().SetActiveCell(TG::ColDialog, 1);
    basLineOps::InsertRows(grid, basLineOps::WholeRows);
    overlay.Flush();
    EXPECT_EQ(overlay.Renderer().EventCount(), 2);
    EXPECT_EQ(overlay.Renderer().ParsedLines(), parsed);
    EXPECT_EQ(grid.RowSerial(2), second);
    EXPECT_EQ(overlay.Renderer().EventText(second), QStringLiteral("{\\pos(480,90)}第二行"));
}

// A changed style or picture size in the document rebuilds the head: the lines take the
// new colour, and positions follow the new PlayResX and PlayResY.
TEST_F(AssOverlayTest, StyleAndScriptInformationChangesAreSeen)
{
    const QImage before = Frame(1.0);
    EXPECT_FALSE(overlay.Flush()); // nothing changed
    doc->Fonts->Item(QStringLiteral("Red"))->setPrimaryColour(QStringLiteral("&H00FF0000"));
    EXPECT_TRUE(overlay.Flush());
    const QImage blue = Frame(1.0);
    EXPECT_EQ(InkIn(blue, TopLeft).Red, 0);
    EXPECT_EQ(InkIn(blue, TopLeft).Blue, InkIn(before, TopLeft).Red);

    // Twice the play resolution: every position is half as far on the same frame, so the
    // bottom line (y 270) moves into the top half and the right one (x 480) leftwards.
    doc->ScriptInfo->setPlayResX(1280);
    doc->ScriptInfo->setPlayResY(720);
    const QImage scaled = Frame(1.0);
    EXPECT_EQ(InkIn(scaled, Bottom).Lit(), 0);
    EXPECT_GT(InkIn(scaled, TopLeft).Blue, 0);
    EXPECT_EQ(doc->ScriptInfo->ScriptType(), ScriptType::ASS);
}
