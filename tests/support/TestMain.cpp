// Test entry: a Qt application without a display, settings and program folder in a
// temporary place, and the silent prompt installed.
#ifdef VELMAR_TEST_WIDGETS
#include <QApplication>
#endif
#include <QDir>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "core/basGuiHooks.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
#ifdef VELMAR_TEST_WIDGETS
    QApplication app(argc, argv);
#else
    QGuiApplication app(argc, argv);
#endif
    basGuiHooks::InstallGuiHooks();
    QTemporaryDir home;
    SetSettingsFile(home.filePath(QStringLiteral("config/Velmar.ini")));
    SetProgramFolder(home.filePath(QStringLiteral("program")));
    QDir().mkpath(home.filePath(QStringLiteral("program")));
    return RUN_ALL_TESTS();
}
