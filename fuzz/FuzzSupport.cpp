#include "FuzzSupport.h"

#include "core/CScriptedPrompt.h"
#include "core/basGuiHooks.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"

#include <QDir>
#include <QGuiApplication>
#include <QTemporaryDir>

namespace {
CScriptedPrompt *silentPrompt = nullptr;
}

void FuzzInit()
{
    static bool done = false;
    if (done) {
        // Each input starts with a prompt that has shown nothing: the record of every
        // message of every earlier input would otherwise grow without end.
        silentPrompt->Records.clear();
        return;
    }
    done = true;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = { name, nullptr };
    static QGuiApplication app(argc, argv);
    basGuiHooks::InstallGuiHooks();
    static QTemporaryDir home;
    SetSettingsFile(home.filePath(QStringLiteral("Velmar.ini")));
    SetProgramFolder(home.filePath(QStringLiteral("program")));
    QDir().mkpath(home.filePath(QStringLiteral("program")));
    static CScriptedPrompt prompt;
    prompt.DefaultYesNo = MsgBoxResult::Yes;
    SetPrompt(&prompt);
    silentPrompt = &prompt;
}
