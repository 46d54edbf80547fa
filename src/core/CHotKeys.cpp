#include "core/CHotKeys.h"

void CHotKeys::Init()
{
    HOTKEY_SaveFile = 83;
}
