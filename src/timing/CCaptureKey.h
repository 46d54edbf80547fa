#pragma once

#include <QString>
#include <Qt>

class CHotKeys;

// What a key stroke in the timing grid does, in the order in which the hot keys are
// compared.
enum class CaptureAction {
    None,
    TimePoint, // HOTKEY_TimingTime: stamp whichever time cell is active
    StartTime, // HOTKEY_TimingStartTime
    EndTime, // HOTKEY_TimingEndTime
    ShiftForword, // HOTKEY_TimingForword: selected times +0.1 s
    ShiftBack, // HOTKEY_TimingBack: selected times -0.1 s
    ClearCells, // the Delete key (key down) or "." (key press), outside edit mode
    Refresh, // HOTKEY_Refresh: swallowed, nothing else
};

// What the window must do with a key event after the capture has seen it.
struct CaptureKeyResult
{
    CaptureAction Action = CaptureAction::None;
    // The grid (key down) or the cell (key press) must not see the key.
    bool Cancel = false;
    // Let pending events run once before the next key (after a key down action).
    bool Yield = false;
};

// A key event of the grid, as the window forwards it. Key codes are those of the hot-key
// table (65..90 letters, 112..123 F1..F12, 13 Enter, 37..40 arrows, 46 Delete); Char is
// the character a key press brings, 0 for none.
class CCaptureKey
{
public:
    int KeyCode = 0;
    char16_t Char = 0;
    bool Shift = false;
    bool Ctrl = false;
    bool Alt = false;

    static CCaptureKey Down(int keyCode) { return { keyCode, 0, false, false, false }; }
    static CCaptureKey Press(char16_t ch) { return { 0, ch, false, false, false }; }
    // From a Qt key event: the key code of the hot-key table (0 for a key it has no
    // code for) and the first character of the event's text.
    static CCaptureKey FromQt(int qtKey, Qt::KeyboardModifiers modifiers, const QString &text);

    // The pure decision tables. The key down table leaves letters alone, since they
    // come again as characters; the key press table upper-cases the character first.
    static CaptureAction KeyDownAction(const CHotKeys &keys, int keyCode);
    static CaptureAction KeyPressAction(const CHotKeys &keys, char16_t ch);
};

// The grid's undo and redo keys: Ctrl+Z takes a step back, Ctrl+Y and Ctrl+Shift+Z do it
// again. They come before every hot key, and no hot key may take them.
enum class HistoryKey { None, Undo, Redo };
HistoryKey HistoryKeyOf(int keyCode, bool ctrl, bool shift, bool alt);
inline HistoryKey HistoryKeyOf(const CCaptureKey &key)
{
    return HistoryKeyOf(key.KeyCode, key.Ctrl, key.Shift, key.Alt);
}

// The caption of the insert-time-point button, and the tips of the two shift buttons,
// each followed by the name of its hot key in round brackets.
QString InsertTimePointCaption(const CHotKeys &keys);
QString TimeOffsetForwordTip(const CHotKeys &keys);
QString TimeOffsetBackTip(const CHotKeys &keys);
