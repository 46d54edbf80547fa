#pragma once

#include "pages/CPageLine.h"

#include <QList>
#include <QString>
#include <QtGlobal>

// What drawing and saving one picture page needs, taken from the page so that it can be
// drawn away from the page list (on another thread): its number, times, the name of its
// bitmap so far, and its lines with their styles resolved.
struct CPageDrawing
{
    qint32 SerialNo = 0;
    double StartTime = 0;
    double EndTime = 0;
    QString Content;
    QList<CPageLine> Lines;
};
