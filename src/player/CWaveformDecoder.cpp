#include "player/CWaveformDecoder.h"

#include "player/CWaveformPeakBuilder.h"

#include <QFile>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
}

#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace {

// A gap in the stream's time stamps longer than this is left silent instead of closing
// up; shorter jitter (encoder delays, rounding of time stamps) is ignored.
constexpr double GapSeconds = 0.2;
// A file whose audio ends this much before the length its header states is damaged.
constexpr double MissingSeconds = 1.0;

struct FormatCloser
{
    void operator()(AVFormatContext *f) const { avformat_close_input(&f); }
};
struct CodecFreer
{
    void operator()(AVCodecContext *c) const { avcodec_free_context(&c); }
};
struct PacketFreer
{
    void operator()(AVPacket *p) const { av_packet_free(&p); }
};
struct FrameFreer
{
    void operator()(AVFrame *f) const { av_frame_free(&f); }
};
struct SwrFreer
{
    void operator()(SwrContext *s) const { swr_free(&s); }
};

QString errorText(int code)
{
    char buffer[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, buffer, sizeof buffer);
    return QString::fromUtf8(buffer);
}

int interruptCallback(void *opaque)
{
    const auto *cancel = static_cast<const std::atomic<bool> *>(opaque);
    return cancel && cancel->load(std::memory_order_relaxed) ? 1 : 0;
}

CWaveformResult ended(WaveformStatus status, const QString &detail = {})
{
    CWaveformResult r;
    r.Status = status;
    r.Detail = detail;
    return r;
}

// Hands frames to the builder as planar floats, converting other sample formats.
class FrameFeeder
{
public:
    explicit FrameFeeder(CWaveformPeakBuilder &builder)
        : m_builder(builder)
    { }
    ~FrameFeeder() { av_channel_layout_uninit(&m_layout); }
    FrameFeeder(const FrameFeeder &) = delete;
    FrameFeeder &operator=(const FrameFeeder &) = delete;

    bool Feed(const AVFrame &frame)
    {
        const int channels = frame.ch_layout.nb_channels;
        if (channels <= 0 || frame.sample_rate <= 0 || frame.nb_samples <= 0)
            return true;
        if (frame.format == AV_SAMPLE_FMT_FLTP) {
            m_pointers.assign(channels, nullptr);
            for (int c = 0; c < channels; ++c)
                m_pointers[c] = reinterpret_cast<const float *>(frame.extended_data[c]);
            m_builder.AddPlanar(m_pointers.data(), channels, frame.nb_samples, frame.sample_rate);
            return true;
        }
        if (!prepare(frame))
            return false;
        m_planes.resize(size_t(channels));
        std::vector<uint8_t *> out(static_cast<size_t>(channels));
        for (int c = 0; c < channels; ++c) {
            m_planes[c].resize(size_t(frame.nb_samples));
            out[c] = reinterpret_cast<uint8_t *>(m_planes[c].data());
        }
        const int got = swr_convert(m_swr.get(), out.data(), frame.nb_samples,
            const_cast<const uint8_t **>(frame.extended_data), frame.nb_samples);
        if (got <= 0)
            return got == 0;
        m_pointers.assign(channels, nullptr);
        for (int c = 0; c < channels; ++c)
            m_pointers[c] = m_planes[c].data();
        m_builder.AddPlanar(m_pointers.data(), channels, got, frame.sample_rate);
        return true;
    }

private:
    // A converter for the frame's format, made again when the format changes.
    bool prepare(const AVFrame &frame)
    {
        if (m_swr && frame.format == m_format && frame.sample_rate == m_rate
            && av_channel_layout_compare(&frame.ch_layout, &m_layout) == 0)
            return true;
        m_swr.reset();
        av_channel_layout_uninit(&m_layout);
        SwrContext *swr = nullptr;
        // The library takes the layouts by pointer to non-const but only reads them.
        auto *layout = const_cast<AVChannelLayout *>(&frame.ch_layout);
        if (swr_alloc_set_opts2(&swr, layout, AV_SAMPLE_FMT_FLTP, frame.sample_rate, layout,
                AVSampleFormat(frame.format), frame.sample_rate, 0, nullptr)
                < 0
            || swr_init(swr) < 0) {
            swr_free(&swr);
            return false;
        }
        m_swr.reset(swr);
        m_format = frame.format;
        m_rate = frame.sample_rate;
        av_channel_layout_copy(&m_layout, &frame.ch_layout);
        return true;
    }

    CWaveformPeakBuilder &m_builder;
    std::unique_ptr<SwrContext, SwrFreer> m_swr;
    int m_format = -1;
    int m_rate = 0;
    AVChannelLayout m_layout {};
    std::vector<std::vector<float>> m_planes;
    std::vector<const float *> m_pointers;
};

// One decode of one file, in steps: open the file, open the audio track's decoder, read
// the packets. A step that fails leaves its result in `Ended`.
class DecodeRun
{
public:
    DecodeRun(const std::atomic<bool> *cancel, const CWaveformDecoder::ProgressFn &progress)
        : m_cancel(cancel)
        , m_progress(progress)
        , m_feeder(m_builder)
    { }

    std::optional<CWaveformResult> Ended;

    bool Open(const QString &path);
    bool OpenTrack();
    void ReadAll();
    CWaveformResult Finish();

private:
    bool cancelled() const { return m_cancel && m_cancel->load(std::memory_order_relaxed); }
    bool end(WaveformStatus status, const QString &detail = {})
    {
        Ended = ended(status, detail);
        return false;
    }
    void report(double done);
    void drain();

    const std::atomic<bool> *m_cancel;
    const CWaveformDecoder::ProgressFn &m_progress;
    std::unique_ptr<AVFormatContext, FormatCloser> m_format;
    std::unique_ptr<AVCodecContext, CodecFreer> m_decoder;
    std::unique_ptr<AVPacket, PacketFreer> m_packet { av_packet_alloc() };
    std::unique_ptr<AVFrame, FrameFreer> m_frame { av_frame_alloc() };
    CWaveformPeakBuilder m_builder;
    FrameFeeder m_feeder;
    int m_index = -1;
    double m_timeBase = 0;
    double m_fileStart = 0; // seconds
    double m_duration = 0; // seconds, 0 when not known
    int m_lastPercent = -1;
    bool m_damaged = false;
    bool m_decodedAny = false;
    QString m_failure;
};

bool DecodeRun::Open(const QString &path)
{
    AVFormatContext *raw = m_packet && m_frame ? avformat_alloc_context() : nullptr;
    if (!raw)
        return end(WaveformStatus::Failed, errorText(AVERROR(ENOMEM)));
    raw->interrupt_callback.callback = interruptCallback;
    raw->interrupt_callback.opaque = const_cast<std::atomic<bool> *>(m_cancel);
    // Through the file protocol only: a name with a colon is never taken for a URL.
    const QByteArray url = "file:" + QFile::encodeName(path);
    int rc = avformat_open_input(&raw, url.constData(), nullptr, nullptr);
    if (rc < 0) // the library frees the context on failure
        return end(cancelled() ? WaveformStatus::Cancelled : WaveformStatus::Failed, errorText(rc));
    m_format.reset(raw);
    rc = avformat_find_stream_info(m_format.get(), nullptr);
    if (cancelled())
        return end(WaveformStatus::Cancelled);
    if (rc < 0)
        return end(WaveformStatus::Failed, errorText(rc));
    return true;
}

bool DecodeRun::OpenTrack()
{
    AVFormatContext &format = *m_format;
    // The player plays the track the file marks as its default; so does the waveform.
    m_index = av_find_best_stream(&format, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (m_index < 0)
        return end(WaveformStatus::NoAudio);
    AVStream *stream = format.streams[m_index];
    const AVCodec *codec = avcodec_find_decoder(stream->codecpar->codec_id);
    if (!codec) {
        const char *name = avcodec_get_name(stream->codecpar->codec_id);
        QString detail = QString::fromLatin1(name ? name : "?");
        if (stream->codecpar->codec_tag)
            detail += QStringLiteral(" (0x%1)").arg(stream->codecpar->codec_tag, 4, 16, QChar(u'0'));
        return end(WaveformStatus::Unsupported, detail);
    }
    m_decoder.reset(avcodec_alloc_context3(codec));
    if (!m_decoder || avcodec_parameters_to_context(m_decoder.get(), stream->codecpar) < 0)
        return end(WaveformStatus::Failed, errorText(AVERROR(ENOMEM)));
    m_decoder->pkt_timebase = stream->time_base;
    const int rc = avcodec_open2(m_decoder.get(), codec, nullptr);
    if (rc < 0)
        return end(WaveformStatus::Unsupported, QString::fromLatin1(codec->name) + u' ' + errorText(rc));
    for (unsigned i = 0; i < format.nb_streams; ++i)
        if (int(i) != m_index)
            format.streams[i]->discard = AVDISCARD_ALL;

    // Times count from the file's start, as the player's position does.
    m_timeBase = av_q2d(stream->time_base);
    m_fileStart = format.start_time != AV_NOPTS_VALUE ? format.start_time / double(AV_TIME_BASE) : 0.0;
    m_duration = format.duration > 0 ? format.duration / double(AV_TIME_BASE) : 0.0;
    if (stream->duration > 0)
        m_duration = stream->duration * m_timeBase;
    m_builder.Reserve(m_duration);
    if (stream->start_time != AV_NOPTS_VALUE)
        m_builder.SkipTo(stream->start_time * m_timeBase - m_fileStart);
    return true;
}

void DecodeRun::report(double done)
{
    const int percent = int(std::clamp(done, 0.0, 1.0) * 100);
    if (m_progress && percent > m_lastPercent) {
        m_lastPercent = percent;
        m_progress(percent / 100.0);
    }
}

void DecodeRun::drain()
{
    while (avcodec_receive_frame(m_decoder.get(), m_frame.get()) >= 0) {
        const qint64 pts = m_frame->best_effort_timestamp;
        if (pts != AV_NOPTS_VALUE) {
            // A time stamp past the stated end is damage, not a gap to fill.
            const double at = pts * m_timeBase - m_fileStart;
            if (at - m_builder.Time() > GapSeconds && (m_duration <= 0 || at < m_duration))
                m_builder.SkipTo(at);
        }
        if (m_feeder.Feed(*m_frame))
            m_decodedAny = true;
        else
            m_damaged = true;
        av_frame_unref(m_frame.get());
    }
}

void DecodeRun::ReadAll()
{
    const qint64 fileSize = m_format->pb ? avio_size(m_format->pb) : -1;
    report(0);
    for (;;) {
        if (cancelled()) {
            end(WaveformStatus::Cancelled);
            return;
        }
        const int rc = av_read_frame(m_format.get(), m_packet.get());
        if (rc < 0) {
            if (rc != AVERROR_EOF) {
                m_damaged = true;
                m_failure = errorText(rc);
            }
            break;
        }
        if (m_packet->stream_index == m_index) {
            // A packet the decoder refuses is a damaged spot: skip it and go on.
            if (avcodec_send_packet(m_decoder.get(), m_packet.get()) < 0)
                m_damaged = true;
            else
                drain();
            if (m_duration > 0)
                report(m_builder.Time() / m_duration);
            else if (fileSize > 0)
                report(double(avio_tell(m_format->pb)) / fileSize);
        }
        av_packet_unref(m_packet.get());
    }
    if (cancelled()) {
        end(WaveformStatus::Cancelled);
        return;
    }
    avcodec_send_packet(m_decoder.get(), nullptr);
    drain();
}

CWaveformResult DecodeRun::Finish()
{
    if (!m_decodedAny)
        return ended(
            WaveformStatus::Failed, m_failure.isEmpty() ? errorText(AVERROR_INVALIDDATA) : m_failure);
    // A length guessed from the bit rate is no proof that audio is missing.
    const bool shortOfLength = m_duration > 0 && m_builder.Time() < m_duration - MissingSeconds
        && (m_damaged || m_format->duration_estimation_method != AVFMT_DURATION_FROM_BITRATE);
    CWaveformResult result;
    result.Status = shortOfLength ? WaveformStatus::Partial : WaveformStatus::Ready;
    result.Peaks = std::make_shared<const CWaveformPeaks>(m_builder.Take());
    report(1);
    return result;
}

} // namespace

CWaveformResult CWaveformDecoder::Decode(
    const QString &path, const std::atomic<bool> *cancel, const ProgressFn &progress)
{
    av_log_set_level(AV_LOG_QUIET);
    DecodeRun run(cancel, progress);
    if (run.Open(path) && run.OpenTrack())
        run.ReadAll();
    return run.Ended ? *run.Ended : run.Finish();
}
