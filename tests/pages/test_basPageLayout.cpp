#include "pages/CBoxFont.h"
#include "pages/CPictureBox.h"
#include "pages/basPageLayout.h"

#include <gtest/gtest.h>

using namespace basPageLayout;

namespace {

CPageLine styled(const QString &text, qint16 alignment)
{
    CPageLine line;
    line.Dialog = text;
    line.HasStyle = true;
    line.FontName = QStringLiteral("Arial");
    line.FontSize = 24;
    line.Alignment = alignment;
    return line;
}

// rows of the image that hold a pixel of the colour
QList<int> rowsWith(const QImage &image, QRgb colour)
{
    QList<int> rows;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) & 0xFFFFFF) == (colour & 0xFFFFFF)) {
                rows << y;
                break;
            }
    return rows;
}

} // namespace

TEST(PageLayout, TwoTopLinesStandOneBelowTheOther)
{
    CPictureBox box(724, 484);
    QList<CPageLine> lines { styled(QStringLiteral("第一行"), 8), styled(QStringLiteral("第二行"), 8) };
    DisplayPageLines(box, lines);
    EXPECT_EQ(lines[0].DisplayY, 400);
    EXPECT_GT(lines[0].DisplayHeight, 0);
    EXPECT_EQ(lines[1].DisplayY, 400 + lines[0].DisplayHeight + 20 + 1);
    EXPECT_FALSE(Overlaps(lines[1].DisplayY, lines[1].DisplayHeight, lines[0]));
    EXPECT_TRUE(lines[0].Displayed && lines[1].Displayed);
}

TEST(PageLayout, BottomLinesStackUpFromTheMargin)
{
    CPictureBox box(724, 484);
    QList<CPageLine> lines { styled(QStringLiteral("one"), 2), styled(QStringLiteral("two\r\nrows"), 1) };
    DisplayPageLines(box, lines);
    const qint32 bottom = 484 * 15 - 800;
    EXPECT_EQ(lines[0].DisplayY, bottom - lines[0].DisplayHeight);
    EXPECT_EQ(lines[1].DisplayY, lines[0].DisplayY - lines[1].DisplayHeight - 20);
    EXPECT_NEAR(lines[1].DisplayHeight, 2 * lines[0].DisplayHeight, 1);
    // a line without a style stacks from the bottom as well, in Arial and white
    CPageLine plain;
    plain.Dialog = QStringLiteral("plain");
    plain.Alignment = 8;
    QList<CPageLine> alone { plain };
    DisplayPageLines(box, alone);
    EXPECT_EQ(alone[0].DisplayY, bottom - alone[0].DisplayHeight);
    EXPECT_EQ(box.ForeColor(), 0xFFFFFF);
}

TEST(PageLayout, PlacedLinesMovePastAFixedOne)
{
    CPictureBox box(724, 484);
    CPageLine fixed = styled(QStringLiteral("fixed"), 8);
    fixed.ForcePosition = true;
    fixed.DisplayY = 410;
    QList<CPageLine> lines { styled(QStringLiteral("top"), 8), fixed };
    DisplayPageLines(box, lines);
    EXPECT_EQ(lines[1].DisplayY, 410);
    EXPECT_EQ(lines[0].DisplayY, 410 + lines[1].DisplayHeight + 21);
    // drawn again, the page comes out the same
    const qint32 first = lines[0].DisplayY;
    DisplayPageLines(box, lines);
    EXPECT_EQ(lines[0].DisplayY, first);
}

// A line without a style sets only the name and the colour, so the next page goes on
// with what the lines before left on the box: known without drawing.
TEST(PageLayout, TheFontLeftOnTheBoxIsKnownWithoutDrawing)
{
    CPageLine fixed = styled(QStringLiteral("fixed"), 8);
    fixed.ForcePosition = true;
    fixed.DisplayY = 410;
    fixed.FontSize = 30;
    fixed.Bold = true;
    CPageLine big = styled(QStringLiteral("big"), 2);
    big.FontName = QStringLiteral("Noto Sans CJK SC");
    big.FontSize = 40;
    big.Italic = true;
    CPageLine plain;
    plain.Dialog = QStringLiteral("plain");
    QList<CPageLine> lines { big, plain, fixed };
    CPictureBox drawn(724, 484), told(1, 1);
    DisplayPageLines(drawn, lines);
    ApplyPageFonts(told, lines);
    EXPECT_EQ(CBoxFont::Of(told), CBoxFont::Of(drawn));
    // the fixed line first, then the others in their order
    EXPECT_EQ(
        CBoxFont::Of(drawn), (CBoxFont { QStringLiteral("Arial"), 40, false, true, false, false, 0xFFFFFF }));
}

TEST(PageLayout, RowsAreCentredInThePrimaryColour)
{
    CPictureBox box(724, 484);
    box.setBackColor(0);
    CPageLine line = styled(QStringLiteral("WWWW"), 2);
    line.PrimaryColour = 0x0000FF; // red, blue in the high byte
    QList<CPageLine> lines { line };
    DisplayPageLines(box, lines);
    const QImage image = box.Picture();
    int left = 724, right = -1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) & 0xFFFFFF) == 0xFF0000) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
    ASSERT_GE(right, 0);
    EXPECT_NEAR((left + right) / 2.0, 362, 4);
    const QList<int> rows = rowsWith(image, qRgb(255, 0, 0));
    EXPECT_GT(rows.first(), 484 / 2) << "a bottom line stands in the lower half";
    EXPECT_LE(rows.last(), 484 - 800 / 15);
}

TEST(PageLayout, PreviewTextOfALine)
{
    EXPECT_EQ(PreviewDialog(QStringLiteral("{\\fad(100,100)}abc\\Ndef")), QStringLiteral("abc\r\ndef"));
    EXPECT_EQ(PreviewDialog(QStringLiteral("a\\nb\\hc")), QStringLiteral("a\r\nb c"));
    EXPECT_EQ(PreviewDialog(QStringLiteral("abc{\\b1")), QStringLiteral("abc"));
    EXPECT_EQ(PreviewDialog(QStringLiteral("{a}b{\\i1}c")), QStringLiteral("{a}bc"));
    // a pair that only meets once a block is gone turns into a blank
    EXPECT_EQ(PreviewDialog(QStringLiteral("x\\{\\b1}Ny")), QStringLiteral("x y"));
}
