#include "shell/basStart.h"

#include "core/CHotKeys.h"
#include "core/CMessages.h"
#include "core/Class.h"
#include "core/VelmarError.h"
#include "core/basMain.h"
#include "formats/CTimings.h"
#include "shell/CVelmar.h"

#include <memory>

namespace {
std::unique_ptr<CVelmar> g_velmar;
std::unique_ptr<CHotKeys> g_hotKeys;

template <typename F> void step(F &&f)
{
    try {
        f();
    } catch (const VelmarError &) {
    } catch (const std::exception &) { }
}
} // namespace

void StartCore()
{
    step([] { VersionNo = QStringLiteral("0.75"); });
    step([] {
        g_hotKeys = Class::Make<CHotKeys>();
        HotKeys = g_hotKeys.get();
    });
    step([] { LoadMessages(); });
    step([] {
        g_velmar = Class::Make<CVelmar>();
        Velmar = g_velmar.get();
    });
    step([] { Velmar->Timings()->setParent(Velmar); });
}
