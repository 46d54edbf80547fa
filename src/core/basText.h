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

struct WholeFileRead
{
    bool Ok = false; // the file could be opened and read
    bool Empty = false; // the file had no bytes: nothing was decided
    bool Unicode = false; // taken as UTF-16 (by its mark, or by the unmarked guess)
    QString Text;
    QString Error;
};

// The whole-file read: FF FE or FE FF at the start marks UTF-16 (taken as little endian
// either way, mark dropped). With `guessUnmarkedUnicode` (the shared file helper's rule,
// not the windows'), a first byte below 128 followed by a zero byte also marks UTF-16.
WholeFileRead DecodeWholeFile(const QByteArray &bytes, bool guessUnmarkedUnicode);
WholeFileRead ReadWholeFile(const QString &path, bool guessUnmarkedUnicode);
// Bytes taken as 16-bit text in file order (little endian); a leading FF FE or FE FF is
// dropped.
QString DecodeUtf16(const QByteArray &bytes);

struct TextFileRead
{
    bool Ok = false;
    QString Text;
    QString Error;
};

// A read-all through a text stream opened with a FileCode: ANSI, Unicode, or (the system
// default and any other value) the stream decides by the byte-order mark.
TextFileRead ReadTextStream(const QString &path, FileCode fileCode);

// Writes the whole text in one piece, as UTF-16LE with its mark or in the system code
// page. The old file is replaced only once the new one is complete.
bool WriteTextFile(const QString &path, const QString &text, bool unicode, QString *error = nullptr);
