#include "core/CSpreadChanges.h"

#include <algorithm>
#include <climits>

namespace {

quint64 CellKey(int col, int row)
{
    return (quint64(quint32(row)) << 32) | quint32(col);
}

// The memory an array holds beyond its place in the record.
template <typename T, qsizetype Prealloc> qint64 HeapBytes(const QVarLengthArray<T, Prealloc> &array)
{
    return array.capacity() > Prealloc ? qint64(array.capacity()) * qint64(sizeof(T)) : 0;
}

qint64 TextBytes(const QString &text)
{
    return text.isEmpty() ? 0 : qint64(text.capacity()) * qint64(sizeof(QChar)) + 24;
}

// Bounds of the cells an apply changed: first and last column, first and last row.
void Widen(int bounds[4], int col1, int col2, int row1, int row2)
{
    bounds[0] = std::min(bounds[0], col1);
    bounds[1] = std::max(bounds[1], col2);
    bounds[2] = std::min(bounds[2], row1);
    bounds[3] = std::max(bounds[3], row2);
}

void NoteFirstRow(CSpreadChanges::Touched &touched, int row)
{
    if (row >= 1 && (touched.FirstRow == 0 || row < touched.FirstRow))
        touched.FirstRow = row;
}

} // namespace

bool CSpreadChanges::SameCell(const CSpread::Cell &a, const CSpread::Cell &b)
{
    return a.Fore == b.Fore && a.Back == b.Back && a.Choice == b.Choice && a.Type == b.Type
        && a.Mark == b.Mark && a.Text == b.Text;
}

qint64 CSpreadChanges::RowBytes(const CSpread::RowCells &cells)
{
    qint64 bytes = qint64(sizeof(cells)) + qint64(cells.capacity()) * qint64(sizeof(CSpread::Cell));
    for (const CSpread::Cell &cell : cells)
        bytes += TextBytes(cell.Text);
    return bytes;
}

// ---- recording ---------------------------------------------------------------------

CSpreadChanges::CSpreadChanges() = default;
CSpreadChanges::~CSpreadChanges() = default;
CSpreadChanges::CSpreadChanges(CSpreadChanges &&) noexcept = default;
CSpreadChanges &CSpreadChanges::operator=(CSpreadChanges &&) noexcept = default;

CSpreadChanges::Segment &CSpreadChanges::Open()
{
    if (m_segments.empty() || m_segments.back().Rows)
        m_segments.emplace_back();
    return m_segments.back();
}

void CSpreadChanges::KeepCell(int col, int row, const CSpread::Cell &cell)
{
    // Most actions keep a handful of cells: a short list is searched faster than an index
    // is built. Past that the cells go into the index.
    constexpr qsizetype few = 24;
    Segment &segment = Open();
    if (m_index) {
        if (!m_index->insert(CellKey(col, row)).second)
            return;
    } else {
        for (const CellRecord &kept : segment.Cells)
            if (kept.Col == col && kept.Row == row)
                return;
        if (segment.Cells.size() >= few) {
            m_index = std::make_unique<std::unordered_set<quint64>>();
            m_index->reserve(size_t(few) * 4);
            for (const CellRecord &kept : segment.Cells)
                m_index->insert(CellKey(kept.Col, kept.Row));
            m_index->insert(CellKey(col, row));
        }
    }
    segment.Cells.push_back({ col, row, cell });
}

void CSpreadChanges::KeepColumn(int col, const CSpread::Column &column)
{
    Segment &segment = Open();
    for (const ColumnRecord &kept : segment.Columns)
        if (kept.Col == col)
            return;
    segment.Columns.push_back({ col, column.Type, column.Fore, column.Back });
}

void CSpreadChanges::AddRows(RowRecord &&record)
{
    Open().Rows = std::make_unique<RowRecord>(std::move(record));
    // Positions below the change are others now: the next change opens a segment.
    m_index.reset();
}

void CSpreadChanges::RowInserted(int row, CSpread::RowCells &&fallen)
{
    RowRecord record { RowKind::Insert, row, {} };
    record.Rows.push_back(std::move(fallen));
    AddRows(std::move(record));
}

void CSpreadChanges::RowDeleted(int row, CSpread::RowCells &&deleted)
{
    RowRecord record { RowKind::Delete, row, {} };
    record.Rows.push_back(std::move(deleted));
    AddRows(std::move(record));
}

void CSpreadChanges::RowsResized(int oldCount, std::vector<CSpread::RowCells> &&removed)
{
    AddRows({ RowKind::Resize, oldCount, std::move(removed) });
}

bool CSpreadChanges::IsEmpty() const
{
    for (const Segment &segment : m_segments)
        if (!segment.Cells.empty() || !segment.Columns.empty() || segment.Rows)
            return false;
    return true;
}

bool CSpreadChanges::MovesRows() const
{
    return std::any_of(
        m_segments.begin(), m_segments.end(), [](const Segment &segment) { return segment.Rows != nullptr; });
}

bool CSpreadChanges::SingleCell(int &col, int &row) const
{
    if (m_segments.size() != 1 || m_segments.front().Rows || !m_segments.front().Columns.empty()
        || m_segments.front().Cells.size() != 1)
        return false;
    col = m_segments.front().Cells.front().Col;
    row = m_segments.front().Cells.front().Row;
    return true;
}

qint64 CSpreadChanges::Bytes() const
{
    qint64 bytes = qint64(sizeof(*this)) + HeapBytes(m_segments);
    for (const Segment &segment : m_segments) {
        bytes += HeapBytes(segment.Cells);
        for (const CellRecord &record : segment.Cells)
            bytes += TextBytes(record.Cell.Text);
        bytes += qint64(segment.Columns.capacity()) * qint64(sizeof(ColumnRecord));
        if (segment.Rows) {
            bytes += qint64(sizeof(RowRecord));
            bytes += qint64(segment.Rows->Rows.capacity()) * qint64(sizeof(CSpread::RowCells));
            for (const CSpread::RowCells &cells : segment.Rows->Rows)
                bytes += RowBytes(cells);
        }
    }
    return bytes;
}

void CSpreadChanges::Finish(const CSpread &grid)
{
    m_index.reset();
    if (!MovesRows()) {
        for (Segment &segment : m_segments) {
            segment.Cells.removeIf([&grid](const CellRecord &record) {
                const CSpread::Cell *now = grid.CellAt(record.Col, record.Row);
                return now && SameCell(*now, record.Cell);
            });
            std::erase_if(segment.Columns, [&grid](const ColumnRecord &record) {
                if (record.Col < 0 || record.Col > grid.MaxCols())
                    return false;
                const CSpread::Column &now = grid.m_cols[size_t(record.Col)];
                return now.Type == record.Type && now.Fore == record.Fore && now.Back == record.Back;
            });
        }
        m_segments.removeIf([](const Segment &segment) {
            return segment.Cells.empty() && segment.Columns.empty() && !segment.Rows;
        });
    }
    for (Segment &segment : m_segments) {
        segment.Cells.squeeze();
        segment.Columns.shrink_to_fit();
    }
    m_segments.squeeze();
}

void CSpreadChanges::Append(CSpreadChanges &&later)
{
    m_irreversible = m_irreversible || later.m_irreversible;
    auto next = later.m_segments.begin();
    // The later first segment continues an open one at the same positions: a cell kept
    // here already holds the older state, the later record of it is not needed.
    if (!m_segments.empty() && !m_segments.back().Rows && next != later.m_segments.end()) {
        Segment &open = m_segments.back();
        std::unordered_set<quint64> kept;
        for (const CellRecord &record : open.Cells)
            kept.insert(CellKey(record.Col, record.Row));
        for (CellRecord &record : next->Cells)
            if (kept.insert(CellKey(record.Col, record.Row)).second)
                open.Cells.push_back(std::move(record));
        for (const ColumnRecord &record : next->Columns)
            if (std::none_of(open.Columns.begin(), open.Columns.end(),
                    [&record](const ColumnRecord &k) { return k.Col == record.Col; }))
                open.Columns.push_back(record);
        open.Rows = std::move(next->Rows);
        ++next;
    }
    for (; next != later.m_segments.end(); ++next)
        m_segments.push_back(std::move(*next));
    later.m_segments.clear();
}

// ---- taking back and doing again ------------------------------------------------------

CSpreadChanges::Touched CSpreadChanges::Undo(CSpread &grid, const Hooks &hooks)
{
    return Apply(grid, hooks, false);
}

CSpreadChanges::Touched CSpreadChanges::Redo(CSpread &grid, const Hooks &hooks)
{
    return Apply(grid, hooks, true);
}

CSpreadChanges::Touched CSpreadChanges::Apply(CSpread &grid, const Hooks &hooks, bool redo)
{
    Touched touched;
    int bounds[4] = { INT_MAX, 0, INT_MAX, 0 };
    const auto segment = [&](Segment &s) {
        if (s.Rows) {
            touched.RowsMoved = true;
            NoteFirstRow(touched,
                s.Rows->Kind == RowKind::Resize ? std::min(s.Rows->Row, grid.MaxRows()) + 1 : s.Rows->Row);
        }
        SwapColumns(grid, s, bounds);
        SwapCells(grid, s, hooks, touched, bounds);
    };
    // Within a segment the cells changed before its rows did.
    if (redo) {
        for (Segment &s : m_segments) {
            segment(s);
            if (s.Rows)
                SwapRows(grid, *s.Rows, hooks, true);
        }
    } else {
        for (auto s = m_segments.rbegin(); s != m_segments.rend(); ++s) {
            if (s->Rows)
                SwapRows(grid, *s->Rows, hooks, false);
            segment(*s);
        }
    }

    if (touched.RowsMoved) {
        touched.Rows.clear();
        if (touched.FirstRow >= 1)
            grid.NotifyCells(1, touched.FirstRow, grid.MaxCols(), grid.MaxRows());
    } else {
        std::sort(touched.Rows.begin(), touched.Rows.end());
        touched.Rows.erase(std::unique(touched.Rows.begin(), touched.Rows.end()), touched.Rows.end());
    }
    if (bounds[0] <= bounds[1] && bounds[2] <= bounds[3])
        grid.NotifyCells(bounds[0], bounds[2], bounds[1], bounds[3]);
    return touched;
}

void CSpreadChanges::SwapColumns(CSpread &grid, Segment &segment, int bounds[4])
{
    if (segment.Columns.empty())
        return;
    for (ColumnRecord &record : segment.Columns) {
        if (record.Col < 0 || record.Col > grid.MaxCols())
            continue;
        CSpread::Column &column = grid.m_cols[size_t(record.Col)];
        std::swap(column.Type, record.Type);
        std::swap(column.Fore, record.Fore);
        std::swap(column.Back, record.Back);
        // Cells of the column's kind show the column's list.
        Widen(bounds, record.Col, record.Col, 1, grid.MaxRows());
    }
    grid.ColumnsChanged();
}

void CSpreadChanges::SwapCells(
    CSpread &grid, Segment &segment, const Hooks &hooks, Touched &touched, int bounds[4])
{
    // A row's preview line belongs to its serial number: the lines of the numbers that go
    // are deleted before any comes back, since a number may move from row to row.
    std::vector<int> keyRows;
    if (hooks.Leaving && hooks.Came) {
        for (const CellRecord &record : segment.Cells) {
            const CSpread::Cell *cell = grid.CellAt(record.Col, record.Row);
            if (cell && record.Col == hooks.KeyColumn && cell->Text != record.Cell.Text) {
                hooks.Leaving(record.Row);
                keyRows.push_back(record.Row);
            }
        }
    }
    for (CellRecord &record : segment.Cells) {
        CSpread::Cell *cell = grid.CellAt(record.Col, record.Row);
        if (!cell)
            continue;
        std::swap(*cell, record.Cell);
        touched.Rows.push_back(record.Row);
        NoteFirstRow(touched, record.Row);
        if (record.Col == 0)
            grid.NotifyHeader(Qt::Vertical, record.Row, record.Row);
        else
            Widen(bounds, record.Col, record.Col, record.Row, record.Row);
    }
    for (int row : keyRows)
        hooks.Came(row);
}

void CSpreadChanges::SwapRows(CSpread &grid, RowRecord &record, const Hooks &hooks, bool redo)
{
    const auto leaving = [&](int first, int last) {
        if (hooks.Leaving)
            for (int row = first; row <= last; ++row)
                hooks.Leaving(row);
    };
    const auto came = [&](int first, int last) {
        if (hooks.Came)
            for (int row = first; row <= last; ++row)
                hooks.Came(row);
    };
    if (record.Kind == RowKind::Resize) {
        const int now = grid.MaxRows();
        if (now > record.Row) {
            leaving(record.Row + 1, now);
            record.Rows = grid.TakeTail(now - record.Row);
        } else {
            const int first = now + 1;
            grid.PutTail(std::move(record.Rows));
            record.Rows.clear();
            came(first, grid.MaxRows());
        }
        record.Row = now;
        return;
    }
    if (record.Rows.empty())
        return;
    // An insert done again, or a delete taken back, brings the kept row in at its place
    // and the last row off the end; the other two take the row out and put the kept one
    // back at the end.
    const bool rowComes = (record.Kind == RowKind::Insert) == redo;
    if (rowComes) {
        leaving(grid.MaxRows(), grid.MaxRows());
        std::vector<CSpread::RowCells> last = grid.TakeTail(1);
        grid.PutRow(record.Row, std::move(record.Rows.front()));
        came(record.Row, record.Row);
        if (!last.empty())
            record.Rows.front() = std::move(last.front());
    } else {
        leaving(record.Row, record.Row);
        CSpread::RowCells gone = grid.TakeRow(record.Row);
        std::vector<CSpread::RowCells> tail;
        tail.push_back(std::move(record.Rows.front()));
        grid.PutTail(std::move(tail));
        came(grid.MaxRows(), grid.MaxRows());
        record.Rows.front() = std::move(gone);
    }
}
