#pragma once

#include "core/CKeyedList.h"
#include "core/ICollection.h"
#include "core/isub.h"

#include <functional>

// A list of documents of one kind under the root: members keyed by the decimal text of
// their SerialNo, a counter that never falls (a closed window's number is not reused),
// and events for a member's coming and going.
template <typename T> class CDocumentList : public ICollection, public isub
{
public:
    qint32 SerialNo() const override { return m_counter; }
    void Delete(const QString &key) override
    {
        std::unique_ptr<T> gone = m_list.Take(key);
        if (gone && Deleted)
            Deleted(key);
    }
    qsizetype Count() const override { return m_list.Count(); }
    isub *item(const QString &key) override { return m_list.Find(key); }
    isub *itemAt(qsizetype index) override { return m_list.At(index); }
    void Init() override { }

    T *Item(const QString &key) const { return m_list.Find(key); }
    T *At(qsizetype index) const { return m_list.At(index); }
    bool Exists(const QString &key) const { return m_list.Exists(key); }
    auto begin() const { return m_list.begin(); }
    auto end() const { return m_list.end(); }

    QString Content() override { return {}; }
    void setContent(const QString &) override { }
    void Clear() override { }

    std::function<void(T *)> Created;
    std::function<void(const QString &key)> Deleted;

protected:
    // Gives the member the next serial number, adds it and announces it.
    T *Adopt(std::unique_ptr<T> member)
    {
        ++m_counter;
        member->setSerialNo(m_counter);
        T *raw = m_list.Add(QString::number(m_counter), std::move(member));
        if (Created)
            Created(raw);
        return raw;
    }

    CKeyedList<T> m_list;
    qint32 m_counter = 0;
};
