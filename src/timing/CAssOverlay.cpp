#include "timing/CAssOverlay.h"

#include "core/CSpread.h"
#include "core/VelmarError.h"
#include "core/basMessage.h"
#include "formats/CTiming.h"
#include "script/CFonts.h"
#include "script/CSSAContentLine.h"
#include "script/CSubInfo.h"
#include "timing/CTimingGrid.h"

#include <QTimer>
#include <algorithm>

namespace {

// Beyond this many rows told of at once, one pass over all rows is cheaper than a
// lookup per row.
constexpr int kRowsForFullScan = 64;

} // namespace

CAssOverlay::CAssOverlay(QObject *parent)
    : QObject(parent)
{
    m_lines.Init();
    m_lines.ScriptType = ScriptType::ASS;
    m_lines.SaveOption = 255;
}

CAssOverlay::~CAssOverlay()
{
    Detach();
}

void CAssOverlay::Detach()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_grid = nullptr;
    m_rowSerials.clear();
    m_made.clear();
    m_faulty.clear();
    m_dirtyRows.clear();
    m_fullScan = false;
    m_renderer.ClearEvents();
}

void CAssOverlay::Attach(CTimingGrid *grid)
{
    Detach();
    m_grid = grid;
    if (!m_grid)
        return;
    m_effects = CTimingGrid::EffectItems();
    const CSpread *spread = &m_grid->Spread();
    m_connections << connect(spread, &CSpread::dataChanged, this,
        [this](const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) {
            OnDataChanged(topLeft.row() + 1, bottomRight.row() + 1, roles);
        });
    for (auto signal : { &CSpread::rowsInserted, &CSpread::rowsRemoved, &CSpread::columnsInserted,
             &CSpread::columnsRemoved })
        m_connections << connect(spread, signal, this, &CAssOverlay::OnStructureChanged);
    m_connections << connect(spread, &CSpread::rowsMoved, this, &CAssOverlay::OnStructureChanged);
    m_connections << connect(spread, &CSpread::modelReset, this, &CAssOverlay::OnStructureChanged);
    m_connections << connect(spread, &CSpread::layoutChanged, this, &CAssOverlay::OnStructureChanged);
    m_connections << connect(spread, &QObject::destroyed, this, &CAssOverlay::Detach);
    m_fullScan = true;
    BringInStep();
}

// ---- what the grid tells ------------------------------------------------------------

void CAssOverlay::OnDataChanged(int firstRow, int lastRow, const QList<int> &roles)
{
    // Colours and marks do not show in the script.
    if (!roles.isEmpty() && !roles.contains(Qt::DisplayRole) && !roles.contains(Qt::EditRole)
        && !roles.contains(CSpread::ListChoiceRole))
        return;
    if (!m_fullScan) {
        if (lastRow - firstRow >= kRowsForFullScan
            || m_dirtyRows.size() + size_t(lastRow - firstRow) >= size_t(kRowsForFullScan)) {
            m_fullScan = true;
            m_dirtyRows.clear();
        } else {
            for (int row = firstRow; row <= lastRow; ++row)
                m_dirtyRows.push_back(row);
        }
    }
    Schedule();
}

void CAssOverlay::OnStructureChanged()
{
    // Rows moved: the rows told of before no longer name the same lines.
    m_fullScan = true;
    m_dirtyRows.clear();
    Schedule();
}

void CAssOverlay::Schedule()
{
    if (m_scheduled)
        return;
    m_scheduled = true;
    QTimer::singleShot(0, this, [this] {
        m_scheduled = false;
        Flush();
    });
}

// ---- bringing the track in step -----------------------------------------------------

QString CAssOverlay::AssHead(CTiming &document)
{
    if (!document.ScriptInfo || !document.Fonts)
        return {};
    CSubInfo &info = *document.ScriptInfo;
    CFonts &fonts = *document.Fonts;
    const ScriptType infoType = info.ScriptType();
    const ScriptType fontsType = fonts.ScriptType;
    info.setScriptType(ScriptType::ASS);
    fonts.ScriptType = ScriptType::ASS;
    QString head;
    try {
        head = info.Content() + QStringLiteral("\r\n") + fonts.Content();
    } catch (...) {
        head.clear();
    }
    info.setScriptType(infoType);
    fonts.ScriptType = fontsType;
    return head;
}

bool CAssOverlay::Flush()
{
    const bool changed = BringInStep();
    if (changed)
        emit TrackChanged();
    return changed;
}

bool CAssOverlay::BringInStep()
{
    if (!m_grid)
        return false;
    bool changed = false;
    if (CTiming *document = m_grid->Document()) {
        const QByteArray before = m_renderer.Header();
        m_renderer.SetHeader(AssHead(*document));
        changed = before != m_renderer.Header();
    }
    if (m_fullScan) {
        changed |= FullScan();
    } else if (!m_dirtyRows.empty()) {
        std::sort(m_dirtyRows.begin(), m_dirtyRows.end());
        m_dirtyRows.erase(std::unique(m_dirtyRows.begin(), m_dirtyRows.end()), m_dirtyRows.end());
        const int rows = m_grid->Spread().MaxRows();
        for (int row : m_dirtyRows) {
            if (row < 1 || row > rows)
                continue;
            const qint32 serial = m_grid->RowSerial(row);
            if (size_t(row) > m_rowSerials.size() || m_rowSerials[size_t(row - 1)] != serial) {
                // A serial number changed hands: which line is where needs a full look.
                changed |= FullScan();
                break;
            }
            if (serial != 0)
                changed |= UpdateRow(row, serial);
        }
    }
    m_fullScan = false;
    m_dirtyRows.clear();
    return changed;
}

bool CAssOverlay::FullScan()
{
    const int rows = m_grid->Spread().MaxRows();
    std::vector<qint32> serials(size_t(rows), 0);
    const quint32 scan = ++m_scan;
    m_faulty.clear(); // the scan finds them again
    bool changed = false;
    for (int row = 1; row <= rows; ++row) {
        const qint32 serial = m_grid->RowSerial(row);
        serials[size_t(row - 1)] = serial;
        if (serial != 0)
            changed |= UpdateRow(row, serial, scan);
    }
    std::vector<qint32> gone;
    for (const auto &[serial, made] : m_made)
        if (made.Scan != scan)
            gone.push_back(serial);
    for (qint32 serial : gone)
        changed |= DropKey(serial);
    m_rowSerials = std::move(serials);
    return changed;
}

bool CAssOverlay::DropKey(qint32 serial)
{
    m_faulty.remove(serial);
    if (m_made.erase(serial) == 0)
        return false;
    m_renderer.RemoveEvent(serial);
    return true;
}

bool CAssOverlay::UpdateRow(int row, qint32 serial, quint32 scan)
{
    const CSpread &spread = m_grid->Spread();
    const auto it = m_made.find(serial);
    if (it != m_made.end()) {
        Made &made = it->second;
        // A row with the serial number of a row above it has no line of its own.
        if (scan != 0 && made.Scan == scan)
            return false;
        int col = 1;
        while (col <= kCells && spread.GetText(col, row) == made.Cells[size_t(col - 1)])
            ++col;
        if (col > kCells) {
            made.Scan = scan;
            if (made.Row != row) {
                made.Row = row;
                m_renderer.SetOrder(serial, row);
            }
            return false;
        }
    }
    if (m_grid->IsRowBlank(row))
        return DropKey(serial);

    CSSAContentLine line;
    line.Init(serial);
    line.setParent(&m_lines);
    try {
        m_grid->StoreRow(row, line, m_effects);
    } catch (const VelmarError &) {
        // The row cannot be saved as it stands either; its event keeps its last form.
        m_faulty.insert(serial);
        if (it != m_made.end())
            it->second.Scan = scan;
        return false;
    }
    m_faulty.remove(serial);
    Made &made = it != m_made.end() ? it->second : m_made[serial];
    for (int col = 1; col <= kCells; ++col)
        made.Cells[size_t(col - 1)] = spread.GetText(col, row);
    made.Row = row;
    made.Scan = scan;
    m_renderer.SetEvent(serial, line.Content(), row);
    return true;
}

// ---- drawing ------------------------------------------------------------------------

bool CAssOverlay::Render(QImage &frame, double seconds)
{
    BringInStep();
    return m_renderer.Render(frame, seconds);
}

QString CAssOverlay::Status() const
{
    QString status = m_renderer.Status();
    if (status.isEmpty() && !m_faulty.isEmpty())
        status = Msg(QStringLiteral("VELMAR_OVERLAY_300")).arg(m_faulty.size());
    return status;
}

// The meta-object code goes into this object file rather than the library's shared one,
// so that programs linking the core without the overlay (the converter) load no libass.
#include "moc_CAssOverlay.cpp"
