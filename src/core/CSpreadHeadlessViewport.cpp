#include "core/CSpreadHeadlessViewport.h"

#include "core/CSpread.h"

#include <algorithm>

int CSpreadHeadlessViewport::TopRow() const
{
    return std::clamp(m_topRow, 1, std::max(1, m_grid.MaxRows()));
}

void CSpreadHeadlessViewport::setTopRow(int row)
{
    m_topRow = std::clamp(row, 1, std::max(1, m_grid.MaxRows()));
}

bool CSpreadHeadlessViewport::IsVisible(int col, int row) const
{
    if (row < 1 || row > m_grid.MaxRows() || col < 0 || col > m_grid.MaxCols())
        return false;
    const int top = TopRow();
    if (row < top || row - top >= m_visibleRows)
        return false;
    return !m_grid.GetColHidden(col);
}

void CSpreadHeadlessViewport::ShowCell(int, int row)
{
    const int top = TopRow();
    if (row < top)
        setTopRow(row);
    else if (row - top >= m_visibleRows)
        setTopRow(row - m_visibleRows + 1);
}

QString CSpreadHeadlessViewport::ActiveText() const
{
    return m_grid.GetText(m_grid.ActiveCol(), m_grid.ActiveRow());
}

void CSpreadHeadlessViewport::setEditMode(bool on)
{
    const bool canEdit = m_grid.ActiveRow() >= 1 && m_grid.ActiveCol() >= 1;
    m_editMode = on && canEdit;
    // A fresh editor has its caret at the end of the text, nothing selected.
    m_selStart = m_editMode ? int(ActiveText().size()) : 0;
    m_selLength = 0;
}

int CSpreadHeadlessViewport::SelStart() const
{
    return m_editMode ? std::min(m_selStart, int(ActiveText().size())) : 0;
}

void CSpreadHeadlessViewport::setSelStart(int start)
{
    if (!m_editMode)
        return;
    m_selStart = std::clamp(start, 0, int(ActiveText().size()));
    m_selLength = 0;
}

int CSpreadHeadlessViewport::SelLength() const
{
    if (!m_editMode)
        return 0;
    const int size = int(ActiveText().size());
    const int start = std::min(m_selStart, size);
    return std::clamp(m_selLength, 0, size - start);
}

void CSpreadHeadlessViewport::setSelLength(int length)
{
    if (!m_editMode)
        return;
    m_selLength = std::clamp(length, 0, int(ActiveText().size()) - SelStart());
}

QString CSpreadHeadlessViewport::SelText() const
{
    return ActiveText().mid(SelStart(), SelLength());
}

void CSpreadHeadlessViewport::setSelText(const QString &text)
{
    if (!m_editMode)
        return;
    const QString old = ActiveText();
    const int start = SelStart();
    QString updated = old;
    updated.replace(start, SelLength(), text);
    m_grid.SetText(m_grid.ActiveCol(), m_grid.ActiveRow(), updated);
    m_selStart = start + int(text.size());
    m_selLength = 0;
}
