#include "translation/basTranslateFile.h"

#include "core/IPrompt.h"
#include "core/basText.h"
#include "formats/CFileOptionModel.h"
#include "formats/CTiming.h"
#include "formats/basFileTypes.h"
#include "translation/CTranslate.h"

#include <QFileInfo>

namespace basTranslateFile {

namespace {

void ShowUnreadable(const QString &fileName)
{
    MsgBox(fileName + QStringLiteral(" 无法打开文件。 "));
}

} // namespace

ScriptType DraftTypeOfName(const QString &fileName)
{
    const qsizetype dot = ExtensionDot(fileName);
    const QString extension = dot < 0 ? QString() : fileName.mid(dot + 1).toUpper();
    return extension == u"RTF" ? ScriptType::RichText : ScriptType::Plain;
}

bool OpenDraftFile(CTranslate &doc, const QString &fileName)
{
    const WholeFileRead read = ReadWholeFile(fileName, false);
    if (!read.Ok) {
        ShowUnreadable(fileName);
        return false;
    }
    doc.ScriptType = DraftTypeOfName(fileName);
    doc.FileCode = read.Unicode ? FileCode::Unicode : FileCode::ANSI;
    // The text is read under the options the document has; from then on its tables travel
    // with it.
    doc.setContent(read.Text);
    doc.TranslateOption = TranslateOption::ChangeTable;
    doc.setChanged(false);
    doc.setFileName(fileName);
    return true;
}

void PrepareOpen(CFileOptionModel &model, CTranslate &doc)
{
    model.Init();
    model.ParentWindowType = ParentWindowType::Translate;
    model.TranslateDocument = &doc;
    model.FileName = doc.FileName();
    model.FileCode = doc.FileCode;
    model.ChangeOption = doc.ChangeOption;
    model.TranslateOption = doc.TranslateOption;
    model.setDocumentType(doc.ScriptType, 0);
    model.setOperation(FileOperation::Open);
}

bool TakeOverOpen(CTranslate &doc, const CFileOptionModel &model)
{
    const QFileInfo file(model.FileName);
    if (!file.isFile() || !file.isReadable()) {
        ShowUnreadable(model.FileName);
        return false;
    }
    doc.setFileName(model.FileName);
    doc.ScriptType = model.ScriptType();
    doc.FileCode = model.FileCode;
    doc.TranslateOption = model.TranslateOption;
    doc.setContent(model.FileContent);
    doc.setChanged(false);
    return true;
}

void PrepareSave(CFileOptionModel &model, CTranslate &doc, const QString &fileName)
{
    model.Init();
    model.ParentWindowType = ParentWindowType::Translate;
    model.TranslateDocument = &doc;
    model.FileName = fileName;
    model.FileCode = doc.FileCode;
    model.ChangeOption = doc.ChangeOption;
    model.TranslateOption = doc.TranslateOption;
    model.setDocumentType(doc.ScriptType, 0);
    model.setOperation(FileOperation::Save);
    model.UpdateContentByClass();
}

void TakeOverSave(CTranslate &doc, const CFileOptionModel &model)
{
    doc.setFileName(model.FileName);
    doc.ScriptType = model.ScriptType();
    doc.TranslateOption = model.TranslateOption;
    doc.FileCode = model.FileCode;
    doc.setChanged(false);
}

bool ChangeTo(CTranslate &draft, CTiming &timing, CFileOptionModel &model, const std::function<bool()> &show)
{
    timing.setScriptType(ScriptType::Plain);
    const qint32 translateOption = draft.TranslateOption;
    draft.TranslateOption &= ~TranslateOption::ChangeTable;

    model.Init();
    model.ParentWindowType = ParentWindowType::TranslateToTiming;
    model.TranslateDocument = &draft;
    model.TimingDocument = &timing;
    model.FileName = draft.FileName();
    model.ChangeOption = draft.ChangeOption;
    model.TranslateOption = draft.TranslateOption;
    model.setDocumentType(ScriptType::Plain, 0);
    model.setOperation(FileOperation::Convert);
    // A conversion writes no file of its own, so nothing can fail to be written.
    model.OperateError = false;
    model.UpdateContentByClass();
    const bool shown = show && show();
    draft.TranslateOption = translateOption;
    if (!shown || model.Cancelled || model.OperateError)
        return false;

    draft.ChangeOption = model.ChangeOption;
    timing.setScriptType(ScriptType::DialogueText);
    timing.setContent(model.FileContent);
    timing.setScriptType(ScriptType::ASS);
    return true;
}

} // namespace basTranslateFile
