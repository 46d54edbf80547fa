#pragma once

#include <QString>
#include <QtGlobal>

class isub;

// The contract of every list: members by String key, walked in insertion order.
class ICollection
{
public:
    virtual ~ICollection() = default;

    // The running counter: the number given to the last member created.
    virtual qint32 SerialNo() const = 0;
    virtual void Delete(const QString &key) = 0;
    virtual qsizetype Count() const = 0;
    // The member with that key, or nullptr where the list gives nothing for it.
    virtual isub *item(const QString &key) = 0;
    // The member at a 0-based position in insertion order (the enumerator).
    virtual isub *itemAt(qsizetype index) = 0;
    // Second-stage set-up, called by the factory right after creation.
    virtual void Init() = 0;
};
