#include "player/CWaveformPeakBuilder.h"

#include <algorithm>
#include <cmath>

namespace {

qint16 toLevel(float v)
{
    // NaN from a broken decoder reads as silence.
    if (!(v == v))
        return 0;
    return static_cast<qint16>(std::lround(std::clamp(v, -1.0f, 1.0f) * 32767.0f));
}

} // namespace

void CWaveformPeakBuilder::startSegment(int sampleRate)
{
    m_segmentStart = Time();
    m_segmentSamples = 0;
    m_rate = sampleRate;
}

double CWaveformPeakBuilder::Time() const
{
    return m_rate > 0 ? m_segmentStart + double(m_segmentSamples) / m_rate : m_segmentStart;
}

void CWaveformPeakBuilder::closeBin()
{
    if (!m_open)
        return;
    const auto index = size_t(m_bin);
    const WaveformPeak level { toLevel(m_min), toLevel(m_max) };
    if (m_peaks.Bins.size() <= index) {
        m_peaks.Bins.resize(index + 1);
        m_peaks.Bins[index] = level;
    } else {
        // A bin met again after a change of rate keeps the extremes of both visits.
        WaveformPeak &p = m_peaks.Bins[index];
        p.Min = std::min(p.Min, level.Min);
        p.Max = std::max(p.Max, level.Max);
    }
    m_open = false;
}

void CWaveformPeakBuilder::AddPlanar(
    const float *const *channels, int channelCount, int frames, int sampleRate)
{
    if (frames <= 0 || channelCount <= 0 || sampleRate <= 0)
        return;
    if (sampleRate != m_rate)
        startSegment(sampleRate);
    m_peaks.Channels = channelCount;
    m_peaks.SampleRate = sampleRate;
    int done = 0;
    while (done < frames) {
        const qint64 bin = static_cast<qint64>(std::floor(Time() * CWaveformPeaks::BinsPerSecond + 1e-9));
        if (bin != m_bin) {
            closeBin();
            m_bin = bin;
        }
        // The first sample of the next bin, counted in this segment.
        const double nextBinTime = double(bin + 1) / CWaveformPeaks::BinsPerSecond;
        const auto boundary = static_cast<qint64>(std::ceil((nextBinTime - m_segmentStart) * m_rate - 1e-6));
        const int take = static_cast<int>(std::clamp<qint64>(boundary - m_segmentSamples, 1, frames - done));
        float lo = m_open ? m_min : channels[0][done];
        float hi = m_open ? m_max : channels[0][done];
        for (int c = 0; c < channelCount; ++c) {
            const float *s = channels[c] + done;
            for (int i = 0; i < take; ++i) {
                lo = s[i] < lo ? s[i] : lo;
                hi = s[i] > hi ? s[i] : hi;
            }
        }
        m_min = lo;
        m_max = hi;
        m_open = true;
        done += take;
        m_segmentSamples += take;
    }
}

void CWaveformPeakBuilder::Reserve(double seconds)
{
    // Beyond a day the stated length is a damaged header, not a reason to take memory.
    if (seconds > 0 && seconds < 86400)
        m_peaks.Bins.reserve(static_cast<size_t>(seconds * CWaveformPeaks::BinsPerSecond) + 1);
}

void CWaveformPeakBuilder::SkipTo(double seconds)
{
    if (!(seconds > Time()))
        return;
    closeBin();
    m_segmentStart = seconds;
    m_segmentSamples = 0;
    m_bin = static_cast<qint64>(std::floor(seconds * CWaveformPeaks::BinsPerSecond + 1e-9));
}

CWaveformPeaks CWaveformPeakBuilder::Take()
{
    closeBin();
    // A skip past the last sample still counts as audio time: silence up to there.
    const auto bins = static_cast<size_t>(std::ceil(Time() * CWaveformPeaks::BinsPerSecond - 1e-6));
    if (m_peaks.Bins.size() < bins)
        m_peaks.Bins.resize(bins);
    CWaveformPeaks out = std::move(m_peaks);
    *this = CWaveformPeakBuilder();
    return out;
}
