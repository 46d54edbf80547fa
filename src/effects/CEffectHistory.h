#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The history of the result box of the effect window. The box's text is kept before
// each generation and each page change, unless it is kept already; the user steps back
// and forward through the kept texts.
class CEffectHistory
{
public:
    // Keeps the text of the box if it is not yet kept; the newest entry becomes current.
    void Remember(const QString &currentText);
    // The box now holds a text that is not kept: a generation or the user's typing.
    void Changed() { m_upToDate = false; }

    // The text before the current one (the box's own text is kept first), or nothing.
    std::optional<QString> Back(const QString &currentText);
    // The text after the current one, or nothing.
    std::optional<QString> Forward();

    bool BackEnabled() const { return m_index > 0 || (!m_upToDate && !m_items.isEmpty()); }
    bool ForwardEnabled() const { return m_upToDate && m_index + 1 < m_items.size(); }
    bool UpToDate() const { return m_upToDate; }
    const QStringList &Items() const { return m_items; }
    qsizetype Index() const { return m_index; }

private:
    QStringList m_items;
    qsizetype m_index = -1;
    bool m_upToDate = false;
};
