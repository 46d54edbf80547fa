#pragma once

#include <QString>
#include <functional>

class CSpread;

// Find and replace in the dialogue column of a timing grid, the logic of its find
// window. The search is exact and case-sensitive, goes down from the grid's current row
// and wraps once to the top; a search repeated in the same row goes on behind the start
// of the last hit, so overlapping hits are found. Replacing tells no preview and leaves
// the document's Changed alone.
class CGridFind
{
public:
    static constexpr int FindColumn = 15;

    // The find and replace texts kept from one window to the next.
    static QString KeptFindText();
    static void setKeptFindText(const QString &text);
    static QString KeptReplaceText();
    static void setKeptReplaceText(const QString &text);

    // 1-based position of the last hit in its row, 0 for none, and the row of it.
    qint32 LastPos = 0;
    qint32 LastRow = 0;

    // Raised when the window closes, after the texts are kept.
    std::function<void()> BeforeClose;

    // Takes the grid (not owned); the find text is the text selected in the grid's
    // editor when there is one, otherwise the kept find text; the replace text is the
    // kept one.
    void Init(CSpread *grid);
    CSpread *Grid() const { return m_grid; }

    QString txtFind() const { return m_find; }
    // The find text changed: the commands are enabled only for a text that is not
    // empty, and the kept find text follows.
    void setTxtFind(const QString &text);
    QString txtReplace() const { return m_replace; }
    void setTxtReplace(const QString &text) { m_replace = text; }
    // cmdFind, cmdReplace and cmdReplaceAll are enabled.
    bool CommandsEnabled() const { return m_enabled; }

    // Finds the next hit and selects it in the cell's editor; with no hit anywhere says
    // "没有发现相同文字". True for a hit.
    bool cmdFind();
    // Replaces at the last hit: the hit's first character stays in front of the
    // replacement, which takes the place of the rest of the selection. Nothing without
    // a hit; the position stays where it was.
    void cmdReplace();
    // Replaces every occurrence in every row of the column.
    void cmdReplaceAll();
    // Closes the window.
    void cmdCancel() { Close(); }
    // The window closes: both texts are kept and BeforeClose is raised.
    void Close();

private:
    bool SearchRow(int row);

    CSpread *m_grid = nullptr;
    QString m_find;
    QString m_replace;
    bool m_enabled = false;
};
