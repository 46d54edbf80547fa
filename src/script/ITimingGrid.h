#pragma once

#include <QString>
#include <QStringList>

class CSSAContent;

// What a timing document needs of the grid that shows it. While a grid is attached it,
// not the event list, holds the lines: the document asks it to rebuild the list before
// assembling a file, and hands plain text straight to its text column.
class ITimingGrid
{
public:
    virtual ~ITimingGrid() = default;

    // Rebuilds `content` from the cells (the store before a save or an export).
    virtual void StoreGridToContent(CSSAContent &content) = 0;
    // Clears the text column and writes the lines into it from row 1 on, growing the
    // grid when the last row is reached; nothing else is touched.
    virtual void FillTextColumn(const QStringList &lines) = 0;
    // The text column as lines joined by "\r\n".
    virtual QString TextColumn() const = 0;
};
