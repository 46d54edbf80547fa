#pragma once

#include "core/CSpreadBlock.h"
#include "core/CSpreadCellType.h"
#include "core/CSpreadHeadlessViewport.h"
#include "core/ISpreadJournal.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QList>
#include <QString>
#include <vector>

class ISpreadViewport;

// The grid of the system's windows (the timing grid, the fault list of the check, the
// quick tables of a translation, the argument grids of the effects).
//
// Rows count from 1 to MaxRows, columns from 1 to MaxCols; row 0 holds the column titles
// and column 0 the row labels. Reads and writes go to the current cell (Row, Col), which
// is not the active cell where the user's cursor stands: setting Row and Col moves no
// cursor. A Row or Col of -1 makes every row or column the target of the setters of
// text, kinds, list items and colours, and also sets the default of the column (or of
// all columns) for rows made later.
//
// As a Qt table model, model row r is grid row r + 1 and model column c is grid column
// c + 1; the row labels and titles are its header data. While ReDraw is off the model
// sends no signal at all, and turning ReDraw back on after changes sends one reset.
//
// A grid given a journal reports every change of its content (cells, column defaults,
// rows) with the old state before making it, so that an action can be taken back. The
// titles, the hidden state of columns, the selection and the cursor are presentation and
// are not reported; a change of the column count cannot be taken back.
class CSpread : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role {
        CellMarkRole = Qt::UserRole + 1, // bool
        ListItemsRole, // QStringList of a list cell
        ListChoiceRole, // int, -1 for none
        CellKindRole, // int of SpreadCellKind
        CellMinRole, // double
        CellMaxRole, // double
        SpinStepRole, // double
        MaxLengthRole, // int, 0 for no limit
        MultiLineRole, // bool
        ForeColorCodeRole, // the stored colour number (RGB or system code)
        BackColorCodeRole,
    };

    // Colours are numbers with red in the low byte, or system colour codes with the high
    // bit set and the system colour's index in the low byte.
    static constexpr quint32 SystemColorFlag = 0x80000000u;
    static constexpr quint32 ColorWindow = 0x80000005u;
    static constexpr quint32 ColorWindowText = 0x80000008u;
    static constexpr quint32 ColorButtonText = 0x80000012u;
    static QColor ToQColor(quint32 color);

    // Size limits, so that a wrong number can never exhaust memory.
    static constexpr int MaxRowsLimit = 1000000;
    static constexpr int MaxColsLimit = 1000;

    explicit CSpread(QObject *parent = nullptr);
    ~CSpread() override;

    // Current cell and second corner of a block.
    int Row() const { return m_row; }
    void setRow(int row) { m_row = row; }
    int Col() const { return m_col; }
    void setCol(int col) { m_col = col; }
    int Row2() const { return m_row2; }
    void setRow2(int row) { m_row2 = row; }
    int Col2() const { return m_col2; }
    void setCol2(int col) { m_col2 = col; }

    // Size. Raising adds empty rows (columns) at the end, lowering removes them there.
    int MaxRows() const { return static_cast<int>(m_rows.size()); }
    void setMaxRows(int rows);
    int MaxCols() const { return static_cast<int>(m_cols.size()) - 1; }
    void setMaxCols(int cols);

    // Text of the current cell; row 0 is the column title, column 0 the row label.
    // Writing to a list cell also chooses the first item equal to the text, or none.
    QString Text() const;
    void setText(const QString &text);
    // The number in the current cell: the leading number of its text, 0 when empty;
    // in a list cell the chosen item. Writing a number stores its plain decimal text
    // (a whole number in an integer cell), or chooses that item of a list cell.
    double Value() const;
    void setValue(double value);

    // The cursor.
    int ActiveRow() const { return m_activeRow; }
    int ActiveCol() const { return m_activeCol; }
    // Makes the current cell the active cell and scrolls to it.
    void ActivateCell();
    // Where a view reports the user's moves of the cursor.
    void SetActiveCell(int col, int row);
    // Puts the cursor back where an undo step found or left it: the views follow, but no
    // cell is left (its handlers belong to the user's moves).
    void RestoreActiveCell(int col, int row);

    quint32 ForeColor() const;
    void setForeColor(quint32 color);
    quint32 BackColor() const;
    void setBackColor(quint32 color);
    // The per-cell boolean display attribute (shown by views, read back by logic).
    bool CellMark() const;
    void setCellMark(bool mark);

    bool ReDraw() const { return m_reDraw; }
    void setReDraw(bool on);

    // Hidden state of the current column (Col -1: of all columns).
    bool ColHidden() const;
    void setColHidden(bool hidden);

    // Kind and range of the current cell (the setter follows the -1 rules).
    CSpreadCellType CellType() const;
    void setCellType(const CSpreadCellType &type);

    // List cells. ListItems is tab-separated; setting it makes the target cells list
    // cells with the first item chosen (or none when the list is empty).
    QString ListItems() const;
    void setListItems(const QString &tabSeparated);
    int ListCount() const;
    int ListIndex() const { return m_listIndex; }
    void setListIndex(int index) { m_listIndex = index; }
    // The item at ListIndex of the current cell's list, "" if there is none.
    QString ListString() const;
    // The chosen item, -1 for none; choosing -1 empties the cell, an index out of the
    // list is ignored.
    int ListChoice() const;
    void setListChoice(int index);

    // The in-place editor of the active cell (through the viewport).
    bool EditMode() const;
    void setEditMode(bool on);
    int SelStart() const;
    void setSelStart(int start);
    int SelLength() const;
    void setSelLength(int length);
    QString SelText() const;
    void setSelText(const QString &text);

    // The selection as the user made it. A block of one cell is a block too; a grid
    // with only a cursor has no block.
    bool IsBlockSelected() const { return !m_selection.isEmpty(); }
    // Corners of the most recent block (the active cell when there is none).
    int SelBlockRow() const;
    int SelBlockRow2() const;
    int SelBlockCol() const;
    int SelBlockCol2() const;
    void SetSelection(const QList<CSpreadBlock> &blocks);
    void AddSelection(const CSpreadBlock &block);
    void ClearSelection();
    const QList<CSpreadBlock> &Selection() const { return m_selection; }

    // Gathers the selection into blocks; MultiSelIndex moves Row, Col, Row2, Col2 to
    // one of them (0-based).
    void GetMultiSelection();
    int MultiSelCount() const { return static_cast<int>(m_gathered.size()); }
    int MultiSelIndex() const { return m_multiSelIndex; }
    void setMultiSelIndex(int index);

    // A new empty row at the current row; the last row falls off. MaxRows stays.
    void InsertRow();
    // The current row goes; an empty row comes in at the end. MaxRows stays.
    void DeleteRow();
    // Empties the text (and the list choice) of the block Row, Col, Row2, Col2.
    void ClearBlock();
    // Moves the cells of the block Row, Col, Row2, Col2 (text, choice, colours, mark,
    // kind) so that its first corner comes to DestRow, DestCol. Cells of the block
    // beyond the grid move in as empty cells; cells moved out of the grid are dropped;
    // cells of the block that nothing moves into become empty.
    void MoveBlock();
    int DestRow() const { return m_destRow; }
    void setDestRow(int row) { m_destRow = row; }
    int DestCol() const { return m_destCol; }
    void setDestCol(int col) { m_destCol = col; }

    int TopRow() const;
    void setTopRow(int row);
    bool IsVisible(int col, int row) const;
    void SetFocus();

    // The viewport of a window showing the grid, or nullptr for the headless one.
    // The grid does not own it.
    void SetViewport(ISpreadViewport *viewport) { m_viewport = viewport; }
    ISpreadViewport &Viewport();
    const ISpreadViewport &Viewport() const;
    CSpreadHeadlessViewport &HeadlessViewport() { return m_headless; }

    // The journal that hears the changes (not owned; nullptr: none are recorded).
    void SetJournal(ISpreadJournal *journal) { m_journal = journal; }
    ISpreadJournal *Journal() const { return m_journal; }

    // Direct access to one cell without moving the current cell.
    QString GetText(int col, int row) const;
    // The same by reference (an empty string outside the grid), valid until the cell
    // changes: reading a whole grid this way copies no string.
    const QString &TextAt(int col, int row) const;
    void SetText(int col, int row, const QString &text);
    int GetListChoice(int col, int row) const;
    // Chooses the first item of a list cell equal to the text; with no such item (or no
    // list) the cell keeps its choice and false is the result.
    bool ChooseItem(int col, int row, const QString &text);
    quint32 GetForeColor(int col, int row) const;
    quint32 GetBackColor(int col, int row) const;
    bool GetCellMark(int col, int row) const;
    bool GetColHidden(int col) const;

    // QAbstractTableModel
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

signals:
    void ActiveCellChanged(int col, int row);
    // The cursor is leaving a cell: sent while the old cell is still the active one.
    void LeaveCell(int col, int row, int newCol, int newRow);
    void ColumnHiddenChanged(int col, bool hidden);
    // A user committed a text through the model (not sent for the program's writes).
    void CellEdited(int col, int row);

private:
    friend class CSpreadChanges;

    struct Cell
    {
        QString Text;
        quint32 Fore = ColorWindowText;
        quint32 Back = ColorWindow;
        qint32 Choice = -1;
        qint32 Type = -1; // index into m_types, -1: the column's kind
        bool Mark = false;
    };
    using RowCells = std::vector<Cell>; // index 0 is the row label
    struct Column
    {
        QString Title;
        qint32 Type = 0;
        quint32 Fore = ColorWindowText;
        quint32 Back = ColorWindow;
        bool Hidden = false;
    };
    struct Range
    {
        int first;
        int last;
        bool empty() const { return first > last; }
    };

    bool IsCell(int col, int row) const;
    const Cell *CellAt(int col, int row) const;
    Cell *CellAt(int col, int row);
    const CSpreadCellType &TypeOf(const Cell &cell, int col) const;
    qint32 Intern(const CSpreadCellType &type);
    Cell FreshCell(int col) const;
    const RowCells &FreshRow() const;
    void ColumnsChanged() { m_freshRowValid = false; }
    void WriteText(Cell &cell, int col, const QString &text);
    void Choose(Cell &cell, const CSpreadCellType &type, int index);

    // The target rows and columns of a setter, clipped to the grid.
    Range TargetRows() const;
    Range TargetCols() const;
    template <typename F> void ForEachTarget(F &&apply, const QList<int> &roles);

    // Signals, or a note for the reset when drawing is off.
    void NotifyCells(int col1, int row1, int col2, int row2, const QList<int> &roles = {});
    void NotifyHeader(Qt::Orientation orientation, int first, int last);

    // The record of the open action when a journal hears this grid.
    CSpreadChanges *Recording() const { return m_journal ? m_journal->Recording() : nullptr; }
    // Keeps the defaults of the columns first..last before they change.
    void KeepColumns(int first, int last);
    // What taking a change back does to the rows, with the model's signals: a row out of
    // or into the middle, rows off or onto the end.
    RowCells TakeRow(int row);
    void PutRow(int row, RowCells &&cells);
    std::vector<RowCells> TakeTail(int count);
    void PutTail(std::vector<RowCells> &&rows);

    std::vector<RowCells> m_rows;
    std::vector<Column> m_cols; // index 0 is the label column
    std::vector<CSpreadCellType> m_types;
    mutable RowCells m_freshRow;
    mutable bool m_freshRowValid = false;
    QString m_corner;

    int m_row = 0;
    int m_col = 0;
    int m_row2 = 0;
    int m_col2 = 0;
    int m_activeRow = 0;
    int m_activeCol = 0;
    int m_destRow = 0;
    int m_destCol = 0;
    int m_listIndex = 0;
    bool m_reDraw = true;
    bool m_pendingReset = false;

    QList<CSpreadBlock> m_selection;
    QList<CSpreadBlock> m_gathered;
    int m_multiSelIndex = -1;

    CSpreadHeadlessViewport m_headless;
    ISpreadViewport *m_viewport = nullptr;
    ISpreadJournal *m_journal = nullptr;
};

// The cell accessors are inline: loading and storing a grid reads and writes every cell.
inline bool CSpread::IsCell(int col, int row) const
{
    return row >= 1 && size_t(row) <= m_rows.size() && col >= 0 && size_t(col) < m_cols.size();
}

inline const CSpread::Cell *CSpread::CellAt(int col, int row) const
{
    return IsCell(col, row) ? &m_rows[size_t(row - 1)][size_t(col)] : nullptr;
}

inline CSpread::Cell *CSpread::CellAt(int col, int row)
{
    return IsCell(col, row) ? &m_rows[size_t(row - 1)][size_t(col)] : nullptr;
}

inline const QString &CSpread::TextAt(int col, int row) const
{
    static const QString none;
    const Cell *cell = CellAt(col, row);
    return cell ? cell->Text : none;
}

inline quint32 CSpread::GetForeColor(int col, int row) const
{
    const Cell *cell = CellAt(col, row);
    return cell ? cell->Fore : ColorWindowText;
}

inline quint32 CSpread::GetBackColor(int col, int row) const
{
    const Cell *cell = CellAt(col, row);
    return cell ? cell->Back : ColorWindow;
}

inline bool CSpread::GetCellMark(int col, int row) const
{
    const Cell *cell = CellAt(col, row);
    return cell && cell->Mark;
}
