#include "formats/IRecentFileList.h"

IRecentFileList *RecentFile = nullptr;
