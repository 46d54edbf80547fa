#pragma once

#include "core/CSpread.h"
#include "core/ISpreadViewport.h"

#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>
#include <functional>

// Draws and edits the cells of a grid: list cells get a drop-down of their items, the
// others a line editor limited to the cell's length; a cell with its mark set carries a
// small blue corner.
class CSpreadDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(
        QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // The editor open at the moment, if any.
    QWidget *OpenEditor() const { return m_editor; }
    // Told of each editor made, so that its keys can be watched like the grid's.
    std::function<void(QWidget *)> EditorOpened;

private:
    mutable QPointer<QWidget> m_editor;
};

// The table a window shows a CSpread in. It is the grid's viewport: the grid scrolls,
// moves the cursor and opens the in-place editor through it, and the view reports the
// user's moves and selections back to the grid. Rows are of one fixed height, so that a
// grid of tens of thousands of rows lays out at once.
class CSpreadView : public QTableView, public ISpreadViewport
{
    Q_OBJECT

public:
    explicit CSpreadView(QWidget *parent = nullptr);
    ~CSpreadView() override;

    void SetSpread(CSpread *spread);
    CSpread *Spread() const { return m_spread; }

    // ISpreadViewport
    int TopRow() const override;
    void setTopRow(int row) override;
    bool IsVisible(int col, int row) const override;
    void ShowCell(int col, int row) override;
    void SetFocus() override;
    bool EditMode() const override;
    void setEditMode(bool on) override;
    int SelStart() const override;
    void setSelStart(int start) override;
    int SelLength() const override;
    void setSelLength(int length) override;
    QString SelText() const override;
    void setSelText(const QString &text) override;

signals:
    // Grid rows and columns (1-based).
    void RowHeaderDoubleClicked(int row);
    void RowHeaderClicked(int row);
    void CellClicked(int col, int row);
    void CellDoubleClicked(int col, int row);
    void EditEnded(int col, int row);
    // An in-place editor was opened; its key events belong to the grid.
    void EditorOpened(QWidget *editor);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void syncHiddenColumns();
    void followActiveCell(int col, int row);
    class QLineEdit *lineEditor() const;

    QPointer<CSpread> m_spread;
    CSpreadDelegate *m_delegate = nullptr;
    bool m_syncing = false;
};
