#pragma once

#include "core/CDocumentList.h"
#include "script/CSSAContent.h"

// Stand-alone event lists.
class CSSAContents : public CDocumentList<CSSAContent>
{
public:
    CSSAContent *Create()
    {
        auto member = std::make_unique<CSSAContent>();
        member->setParent(this);
        CSSAContent *raw = Adopt(std::move(member));
        raw->Init();
        return raw;
    }
};
