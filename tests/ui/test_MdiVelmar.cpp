#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basSetting.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "ui/MdiVelmar.h"

#include "core/basMessage.h"
#include <QCloseEvent>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(MainFrame, MenusSpeakChineseFromTheCatalogue)
{
    StartCore();
    MdiVelmar frame;
    frame.Init(Velmar);
    QStringList titles;
    for (QAction *a : frame.menuBar()->actions())
        titles << a->text();
    EXPECT_EQ(titles,
        QStringList({ QStringLiteral("文件"), QStringLiteral("选项"), QStringLiteral("窗口"),
            QStringLiteral("关于") }));
    EXPECT_EQ(frame.mnuFileOpenTiming->text(), QStringLiteral("打开时间轴..."));
    EXPECT_EQ(frame.mnuWindowCascade->text(), QStringLiteral("层叠"));
    EXPECT_EQ(frame.mnuHelpVersion->text(), QStringLiteral("版本..."));
}

namespace {
// A child that refuses to close, as a window does when its question is cancelled.
class StubbornChild : public QWidget
{
protected:
    void closeEvent(QCloseEvent *e) override { e->ignore(); }
};
} // namespace

TEST(MainFrame, CloseSequenceStopsOnRefusalAndSavesGeometry)
{
    QFile::remove(SettingsFile());
    StartCore();
    MdiVelmar frame;
    frame.Init(Velmar);
    frame.setGeometry(10, 20, 800, 600);
    QMdiSubWindow *child = frame.MdiArea()->addSubWindow(new StubbornChild);
    child->show();
    frame.show();
    EXPECT_FALSE(frame.close());
    EXPECT_TRUE(GetSetting("Startup", "Width").isEmpty());

    delete child;
    EXPECT_TRUE(frame.close());
    EXPECT_EQ(GetSetting("Startup", "Width"), QString::number(frame.geometry().width()));
    EXPECT_EQ(GetSetting("Startup", "Height"), QString::number(frame.geometry().height()));
}

#include "ui/frmProject.h"

#include <QTreeWidget>

TEST(ProjectWindow, RootNamedAfterTheWindowAndFilesUnderIt)
{
    StartCore();
    frmProject window;
    window.Init(nullptr);
    EXPECT_EQ(window.windowTitle(), Msg("PROJECT_TITLE_000"));
    ASSERT_EQ(window.trvProject()->topLevelItemCount(), 1);
    EXPECT_EQ(window.trvProject()->topLevelItem(0)->text(0), window.windowTitle());
    EXPECT_EQ(window.Project()->SerialNo(), 1);

    QTemporaryDir dir;
    const QString vlr = dir.filePath("p.vlr");
    window.Project()->AddFile(dir.filePath("a.ass"), ScriptType::ASS);
    ASSERT_TRUE(window.Project()->OutputSub(vlr));
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    prompt.FileNames.push_back(vlr);
    frmProject other;
    other.Init(nullptr);
    EXPECT_TRUE(other.OpenFile());
    ASSERT_EQ(other.trvProject()->topLevelItem(0)->childCount(), 1);
    EXPECT_EQ(other.trvProject()->topLevelItem(0)->child(0)->text(0), "a.ass");
    SetPrompt(nullptr);
}
