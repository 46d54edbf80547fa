#pragma once

#include <QtGlobal>

// The margins of a picture page in the box's units (twips). The side margins are kept
// but the drawing centres every line and never reads them.
struct CPageMargins
{
    qint16 DefaultMarginBottom = 800;
    qint16 DefaultMarginTop = 400;
    qint16 DefaultMarginLeft = 400;
    qint16 DefaultMarginRight = 400;
    qint16 DefaultBetweenV = 20;
};
