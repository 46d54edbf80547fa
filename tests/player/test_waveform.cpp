// The waveform: peaks built from samples, the cache file, the mapping between pixels and
// times, and real decoding of media made with ffmpeg (skipped without it).
#include "WaveformMedia.h"

#include "player/CWaveformCache.h"
#include "player/CWaveformDecoder.h"
#include "player/CWaveformLoader.h"
#include "player/CWaveformPeakBuilder.h"
#include "player/CWaveformView.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// Adds `frames` samples of value 0 per channel, except `value` at sample `at` of `channel`.
void addBlock(CWaveformPeakBuilder &b, int rate, int frames, int channel = -1, int at = 0, float value = 0)
{
    std::vector<std::vector<float>> planes(2, std::vector<float>(size_t(frames), 0.0f));
    if (channel >= 0)
        planes[size_t(channel)][size_t(at)] = value;
    const float *pointers[2] = { planes[0].data(), planes[1].data() };
    b.AddPlanar(pointers, 2, frames, rate);
}

// Start and end times of the stretches whose level passes a quarter of full scale.
std::vector<std::pair<double, double>> bursts(const CWaveformPeaks &peaks)
{
    std::vector<std::pair<double, double>> out;
    bool on = false;
    for (qsizetype i = 0; i < peaks.Count(); ++i) {
        const bool loud = std::max(-int(peaks.Bins[size_t(i)].Min), int(peaks.Bins[size_t(i)].Max)) > 8192;
        if (loud && !on)
            out.push_back({ double(i) / CWaveformPeaks::BinsPerSecond, 0 });
        if (!loud && on)
            out.back().second = double(i) / CWaveformPeaks::BinsPerSecond;
        on = loud;
    }
    return out;
}

} // namespace

TEST(WaveformPeaks, SamplesLandInTheirTenMillisecondBinAcrossChannelsRatesAndGaps)
{
    CWaveformPeakBuilder b;
    // 48 kHz: 480 samples a bin. A low sample on the right channel in bin 2, a high one
    // on the left channel in bin 3, each block crossing bin edges.
    addBlock(b, 48000, 1000, 1, 999, -0.5f); // sample 999: 20.8 ms
    addBlock(b, 48000, 1000, 0, 450, 1.5f); // sample 1450: 30.2 ms, clipped to full scale
    // 22.05 kHz after 2000 samples at 48 kHz (41.67 ms): 220.5 samples a bin.
    addBlock(b, 22050, 441, 0, 200, 0.25f); // 41.67 ms + 9.07 ms = 50.7 ms: bin 5
    b.SkipTo(1.0); // a gap: silence up to 1 s
    b.SkipTo(0.5); // a time already passed changes nothing
    addBlock(b, 44100, 441, 1, 440, 0.75f); // the last sample of bin 100
    EXPECT_NEAR(b.Time(), 1.01, 1e-9);
    const CWaveformPeaks peaks = b.Take();

    ASSERT_EQ(peaks.Count(), 101);
    EXPECT_EQ(peaks.Bins[2], (WaveformPeak { -16384, 0 }));
    EXPECT_EQ(peaks.Bins[3], (WaveformPeak { 0, 32767 }));
    EXPECT_EQ(peaks.Bins[5], (WaveformPeak { 0, 8192 }));
    EXPECT_EQ(peaks.Bins[100], (WaveformPeak { 0, 24575 }));
    for (int i : { 0, 1, 4, 6, 50, 99 })
        EXPECT_EQ(peaks.Bins[size_t(i)], WaveformPeak {}) << i;
    EXPECT_EQ(peaks.Channels, 2);
    EXPECT_EQ(peaks.SampleRate, 44100);
    EXPECT_EQ(peaks.Loudest(), 32767);

    // Ranges: the bins a time range touches, nothing outside the audio.
    EXPECT_EQ(peaks.Range(0.02, 0.04), (WaveformPeak { -16384, 32767 }));
    EXPECT_EQ(peaks.Range(0.03, 0.031), (WaveformPeak { 0, 32767 })); // within one bin
    EXPECT_EQ(peaks.Range(0.0, 0.03), (WaveformPeak { -16384, 0 })); // ends on bin 3's edge
    EXPECT_EQ(peaks.Range(-5, -1), WaveformPeak {});
    EXPECT_EQ(peaks.Range(2, 3), WaveformPeak {});
    EXPECT_EQ(peaks.Duration(), 1.01);

    // The builder starts again after Take; two hours of peaks stay far below 20 MB.
    EXPECT_EQ(b.Take().Count(), 0);
    CWaveformPeaks twoHours;
    twoHours.Bins.resize(2 * 3600 * CWaveformPeaks::BinsPerSecond);
    EXPECT_LT(twoHours.MemoryBytes(), 20 * 1024 * 1024);
}

TEST(WaveformView, MapsPixelsAndTimesZoomsAroundTheMouseAndScrolls)
{
    CWaveformView v;
    v.setWidth(1000);
    v.setPosition(100);
    // ±5 s around the position: 10 ms a pixel.
    EXPECT_DOUBLE_EQ(v.Left(), 95);
    EXPECT_DOUBLE_EQ(v.TimeAt(500), 100);
    EXPECT_DOUBLE_EQ(v.XAt(97.5), 250);
    EXPECT_DOUBLE_EQ(v.TimeAt(v.XAt(103.21)), 103.21);

    // Zooming in at pixel 250 keeps 97.5 s under it.
    v.Zoom(0.5, 250);
    EXPECT_DOUBLE_EQ(v.Span(), 5);
    EXPECT_NEAR(v.TimeAt(250), 97.5, 1e-9);
    // The scroll stays relative to the position, so the view follows playback.
    v.setPosition(110);
    EXPECT_NEAR(v.TimeAt(250), 107.5, 1e-9);
    v.ScrollBy(2);
    EXPECT_NEAR(v.TimeAt(250), 109.5, 1e-9);
    // Zoom stays between its limits.
    v.Zoom(1e-6, 0);
    EXPECT_EQ(v.Span(), CWaveformView::MinSpan);
    v.Zoom(1e6, 0);
    EXPECT_EQ(v.Span(), CWaveformView::MaxSpan);

    // Marks: 10 s across 1000 px puts labels each second when 70 px apart at least.
    CWaveformView marks;
    marks.setWidth(1000);
    EXPECT_EQ(marks.MarkStep(70), 1);
    marks.setSpan(60);
    EXPECT_EQ(marks.MarkStep(70), 5);
    marks.setSpan(1);
    EXPECT_EQ(marks.MarkStep(70), 0.1);
    EXPECT_EQ(CWaveformView::MarkLabel(65, 1), "1:05");
    EXPECT_EQ(CWaveformView::MarkLabel(3725, 5), "1:02:05");
    EXPECT_EQ(CWaveformView::MarkLabel(12.3, 0.1), "0:12.3");

    // Columns: each pixel column gets the extremes of its 10 ms, or of all the bins a
    // zoomed-out column covers.
    CWaveformPeaks peaks;
    peaks.Bins.resize(1000);
    peaks.Bins[500] = { -100, 200 };
    peaks.Bins[509] = { -300, 50 };
    CWaveformView cols;
    cols.setWidth(100);
    cols.setPosition(5);
    cols.setSpan(1); // 10 ms a column, from 4.5 s
    std::vector<WaveformPeak> c = cols.Columns(peaks);
    ASSERT_EQ(c.size(), 100u);
    EXPECT_EQ(c[50], (WaveformPeak { -100, 200 }));
    EXPECT_EQ(c[59], (WaveformPeak { -300, 50 }));
    EXPECT_EQ(c[51], WaveformPeak {});
    cols.setSpan(10); // 100 ms a column, from 0 s
    c = cols.Columns(peaks);
    EXPECT_EQ(c[50], (WaveformPeak { -300, 200 }));
}

TEST(WaveformView, GrabsTheNearerEdgeAndDragsWithinTheSpan)
{
    CWaveformView v;
    v.setWidth(1000);
    v.setPosition(10); // 5 to 15 s, 10 ms a pixel
    const WaveformSpan span { 8.0, 9.0 }; // pixels 300 and 400
    EXPECT_EQ(v.HitEdge(303, span), WaveformEdge::Start);
    EXPECT_EQ(v.HitEdge(396, span), WaveformEdge::End);
    EXPECT_EQ(v.HitEdge(350, span), WaveformEdge::None);
    EXPECT_EQ(v.HitEdge(294, span), WaveformEdge::None);
    // A span narrower than the grip: the nearer edge, then the side of the middle.
    const WaveformSpan narrow { 8.0, 8.04 }; // pixels 300 to 304
    EXPECT_EQ(v.HitEdge(301, narrow), WaveformEdge::Start);
    EXPECT_EQ(v.HitEdge(303.5, narrow), WaveformEdge::End);
    EXPECT_EQ(v.HitEdge(300, WaveformSpan { 8.0, 8.0 }), WaveformEdge::End);
    EXPECT_EQ(v.HitEdge(299, WaveformSpan { 8.0, 8.0 }), WaveformEdge::Start);

    // Dragging: the hundredth under the mouse, never past the other edge nor below 0.
    EXPECT_DOUBLE_EQ(v.DragTime(WaveformEdge::Start, 250.4, span), 7.5);
    EXPECT_DOUBLE_EQ(v.DragTime(WaveformEdge::Start, 480, span), 9.0);
    EXPECT_DOUBLE_EQ(v.DragTime(WaveformEdge::End, 123.6, span), 8.0);
    EXPECT_DOUBLE_EQ(v.DragTime(WaveformEdge::End, 456.7, span), 9.57);
    v.setPosition(1);
    EXPECT_DOUBLE_EQ(v.DragTime(WaveformEdge::Start, 10, WaveformSpan { 0.5, 1 }), 0);
    // A line with no end yet (0 before its start) limits nothing.
    EXPECT_DOUBLE_EQ(v.DragTime(WaveformEdge::Start, 800, WaveformSpan { 0.5, 0 }), 4);
}

TEST(WaveformCache, KeepsPeaksOfOneStateOfAFileAndRefusesDamage)
{
    CWaveformPeaks peaks;
    peaks.Channels = 6;
    peaks.SampleRate = 48000;
    for (int i = 0; i < 5000; ++i)
        peaks.Bins.push_back({ qint16(-i), qint16(i * 3) });
    const WaveformCacheKey key { QStringLiteral("/media/片/ep01.mkv"), 123456789, 1700000000123 };
    const QByteArray bytes = CWaveformCache::Encode(key, peaks);
    ASSERT_EQ(CWaveformCache::Decode(bytes, key), peaks);

    // Another size, time or path is another file.
    WaveformCacheKey otherSize = key;
    otherSize.Size += 1;
    WaveformCacheKey otherTime = key;
    otherTime.Modified += 1000;
    WaveformCacheKey otherPath = key;
    otherPath.Path += u'x';
    for (const WaveformCacheKey &other : { otherSize, otherTime, otherPath })
        EXPECT_FALSE(CWaveformCache::Decode(bytes, other)) << other.Path.toStdString();
    // A flipped byte anywhere, a cut, trailing bytes, another version, nothing at all.
    for (qsizetype at : { qsizetype(0), qsizetype(9), qsizetype(20), qsizetype(60), bytes.size() - 1 }) {
        QByteArray damaged = bytes;
        damaged[at] = char(damaged[at] ^ 0x10);
        EXPECT_FALSE(CWaveformCache::Decode(damaged, key)) << at;
    }
    EXPECT_FALSE(CWaveformCache::Decode(bytes.left(bytes.size() - 4), key));
    EXPECT_FALSE(CWaveformCache::Decode(bytes + "xx", key));
    QByteArray version = bytes;
    version[8] = 2;
    EXPECT_FALSE(CWaveformCache::Decode(version, key));
    EXPECT_FALSE(CWaveformCache::Decode({}, key));
}

// Real media: tone bursts at known times in each container and codec the decoder is
// chosen for.
struct MediaCase
{
    const char *name;
    const char *extension;
    int rate;
    std::vector<const char *> args;
    friend void PrintTo(const MediaCase &c, std::ostream *os) { *os << c.name; }
};

class WaveformMediaTest : public ::testing::TestWithParam<MediaCase>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        if (WaveformMedia::Ffmpeg().isEmpty())
            GTEST_SKIP() << "ffmpeg is not installed";
    }
    QString make(const std::vector<double> &times, const QString &name)
    {
        const MediaCase &c = GetParam();
        QStringList args;
        for (const char *a : c.args)
            args << QString::fromLatin1(a);
        QStringList sources { WaveformMedia::BurstSource(times, 6, c.rate) };
        if (args.contains(QStringLiteral("-c:v")))
            sources << QStringLiteral("testsrc=s=160x120:d=6:r=10");
        return WaveformMedia::Make(sources, args, dir.filePath(name + QString::fromLatin1(c.extension)));
    }
    QTemporaryDir dir;
};

TEST_P(WaveformMediaTest, PeaksPutEachBurstWithinTenMilliseconds)
{
    const std::vector<double> times { 1.23, 2.5, 4.07 };
    const QString file = make(times, QStringLiteral("bursts"));
    ASSERT_FALSE(file.isEmpty()) << "ffmpeg could not make " << GetParam().name;
    const CWaveformResult r = CWaveformDecoder::Decode(file);
    ASSERT_EQ(r.Status, WaveformStatus::Ready) << r.Detail.toStdString();
    ASSERT_TRUE(r.HasPeaks());
    EXPECT_TRUE(r.Message().isEmpty());
    EXPECT_NEAR(r.Peaks->Duration(), 6, 0.05);
    EXPECT_EQ(r.Peaks->SampleRate, GetParam().rate);
    const auto found = bursts(*r.Peaks);
    ASSERT_EQ(found.size(), times.size());
    for (size_t i = 0; i < times.size(); ++i) {
        EXPECT_NEAR(found[i].first, times[i], 0.0101) << i;
        EXPECT_NEAR(found[i].second, times[i] + WaveformMedia::BurstLength, 0.0101) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, WaveformMediaTest,
    ::testing::Values(MediaCase { "Mp4Aac", ".mp4", 44100, { "-c:a", "aac", "-b:a", "128k" } },
        MediaCase { "MkvOpus", ".mkv", 48000, { "-c:a", "libopus" } },
        MediaCase { "Wav", ".wav", 22050, { "-c:a", "pcm_s16le" } },
        MediaCase { "AviAc3", ".avi", 48000, { "-c:v", "mpeg4", "-c:a", "ac3" } },
        MediaCase { "Mp3", ".mp3", 44100, { "-c:a", "libmp3lame" } },
        MediaCase { "Flac", ".flac", 48000, { "-c:a", "flac" } },
        MediaCase { "MovPcm", ".mov", 48000, { "-c:v", "mpeg4", "-c:a", "pcm_s16le" } }),
    [](const auto &info) { return std::string(info.param.name); });

class WaveformFiles : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        if (WaveformMedia::Ffmpeg().isEmpty())
            GTEST_SKIP() << "ffmpeg is not installed";
    }
    QString makeAudio(const QString &name, const std::vector<double> &times, double seconds,
        const QStringList &args = { QStringLiteral("-c:a"), QStringLiteral("aac") })
    {
        return WaveformMedia::Make(
            { WaveformMedia::BurstSource(times, seconds, 48000) }, args, dir.filePath(name));
    }
    QTemporaryDir dir;
};

TEST_F(WaveformFiles, TheCacheServesTheSecondOpenUntilTheFileChangesOrIsDamaged)
{
    const QString file = makeAudio(QStringLiteral("a.m4a"), { 1.0 }, 3);
    ASSERT_FALSE(file.isEmpty());
    const CWaveformResult first = CWaveformLoader::LoadNow(file);
    ASSERT_EQ(first.Status, WaveformStatus::Ready);
    EXPECT_FALSE(first.FromCache);
    EXPECT_TRUE(QFileInfo::exists(CWaveformCache::FileFor(file)));
    const CWaveformResult second = CWaveformLoader::LoadNow(file);
    EXPECT_TRUE(second.FromCache);
    EXPECT_EQ(*second.Peaks, *first.Peaks);

    // The same path with other audio: decoded again, and the new peaks kept.
    ASSERT_FALSE(makeAudio(QStringLiteral("a.m4a"), { 2.0 }, 3).isEmpty());
    QFile touched(file);
    ASSERT_TRUE(touched.open(QIODevice::ReadWrite));
    touched.setFileTime(QDateTime::currentDateTime().addSecs(5), QFileDevice::FileModificationTime);
    touched.close();
    const CWaveformResult changed = CWaveformLoader::LoadNow(file);
    EXPECT_FALSE(changed.FromCache);
    ASSERT_EQ(bursts(*changed.Peaks).size(), 1u);
    EXPECT_NEAR(bursts(*changed.Peaks)[0].first, 2.0, 0.0101);
    EXPECT_TRUE(CWaveformLoader::LoadNow(file).FromCache);

    // A damaged cache file is decoded past and written anew.
    QFile cache(CWaveformCache::FileFor(file));
    ASSERT_TRUE(cache.open(QIODevice::ReadWrite));
    cache.seek(cache.size() / 2);
    cache.write("garbage");
    cache.close();
    const CWaveformResult repaired = CWaveformLoader::LoadNow(file);
    EXPECT_FALSE(repaired.FromCache);
    EXPECT_EQ(*repaired.Peaks, *changed.Peaks);
    EXPECT_TRUE(CWaveformLoader::LoadNow(file).FromCache);
}

TEST_F(WaveformFiles, FilesWithoutUsableAudioSayWhyInOneLine)
{
    // No audio track at all.
    const QString video = WaveformMedia::Make({ QStringLiteral("testsrc=s=160x120:d=2:r=10") },
        { QStringLiteral("-c:v"), QStringLiteral("mpeg4") }, dir.filePath(QStringLiteral("silent.mp4")));
    ASSERT_FALSE(video.isEmpty());
    CWaveformResult r = CWaveformLoader::LoadNow(video);
    EXPECT_EQ(r.Status, WaveformStatus::NoAudio);
    EXPECT_FALSE(r.HasPeaks());
    EXPECT_EQ(r.Message(), QStringLiteral("此文件没有音轨"));

    // An MP4 cut in half loses its index at the end: nothing can be read.
    const QString mp4 = makeAudio(QStringLiteral("cut.mp4"), { 1.0 }, 6);
    ASSERT_FALSE(mp4.isEmpty());
    ASSERT_TRUE(QFile::resize(mp4, QFileInfo(mp4).size() / 2));
    r = CWaveformLoader::LoadNow(mp4);
    EXPECT_EQ(r.Status, WaveformStatus::Failed);
    EXPECT_TRUE(r.Message().startsWith(QStringLiteral("无法读取音频："))) << r.Message().toStdString();
    EXPECT_FALSE(QFileInfo::exists(CWaveformCache::FileFor(mp4)));

    // An MKV cut in half keeps what it had: the first burst, and a message.
    const QString mkv = makeAudio(
        QStringLiteral("cut.mkv"), { 1.0, 5.0 }, 8, { QStringLiteral("-c:a"), QStringLiteral("libopus") });
    ASSERT_FALSE(mkv.isEmpty());
    ASSERT_TRUE(QFile::resize(mkv, QFileInfo(mkv).size() / 2));
    r = CWaveformLoader::LoadNow(mkv);
    EXPECT_EQ(r.Status, WaveformStatus::Partial);
    ASSERT_TRUE(r.HasPeaks());
    EXPECT_GT(r.Peaks->Duration(), 2);
    EXPECT_LT(r.Peaks->Duration(), 6);
    ASSERT_EQ(bursts(*r.Peaks).size(), 1u);
    EXPECT_TRUE(r.Message().startsWith(QStringLiteral("音频数据不完整"))) << r.Message().toStdString();
    EXPECT_FALSE(QFileInfo::exists(CWaveformCache::FileFor(mkv)));

    // A WAV whose codec number no decoder knows.
    const QString wav = makeAudio(
        QStringLiteral("odd.wav"), { 1.0 }, 2, { QStringLiteral("-c:a"), QStringLiteral("pcm_s16le") });
    ASSERT_FALSE(wav.isEmpty());
    QFile odd(wav);
    ASSERT_TRUE(odd.open(QIODevice::ReadWrite));
    const QByteArray head = odd.read(64);
    const qsizetype fmt = head.indexOf("fmt ");
    ASSERT_GE(fmt, 0);
    odd.seek(fmt + 8);
    odd.write("\x34\x12", 2);
    odd.close();
    r = CWaveformLoader::LoadNow(wav);
    EXPECT_EQ(r.Status, WaveformStatus::Unsupported);
    EXPECT_TRUE(r.Message().startsWith(QStringLiteral("不支持此音频编码："))) << r.Message().toStdString();

    // Not a media file, and no file at all.
    QFile text(dir.filePath(QStringLiteral("notes.mkv")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("Dialogue: 0,0:00:01.00,0:00:02.00,Default,,0,0,0,,hello\r\n");
    text.close();
    EXPECT_EQ(CWaveformLoader::LoadNow(text.fileName()).Status, WaveformStatus::Failed);
    EXPECT_EQ(
        CWaveformLoader::LoadNow(dir.filePath(QStringLiteral("gone.mkv"))).Status, WaveformStatus::Failed);
}

TEST_F(WaveformFiles, ACancelledDecodeStopsAtOnceAndReportsNothing)
{
    const QString file = makeAudio(QStringLiteral("long.m4a"), { 1.0 }, 60);
    ASSERT_FALSE(file.isEmpty());
    std::atomic<bool> cancel = false;
    std::vector<double> seen;
    const CWaveformResult r = CWaveformDecoder::Decode(file, &cancel, [&](double done) {
        seen.push_back(done);
        if (done >= 0.1)
            cancel = true;
    });
    EXPECT_EQ(r.Status, WaveformStatus::Cancelled);
    EXPECT_FALSE(r.HasPeaks());
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), 0.1); // not one packet's progress after the flag
    EXPECT_FALSE(QFileInfo::exists(CWaveformCache::FileFor(file)));

    // The loader: a cancelled load never reports; the next one does, on this thread.
    CWaveformLoader loader;
    std::vector<CWaveformResult> loaded;
    std::vector<double> progress;
    loader.OnLoaded = [&](const CWaveformResult &r) { loaded.push_back(r); };
    loader.OnProgress = [&](double done) { progress.push_back(done); };
    loader.Load(file);
    EXPECT_TRUE(loader.Busy());
    loader.Cancel();
    EXPECT_FALSE(loader.Busy());
    QTest::qWait(200);
    EXPECT_TRUE(loaded.empty());
    EXPECT_TRUE(progress.empty());
    loader.Load(file);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !loaded.empty(); }, 60000));
    EXPECT_FALSE(loader.Busy());
    EXPECT_EQ(loaded[0].Status, WaveformStatus::Ready);
    EXPECT_NEAR(loaded[0].Peaks->Duration(), 60, 0.05);
    EXPECT_GT(progress.size(), 10u);
    EXPECT_EQ(progress.back(), 1.0);
}
