#pragma once

#include <QString>
#include <QtGlobal>

class CTiming;
class CFileOptionModel;

// The timing window's open and save path without the window: what frmTiming does with a
// file name, shared by the window and the command-line converter.
namespace basTimingFile {

// The type a timing window opens a file as, by its upper-cased extension: TXT 7, SSA 1,
// ASS 2, SMI 3, SRT 4, LRC 8, SST 9, SMP 5; anything else (or none) is plain text, 7.
qint32 OpenTypeFromExtension(const QString &fileName);

enum class OpenResult {
    Opened, // read into the document (and its grid)
    Empty, // a file of no bytes: the open ended, the document is as it was
    Unreadable, // " 无法打开文件。 " and the name were shown; the document is as it was
};

// Opens a named file into the document as its window does: the type (from the name, or
// `openAs` when it is 0 or more), a whole-file byte read, FF FE / FE FF marking UTF-16
// (FileCode -1, else the system code page and FileCode 0), TimingOption back to 255, the
// text into the document, then the document's grid filled from its lines unless the type
// is plain text. The document is then unchanged, named, and in the recent-file list
// (unless the name ends in "Init.ass" behind a folder separator).
OpenResult OpenTimingFile(CTiming &doc, const QString &fileName, qint32 openAs = -1);

// Opens a file picked through the file options: the type and FileCode chosen there (the
// document takes both, and TimingOption), a read-all through a text stream of that code
// (0 ANSI, -1 Unicode, else by the byte-order mark), the text into the document and its
// grid as above. An empty file ends the open; an unreadable one shows " 无法打开文件。 ".
OpenResult OpenWithOptions(
    CTiming &doc, const QString &fileName, qint32 type, qint32 fileCode, qint32 timingOption = 255);

// The part of the open behind the byte read: type, FileCode (-1 for a marked UTF-16
// file, else 0), TimingOption 255, the text into the document, the grid load, unchanged.
void ReadIntoDocument(CTiming &doc, qint32 type, const QString &text, bool unicode);

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
    qint32 Type = 2;
    qint32 SubType = 0;
    qint32 TimingOption = 255;
    qint32 TimeFormat = 0;
    qint32 FileCode = -2;
    bool Backup = true;
};
// The save dialog with these choices, then OK: the text of the chosen type made once
// from the grid, the old file backed up, one write, and the document takes the result
// over. False (after the message) when the file could not be written.
bool SaveWithOptions(CTiming &doc, const QString &fileName, const SaveChoice &choice);

} // namespace basTimingFile
