#pragma once

#include "player/CWaveformDecoder.h"
#include "player/CWaveformResult.h"

#include <QObject>
#include <QString>
#include <QThread>
#include <atomic>
#include <memory>

// Loads a media file's waveform in the background: from the cache when it holds the file
// as it is now, otherwise by decoding it on a worker thread and keeping the peaks in the
// cache. Progress and the result arrive as signals on the loader's own thread. A new load,
// Cancel and the loader's end stop the work in progress, whose result is then dropped.
class CWaveformLoader : public QObject
{
    Q_OBJECT
public:
    explicit CWaveformLoader(QObject *parent = nullptr);
    ~CWaveformLoader() override;

    void Load(const QString &path);
    void Cancel();
    bool Busy() const;
    QString Path() const { return m_path; }

    // The work itself, on the calling thread: cache, else decode and keep.
    static CWaveformResult LoadNow(const QString &path, const std::atomic<bool> *cancel = nullptr,
        const CWaveformDecoder::ProgressFn &progress = {});

signals:
    // The share done, from 0 to 1.
    void Progress(double done);
    void Loaded(const CWaveformResult &result);

private:
    void stopWorker();

    QString m_path;
    std::unique_ptr<QThread> m_thread;
    std::shared_ptr<std::atomic<bool>> m_cancel;
    quint64 m_generation = 0;
};
