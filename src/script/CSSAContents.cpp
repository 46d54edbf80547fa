#include "script/CSSAContents.h"

#include "core/Class.h"
#include "core/IPlayerWindow.h"

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

void CSSAContents::ReleasePlayerWindow(const QString &playerTag)
{
    for (CSSAContent *member : m_list)
        if (member->PlayerWindow && member->PlayerWindow->Tag() == playerTag)
            member->PlayerWindow = nullptr;
}
