#include "player/CPreview.h"

#include "core/CSpread.h"
#include "core/CSpreadCellKeeper.h"
#include "core/IPictureBox.h"
#include "core/IPlayerWindow.h"
#include "core/basConvert.h"
#include "player/CPlayer.h"
#include "player/basPreview.h"
#include "script/ITimingGrid.h"

#include <cmath>
#include <limits>

CPreview::CPreview() = default;
CPreview::~CPreview() = default;

void CPreview::Init(isub *document)
{
    m_document = document;
}

CPreviewLine *CPreview::Create(qint32 serial)
{
    const QString key = QString::number(serial);
    if (CPreviewLine *existing = m_lines.Find(key))
        return existing;
    auto line = std::make_unique<CPreviewLine>();
    line->Init(serial);
    line->m_parent = this;
    line->m_slot = qsizetype(m_slots.size());
    m_slots.push_back({ line->StartTime(), line->EndTime(), line.get(), false });
    m_lastSerial = serial;
    return m_lines.Add(key, std::move(line));
}

CPreviewLine *CPreview::Line(qint32 serial) const
{
    return m_lines.Find(QString::number(serial));
}

void CPreview::Delete(const QString &key)
{
    std::unique_ptr<CPreviewLine> gone = m_lines.Take(key);
    if (!gone)
        return;
    const qsizetype slot = gone->m_slot;
    if (slot >= 0 && slot < qsizetype(m_slots.size())) {
        m_slots.erase(m_slots.begin() + slot);
        for (size_t i = size_t(slot); i < m_slots.size(); ++i)
            m_slots[i].Line->m_slot = qsizetype(i);
    }
    gone->m_parent = nullptr;
}

void CPreview::Clear()
{
    m_slots.clear();
    m_lines.Clear();
}

void CPreview::SyncSlot(const CPreviewLine &line)
{
    if (line.m_slot < 0 || line.m_slot >= qsizetype(m_slots.size()))
        return;
    Slot &slot = m_slots[size_t(line.m_slot)];
    slot.Start = line.m_startTime;
    slot.End = line.m_endTime;
    slot.Shown = line.m_shown;
}

void CPreview::Refresh(double position)
{
    if (!m_picture)
        return;
    // A line that is neither current nor shown would do nothing with the position, so
    // it is not called at all. The table is walked by index: a line's own call updates
    // its entry, never the table's size.
    for (size_t i = 0; i < m_slots.size(); ++i) {
        const Slot &slot = m_slots[i];
        const bool inside = position > slot.Start && position < slot.End;
        const bool outside = position < slot.Start || position > slot.End;
        if (inside || (slot.Shown && outside))
            slot.Line->RefreshPreview(*m_picture, position);
    }
}

void CPreview::Tick(const IPlayerWindow *player)
{
    const CPlayer *document = player ? player->player() : nullptr;
    if (!document || !document->player())
        return;
    Refresh(document->CurrentPosition());
}

void CPreview::UpdateLineNumber()
{
    if (!m_grid)
        return;
    {
        const CSpreadCellKeeper keep(*m_grid);
        const int rows = m_grid->MaxRows();
        for (int row = 1; row <= rows; ++row) {
            const bool disabled = m_grid->GetCellMark(ITimingGrid::ColStartTime, row)
                || m_grid->GetCellMark(ITimingGrid::ColEndTime, row);
            if (CPreviewLine *line = RowLine(row)) {
                line->RealRowNumber = row;
                line->m_bDisableCheckTiming = disabled;
            }
        }
    }
    m_grid->SetActiveCell(1, 1);
}

void CPreview::ClearAllPreview()
{
    if (!m_picture)
        return;
    m_picture->Cls();
    for (Slot &slot : m_slots) {
        slot.Line->m_shown = false;
        slot.Shown = false;
    }
}

void CPreview::setPicture(IPictureBox *picture)
{
    m_picture = picture;
    PictureResized();
}

void CPreview::PictureResized()
{
    const double height = m_picture ? basConvert::Round(m_picture->ScaleHeight()) : 0;
    m_height
        = std::isfinite(height) && std::abs(height) < std::numeric_limits<qint32>::max() ? qint32(height) : 0;
}

void CPreview::AttachGrid(CSpread *grid)
{
    m_grid = grid;
    if (!grid)
        return;
    for (int row = 1; row <= grid->MaxRows(); ++row)
        if (const qint32 serial = RowSerial(row); serial > 0)
            Create(serial);
}

void CPreview::MarkChanged()
{
    if (m_document)
        m_document->setChanged(true);
}

namespace {

// The serial number cell as the grid writes it: plain decimal digits without a leading
// zero, which is exactly the key of the row's line.
bool IsPlainSerial(const QString &text)
{
    if (text.isEmpty() || text.size() > 10 || text.at(0) == u'0')
        return false;
    for (QChar c : text)
        if (c < u'0' || c > u'9')
            return false;
    return true;
}

} // namespace

qint32 CPreview::RowSerial(int row) const
{
    if (!m_grid || row < 1 || row > m_grid->MaxRows())
        return 0;
    const double value = basConvert::Val(m_grid->GetText(ITimingGrid::ColSerialNo, row));
    return value >= 1 && value <= std::numeric_limits<qint32>::max() ? qint32(value) : 0;
}

CPreviewLine *CPreview::RowLine(int row) const
{
    if (!m_grid || row < 1 || row > m_grid->MaxRows())
        return nullptr;
    // The common case looks the cell's text up as it stands.
    const QString text = m_grid->GetText(ITimingGrid::ColSerialNo, row);
    if (IsPlainSerial(text))
        return m_lines.Find(text);
    const qint32 serial = RowSerial(row);
    return serial > 0 ? Line(serial) : nullptr;
}

void CPreview::CreatePreviewLine(int row)
{
    basPreview::CreatePreviewLine(*this, row);
}

void CPreview::DeletePreviewLine(int row)
{
    basPreview::DeletePreviewLine(*this, row);
}

void CPreview::UpdatePreviewCell(int col, int row)
{
    basPreview::UpdatePreviewCell(*this, col, row);
}
