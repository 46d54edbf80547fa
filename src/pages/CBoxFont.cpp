#include "pages/CBoxFont.h"

#include "core/IPictureBox.h"

CBoxFont CBoxFont::Of(const IPictureBox &box)
{
    return { box.FontName(), box.FontSize(), box.FontBold(), box.FontItalic(), box.FontUnderline(),
        box.FontStrikethru(), box.ForeColor() };
}

void CBoxFont::ApplyTo(IPictureBox &box) const
{
    box.setFontName(Name);
    box.setFontSize(Size);
    box.setFontBold(Bold);
    box.setFontItalic(Italic);
    box.setFontUnderline(Underline);
    box.setFontStrikethru(StrikeOut);
    box.setForeColor(ForeColor);
}
