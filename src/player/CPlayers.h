#pragma once

#include "core/CDocumentList.h"
#include "player/CPlayer.h"

// Every open player document.
class CPlayers : public CDocumentList<CPlayer>
{
public:
    CPlayer *Create()
    {
        auto member = std::make_unique<CPlayer>();
        member->setParent(this);
        CPlayer *raw = Adopt(std::move(member));
        raw->Init();
        return raw;
    }
};
