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

} // namespace

CWaveformResult CWaveformDecoder::Decode(
    const QString &path, const std::atomic<bool> *cancel, const ProgressFn &progress)
{
    const auto cancelled = [cancel] { return cancel && cancel->load(std::memory_order_relaxed); };
    av_log_set_level(AV_LOG_QUIET);

    AVFormatContext *raw = avformat_alloc_context();
    if (!raw)
        return ended(WaveformStatus::Failed, errorText(AVERROR(ENOMEM)));
    raw->interrupt_callback.callback = interruptCallback;
    raw->interrupt_callback.opaque = const_cast<std::atomic<bool> *>(cancel);
    // Through the file protocol only: a name with a colon is never taken for a URL.
    const QByteArray url = "file:" + QFile::encodeName(path);
    int rc = avformat_open_input(&raw, url.constData(), nullptr, nullptr);
    if (rc < 0) // the library frees the context on failure
        return ended(cancelled() ? WaveformStatus::Cancelled : WaveformStatus::Failed, errorText(rc));
    std::unique_ptr<AVFormatContext, FormatCloser> format(raw);
    rc = avformat_find_stream_info(format.get(), nullptr);
    if (cancelled())
        return ended(WaveformStatus::Cancelled);
    if (rc < 0)
        return ended(WaveformStatus::Failed, errorText(rc));

    int index = -1;
    for (unsigned i = 0; i < format->nb_streams && index < 0; ++i)
        if (format->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO)
            index = int(i);
    if (index < 0)
        return ended(WaveformStatus::NoAudio);
    // The player plays the track the file marks as its default; so does the waveform.
    const int best = av_find_best_stream(format.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (best >= 0)
        index = best;
    AVStream *stream = format->streams[index];
    const AVCodec *codec = avcodec_find_decoder(stream->codecpar->codec_id);
    if (!codec) {
        const char *name = avcodec_get_name(stream->codecpar->codec_id);
        QString detail = QString::fromLatin1(name ? name : "?");
        if (stream->codecpar->codec_tag)
            detail += QStringLiteral(" (0x%1)").arg(stream->codecpar->codec_tag, 4, 16, QChar(u'0'));
        return ended(WaveformStatus::Unsupported, detail);
    }
    std::unique_ptr<AVCodecContext, CodecFreer> decoder(avcodec_alloc_context3(codec));
    if (!decoder || avcodec_parameters_to_context(decoder.get(), stream->codecpar) < 0)
        return ended(WaveformStatus::Failed, errorText(AVERROR(ENOMEM)));
    decoder->pkt_timebase = stream->time_base;
    rc = avcodec_open2(decoder.get(), codec, nullptr);
    if (rc < 0)
        return ended(WaveformStatus::Unsupported, QString::fromLatin1(codec->name) + u' ' + errorText(rc));
    for (unsigned i = 0; i < format->nb_streams; ++i)
        if (int(i) != index)
            format->streams[i]->discard = AVDISCARD_ALL;

    // Times count from the file's start, as the player's position does.
    const double timeBase = av_q2d(stream->time_base);
    const double fileStart
        = format->start_time != AV_NOPTS_VALUE ? format->start_time / double(AV_TIME_BASE) : 0.0;
    double duration = format->duration > 0 ? format->duration / double(AV_TIME_BASE) : 0.0;
    if (stream->duration > 0)
        duration = stream->duration * timeBase;

    CWaveformPeakBuilder builder;
    builder.Reserve(duration);
    if (stream->start_time != AV_NOPTS_VALUE)
        builder.SkipTo(stream->start_time * timeBase - fileStart);
    FrameFeeder feeder(builder);
    std::unique_ptr<AVPacket, PacketFreer> packet(av_packet_alloc());
    std::unique_ptr<AVFrame, FrameFreer> frame(av_frame_alloc());
    if (!packet || !frame)
        return ended(WaveformStatus::Failed, errorText(AVERROR(ENOMEM)));

    int lastPercent = -1;
    const qint64 fileSize = format->pb ? avio_size(format->pb) : -1;
    const auto report = [&](double done) {
        if (!progress)
            return;
        const int percent = int(std::clamp(done, 0.0, 1.0) * 100);
        if (percent > lastPercent) {
            lastPercent = percent;
            progress(percent / 100.0);
        }
    };
    bool damaged = false;
    bool decodedAny = false;
    QString failure;
    const auto drain = [&]() {
        while (avcodec_receive_frame(decoder.get(), frame.get()) >= 0) {
            const qint64 pts = frame->best_effort_timestamp;
            if (pts != AV_NOPTS_VALUE) {
                // A time stamp past the stated end is damage, not a gap to fill.
                const double at = pts * timeBase - fileStart;
                if (at - builder.Time() > GapSeconds && (duration <= 0 || at < duration))
                    builder.SkipTo(at);
            }
            if (!feeder.Feed(*frame))
                damaged = true;
            else
                decodedAny = true;
            av_frame_unref(frame.get());
        }
    };

    report(0);
    for (;;) {
        if (cancelled())
            return ended(WaveformStatus::Cancelled);
        rc = av_read_frame(format.get(), packet.get());
        if (rc < 0) {
            if (rc != AVERROR_EOF) {
                damaged = true;
                failure = errorText(rc);
            }
            break;
        }
        if (packet->stream_index == index) {
            // A packet the decoder refuses is a damaged spot: skip it and go on.
            if (avcodec_send_packet(decoder.get(), packet.get()) < 0)
                damaged = true;
            else
                drain();
            if (duration > 0)
                report(builder.Time() / duration);
            else if (fileSize > 0)
                report(double(avio_tell(format->pb)) / fileSize);
        }
        av_packet_unref(packet.get());
    }
    if (cancelled())
        return ended(WaveformStatus::Cancelled);
    avcodec_send_packet(decoder.get(), nullptr);
    drain();

    if (!decodedAny)
        return ended(WaveformStatus::Failed, failure.isEmpty() ? errorText(AVERROR_INVALIDDATA) : failure);
    // A length guessed from the bit rate is no proof that audio is missing.
    const bool shortOfLength = duration > 0 && builder.Time() < duration - MissingSeconds
        && (damaged || format->duration_estimation_method != AVFMT_DURATION_FROM_BITRATE);
    CWaveformResult result;
    result.Status = shortOfLength ? WaveformStatus::Partial : WaveformStatus::Ready;
    result.Peaks = std::make_shared<const CWaveformPeaks>(builder.Take());
    report(1);
    return result;
}
