#pragma once

#include <QSize>
#include <optional>

// What the script information reaches in the document that owns it: the picture of the
// video the document is linked to, which gives PlayResX and PlayResY.
class ISubInfoHost
{
public:
    virtual ~ISubInfoHost() = default;

    // The linked player's picture size in pixels; nothing while no player is linked.
    virtual std::optional<QSize> VideoPictureSize() const = 0;
};
