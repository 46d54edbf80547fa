#pragma once

#include <QList>

// One picture page as cut from a script: a span of time during which one fixed set of
// lines is on the screen. `Lines` are indices into the script's lines, in script order;
// each stands on the page with the page's own start and end.
struct CPageCut
{
    double StartTime = 0;
    double EndTime = 0;
    QList<int> Lines;

    bool operator==(const CPageCut &) const = default;
};
