#include "formats/CFileOptionModel.h"

#include "core/IPrompt.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basText.h"
#include "script/CTiming.h"
#include "shell/CRecentFile.h"
#include "shell/basBackup.h"
#include "translation/CTranslate.h"

#include <QFileInfo>

namespace {

const QString crlf = QStringLiteral("\r\n");

// The position of the extension's "." in a path, -1 when the file name has none (a "."
// in a folder name does not count).
qsizetype extensionDot(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    const qsizetype slash = qMax(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    return dot > slash ? dot : -1;
}

QString text(const char16_t *s)
{
    return QString::fromUtf16(s);
}

} // namespace

void CFileOptionModel::Init()
{
    Cancelled = true;
    OperateError = true;
    m_operation = 1;
    m_scriptType = 2;
    m_scriptSubType = 0;
    m_subTypeButton = 0;
    FileContent.clear();
    PreviewIsRich = false;
    m_enabled = Enabled();
    setOperation(1);
    showSample();
}

void CFileOptionModel::setOperation(qint32 operation)
{
    m_operation = operation;
    switch (operation) {
    case 1:
        m_caption = text(u"打开文件选项");
        break;
    case 2:
        m_caption = text(u"保存文件选项");
        break;
    case 3:
        m_caption = text(u"转换时间轴选项");
        break;
    default:
        break;
    }
    updateEnabledByOperation();
}

void CFileOptionModel::updateEnabledByOperation()
{
    switch (m_operation) {
    case 1:
        TimingOptionEnabled(false);
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = m_scriptType != 6;
        break;
    case 2:
        DelSpace = SpaceAsReturn = false;
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = false;
        TimingOptionEnabled(timingTypeWithOptions());
        OpenModeOptionEnabled(OpenModeAllowed);
        break;
    case 3:
        m_enabled.FileName = m_enabled.FileType = m_enabled.CodeType = false;
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = false;
        break;
    default:
        break;
    }
}

bool CFileOptionModel::timingTypeWithOptions() const
{
    return ParentWindowType == 0 && (m_scriptType == 1 || m_scriptType == 2);
}

void CFileOptionModel::TimingOptionEnabled(bool flag)
{
    m_enabled.TimingOptions = flag;
    m_enabled.DialogEffect = flag && (TimingOption & OptDialog);
}

void CFileOptionModel::OpenModeOptionEnabled(bool flag)
{
    m_enabled.OpenMode = flag;
}

void CFileOptionModel::setSubTypeButton(qint32 index)
{
    m_subTypeButton = index == 0 ? 0 : 1;
}

void CFileOptionModel::setDocumentType(qint32 type, qint32 subType)
{
    m_scriptType = type;
    m_subTypeButton = m_scriptSubType = subType == 0 ? 0 : 1;
    m_enabled.FileSubType = type == 5;
    if (m_operation == 2)
        TimingOptionEnabled(timingTypeWithOptions());
    showSample();
}

void CFileOptionModel::ClickFileType(qint32 type)
{
    m_scriptType = type;
    m_scriptSubType = m_subTypeButton == 0 ? 0 : 1;
    m_enabled.FileSubType = type == 5;

    if (m_operation == 2 && !FileName.isEmpty()) {
        const qsizetype dot = extensionDot(FileName);
        const QString stem = dot < 0 ? FileName : FileName.left(dot);
        FileName = stem + ExtensionOfType(type);
    }

    if (type == 6 && m_operation == 2) {
        FileCode = -2;
        m_enabled.CodeType = false;
    } else {
        m_enabled.CodeType = m_operation != 3;
    }

    // The space boxes only act on an opened plain text; a conversion and a save keep
    // them off.
    if (type == 6) {
        DelSpace = SpaceAsReturn = false;
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = false;
    } else {
        m_enabled.DelSpace = m_enabled.SpaceAsReturn = m_operation == 1;
    }

    switch (m_operation) {
    case 1:
        if ((type == 0 || type == 6) && !FileName.isEmpty())
            LoadPreview();
        break;
    case 2:
        TimingOptionEnabled(type == 1 || type == 2);
        if (AutoUpdate)
            UpdateContentByClass();
        break;
    case 3:
        if (AutoUpdate)
            UpdateContentByClass();
        break;
    default:
        break;
    }
    showSample();
}

qint32 CFileOptionModel::CodeTypeIndex(qint32 fileCode)
{
    if (fileCode == -1)
        return 1;
    if (fileCode == 0)
        return 2;
    return 0;
}

qint32 CFileOptionModel::FileCodeOfIndex(qint32 index)
{
    static const qint32 codes[] = { -2, -1, 0 };
    return index >= 0 && index < 3 ? codes[index] : -2;
}

void CFileOptionModel::setTimingOptionBit(qint32 bit, bool on)
{
    if (on)
        TimingOption |= bit;
    else
        TimingOption &= ~bit;
    if (bit == OptDialog) {
        if (!on)
            TimingOption &= ~qint32(OptDialogEffect);
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
    if (bit == ChgColor) {
        if (!on)
            ChangeOption &= ~qint32(ChgBlackWhite);
        m_enabled.BlackWhite = on;
    }
    if (AutoUpdate && ParentWindowType != 0 && m_operation == 2)
        UpdateContentByClass();
}

void CFileOptionModel::setChangeTable(bool on)
{
    if (on)
        TranslateOption |= TranslateChangeTable;
    else
        TranslateOption &= ~TranslateChangeTable;
    if (AutoUpdate && ParentWindowType != 0 && m_operation == 2)
        UpdateContentByClass();
}

QString CFileOptionModel::ExtensionOfType(qint32 type)
{
    switch (type) {
    case 1:
        return QStringLiteral(".ssa");
    case 2:
        return QStringLiteral(".ass");
    case 3:
        return QStringLiteral(".smi");
    case 4:
        return QStringLiteral(".srt");
    case 6:
        return QStringLiteral(".rtf");
    case 8:
        return QStringLiteral(".lrc");
    case 9:
        return QStringLiteral(".sst");
    default:
        return QStringLiteral(".txt");
    }
}

qint32 CFileOptionModel::TypeOfFileName(const QString &fileName, bool timingWindow)
{
    const qsizetype dot = extensionDot(fileName);
    if (dot < 0)
        return 0;
    const QString ext = fileName.mid(dot + 1).toUpper();
    qint32 type = timingWindow ? 7 : 0;
    if (ext == u"SSA")
        type = 1;
    else if (ext == u"ASS")
        type = 2;
    else if (ext == u"SMI")
        type = 3;
    else if (ext == u"SRT")
        type = 4;
    else if (ext == u"RTF" || ext == u"DOC")
        type = 6;
    else if (ext == u"LRC")
        type = 8;
    else if (ext == u"SST")
        type = 9;
    if (!timingWindow && type != 6)
        type = 0;
    return type;
}

void CFileOptionModel::SelectFileDialog()
{
    QString filterKey;
    if (ParentWindowType != 0)
        filterKey = QStringLiteral("COMM_MSG_202");
    else if (m_scriptType == 9)
        filterKey = QStringLiteral("COMM_MSG_207");
    else if (m_scriptType == 5 || m_scriptType == 7)
        filterKey = QStringLiteral("COMM_MSG_206");
    else
        filterKey = m_operation == 1 ? QStringLiteral("COMM_MSG_203") : QStringLiteral("COMM_MSG_204");
    const QString filter = Msg(filterKey);
    const QString name = m_operation == 1 ? Prompt().OpenFileName(m_caption, filter, nullptr, FileName)
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
    qint32 type = TypeOfFileName(name, ParentWindowType == 0);
    if (ParentWindowType != 0 && type != 6)
        type = 0;
    m_scriptType = type;
    m_scriptSubType = m_subTypeButton;
    m_enabled.FileSubType = type == 5;
    showSample();
    if (m_operation == 1) {
        if (!name.isEmpty())
            LoadPreview();
    } else {
        if (m_operation == 2)
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
    const TextFileRead read = ReadTextStream(FileName, FileCode);
    if (!read.Ok) {
        FileContent.clear();
        return;
    }
    if (m_scriptType == 6) {
        FileContent = read.Text;
        PreviewIsRich = true;
        return;
    }
    PreviewIsRich = false;
    FileContent = ApplySpaceRules(read.Text, SpaceAsReturn, DelSpace);
}

void CFileOptionModel::UpdateContentByClass()
{
    if (ParentWindowType == 0 && TimingDocument) {
        CTiming &doc = *TimingDocument;
        m_sample = Sample(doc.ScriptType(), doc.ScriptSubType());
        const qint32 oldType = doc.ScriptType();
        const qint32 oldSubType = doc.ScriptSubType();
        const qint32 oldOption = doc.TimingOption;
        const qint32 oldFormat = doc.TimeFormat();
        const bool oldChanged = doc.Changed();
        doc.setScriptType(m_scriptType);
        doc.setScriptSubType(m_scriptSubType);
        doc.TimingOption = TimingOption;
        doc.setTimeFormat(m_timeFormat);
        FileContent = doc.Content();
        PreviewIsRich = false;
        doc.setScriptType(oldType);
        doc.setScriptSubType(oldSubType);
        doc.TimingOption = oldOption;
        doc.setTimeFormat(oldFormat);
        doc.setChanged(oldChanged);
        return;
    }
    if (ParentWindowType != 0 && TranslateDocument) {
        CTranslate &doc = *TranslateDocument;
        const qint32 oldType = doc.ScriptType;
        const qint32 oldChange = doc.ChangeOption;
        const qint32 oldTranslate = doc.TranslateOption;
        const bool oldChanged = doc.Changed();
        doc.ScriptType = m_scriptType;
        doc.ChangeOption = ChangeOption;
        doc.TranslateOption = TranslateOption;
        FileContent = doc.Content();
        PreviewIsRich = m_scriptType == 6;
        doc.ScriptType = oldType;
        doc.ChangeOption = oldChange;
        doc.TranslateOption = oldTranslate;
        doc.setChanged(oldChanged);
    }
}

bool CFileOptionModel::SaveFile(QString *error)
{
    if (BackupBeforeSave)
        BackupFile(FileName);
    const bool ansi = FileCode == 0 || (m_scriptType == 6 && FileCode == -2);
    if (!WriteTextFile(FileName, FileContent, !ansi, error))
        return false;
    OperateError = false;
    Cancelled = false;
    if (RecentFile)
        RecentFile->InsertRecentFileList(FileName, m_scriptType);
    return true;
}

bool CFileOptionModel::Ok()
{
    Cancelled = false;
    if (m_operation != 2)
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
