#pragma once

#include "player/CWaveformPeaks.h"

#include <QString>
#include <vector>

// An edge of a line's span on the waveform.
enum class WaveformEdge { None, Start, End };

// The start and end of a line, in seconds.
struct WaveformSpan
{
    double Start = 0;
    double End = 0;
    bool operator==(const WaveformSpan &) const = default;
};

// The window of time a waveform strip shows: `Span` seconds across `Width` pixels,
// centred on the playing position and moved from there by `Scroll` seconds. Converts
// between pixels and seconds and finds the span edge under the mouse.
class CWaveformView
{
public:
    static constexpr double DefaultSpan = 10.0; // ±5 s around the position
    static constexpr double MinSpan = 1.0;
    static constexpr double MaxSpan = 300.0;
    // How near an edge, in pixels, the mouse takes hold of it.
    static constexpr double EdgeGrip = 5.0;

    int Width() const { return m_width; }
    void setWidth(int pixels) { m_width = pixels > 0 ? pixels : 1; }
    double Position() const { return m_position; }
    void setPosition(double seconds) { m_position = seconds; }
    double Span() const { return m_span; }
    void setSpan(double seconds);
    double Scroll() const { return m_scroll; }
    void setScroll(double seconds) { m_scroll = seconds; }

    double Left() const { return m_position + m_scroll - m_span / 2; }
    double SecondsPerPixel() const { return m_span / m_width; }
    double TimeAt(double x) const { return Left() + x * SecondsPerPixel(); }
    double XAt(double seconds) const { return (seconds - Left()) / SecondsPerPixel(); }

    // Multiplies the span by `factor` (below 1 zooms in), keeping the time under pixel
    // `anchorX` where it is.
    void Zoom(double factor, double anchorX);
    void ScrollBy(double seconds) { m_scroll += seconds; }

    // The edge of `span` within EdgeGrip pixels of x, the nearer one when both are.
    WaveformEdge HitEdge(double x, const WaveformSpan &span) const;
    // The time an edge dragged to pixel x takes: on the hundredth, not below 0, and not
    // past the span's other edge (when the span has one: its end not before its start).
    double DragTime(WaveformEdge edge, double x, const WaveformSpan &span) const;

    // The spacing of the time marks, in seconds: the smallest of 1, 2, 5, 10... (or a
    // tenth or half second when zoomed far in) that leaves `minPixels` between marks.
    double MarkStep(double minPixels) const;

    // The text of a mark: "m:ss", "h:mm:ss" past an hour, a tenth more below a second.
    static QString MarkLabel(double seconds, double step);

    // The peaks under each pixel column, from left to right.
    std::vector<WaveformPeak> Columns(const CWaveformPeaks &peaks) const;

private:
    int m_width = 1;
    double m_position = 0;
    double m_span = DefaultSpan;
    double m_scroll = 0;
};
