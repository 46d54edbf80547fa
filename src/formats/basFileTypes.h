#pragma once

#include "formats/FileOptions.h"
#include "script/ScriptType.h"

#include <QString>
#include <QStringView>
#include <optional>
#include <span>

// The kinds of document window the frame can make.
enum class DocumentWindowKind { None, Timing, Translate, Player, NotePad };

// The filters of the common file dialog, by the catalogue texts COMM_MSG_202 to 207.
enum class FileFilter {
    Translation, // drafts, *.txt and *.rtf
    Subtitles, // the subtitle files; one list to open, a shorter one to save
    Video,
    Text, // *.txt
    SST,
};

// One kind of file and everything the program decides by it. Where callers really treat
// a kind differently (the frame routes by extension, the file options pick by extension,
// a timing window opens by extension), each has a column of its own. Extension lists
// are upper case and separated by blanks.
struct FileTypeRow
{
    ScriptType Type;
    const char *SaveExtension; // given to a saved file's name ("" for a video)
    const char *ShortName; // the command line's name ("" for none)
    const char16_t *Caption; // the file-option dialog's button ("" for none)
    DocumentWindowKind Window; // the window that opens and saves it
    bool RoutedByType; // the frame opens a file of this type by its type
    const char *Extensions; // what a timing window (its own types) opens as this type
    bool PickedByExtension; // the file options select it by Extensions (else by hand)
    const char *RoutedExtensions; // what the frame hands to Window by the extension
    FileFilter FrameFilter; // the frame's file dialog for this type
    FileFilter OptionFilter; // the file options' dialog from a timing window
};

// The position of the "." of a path's extension; -1 when the file name has none (a "."
// in a folder name does not count).
qsizetype ExtensionDot(const QString &path);

// Every kind, in the order of their numbers.
std::span<const FileTypeRow> FileTypes();
// The row of a type; nullptr for a number that is no type.
const FileTypeRow *FileTypeOf(ScriptType type);

// The extension a saved file of the type gets, with its ".", lower case (".txt" for a
// video and for a number that is no type).
QString SaveExtensionOf(ScriptType type);
// By an upper-cased extension: the type a timing window opens, the type the file options
// pick, and the window the frame routes to. Nothing (None) for an extension no row takes.
std::optional<ScriptType> OpenedTypeOfExtension(QStringView extension);
std::optional<ScriptType> PickedTypeOfExtension(QStringView extension);
DocumentWindowKind RoutedWindowOfExtension(QStringView extension);
// The type of a short name or of its number (0 to 9), as the command line takes them.
std::optional<ScriptType> TypeOfShortName(const QString &name);

// The catalogue key of a filter: the subtitle filter has an open and a save form, and
// any other operation gets the text filter.
QString FilterKey(FileFilter filter, FileOperation operation);
