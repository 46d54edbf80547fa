#pragma once

#include "core/basTime.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <ostream>

// A time written as the grid writes it, in seconds.
inline double t(const char16_t *text)
{
    return StringToTime(text);
}

// How many pixels of the picture have the colour, whatever their alpha.
inline int countColour(const QImage &image, QRgb colour)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += (image.pixel(x, y) | 0xFF000000u) == (colour | 0xFF000000u);
    return n;
}

// Readable QString values in the failure messages of the tests.
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &list, std::ostream *os)
{
    *os << '[';
    for (const QString &s : list)
        *os << '"' << s.toStdString() << "\" ";
    *os << ']';
}
