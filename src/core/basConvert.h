#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <QtGlobal>
#include <optional>

// Basic arithmetic and text rules in one place. Every exact number or text the system
// writes goes through these: integer conversions round half to even and fault on
// overflow, text positions count from 1, trimming removes blanks only.
namespace basConvert {

// Integer conversions: round half to even; out of range raises VelmarError 6 (Overflow).
qint16 CInt(double value);
qint32 CLng(double value);
// Conversions of text: a text that is not numeric raises VelmarError 13 (Type mismatch).
double CDbl(QStringView text);
qint16 CInt(QStringView text);
qint32 CLng(QStringView text);
inline qint16 CInt(const QString &text)
{
    return CInt(QStringView(text));
}
inline qint32 CLng(const QString &text)
{
    return CLng(QStringView(text));
}
inline double CDbl(const QString &text)
{
    return CDbl(QStringView(text));
}
inline qint16 CInt(const char16_t *text)
{
    return CInt(QStringView(text));
}
// The same conversions where a fault is an ordinary outcome (fields of a damaged file):
// nothing instead of the fault, without the cost of raising it.
std::optional<double> TryCDbl(QStringView text);
std::optional<qint16> TryCInt(QStringView text);

// The leading number of a text; blanks, tabs and line feeds inside it are skipped,
// "&H" and "&O" prefixes are read, anything else ends the number. Never faults.
double Val(QStringView text);
// Whether CDbl would accept the text.
bool IsNumeric(QStringView text);

// Integer part (towards minus infinity) and truncation.
double Int(double value);
double Fix(double value);
// Round half to even to the given number of decimals.
double Round(double value, int decimals = 0);
// Integer division and remainder of Basic: both operands are first rounded to 32-bit
// integers; a zero divisor raises VelmarError 11.
qint32 IntDiv(double a, double b);
qint32 Mod(double a, double b);

// Plain decimal text of a number: up to 15 significant digits, no trailing zeros,
// exponent form only below 1E-4 or from 1E15 on ("1E+15", "1E-05").
QString CStr(double value);
QString CStr(qint64 value);
// As CStr, with a leading blank for numbers that are not negative.
QString Str(double value);
// Upper-case hexadecimal; a negative value is written as its 32-bit two's complement.
QString Hex(qint64 value);
// The value of a hexadecimal digit of either case; -1 for any other character.
int HexDigit(QChar c);
// Number patterns made of "0" (digit), "#" (optional digit), "." and "," (grouping),
// other characters copied: "0000", "0.00", "000.0000", "#,##0.0#". Rounds half away
// from zero on the number's 15-digit decimal form.
QString Format(double value, QStringView pattern);

// Views without copies, for the readers: blanks only, like Trim.
QStringView TrimView(QStringView text);
QStringView LTrimView(QStringView text);
QStringView RTrimView(QStringView text);
// A whole text split at "\r\n" and at nothing else, as views into `text` (which must
// outlive them). An empty text gives one empty piece, as a Basic split does.
QList<QStringView> SplitCrlf(QStringView text);

// Text helpers. Positions count from 1; a start below 1 raises VelmarError 5.
QString Trim(QStringView text); // blanks only, not tabs
QString LTrim(QStringView text);
QString RTrim(QStringView text);
QString UCase(QStringView text);
QString LCase(QStringView text);
QString Left(QStringView text, qsizetype length);
QString Right(QStringView text, qsizetype length);
QString Mid(QStringView text, qsizetype start, qsizetype length = -1);
qsizetype InStr(qsizetype start, QStringView text, QStringView find);
inline qsizetype InStr(QStringView text, QStringView find)
{
    return InStr(1, text, find);
}
qsizetype InStrRev(QStringView text, QStringView find, qsizetype start = -1);
QString Space(qsizetype count);
QString String(qsizetype count, QChar c);

} // namespace basConvert
