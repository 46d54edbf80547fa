// Where the Window menu puts the frame's children.
#include "shell/basWindowArrange.h"

#include <QSize>

#include <gtest/gtest.h>

TEST(WindowArrange, TilesFillTheAreaInRowsOrColumnsAndIconsLineTheBottom)
{
    const QRect area(0, 0, 900, 600);
    // Two or three windows: bands across the whole area.
    EXPECT_EQ(TileWindowRects(area, 2, Qt::Horizontal),
        QList<QRect>({ QRect(0, 0, 900, 300), QRect(0, 300, 900, 300) }));
    EXPECT_EQ(TileWindowRects(area, 3, Qt::Vertical),
        QList<QRect>({ QRect(0, 0, 300, 600), QRect(300, 0, 300, 600), QRect(600, 0, 300, 600) }));
    // Five windows: two lanes, the second taking the odd one; nothing left uncovered.
    EXPECT_EQ(TileWindowRects(area, 5, Qt::Horizontal),
        QList<QRect>({ QRect(0, 0, 450, 300), QRect(0, 300, 450, 300), QRect(450, 0, 450, 200),
            QRect(450, 200, 450, 200), QRect(450, 400, 450, 200) }));
    EXPECT_EQ(TileWindowRects(area, 5, Qt::Vertical),
        QList<QRect>({ QRect(0, 0, 450, 300), QRect(450, 0, 450, 300), QRect(0, 300, 300, 300),
            QRect(300, 300, 300, 300), QRect(600, 300, 300, 300) }));
    // An area that does not divide evenly still ends at its edge.
    const QList<QRect> thirds = TileWindowRects(QRect(10, 20, 100, 50), 3, Qt::Horizontal);
    ASSERT_EQ(thirds.size(), 3);
    EXPECT_EQ(thirds.first().top(), 20);
    EXPECT_EQ(thirds.last().bottom(), 69);
    EXPECT_TRUE(TileWindowRects(area, 0, Qt::Horizontal).isEmpty());

    // Minimised windows: left to right on the bottom edge, then a row above.
    EXPECT_EQ(MinimisedWindowRects(QRect(0, 0, 500, 400), QSize(160, 30), 4),
        QList<QRect>({ QRect(0, 370, 160, 30), QRect(160, 370, 160, 30), QRect(320, 370, 160, 30),
            QRect(0, 340, 160, 30) }));
    // Narrower than one icon: one a row.
    EXPECT_EQ(MinimisedWindowRects(QRect(0, 0, 100, 100), QSize(160, 30), 2),
        QList<QRect>({ QRect(0, 70, 160, 30), QRect(0, 40, 160, 30) }));
}
