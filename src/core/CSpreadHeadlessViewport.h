#pragma once

#include "core/ISpreadViewport.h"

class CSpread;

// The viewport of a grid that no window shows: a fixed number of rows in view from
// TopRow, every column that is not hidden in view, and an editor that works directly
// on the text of the active cell.
class CSpreadHeadlessViewport : public ISpreadViewport
{
public:
    explicit CSpreadHeadlessViewport(CSpread &grid)
        : m_grid(grid)
    { }

    int VisibleRows() const { return m_visibleRows; }
    void setVisibleRows(int rows) { m_visibleRows = rows < 1 ? 1 : rows; }
    // How often the grid was given the keyboard.
    int FocusCount() const { return m_focusCount; }

    int TopRow() const override;
    void setTopRow(int row) override;
    bool IsVisible(int col, int row) const override;
    void ShowCell(int col, int row) override;
    void SetFocus() override { ++m_focusCount; }

    bool EditMode() const override { return m_editMode; }
    void setEditMode(bool on) override;
    int SelStart() const override;
    void setSelStart(int start) override;
    int SelLength() const override;
    void setSelLength(int length) override;
    QString SelText() const override;
    void setSelText(const QString &text) override;

private:
    QString ActiveText() const;

    CSpread &m_grid;
    int m_topRow = 1;
    int m_visibleRows = 20;
    int m_focusCount = 0;
    bool m_editMode = false;
    int m_selStart = 0;
    int m_selLength = 0;
};
