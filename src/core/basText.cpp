#include "core/basText.h"

#include "core/basMain.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <QtEndian>

#include <cerrno>
#include <iconv.h>
#include <map>
#include <memory>
#include <optional>
#include <uchardet.h>

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
    QByteArray convert(const char *in, size_t size, size_t badInputSize, const QByteArray &replacement,
        qsizetype *replaced = nullptr)
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
            if (replaced)
                ++*replaced;
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

// One converter per code page and direction, made when first used.
Iconv *converter(const QByteArray &to, const QByteArray &from)
{
    static thread_local std::map<QByteArray, std::unique_ptr<Iconv>> converters;
    std::unique_ptr<Iconv> &slot = converters[to + '>' + from];
    if (!slot)
        slot = std::make_unique<Iconv>(to.constData(), from.constData());
    return slot->valid() ? slot.get() : nullptr;
}

QString decodeWith(Iconv &decoder, QByteArrayView bytes, qsizetype *replaced = nullptr)
{
    const QByteArray utf16
        = decoder.convert(bytes.data(), size_t(bytes.size()), 1, QByteArray("\xFD\xFF", 2), replaced);
    return fromUtf16Bytes(utf16.constData(), utf16.size());
}

bool startsWith(const QByteArray &bytes, const char *mark, qsizetype size)
{
    return bytes.size() >= size && memcmp(bytes.constData(), mark, size_t(size)) == 0;
}

// The detector's names for code pages whose Windows form is what files are written in:
// the Windows forms keep the backslash and the tilde where the plain ones put a yen sign
// and an overline, and are supersets of them.
QByteArray windowsForm(const QByteArray &name)
{
    static const std::pair<const char *, const char *> forms[] = {
        { "SHIFT_JIS", "CP932" },
        { "EUC-KR", "CP949" },
        { "UHC", "CP949" },
        { "GB2312", "GB18030" },
        { "ISO-8859-1", "WINDOWS-1252" },
    };
    for (const auto &[plain, windows] : forms)
        if (name == plain)
            return windows;
    return name;
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

QByteArray EncodeCodePage(const QString &text, const QByteArray &codePage)
{
    if (codePage.isEmpty())
        return EncodeSystemCodePage(text);
    Iconv *encoder = converter(codePage, "UTF-16LE");
    if (!encoder)
        return EncodeSystemCodePage(text);
    return encoder->convert(
        reinterpret_cast<const char *>(text.utf16()), size_t(text.size()) * 2, 2, QByteArray("?"));
}

bool IsKnownCodePage(const QByteArray &codePage)
{
    return converter("UTF-16LE", codePage) != nullptr;
}

QString NormaliseLineEnds(const QString &text)
{
    const qsizetype size = text.size();
    const QChar *in = text.constData();
    // Most files need nothing: look for a lone end first.
    qsizetype first = -1;
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t c = in[i].unicode();
        if (c == u'\n' || (c == u'\r' && (i + 1 == size || in[i + 1] != u'\n'))) {
            first = i;
            break;
        }
        if (c == u'\r')
            ++i; // a CR LF
    }
    if (first < 0)
        return text;
    QString out;
    out.reserve(size + size / 16 + 2);
    out.append(in, first);
    for (qsizetype i = first; i < size; ++i) {
        const char16_t c = in[i].unicode();
        if (c == u'\r') {
            out += QLatin1String("\r\n");
            if (i + 1 < size && in[i + 1] == u'\n')
                ++i;
        } else if (c == u'\n') {
            out += QLatin1String("\r\n");
        } else {
            out += in[i];
        }
    }
    return out;
}

bool HasOnlyBareLineFeeds(QStringView text)
{
    return text.contains(u'\n') && !text.contains(QStringView(u"\r\n"));
}

QByteArray DetectCodePage(const QByteArray &bytes)
{
    uchardet_t detector = uchardet_new();
    if (!detector)
        return {};
    uchardet_handle_data(detector, bytes.constData(), size_t(bytes.size()));
    uchardet_data_end(detector);
    const char *found = uchardet_get_charset(detector);
    QByteArray name = found ? QByteArray(found).toUpper() : QByteArray();
    uchardet_delete(detector);
    // ASCII and UTF-8 were taken before a detector was asked; what is left of them here
    // is not valid, and UTF-16 or UTF-32 without a mark is left to the system code page.
    if (name.isEmpty() || name == "ASCII" || name.startsWith("UTF"))
        return {};
    name = windowsForm(name);
    return converter("UTF-16LE", name) ? name : QByteArray();
}

QString DecodeModernFile(const QByteArray &bytes, const TextCoding &preferred, TextCoding *coding)
{
    TextCoding decided;
    QString text;
    if (startsWith(bytes, "\xFF\xFE", 2)) {
        decided.Code = FileCode::Unicode;
        text = fromUtf16Bytes(bytes.constData() + 2, bytes.size() - 2);
    } else if (startsWith(bytes, "\xFE\xFF", 2)) {
        decided.Code = FileCode::Unicode;
        text = QString(QStringDecoder(QStringDecoder::Utf16BE).decode(QByteArrayView(bytes).sliced(2)));
    } else if (startsWith(bytes, "\xEF\xBB\xBF", 3)) {
        decided.Code = FileCode::UTF8;
        text = QString::fromUtf8(QByteArrayView(bytes).sliced(3));
    } else if (preferred.Code == FileCode::ANSI && !preferred.CodePage.isEmpty()
        && converter("UTF-16LE", preferred.CodePage)) {
        decided = preferred;
        text = decodeWith(*converter("UTF-16LE", preferred.CodePage), bytes);
    } else if (preferred.Code == FileCode::Unicode
        || (preferred.Code != FileCode::UTF8 && bytes.size() >= 2 && uchar(bytes[0]) < 128
            && bytes[1] == 0)) {
        decided.Code = FileCode::Unicode;
        text = fromUtf16Bytes(bytes.constData(), bytes.size());
    } else if (preferred.Code == FileCode::UTF8) {
        decided.Code = FileCode::UTF8;
        text = QString::fromUtf8(bytes);
    } else {
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        text = utf8.decode(bytes);
        if (!utf8.hasError()) {
            decided.Code = FileCode::UTF8;
        } else {
            decided.Code = FileCode::ANSI;
            decided.CodePage = DetectCodePage(bytes);
            Iconv *decoder = decided.CodePage.isEmpty() ? nullptr : converter("UTF-16LE", decided.CodePage);
            qsizetype replaced = 0;
            if (decoder)
                text = decodeWith(*decoder, bytes, &replaced);
            // Windows-1252 leaves five bytes undefined; a file holding one is Latin-1,
            // which takes every byte back as it was.
            if (decoder && replaced > 0 && decided.CodePage == "WINDOWS-1252") {
                decided.CodePage = "ISO-8859-1";
                text = decodeWith(*converter("UTF-16LE", decided.CodePage), bytes);
            }
            if (!decoder) {
                decided.CodePage.clear();
                text = DecodeSystemCodePage(bytes);
            }
        }
    }
    if (coding)
        *coding = decided;
    return NormaliseLineEnds(text);
}

TextCoding ModernFileCoding(const QString &path, const TextCoding &present)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return present;
    TextCoding coding;
    const QByteArray bytes = file.readAll();
    if (bytes.isEmpty())
        return present;
    DecodeModernFile(bytes, {}, &coding);
    return coding;
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
    result.Coding.Code = result.Unicode ? FileCode::Unicode : FileCode::ANSI;
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
    if (!ModernFiles || bytes.isEmpty())
        return DecodeWholeFile(bytes, guessUnmarkedUnicode);
    WholeFileRead result;
    result.Ok = true;
    result.Text = DecodeModernFile(bytes, { FileCode::SystemDefault, {} }, &result.Coding);
    result.Unicode = result.Coding.Code == FileCode::Unicode;
    return result;
}

TextFileRead ReadTextStream(const QString &path, FileCode fileCode, const QByteArray &codePage, ReadRule rule)
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
    if (ModernFiles && rule == ReadRule::AsSetting) {
        if (!bytes.isEmpty())
            result.Text = DecodeModernFile(bytes, { fileCode, codePage }, &result.Coding);
        return result;
    }
    const bool marked = bytes.size() >= 2 && uchar(bytes[0]) == 0xFF && uchar(bytes[1]) == 0xFE;
    if (fileCode == FileCode::ANSI && !codePage.isEmpty() && converter("UTF-16LE", codePage)) {
        result.Text = decodeWith(*converter("UTF-16LE", codePage), bytes);
        result.Coding.CodePage = codePage;
    } else if (fileCode == FileCode::ANSI) {
        result.Text = DecodeSystemCodePage(bytes);
    } else if (fileCode == FileCode::Unicode || marked) {
        const qsizetype offset = marked ? 2 : 0;
        result.Text = fromUtf16Bytes(bytes.constData() + offset, bytes.size() - offset);
        result.Coding.Code = FileCode::Unicode;
    } else if (fileCode == FileCode::UTF8) {
        const bool utf8Mark = startsWith(bytes, "\xEF\xBB\xBF", 3);
        result.Text = QString::fromUtf8(QByteArrayView(bytes).sliced(utf8Mark ? 3 : 0));
        result.Coding.Code = FileCode::UTF8;
    } else {
        result.Text = DecodeSystemCodePage(bytes);
    }
    return result;
}

bool WriteTextFile(const QString &path, const QString &text, bool unicode, QString *error)
{
    return WriteTextFile(path, text, TextCoding { unicode ? FileCode::Unicode : FileCode::ANSI, {} }, error);
}

bool WriteTextFile(const QString &path, const QString &text, const TextCoding &coding, QString *error)
{
    const bool unicode = coding.Code != FileCode::ANSI && coding.Code != FileCode::UTF8;
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
        const QByteArray bytes
            = coding.Code == FileCode::UTF8 ? text.toUtf8() : EncodeCodePage(text, coding.CodePage);
        written = put(bytes.constData(), bytes.size());
    }
    if (!written || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}
