#include "core/basGuiHooks.h"

namespace basGuiHooks {

Table &Hooks()
{
    static Table table;
    return table;
}

} // namespace basGuiHooks
