// The translation workspace in its windows, under the frame as the program makes it: the
// translation window's keys, tables, formats, files and ChangeTo; karaoke recorded end to
// end into a timing window; the find dialog; the notepad; routing and auto-save.
#include "core/CHotKeys.h"
#include "core/CScriptedPrompt.h"
#include "core/CSpread.h"
#include "core/IPlayerWindow.h"
#include "core/basMain.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayer.h"
#include "player/CPlayers.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "timing/CTimingGrid.h"
#include "translation/CNotePads.h"
#include "translation/CTextFind.h"
#include "translation/CTranslate.h"
#include "translation/CTranslates.h"
#include "translation/basRtf.h"
#include "ui/CSpreadView.h"
#include "ui/MdiVelmar.h"
#include "ui/frmFileOption.h"
#include "ui/frmFind.h"
#include "ui/frmNotePad.h"
#include "ui/frmTiming.h"
#include "ui/frmTranslate.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QFontComboBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPrinter>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>

#include <gtest/gtest.h>

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

// The frame with its timing, translation and notepad windows, a playing fake film, the
// hot keys of a fresh store and a recent-file list.
class Workspace : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartCore();
        SetPrompt(&prompt);
        control.MediaDuration = 600;
        Velmar->Players()->Create(&playerWindow, &control);
        control.setPlayStateDirect(3);
        frame = std::make_unique<MdiVelmar>();
        // The frame reads the keys from the store: F8, F9 and F3 are its defaults.
        frame->Init(Velmar);
        HotKeys->setHOTKEY_TimingTime(118); // F7
        frmTiming::Register(*frame);
        frmTranslate::Register(*frame);
        frmNotePad::Register(*frame);
        recent.Init(5);
        RecentFile = &recent;
        frame->AttachRecentFile(&recent);
    }
    void TearDown() override
    {
        prompt.DefaultYesNo = MsgBoxResult::No;
        prompt.Answers.clear();
        for (QWidget *w : frame->DocumentWindows()) {
            if (auto *t = dynamic_cast<frmTranslate *>(w); t && t->Document())
                t->Document()->setChanged(false);
            if (auto *t = dynamic_cast<frmTiming *>(w); t && t->Document())
                t->Document()->setChanged(false);
        }
        frame->AttachRecentFile(nullptr);
        frame.reset();
        RecentFile = nullptr;
        SetPrompt(nullptr);
    }

    frmTranslate *newTranslate() { return dynamic_cast<frmTranslate *>(frame->NewDocument(1)); }
    frmTiming *newTiming() { return dynamic_cast<frmTiming *>(frame->NewDocument(0)); }
    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = dir.filePath(name);
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        return path;
    }
    static QString read(const QString &path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? DecodeWholeFile(f.readAll(), false).Text : QString();
    }
    static void select(QTextEdit *edit, int from, int to)
    {
        QTextCursor c = edit->textCursor();
        c.setPosition(from);
        c.setPosition(to, QTextCursor::KeepAnchor);
        edit->setTextCursor(c);
    }
    // Typed text, as an input method delivers it: a key event with the characters.
    static void type(QWidget *target, const QString &text)
    {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, text);
        QCoreApplication::sendEvent(target, &press);
    }
    static QString panel(QWidget *window, const char *name)
    {
        const auto *label = window->findChild<QLabel *>(QString::fromLatin1(name));
        return label ? label->text() : QString();
    }

    QTemporaryDir dir;
    CScriptedPrompt prompt;
    CFakeMediaControl control;
    FakePlayerWindow playerWindow;
    CRecentFile recent;
    std::unique_ptr<MdiVelmar> frame;
};

} // namespace

TEST_F(Workspace, QuickKeysTypePhrasesAndColoursOrNothing)
{
    frmTranslate *w = newTranslate();
    ASSERT_TRUE(w);
    CTranslate &doc = *w->Document();
    EXPECT_EQ(w->windowTitle(), QStringLiteral("翻译(1)"));
    EXPECT_EQ(w->property("Tag").toString(), QStringLiteral("1"));
    QTextEdit *rtf = w->rtfTranslate;
    QTest::keyClicks(rtf, QStringLiteral("ab"));
    EXPECT_TRUE(doc.Changed());

    // Alt and a digit without a row: nothing is typed. Ctrl and a digit without a colour
    // row leaves the text alone.
    QTest::keyClick(rtf, Qt::Key_5, Qt::AltModifier);
    QTest::keyClick(rtf, Qt::Key_Q, Qt::AltModifier);
    QTest::keyClick(rtf, Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(rtf->toPlainText(), QStringLiteral("ab"));

    // With rows: the phrase replaces the selection, the colour goes to it.
    doc.spdChangeTable().SetText(1, 1, QStringLiteral("字幕"));
    doc.spdColor().setRow(1);
    doc.spdColor().setCol(1);
    doc.spdColor().setBackColor(0x0000FF);
    select(rtf, 0, 1);
    QTest::keyClick(rtf, Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(rtf->toPlainText(), QStringLiteral("字幕b"));
    select(rtf, 2, 3);
    QTest::keyClick(rtf, Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(panel(w, "Color"), QStringLiteral("颜色: &H0000FF"));
    doc.ChangeOption = ChangeOption::Text | ChangeOption::Color;
    doc.TranslateOption = 0;
    EXPECT_EQ(doc.Content(), QStringLiteral("{\\c&H0&}字幕{\\c&HFF&}b"));
    doc.TranslateOption = TranslateOption::ChangeTable;

    // A click in column 1 of the change table types its text; a click in the last row
    // makes the next one.
    select(rtf, 0, 2);
    emit w->spdChangeTable->CellClicked(1, 1);
    EXPECT_EQ(rtf->toPlainText(), QStringLiteral("字幕b"));
    EXPECT_EQ(doc.spdChangeTable().MaxRows(), 2);
    EXPECT_EQ(doc.spdChangeTable().GetText(0, 2), QStringLiteral("2"));
    emit w->spdChangeTable->CellClicked(2, 1);
    EXPECT_EQ(doc.spdChangeTable().MaxRows(), 2);
    // The colour loop's label column asks the colour of its row.
    prompt.Colours = { qint64(0x00FF00) };
    emit w->spdColor->RowHeaderClicked(1);
    EXPECT_EQ(doc.spdColor().GetBackColor(1, 1), 0x00FF00u);
    select(rtf, 0, 1);
    emit w->spdColor->CellClicked(1, 1);
    EXPECT_EQ(panel(w, "Color"), QStringLiteral("颜色: &H00FF00"));
    EXPECT_EQ(doc.spdColor().MaxRows(), 2);
}

TEST_F(Workspace, FormatButtonsShowTheSelectionAndAClickSetsItAll)
{
    frmTranslate *w = newTranslate();
    QTextEdit *rtf = w->rtfTranslate;
    rtf->setPlainText(QStringLiteral("粗体和常规\n第二行"));
    select(rtf, 0, 2);
    w->Button(QStringLiteral("Bold"))->trigger();
    EXPECT_EQ(w->ButtonState(QStringLiteral("Bold")), basTranslateWindow::FormatState::On);

    select(rtf, 1, 4);
    EXPECT_EQ(w->ButtonState(QStringLiteral("Bold")), basTranslateWindow::FormatState::Mixed);
    EXPECT_EQ(w->ButtonState(QStringLiteral("Italic")), basTranslateWindow::FormatState::Off);
    w->Button(QStringLiteral("Bold"))->trigger();
    EXPECT_EQ(w->ButtonState(QStringLiteral("Bold")), basTranslateWindow::FormatState::On);
    select(rtf, 0, 5);
    EXPECT_EQ(w->ButtonState(QStringLiteral("Bold")), basTranslateWindow::FormatState::Mixed);

    // The font boxes act on the selection and show it, empty when mixed.
    select(rtf, 0, 2);
    // a size the list does not hold, typed and taken with Enter
    w->cmbFontSize->lineEdit()->setText(QStringLiteral("13"));
    QTest::keyClick(w->cmbFontSize->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(w->cmbFontSize->currentText(), QStringLiteral("13"));
    select(rtf, 1, 3);
    EXPECT_TRUE(w->cmbFontSize->currentText().isEmpty());
    emit w->cmbFontName->textActivated(QStringLiteral("Serif"));
    EXPECT_EQ(w->cmbFontName->currentText(), QStringLiteral("Serif"));
    select(rtf, 0, 5);
    EXPECT_TRUE(w->cmbFontName->currentText().isEmpty());

    // The status bar: the caret's line.
    select(rtf, 7, 7);
    EXPECT_EQ(panel(w, "Line"), QStringLiteral("行:2"));
    w->Document()->ChangeOption = ChangeOption::Text | ChangeOption::Bold | ChangeOption::FontSize;
    w->Document()->TranslateOption = 0;
    EXPECT_TRUE(w->Document()->Content().startsWith(QStringLiteral("{\\fs13}{\\b1}粗")));
}

TEST_F(Workspace, DraftsOpenBySaveAndAskBeforeTheyGo)
{
    frmTiming *timing = newTiming();
    frmTranslate *w = newTranslate();
    // A draft with a byte-order mark loses it and is Unicode from then on.
    const QString text = QStringLiteral("//甲=乙\r\n第一行\r\n第二行");
    QByteArray bytes("\xFF\xFE", 2);
    bytes.append(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    const QString path = write(QStringLiteral("draft.txt"), bytes);
    ASSERT_TRUE(w->OpenFile(0, path));
    EXPECT_EQ(w->rtfTranslate->toPlainText(), QStringLiteral("第一行\n第二行"));
    EXPECT_EQ(w->Document()->FileCode, FileCode::Unicode);
    EXPECT_FALSE(w->Document()->Changed());
    EXPECT_EQ(w->windowTitle(), QStringLiteral("翻译(1) - ") + path);
    // The timing window hears the new name; the recent list has the draft.
    EXPECT_EQ(timing->cmbTranslate->currentText(), w->windowTitle());
    EXPECT_EQ(recent.FileName(1), path);
    ASSERT_FALSE(w->mnuFileRecent.isEmpty());
    EXPECT_TRUE(w->mnuFileRecent.first()->text().contains(path));

    // Opening over a changed draft and answering Cancel changes nothing.
    type(w->rtfTranslate, QStringLiteral("改"));
    prompt.Answers = { MsgBoxResult::Cancel };
    EXPECT_FALSE(w->OpenFile(0, write(QStringLiteral("other.txt"), "x")));
    EXPECT_EQ(prompt.Records.last().Prompt, QStringLiteral("保存所做的修改吗?"));
    EXPECT_EQ(w->Document()->FileName(), path);
    EXPECT_TRUE(w->rtfTranslate->toPlainText().startsWith(QStringLiteral("改")));

    // Saving by name writes the tables in front, in the draft's code; Ctrl+S saves.
    QTest::keyClick(w->rtfTranslate, Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(w->Document()->Changed());
    EXPECT_EQ(read(path), QStringLiteral("//甲=乙\r\n改第一行\r\n第二行"));

    // Save as goes through the file options, which write the file on OK.
    const QString rtf = dir.filePath(QStringLiteral("draft.rtf"));
    w->RunFileOption = [&](frmFileOption &dialog) {
        EXPECT_EQ(dialog.Model.ParentWindowType, ParentWindowType::Translate);
        EXPECT_EQ(dialog.Model.Operation(), FileOperation::Save);
        dialog.Model.FileName = rtf;
        dialog.Model.ClickFileType(ScriptType::RichText);
        return dialog.Model.Ok();
    };
    ASSERT_TRUE(w->SaveFile(true));
    EXPECT_EQ(w->Document()->ScriptType, ScriptType::RichText);
    EXPECT_TRUE(read(rtf).startsWith(QStringLiteral("{\\rtf")));

    // Closing with changes asks; Cancel keeps the window, No lets it go and the timing
    // window forgets it.
    type(w->rtfTranslate, QStringLiteral("再"));
    prompt.Answers = { MsgBoxResult::Cancel };
    EXPECT_FALSE(w->parentWidget()->close());
    EXPECT_EQ(frame->DocumentWindows().size(), 2);
    prompt.Answers = { MsgBoxResult::No };
    EXPECT_TRUE(w->parentWidget()->close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Velmar->Translates()->Count(), 0);
    EXPECT_EQ(timing->cmbTranslate->count(), 0);
    EXPECT_FALSE(timing->Button(QStringLiteral("KaraOK"))->isEnabled());
}

TEST_F(Workspace, ChangeToOfAColouredDraftWarnsAtTwoThousandFortyNineCharacters)
{
    frmTranslate *w = newTranslate();
    w->rtfTranslate->setPlainText(QString(1000, u'甲') + u'\n' + QString(1047, u'乙'));
    w->Document()->ChangeOption = ChangeOption::Text | ChangeOption::Color;
    w->RunFileOption = [](frmFileOption &dialog) {
        // The draft's options stand in the dialog.
        EXPECT_TRUE(dialog.chkColor->isChecked());
        EXPECT_TRUE(dialog.fraTranslateOption->isVisibleTo(&dialog));
        return dialog.Model.Ok();
    };
    prompt.Answers = { MsgBoxResult::Retry };
    w->Button(QStringLiteral("ChangeTo"))->trigger();
    ASSERT_GE(prompt.Records.size(), 1);
    EXPECT_EQ(prompt.Records.first().Prompt,
        QStringLiteral(
            "对超过2K的文字进行带SSA格式转换时间轴，预计此操作将非常费时\r\n建议停止这个操作或者缩短文字列"));
    EXPECT_EQ(prompt.Records.first().Style & MsgBoxStyle::ButtonMask, MsgBoxStyle::RetryCancel);

    frmTiming *timing = nullptr;
    for (QWidget *window : frame->DocumentWindows())
        if (auto *t = dynamic_cast<frmTiming *>(window))
            timing = t;
    ASSERT_TRUE(timing);
    const CSpread &grid = timing->Grid().Spread();
    EXPECT_EQ(grid.GetText(CTimingGrid::ColDialog, 1), QStringLiteral("{\\c&H0&}") + QString(1000, u'甲'));
    EXPECT_EQ(grid.GetText(CTimingGrid::ColDialog, 2), QStringLiteral("{\\c&H0&}") + QString(1047, u'乙'));
    EXPECT_EQ(timing->Document()->ScriptType(), ScriptType::ASS);
    EXPECT_EQ(timing->Document()->TranslateWindow, w);
    EXPECT_TRUE(timing->Button(QStringLiteral("KaraOK"))->isEnabled());
}

TEST_F(Workspace, AKaraokeLineRecordedEndToEnd)
{
    frmTiming *timing = newTiming();
    frmTranslate *w = newTranslate();
    ASSERT_EQ(timing->Document()->TranslateWindow, w);
    CTiming &doc = *timing->Document();
    doc.ReactOffsetStart = 0;
    doc.ReactOffsetEnd = 0;
    w->rtfTranslate->setPlainText(QStringLiteral("我爱你啊 la\n\n下一行"));
    select(w->rtfTranslate, 2, 2);
    CSpread &grid = timing->Grid().Spread();
    grid.setRow(1);
    grid.setCol(CTimingGrid::ColStartTime);
    grid.ActivateCell();

    timing->Button(QStringLiteral("KaraOK"))->trigger();
    ASSERT_TRUE(doc.KaraOKMode);
    EXPECT_TRUE(w->rtfTranslate->isReadOnly());
    ASSERT_EQ(w->rtfTranslate->extraSelections().size(), 1);
    EXPECT_EQ(w->rtfTranslate->extraSelections().first().cursor.selectedText(), QStringLiteral("我"));

    auto stroke = [&](Qt::Key key, double at) {
        control.setPositionDirect(at);
        QTest::keyClick(w->rtfTranslate, key);
    };
    stroke(Qt::Key_F8, 1.0);
    stroke(Qt::Key_Space, 1.5);
    stroke(Qt::Key_Space, 2.0);
    stroke(Qt::Key_Space, 2.25);
    EXPECT_EQ(w->rtfTranslate->extraSelections().first().cursor.selectedText(), QStringLiteral("啊 "));
    stroke(Qt::Key_Space, 2.75);
    stroke(Qt::Key_F7, 3.5); // the time-point key records as Space does
    // The player keys still reach the frame.
    stroke(Qt::Key_F3, 3.75);
    EXPECT_TRUE(control.Calls.contains(QStringLiteral("pause")));
    stroke(Qt::Key_F9, 4.0);

    EXPECT_EQ(grid.GetText(CTimingGrid::ColDialog, 1),
        QStringLiteral("{\\K50}我{\\K50}爱{\\K25}你{\\K50}啊 {\\K75}la"));
    EXPECT_EQ(grid.GetText(CTimingGrid::ColStartTime, 1), QStringLiteral("0:00:01.00"));
    EXPECT_EQ(grid.GetText(CTimingGrid::ColEndTime, 1), QStringLiteral("0:00:04.00"));
    EXPECT_FALSE(doc.KaraOKRecording);
    EXPECT_EQ(grid.ActiveRow(), 2);
    // The strokes typed nothing; the caret went to the next line with text.
    EXPECT_EQ(w->rtfTranslate->toPlainText(), QStringLiteral("我爱你啊 la\n\n下一行"));
    EXPECT_EQ(w->rtfTranslate->textCursor().blockNumber(), 2);
    EXPECT_EQ(w->rtfTranslate->extraSelections().first().cursor.selectedText(), QStringLiteral("下"));

    // Leaving karaoke mode makes the draft editable again.
    timing->Button(QStringLiteral("KaraOK"))->trigger();
    EXPECT_FALSE(doc.KaraOKMode);
    EXPECT_FALSE(w->rtfTranslate->isReadOnly());
    EXPECT_TRUE(w->rtfTranslate->extraSelections().isEmpty());
    QTest::keyClick(w->rtfTranslate, Qt::Key_Space);
    EXPECT_EQ(w->rtfTranslate->toPlainText(), QStringLiteral("我爱你啊 la\n\n 下一行"));
}

TEST_F(Workspace, FindDialogServesTheDraftAndKeepsItsStrings)
{
    frmTranslate *w = newTranslate();
    w->rtfTranslate->setPlainText(QStringLiteral("abc ABC Abc"));
    w->Button(QStringLiteral("Find"))->trigger();
    QPointer<frmFind> find = w->FindWindow;
    ASSERT_TRUE(find);
    w->Button(QStringLiteral("Find"))->trigger();
    EXPECT_EQ(w->FindWindow, find);

    // The empty string finds nothing; up from the start finds nothing.
    find->cmdFindNext->click();
    EXPECT_EQ(prompt.Messages().last(), CTextFind::NotFoundText(QString()));
    find->txtFind->setEditText(QStringLiteral("abc"));
    find->optDirection->button(0)->setChecked(true);
    select(w->rtfTranslate, 0, 0);
    find->cmdFindNext->click();
    EXPECT_EQ(prompt.Messages().last(), CTextFind::NotFoundText(QStringLiteral("abc")));

    find->optDirection->button(1)->setChecked(true);
    find->cmdFindNext->click();
    find->cmdFindNext->click();
    EXPECT_EQ(w->rtfTranslate->textCursor().selectionStart(), 4);
    find->txtReplace->setText(QStringLiteral("x"));
    find->cmdReplaceAll->click();
    EXPECT_EQ(w->rtfTranslate->toPlainText(), QStringLiteral("x x Abc"));
    EXPECT_EQ(w->rtfTranslate->textCursor().position(), 0);
    EXPECT_TRUE(w->Document()->Changed());

    find->chkCase->setChecked(true);
    find->cmdCancel->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(w->FindWindow);

    // Opened again: the strings, the case and the direction are as they were left.
    w->Button(QStringLiteral("Find"))->trigger();
    ASSERT_TRUE(w->FindWindow);
    EXPECT_EQ(w->FindWindow->txtFind->currentText(), QStringLiteral("abc"));
    EXPECT_EQ(w->FindWindow->txtReplace->text(), QStringLiteral("x"));
    EXPECT_TRUE(w->FindWindow->chkCase->isChecked());
    EXPECT_EQ(w->FindWindow->optDirection->checkedId(), 1);
    w->FindWindow->chkCase->setChecked(false);
    w->FindWindow->close();
}

TEST_F(Workspace, NotepadSlotsEditCommandsFilesAndPrinting)
{
    auto *one = dynamic_cast<frmNotePad *>(frame->NewDocument(4));
    auto *two = dynamic_cast<frmNotePad *>(frame->NewDocument(4));
    ASSERT_TRUE(one && two);
    EXPECT_EQ(one->Number(), 1);
    EXPECT_EQ(two->Number(), 2);
    EXPECT_EQ(two->property("Tag").toString(), QStringLiteral("2"));
    one->parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    auto *three = dynamic_cast<frmNotePad *>(frame->NewDocument(4));
    EXPECT_EQ(three->Number(), 1);
    EXPECT_EQ(three->windowTitle(), QStringLiteral("记事本(1)"));

    frmNotePad &pad = *three;
    pad.ActiveWindow = [&pad] { return &pad; };
    pad.rtfEdit->setPlainText(QStringLiteral("第一行\n第二行\n第三行"));
    EXPECT_TRUE(pad.Changed());

    // Go to line: the caret at the start of the line asked for.
    prompt.Inputs = { QStringLiteral("3") };
    pad.EditGotoLine();
    EXPECT_EQ(prompt.Records.last().Prompt, QStringLiteral("请输入行数"));
    EXPECT_EQ(prompt.Records.last().Title, QStringLiteral("前进到指定行"));
    EXPECT_EQ(pad.rtfEdit->textCursor().position(), 8);
    // Cut and paste through plain text.
    select(pad.rtfEdit, 0, 3);
    pad.EditCut();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("第一行"));
    select(pad.rtfEdit, 1, 1);
    pad.EditPaste();
    EXPECT_EQ(pad.rtfEdit->toPlainText(), QStringLiteral("\n第一行第二行\n第三行"));
    select(pad.rtfEdit, 0, 1);
    pad.EditDelete();
    EXPECT_TRUE(pad.rtfEdit->toPlainText().startsWith(QStringLiteral("第一行第二行")));

    // Find next without the dialog moves on from hit to hit.
    FindState().Remember(QStringLiteral("行"));
    select(pad.rtfEdit, 0, 0);
    pad.EditFindNext();
    const int first = pad.rtfEdit->textCursor().selectionStart();
    pad.EditFindNext();
    EXPECT_GT(pad.rtfEdit->textCursor().selectionStart(), first);
    EXPECT_EQ(pad.rtfEdit->textCursor().selectedText(), QStringLiteral("行"));

    // A time stamp from the first player; the printer setting only says it has none.
    control.setPositionDirect(61.25);
    select(pad.rtfEdit, 0, 0);
    pad.EditTimeStamp();
    EXPECT_TRUE(pad.rtfEdit->toPlainText().startsWith(QStringLiteral("0:01:01.25第一行")));
    pad.FilePrinterSetting();
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("在此版本中, 打印设定选项无效"));

    // Printed to a PDF file, with no printer.
    const QString pdf = dir.filePath(QStringLiteral("notes.pdf"));
    pad.RunPrintDialog = [&pdf](QPrinter &printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        return true;
    };
    pad.FilePrint();
    QFile printed(pdf);
    ASSERT_TRUE(printed.open(QIODevice::ReadOnly));
    EXPECT_TRUE(printed.read(5).startsWith("%PDF"));

    // A first save asks for the name (the first filter is Unicode).
    const QString ansi = dir.filePath(QStringLiteral("pad.txt"));
    prompt.FileNames = { ansi };
    ASSERT_TRUE(pad.SaveFile(false));
    EXPECT_FALSE(pad.Changed());
    EXPECT_EQ(pad.FileName(), ansi);
    QFile saved(ansi);
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_TRUE(saved.readAll().startsWith("\xFF\xFE"));

    // A changed window asks by its own words before it goes.
    pad.rtfEdit->setPlainText(QStringLiteral("改了"));
    prompt.Answers = { MsgBoxResult::Cancel };
    EXPECT_FALSE(pad.parentWidget()->close());
    EXPECT_EQ(prompt.Records.last().Prompt, CNotePads::CloseQuestion(ansi));
    EXPECT_EQ(prompt.Records.last().Title, QStringLiteral("关闭翻译"));

    // Without a player there is no stamp.
    frame->ClosePlayer(&playerWindow);
    Velmar->Players()->Delete(playerWindow.Tag());
    pad.EditTimeStamp();
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("因为没有打开的播放器，无法取得时间点"));
    pad.rtfEdit->document()->setModified(false);
    if (CNotePads::Slot *slot = NotePads().At(pad.Number()))
        slot->Changed = false;
}

TEST_F(Workspace, RoutingRecentEntriesAutoSaveAndTheNotepadEntry)
{
    frmTiming *timing = newTiming();
    const QString rtfPath = dir.filePath(QStringLiteral("draft.rtf"));
    {
        QTextDocument doc;
        doc.setPlainText(QStringLiteral("富文本"));
        WriteTextFile(rtfPath, DocumentToRtf(doc), false);
    }
    const QString ini = write(QStringLiteral("notes.INI"), "plain");
    frame->DropFiles({ rtfPath, ini });
    QList<frmTranslate *> drafts;
    for (QWidget *window : frame->DocumentWindows())
        if (auto *t = dynamic_cast<frmTranslate *>(window))
            drafts << t;
    ASSERT_EQ(drafts.size(), 2);
    EXPECT_EQ(drafts[0]->Document()->ScriptType, ScriptType::RichText);
    EXPECT_EQ(drafts[0]->rtfTranslate->toPlainText(), QStringLiteral("富文本"));
    EXPECT_EQ(drafts[1]->rtfTranslate->toPlainText(), QStringLiteral("plain"));
    EXPECT_EQ(timing->cmbTranslate->count(), 2);
    // The recent entry of a draft opens a translation window.
    frame->OpenRecentFile(frame->RecentEntries().at(1).Caption);
    EXPECT_EQ(Velmar->Translates()->Count(), 3);

    // The auto-save writes drafts as rich text and notepads as text.
    auto *pad = dynamic_cast<frmNotePad *>(frame->NewDocument(4));
    pad->rtfEdit->setPlainText(QStringLiteral("记事"));
    frame->AutoSave().AutoSaveTime = 1;
    frame->AutoSaveTick();
    QStringList kinds;
    for (const QString &name : frame->AutoSave().Written)
        kinds << name.section(u'.', -1);
    EXPECT_EQ(kinds, QStringList({ "ass", "rtf", "rtf", "rtf", "txt" }));
    EXPECT_TRUE(read(frame->AutoSave().Written.at(1)).startsWith(QStringLiteral("{\\rtf")));
    EXPECT_EQ(read(frame->AutoSave().Written.last()), QStringLiteral("记事"));
    EXPECT_EQ(drafts[1]->Document()->ScriptType, ScriptType::Plain);
    if (CNotePads::Slot *slot = NotePads().At(pad->Number()))
        slot->Changed = false;

    // No entry for a notepad unless the setting asks for one.
    EXPECT_FALSE(frame->findChild<QAction *>(QStringLiteral("mnuFileNewNotePad")));
    SaveSetting(QStringLiteral("Setting"), QStringLiteral("NotePad"), QStringLiteral("1"));
    frmNotePad::Register(*frame);
    SaveSetting(QStringLiteral("Setting"), QStringLiteral("NotePad"), QStringLiteral("0"));
    QAction *entry = frame->findChild<QAction *>(QStringLiteral("mnuFileNewNotePad"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->text(), QStringLiteral("新建记事本"));
    entry->trigger();
    EXPECT_TRUE(dynamic_cast<frmNotePad *>(frame->DocumentWindows().last()));
}

TEST_F(Workspace, KaraokeModeFollowsTheChosenDraftAndEndsWithItsTimingWindow)
{
    frmTiming *timing = newTiming();
    frmTranslate *first = newTranslate();
    frmTranslate *second = newTranslate();
    ASSERT_EQ(timing->Document()->TranslateWindow, first);
    timing->Button(QStringLiteral("KaraOK"))->trigger();
    EXPECT_TRUE(first->Document()->KaraOK.Mode());
    EXPECT_FALSE(second->Document()->KaraOK.Mode());

    // Another draft chosen: the first is editable again, the second records.
    timing->TranslateWindow(second);
    EXPECT_FALSE(first->rtfTranslate->isReadOnly());
    EXPECT_TRUE(second->rtfTranslate->isReadOnly());
    EXPECT_TRUE(timing->Button(QStringLiteral("KaraOK"))->isChecked());

    // The timing window goes: no draft stays read-only.
    timing->parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(second->Document()->KaraOK.Mode());
    EXPECT_FALSE(second->rtfTranslate->isReadOnly());
}
