// The entry procedure: the core of the run, then the frame, which carries the run.
#include "core/basGuiHooks.h"
#include "core/basMain.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "ui/CQtPrompt.h"
#include "ui/MdiVelmar.h"
#include "ui/frmProject.h"
#include "ui/frmTiming.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Velmar"));
    basGuiHooks::InstallGuiHooks();
    CQtPrompt prompt;
    SetPrompt(&prompt);
    // Version, hot keys, catalogue and the root with its collections.
    StartCore();

    {
        MdiVelmar frame;
        MainWindow = &frame;
        prompt.setParentWidget(&frame);
        // The settings store is read here, in its order.
        frame.Init(Velmar);
        frmTiming::Register(frame);

        frmProject project(&frame);
        project.Init(&frame);
        project.hide();

        CRecentFile recent;
        RecentFile = &recent;
        frame.AttachRecentFile(&recent);
        recent.Init();

        frame.show();
        const int result = QApplication::exec();
        frame.AttachRecentFile(nullptr);
        RecentFile = nullptr;
        prompt.setParentWidget(nullptr);
        MainWindow = nullptr;
        SetPrompt(nullptr);
        return result;
    }
}
