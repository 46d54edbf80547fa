#pragma once

#include "core/CDocumentList.h"
#include "player/CPlayer.h"

#include <functional>
#include <memory>

class IMediaControl;
class IPlayerWindow;

// Every open player document, keyed by the decimal text of its serial number. The
// speed and the two jump sizes here are those of every player, present and future; the
// jump sizes live in the settings store (section "TimeOffset").
class CPlayers : public CDocumentList<CPlayer>
{
public:
    // Speed 1.0 and the jump sizes from the store.
    void Init() override;
    // Reads "PlayBack" and "PlayForword" of "TimeOffset" (default 3 seconds); a value
    // that is not a number leaves the size as it was.
    void ReadSettings();

    double Speed() const { return m_speed; }
    void setSpeed(double factor);
    // Writing gives the size to every player, saves it and tells StepsChanged.
    double BackStep() const { return m_backStep; }
    void setBackStep(double seconds);
    double ForwordStep() const { return m_forwordStep; }
    void setForwordStep(double seconds);

    // Reset on every player.
    void Reset();
    // Opens the file in the player whose key is in the form's Tag, and tells NameChanged.
    void OpenFile(IPlayerWindow *form, const QString &fileName);
    // Makes a player for the form and its control under the next serial number, gives
    // the form that number as its Tag and "播放器(n)" as its caption, and tells Created.
    CPlayer *Create(IPlayerWindow *form, IMediaControl *control);
    // Takes in an existing player as Create would; a fault shows its description.
    CPlayer *Add(std::unique_ptr<CPlayer> player);
    // Empties the list; serial numbers go on from where they were.
    void Clear() override;

    // Created (the player) and Deleted (its key) come from the list itself.
    std::function<void(CPlayer *)> NameChanged;
    // A jump size changed: tool tips that show it are to be rebuilt.
    std::function<void()> StepsChanged;

private:
    CPlayer *link(std::unique_ptr<CPlayer> player);

    double m_speed = 1.0;
    double m_backStep = 3.0;
    double m_forwordStep = 3.0;
};
