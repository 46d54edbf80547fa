#pragma once

#include "shell/basRouting.h"

#include <QString>
#include <functional>
#include <map>

class IForm;

// The window routing of the File menu, dropped files and recent entries. Windows are
// made by factories that each kind of window registers; a kind without a factory makes
// nothing. The frame supplies how a window is unloaded again and which is active.
class CDocumentRouter
{
public:
    // Makes a new window of the kind, shown and announced, and gives its document
    // contract; nullptr when it could not be made.
    using Factory = std::function<IForm *()>;
    void RegisterFactory(DocumentWindowKind kind, Factory factory);
    bool HasFactory(DocumentWindowKind kind) const;

    // Unloads a window made here whose open failed.
    std::function<void(IForm *)> Unload;
    // The active child window's contract, nullptr when there is none or it has none.
    std::function<IForm *()> ActiveForm;

    // A new window without a file: 0 timing, 1 translation, 4 notepad.
    IForm *NewDocument(int kind);
    // As NewDocument, 3 also a player, then the window asks for its file; a window whose
    // open fails is unloaded again, except a notepad.
    IForm *OpenDocument(int kind);
    // The trimmed name goes to the window its type chooses (or, with no type, its
    // extension), which opens it. Refused names show the message.
    IForm *OpenFileByType(const QString &fileName, std::optional<ScriptType> fileType = std::nullopt);
    // A recent-menu caption: its label gives the type, the rest is the name.
    IForm *OpenRecentFile(const QString &caption);
    // The active window saves (kinds 0, 1 and 4; others do nothing).
    bool SaveDocument(int kind);
    bool SaveDocumentAs(int kind);

private:
    IForm *make(DocumentWindowKind kind);
    std::map<DocumentWindowKind, Factory> m_factories;
};
