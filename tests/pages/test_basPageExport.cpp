// The save of all pages: the same files from every core as from one box drawing one page
// after another, the picture folder, a cancel that leaves a whole list, and the job that
// runs the save in the background.
#include "core/CScriptedPrompt.h"
#include "core/Class.h"
#include "pages/CPageExportJob.h"
#include "pages/CPicPreviewPages.h"
#include "pages/CPictureBox.h"
#include "pages/basBitmap.h"
#include "pages/basPageExport.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"

#include "PageTestSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

namespace {

// Every file under a folder by its path below it, with its bytes.
QMap<QString, QByteArray> filesUnder(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            files.insert(QDir(folder).relativeFilePath(file.fileName()), file.readAll());
    }
    return files;
}

// The lines of a UTF-16LE page list behind its mark.
QStringList listLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return { QStringLiteral("<missing>") };
    const QByteArray bytes = file.readAll();
    if (!bytes.startsWith("\xFF\xFE"))
        return { QStringLiteral("<no mark>") };
    return QStringView(reinterpret_cast<const char16_t *>(bytes.constData()) + 1, bytes.size() / 2 - 1)
        .toString()
        .split(QStringLiteral("\r\n"));
}

// Stops after a number of pages listed.
struct CancelAfter : basPageExport::IProgress
{
    int After;
    int Calls = 0;
    explicit CancelAfter(int after)
        : After(after)
    { }
    void Listed(int listed, int) override { Calls = listed; }
    bool Cancelled() override { return Calls >= After; }
};

class PageExport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        fonts = Class::MakeCollection<CFonts>();
        CFont *top = fonts->Create(QStringLiteral("Top"));
        top->setAlignment(8);
        top->setFontName(QStringLiteral("Arial"));
        top->setFontSize(24);
        top->setPrimaryColour(u"255");
        CFont *big = fonts->Create(QStringLiteral("Big"));
        big->setFontName(QStringLiteral("Noto Sans CJK SC"));
        big->setFontSize(40);
        big->setBold(1);
        big->setPrimaryColour(u"65535");
        pages.setPicture(&box);
        pages.setVideoType(0);
    }
    void TearDown() override { SetPrompt(nullptr); }

    // `count` lines of a film: each overlaps the next, every third in a style, every
    // fifth in one that is missing (drawn in white Arial at whatever size the box has).
    void load(int count)
    {
        script = Class::MakeCollection<CSSAContent>();
        const QString styles[] = { QStringLiteral("Big"), QStringLiteral("Default"), QStringLiteral("*Top"),
            QStringLiteral("Missing"), QStringLiteral("Default") };
        for (int i = 0; i < count; ++i) {
            CSSAContentLine *line = script->Create();
            line->setStartTime(1 + i * 1.5);
            line->setEndTime(3 + i * 1.5);
            line->setStyle(styles[i % 5]);
            line->setDialog(QStringLiteral("第%1行字幕\\Nline {\\b1}%1").arg(i + 1));
        }
        pages.setSource(script.get(), fonts.get());
        pages.CreatePages();
    }

    CScriptedPrompt prompt;
    CPictureBox box;
    std::unique_ptr<CFonts> fonts;
    std::unique_ptr<CSSAContent> script;
    CPicPreviewPages pages;
    QTemporaryDir dir;
};

} // namespace

TEST_F(PageExport, EveryCoreWritesWhatOneBoxDrawsPageAfterPage)
{
    load(12);
    pages.Create(); // a page from 0 to 0: drawn and listed, not saved
    // The box as the window may leave it: a font from a page shown before.
    box.setFontSize(30);
    box.setFontBold(true);
    const CBoxFont before = CBoxFont::Of(box);

    // One box, one page after another, as the page list is drawn by hand; then page 1
    // shown again.
    QList<QByteArray> drawn;
    for (CPicPreviewPage *page : pages) {
        page->Display();
        drawn << basBitmap::BitmapFileBytes(box.Image());
    }
    pages.DisplayPage(1);
    const CBoxFont shownFont = CBoxFont::Of(box);
    const QByteArray shown = basBitmap::BitmapFileBytes(box.Image());

    const QString name = dir.filePath(QStringLiteral("film.sst"));
    pages.PictureFolder = true;
    QMap<QString, QByteArray> byWorkers[2];
    for (const int threads : { 4, 1 }) {
        before.ApplyTo(box);
        pages.ExportThreads = threads;
        ASSERT_TRUE(pages.SaveAllPages(name));
        byWorkers[threads == 1] = filesUnder(dir.path());
        QDir(dir.filePath(QStringLiteral("film"))).removeRecursively();
        QFile::remove(name);
    }
    EXPECT_EQ(byWorkers[0], byWorkers[1]);

    const QMap<QString, QByteArray> &files = byWorkers[0];
    ASSERT_EQ(files.size(), pages.Count()); // the list and every page but the last
    for (qsizetype i = 0; i + 1 < pages.Count(); ++i) {
        const QString bitmap = QStringLiteral("film/1.%1.bmp").arg(i + 1);
        ASSERT_TRUE(files.contains(bitmap)) << bitmap.toStdString();
        EXPECT_EQ(files[bitmap], drawn[i]) << "page " << i + 1;
        EXPECT_EQ(pages.At(i)->Content(), dir.filePath(bitmap));
    }
    // The box goes on from the font the drawing of all pages left, showing page 1.
    EXPECT_EQ(CBoxFont::Of(box), shownFont);
    EXPECT_EQ(basBitmap::BitmapFileBytes(box.Image()), shown);
    EXPECT_EQ(pages.At(0)->Dialog(), QStringLiteral("第1行字幕\r\nline 1"));
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(PageExport, ThePictureFolderIsMadeBesideTheList)
{
    load(2);
    pages.PictureFolder = true;
    const QString name = dir.filePath(QStringLiteral("disc.sst"));
    ASSERT_TRUE(pages.SaveAllPages(name));
    const QStringList lines = listLines(name);
    ASSERT_EQ(lines.size(), 18 + 3 + 1);
    EXPECT_EQ(lines[5], QStringLiteral("Directory   ") + dir.path());
    EXPECT_EQ(lines[18],
        QStringLiteral("1\t\t00:00:01:00\t00:00:02:50\t") + dir.filePath(QStringLiteral("disc/1.1.bmp")));
    EXPECT_EQ(lines[20],
        QStringLiteral("3\t\t00:00:03:00\t00:00:04:50\t") + dir.filePath(QStringLiteral("disc/1.3.bmp")));
    // headers and size of a 724 by 484 page
    QFile bitmap(dir.filePath(QStringLiteral("disc/1.2.bmp")));
    ASSERT_TRUE(bitmap.open(QIODevice::ReadOnly));
    const QByteArray bytes = bitmap.readAll();
    EXPECT_EQ(bytes.size(), 176294);
    EXPECT_EQ(bytes.left(2), "BM");
    EXPECT_EQ(bytes.mid(18, 8), QByteArray::fromHex("d4020000e4010000"));

    // A list without an extension takes a folder of its own name and "_bmp".
    pages.PictureFolder = true;
    ASSERT_TRUE(pages.SaveAllPages(dir.filePath(QStringLiteral("plain"))));
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("plain_bmp/1.1.bmp"))));
    // Without the option the bitmaps are named under the list itself, which is a file.
    pages.PictureFolder = false;
    ASSERT_TRUE(pages.SaveAllPages(dir.filePath(QStringLiteral("other.sst"))));
    EXPECT_EQ(listLines(dir.filePath(QStringLiteral("other.sst")))[18],
        QStringLiteral("1\t\t00:00:01:00\t00:00:02:50\t")
            + dir.filePath(QStringLiteral("other.sst/1.1.bmp")));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("other"))));
}

TEST_F(PageExport, ACancelLeavesAWholeShorterListAndOnlyWholeBitmaps)
{
    load(40);
    const QString name = dir.filePath(QStringLiteral("cut.sst"));
    QList<CPageDrawing> drawings;
    for (const CPicPreviewPage *page : pages)
        drawings << page->Drawing();
    for (const int threads : { 1, 2 }) {
        QDir(dir.filePath(QStringLiteral("cut"))).removeRecursively();
        basPageExport::Settings settings;
        settings.PictureFolder = true;
        settings.Threads = threads;
        CancelAfter progress(5);
        const basPageExport::Result result = basPageExport::ExportPages(name, drawings, settings, &progress);
        EXPECT_TRUE(result.Cancelled);
        EXPECT_TRUE(result.Error.isEmpty());
        const int listed = int(result.Pages.size());
        // one by one stops at once; workers finish the pages they had begun
        if (threads == 1) {
            EXPECT_EQ(listed, 5);
        }
        EXPECT_GE(listed, 5);
        EXPECT_LT(listed, drawings.size());

        const QStringList lines = listLines(name);
        ASSERT_EQ(lines.size(), 18 + listed + 1) << threads;
        EXPECT_TRUE(lines.last().isEmpty()); // the last line ended
        const QMap<QString, QByteArray> bitmaps = filesUnder(dir.filePath(QStringLiteral("cut")));
        EXPECT_EQ(bitmaps.size(), listed);
        for (int n = 1; n <= listed; ++n) {
            const QString file = QStringLiteral("1.%1.bmp").arg(drawings[n - 1].SerialNo);
            EXPECT_TRUE(lines[17 + n].startsWith(QString::number(n) + u'\t'));
            EXPECT_TRUE(lines[17 + n].endsWith(file));
            EXPECT_EQ(bitmaps.value(file).size(), 176294) << file.toStdString();
        }
    }
}

TEST_F(PageExport, TheJobRunsTheSaveInTheBackground)
{
    load(30);
    const QString name = dir.filePath(QStringLiteral("job.sst"));
    pages.PictureFolder = true;
    ASSERT_TRUE(pages.SaveAllPages(name));
    const QMap<QString, QByteArray> inPlace = filesUnder(dir.path());
    QDir(dir.filePath(QStringLiteral("job"))).removeRecursively();

    {
        CPageExportJob job;
        job.Start(*pages.PrepareSave(name));
        EXPECT_EQ(job.PagesTotal(), pages.Count());
        job.Wait();
        ASSERT_TRUE(job.Finished());
        EXPECT_EQ(job.PagesListed(), pages.Count());
        EXPECT_FALSE(job.Result().Cancelled);
        EXPECT_TRUE(pages.FinishSave(job.Result()));
    }
    EXPECT_EQ(filesUnder(dir.path()), inPlace);

    // Cancelled before it started: the list has its head only, and no page is drawn.
    QDir(dir.filePath(QStringLiteral("job"))).removeRecursively();
    CPageExportJob job;
    job.Cancel();
    job.Start(*pages.PrepareSave(name));
    job.Wait();
    EXPECT_TRUE(job.Result().Cancelled);
    EXPECT_TRUE(job.Result().Pages.isEmpty());
    EXPECT_EQ(listLines(name).size(), 18 + 1);
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("job/1.1.bmp"))));
}

TEST(PageExportHead, PalPagesGetThePalHead)
{
    const QStringList ntsc = basPageExport::SSTHead(QStringLiteral("/d")).split(QStringLiteral("\r\n"));
    const QStringList pal = basPageExport::SSTHead(QStringLiteral("/d"), 1).split(QStringLiteral("\r\n"));
    ASSERT_EQ(ntsc.size(), 19);
    ASSERT_EQ(pal.size(), 19);
    QStringList changed;
    for (int i = 0; i < ntsc.size(); ++i)
        if (ntsc[i] != pal[i])
            changed << pal[i];
    EXPECT_EQ(changed,
        QStringList({ QStringLiteral("TV_Type PAL"), QStringLiteral("Tape_Type NON_DROP"),
            QStringLiteral("Pixel_Area  (0 573)"), QStringLiteral("Display_Area    (0 2 719 575)") }));
    EXPECT_EQ(ntsc[5], QStringLiteral("Directory   /d"));
    EXPECT_EQ(basPageExport::WorkerCount(1, 100), 1);
    EXPECT_EQ(basPageExport::WorkerCount(8, 3), 3);
    EXPECT_EQ(basPageExport::WorkerCount(0, 0), 1);
    EXPECT_EQ(basPageExport::WorkerCount(0, 1000), std::max(1, QThread::idealThreadCount()));
}
