#include "script/CSSAContents.h"

#include "core/Class.h"
#include "script/IPlayerWindow.h"

CSSAContent *CSSAContents::Create()
{
    return Adopt(Class::Make<CSSAContent>());
}

void CSSAContents::Delete(const QString &key)
{
    m_list.Take(key);
    if (SSAContentDestroyed)
        SSAContentDestroyed(key);
}

void CSSAContents::AssignPlayerWindow(IPlayerWindow *window)
{
    for (CSSAContent *member : m_list)
        if (!member->PlayerWindow)
            member->PlayerWindow = window;
}

void CSSAContents::ReleasePlayerWindow(const QString &playerName)
{
    for (CSSAContent *member : m_list)
        if (member->PlayerWindow && member->PlayerWindow->PlayerName() == playerName)
            member->PlayerWindow = nullptr;
}
