#include "core/basTime.h"

#include "core/KeyCode.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"

#include <QList>
#include <array>
#include <cmath>

using namespace basConvert;

void AppendTimeString(QString &out, double seconds, int precision)
{
    // Not a number, or endless, reads as no time at all: the codec never fails loudly.
    if (seconds < 0 || !std::isfinite(seconds)) {
        out += precision == 1 ? u"0:00:00.0" : u"0:00:00.00";
        return;
    }
    // The 1e-5 absorbs binary representation error: the only rounding in the chain. The
    // whole seconds are cut apart on their own, so no carry runs from the fraction.
    const double whole = std::floor(seconds);
    const double hundredths = std::floor(seconds * 100 + 0.00001);
    qint64 minutes, secs, fraction;
    if (seconds < 1e15) {
        // Whole numbers that a 64-bit integer holds exactly: no floating-point division.
        const qint64 w = qint64(whole);
        const qint64 hours = w / 3600;
        fraction = precision == 1 ? qint64(std::nearbyint(hundredths / 10)) % 10 : qint64(hundredths) % 100;
        minutes = (w % 3600) / 60;
        secs = w % 60;
        if (hours < 10)
            out += QChar(u'0' + int(hours));
        else
            out += QString::number(hours);
    } else {
        // A damaged file's huge time only makes a long hours field.
        fraction = precision == 1 ? qint64(std::fmod(std::nearbyint(hundredths / 10), 10))
                                  : qint64(std::fmod(hundredths, 100));
        minutes = qint64(std::fmod(whole, 3600) / 60);
        secs = qint64(std::fmod(whole, 60));
        out += QString::number(std::floor(whole / 3600), 'f', 0);
    }
    const char16_t tail[] = { u':', char16_t(u'0' + minutes / 10), char16_t(u'0' + minutes % 10), u':',
        char16_t(u'0' + secs / 10), char16_t(u'0' + secs % 10), u'.', char16_t(u'0' + fraction / 10),
        char16_t(u'0' + fraction % 10) };
    if (precision == 1) {
        out.append(reinterpret_cast<const QChar *>(tail), 7);
        out += QChar(u'0' + int(fraction));
    } else {
        out.append(reinterpret_cast<const QChar *>(tail), 9);
    }
}

QString TimeToString(double seconds, int precision)
{
    QString text;
    text.reserve(12);
    AppendTimeString(text, seconds, precision);
    return text;
}

namespace {

// A term of the strict parser: its numeric value, or nothing when it is not numeric.
double term(QStringView text, qsizetype start, qsizetype length)
{
    // Without an exception: a time of ten hours or more puts a colon into the minutes
    // column, and a long document parses many of them.
    return TryCDbl(text.sliced(start - 1).left(length)).value_or(0);
}

} // namespace

double StringToTime(QStringView text)
{
    const qsizetype n = text.size();
    if (n != 10 && n != 9 && n != 11)
        return 0;
    return term(text, 1, 1) * 3600 + term(text, 3, 2) * 60 + term(text, 6, 2) + term(text, 9, 2) / 100;
}

double LooseStringToTime(QStringView input)
{
    const QString text = Left(Trim(input), 11);
    QStringView clock = text;
    QStringView fractionText = u"0";
    const qsizetype point = text.indexOf(u'.');
    if (point >= 0) {
        clock = QStringView(text).left(point);
        fractionText = QStringView(text).sliced(point + 1);
    }
    // A part that is no number keeps what it had: the fraction 0, a field its previous
    // value.
    double fraction = TryCDbl(QString(QStringLiteral("0.") + fractionText.toString())).value_or(0);
    while (fraction >= 1)
        fraction /= 10;

    qint16 hours = 0, minutes = 0, secs = 0;
    if (!clock.isEmpty()) {
        for (QStringView field : clock.split(u':')) {
            hours = minutes;
            minutes = secs;
            secs = TryCInt(field).value_or(secs);
        }
    }
    // Whole seconds in 16-bit arithmetic: any overflow skips the statement, leaving 0.
    auto checked = [](int v) {
        if (v < -32768 || v > 32767)
            throw VelmarError::Overflow();
        return v;
    };
    try {
        const int total = checked(checked(checked(hours * 3600) + checked(minutes * 60)) + secs);
        return total + fraction;
    } catch (const VelmarError &) {
        return 0;
    }
}

QString ColourToHex(qint64 colour, std::optional<qint64> alpha)
{
    QString hex = Hex(colour);
    if (hex.size() < 6)
        hex.prepend(QString(6 - hex.size(), u'0'));
    if (!alpha)
        return QStringLiteral("&H") + hex;
    QString a = Hex(*alpha);
    if (a.size() < 2)
        a.prepend(QString(2 - a.size(), u'0'));
    return QStringLiteral("&H") + a + hex;
}

namespace {

struct NamedKey
{
    int code;
    const char16_t *name;
};

// In the order a hot-key list offers them.
constexpr std::array<NamedKey, 5> kMovementKeys { { { KeyCode::Enter, u"Enter" }, { KeyCode::Left, u"Left" },
    { KeyCode::Up, u"Up" }, { KeyCode::Right, u"Right" }, { KeyCode::Down, u"Down" } } };

} // namespace

int KeyCodeOfQtKey(int qtKey)
{
    if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9))
        return qtKey; // the same numbers in both tables
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12)
        return KeyCode::F1 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Backspace:
        return KeyCode::Backspace;
    case Qt::Key_Tab:
        return KeyCode::Tab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return KeyCode::Enter;
    case Qt::Key_Escape:
        return KeyCode::Escape;
    case Qt::Key_Space:
        return KeyCode::Space;
    case Qt::Key_PageUp:
        return KeyCode::PageUp;
    case Qt::Key_PageDown:
        return KeyCode::PageDown;
    case Qt::Key_End:
        return KeyCode::End;
    case Qt::Key_Home:
        return KeyCode::Home;
    case Qt::Key_Left:
        return KeyCode::Left;
    case Qt::Key_Up:
        return KeyCode::Up;
    case Qt::Key_Right:
        return KeyCode::Right;
    case Qt::Key_Down:
        return KeyCode::Down;
    case Qt::Key_Insert:
        return KeyCode::Insert;
    case Qt::Key_Delete:
        return KeyCode::Delete;
    case Qt::Key_Period:
        return KeyCode::Period; // never Delete's number
    default:
        return 0;
    }
}

QString KeyCodeToName(int code)
{
    if (code >= KeyCode::F1 && code <= KeyCode::F12)
        return u'F' + QString::number(code - KeyCode::F1 + 1);
    for (const NamedKey &k : kMovementKeys)
        if (k.code == code)
            return QString::fromUtf16(k.name);
    if (code >= 'A' && code <= 'Z')
        return QString(QChar(code));
    return QStringLiteral("Undefined");
}

QList<int> NamedKeyCodes()
{
    QList<int> codes;
    for (int code = KeyCode::F1; code <= KeyCode::F12; ++code)
        codes << code;
    for (const NamedKey &k : kMovementKeys)
        codes << k.code;
    for (int code = 'A'; code <= 'Z'; ++code)
        codes << code;
    return codes;
}

int KeyNameToCode(QStringView name)
{
    for (int code = KeyCode::F1; code <= KeyCode::F12; ++code)
        if (name == KeyCodeToName(code))
            return code;
    for (const NamedKey &k : kMovementKeys)
        if (name == QStringView(k.name))
            return k.code;
    if (name == u"Undefined")
        return 0;
    // Any other name that sorts between "A" and "Z" stands for its first letter.
    if (name.compare(u"A", Qt::CaseSensitive) >= 0 && name.compare(u"Z", Qt::CaseSensitive) <= 0)
        return name[0].unicode();
    return 0;
}

namespace {

constexpr std::array<const char16_t *, 6> kLineTypeNames { u"Dialogue", u"Comment", u"Picture", u"Sound",
    u"Movie", u"Command" };
constexpr std::array<const char16_t *, 6> kLineTypeChinese { u"对白", u"注释", u"图片", u"声音", u"动画",
    u"命令" };

} // namespace

QString LineTypeName(int type)
{
    if (type < 0 || type >= int(kLineTypeNames.size()))
        return {};
    return QString::fromUtf16(kLineTypeNames[type]);
}

int LineTypeFromName(QStringView name)
{
    const QString upper = name.toString().toUpper();
    for (int i = 0; i < int(kLineTypeNames.size()); ++i)
        if (upper == QString::fromUtf16(kLineTypeNames[i]).toUpper())
            return i;
    return 0;
}

QStringList LineTypeChineseNames()
{
    QStringList names;
    for (const char16_t *name : kLineTypeChinese)
        names << QString::fromUtf16(name);
    return names;
}

int LineTypeFromChinese(QStringView name)
{
    const QString upper = name.toString().toUpper();
    for (int i = 0; i < int(kLineTypeChinese.size()); ++i)
        if (upper == QStringView(kLineTypeChinese[i]))
            return i;
    return 0;
}
