#include "pages/CPictureBox.h"
#include "pages/basBitmap.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

// One page drawn as the page display does it (two centred lines near the bottom) and
// written as a 4-bit bitmap.
static void BM_SaveBmp(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString name = dir.filePath(QStringLiteral("1.1.bmp"));
    CPictureBox box(724, 484);
    box.setFontName(QStringLiteral("Arial"));
    box.setFontSize(24);
    box.setForeColor(0xFFFFFF);
    const QString lines[] = { QStringLiteral("这是第一行字幕 The first line"), QStringLiteral("第二行对白") };
    for (auto _ : state) {
        box.Cls();
        double y = box.ScaleHeight() - 800;
        for (const QString &line : lines) {
            y -= box.TextHeight(line) + 20;
            box.setCurrentY(y);
            box.setCurrentX(int(box.ScaleWidth()) / 2 - int(box.TextWidth(line)) / 2);
            box.Print(line);
        }
        benchmark::DoNotOptimize(basBitmap::SavePictureAsBmp(box, name));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SaveBmp)->Unit(benchmark::kMillisecond);

#include "core/Class.h"
#include "pages/CPicPreviewPages.h"
#include "pages/basPageCut.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"

#include <QRandomGenerator>

namespace {

// A script of timed lines as a film gives them: one after another with small gaps, some
// overlapping their neighbours, a few long notices over many lines.
QList<std::pair<double, double>> makeScript(int count)
{
    QRandomGenerator random(7);
    QList<std::pair<double, double>> lines;
    lines.reserve(count);
    double t = 1;
    for (int i = 0; i < count; ++i) {
        const double length = 1 + random.bounded(500) / 100.0;
        if (i % 200 == 0)
            lines.append({ t, t + 60 });
        else
            lines.append({ t, t + length });
        t += 0.5 + random.bounded(300) / 100.0;
    }
    return lines;
}

void cutPages(benchmark::State &state, int count)
{
    const auto script = makeScript(count);
    qsizetype pages = 0;
    for (auto _ : state) {
        const QList<CPageCut> cut = basPageCut::CutPages(script);
        pages = cut.size();
        benchmark::DoNotOptimize(cut.data());
    }
    state.counters["pages"] = double(pages);
    state.SetItemsProcessed(state.iterations() * count);
}

// The same timing as a script of event lines, with a style and a text each.
std::unique_ptr<CSSAContent> makeEventScript(int count)
{
    auto script = Class::MakeCollection<CSSAContent>();
    script->Reserve(count);
    int i = 0;
    for (const auto &[start, end] : makeScript(count)) {
        CSSAContentLine *line = script->Create();
        line->setStartTime(start);
        line->setEndTime(end);
        line->setStyle(QStringLiteral("Default"));
        line->setDialog(QStringLiteral("{\\fad(100,100)}第%1行字幕\\Nline %1").arg(++i));
    }
    return script;
}

// The page objects of a whole script: the copy of the script, the cutting, and every
// page with copies of its lines.
void createPages(benchmark::State &state, int count)
{
    const auto script = makeEventScript(count);
    auto fonts = Class::MakeCollection<CFonts>();
    CPicPreviewPages pages;
    pages.setSource(script.get(), fonts.get());
    qsizetype made = 0;
    for (auto _ : state) {
        pages.Clear();
        made = pages.CreatePages().size();
    }
    state.counters["pages"] = double(made);
    state.SetItemsProcessed(state.iterations() * count);
}

} // namespace

// The pages of a script as the page window makes them.
static void BM_CreatePages3k(benchmark::State &state)
{
    createPages(state, 3000);
}
BENCHMARK(BM_CreatePages3k)->Unit(benchmark::kMillisecond);

static void BM_CreatePages30k(benchmark::State &state)
{
    createPages(state, 30000);
}
BENCHMARK(BM_CreatePages30k)->Unit(benchmark::kMillisecond);

// The cutting alone, over the lines' times.
static void BM_CutPages30k(benchmark::State &state)
{
    cutPages(state, 30000);
}
BENCHMARK(BM_CutPages30k)->Unit(benchmark::kMillisecond);

namespace {

// A script of about `pages` pages: each line overlaps the next by half a second, so that
// every line gives a page alone and a page with the next one.
std::unique_ptr<CSSAContent> makeFilmScript(int pages)
{
    auto script = Class::MakeCollection<CSSAContent>();
    const int lines = (pages + 1) / 2;
    script->Reserve(lines);
    for (int i = 0; i < lines; ++i) {
        CSSAContentLine *line = script->Create();
        line->setStartTime(1 + 2.0 * i);
        line->setEndTime(3.5 + 2.0 * i);
        line->setStyle(i % 10 == 9 ? QStringLiteral("Top") : QStringLiteral("Default"));
        line->setDialog(
            QStringLiteral("{\\fad(100,100)}这是第%1行字幕\\NThe line %1 of the film").arg(i + 1));
    }
    return script;
}

} // namespace

// The save of all pages of a film as the picture window runs it: the script cut into
// pages, each page drawn and written as a 16-colour bitmap into the picture folder, and
// the SST page list. Argument: the workers (0 one per core, 1 one page after another).
// Each run writes into a fresh folder (500 MB of bitmaps), as a first export does. The
// folder is in memory where the machine has one (/dev/shm): on a disk the time goes to
// the file system making 3,000 files (an ext4 without a journal scans its recently
// deleted files on every new one), not to the export.
static void BM_ExportPages3k(benchmark::State &state)
{
    const auto script = makeFilmScript(3000);
    auto fonts = Class::MakeCollection<CFonts>();
    CFont *top = fonts->Create(QStringLiteral("Top"));
    top->setAlignment(8);
    const QString memory = QStringLiteral("/dev/shm");
    QTemporaryDir dir(
        (QDir(memory).exists() ? memory : QDir::tempPath()) + QStringLiteral("/velmar-bench-XXXXXX"));
    qsizetype pages = 0;
    int run = 0;
    for (auto _ : state) {
        CPictureBox box;
        CPicPreviewPages film;
        film.setPicture(&box);
        film.setSource(script.get(), fonts.get());
        film.setVideoType(0);
        film.PictureFolder = true;
        film.ExportThreads = int(state.range(0));
        pages = film.CreatePages().size();
        benchmark::DoNotOptimize(film.SaveAllPages(dir.filePath(QStringLiteral("film%1.sst").arg(++run))));
    }
    state.counters["pages"] = double(pages);
    state.SetItemsProcessed(state.iterations() * pages);
}
BENCHMARK(BM_ExportPages3k)
    ->ArgName("threads")
    ->Arg(0)
    ->Arg(1)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
