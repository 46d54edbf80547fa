#pragma once

#include "core/FileCode.h"
#include "core/basText.h"
#include "script/SaveOption.h"
#include "script/ScriptType.h"

#include <QString>
#include <QtGlobal>
#include <optional>

class CTiming;
class CFileOptionModel;

// The timing window's open and save path without the window: what frmTiming does with a
// file name, shared by the window and the command-line converter.
namespace basTimingFile {

// The type a timing window opens a file as, by its upper-cased extension: TXT dialogue
// text, SSA, ASS, SMI SAMI, SRT, LRC, SST, SMP; anything else (or none) is dialogue text.
ScriptType OpenTypeFromExtension(const QString &fileName);

enum class OpenResult {
    Opened, // read into the document (and its grid)
    Empty, // a file of no bytes: the open ended, the document is as it was
    Unreadable, // " 无法打开文件。 " and the name were shown; the document is as it was
};

// Opens a named file into the document as its window does: the type (from the name, or
// `openAs` when given), a whole-file byte read, FF FE / FE FF marking UTF-16 (FileCode
// Unicode, else the system code page and FileCode ANSI), TimingOption back to the whole
// script, the text into the document, then the document's grid filled from its lines
// unless the type is dialogue text. The document is then unchanged, named, and in the
// recent-file list (unless the name ends in "Init.ass" behind a folder separator).
// With ModernFiles on, the read is a modern one and the document keeps its coding.
OpenResult OpenTimingFile(CTiming &doc, const QString &fileName, std::optional<ScriptType> openAs = {});

// Opens a file picked through the file options: the type and FileCode chosen there (the
// document takes both, and TimingOption), a read-all through a text stream of that code
// (ANSI, Unicode, else by the byte-order mark), the text into the document and its grid
// as above. An empty file ends the open; an unreadable one shows " 无法打开文件。 ".
// `codePage` names the code page of an ANSI file read as modern files.
OpenResult OpenWithOptions(CTiming &doc, const QString &fileName, ScriptType type, FileCode fileCode,
    qint32 timingOption = SaveOption::Whole, const QByteArray &codePage = {});

// The part of the open behind the byte read: type, FileCode (Unicode for a marked UTF-16
// file, else ANSI; or the coding a modern read decided), the whole script as
// TimingOption, the text into the document, the grid load, unchanged.
void ReadIntoDocument(CTiming &doc, ScriptType type, const QString &text, bool unicode);
void ReadIntoDocument(CTiming &doc, ScriptType type, const QString &text, const TextCoding &coding);

// The write behind OK of a save: the old file copied to the backup folder first (when
// `backup`), the text in one piece, ANSI (in `codePage` when one is named) for the ANSI
// code and for rich text at the system default, UTF-8 for UTF-8, Unicode otherwise, then
// the name into the recent-file list. False with the fault text in `error` when the file
// could not be written.
bool WriteFile(const QString &fileName, const QString &text, ScriptType type, FileCode code, bool backup,
    QString *error = nullptr, const QByteArray &codePage = {});

// Prepares the file-option model for a save of the document, as the window hands it its
// options: timing parent, save operation, the document's type, sub-type, options, time
// format, code and name, then the preview of what would be written.
void PrepareSave(CFileOptionModel &model, CTiming &doc);
// After OK of a save: the document takes over name, type, sub-type, options and code,
// and is unchanged.
void TakeOverSave(CTiming &doc, const CFileOptionModel &model);

// What is chosen in the save options.
struct SaveChoice
{
    ScriptType Type = ScriptType::ASS;
    qint32 SubType = 0;
    qint32 TimingOption = SaveOption::Whole;
    qint32 TimeFormat = 0;
    ::FileCode FileCode = ::FileCode::SystemDefault;
    QByteArray CodePage; // of an ANSI save; empty: the system code page
    bool Backup = true;
};
// The save dialog with these choices, then OK: the text of the chosen type made once
// from the grid, the old file backed up, one write, and the document takes the result
// over. False (after the message) when the file could not be written.
bool SaveWithOptions(CTiming &doc, const QString &fileName, const SaveChoice &choice);

} // namespace basTimingFile
