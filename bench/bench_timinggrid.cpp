#include "core/Class.h"
#include "core/basMain.h"
#include "formats/CTiming.h"
#include "player/ITimingPreviewHooks.h"
#include "script/CSSAContent.h"
#include "timing/CTimingGrid.h"
#include "timing/basLineOps.h"
#include "timing/basTimeAdjust.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kLines = 30000;

// A preview that only counts what it is told, so that the grid's own work is measured.
class CountingHooks : public ITimingPreviewHooks
{
public:
    void CreatePreviewLine(int) override { ++Count; }
    void DeletePreviewLine(int) override { ++Count; }
    void UpdatePreviewCell(int, int) override { ++Count; }
    void ClearPreview() override { ++Count; }
    qint64 Count = 0;
};

std::unique_ptr<CTiming> Document()
{
    auto doc = Class::Make<CTiming>();
    doc->Fonts->Create(QStringLiteral("Main"));
    for (int i = 0; i < kLines; ++i) {
        CSSAContentLine *line = doc->SSAContent->Create();
        line->setStartTime(i * 0.5); // under ten hours, as real scripts are
        line->setEndTime(i * 0.5 + 0.4);
        line->setStyle(i % 3 ? QStringLiteral("Main") : QStringLiteral("*Default"));
        line->setOwner(i % 2 ? QStringLiteral("Bob") : QStringLiteral("Ann"));
        line->setDialog(QStringLiteral("一行对白的文字 {\\b1}with{\\b0} some Latin text"));
        if (i % 10 == 0)
            line->setEffect(u"Scroll up;10;20;5;3");
    }
    return doc;
}

struct Loaded
{
    std::unique_ptr<CTiming> doc = Document();
    CountingHooks hooks;
    CTimingGrid grid;
    Loaded()
    {
        grid.SetPreviewHooks(&hooks);
        grid.SetDocument(doc.get());
        grid.LoadGridFromContent(*doc->SSAContent);
    }
};

} // namespace

static void BM_LoadGrid30k(benchmark::State &state)
{
    Loaded loaded;
    for (auto _ : state)
        loaded.grid.LoadGridFromContent(*loaded.doc->SSAContent);
}
BENCHMARK(BM_LoadGrid30k)->Unit(benchmark::kMillisecond);

static void BM_StoreGrid30k(benchmark::State &state)
{
    Loaded loaded;
    auto target = Class::Make<CSSAContent>();
    for (auto _ : state)
        loaded.grid.StoreGridToContent(*target);
}
BENCHMARK(BM_StoreGrid30k)->Unit(benchmark::kMillisecond);

// Times of one row near the top go down by a row: the grid grows by one row each time.
static void BM_InsertRows30k(benchmark::State &state)
{
    Loaded loaded;
    CSpread &grid = loaded.grid.Spread();
    grid.setRow(5);
    grid.setCol(CTimingGrid::ColStartTime);
    grid.ActivateCell();
    for (auto _ : state)
        basLineOps::InsertRows(loaded.grid, basLineOps::TimeCells);
}
BENCHMARK(BM_InsertRows30k)->Unit(benchmark::kMillisecond);

static void BM_DeleteRows30k(benchmark::State &state)
{
    Loaded loaded;
    CSpread &grid = loaded.grid.Spread();
    grid.setRow(5);
    grid.setCol(CTimingGrid::ColStartTime);
    grid.ActivateCell();
    for (auto _ : state)
        basLineOps::DeleteRows(loaded.grid, basLineOps::TimeCells);
}
BENCHMARK(BM_DeleteRows30k)->Unit(benchmark::kMillisecond);

// Both time columns of every row, the overlap guard off (argument 0) or on (1). Runs
// alternate between +0.1 and -0.1, so the times stay about where they were.
static void BM_ShiftAll30k(benchmark::State &state)
{
    Loaded loaded;
    AvoidOverlapTiming = state.range(0) != 0;
    loaded.grid.Spread().SetSelection(
        { CSpreadBlock { -1, CTimingGrid::ColStartTime, -1, CTimingGrid::ColEndTime } });
    double delta = 0.1;
    for (auto _ : state) {
        basTimeAdjust::ShiftTimes(loaded.grid, delta);
        delta = -delta;
    }
    AvoidOverlapTiming = false;
}
BENCHMARK(BM_ShiftAll30k)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
