// The picture preview window: opened once from the timing window's SST button on the
// grid's lines, its page list and box, the save of all pages behind a progress that can
// cancel, the page-list file it can load, and its place among the frame's documents.
#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "timing/CTimingGrid.h"
#include "ui/CSpreadView.h"
#include "ui/MdiVelmar.h"
#include "ui/frmFileOption.h"
#include "ui/frmPicPreview.h"
#include "ui/frmTiming.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace {

// A script of `count` lines, each overlapping the next, every fourth at the top.
QString scriptText(int count)
{
    QString text = QStringLiteral(
        "[Script Info]\r\nScriptType: v4.00+\r\n\r\n[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, "
        "PrimaryColour, SecondaryColour, OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, "
        "ScaleX, ScaleY, Spacing, Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, "
        "MarginV, Encoding\r\n"
        "Style: Default,Noto Sans CJK SC,28,&H00ffffff,&H0000ffff,&H00000000,&H80000000,0,0,0,0,100,100,"
        "0,0.00,1,2,3,2,20,20,25,134\r\n"
        "Style: Top,Noto Sans CJK SC,20,&H0000ffff,&H0000ffff,&H00000000,&H80000000,-1,0,0,0,100,100,"
        "0,0.00,1,2,3,8,20,20,25,134\r\n\r\n"
        "[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n");
    for (int i = 0; i < count; ++i) {
        const auto time = [](double s) {
            return QStringLiteral("0:%1:%2.%3")
                .arg(int(s) / 60, 2, 10, QChar(u'0'))
                .arg(int(s) % 60, 2, 10, QChar(u'0'))
                .arg(int(s * 100) % 100, 2, 10, QChar(u'0'));
        };
        text += QStringLiteral("Dialogue: 0,%1,%2,%3,,0000,0000,0000,,第%4句\r\n")
                    .arg(time(1 + i * 1.5), time(3 + i * 1.5),
                        i % 4 == 3 ? QStringLiteral("Top") : QStringLiteral("Default"))
                    .arg(i + 1);
    }
    return text;
}

QStringList listLines(const QString &path)
{
    return ReadWholeFile(path, false).Text.split(QStringLiteral("\r\n"));
}

class PicPreviewWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartCore();
        SetPrompt(&prompt);
        form = std::make_unique<frmTiming>();
        form->Init(Velmar);
        scriptPath = dir.filePath(QStringLiteral("episode.ass"));
        WriteTextFile(scriptPath, scriptText(40), true);
        ASSERT_TRUE(form->OpenFile(0, scriptPath));
    }
    void TearDown() override
    {
        prompt.DefaultYesNo = MsgBoxResult::No;
        form.reset();
        SaveSetting(QStringLiteral("PicPreview"), QStringLiteral("PictureFolder"), QStringLiteral("0"));
        SetPrompt(nullptr);
    }

    frmPicPreview *openPreview()
    {
        form->Button(QStringLiteral("PicPreview"))->trigger();
        return qobject_cast<frmPicPreview *>(form->PicPreviewWindow.data());
    }
    // Saves all pages through the window and waits for the end.
    void saveAll(frmPicPreview &preview, bool cancel = false)
    {
        QSignalSpy finished(&preview, &frmPicPreview::SaveFinished);
        preview.cmdSaveAll->click();
        ASSERT_TRUE(preview.Saving());
        ASSERT_TRUE(preview.Progress() && preview.Progress()->isVisible());
        if (cancel) {
            auto *button = preview.Progress()->findChild<QPushButton *>();
            ASSERT_TRUE(button);
            button->click();
        }
        ASSERT_TRUE(finished.wait(60000));
        EXPECT_FALSE(preview.Saving());
        EXPECT_EQ(preview.Progress(), nullptr);
    }

    QTemporaryDir dir;
    QString scriptPath;
    CScriptedPrompt prompt;
    std::unique_ptr<frmTiming> form;
};

} // namespace

TEST_F(PicPreviewWindowTest, TheSSTButtonOpensOneWindowOnTheGridsLines)
{
    // A change in the grid reaches the pages: the button stores the grid first.
    CSpread &grid = form->Grid().Spread();
    grid.SetText(CTimingGrid::ColDialog, 1, QStringLiteral("改过的第一句"));
    frmPicPreview *preview = openPreview();
    ASSERT_TRUE(preview);
    CPicPreviewPages &pages = preview->Model().Pages();
    EXPECT_EQ(pages.Count(), 79);
    EXPECT_EQ(preview->spdTime->Spread()->MaxRows(), 79);
    EXPECT_EQ(preview->spdTime->Spread()->GetText(1, 2), QStringLiteral("00:00:02:50"));
    EXPECT_EQ(preview->picPreview->pixmap().size(), QSize(724, 484));
    EXPECT_EQ(pages.At(0)->Dialog(), QStringLiteral("改过的第一句"));

    form->Button(QStringLiteral("PicPreview"))->trigger();
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("图片预览窗口已经存在"));
    EXPECT_EQ(form->PicPreviewWindow.data(), preview);

    emit preview->spdTime->CellClicked(1, 7);
    EXPECT_EQ(pages.At(6)->Dialog(), QStringLiteral("第4句"));
    const QImage shown = preview->picPreview->pixmap().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(shown, preview->Model().Picture().Image().convertToFormat(QImage::Format_RGB32));

    EXPECT_FALSE(preview->SaveFile(false));
    EXPECT_EQ(prompt.Messages().last(), Msg(QStringLiteral("COMM_MSG_101")));
    preview->txtFileName->clear();
    preview->cmdSaveAll->click();
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("请选择SST文件名"));
    EXPECT_FALSE(preview->Saving());
}

TEST_F(PicPreviewWindowTest, TheWindowOutlivesItsTimingWindow)
{
    // As the frame makes it: a window of its own, not a child of the timing window.
    form->MakePicPreviewWindow = [](frmTiming &timing) -> QWidget * {
        auto *w = new frmPicPreview;
        w->Init(timing);
        return w;
    };
    std::unique_ptr<frmPicPreview> preview(openPreview());
    ASSERT_TRUE(preview);
    prompt.DefaultYesNo = MsgBoxResult::No;
    form->close();
    form.reset();
    preview->cmdReload->click();
    EXPECT_EQ(preview->Model().Pages().Count(), 79);
    emit preview->spdTime->CellClicked(1, 3);
    EXPECT_EQ(preview->Model().Pages().At(2)->Dialog(), QStringLiteral("第2句"));
}

TEST_F(PicPreviewWindowTest, SaveAllRunsBehindAProgressThatCanCancel)
{
    frmPicPreview *preview = openPreview();
    ASSERT_TRUE(preview);
    const QString name = dir.filePath(QStringLiteral("film.sst"));
    preview->txtFileName->setText(name);
    preview->chkPictureFolder->setChecked(true);
    EXPECT_EQ(GetSetting(QStringLiteral("PicPreview"), QStringLiteral("PictureFolder")), QStringLiteral("1"));

    // The window's own events go on while the pages are written.
    bool savingWhileEventsRan = false;
    QTimer::singleShot(0, preview, [&] { savingWhileEventsRan = preview->Saving(); });
    saveAll(*preview);
    EXPECT_TRUE(savingWhileEventsRan);
    QStringList lines = listLines(name);
    ASSERT_EQ(lines.size(), 18 + 79 + 1);
    EXPECT_EQ(lines[18 + 78],
        QStringLiteral("79\t\t00:01:00:00\t00:01:01:50\t") + dir.filePath(QStringLiteral("film/1.79.bmp")));
    EXPECT_EQ(QDir(dir.filePath(QStringLiteral("film"))).entryList(QDir::Files).size(), 79);
    EXPECT_EQ(QFileInfo(dir.filePath(QStringLiteral("film/1.40.bmp"))).size(), 176294);
    EXPECT_EQ(preview->Model().Pages().At(39)->Content(), dir.filePath(QStringLiteral("film/1.40.bmp")));

    QDir(dir.filePath(QStringLiteral("film"))).removeRecursively();
    saveAll(*preview, true);
    lines = listLines(name);
    const int listed = int(lines.size()) - 18 - 1;
    EXPECT_LT(listed, 79);
    EXPECT_TRUE(lines.last().isEmpty());
    EXPECT_EQ(QDir(dir.filePath(QStringLiteral("film"))).entryList(QDir::Files).size(), listed);
}

TEST_F(PicPreviewWindowTest, LoadSSTTakesAPageListThroughTheFileOptions)
{
    frmPicPreview *preview = openPreview();
    ASSERT_TRUE(preview);
    const QString list = dir.filePath(QStringLiteral("disc.sst"));
    WriteTextFile(list,
        QStringLiteral(
            "st_format 2\r\nSP_NUMBER   START   END FILE_NAME\r\n"
            "1\t\t00:00:23:26\t00:00:25:23\t1.1.bmp\r\n2\t\t00:00:26:00\t00:00:27:00\t1.2.bmp\r\n"),
        true);
    prompt.FileNames.push_back(list);
    int shown = 0;
    preview->RunFileOption = [&](frmFileOption &dialog) {
        ++shown;
        EXPECT_EQ(dialog.Model.ScriptType(), ScriptType::SST);
        return dialog.Model.Ok();
    };
    preview->cmdLoadSST->click();
    EXPECT_EQ(shown, 1);
    CPicPreviewPages &pages = preview->Model().Pages();
    ASSERT_EQ(pages.Count(), 2);
    EXPECT_EQ(pages.At(0)->StartTimeString(), QStringLiteral("00:00:23:26"));
    EXPECT_EQ(pages.At(1)->Dialog(), QStringLiteral("1.2.bmp"));
    EXPECT_EQ(preview->spdTime->Spread()->MaxRows(), 2);

    // By name, and a file that is not there leaves the pages as they were.
    EXPECT_TRUE(preview->OpenFile(0, scriptPath));
    EXPECT_EQ(pages.Count(), 79);
    EXPECT_FALSE(preview->OpenFile(0, dir.filePath(QStringLiteral("gone.sst"))));
    EXPECT_EQ(prompt.Messages().last(),
        QStringLiteral(" 无法打开文件。 ") + dir.filePath(QStringLiteral("gone.sst")));
    EXPECT_EQ(pages.Count(), 79);
}

TEST_F(PicPreviewWindowTest, TheFramesPreviewIsADocumentThatCannotBeSaved)
{
    MdiVelmar frame;
    frame.Init(Velmar);
    frmTiming::Register(frame);
    auto *timing = dynamic_cast<frmTiming *>(frame.NewDocument(0));
    ASSERT_TRUE(timing);
    ASSERT_TRUE(timing->OpenFile(0, scriptPath));
    timing->Button(QStringLiteral("PicPreview"))->trigger();
    auto *preview = qobject_cast<frmPicPreview *>(timing->PicPreviewWindow.data());
    ASSERT_TRUE(preview);
    EXPECT_TRUE(frame.DocumentWindows().contains(preview));
    EXPECT_EQ(preview->Model().Pages().Count(), 79);
    frame.MdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow *>(preview->parentWidget()));
    ASSERT_EQ(frame.ActiveDocument(), preview);
    EXPECT_FALSE(frame.SaveDocument(0));
    EXPECT_EQ(prompt.Messages().last(), Msg(QStringLiteral("COMM_MSG_101")));
}
