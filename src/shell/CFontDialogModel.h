#pragma once

#include "script/CFonts.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <array>
#include <memory>

class CTiming;
class CTimingGrid;

// The four colours of a style as the window shows them. The third is the outline colour
// of an ASS script and the third colour of an SSA one, each being what its form writes.
enum class FontColour { Primary, Secondary, Third, Back };

// The fields of the style window as text, as the controls hold them.
struct FontFields
{
    QString FontName; // txtShowFontName: the name written out
    QString FontSize;
    QString Comment;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool StrikeOut = false;
    qint16 BorderStyle = 1; // optBorder: 1 outline and shadow, 3 opaque box
    QString Outline;
    QString Shadow;
    int AlignmentButton = 0; // optAlignment, 1 to 9 as a keypad; 0 none
    std::array<QString, 3> Margin; // left, right, vertical
    std::array<QString, 2> Scale; // X, Y
    QString AlphaLevel;
    std::array<QString, 4> Alpha; // the alpha of each FontColour
    QString Spacing;
    QString Angle;
    QString Encode;
};

// The controls that show a help text when they take the focus.
enum class FontHelp { Alpha, AlphaLevel, ShowFontName, Angle, Encode, FontList };

// The style window without its window: a copy of the document's styles that the controls
// edit, the commands on it with their checks and messages, Apply into the document and
// its grid, and the style files. The document is untouched until Apply.
class CFontDialogModel
{
public:
    CFontDialogModel();
    ~CFontDialogModel();

    // The copy the window edits.
    std::unique_ptr<CFonts> Fonts;
    CTiming *TimingWindow = nullptr;
    CTimingGrid *Grid = nullptr;

    // Empties the copy and fills it with copies of the document's styles; an empty result
    // gets a style "Default". The style selected before stays selected when it is still
    // there, else the first. The alignment option is read from the settings.
    void Init(CTiming *timing, CTimingGrid *grid = nullptr);

    QStringList StyleNames() const;
    // The selection of the style list (-1 none).
    int Selected() const { return m_selected; }
    void Select(int index);
    CFont *SelectedFont() const;

    // The controls' values for the selected style.
    FontFields Fields() const;
    // UpdateFont: every field is written to the selected style. A field that does not
    // read as its number keeps the style's value; an encoding that is not numeric is
    // refused with "文字编码项请输入数字" (false).
    bool UpdateFont(const FontFields &fields);
    // Leaving an alpha field: the text it is to show (above 255 back to 255), written to
    // the selected style.
    QString LeaveAlpha(FontColour colour, const QString &text);

    qint64 Colour(FontColour colour) const;
    void SetColour(FontColour colour, qint64 value);

    // The commands, each with its checks and messages; true when something changed.
    bool Add();
    bool Delete();
    bool Rename();
    // The document takes the styles: lines follow renamed styles ("*Default" being
    // "Default"), the grid's style column and list are refreshed, the document is marked
    // changed; then Init runs again.
    void Apply();

    // The help text of a control that took the focus; for the style list, the missing-font
    // text when the selected style's font is not among `families`, else "".
    QString HelpText(FontHelp control, const QStringList &families) const;
    static bool FontInstalled(const QString &fontName, const QStringList &families);

    // The alignment keypad stores ASS numbers (an option, remembered in the settings).
    bool AlignmentKeypad() const { return m_keypad; }
    void setAlignmentKeypad(bool on);

    // Style files. Open: the name's extension must be ASS or SSA (else COMM_MSG_201); the
    // styles of the file in a list of their own, or nullptr after a message.
    static std::unique_ptr<CFonts> ReadStyleFile(const QString &fileName);
    // Save: the old file backed up, the style section of the copy written in the form the
    // extension chooses (SSA for ".ssa", else ASS); false after a message.
    bool SaveStyleFile(const QString &fileName);
    // The file dialogs of the two; "" when cancelled.
    static QString AskStyleFileToOpen();
    static QString AskStyleFileToSave();

private:
    void copyFromDocument();

    int m_selected = -1;
    bool m_keypad = false;
    // The names the styles of the copy have in the document, for the rename-following rule.
    QHash<const CFont *, QString> m_documentNames;
};
