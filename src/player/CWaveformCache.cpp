#include "player/CWaveformCache.h"

#include "core/basPlatform.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QtEndian>
#include <array>
#include <cstring>

namespace {

// "VelmarWv", a format version, the CRC-32 of everything after it; then the key, the
// source's channels and rate, the bin count and the bins, all little-endian.
constexpr char Magic[8] = { 'V', 'e', 'l', 'm', 'a', 'r', 'W', 'v' };
constexpr quint32 Version = 1;
constexpr qsizetype ChecksumEnd = 16; // magic, version, checksum
// A cache file of more than a day of audio is not believed.
constexpr qint64 MaxBins = qint64(86400) * CWaveformPeaks::BinsPerSecond;

quint32 crc32(const char *data, qsizetype size)
{
    static const std::array<quint32, 256> table = [] {
        std::array<quint32, 256> t {};
        for (quint32 i = 0; i < 256; ++i) {
            quint32 c = i;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[i] = c;
        }
        return t;
    }();
    quint32 c = 0xFFFFFFFFu;
    for (qsizetype i = 0; i < size; ++i)
        c = table[(c ^ quint8(data[i])) & 0xFF] ^ (c >> 8);
    return c ^ 0xFFFFFFFFu;
}

template <typename T> void put(QByteArray &out, T value)
{
    char bytes[sizeof(T)];
    qToLittleEndian(value, bytes);
    out.append(bytes, sizeof(T));
}

// Reads little-endian values from the front of a byte view; any read past the end
// makes the whole reader fail.
class Reader
{
public:
    explicit Reader(QByteArrayView bytes)
        : m_bytes(bytes)
    { }
    template <typename T> T get()
    {
        if (!need(sizeof(T)))
            return T {};
        const T value = qFromLittleEndian<T>(m_bytes.data() + m_pos);
        m_pos += sizeof(T);
        return value;
    }
    QByteArrayView take(qsizetype size)
    {
        if (size < 0 || !need(size))
            return {};
        const QByteArrayView view = m_bytes.sliced(m_pos, size);
        m_pos += size;
        return view;
    }
    bool Ok() const { return m_ok; }
    qsizetype Left() const { return m_bytes.size() - m_pos; }

private:
    bool need(qsizetype size)
    {
        if (m_bytes.size() - m_pos < size)
            m_ok = false;
        return m_ok;
    }
    QByteArrayView m_bytes;
    qsizetype m_pos = 0;
    bool m_ok = true;
};

} // namespace

WaveformCacheKey WaveformCacheKey::Of(const QString &path)
{
    WaveformCacheKey key;
    const QFileInfo info(path);
    key.Path = info.absoluteFilePath();
    if (info.isFile() && info.isReadable()) {
        key.Size = info.size();
        key.Modified = info.lastModified().toMSecsSinceEpoch();
    }
    return key;
}

QString CWaveformCache::Folder()
{
    return ProgramFolder() + QStringLiteral("Waveform/");
}

QString CWaveformCache::FileFor(const QString &mediaPath)
{
    const QByteArray hash = QCryptographicHash::hash(
        QFileInfo(mediaPath).absoluteFilePath().toUtf8(), QCryptographicHash::Sha1);
    return Folder() + QString::fromLatin1(hash.toHex().left(20)) + QStringLiteral(".peaks");
}

QByteArray CWaveformCache::Encode(const WaveformCacheKey &key, const CWaveformPeaks &peaks)
{
    const QByteArray path = key.Path.toUtf8();
    QByteArray out;
    out.reserve(64 + path.size() + peaks.MemoryBytes());
    out.append(Magic, sizeof Magic);
    put<quint32>(out, Version);
    put<quint32>(out, 0); // the checksum, filled in below
    put<quint32>(out, quint32(path.size()));
    out.append(path);
    put<qint64>(out, key.Size);
    put<qint64>(out, key.Modified);
    put<qint32>(out, peaks.Channels);
    put<qint32>(out, peaks.SampleRate);
    put<qint64>(out, peaks.Count());
    const qsizetype binsAt = out.size();
    out.resize(binsAt + peaks.MemoryBytes());
    char *bins = out.data() + binsAt;
    for (const WaveformPeak &p : peaks.Bins) {
        qToLittleEndian(p.Min, bins);
        qToLittleEndian(p.Max, bins + 2);
        bins += 4;
    }
    const quint32 sum = crc32(out.constData() + ChecksumEnd, out.size() - ChecksumEnd);
    qToLittleEndian(sum, out.data() + ChecksumEnd - 4);
    return out;
}

std::optional<CWaveformPeaks> CWaveformCache::Decode(const QByteArray &bytes, const WaveformCacheKey &key)
{
    Reader in(bytes);
    const QByteArrayView magic = in.take(sizeof Magic);
    if (!in.Ok() || std::memcmp(magic.data(), Magic, sizeof Magic) != 0 || in.get<quint32>() != Version)
        return std::nullopt;
    const quint32 sum = in.get<quint32>();
    if (!in.Ok() || sum != crc32(bytes.constData() + ChecksumEnd, bytes.size() - ChecksumEnd))
        return std::nullopt;
    const QByteArrayView path = in.take(qsizetype(in.get<quint32>()));
    WaveformCacheKey stored;
    stored.Path = QString::fromUtf8(path);
    stored.Size = in.get<qint64>();
    stored.Modified = in.get<qint64>();
    CWaveformPeaks peaks;
    peaks.Channels = in.get<qint32>();
    peaks.SampleRate = in.get<qint32>();
    const qint64 count = in.get<qint64>();
    if (!in.Ok() || !(stored == key) || count < 0 || count > MaxBins || in.Left() != count * 4)
        return std::nullopt;
    const char *bins = in.take(count * 4).data();
    peaks.Bins.resize(size_t(count));
    for (WaveformPeak &p : peaks.Bins) {
        p.Min = qFromLittleEndian<qint16>(bins);
        p.Max = qFromLittleEndian<qint16>(bins + 2);
        bins += 4;
    }
    return peaks;
}

std::optional<CWaveformPeaks> CWaveformCache::Read(const WaveformCacheKey &key)
{
    if (!key.Valid())
        return std::nullopt;
    QFile file(FileFor(key.Path));
    if (!file.open(QIODevice::ReadOnly) || file.size() > 4096 + MaxBins * 4)
        return std::nullopt;
    return Decode(file.readAll(), key);
}

bool CWaveformCache::Write(const WaveformCacheKey &key, const CWaveformPeaks &peaks)
{
    if (!key.Valid() || !QDir().mkpath(Folder()))
        return false;
    QSaveFile file(FileFor(key.Path));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QByteArray bytes = Encode(key, peaks);
    if (file.write(bytes) != bytes.size())
        return false;
    return file.commit();
}
