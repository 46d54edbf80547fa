#include "core/CSparseMatrix.h"

#include "core/basConvert.h"

QString CSparseMatrix::Value(qint32 row, qint32 col) const
{
    return m_cells.value(key(row, col));
}

void CSparseMatrix::vlaue(qint32 row, qint32 col, const QString &text)
{
    const QString k = key(row, col);
    m_cells.remove(k);
    if (basConvert::Val(text) != 0)
        m_cells.insert(k, text);
}
