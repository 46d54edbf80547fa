#pragma once

#include "core/CKeyedList.h"
#include "core/Class.h"
#include "core/ICollection.h"
#include "core/isub.h"

#include <functional>
#include <memory>

// The list part of every format pair: lines keyed by the decimal text of their serial
// number, in reading order, with a 16-bit serial counter that survives Clear so that
// keys never repeat. `Derived` is the format's list class, `Line` its line class.
template <typename Derived, typename Line> class CFormatContent : public isub, public ICollection
{
public:
    // A new line, numbered, parented and added.
    Line *Create()
    {
        auto line = Class::Make<Line>();
        Line *raw = Add(std::move(line));
        if (ContentChanged)
            ContentChanged();
        return raw;
    }

    // ICollection_Add: the line gets the next serial number and this list as parent.
    Line *Add(std::unique_ptr<Line> line)
    {
        const qint16 serial = nextSerial();
        line->setSerialNo(serial);
        line->setParent(static_cast<Derived *>(this));
        // The counter never goes back, not even when the list is cleared: the key is new.
        return m_lines.AddNew(QString::number(serial), std::move(line));
    }

    bool Exists(const QString &key) const { return m_lines.Exists(key); }

    // Every line's Dialog followed by "\r\n".
    QString Dialog() const
    {
        QString text;
        for (Line *line : m_lines) {
            text += line->Dialog();
            text += QStringLiteral("\r\n");
        }
        return text;
    }

    void Clear() override { m_lines.Clear(); }

    qint32 SerialNo() const override { return m_counter; }
    void Delete(const QString &key) override { m_lines.Remove(key); }
    qsizetype Count() const override { return m_lines.Count(); }
    isub *item(const QString &key) override { return m_lines.Find(key); }
    isub *itemAt(qsizetype index) override { return m_lines.At(index); }
    void Init() override { }

    Line *Item(const QString &key) const { return m_lines.Item(key); }
    Line *At(qsizetype index) const { return m_lines.At(index); }
    auto begin() const { return m_lines.begin(); }
    auto end() const { return m_lines.end(); }

    // Raised when Create adds a line.
    std::function<void()> ContentChanged;

protected:
    qint16 nextSerial()
    {
        if (m_counter == 32767)
            throw VelmarError::Overflow();
        return ++m_counter;
    }

    CKeyedList<Line> m_lines;
    qint16 m_counter = 0;
};
