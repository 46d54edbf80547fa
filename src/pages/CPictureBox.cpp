#include "pages/CPictureBox.h"

#include "core/basColour.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

// 96 dots an inch, the screen on which the twip sizes of the pages were laid out.
constexpr int DotsPerMetre = 3780;

QStringList splitLines(const QString &text)
{
    QString unified = text;
    unified.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return unified.split(u'\n');
}

} // namespace

CPictureBox::CPictureBox(int widthPixels, int heightPixels)
{
    setFontName(QStringLiteral("Arial"));
    setFontSize(12);
    setAntialiased(false);
    SetPixelSize(widthPixels, heightPixels);
}

void CPictureBox::setFontName(const QString &name)
{
    m_fontName = name;
    m_font.setFamily(name);
}

void CPictureBox::setFontSize(double points)
{
    if (points > 0 && std::isfinite(points))
        m_font.setPointSizeF(points);
}

void CPictureBox::setAntialiased(bool on)
{
    m_antialiased = on;
    m_font.setStyleStrategy(on ? QFont::PreferAntialias : QFont::NoAntialias);
}

void CPictureBox::setBackColor(qint64 colour)
{
    m_backColor = colour;
    fill();
}

void CPictureBox::Cls()
{
    fill();
    m_currentX = 0;
    m_currentY = 0;
}

void CPictureBox::SetPixelSize(int width, int height)
{
    m_image = QImage(std::max(width, 1), std::max(height, 1), QImage::Format_RGB32);
    m_image.setDotsPerMeterX(DotsPerMetre);
    m_image.setDotsPerMeterY(DotsPerMetre);
    fill();
}

void CPictureBox::fill()
{
    m_image.fill(BgrToColor(m_backColor));
}

double CPictureBox::TextWidth(const QString &text) const
{
    const QFontMetricsF metrics(m_font, &m_image);
    double widest = 0;
    for (const QString &line : splitLines(text))
        widest = std::max(widest, metrics.horizontalAdvance(line));
    return widest * TwipsPerPixel;
}

double CPictureBox::TextHeight(const QString &text) const
{
    const QFontMetricsF metrics(m_font, &m_image);
    return splitLines(text).size() * metrics.height() * TwipsPerPixel;
}

void CPictureBox::Print(const QString &text)
{
    const QFontMetricsF metrics(m_font, &m_image);
    {
        QPainter painter(&m_image);
        painter.setRenderHint(QPainter::TextAntialiasing, m_antialiased);
        painter.setFont(m_font);
        painter.setPen(BgrToColor(m_foreColor));
        double y = m_currentY / TwipsPerPixel;
        for (const QString &line : splitLines(text)) {
            painter.drawText(QPointF(m_currentX / TwipsPerPixel, y + metrics.ascent()), line);
            y += metrics.height();
        }
    }
    m_currentX = 0;
    m_currentY += TextHeight(text);
}
