#include "shell/CSettingDialogModel.h"

#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basLanguage.h"
#include "core/basMain.h"
#include "core/basSetting.h"
#include "core/basTime.h"
#include "timing/CCaptureKey.h"

using namespace basConvert;

namespace {
const QString kUndefined = QStringLiteral("Undefined");

QString flagText(bool on)
{
    return on ? QStringLiteral("1") : QStringLiteral("0");
}
} // namespace

void CSettingDialogModel::Init(const CHotKeys &hotKeys, const AutoSaveSettings &autoSave)
{
    Closed = false;
    chkAutoSave = autoSave.Enabled;
    txtAutoSaveTime = CStr(qint64(autoSave.AutoSaveTime));
    txtAutoDelTime = CStr(autoSave.AutoDelTime);
    chkClipBoard = AutoGetClipBoard;
    chkOnTop = OnTop;
    chkAvoidOverlapTiming = AvoidOverlapTiming;
    for (int i = 0; i < CHotKeys::Count; ++i)
        cmbHotKey[size_t(i)] = KeyCodeToName(hotKeys.Key(i));
    cmbLanguage = StoredInterfaceLanguage();
    chkModernFiles = ModernFiles;
}

QStringList CSettingDialogModel::HotKeyNames()
{
    QStringList names { kUndefined };
    for (int code : NamedKeyCodes())
        names << KeyCodeToName(code);
    return names;
}

bool CSettingDialogModel::HotKeyEntryKeyDown(int index, int keyCode, Qt::KeyboardModifiers modifiers)
{
    if (index < 0 || index >= CHotKeys::Count)
        return false;
    if (HistoryKeyOf(keyCode, modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::ShiftModifier),
            modifiers.testFlag(Qt::AltModifier))
        != HistoryKey::None)
        return false;
    const QString name = KeyCodeToName(keyCode);
    if (name == kUndefined)
        return false;
    cmbHotKey[size_t(index)] = name;
    return true;
}

bool CSettingDialogModel::LeaveAutoDelTime()
{
    if (IsNumeric(txtAutoDelTime))
        return true;
    MsgBox(QStringLiteral("请输入有效数值"));
    return false;
}

bool CSettingDialogModel::LeaveAutoSaveTime()
{
    if (IsNumeric(txtAutoSaveTime) && Val(txtAutoSaveTime) >= 10)
        return true;
    MsgBox(QStringLiteral("自动保存间隔时间请设置10秒以上"));
    return false;
}

bool CSettingDialogModel::OK(CHotKeys &hotKeys, AutoSaveSettings &autoSave)
{
    // Entry 0 stands outside the comparison.
    for (int i = 1; i < CHotKeys::Count; ++i)
        for (int j = i + 1; j < CHotKeys::Count; ++j)
            if (cmbHotKey[size_t(i)] == cmbHotKey[size_t(j)] && cmbHotKey[size_t(i)] != kUndefined) {
                MsgBox(QStringLiteral("有重复定义的快捷键,请重新选择"));
                return false;
            }

    const QString setting = QStringLiteral("Setting");
    AutoGetClipBoard = chkClipBoard;
    SaveSetting(setting, QStringLiteral("AutoGetClipBoard"), flagText(chkClipBoard));
    OnTop = chkOnTop;
    SaveSetting(setting, QStringLiteral("OnTop"), flagText(chkOnTop));
    AvoidOverlapTiming = chkAvoidOverlapTiming;
    SaveSetting(setting, QStringLiteral("AvoidOverlapTiming"), flagText(chkAvoidOverlapTiming));

    const QString section = QStringLiteral("AutoSave");
    autoSave.Enabled = chkAutoSave;
    SaveSetting(section, QStringLiteral("Enabled"), flagText(chkAutoSave));
    // The fields were checked when they lost the focus; text that still does not
    // convert (typed while the box was off) keeps the value as it was.
    try {
        autoSave.AutoSaveTime = CLng(txtAutoSaveTime);
        SaveSetting(section, QStringLiteral("Interval"), txtAutoSaveTime);
    } catch (const VelmarError &) { }
    try {
        autoSave.AutoDelTime = CDbl(txtAutoDelTime);
        SaveSetting(section, QStringLiteral("Delete"), txtAutoDelTime);
    } catch (const VelmarError &) { }

    for (int i = 0; i < CHotKeys::Count; ++i) {
        const QString &name = cmbHotKey[size_t(i)];
        hotKeys.setKey(i, qint16(KeyNameToCode(name)));
        SaveSetting(QStringLiteral("HotKeys"), HotKeyValueName(i), name);
    }
    // A store that never had a language keeps none until one is chosen.
    if (cmbLanguage != StoredInterfaceLanguage())
        SaveInterfaceLanguage(cmbLanguage);
    // Likewise a store without the modern-files value gets one only when it is turned on.
    ModernFiles = chkModernFiles;
    if (GetSetting(setting, QStringLiteral("ModernFiles"), QStringLiteral("0")) != flagText(chkModernFiles))
        SaveSetting(setting, QStringLiteral("ModernFiles"), flagText(chkModernFiles));
    Closed = true;
    return true;
}

void CSettingDialogModel::BeginShow()
{
    m_oldClipBoard = AutoGetClipBoard;
    m_oldOnTop = OnTop;
    m_oldLanguage = StoredInterfaceLanguage();
    Closed = false;
}

CSettingDialogModel::Outcome CSettingDialogModel::EndShow()
{
    Outcome out;
    if (AutoGetClipBoard != m_oldClipBoard) {
        out.ClipboardChanged = true;
        // The text asks for a restart, but the change is made here and now.
        MsgBox(QStringLiteral("由于改变了监视剪贴板的设置，请重新启动Velmar"));
        if (ClipboardViewerSwitch)
            ClipboardViewerSwitch(AutoGetClipBoard);
    }
    if (OnTop != m_oldOnTop) {
        out.OnTopChanged = true;
        if (SetWindowOnTop)
            SetWindowOnTop(OnTop);
    }
    if (StoredInterfaceLanguage() != m_oldLanguage) {
        out.LanguageChanged = true;
        MsgBox(LanguageChangeNotice());
    }
    return out;
}
