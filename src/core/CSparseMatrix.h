#pragma once

#include <QHash>
#include <QString>

// A sparse table of texts: a cell whose numeric value is 0 is never stored, and a
// missing cell reads as "".
class CSparseMatrix
{
public:
    QString Value(qint32 row, qint32 col) const;
    void vlaue(qint32 row, qint32 col, const QString &text);
    qsizetype Count() const { return m_cells.size(); }

private:
    static QString key(qint32 row, qint32 col) { return QString::number(row) + u',' + QString::number(col); }
    QHash<QString, QString> m_cells;
};
