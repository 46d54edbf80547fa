#pragma once

#include "player/CWaveformResult.h"

#include <QString>
#include <atomic>
#include <functional>

// Reads the audio of a media file into peaks with the FFmpeg libraries: the first audio
// track of any container and codec they know (AAC, AC-3, MP3, Opus, FLAC, PCM... in MP4,
// MKV, AVI or a plain audio file). Runs on the calling thread; made to run on a worker.
class CWaveformDecoder
{
public:
    // Called with the share done, from 0 to 1, each time it grows by a percent.
    using ProgressFn = std::function<void(double)>;

    // Decodes the whole track. `cancel` is looked at between packets and while the file
    // is read, so that setting it ends the work within milliseconds as Cancelled. A damaged
    // packet is skipped; a file that ends before its stated length gives Partial with the
    // peaks read so far.
    static CWaveformResult Decode(
        const QString &path, const std::atomic<bool> *cancel = nullptr, const ProgressFn &progress = {});
};
