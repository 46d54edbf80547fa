#pragma once

#include "formats/IRecentFileList.h"
#include "script/ScriptType.h"

#include <QString>
#include <QtGlobal>
#include <functional>
#include <vector>

// One entry of the recent-file menu, as every window's File menu shows it.
struct RecentFileMenuEntry
{
    int Slot = 0; // 1 is the latest
    bool Visible = false; // an unused slot is hidden; its entry stays in place
    QString Caption; // "1: 时间轴: /path/file.ass"
    QString FileName;
    ScriptType Type = ScriptType::Plain;
};

// The list of files last used, kept in the "Recent" section of the store and shown as a
// menu model that any window renders.
class CRecentFile : public IRecentFileList
{
public:
    // The length comes from "Count" under "RecentFiles", 5 when not set. Reads every
    // slot from the store, then updates the menu.
    void Init();
    // A list of a given length (0 holds nothing and writes nothing).
    void Init(qint32 length);

    qint32 Length() const { return qint32(m_names.size()); }
    // Slots count from 1.
    QString FileName(int slot) const;
    ScriptType FileType(int slot) const;

    // Puts the file first; a file already listed (compared upper-cased) moves up, any
    // other pushes the last entry out. Then updates the menu.
    void InsertRecentFileList(const QString &name, ScriptType type) override;

    // Rebuilds the menu model, tells the windows, and writes every slot to the store.
    void UpdateRecentFileMenu();
    const std::vector<RecentFileMenuEntry> &Menu() const { return m_menu; }
    // Every window that shows the menu re-renders it from Menu() when told.
    std::function<void(const std::vector<RecentFileMenuEntry> &)> MenuChanged;

    // The label of a file type, and back.
    static QString ScripyTypeName(ScriptType type);
    static ScriptType ScripyType(const QString &name);

private:
    std::vector<QString> m_names;
    // Kept in the store as their numbers.
    std::vector<ScriptType> m_types;
    std::vector<RecentFileMenuEntry> m_menu;
};
