#pragma once

#include "effects/CEffectArgs.h"
#include "effects/CEffectResult.h"
#include "effects/CEffectSpread.h"
#include "effects/CKaraokeSyllable.h"

#include <QList>
#include <QString>
#include <QStringList>

class CSpread;

// The special effects of the effect window: pure text builders over the values of a
// page. They check nothing: a box that holds no number raises VelmarError 13, a result
// out of range 6, a division by zero 11 (6 for 0 / 0), and then there is no result.
// Characters are 16-bit units, so a Chinese character is one character.
namespace basEffectFx {

// Guard against a cycle time of zero or a tiny cycle over a huge span: the colour steps
// of the whole text stop here instead of running without end or filling the memory.
constexpr int MaxColourSteps = 200000;
// Guard for the time-difference grid.
constexpr int MaxTimeDifferenceRows = 100000;

// "颜色循环渐进": a line per character, with its position and the colour waves that run
// along the text. rtfArg text; txtArg 0..3: start offset, total and cycle time in
// seconds, characters per cycle; txtArg 4..7: X0, Y0, DX, DY; picArg 0, 1: the colours.
CEffectResult BuildColourCycle(const CEffectArgs &args);

// "移动": a line per character moving from (X1, Y1) to (X2, Y2), shifted by the spacing
// for each character, with a fade by the slider's selection. txtArg 0..8: X1, Y1, X2,
// Y2, DX, DY, T1, T2 (ms), the total length L (s).
CEffectResult BuildMove(const CEffectArgs &args);

// "位置差分": a line per character at its own position. txtArg 0..3: X0, Y0, DX, DY.
CEffectResult BuildPositionSteps(const CEffectArgs &args);

// "SSA作图": one drawing from the coordinate grid, scaled by the slider.
CEffectResult BuildDrawing(const CEffectArgs &args);

// The pieces of a karaoke line, split at each "{\K" (any case).
QList<CKaraokeSyllable> SplitKaraoke(const QString &text);
// "卡拉OK ++": each syllable animated by the effect tags of txtArg 0 over its own span;
// with chkArg the karaoke tag is kept. One line without a break.
CEffectResult BuildKaraokePlus(const CEffectArgs &args);

// "时间轴差分": fills the time grid from its first rows. option 0 spaces by rows 1 and
// 2, option 1 adds the acceleration of row 3, option 2 divides the span between row 1
// and row `count` evenly. The grid grows to one row past the last written.
void BuildTimeDifference(int option, const QString &count, CEffectSpread &grid);
// The same on the window's grid of two time columns; the grid's current cell and
// selection are left alone.
void BuildTimeDifference(int option, const QString &count, CSpread &grid);

// The parts that applying a result writes into the dialogue cells, one a row: the text
// split at CR LF, an empty part after a final line end included.
QStringList SplitResultText(const QString &text);

} // namespace basEffectFx
