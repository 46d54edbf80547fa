#pragma once

#include "core/CSpread.h"

// Stops the drawing of a grid for a multi-cell operation and starts it again when the
// operation ends, however it ends. An operation inside another one leaves drawing off
// for the outer one to finish.
class CSpreadDrawingStop
{
public:
    explicit CSpreadDrawingStop(CSpread &grid)
        : m_grid(grid)
        , m_wasOn(grid.ReDraw())
    {
        m_grid.setReDraw(false);
    }
    ~CSpreadDrawingStop() { m_grid.setReDraw(m_wasOn); }
    CSpreadDrawingStop(const CSpreadDrawingStop &) = delete;
    CSpreadDrawingStop &operator=(const CSpreadDrawingStop &) = delete;

private:
    CSpread &m_grid;
    bool m_wasOn;
};
