#pragma once

#include <QVariant>
#include <Qt>

// The few things the core does only when it runs with a screen: the busy pointer and the
// colours a grid hands to its view. A program with windows installs them once, right
// after creating its application object; a program without (the converter) leaves them
// empty, so it never loads the graphics libraries, and the core simply does without.
namespace basGuiHooks {

struct Table
{
    // Shows a pointer shape over the whole application; `replace` changes the one the
    // previous call showed instead of pushing a new one.
    void (*SetCursor)(Qt::CursorShape shape, bool replace) = nullptr;
    // Takes back one pointer that SetCursor pushed.
    void (*RestoreCursor)() = nullptr;
    // A cell colour (0x00BBGGRR, or a system colour code) as a QColor in a QVariant.
    QVariant (*Colour)(quint32 colour) = nullptr;
};

Table &Hooks();

// Fills the table with the graphical implementations.
void InstallGuiHooks();

} // namespace basGuiHooks
