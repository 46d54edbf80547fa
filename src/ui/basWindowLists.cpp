#include "ui/basWindowLists.h"

#include "core/IPlayerWindow.h"

#include <QComboBox>
#include <QStringList>
#include <QVariant>

QString WindowTagOf(QObject *form)
{
    if (auto *player = dynamic_cast<IPlayerWindow *>(form))
        return player->Tag();
    return form ? form->property("Tag").toString() : QString();
}

QString WindowNameOf(QObject *form)
{
    if (auto *player = dynamic_cast<IPlayerWindow *>(form))
        return player->Caption();
    return form ? form->property("windowTitle").toString() : QString();
}

int IndexOfWindowTag(const QComboBox *box, const QString &tag)
{
    for (int i = 0; i < box->count(); ++i)
        if (box->itemData(i).toString() == tag)
            return i;
    return -1;
}

void UpdateWindowListTag(QComboBox *box)
{
    QStringList keys;
    for (int i = 0; i < box->count(); ++i)
        keys << box->itemData(i).toString();
    box->setProperty("Tag", keys.join(u'*'));
}
