// The frame and its windows wired to the core: status texts, routing of drops and
// recent entries, the clipboard, the close sequence, the player window over a stand-in
// control, and the settings and time dialogs.
#include "core/CHotKeys.h"
#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"
#include "core/basTime.h"
#include "formats/CTimings.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayer.h"
#include "player/CPlayers.h"
#include "shell/CRecentFile.h"
#include "shell/CSettingDialogModel.h"
#include "shell/CVelmar.h"
#include "shell/IAutoSaveDocument.h"
#include "shell/basStart.h"
#include "ui/MdiVelmar.h"
#include "ui/frmPlayer.h"
#include "ui/frmSetting.h"
#include "ui/frmSlider.h"
#include "ui/frmSliderTime.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSlider>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

#include <gtest/gtest.h>

namespace {

// A document window of a kind that has no real window here: records what it is asked,
// and asks the save question on close when its document changed.
class FakeDocumentWindow : public QWidget, public IForm, public IAutoSaveDocument
{
public:
    QStringList Opened;
    bool DocumentChanged = false;
    int Saves = 0;
    bool OpenFile(int, const QString &name) override
    {
        Opened << name;
        return true;
    }
    bool SaveFile(bool, int) override
    {
        ++Saves;
        return true;
    }
    Kind AutoSaveKind() const override { return NotePad; }
    QString Content() override { return QStringLiteral("draft text"); }

protected:
    void closeEvent(QCloseEvent *e) override
    {
        if (QueryCloseDocument(DocumentChanged, [this] { return SaveFile(false, 0); }))
            e->accept();
        else
            e->ignore();
    }
};

class ShellWindows : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_oldSettings = SettingsFile();
        m_oldProgram = ProgramFolder();
        SetSettingsFile(m_dir.filePath(QStringLiteral("config/Velmar.ini")));
        QDir().mkpath(m_dir.filePath(QStringLiteral("program")));
        SetProgramFolder(m_dir.filePath(QStringLiteral("program")));
        SetPrompt(&prompt);
        StartCore();
        AutoGetClipBoard = OnTop = AvoidOverlapTiming = false;
        frame = std::make_unique<MdiVelmar>();
        MainWindow = frame.get();
        frame->Init(Velmar);
        frame->RegisterWindowFactory(DocumentWindowKind::Player, [this](MdiVelmar &f) -> QWidget * {
            auto *w = new frmPlayer(&media);
            f.AddDocumentWindow(w);
            w->Init(Velmar->Players());
            return w;
        });
        frame->RegisterWindowFactory(DocumentWindowKind::Timing, [this](MdiVelmar &) -> QWidget * {
            auto *w = new FakeDocumentWindow;
            timingWindows << w;
            return w;
        });
    }
    void TearDown() override
    {
        frame.reset();
        MainWindow = nullptr;
        SetPrompt(nullptr);
        SetSettingsFile(m_oldSettings);
        SetProgramFolder(m_oldProgram);
        AutoGetClipBoard = OnTop = AvoidOverlapTiming = false;
    }
    frmPlayer *onlyPlayer() const
    {
        for (QWidget *w : frame->DocumentWindows())
            if (auto *p = qobject_cast<frmPlayer *>(w))
                return p;
        return nullptr;
    }

    QTemporaryDir m_dir;
    QString m_oldSettings;
    QString m_oldProgram;
    CScriptedPrompt prompt;
    CFakeMediaControl media; // outlives the frame and its player window
    std::unique_ptr<MdiVelmar> frame;
    QList<FakeDocumentWindow *> timingWindows;
};

} // namespace

TEST_F(ShellWindows, StatusPanelsShowTheKeysAndFollowTheirChanges)
{
    EXPECT_EQ(frame->PanelText(QStringLiteral("Play")), QStringLiteral("F3:  播放 / 暂停"));
    EXPECT_EQ(frame->PanelText(QStringLiteral("Back")), QStringLiteral("F4:  后退  3秒"));
    EXPECT_EQ(frame->PanelText(QStringLiteral("Forword")), QStringLiteral("F6:  前进  3秒"));
    EXPECT_EQ(frame->PanelText(QStringLiteral("StartPoint")), QStringLiteral("F8:  插入开始时间点"));
    EXPECT_EQ(frame->PanelText(QStringLiteral("EndPoint")), QStringLiteral("F9:  插入结束时间点"));
    EXPECT_EQ(frame->PanelText(QStringLiteral("Save")), QStringLiteral("F10:  保存文件"));
    EXPECT_EQ(frame->PanelText(QStringLiteral("Position")), QStringLiteral(" X=0000  Y=0000 "));

    HotKeys->setHOTKEY_TimingStartTime(qint16(KeyNameToCode(u"F2")));
    EXPECT_EQ(frame->PanelText(QStringLiteral("StartPoint")), QStringLiteral("F2:  插入开始时间点"));
    Velmar->Players()->setForwordStep(1.5);
    EXPECT_EQ(frame->PanelText(QStringLiteral("Forword")), QStringLiteral("F6:  前进  1.5秒"));
    EXPECT_EQ(frame->tlbAVI->findChild<QAction *>(QStringLiteral("Forword"))->toolTip(),
        QStringLiteral("F6:  前进  1.5秒"));
}

TEST_F(ShellWindows, ClickOnBackAsksOnlyTheSecondsOfTheStep)
{
    CSliderTimeModel *seen = nullptr;
    QString title;
    frame->RunTimeDialog = [&](CSliderTimeModel &m) {
        seen = &m;
        title = m.Title();
        EXPECT_FALSE(m.EnableSign());
        EXPECT_FALSE(m.EnableHour());
        EXPECT_FALSE(m.EnableMinite());
        EXPECT_TRUE(m.EnableSecond());
        EXPECT_FALSE(m.EnableMiniSecond());
        EXPECT_EQ(m.FieldText(CSliderTimeModel::FieldSecond), QStringLiteral("03"));
        m.setFieldText(CSliderTimeModel::FieldSecond, QStringLiteral("5"));
        EXPECT_TRUE(m.LeaveField(CSliderTimeModel::FieldSecond));
        m.OK();
        return true;
    };
    frame->show();
    QLabel *back = frame->statusBar()->findChild<QLabel *>(QStringLiteral("Back"));
    ASSERT_NE(back, nullptr);
    QTest::mouseClick(back, Qt::LeftButton);
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(title, QStringLiteral("后退的幅度(秒):"));
    EXPECT_DOUBLE_EQ(Velmar->Players()->BackStep(), 5);
    EXPECT_EQ(frame->PanelText(QStringLiteral("Back")), QStringLiteral("F4:  后退  5秒"));

    // Cancel leaves the step alone.
    frame->RunTimeDialog = [](CSliderTimeModel &m) {
        m.setFieldText(CSliderTimeModel::FieldSecond, QStringLiteral("9"));
        m.LeaveField(CSliderTimeModel::FieldSecond);
        m.Cancel();
        return true;
    };
    QTest::mouseClick(frame->statusBar()->findChild<QLabel *>(QStringLiteral("Forword")), Qt::LeftButton);
    EXPECT_DOUBLE_EQ(Velmar->Players()->ForwordStep(), 3);
}

TEST_F(ShellWindows, DroppedFilesOpenInTheirWindowsInOrder)
{
    QMimeData data;
    data.setUrls({ QUrl::fromLocalFile(QStringLiteral("/w/a.b.SRT")),
        QUrl::fromLocalFile(QStringLiteral("/v/m.AVI")), QUrl::fromLocalFile(QStringLiteral("/w/x.smp")) });
    frame->show();
    // A drop follows its drag's entry, which the frame accepts for files.
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(frame.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(frame.get(), &drop);

    ASSERT_EQ(timingWindows.size(), 1);
    EXPECT_EQ(timingWindows[0]->Opened, QStringList { QStringLiteral("/w/a.b.SRT") });
    frmPlayer *player = onlyPlayer();
    ASSERT_NE(player, nullptr);
    EXPECT_EQ(media.URL(), QStringLiteral("/v/m.AVI"));
    EXPECT_EQ(player->Caption(), QStringLiteral("/v/m.AVI"));
    EXPECT_EQ(
        prompt.Messages(), QStringList { QStringLiteral("请使用文件打开菜单来打开这个文件: /w/x.smp") });
    EXPECT_EQ(frame->DocumentWindows().size(), 2);
}

TEST_F(ShellWindows, CopiedTimesGoToTheActiveTimingWindowWhileWatching)
{
    frame->show();
    QList<double> got;
    IForm *form = frame->NewDocument(0);
    ASSERT_NE(form, nullptr);
    auto *window = dynamic_cast<QWidget *>(form);
    CTiming *doc = Velmar->Timings()->Create(window);
    doc->TimingWindow = window;
    doc->OnNewTime = [&](double t) { got << t; };
    frame->MdiArea()->setActiveSubWindow(frame->MdiArea()->subWindowList().first());

    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->setText(QStringLiteral("0:01:02.50"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(got.isEmpty()); // not watching

    frame->ClipboardViewerSwitch(true);
    clipboard->setText(QStringLiteral("0:00:05.20"));
    QCoreApplication::processEvents();
    clipboard->setText(QStringLiteral("hello"));
    QCoreApplication::processEvents();
    ASSERT_EQ(got.size(), 1);
    EXPECT_DOUBLE_EQ(got[0], 5.2);

    frame->ClipboardViewerSwitch(false);
    clipboard->setText(QStringLiteral("0:00:07.00"));
    QCoreApplication::processEvents();
    EXPECT_EQ(got.size(), 1);
}

TEST_F(ShellWindows, CancelOnTheSecondChangedWindowStopsTheClose)
{
    frame->NewDocument(0);
    frame->NewDocument(0);
    ASSERT_EQ(timingWindows.size(), 2);
    timingWindows[0]->DocumentChanged = true;
    timingWindows[1]->DocumentChanged = true;
    QPointer<FakeDocumentWindow> first = timingWindows[0];
    QPointer<FakeDocumentWindow> second = timingWindows[1];
    frame->show();
    prompt.Answers = { MsgBoxResult::No, MsgBoxResult::Cancel };
    EXPECT_FALSE(frame->close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(prompt.Messages(),
        QStringList({ QStringLiteral("保存所做的修改吗?"), QStringLiteral("保存所做的修改吗?") }));
    EXPECT_TRUE(first.isNull());
    ASSERT_FALSE(second.isNull());
    EXPECT_TRUE(frame->isVisible());
    EXPECT_TRUE(GetSetting(QStringLiteral("Startup"), QStringLiteral("Width")).isEmpty());

    prompt.Answers = { MsgBoxResult::Yes };
    EXPECT_TRUE(frame->close());
    EXPECT_EQ(second.isNull() ? 1 : second->Saves, 1);
    EXPECT_FALSE(GetSetting(QStringLiteral("Startup"), QStringLiteral("Width")).isEmpty());
}

TEST_F(ShellWindows, PlayerWindowOverAStandInControl)
{
    QSignalSpy created(frame.get(), &MdiVelmar::PlayerCreated);
    QSignalSpy renamed(frame.get(), &MdiVelmar::PlayerNameChanged);
    QSignalSpy destroyed(frame.get(), &MdiVelmar::PlayerDestroyed);
    media.MediaWidth = 0; // a file without a size opens a 640 by 480 picture
    ASSERT_NE(frame->OpenFileByType(QStringLiteral("/v/clip.mkv")), nullptr);
    frmPlayer *player = onlyPlayer();
    ASSERT_NE(player, nullptr);
    EXPECT_EQ(created.size(), 1);
    EXPECT_EQ(renamed.size(), 1);
    EXPECT_EQ(player->Tag(), QStringLiteral("1"));
    EXPECT_EQ(player->FittedPicture(), QSize(640, 240));
    EXPECT_FALSE(media.AutoStart);
    EXPECT_TRUE(media.ShowFrame);
    EXPECT_EQ(player->Button(QStringLiteral("SmallBack"))->toolTip(), QStringLiteral("后退3秒(F4)"));

    // Speed band: the asked speed is clamped, the tip is not.
    QSignalSpy speed(player, &frmPlayer::SpeedChanged);
    player->cmbAviSpeed->setCurrentIndex(4);
    player->sldAviSpeed->setValue(20);
    ASSERT_GE(speed.size(), 1);
    EXPECT_DOUBLE_EQ(speed.last().at(0).toDouble(), 2.0);
    EXPECT_EQ(player->sldAviSpeed->toolTip(), QStringLiteral("播放速度1000%"));
    player->sldAviSpeed->setValue(0);
    EXPECT_DOUBLE_EQ(speed.last().at(0).toDouble(), 0.1);
    EXPECT_EQ(player->sldAviSpeed->toolTip(), QStringLiteral("播放速度0%"));

    // Keys: F3 plays and pauses, F6 jumps; another key passes.
    media.Calls.clear();
    QTest::keyClick(player, Qt::Key_F3);
    EXPECT_EQ(media.playState(), MediaPlayState::Playing);
    QTest::keyClick(player, Qt::Key_F6);
    EXPECT_TRUE(media.Calls.contains(QStringLiteral("seek 3")));
    QTest::keyClick(player, Qt::Key_F3);
    EXPECT_EQ(media.playState(), MediaPlayState::Paused);

    // Clicks: the position panel and the event, from 1; with MousePause the play toggles.
    QSignalSpy pos(player, &frmPlayer::PosSelected);
    media.ClickAt(1, 0, 0, 0);
    ASSERT_EQ(pos.size(), 1);
    EXPECT_EQ(pos[0].at(0).toInt(), 1);
    EXPECT_EQ(pos[0].at(1).toInt(), 1);
    EXPECT_EQ(frame->PanelText(QStringLiteral("Position")), QStringLiteral(" X=1  Y=1  "));
    EXPECT_EQ(media.playState(), MediaPlayState::Playing);
    player->Button(QStringLiteral("MousePause"))->setChecked(false);
    media.ClickAt(1, 0, 99, 41);
    EXPECT_EQ(frame->PanelText(QStringLiteral("Position")), QStringLiteral(" X=100  Y=42  "));
    EXPECT_EQ(media.playState(), MediaPlayState::Playing);

    player->Button(QStringLiteral("SaveSpace"))->setChecked(true);
    EXPECT_EQ(media.uiMode(), QStringLiteral("none"));
    player->Button(QStringLiteral("SaveSpace"))->setChecked(false);
    EXPECT_EQ(media.uiMode(), QStringLiteral("full"));

    EXPECT_FALSE(player->SaveFile(false, 0));
    frame->MdiArea()->closeAllSubWindows();
    EXPECT_EQ(destroyed.size(), 1);
    EXPECT_EQ(Velmar->Players()->Count(), 0);
}

TEST_F(ShellWindows, FrameCommandsGoToEveryPlayerWhenNoPlayerIsActive)
{
    frame->OpenFileByType(QStringLiteral("/v/clip.avi"));
    frame->NewDocument(0);
    frame->MdiArea()->setActiveSubWindow(frame->MdiArea()->subWindowList(QMdiArea::CreationOrder).last());
    media.Calls.clear();
    frame->PlayPause();
    EXPECT_EQ(media.playState(), MediaPlayState::Playing);
    frame->PlayForword();
    EXPECT_TRUE(media.Calls.contains(QStringLiteral("seek 3")));
}

TEST_F(ShellWindows, RecentEntriesShowOpenAndAreAnnounced)
{
    CRecentFile recent;
    RecentFile = &recent;
    frame->AttachRecentFile(&recent);
    QSignalSpy changed(frame.get(), &MdiVelmar::RecentFilesChanged);
    recent.Init(3);
    EXPECT_FALSE(frame->mnuFileRecent.first()->isVisible());
    frame->OpenFileByType(QStringLiteral("/v/clip.avi"));
    ASSERT_GE(frame->mnuFileRecent.size(), 1);
    EXPECT_TRUE(frame->mnuFileRecent.first()->isVisible());
    EXPECT_EQ(frame->mnuFileRecent.first()->text(), QStringLiteral("1: 动画: /v/clip.avi"));

    recent.InsertRecentFileList(QStringLiteral("/w/a.srt"), ScriptType::SRT);
    ASSERT_EQ(frame->mnuFileRecent.size(), 3);
    EXPECT_EQ(frame->mnuFileRecent[0]->text(), QStringLiteral("1: 时间轴: /w/a.srt"));
    EXPECT_FALSE(frame->mnuFileRecent[2]->isVisible());
    // Other windows with a File menu hear of each change and read the same entries.
    EXPECT_GE(changed.size(), 3);
    ASSERT_EQ(frame->RecentEntries().size(), 3u);
    EXPECT_EQ(frame->RecentEntries()[0].Caption, QStringLiteral("1: 时间轴: /w/a.srt"));
    frame->mnuFileRecent[0]->trigger();
    ASSERT_EQ(timingWindows.size(), 1);
    EXPECT_EQ(timingWindows[0]->Opened, QStringList { QStringLiteral("/w/a.srt") });
    frame->AttachRecentFile(nullptr);
    RecentFile = nullptr;
}

TEST_F(ShellWindows, AutoSaveTickWritesOpenDocumentsAndTellsTheStatusBar)
{
    SaveSetting(QStringLiteral("AutoSave"), QStringLiteral("Interval"), QStringLiteral("1"));
    frame->Init(Velmar);
    frame->NewDocument(0);
    frame->AutoSaveTick();
    ASSERT_EQ(frame->AutoSave().Written.size(), 1);
    EXPECT_TRUE(frame->PanelText(QStringLiteral("Message")).startsWith(QStringLiteral("已自动保存文件: ")));
    QFile written(frame->AutoSave().Written.first());
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), QByteArray("draft text"));
    EXPECT_TRUE(frame->timAutoSave->isActive());
    EXPECT_EQ(frame->timAutoSave->interval(), 1000);
}

TEST_F(ShellWindows, SettingDialogBindsItsModel)
{
    CSettingDialogModel model;
    AutoSaveSettings autoSave;
    model.Init(*HotKeys, autoSave);
    frmSetting dialog(model, &autoSave);
    EXPECT_EQ(dialog.cmbHotKey[3]->currentText(), QStringLiteral("F8"));
    EXPECT_TRUE(dialog.txtAutoSaveTime->isEnabled());
    dialog.chkAutoSave->setChecked(false);
    EXPECT_FALSE(dialog.txtAutoSaveTime->isEnabled());
    EXPECT_FALSE(dialog.lblAutoDel->isEnabled());
    dialog.chkAutoSave->setChecked(true);

    // A key pressed in an entry selects its name there.
    QTest::keyClick(dialog.cmbHotKey[4], Qt::Key_F8);
    EXPECT_EQ(dialog.cmbHotKey[4]->currentText(), QStringLiteral("F8"));
    EXPECT_FALSE(dialog.OK());
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("有重复定义的快捷键,请重新选择"));

    dialog.txtAutoSaveTime->setText(QStringLiteral("5"));
    dialog.cmbHotKey[4]->setCurrentText(QStringLiteral("F7"));
    EXPECT_FALSE(dialog.OK());
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("自动保存间隔时间请设置10秒以上"));

    dialog.txtAutoSaveTime->setText(QStringLiteral("60"));
    dialog.chkClipBoard->setChecked(true);
    EXPECT_TRUE(dialog.OK());
    EXPECT_EQ(HotKeys->HOTKEY_TimingEndTime(), KeyNameToCode(u"F7"));
    EXPECT_EQ(autoSave.AutoSaveTime, 60);
    EXPECT_TRUE(AutoGetClipBoard);
    // The frame shows the new key at once.
    EXPECT_EQ(frame->PanelText(QStringLiteral("EndPoint")), QStringLiteral("F7:  插入结束时间点"));

    // Modern files: off by default, on with their box.
    EXPECT_EQ(dialog.chkModernFiles->text(), QStringLiteral("兼容现代文件"));
    EXPECT_FALSE(dialog.chkModernFiles->isChecked());
    dialog.chkModernFiles->setChecked(true);
    EXPECT_TRUE(dialog.OK());
    EXPECT_TRUE(ModernFiles);
    ModernFiles = false;
}

TEST_F(ShellWindows, SettingDialogFromTheFrameSwitchesTheClipboardWatch)
{
    frame->RunSettingDialog = [](CSettingDialogModel &m, AutoSaveSettings &autoSave) {
        frmSetting dialog(m, &autoSave);
        dialog.chkClipBoard->setChecked(true);
        dialog.chkAutoSave->setChecked(false);
        EXPECT_TRUE(dialog.OK());
    };
    EXPECT_FALSE(frame->WatchingClipboard());
    frame->ShowSettingDialog();
    EXPECT_TRUE(frame->WatchingClipboard());
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("由于改变了监视剪贴板的设置，请重新启动Velmar"));
    EXPECT_FALSE(frame->timAutoSave->isActive());
}

TEST_F(ShellWindows, TimeDialogBindsItsModel)
{
    CSliderTimeModel model;
    model.setValue(-75.5);
    model.setTitle(QStringLiteral("标题"));
    model.setDescription(QStringLiteral("说明"));
    model.setEnableHour(false);
    frmSliderTime dialog(model);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("选择时间值"));
    EXPECT_EQ(dialog.lblTitle->text(), QStringLiteral("标题"));
    EXPECT_EQ(dialog.cmdSign->text(), QStringLiteral("-"));
    EXPECT_EQ(dialog.txtField[1]->text(), QStringLiteral("01"));
    EXPECT_EQ(dialog.txtField[2]->text(), QStringLiteral("15"));
    EXPECT_EQ(dialog.txtField[3]->text(), QStringLiteral("50"));
    EXPECT_FALSE(dialog.txtField[0]->isEnabled());
    EXPECT_EQ(dialog.cmdOK->text(), QStringLiteral("确定"));

    dialog.txtField[1]->setText(QStringLiteral("70"));
    EXPECT_FALSE(dialog.OK());
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("分钟的范围在0-59之内"));
    dialog.txtField[1]->setText(QStringLiteral("2"));
    dialog.cmdSign->click();
    dialog.updField[3]->setValue(5);
    EXPECT_EQ(dialog.txtField[3]->text(), QStringLiteral("05"));
    EXPECT_TRUE(dialog.OK());
    EXPECT_FALSE(model.Cancelled);
    EXPECT_DOUBLE_EQ(model.Value(), 135.05);
    // Escape cancels.
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(model.Cancelled);
    // Letters typed into a box are dropped.
    dialog.txtField[2]->setText(QString());
    QTest::keyClicks(dialog.txtField[2], QStringLiteral("4x2"));
    EXPECT_EQ(dialog.txtField[2]->text(), QStringLiteral("42"));
}

TEST_F(ShellWindows, SliderDialogBindsItsModel)
{
    CSliderModel model;
    model.Init(0, 10, 0.5);
    frmSlider dialog(model);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("移动值的设定"));
    EXPECT_EQ(dialog.sldOffset->maximum(), model.SliderMax());
    EXPECT_EQ(dialog.sldOffset->value(), model.SliderPosition());
    dialog.sldOffset->setValue(3);
    EXPECT_DOUBLE_EQ(model.CurValue(), 1.5);
    EXPECT_EQ(dialog.sldOffset->toolTip(), QStringLiteral("移动值:1.50"));
    dialog.cmdCancel->click();
    EXPECT_TRUE(model.Cancelled);
}

TEST_F(ShellWindows, InitRestoresGeometryAndTheOnTopState)
{
    frame.reset();
    StartupGeometry g;
    g.Left = 30;
    g.Top = 40;
    g.Width = 900;
    g.Height = 650;
    SaveStartupGeometry(g);
    SaveSetting(QStringLiteral("Setting"), QStringLiteral("OnTop"), QStringLiteral("1"));
    SaveSetting(QStringLiteral("Setting"), QStringLiteral("AutoGetClipBoard"), QStringLiteral("1"));
    SaveSetting(QStringLiteral("AutoSave"), QStringLiteral("Enabled"), QStringLiteral("0"));
    frame = std::make_unique<MdiVelmar>();
    frame->Init(Velmar);
    EXPECT_EQ(frame->geometry(), QRect(30, 40, 900, 650));
    EXPECT_TRUE(frame->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(frame->WatchingClipboard());
    EXPECT_FALSE(frame->timAutoSave->isActive());
}

TEST_F(ShellWindows, TimingDocumentsSaveThroughTheirWindows)
{
    IForm *form = frame->NewDocument(0);
    CTiming *doc = Velmar->Timings()->Create(dynamic_cast<QObject *>(form));
    doc->TimingWindow = dynamic_cast<QObject *>(form);
    Velmar->Timings()->SaveFile();
    ASSERT_EQ(timingWindows.size(), 1);
    EXPECT_EQ(timingWindows[0]->Saves, 1);
}

TEST_F(ShellWindows, DragOnThePictureGivesPixelsFromOne)
{
    // The window's own video control, with no media: the picture area maps one to one.
    frmPlayer player;
    player.resize(400, 300);
    player.show();
    QWidget *media = player.findChild<QWidget *>(QStringLiteral("medPlayer"));
    ASSERT_NE(media, nullptr);
    QWidget *picture = media->findChildren<QWidget *>(Qt::FindDirectChildrenOnly).value(0);
    ASSERT_NE(picture, nullptr);
    QSignalSpy start(&player, &frmPlayer::StartPosSelected);
    QSignalSpy end(&player, &frmPlayer::EndPosSelected);
    // (0, 0) would be read by the test driver as "the centre".
    QTest::mousePress(picture, Qt::LeftButton, Qt::NoModifier, QPoint(0, 1));
    QTest::mouseRelease(picture, Qt::LeftButton, Qt::NoModifier, QPoint(9, 4));
    ASSERT_EQ(start.size(), 1);
    EXPECT_EQ(start[0].at(0).toInt(), 1);
    EXPECT_EQ(start[0].at(1).toInt(), 2);
    ASSERT_EQ(end.size(), 1);
    EXPECT_EQ(end[0].at(0).toInt(), 10);
    EXPECT_EQ(end[0].at(1).toInt(), 5);
}

TEST_F(ShellWindows, APlayerWhoseOpenIsCancelledGoesAgain)
{
    MdiVelmar own; // with the frame's own player window and video control
    own.Init(Velmar);
    QSignalSpy created(&own, &MdiVelmar::PlayerCreated);
    QSignalSpy destroyed(&own, &MdiVelmar::PlayerDestroyed);
    EXPECT_EQ(own.OpenDocument(3), nullptr); // the file dialog is cancelled
    EXPECT_EQ(created.size(), 1);
    EXPECT_EQ(destroyed.size(), 1);
    EXPECT_TRUE(own.DocumentWindows().isEmpty());
    EXPECT_EQ(Velmar->Players()->Count(), 0);
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(ShellWindows, AFileThatOpensLateResizesTheWindowAgain)
{
    media.OpenLate = true;
    media.MediaWidth = 400;
    media.MediaHeight = 300;
    frame->OpenFileByType(QStringLiteral("/v/late.wmv"));
    frmPlayer *player = onlyPlayer();
    ASSERT_NE(player, nullptr);
    EXPECT_EQ(player->FittedPicture(), QSize(640, 480)); // no size known yet
    auto *sub = qobject_cast<QMdiSubWindow *>(player->parentWidget());
    ASSERT_NE(sub, nullptr);
    const int wideWidth = sub->width();
    media.FinishOpen();
    EXPECT_EQ(player->FittedPicture(), QSize(400, 300));
    EXPECT_EQ(wideWidth - sub->width(), 240);
    EXPECT_EQ(player->Caption(), QStringLiteral("/v/late.wmv"));
}
