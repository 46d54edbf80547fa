#pragma once

#include "core/CSpread.h"

// Notes the current cell and block corners of a grid and puts them back when it goes
// out of scope, for operations that must leave the caller's current cell as it was.
class CSpreadCellKeeper
{
public:
    explicit CSpreadCellKeeper(CSpread &grid)
        : m_grid(grid)
        , m_row(grid.Row())
        , m_col(grid.Col())
        , m_row2(grid.Row2())
        , m_col2(grid.Col2())
    { }
    ~CSpreadCellKeeper()
    {
        m_grid.setRow(m_row);
        m_grid.setCol(m_col);
        m_grid.setRow2(m_row2);
        m_grid.setCol2(m_col2);
    }
    CSpreadCellKeeper(const CSpreadCellKeeper &) = delete;
    CSpreadCellKeeper &operator=(const CSpreadCellKeeper &) = delete;

private:
    CSpread &m_grid;
    int m_row;
    int m_col;
    int m_row2;
    int m_col2;
};
