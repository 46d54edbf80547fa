#pragma once

#include "pages/CPageCut.h"

#include <QList>
#include <QString>
#include <QStringView>

#include <utility>

// Cutting a script into picture pages. A line counts only if it starts before it ends.
// Every start and end of a counting line is a cut, so pages never overlap, a line that
// spans a cut stands on each of its pages, pages come in order of time, and where no
// line is on the screen there is no page. Nothing is cut past "9:59:59.99": a line is
// shown up to that time at the most, and a line that starts there or later gets no page.
namespace basPageCut {

// The latest time a page can reach.
double LastPageTime();

// The pages of lines given as (start, end) in script order. One sweep over the sorted
// cuts, so that a long script costs little more than sorting it.
QList<CPageCut> CutPages(const QList<std::pair<double, double>> &lines);

// The picture box size in pixels for a video type: 0 is NTSC, 724 by 484; 1 is PAL,
// 724 by 580 (a few pixels more than the picture on each side).
std::pair<int, int> VideoTypePixelSize(int videoType);

// The bitmap of a page: the name (the script's own path, used as a folder), "/1.", the
// page's serial number and ".bmp".
QString PageBitmapName(const QString &name, qint64 serialNo);

// The folder of the page list and its full name: a name with a folder keeps it; a bare
// name goes into the program's own folder. Either separator is taken as a folder cut.
std::pair<QString, QString> PageListFolder(const QString &name);

// A time in the page-list form "hh:mm:ss:cc": hundredths behind a colon, as the
// DVD tools read them (23.26 seconds is "00:00:23:26").
QString PageTimeString(double seconds);
// Reads that form back; a point in place of the last colon is taken as well.
double PageTimeFromString(QStringView text);

// The line of a page in the page list: number, two tabs, start, tab, end, tab, file.
QString PageListLine(int number, const QString &start, const QString &end, const QString &fileName);

} // namespace basPageCut
