#pragma once

#include <QString>

class QComboBox;
class QObject;

// The lists of open windows that document windows keep (players, translations): each item
// is a window's name with its key as the item's data, and the list's "Tag" property holds
// the keys in the order of the items, joined by "*".

// A window's key (its Tag) and its name (its caption).
QString WindowTagOf(QObject *form);
QString WindowNameOf(QObject *form);
// The item of a key; -1 for none.
int IndexOfWindowTag(const QComboBox *box, const QString &tag);
// Writes the list's "Tag" property from its items.
void UpdateWindowListTag(QComboBox *box);
