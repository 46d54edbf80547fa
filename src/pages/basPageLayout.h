#pragma once

#include "pages/CPageLine.h"
#include "pages/CPageMargins.h"

#include <QList>
#include <QString>

class IPictureBox;

// Drawing the lines of a picture page on a box.
namespace basPageLayout {

// Clears the box and prints the page: lines with a fixed position first, at their own
// place; then the others, top-centred ones stacking down from the top margin, all else
// stacking up from the bottom margin, each moved past any line already on the page
// that it would touch. Every row of a text is centred. Sets DisplayY, DisplayHeight
// and Displayed of each line.
void DisplayPageLines(IPictureBox &box, QList<CPageLine> &lines, const CPageMargins &margins = {});

// Sets the box's font and colour line by line as DisplayPageLines does, without drawing:
// the box is left with the font the drawing of the page would leave on it.
void ApplyPageFonts(IPictureBox &box, const QList<CPageLine> &lines);

// The text of a script line as a page or the preview prints it: "\N" and "\n" become
// CR LF, "\h" a blank, and override blocks "{\...}" go (an unclosed one cuts the text).
QString PreviewDialog(const QString &dialog);

// Whether two placed spans come closer than one unit.
bool Overlaps(qint32 y, qint32 height, const CPageLine &other);

} // namespace basPageLayout
