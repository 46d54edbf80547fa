#include "timing/CCaptureKey.h"

#include "core/basMessage.h"
#include "core/basTime.h"
#include "shell/CHotKeys.h"

#include <QChar>

namespace {

// Key down code of the Delete key; as a key press character the same code is ".".
constexpr int kDeleteCode = 46;

int CodeOfQtKey(int qtKey)
{
    if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9))
        return qtKey; // the same numbers in both tables
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12)
        return 112 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return kDeleteCode;
    case Qt::Key_Period:
        return 190; // never 46: that code is the Delete key
    default:
        return 0;
    }
}

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
    if (code == kDeleteCode)
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
    key.KeyCode = CodeOfQtKey(qtKey);
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
