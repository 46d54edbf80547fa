#include "formats/CFileOptionModel.h"

#include "core/IPrompt.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "formats/ITranslateContent.h"
#include "formats/basFileTypes.h"
#include "formats/basTimingFile.h"

#include <QFileInfo>

namespace {

const QString crlf = QStringLiteral("\r\n");

QString text(const char16_t *s)
{
    return QString::fromUtf16(s);
}

} // namespace

void CFileOptionModel::Init()
{
    Cancelled = true;
    OperateError = true;
    m_operation = FileOperation::Open;
    m_scriptType = ScriptType::ASS;
    m_scriptSubType = 0;
    m_subTypeButton = 0;
    FileContent.clear();
    CodePage.clear();
    PreviewIsRich = false;
    m_enabled = Enabled();
    setOperation(FileOperation::Open);
    showSample();
}

void CFileOptionModel::setOperation(FileOperation operation)
{
    m_operation = operation;
    switch (operation) {
    case FileOperation::Open:
        m_caption = text(u"打开文件选项");
        break;
    case FileOperation::Save:
        m_caption = text(u"保存文件选项");
        break;
    case FileOperation::Convert:
        m_caption = text(u"转换时间轴选项");
        break;
    }
    updateEnabledByOperation();
}

void CFileOptionModel::updateEnabledByOperation()
{
    switch (m_operation) {
    case FileOperation::Open:
        TimingOptionEnabled(false);
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = m_scriptType != ScriptType::RichText;
        break;
    case FileOperation::Save:
        DelSpace = SpaceAsReturn = false;
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = false;
        TimingOptionEnabled(timingTypeWithOptions());
        OpenModeOptionEnabled(OpenModeAllowed);
        break;
    case FileOperation::Convert:
        m_enabled.FileName = m_enabled.FileType = m_enabled.CodeType = false;
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = false;
        break;
    }
}

bool CFileOptionModel::timingTypeWithOptions() const
{
    return ParentWindowType == ::ParentWindowType::Timing
        && (m_scriptType == ScriptType::SSA || m_scriptType == ScriptType::ASS);
}

void CFileOptionModel::TimingOptionEnabled(bool flag)
{
    m_enabled.TimingOptions = flag;
    m_enabled.DialogEffect = flag && (TimingOption & SaveOption::Dialog);
}

void CFileOptionModel::OpenModeOptionEnabled(bool flag)
{
    m_enabled.OpenMode = flag;
}

void CFileOptionModel::setSubTypeButton(qint32 index)
{
    m_subTypeButton = index == 0 ? 0 : 1;
}

void CFileOptionModel::setDocumentType(::ScriptType type, qint32 subType)
{
    m_scriptType = type;
    m_subTypeButton = m_scriptSubType = subType == 0 ? 0 : 1;
    m_enabled.FileSubType = type == ScriptType::SMP;
    if (m_operation == FileOperation::Save)
        TimingOptionEnabled(timingTypeWithOptions());
    showSample();
}

void CFileOptionModel::ClickFileType(::ScriptType type)
{
    m_scriptType = type;
    m_scriptSubType = m_subTypeButton == 0 ? 0 : 1;
    m_enabled.FileSubType = type == ScriptType::SMP;

    if (m_operation == FileOperation::Save && !FileName.isEmpty()) {
        const qsizetype dot = ExtensionDot(FileName);
        const QString stem = dot < 0 ? FileName : FileName.left(dot);
        FileName = stem + ExtensionOfType(type);
    }

    if (type == ScriptType::RichText && m_operation == FileOperation::Save) {
        FileCode = ::FileCode::SystemDefault;
        m_enabled.CodeType = false;
    } else {
        m_enabled.CodeType = m_operation != FileOperation::Convert;
    }

    // The space boxes only act on an opened plain text; a conversion and a save keep
    // them off.
    if (type == ScriptType::RichText) {
        DelSpace = SpaceAsReturn = false;
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = false;
    } else {
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = m_operation == FileOperation::Open;
    }

    switch (m_operation) {
    case FileOperation::Open:
        if ((type == ScriptType::Plain || type == ScriptType::RichText) && !FileName.isEmpty())
            LoadPreview();
        break;
    case FileOperation::Save:
        TimingOptionEnabled(type == ScriptType::SSA || type == ScriptType::ASS);
        if (AutoUpdate)
            UpdateContentByClass();
        break;
    case FileOperation::Convert:
        if (AutoUpdate)
            UpdateContentByClass();
        break;
    }
    showSample();
}

qint32 CFileOptionModel::CodeTypeIndex(::FileCode fileCode)
{
    if (fileCode == ::FileCode::Unicode)
        return 1;
    if (fileCode == ::FileCode::ANSI)
        return 2;
    if (fileCode == ::FileCode::UTF8)
        return 3;
    return 0;
}

::FileCode CFileOptionModel::FileCodeOfIndex(qint32 index)
{
    static const ::FileCode codes[]
        = { ::FileCode::SystemDefault, ::FileCode::Unicode, ::FileCode::ANSI, ::FileCode::UTF8 };
    return index >= 0 && index < 4 ? codes[index] : ::FileCode::SystemDefault;
}

void CFileOptionModel::setTimingOptionBit(qint32 bit, bool on)
{
    if (on)
        TimingOption |= bit;
    else
        TimingOption &= ~bit;
    if (bit == SaveOption::Dialog) {
        if (!on)
            TimingOption &= ~SaveOption::DialogTags;
        m_enabled.DialogEffect = on && m_enabled.TimingOptions;
    }
    if (AutoUpdate && timingTypeWithOptions())
        UpdateContentByClass();
}

void CFileOptionModel::setTimeFormat(qint32 index)
{
    m_timeFormat = index;
    if (AutoUpdate && timingTypeWithOptions())
        UpdateContentByClass();
}

QStringList CFileOptionModel::TimeFormatItems()
{
    return { QStringLiteral("9:59:59.99"), QStringLiteral("9:59:59.90"), QStringLiteral("9:59:59"),
        QStringLiteral("59:59") };
}

void CFileOptionModel::setChangeOptionBit(qint32 bit, bool on)
{
    if (on)
        ChangeOption |= bit;
    else
        ChangeOption &= ~bit;
    if (bit == ::ChangeOption::Color) {
        if (!on)
            ChangeOption &= ~::ChangeOption::BlackWhite;
        m_enabled.BlackWhite = on;
    }
    if (AutoUpdate && ParentWindowType != ::ParentWindowType::Timing && m_operation == FileOperation::Save)
        UpdateContentByClass();
}

void CFileOptionModel::setChangeTable(bool on)
{
    if (on)
        TranslateOption |= ::TranslateOption::ChangeTable;
    else
        TranslateOption &= ~::TranslateOption::ChangeTable;
    if (AutoUpdate && ParentWindowType != ::ParentWindowType::Timing && m_operation == FileOperation::Save)
        UpdateContentByClass();
}

QString CFileOptionModel::ExtensionOfType(::ScriptType type)
{
    return SaveExtensionOf(type);
}

::ScriptType CFileOptionModel::TypeOfFileName(const QString &fileName, bool timingWindow)
{
    const qsizetype dot = ExtensionDot(fileName);
    if (dot < 0)
        return ScriptType::Plain;
    ::ScriptType type = PickedTypeOfExtension(fileName.mid(dot + 1).toUpper())
                            .value_or(timingWindow ? ScriptType::DialogueText : ScriptType::Plain);
    if (!timingWindow && type != ScriptType::RichText)
        type = ScriptType::Plain;
    return type;
}

void CFileOptionModel::SelectFileDialog()
{
    const FileTypeRow *row = FileTypeOf(m_scriptType);
    const FileFilter kind = ParentWindowType != ::ParentWindowType::Timing ? FileFilter::Translation
        : row                                                              ? row->OptionFilter
                                                                           : FileFilter::Subtitles;
    // A conversion offers the save list of subtitles.
    const QString filter = Msg(
        FilterKey(kind, m_operation == FileOperation::Open ? FileOperation::Open : FileOperation::Save));
    const QString name = m_operation == FileOperation::Open
        ? Prompt().OpenFileName(m_caption, filter, nullptr, FileName)
        : Prompt().SaveFileName(m_caption, filter, nullptr, FileName);
    if (name.isEmpty()) {
        Cancelled = true;
        return;
    }
    Cancelled = false;
    TakeFileName(name);
}

void CFileOptionModel::TakeFileName(const QString &name)
{
    FileName = name;
    ::ScriptType type = TypeOfFileName(name, ParentWindowType == ::ParentWindowType::Timing);
    if (ParentWindowType != ::ParentWindowType::Timing && type != ScriptType::RichText)
        type = ScriptType::Plain;
    m_scriptType = type;
    m_scriptSubType = m_subTypeButton;
    m_enabled.FileSubType = type == ScriptType::SMP;
    showSample();
    if (m_operation == FileOperation::Open) {
        if (!name.isEmpty() && ModernFiles) {
            const TextCoding found = ModernFileCoding(name, { FileCode, CodePage });
            FileCode = found.Code;
            CodePage = found.CodePage;
        }
        if (!name.isEmpty())
            LoadPreview();
    } else {
        if (m_operation == FileOperation::Save)
            TimingOptionEnabled(timingTypeWithOptions());
        UpdateContentByClass();
    }
}

QString CFileOptionModel::ApplySpaceRules(const QString &text, bool spaceAsReturn, bool delSpace)
{
    if (!spaceAsReturn && !delSpace)
        return text;
    const QStringList lines = text.split(crlf);
    QString out;
    out.reserve(text.size());
    if (spaceAsReturn) {
        bool lastEmpty = true;
        for (const QString &line : lines) {
            const QString trimmed = basConvert::Trim(line);
            if (trimmed.isEmpty()) {
                out += crlf;
                lastEmpty = true;
                continue;
            }
            if (!lastEmpty)
                out += QStringLiteral("\\N");
            out += trimmed;
            lastEmpty = false;
        }
        return out;
    }
    for (const QString &line : lines) {
        const QString trimmed = basConvert::Trim(line);
        if (!trimmed.isEmpty())
            out += trimmed + crlf;
    }
    return out;
}

void CFileOptionModel::LoadPreview()
{
    const TextFileRead read = ReadTextStream(FileName, FileCode, CodePage);
    if (!read.Ok) {
        FileContent.clear();
        return;
    }
    if (m_scriptType == ScriptType::RichText) {
        FileContent = read.Text;
        PreviewIsRich = true;
        return;
    }
    PreviewIsRich = false;
    FileContent = ApplySpaceRules(read.Text, SpaceAsReturn, DelSpace);
}

void CFileOptionModel::UpdateContentByClass()
{
    if (ParentWindowType == ::ParentWindowType::Timing && TimingDocument) {
        CTiming &doc = *TimingDocument;
        m_sample = Sample(doc.ScriptType(), doc.ScriptSubType());
        FileContent = doc.ContentWith(m_scriptType, m_scriptSubType, TimingOption, m_timeFormat);
        PreviewIsRich = false;
        return;
    }
    if (ParentWindowType != ::ParentWindowType::Timing && TranslateDocument) {
        FileContent = TranslateDocument->ContentWith(m_scriptType, ChangeOption, TranslateOption);
        PreviewIsRich = m_scriptType == ScriptType::RichText;
    }
}

bool CFileOptionModel::SaveFile(QString *error)
{
    if (!basTimingFile::WriteFile(
            FileName, FileContent, m_scriptType, FileCode, BackupBeforeSave, error, CodePage))
        return false;
    OperateError = false;
    Cancelled = false;
    return true;
}

bool CFileOptionModel::Ok()
{
    Cancelled = false;
    if (m_operation != FileOperation::Save)
        return true;
    QString error;
    if (!SaveFile(&error)) {
        MsgBox(error);
        return false;
    }
    return true;
}

void CFileOptionModel::showSample()
{
    m_sample = Sample(m_scriptType, m_scriptSubType);
}
