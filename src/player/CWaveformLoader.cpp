#include "player/CWaveformLoader.h"

#include "player/CWaveformCache.h"

#include <QThread>

CWaveformLoader::CWaveformLoader()
    : m_inbox(std::make_unique<QObject>())
{ }

CWaveformLoader::~CWaveformLoader()
{
    stopWorker();
}

CWaveformResult CWaveformLoader::LoadNow(
    const QString &path, const std::atomic<bool> *cancel, const CWaveformDecoder::ProgressFn &progress)
{
    const WaveformCacheKey key = WaveformCacheKey::Of(path);
    if (std::optional<CWaveformPeaks> kept = CWaveformCache::Read(key)) {
        CWaveformResult result;
        result.Status = WaveformStatus::Ready;
        result.Peaks = std::make_shared<const CWaveformPeaks>(std::move(*kept));
        result.FromCache = true;
        return result;
    }
    CWaveformResult result = CWaveformDecoder::Decode(path, cancel, progress);
    // Only a whole waveform is kept: a damaged file may be whole the next time.
    if (result.Status == WaveformStatus::Ready && result.Peaks
        && !(cancel && cancel->load(std::memory_order_relaxed)))
        CWaveformCache::Write(key, *result.Peaks);
    return result;
}

void CWaveformLoader::Load(const QString &path)
{
    stopWorker();
    m_path = path;
    const quint64 generation = ++m_generation;
    m_busy = true;
    m_cancel = std::make_shared<std::atomic<bool>>(false);
    auto cancel = m_cancel;
    // The loader outlives the thread (its end waits for it), so the thread may name it.
    m_thread.reset(QThread::create([this, cancel, path, generation] {
        // Progress and result are handed to the loader's thread; a load that has been
        // replaced or cancelled in between is recognised there by its generation.
        const auto deliver = [this, generation](auto fn) {
            QMetaObject::invokeMethod(
                m_inbox.get(),
                [this, generation, fn] {
                    if (m_generation == generation)
                        fn(*this);
                },
                Qt::QueuedConnection);
        };
        CWaveformResult result = LoadNow(path, cancel.get(), [&](double done) {
            deliver([done](CWaveformLoader &l) {
                if (l.OnProgress)
                    l.OnProgress(done);
            });
        });
        if (cancel->load())
            return;
        deliver([result](CWaveformLoader &l) {
            l.m_busy = false;
            if (l.OnLoaded)
                l.OnLoaded(result);
        });
    }));
    m_thread->setObjectName(QStringLiteral("waveform"));
    m_thread->start(QThread::LowPriority);
}

void CWaveformLoader::Cancel()
{
    stopWorker();
}

void CWaveformLoader::stopWorker()
{
    ++m_generation;
    m_busy = false;
    if (m_cancel)
        m_cancel->store(true);
    if (m_thread) {
        // The decoder looks at the flag between packets: the wait is a few milliseconds.
        m_thread->wait();
        m_thread.reset();
    }
    m_cancel.reset();
}
