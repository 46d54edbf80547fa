#include "formats/basTimingFile.h"

#include "core/IPrompt.h"
#include "core/basText.h"
#include "formats/CFileOptionModel.h"
#include "script/CTiming.h"
#include "shell/CRecentFile.h"
#include "timing/CTimingGrid.h"

namespace basTimingFile {

qint32 OpenTypeFromExtension(const QString &fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    const qsizetype slash = qMax(fileName.lastIndexOf(u'/'), fileName.lastIndexOf(u'\\'));
    if (dot < 0 || dot < slash)
        return 7;
    const QString ext = fileName.mid(dot + 1).toUpper();
    if (ext == u"TXT")
        return 7;
    if (ext == u"SSA")
        return 1;
    if (ext == u"ASS")
        return 2;
    if (ext == u"SMI")
        return 3;
    if (ext == u"SRT")
        return 4;
    if (ext == u"LRC")
        return 8;
    if (ext == u"SST")
        return 9;
    if (ext == u"SMP")
        return 5;
    return 7;
}

// The document's own grid, if it has one, takes the lines just read. A body of another
// format was only read into its list: the grid's load makes its events first.
static void loadGrid(CTiming &doc)
{
    auto *grid = dynamic_cast<CTimingGrid *>(doc.TimingTable);
    if (!grid)
        return;
    grid->LoadGridFromContent(*doc.SSAContent, doc.Fonts.get());
}

// The text into the document (and its grid unless it is plain text), left unchanged.
static void takeText(CTiming &doc, qint32 type, const QString &text)
{
    doc.setScriptType(type);
    doc.setContent(text);
    if (type != 7)
        loadGrid(doc);
    doc.setChanged(false);
}

// The name is recorded as opened, and goes into the recent files unless it is the
// start-up script.
static void recordOpened(CTiming &doc, const QString &fileName, qint32 type)
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

void ReadIntoDocument(CTiming &doc, qint32 type, const QString &text, bool unicode)
{
    doc.FileCode = unicode ? -1 : 0;
    doc.TimingOption = 255;
    takeText(doc, type, text);
}

OpenResult OpenTimingFile(CTiming &doc, const QString &fileName, qint32 openAs)
{
    const qint32 type = openAs >= 0 ? openAs : OpenTypeFromExtension(fileName);
    const WholeFileRead read = ReadWholeFile(fileName, false);
    if (!read.Ok)
        return unreadable(fileName);
    if (read.Empty)
        return OpenResult::Empty;
    ReadIntoDocument(doc, type, read.Text, read.Unicode);
    recordOpened(doc, fileName, type);
    return OpenResult::Opened;
}

OpenResult OpenWithOptions(
    CTiming &doc, const QString &fileName, qint32 type, qint32 fileCode, qint32 timingOption)
{
    const TextFileRead read = ReadTextStream(fileName, fileCode);
    if (!read.Ok)
        return unreadable(fileName);
    if (read.Text.isEmpty())
        return OpenResult::Empty;
    doc.FileCode = fileCode;
    doc.TimingOption = timingOption;
    takeText(doc, type, read.Text);
    recordOpened(doc, fileName, type);
    return OpenResult::Opened;
}

void PrepareSave(CFileOptionModel &model, CTiming &doc)
{
    model.Init();
    model.ParentWindowType = 0;
    model.TimingDocument = &doc;
    model.FileName = doc.FileName();
    model.FileCode = doc.FileCode;
    model.TimingOption = doc.TimingOption;
    model.setDocumentType(doc.ScriptType(), doc.ScriptSubType());
    model.setOperation(2);
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
    doc.setChanged(false);
}

bool SaveWithOptions(CTiming &doc, const QString &fileName, const SaveChoice &choice)
{
    CFileOptionModel model;
    model.Init();
    // Every choice below would remake the preview; it is made once, at the end.
    model.AutoUpdate = false;
    model.ParentWindowType = 0;
    model.TimingDocument = &doc;
    model.BackupBeforeSave = choice.Backup;
    model.TimingOption = choice.TimingOption;
    model.setDocumentType(doc.ScriptType(), doc.ScriptSubType());
    model.setOperation(2);
    model.setSubTypeButton(choice.SubType);
    model.ClickFileType(choice.Type);
    model.setTimeFormat(choice.TimeFormat);
    model.FileCode = choice.FileCode;
    model.FileName = fileName;
    model.UpdateContentByClass();
    if (!model.Ok())
        return false;
    TakeOverSave(doc, model);
    return true;
}

} // namespace basTimingFile
