#include "shell/basWindowArrange.h"

#include <QSize>
#include <QtMath>

QList<QRect> TileWindowRects(const QRect &area, int count, Qt::Orientation bands)
{
    QList<QRect> places;
    if (count <= 0 || area.isEmpty())
        return places;
    places.reserve(count);
    const int lanes = qMax(1, qFloor(qSqrt(double(count))));
    const bool rows = bands == Qt::Horizontal;
    // Rows stand in lanes side by side across the width; columns in lanes one above the
    // other down the height.
    const int across = rows ? area.width() : area.height();
    const int along = rows ? area.height() : area.width();
    const int larger = count % lanes;
    for (int lane = 0; lane < lanes; ++lane) {
        const int inLane = count / lanes + (lane >= lanes - larger ? 1 : 0);
        const int a0 = across * lane / lanes;
        const int a1 = across * (lane + 1) / lanes;
        for (int k = 0; k < inLane; ++k) {
            const int b0 = along * k / inLane;
            const int b1 = along * (k + 1) / inLane;
            places << (rows ? QRect(area.x() + a0, area.y() + b0, a1 - a0, b1 - b0)
                            : QRect(area.x() + b0, area.y() + a0, b1 - b0, a1 - a0));
        }
    }
    return places;
}

QList<QRect> MinimisedWindowRects(const QRect &area, const QSize &icon, int count)
{
    QList<QRect> places;
    if (count <= 0 || icon.isEmpty())
        return places;
    places.reserve(count);
    const int perRow = qMax(1, area.width() / icon.width());
    for (int i = 0; i < count; ++i) {
        const int row = i / perRow;
        const int col = i % perRow;
        places << QRect(
            QPoint(area.x() + col * icon.width(), area.y() + area.height() - (row + 1) * icon.height()),
            icon);
    }
    return places;
}
