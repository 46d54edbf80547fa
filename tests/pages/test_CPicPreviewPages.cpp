#include "core/CScriptedPrompt.h"
#include "core/CSpread.h"
#include "core/Class.h"
#include "core/basPlatform.h"
#include "core/basTime.h"
#include "pages/CPicPreviewPages.h"
#include "pages/CPictureBox.h"
#include "pages/basPageCut.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"

#include "PageTestSupport.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Timed
{
    double start, end;
    QString text;
    QString style = {};
};

std::unique_ptr<CSSAContent> makeScript(const QList<Timed> &lines)
{
    auto script = Class::MakeCollection<CSSAContent>();
    for (const Timed &l : lines) {
        CSSAContentLine *line = script->Create();
        line->setStartTime(l.start);
        line->setEndTime(l.end);
        line->setDialog(l.text);
        line->setStyle(l.style);
    }
    return script;
}

// What a page holds, line by line, in a form that compares.
struct PageView
{
    double start, end;
    QStringList lines; // "text|start|end"

    bool operator==(const PageView &) const = default;
};

QString lineView(const CSSAContentLine &line)
{
    return line.Dialog() + u'|' + QString::number(line.StartTime()) + u'|' + QString::number(line.EndTime());
}

QList<PageView> viewOf(const CPicPreviewPages &pages)
{
    QList<PageView> out;
    for (const CPicPreviewPage *page : pages) {
        PageView v { page->StartTime(), page->EndTime(), {} };
        for (const CSSAContentLine *line : *page)
            v.lines << lineView(*line);
        out << v;
    }
    return out;
}

// The pages made the plain way: one pass over a copy of the script per page, the copy
// eaten up as its lines are shown, a line that goes on past the page cut in two.
QList<PageView> pagesStepByStep(const CSSAContent &script)
{
    auto copy = script.DuplicateSSA();
    const double never = t(u"9:59:59.99");
    auto counts = [](const CSSAContentLine *l) { return l->StartTime() < l->EndTime(); };
    QList<PageView> pages;
    for (;;) {
        bool any = false;
        double start = never;
        for (const CSSAContentLine *l : *copy)
            if (counts(l)) {
                any = true;
                start = std::min(start, l->StartTime());
            }
        if (!any)
            break;
        double end = never;
        for (const CSSAContentLine *l : *copy) {
            if (!counts(l))
                continue;
            if (l->StartTime() > start)
                end = std::min(end, l->StartTime());
            end = std::min(end, l->EndTime());
        }
        if (!(start < end))
            break; // nothing is cut at or past the last time
        PageView page { start, end, {} };
        QStringList eaten;
        for (CSSAContentLine *l : *copy) {
            if (!counts(l) || l->StartTime() != start)
                continue;
            if (l->EndTime() == end) {
                page.lines << lineView(*l);
                eaten << QString::number(l->SerialNo());
            } else {
                const double oldEnd = l->EndTime();
                l->setEndTime(end);
                page.lines << lineView(*l);
                l->setEndTime(oldEnd);
                l->setStartTime(end);
            }
        }
        for (const QString &key : eaten)
            copy->Delete(key);
        pages << page;
    }
    return pages;
}

// The text of a UTF-16LE file behind its byte-order mark; "<no mark>" without one.
QString readUtf16File(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("<missing>");
    const QByteArray bytes = file.readAll();
    if (!bytes.startsWith("\xFF\xFE"))
        return QStringLiteral("<no mark>");
    return QStringView(reinterpret_cast<const char16_t *>(bytes.constData()) + 1, bytes.size() / 2 - 1)
        .toString();
}

class PicPreviewPages : public ::testing::Test
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
        pages.setPicture(&box);
        pages.setVideoType(0);
    }
    void TearDown() override { SetPrompt(nullptr); }

    void load(const QList<Timed> &lines)
    {
        script = makeScript(lines);
        pages.setSource(script.get(), fonts.get());
        pages.CreatePages();
    }

    CScriptedPrompt prompt;
    CPictureBox box;
    std::unique_ptr<CFonts> fonts;
    std::unique_ptr<CSSAContent> script;
    CPicPreviewPages pages;
};

} // namespace

TEST_F(PicPreviewPages, TwoOverlappingLinesGiveThreePages)
{
    load({ { t(u"0:00:01.00"), t(u"0:00:03.00"), QStringLiteral("A") },
        { t(u"0:00:02.00"), t(u"0:00:04.00"), QStringLiteral("B") } });
    const QList<PageView> expected {
        { 1, 2, { QStringLiteral("A|1|2") } },
        { 2, 3, { QStringLiteral("A|2|3"), QStringLiteral("B|2|3") } },
        { 3, 4, { QStringLiteral("B|3|4") } },
    };
    EXPECT_EQ(viewOf(pages), expected);
    // numbered and keyed from 1, the source script untouched
    EXPECT_TRUE(pages.Exists(QStringLiteral("3")));
    EXPECT_EQ(pages.At(2)->SerialNo(), 3);
    EXPECT_EQ(script->At(0)->EndTime(), 3);
    EXPECT_EQ(script->At(1)->StartTime(), 2);
}

TEST_F(PicPreviewPages, OnlyLinesThatStartBeforeTheyEndGetPages)
{
    load({ { 5, 5, QStringLiteral("equal") }, { 7, 6, QStringLiteral("backwards") },
        { 8, 9, QStringLiteral("shown") } });
    ASSERT_EQ(pages.Count(), 1);
    EXPECT_EQ(viewOf(pages)[0], (PageView { 8, 9, { QStringLiteral("shown|8|9") } }));

    pages.Clear();
    load({ { 5, 5, QStringLiteral("equal") } });
    EXPECT_EQ(pages.Count(), 0);
    // serial numbers go on after a clear
    load({ { 1, 2, QStringLiteral("x") } });
    EXPECT_EQ(pages.At(0)->SerialNo(), 2);
}

TEST_F(PicPreviewPages, SameAsThePlainMethodOnRandomScripts)
{
    QRandomGenerator random(2024);
    for (int round = 0; round < 300; ++round) {
        QList<Timed> lines;
        const int count = 1 + int(random.bounded(30));
        for (int i = 0; i < count; ++i) {
            // few distinct times, so that starts and ends often meet
            // now and then around the last time a page can reach, "9:59:59.99"
            const double base = round % 10 == 0 ? 35995 : 0;
            const double a = base + random.bounded(40) / 4.0;
            const double b = random.bounded(5) == 0 ? a : base + random.bounded(40) / 4.0;
            lines.append({ a, b, QStringLiteral("L%1").arg(i) });
        }
        pages.Clear();
        load(lines);
        ASSERT_EQ(viewOf(pages), pagesStepByStep(*script)) << "round " << round;
    }
}

TEST_F(PicPreviewPages, TopLinesStackDownwardAndDoNotOverlap)
{
    load({ { 1, 4, QStringLiteral("上面第一行"), QStringLiteral("Top") },
        { 1, 4, QStringLiteral("上面第二行"), QStringLiteral("*Top") },
        { 1, 4, QStringLiteral("下面{\\b1}一行"), QStringLiteral("Default") } });
    ASSERT_EQ(pages.Count(), 1);
    pages.DisplayPage(1);
    const CPicPreviewPage &page = *pages.At(0);
    const CSSAContentLine &first = *page.At(0), &second = *page.At(1), &bottom = *page.At(2);
    EXPECT_TRUE(first.Displayed && second.Displayed && bottom.Displayed);
    EXPECT_EQ(first.DisplayY, pages.DefaultMarginTop);
    EXPECT_GT(first.DisplayHeight, 0);
    EXPECT_GE(second.DisplayY, first.DisplayY + first.DisplayHeight + 1);
    // "Default" is a bottom line: its block ends above the bottom margin
    EXPECT_EQ(bottom.DisplayY + bottom.DisplayHeight, 484 * 15 - pages.DefaultMarginBottom);
    // the page's text is that of the line drawn last, without its override block
    EXPECT_EQ(page.Dialog(), QStringLiteral("下面一行"));
    // the top style prints in its primary colour (255 is red)
    bool red = false;
    const QImage image = box.Image();
    for (int y = 0; y < image.height() / 2 && !red; ++y)
        for (int x = 0; x < image.width() && !red; ++x)
            red = (image.pixel(x, y) & 0xFFFFFF) == 0xFF0000;
    EXPECT_TRUE(red);
}

TEST_F(PicPreviewPages, StylesAreFoundByNameWithOrWithoutTheStar)
{
    pages.setSource(nullptr, fonts.get());
    ASSERT_NE(pages.FindStyle(QStringLiteral("*Top")), nullptr);
    EXPECT_EQ(pages.FindStyle(QStringLiteral("*Top"))->StyleName(), QStringLiteral("Top"));
    EXPECT_EQ(pages.FindStyle(QStringLiteral("Top")), pages.FindStyle(QStringLiteral("*Top")));
    EXPECT_EQ(pages.FindStyle(QStringLiteral("Missing")), nullptr);
    EXPECT_EQ(pages.FindStyle(QStringLiteral("**Top")), nullptr);
    EXPECT_TRUE(pages.CreatePages().isEmpty()); // no script, no pages
}

TEST_F(PicPreviewPages, VideoTypeSizesTheBox)
{
    pages.setVideoType(1);
    EXPECT_EQ(box.PixelWidth(), 724);
    EXPECT_EQ(box.PixelHeight(), 580);
    pages.setVideoType(0);
    EXPECT_EQ(box.PixelHeight(), 484);
    EXPECT_EQ(pages.VideoType(), 0);
}

TEST_F(PicPreviewPages, PageTimesInThePageListForm)
{
    CPicPreviewPage *page = pages.Create();
    page->setStartTime(23.26);
    page->setEndTime(3600 + 62.5);
    EXPECT_EQ(page->StartTimeString(), QStringLiteral("00:00:23:26"));
    EXPECT_EQ(page->EndTimeString(), QStringLiteral("01:01:02:50"));
    page->setStartTimeString(u"00:00:25:23");
    EXPECT_DOUBLE_EQ(page->StartTime(), 25.23);
    page->setEndTimeString(u"0:00:07.05");
    EXPECT_DOUBLE_EQ(page->EndTime(), 7.05);

    CSpread list;
    load({ { 1, 3, QStringLiteral("A") }, { 2, 4, QStringLiteral("B") } });
    pages.FillPageList(list);
    ASSERT_EQ(list.MaxRows(), 4); // the hand-made page first
    EXPECT_EQ(list.GetText(1, 1), QStringLiteral("00:00:25:23"));
    EXPECT_EQ(list.GetText(1, 3), QStringLiteral("00:00:02:00"));
    EXPECT_EQ(list.GetText(2, 4), QStringLiteral("00:00:04:00"));
}

TEST_F(PicPreviewPages, AnEmptyNameAsksForOneAndWritesNothing)
{
    load({ { 1, 2, QStringLiteral("A") } });
    const QDir program(ProgramFolder());
    const QStringList before = program.entryList(QDir::Files);
    EXPECT_FALSE(pages.SaveAllPages(QString()));
    EXPECT_EQ(prompt.Messages(), QStringList { QStringLiteral("请选择SST文件名") });
    EXPECT_EQ(program.entryList(QDir::Files), before);
    EXPECT_TRUE(pages.At(0)->Content().isEmpty());
}

TEST_F(PicPreviewPages, ThePageListFileAndItsBitmaps)
{
    QTemporaryDir dir;
    // the bitmaps go into a folder of the list's own name; make it stand beside the list
    const QString list = dir.filePath(QStringLiteral("disc.sst"));
    load({ { t(u"0:00:01.00"), t(u"0:00:03.00"), QStringLiteral("A") },
        { t(u"0:00:02.00"), t(u"0:00:04.00"), QStringLiteral("B") } });
    CPicPreviewPage *zero = pages.Create(); // a page from 0 to 0 is listed, not saved
    ASSERT_TRUE(pages.SaveAllPages(list));
    EXPECT_TRUE(prompt.Messages().isEmpty());

    const QString bmp = list + QStringLiteral("/1.");
    QString expected
        = QStringLiteral("st_format 2\r\nDisplay_Start non_forced\r\nTV_Type NTSC\r\nTape_Type Drop\r\n"
                         "Pixel_Area  (0 477)\r\nDirectory   ")
        + dir.path()
        + QStringLiteral(
            "\r\nSubtitle zh\r\nDisplay_Area    (0 2 719 479)\r\nContrast    (15 15 15 0)\r\n\r\n"
            "PA  (0 0 255 - - - )\r\nE1  (255 0 0 - - - )\r\nE2  (0 0 0 - - - )\r\n"
            "BG  (255 255 255 - - - )\r\n\r\nSP_NUMBER   START   END FILE_NAME\r\n"
            "Color    (3 9 4 4)\r\nContrast (15 0 15 15)\r\n")
        + QStringLiteral("1\t\t00:00:01:00\t00:00:02:00\t") + bmp + QStringLiteral("1.bmp\r\n")
        + QStringLiteral("2\t\t00:00:02:00\t00:00:03:00\t") + bmp + QStringLiteral("2.bmp\r\n")
        + QStringLiteral("3\t\t00:00:03:00\t00:00:04:00\t") + bmp + QStringLiteral("3.bmp\r\n")
        + QStringLiteral("4\t\t00:00:00:00\t00:00:00:00\t\r\n");
    EXPECT_EQ(readUtf16File(list), expected);
    EXPECT_EQ(pages.At(1)->Content(), bmp + QStringLiteral("2.bmp"));
    EXPECT_TRUE(zero->Content().isEmpty());
    // a file cannot be a folder too: the bitmaps were left out without a word
    EXPECT_FALSE(QFile::exists(bmp + QStringLiteral("1.bmp")));

    // saved again over the old list, which is replaced and not added to
    ASSERT_TRUE(pages.SaveAllPages(list));
    EXPECT_EQ(readUtf16File(list), expected);
}

TEST_F(PicPreviewPages, ABareNameGoesToTheProgramFolder)
{
    load({ { 1, 2, QStringLiteral("A") } });
    ASSERT_TRUE(pages.SaveAllPages(QStringLiteral("bare.sst")));
    const QString path = QDir(ProgramFolder()).filePath(QStringLiteral("bare.sst"));
    const QString text = readUtf16File(path);
    EXPECT_TRUE(text.contains(
        QStringLiteral("\r\nDirectory   ") + QDir::cleanPath(ProgramFolder()) + QStringLiteral("\r\n")))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith(
        QStringLiteral("1\t\t00:00:01:00\t00:00:02:00\t") + path + QStringLiteral("/1.1.bmp\r\n")));
    QFile::remove(path);
}

TEST_F(PicPreviewPages, APageIsSavedIntoTheFolderOfTheName)
{
    QTemporaryDir dir;
    load({ { 1, 2, QStringLiteral("A") }, { 3, 4, QStringLiteral("B") } });
    // the name is used as a folder; where it is one, the bitmaps are written
    const QString name = dir.path();
    pages.setFileName(name);
    pages.SavePage(2);
    const QString bmp = name + QStringLiteral("/1.2.bmp");
    EXPECT_EQ(QFileInfo(bmp).size(), 176294);
    EXPECT_EQ(pages.At(1)->Content(), bmp);
    EXPECT_EQ(
        pages.Content(), QStringLiteral("2\t\t00:00:03:00\t00:00:04:00\t") + bmp + QStringLiteral("\r\n"));
    EXPECT_FALSE(QFile::exists(name + QStringLiteral("/1.1.bmp")));
    pages.SavePage(3); // no such page
    EXPECT_EQ(
        pages.Content(), QStringLiteral("2\t\t00:00:03:00\t00:00:04:00\t") + bmp + QStringLiteral("\r\n"));
}

TEST_F(PicPreviewPages, AFaultShowsItsDescription)
{
    QTemporaryDir dir;
    load({ { 1, 2, QStringLiteral("A") } });
    EXPECT_FALSE(pages.SaveAllPages(dir.filePath(QStringLiteral("no/such/folder/x.sst"))));
    EXPECT_EQ(prompt.Messages(), QStringList { QStringLiteral("Path/File access error") });
}
