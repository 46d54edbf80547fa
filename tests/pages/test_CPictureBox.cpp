#include "PageTestSupport.h"
#include "pages/CPictureBox.h"

#include <gtest/gtest.h>

namespace {

QImage printed(const QString &text)
{
    CPictureBox box(120, 60);
    box.setBackColor(0);
    box.setForeColor(0xFFFFFF);
    box.setFontSize(24);
    box.Print(text);
    return box.Picture();
}

} // namespace

TEST(PictureBoxColours, BlueSitsInTheHighByte)
{
    CPictureBox box(4, 4);
    box.setBackColor(0xFF0000); // blue
    EXPECT_EQ(box.Picture().pixel(0, 0) & 0xFFFFFF, 0x0000FFu);
    box.setBackColor(0x0000FF); // red
    box.Cls();
    EXPECT_EQ(box.Picture().pixel(3, 3) & 0xFFFFFF, 0xFF0000u);
}

TEST(PictureBoxText, PrintMovesToTheNextLine)
{
    CPictureBox box;
    box.setFontSize(20);
    box.setCurrentX(500);
    box.setCurrentY(300);
    const double height = box.TextHeight(QStringLiteral("Abc"));
    EXPECT_GT(height, 20 * 15); // at least the em of 20 points at 96 dots an inch
    box.Print(QStringLiteral("Abc"));
    EXPECT_EQ(box.CurrentX(), 0);
    EXPECT_DOUBLE_EQ(box.CurrentY(), 300 + height);
    box.Cls();
    EXPECT_EQ(box.CurrentY(), 0);
}

TEST(PictureBoxText, SizesOfSeveralLines)
{
    CPictureBox box;
    const double one = box.TextHeight(QStringLiteral("a"));
    EXPECT_DOUBLE_EQ(box.TextHeight(QStringLiteral("a\r\nb")), 2 * one);
    EXPECT_DOUBLE_EQ(box.TextWidth(QStringLiteral("iii\r\nWWWWWW")), box.TextWidth(QStringLiteral("WWWWWW")));
    EXPECT_GT(box.TextWidth(QStringLiteral("WWWWWW")), box.TextWidth(QStringLiteral("iii")));
    box.setFontSize(40);
    EXPECT_GT(box.TextHeight(QStringLiteral("a")), one);
}

TEST(PictureBoxText, ChineseGlyphsAreDrawnNotBoxes)
{
    const QImage a = printed(QStringLiteral("字"));
    const QImage b = printed(QStringLiteral("幕"));
    EXPECT_GT(countColour(a, qRgb(255, 255, 255)), 30);
    EXPECT_GT(countColour(b, qRgb(255, 255, 255)), 30);
    // missing glyphs would all be the same empty box
    EXPECT_NE(a, b);
    CPictureBox box;
    box.setFontSize(24);
    EXPECT_GT(box.TextWidth(QStringLiteral("字幕字幕")), box.TextWidth(QStringLiteral("字幕")));
}

TEST(PictureBoxText, StylesChangeTheDrawing)
{
    CPictureBox plain(200, 60), bold(200, 60);
    for (CPictureBox *box : { &plain, &bold }) {
        box->setBackColor(0);
        box->setFontSize(24);
    }
    bold.setFontBold(true);
    plain.Print(QStringLiteral("Velmar"));
    bold.Print(QStringLiteral("Velmar"));
    EXPECT_GT(
        countColour(bold.Picture(), qRgb(255, 255, 255)), countColour(plain.Picture(), qRgb(255, 255, 255)));
    EXPECT_TRUE(bold.FontBold());
}
