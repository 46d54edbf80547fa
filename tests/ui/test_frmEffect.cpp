// The effect window over a timing window: each page's button gives what its generator
// gives for the values shown, the values survive page changes with their documented
// gaps, Apply writes into the grid, the player's picture and clock fill the boxes, and a
// timing window has one effect window.
#include "core/CHotKeys.h"
#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basText.h"
#include "core/basTime.h"
#include "effects/CEffectPages.h"
#include "effects/basEffectFx.h"
#include "effects/basEffectTag.h"
#include "formats/CTiming.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayers.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "timing/CTimingGrid.h"
#include "ui/CSelectionSlider.h"
#include "ui/CSpreadView.h"
#include "ui/MdiVelmar.h"
#include "ui/frmEffect.h"
#include "ui/frmPlayer.h"
#include "ui/frmTiming.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <functional>

namespace {

const char16_t *const ScriptText
    = u"[Script Info]\r\nScriptType: v4.00+\r\n\r\n[Events]\r\nFormat: Layer, Start, End, Style, Name, "
      u"MarginL, MarginR, MarginV, Effect, Text\r\n"
      u"Dialogue: 0,0:00:01.00,0:00:02.00,Default,,0000,0000,0000,,第一句\r\n"
      u"Dialogue: 0,0:00:03.00,0:00:04.00,Default,,0000,0000,0000,,第二句\r\n"
      u"Dialogue: 0,0:00:05.00,0:00:06.00,Default,,0000,0000,0000,,第三句\r\n";

// A frame with a timing window whose player is a player window over a stand-in control,
// and that window's effect window.
class EffectWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartCore();
        SetPrompt(&prompt);
        HotKeys->setHOTKEY_TimingTime(118); // F7
        HotKeys->setHOTKEY_TimingStartTime(119); // F8
        HotKeys->setHOTKEY_TimingEndTime(120); // F9
        frame = std::make_unique<MdiVelmar>();
        frame->Init(Velmar);
        frmTiming::Register(*frame);
        frame->RegisterWindowFactory(DocumentWindowKind::Player, [this](MdiVelmar &f) -> QWidget * {
            auto *w = new frmPlayer(&media);
            f.AddDocumentWindow(w);
            w->Init(Velmar->Players());
            return w;
        });
        timing = dynamic_cast<frmTiming *>(frame->NewDocument(0));
        ASSERT_TRUE(timing);
        timing->Button(QStringLiteral("EffectSpecial"))->trigger();
        effect = qobject_cast<frmEffect *>(timing->EffectWindow.data());
        ASSERT_TRUE(effect);
    }
    void TearDown() override
    {
        prompt.DefaultYesNo = MsgBoxResult::No;
        frame.reset();
        SetPrompt(nullptr);
    }

    template <typename T> T *control(const QString &key) const
    {
        T *w = qobject_cast<T *>(effect->Control(key));
        EXPECT_TRUE(w) << key.toStdString();
        return w;
    }
    QLineEdit *box(int index) const { return control<QLineEdit>(QStringLiteral("txtArg(%1)").arg(index)); }
    QString result() const { return effect->rtfResult->toPlainText().replace(u'\n', QStringLiteral("\r\n")); }
    void create()
    {
        effect->cmdClear->click();
        effect->cmdCreate->click();
    }
    CSpread &grid() { return timing->Grid().Spread(); }
    // The values a fresh window holds on a page.
    static CEffectPages freshPage(int page)
    {
        CEffectPages pages;
        pages.Load();
        pages.SelectPage(page);
        return pages;
    }

    CScriptedPrompt prompt;
    CFakeMediaControl media;
    std::unique_ptr<MdiVelmar> frame;
    frmTiming *timing = nullptr;
    frmEffect *effect = nullptr;
};

} // namespace

TEST_F(EffectWindowTest, EveryPageGivesWhatItsGeneratorGivesForItsDefaults)
{
    using namespace basEffectFx;
    EXPECT_EQ(effect->trvSpecialEffect->topLevelItemCount(), 8);
    EXPECT_EQ(effect->fraEffect->title(), QStringLiteral("效果符参考"));
    EXPECT_TRUE(effect->tabEffectSample->isVisibleTo(effect));
    EXPECT_EQ(effect->tabEffectSample->count(), basEffectTag::TagCount);

    // The tag page: the tab's tag, and its explanation and gradual frame with the tab.
    effect->tabEffectSample->setCurrentIndex(3);
    EXPECT_TRUE(effect->fraAccel->isEnabled());
    EXPECT_TRUE(effect->rtfExplain->toPlainText().contains(QStringLiteral("字体大小")));
    create();
    EXPECT_EQ(result(), basEffectTag::BuildTag(freshPage(0).Tag, 3));
    EXPECT_EQ(result(), QStringLiteral("{\\fs20}"));
    effect->tabEffectSample->setCurrentIndex(4);
    EXPECT_FALSE(effect->fraAccel->isEnabled());

    const std::pair<int, std::function<CEffectResult(const CEffectArgs &)>> pages[] = {
        { 1, BuildDrawing },
        { 2, BuildKaraokePlus },
        { 4, BuildColourCycle },
        { 5, BuildColourCycle },
        { 6, BuildMove },
        { 7, BuildPositionSteps },
    };
    for (const auto &[page, generator] : pages) {
        effect->SelectPage(page);
        EXPECT_EQ(effect->trvSpecialEffect->currentItem()->data(0, Qt::UserRole).toString(),
            QStringLiteral("PAGE%1").arg(page));
        EXPECT_FALSE(effect->tabEffectSample->isVisibleTo(effect)) << page;
        // page 5 works on what the page before it (4) shows, its button included
        CEffectArgs values = freshPage(page == 5 ? 4 : page).Args();
        EXPECT_TRUE(effect->cmdCreate->isVisibleTo(effect)) << page;
        if (page == 2) { // the karaoke page starts without a line to work on
            values.rtfArg = QStringLiteral("{\\K50}云{\\kf40}帆");
            control<QPlainTextEdit>(QStringLiteral("rtfArg(0)"))->setPlainText(values.rtfArg);
        }
        create();
        const QString expected = generator(values).Text();
        EXPECT_EQ(result(), expected) << page;
        EXPECT_FALSE(expected.isEmpty()) << page;
    }
    // What a page shows is what the generator read: its captions and values stand in
    // the boxes.
    effect->SelectPage(4);
    EXPECT_EQ(effect->fraEffect->title(), QStringLiteral("颜色循环渐进"));
    EXPECT_EQ(
        control<QPlainTextEdit>(QStringLiteral("rtfArg(0)"))->toPlainText(), QStringLiteral("1234567890"));
    EXPECT_EQ(box(1)->text(), QStringLiteral("20"));
    EXPECT_EQ(control<QLabel>(QStringLiteral("lbltxtArg(1)"))->text(), QStringLiteral("总时间长度"));
    EXPECT_TRUE(box(1)->isVisibleTo(effect));
    EXPECT_FALSE(control<QCheckBox>(QStringLiteral("chkArg(0)"))->isVisibleTo(effect));

    // The time difference writes into its grid and not into the result box.
    effect->SelectPage(3);
    CSpread &args = effect->Model().spdArg();
    args.SetText(2, 1, QStringLiteral("0:00:01.00")); // column 2, rows 1 and 2
    args.SetText(2, 2, QStringLiteral("0:00:02.50"));
    create();
    EXPECT_EQ(result(), QString());
    CEffectPages fresh = freshPage(3);
    CEffectSpread expected = fresh.Args().spdArg;
    expected.setText(1, 2, QStringLiteral("0:00:01.00"));
    expected.setText(2, 2, QStringLiteral("0:00:02.50"));
    BuildTimeDifference(0, QStringLiteral("10"), expected);
    ASSERT_EQ(args.MaxRows(), expected.MaxRows());
    for (int row = 1; row <= expected.MaxRows(); ++row)
        for (int col = 1; col <= 2; ++col)
            EXPECT_EQ(args.GetText(col, row).toStdString(), expected.Text(row, col).toStdString())
                << row << col;
    EXPECT_EQ(args.GetText(2, 10), QStringLiteral("0:00:14.50"));
}

TEST_F(EffectWindowTest, ValuesSurvivePageChangesWithTheirDocumentedGaps)
{
    // Text typed on the move page survives a visit to the colour cycle, which shows its own.
    effect->SelectPage(6);
    auto *text = control<QPlainTextEdit>(QStringLiteral("rtfArg(0)"));
    text->clear();
    QTest::keyClicks(text, QStringLiteral("scroll"));
    QTest::keyClicks(box(0), QStringLiteral("5"));
    effect->SelectPage(4);
    EXPECT_EQ(text->toPlainText(), QStringLiteral("1234567890"));
    EXPECT_EQ(box(0)->text(), QStringLiteral("0"));
    effect->SelectPage(6);
    EXPECT_EQ(text->toPlainText(), QStringLiteral("scroll"));
    EXPECT_EQ(box(0)->text(), QStringLiteral("105"));

    // Five rows of points on the drawing page survive the time grid of page 3.
    effect->SelectPage(1);
    CSpread &args = effect->Model().spdArg();
    QAbstractItemModel *cells = effect->spdArg->model();
    ASSERT_EQ(cells, &args);
    args.setMaxRows(5);
    for (int row = 0; row < 5; ++row) {
        cells->setData(cells->index(row, 0), QString::number(row * 10));
        cells->setData(cells->index(row, 1), QString::number(row * 10 + 5));
    }
    effect->SelectPage(3);
    EXPECT_EQ(args.MaxRows(), 3);
    EXPECT_EQ(cells->headerData(0, Qt::Horizontal).toString(), QStringLiteral("开始时间"));
    effect->SelectPage(1);
    ASSERT_EQ(args.MaxRows(), 5);
    EXPECT_EQ(args.GetText(2, 5), QStringLiteral("45"));
    EXPECT_EQ(cells->headerData(0, Qt::Horizontal).toString(), QStringLiteral("X坐标"));
    effect->cmdCreate->click();
    EXPECT_EQ(result(), QStringLiteral("{\\p1}m 0 5 s 10 15 20 25 30 35 40 45 c{\\p0}"));

    // The karaoke page's box is not put back: it keeps what it was made meanwhile.
    effect->SelectPage(2);
    auto *keep = control<QCheckBox>(QStringLiteral("chkArg(0)"));
    keep->click();
    ASSERT_TRUE(keep->isChecked());
    effect->SelectPage(4);
    keep->setChecked(false); // hidden here, as another page could have left it
    effect->SelectPage(2);
    EXPECT_FALSE(keep->isChecked()) << "the tick made on page 2 is lost";

    // A range dragged on the move page's slider keeps its start and length.
    effect->SelectPage(6);
    auto *slider = control<CSelectionSlider>(QStringLiteral("sldArg(0)"));
    ASSERT_TRUE(slider->isVisible());
    const int y = slider->height() / 2;
    int from = 0, to = 0;
    for (int x = 0; x < slider->width() && !to; ++x) {
        const int value = slider->ValueAt(QPoint(x, y));
        if (!from && value >= 20)
            from = x;
        if (value >= 80)
            to = x;
    }
    QTest::mousePress(slider, Qt::LeftButton, {}, QPoint(from, y));
    QTest::mouseMove(slider, QPoint((from + to) / 2, y));
    QTest::mouseRelease(slider, Qt::LeftButton, {}, QPoint(to, y));
    const CEffectSlider dragged = effect->Model().Pages.Control(QStringLiteral("sldArg"), 0)->Slider;
    EXPECT_EQ(dragged.SelStart, 20);
    EXPECT_EQ(dragged.SelLength, 60);
    effect->SelectPage(1); // the same slider, as the scale of the drawing
    EXPECT_EQ(slider->maximum(), 10);
    EXPECT_EQ(slider->SelectionLength(), 0);
    effect->SelectPage(6);
    EXPECT_EQ(slider->SelectionStart(), 20);
    EXPECT_EQ(slider->SelectionLength(), 60);
    effect->cmdClear->click();
    effect->cmdCreate->click();
    EXPECT_TRUE(result().startsWith(QStringLiteral("{\\fade(255,0,255,0,2000,8000,10000)}{\\move(105,")));
}

TEST_F(EffectWindowTest, ApplyWritesTheResultIntoTheActiveRowsAndChangesTheDocument)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("fx.ass"));
    WriteTextFile(path, QString::fromUtf16(ScriptText), true);
    ASSERT_TRUE(timing->OpenFile(0, path));
    CTiming *doc = timing->Document();
    ASSERT_FALSE(doc->Changed());
    grid().setRow(2);
    grid().setCol(CTimingGrid::ColDialog);
    grid().ActivateCell();

    effect->SelectPage(7);
    auto *text = control<QPlainTextEdit>(QStringLiteral("rtfArg(0)"));
    text->setPlainText(QStringLiteral("云帆"));
    effect->cmdCreate->click();
    effect->cmdApply->click();
    EXPECT_EQ(grid().GetText(CTimingGrid::ColDialog, 1), QStringLiteral("第一句"));
    EXPECT_EQ(grid().GetText(CTimingGrid::ColDialog, 2), QStringLiteral("{\\pos(100,100)}云"));
    EXPECT_EQ(grid().GetText(CTimingGrid::ColDialog, 3), QStringLiteral("{\\pos(100,120)}帆"));
    EXPECT_EQ(grid().GetText(CTimingGrid::ColDialog, 4), QString()); // the part after the last line end
    EXPECT_TRUE(doc->Changed());
    EXPECT_EQ(grid().ActiveRow(), 2);

    // A number out of range: the message, no result, the grid as it was.
    doc->setChanged(false);
    box(0)->setText(QString());
    QTest::keyClicks(box(0), QStringLiteral("99999999999"));
    prompt.Reset();
    create();
    EXPECT_EQ(prompt.Messages(), QStringList { QStringLiteral("Overflow") });
    EXPECT_EQ(result(), QString());
    EXPECT_EQ(grid().GetText(CTimingGrid::ColDialog, 2), QStringLiteral("{\\pos(100,100)}云"));
    EXPECT_FALSE(doc->Changed());
    // A tag whose setting gives nothing: its message, and no result.
    effect->SelectPage(0);
    effect->tabEffectSample->setCurrentIndex(14);
    control<QLineEdit>(QStringLiteral("txtScale(0)"))->setText(QString());
    QTest::keyClicks(control<QLineEdit>(QStringLiteral("txtScale(0)")), QStringLiteral(" "));
    control<QLineEdit>(QStringLiteral("txtScale(1)"))->setText(QString());
    QTest::keyClicks(control<QLineEdit>(QStringLiteral("txtScale(1)")), QStringLiteral(" "));
    prompt.Reset();
    create();
    EXPECT_EQ(prompt.Messages(), QStringList { QStringLiteral("设置可能有错误，不能产生效果符号") });
    EXPECT_EQ(result(), QString());
}

TEST_F(EffectWindowTest, ResultHistoryStepsBackAndForward)
{
    effect->SelectPage(7);
    control<QPlainTextEdit>(QStringLiteral("rtfArg(0)"))->setPlainText(QStringLiteral("a"));
    EXPECT_FALSE(effect->cmdRestore[0]->isEnabled());
    effect->cmdCreate->click();
    effect->cmdCreate->click(); // a second press adds at the caret
    const QString two = QStringLiteral("{\\pos(100,100)}a\r\n{\\pos(100,100)}a\r\n");
    EXPECT_EQ(result(), two);
    EXPECT_TRUE(effect->cmdRestore[0]->isEnabled());
    effect->cmdClear->click();
    EXPECT_EQ(result(), QString());
    effect->cmdRestore[0]->click();
    EXPECT_EQ(result(), two);
    EXPECT_TRUE(effect->cmdRestore[1]->isEnabled());
    effect->cmdRestore[1]->click();
    EXPECT_EQ(result(), QString());
    EXPECT_FALSE(effect->cmdRestore[1]->isEnabled());
}

TEST_F(EffectWindowTest, PicturePointsAndThePlayersClockFillTheBoxes)
{
    // A player opened after the effect window is handed to it, and its picture clicks
    // fill the coordinate pair of the focused box.
    ASSERT_TRUE(frame->OpenFileByType(QStringLiteral("/v/clip.avi")));
    auto *player = dynamic_cast<frmPlayer *>(frame->DocumentWindows().last());
    ASSERT_TRUE(player);
    EXPECT_EQ(effect->PlayerWindow(), player);
    effect->SelectPage(6);
    box(3)->setFocus();
    media.ClickAt(1, 0, 29, 449);
    EXPECT_EQ(box(2)->text(), QStringLiteral("30"));
    EXPECT_EQ(box(3)->text(), QStringLiteral("450"));
    EXPECT_EQ(box(0)->text(), QStringLiteral("10"));
    // A drag measures the spacing into the focused spacing box.
    effect->SelectPage(7);
    box(3)->setFocus();
    emit player->StartPosSelected(10, 10);
    emit player->ChangePosSelected(13, 14);
    emit player->EndPosSelected(13, 14);
    emit player->ChangePosSelected(50, 50);
    EXPECT_EQ(box(3)->text(), QStringLiteral("5"));
    EXPECT_EQ(box(0)->text(), QStringLiteral("100")) << "the spacing box takes no point";

    // The time keys in the time grid put the player's position into the active cell.
    effect->SelectPage(3);
    CSpread &args = effect->Model().spdArg();
    args.SetActiveCell(1, 2);
    media.setPositionDirect(83.456);
    QTest::keyClick(effect->spdArg, Qt::Key_F8);
    EXPECT_EQ(args.GetText(1, 2), TimeToString(83.456, 2));
    args.SetActiveCell(2, 3);
    QTest::keyClick(effect->spdArg, Qt::Key_F5);
    EXPECT_EQ(args.GetText(2, 3), QString());

    // Closed, the player is no one's: the key only selects the cell.
    player->close();
    EXPECT_EQ(effect->PlayerWindow(), nullptr);
    QTest::keyClick(effect->spdArg, Qt::Key_F7);
    EXPECT_EQ(args.GetText(2, 3), QString());
}

TEST_F(EffectWindowTest, OneEffectWindowPerTimingWindow)
{
    QPointer<frmEffect> first = effect;
    timing->Button(QStringLiteral("EffectSpecial"))->trigger();
    EXPECT_EQ(prompt.Messages(), QStringList { QStringLiteral("特效时间轴窗口已经存在") });
    emit timing->mnuPopup->aboutToShow();
    QAction *entry = timing->mnuPopup->findChild<QAction *>(QStringLiteral("mnuTimingEffectWindow"));
    ASSERT_TRUE(entry);
    entry->trigger();
    EXPECT_EQ(prompt.Messages().size(), 2);
    EXPECT_EQ(timing->findChildren<frmEffect *>().size(), 1);

    auto *other = dynamic_cast<frmTiming *>(frame->NewDocument(0));
    ASSERT_TRUE(other);
    other->Button(QStringLiteral("EffectSpecial"))->trigger();
    ASSERT_TRUE(other->EffectWindow);
    EXPECT_NE(other->EffectWindow.data(), first.data());
    // Its results go into its own timing window.
    auto *second = qobject_cast<frmEffect *>(other->EffectWindow.data());
    EXPECT_EQ(second->Model().TimingGrid, &other->Grid());
    EXPECT_EQ(effect->Model().TimingGrid, &timing->Grid());

    // The effect window goes with its timing window, and comes anew after it is closed.
    first->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(first);
    timing->Button(QStringLiteral("EffectSpecial"))->trigger();
    EXPECT_TRUE(timing->EffectWindow);
    QPointer<QWidget> third = timing->EffectWindow;
    timing->Document()->setChanged(false);
    timing->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(third);
}
