#pragma once

class CTimingGrid;
class ITimeValueDialog;

// Changes to the time stamps already in the timing grid: shifting the selected time
// cells by an amount (optionally kept from running into neighbouring lines), stretching
// them for a change of frame rate, and filling a column with an even step.
//
// Times are read with the strict parser and written with hundredths, so repeated shifts
// work on the text and their errors do not add up.
namespace basTimeAdjust {

// The kinds of AskTimeAdjust: shift, scale, 25 to 23 frames, 23 to 25 frames.
constexpr int AdjustShift = 1;
constexpr int AdjustScale = 2;
constexpr int AdjustScale25To23 = 3;
constexpr int AdjustScale23To25 = 4;

// Asks the value (through `dialog`, or an input box of the prompt when there is none)
// and shifts or scales the selection. Cancelling does nothing; a fault shows
// TIMING_ERR_102.
void AskTimeAdjust(CTimingGrid &form, int kind, ITimeValueDialog *dialog = nullptr);

// Adds `delta` seconds to the selected, non-empty time cells (with no block, the active
// cell when it is a time cell). With AvoidOverlapTiming on, each cell moves only as far
// as LimitShiftForOverlap allows. A fault shows TIMING_ERR_102; cells done stay.
void ShiftTimes(CTimingGrid &form, double delta);

// Stretches the selected time cells (all when nothing is selected) so that the latest
// time of the whole grid would move by `delta` and time 0 stays.
void ScaleTimes(CTimingGrid &form, double delta);

// The largest time in columns 3 and 4 of all rows, 0 when there is none.
double LatestTime(const CTimingGrid &form);

// The part of `delta` that the start (column 3) or end (column 4) of `row` may move
// without running into another line: only a start moved earlier and an end moved later
// are limited, and they stop 0.01 short of the other line.
double LimitShiftForOverlap(const CTimingGrid &form, int row, int column, double delta);

// An even step down the one selected block of a single column: mode 1 takes the step
// from the first two rows, mode 2 from the first and the last row. Time columns 3 and 4
// and margin columns 7 to 9 only; margins never go below 0. A fault (a one-row block in
// mode 2, a margin cell that holds no number) shows TIMING_ERR_102 and changes nothing.
void FillIncrement(CTimingGrid &form, int mode);

} // namespace basTimeAdjust
