#pragma once

#include "core/FileCode.h"
#include "formats/FileOptions.h"
#include "script/SaveOption.h"
#include "script/ScriptType.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtGlobal>

class CTiming;
class ITranslateContent;

// The state and rules of the file-option dialog, without a widget: the type, sub-type,
// code and open-mode groups, the option boxes and when they may be used, the sample of
// the chosen format, the preview of what will really be written, and the write itself.
// The window renders this state and forwards clicks; tools drive it directly.
class CFileOptionModel
{
public:
    // Which controls may be used at present.
    struct Enabled
    {
        bool FileName = true; // txtFileName and cmdFileName
        bool FileType = true; // optFileType
        bool FileSubType = false; // optFileSubType
        bool CodeType = true; // optCodeType
        bool OpenMode = true; // optOpenMode
        bool TimingOptions = false; // the seven TimingOption boxes
        bool DialogEffect = false; // chkDialogEffect, also bound to chkDialog
        bool BlackWhite = true; // chkBlackWhite, bound to chkColor
        bool DelSpace = true; // chkDelSpace
        bool SpaceAsReturn = true; // chkSpaceAsReturn
    };

    // Starting state: Cancelled, open of an ASS file by a timing window, preview empty.
    void Init();

    // Sets the caption and what is enabled.
    FileOperation Operation() const { return m_operation; }
    void setOperation(FileOperation operation);
    QString Caption() const { return m_caption; }

    ::ParentWindowType ParentWindowType = ::ParentWindowType::Timing;
    CTiming *TimingDocument = nullptr;
    ITranslateContent *TranslateDocument = nullptr;
    // Whether the window lets the open mode be chosen (save only).
    bool OpenModeAllowed = true;

    // A click on optFileType: the type, its sub-type, the file name's extension, the code
    // choice, the space boxes, then the follow-up of the operation and the sample.
    void ClickFileType(::ScriptType type);
    ::ScriptType ScriptType() const { return m_scriptType; }
    // optFileSubType: takes effect with the next ClickFileType (as the dialog does).
    void setSubTypeButton(qint32 index);
    qint32 SubTypeButton() const { return m_subTypeButton; }
    qint32 ScriptSubType() const { return m_scriptSubType; }
    // Sets the type and sub-type as the caller's document has them, without follow-up.
    void setDocumentType(::ScriptType type, qint32 subType);

    ::FileCode FileCode = ::FileCode::SystemDefault;
    // The code page of ANSI as modern files found it (iconv name); empty: the system's.
    QByteArray CodePage;
    // optCodeType index 0, 1, 2 for the system default, Unicode, ANSI, and 3 for UTF-8,
    // and back.
    static qint32 CodeTypeIndex(::FileCode fileCode);
    static ::FileCode FileCodeOfIndex(qint32 index);

    QString FileName;

    // Option boxes. Setting one runs the rules of the box and the preview update.
    qint32 TimingOption = ::SaveOption::Whole;
    void setTimingOptionBit(qint32 bit, bool on);
    qint32 ChangeOption = ::ChangeOption::Text;
    void setChangeOptionBit(qint32 bit, bool on);
    qint32 TranslateOption = ::TranslateOption::ChangeTable;
    void setChangeTable(bool on);
    qint32 TimeFormat() const { return m_timeFormat; }
    void setTimeFormat(qint32 index);
    static QStringList TimeFormatItems();

    bool DelSpace = false; // chkDelSpace
    bool SpaceAsReturn = false; // chkSpaceAsReturn
    // optOpenMode index: 0 replaces the grid, 1 adds behind its rows.
    qint32 OpenMode = 0;

    const Enabled &EnabledState() const { return m_enabled; }
    // Enables or disables the seven TimingOption boxes at once (chkDialogEffect only
    // while chkDialog is on), and both open-mode buttons.
    void TimingOptionEnabled(bool flag);
    void OpenModeOptionEnabled(bool flag);

    // The sample of a type (for 5, of its sub-type), and whether it is rich text.
    static QString Sample(::ScriptType type, qint32 subType);
    static bool SampleIsRich(::ScriptType type) { return type == ::ScriptType::RichText; }
    QString SampleText() const { return m_sample; }

    // The preview of what will be written or what was loaded.
    QString FileContent;
    bool PreviewIsRich = false;

    bool Cancelled = true;
    bool OperateError = true;

    // The extension given on save (".ass"...), and the type an extension selects (the
    // upper-cased text behind the last "."; no "." gives 0). A translation window takes
    // 0 and 6 only.
    static QString ExtensionOfType(::ScriptType type);
    static ::ScriptType TypeOfFileName(const QString &fileName, bool timingWindow);

    // The file dialog through the prompt service, then the name as chosen: the type from
    // its extension, the preview. An empty answer cancels.
    void SelectFileDialog();
    // Steps behind the dialog for a given name (also what a typed name does).
    void TakeFileName(const QString &name);

    // Open: reads the file by FileCode into the preview, applying the space boxes to plain
    // text. With ModernFiles on, a file just named first sets FileCode and CodePage to the
    // coding the read will find, so that the dialog proposes it.
    void LoadPreview();
    // Plain text under the space boxes (SpaceAsReturn wins over DelSpace).
    static QString ApplySpaceRules(const QString &text, bool spaceAsReturn, bool delSpace);

    // The text the document would write under the chosen options, into FileContent; the
    // document stays as it was.
    void UpdateContentByClass();

    // Writes FileContent as the chosen type and code (basTimingFile::WriteFile: the old
    // file backed up first when BackupBeforeSave, the name into the recent files). Gives
    // false with the fault text in `error` when the file could not be written.
    bool SaveFile(QString *error = nullptr);
    // Whether clicks and box changes rebuild the preview at once (the dialog's way). A
    // caller that sets several choices in a row turns it off and calls
    // UpdateContentByClass once.
    bool AutoUpdate = true;
    // Backup of the old file before writing; on by default.
    bool BackupBeforeSave = true;

    // OK: Cancelled off; a save writes (a fault is shown as a message). Cancel.
    bool Ok();
    void Cancel() { Cancelled = true; }

private:
    void updateEnabledByOperation();
    void showSample();
    bool timingTypeWithOptions() const;

    FileOperation m_operation = FileOperation::Open;
    ::ScriptType m_scriptType = ::ScriptType::ASS;
    qint32 m_scriptSubType = 0;
    qint32 m_subTypeButton = 0;
    qint32 m_timeFormat = 0;
    QString m_caption;
    QString m_sample;
    Enabled m_enabled;
};
