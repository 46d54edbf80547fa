#include "core/CGridAction.h"
#include "core/CHotKeys.h"
#include "core/IPlayerWindow.h"
#include "core/basTime.h"
#include "formats/CTiming.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayer.h"
#include "player/ITimingPreviewHooks.h"
#include "timing/CTimePointCapture.h"
#include "timing/CTimingGrid.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int kRows = 30000;

class BenchPlayerWindow : public IPlayerWindow
{
public:
    QString Tag() const override { return QStringLiteral("1"); }
    void setTag(const QString &) override { }
    QString Caption() const override { return QString(); }
    void setCaption(const QString &) override { }
    CPlayer *player() const override { return document; }
    CPlayer *document = nullptr;
};

// Reads what a preview reads when told of a cell: the row's serial and the cell's text.
class BenchHooks : public ITimingPreviewHooks
{
public:
    explicit BenchHooks(const CTimingGrid &grid)
        : m_grid(grid)
    { }
    void CreatePreviewLine(int row) override { m_sum += m_grid.RowSerial(row); }
    void DeletePreviewLine(int row) override { m_sum -= m_grid.RowSerial(row); }
    void UpdatePreviewCell(int col, int row) override
    {
        m_sum += m_grid.RowSerial(row) + StringToTime(m_grid.Spread().GetText(col, row));
    }
    void ClearPreview() override { m_sum = 0; }
    double Sum() const { return m_sum; }

private:
    const CTimingGrid &m_grid;
    double m_sum = 0;
};

// A timed 30,000-line document in its grid, a playing film, F8 and F9 as the keys.
struct StampRig
{
    StampRig()
        : hooks(grid)
    {
        keys.setHOTKEY_TimingStartTime(119);
        keys.setHOTKEY_TimingEndTime(120);
        control.MediaDuration = 3 * 3600;
        player.Init(1, &window, &control);
        player.setContent(QStringLiteral("/bench/film.mkv"));
        control.setPlayStateDirect(3);
        window.document = &player;
        doc.Init(1);
        doc.setPlayerWindow(&window);
        doc.ReactOffsetStart = -0.3;
        doc.ReactOffsetEnd = -0.3;
        grid.SetPreviewHooks(&hooks);
        grid.ResetGrid();
        CSpread &g = grid.Spread();
        // Read in as a file is: the history starts after it.
        const CGridAction load(grid, nullptr, CGridAction::Reset);
        g.setReDraw(false);
        while (g.MaxRows() < kRows + 2)
            grid.AppendRow();
        for (int row = 1; row <= kRows; ++row) {
            g.SetText(3, row, TimeToString(row * 2.0, 2));
            g.SetText(4, row, TimeToString(row * 2.0 + 1.5, 2));
            g.SetText(15, row, QStringLiteral("第%1行的对白 a line of dialogue").arg(row));
        }
        g.setReDraw(true);
        capture = std::make_unique<CTimePointCapture>(doc, grid, &keys);
        Restart();
    }
    void Restart()
    {
        grid.Spread().setRow(kRows / 2);
        grid.Spread().setCol(3);
        grid.Spread().ActivateCell();
    }

    CHotKeys keys;
    CFakeMediaControl control;
    BenchPlayerWindow window;
    CPlayer player;
    CTiming doc;
    CTimingGrid grid;
    BenchHooks hooks;
    std::unique_ptr<CTimePointCapture> capture;
};

void RunStamps(benchmark::State &state, StampRig &rig)
{
    const CCaptureKey f8 = CCaptureKey::FromQt(Qt::Key_F8, Qt::NoModifier, QString());
    const CCaptureKey f9 = CCaptureKey::FromQt(Qt::Key_F9, Qt::NoModifier, QString());
    double position = 100;
    bool start = true;
    for (auto _ : state) {
        if (rig.grid.Spread().ActiveRow() >= kRows - 10) {
            state.PauseTiming();
            rig.Restart();
            start = true;
            state.ResumeTiming();
        }
        rig.control.setPositionDirect(position);
        position += 0.37;
        if (position > 3 * 3600 - 10)
            position = 100;
        benchmark::DoNotOptimize(rig.capture->KeyStroke(start ? f8 : f9));
        start = !start;
        rig.control.setPlayStateDirect(3);
    }
    benchmark::DoNotOptimize(rig.hooks.Sum());
    state.SetItemsProcessed(state.iterations());
}

} // namespace

// One stroke, key to cell text with the preview told, alternating start and end strokes
// down the middle of a 30,000-row document.
static void BM_Stamp30k(benchmark::State &state)
{
    StampRig rig;
    RunStamps(state, rig);
}
BENCHMARK(BM_Stamp30k)->Unit(benchmark::kMicrosecond);

// The same stroke with the grid's undo history off: what a stroke cost before each one
// became an undo step.
static void BM_Stamp30kWithoutHistory(benchmark::State &state)
{
    StampRig rig;
    rig.grid.Spread().SetJournal(nullptr);
    RunStamps(state, rig);
}
BENCHMARK(BM_Stamp30kWithoutHistory)->Unit(benchmark::kMicrosecond);

// The same with the automatic end point and the pause after each line.
static void BM_Stamp30kAutoEndStepPause(benchmark::State &state)
{
    StampRig rig;
    rig.doc.AutoEndTimePoint = true;
    rig.doc.StepPause = true;
    RunStamps(state, rig);
}
BENCHMARK(BM_Stamp30kAutoEndStepPause)->Unit(benchmark::kMicrosecond);

// End strokes on the row before the last: each appends a row to the 30,000.
static void BM_Stamp30kAppending(benchmark::State &state)
{
    StampRig rig;
    const CCaptureKey f9 = CCaptureKey::FromQt(Qt::Key_F9, Qt::NoModifier, QString());
    for (auto _ : state) {
        CSpread &g = rig.grid.Spread();
        g.setRow(g.MaxRows() - 1);
        g.setCol(4);
        g.ActivateCell();
        benchmark::DoNotOptimize(rig.capture->KeyStroke(f9));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Stamp30kAppending)->Unit(benchmark::kMicrosecond);
