// The frame's own controls: captions and tips from the catalogue, the Window menu, and no
// enabled control anywhere that does nothing.
#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "formats/CTiming.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayers.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "ui/MdiVelmar.h"
#include "ui/frmAbout.h"
#include "ui/frmFind.h"
#include "ui/frmImportFont.h"
#include "ui/frmNotePad.h"
#include "ui/frmOwner.h"
#include "ui/frmPlayer.h"
#include "ui/frmProject.h"
#include "ui/frmScriptInfo.h"
#include "ui/frmTiming.h"
#include "ui/frmTranslate.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QWidgetAction>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

// The frame as the program makes it, with a player window over a stand-in control.
class Frame : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartCore();
        SetPrompt(&prompt);
        frame = std::make_unique<MdiVelmar>();
        frame->Init(Velmar);
        frmTiming::Register(*frame);
        frmTranslate::Register(*frame);
        frmNotePad::Register(*frame);
        frame->RegisterWindowFactory(DocumentWindowKind::Player, [this](MdiVelmar &f) -> QWidget * {
            auto *w = new frmPlayer(&media);
            f.AddDocumentWindow(w);
            w->Init(Velmar->Players());
            return w;
        });
    }
    void TearDown() override
    {
        frame.reset();
        SetPrompt(nullptr);
    }
    QAction *tool(QToolBar *bar, const char *key) const
    {
        return bar->findChild<QAction *>(QString::fromLatin1(key));
    }

    CScriptedPrompt prompt;
    CFakeMediaControl media;
    std::unique_ptr<MdiVelmar> frame;
};

// How many connections a signal of an object has; Qt keeps the count to the object.
struct Links : QObject
{
    static int Count(const QObject *object, const char *signal)
    {
        return (object->*(&Links::receivers))(signal);
    }
};

// The connections Qt makes itself to an action that stands in menus and bars of these
// kinds: a fresh action put into the same kinds of holders has them too.
int QtOwnLinks(const QAction *action, const char *signal)
{
    QAction probe;
    std::vector<std::unique_ptr<QWidget>> holders;
    for (QObject *o : action->associatedObjects()) {
        std::unique_ptr<QWidget> holder;
        if (qobject_cast<QMenuBar *>(o))
            holder = std::make_unique<QMenuBar>();
        else if (qobject_cast<QMenu *>(o))
            holder = std::make_unique<QMenu>();
        else if (qobject_cast<QToolBar *>(o))
            holder = std::make_unique<QToolBar>();
        else
            continue; // the tool buttons of a bar come with the bar
        holder->addAction(&probe);
        holders.push_back(std::move(holder));
    }
    return Links::Count(&probe, signal);
}

// Items the windows show on purpose without an action: the override tag names of the
// grid's popup, and the three items of the translation window's popup.
const QStringList InertByDesign = { QStringLiteral("mnuTimingEffectBold"),
    QStringLiteral("mnuTimingEffectItalic"), QStringLiteral("mnuTimingEffectColor"),
    QStringLiteral("mnuTranslateLineHeadEndChangeColor"), QStringLiteral("mnuTranslateLineLineColorLoop"),
    QStringLiteral("mnuTranslateLineHeadEndChangeFontSize") };

QString NameOf(const QObject *o)
{
    const QString name = o->objectName().isEmpty() ? o->property("text").toString() : o->objectName();
    const QObject *window = o;
    while (window->parent() && !window->inherits("frmTiming") && !window->inherits("frmPlayer")
        && !window->inherits("frmTranslate") && !window->inherits("frmNotePad")
        && !window->inherits("frmFind") && !window->inherits("frmEffect")
        && !window->inherits("frmPicPreview"))
        window = window->parent();
    return window->objectName() + u'/' + name;
}

// Every enabled action and command button under `root` that nothing is connected to.
// Check boxes and option buttons hold a state their window reads; menus open; the tool
// buttons of bars stand for their actions.
QStringList DeadControls(const QWidget *root)
{
    QStringList dead;
    for (const QAction *a : root->findChildren<QAction *>()) {
        if (!a->isEnabled() || a->isSeparator() || a->menu() || qobject_cast<const QWidgetAction *>(a)
            || InertByDesign.contains(a->objectName()))
            continue;
        int links = 0;
        for (const char *signal : { SIGNAL(triggered(bool)), SIGNAL(toggled(bool)) })
            links += Links::Count(a, signal) - QtOwnLinks(a, signal);
        if (links <= 0)
            dead << NameOf(a);
    }
    for (const QAbstractButton *b : root->findChildren<QAbstractButton *>()) {
        const auto *tool = qobject_cast<const QToolButton *>(b);
        if (!b->isEnabled() || qobject_cast<const QCheckBox *>(b) || qobject_cast<const QRadioButton *>(b)
            || (tool && tool->defaultAction()) || b->objectName().startsWith(u"qt_"))
            continue;
        int links = 0;
        for (const char *signal :
            { SIGNAL(clicked(bool)), SIGNAL(pressed()), SIGNAL(released()), SIGNAL(toggled(bool)) })
            links += Links::Count(b, signal);
        if (links == 0)
            dead << NameOf(b);
    }
    return dead;
}

} // namespace

TEST_F(Frame, MenusAndButtonsTakeTheirCaptionsAndTips)
{
    QStringList titles;
    for (QAction *a : frame->menuBar()->actions())
        titles << a->text();
    EXPECT_EQ(titles,
        QStringList({ QStringLiteral("文件"), QStringLiteral("选项"), QStringLiteral("窗口"),
            QStringLiteral("关于") }));
    EXPECT_EQ(frame->mnuFileOpenTiming->text(), QStringLiteral("打开时间轴..."));
    EXPECT_EQ(frame->mnuWindowCascade->text(), QStringLiteral("层叠"));
    EXPECT_EQ(frame->mnuHelpVersion->text(), QStringLiteral("版本..."));
    EXPECT_EQ(frame->mnuFileExit->text(), QStringLiteral("退出"));
    // A button says what the menu entry it stands for says, and does what it does.
    EXPECT_EQ(tool(frame->tlbFile, "OpenTiming")->toolTip(), QStringLiteral("打开时间轴..."));
    EXPECT_EQ(tool(frame->tlbAVI, "OpenAVI")->toolTip(), QStringLiteral("打开动画..."));
    tool(frame->tlbFile, "NewTiming")->trigger();
    ASSERT_EQ(frame->DocumentWindows().size(), 1);
    EXPECT_TRUE(qobject_cast<frmTiming *>(frame->DocumentWindows().first()));
    EXPECT_EQ(tool(frame->tlbAVI, "Play")->toolTip(), QStringLiteral("F3:  播放 / 暂停"));

    // The translation entries make translation windows; their buttons say what they do.
    EXPECT_TRUE(frame->mnuFileOpenTranslate->isEnabled());
    EXPECT_EQ(tool(frame->tlbFile, "OpenTranslate")->toolTip(), QStringLiteral("打开翻译..."));
    tool(frame->tlbFile, "NewTranslate")->trigger();
    ASSERT_EQ(frame->DocumentWindows().size(), 2);
    EXPECT_TRUE(qobject_cast<frmTranslate *>(frame->DocumentWindows().last()));
}

TEST_F(Frame, WindowMenuTilesInRowsAndColumnsCascadesAndLinesUpIcons)
{
    frame->resize(1000, 700);
    frame->show();
    QList<QMdiSubWindow *> subs;
    for (int i = 0; i < 3; ++i)
        subs << frame->AddDocumentWindow(new QWidget);
    const QRect area = frame->MdiArea()->viewport()->rect();

    frame->mnuWindowTileHorizontally->trigger();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(subs[i]->geometry().width(), area.width()) << i;
        EXPECT_NEAR(subs[i]->geometry().height(), area.height() / 3.0, 1) << i;
    }
    EXPECT_LT(subs[0]->y(), subs[1]->y());
    EXPECT_LT(subs[1]->y(), subs[2]->y());

    subs[1]->showMaximized();
    frame->mnuWindowTileVertically->trigger();
    EXPECT_FALSE(subs[1]->isMaximized());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(subs[i]->geometry().height(), area.height()) << i;
        EXPECT_NEAR(subs[i]->geometry().width(), area.width() / 3.0, 1) << i;
    }
    EXPECT_LT(subs[0]->x(), subs[1]->x());
    EXPECT_LT(subs[1]->x(), subs[2]->x());

    frame->mnuWindowCascade->trigger();
    EXPECT_LT(subs[0]->y(), subs[1]->y());
    EXPECT_LT(subs[0]->x(), subs[1]->x());
    EXPECT_LT(subs[1]->y(), subs[2]->y());

    // Minimised windows pushed about come back to the bottom edge, side by side; tiling
    // leaves them alone.
    subs[0]->showMinimized();
    subs[2]->showMinimized();
    subs[0]->move(300, 50);
    subs[2]->move(10, 10);
    frame->mnuWindowTileHorizontally->trigger();
    EXPECT_EQ(subs[0]->pos(), QPoint(300, 50));
    EXPECT_EQ(subs[1]->geometry().size(), area.size());
    frame->mnuWindowArrange->trigger();
    EXPECT_EQ(subs[0]->geometry().bottom(), area.bottom());
    EXPECT_EQ(subs[2]->geometry().bottom(), area.bottom());
    EXPECT_EQ(subs[0]->x(), 0);
    EXPECT_GE(subs[2]->x(), subs[0]->geometry().right());
}

TEST_F(Frame, NoEnabledControlIsDead)
{
    auto *timing = dynamic_cast<frmTiming *>(frame->NewDocument(0));
    ASSERT_TRUE(timing);
    ASSERT_TRUE(frame->OpenFileByType(QStringLiteral("/v/clip.avi")));
    // The timing window's child windows and the lists its popup fills when it opens.
    timing->Button(QStringLiteral("Check"))->trigger();
    timing->Button(QStringLiteral("Find"))->trigger();
    timing->Button(QStringLiteral("EffectSpecial"))->trigger();
    timing->Button(QStringLiteral("PicPreview"))->trigger();
    timing->Button(QStringLiteral("Font"))->trigger();
    ASSERT_TRUE(timing->CheckWindow && timing->FindWindow && timing->EffectWindow && timing->PicPreviewWindow
        && timing->FontWindow);
    ASSERT_TRUE(frame->DocumentWindows().contains(timing->PicPreviewWindow.data()));
    emit timing->mnuPopup->aboutToShow();
    emit frame->mnuFile->aboutToShow();
    // The modal windows, as they stand when shown.
    frmScriptInfo info(timing);
    info.Init(timing->Document()->ScriptInfo.get());
    frmOwner owners(timing);
    owners.Init({ QStringLiteral("NTP") });
    frmImportFont import(timing);
    frmAbout about(frame.get());
    frmProject project(frame.get());
    project.Init(frame.get());

    // At the start only the karaoke button waits (for a translation window); nothing else
    // of the window is disabled.
    QStringList disabled;
    for (QAction *a : timing->findChildren<QAction *>()) {
        // Menus open (a bar's overflow menu stays disabled while it is empty).
        if (a->isEnabled() || a->isSeparator() || a->menu() || a->objectName().startsWith(u"mnuTiming"))
            continue;
        disabled << a->objectName();
    }
    disabled.sort();
    // Karaoke waits for a translation, undo and redo for a step.
    EXPECT_EQ(
        disabled, QStringList({ QStringLiteral("KaraOK"), QStringLiteral("Redo"), QStringLiteral("Undo") }));

    // The translation and notepad windows with their find dialogs.
    auto *translate = dynamic_cast<frmTranslate *>(frame->NewDocument(1));
    auto *notepad = dynamic_cast<frmNotePad *>(frame->NewDocument(4));
    ASSERT_TRUE(translate && notepad);
    translate->OpenFindWindow();
    notepad->EditFind();
    ASSERT_TRUE(translate->FindWindow && notepad->FindWindow);
    EXPECT_TRUE(timing->Button(QStringLiteral("KaraOK"))->isEnabled());

    EXPECT_EQ(DeadControls(frame.get()).join(u' ').toStdString(), "");
    EXPECT_GE(frame->findChildren<QAction *>().size(), 60);

    // The walk sees a dead one, past the links Qt makes for menus and bars itself.
    auto *stray = new QAction(QStringLiteral("stray"), timing);
    stray->setObjectName(QStringLiteral("stray"));
    timing->tlbAjust->addAction(stray);
    timing->mnuPopup->addAction(stray);
    EXPECT_EQ(DeadControls(frame.get()).join(u' ').toStdString(), "frmTiming/stray");
    delete stray;

    // Without a frame, a translation window's entries for the frame's commands wait for
    // one, disabled.
    frmTranslate alone;
    EXPECT_FALSE(alone.MenuEntry(QStringLiteral("mnuFileNewTiming"))->isEnabled());
    EXPECT_TRUE(translate->MenuEntry(QStringLiteral("mnuFileNewTiming"))->isEnabled());
}

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
