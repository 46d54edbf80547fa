#pragma once

#include "core/isub.h"

class CSSAContents;

// An event list: the lines of an [Events] section.
class CSSAContent : public isub
{
public:
    void Init() {}

    CSSAContents *Parent() const { return m_parent; }
    void setParent(CSSAContents *parent) { m_parent = parent; }

    QString Content() override { return {}; }
    void setContent(const QString &) override {}
    void Clear() override {}

private:
    CSSAContents *m_parent = nullptr;
};
