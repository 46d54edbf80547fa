#include "BenchData.h"

#include "core/CScriptedPrompt.h"
#include "core/Class.h"
#include "formats/CTiming.h"
#include "formats/basTimingFile.h"
#include "shell/CFontDialogModel.h"
#include "timing/CTimingGrid.h"

#include <benchmark/benchmark.h>

// The style window's Apply on a 30,000-line script: a style renamed in the window, the
// document takes the styles, and every line of the style follows it in the grid.
static void BM_FontApplyRename30k(benchmark::State &state)
{
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    auto doc = Class::Make<CTiming>();
    CTimingGrid grid;
    grid.SetDocument(doc.get());
    basTimingFile::ReadIntoDocument(*doc, ScriptType::ASS, Script30k(), true);
    CFontDialogModel model;
    model.Init(doc.get(), &grid);
    int round = 0;
    for (auto _ : state) {
        model.Select(0);
        prompt.Inputs.push_back(QStringLiteral("Style%1").arg(++round));
        model.Rename();
        model.Apply();
    }
    state.SetItemsProcessed(state.iterations() * grid.Spread().MaxRows());
    SetPrompt(nullptr);
}
BENCHMARK(BM_FontApplyRename30k)->Unit(benchmark::kMillisecond);
