#include "core/basColour.h"

QColor BgrToColor(qint64 bgr)
{
    return QColor(int(bgr & 0xFF), int((bgr >> 8) & 0xFF), int((bgr >> 16) & 0xFF));
}

qint64 ColorToBgr(const QColor &color)
{
    return qint64(color.red()) | (qint64(color.green()) << 8) | (qint64(color.blue()) << 16);
}
