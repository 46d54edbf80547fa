#include "pages/basBitmap.h"

#include "core/IPictureBox.h"
#include "core/basConvert.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <cstring>

namespace basBitmap {

namespace {

void put16(char *at, quint16 value)
{
    qToLittleEndian(value, at);
}

void put32(char *at, quint32 value)
{
    qToLittleEndian(value, at);
}

// Remembers the last colour looked up: a page is mostly runs of one background colour.
class ColourCache
{
public:
    int Index(QRgb colour)
    {
        colour |= 0xFF000000u;
        if (colour != m_last) {
            m_last = colour;
            m_index = NearestColourIndex(colour);
        }
        return m_index;
    }

private:
    QRgb m_last = 0;
    int m_index = 0;
};

} // namespace

const std::array<quint32, 16> &Palette()
{
    static const std::array<quint32, 16> palette = {
        0x000000,
        0x800000,
        0x008000,
        0x808000,
        0x000080,
        0x800080,
        0x008080,
        0xC0C0C0,
        0x808080,
        0xFF0000,
        0x00FF00,
        0xFFFF00,
        0x0000FF,
        0xFF00FF,
        0x00FFFF,
        0xFFFFFF,
    };
    return palette;
}

qint32 RowBytes(int width)
{
    return basConvert::IntDiv(basConvert::Round(width / 2.0 + 3), 4) * 4;
}

qint32 ImageSize(int width, int height)
{
    return RowBytes(width) * height;
}

int NearestColourIndex(QRgb colour)
{
    const int r = qRed(colour), g = qGreen(colour), b = qBlue(colour);
    int best = 0;
    int bestDistance = INT_MAX;
    const auto &palette = Palette();
    for (int i = 0; i < 16; ++i) {
        // The first byte of an entry is read as blue, the third as red.
        const int pb = int(palette[i] & 0xFF);
        const int pg = int((palette[i] >> 8) & 0xFF);
        const int pr = int((palette[i] >> 16) & 0xFF);
        const int distance = (r - pr) * (r - pr) + (g - pg) * (g - pg) + (b - pb) * (b - pb);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = i;
        }
    }
    return best;
}

QByteArray BitmapFileBytes(const QImage &picture)
{
    const QImage image = picture.format() == QImage::Format_RGB32 || picture.format() == QImage::Format_ARGB32
        ? picture
        : picture.convertToFormat(QImage::Format_RGB32);
    const int width = image.width();
    const int height = image.height();
    const qint32 rowBytes = RowBytes(width);
    const qint32 imageSize = rowBytes * height;

    QByteArray file(PixelOffset + imageSize, '\0');
    char *p = file.data();
    p[0] = 'B';
    p[1] = 'M';
    put32(p + 2, quint32(imageSize + PixelOffset));
    put16(p + 6, 0);
    put16(p + 8, 0);
    put32(p + 10, PixelOffset);
    put32(p + 14, InfoHeaderSize);
    put32(p + 18, quint32(width));
    put32(p + 22, quint32(height));
    put16(p + 26, 1);
    put16(p + 28, 4);
    put32(p + 30, 0);
    put32(p + 34, quint32(imageSize));
    // pixels per metre, colours used and important colours stay 0
    for (int i = 0; i < 16; ++i)
        put32(p + 54 + 4 * i, Palette()[i]);

    ColourCache cache;
    char *pixels = p + PixelOffset;
    for (int stored = 0; stored < height; ++stored) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(height - 1 - stored));
        auto *out = reinterpret_cast<uchar *>(pixels + qsizetype(stored) * rowBytes);
        for (int x = 0; x < width; ++x) {
            const int index = cache.Index(line[x]);
            if (x % 2 == 0)
                out[x / 2] = uchar(index << 4);
            else
                out[x / 2] |= uchar(index);
        }
    }
    return file;
}

bool SavePictureAsBmp(const IPictureBox &picture, const QString &fileName)
{
    return SavePictureAsBmp(picture.Picture(), fileName);
}

bool SavePictureAsBmp(const QImage &picture, const QString &fileName)
{
    if (picture.isNull() || fileName.isEmpty())
        return false;
    const QByteArray bytes = BitmapFileBytes(picture);
    if (QFileInfo::exists(fileName) && !QFile::remove(fileName))
        return false;
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(bytes) == bytes.size() && file.flush();
}

} // namespace basBitmap
