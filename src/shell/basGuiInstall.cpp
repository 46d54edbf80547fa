// The graphical side of the core's hooks. Kept apart from the hook table so that a
// program that never installs them does not link the graphics library.
#include "core/CSpread.h"
#include "core/basGuiHooks.h"

#include <QCursor>
#include <QGuiApplication>

namespace basGuiHooks {

namespace {

bool hasScreen()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

void setCursor(Qt::CursorShape shape, bool replace)
{
    if (!hasScreen())
        return;
    if (replace)
        QGuiApplication::changeOverrideCursor(QCursor(shape));
    else
        QGuiApplication::setOverrideCursor(QCursor(shape));
}

void restoreCursor()
{
    if (hasScreen())
        QGuiApplication::restoreOverrideCursor();
}

QVariant colour(quint32 code)
{
    return CSpread::ToQColor(code);
}

} // namespace

void InstallGuiHooks()
{
    Table &table = Hooks();
    table.SetCursor = setCursor;
    table.RestoreCursor = restoreCursor;
    table.Colour = colour;
}

} // namespace basGuiHooks
