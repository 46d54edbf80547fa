// The waveform: a 24-minute stereo AAC track decoded into peaks, the same peaks read
// back from the cache, and the strip drawn as it is during playback. The track is made
// with the ffmpeg command at the first use; without ffmpeg the benchmarks are skipped.
#include "core/basPlatform.h"
#include "player/CWaveformCache.h"
#include "player/CWaveformLoader.h"
#include "ui/CWaveformStrip.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

// Speech-like stereo: a voice-band tone gliding in pitch, in bursts of a second or two,
// over a faint high tone that keeps the quiet parts from being digital silence.
const char *const Voice
    = "aevalsrc='"
      "0.6*sin(2*PI*(180+60*sin(2*PI*3*t))*t)*(0.55+0.45*sin(2*PI*0.7*t))*gt(mod(t,3.7),1.1)"
      "+0.01*sin(2*PI*3000*t)|"
      "0.5*sin(2*PI*(200+50*sin(2*PI*2*t))*t)*(0.55+0.45*sin(2*PI*0.5*t))*gt(mod(t,4.3),1.4)"
      "':s=48000:d=60";

bool ffmpeg(const QStringList &args)
{
    const QString exe = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (exe.isEmpty())
        return false;
    QProcess run;
    run.start(exe,
        QStringList { QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"), QStringLiteral("error"),
            QStringLiteral("-y") }
            + args);
    return run.waitForFinished(600000) && run.exitStatus() == QProcess::NormalExit && run.exitCode() == 0;
}

// The temporary folder with the track and the cache; the track's path, empty without ffmpeg.
struct Media
{
    QTemporaryDir dir;
    QString track;

    Media()
    {
        // One minute encoded, then looped 24 times without encoding again.
        const QString minute = dir.filePath(QStringLiteral("minute.m4a"));
        const QString whole = dir.filePath(QStringLiteral("24min.m4a"));
        if (ffmpeg({ QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                QString::fromLatin1(Voice), QStringLiteral("-c:a"), QStringLiteral("aac"),
                QStringLiteral("-b:a"), QStringLiteral("128k"), minute })
            && ffmpeg({ QStringLiteral("-stream_loop"), QStringLiteral("23"), QStringLiteral("-i"), minute,
                QStringLiteral("-c"), QStringLiteral("copy"), whole }))
            track = whole;
    }
};

Media &media()
{
    static Media m;
    return m;
}

// Points the program folder (and so the cache) into the temporary folder for one benchmark.
struct CacheHere
{
    CacheHere() { SetProgramFolder(media().dir.path()); }
    ~CacheHere() { SetProgramFolder({}); }
};

} // namespace

static void BM_WaveformDecode24min(benchmark::State &state)
{
    if (media().track.isEmpty()) {
        state.SkipWithError("ffmpeg could not make the track");
        return;
    }
    CacheHere cache;
    CWaveformResult result;
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(CWaveformCache::FileFor(media().track));
        state.ResumeTiming();
        result = CWaveformLoader::LoadNow(media().track);
    }
    if (result.Status != WaveformStatus::Ready || result.FromCache) {
        state.SkipWithError("the track did not decode");
        return;
    }
    state.counters["audio_s"] = result.Peaks->Duration();
    // Peak memory grows with the length only: what two hours would take.
    state.counters["MB_per_2h"] = result.Peaks->MemoryBytes() * (7200 / result.Peaks->Duration()) / 1e6;
}
BENCHMARK(BM_WaveformDecode24min)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

static void BM_WaveformFromCache(benchmark::State &state)
{
    if (media().track.isEmpty()) {
        state.SkipWithError("ffmpeg could not make the track");
        return;
    }
    CacheHere cache;
    if (!CWaveformLoader::LoadNow(media().track).HasPeaks()) {
        state.SkipWithError("the track did not decode");
        return;
    }
    for (auto _ : state) {
        const CWaveformResult r = CWaveformLoader::LoadNow(media().track);
        if (!r.FromCache) {
            state.SkipWithError("the cache was not used");
            return;
        }
        benchmark::DoNotOptimize(r.Peaks->Count());
    }
}
BENCHMARK(BM_WaveformFromCache)->Unit(benchmark::kMillisecond)->UseRealTime();

// One frame of the strip, 1280 by 120 pixels, as playback moves it on by 40 ms, with the
// active line and four neighbours on it. VELMAR_WAVEFORM_PNG=FILE keeps the last frame.
static void BM_WaveformPaint(benchmark::State &state)
{
    if (media().track.isEmpty()) {
        state.SkipWithError("ffmpeg could not make the track");
        return;
    }
    CacheHere cache;
    const CWaveformResult r = CWaveformLoader::LoadNow(media().track);
    if (!r.HasPeaks()) {
        state.SkipWithError("the track did not decode");
        return;
    }
    CWaveformStrip strip;
    strip.resize(1280, 120);
    strip.ShowResult(r);
    QImage frame(strip.size(), QImage::Format_RGB32);
    double position = 600;
    for (auto _ : state) {
        strip.setPosition(position);
        const double line = std::floor(position / 3.7) * 3.7;
        strip.setActiveSpan(WaveformSpan { line + 1.1, line + 3.6 });
        strip.setNeighbourSpans(
            { { line - 7.4 + 1.1, line - 7.4 + 3.6 }, { line - 3.7 + 1.1, line - 3.7 + 3.6 },
                { line + 3.7 + 1.1, line + 3.7 + 3.6 }, { line + 7.4 + 1.1, line + 7.4 + 3.6 } });
        strip.render(&frame);
        position += 0.04;
    }
    const QString png = qEnvironmentVariable("VELMAR_WAVEFORM_PNG");
    if (!png.isEmpty())
        frame.save(png);
}
BENCHMARK(BM_WaveformPaint)->Unit(benchmark::kMicrosecond);
