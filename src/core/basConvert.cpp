#include "core/basConvert.h"

#include "core/VelmarError.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace basConvert {

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// "&H..." or "&O..." after the sign-free start: the digits as a 16-bit value when they
// fit in four (hex) places, otherwise as a 32-bit value, as Basic reads such literals.
bool parseRadix(QStringView s, qsizetype &pos, double &out, bool requireAll)
{
    if (pos + 1 >= s.size() || s[pos] != u'&')
        return false;
    const QChar kind = s[pos + 1].toUpper();
    if (kind != u'H' && kind != u'O')
        return false;
    const int base = kind == u'H' ? 16 : 8;
    qsizetype i = pos + 2;
    quint64 value = 0;
    int digits = 0;
    while (i < s.size()) {
        const int d = HexDigit(s[i]);
        if (d < 0 || d >= base)
            break;
        value = value * base + d;
        ++digits;
        ++i;
        if (value > 0xFFFFFFFFull)
            throw VelmarError::Overflow();
    }
    if (requireAll && (digits == 0 || i != s.size()))
        return false;
    const bool small = base == 16 ? digits <= 4 : value <= 0xFFFF;
    if (small)
        out = static_cast<qint16>(static_cast<quint16>(value));
    else
        out = static_cast<qint32>(static_cast<quint32>(value));
    pos = i;
    return true;
}

double toDouble(const QByteArray &digits)
{
    return digits.isEmpty() ? 0.0 : std::strtod(digits.constData(), nullptr);
}

// Parses a plain decimal number made of sign, digits with optional grouping commas,
// a point and an exponent, after trimming blanks. Returns false when the whole text
// is not such a number.
bool parseDecimal(QStringView s, double &out)
{
    qsizetype b = 0, e = s.size();
    while (b < e && isBlank(s[b]))
        ++b;
    while (e > b && isBlank(s[e - 1]))
        --e;
    if (b == e)
        return false;
    s = s.sliced(b, e - b);
    qsizetype pos = 0;
    bool negative = false;
    if (s[0] == u'+' || s[0] == u'-') {
        negative = s[0] == u'-';
        ++pos;
        while (pos < s.size() && s[pos] == u' ')
            ++pos;
    }
    double radix = 0;
    if (pos < s.size() && s[pos] == u'&') {
        if (!parseRadix(s, pos, radix, true))
            return false;
        out = negative ? -radix : radix;
        return true;
    }
    QByteArray digits;
    digits.reserve(s.size() + 2);
    int mantissaDigits = 0;
    while (pos < s.size() && (isDigit(s[pos]) || (s[pos] == u',' && mantissaDigits > 0))) {
        if (s[pos] != u',') {
            digits.append(char(s[pos].unicode()));
            ++mantissaDigits;
        }
        ++pos;
    }
    if (pos < s.size() && s[pos] == u'.') {
        digits.append('.');
        ++pos;
        while (pos < s.size() && isDigit(s[pos])) {
            digits.append(char(s[pos].unicode()));
            ++mantissaDigits;
            ++pos;
        }
    }
    if (mantissaDigits == 0)
        return false;
    if (pos < s.size() && (s[pos] == u'e' || s[pos] == u'E' || s[pos] == u'd' || s[pos] == u'D')) {
        digits.append('e');
        ++pos;
        if (pos < s.size() && (s[pos] == u'+' || s[pos] == u'-'))
            digits.append(char(s[pos++].unicode()));
        int expDigits = 0;
        while (pos < s.size() && isDigit(s[pos])) {
            digits.append(char(s[pos++].unicode()));
            ++expDigits;
        }
        if (expDigits == 0)
            return false;
    }
    if (pos != s.size())
        return false;
    const double v = toDouble(digits);
    if (std::isinf(v))
        throw VelmarError::Overflow();
    out = negative ? -v : v;
    return true;
}

template <typename T> T roundToInteger(double value)
{
    if (std::isnan(value))
        throw VelmarError::Overflow();
    const double r = std::nearbyint(value); // default rounding: half to even
    if (r < double(std::numeric_limits<T>::min()) || r > double(std::numeric_limits<T>::max()))
        throw VelmarError::Overflow();
    return static_cast<T>(r);
}

} // namespace

qint16 CInt(double value)
{
    return roundToInteger<qint16>(value);
}

qint32 CLng(double value)
{
    return roundToInteger<qint32>(value);
}

double CDbl(QStringView text)
{
    double v = 0;
    if (!parseDecimal(text, v))
        throw VelmarError::TypeMismatch();
    return v;
}

qint16 CInt(QStringView text)
{
    return CInt(CDbl(text));
}

qint32 CLng(QStringView text)
{
    return CLng(CDbl(text));
}

std::optional<double> TryCDbl(QStringView text)
{
    double v = 0;
    try {
        if (!parseDecimal(text, v))
            return std::nullopt;
    } catch (const VelmarError &) { // only a number too large for a Double gets here
        return std::nullopt;
    }
    return v;
}

std::optional<qint16> TryCInt(QStringView text)
{
    const std::optional<double> v = TryCDbl(text);
    if (!v)
        return std::nullopt;
    const double r = std::nearbyint(*v);
    if (!(r >= -32768 && r <= 32767))
        return std::nullopt;
    return qint16(r);
}

bool IsNumeric(QStringView text)
{
    // Plain digits, as in margins and layers, are numbers without the full parse.
    if (!text.isEmpty() && text.size() <= 15
        && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
        return true;
    return TryCDbl(text).has_value();
}

double Val(QStringView s)
{
    qsizetype pos = 0;
    auto skipBlanks = [&] {
        while (pos < s.size() && isBlank(s[pos]))
            ++pos;
    };
    skipBlanks();
    double radix = 0;
    try {
        if (parseRadix(s, pos, radix, false))
            return radix;
    } catch (const VelmarError &) {
        return 0;
    }
    QByteArray digits;
    if (pos < s.size() && (s[pos] == u'+' || s[pos] == u'-')) {
        digits.append(char(s[pos].unicode()));
        ++pos;
    }
    bool point = false;
    int mantissaDigits = 0;
    for (; pos < s.size(); ++pos) {
        const QChar c = s[pos];
        if (isBlank(c))
            continue;
        if (isDigit(c)) {
            digits.append(char(c.unicode()));
            ++mantissaDigits;
        } else if (c == u'.' && !point) {
            digits.append('.');
            point = true;
        } else {
            break;
        }
    }
    if (mantissaDigits == 0)
        return 0;
    if (pos < s.size() && (s[pos] == u'e' || s[pos] == u'E' || s[pos] == u'd' || s[pos] == u'D')) {
        QByteArray exponent("e");
        qsizetype p = pos + 1;
        while (p < s.size() && isBlank(s[p]))
            ++p;
        if (p < s.size() && (s[p] == u'+' || s[p] == u'-'))
            exponent.append(char(s[p++].unicode()));
        int expDigits = 0;
        for (; p < s.size(); ++p) {
            if (isBlank(s[p]))
                continue;
            if (!isDigit(s[p]))
                break;
            exponent.append(char(s[p].unicode()));
            ++expDigits;
        }
        if (expDigits > 0)
            digits.append(exponent);
    }
    const double v = toDouble(digits);
    return std::isinf(v) ? 0 : v;
}

double Int(double value)
{
    return std::floor(value);
}

double Fix(double value)
{
    return std::trunc(value);
}

double Round(double value, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    return std::nearbyint(value * scale) / scale;
}

qint32 IntDiv(double a, double b)
{
    const qint32 x = CLng(a), y = CLng(b);
    if (y == 0)
        throw VelmarError::DivisionByZero();
    if (x == std::numeric_limits<qint32>::min() && y == -1)
        throw VelmarError::Overflow();
    return x / y;
}

qint32 Mod(double a, double b)
{
    const qint32 x = CLng(a), y = CLng(b);
    if (y == 0)
        throw VelmarError::DivisionByZero();
    if (y == -1)
        return 0;
    return x % y;
}

QString CStr(double value)
{
    if (value == 0)
        return QStringLiteral("0");
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    QString text = QString::fromLatin1(buffer);
    const qsizetype e = text.indexOf(u'e');
    if (e < 0)
        return text;
    // "1e+15" -> "1E+15", "1.5e-05" -> "1.5E-05"
    QString exponent = text.mid(e + 2);
    while (exponent.size() > 2 && exponent.startsWith(u'0'))
        exponent.remove(0, 1);
    return text.left(e) + u'E' + text[e + 1] + exponent;
}

QString CStr(qint64 value)
{
    return QString::number(value);
}

QString Str(double value)
{
    return value < 0 ? CStr(value) : u' ' + CStr(value);
}

QString Hex(qint64 value)
{
    quint64 v = value < 0 ? quint64(quint32(qint32(value))) : quint64(value);
    return QString::number(v, 16).toUpper();
}

int HexDigit(QChar c)
{
    if (c >= u'0' && c <= u'9')
        return c.unicode() - u'0';
    if (c >= u'a' && c <= u'f')
        return c.unicode() - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c.unicode() - u'A' + 10;
    return -1;
}

namespace {

// The decimal digits of |value| rounded half away from zero to `decimals` places,
// taken from its 15-significant-digit form. Returns integer and fraction digits.
void roundedDigits(double value, int decimals, QString &intPart, QString &fracPart)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.14e", std::fabs(value));
    // buffer: d.dddddddddddddde[+-]xx
    QString mantissa;
    for (const char *p = buffer; *p && *p != 'e'; ++p)
        if (*p != '.')
            mantissa.append(QLatin1Char(*p));
    const int exponent = std::atoi(std::strchr(buffer, 'e') + 1);
    // digits as integer string with the point after position (exponent + 1)
    int pointPos = exponent + 1;
    QString digits = mantissa;
    if (pointPos <= 0) {
        digits = QString(-pointPos + 1, u'0') + digits;
        pointPos = 1;
    }
    if (digits.size() < pointPos + decimals)
        digits += QString(pointPos + decimals - digits.size(), u'0');
    const int keep = pointPos + decimals;
    bool roundUp = keep < digits.size() && digits[keep] >= u'5';
    digits.truncate(keep);
    if (roundUp) {
        int i = keep - 1;
        while (i >= 0) {
            if (digits[i] == u'9') {
                digits[i] = u'0';
                --i;
            } else {
                digits[i] = QChar(digits[i].unicode() + 1);
                break;
            }
        }
        if (i < 0) {
            digits.prepend(u'1');
            ++pointPos;
        }
    }
    intPart = digits.left(pointPos);
    fracPart = digits.mid(pointPos);
    while (intPart.size() > 1 && intPart.startsWith(u'0'))
        intPart.remove(0, 1);
}

} // namespace

QString Format(double value, QStringView pattern)
{
    const qsizetype point = pattern.indexOf(u'.');
    const QStringView intPattern = point < 0 ? pattern : pattern.left(point);
    const QStringView fracPattern = point < 0 ? QStringView() : pattern.sliced(point + 1);
    int forcedInt = 0, fracPlaces = 0, forcedFrac = 0;
    bool grouping = false;
    for (QChar c : intPattern) {
        if (c == u'0')
            ++forcedInt;
        else if (c == u',')
            grouping = true;
    }
    for (QChar c : fracPattern) {
        if (c == u'0' || c == u'#') {
            ++fracPlaces;
            if (c == u'0')
                forcedFrac = fracPlaces;
        }
    }
    QString intDigits, fracDigits;
    roundedDigits(value, fracPlaces, intDigits, fracDigits);
    while (fracDigits.size() > forcedFrac && fracDigits.endsWith(u'0'))
        fracDigits.chop(1);
    if (intDigits == u"0" && forcedInt == 0)
        intDigits.clear();
    while (intDigits.size() < forcedInt)
        intDigits.prepend(u'0');
    if (grouping)
        for (qsizetype i = intDigits.size() - 3; i > 0; i -= 3)
            intDigits.insert(i, u',');
    const bool isZero = intDigits.count(u'0') + intDigits.count(u',') == intDigits.size()
        && fracDigits.count(u'0') == fracDigits.size();
    // Literal characters of the integer pattern stand before the number.
    QString prefix;
    for (QChar c : intPattern)
        if (c != u'0' && c != u'#' && c != u',')
            prefix.append(c);
    QString result = prefix + intDigits;
    if (point >= 0)
        result += u'.' + fracDigits;
    for (QChar c : fracPattern)
        if (c != u'0' && c != u'#')
            result.append(c);
    if (value < 0 && !isZero)
        result.prepend(u'-');
    return result;
}

QStringView LTrimView(QStringView text)
{
    qsizetype b = 0;
    while (b < text.size() && text[b] == u' ')
        ++b;
    return text.sliced(b);
}

QStringView RTrimView(QStringView text)
{
    qsizetype e = text.size();
    while (e > 0 && text[e - 1] == u' ')
        --e;
    return text.left(e);
}

QStringView TrimView(QStringView text)
{
    return RTrimView(LTrimView(text));
}

QList<QStringView> SplitCrlf(QStringView text)
{
    QList<QStringView> pieces;
    pieces.reserve(text.size() / 40 + 16);
    const qsizetype n = text.size();
    qsizetype start = 0, from = 0;
    for (;;) {
        // A lone "\r" is not a line end: look on from the next one.
        const qsizetype at = text.indexOf(u'\r', from);
        if (at < 0 || at + 1 >= n) {
            pieces.append(text.sliced(start));
            break;
        }
        if (text[at + 1] != u'\n') {
            from = at + 1;
            continue;
        }
        pieces.append(text.sliced(start, at - start));
        start = from = at + 2;
    }
    return pieces;
}

QString Trim(QStringView text)
{
    return TrimView(text).toString();
}

QString LTrim(QStringView text)
{
    return LTrimView(text).toString();
}

QString RTrim(QStringView text)
{
    return RTrimView(text).toString();
}

QString UCase(QStringView text)
{
    return text.toString().toUpper();
}

QString LCase(QStringView text)
{
    return text.toString().toLower();
}

QString Left(QStringView text, qsizetype length)
{
    if (length < 0)
        throw VelmarError::InvalidCall();
    return text.left(length).toString();
}

QString Right(QStringView text, qsizetype length)
{
    if (length < 0)
        throw VelmarError::InvalidCall();
    return text.right(length).toString();
}

QString Mid(QStringView text, qsizetype start, qsizetype length)
{
    if (start < 1)
        throw VelmarError::InvalidCall();
    if (start > text.size())
        return {};
    const QStringView rest = text.sliced(start - 1);
    if (length < 0)
        return rest.toString();
    return rest.left(length).toString();
}

qsizetype InStr(qsizetype start, QStringView text, QStringView find)
{
    if (start < 1)
        throw VelmarError::InvalidCall();
    if (start > text.size())
        return 0;
    if (find.isEmpty())
        return start;
    const qsizetype at = text.indexOf(find, start - 1);
    return at < 0 ? 0 : at + 1;
}

qsizetype InStrRev(QStringView text, QStringView find, qsizetype start)
{
    if (start == 0 || start < -1)
        throw VelmarError::InvalidCall();
    if (start == -1)
        start = text.size();
    if (start > text.size())
        return 0;
    if (find.isEmpty())
        return start;
    const qsizetype from = start - find.size();
    if (from < 0)
        return 0;
    const qsizetype at = text.lastIndexOf(find, from);
    return at < 0 ? 0 : at + 1;
}

QString Space(qsizetype count)
{
    return QString(qMax<qsizetype>(0, count), u' ');
}

QString String(qsizetype count, QChar c)
{
    return QString(qMax<qsizetype>(0, count), c);
}

} // namespace basConvert
