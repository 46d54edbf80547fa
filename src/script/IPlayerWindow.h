#pragma once

#include <QString>

// What the script model needs of a player window: its name (lists unbind a closing
// player by it) and the size of the picture it plays.
class IPlayerWindow
{
public:
    virtual ~IPlayerWindow() = default;

    virtual QString PlayerName() const = 0;
    virtual double ImageSourceWidth() const = 0;
    virtual double ImageSourceHeight() const = 0;
};
