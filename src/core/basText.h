#pragma once

#include "core/FileCode.h"

#include <QByteArray>
#include <QString>

// Text files: the system code page, the whole-file read rule, stream reads by FileCode
// and whole-file writes.

// Bytes of the system code page to text: valid UTF-8 (with or without its mark) is
// taken as UTF-8, anything else as GBK (code page 936).
QString DecodeSystemCodePage(const QByteArray &bytes);
// Bytes of a Windows code page (936, 950, 1252, 65001 ...) to text; a byte the code page
// does not know becomes U+FFFD. A code page that is not known reads as 1252.
QString DecodeCodePage(const QByteArray &bytes, int codePage);
// Text to GBK bytes; a character GBK cannot hold is written as "?".
QByteArray EncodeSystemCodePage(const QString &text);
// Text to the bytes of a code page named as iconv names it ("BIG5", "CP932"...); empty
// names the system code page. A character the code page cannot hold is written as "?".
QByteArray EncodeCodePage(const QString &text, const QByteArray &codePage);

// The code of a file as read, and as it is written back: the FileCode and, for ANSI, the
// code page by its iconv name (empty: the system code page).
struct TextCoding
{
    ::FileCode Code = ::FileCode::ANSI;
    QByteArray CodePage;
};

// Whether iconv knows a code page by this name.
bool IsKnownCodePage(const QByteArray &codePage);

// Modern files: lone LF and lone CR become CR LF; a CR LF stays one line end. The text
// is returned as it is when it has no lone one.
QString NormaliseLineEnds(const QString &text);
// Whether the text ends its lines with bare LFs only: a LF and no CR LF anywhere.
bool HasOnlyBareLineFeeds(QStringView text);
// The iconv name of the code page a detector names for bytes that are not UTF-8
// ("BIG5", "CP932", "WINDOWS-1252"...); empty when it names none that iconv knows.
QByteArray DetectCodePage(const QByteArray &bytes);
// A modern file's read: FF FE / FE FF mark UTF-16 (each in its own byte order), EF BB BF
// UTF-8; without a mark a chosen Unicode or UTF-8 code is taken as given, an unmarked
// UTF-16 guess as for the shared file helper, valid UTF-8 as UTF-8, and anything else is
// decoded by `preferred.CodePage` when given, else by the detected code page, else as the
// system code page. The line ends are then normalised. `coding` tells what was decided.
QString DecodeModernFile(const QByteArray &bytes, const TextCoding &preferred, TextCoding *coding);
// The coding a modern read would decide for a file, without keeping its text (the file
// options propose it); the document's present coding when the file cannot be read.
TextCoding ModernFileCoding(const QString &path, const TextCoding &present);

struct WholeFileRead
{
    bool Ok = false; // the file could be opened and read
    bool Empty = false; // the file had no bytes: nothing was decided
    bool Unicode = false; // taken as UTF-16 (by its mark, or by the unmarked guess)
    QString Text;
    QString Error;
    // How it was read: Unicode or ANSI, or with ModernFiles on also UTF-8 or a detected
    // code page.
    TextCoding Coding;
};

// The whole-file read: FF FE or FE FF at the start marks UTF-16 (taken as little endian
// either way, mark dropped). With `guessUnmarkedUnicode` (the shared file helper's rule,
// not the windows'), a first byte below 128 followed by a zero byte also marks UTF-16.
WholeFileRead DecodeWholeFile(const QByteArray &bytes, bool guessUnmarkedUnicode);
// The file's bytes by DecodeWholeFile, or by DecodeModernFile while ModernFiles is on.
WholeFileRead ReadWholeFile(const QString &path, bool guessUnmarkedUnicode);
// Bytes taken as 16-bit text in file order (little endian); a leading FF FE or FE FF is
// dropped.
QString DecodeUtf16(const QByteArray &bytes);

struct TextFileRead
{
    bool Ok = false;
    QString Text;
    QString Error;
    TextCoding Coding; // as WholeFileRead::Coding
};

// Whether a read honours ModernFiles: documents do, the catalogue does not.
enum class ReadRule { AsSetting, Plain };

// A read-all through a text stream opened with a FileCode: ANSI, Unicode, or (the system
// default and any other value) the stream decides by the byte-order mark. UTF-8 reads as
// UTF-8, and ANSI in `codePage` when one is named. While ModernFiles is on (and the rule is AsSetting) it is
// DecodeModernFile with the code and `codePage` as the preference.
TextFileRead ReadTextStream(const QString &path, FileCode fileCode, const QByteArray &codePage = {},
    ReadRule rule = ReadRule::AsSetting);

// Writes the whole text in one piece, as UTF-16LE with its mark or in the system code
// page. The old file is replaced only once the new one is complete.
bool WriteTextFile(const QString &path, const QString &text, bool unicode, QString *error = nullptr);
// The same by a coding: ANSI in its code page (the system's when none is named), UTF-8
// without a mark, UTF-16LE with its mark for every other code.
bool WriteTextFile(
    const QString &path, const QString &text, const TextCoding &coding, QString *error = nullptr);
