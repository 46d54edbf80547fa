#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

class CPlayers;
class QObject;

// The slots of the notepad windows. A new window takes the lowest free slot, and the
// slot's index is its number for its life.
class CNotePads
{
public:
    struct Slot
    {
        bool InUse = false;
        bool Changed = false;
        QObject *Window = nullptr;
        QString FileName;
    };

    // Takes the lowest free slot (or a new one at the end) for the window; its index.
    int Open(QObject *window);
    // Frees the slot of a closing window.
    void Close(int index);
    // The slot of an index; nullptr for one that is not in use.
    Slot *At(int index);
    int Count() const { return int(m_slots.size()); }

    // The file dialogs' filters; the save filter has no automatic entry.
    static QString OpenFilter();
    static QString SaveFilter();
    // The bytes of a file by the open dialog's filter index: 1 automatic (FF FE or FE FF
    // at the start is Unicode without those bytes, anything else the system code page),
    // 2 Unicode (a leading mark dropped), 3 the system code page. `unicode` tells how it
    // was taken.
    static QString Decode(const QByteArray &bytes, int filterIndex, bool *unicode = nullptr);
    // The name proposed for a first save: the program folder, "翻译", the number, ".txt".
    static QString ProposedName(int index);
    // The question before a changed window closes, and its title.
    static QString CloseQuestion(const QString &name);
    static QString CloseTitle();

    // Where the caret goes for "go to line": the lengths of the lines before it plus two
    // for each line end. Lines count from 1; numbers out of range stop at the first or
    // last line.
    static int LinePosition(const QString &crlfText, int line);
    // The time of the first open player as a time stamp; nothing without a player.
    static std::optional<QString> TimeStamp(const CPlayers *players);

private:
    std::vector<Slot> m_slots;
};

// The notepad slots of the run.
CNotePads &NotePads();
