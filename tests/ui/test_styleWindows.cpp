// The style, import, speaker and script information windows of a timing window, the
// timing window's own File menu entries in the frame, and the about window.
#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basPlatform.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "script/CSubInfo.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "timing/CTimingGrid.h"
#include "ui/MdiVelmar.h"
#include "ui/frmAbout.h"
#include "ui/frmFont.h"
#include "ui/frmImportFont.h"
#include "ui/frmOwner.h"
#include "ui/frmScriptInfo.h"
#include "ui/frmTiming.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>

#include <gtest/gtest.h>

namespace {

const QString Head = QStringLiteral(
    "[Script Info]\r\nTitle: Episode\r\nScriptType: v4.00+\r\n\r\n"
    "[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, OutlineColour, "
    "BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, BorderStyle, Outline, "
    "Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n"
    "Style: Default,simhei,18,&H00FFFFFF,&H0000FFFF,&H00000000,&H80000000,-1,0,0,0,100,100,0,0.00,1,2,3,2,"
    "20,20,25,134\r\n");
const QString Script = Head
    + QStringLiteral(
        "Style: Sign,Arial,30,&H000000FF,&H0000FFFF,&H00FF0000,&H80000000,0,0,0,0,100,100,0,0.00,"
        "1,2,0,8,10,10,10,1\r\n\r\n"
        "[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, "
        "Text\r\n"
        "Dialogue: 0,0:00:01.00,0:00:02.00,*Default,Ann,0000,0000,0000,,一\r\n"
        "Dialogue: 0,0:00:03.00,0:00:04.00,Sign,Bob,0000,0000,0000,,二\r\n");

// A timing window holding the script above, with a scripted prompt and its own program
// folder.
class StyleWindows : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartCore();
        SetPrompt(&prompt);
        SetProgramFolder(dir.path());
        form = std::make_unique<frmTiming>();
        form->Init(Velmar);
        doc = form->Document();
        const QString path = dir.filePath(QStringLiteral("episode.ass"));
        WriteTextFile(path, Script, true);
        ASSERT_TRUE(form->OpenFile(0, path));
    }
    void TearDown() override
    {
        if (doc)
            doc->setChanged(false);
        form.reset();
        SetProgramFolder(QString());
        SetPrompt(nullptr);
    }
    QStringList StyleCells() const
    {
        CSpread &s = form->Grid().Spread();
        return { s.GetText(CTimingGrid::ColStyle, 1), s.GetText(CTimingGrid::ColStyle, 2) };
    }
    frmFont *OpenFontWindow()
    {
        form->Button(QStringLiteral("Font"))->trigger();
        return qobject_cast<frmFont *>(form->FontWindow.data());
    }
    static QStringList Items(const QListWidget *list)
    {
        QStringList items;
        for (int i = 0; i < list->count(); ++i)
            items << list->item(i)->text();
        return items;
    }

    QTemporaryDir dir;
    CScriptedPrompt prompt;
    std::unique_ptr<frmTiming> form;
    CTiming *doc = nullptr;
};

} // namespace

TEST_F(StyleWindows, FontWindowIsOneOfAKindAndAppliesIntoTheGrid)
{
    frmFont *font = OpenFontWindow();
    ASSERT_TRUE(font);
    EXPECT_EQ(font->windowTitle(), Msg(QStringLiteral("FONT_TITLE_000")));
    EXPECT_EQ(Items(font->lstFont), QStringList({ "Default", "Sign" }));
    EXPECT_EQ(font->txtShowFontName->text(), "simhei");
    EXPECT_TRUE(font->chkBold->isChecked());
    EXPECT_TRUE(font->optAlignment[1]->isChecked());
    EXPECT_GT(font->lstFontName->count(), 0);
    // The button and the popup's entry under the styles find it open.
    form->Button(QStringLiteral("Font"))->trigger();
    emit form->mnuPopup->aboutToShow();
    auto *styles = form->mnuPopup->findChild<QMenu *>(QStringLiteral("mnuTimingFont"));
    ASSERT_TRUE(styles);
    ASSERT_EQ(styles->actions().size(), 4); // Default, Sign, a separator, the window
    EXPECT_EQ(styles->actions().at(1)->text(), "Sign");
    styles->actions().last()->trigger();
    EXPECT_EQ(prompt.Messages(), QStringList({ "字体窗口已经存在", "字体窗口已经存在" }));
    EXPECT_EQ(form->findChildren<frmFont *>().size(), 1);

    // A change that is not applied leaves the document as it was.
    font->lstFont->setCurrentRow(1);
    EXPECT_EQ(font->txtShowFontName->text(), "Arial");
    font->txtFontSize->setText(QStringLiteral("44"));
    emit font->txtFontSize->editingFinished();
    EXPECT_EQ(font->Model().SelectedFont()->FontSize(), 44);
    font->txtAlpha[0]->setText(QStringLiteral("300"));
    emit font->txtAlpha[0]->editingFinished();
    EXPECT_EQ(font->txtAlpha[0]->text(), "255");
    EXPECT_EQ(font->Model().SelectedFont()->PrimaryAlpha, 255);
    font->txtEncode->setText(QStringLiteral("x"));
    emit font->txtEncode->editingFinished();
    EXPECT_EQ(prompt.Messages().last(), "文字编码项请输入数字");
    EXPECT_EQ(font->txtEncode->text(), "1");
    EXPECT_EQ(doc->Fonts->Item(QStringLiteral("Sign"))->FontSize(), 30);
    EXPECT_FALSE(doc->Changed());
    ASSERT_FALSE(font->picSample->pixmap().isNull());

    // Rename, then Apply: the list follows at once, the grid's lines at Apply.
    prompt.Inputs.push_back(QStringLiteral("Title"));
    font->cmdRename->click();
    EXPECT_EQ(Items(font->lstFont), QStringList({ "Default", "Title" }));
    EXPECT_EQ(StyleCells(), QStringList({ "Default", "Sign" }));
    font->cmdApply->click();
    EXPECT_EQ(StyleCells(), QStringList({ "Default", "Title" }));
    EXPECT_EQ(form->Grid().StyleItems(), QStringList({ "Default", "Title" }));
    EXPECT_EQ(doc->Fonts->Item(QStringLiteral("Title"))->FontSize(), 44);
    EXPECT_TRUE(doc->Changed());
    EXPECT_EQ(font->lstFont->currentItem()->text(), "Title");

    // The last style cannot go.
    prompt.DefaultYesNo = MsgBoxResult::Yes;
    font->cmdDelete->click();
    font->cmdDelete->click();
    EXPECT_EQ(Items(font->lstFont), QStringList({ "Default" }));
    EXPECT_EQ(prompt.Messages().last(), "至少需要保留一个字体");

    // Closed without Apply: the document keeps both styles.
    font->cmdClose->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(form->FontWindow);
    EXPECT_EQ(doc->Fonts->Count(), 2);
}

TEST_F(StyleWindows, StyleFilesComeInThroughTheImportWindowAndGoOutInTheirForm)
{
    const QString other = dir.filePath(QStringLiteral("other.ass"));
    WriteTextFile(other,
        Head
            + QStringLiteral(
                "Style: Karaoke,Arial,24,&H00FFFFFF,&H0000FFFF,&H00000000,&H80000000,0,0,0,0,100,100,"
                "0,0.00,1,2,0,2,10,10,10,1\r\n"),
        true);
    frmImportFont *shown = nullptr;
    int round = 0;
    auto chooseAllThenCancel = [&](frmImportFont &dialog) {
        shown = &dialog;
        EXPECT_EQ(Items(dialog.lstFont), QStringList({ "Default", "Karaoke" }));
        dialog.lstFont->selectAll();
        dialog.cmdOK->click(); // "Default" is taken: the window stays
        EXPECT_EQ(dialog.result(), QDialog::Rejected);
        EXPECT_EQ(
            prompt.Messages().last(), "所选字体的名字[Default]已经存在于现有字体中，请改变名字后再导入");
        dialog.cmdCancel->click();
    };
    auto chooseKaraoke = [&](frmImportFont &dialog) {
        ++round;
        dialog.lstFont->item(1)->setSelected(true);
        dialog.cmdOK->click();
    };

    // Open ▸ 字体 opens the style window and its Open.
    prompt.FileNames = { other };
    form->MakeFontWindow = [&](frmTiming &timing) -> QWidget * {
        auto *w = new frmFont(&timing);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->Init(timing);
        w->RunImport = chooseAllThenCancel;
        return w;
    };
    form->findChild<QAction *>(QStringLiteral("FileOpenFont"))->trigger();
    auto *font = qobject_cast<frmFont *>(form->FontWindow.data());
    ASSERT_TRUE(font && shown);
    EXPECT_EQ(Items(font->lstFont), QStringList({ "Default", "Sign" }));

    font->RunImport = chooseKaraoke;
    prompt.FileNames = { other };
    form->findChild<QAction *>(QStringLiteral("FileOpenFont"))->trigger();
    EXPECT_EQ(round, 1);
    EXPECT_EQ(Items(font->lstFont), QStringList({ "Default", "Sign", "Karaoke" }));
    EXPECT_EQ(font->lstFont->currentItem()->text(), "Karaoke");
    EXPECT_EQ(doc->Fonts->Count(), 2);

    // Another kind of file is refused.
    prompt.FileNames = { dir.filePath(QStringLiteral("a.srt")) };
    font->tlbFile->findChild<QAction *>(QStringLiteral("Open"))->trigger();
    EXPECT_EQ(prompt.Messages().last(), Msg(QStringLiteral("COMM_MSG_201")));

    // Save writes the window's styles in the form of the name.
    const QString saved = dir.filePath(QStringLiteral("styles.ssa"));
    prompt.FileNames = { saved };
    font->tlbFile->findChild<QAction *>(QStringLiteral("Save"))->trigger();
    const QString text = ReadWholeFile(saved, false).Text;
    EXPECT_TRUE(text.startsWith(QStringLiteral("[V4 Styles]\r\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("\r\nStyle: Karaoke,Arial,24,&HFFFFFF,")));
}

TEST_F(StyleWindows, ScriptInformationAndSpeakersCancelLeavesTheDocumentOkWritesIt)
{
    int shown = 0;
    form->RunDialog = [&](QDialog &dialog) {
        auto *info = qobject_cast<frmScriptInfo *>(&dialog);
        ASSERT_TRUE(info);
        ++shown;
        EXPECT_EQ(info->windowTitle(), Msg(QStringLiteral("SUBINFO_TITLE_000")));
        EXPECT_EQ(info->tabScriptInfo->count(), 2);
        EXPECT_EQ(info->txtTitle->text(), " Episode"); // the blank behind "Title:" is the value's
        EXPECT_EQ(info->cmbScriptType->currentIndex(), 1);
        EXPECT_TRUE(info->cmbWrapStyle->isEnabled());
        EXPECT_TRUE(info->txtVelmarComment->isReadOnly());
        EXPECT_TRUE(info->txtVelmarComment->toPlainText().startsWith(QStringLiteral("此字幕由Velmar生成")));
        info->cmbScriptType->setCurrentIndex(0);
        EXPECT_FALSE(info->cmbWrapStyle->isEnabled());
        EXPECT_FALSE(info->lblWrapStyle->isEnabled());
        info->cmbScriptType->setCurrentIndex(1);
        info->txtTitle->setText(QStringLiteral("Pilot"));
        info->txtPlayResX->setText(QStringLiteral("1280"));
        info->txtLrcArtist->setText(QStringLiteral("Band"));
        (shown == 1 ? info->cmdCancel : info->cmdOK)->click();
    };
    form->Button(QStringLiteral("SubInfomation"))->trigger();
    EXPECT_EQ(doc->ScriptInfo->Title(), " Episode");
    EXPECT_EQ(doc->ScriptInfo->PlayResX(), 0);
    EXPECT_FALSE(doc->Changed());
    form->Button(QStringLiteral("SubInfomation"))->trigger();
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(doc->ScriptInfo->Title(), "Pilot");
    EXPECT_EQ(doc->ScriptInfo->PlayResX(), 1280);
    EXPECT_EQ(doc->ScriptInfo->LrcArtist(), "Band");
    EXPECT_TRUE(doc->Changed());
    EXPECT_TRUE(doc->Content().contains(QStringLiteral("Title:Pilot\r\n")));

    // The speakers of the owner column, from the popup's entry under them.
    doc->setChanged(false);
    const QStringList speakers = form->Grid().OwnerItems();
    ASSERT_TRUE(speakers.contains(QStringLiteral("Ann")) && speakers.contains(QStringLiteral("Bob")));
    form->RunDialog = [&](QDialog &dialog) {
        auto *owner = qobject_cast<frmOwner *>(&dialog);
        ASSERT_TRUE(owner);
        EXPECT_EQ(Items(owner->lstOwner), speakers);
        prompt.Inputs.push_back(QStringLiteral("Cat"));
        owner->cmdAdd->click();
        EXPECT_EQ(Items(owner->lstOwner), speakers + QStringList { QStringLiteral("Cat") });
        (++shown == 3 ? owner->cmdCancel : owner->cmdOK)->click();
    };
    emit form->mnuPopup->aboutToShow();
    QAction *owners = form->findChild<QAction *>(QStringLiteral("mnuTimingOwnerWindow"));
    ASSERT_TRUE(owners);
    EXPECT_EQ(form->mnuPopup->findChild<QMenu *>(QStringLiteral("mnuTimingOwner"))->actions().last(), owners);
    owners->trigger();
    EXPECT_EQ(form->Grid().OwnerItems(), speakers);
    EXPECT_FALSE(doc->Changed());
    owners->trigger();
    EXPECT_EQ(form->Grid().OwnerItems(), speakers + QStringList { QStringLiteral("Cat") });
    EXPECT_EQ(form->Grid().Spread().GetText(CTimingGrid::ColOwner, 2), "Bob");
    EXPECT_TRUE(doc->Changed());
}

TEST_F(StyleWindows, TheFrameShowsTheTimingWindowsFileEntriesAndItsAboutWindow)
{
    MdiVelmar frame;
    frame.Init(Velmar);
    frmTiming::Register(frame);
    auto *timing = dynamic_cast<frmTiming *>(frame.NewDocument(0));
    ASSERT_TRUE(timing);
    emit frame.mnuFile->aboutToShow();
    const QList<QAction *> entries = frame.mnuFile->actions();
    ASSERT_TRUE(entries.contains(timing->mnuFileSaveTiming));
    EXPECT_EQ(entries.indexOf(timing->mnuFileSaveAsTiming), entries.indexOf(timing->mnuFileSaveTiming) + 1);
    EXPECT_GT(entries.indexOf(timing->mnuFileSaveTiming), entries.indexOf(frame.mnuFileOpenTiming));
    EXPECT_EQ(timing->mnuFileSaveTiming->text(), Msg(QStringLiteral("MENU_FILE_121")));
    EXPECT_EQ(timing->mnuFileSaveAsTiming->text(), Msg(QStringLiteral("MENU_FILE_131")));
    // Save goes to the window's document, under its name.
    const QString path = dir.filePath(QStringLiteral("saved.ass"));
    timing->Document()->setFileName(path);
    timing->mnuFileSaveTiming->trigger();
    EXPECT_TRUE(ReadWholeFile(path, false).Text.contains(QStringLiteral("[Events]")));
    // Gone with the window.
    timing->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    emit frame.mnuFile->aboutToShow();
    for (QAction *a : frame.mnuFile->actions())
        EXPECT_NE(a->objectName(), "mnuFileSaveTiming");

    // The about window, with the catalogue's texts and the system information.
    bool seen = false;
    QTimer::singleShot(0, &frame, [&] {
        for (QWidget *w : QApplication::topLevelWidgets())
            if (auto *about = qobject_cast<frmAbout *>(w); about && about->isVisible()) {
                seen = true;
                EXPECT_EQ(about->windowTitle(), Msg(QStringLiteral("ABOUT_TITLE_000")));
                EXPECT_EQ(about->lblTitle->text(), "Velmar");
                EXPECT_EQ(about->cmdOK->text(), Msg(QStringLiteral("ABOUT_BUTTON_100")));
                about->cmdSysInfo->click();
                about->cmdOK->click();
            }
    });
    frame.mnuHelpVersion->trigger();
    EXPECT_TRUE(seen);
    ASSERT_FALSE(prompt.Records.isEmpty());
    EXPECT_EQ(prompt.Records.last().Title, Msg(QStringLiteral("ABOUT_BUTTON_200")));
    EXPECT_TRUE(prompt.Records.last().Prompt.startsWith(QStringLiteral("Velmar 0.75\n")));
}
