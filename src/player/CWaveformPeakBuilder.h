#pragma once

#include "player/CWaveformPeaks.h"

// Turns decoded audio into peaks. Samples arrive in blocks of planar floats (one array a
// channel, full scale at ±1) and are placed one after the other from the time reached so
// far; a gap in the stream is bridged with silence by SkipTo.
class CWaveformPeakBuilder
{
public:
    // A block of `frames` samples per channel at `sampleRate`. The rate may change from
    // one block to the next; the time goes on from where it was.
    void AddPlanar(const float *const *channels, int channelCount, int frames, int sampleRate);
    // Moves the time forward to `seconds`, leaving silence; a time already passed is ignored.
    void SkipTo(double seconds);
    // Makes room for `seconds` of audio at once.
    void Reserve(double seconds);
    // The time reached, in seconds.
    double Time() const;
    // Hands the peaks over and starts again.
    CWaveformPeaks Take();

private:
    void startSegment(int sampleRate);
    void closeBin();

    CWaveformPeaks m_peaks;
    double m_segmentStart = 0; // seconds at which the current rate began
    qint64 m_segmentSamples = 0; // samples since then
    int m_rate = 0;
    qint64 m_bin = 0; // the bin being filled
    float m_min = 0;
    float m_max = 0;
    bool m_open = false; // the current bin has samples
};
