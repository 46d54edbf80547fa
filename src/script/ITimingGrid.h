#pragma once

#include <QString>
#include <QStringList>

class CFonts;
class CSSAContent;

// What a timing document needs of the grid that shows it. While a grid is attached it,
// not the event list, holds the lines: a read fills it from the list, the document asks
// it to rebuild the list before assembling a file, and hands plain text straight to its
// text column. Whoever reads the grid's rows (the live preview) finds a line's fields in
// these columns.
class ITimingGrid
{
public:
    enum Column {
        ColLineType = 1,
        ColLayer = 2,
        ColStartTime = 3,
        ColEndTime = 4,
        ColStyle = 5,
        ColOwner = 6,
        ColMarginL = 7,
        ColMarginR = 8,
        ColMarginV = 9,
        ColEffect = 10,
        ColEffectY1 = 11,
        ColEffectY2 = 12,
        ColEffectDelay = 13,
        ColEffectFade = 14,
        ColDialog = 15,
        ColSerialNo = 16, // the row's serial number, the key of its preview line
    };
    static constexpr int ColumnCount = 16;

    virtual ~ITimingGrid() = default;

    // Fills the rows from the lines just read (the styles from `fonts`, else from the
    // list's document).
    virtual void LoadGridFromContent(CSSAContent &content, const CFonts *fonts) = 0;

    // Rebuilds `content` from the cells (the store before a save or an export).
    virtual void StoreGridToContent(CSSAContent &content) = 0;
    // Clears the text column and writes the lines into it from row 1 on, growing the
    // grid when the last row is reached; nothing else is touched.
    virtual void FillTextColumn(const QStringList &lines) = 0;
    // The text column as lines joined by "\r\n".
    virtual QString TextColumn() const = 0;
};
