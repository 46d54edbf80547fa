#pragma once

#include "player/CWaveformPeaks.h"

#include <QString>
#include <memory>

// How reading a file's audio ended.
enum class WaveformStatus {
    Ready, // the whole audio
    Partial, // the audio up to a damaged or missing part; the peaks hold what was read
    NoAudio, // the file has no audio track
    Unsupported, // no decoder for the track's codec
    Failed, // the file could not be opened or read
    Cancelled,
};

// What a load gives the strip: the peaks (empty unless Ready or Partial), how it ended,
// and whether the peaks came from the cache.
struct CWaveformResult
{
    WaveformStatus Status = WaveformStatus::Failed;
    std::shared_ptr<const CWaveformPeaks> Peaks;
    bool FromCache = false;
    // The codec's name for Unsupported, the library's reason for Failed.
    QString Detail;

    bool HasPeaks() const { return Peaks && Peaks->Count() > 0; }
    // The one line the strip shows, in the interface's language; empty for a whole
    // waveform and for a cancelled load.
    QString Message() const;
    // The line shown while the audio is being read.
    static QString ProgressMessage(double done);
};
