#include "pages/CPictureBox.h"
#include "pages/basBitmap.h"

#include "PageTestSupport.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <cstring>

using namespace basBitmap;

namespace {

quint32 u32(const QByteArray &b, int at)
{
    return qFromLittleEndian<quint32>(b.constData() + at);
}

quint16 u16(const QByteArray &b, int at)
{
    return qFromLittleEndian<quint16>(b.constData() + at);
}

int pixelIndex(const QByteArray &file, int width, int storedRow, int x)
{
    const uchar byte = uchar(file[PixelOffset + storedRow * RowBytes(width) + x / 2]);
    return x % 2 == 0 ? byte >> 4 : byte & 0x0F;
}

QByteArray readAll(const QString &name)
{
    QFile f(name);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

} // namespace

TEST(BitmapHeaders, PageOf724By484IsByteExact)
{
    QImage image(724, 484, QImage::Format_RGB32);
    image.fill(Qt::black);
    const QByteArray file = BitmapFileBytes(image);

    ASSERT_EQ(file.size(), 176294);
    EXPECT_EQ(file.left(2), QByteArray("BM"));
    EXPECT_EQ(u32(file, 2), 176294u);
    EXPECT_EQ(u16(file, 6), 0);
    EXPECT_EQ(u16(file, 8), 0);
    EXPECT_EQ(u32(file, 10), 118u);
    EXPECT_EQ(u32(file, 14), 40u);
    EXPECT_EQ(u32(file, 18), 724u);
    EXPECT_EQ(u32(file, 22), 484u);
    EXPECT_EQ(u16(file, 26), 1);
    EXPECT_EQ(u16(file, 28), 4);
    EXPECT_EQ(u32(file, 30), 0u);
    EXPECT_EQ(u32(file, 34), 364u * 484u);
    for (int at = 38; at < 54; at += 4)
        EXPECT_EQ(u32(file, at), 0u) << "offset " << at;
}

TEST(BitmapHeaders, PaletteKeepsTheTableAsThePlatformWritesColours)
{
    const QByteArray file = BitmapFileBytes(QImage(4, 4, QImage::Format_RGB32));
    const quint32 expected[16] = { 0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080,
        0xC0C0C0, 0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF };
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(u32(file, 54 + 4 * i), expected[i]) << "entry " << i;
    // entry 1 read the way the file defines entries: blue 0x00, green 0x00, red 0x80
    EXPECT_EQ(uchar(file[54 + 4]), 0x00);
    EXPECT_EQ(uchar(file[54 + 6]), 0x80);
}

TEST(BitmapHeaders, RowSizeRule)
{
    EXPECT_EQ(RowBytes(724), 364);
    EXPECT_EQ(ImageSize(724, 580), 364 * 580);
    // ties go to even: 3 / 2 + 3 = 4.5 -> 4; 5 / 2 + 3 = 5.5 -> 6; 13 / 2 + 3 = 9.5 -> 10
    EXPECT_EQ(RowBytes(3), 4);
    EXPECT_EQ(RowBytes(5), 4);
    EXPECT_EQ(RowBytes(13), 8);
    EXPECT_EQ(RowBytes(17), 12);
    // the rule always holds a whole row of nibbles on a 4-byte boundary
    for (int w = 1; w <= 4000; ++w) {
        ASSERT_GE(RowBytes(w), (w + 1) / 2) << w;
        ASSERT_EQ(RowBytes(w) % 4, 0) << w;
        ASSERT_EQ(RowBytes(w), (w * 4 + 31) / 32 * 4) << w;
    }
}

TEST(BitmapColours, NearestOfTheSixteen)
{
    // Pure red, green and blue land on the entries that a reader shows in those colours.
    const std::pair<QRgb, int> cases[] = { { qRgb(255, 255, 255), 15 }, { qRgb(0, 0, 0), 0 },
        { qRgb(128, 128, 128), 8 }, { qRgb(192, 192, 192), 7 }, { qRgb(255, 0, 0), 9 },
        { qRgb(0, 255, 0), 10 }, { qRgb(0, 0, 255), 12 }, { qRgb(250, 250, 10), 11 }, { qRgb(20, 10, 10), 0 },
        { qRgb(240, 240, 240), 15 } };
    for (const auto &[colour, index] : cases)
        EXPECT_EQ(NearestColourIndex(colour), index) << std::hex << colour;
}

TEST(BitmapPixels, FirstStoredRowIsTheBottomOfThePicture)
{
    QImage image(7, 3, QImage::Format_RGB32);
    image.fill(Qt::black);
    for (int x = 0; x < 7; ++x)
        image.setPixel(x, 2, qRgb(255, 255, 255)); // bottom row white
    image.setPixel(0, 0, qRgb(255, 0, 0)); // top left red
    image.setPixel(6, 0, qRgb(0, 0, 255)); // top right blue

    const QByteArray file = BitmapFileBytes(image);
    ASSERT_EQ(file.size(), 118 + RowBytes(7) * 3);
    for (int x = 0; x < 7; ++x)
        EXPECT_EQ(pixelIndex(file, 7, 0, x), 15) << x;
    for (int x = 0; x < 7; ++x)
        EXPECT_EQ(pixelIndex(file, 7, 1, x), 0) << x;
    EXPECT_EQ(pixelIndex(file, 7, 2, 0), 9);
    EXPECT_EQ(pixelIndex(file, 7, 2, 6), 12);
    // high nibble first, and the row's padding stays 0
    EXPECT_EQ(uchar(file[118]), 0xFF);
    EXPECT_EQ(uchar(file[118 + 3]), 0xF0);
}

TEST(BitmapPixels, EveryPixelTakesItsNearestIndex)
{
    // odd widths, runs of one colour broken at every place, many colours, any alpha
    QRandomGenerator random(17);
    for (const int width : { 1, 2, 5, 33, 724 }) {
        QImage image(width, 9, QImage::Format_ARGB32);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < width; ++x) {
                const quint32 pick = random.generate();
                image.setPixel(x, y,
                    pick % 3 ? qRgba(
                        int(pick >> 8) & 0xFF, int(pick >> 16) & 0xFF, int(pick >> 24), int(pick) & 0xFF)
                             : qRgb(0, 0, 0));
            }
        // rows the same as the one above, as the background of a page is
        for (const int y : { 3, 4, 8 })
            std::memcpy(image.scanLine(y), image.constScanLine(y - 1), size_t(image.bytesPerLine()));
        const QByteArray file = BitmapFileBytes(image);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < width; ++x)
                ASSERT_EQ(
                    pixelIndex(file, width, image.height() - 1 - y, x), NearestColourIndex(image.pixel(x, y)))
                    << width << " " << x << "," << y;
        for (int row = 0; row < image.height(); ++row)
            for (int at = (width + 1) / 2; at < RowBytes(width); ++at)
                ASSERT_EQ(file[PixelOffset + row * RowBytes(width) + at], 0) << "padding";
    }
}

TEST(BitmapFiles, OverwritingReplacesTheFile)
{
    QTemporaryDir dir;
    const QString name = dir.filePath(QStringLiteral("1.1.bmp"));
    {
        QFile old(name);
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write(QByteArray(500000, 'x'));
    }
    QImage image(724, 484, QImage::Format_RGB32);
    image.fill(Qt::white);
    ASSERT_TRUE(SavePictureAsBmp(image, name));
    const QByteArray written = readAll(name);
    ASSERT_EQ(written.size(), 176294);
    EXPECT_EQ(written, BitmapFileBytes(image));
    EXPECT_EQ(uchar(written[118]), 0xFF);
}

TEST(BitmapFiles, UnwritablePlaceFailsSilently)
{
    QTemporaryDir dir;
    QImage image(10, 10, QImage::Format_RGB32);
    EXPECT_FALSE(SavePictureAsBmp(image, dir.filePath(QStringLiteral("missing/folder/1.1.bmp"))));
    EXPECT_FALSE(SavePictureAsBmp(image, QString()));
    EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("missing/folder/1.1.bmp"))));
}

TEST(BitmapFiles, PictureBoxPageSavesItsTextInTheForeColour)
{
    QTemporaryDir dir;
    CPictureBox box(724, 484);
    box.setBackColor(0x000000);
    box.setForeColor(0xFFFFFF);
    box.setFontSize(24);
    box.Cls();
    box.setCurrentY(box.ScaleHeight() - 1500);
    box.setCurrentX(3000);
    box.Print(QStringLiteral("字幕 Subtitle"));
    const QString name = dir.filePath(QStringLiteral("page.bmp"));
    ASSERT_TRUE(SavePictureAsBmp(box, name));
    const QByteArray file = readAll(name);
    ASSERT_EQ(file.size(), 176294);
    int white = 0, other = 0;
    for (int row = 0; row < 484; ++row)
        for (int x = 0; x < 724; ++x) {
            const int i = pixelIndex(file, 724, row, x);
            if (i == 15)
                ++white;
            else if (i != 0)
                ++other;
        }
    EXPECT_GT(white, 100);
    EXPECT_EQ(other, 0) << "text without smoothing keeps only the two colours";
}
