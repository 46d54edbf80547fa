#pragma once

#include "core/isub.h"

class CTranslates;

// A translation draft.
class CTranslate : public isub
{
public:
    void Init() {}

    CTranslates *Parent() const { return m_parent; }
    void setParent(CTranslates *parent) { m_parent = parent; }

    QString Content() override { return {}; }
    void setContent(const QString &) override {}
    void Clear() override {}

private:
    CTranslates *m_parent = nullptr;
};
