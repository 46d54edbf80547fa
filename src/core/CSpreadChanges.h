#pragma once

#include "core/CSpread.h"

#include <QVarLengthArray>
#include <QtGlobal>
#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

// What one action changed in a grid, kept so that it can be taken back and done again.
//
// The grid reports each change before it makes it: the old state of a cell or of a
// column's defaults the first time it is touched, and for a row that comes or goes the
// row that fell off or went. Cells are counted by position, so the records fall into
// segments that each end with a change of rows; within a segment a cell is kept once.
// Only what the action touched is stored.
//
// Taking back and doing again swap the kept state with the grid's, segment by segment
// (backwards to undo, forwards to redo), so the record always holds the state that is not
// in the grid and needs no second copy.
class CSpreadChanges
{
public:
    // Who hears rows come and go while changes are applied (a preview that keeps a line
    // per row): Leaving is called before a row goes and Came after a row came, and a row
    // whose key cell (the serial number) changes is told both ways. Unset, nobody is told.
    struct Hooks
    {
        std::function<void(int row)> Leaving;
        std::function<void(int row)> Came;
        int KeyColumn = 0;
    };
    // What applying the changes touched.
    struct Touched
    {
        // Rows came or went: every row from FirstRow to the end may be another now.
        bool RowsMoved = false;
        // The first row touched; 0 for none.
        int FirstRow = 0;
        // When no row moved: the rows of the cells that changed, in order, once each.
        std::vector<int> Rows;
    };

    CSpreadChanges();
    ~CSpreadChanges();
    CSpreadChanges(CSpreadChanges &&) noexcept;
    CSpreadChanges &operator=(CSpreadChanges &&) noexcept;
    CSpreadChanges(const CSpreadChanges &) = delete;
    CSpreadChanges &operator=(const CSpreadChanges &) = delete;

    bool IsEmpty() const;
    // The column count changed: these changes cannot be taken back.
    bool Irreversible() const { return m_irreversible; }
    bool MovesRows() const;
    // The cell that all the changes are of, when they are of one cell and no row moved.
    bool SingleCell(int &col, int &row) const;
    // The memory the record holds, in bytes.
    qint64 Bytes() const;

    // Recording: the grid calls these before it changes.
    void KeepCell(int col, int row, const CSpread::Cell &cell);
    void KeepColumn(int col, const CSpread::Column &column);
    void RowInserted(int row, CSpread::RowCells &&fallen);
    void RowDeleted(int row, CSpread::RowCells &&deleted);
    void RowsResized(int oldCount, std::vector<CSpread::RowCells> &&removed);
    void MarkIrreversible() { m_irreversible = true; }
    // The action is over: cells and columns that ended as they began are forgotten when
    // no row moved (an action that changed nothing leaves an empty record), and what only
    // served the recording is freed.
    void Finish(const CSpread &grid);
    // Joins changes made after these into one record.
    void Append(CSpreadChanges &&later);

    Touched Undo(CSpread &grid, const Hooks &hooks);
    Touched Redo(CSpread &grid, const Hooks &hooks);

private:
    struct CellRecord
    {
        qint32 Col;
        qint32 Row;
        CSpread::Cell Cell;
    };
    struct ColumnRecord
    {
        qint32 Col;
        qint32 Type;
        quint32 Fore;
        quint32 Back;
    };
    enum class RowKind : quint8 { Insert, Delete, Resize };
    struct RowRecord
    {
        RowKind Kind;
        // Insert and Delete: the row that came or went. Resize: the row count of the
        // state that is not in the grid.
        qint32 Row;
        // The rows that are not in the grid: the one that fell off the end or went, or
        // the rows beyond the smaller count.
        std::vector<CSpread::RowCells> Rows;
    };
    // Most actions change one cell in one segment (a stroke, a cell edit): that record
    // lives in place, without memory of its own.
    struct Segment
    {
        QVarLengthArray<CellRecord, 1> Cells;
        std::vector<ColumnRecord> Columns;
        // The change of rows that ends the segment, if any.
        std::unique_ptr<RowRecord> Rows;
    };
    static bool SameCell(const CSpread::Cell &a, const CSpread::Cell &b);
    static qint64 RowBytes(const CSpread::RowCells &cells);
    Segment &Open();
    void AddRows(RowRecord &&record);
    Touched Apply(CSpread &grid, const Hooks &hooks, bool redo);
    static void SwapCells(
        CSpread &grid, Segment &segment, const Hooks &hooks, Touched &touched, int bounds[4]);
    static void SwapColumns(CSpread &grid, Segment &segment, int bounds[4]);
    static void SwapRows(CSpread &grid, RowRecord &record, const Hooks &hooks, bool redo);

    QVarLengthArray<Segment, 1> m_segments;
    // Past a handful of cells, an index of the cells kept in the open segment (a cell is
    // kept once per segment); fewer are searched in place.
    std::unique_ptr<std::unordered_set<quint64>> m_index;
    bool m_irreversible = false;
};
