#pragma once

#include <QString>

// A line of a picture page as the drawing needs it: its text, the parts of its style
// that apply (font, size, the four font styles, the primary colour, top or bottom),
// and the place it takes on the page. Positions are in the box's units (twips).
struct CPageLine
{
    QString Dialog; // CR LF between the rows of the text

    bool HasStyle = false;
    QString FontName;
    double FontSize = 20;
    bool Bold = false;
    bool Italic = false;
    bool UnderLine = false;
    bool StrikeOut = false;
    qint64 PrimaryColour = 0xFFFFFF;
    qint16 Alignment = 2; // numeric keypad; only 8 (top centre) is told apart

    bool ForcePosition = false;
    bool Displayed = false;
    qint32 DisplayY = 0;
    qint32 DisplayHeight = 0;
};
