#include "core/basText.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <QtEndian>

#include <cerrno>
#include <iconv.h>
#include <optional>

namespace {

// One iconv conversion between UTF-16LE and GBK. Invalid input is replaced rather than
// stopping the conversion: a GBK byte that is not part of a character becomes U+FFFD,
// a character GBK cannot hold becomes "?".
class Iconv
{
public:
    Iconv(const char *to, const char *from)
    {
        m_cd = iconv_open(to, from);
        if (m_cd == reinterpret_cast<iconv_t>(-1) && std::string(to) == "CP936")
            m_cd = iconv_open("GBK", from);
        if (m_cd == reinterpret_cast<iconv_t>(-1) && std::string(from) == "CP936")
            m_cd = iconv_open(to, "GBK");
    }
    ~Iconv()
    {
        if (valid())
            iconv_close(m_cd);
    }
    Iconv(const Iconv &) = delete;
    Iconv &operator=(const Iconv &) = delete;
    bool valid() const { return m_cd != reinterpret_cast<iconv_t>(-1); }

    // Converts `in`; on a bad sequence of `badInputSize` bytes writes `replacement`.
    QByteArray convert(const char *in, size_t size, size_t badInputSize, const QByteArray &replacement)
    {
        QByteArray out;
        out.resize(qsizetype(size * 2 + 16));
        char *inPtr = const_cast<char *>(in);
        size_t inLeft = size;
        char *outPtr = out.data();
        size_t outLeft = size_t(out.size());
        iconv(m_cd, nullptr, nullptr, nullptr, nullptr);
        while (inLeft > 0) {
            const size_t r = iconv(m_cd, &inPtr, &inLeft, &outPtr, &outLeft);
            if (r != size_t(-1))
                break;
            if (errno == E2BIG || outLeft < size_t(replacement.size()) + 8) {
                const qsizetype used = outPtr - out.data();
                out.resize(out.size() * 2 + 16);
                outPtr = out.data() + used;
                outLeft = size_t(out.size() - used);
                continue;
            }
            // EILSEQ or EINVAL: replace the offending unit and go on.
            size_t skip = qMin(badInputSize, inLeft);
            if (badInputSize == 2 && inLeft >= 4) {
                // a surrogate pair counts as one character
                const ushort unit = uchar(inPtr[0]) | (uchar(inPtr[1]) << 8);
                if (unit >= 0xD800 && unit < 0xDC00)
                    skip = 4;
            }
            inPtr += skip;
            inLeft -= skip;
            memcpy(outPtr, replacement.constData(), size_t(replacement.size()));
            outPtr += replacement.size();
            outLeft -= size_t(replacement.size());
        }
        out.resize(outPtr - out.data());
        return out;
    }

private:
    iconv_t m_cd;
};

// The iconv name of a Windows code page; 1252 for one not listed.
const char *iconvName(int codePage)
{
    switch (codePage) {
    case 936:
        return "GBK";
    case 950:
        return "BIG5";
    case 932:
        return "SHIFT_JIS";
    case 949:
        return "CP949";
    case 874:
        return "CP874";
    case 1250:
        return "CP1250";
    case 1251:
        return "CP1251";
    case 1253:
        return "CP1253";
    case 1254:
        return "CP1254";
    case 1255:
        return "CP1255";
    case 1256:
        return "CP1256";
    case 1257:
        return "CP1257";
    case 1258:
        return "CP1258";
    case 437:
        return "CP437";
    case 850:
        return "CP850";
    case 10000:
        return "MACINTOSH";
    case 65001:
        return "UTF-8";
    default:
        return "CP1252";
    }
}

QString fromUtf16Bytes(const char *data, qsizetype size)
{
    QString text(size / 2, Qt::Uninitialized);
    memcpy(text.data(), data, size_t(size / 2 * 2));
    return text;
}

bool isAscii(const QByteArray &bytes)
{
    for (char c : bytes)
        if (uchar(c) >= 0x80)
            return false;
    return true;
}

} // namespace

QString DecodeSystemCodePage(const QByteArray &bytes)
{
    if (isAscii(bytes))
        return QString::fromLatin1(bytes);
    QByteArrayView view(bytes);
    if (view.startsWith("\xEF\xBB\xBF"))
        view = view.sliced(3);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(view);
    if (!utf8.hasError())
        return text;
    static thread_local Iconv gbk("UTF-16LE", "CP936");
    if (!gbk.valid())
        return QString::fromLatin1(bytes);
    const QByteArray replacement("\xFD\xFF", 2);
    const QByteArray utf16 = gbk.convert(bytes.constData(), size_t(bytes.size()), 1, replacement);
    return fromUtf16Bytes(utf16.constData(), utf16.size());
}

QString DecodeCodePage(const QByteArray &bytes, int codePage)
{
    if (bytes.isEmpty())
        return {};
    std::optional<Iconv> decoder(std::in_place, "UTF-16LE", iconvName(codePage));
    if (!decoder->valid())
        decoder.emplace("UTF-16LE", "CP1252");
    if (!decoder->valid())
        return QString::fromLatin1(bytes);
    const QByteArray utf16
        = decoder->convert(bytes.constData(), size_t(bytes.size()), 1, QByteArray("\xFD\xFF", 2));
    return fromUtf16Bytes(utf16.constData(), utf16.size());
}

QByteArray EncodeSystemCodePage(const QString &text)
{
    bool ascii = true;
    for (QChar c : text)
        if (c.unicode() >= 0x80) {
            ascii = false;
            break;
        }
    if (ascii)
        return text.toLatin1();
    static thread_local Iconv gbk("CP936", "UTF-16LE");
    if (!gbk.valid())
        return text.toLatin1();
    return gbk.convert(
        reinterpret_cast<const char *>(text.utf16()), size_t(text.size()) * 2, 2, QByteArray("?"));
}

WholeFileRead DecodeWholeFile(const QByteArray &bytes, bool guessUnmarkedUnicode)
{
    WholeFileRead result;
    result.Ok = true;
    if (bytes.isEmpty()) {
        result.Empty = true;
        return result;
    }
    qsizetype offset = 0;
    if (bytes.size() >= 2
        && ((uchar(bytes[0]) == 0xFF && uchar(bytes[1]) == 0xFE)
            || (uchar(bytes[0]) == 0xFE && uchar(bytes[1]) == 0xFF))) {
        offset = 2;
        result.Unicode = true;
    } else if (guessUnmarkedUnicode && bytes.size() >= 2 && uchar(bytes[0]) < 128 && bytes[1] == 0) {
        result.Unicode = true;
    }
    if (result.Unicode)
        result.Text = fromUtf16Bytes(bytes.constData() + offset, bytes.size() - offset);
    else
        result.Text = DecodeSystemCodePage(bytes);
    return result;
}

QString DecodeUtf16(const QByteArray &bytes)
{
    const bool marked = bytes.size() >= 2
        && ((uchar(bytes[0]) == 0xFF && uchar(bytes[1]) == 0xFE)
            || (uchar(bytes[0]) == 0xFE && uchar(bytes[1]) == 0xFF));
    const qsizetype offset = marked ? 2 : 0;
    return fromUtf16Bytes(bytes.constData() + offset, bytes.size() - offset);
}

WholeFileRead ReadWholeFile(const QString &path, bool guessUnmarkedUnicode)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        WholeFileRead failed;
        failed.Error = file.errorString();
        return failed;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        WholeFileRead failed;
        failed.Error = file.errorString();
        return failed;
    }
    return DecodeWholeFile(bytes, guessUnmarkedUnicode);
}

TextFileRead ReadTextStream(const QString &path, FileCode fileCode)
{
    TextFileRead result;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.Error = file.errorString();
        return result;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        result.Error = file.errorString();
        return result;
    }
    result.Ok = true;
    const bool marked = bytes.size() >= 2 && uchar(bytes[0]) == 0xFF && uchar(bytes[1]) == 0xFE;
    if (fileCode == FileCode::ANSI) {
        result.Text = DecodeSystemCodePage(bytes);
    } else if (fileCode == FileCode::Unicode || marked) {
        const qsizetype offset = marked ? 2 : 0;
        result.Text = fromUtf16Bytes(bytes.constData() + offset, bytes.size() - offset);
    } else {
        result.Text = DecodeSystemCodePage(bytes);
    }
    return result;
}

bool WriteTextFile(const QString &path, const QString &text, bool unicode, QString *error)
{
    // Unbuffered: the whole text goes to the file in one call, without a copy through the
    // device's buffer.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    const auto put = [&file](const char *data, qint64 size) { return file.write(data, size) == size; };
    bool written;
    if (unicode) {
        written = put("\xFF\xFE", 2);
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
        // The text's own storage already is UTF-16LE.
        written = written && put(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
#else
        QByteArray bytes(text.size() * 2, Qt::Uninitialized);
        for (qsizetype i = 0; i < text.size(); ++i)
            qToLittleEndian(text.at(i).unicode(), bytes.data() + i * 2);
        written = written && put(bytes.constData(), bytes.size());
#endif
    } else {
        const QByteArray bytes = EncodeSystemCodePage(text);
        written = put(bytes.constData(), bytes.size());
    }
    if (!written || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}
