#pragma once

#include "core/VelmarError.h"

#include <QHash>
#include <QString>

#include <algorithm>
#include <memory>
#include <vector>

// The one ordered keyed list of the system: owns its members, keeps insertion order,
// looks members up by String key. A duplicate key is refused (error 457, as a keyed
// collection of Basic does) and an unknown key raises error 5 on lookup.
template <typename T> class CKeyedList
{
public:
    T *Add(const QString &key, std::unique_ptr<T> member)
    {
        if (Exists(key))
            throw VelmarError(
                457, QStringLiteral("This key is already associated with an element of this collection"));
        return AddNew(key, std::move(member));
    }

    // Appends a member whose key the caller knows to be new (a key from a counter that
    // never repeats). The key is indexed when a lookup first needs it, so reading a long
    // script does not pay for a hash insert per line.
    T *AddNew(const QString &key, std::unique_ptr<T> member)
    {
        T *raw = member.get();
        m_items.push_back({ key, std::move(member) });
        return raw;
    }

    // Inserts before the member at a 0-based position.
    T *Insert(qsizetype position, const QString &key, std::unique_ptr<T> member)
    {
        if (Exists(key))
            throw VelmarError(
                457, QStringLiteral("This key is already associated with an element of this collection"));
        position = std::clamp<qsizetype>(position, 0, Count());
        T *raw = member.get();
        m_index.insert(key, raw);
        m_items.insert(m_items.begin() + position, Entry { key, std::move(member) });
        ++m_indexed;
        return raw;
    }

    // Removes and returns the member, or nullptr for an unknown key.
    std::unique_ptr<T> Take(const QString &key)
    {
        catchUp();
        auto found = m_index.find(key);
        if (found == m_index.end())
            return nullptr;
        T *raw = found.value();
        m_index.erase(found);
        auto it = std::find_if(
            m_items.begin(), m_items.end(), [raw](const Entry &e) { return e.member.get() == raw; });
        std::unique_ptr<T> owned = std::move(it->member);
        m_items.erase(it);
        --m_indexed;
        return owned;
    }

    // Removes the member; an unknown key raises error 5.
    void Remove(const QString &key)
    {
        if (!Take(key))
            throw VelmarError::InvalidCall();
    }

    T *Find(const QString &key) const
    {
        catchUp();
        return m_index.value(key, nullptr);
    }
    T *Item(const QString &key) const
    {
        T *found = Find(key);
        if (!found)
            throw VelmarError::InvalidCall();
        return found;
    }
    bool Exists(const QString &key) const
    {
        catchUp();
        return m_index.contains(key);
    }

    T *At(qsizetype index) const
    {
        if (index < 0 || index >= Count())
            throw VelmarError::SubscriptOutOfRange();
        return m_items[size_t(index)].member.get();
    }
    const QString &KeyAt(qsizetype index) const { return m_items[size_t(index)].key; }
    qsizetype Count() const { return qsizetype(m_items.size()); }
    bool IsEmpty() const { return m_items.empty(); }
    void Clear()
    {
        m_items.clear();
        m_index.clear();
        m_indexed = 0;
    }
    void Reserve(qsizetype n) { m_items.reserve(size_t(n)); }

    // Iteration over the members in order: `for (T *m : list)`.
    class iterator
    {
    public:
        iterator(const CKeyedList *list, size_t i)
            : m_list(list)
            , m_i(i)
        { }
        T *operator*() const { return m_list->m_items[m_i].member.get(); }
        iterator &operator++()
        {
            ++m_i;
            return *this;
        }
        bool operator!=(const iterator &o) const { return m_i != o.m_i; }
        bool operator==(const iterator &o) const { return m_i == o.m_i; }

    private:
        const CKeyedList *m_list;
        size_t m_i;
    };
    iterator begin() const { return iterator(this, 0); }
    iterator end() const { return iterator(this, m_items.size()); }

    template <typename F> void ForEach(F &&f) const
    {
        for (const auto &e : m_items)
            f(e.member.get());
    }
    std::vector<T *> Members() const
    {
        std::vector<T *> out;
        out.reserve(m_items.size());
        for (const auto &e : m_items)
            out.push_back(e.member.get());
        return out;
    }

private:
    // Indexes the members appended by AddNew since the last lookup.
    void catchUp() const
    {
        if (m_indexed == m_items.size())
            return;
        m_index.reserve(qsizetype(m_items.size()));
        for (; m_indexed < m_items.size(); ++m_indexed)
            m_index.insert(m_items[m_indexed].key, m_items[m_indexed].member.get());
    }

    struct Entry
    {
        QString key;
        std::unique_ptr<T> member;
    };
    std::vector<Entry> m_items;
    // Keys of m_items[0, m_indexed); the members behind them are indexed on demand.
    mutable QHash<QString, T *> m_index;
    mutable size_t m_indexed = 0;
};
