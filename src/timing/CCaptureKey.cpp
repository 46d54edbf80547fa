#include "timing/CCaptureKey.h"

#include "core/CHotKeys.h"
#include "core/KeyCode.h"
#include "core/basMessage.h"
#include "core/basTime.h"

#include <QChar>

namespace {

// The comparison order of both tables, before the Delete/"." code and the refresh key.
CaptureAction MatchWorkingKeys(const CHotKeys &keys, int code)
{
    if (code == keys.HOTKEY_TimingTime())
        return CaptureAction::TimePoint;
    if (code == keys.HOTKEY_TimingStartTime())
        return CaptureAction::StartTime;
    if (code == keys.HOTKEY_TimingEndTime())
        return CaptureAction::EndTime;
    if (code == keys.HOTKEY_TimingForword())
        return CaptureAction::ShiftForword;
    if (code == keys.HOTKEY_TimingBack())
        return CaptureAction::ShiftBack;
    if (code == KeyCode::Delete)
        return CaptureAction::ClearCells;
    if (code == keys.HOTKEY_Refresh())
        return CaptureAction::Refresh;
    return CaptureAction::None;
}

QString WithKeyName(const char *key, qint16 code)
{
    return Msg(QString::fromLatin1(key)) + u'(' + KeyCodeToName(code) + u')';
}

} // namespace

CCaptureKey CCaptureKey::FromQt(int qtKey, Qt::KeyboardModifiers modifiers, const QString &text)
{
    CCaptureKey key;
    key.KeyCode = KeyCodeOfQtKey(qtKey);
    // The Delete key brings no character, whatever the platform puts in the text.
    if (!text.isEmpty() && qtKey != Qt::Key_Delete && text.at(0).unicode() != 0x7F)
        key.Char = text.at(0).unicode();
    key.Shift = modifiers.testFlag(Qt::ShiftModifier);
    key.Ctrl = modifiers.testFlag(Qt::ControlModifier);
    key.Alt = modifiers.testFlag(Qt::AltModifier);
    return key;
}

CaptureAction CCaptureKey::KeyDownAction(const CHotKeys &keys, int keyCode)
{
    // A zero code is no key; it must not meet a hot key that is undefined (0).
    if (keyCode <= 0 || (keyCode >= 'A' && keyCode <= 'Z'))
        return CaptureAction::None;
    return MatchWorkingKeys(keys, keyCode);
}

CaptureAction CCaptureKey::KeyPressAction(const CHotKeys &keys, char16_t ch)
{
    if (ch == 0)
        return CaptureAction::None;
    return MatchWorkingKeys(keys, QChar(ch).toUpper().unicode());
}

HistoryKey HistoryKeyOf(int keyCode, bool ctrl, bool shift, bool alt)
{
    if (!ctrl || alt)
        return HistoryKey::None;
    if (keyCode == 'Z')
        return shift ? HistoryKey::Redo : HistoryKey::Undo;
    if (keyCode == 'Y' && !shift)
        return HistoryKey::Redo;
    return HistoryKey::None;
}

QString InsertTimePointCaption(const CHotKeys &keys)
{
    return WithKeyName("TIMING_BUTTON_CAPTION_100", keys.HOTKEY_TimingTime());
}

QString TimeOffsetForwordTip(const CHotKeys &keys)
{
    return WithKeyName("TIMING_BUTTON_TIP_800", keys.HOTKEY_TimingForword());
}

QString TimeOffsetBackTip(const CHotKeys &keys)
{
    return WithKeyName("TIMING_BUTTON_TIP_700", keys.HOTKEY_TimingBack());
}
