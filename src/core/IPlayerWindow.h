#pragma once

#include <QString>

class CPlayer;

// What the player documents need of the window that shows a player: its Tag, which holds
// the player's key and is its identity for every other window, its caption, and the way
// back to its document.
class IPlayerWindow
{
public:
    virtual ~IPlayerWindow() = default;

    virtual QString Tag() const = 0;
    virtual void setTag(const QString &tag) = 0;
    virtual QString Caption() const = 0;
    virtual void setCaption(const QString &caption) = 0;
    virtual CPlayer *player() const = 0;
};
