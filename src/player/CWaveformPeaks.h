#pragma once

#include <QtGlobal>
#include <vector>

// The lowest and highest sample of one 10 ms slice of a file's audio, over all of its
// channels, in 16-bit steps (32767 is full scale).
struct WaveformPeak
{
    qint16 Min = 0;
    qint16 Max = 0;
    bool operator==(const WaveformPeak &) const = default;
};

// The outline of a file's audio: one peak pair per 10 ms from time 0 on. Channels are
// merged by taking their extremes, so speech on any channel shows, out-of-phase channels
// do not cancel, and the size does not grow with the channel count (2 hours take 2.9 MB).
class CWaveformPeaks
{
public:
    static constexpr int BinsPerSecond = 100;

    std::vector<WaveformPeak> Bins;
    // What the source was; shown to the user, not used for drawing.
    int Channels = 0;
    int SampleRate = 0;

    qsizetype Count() const { return static_cast<qsizetype>(Bins.size()); }
    double Duration() const { return static_cast<double>(Bins.size()) / BinsPerSecond; }
    // The extremes of the bins that the time range [from, to) touches; a range that
    // falls within one bin gives that bin, a range outside the audio gives silence.
    WaveformPeak Range(double from, double to) const;
    // The highest absolute level of the whole file (at least 1), so that quiet files
    // can be drawn as large as loud ones.
    int Loudest() const;
    qsizetype MemoryBytes() const { return Count() * qsizetype(sizeof(WaveformPeak)); }

    bool operator==(const CWaveformPeaks &) const = default;
};
