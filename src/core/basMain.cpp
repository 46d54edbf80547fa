#include "core/basMain.h"

#include "core/CMessages.h"
#include "core/CVelmar.h"
#include "core/Class.h"
#include "core/VelmarError.h"
#include "script/CTimings.h"
#include "shell/CHotKeys.h"

#include <memory>

QString VersionNo;
CVelmar *Velmar = nullptr;
CHotKeys *HotKeys = nullptr;
CMessages *Messages = nullptr;
ICollection *MessageList = nullptr;
QObject *MainWindow = nullptr;
bool AutoGetClipBoard = false;
bool OnTop = false;
bool AvoidOverlapTiming = false;

namespace {
std::unique_ptr<CVelmar> g_velmar;
std::unique_ptr<CHotKeys> g_hotKeys;
std::unique_ptr<CMessages> g_messages;

template <typename F> void step(F &&f)
{
    try {
        f();
    } catch (const VelmarError &) {
    } catch (const std::exception &) { }
}
} // namespace

void LoadMessages()
{
    g_messages = Class::Make<CMessages>();
    Messages = g_messages.get();
    MessageList = &Messages->CollectionView();
}

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
