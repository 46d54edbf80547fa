#pragma once

#include "core/CDocumentList.h"
#include "script/CSSAContent.h"

#include <functional>

class IPlayerWindow;

// The stand-alone event lists under the root.
class CSSAContents : public CDocumentList<CSSAContent>
{
public:
    // A new list with the next serial.
    CSSAContent *Create();
    // Removes the list and raises SSAContentDestroyed with its key.
    void Delete(const QString &key) override;
    // Walks the members and does nothing for each: lists have no file of their own.
    void SaveFile() { }
    // Binds every member that has no player to `window`.
    void AssignPlayerWindow(IPlayerWindow *window);
    // Unbinds every member bound to a player of that name.
    void ReleasePlayerWindow(const QString &playerName);

    std::function<void(const QString &key)> SSAContentDestroyed;
};
