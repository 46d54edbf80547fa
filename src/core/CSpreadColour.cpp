// Cell colours as the view paints them; apart from the model so that a program without a
// screen does not link the graphics library.
#include "core/CSpread.h"

#include "core/basColour.h"

#include <QGuiApplication>
#include <QPalette>

namespace {

QPalette::ColorRole SystemColorRole(quint32 index)
{
    switch (index) {
    case 0x05:
        return QPalette::Base; // window background
    case 0x06:
        return QPalette::Dark; // window frame
    case 0x08:
        return QPalette::Text; // window text
    case 0x0C:
        return QPalette::Window; // application workspace
    case 0x0D:
        return QPalette::Highlight;
    case 0x0E:
        return QPalette::HighlightedText;
    case 0x0F:
        return QPalette::Button; // button face
    case 0x10:
        return QPalette::Dark; // button shadow
    case 0x11:
        return QPalette::PlaceholderText; // grey text
    case 0x12:
        return QPalette::ButtonText;
    case 0x14:
        return QPalette::Light; // button highlight
    case 0x17:
        return QPalette::ToolTipText;
    case 0x18:
        return QPalette::ToolTipBase;
    case 0x01:
        return QPalette::Window; // desktop
    case 0x04:
        return QPalette::Window; // menu
    case 0x07:
        return QPalette::WindowText; // menu text
    default:
        return QPalette::Text;
    }
}

} // namespace

QColor CSpread::ToQColor(quint32 color)
{
    if (color & SystemColorFlag) {
        const QPalette palette = qGuiApp ? QGuiApplication::palette() : QPalette();
        return palette.color(SystemColorRole(color & 0xFFu));
    }
    return BgrToColor(color);
}
