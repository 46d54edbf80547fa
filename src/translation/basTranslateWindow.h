#pragma once

#include <QColor>
#include <QString>
#include <QtGlobal>
#include <optional>

class CTranslate;
class QTextCharFormat;
class QTextDocument;

// The rules of the translation window that need no window: the quick keys and the clicks
// of its two tables, the format state of a selection and the status bar's text.
namespace basTranslateWindow {

// A colour of the view as the system numbers it (blue in the high byte); black when the
// text has none of its own.
qint64 ColourOfFormat(const QTextCharFormat &format);
// "&H" and six hexadecimal digits, as the colour loop writes its rows.
QString ColourText(qint64 colour);

// What a key in the draft does by the quick tables (shift bits 1 Shift, 2 Ctrl, 4 Alt).
struct QuickKey
{
    enum Kind {
        None, // the key goes on as usual
        InsertText, // the selection is replaced by Text; the key is swallowed
        SetColour, // the selection takes Colour; the key is swallowed
        Swallow, // Alt and a key without a row: nothing is typed
    };
    Kind Action = None;
    QString Text;
    qint64 Colour = 0;
};
// Alt with 0-9 or A-Z: the change table's row of that label gives its column 1, and the
// key is swallowed with or without one. Ctrl with 0-9: the colour loop's row of that
// label gives its colour; without one the key goes on.
QuickKey QuickKeyOf(const CTranslate &doc, int keyCode, int shift);

// The tables' clicks. Column 1 of a change-table row gives its text; column 1 of a
// colour-loop row its colour.
std::optional<QString> ChangeTableText(const CTranslate &doc, int col, int row);
std::optional<qint64> ColorTableColour(const CTranslate &doc, int col, int row);
// A click on the colour loop's label column: the colour dialog on the row's colour, which
// the row takes unless the dialog is cancelled. True when it took one.
bool AskRowColour(CTranslate &doc, int row);
// Clicking or leaving the last row of a table adds a row with the next label, so that
// there is always one empty row at the end. True when one was added.
bool ChangeTableRowReached(CTranslate &doc, int row);
bool ColorTableRowReached(CTranslate &doc, int row);

// The pressed state of a format button over a selection.
enum class FormatState { Off, On, Mixed };
// A click sets the format on all of the selection unless all of it has it already.
inline bool PressedAfterClick(FormatState state)
{
    return state != FormatState::On;
}

// The formats of the characters from `start` to `end` (of the character before the caret
// when they are equal); names and sizes empty, and no colour, when they are mixed.
struct SelectionFormat
{
    FormatState Bold = FormatState::Off;
    FormatState Italic = FormatState::Off;
    FormatState Underline = FormatState::Off;
    FormatState StrikeOut = FormatState::Off;
    QString FontName;
    QString FontSize;
    std::optional<qint64> Colour;
};
SelectionFormat ReadSelectionFormat(const QTextDocument &document, int start, int end);

// The status bar: "行:" and the caret's line (from 1); "颜色: " and the selection's
// colour (empty when mixed).
QString LineStatus(int line);
QString ColourStatus(const SelectionFormat &format);

} // namespace basTranslateWindow
