#include "timing/CHistoriesSim.h"

#include "core/IPrompt.h"

CHistoriesSim::CHistoriesSim()
{
    for (int i = 1; i <= Size; ++i) {
        at(i).Next = i == Size ? 1 : i + 1;
        at(i).Previous = i == 1 ? Size : i - 1;
    }
}

CHistoriesSim::~CHistoriesSim()
{
    if (m_editer)
        m_editer->setEvents(nullptr);
}

void CHistoriesSim::setEditer(ITextControl *editer)
{
    if (m_editer)
        m_editer->setEvents(nullptr);
    m_editer = editer;
    if (m_editer)
        m_editer->setEvents(this);
}

void CHistoriesSim::Change()
{
    if (m_guard || !m_editer)
        return;
    try {
        const int index = at(m_present).Next;
        Entry &e = at(index);
        e.Text = m_editer->Text();
        e.SelStart = m_editer->SelStart();
        e.SelLength = m_editer->SelLength();
        if (index == m_oldest)
            m_oldest = at(m_oldest).Next;
        m_present = m_newest = index;
    } catch (const std::exception &e) {
        MsgBox(QStringLiteral("ERROR SET HISTORY DATA ") + QString::fromLocal8Bit(e.what()));
    }
}

void CHistoriesSim::Restore(const Entry &e)
{
    const bool old = m_guard;
    m_guard = true;
    m_editer->setText(e.Text);
    m_editer->setSelStart(e.SelStart);
    m_editer->setSelLength(e.SelLength);
    m_guard = old;
}

void CHistoriesSim::Back()
{
    if (!m_editer)
        return;
    const int previous = at(m_present).Previous;
    if (previous == m_oldest)
        return;
    m_present = previous;
    Restore(at(m_present));
}

void CHistoriesSim::Forword()
{
    if (!m_editer || m_present == m_newest)
        return;
    m_present = at(m_present).Next;
    Restore(at(m_present));
}

bool CHistoriesSim::KeyDown(int keyCode, int shift)
{
    if ((shift & 2) == 0)
        return false;
    if (keyCode == 90) {
        Back();
        return true;
    }
    if (keyCode == 89) {
        Forword();
        return true;
    }
    return false;
}
