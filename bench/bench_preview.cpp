#include "core/CGridAction.h"
#include "core/basTime.h"
#include "pages/CPictureBox.h"
#include "player/CPreview.h"
#include "timing/CTimingCheck.h"
#include "timing/CTimingGrid.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>
#include <memory>

namespace {

constexpr int kLines = 30000;

class NullDocument : public isub
{
public:
    QString Content() override { return {}; }
    void setContent(const QString &) override { }
    void Clear() override { }
};

// A timing grid of 30,000 lines of 0.8 seconds, one a second, told to its preview, with a
// picture of the window's size.
struct PreviewFixture
{
    NullDocument document;
    CTimingGrid grid;
    CPreview preview;
    CPictureBox box { 724, 120 };

    PreviewFixture()
    {
        preview.Init(&document);
        CSpread &s = grid.Spread();
        // Read in as a file is: the history starts after it.
        const CGridAction load(grid, nullptr, CGridAction::Reset);
        s.setReDraw(false);
        s.setMaxRows(kLines + 2);
        const QString dialog = QStringLiteral("{\\fad(100,100)}一行对白的文字\\Nwith some Latin text");
        for (int row = 1; row <= s.MaxRows(); ++row) {
            s.SetText(CTimingGrid::ColSerialNo, row, QString::number(grid.RowSerialNo()));
            if (row > kLines)
                continue;
            s.SetText(CTimingGrid::ColStartTime, row, TimeToString(row * 1.0));
            s.SetText(CTimingGrid::ColEndTime, row, TimeToString(row + 0.8));
            s.SetText(CTimingGrid::ColDialog, row, dialog);
        }
        s.setReDraw(true);
        preview.AttachGrid(&s);
        grid.SetPreviewHooks(&preview);
        for (int row = 1; row <= kLines; ++row)
            grid.TellPreview(-1, row);
        box.setBackColor(0);
        preview.setPicture(&box);
    }
};

} // namespace

// One tick over all lines with one line current (and shown from the tick before).
static void BM_PreviewTick30k(benchmark::State &state)
{
    PreviewFixture f;
    const double position = kLines / 2 + 0.5; // inside line kLines / 2
    f.preview.Refresh(position);
    for (auto _ : state)
        f.preview.Refresh(position);
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(BM_PreviewTick30k)->Unit(benchmark::kMicrosecond);

// A tick at a position where no line is current: the bare walk.
static void BM_PreviewTickIdle30k(benchmark::State &state)
{
    PreviewFixture f;
    for (auto _ : state)
        f.preview.Refresh(-1);
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(BM_PreviewTickIdle30k)->Unit(benchmark::kMicrosecond);

// Telling the preview of every row, as a load of a whole script does.
static void BM_PreviewTellAll30k(benchmark::State &state)
{
    PreviewFixture f;
    for (auto _ : state)
        for (int row = 1; row <= kLines; ++row)
            f.grid.TellPreview(-1, row);
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(BM_PreviewTellAll30k)->Unit(benchmark::kMillisecond);

// The whole check over 30,000 lines, one overlapping pair in ten lines.
static void BM_TimingCheck30k(benchmark::State &state)
{
    PreviewFixture f;
    CSpread &s = f.grid.Spread();
    for (int row = 10; row <= kLines; row += 10) {
        s.SetText(CTimingGrid::ColEndTime, row, TimeToString(row + 1.5));
        f.grid.TellPreview(CTimingGrid::ColEndTime, row);
    }
    CTimingCheck check(f.preview, s);
    CTimingCheck::Options options;
    for (auto _ : state)
        benchmark::DoNotOptimize(check.cmdCheck(options));
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(BM_TimingCheck30k)->Unit(benchmark::kMillisecond);

// The overlap check alone when one line spans the whole film: every other line lies
// inside it.
static void BM_CheckOverlapLongLine30k(benchmark::State &state)
{
    PreviewFixture f;
    CSpread &s = f.grid.Spread();
    s.SetText(CTimingGrid::ColEndTime, 1, TimeToString(kLines + 10.0));
    f.grid.TellPreview(CTimingGrid::ColEndTime, 1);
    f.preview.UpdateLineNumber();
    for (auto _ : state)
        benchmark::DoNotOptimize(CTimingCheck::CheckOverlap(f.preview));
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(BM_CheckOverlapLongLine30k)->Unit(benchmark::kMillisecond);
