#include "ui/basWindowMenu.h"

#include "shell/CRecentFile.h"

bool ShowRecentEntries(QList<QAction *> &shown, const std::vector<RecentFileMenuEntry> &entries,
    const std::function<void(QAction *)> &made)
{
    if (shown.isEmpty())
        return false;
    auto *menu = qobject_cast<QWidget *>(shown.first()->parent());
    const QList<QAction *> all = menu ? menu->actions() : QList<QAction *>();
    const qsizetype at = all.indexOf(shown.last());
    QAction *next = at >= 0 && at + 1 < all.size() ? all[at + 1] : nullptr;
    bool any = false;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (qsizetype(i) >= shown.size()) {
            if (!menu)
                break;
            auto *entry = new QAction(menu);
            entry->setObjectName(QStringLiteral("mnuFileRecent"));
            menu->insertAction(next, entry);
            if (made)
                made(entry);
            shown << entry;
        }
        QAction *entry = shown[qsizetype(i)];
        entry->setText(entries[i].Caption);
        entry->setVisible(entries[i].Visible);
        any = any || entries[i].Visible;
    }
    for (qsizetype i = qsizetype(entries.size()); i < shown.size(); ++i)
        shown[i]->setVisible(false);
    return any;
}
