#pragma once

#include "script/ScriptType.h"

#include <QString>
#include <functional>

class CFileOptionModel;
class CTiming;
class CTranslate;

// The translation window's file work without the window: opening a draft by name or
// through the file options, saving it, and turning it into a timing document.
namespace basTranslateFile {

// By the upper-cased extension: "RTF" is rich text, anything else a plain draft.
ScriptType DraftTypeOfName(const QString &fileName);

// Opens a named draft (recent list, project tree, a dropped file): the type by the name,
// the whole file as bytes; FF FE or FE FF at the start are dropped and the rest is 16-bit
// text in file order (FileCode Unicode), else the bytes are in the system code page
// (FileCode ANSI); an empty file is an empty draft. The text becomes the document's
// content, then TranslateOption is 128. The document is unchanged and named. A file that
// cannot be read shows its name and " 无法打开文件。 " and leaves the document alone.
bool OpenDraftFile(CTranslate &doc, const QString &fileName);

// The file options of an open: translation parent, open operation, the document's type,
// options, code and name.
void PrepareOpen(CFileOptionModel &model, CTranslate &doc);
// After the dialog's OK: the document takes name, type, code and TranslateOption, reads
// the dialog's text, and is unchanged. An unreadable file shows the message and gives
// false.
bool TakeOverOpen(CTranslate &doc, const CFileOptionModel &model);

// The file options of a save under `fileName`, with the preview of what will be written.
void PrepareSave(CFileOptionModel &model, CTranslate &doc, const QString &fileName);
// After the write: name, type, TranslateOption and code, and unchanged.
void TakeOverSave(CTranslate &doc, const CFileOptionModel &model);

// "ChangeTo": the timing document (of a window just made) gets the draft's lines. The
// draft's change table stays out for the moment; the file options run as a conversion of
// a plain draft into the new document, shown by `show`; unless cancelled the draft keeps
// the chosen ChangeOption and each line of the text becomes an event of the document,
// which is then an ASS script. True when the document took the lines.
bool ChangeTo(CTranslate &draft, CTiming &timing, CFileOptionModel &model, const std::function<bool()> &show);

} // namespace basTranslateFile
