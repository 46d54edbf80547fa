#pragma once

#include "core/isub.h"

class CMessages;

// One catalogue entry: key and text.
class CMessage : public isub
{
public:
    void Init(const QString &Key);

    bool Blank = false;
    QString MessageID;
    QString Message;
    qint16 ErrNumber = 0;

    CMessages *Parent() const { return m_parent; }
    void setParent(CMessages *parent) { m_parent = parent; }

    // Writing takes the text behind the first "=", trimmed; a blank line sets Blank.
    QString Content() override;
    void setContent(const QString &text) override;
    qint32 SerialNo() const override { return 0; }
    void Clear() override { Message.clear(); }

private:
    CMessages *m_parent = nullptr;
};
