#pragma once

#include "core/CDocumentList.h"
#include "script/CTiming.h"

class CVelmar;

// Every open timing document.
class CTimings : public CDocumentList<CTiming>
{
public:
    CTiming *Create(void *Window = nullptr)
    {
        auto member = std::make_unique<CTiming>();
        member->setParent(this);
        CTiming *raw = Adopt(std::move(member));
        raw->Init(raw->SerialNo(), Window);
        return raw;
    }

    CVelmar *Parent() const { return m_parent; }
    void setParent(CVelmar *parent) { m_parent = parent; }

private:
    CVelmar *m_parent = nullptr;
};
