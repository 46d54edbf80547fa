#include "core/CSpread.h"

#include "core/CGridAction.h"
#include "core/CSpreadChanges.h"
#include "core/basConvert.h"
#include "core/basGuiHooks.h"

#include <algorithm>

namespace {

constexpr QChar Tab(u'\t');

QStringList SplitItems(const QString &tabSeparated)
{
    if (tabSeparated.isEmpty())
        return {};
    return tabSeparated.split(Tab);
}

// The roles a write changes, made once: a grid load writes hundreds of
// thousands of cells.
const QList<int> &textRoles()
{
    static const QList<int> roles { Qt::DisplayRole, Qt::EditRole };
    return roles;
}

const QList<int> &textAndChoiceRoles()
{
    static const QList<int> roles { Qt::DisplayRole, Qt::EditRole, CSpread::ListChoiceRole };
    return roles;
}

const QList<int> &foreRoles()
{
    static const QList<int> roles { Qt::ForegroundRole, CSpread::ForeColorCodeRole };
    return roles;
}

const QList<int> &backRoles()
{
    static const QList<int> roles { Qt::BackgroundRole, CSpread::BackColorCodeRole };
    return roles;
}

const QList<int> &markRoles()
{
    static const QList<int> roles { CSpread::CellMarkRole };
    return roles;
}

} // namespace

CSpread::CSpread(QObject *parent)
    : QAbstractTableModel(parent)
    , m_headless(*this)
{
    m_types.push_back(CSpreadCellType());
    m_cols.resize(1);
}

CSpread::~CSpread() = default;

// ---- cells -------------------------------------------------------------------------

const CSpreadCellType &CSpread::TypeOf(const Cell &cell, int col) const
{
    const qint32 index = cell.Type >= 0 ? cell.Type : m_cols[size_t(col)].Type;
    return m_types[size_t(index)];
}

qint32 CSpread::Intern(const CSpreadCellType &type)
{
    const auto found = std::find(m_types.begin(), m_types.end(), type);
    if (found != m_types.end())
        return qint32(found - m_types.begin());
    m_types.push_back(type);
    return qint32(m_types.size() - 1);
}

CSpread::Cell CSpread::FreshCell(int col) const
{
    const Column &column = m_cols[size_t(col)];
    Cell cell;
    cell.Fore = column.Fore;
    cell.Back = column.Back;
    const CSpreadCellType &type = m_types[size_t(column.Type)];
    if (col > 0 && type.Kind == SpreadCellKind::List && !type.ListItems.isEmpty()) {
        cell.Text = type.ListItems.first();
        cell.Choice = 0;
    }
    return cell;
}

const CSpread::RowCells &CSpread::FreshRow() const
{
    if (!m_freshRowValid) {
        m_freshRow.clear();
        m_freshRow.reserve(m_cols.size());
        for (int c = 0; c < int(m_cols.size()); ++c)
            m_freshRow.push_back(FreshCell(c));
        m_freshRowValid = true;
    }
    return m_freshRow;
}

void CSpread::Choose(Cell &cell, const CSpreadCellType &type, int index)
{
    if (index < 0 || index >= type.ListItems.size()) {
        cell.Choice = -1;
        cell.Text.clear();
    } else {
        cell.Choice = index;
        cell.Text = type.ListItems.at(index);
    }
}

void CSpread::WriteText(Cell &cell, int col, const QString &text)
{
    cell.Text = text;
    const CSpreadCellType &type = TypeOf(cell, col);
    if (type.Kind == SpreadCellKind::List)
        cell.Choice = qint32(type.ListItems.indexOf(text));
}

// ---- signals -----------------------------------------------------------------------

void CSpread::NotifyCells(int col1, int row1, int col2, int row2, const QList<int> &roles)
{
    col1 = std::max(col1, 1);
    row1 = std::max(row1, 1);
    col2 = std::min(col2, MaxCols());
    row2 = std::min(row2, MaxRows());
    if (col1 > col2 || row1 > row2)
        return;
    if (!m_reDraw) {
        m_pendingReset = true;
        return;
    }
    emit dataChanged(index(row1 - 1, col1 - 1), index(row2 - 1, col2 - 1), roles);
}

void CSpread::NotifyHeader(Qt::Orientation orientation, int first, int last)
{
    const int count = orientation == Qt::Horizontal ? MaxCols() : MaxRows();
    first = std::max(first, 1);
    last = std::min(last, count);
    if (first > last)
        return;
    if (!m_reDraw) {
        m_pendingReset = true;
        return;
    }
    emit headerDataChanged(orientation, first - 1, last - 1);
}

void CSpread::setReDraw(bool on)
{
    if (on == m_reDraw)
        return;
    m_reDraw = on;
    if (on && m_pendingReset) {
        m_pendingReset = false;
        beginResetModel();
        endResetModel();
    }
}

// ---- size --------------------------------------------------------------------------

void CSpread::setMaxRows(int rows)
{
    rows = std::clamp(rows, 0, MaxRowsLimit);
    const int old = MaxRows();
    if (rows == old)
        return;
    CSpreadChanges *record = Recording();
    if (rows > old) {
        if (record)
            record->RowsResized(old, {});
        if (m_reDraw)
            beginInsertRows(QModelIndex(), old, rows - 1);
        const RowCells &fresh = FreshRow();
        // Rows are mostly added one at a time at the end: grow the storage geometrically.
        if (size_t(rows) > m_rows.capacity())
            m_rows.reserve(std::max(size_t(rows), m_rows.capacity() * 2));
        m_rows.resize(size_t(rows), fresh);
        if (m_reDraw)
            endInsertRows();
    } else {
        if (m_reDraw)
            beginRemoveRows(QModelIndex(), rows, old - 1);
        if (record)
            record->RowsResized(old,
                std::vector<RowCells>(
                    std::make_move_iterator(m_rows.begin() + rows), std::make_move_iterator(m_rows.end())));
        m_rows.resize(size_t(rows));
        if (m_reDraw)
            endRemoveRows();
        if (m_activeRow > rows)
            m_activeRow = rows;
    }
    if (!m_reDraw)
        m_pendingReset = true;
}

void CSpread::setMaxCols(int cols)
{
    cols = std::clamp(cols, 0, MaxColsLimit);
    const int old = MaxCols();
    if (cols == old)
        return;
    if (CSpreadChanges *record = Recording())
        record->MarkIrreversible();
    if (m_reDraw) {
        if (cols > old)
            beginInsertColumns(QModelIndex(), old, cols - 1);
        else
            beginRemoveColumns(QModelIndex(), cols, old - 1);
    }
    m_cols.resize(size_t(cols) + 1);
    ColumnsChanged();
    if (cols > old) {
        for (RowCells &cells : m_rows) {
            cells.reserve(size_t(cols) + 1);
            for (int c = old + 1; c <= cols; ++c)
                cells.push_back(FreshCell(c));
        }
    } else {
        for (RowCells &cells : m_rows)
            cells.resize(size_t(cols) + 1);
        if (m_activeCol > cols)
            m_activeCol = cols;
    }
    if (m_reDraw) {
        if (cols > old)
            endInsertColumns();
        else
            endRemoveColumns();
    } else {
        m_pendingReset = true;
    }
}

// ---- targets -----------------------------------------------------------------------

CSpread::Range CSpread::TargetRows() const
{
    if (m_row == -1)
        return { 1, MaxRows() };
    if (m_row < 1 || m_row > MaxRows())
        return { 1, 0 };
    return { m_row, m_row };
}

CSpread::Range CSpread::TargetCols() const
{
    if (m_col == -1)
        return { 1, MaxCols() };
    if (m_col < 1 || m_col > MaxCols())
        return { 1, 0 };
    return { m_col, m_col };
}

template <typename F> void CSpread::ForEachTarget(F &&apply, const QList<int> &roles)
{
    const Range rows = TargetRows();
    const Range cols = TargetCols();
    if (rows.empty() || cols.empty())
        return;
    CSpreadChanges *record = Recording();
    for (int r = rows.first; r <= rows.last; ++r) {
        RowCells &cells = m_rows[size_t(r - 1)];
        for (int c = cols.first; c <= cols.last; ++c) {
            if (record)
                record->KeepCell(c, r, cells[size_t(c)]);
            apply(cells[size_t(c)], c);
        }
    }
    NotifyCells(cols.first, rows.first, cols.last, rows.last, roles);
}

// ---- text and value ----------------------------------------------------------------

QString CSpread::Text() const
{
    if (m_row == 0) {
        if (m_col == 0)
            return m_corner;
        return m_col >= 1 && m_col <= MaxCols() ? m_cols[size_t(m_col)].Title : QString();
    }
    const Cell *cell = CellAt(m_col, m_row);
    return cell ? cell->Text : QString();
}

void CSpread::setText(const QString &text)
{
    if (m_row == 0) {
        if (m_col == 0) {
            m_corner = text;
            return;
        }
        const Range cols = TargetCols();
        if (cols.empty())
            return;
        for (int c = cols.first; c <= cols.last; ++c)
            m_cols[size_t(c)].Title = text;
        NotifyHeader(Qt::Horizontal, cols.first, cols.last);
        return;
    }
    if (m_col == 0) {
        const Range rows = TargetRows();
        if (rows.empty())
            return;
        CSpreadChanges *record = Recording();
        for (int r = rows.first; r <= rows.last; ++r) {
            if (record)
                record->KeepCell(0, r, m_rows[size_t(r - 1)][0]);
            m_rows[size_t(r - 1)][0].Text = text;
        }
        NotifyHeader(Qt::Vertical, rows.first, rows.last);
        return;
    }
    ForEachTarget([&](Cell &cell, int c) { WriteText(cell, c, text); }, textRoles());
}

double CSpread::Value() const
{
    const Cell *cell = CellAt(m_col, m_row);
    if (!cell)
        return 0;
    if (m_col > 0 && TypeOf(*cell, m_col).Kind == SpreadCellKind::List)
        return cell->Choice;
    return basConvert::Val(cell->Text);
}

void CSpread::setValue(double value)
{
    ForEachTarget(
        [&](Cell &cell, int c) {
            const CSpreadCellType &type = TypeOf(cell, c);
            switch (type.Kind) {
            case SpreadCellKind::List:
                if (value >= -1 && value < type.ListItems.size())
                    Choose(cell, type, int(basConvert::Int(value)));
                break;
            case SpreadCellKind::Integer:
                cell.Text = basConvert::CStr(basConvert::Round(value));
                break;
            default:
                cell.Text = basConvert::CStr(value);
                break;
            }
        },
        textRoles());
}

// ---- cursor ------------------------------------------------------------------------

void CSpread::SetActiveCell(int col, int row)
{
    if (row < 0 || row > MaxRows() || col < 0 || col > MaxCols())
        return;
    if (row == m_activeRow && col == m_activeCol)
        return;
    if (Viewport().EditMode())
        Viewport().setEditMode(false);
    // The cell being left is still the active one while its handlers run, as a window
    // expects; they may change the grid, so the target is checked again afterwards.
    emit LeaveCell(m_activeCol, m_activeRow, col, row);
    if (row > MaxRows() || col > MaxCols())
        return;
    m_activeRow = row;
    m_activeCol = col;
    emit ActiveCellChanged(col, row);
}

void CSpread::ActivateCell()
{
    if (m_row < 1 || m_row > MaxRows() || m_col < 0 || m_col > MaxCols())
        return;
    SetActiveCell(m_col, m_row);
    Viewport().ShowCell(m_activeCol, m_activeRow);
}

// ---- appearance --------------------------------------------------------------------

quint32 CSpread::ForeColor() const
{
    if (const Cell *cell = CellAt(m_col, m_row))
        return cell->Fore;
    return m_col >= 0 && m_col <= MaxCols() ? m_cols[size_t(m_col)].Fore : ColorWindowText;
}

void CSpread::setForeColor(quint32 color)
{
    if (m_row == -1) {
        const Range cols = TargetCols();
        KeepColumns(cols.first, cols.last);
        for (int c = cols.first; c <= cols.last; ++c)
            m_cols[size_t(c)].Fore = color;
        ColumnsChanged();
    }
    ForEachTarget([&](Cell &cell, int) { cell.Fore = color; }, foreRoles());
}

quint32 CSpread::BackColor() const
{
    if (const Cell *cell = CellAt(m_col, m_row))
        return cell->Back;
    return m_col >= 0 && m_col <= MaxCols() ? m_cols[size_t(m_col)].Back : ColorWindow;
}

void CSpread::setBackColor(quint32 color)
{
    if (m_row == -1) {
        const Range cols = TargetCols();
        KeepColumns(cols.first, cols.last);
        for (int c = cols.first; c <= cols.last; ++c)
            m_cols[size_t(c)].Back = color;
        ColumnsChanged();
    }
    ForEachTarget([&](Cell &cell, int) { cell.Back = color; }, backRoles());
}

bool CSpread::CellMark() const
{
    const Cell *cell = CellAt(m_col, m_row);
    return cell && cell->Mark;
}

void CSpread::setCellMark(bool mark)
{
    ForEachTarget([&](Cell &cell, int) { cell.Mark = mark; }, markRoles());
}

bool CSpread::ColHidden() const
{
    return GetColHidden(m_col);
}

bool CSpread::GetColHidden(int col) const
{
    return col >= 1 && col <= MaxCols() && m_cols[size_t(col)].Hidden;
}

void CSpread::setColHidden(bool hidden)
{
    const Range cols = TargetCols();
    for (int c = cols.first; c <= cols.last; ++c) {
        if (m_cols[size_t(c)].Hidden == hidden)
            continue;
        m_cols[size_t(c)].Hidden = hidden;
        emit ColumnHiddenChanged(c, hidden);
    }
}

// ---- kinds and lists ---------------------------------------------------------------

CSpreadCellType CSpread::CellType() const
{
    if (const Cell *cell = CellAt(m_col, m_row); cell && m_col > 0)
        return TypeOf(*cell, m_col);
    if (m_col >= 1 && m_col <= MaxCols())
        return m_types[size_t(m_cols[size_t(m_col)].Type)];
    return CSpreadCellType();
}

void CSpread::setCellType(const CSpreadCellType &type)
{
    const qint32 index = Intern(type);
    const auto reset = [&](Cell &cell, int c) {
        const bool wasList = TypeOf(cell, c).Kind == SpreadCellKind::List;
        cell.Type = m_row == -1 ? -1 : index;
        if (type.Kind == SpreadCellKind::List) {
            Choose(cell, type, type.ListItems.isEmpty() ? -1 : 0);
        } else if (wasList) {
            cell.Choice = -1;
        }
    };
    if (m_row == -1) {
        const Range cols = TargetCols();
        KeepColumns(cols.first, cols.last);
        for (int c = cols.first; c <= cols.last; ++c)
            m_cols[size_t(c)].Type = index;
        ColumnsChanged();
    }
    ForEachTarget(reset, {});
}

QString CSpread::ListItems() const
{
    return CellType().ListItems.join(Tab);
}

void CSpread::setListItems(const QString &tabSeparated)
{
    const QStringList items = SplitItems(tabSeparated);
    // Cells of one column nearly always share a kind, so the new kind is worked out
    // once per distinct old kind rather than once per cell.
    std::vector<std::pair<qint32, qint32>> cache;
    const auto listTypeFor = [&](qint32 oldIndex) {
        for (const auto &[from, to] : cache)
            if (from == oldIndex)
                return to;
        CSpreadCellType type = m_types[size_t(oldIndex)];
        type.Kind = SpreadCellKind::List;
        type.ListItems = items;
        const qint32 to = Intern(type);
        cache.emplace_back(oldIndex, to);
        return to;
    };
    if (m_row == -1) {
        const Range cols = TargetCols();
        KeepColumns(cols.first, cols.last);
        for (int c = cols.first; c <= cols.last; ++c)
            m_cols[size_t(c)].Type = listTypeFor(m_cols[size_t(c)].Type);
        ColumnsChanged();
    }
    ForEachTarget(
        [&](Cell &cell, int c) {
            if (m_row == -1)
                cell.Type = -1;
            else
                cell.Type = listTypeFor(cell.Type >= 0 ? cell.Type : m_cols[size_t(c)].Type);
            Choose(cell, TypeOf(cell, c), items.isEmpty() ? -1 : 0);
        },
        {});
}

int CSpread::ListCount() const
{
    return int(CellType().ListItems.size());
}

QString CSpread::ListString() const
{
    const CSpreadCellType type = CellType();
    return m_listIndex >= 0 && m_listIndex < type.ListItems.size() ? type.ListItems.at(m_listIndex)
                                                                   : QString();
}

int CSpread::ListChoice() const
{
    const Cell *cell = CellAt(m_col, m_row);
    if (!cell || m_col == 0 || TypeOf(*cell, m_col).Kind != SpreadCellKind::List)
        return -1;
    return cell->Choice;
}

void CSpread::setListChoice(int index)
{
    ForEachTarget(
        [&](Cell &cell, int c) {
            const CSpreadCellType &type = TypeOf(cell, c);
            if (type.Kind == SpreadCellKind::List && index >= -1 && index < type.ListItems.size())
                Choose(cell, type, index);
        },
        textAndChoiceRoles());
}

// ---- editor ------------------------------------------------------------------------

ISpreadViewport &CSpread::Viewport()
{
    return m_viewport ? *m_viewport : static_cast<ISpreadViewport &>(m_headless);
}

const ISpreadViewport &CSpread::Viewport() const
{
    return m_viewport ? *m_viewport : static_cast<const ISpreadViewport &>(m_headless);
}

bool CSpread::EditMode() const
{
    return Viewport().EditMode();
}
void CSpread::setEditMode(bool on)
{
    Viewport().setEditMode(on);
}
int CSpread::SelStart() const
{
    return Viewport().SelStart();
}
void CSpread::setSelStart(int start)
{
    Viewport().setSelStart(start);
}
int CSpread::SelLength() const
{
    return Viewport().SelLength();
}
void CSpread::setSelLength(int length)
{
    Viewport().setSelLength(length);
}
QString CSpread::SelText() const
{
    return Viewport().SelText();
}
void CSpread::setSelText(const QString &text)
{
    Viewport().setSelText(text);
}
int CSpread::TopRow() const
{
    return Viewport().TopRow();
}
void CSpread::setTopRow(int row)
{
    Viewport().setTopRow(row);
}
bool CSpread::IsVisible(int col, int row) const
{
    return Viewport().IsVisible(col, row);
}
void CSpread::SetFocus()
{
    Viewport().SetFocus();
}

// ---- selection ---------------------------------------------------------------------

int CSpread::SelBlockRow() const
{
    return m_selection.isEmpty() ? m_activeRow : m_selection.last().Row;
}

int CSpread::SelBlockRow2() const
{
    return m_selection.isEmpty() ? m_activeRow : m_selection.last().Row2;
}

int CSpread::SelBlockCol() const
{
    return m_selection.isEmpty() ? m_activeCol : m_selection.last().Col;
}

int CSpread::SelBlockCol2() const
{
    return m_selection.isEmpty() ? m_activeCol : m_selection.last().Col2;
}

void CSpread::SetSelection(const QList<CSpreadBlock> &blocks)
{
    m_selection.clear();
    for (const CSpreadBlock &block : blocks)
        m_selection.append(block.Normalized());
}

void CSpread::AddSelection(const CSpreadBlock &block)
{
    m_selection.append(block.Normalized());
}

void CSpread::ClearSelection()
{
    m_selection.clear();
}

void CSpread::GetMultiSelection()
{
    m_gathered = m_selection;
    m_multiSelIndex = -1;
}

void CSpread::setMultiSelIndex(int index)
{
    if (index < 0 || index >= m_gathered.size())
        return;
    m_multiSelIndex = index;
    const CSpreadBlock &block = m_gathered.at(index);
    m_row = block.Row;
    m_col = block.Col;
    m_row2 = block.Row2;
    m_col2 = block.Col2;
}

// ---- row and block operations ------------------------------------------------------

void CSpread::InsertRow()
{
    const int rows = MaxRows();
    if (m_row < 1 || m_row > rows)
        return;
    if (CSpreadChanges *record = Recording())
        record->RowInserted(m_row, RowCells(m_rows.back()));
    if (m_reDraw) {
        beginRemoveRows(QModelIndex(), rows - 1, rows - 1);
        m_rows.pop_back();
        endRemoveRows();
        beginInsertRows(QModelIndex(), m_row - 1, m_row - 1);
        m_rows.insert(m_rows.begin() + (m_row - 1), FreshRow());
        endInsertRows();
    } else {
        m_rows.pop_back();
        m_rows.insert(m_rows.begin() + (m_row - 1), FreshRow());
        m_pendingReset = true;
    }
}

void CSpread::DeleteRow()
{
    const int rows = MaxRows();
    if (m_row < 1 || m_row > rows)
        return;
    if (CSpreadChanges *record = Recording())
        record->RowDeleted(m_row, RowCells(m_rows[size_t(m_row - 1)]));
    if (m_reDraw) {
        beginRemoveRows(QModelIndex(), m_row - 1, m_row - 1);
        m_rows.erase(m_rows.begin() + (m_row - 1));
        endRemoveRows();
        beginInsertRows(QModelIndex(), rows - 1, rows - 1);
        m_rows.push_back(FreshRow());
        endInsertRows();
    } else {
        m_rows.erase(m_rows.begin() + (m_row - 1));
        m_rows.push_back(FreshRow());
        m_pendingReset = true;
    }
}

void CSpread::ClearBlock()
{
    const CSpreadBlock block = CSpreadBlock { m_row, m_col, m_row2, m_col2 }.Normalized();
    const int row1 = block.Row == -1 ? 1 : std::max(block.Row, 1);
    const int row2 = block.Row == -1 ? MaxRows() : std::min(block.Row2, MaxRows());
    const int col1 = block.Col == -1 ? 1 : std::max(block.Col, 1);
    const int col2 = block.Col == -1 ? MaxCols() : std::min(block.Col2, MaxCols());
    if (row1 > row2 || col1 > col2)
        return;
    CSpreadChanges *record = Recording();
    for (int r = row1; r <= row2; ++r) {
        RowCells &cells = m_rows[size_t(r - 1)];
        for (int c = col1; c <= col2; ++c) {
            if (record)
                record->KeepCell(c, r, cells[size_t(c)]);
            cells[size_t(c)].Text.clear();
            cells[size_t(c)].Choice = -1;
        }
    }
    NotifyCells(col1, row1, col2, row2, textAndChoiceRoles());
}

void CSpread::MoveBlock()
{
    const CSpreadBlock block = CSpreadBlock { m_row, m_col, m_row2, m_col2 }.Normalized();
    const qint64 srcRow1 = block.Row == -1 ? 1 : block.Row;
    const qint64 srcRow2 = block.Row == -1 ? MaxRows() : block.Row2;
    const qint64 srcCol1 = block.Col == -1 ? 1 : std::max(block.Col, 1);
    const qint64 srcCol2 = block.Col == -1 ? MaxCols() : block.Col2;
    if (srcRow1 > srcRow2 || srcCol1 > srcCol2)
        return;
    // A block of whole columns (rows) can only move sideways (up and down).
    const qint64 dRow = block.Row == -1 ? 0 : qint64(m_destRow) - srcRow1;
    const qint64 dCol = block.Col == -1 ? 0 : qint64(m_destCol) - srcCol1;

    // The destination cells that lie inside the grid; only these need a value.
    const qint64 dstRow1 = std::max<qint64>(srcRow1 + dRow, 1);
    const qint64 dstRow2 = std::min<qint64>(srcRow2 + dRow, MaxRows());
    const qint64 dstCol1 = std::max<qint64>(srcCol1 + dCol, 1);
    const qint64 dstCol2 = std::min<qint64>(srcCol2 + dCol, MaxCols());

    const qint64 clrRow1 = std::max<qint64>(srcRow1, 1);
    const qint64 clrRow2 = std::min<qint64>(srcRow2, MaxRows());
    const qint64 clrCol2 = std::min<qint64>(srcCol2, MaxCols());
    // Every cell the move writes: the source block inside the grid and the destination.
    if (CSpreadChanges *record = Recording()) {
        const auto keep = [&](qint64 row1, qint64 row2, qint64 col1, qint64 col2) {
            for (qint64 r = row1; r <= row2; ++r)
                for (qint64 c = col1; c <= col2; ++c)
                    record->KeepCell(int(c), int(r), m_rows[size_t(r - 1)][size_t(c)]);
        };
        keep(clrRow1, clrRow2, srcCol1, clrCol2);
        keep(dstRow1, dstRow2, dstCol1, dstCol2);
    }
    // Take the moving cells out first, so that overlapping blocks move correctly.
    std::vector<Cell> moving;
    if (dstRow1 <= dstRow2 && dstCol1 <= dstCol2) {
        moving.reserve(size_t((dstRow2 - dstRow1 + 1) * (dstCol2 - dstCol1 + 1)));
        for (qint64 r = dstRow1; r <= dstRow2; ++r) {
            for (qint64 c = dstCol1; c <= dstCol2; ++c) {
                Cell *source = CellAt(int(c - dCol), int(r - dRow));
                moving.push_back(source ? std::move(*source) : FreshCell(int(c)));
            }
        }
    }
    // Empty the whole source block inside the grid, then put the cells in place.
    for (qint64 r = clrRow1; r <= clrRow2; ++r) {
        RowCells &cells = m_rows[size_t(r - 1)];
        for (qint64 c = srcCol1; c <= clrCol2; ++c)
            cells[size_t(c)] = FreshCell(int(c));
    }
    auto next = moving.begin();
    for (qint64 r = dstRow1; r <= dstRow2 && next != moving.end(); ++r) {
        RowCells &cells = m_rows[size_t(r - 1)];
        for (qint64 c = dstCol1; c <= dstCol2; ++c)
            cells[size_t(c)] = std::move(*next++);
    }

    if (clrRow1 <= clrRow2 && srcCol1 <= clrCol2)
        NotifyCells(int(srcCol1), int(clrRow1), int(clrCol2), int(clrRow2));
    if (dstRow1 <= dstRow2 && dstCol1 <= dstCol2)
        NotifyCells(int(dstCol1), int(dstRow1), int(dstCol2), int(dstRow2));
}

// ---- taking changes back --------------------------------------------------------------

void CSpread::KeepColumns(int first, int last)
{
    if (CSpreadChanges *record = Recording())
        for (int c = first; c <= last; ++c)
            record->KeepColumn(c, m_cols[size_t(c)]);
}

CSpread::RowCells CSpread::TakeRow(int row)
{
    if (row < 1 || row > MaxRows())
        return {};
    if (m_reDraw)
        beginRemoveRows(QModelIndex(), row - 1, row - 1);
    RowCells cells = std::move(m_rows[size_t(row - 1)]);
    m_rows.erase(m_rows.begin() + (row - 1));
    if (m_reDraw)
        endRemoveRows();
    else
        m_pendingReset = true;
    return cells;
}

void CSpread::PutRow(int row, RowCells &&cells)
{
    row = std::clamp(row, 1, MaxRows() + 1);
    cells.resize(m_cols.size());
    if (m_reDraw)
        beginInsertRows(QModelIndex(), row - 1, row - 1);
    m_rows.insert(m_rows.begin() + (row - 1), std::move(cells));
    if (m_reDraw)
        endInsertRows();
    else
        m_pendingReset = true;
}

std::vector<CSpread::RowCells> CSpread::TakeTail(int count)
{
    count = std::clamp(count, 0, MaxRows());
    if (count == 0)
        return {};
    const int rows = MaxRows();
    if (m_reDraw)
        beginRemoveRows(QModelIndex(), rows - count, rows - 1);
    std::vector<RowCells> tail(
        std::make_move_iterator(m_rows.end() - count), std::make_move_iterator(m_rows.end()));
    m_rows.resize(size_t(rows - count));
    if (m_reDraw)
        endRemoveRows();
    else
        m_pendingReset = true;
    return tail;
}

void CSpread::PutTail(std::vector<RowCells> &&rows)
{
    if (rows.empty())
        return;
    const int old = MaxRows();
    if (m_reDraw)
        beginInsertRows(QModelIndex(), old, old + int(rows.size()) - 1);
    for (RowCells &cells : rows) {
        cells.resize(m_cols.size());
        m_rows.push_back(std::move(cells));
    }
    if (m_reDraw)
        endInsertRows();
    else
        m_pendingReset = true;
}

void CSpread::RestoreActiveCell(int col, int row)
{
    m_activeRow = std::clamp(row, 0, MaxRows());
    m_activeCol = std::clamp(col, 0, MaxCols());
    emit ActiveCellChanged(m_activeCol, m_activeRow);
    if (m_activeRow >= 1)
        Viewport().ShowCell(m_activeCol, m_activeRow);
}

// ---- direct access -----------------------------------------------------------------

QString CSpread::GetText(int col, int row) const
{
    return TextAt(col, row);
}

void CSpread::SetText(int col, int row, const QString &text)
{
    Cell *cell = CellAt(col, row);
    if (!cell)
        return;
    if (CSpreadChanges *record = Recording())
        record->KeepCell(col, row, *cell);
    if (col == 0) {
        cell->Text = text;
        NotifyHeader(Qt::Vertical, row, row);
        return;
    }
    WriteText(*cell, col, text);
    NotifyCells(col, row, col, row, textRoles());
}

int CSpread::GetListChoice(int col, int row) const
{
    const Cell *cell = CellAt(col, row);
    if (!cell || col == 0 || TypeOf(*cell, col).Kind != SpreadCellKind::List)
        return -1;
    return cell->Choice;
}

bool CSpread::ChooseItem(int col, int row, const QString &text)
{
    Cell *cell = col > 0 ? CellAt(col, row) : nullptr;
    if (!cell)
        return false;
    const CSpreadCellType &type = TypeOf(*cell, col);
    const qsizetype index = type.Kind == SpreadCellKind::List ? type.ListItems.indexOf(text) : -1;
    if (index < 0)
        return false;
    if (CSpreadChanges *record = Recording())
        record->KeepCell(col, row, *cell);
    Choose(*cell, type, int(index));
    NotifyCells(col, row, col, row, textAndChoiceRoles());
    return true;
}

// ---- model -------------------------------------------------------------------------

int CSpread::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : MaxRows();
}

int CSpread::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : MaxCols();
}

QVariant CSpread::data(const QModelIndex &index, int role) const
{
    // A view may ask while drawing is off and the size has changed: answer nothing.
    if (!index.isValid())
        return {};
    const int row = index.row() + 1;
    const int col = index.column() + 1;
    const Cell *cell = CellAt(col, row);
    if (!cell || col == 0)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return cell->Text;
    case Qt::ForegroundRole:
    case Qt::BackgroundRole:
        if (const auto colour = basGuiHooks::Hooks().Colour)
            return colour(role == Qt::ForegroundRole ? cell->Fore : cell->Back);
        return {};
    case ForeColorCodeRole:
        return cell->Fore;
    case BackColorCodeRole:
        return cell->Back;
    case CellMarkRole:
        return cell->Mark;
    case ListChoiceRole:
        return TypeOf(*cell, col).Kind == SpreadCellKind::List ? cell->Choice : -1;
    case ListItemsRole:
        return TypeOf(*cell, col).ListItems;
    case CellKindRole:
        return int(TypeOf(*cell, col).Kind);
    case CellMinRole:
        return TypeOf(*cell, col).Min;
    case CellMaxRole:
        return TypeOf(*cell, col).Max;
    case SpinStepRole:
        return TypeOf(*cell, col).SpinStep;
    case MaxLengthRole:
        return TypeOf(*cell, col).MaxLength;
    case MultiLineRole:
        return TypeOf(*cell, col).MultiLine;
    default:
        return {};
    }
}

bool CSpread::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid())
        return false;
    const int row = index.row() + 1;
    const int col = index.column() + 1;
    Cell *cell = CellAt(col, row);
    if (!cell || col == 0)
        return false;
    const CSpreadCellType &type = TypeOf(*cell, col);
    // What the user commits, with what the handlers of the edit do, is one step.
    const CGridAction action(*this, "VELMAR_UNDO_201");
    CSpreadChanges *record = Recording();
    if (role == ListChoiceRole) {
        const int choice = value.toInt();
        if (type.Kind != SpreadCellKind::List || choice < -1 || choice >= type.ListItems.size())
            return false;
        if (record)
            record->KeepCell(col, row, *cell);
        Choose(*cell, type, choice);
    } else if (role == Qt::EditRole || role == Qt::DisplayRole) {
        const QString text = value.toString();
        if (!type.Accepts(text))
            return false;
        if (record)
            record->KeepCell(col, row, *cell);
        WriteText(*cell, col, text);
    } else {
        return false;
    }
    NotifyCells(col, row, col, row, textAndChoiceRoles());
    emit CellEdited(col, row);
    return true;
}

QVariant CSpread::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal) {
        const int col = section + 1;
        if (col < 1 || col > MaxCols())
            return {};
        return m_cols[size_t(col)].Title;
    }
    const int row = section + 1;
    const Cell *label = CellAt(0, row);
    if (!label)
        return {};
    return label->Text.isEmpty() ? QString::number(row) : label->Text;
}

Qt::ItemFlags CSpread::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}
