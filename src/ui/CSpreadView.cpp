#include "ui/CSpreadView.h"

#include "core/CSpread.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>

// ---- delegate ------------------------------------------------------------------------

QWidget *CSpreadDelegate::createEditor(
    QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QWidget *editor = nullptr;
    if (index.data(CSpread::CellKindRole).toInt() == int(SpreadCellKind::List)) {
        auto *combo = new QComboBox(parent);
        combo->addItems(index.data(CSpread::ListItemsRole).toStringList());
        editor = combo;
    } else {
        auto *line = new QLineEdit(parent);
        const int maxLength = index.data(CSpread::MaxLengthRole).toInt();
        if (maxLength > 0)
            line->setMaxLength(maxLength);
        line->setFrame(false);
        editor = line;
    }
    Q_UNUSED(option);
    m_editor = editor;
    if (EditorOpened)
        EditorOpened(editor);
    return editor;
}

void CSpreadDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    if (auto *combo = qobject_cast<QComboBox *>(editor)) {
        combo->setCurrentIndex(index.data(CSpread::ListChoiceRole).toInt());
        return;
    }
    QStyledItemDelegate::setEditorData(editor, index);
}

void CSpreadDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    if (auto *combo = qobject_cast<QComboBox *>(editor)) {
        if (combo->currentIndex() != index.data(CSpread::ListChoiceRole).toInt())
            model->setData(index, combo->currentIndex(), CSpread::ListChoiceRole);
        return;
    }
    if (auto *line = qobject_cast<QLineEdit *>(editor)) {
        // An unchanged text is no edit: nothing is reported and no flag is set.
        if (line->text() != index.data(Qt::EditRole).toString())
            model->setData(index, line->text(), Qt::EditRole);
        return;
    }
    QStyledItemDelegate::setModelData(editor, model, index);
}

void CSpreadDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (!index.data(CSpread::CellMarkRole).toBool())
        return;
    const QRect r = option.rect;
    const int side = qMin(6, r.height() / 2);
    const QPoint corner[3] = { r.topLeft(), r.topLeft() + QPoint(side, 0), r.topLeft() + QPoint(0, side) };
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::blue);
    painter->drawPolygon(corner, 3);
    painter->restore();
}

// ---- view ----------------------------------------------------------------------------

CSpreadView::CSpreadView(QWidget *parent)
    : QTableView(parent)
{
    m_delegate = new CSpreadDelegate(this);
    m_delegate->EditorOpened = [this](QWidget *editor) { emit EditorOpened(editor); };
    setItemDelegate(m_delegate);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
        | QAbstractItemView::AnyKeyPressed);
    setWordWrap(false);
    QHeaderView *rows = verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(fontMetrics().height() + 6);
    rows->setMinimumSectionSize(rows->defaultSectionSize());
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setStretchLastSection(false);
    connect(rows, &QHeaderView::sectionDoubleClicked, this,
        [this](int section) { emit RowHeaderDoubleClicked(section + 1); });
    connect(rows, &QHeaderView::sectionClicked, this,
        [this](int section) { emit RowHeaderClicked(section + 1); });
    connect(this, &QAbstractItemView::clicked, this,
        [this](const QModelIndex &i) { emit CellClicked(i.column() + 1, i.row() + 1); });
    connect(this, &QAbstractItemView::doubleClicked, this,
        [this](const QModelIndex &i) { emit CellDoubleClicked(i.column() + 1, i.row() + 1); });
}

CSpreadView::~CSpreadView()
{
    if (m_spread)
        m_spread->SetViewport(nullptr);
}

void CSpreadView::SetSpread(CSpread *spread)
{
    if (m_spread) {
        m_spread->SetViewport(nullptr);
        disconnect(m_spread, nullptr, this, nullptr);
    }
    m_spread = spread;
    setModel(spread);
    if (!spread)
        return;
    spread->SetViewport(this);
    connect(spread, &CSpread::ColumnHiddenChanged, this,
        [this](int col, bool hidden) { setColumnHidden(col - 1, hidden); });
    connect(spread, &QAbstractItemModel::modelReset, this, &CSpreadView::syncHiddenColumns);
    connect(spread, &CSpread::ActiveCellChanged, this, &CSpreadView::followActiveCell);
    syncHiddenColumns();
}

void CSpreadView::syncHiddenColumns()
{
    if (!m_spread)
        return;
    for (int col = 1; col <= m_spread->MaxCols(); ++col)
        setColumnHidden(col - 1, m_spread->GetColHidden(col));
    followActiveCell(m_spread->ActiveCol(), m_spread->ActiveRow());
}

// The grid moved its cursor: the view's cursor follows without reporting back.
void CSpreadView::followActiveCell(int col, int row)
{
    if (!m_spread || m_syncing || !selectionModel())
        return;
    m_syncing = true;
    if (row >= 1 && col >= 1)
        selectionModel()->setCurrentIndex(model()->index(row - 1, col - 1), QItemSelectionModel::NoUpdate);
    m_syncing = false;
}

void CSpreadView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    if (m_syncing || !m_spread || !current.isValid())
        return;
    m_syncing = true;
    m_spread->SetActiveCell(current.column() + 1, current.row() + 1);
    m_syncing = false;
    // A handler of the move may have sent the cursor elsewhere (a new row, a refusal).
    const int col = m_spread->ActiveCol();
    const int row = m_spread->ActiveRow();
    if (col >= 1 && row >= 1 && (col != current.column() + 1 || row != current.row() + 1))
        followActiveCell(col, row);
}

void CSpreadView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    if (!m_spread)
        return;
    QList<CSpreadBlock> blocks;
    const int rows = model()->rowCount();
    const int cols = model()->columnCount();
    for (const QItemSelectionRange &range : selectionModel()->selection()) {
        CSpreadBlock b { range.top() + 1, range.left() + 1, range.bottom() + 1, range.right() + 1 };
        if (range.left() == 0 && range.right() == cols - 1)
            b.Col = b.Col2 = -1;
        if (range.top() == 0 && range.bottom() == rows - 1)
            b.Row = b.Row2 = -1;
        blocks.append(b);
    }
    m_spread->SetSelection(blocks);
}

void CSpreadView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    const QModelIndex at = currentIndex();
    QTableView::closeEditor(editor, hint);
    if (at.isValid())
        emit EditEnded(at.column() + 1, at.row() + 1);
}

int CSpreadView::TopRow() const
{
    const int row = rowAt(0);
    return row < 0 ? 1 : row + 1;
}

void CSpreadView::setTopRow(int row)
{
    if (row < 1)
        return;
    verticalScrollBar()->setValue(row - 1);
}

bool CSpreadView::IsVisible(int col, int row) const
{
    if (!model() || row < 1 || col < 0 || row > model()->rowCount() || col > model()->columnCount())
        return false;
    if (col >= 1 && isColumnHidden(col - 1))
        return false;
    const QRect area = viewport()->rect();
    const int y = rowViewportPosition(row - 1);
    if (y < 0 || y + rowHeight(row - 1) > area.height())
        return false;
    if (col == 0)
        return true;
    const int x = columnViewportPosition(col - 1);
    return x >= 0 && x < area.width();
}

void CSpreadView::ShowCell(int col, int row)
{
    if (!model() || row < 1 || row > model()->rowCount())
        return;
    followActiveCell(col, row);
    const int column = col >= 1 ? col - 1 : columnAt(0);
    scrollTo(model()->index(row - 1, qMax(column, 0)));
}

void CSpreadView::SetFocus()
{
    setFocus(Qt::OtherFocusReason);
}

bool CSpreadView::EditMode() const
{
    return state() == QAbstractItemView::EditingState;
}

void CSpreadView::setEditMode(bool on)
{
    if (on == EditMode())
        return;
    if (on) {
        edit(currentIndex());
        return;
    }
    if (QWidget *editor = m_delegate->OpenEditor()) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

QLineEdit *CSpreadView::lineEditor() const
{
    return EditMode() ? qobject_cast<QLineEdit *>(m_delegate->OpenEditor()) : nullptr;
}

int CSpreadView::SelStart() const
{
    QLineEdit *line = lineEditor();
    if (!line)
        return 0;
    return line->hasSelectedText() ? line->selectionStart() : line->cursorPosition();
}

void CSpreadView::setSelStart(int start)
{
    if (QLineEdit *line = lineEditor())
        line->setCursorPosition(qBound(0, start, int(line->text().size())));
}

int CSpreadView::SelLength() const
{
    QLineEdit *line = lineEditor();
    return line ? int(line->selectedText().size()) : 0;
}

void CSpreadView::setSelLength(int length)
{
    if (QLineEdit *line = lineEditor()) {
        const int start = line->cursorPosition();
        line->setSelection(start, qMax(0, length));
    }
}

QString CSpreadView::SelText() const
{
    QLineEdit *line = lineEditor();
    return line ? line->selectedText() : QString();
}

void CSpreadView::setSelText(const QString &text)
{
    if (QLineEdit *line = lineEditor())
        line->insert(text);
}
