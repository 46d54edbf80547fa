#pragma once

#include <QString>
#include <QStringList>

class ITextControl;

// What the find dialog keeps between its uses for the whole run: the strings searched
// for (newest first), the replacement, the case switch and the direction.
struct CFindState
{
    QStringList FindList;
    QString ReplaceText;
    bool MatchCase = false;
    // 0 up, 1 down.
    int Direction = 1;
    // Puts a searched string first in the list.
    void Remember(const QString &text);
};

// The run's one find state, made by the frame's load.
CFindState &FindState();

// Find and replace in a text control (the translation draft or the notepad's text).
// Positions count a line end as two characters, as the control does.
class CTextFind
{
public:
    ITextControl *FindTarget = nullptr;
    QString FindText;
    QString ReplaceText;
    bool MatchCase = false;
    int Direction = 1;

    // The dialog opened or the search string changed: the next search is a first one.
    void Restart() { m_first = true; }

    // From the caret: down searches forward, up walks back from the caret one position
    // at a time. A caret left on the last hit moves one on first, so that a repeated
    // search does not find the same hit. A hit is selected; no hit (an empty search
    // string included) gives the message. True on a hit.
    bool FindNext();
    // Replaces the selection when it is the search string (under the case rule), then
    // finds the next.
    bool Replace();
    // One substitution over the whole text, which is then assigned anew with the caret
    // at the start. Without the case switch it runs in two rounds: the text as typed
    // becomes its upper-case form, and every upper-case form becomes the replacement.
    void ReplaceAll();

    // The message of a search that found nothing.
    static QString NotFoundText(const QString &text);
    // Upper case one character for one, so that positions stay.
    static QString Upper(const QString &text);

private:
    bool m_first = true;
    int m_lastHit = -1;
};
