#include "core/CSpread.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace {

constexpr int kRows = 30000;
constexpr int kCols = 16;

// A 30,000-row grid of sixteen columns with text in every cell, written as the timing
// grid's logic writes: through the current cell with drawing stopped.
void Fill(CSpread &grid)
{
    grid.setReDraw(false);
    grid.setMaxCols(kCols);
    grid.setMaxRows(kRows);
    const QString time = QStringLiteral("0:12:34.56");
    const QString dialog = QStringLiteral("一行对白的文字 with some Latin text");
    for (int r = 1; r <= kRows; ++r) {
        grid.setRow(r);
        for (int c = 1; c <= kCols; ++c) {
            grid.setCol(c);
            grid.setText(c == 15 ? dialog : c == 16 ? QString::number(r) : time);
        }
    }
    grid.setReDraw(true);
}

std::unique_ptr<CSpread> FilledGrid()
{
    auto grid = std::make_unique<CSpread>();
    Fill(*grid);
    return grid;
}

} // namespace

static void BM_SpreadInsertRow30k(benchmark::State &state)
{
    const auto grid = FilledGrid();
    for (auto _ : state) {
        grid->setRow(5);
        grid->InsertRow();
    }
}
BENCHMARK(BM_SpreadInsertRow30k)->Unit(benchmark::kMillisecond);

static void BM_SpreadDeleteRow30k(benchmark::State &state)
{
    const auto grid = FilledGrid();
    for (auto _ : state) {
        grid->setRow(5);
        grid->DeleteRow();
    }
}
BENCHMARK(BM_SpreadDeleteRow30k)->Unit(benchmark::kMillisecond);

static void BM_SpreadFill30k(benchmark::State &state)
{
    for (auto _ : state) {
        CSpread grid;
        Fill(grid);
        benchmark::DoNotOptimize(grid.MaxRows());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
    state.counters["rows/s"]
        = benchmark::Counter(double(state.iterations()) * kRows, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_SpreadFill30k)->Unit(benchmark::kMillisecond);

// The block move behind inserting or deleting only the times or only the dialogue:
// column 15 of all rows but the first moves up by one row.
static void BM_SpreadMoveBlock30k(benchmark::State &state)
{
    const auto grid = FilledGrid();
    for (auto _ : state) {
        grid->setRow(6);
        grid->setRow2(kRows);
        grid->setCol(15);
        grid->setCol2(15);
        grid->setDestRow(5);
        grid->setDestCol(15);
        grid->MoveBlock();
    }
}
BENCHMARK(BM_SpreadMoveBlock30k)->Unit(benchmark::kMillisecond);

// A new item list for one column of all rows, as when the style list changes.
static void BM_SpreadColumnList30k(benchmark::State &state)
{
    const auto grid = FilledGrid();
    const QString items = QStringLiteral("Default\tTitle\tSong\tSign\tNote");
    for (auto _ : state) {
        grid->setRow(-1);
        grid->setCol(5);
        grid->setListItems(items);
    }
}
BENCHMARK(BM_SpreadColumnList30k)->Unit(benchmark::kMillisecond);
