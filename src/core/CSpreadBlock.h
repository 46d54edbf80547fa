#pragma once

#include <utility>

// A selected block of a grid: corners with -1 standing for "all". A block of whole rows
// has its columns -1, a block of whole columns has its rows -1.
struct CSpreadBlock
{
    int Row = -1;
    int Col = -1;
    int Row2 = -1;
    int Col2 = -1;

    bool operator==(const CSpreadBlock &other) const = default;

    bool IsWholeRows() const { return Col == -1 && Col2 == -1; }
    bool IsWholeColumns() const { return Row == -1 && Row2 == -1; }

    // Corners in order, and -1 on both sides of an axis when either side is -1.
    CSpreadBlock Normalized() const;
};

inline CSpreadBlock CSpreadBlock::Normalized() const
{
    CSpreadBlock b = *this;
    if (b.Row < 0 || b.Row2 < 0)
        b.Row = b.Row2 = -1;
    else if (b.Row > b.Row2)
        std::swap(b.Row, b.Row2);
    if (b.Col < 0 || b.Col2 < 0)
        b.Col = b.Col2 = -1;
    else if (b.Col > b.Col2)
        std::swap(b.Col, b.Col2);
    return b;
}
