#include "core/basMain.h"

#include "core/CMessages.h"
#include "core/Class.h"

#include <memory>

QString VersionNo;
CHotKeys *HotKeys = nullptr;
CMessages *Messages = nullptr;
ICollection *MessageList = nullptr;
QObject *MainWindow = nullptr;
bool AutoGetClipBoard = false;
bool OnTop = false;
bool AvoidOverlapTiming = false;
bool ModernFiles = false;

namespace {
std::unique_ptr<CMessages> g_messages;
} // namespace

void LoadMessages()
{
    g_messages = Class::Make<CMessages>();
    Messages = g_messages.get();
    MessageList = &Messages->CollectionView();
}
