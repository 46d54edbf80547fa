// The entry procedure: the command line, the core of the run, then the frame, which
// carries the run.
#include "core/basGuiHooks.h"
#include "core/basLanguage.h"
#include "core/basMain.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"
#include "shell/basCommandLine.h"
#include "shell/basStart.h"
#include "ui/CQtPrompt.h"
#include "ui/MdiVelmar.h"
#include "ui/frmNotePad.h"
#include "ui/frmProject.h"
#include "ui/frmTiming.h"
#include "ui/frmTranslate.h"

#include <QApplication>
#include <QDirIterator>
#include <QIcon>
#include <QTimer>
#include <cstdio>

namespace {

QStringList argumentsOf(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

// Prints what the command line answered and gives the exit status.
int answer(const CommandLine &commandLine)
{
    FILE *stream = commandLine.Do == CommandLine::UsageError ? stderr : stdout;
    std::fputs(commandLine.Output.toLocal8Bit().constData(), stream);
    return CommandLineExitCode(commandLine);
}

// Every size of the icon built into the program (data/velmar.qrc).
QIcon programIcon()
{
    QIcon icon;
    QDirIterator sizes(QStringLiteral(":/icons/hicolor"), { QStringLiteral("velmar.png") }, QDir::Files,
        QDirIterator::Subdirectories);
    while (sizes.hasNext())
        icon.addFile(sizes.next());
    return icon;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Velmar"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMAR_VERSION));
    // The help and the version need no display.
    if (!CommandLineNeedsWindows(argumentsOf(argc, argv))) {
        QCoreApplication core(argc, argv);
        return answer(ParseCommandLine(QCoreApplication::arguments()));
    }

    QApplication app(argc, argv);
    // Read after Qt has taken its own options (-platform, -style...).
    const CommandLine commandLine = ParseCommandLine(QApplication::arguments());
    if (commandLine.Do != CommandLine::Run)
        return answer(commandLine);
    QGuiApplication::setDesktopFileName(QStringLiteral("velmar"));
    QApplication::setWindowIcon(programIcon());
    if (!commandLine.Language.isEmpty())
        SetRunInterfaceLanguage(commandLine.Language);

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
        frmTranslate::Register(frame);
        frmNotePad::Register(frame);

        frmProject project(&frame);
        project.Init(&frame);
        project.hide();

        CRecentFile recent;
        RecentFile = &recent;
        frame.AttachRecentFile(&recent);
        recent.Init();

        frame.show();
        // Files named on the command line open once the frame runs, as dropped files do.
        if (!commandLine.Files.isEmpty())
            QTimer::singleShot(0, &frame, [&frame, &commandLine] { frame.DropFiles(commandLine.Files); });
        const int result = QApplication::exec();
        frame.AttachRecentFile(nullptr);
        RecentFile = nullptr;
        prompt.setParentWidget(nullptr);
        MainWindow = nullptr;
        SetPrompt(nullptr);
        return result;
    }
}
