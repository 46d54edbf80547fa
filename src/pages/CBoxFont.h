#pragma once

#include <QString>
#include <QtGlobal>

class IPictureBox;

// The font and fore colour a picture box carries from one print to the next. A page line
// without a style sets only the name and the colour, so what it prints with depends on
// the lines drawn before it on the same box: a page drawn on a box of its own starts from
// the state the shared box would have had.
struct CBoxFont
{
    QString Name = QStringLiteral("Arial");
    double Size = 12;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool StrikeOut = false;
    qint64 ForeColor = 0xFFFFFF;

    static CBoxFont Of(const IPictureBox &box);
    void ApplyTo(IPictureBox &box) const;

    bool operator==(const CBoxFont &) const = default;
};
