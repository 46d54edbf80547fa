#pragma once

#include <QString>
#include <QStringList>

// The walk over the player or translation windows that fills a timing window's choice
// lists. Windows are known by their Tag (the decimal text of their SerialNo).
// With `next` clear: tag "1" gives the first window, any other tag the window with
// that tag. With `next` set: the window after the one with that tag. -1 for none.
inline qsizetype FindWindowByTag(const QStringList &tags, const QString &tag, bool next)
{
    if (!next && tag == QStringLiteral("1"))
        return tags.isEmpty() ? -1 : 0;
    const qsizetype at = tags.indexOf(tag);
    if (at < 0)
        return -1;
    if (!next)
        return at;
    return at + 1 < tags.size() ? at + 1 : -1;
}
