#include "core/basMessage.h"

#include "core/CMessages.h"
#include "core/basMain.h"

QString JoinCatalogueLines(std::span<const char16_t *const> lines)
{
    QString text;
    text.reserve(16384);
    for (const char16_t *line : lines) {
        if (!text.isEmpty())
            text += QStringLiteral("\r\n");
        text += QString::fromUtf16(line);
    }
    return text;
}

QString Msg(const QString &key)
{
    if (!MessageList)
        LoadMessages();
    return MessageList->item(key)->Content();
}
