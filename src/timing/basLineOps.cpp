#include "timing/basLineOps.h"

#include "core/CGridAction.h"
#include "core/CSpreadCellKeeper.h"
#include "core/CSpreadDrawingStop.h"
#include "core/basConvert.h"
#include "player/ITimingPreviewHooks.h"
#include "script/basScript.h"
#include "timing/CTimingGrid.h"

#include <algorithm>

namespace basLineOps {

namespace {

using TG = CTimingGrid;

// The rows an insert or delete acts on, clipped to the grid; false when there are none
// (an empty grid, a block of whole columns, no active row).
bool ActionRows(const CSpread &grid, int &first, int &last)
{
    if (grid.IsBlockSelected()) {
        first = grid.SelBlockRow();
        last = grid.SelBlockRow2();
    } else {
        first = last = grid.ActiveRow();
    }
    if (first < 1 || first > grid.MaxRows())
        return false;
    last = std::clamp(last, first, grid.MaxRows());
    return true;
}

void TellRowsFrom(CTimingGrid &form, int first)
{
    for (int row = first; row <= form.Spread().MaxRows(); ++row)
        form.TellPreview(-1, row);
}

// Moves the block of columns col1..col2, rows row1..row2 so that it starts at `dest`.
void MoveCells(CSpread &grid, int col1, int col2, int row1, int row2, int dest)
{
    grid.setRow(row1);
    grid.setRow2(row2);
    grid.setCol(col1);
    grid.setCol2(col2);
    grid.setDestRow(dest);
    grid.setDestCol(col1);
    grid.MoveBlock();
}

// Calls `apply` for each row of the selection. With `wholeColumns`, a block of whole
// columns stands for rows 1 to MaxRows - 2; otherwise it stands for no row.
template <typename F> void ForSelectedRows(CSpread &grid, bool wholeColumns, F &&apply)
{
    grid.GetMultiSelection();
    if (grid.MultiSelCount() == 0) {
        if (grid.ActiveRow() >= 1 && grid.ActiveRow() <= grid.MaxRows())
            apply(grid.ActiveRow());
        return;
    }
    for (int i = 0; i < grid.MultiSelCount(); ++i) {
        grid.setMultiSelIndex(i);
        int row1 = grid.Row();
        int row2 = grid.Row2();
        if (row1 == -1 && row2 == -1) {
            if (!wholeColumns)
                continue;
            row1 = 1;
            row2 = grid.MaxRows() - 2;
        }
        row1 = std::max(row1, 1);
        row2 = std::min(row2, grid.MaxRows());
        for (int row = row1; row <= row2; ++row)
            apply(row);
    }
}

} // namespace

void InsertRows(CTimingGrid &form, int which)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form,
        which == WholeRows         ? "MENU_TIMING_200"
            : which == DialogCells ? "MENU_TIMING_202"
                                   : "MENU_TIMING_201");
    int first = 0;
    int last = 0;
    if (!ActionRows(grid, first, last))
        return;
    const CSpreadDrawingStop stop(grid);
    ITimingPreviewHooks *hooks = form.PreviewHooks();
    const int count = last - first + 1;
    for (int i = 0; i < count; ++i) {
        // The appended row is the one that falls off when the new row comes in. At the
        // size limit nothing is appended, and nothing may fall off.
        const int rows = grid.MaxRows();
        form.AppendRow();
        if (grid.MaxRows() == rows)
            break;
        if (hooks)
            hooks->DeletePreviewLine(grid.MaxRows());
        grid.setRow(first);
        grid.InsertRow();
        grid.setCol(TG::ColSerialNo);
        grid.setText(basConvert::CStr(qint64(form.RowSerialNo())));
        if (hooks)
            hooks->CreatePreviewLine(first);
        grid.setCol(TG::ColDialog);
    }
    if (which == TimeCells || which == 4) {
        // The dialogue goes back up: only the times moved down.
        MoveCells(grid, TG::ColDialog, TG::ColDialog, last + 1, grid.MaxRows(), first);
    } else if (which == DialogCells) {
        MoveCells(grid, TG::ColStartTime, TG::ColEndTime, last + 1, grid.MaxRows(), first);
    }
    TellRowsFrom(form, first);
}

void DeleteRows(CTimingGrid &form, int which)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form,
        which == WholeRows         ? "MENU_TIMING_300"
            : which == DialogCells ? "MENU_TIMING_302"
                                   : "MENU_TIMING_301");
    int first = 0;
    int last = 0;
    if (!ActionRows(grid, first, last))
        return;
    const CSpreadDrawingStop stop(grid);
    ITimingPreviewHooks *hooks = form.PreviewHooks();
    const int count = last - first + 1;
    if (which == WholeRows) {
        grid.setRow(first);
        for (int i = 0; i < count; ++i) {
            if (hooks)
                hooks->DeletePreviewLine(first);
            grid.setRow(first);
            grid.DeleteRow();
            form.RemoveLastRow();
        }
        if (grid.MaxRows() >= 2 && grid.ActiveRow() == grid.MaxRows() - 1)
            form.AppendRow();
    } else if (which == TimeCells || which == 4 || which == DialogCells) {
        const int col1 = which == DialogCells ? TG::ColDialog : TG::ColStartTime;
        const int col2 = which == DialogCells ? TG::ColDialog : TG::ColEndTime;
        if (last + 1 > grid.MaxRows()) {
            // Nothing lies below the chosen rows: they are only emptied.
            grid.setRow(first);
            grid.setRow2(last);
            grid.setCol(col1);
            grid.setCol2(col2);
            grid.ClearBlock();
        } else {
            MoveCells(grid, col1, col2, last + 1, grid.MaxRows() + count - 1, first);
        }
    }
    TellRowsFrom(form, first);
}

void ClearCells(CTimingGrid &form)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "MENU_TIMING_400");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    grid.GetMultiSelection();
    if (grid.MultiSelCount() == 0) {
        const int row = grid.ActiveRow();
        const int col = grid.ActiveCol();
        if (col == TG::ColSerialNo || row < 1 || row > grid.MaxRows())
            return;
        grid.setRow(row);
        grid.setRow2(row);
        grid.setCol(col);
        grid.setCol2(col);
        grid.ClearBlock();
        form.TellPreview(-1, row);
        return;
    }
    for (int i = 0; i < grid.MultiSelCount(); ++i) {
        grid.setMultiSelIndex(i);
        if (grid.Col() == -1 && grid.Col2() == -1) {
            grid.setCol(1);
            grid.setCol2(TG::ColDialog);
        }
        if (grid.Col2() >= TG::ColSerialNo)
            grid.setCol2(TG::ColDialog);
        const int row1 = grid.Row() == -1 ? 1 : std::max(grid.Row(), 1);
        const int row2 = grid.Row() == -1 ? grid.MaxRows() : std::min(grid.Row2(), grid.MaxRows());
        grid.ClearBlock();
        for (int row = row1; row <= row2; ++row)
            form.TellPreview(-1, row);
    }
}

void SetChangedFlag(CTimingGrid &form, bool on)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "VELMAR_UNDO_213");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    ForSelectedRows(grid, true, [&](int row) { form.SetRowChanged(row, on); });
}

void SetQuestionFlag(CTimingGrid &form, bool on)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "VELMAR_UNDO_213");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    ForSelectedRows(grid, true, [&](int row) { form.SetRowQuestion(row, on); });
}

void SetCheckDisabledFlag(CTimingGrid &form, bool on)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "VELMAR_UNDO_213");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    ForSelectedRows(grid, true, [&](int row) { form.SetRowCheckDisabled(row, on); });
}

void SetListChoice(CTimingGrid &form, const QString &text, int column)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "VELMAR_UNDO_214");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    ForSelectedRows(grid, false, [&](int row) {
        grid.ChooseItem(column, row, text);
        form.TellPreview(-1, row);
    });
}

void PasteLines(CTimingGrid &form, const QString &text)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "VELMAR_UNDO_215");
    const int activeRow = grid.ActiveRow();
    const int activeCol = grid.ActiveCol();
    if (activeRow < 1 || activeRow > grid.MaxRows() || activeCol < 1)
        return;
    int row = activeRow;
    for (QStringView piece : basScript::SplitLines(text)) {
        if (row > grid.MaxRows())
            break; // the grid is at its size limit
        grid.setRow(row);
        grid.setCol(activeCol);
        grid.ActivateCell();
        grid.setText(piece.toString());
        form.TellPreview(activeCol, row);
        ++row;
        if (row >= grid.MaxRows())
            form.AppendRow();
    }
    grid.setRow(activeRow);
    grid.setCol(activeCol);
    grid.ActivateCell();
}

PopupEnabling PopupMenuEnabling(const QList<CSpreadBlock> &selection, int activeCol)
{
    PopupEnabling on;
    const auto hasTimeColumn = [](const CSpreadBlock &b) {
        return b.Col == -1 || (b.Col <= TG::ColEndTime && b.Col2 >= TG::ColStartTime);
    };
    if (selection.isEmpty()) {
        on.AjustTime = activeCol == TG::ColStartTime || activeCol == TG::ColEndTime;
        on.Effect = activeCol == TG::ColDialog;
    } else {
        on.AjustTime = std::any_of(selection.begin(), selection.end(), hasTimeColumn);
        on.Effect = std::all_of(selection.begin(), selection.end(),
            [](const CSpreadBlock &b) { return b.Col == TG::ColDialog && b.Col2 == TG::ColDialog; });
        const CSpreadBlock &block = selection.last();
        on.Increace = block.Col == block.Col2
            && (block.Col == TG::ColStartTime || block.Col == TG::ColEndTime || block.Col == TG::ColMarginL
                || block.Col == TG::ColMarginR || block.Col == TG::ColMarginV);
    }
    on.InsertLines = selection.size() <= 1 && (selection.isEmpty() || !selection.first().IsWholeColumns());
    on.DeleteLines = on.InsertLines;
    return on;
}

PopupEnabling PopupMenuEnabling(const CSpread &grid)
{
    return PopupMenuEnabling(grid.Selection(), grid.ActiveCol());
}

} // namespace basLineOps
