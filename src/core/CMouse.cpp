#include "core/CMouse.h"

#include <QCursor>
#include <QGuiApplication>

CMouse::~CMouse()
{
    if (!m_remembered || !qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return;
    while (m_pushed-- > 0)
        QGuiApplication::restoreOverrideCursor();
}

void CMouse::SetPointer(Qt::CursorShape NewPointer)
{
    m_remembered = true;
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return;
    if (m_pushed == 0) {
        QGuiApplication::setOverrideCursor(QCursor(NewPointer));
        ++m_pushed;
    } else {
        QGuiApplication::changeOverrideCursor(QCursor(NewPointer));
    }
}
