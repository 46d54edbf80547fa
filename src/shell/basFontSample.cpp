#include "shell/basFontSample.h"

#include "script/CFont.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QTransform>

namespace basFontSample {

QString SampleText()
{
    return QStringLiteral("字幕样式 サンプル AaBb");
}

QColor StyleColour(qint64 colour, qint32 alpha)
{
    return QColor(int(colour & 0xFF), int((colour >> 8) & 0xFF), int((colour >> 16) & 0xFF),
        255 - std::clamp(alpha, 0, 255));
}

namespace {

void PaintChecks(QPainter &p, const QSize &size)
{
    const int cell = 8;
    p.fillRect(QRect(QPoint(0, 0), size), QColor(0xB0, 0xB0, 0xB0));
    for (int y = 0; y < size.height(); y += cell)
        for (int x = (y / cell) % 2 * cell; x < size.width(); x += 2 * cell)
            p.fillRect(x, y, cell, cell, QColor(0x80, 0x80, 0x80));
}

// Where the text goes: the keypad's column and row of an ASS alignment (1 to 9).
QPointF Anchor(int alignment, const QRectF &area, const QRectF &text)
{
    if (alignment < 1 || alignment > 9)
        alignment = 2;
    const int column = (alignment - 1) % 3; // 0 left, 1 centre, 2 right
    const int row = (alignment - 1) / 3; // 0 bottom, 1 middle, 2 top
    const double x = column == 0 ? area.left() - text.left()
        : column == 1            ? area.center().x() - text.center().x()
                                 : area.right() - text.right();
    const double y = row == 2 ? area.top() - text.top()
        : row == 1            ? area.center().y() - text.center().y()
                              : area.bottom() - text.bottom();
    return { x, y };
}

} // namespace

QImage Draw(const CFont &font, const QSize &size, const QString &text)
{
    QImage image(size.expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    PaintChecks(p, image.size());

    QFont face(font.FontName());
    face.setPixelSize(std::max(1, int(font.FontSize())));
    face.setBold(font.Bold() != 0);
    face.setItalic(font.Italic() != 0);
    face.setUnderline(font.UnderLine() != 0);
    face.setStrikeOut(font.StrikeOut() != 0);
    face.setLetterSpacing(QFont::AbsoluteSpacing, font.Spacing());
    QPainterPath path;
    path.addText(0, 0, face, text);

    // Scale and angle about the text's own centre; a positive angle turns it
    // anticlockwise, as the scripts' renderers do.
    const QPointF centre = path.boundingRect().center();
    QTransform shape;
    shape.translate(centre.x(), centre.y());
    shape.rotate(-font.AngleValue());
    shape.scale(font.ScaleX() / 100.0, font.ScaleY() / 100.0);
    shape.translate(-centre.x(), -centre.y());
    path = shape.map(path);

    const double outline = std::max<qint16>(font.Outline(), 0);
    const double shadow = std::max<qint16>(font.Shadow(), 0);
    const double margin = 6 + outline + shadow;
    const QRectF area
        = QRectF(QPointF(0, 0), QSizeF(image.size())).adjusted(margin, margin, -margin, -margin);
    const QPointF at = Anchor(font.Alignment(), area, path.boundingRect());
    path.translate(at);

    const bool ssa = font.ScriptType() == ScriptType::SSA;
    const QColor third = StyleColour(
        ssa ? font.TertiaryColourValue() : font.OutlineColorValue(), ssa ? 0 : font.OutlineAlpha);
    const QColor back = StyleColour(font.BackColourValue(), ssa ? 0 : font.BackAlpha);
    const QColor primary = StyleColour(font.PrimaryColourValue(), ssa ? 0 : font.PrimaryAlpha);

    if (font.BorderStyle() == 3) {
        const QRectF box = path.boundingRect().adjusted(-outline, -outline, outline, outline);
        if (shadow > 0)
            p.fillRect(box.translated(shadow, shadow), back);
        p.fillRect(box, third);
    } else {
        if (shadow > 0) {
            const QPainterPath dropped = path.translated(shadow, shadow);
            if (outline > 0)
                p.strokePath(dropped, QPen(back, 2 * outline, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            p.fillPath(dropped, back);
        }
        if (outline > 0)
            p.strokePath(path, QPen(third, 2 * outline, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    p.fillPath(path, primary);
    return image;
}

} // namespace basFontSample
