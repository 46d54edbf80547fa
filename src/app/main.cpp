// The entry procedure: the core of the run, then the frame, which carries the run.
#include "core/basMain.h"
#include "ui/CQtPrompt.h"
#include "ui/MdiVelmar.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Velmar"));
    CQtPrompt prompt;
    SetPrompt(&prompt);
    StartCore();

    MdiVelmar frame;
    MainWindow = &frame;
    prompt.setParentWidget(&frame);
    frame.Init(Velmar);
    frame.show();
    const int result = QApplication::exec();
    SetPrompt(nullptr);
    MainWindow = nullptr;
    return result;
}
