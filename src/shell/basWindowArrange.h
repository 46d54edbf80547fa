#pragma once

#include <QList>
#include <QRect>
#include <Qt>

// Where the frame's Window menu puts its child windows, worked out without windows.

// Places for `count` windows tiled over `area`. Qt::Horizontal lays them out in rows (each
// window a band across the area, one above the other), Qt::Vertical in columns (side by
// side, each as high as the area). Past three windows the bands are split into
// floor(sqrt(count)) lanes, the last lanes taking one window more when the count does not
// divide; the places fill the area without gaps, lane by lane.
QList<QRect> TileWindowRects(const QRect &area, int count, Qt::Orientation bands);

// Places for `count` minimised windows of size `icon`: left to right along the bottom of
// `area`, a new row above the last when a row is full.
QList<QRect> MinimisedWindowRects(const QRect &area, const QSize &icon, int count);
