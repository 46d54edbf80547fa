#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basSetting.h"
#include "ui/MdiVelmar.h"

#include <QCloseEvent>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>

#include <gtest/gtest.h>

TEST(MainFrame, MenusSpeakChineseFromTheCatalogue)
{
    StartCore();
    MdiVelmar frame;
    frame.Init(Velmar);
    QStringList titles;
    for (QAction *a : frame.menuBar()->actions())
        titles << a->text();
    EXPECT_EQ(titles, QStringList({QStringLiteral("文件"), QStringLiteral("选项"), QStringLiteral("窗口"),
                                   QStringLiteral("关于")}));
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
