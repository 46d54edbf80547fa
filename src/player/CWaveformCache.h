#pragma once

#include "player/CWaveformPeaks.h"

#include <QString>
#include <optional>

// The identity of a media file as the cache knows it: a changed file has another size or
// another modification time.
struct WaveformCacheKey
{
    QString Path; // absolute
    qint64 Size = -1;
    qint64 Modified = 0; // milliseconds since the epoch, UTC

    // The key of the file as it is on disk now; Size stays -1 when it cannot be read.
    static WaveformCacheKey Of(const QString &path);
    bool Valid() const { return Size >= 0; }
    bool operator==(const WaveformCacheKey &) const = default;
};

// Peaks kept on disk in "Waveform/" of the program folder, one file per media path, so
// that a file opened again shows its waveform at once. A cache file starts with a
// versioned header and a checksum; one that is damaged, of another version or of another
// state of the media file is not used, and the next decode writes over it.
class CWaveformCache
{
public:
    static QString Folder();
    // The cache file for a media path.
    static QString FileFor(const QString &mediaPath);

    // The kept peaks of the file as the key describes it, if a sound cache file holds them.
    static std::optional<CWaveformPeaks> Read(const WaveformCacheKey &key);
    // Keeps the peaks; false when the folder or file cannot be written (the waveform then
    // works without a cache).
    static bool Write(const WaveformCacheKey &key, const CWaveformPeaks &peaks);

    // The bytes of a cache file and their reading back, apart from the disk.
    static QByteArray Encode(const WaveformCacheKey &key, const CWaveformPeaks &peaks);
    static std::optional<CWaveformPeaks> Decode(const QByteArray &bytes, const WaveformCacheKey &key);
};
