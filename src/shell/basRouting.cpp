#include "shell/basRouting.h"

#include "core/CVelmar.h"
#include "core/IPrompt.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basPlatform.h"
#include "core/basTime.h"
#include "script/CTimings.h"
#include "shell/CRecentFile.h"

#include <QStringList>

DocumentWindowKind WindowKindOfType(ScriptType fileType)
{
    switch (fileType) {
    case ScriptType::Plain:
    case ScriptType::RichText:
        return DocumentWindowKind::Translate;
    case ScriptType::SSA:
    case ScriptType::ASS:
    case ScriptType::SAMI:
    case ScriptType::SRT:
    case ScriptType::SMP:
    case ScriptType::DialogueText:
        return DocumentWindowKind::Timing;
    case ScriptType::Video:
        return DocumentWindowKind::Player;
    default:
        return DocumentWindowKind::None;
    }
}

DocumentWindowKind WindowKindOfFileName(const QString &fileName)
{
    const QString name = basConvert::Trim(fileName);
    const QString extension = name.mid(name.lastIndexOf(u'.') + 1).toUpper();
    static const QStringList timing { QStringLiteral("ASS"), QStringLiteral("SSA"), QStringLiteral("SMI"),
        QStringLiteral("SAMI"), QStringLiteral("SRT") };
    static const QStringList player { QStringLiteral("AVI"), QStringLiteral("DIVX"), QStringLiteral("VOB"),
        QStringLiteral("MP3"), QStringLiteral("MPG"), QStringLiteral("MPGA"), QStringLiteral("ASF"),
        QStringLiteral("WMV"), QStringLiteral("WMA"), QStringLiteral("MDI"), QStringLiteral("MKV") };
    static const QStringList translate { QStringLiteral("TXT"), QStringLiteral("INI"),
        QStringLiteral("RTF") };
    if (timing.contains(extension))
        return DocumentWindowKind::Timing;
    if (player.contains(extension))
        return DocumentWindowKind::Player;
    if (translate.contains(extension))
        return DocumentWindowKind::Translate;
    return DocumentWindowKind::None;
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
    const qint32 k = qint32(kind);
    if (kind == ScriptType::Plain || kind == ScriptType::RichText)
        return QStringLiteral("COMM_MSG_202");
    if (k >= 1 && k <= 5 && action == FileOperation::Open)
        return QStringLiteral("COMM_MSG_203");
    if (k >= 1 && k <= 5 && action == FileOperation::Save)
        return QStringLiteral("COMM_MSG_204");
    if (kind == ScriptType::SST)
        return QStringLiteral("COMM_MSG_207");
    if (kind == ScriptType::Video)
        return QStringLiteral("COMM_MSG_205");
    return QStringLiteral("COMM_MSG_206");
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
        // Only a dot in the file's own name counts as its extension.
        const qsizetype slash = qMax(playerFileName.lastIndexOf(u'/'), playerFileName.lastIndexOf(u'\\'));
        const qsizetype dot = playerFileName.lastIndexOf(u'.');
        const QString stem = dot > slash ? playerFileName.left(dot) : playerFileName;
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
