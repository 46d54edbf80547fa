#pragma once

#include "script/ScriptType.h"

#include <QString>

// Where an opened or saved file is told, so that the recent-file menu offers it first.
class IRecentFileList
{
public:
    virtual ~IRecentFileList() = default;

    virtual void InsertRecentFileList(const QString &name, ScriptType type) = 0;
};

// The one list of the run, once the frame has made it; nullptr before and in tools.
extern IRecentFileList *RecentFile;
