#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

// The small two-column grid of the effect pages (coordinates or time points). Rows and
// columns count from 1 as the grid does; a cell outside the rows reads empty and takes
// no text.
struct CEffectSpread
{
    QStringList ColumnHeaders;
    QString FontName;
    QList<std::array<QString, 2>> Cells;

    int MaxRows() const { return int(Cells.size()); }
    void setMaxRows(int rows) { Cells.resize(qMax(rows, 0)); }

    QString Text(int row, int col) const
    {
        if (row < 1 || row > Cells.size() || col < 1 || col > 2)
            return {};
        return Cells[row - 1][col - 1];
    }
    void setText(int row, int col, const QString &text)
    {
        if (row < 1 || row > Cells.size() || col < 1 || col > 2)
            return;
        Cells[row - 1][col - 1] = text;
    }
};
