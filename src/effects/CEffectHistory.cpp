#include "effects/CEffectHistory.h"

void CEffectHistory::Remember(const QString &currentText)
{
    if (m_upToDate)
        return;
    m_items.append(currentText);
    m_index = m_items.size() - 1;
    m_upToDate = true;
}

std::optional<QString> CEffectHistory::Back(const QString &currentText)
{
    Remember(currentText);
    if (m_index <= 0)
        return std::nullopt;
    --m_index;
    return m_items[m_index];
}

std::optional<QString> CEffectHistory::Forward()
{
    if (!ForwardEnabled())
        return std::nullopt;
    ++m_index;
    return m_items[m_index];
}
