#pragma once

#include <QImage>
#include <QString>

// A raster on which lines of text are printed, as the page drawing and the live preview
// use it. Positions and sizes are in the box's scale units, twips (15 to a pixel);
// font sizes are in points; colours are 24-bit numbers with blue in the high byte.
class IPictureBox
{
public:
    virtual ~IPictureBox() = default;

    // Where the next Print puts the top left corner of its text.
    virtual double CurrentX() const = 0;
    virtual void setCurrentX(double x) = 0;
    virtual double CurrentY() const = 0;
    virtual void setCurrentY(double y) = 0;

    // Prints one text in the fore colour with a transparent background, then goes to
    // the start of the next line: CurrentX to 0, CurrentY down by the text's height.
    virtual void Print(const QString &text) = 0;
    // The widest line and the height of all lines of a text in the current font.
    virtual double TextWidth(const QString &text) const = 0;
    virtual double TextHeight(const QString &text) const = 0;

    virtual QString FontName() const = 0;
    virtual void setFontName(const QString &name) = 0;
    virtual double FontSize() const = 0;
    virtual void setFontSize(double points) = 0;
    virtual bool FontBold() const = 0;
    virtual void setFontBold(bool on) = 0;
    virtual bool FontItalic() const = 0;
    virtual void setFontItalic(bool on) = 0;
    virtual bool FontUnderline() const = 0;
    virtual void setFontUnderline(bool on) = 0;
    virtual bool FontStrikethru() const = 0;
    virtual void setFontStrikethru(bool on) = 0;

    virtual qint64 ForeColor() const = 0;
    virtual void setForeColor(qint64 colour) = 0;
    virtual qint64 BackColor() const = 0;
    // A new background erases what was drawn, as Cls does.
    virtual void setBackColor(qint64 colour) = 0;

    // Fills the box with the background and puts the current position at 0, 0.
    virtual void Cls() = 0;
    // The inner size in scale units.
    virtual double ScaleWidth() const = 0;
    virtual double ScaleHeight() const = 0;
    // The raster size in pixels; a new size erases the picture.
    virtual void SetPixelSize(int width, int height) = 0;
    virtual int PixelWidth() const = 0;
    virtual int PixelHeight() const = 0;

    // The drawn raster, PixelWidth by PixelHeight.
    virtual QImage Picture() const = 0;
};
