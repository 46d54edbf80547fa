#pragma once

#include "player/CWaveformView.h"

#include <QString>
#include <optional>
#include <vector>

class CPlayer;
class CTiming;
class CTimingGrid;
class CTimePointCapture;

// What the timing window's waveform strip shows and does, without the strip: the media
// file of the document's linked player, the playing position, the active row's span with
// its neighbours', and the strip's requests carried out. An edge dragged is written as a
// stamp writes a time (no reaction offset) and is one undo step.
class CTimingWaveform
{
public:
    CTimingWaveform(CTiming &doc, CTimingGrid &grid, CTimePointCapture &capture);

    // The file the linked player plays; empty without a player or a file.
    QString MediaPath() const;
    // The playing position; nothing without a player.
    std::optional<double> Position() const;

    // The active row's start and end when both cells hold a time; the rows above and
    // below it likewise, for the dimmed spans.
    std::optional<WaveformSpan> ActiveSpan() const;
    std::vector<WaveformSpan> NeighbourSpans() const;

    // A click: the player goes to `seconds`.
    void Seek(double seconds);
    // A double-click: the player plays from `start` and is paused by Tick at `end`.
    void PlaySpan(double start, double end);
    // Called with the strip's refresh: pauses a span being played once it is over.
    void Tick();
    // An edge dragged: the active row's start or end becomes `seconds`. False when there
    // is no active row or the time could not be written.
    bool SetEdge(WaveformEdge edge, double seconds);

private:
    CPlayer *Player() const;
    std::optional<WaveformSpan> SpanOf(int row) const;

    CTiming &m_doc;
    CTimingGrid &m_grid;
    CTimePointCapture &m_capture;
    std::optional<double> m_playUntil;
};
