#include "core/basMessage.h"

#include "core/CMessages.h"
#include "core/basMain.h"

QString Msg(const QString &key)
{
    if (!MessageList)
        LoadMessages();
    return MessageList->item(key)->Content();
}
