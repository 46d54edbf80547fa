#include "player/CWaveformView.h"

#include <algorithm>
#include <array>
#include <cmath>

void CWaveformView::setSpan(double seconds)
{
    m_span = std::clamp(seconds, MinSpan, MaxSpan);
}

void CWaveformView::Zoom(double factor, double anchorX)
{
    if (!(factor > 0))
        return;
    const double anchor = TimeAt(anchorX);
    setSpan(m_span * factor);
    // Left() must now be anchor - anchorX * SecondsPerPixel().
    m_scroll = anchor - anchorX * SecondsPerPixel() - m_position + m_span / 2;
}

WaveformEdge CWaveformView::HitEdge(double x, const WaveformSpan &span) const
{
    const double toStart = std::abs(x - XAt(span.Start));
    const double toEnd = std::abs(x - XAt(span.End));
    if (std::min(toStart, toEnd) > EdgeGrip)
        return WaveformEdge::None;
    // On a span a few pixels wide, the side of the middle the mouse is on decides.
    if (toStart == toEnd)
        return x < XAt((span.Start + span.End) / 2) ? WaveformEdge::Start : WaveformEdge::End;
    return toStart < toEnd ? WaveformEdge::Start : WaveformEdge::End;
}

double CWaveformView::DragTime(WaveformEdge edge, double x, const WaveformSpan &span) const
{
    double t = std::max(0.0, std::round(TimeAt(x) * 100) / 100);
    // A line whose end is not stamped yet (end before start) holds no limit.
    if (span.End < span.Start)
        return t;
    if (edge == WaveformEdge::Start)
        t = std::min(t, span.End);
    else if (edge == WaveformEdge::End)
        t = std::max(t, span.Start);
    return t;
}

double CWaveformView::MarkStep(double minPixels) const
{
    static constexpr std::array<double, 13> steps { 0.1, 0.2, 0.5, 1, 2, 5, 10, 15, 30, 60, 120, 300, 600 };
    const double minSeconds = minPixels * SecondsPerPixel();
    for (double s : steps)
        if (s >= minSeconds)
            return s;
    return steps.back();
}

std::vector<WaveformPeak> CWaveformView::Columns(const CWaveformPeaks &peaks) const
{
    std::vector<WaveformPeak> out(static_cast<size_t>(m_width));
    const double step = SecondsPerPixel();
    const double left = Left();
    for (int x = 0; x < m_width; ++x)
        out[size_t(x)] = peaks.Range(left + x * step, left + (x + 1) * step);
    return out;
}

QString CWaveformView::MarkLabel(double seconds, double step)
{
    const bool tenths = step < 1;
    const auto units = static_cast<qint64>(std::llround(std::max(0.0, seconds) * (tenths ? 10 : 1)));
    const qint64 whole = tenths ? units / 10 : units;
    const qint64 h = whole / 3600;
    const qint64 m = whole / 60 % 60;
    const qint64 s = whole % 60;
    QString text = h > 0
        ? QStringLiteral("%1:%2:%3").arg(h).arg(m, 2, 10, QChar(u'0')).arg(s, 2, 10, QChar(u'0'))
        : QStringLiteral("%1:%2").arg(m).arg(s, 2, 10, QChar(u'0'));
    if (tenths)
        text += u'.' + QString::number(units % 10);
    return text;
}
