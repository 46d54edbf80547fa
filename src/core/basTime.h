#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

// Times are Double seconds; hundredths exist only in their strings.

// "H:MM:SS.hh" (precision 2) or "H:MM:SS.h" (precision 1). No carry runs from the
// fraction into the seconds, and the hours grow past one digit unpadded.
QString TimeToString(double seconds, int precision = 2);
// The same appended to `out`.
void AppendTimeString(QString &out, double seconds, int precision = 2);
// The strict parser: lengths 9, 10 and 11 only, fixed columns, the fraction always
// read as two characters over 100; a term that is not numeric is left out.
double StringToTime(QStringView text);
// The tolerant parser for typed and copied text: "5", "1:05", "1:02:03.5". The whole
// seconds are summed in 16-bit arithmetic; an overflow gives 0.
double LooseStringToTime(QStringView text);

// "&H" + colour in upper-case hexadecimal padded to six places; with an alpha, the
// alpha padded to two places goes ahead of it. No bytes are swapped.
QString ColourToHex(qint64 colour, std::optional<qint64> alpha = std::nullopt);

// The names of the hot keys: "F1".."F12", "Enter", arrows, "A".."Z", else "Undefined".
QString KeyCodeToName(int code);
int KeyNameToCode(QStringView name);
// The codes that have a name, in the order a hot-key list offers them: F1 to F12, Enter,
// Left, Up, Right, Down, A to Z.
QList<int> NamedKeyCodes();
// The key code of a Qt key (Qt::Key) in the same numbering: F1 to F12 are 112 to 123,
// letters and digits their characters, Enter 13, the arrows 37 to 40, Delete 46; the
// "." key is 190, never 46. 0 for keys without a code.
int KeyCodeOfQtKey(int qtKey);

// Event line types 0..5: Dialogue, Comment, Picture, Sound, Movie, Command.
QString LineTypeName(int type);
int LineTypeFromName(QStringView name);
int LineTypeFromChinese(QStringView name);
// The Chinese names of the six line types, in type order.
QStringList LineTypeChineseNames();
