#pragma once

#include <QString>

class CTimings;

// A copied text reaches the grid: while the clipboard is watched (AutoGetClipBoard), a
// text that reads as a time other than 0 stamps the active cell of the active timing
// window, with no reaction offset. Result: whether the text was taken as a time.
bool SendClipboardTime(CTimings &timings, const QString &text);
