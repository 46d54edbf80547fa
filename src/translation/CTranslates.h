#pragma once

#include "core/CDocumentList.h"
#include "translation/CTranslate.h"

// Every open translate document.
class CTranslates : public CDocumentList<CTranslate>
{
public:
    CTranslate *Create()
    {
        auto member = std::make_unique<CTranslate>();
        member->setParent(this);
        CTranslate *raw = Adopt(std::move(member));
        raw->Init();
        return raw;
    }
};
