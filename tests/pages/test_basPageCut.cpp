#include "core/basPlatform.h"
#include "core/basTime.h"
#include "pages/basPageCut.h"

#include "PageTestSupport.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace basPageCut;

namespace {

using Lines = QList<std::pair<double, double>>;

// The cutting as the page list describes it, step by step on a copy of the script that
// it eats up: one pass of the script per page.
QList<CPageCut> cutStepByStep(const Lines &script)
{
    struct Line
    {
        double start, end;
        int index;
    };
    QList<Line> copy;
    for (int i = 0; i < script.size(); ++i)
        copy.append({ script[i].first, script[i].second, i });
    const double never = StringToTime(u"9:59:59.99");
    auto counts = [](const Line &l) { return l.start < l.end; };

    QList<CPageCut> pages;
    for (;;) {
        if (std::none_of(copy.begin(), copy.end(), counts))
            break;
        double start = never;
        for (const Line &l : copy)
            if (counts(l) && l.start < start)
                start = l.start;
        double end = never;
        for (const Line &l : copy) {
            if (!counts(l))
                continue;
            if (l.start > start && l.start < end)
                end = l.start;
            if (l.end < end)
                end = l.end;
        }
        if (!(start < end))
            break; // nothing is cut at or past the last time
        CPageCut page { start, end, {} };
        for (qsizetype i = 0; i < copy.size();) {
            Line &l = copy[i];
            if (!counts(l) || l.start != start) {
                ++i;
                continue;
            }
            page.Lines.append(l.index);
            if (l.end == end) {
                copy.removeAt(i);
            } else {
                l.start = end;
                ++i;
            }
        }
        pages.append(page);
    }
    return pages;
}

} // namespace

TEST(PageCut, OverlappingLinesGiveThreePages)
{
    const Lines script { { t(u"0:00:01.00"), t(u"0:00:03.00") }, { t(u"0:00:02.00"), t(u"0:00:04.00") } };
    const QList<CPageCut> pages = CutPages(script);
    ASSERT_EQ(pages.size(), 3);
    EXPECT_EQ(pages[0], (CPageCut { 1, 2, { 0 } }));
    EXPECT_EQ(pages[1], (CPageCut { 2, 3, { 0, 1 } }));
    EXPECT_EQ(pages[2], (CPageCut { 3, 4, { 1 } }));
    EXPECT_EQ(cutStepByStep(script), pages);
}

TEST(PageCut, LinesThatDoNotCountGetNoPage)
{
    EXPECT_TRUE(CutPages({ { 5, 5 } }).isEmpty());
    EXPECT_TRUE(CutPages({ { 6, 5 } }).isEmpty());
    // a line of no length does not cut the others either
    EXPECT_EQ(CutPages({ { 1, 4 }, { 2, 2 } }), (QList<CPageCut> { { 1, 4, { 0 } } }));
    EXPECT_TRUE(CutPages({}).isEmpty());
}

TEST(PageCut, GapsAndOrderOfTime)
{
    const Lines script { { 10, 12 }, { 1, 2 }, { 1, 2 }, { 3, 4 } };
    const QList<CPageCut> pages = CutPages(script);
    ASSERT_EQ(pages.size(), 3);
    EXPECT_EQ(pages[0], (CPageCut { 1, 2, { 1, 2 } }));
    EXPECT_EQ(pages[1], (CPageCut { 3, 4, { 3 } }));
    EXPECT_EQ(pages[2], (CPageCut { 10, 12, { 0 } }));
}

TEST(PageCut, ALongLineRepeatsOnEveryPageItSpans)
{
    const Lines script { { 0, 10 }, { 2, 3 }, { 3, 5 }, { 7, 8 } };
    const QList<CPageCut> pages = CutPages(script);
    ASSERT_EQ(pages.size(), 6);
    for (const CPageCut &p : pages)
        EXPECT_EQ(p.Lines.first(), 0);
    EXPECT_EQ(pages[1], (CPageCut { 2, 3, { 0, 1 } }));
    EXPECT_EQ(pages[2], (CPageCut { 3, 5, { 0, 2 } }));
    EXPECT_EQ(pages[5], (CPageCut { 8, 10, { 0 } }));
    EXPECT_EQ(cutStepByStep(script), pages);
}

TEST(PageCut, NothingPastTheLastTime)
{
    const double last = LastPageTime();
    EXPECT_DOUBLE_EQ(last, 9 * 3600 + 59 * 60 + 59.99);
    const Lines script { { last - 1, last + 100 }, { last, last + 5 }, { last + 1, last + 2 } };
    const QList<CPageCut> pages = CutPages(script);
    EXPECT_EQ(pages, (QList<CPageCut> { { last - 1, last, { 0 } } }));
    EXPECT_EQ(cutStepByStep(script), pages);
}

TEST(PageCut, SameAsTheStepByStepCuttingOnRandomScripts)
{
    QRandomGenerator random(20261122);
    for (int round = 0; round < 400; ++round) {
        const int count = 1 + int(random.bounded(60));
        // a coarse grid of times makes shared starts and ends common
        const int grid = 2 + int(random.bounded(40));
        Lines script;
        for (int i = 0; i < count; ++i) {
            const double start = random.bounded(grid) * 0.5;
            const double end = random.bounded(10) == 0 ? start : start + (random.bounded(grid) - 3) * 0.5;
            script.append({ start, end });
        }
        if (round % 50 == 0)
            script.append({ LastPageTime() - 0.5, LastPageTime() + 1 });
        ASSERT_EQ(CutPages(script), cutStepByStep(script)) << "round " << round;
    }
}

TEST(PageHelpers, VideoTypesAndNames)
{
    EXPECT_EQ(VideoTypePixelSize(0), (std::pair { 724, 484 }));
    EXPECT_EQ(VideoTypePixelSize(1), (std::pair { 724, 580 }));
    EXPECT_EQ(PageBitmapName(QStringLiteral("/data/film.sst"), 7), QStringLiteral("/data/film.sst/1.7.bmp"));
    EXPECT_EQ(PageListFolder(QStringLiteral("/data/film.sst")).first, QStringLiteral("/data"));
    EXPECT_EQ(PageListFolder(QStringLiteral("d:\\dvd\\film.sst")).first, QStringLiteral("d:\\dvd"));
    const auto bare = PageListFolder(QStringLiteral("film.sst"));
    EXPECT_EQ(bare.second, bare.first + QStringLiteral("/film.sst"));
    EXPECT_TRUE(bare.second.startsWith(ProgramFolder()));
    EXPECT_EQ(PageListLine(
                  3, QStringLiteral("00:00:01:00"), QStringLiteral("00:00:02:50"), QStringLiteral("x.bmp")),
        QStringLiteral("3\t\t00:00:01:00\t00:00:02:50\tx.bmp\r\n"));
}
