#include "core/CMouse.h"

#include "core/basGuiHooks.h"

CMouse::~CMouse()
{
    const auto restore = basGuiHooks::Hooks().RestoreCursor;
    if (!m_remembered || !restore)
        return;
    while (m_pushed-- > 0)
        restore();
}

void CMouse::SetPointer(Qt::CursorShape NewPointer)
{
    m_remembered = true;
    const auto set = basGuiHooks::Hooks().SetCursor;
    if (!set)
        return;
    set(NewPointer, m_pushed > 0);
    if (m_pushed == 0)
        ++m_pushed;
}
