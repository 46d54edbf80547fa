#pragma once

#include "timing/ITextControl.h"

#include <algorithm>

// A text control without a window that behaves as the rich-text box of the windows
// does: edits report the selection first, then the text; the Backspace and Delete
// keys take a whole "\r\n"; a selection that ends in "\r\n" leaves that line break
// behind when it is typed over.
class FakeTextControl : public ITextControl
{
public:
    QString Text() const override { return m_text; }
    void setText(const QString &text) override
    {
        m_text = text;
        m_start = 0;
        m_length = 0;
        selChange();
        change();
    }
    qint32 SelStart() const override { return m_start; }
    void setSelStart(qint32 start) override
    {
        m_start = std::clamp<qint32>(start, 0, qint32(m_text.size()));
        m_length = 0;
        selChange();
    }
    qint32 SelLength() const override { return m_length; }
    void setSelLength(qint32 length) override
    {
        m_length = std::clamp<qint32>(length, 0, qint32(m_text.size()) - m_start);
        selChange();
    }
    QString SelText() const override { return m_text.mid(m_start, m_length); }
    void setSelText(const QString &text) override { replace(text, false); }
    void setEvents(ITextControlEvents *events) override { m_events = events; }
    ITextControlEvents *Events() const { return m_events; }

    // The user's actions.
    void Select(qint32 start, qint32 length)
    {
        m_start = std::clamp<qint32>(start, 0, qint32(m_text.size()));
        m_length = std::clamp<qint32>(length, 0, qint32(m_text.size()) - m_start);
        selChange();
    }
    void Type(const QString &chars)
    {
        for (QChar c : chars) {
            const int code = c.isLetter() && c.unicode() < 128 ? c.toUpper().unicode() : 229;
            if (keyDown(code, 0))
                continue;
            if (m_overtype && m_length == 0 && m_start < m_text.size())
                m_length = 1;
            replace(QString(c), true);
        }
    }
    void Enter()
    {
        if (!keyDown(13, 0))
            replace(QStringLiteral("\r\n"), true);
    }
    void Backspace()
    {
        if (keyDown(8, 0))
            return;
        if (m_length == 0) {
            if (m_start == 0)
                return;
            const int n = m_start >= 2 && m_text.mid(m_start - 2, 2) == QStringLiteral("\r\n") ? 2 : 1;
            m_start -= n;
            m_length = n;
        }
        replace(QString(), true);
    }
    void Delete()
    {
        if (keyDown(46, 0))
            return;
        if (m_length == 0) {
            if (m_start >= m_text.size())
                return;
            m_length = m_text.mid(m_start, 2) == QStringLiteral("\r\n") ? 2 : 1;
        }
        replace(QString(), true);
    }
    void InsertKey()
    {
        if (!keyDown(45, 0))
            m_overtype = !m_overtype;
    }
    // Ctrl with a letter; true when the listener took it.
    bool Ctrl(char letter) { return keyDown(QChar::fromLatin1(letter).toUpper().unicode(), 2); }

private:
    bool keyDown(int code, int shift) { return m_events && m_events->KeyDown(code, shift); }
    void selChange()
    {
        if (m_events)
            m_events->SelChange();
    }
    void change()
    {
        if (m_events)
            m_events->Change();
    }
    void replace(const QString &text, bool typed)
    {
        const QString gone = m_text.mid(m_start, m_length);
        QString put = text;
        if (typed && gone.size() >= 3 && gone.endsWith(QStringLiteral("\r\n")))
            put += QStringLiteral("\r\n");
        m_text.replace(m_start, m_length, put);
        m_start += qint32(text.size());
        m_length = 0;
        selChange();
        change();
    }

    QString m_text;
    qint32 m_start = 0;
    qint32 m_length = 0;
    bool m_overtype = false;
    ITextControlEvents *m_events = nullptr;
};
