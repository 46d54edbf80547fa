#include "core/CGridAction.h"
#include "core/basTime.h"
#include "formats/CTiming.h"
#include "pages/CPictureBox.h"
#include "player/CPreview.h"
#include "timing/CGridHistory.h"
#include "timing/CTimePointCapture.h"
#include "timing/CTimingGrid.h"
#include "timing/basTimeAdjust.h"

#include "core/CUndoStack.h"
#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

constexpr int kRows = 30000;

// A timed 30,000-line document in its grid, with its preview on a picture, as a timing
// window holds it; the history starts empty.
struct UndoRig
{
    CTiming doc;
    CTimingGrid grid;
    CPictureBox box { 724, 120 };
    std::unique_ptr<CTimePointCapture> capture;

    UndoRig()
    {
        doc.Init(1);
        grid.SetPreviewHooks(doc.Preview.get());
        grid.SetDocument(&doc);
        grid.ResetGrid();
        doc.Preview->AttachGrid(&grid.Spread());
        doc.Preview->setPicture(&box);
        CSpread &g = grid.Spread();
        {
            const CGridAction load(grid, nullptr, CGridAction::Reset);
            const bool drawing = g.ReDraw();
            g.setReDraw(false);
            while (g.MaxRows() < kRows + 2)
                grid.AppendRow();
            for (int row = 1; row <= kRows; ++row) {
                g.SetText(CTimingGrid::ColStartTime, row, TimeToString(row * 2.0, 2));
                g.SetText(CTimingGrid::ColEndTime, row, TimeToString(row * 2.0 + 1.5, 2));
                g.SetText(
                    CTimingGrid::ColDialog, row, QStringLiteral("第%1行的对白 a line of dialogue").arg(row));
                grid.TellPreview(-1, row);
            }
            g.setReDraw(drawing);
        }
        capture = std::make_unique<CTimePointCapture>(doc, grid);
        doc.setChanged(false);
    }
    void StrokeAt(int row, double seconds)
    {
        CSpread &g = grid.Spread();
        g.setRow(row);
        g.setCol(CTimingGrid::ColStartTime);
        g.ActivateCell();
        capture->SetStartTimePoint(seconds);
    }
};

size_t HeapInUse()
{
    return mallinfo2().uordblks;
}

} // namespace

// Taking back a shift of both time columns of every row: 60,000 cells put back and every
// row told to the preview.
static void BM_UndoShiftAll30k(benchmark::State &state)
{
    UndoRig rig;
    rig.grid.Spread().SetSelection(
        { CSpreadBlock { -1, CTimingGrid::ColStartTime, -1, CTimingGrid::ColEndTime } });
    for (auto _ : state) {
        state.PauseTiming();
        basTimeAdjust::ShiftTimes(rig.grid, 0.37);
        state.ResumeTiming();
        rig.grid.History().Undo();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_UndoShiftAll30k)->Unit(benchmark::kMillisecond);

// The shift itself with its step recorded, for comparison with BM_ShiftAll30k.
static void BM_RedoShiftAll30k(benchmark::State &state)
{
    UndoRig rig;
    rig.grid.Spread().SetSelection(
        { CSpreadBlock { -1, CTimingGrid::ColStartTime, -1, CTimingGrid::ColEndTime } });
    basTimeAdjust::ShiftTimes(rig.grid, 0.37);
    for (auto _ : state) {
        state.PauseTiming();
        rig.grid.History().Undo();
        state.ResumeTiming();
        rig.grid.History().Redo();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_RedoShiftAll30k)->Unit(benchmark::kMillisecond);

// A hundred start strokes in the middle of the document, each a step: the memory they
// hold as the history counts it and as the heap grew ("bytes" and "heap", per hundred).
static void BM_UndoStampSteps100(benchmark::State &state)
{
    UndoRig rig;
    double counted = 0;
    double heap = 0;
    for (auto _ : state) {
        state.PauseTiming();
        rig.grid.History().Clear();
        const size_t before = HeapInUse();
        state.ResumeTiming();
        for (int i = 0; i < 100; ++i)
            rig.StrokeAt(kRows / 2 + i % 40, 100 + i * 0.37);
        state.PauseTiming();
        heap = double(HeapInUse()) - double(before);
        counted = double(rig.grid.History().Bytes());
        state.ResumeTiming();
    }
    state.counters["bytes"] = counted;
    state.counters["heap"] = heap;
    state.counters["steps"] = rig.doc.UndoStack().Count();
}
BENCHMARK(BM_UndoStampSteps100)->Unit(benchmark::kMicrosecond);
