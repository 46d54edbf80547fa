#include "player/basAssComposite.h"

#include <QImage>
#include <QtEndian>
#include <ass/ass.h>

namespace basAssComposite {

namespace {

// Byte positions of the channels of a 32-bit pixel in memory, and how its alpha is kept.
struct PixelLayout
{
    int R;
    int G;
    int B;
    int A;
    bool HasAlpha;
    bool Premultiplied;
};

// ARGB32 and its kin are 0xAARRGGBB words in the machine's byte order; RGBA8888 and its
// kin are bytes R, G, B, A in memory.
constexpr PixelLayout kWordLayout = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? PixelLayout { 2, 1, 0, 3, true, true }
                                                                    : PixelLayout { 1, 2, 3, 0, true, true };
constexpr PixelLayout kByteLayout { 0, 1, 2, 3, true, true };

bool LayoutOf(QImage::Format format, PixelLayout &layout)
{
    switch (format) {
    case QImage::Format_ARGB32_Premultiplied:
        layout = kWordLayout;
        return true;
    case QImage::Format_ARGB32:
        layout = kWordLayout;
        layout.Premultiplied = false;
        return true;
    case QImage::Format_RGB32:
        layout = kWordLayout;
        layout.HasAlpha = false;
        return true;
    case QImage::Format_RGBA8888_Premultiplied:
        layout = kByteLayout;
        return true;
    case QImage::Format_RGBA8888:
        layout = kByteLayout;
        layout.Premultiplied = false;
        return true;
    case QImage::Format_RGBX8888:
        layout = kByteLayout;
        layout.HasAlpha = false;
        return true;
    default:
        return false;
    }
}

// x / 255, rounded, for 0 <= x <= 255 * 255.
inline int Div255(int x)
{
    x += 128;
    return (x + (x >> 8)) >> 8;
}

// Coverage k (0..255) of colour (r, g, b) over a pixel whose alpha is kept premultiplied
// (or that has none): every channel, alpha included, is source * k + destination * (1 - k).
inline void BlendPremultiplied(uchar *p, const PixelLayout &l, const int rgb[3], int k)
{
    const int keep = 255 - k;
    p[l.R] = uchar(Div255(rgb[0] * k + p[l.R] * keep));
    p[l.G] = uchar(Div255(rgb[1] * k + p[l.G] * keep));
    p[l.B] = uchar(Div255(rgb[2] * k + p[l.B] * keep));
    if (l.HasAlpha)
        p[l.A] = uchar(k + Div255(p[l.A] * keep));
}

// The same over a pixel of straight alpha: the colours are weighted by their alphas and
// divided by the alpha of the result.
inline void BlendStraight(uchar *p, const PixelLayout &l, const int rgb[3], int k)
{
    const int below = Div255(p[l.A] * (255 - k));
    const int alpha = k + below;
    if (alpha == 0)
        return;
    const auto mix
        = [&](int source, int dest) { return uchar((source * k + dest * below + alpha / 2) / alpha); };
    p[l.R] = mix(rgb[0], p[l.R]);
    p[l.G] = mix(rgb[1], p[l.G]);
    p[l.B] = mix(rgb[2], p[l.B]);
    p[l.A] = uchar(alpha);
}

void CompositeOne(QImage &frame, const PixelLayout &layout, const ASS_Image &image)
{
    const int opacity = 255 - int(image.color & 0xFF);
    if (opacity == 0 || image.w <= 0 || image.h <= 0 || !image.bitmap)
        return;
    const int rgb[3]
        = { int(image.color >> 24), int((image.color >> 16) & 0xFF), int((image.color >> 8) & 0xFF) };
    const int x0 = std::max(image.dst_x, 0);
    const int y0 = std::max(image.dst_y, 0);
    const int x1 = std::min(image.dst_x + image.w, frame.width());
    const int y1 = std::min(image.dst_y + image.h, frame.height());
    const bool straight = layout.HasAlpha && !layout.Premultiplied;
    for (int y = y0; y < y1; ++y) {
        const uchar *cover = image.bitmap + qsizetype(y - image.dst_y) * image.stride + (x0 - image.dst_x);
        uchar *pixel = frame.scanLine(y) + qsizetype(x0) * 4;
        for (int x = x0; x < x1; ++x, ++cover, pixel += 4) {
            if (*cover == 0)
                continue;
            const int k = opacity == 255 ? *cover : Div255(*cover * opacity);
            if (straight)
                BlendStraight(pixel, layout, rgb, k);
            else
                BlendPremultiplied(pixel, layout, rgb, k);
        }
    }
}

} // namespace

void Composite(QImage &frame, const ass_image *images)
{
    if (!images || frame.isNull())
        return;
    PixelLayout layout {};
    if (!LayoutOf(frame.format(), layout)) {
        // Blended through a 32-bit copy of the frame, in the form that keeps its alpha.
        const QImage::Format original = frame.format();
        frame.convertTo(frame.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
        Composite(frame, images);
        frame.convertTo(original);
        return;
    }
    for (const ASS_Image *image = images; image; image = image->next)
        CompositeOne(frame, layout, *image);
}

} // namespace basAssComposite
