#pragma once

#include <QString>

class CTiming;
class CTimingGrid;

// Putting a generated effect into a timing document.
namespace basEffectApply {

// Writes the result into the dialogue column of the timing grid, one part (split at CR
// LF) a row from the active row down, replacing what stood there and telling the
// preview of each row. Stepping onto the last row adds a row at the end, so the rows
// after the text are never the grid's last. The grid's current cell is put back and activated. Without a grid
// the message "没有找到时间轴窗口" is shown and false returned.
bool ApplyResult(CTimingGrid *grid, const QString &result);

// One recorded karaoke syllable of a timing document: while the document records, the
// grid's current cell goes to the dialogue of the active row and gets "{\K..}" with the
// hundredths (rounded down) since the last stroke, then the lyric; the stroke time moves
// on and the document is changed. `currentPosition` is the player's, in seconds.
bool RecordKaraokeLyric(CTiming &timing, CTimingGrid &grid, double currentPosition, const QString &lyric);

} // namespace basEffectApply
