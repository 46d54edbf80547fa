#include "core/CMessage.h"

#include "core/basConvert.h"

void CMessage::Init(const QString &Key)
{
    MessageID = Key;
}

QString CMessage::Content()
{
    return Blank ? QString() : Message;
}

void CMessage::setContent(const QString &text)
{
    ErrNumber = 0;
    if (basConvert::Trim(text).isEmpty()) {
        Blank = true;
        return;
    }
    const qsizetype eq = text.indexOf(u'=');
    Message = basConvert::Trim(QStringView(text).sliced(eq + 1));
}
