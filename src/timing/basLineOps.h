#pragma once

#include "core/CSpreadBlock.h"

#include <QList>
#include <QString>

class CSpread;
class CTimingGrid;

// The row operations of the timing grid's popup menu. Besides whole rows, a timer can
// insert or delete only the time cells (columns 3 and 4) or only the dialogue cells
// (column 15) of rows, sliding the two halves of the grid against each other when the
// stamps and the script have got out of step by a line.
//
// Each operation that changes cells tells the preview of the rows it touched (which
// raises the document's Changed); the three flag setters tell nobody.
namespace basLineOps {

// Which cells an insert or delete moves: whole rows, the times, or the dialogue.
constexpr int WholeRows = -1;
constexpr int TimeCells = 3;
constexpr int DialogCells = 15;

// Rows are those of the selected block, or the active row when nothing is selected.
// `which` is WholeRows, TimeCells (4 means the same) or DialogCells.
void InsertRows(CTimingGrid &form, int which);
void DeleteRows(CTimingGrid &form, int which);

// Empties the selected cells, never the serial number column; with no block, the
// active cell.
void ClearCells(CTimingGrid &form);

// The line flags on the rows of the selection. A block of whole columns stands for all
// rows but the last two.
void SetChangedFlag(CTimingGrid &form, bool on);
void SetQuestionFlag(CTimingGrid &form, bool on);
void SetCheckDisabledFlag(CTimingGrid &form, bool on);

// Chooses the item `text` in the list cell of `column` on each row of the selection
// (a block of whole columns acts on nothing); rows whose list lacks it stay.
void SetListChoice(CTimingGrid &form, const QString &text, int column);

// Writes the lines of `text` ("\r\n"-separated) down the active column from the active
// row, growing the grid as needed; the active cell is kept.
void PasteLines(CTimingGrid &form, const QString &text);

// Which items of the popup menu are enabled for a selection (the blocks as gathered)
// and the active column. Items not named here are always enabled.
struct PopupEnabling
{
    bool AjustTime = false; // time shift and the scale items
    bool InsertLines = false; // the three insert items
    bool DeleteLines = false; // the three delete items
    bool Increace = false; // the even-step fill
    bool Effect = false; // the override tag items
};
PopupEnabling PopupMenuEnabling(const QList<CSpreadBlock> &selection, int activeCol);
PopupEnabling PopupMenuEnabling(const CSpread &grid);

} // namespace basLineOps
