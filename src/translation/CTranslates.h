#pragma once

#include "core/CDocumentList.h"
#include "translation/CTranslate.h"

// Every open translation document, keyed by the decimal text of its serial number.
class CTranslates : public CDocumentList<CTranslate>
{
public:
    // A new document; its window (when one is given) shows it.
    CTranslate *Create(QObject *Window = nullptr)
    {
        auto member = std::make_unique<CTranslate>();
        member->setParent(this);
        member->setWindow(Window);
        CTranslate *raw = Adopt(std::move(member));
        raw->Init();
        return raw;
    }
};
