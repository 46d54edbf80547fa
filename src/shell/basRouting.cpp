#include "shell/basRouting.h"

#include "core/IPrompt.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basPlatform.h"
#include "core/basTime.h"
#include "formats/CTimings.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"

DocumentWindowKind WindowKindOfType(ScriptType fileType)
{
    const FileTypeRow *row = FileTypeOf(fileType);
    return row && row->RoutedByType ? row->Window : DocumentWindowKind::None;
}

DocumentWindowKind WindowKindOfFileName(const QString &fileName)
{
    const QString name = basConvert::Trim(fileName);
    return RoutedWindowOfExtension(name.mid(name.lastIndexOf(u'.') + 1).toUpper());
}

DocumentWindowKind WindowKindOfMenuKind(int kind, bool opening)
{
    switch (kind) {
    case 0:
        return DocumentWindowKind::Timing;
    case 1:
        return DocumentWindowKind::Translate;
    case 3:
        return opening ? DocumentWindowKind::Player : DocumentWindowKind::None;
    case 4:
        return DocumentWindowKind::NotePad;
    default:
        return DocumentWindowKind::None;
    }
}

QString RefusedFileMessage(const QString &fileName)
{
    return QStringLiteral("请使用文件打开菜单来打开这个文件: ") + fileName;
}

QString FileDialogFilterKey(FileOperation action, ScriptType kind)
{
    const FileTypeRow *row = FileTypeOf(kind);
    return FilterKey(row ? row->FrameFilter : FileFilter::Text, action);
}

QString ShowFileDialog(FileOperation action, ScriptType kind, const QString &fileName)
{
    const QString filter = Msg(FileDialogFilterKey(action, kind));
    if (action == FileOperation::Save)
        return Prompt().SaveFileName(QString(), filter, nullptr, fileName);
    return Prompt().OpenFileName(QString(), filter, nullptr, fileName);
}

QString TimingSaveName(const QString &documentFileName, const QString &playerFileName, const QString &caption)
{
    if (!documentFileName.isEmpty())
        return documentFileName;
    if (!playerFileName.isEmpty()) {
        const qsizetype dot = ExtensionDot(playerFileName);
        const QString stem = dot >= 0 ? playerFileName.left(dot) : playerFileName;
        return stem + QStringLiteral(".ass");
    }
    if (!caption.isEmpty())
        return ProgramFolder() + caption + QStringLiteral(".ass");
    return ProgramFolder() + QStringLiteral("NewTiming.ass");
}

QString TranslateSaveName(const QString &documentFileName, const QString &caption)
{
    if (!documentFileName.isEmpty())
        return documentFileName;
    return ProgramFolder() + caption + QStringLiteral(".txt");
}

std::optional<RecentCaption> ParseRecentCaption(const QString &caption)
{
    QString text = caption;
    // The slot number in front ("1: ") is the menu's, not the entry's.
    const qsizetype first = text.indexOf(u':');
    if (first > 0 && basConvert::IsNumeric(text.left(first)))
        text = text.mid(first + 1);
    const qsizetype colon = text.indexOf(u':');
    if (colon < 0)
        return std::nullopt;
    RecentCaption result;
    result.Type = CRecentFile::ScripyType(basConvert::Trim(text.left(colon)));
    result.FileName = basConvert::Trim(text.mid(colon + 1));
    return result;
}

bool QueryCloseDocument(bool changed, const std::function<bool()> &save)
{
    if (!changed)
        return true;
    switch (MsgBox(Msg(QStringLiteral("COMM_MSG_100")), MsgBoxStyle::YesNoCancel | MsgBoxStyle::Question)) {
    case MsgBoxResult::Yes:
        return save && save();
    case MsgBoxResult::No:
        return true;
    default:
        return false;
    }
}

std::optional<PromptFont> ShowFontDialog(const PromptFont &font)
{
    return Prompt().ChooseFont(font);
}

qint64 ShowColorDialog(qint64 colour)
{
    return Prompt().ChooseColour(colour).value_or(colour);
}

double ClipboardTime(const QString &text)
{
    return LooseStringToTime(text);
}

bool SendClipboardTime(const QString &text)
{
    const double time = ClipboardTime(text);
    if (time == 0 || !Velmar || !Velmar->Timings())
        return false;
    Velmar->Timings()->SendNewTime(time);
    return true;
}
