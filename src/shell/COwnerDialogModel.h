#pragma once

#include <QStringList>

// The list of speakers (owner names) without its window: add, delete and rename with
// their checks and messages, and OK or Cancel.
class COwnerDialogModel
{
public:
    // The names the list starts with.
    void Init(const QStringList &names);

    // lstOwner as it stands.
    QStringList Items;
    // The value of the dialog: the list as OK found it.
    QStringList OwnerNames;
    bool Canceled = true;

    // Each true when the list changed; `selected` is the 0-based selection (-1 none).
    bool Add();
    bool Delete(int selected);
    bool Rename(int selected);
    // OK takes the list as the value; Cancel leaves the value as Init gave it.
    void OK();
    void Cancel() { Canceled = true; }
};
