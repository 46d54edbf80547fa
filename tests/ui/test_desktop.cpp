// Velmar as a desktop program: files named on the command line, the help and version
// answers of the real program, and the English interface with its choice in the settings.
#include "core/CScriptedPrompt.h"
#include "core/IForm.h"
#include "core/basLanguage.h"
#include "core/basMain.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"
#include "player/CFakeMediaControl.h"
#include "shell/CSettingDialogModel.h"
#include "shell/CVelmar.h"
#include "shell/basCommandLine.h"
#include "shell/basStart.h"
#include "ui/MdiVelmar.h"
#include "ui/frmPlayer.h"
#include "ui/frmSetting.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

namespace {

// A timing window that only notes the file it was asked to open.
class NotingWindow : public QWidget, public IForm
{
public:
    explicit NotingWindow(QStringList &log)
        : m_log(log)
    { }
    bool OpenFile(int, const QString &name) override
    {
        m_log << QStringLiteral("timing ") + name;
        return true;
    }
    bool SaveFile(bool, int) override { return true; }

private:
    QStringList &m_log;
};

struct ProcessRun
{
    int Exit = -1;
    QString Out;
    QString Err;
};

class Desktop : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_oldSettings = SettingsFile();
        m_oldProgram = ProgramFolder();
        m_oldCurrent = QDir::currentPath();
        SetSettingsFile(m_dir.filePath(QStringLiteral("config/Velmar.ini")));
        QDir().mkpath(m_dir.filePath(QStringLiteral("program")));
        SetProgramFolder(m_dir.filePath(QStringLiteral("program")));
        SetPrompt(&m_prompt);
        StartCore();
        AutoGetClipBoard = OnTop = AvoidOverlapTiming = false;
    }
    void TearDown() override
    {
        QDir::setCurrent(m_oldCurrent);
        SetRunInterfaceLanguage({});
        SetPrompt(nullptr);
        SetSettingsFile(m_oldSettings);
        SetProgramFolder(m_oldProgram);
        StartCore();
    }

    // What a fresh frame opens when `deliver` hands it files: the timing windows' files
    // in order, the player's file, then the messages shown.
    std::string openIn(const std::function<void(MdiVelmar &)> &deliver)
    {
        QStringList log;
        CScriptedPrompt prompt;
        SetPrompt(&prompt);
        CFakeMediaControl media; // outlives the frame and its player window
        {
            MdiVelmar frame;
            MainWindow = &frame;
            frame.Init(Velmar);
            frame.RegisterWindowFactory(DocumentWindowKind::Player, [&media](MdiVelmar &f) -> QWidget * {
                auto *w = new frmPlayer(&media);
                f.AddDocumentWindow(w);
                w->Init(Velmar->Players());
                return w;
            });
            frame.RegisterWindowFactory(DocumentWindowKind::Timing,
                [&log](MdiVelmar &) -> QWidget * { return new NotingWindow(log); });
            frame.show();
            deliver(frame);
            if (!media.URL().isEmpty())
                log << QStringLiteral("player ") + media.URL();
            log << QStringLiteral("%1 windows").arg(frame.DocumentWindows().size());
            MainWindow = nullptr;
        }
        for (const QString &message : prompt.Messages())
            log << QStringLiteral("message ") + message;
        SetPrompt(&m_prompt);
        return log.join(u'\n').toStdString();
    }

    ProcessRun runVelmar(const QStringList &arguments, bool offscreen)
    {
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        if (offscreen)
            env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_dir.filePath(QStringLiteral("process-config")));
        process.setProcessEnvironment(env);
        process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../velmar"), arguments);
        ProcessRun run;
        if (!process.waitForFinished(30000))
            return run;
        run.Exit = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        run.Out = QString::fromLocal8Bit(process.readAllStandardOutput());
        run.Err = QString::fromLocal8Bit(process.readAllStandardError());
        return run;
    }

    QTemporaryDir m_dir;
    QString m_oldSettings;
    QString m_oldProgram;
    QString m_oldCurrent;
    CScriptedPrompt m_prompt;
};

} // namespace

TEST_F(Desktop, CommandLineFilesOpenAsTheSameFilesDroppedOnTheFrame)
{
    ASSERT_TRUE(QDir::setCurrent(m_dir.path()));
    const QString here = QDir::currentPath();
    const CommandLine commandLine = ParseCommandLine(
        { QStringLiteral("velmar"), QStringLiteral("a.b.SRT"), QStringLiteral("-lang"), QStringLiteral("en"),
            QStringLiteral("/v/m.AVI"), QStringLiteral("file:///w/x.smp"), QStringLiteral("/w/draft.txt") });
    ASSERT_EQ(commandLine.Do, CommandLine::Run);
    EXPECT_EQ(commandLine.Language, QStringLiteral("en"));
    EXPECT_EQ(commandLine.Files,
        QStringList({ here + QStringLiteral("/a.b.SRT"), QStringLiteral("/v/m.AVI"),
            QStringLiteral("/w/x.smp"), QStringLiteral("/w/draft.txt") }));

    const std::string fromCommandLine = openIn([&](MdiVelmar &frame) { frame.DropFiles(commandLine.Files); });
    const std::string fromDrop = openIn([&](MdiVelmar &frame) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &name : commandLine.Files)
            urls << QUrl::fromLocalFile(name);
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&frame, &enter);
        QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&frame, &drop);
    });
    EXPECT_EQ(fromCommandLine, fromDrop);
    // Scripts to timing windows, videos to players; SMP is refused by its extension, and a
    // draft has no window of its kind here.
    EXPECT_EQ(fromCommandLine,
        QStringList({ QStringLiteral("timing ") + here + QStringLiteral("/a.b.SRT"),
                        QStringLiteral("player /v/m.AVI"), QStringLiteral("2 windows"),
                        QStringLiteral("message 请使用文件打开菜单来打开这个文件: /w/x.smp") })
            .join(u'\n')
            .toStdString());

    const CommandLine wrong = ParseCommandLine({ QStringLiteral("velmar"), QStringLiteral("--lang=fr") });
    EXPECT_EQ(wrong.Do, CommandLine::UsageError);
    EXPECT_EQ(CommandLineExitCode(wrong), 2);
    EXPECT_TRUE(wrong.Files.isEmpty());
}

TEST_F(Desktop, HelpAndVersionNeedNoDisplayAndFaultsExitTwo)
{
    const ProcessRun help = runVelmar({ QStringLiteral("--help") }, false);
    EXPECT_EQ(help.Exit, 0) << help.Err.toStdString();
    EXPECT_TRUE(help.Out.startsWith(QStringLiteral("Usage: velmar [options] [FILE...]\n")))
        << help.Out.toStdString();
    for (const char *option : { "-h, --help", "-v, --version", "--lang <zh|en>", "FILE" })
        EXPECT_TRUE(help.Out.contains(QLatin1String(option))) << option << " missing from\n"
                                                              << help.Out.toStdString();

    const ProcessRun version = runVelmar({ QStringLiteral("--version") }, false);
    EXPECT_EQ(version.Exit, 0);
    EXPECT_EQ(version.Out, QStringLiteral("Velmar ") + VersionNo + u'\n');

    const ProcessRun language = runVelmar({ QStringLiteral("--lang"), QStringLiteral("fr") }, true);
    EXPECT_EQ(language.Exit, 2);
    EXPECT_TRUE(language.Err.contains(QStringLiteral("choose zh or en"))) << language.Err.toStdString();
    const ProcessRun unknown = runVelmar({ QStringLiteral("--bogus") }, true);
    EXPECT_EQ(unknown.Exit, 2);
    EXPECT_TRUE(unknown.Err.contains(QStringLiteral("velmar --help"))) << unknown.Err.toStdString();
}

TEST_F(Desktop, EnglishFrameAndTheLanguageInTheSettingsDialog)
{
    SetRunInterfaceLanguage(QStringLiteral("en"));
    StartCore();
    MdiVelmar frame;
    frame.Init(Velmar);
    QStringList titles;
    for (QAction *a : frame.menuBar()->actions())
        titles << a->text();
    EXPECT_EQ(titles,
        QStringList({ QStringLiteral("File"), QStringLiteral("Options"), QStringLiteral("Window"),
            QStringLiteral("Help") }));
    EXPECT_EQ(frame.mnuFileOpenTiming->text(), QStringLiteral("Open Script..."));
    EXPECT_EQ(frame.PanelText(QStringLiteral("StartPoint")), QStringLiteral("F8:  Stamp Start Time"));

    // The dialog shows the stored choice (none: Chinese), not this run's language.
    CSettingDialogModel model;
    AutoSaveSettings autoSave;
    model.Init(*HotKeys, autoSave);
    frmSetting dialog(model, &autoSave);
    ASSERT_EQ(dialog.cmbLanguage->count(), 2);
    EXPECT_EQ(dialog.cmbLanguage->itemText(0), QStringLiteral("中文"));
    EXPECT_EQ(dialog.cmbLanguage->itemText(1), QStringLiteral("English"));
    EXPECT_EQ(dialog.cmbLanguage->currentData().toString(), QStringLiteral("zh"));
    dialog.cmbLanguage->setCurrentIndex(1);
    EXPECT_TRUE(dialog.OK());
    EXPECT_EQ(GetSetting(QStringLiteral("Setting"), QStringLiteral("Language")), QStringLiteral("en"));
}
