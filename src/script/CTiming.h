#pragma once

#include "core/isub.h"

class CTimings;

// A timing document: one script being timed.
class CTiming : public isub
{
public:
    void Init(qint32 SerialNo, void *Window = nullptr)
    {
        setSerialNo(SerialNo);
        m_window = Window;
    }

    CTimings *Parent() const { return m_parent; }
    void setParent(CTimings *parent) { m_parent = parent; }

    QString Content() override { return {}; }
    void setContent(const QString &) override {}
    void Clear() override {}

private:
    CTimings *m_parent = nullptr;
    void *m_window = nullptr;
};
