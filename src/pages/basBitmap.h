#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QtGlobal>

#include <array>

class IPictureBox;

// The 16-colour bitmap pages for DVD authoring: 4 bits a pixel, the classic palette,
// rows from the bottom up, 118 bytes of headers and palette ahead of the pixels.
namespace basBitmap {

constexpr int FileHeaderSize = 14;
constexpr int InfoHeaderSize = 40;
constexpr int PixelOffset = 118;

// The palette entries as 32-bit values with red in the lowest byte. A file reader takes
// the first byte as blue, so it sees red and blue exchanged against the names these
// values carry; the pixels are matched against the same reading, so the page keeps its
// colours.
const std::array<quint32, 16> &Palette();

// Bytes of one stored row: round(W / 2 + 3) \ 4 * 4, with ties to even.
qint32 RowBytes(int width);
// Bytes of all rows.
qint32 ImageSize(int width, int height);

// The palette index nearest to a colour, by the distance in red, green and blue as a
// file reader sees the entries; the lower index wins a tie.
int NearestColourIndex(QRgb colour);

// The whole file: headers, palette and the pixels of the image.
QByteArray BitmapFileBytes(const QImage &picture);

// Writes the box's picture (or an image) as a 4-bit bitmap, replacing any file of the
// name. A file that cannot be removed, opened or written ends the save silently: the
// result says whether the file was written.
bool SavePictureAsBmp(const IPictureBox &picture, const QString &fileName);
bool SavePictureAsBmp(const QImage &picture, const QString &fileName);

} // namespace basBitmap
