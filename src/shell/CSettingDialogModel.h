#pragma once

#include "core/CHotKeys.h"
#include "shell/basSettings.h"

#include <QString>
#include <QStringList>
#include <Qt>
#include <array>
#include <functional>

// The rules of the settings dialog, without a window. The form binds its controls to
// the public fields, forwards focus and key events, and closes when OK or Cancel says
// so. Entry i of cmbHotKey edits CHotKeys key i.
class CSettingDialogModel
{
public:
    // Loads every field from the present objects and module flags.
    void Init(const CHotKeys &hotKeys, const AutoSaveSettings &autoSave);

    bool chkAutoSave = false;
    QString txtAutoSaveTime;
    QString txtAutoDelTime;
    bool chkClipBoard = false;
    bool chkOnTop = false;
    bool chkAvoidOverlapTiming = false;
    std::array<QString, CHotKeys::Count> cmbHotKey;
    // The language the program starts in ("zh" or "en"); stored only when changed.
    QString cmbLanguage;
    // Modern files (ModernFiles); stored only when it differs from the store.
    bool chkModernFiles = false;

    // The names every hot-key entry offers, "Undefined" first.
    static QStringList HotKeyNames();
    // The time fields and their labels follow the auto-save box.
    bool AutoSaveFieldsEnabled() const { return chkAutoSave; }
    // A key pressed while a hot-key entry has the focus selects its name there when the
    // key has one; true when the entry changed. The grid's undo and redo keys (Ctrl+Z,
    // Ctrl+Y, Ctrl+Shift+Z) are no hot key: they leave the entry as it is.
    bool HotKeyEntryKeyDown(int index, int keyCode, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    // Leaving the time fields: false keeps the focus there, after the message.
    bool LeaveAutoDelTime();
    bool LeaveAutoSaveTime();

    // OK: false (after the message) when two entries 1..9 hold the same key other than
    // "Undefined"; otherwise applies and saves everything and the dialog closes.
    bool OK(CHotKeys &hotKeys, AutoSaveSettings &autoSave);
    // Cancel: the dialog closes and nothing changes.
    void Cancel() { Closed = true; }
    bool Closed = false;

    // The showing of the dialog: BeginShow before it opens, EndShow after it closed.
    // EndShow tells the frame about a changed clipboard or on-top state through the
    // callbacks, tells the user that a changed language comes at the next start, and
    // reports what changed.
    struct Outcome
    {
        bool ClipboardChanged = false;
        bool OnTopChanged = false;
        bool LanguageChanged = false;
    };
    void BeginShow();
    Outcome EndShow();
    // Enter (true) or leave (false) the clipboard watch.
    std::function<void(bool)> ClipboardViewerSwitch;
    // Keep the main frame on top (true) or not.
    std::function<void(bool)> SetWindowOnTop;

private:
    bool m_oldClipBoard = false;
    bool m_oldOnTop = false;
    QString m_oldLanguage;
};
