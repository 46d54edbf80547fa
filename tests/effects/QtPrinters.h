#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

// Readable QString values in the failure messages of the tests.
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &list, std::ostream *os)
{
    *os << '[';
    for (const QString &s : list)
        *os << '"' << s.toStdString() << "\" ";
    *os << ']';
}
