// The timing window's wiring: keys reach the capture, the editor follows the cell, files
// go in and out by name, the close question and the one-of-a-kind child windows.
#include "../player/WaveformMedia.h"
#include "core/CHotKeys.h"
#include "core/CScriptedPrompt.h"
#include "core/CUndoStack.h"
#include "core/IPlayerWindow.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "core/basTime.h"
#include "formats/CTiming.h"
#include "formats/CTimings.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayer.h"
#include "player/CPlayers.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "timing/CSliderTimeModel.h"
#include "timing/CTimingGrid.h"
#include "ui/CSpreadView.h"
#include "ui/CWaveformStrip.h"
#include "ui/MdiVelmar.h"
#include "ui/frmCheckTiming.h"
#include "ui/frmFileOption.h"
#include "ui/frmFindSpread.h"
#include "ui/frmTiming.h"
#include <QSplitter>

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

class FakePlayerWindow : public QObject, public IPlayerWindow
{
public:
    QString Tag() const override { return m_tag; }
    void setTag(const QString &tag) override { m_tag = tag; }
    QString Caption() const override { return m_caption; }
    void setCaption(const QString &caption) override { m_caption = caption; }
    CPlayer *player() const override { return Velmar->Players()->Item(m_tag); }

private:
    QString m_tag;
    QString m_caption;
};

const char16_t *const ScriptText
    = u"[Script Info]\r\nScriptType: v4.00+\r\n\r\n"
      u"[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, "
      u"SecondaryColour, OutlineColour, BackColour, Bold, Italic, Underline, "
      u"StrikeOut, ScaleX, ScaleY, Spacing, Angle, BorderStyle, Outline, Shadow, "
      u"Alignment, MarginL, MarginR, MarginV, Encoding\r\n"
      u"Style: Default,simhei,18,&H00ffffff,&H0000ffff,&H00000000,&H80000000,-1,0,0,"
      u"0,100,100,0,0.00,1,2,3,2,20,20,25,134\r\n\r\n"
      u"[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, "
      u"MarginV, Effect, Text\r\n"
      u"Dialogue: 0,0:00:00.00,0:00:00.00,Default,,0000,0000,0000,,第一句\r\n"
      u"Dialogue: 0,0:00:00.00,0:00:00.00,Default,,0000,0000,0000,,第二句\r\n"
      u"Dialogue: 0,0:00:00.00,0:00:00.00,Default,,0000,0000,0000,,第三句\r\n";

// A started core with a playing fake film chosen as the player of a new timing window.
class TimingWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartCore();
        SetPrompt(&prompt);
        HotKeys->setHOTKEY_TimingTime(118); // F7
        HotKeys->setHOTKEY_TimingStartTime(119); // F8
        HotKeys->setHOTKEY_TimingEndTime(120); // F9
        control.MediaDuration = 600;
        Velmar->Players()->Create(&playerWindow, &control);
        control.setPlayStateDirect(3);
        form = std::make_unique<frmTiming>();
        form->Init(Velmar);
        doc = form->Document();
        scriptPath = dir.filePath(QStringLiteral("episode.ass"));
        WriteTextFile(scriptPath, QString::fromUtf16(ScriptText), true);
    }
    void TearDown() override
    {
        prompt.DefaultYesNo = MsgBoxResult::No;
        prompt.Answers.clear();
        prompt.Answers.push_back(MsgBoxResult::No);
        form.reset();
        SetPrompt(nullptr);
    }

    CSpread &grid() { return form->Grid().Spread(); }
    QString cell(int col, int row) { return grid().GetText(col, row); }
    void activate(int col, int row)
    {
        grid().setRow(row);
        grid().setCol(col);
        grid().ActivateCell();
    }
    void key(Qt::Key k, double at)
    {
        control.setPositionDirect(at);
        QTest::keyClick(form->spdTiming, k);
    }
    static QString read(const QString &path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? DecodeWholeFile(f.readAll(), true).Text : QString();
    }

    QTemporaryDir dir;
    QString scriptPath;
    CScriptedPrompt prompt;
    CFakeMediaControl control;
    FakePlayerWindow playerWindow;
    std::unique_ptr<frmTiming> form;
    CTiming *doc = nullptr;
};

} // namespace

TEST_F(TimingWindowTest, OpenStampWithKeysAndSaveAsSrtAndAss)
{
    ASSERT_EQ(form->cmbPlayer->count(), 1);
    EXPECT_EQ(doc->PlayerWindow(), &playerWindow);
    ASSERT_TRUE(form->OpenFile(0, scriptPath));
    EXPECT_FALSE(doc->Changed());
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 2), QStringLiteral("第二句"));
    EXPECT_TRUE(form->windowTitle().endsWith(scriptPath));

    activate(CTimingGrid::ColStartTime, 1);
    key(Qt::Key_F8, 1.0);
    key(Qt::Key_F9, 2.5);
    // The end key leaves the cursor on the start of the next row: the time-point key
    // stamps whichever time cell is active.
    EXPECT_EQ(grid().ActiveRow(), 2);
    key(Qt::Key_F7, 3.0);
    key(Qt::Key_F7, 4.25);
    key(Qt::Key_F8, 5.0);
    key(Qt::Key_F9, 6.0);
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 1), QStringLiteral("0:00:01.00"));
    EXPECT_EQ(cell(CTimingGrid::ColEndTime, 1), QStringLiteral("0:00:02.50"));
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 2), QStringLiteral("0:00:03.00"));
    EXPECT_EQ(cell(CTimingGrid::ColEndTime, 2), QStringLiteral("0:00:04.25"));
    EXPECT_EQ(cell(CTimingGrid::ColEndTime, 3), QStringLiteral("0:00:06.00"));
    EXPECT_TRUE(doc->Changed());

    const QString srt = dir.filePath(QStringLiteral("episode.srt"));
    doc->setFileName(srt);
    doc->setScriptType(ScriptType::SRT);
    ASSERT_TRUE(form->SaveFile(false));
    EXPECT_FALSE(doc->Changed());
    EXPECT_EQ(read(srt),
        QStringLiteral("1\r\n00:00:01,000 --> 00:00:02,500\r\n第一句\r\n\r\n"
                       "2\r\n00:00:03,000 --> 00:00:04,250\r\n第二句\r\n\r\n"
                       "3\r\n00:00:05,000 --> 00:00:06,000\r\n第三句\r\n\r\n"));

    const QString ass = dir.filePath(QStringLiteral("out.ass"));
    doc->setFileName(ass);
    doc->setScriptType(ScriptType::ASS);
    // Ctrl+S is the window's own key: the grid never sees it.
    QTest::keyClick(form->spdTiming, Qt::Key_S, Qt::ControlModifier);
    const QString written = read(ass);
    EXPECT_TRUE(written.contains(QRegularExpression(
        QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.50,\\*?Default,,0000,0000,0000,,第一句\r\n"))));
    EXPECT_TRUE(written.contains(QRegularExpression(
        QStringLiteral("Dialogue: 0,0:00:05.00,0:00:06.00,\\*?Default,,0000,0000,0000,,第三句\r\n"))));
    EXPECT_TRUE(written.contains(QStringLiteral("[Script Info]")));
}

TEST_F(TimingWindowTest, EditorFollowsTheActiveCellAndWritesBack)
{
    grid().SetText(CTimingGrid::ColDialog, 1, QStringLiteral("上\\N下"));
    activate(CTimingGrid::ColDialog, 1);
    EXPECT_TRUE(form->rtfEdit->isEnabled());
    EXPECT_EQ(form->rtfEdit->toPlainText(), QStringLiteral("上\n下"));
    EXPECT_FALSE(doc->Changed());

    form->rtfEdit->setPlainText(QStringLiteral("一\n二"));
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 1), QStringLiteral("一\\N二"));
    EXPECT_EQ(form->rtfShadow->toPlainText(), QStringLiteral("一\n二"));

    activate(CTimingGrid::ColStartTime, 1);
    form->rtfEdit->setPlainText(QStringLiteral(" 0:00:01.00\n"));
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 1), QStringLiteral("0:00:01.00"));

    activate(CTimingGrid::ColStyle, 1);
    EXPECT_FALSE(form->rtfEdit->isEnabled());
    EXPECT_TRUE(form->rtfEdit->toPlainText().isEmpty());

    // Moving onto the last row makes a new one behind it.
    const int rows = grid().MaxRows();
    activate(CTimingGrid::ColDialog, rows);
    EXPECT_EQ(grid().MaxRows(), rows + 1);
}

TEST_F(TimingWindowTest, RowHeaderDoubleClickTogglesTheChangedMark)
{
    emit form->spdTiming->RowHeaderDoubleClicked(2);
    EXPECT_TRUE(form->Grid().RowChanged(2));
    EXPECT_EQ(grid().GetForeColor(CTimingGrid::ColDialog, 2), CTimingGrid::ChangedForeColor);
    emit form->spdTiming->RowHeaderDoubleClicked(2);
    EXPECT_FALSE(form->Grid().RowChanged(2));
}

TEST_F(TimingWindowTest, OpeningOverChangesAndClosingAskFirst)
{
    ASSERT_TRUE(form->OpenFile(0, scriptPath));
    grid().SetText(CTimingGrid::ColDialog, 1, QStringLiteral("改过"));
    doc->setChanged(true);
    prompt.Answers.push_back(MsgBoxResult::Cancel);
    EXPECT_FALSE(form->OpenFile(0, scriptPath));
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 1), QStringLiteral("改过"));

    // A missing file: the message, the document as it was.
    prompt.Answers.push_back(MsgBoxResult::No);
    EXPECT_FALSE(form->OpenFile(0, dir.filePath(QStringLiteral("none.ass"))));
    EXPECT_TRUE(prompt.Records.last().Prompt.startsWith(QStringLiteral(" 无法打开文件。 ")));
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 1), QStringLiteral("改过"));

    QWidget *check = nullptr;
    form->MakeCheckWindow = [&check](frmTiming &) { return check = new QWidget; };
    form->Button(QStringLiteral("Check"))->trigger();
    form->Button(QStringLiteral("Check"))->trigger();
    EXPECT_EQ(prompt.Records.last().Prompt, QStringLiteral("检查时间轴窗口已经存在"));
    ASSERT_TRUE(check);
    check->setAttribute(Qt::WA_DeleteOnClose);

    const qsizetype open = Velmar->Timings()->Count();
    doc->setChanged(true);
    prompt.Answers.push_back(MsgBoxResult::Cancel);
    EXPECT_FALSE(form->close());
    EXPECT_EQ(Velmar->Timings()->Count(), open);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(form->CheckWindow.isNull()); // closed before the question, and stays closed

    prompt.Answers.push_back(MsgBoxResult::No);
    EXPECT_TRUE(form->close());
    EXPECT_EQ(Velmar->Timings()->Count(), open - 1);
    EXPECT_EQ(form->Document(), nullptr);
}

TEST_F(TimingWindowTest, ButtonsCarryTheirTipsAndTheKaraokeNeedsATranslation)
{
    EXPECT_EQ(form->Button(QStringLiteral("Open"))->toolTip(), QStringLiteral("打开文件"));
    EXPECT_EQ(form->Button(QStringLiteral("Check"))->toolTip(), QStringLiteral("检查时间轴"));
    EXPECT_TRUE(
        form->Button(QStringLiteral("TimeOffsetForword"))->toolTip().contains(QStringLiteral("+0.1")));
    EXPECT_TRUE(form->cmdInsertTimePoint->text().contains(QStringLiteral("F7")));
    EXPECT_FALSE(form->Button(QStringLiteral("KaraOK"))->isEnabled());
    form->Button(QStringLiteral("Preview"))->trigger();
    EXPECT_TRUE(form->timPreview->isActive());
    EXPECT_EQ(form->timPreview->interval(), 100);
    form->Button(QStringLiteral("StepPause"))->trigger();
    EXPECT_TRUE(doc->StepPause);
}

TEST_F(TimingWindowTest, CtrlZAndCtrlYTakeGridStepsBackAndForthButNotInTheCellEditor)
{
    ASSERT_TRUE(form->OpenFile(0, scriptPath));
    QAction *undo = form->Button(QStringLiteral("Undo"));
    QAction *redo = form->Button(QStringLiteral("Redo"));
    ASSERT_TRUE(undo && redo);
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_FALSE(redo->isEnabled());
    // The keys come before every hot key: a start key "Z" still stamps, Ctrl+Z does not.
    HotKeys->setHOTKEY_TimingStartTime('Z');
    activate(CTimingGrid::ColStartTime, 1);
    control.setPositionDirect(3.0);
    QTest::keyClick(form->spdTiming, Qt::Key_Z);
    const QString stamped = cell(CTimingGrid::ColStartTime, 1);
    EXPECT_NE(stamped, QStringLiteral("0:00:00.00"));
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_EQ(undo->toolTip(), Msg("VELMAR_UNDO_104").arg(Msg("VELMAR_UNDO_203")));
    EXPECT_TRUE(doc->Changed());

    QTest::keyClick(form->spdTiming, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 1), QStringLiteral("0:00:00.00"));
    EXPECT_EQ(grid().ActiveCol(), CTimingGrid::ColStartTime);
    EXPECT_FALSE(doc->Changed());
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_TRUE(redo->isEnabled());
    QTest::keyClick(form->spdTiming, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 1), stamped);
    EXPECT_TRUE(doc->Changed());
    undo->trigger();
    QTest::keyClick(form->spdTiming, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 1), stamped);

    // Lines typed into the editor go back in one step, and the editor shows the cell.
    activate(CTimingGrid::ColDialog, 2);
    form->rtfEdit->setPlainText(QStringLiteral("新"));
    form->rtfEdit->setPlainText(QStringLiteral("新的"));
    form->rtfEdit->setPlainText(QStringLiteral("新的一句"));
    undo->trigger();
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 2), QStringLiteral("第二句"));
    EXPECT_EQ(form->rtfEdit->toPlainText(), QStringLiteral("第二句"));

    // The popup opens with the two entries, enabled as the buttons are.
    const QList<QAction *> entries = form->mnuPopup->actions();
    ASSERT_GE(entries.size(), 3);
    EXPECT_EQ(entries.at(0)->objectName(), QStringLiteral("mnuTimingUndo"));
    EXPECT_EQ(entries.at(0)->text(), Msg("VELMAR_UNDO_102"));
    EXPECT_EQ(entries.at(1)->objectName(), QStringLiteral("mnuTimingRedo"));
    emit form->mnuPopup->aboutToShow();
    EXPECT_EQ(entries.at(0)->isEnabled(), undo->isEnabled());
    EXPECT_TRUE(entries.at(1)->isEnabled());
    entries.at(1)->trigger();
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 2), QStringLiteral("新的一句"));

    // In the open cell editor Ctrl+Z is the editor's: the grid keeps its steps.
    const int steps = doc->UndoStack().Index();
    activate(CTimingGrid::ColDialog, 3);
    grid().setEditMode(true);
    QWidget *editor = form->spdTiming->findChild<QLineEdit *>();
    ASSERT_TRUE(editor);
    control.setPositionDirect(9.0);
    QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(doc->UndoStack().Index(), steps);
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 2), QStringLiteral("新的一句"));
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 1), stamped);
    grid().setEditMode(false);
}

// The waveform strip under the edit box: off, the window is as it always was; on, it reads
// the linked player's audio, a click seeks, a double-click plays the line, and an edge
// dragged sets the active row's time as one undo step.
TEST_F(TimingWindowTest, WaveformStripReadsThePlayersAudioAndADraggedEdgeIsOneStep)
{
    QTemporaryDir media;
    const QString wav = WaveformMedia::Make({ WaveformMedia::BurstSource({ 1.0, 3.0 }, 6, 22050) },
        { QStringLiteral("-c:a"), QStringLiteral("pcm_s16le") },
        media.filePath(QStringLiteral("bursts.wav")));
    if (wav.isEmpty())
        GTEST_SKIP() << "ffmpeg is not installed";
    ASSERT_TRUE(form->OpenFile(0, scriptPath));
    control.setURL(wav);
    control.setPlayStateDirect(3);
    form->show();
    QAction *toggle = form->Button(QStringLiteral("Waveform"));
    ASSERT_TRUE(toggle);
    EXPECT_FALSE(toggle->isChecked());
    EXPECT_EQ(toggle->toolTip(), Msg("VELMAR_WAVE_601"));
    QCoreApplication::processEvents();
    const QRect gridAlone = form->spdTiming->geometry();
    EXPECT_EQ(form->wavStrip, nullptr);
    EXPECT_EQ(gridAlone.height(), form->splWaveform->height());

    activate(CTimingGrid::ColStartTime, 2);
    key(Qt::Key_F8, 1.0);
    key(Qt::Key_F9, 1.6);
    activate(CTimingGrid::ColStartTime, 2);
    control.setPositionDirect(1.5);
    toggle->trigger();
    ASSERT_TRUE(form->wavStrip && form->wavStrip->isVisible());
    EXPECT_EQ(GetSetting(QStringLiteral("Setting"), QStringLiteral("TimingWaveform")), QStringLiteral("1"));
    QTRY_VERIFY_WITH_TIMEOUT(!form->WaveformLoading(), 30000);
    EXPECT_EQ(form->wavStrip->Message().toStdString(), "");
    EXPECT_LT(form->spdTiming->height(), gridAlone.height());

    // The end edge dragged from 1.6 s to about 2.3 s.
    CWaveformView &view = form->wavStrip->View();
    const int y = form->wavStrip->height() / 2;
    const int from = qRound(view.XAt(1.6));
    const int to = qRound(view.XAt(2.3));
    const double dropped = view.DragTime(WaveformEdge::End, to, WaveformSpan { 1.0, 1.6 });
    EXPECT_NEAR(dropped, 2.3, 0.05);
    const int steps = doc->UndoStack().Index();
    QTest::mousePress(form->wavStrip, Qt::LeftButton, {}, QPoint(from, y));
    QTest::mouseMove(form->wavStrip, QPoint((from + to) / 2, y));
    QTest::mouseRelease(form->wavStrip, Qt::LeftButton, {}, QPoint(to, y));
    EXPECT_EQ(cell(CTimingGrid::ColEndTime, 2), TimeToString(dropped, 2));
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 2), QStringLiteral("0:00:01.00"));
    EXPECT_EQ(grid().ActiveRow(), 2);
    EXPECT_EQ(doc->UndoStack().Index(), steps + 1);
    EXPECT_EQ(doc->UndoStack().UndoText(), Msg("VELMAR_UNDO_206"));
    form->historyStep(false);
    EXPECT_EQ(cell(CTimingGrid::ColEndTime, 2), QStringLiteral("0:00:01.60"));
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 2), QStringLiteral("0:00:01.00"));

    // A click seeks; a double-click plays the line and the strip pauses it at its end.
    QTest::mouseClick(form->wavStrip, Qt::LeftButton, {}, QPoint(qRound(view.XAt(4.0)), y));
    EXPECT_NEAR(control.currentPosition(), 4.0, 0.05);
    control.setPositionDirect(1.5);
    form->wavStrip->setPosition(1.5);
    QTest::mouseDClick(form->wavStrip, Qt::LeftButton, {}, QPoint(qRound(view.XAt(1.3)), y));
    EXPECT_DOUBLE_EQ(control.currentPosition(), 1.0);
    EXPECT_EQ(control.playState(), 3);
    control.setPositionDirect(1.65);
    QTRY_COMPARE_WITH_TIMEOUT(control.playState(), 2, 2000);

    // Off again: the window is as it was, and the setting remembers it.
    toggle->trigger();
    QCoreApplication::processEvents();
    EXPECT_FALSE(form->wavStrip->isVisible());
    EXPECT_EQ(form->spdTiming->geometry(), gridAlone);
    EXPECT_EQ(GetSetting(QStringLiteral("Setting"), QStringLiteral("TimingWaveform")), QStringLiteral("0"));
}

TEST_F(TimingWindowTest, TheFrameMakesTimingWindowsThatHearItsPlayers)
{
    MdiVelmar frame;
    frame.Init(Velmar);
    frmTiming::Register(frame);
    auto *made = dynamic_cast<frmTiming *>(frame.NewDocument(0));
    ASSERT_TRUE(made);
    // The frame's auto-save finds it and reads its script.
    auto *saved = dynamic_cast<IAutoSaveDocument *>(frame.ActiveDocument());
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->AutoSaveKind(), IAutoSaveDocument::Timing);
    EXPECT_TRUE(saved->Content().contains(QStringLiteral("[Events]")));
    EXPECT_EQ(frame.ActiveDocument(), made);
    FakePlayerWindow second;
    CFakeMediaControl secondControl;
    Velmar->Players()->Create(&second, &secondControl);
    frame.OpenPlayer(&second);
    EXPECT_EQ(made->cmbPlayer->count(), 2);
    frame.ClosePlayer(&playerWindow);
    EXPECT_EQ(made->cmbPlayer->count(), 1);
    EXPECT_EQ(made->Document()->PlayerWindow(), nullptr);
    made->Document()->setChanged(false);
}

TEST_F(TimingWindowTest, PopupMenuFollowsTheSelection)
{
    grid().SetSelection({ CSpreadBlock { 1, 3, 2, 3 } });
    emit form->mnuPopup->aboutToShow();
    auto action = [this](const char *name) {
        return form->mnuPopup->findChild<QAction *>(QString::fromLatin1(name));
    };
    EXPECT_TRUE(action("mnuTimingAjustTime")->isEnabled());
    EXPECT_TRUE(action("mnuTimingInsertLine")->isEnabled());
    EXPECT_TRUE(action("mnuTimingIncreace")->isEnabled());
    grid().SetSelection({ CSpreadBlock { 1, 15, 1, 15 }, CSpreadBlock { 3, 15, 3, 15 } });
    emit form->mnuPopup->aboutToShow();
    EXPECT_FALSE(action("mnuTimingAjustTime")->isEnabled());
    EXPECT_FALSE(action("mnuTimingDeleteTimeLine")->isEnabled());
    EXPECT_TRUE(action("mnuTimingEffect")->isEnabled());
}

TEST_F(TimingWindowTest, CheckAndFindWindowsWorkOnTheGridOneEach)
{
    auto row = [this](int r, const char *start, const char *end, const QString &text) {
        grid().SetText(CTimingGrid::ColStartTime, r, QString::fromLatin1(start));
        grid().SetText(CTimingGrid::ColEndTime, r, QString::fromLatin1(end));
        grid().SetText(CTimingGrid::ColDialog, r, text);
        form->Grid().TellPreview(-1, r);
    };
    while (grid().MaxRows() < 4)
        form->Grid().AppendRow();
    row(1, "0:00:01.00", "0:00:02.00", QStringLiteral("好的"));
    row(2, "0:00:05.00", "0:00:04.00", QStringLiteral("倒了"));
    form->Button(QStringLiteral("Check"))->trigger();
    auto *check = qobject_cast<frmCheckTiming *>(form->CheckWindow.data());
    ASSERT_TRUE(check);
    check->chkDialogLength->setChecked(false);
    check->chkShortTime->setChecked(false);
    check->cmdCheck->click();
    CSpread &faults = check->Check()->spdErr();
    ASSERT_EQ(faults.MaxRows(), 1);
    EXPECT_EQ(faults.GetText(2, 1), QStringLiteral("2"));
    emit check->spdErr->CellClicked(2, 1);
    EXPECT_EQ(grid().ActiveRow(), 2);

    form->Button(QStringLiteral("Find"))->trigger();
    auto *find = qobject_cast<frmFindSpread *>(form->FindWindow.data());
    ASSERT_TRUE(find);
    EXPECT_FALSE(find->cmdFind->isEnabled());
    find->txtFind->setText(QStringLiteral("好"));
    EXPECT_TRUE(find->cmdFind->isEnabled());
    activate(CTimingGrid::ColDialog, 2);
    find->cmdFind->click();
    EXPECT_EQ(grid().ActiveRow(), 1); // wrapped round to the top
    form->Button(QStringLiteral("Find"))->trigger();
    EXPECT_EQ(form->FindWindow.data(), find);
    EXPECT_EQ(form->findChildren<frmFindSpread *>().size(), 1);
}

TEST_F(TimingWindowTest, FileOptionDialogShowsItsRulesAndWritesTheSave)
{
    ASSERT_TRUE(form->OpenFile(0, scriptPath));
    frmFileOption dialog(form.get());
    const QString srt = dir.filePath(QStringLiteral("episode.srt"));
    bool ok = form->runFileOption(dialog, FileOperation::Save, [&] {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("保存文件选项"));
        EXPECT_TRUE(dialog.optFileType->button(2)->isChecked());
        EXPECT_TRUE(dialog.chkTitle->isEnabled());
        EXPECT_TRUE(dialog.rtfPreview->toPlainText().contains(QStringLiteral(",第二句")));

        dialog.chkDialog->click();
        EXPECT_FALSE(dialog.chkDialogEffect->isChecked());
        EXPECT_FALSE(dialog.chkDialogEffect->isEnabled());
        EXPECT_FALSE(dialog.rtfPreview->toPlainText().contains(QStringLiteral("第二句")));
        dialog.chkDialog->click();

        dialog.optFileType->button(7)->click();
        EXPECT_TRUE(dialog.txtFileName->text().endsWith(QStringLiteral("episode.txt")));
        EXPECT_FALSE(dialog.chkTitle->isEnabled());
        EXPECT_FALSE(dialog.optFileSubType->button(0)->isEnabled());
        dialog.optFileType->button(5)->click();
        EXPECT_TRUE(dialog.optFileSubType->button(0)->isEnabled());

        dialog.optFileType->button(4)->click();
        dialog.txtFileName->setText(srt);
        dialog.cmdOK->click();
        return dialog.result() == QDialog::Accepted;
    });
    EXPECT_TRUE(ok);
    EXPECT_EQ(doc->ScriptType(), ScriptType::SRT);
    EXPECT_EQ(doc->FileName(), srt);
    EXPECT_TRUE(read(srt).startsWith(QStringLiteral("1\r\n0")));

    // An open asks for its file first; no name given is a cancel.
    prompt.FileNames.push_back(QString());
    frmFileOption openDialog(form.get());
    EXPECT_FALSE(form->runFileOption(openDialog, FileOperation::Open, [] { return true; }));
}

TEST_F(TimingWindowTest, ReactionOffsetItemsGoThroughTheTimeDialog)
{
    double shown = 99;
    form->RunTimeDialog = [&shown](CSliderTimeModel &model) {
        shown = model.Value();
        model.setValue(-0.5);
        model.OK();
    };
    form->mnuPopup->findChild<QAction *>(QStringLiteral("mnuTimingReactOffsetEnd"))->trigger();
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(Velmar->Timings()->ReactOffsetEnd(), -0.5);
    EXPECT_EQ(doc->ReactOffsetEnd, -0.5);
}

TEST_F(TimingWindowTest, GridViewEditsListCellsWithTheirItemsAndFollowsHiddenColumns)
{
    CSpreadView *view = form->spdTiming;
    EXPECT_TRUE(view->isColumnHidden(CTimingGrid::ColLayer - 1));
    form->Grid().ShowColumn(CTimingGrid::ColLayer);
    EXPECT_FALSE(view->isColumnHidden(CTimingGrid::ColLayer - 1));

    activate(CTimingGrid::ColLineType, 1);
    grid().setEditMode(true);
    auto *combo = view->findChild<QComboBox *>();
    ASSERT_TRUE(combo);
    EXPECT_EQ(combo->count(), CTimingGrid::LineTypeItems().size());
    combo->setCurrentIndex(1);
    grid().setEditMode(false);
    EXPECT_EQ(grid().GetListChoice(CTimingGrid::ColLineType, 1), 1);
    EXPECT_EQ(cell(CTimingGrid::ColLineType, 1), CTimingGrid::LineTypeItems().at(1));

    // A typed text reaches the cell through the in-place editor.
    activate(CTimingGrid::ColDialog, 2);
    grid().setEditMode(true);
    grid().setSelText(QStringLiteral("打字"));
    // Working keys act in the editor as in the grid: Ctrl+S is the window's, F8 stamps.
    QWidget *editor = view->findChild<QLineEdit *>();
    ASSERT_TRUE(editor);
    control.setPositionDirect(7.0);
    QTest::keyClick(editor, Qt::Key_F8);
    EXPECT_EQ(cell(CTimingGrid::ColStartTime, 2), QStringLiteral("0:00:07.00"));
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 2), QStringLiteral("打字"));
    EXPECT_TRUE(doc->Changed());
}

TEST_F(TimingWindowTest, QueuedStrokesAndACloseBetweenThemRunOneAfterAnother)
{
    MdiVelmar frame;
    frame.Init(Velmar);
    frmTiming::Register(frame);
    QPointer<frmTiming> made = dynamic_cast<frmTiming *>(frame.NewDocument(0));
    ASSERT_TRUE(made);
    ASSERT_TRUE(made->OpenFile(0, scriptPath));
    CTiming *document = made->Document();
    ASSERT_EQ(document->PlayerWindow(), &playerWindow);
    made->Grid().Spread().setRow(1);
    made->Grid().Spread().setCol(CTimingGrid::ColStartTime);
    made->Grid().Spread().ActivateCell();
    const qsizetype open = Velmar->Timings()->Count();
    QPointer<CSpreadView> view = made->spdTiming;
    QPointer<QWidget> sub = made->parentWidget();

    // Each step comes out of the event queue as the user's keys and clicks do; a step
    // that starts while another is still running would be a window pumping the queue
    // from inside a stroke.
    QObject queue;
    int depth = 0;
    int deepest = 0;
    QStringList seen;
    auto post = [&](const QString &name, std::function<void()> run) {
        QMetaObject::invokeMethod(
            &queue,
            [&, name, run] {
                deepest = qMax(deepest, ++depth);
                seen << name;
                run();
                --depth;
            },
            Qt::QueuedConnection);
    };
    post(QStringLiteral("F8"), [&] {
        control.setPositionDirect(1.5);
        if (view)
            QTest::keyClick(view, Qt::Key_F8);
    });
    // What the queue runs right after the first stroke closes the window (the stamp made
    // it changed: the question is answered No).
    prompt.Answers.push_back(MsgBoxResult::No);
    post(QStringLiteral("close"), [&] {
        if (sub)
            sub->close();
    });
    post(QStringLiteral("F9"), [&] {
        control.setPositionDirect(2.5);
        if (view)
            QTest::keyClick(view, Qt::Key_F9);
    });
    QCoreApplication::sendPostedEvents(&queue);
    EXPECT_EQ(seen, QStringList({ QStringLiteral("F8"), QStringLiteral("close"), QStringLiteral("F9") }));
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(prompt.Messages(), QStringList { QStringLiteral("保存所做的修改吗?") });
    // The window went with its document, and the second stroke found nothing to stamp.
    EXPECT_EQ(Velmar->Timings()->Count(), open - 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(made.isNull());
    EXPECT_TRUE(view.isNull());
    EXPECT_FALSE(doc->Content().contains(QStringLiteral("0:00:02.50")));
}

// A file with bare line feeds tells the frame's status bar about the modern-files setting
// when the setting is off; with it on the file reads line by line and nothing is said.
TEST_F(TimingWindowTest, BareLineFeedsAreHintedWhileModernFilesAreOff)
{
    QStringList hints;
    form->ShowStatus = [&hints](const QString &hint) { hints << hint; };
    const QString lf = dir.filePath(QStringLiteral("lf.srt"));
    WriteTextFile(lf,
        QStringLiteral("1\n00:00:01,000 --> 00:00:02,000\nOne\n\n2\n00:00:03,000 --> 00:00:04,000\nTwo\n"),
        false);
    prompt.Answers.clear();
    ASSERT_TRUE(form->OpenFile(0, lf));
    ASSERT_TRUE(form->OpenFile(0, scriptPath));
    ModernFiles = true;
    ASSERT_TRUE(form->OpenFile(0, lf));
    ModernFiles = false;
    EXPECT_EQ(hints, QStringList({ Msg(QStringLiteral("VELMAR_FILE_200")), QString(), QString() }));
    EXPECT_EQ(cell(CTimingGrid::ColDialog, 2), QStringLiteral("Two"));
}

// A long preview is shown a piece at a time, the rest as the view scrolls to its end;
// OK still writes the whole text.
TEST_F(TimingWindowTest, FileOptionPreviewIsFilledLazily)
{
    QString text;
    for (int i = 0; i < 20000; ++i)
        text += QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,Default,,0,0,0,,line %1\r\n").arg(i);
    frmFileOption dialog;
    dialog.Model.setOperation(FileOperation::Save);
    dialog.Model.BackupBeforeSave = false;
    dialog.Model.FileCode = FileCode::UTF8;
    dialog.Model.FileName = dir.filePath(QStringLiteral("long.txt"));
    dialog.Model.FileContent = text;
    dialog.Refresh();
    EXPECT_FALSE(dialog.PreviewComplete());
    EXPECT_LE(dialog.rtfPreview->toPlainText().size(), frmFileOption::PreviewPiece);
    EXPECT_TRUE(dialog.rtfPreview->toPlainText().startsWith(QStringLiteral("Dialogue: 0,0:00:01.00")));
    dialog.show();
    QScrollBar *bar = dialog.rtfPreview->verticalScrollBar();
    for (int step = 0; step < 100 && !dialog.PreviewComplete(); ++step) {
        bar->setValue(bar->maximum());
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(dialog.PreviewComplete());
    QTextEdit whole;
    whole.setPlainText(text);
    EXPECT_EQ(dialog.rtfPreview->toPlainText(), whole.toPlainText());
    dialog.cmdOK->click();
    QFile written(dialog.Model.FileName);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), text.toUtf8());
}
