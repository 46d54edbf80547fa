#pragma once

#include "core/basMessage.h"
#include "ui/MdiVelmar.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <functional>
#include <vector>

struct RecentFileMenuEntry;

// The menu bar a document window carries (the translation and notepad windows): titles,
// entries with their captions, separators and the place of the recent files. An entry that
// is one of the frame's commands stands for the frame's entry once the window is bound to
// a frame, and is disabled until then.
template <typename Window> struct WindowMenuItem
{
    enum Kind { Title, Entry, Separator, Recent };
    Kind Type;
    const char *Name = nullptr;
    const char *TextKey = nullptr;
    void (*Run)(Window &) = nullptr;
    QAction *MdiVelmar::*FrameEntry = nullptr;
};

// A document window's own menus followed by the frame's options, window and help menus,
// whose entries stand for the frame's entries of the same names.
template <typename Window>
std::vector<WindowMenuItem<Window>> WithFrameMenus(std::vector<WindowMenuItem<Window>> items)
{
    using M = WindowMenuItem<Window>;
    items.insert(items.end(),
        {
            { M::Title, "mnuOption", "MENU_OPTION_000" },
            { M::Entry, "mnuOptionSetting", "MENU_OPTION_100", nullptr, &MdiVelmar::mnuOptionSetting },
            { M::Title, "mnuWindow", "MENU_WINDOW_000" },
            { M::Entry, "mnuWindowTileHorizontally", "MENU_WINDOW_100", nullptr,
                &MdiVelmar::mnuWindowTileHorizontally },
            { M::Entry, "mnuWindowTileVertically", "MENU_WINDOW_101", nullptr,
                &MdiVelmar::mnuWindowTileVertically },
            { M::Entry, "mnuWindowCascade", "MENU_WINDOW_102", nullptr, &MdiVelmar::mnuWindowCascade },
            { M::Entry, "mnuWindowArrange", "MENU_WINDOW_103", nullptr, &MdiVelmar::mnuWindowArrange },
            { M::Title, "mnuHelp", "MENU_HELP_000" },
            { M::Entry, "mnuHelpVersion", "MENU_HELP_100", nullptr, &MdiVelmar::mnuHelpVersion },
        });
    return items;
}

// Renders the recent-file entries behind the first of `shown` in its menu: entries are
// made as needed (each new one is handed to `made`), captions and visibility follow the
// list, surplus entries are hidden. True when any entry is visible.
bool ShowRecentEntries(QList<QAction *> &shown, const std::vector<RecentFileMenuEntry> &entries,
    const std::function<void(QAction *)> &made);

// Builds the menu bar of a window from its items; the recent entries' first one goes to
// `recent`, and a chosen recent entry calls `openRecent` with its caption.
template <typename Window>
void BuildWindowMenu(Window &window, QMenuBar *bar, const std::vector<WindowMenuItem<Window>> &items,
    QList<QAction *> &recent, const std::function<void(QAction *)> &connectRecent)
{
    using Item = WindowMenuItem<Window>;
    QMenu *menu = nullptr;
    for (const Item &item : items) {
        switch (item.Type) {
        case Item::Title:
            menu = bar->addMenu(Msg(QString::fromLatin1(item.TextKey)));
            menu->setObjectName(QString::fromLatin1(item.Name));
            break;
        case Item::Separator:
            menu->addSeparator();
            break;
        case Item::Recent: {
            QAction *first = menu->addAction(QString());
            first->setObjectName(QStringLiteral("mnuFileRecent"));
            first->setVisible(false);
            connectRecent(first);
            recent << first;
            break;
        }
        case Item::Entry: {
            QAction *a = menu->addAction(Msg(QString::fromLatin1(item.TextKey)));
            a->setObjectName(QString::fromLatin1(item.Name));
            if (const auto run = item.Run)
                QObject::connect(a, &QAction::triggered, &window, [&window, run] { run(window); });
            else
                a->setEnabled(false);
            break;
        }
        }
    }
}

// Makes the window's entries that stand for the frame's commands run those commands.
template <typename Window>
void BindWindowMenu(QMenuBar *bar, const std::vector<WindowMenuItem<Window>> &items, MdiVelmar &frame)
{
    for (const auto &item : items) {
        if (item.Type != WindowMenuItem<Window>::Entry || !item.FrameEntry)
            continue;
        QAction *mine = bar->findChild<QAction *>(QString::fromLatin1(item.Name));
        QAction *theirs = frame.*item.FrameEntry;
        if (!mine || !theirs)
            continue;
        mine->setEnabled(theirs->isEnabled());
        QObject::connect(mine, &QAction::triggered, theirs, &QAction::trigger);
    }
}
