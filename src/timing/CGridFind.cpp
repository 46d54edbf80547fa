#include "timing/CGridFind.h"

#include "core/CGridAction.h"
#include "core/CSpread.h"
#include "core/IPrompt.h"
#include "core/basConvert.h"

#include <algorithm>

namespace {

QString &KeptFind()
{
    static QString text;
    return text;
}

QString &KeptReplace()
{
    static QString text;
    return text;
}

} // namespace

QString CGridFind::KeptFindText()
{
    return KeptFind();
}

void CGridFind::setKeptFindText(const QString &text)
{
    KeptFind() = text;
}

QString CGridFind::KeptReplaceText()
{
    return KeptReplace();
}

void CGridFind::setKeptReplaceText(const QString &text)
{
    KeptReplace() = text;
}

void CGridFind::Init(CSpread *grid)
{
    m_grid = grid;
    m_enabled = !KeptFind().isEmpty();
    const bool selected = grid && grid->SelLength() > 0;
    setTxtFind(selected ? grid->SelText() : KeptFind());
    m_replace = KeptReplace();
}

void CGridFind::setTxtFind(const QString &text)
{
    m_find = text;
    m_enabled = !text.isEmpty();
    KeptFind() = text;
}

bool CGridFind::SearchRow(int row)
{
    CSpread &grid = *m_grid;
    if (row != LastRow) {
        LastPos = 0;
        LastRow = row;
    }
    grid.setRow(row);
    grid.ActivateCell();
    // Read by address: the handlers of the cursor's move may have moved the current cell.
    const qsizetype at = basConvert::InStr(qsizetype(LastPos) + 1, grid.GetText(FindColumn, row), m_find);
    if (at <= 0)
        return false;
    grid.SetFocus();
    grid.setEditMode(true);
    grid.setSelStart(int(at - 1));
    grid.setSelLength(int(m_find.size()));
    LastPos = qint32(at);
    return true;
}

bool CGridFind::cmdFind()
{
    if (!m_grid || m_find.isEmpty())
        return false;
    try {
        CSpread &grid = *m_grid;
        const int rows = grid.MaxRows();
        // A current row outside the grid starts the search at its nearer end.
        const int start = std::clamp(grid.Row(), 1, std::max(rows, 1));
        grid.setCol(FindColumn);
        for (int row = start; row <= rows; ++row)
            if (SearchRow(row))
                return true;
        for (int row = 1; row <= std::min(start, rows); ++row)
            if (SearchRow(row))
                return true;
        MsgBox(QStringLiteral("没有发现相同文字"), MsgBoxStyle::OKOnly, QStringLiteral("提示"));
        LastPos = 0;
    } catch (...) { }
    return false;
}

void CGridFind::cmdReplace()
{
    if (!m_grid || LastPos == 0)
        return;
    CSpread &grid = *m_grid;
    if (LastRow < 1 || LastRow > grid.MaxRows())
        return;
    const CGridAction action(grid, "VELMAR_UNDO_211");
    grid.setRow(LastRow);
    grid.setCol(FindColumn);
    const QString text = grid.Text();
    const qsizetype length = grid.SelLength();
    grid.setText(basConvert::Left(text, LastPos) + m_replace + basConvert::Mid(text, LastPos + length));
}

void CGridFind::cmdReplaceAll()
{
    if (!m_grid || m_find.isEmpty())
        return;
    CSpread &grid = *m_grid;
    const CGridAction action(grid, "VELMAR_UNDO_212");
    const bool drawing = grid.ReDraw();
    grid.setReDraw(false);
    grid.setCol(FindColumn);
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        QString text = grid.GetText(FindColumn, row);
        if (!text.contains(m_find))
            continue;
        grid.setRow(row);
        grid.setText(text.replace(m_find, m_replace));
    }
    grid.setReDraw(drawing);
}

void CGridFind::Close()
{
    KeptFind() = m_find;
    KeptReplace() = m_replace;
    if (BeforeClose)
        BeforeClose();
}
