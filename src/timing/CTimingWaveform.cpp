#include "timing/CTimingWaveform.h"

#include "core/CSpread.h"
#include "core/IPlayerWindow.h"
#include "core/basTime.h"
#include "formats/CTiming.h"
#include "player/CPlayer.h"
#include "player/IMediaControl.h"
#include "timing/CTimePointCapture.h"
#include "timing/CTimingGrid.h"

CTimingWaveform::CTimingWaveform(CTiming &doc, CTimingGrid &grid, CTimePointCapture &capture)
    : m_doc(doc)
    , m_grid(grid)
    , m_capture(capture)
{ }

CPlayer *CTimingWaveform::Player() const
{
    IPlayerWindow *window = m_doc.PlayerWindow();
    return window ? window->player() : nullptr;
}

QString CTimingWaveform::MediaPath() const
{
    const CPlayer *player = Player();
    return player && player->player() ? player->PlayerFileName() : QString();
}

std::optional<double> CTimingWaveform::Position() const
{
    const CPlayer *player = Player();
    if (!player || !player->player())
        return std::nullopt;
    // Asked many times a second: a control that fails is not reported each time.
    try {
        return player->player()->currentPosition();
    } catch (...) {
        return std::nullopt;
    }
}

std::optional<WaveformSpan> CTimingWaveform::SpanOf(int row) const
{
    const CSpread &grid = m_grid.Spread();
    if (row < 1 || row > grid.MaxRows())
        return std::nullopt;
    const QString start = grid.GetText(CTimingGrid::ColStartTime, row);
    const QString end = grid.GetText(CTimingGrid::ColEndTime, row);
    if (start.trimmed().isEmpty() || end.trimmed().isEmpty())
        return std::nullopt;
    return WaveformSpan { StringToTime(start), StringToTime(end) };
}

std::optional<WaveformSpan> CTimingWaveform::ActiveSpan() const
{
    return SpanOf(m_grid.Spread().ActiveRow());
}

std::vector<WaveformSpan> CTimingWaveform::NeighbourSpans() const
{
    const int row = m_grid.Spread().ActiveRow();
    std::vector<WaveformSpan> spans;
    if (row < 1)
        return spans;
    for (int r : { row - 1, row + 1 })
        if (const std::optional<WaveformSpan> span = SpanOf(r))
            spans.push_back(*span);
    return spans;
}

void CTimingWaveform::Seek(double seconds)
{
    m_playUntil.reset();
    if (CPlayer *player = Player())
        player->setCurrentPosition(seconds);
}

void CTimingWaveform::PlaySpan(double start, double end)
{
    CPlayer *player = Player();
    if (!player || !player->player() || end <= start)
        return;
    player->setCurrentPosition(start);
    if (player->PlayState() != MediaPlayState::Playing)
        player->Pause();
    m_playUntil = end;
}

void CTimingWaveform::Tick()
{
    if (!m_playUntil)
        return;
    CPlayer *player = Player();
    const std::optional<double> position = Position();
    if (!position || player->PlayState() != MediaPlayState::Playing) {
        m_playUntil.reset();
        return;
    }
    if (*position >= *m_playUntil) {
        m_playUntil.reset();
        player->Pause();
    }
}

bool CTimingWaveform::SetEdge(WaveformEdge edge, double seconds)
{
    const int row = m_grid.Spread().ActiveRow();
    if (edge == WaveformEdge::None || row < 1)
        return false;
    return m_capture.SetRowTime(
        row, edge == WaveformEdge::Start ? CTimingGrid::ColStartTime : CTimingGrid::ColEndTime, seconds);
}
