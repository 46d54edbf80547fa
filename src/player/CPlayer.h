#pragma once

#include "core/isub.h"

class CPlayers;

// A player document: a video and its clock.
class CPlayer : public isub
{
public:
    void Init() {}

    CPlayers *Parent() const { return m_parent; }
    void setParent(CPlayers *parent) { m_parent = parent; }

    QString Content() override { return {}; }
    void setContent(const QString &) override {}
    void Clear() override {}

private:
    CPlayers *m_parent = nullptr;
};
