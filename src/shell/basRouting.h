#pragma once

#include "core/IPrompt.h"
#include "formats/basFileTypes.h"

#include <QString>
#include <functional>
#include <optional>

// The rules that decide which kind of window a file or a menu command becomes, the file
// dialog's filters, the proposed save names, and the question asked before a changed
// document goes away.

// By a file type, the window of its row when the frame routes the type (plain and rich
// text a translation, SSA to SMP and dialogue text a timing window, a video a player);
// anything else none.
DocumentWindowKind WindowKindOfType(ScriptType fileType);
// By the part behind the last "." of the name, upper-cased (a name without a dot is its
// own extension), the window of the row that routes it. LRC, SST and SMP are not routed:
// they open through the menu.
DocumentWindowKind WindowKindOfFileName(const QString &fileName);
// The kinds of the File menu commands: 0 timing, 1 translation, 3 player (open only),
// 4 notepad; none for other numbers.
DocumentWindowKind WindowKindOfMenuKind(int kind, bool opening);

// The message asked for a file that no window takes by its extension.
QString RefusedFileMessage(const QString &fileName);

// The catalogue key of the file dialog's filter for opening or saving a file type.
QString FileDialogFilterKey(FileOperation action, ScriptType kind);
// The common file dialog: opens or saves (with the overwrite question). The name is
// proposed when given. Cancel gives "".
QString ShowFileDialog(FileOperation action, ScriptType kind, const QString &fileName = {});

// The name proposed when a timing document is saved: its file name; else the player's
// file with its last extension replaced by ".ass"; else the program folder, the
// window's caption and ".ass"; and with no caption "NewTiming.ass" there.
QString TimingSaveName(
    const QString &documentFileName, const QString &playerFileName, const QString &caption);
// The name proposed for a translation: its file name, or the program folder, the
// caption and ".txt".
QString TranslateSaveName(const QString &documentFileName, const QString &caption);

// A recent-file menu caption ("1: 时间轴: /a/b.ass", the slot number being optional)
// split into the file type of its label and the file name. Nothing without a ":".
struct RecentCaption
{
    ScriptType Type = ScriptType::Plain;
    QString FileName;
};
std::optional<RecentCaption> ParseRecentCaption(const QString &caption);

// Before a changed document closes or opens another file: "COMM_MSG_100" with Yes, No
// and Cancel. Yes saves and goes on only when the save worked; No goes on; Cancel
// stops. An unchanged document goes on without a question.
bool QueryCloseDocument(bool changed, const std::function<bool()> &save);

// The common font and colour dialogs preset with the given values. Cancel gives no
// font, and the colour it was given.
std::optional<PromptFont> ShowFontDialog(const PromptFont &font);
qint64 ShowColorDialog(qint64 colour);

// Copied text read as a time; 0 (no time) for text that reads as none.
double ClipboardTime(const QString &text);
// Hands copied text that reads as a time to the active timing window; true when sent.
bool SendClipboardTime(const QString &text);
