#include "player/CAssRenderer.h"

#include <QColor>
#include <QImage>
#include <QRect>

#include <gtest/gtest.h>

namespace {

// A head with a picture of 640 x 360 and styles without outline or shadow, so that every
// lit pixel has the style's own colour: "Red" (red over blue for karaoke), "Half" (green
// at half opacity) and "Missing" in a font no machine has.
QString Head(const QString &missingFont = QStringLiteral("NoSuchFontVelmarTest"))
{
    const QString style = QStringLiteral(
        "Style: %1,Noto Sans CJK "
        "SC,40,%2,&H00FF0000,&H00000000,&H00000000,0,0,0,0,100,100,0,0.00,1,0,0,5,10,10,10,134\r\n");
    return QStringLiteral(
               "[Script Info]\r\n; a comment\r\nScriptType:v4.00+\r\nPlayResX:640\r\nPlayResY:360\r\n\r\n"
               "[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
               "OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, "
               "Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n")
        + style.arg(QStringLiteral("Red"), QStringLiteral("&H000000FF"))
        + style.arg(QStringLiteral("Half"), QStringLiteral("&H8000FF00"))
        + style.arg(QStringLiteral("Missing"), QStringLiteral("&H000000FF"))
              .replace(QStringLiteral("Noto Sans CJK SC"), missingFont);
}

QString Dialogue(const QString &style, const QString &text, const QString &end = QStringLiteral("0:00:05.00"))
{
    return QStringLiteral("Dialogue: 0,0:00:00.00,%1,%2,NTP,0000,0000,0000,,%3").arg(end, style, text);
}

QImage Black(int width, int height, QImage::Format format = QImage::Format_ARGB32_Premultiplied)
{
    QImage frame(width, height, format);
    frame.fill(Qt::black);
    return frame;
}

// The box of the pixels that are not black, and whether every one of them is pure red of
// some strength (R > 0, G = B = 0).
struct Lit
{
    QRect Box;
    bool OnlyRed = true;
    int MaxRed = 0;
};

Lit LitPixels(const QImage &image)
{
    Lit lit;
    const QImage argb = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < argb.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x) {
            const QRgb p = line[x];
            if ((p & 0xFFFFFF) == 0)
                continue;
            lit.Box |= QRect(x, y, 1, 1);
            lit.OnlyRed = lit.OnlyRed && qGreen(p) == 0 && qBlue(p) == 0;
            lit.MaxRed = std::max(lit.MaxRed, qRed(p));
        }
    }
    return lit;
}

// Columns, from the left, of pixels where red (blue) is the stronger channel.
struct Sweep
{
    int LastRed = -1;
    int FirstBlue = -1;
    int Blue = 0;
};

Sweep SweepOf(const QImage &image)
{
    Sweep s;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            const QRgb p = image.pixel(x, y);
            if (qRed(p) > 64 && qRed(p) > qBlue(p))
                s.LastRed = x;
            if (qBlue(p) > 64 && qBlue(p) > qRed(p)) {
                ++s.Blue;
                if (s.FirstBlue < 0)
                    s.FirstBlue = x;
            }
        }
    }
    return s;
}

class AssRendererTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(renderer.IsAvailable()) << renderer.Status().toStdString();
        ASSERT_TRUE(renderer.SetHeader(Head()));
    }
    CAssRenderer renderer;
};

} // namespace

// A \pos line lands where the script puts it, in the style's colour, at any frame size:
// PlayResX and PlayResY scale to the frame. A Chinese text finds its font.
TEST_F(AssRendererTest, PositionedLineShowsInStyleColourAtItsPlace)
{
    renderer.SetEvent(1, Dialogue(QStringLiteral("Red"), QStringLiteral("{\\pos(200,120)}字幕字幕")), 1);
    ASSERT_TRUE(renderer.HasEvent(1));
    EXPECT_EQ(renderer.EventText(1), QStringLiteral("{\\pos(200,120)}字幕字幕"));

    for (const int scale : { 1, 2 }) {
        QImage frame = Black(640 * scale, 360 * scale);
        ASSERT_TRUE(renderer.Render(frame, 1.0));
        const Lit lit = LitPixels(frame);
        ASSERT_FALSE(lit.Box.isEmpty());
        EXPECT_TRUE(lit.OnlyRed);
        EXPECT_EQ(lit.MaxRed, 255);
        // Alignment 5: the text's middle is at the position. The font's line (ascent and
        // descent, 1.448 em) is 40 units high, so four square glyphs are 110 units wide.
        EXPECT_NEAR(lit.Box.center().x(), 200 * scale, 4 * scale);
        EXPECT_NEAR(lit.Box.center().y(), 120 * scale, 4 * scale);
        EXPECT_NEAR(lit.Box.width(), 110 * scale, 6 * scale);
    }
    EXPECT_EQ(renderer.Status(), QString()) << renderer.Status().toStdString();

    // Outside its time the line draws nothing.
    QImage after = Black(640, 360);
    EXPECT_FALSE(renderer.Render(after, 5.0));
    EXPECT_TRUE(LitPixels(after).Box.isEmpty());
}

// A \K syllable fills from the secondary to the primary colour over its own time: at
// 0.5 s half of the first syllable, at 1.5 s all of it and half of the second.
TEST_F(AssRendererTest, KaraokeSweepsAsItsTimesSay)
{
    renderer.SetEvent(
        7, Dialogue(QStringLiteral("Red"), QStringLiteral("{\\an4\\pos(20,180)\\K100}WWWW{\\K100}WWWW")), 1);
    const auto at = [&](double seconds) {
        QImage frame = Black(640, 360);
        renderer.Render(frame, seconds);
        return SweepOf(frame);
    };
    const Sweep start = at(0.0);
    const Sweep half = at(0.5);
    const Sweep oneAndHalf = at(1.5);
    const Sweep done = at(2.5);

    EXPECT_EQ(start.LastRed, -1);
    EXPECT_EQ(done.Blue, 0);
    ASSERT_GT(done.LastRed, 20);
    const double width = done.LastRed - 20;
    EXPECT_NEAR((half.LastRed - 20) / width, 0.25, 0.06);
    EXPECT_NEAR((oneAndHalf.LastRed - 20) / width, 0.75, 0.06);
    EXPECT_GE(half.FirstBlue, half.LastRed - 1);
    EXPECT_GT(half.Blue, oneAndHalf.Blue);
}

// The blend is the same in every pixel format: premultiplied and straight alpha, byte
// and word order, and formats blended through a copy. A half-opaque colour over a
// half-transparent frame checks the alpha arithmetic.
TEST_F(AssRendererTest, BlendIsTheSameInEveryPixelFormat)
{
    renderer.SetEvent(1, Dialogue(QStringLiteral("Red"), QStringLiteral("{\\pos(320,100)}字幕")), 1);
    renderer.SetEvent(2, Dialogue(QStringLiteral("Half"), QStringLiteral("{\\pos(320,250)}字幕")), 2);
    const QColor ground(40, 80, 120, 128);
    QImage reference(640, 360, QImage::Format_ARGB32_Premultiplied);
    reference.fill(ground);
    ASSERT_TRUE(renderer.Render(reference, 1.0));
    const QImage expected = reference.convertToFormat(QImage::Format_ARGB32);

    const struct
    {
        QImage::Format Format;
        int Tolerance;
    } formats[] = {
        { QImage::Format_ARGB32, 2 },
        { QImage::Format_RGBA8888_Premultiplied, 0 },
        { QImage::Format_RGBA8888, 2 },
        { QImage::Format_RGB32, 0 },
        { QImage::Format_RGBX8888, 0 },
        { QImage::Format_RGB888, 0 },
        { QImage::Format_RGB16, 8 },
    };
    for (const auto &[format, tolerance] : formats) {
        QImage frame(640, 360, format);
        frame.fill(ground);
        const bool alpha = frame.hasAlphaChannel();
        QImage opaqueReference;
        if (!alpha) {
            // Without alpha the ground is opaque: the reference is made again over it.
            opaqueReference = QImage(640, 360, QImage::Format_ARGB32_Premultiplied);
            opaqueReference.fill(frame.pixelColor(0, 0));
            renderer.Render(opaqueReference, 1.0);
        }
        ASSERT_TRUE(renderer.Render(frame, 1.0));
        EXPECT_EQ(frame.format(), format);
        const QImage got = frame.convertToFormat(QImage::Format_ARGB32);
        const QImage want = alpha ? expected : opaqueReference.convertToFormat(QImage::Format_ARGB32);
        int worst = 0;
        for (int y = 0; y < 360; ++y)
            for (int x = 0; x < 640; ++x) {
                const QRgb a = got.pixel(x, y);
                const QRgb b = want.pixel(x, y);
                worst = std::max({ worst, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                    std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b)) });
            }
        EXPECT_LE(worst, tolerance) << "format " << int(format);
    }
    // Where the half-opaque green covers the ground fully, every channel is halfway
    // between the two, alpha included: premultiplied (20, 40, 60, 128) becomes
    // (10, 147, 30, 191).
    QRgb densest = 0; // pixel() gives the stored, premultiplied value
    for (int y = 180; y < 360; ++y)
        for (int x = 0; x < 640; ++x)
            if (qAlpha(reference.pixel(x, y)) > qAlpha(densest))
                densest = reference.pixel(x, y);
    EXPECT_NEAR(qAlpha(densest), 191, 1);
    EXPECT_NEAR(qRed(densest), 10, 1);
    EXPECT_NEAR(qGreen(densest), 147, 1);
    EXPECT_NEAR(qBlue(densest), 30, 1);
}

// Replacing, moving and removing events leaves the others whole; a line that is not an
// event (a comment) leaves its key without one.
TEST_F(AssRendererTest, EventsAreReplacedAndRemovedOneByOne)
{
    for (int key = 1; key <= 4; ++key)
        renderer.SetEvent(key, Dialogue(QStringLiteral("Red"), QStringLiteral("line %1").arg(key)), key);
    renderer.SetEvent(5, QStringLiteral("Comment: 0,0:00:00.00,0:00:05.00,Red,NTP,0000,0000,0000,,note"), 5);
    EXPECT_EQ(renderer.EventCount(), 4);
    EXPECT_FALSE(renderer.HasEvent(5));
    const qint64 parsed = renderer.ParsedLines();

    renderer.RemoveEvent(2);
    renderer.SetEvent(3, Dialogue(QStringLiteral("Red"), QStringLiteral("line three")), 3);
    renderer.SetEvent(
        4, Dialogue(QStringLiteral("Red"), QStringLiteral("line 4")), 9); // same line, new place
    EXPECT_EQ(renderer.ParsedLines(), parsed + 1);
    EXPECT_EQ(renderer.EventCount(), 3);
    EXPECT_FALSE(renderer.HasEvent(2));
    EXPECT_EQ(renderer.EventText(1), QStringLiteral("line 1"));
    EXPECT_EQ(renderer.EventText(3), QStringLiteral("line three"));
    EXPECT_EQ(renderer.EventText(4), QStringLiteral("line 4"));

    // A new head rebuilds the track from the kept lines; the same head again does nothing.
    ASSERT_TRUE(renderer.SetHeader(Head(QStringLiteral("AnotherMissingFont"))));
    EXPECT_EQ(renderer.EventCount(), 3);
    EXPECT_EQ(renderer.EventText(3), QStringLiteral("line three"));
    const qint64 rebuilt = renderer.ParsedLines();
    renderer.SetHeader(Head(QStringLiteral("AnotherMissingFont")));
    EXPECT_EQ(renderer.ParsedLines(), rebuilt);

    renderer.ClearEvents();
    EXPECT_EQ(renderer.EventCount(), 0);
    QImage frame = Black(64, 36);
    EXPECT_FALSE(renderer.Render(frame, 1.0));
}

// What keeps a script from showing as written is one line of status, and nothing
// crashes: a missing font, a style the script lacks, a line libass cannot read, a head
// without styles.
TEST_F(AssRendererTest, FaultsBecomeOneLineOfStatus)
{
    QImage frame = Black(640, 360);
    renderer.SetEvent(9, Dialogue(QStringLiteral("Red"), QStringLiteral("字\uE000")), 9);
    renderer.Render(frame, 1.0);
    EXPECT_TRUE(renderer.Status().contains(QStringLiteral("U+E000"))) << renderer.Status().toStdString();
    renderer.RemoveEvent(9);

    renderer.SetEvent(1, Dialogue(QStringLiteral("Missing"), QStringLiteral("text")), 1);
    frame = Black(640, 360);
    renderer.Render(frame, 1.0);
    EXPECT_TRUE(renderer.Status().contains(QStringLiteral("NoSuchFontVelmarTest")))
        << renderer.Status().toStdString();
    EXPECT_FALSE(LitPixels(frame).Box.isEmpty()); // drawn in a fallback font
    renderer.RemoveEvent(1);

    renderer.SetEvent(2, Dialogue(QStringLiteral("NoSuchStyle"), QStringLiteral("text")), 2);
    EXPECT_TRUE(renderer.Status().contains(QStringLiteral("NoSuchStyle"))) << renderer.Status().toStdString();
    renderer.RemoveEvent(2);

    renderer.SetEvent(3, QStringLiteral("Dialogue: only,three"), 3);
    EXPECT_FALSE(renderer.HasEvent(3));
    EXPECT_TRUE(renderer.Status().contains(QStringLiteral("1"))) << renderer.Status().toStdString();
    EXPECT_FALSE(renderer.Status().contains(u'\n'));
    renderer.RemoveEvent(3);

    EXPECT_FALSE(renderer.SetHeader(QStringLiteral("no head at all")));
    EXPECT_FALSE(renderer.Status().isEmpty());
    renderer.SetEvent(4, Dialogue(QStringLiteral("Red"), QStringLiteral("kept")), 4);
    EXPECT_FALSE(renderer.Render(frame, 1.0));
    // The line was kept and comes back with a usable head.
    ASSERT_TRUE(renderer.SetHeader(Head()));
    EXPECT_EQ(renderer.EventText(4), QStringLiteral("kept"));
}
