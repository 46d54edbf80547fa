#pragma once

#include "core/IPictureBox.h"

#include <QFont>
#include <QImage>

// The picture box over an image in memory. Text is drawn without anti-aliasing by
// default, so that a page holds only its fore and back colours and maps cleanly onto
// the 16 colours of a bitmap page; the live preview may switch smoothing on.
class CPictureBox : public IPictureBox
{
public:
    static constexpr double TwipsPerPixel = 15.0;

    explicit CPictureBox(int widthPixels = 724, int heightPixels = 484);

    double CurrentX() const override { return m_currentX; }
    void setCurrentX(double x) override { m_currentX = x; }
    double CurrentY() const override { return m_currentY; }
    void setCurrentY(double y) override { m_currentY = y; }

    void Print(const QString &text) override;
    double TextWidth(const QString &text) const override;
    double TextHeight(const QString &text) const override;

    QString FontName() const override { return m_fontName; }
    void setFontName(const QString &name) override;
    double FontSize() const override { return m_font.pointSizeF(); }
    void setFontSize(double points) override;
    bool FontBold() const override { return m_font.bold(); }
    void setFontBold(bool on) override { m_font.setBold(on); }
    bool FontItalic() const override { return m_font.italic(); }
    void setFontItalic(bool on) override { m_font.setItalic(on); }
    bool FontUnderline() const override { return m_font.underline(); }
    void setFontUnderline(bool on) override { m_font.setUnderline(on); }
    bool FontStrikethru() const override { return m_font.strikeOut(); }
    void setFontStrikethru(bool on) override { m_font.setStrikeOut(on); }

    qint64 ForeColor() const override { return m_foreColor; }
    void setForeColor(qint64 colour) override { m_foreColor = colour; }
    qint64 BackColor() const override { return m_backColor; }
    void setBackColor(qint64 colour) override;

    void Cls() override;
    double ScaleWidth() const override { return m_image.width() * TwipsPerPixel; }
    double ScaleHeight() const override { return m_image.height() * TwipsPerPixel; }
    void SetPixelSize(int width, int height) override;
    int PixelWidth() const override { return m_image.width(); }
    int PixelHeight() const override { return m_image.height(); }

    QImage Picture() const override { return m_image; }
    const QImage &Image() const { return m_image; }

    bool Antialiased() const { return m_antialiased; }
    void setAntialiased(bool on);

private:
    void fill();

    QImage m_image;
    QFont m_font;
    QString m_fontName;
    double m_currentX = 0;
    double m_currentY = 0;
    qint64 m_foreColor = 0xFFFFFF;
    qint64 m_backColor = 0;
    bool m_antialiased = false;
};
