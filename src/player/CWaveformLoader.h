#pragma once

#include "player/CWaveformDecoder.h"
#include "player/CWaveformResult.h"

#include <QObject>
#include <QString>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>

// Loads a media file's waveform in the background: from the cache when it holds the file
// as it is now, otherwise by decoding it on a worker thread and keeping the peaks in the
// cache. Progress and the result are handed to the callbacks on the thread that made the
// loader. A new load, Cancel and the loader's end stop the work in progress, whose result
// is then dropped. Not a QObject: the command-line tools link the core without FFmpeg, and
// a meta-object would pull the decoder into them.
class CWaveformLoader
{
public:
    CWaveformLoader();
    ~CWaveformLoader();
    CWaveformLoader(const CWaveformLoader &) = delete;
    CWaveformLoader &operator=(const CWaveformLoader &) = delete;

    // The share done, from 0 to 1.
    std::function<void(double)> OnProgress;
    std::function<void(const CWaveformResult &)> OnLoaded;

    void Load(const QString &path);
    void Cancel();
    // A load has been started and has neither reported nor been cancelled.
    bool Busy() const { return m_busy; }
    QString Path() const { return m_path; }

    // The work itself, on the calling thread: cache, else decode and keep.
    static CWaveformResult LoadNow(const QString &path, const std::atomic<bool> *cancel = nullptr,
        const CWaveformDecoder::ProgressFn &progress = {});

private:
    void stopWorker();

    QString m_path;
    // Receives the worker's reports on the loader's thread.
    std::unique_ptr<QObject> m_inbox;
    std::unique_ptr<QThread> m_thread;
    std::shared_ptr<std::atomic<bool>> m_cancel;
    quint64 m_generation = 0;
    bool m_busy = false;
};
