#include "formats/basTimingFile.h"

#include "core/IPrompt.h"
#include "core/basBackup.h"
#include "core/basMain.h"
#include "core/basText.h"
#include "formats/CFileOptionModel.h"
#include "formats/CTiming.h"
#include "formats/IRecentFileList.h"
#include "formats/basFileTypes.h"
#include "script/ITimingGrid.h"

namespace basTimingFile {

ScriptType OpenTypeFromExtension(const QString &fileName)
{
    const qsizetype dot = ExtensionDot(fileName);
    if (dot < 0)
        return ScriptType::DialogueText;
    return OpenedTypeOfExtension(fileName.mid(dot + 1).toUpper()).value_or(ScriptType::DialogueText);
}

// The document's own grid, if it has one, takes the lines just read. A body of another
// format was only read into its list: the grid's load makes its events first.
static void loadGrid(CTiming &doc)
{
    if (doc.TimingTable)
        doc.TimingTable->LoadGridFromContent(*doc.SSAContent, doc.Fonts.get());
}

// The text into the document (and its grid unless it is plain text), left unchanged.
static void takeText(CTiming &doc, ScriptType type, const QString &text)
{
    doc.BareLineFeeds = !ModernFiles && HasOnlyBareLineFeeds(text);
    doc.setScriptType(type);
    doc.setContent(text);
    if (type != ScriptType::DialogueText)
        loadGrid(doc);
    doc.setChanged(false);
}

// The name is recorded as opened, and goes into the recent files unless it is the
// start-up script.
static void recordOpened(CTiming &doc, const QString &fileName, ScriptType type)
{
    doc.setFileName(fileName);
    const bool initScript = fileName.endsWith(QStringLiteral("/Init.ass"), Qt::CaseInsensitive)
        || fileName.endsWith(QStringLiteral("\\Init.ass"), Qt::CaseInsensitive);
    if (RecentFile && !initScript)
        RecentFile->InsertRecentFileList(fileName, type);
}

static OpenResult unreadable(const QString &fileName)
{
    MsgBox(QString::fromUtf16(u" 无法打开文件。 ") + fileName);
    return OpenResult::Unreadable;
}

void ReadIntoDocument(CTiming &doc, ScriptType type, const QString &text, bool unicode)
{
    ReadIntoDocument(doc, type, text, TextCoding { unicode ? FileCode::Unicode : FileCode::ANSI, {} });
}

void ReadIntoDocument(CTiming &doc, ScriptType type, const QString &text, const TextCoding &coding)
{
    doc.FileCode = coding.Code;
    doc.FileCodePage = coding.CodePage;
    doc.TimingOption = SaveOption::Whole;
    takeText(doc, type, text);
}

OpenResult OpenTimingFile(CTiming &doc, const QString &fileName, std::optional<ScriptType> openAs)
{
    const ScriptType type = openAs ? *openAs : OpenTypeFromExtension(fileName);
    const WholeFileRead read = ReadWholeFile(fileName, false);
    if (!read.Ok)
        return unreadable(fileName);
    if (read.Empty)
        return OpenResult::Empty;
    ReadIntoDocument(doc, type, read.Text, read.Coding);
    recordOpened(doc, fileName, type);
    return OpenResult::Opened;
}

OpenResult OpenWithOptions(CTiming &doc, const QString &fileName, ScriptType type, FileCode fileCode,
    qint32 timingOption, const QByteArray &codePage)
{
    const TextFileRead read = ReadTextStream(fileName, fileCode, codePage);
    if (!read.Ok)
        return unreadable(fileName);
    if (read.Text.isEmpty())
        return OpenResult::Empty;
    // As chosen; a modern read keeps what it found.
    doc.FileCode = ModernFiles ? read.Coding.Code : fileCode;
    doc.FileCodePage = ModernFiles   ? read.Coding.CodePage
        : fileCode == FileCode::ANSI ? codePage
                                     : QByteArray();
    doc.TimingOption = timingOption;
    takeText(doc, type, read.Text);
    recordOpened(doc, fileName, type);
    return OpenResult::Opened;
}

bool WriteFile(const QString &fileName, const QString &text, ScriptType type, FileCode code, bool backup,
    QString *error, const QByteArray &codePage)
{
    if (backup)
        BackupFile(fileName);
    const bool ansi
        = code == FileCode::ANSI || (type == ScriptType::RichText && code == FileCode::SystemDefault);
    const TextCoding coding { ansi ? FileCode::ANSI : code, ansi ? codePage : QByteArray() };
    if (!WriteTextFile(fileName, text, coding, error))
        return false;
    if (RecentFile)
        RecentFile->InsertRecentFileList(fileName, type);
    return true;
}

void PrepareSave(CFileOptionModel &model, CTiming &doc)
{
    model.Init();
    model.ParentWindowType = ParentWindowType::Timing;
    model.TimingDocument = &doc;
    model.FileName = doc.FileName();
    model.FileCode = doc.FileCode;
    model.CodePage = doc.FileCodePage;
    model.TimingOption = doc.TimingOption;
    model.setDocumentType(doc.ScriptType(), doc.ScriptSubType());
    model.setOperation(FileOperation::Save);
    model.setTimeFormat(doc.TimeFormat());
    model.UpdateContentByClass();
}

void TakeOverSave(CTiming &doc, const CFileOptionModel &model)
{
    doc.setFileName(model.FileName);
    doc.setScriptType(model.ScriptType());
    doc.setScriptSubType(model.ScriptSubType());
    doc.TimingOption = model.TimingOption;
    doc.FileCode = model.FileCode;
    doc.FileCodePage = model.FileCode == FileCode::ANSI ? model.CodePage : QByteArray();
    doc.setChanged(false);
}

bool SaveWithOptions(CTiming &doc, const QString &fileName, const SaveChoice &choice)
{
    CFileOptionModel model;
    model.Init();
    // Every choice below would remake the preview; it is made once, at the end.
    model.AutoUpdate = false;
    model.ParentWindowType = ParentWindowType::Timing;
    model.TimingDocument = &doc;
    model.BackupBeforeSave = choice.Backup;
    model.TimingOption = choice.TimingOption;
    model.setDocumentType(doc.ScriptType(), doc.ScriptSubType());
    model.setOperation(FileOperation::Save);
    model.setSubTypeButton(choice.SubType);
    model.ClickFileType(choice.Type);
    model.setTimeFormat(choice.TimeFormat);
    model.FileCode = choice.FileCode;
    model.CodePage = choice.CodePage;
    model.FileName = fileName;
    model.UpdateContentByClass();
    if (!model.Ok())
        return false;
    TakeOverSave(doc, model);
    return true;
}

} // namespace basTimingFile
