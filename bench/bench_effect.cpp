#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "effects/CEffectPages.h"
#include "effects/basEffectFx.h"
#include "formats/CTiming.h"
#include "shell/basStart.h"
#include "ui/frmEffect.h"
#include "ui/frmTiming.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

// The effect window of a timing window made, loaded (every page built once with its
// defaults) and shown.
static void BM_OpenEffectWindow(benchmark::State &state)
{
    StartCore();
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    frmTiming form;
    form.Init();
    for (auto _ : state) {
        frmEffect window(&form);
        window.Init(form);
        window.show();
        QCoreApplication::processEvents();
        state.PauseTiming();
        window.close();
        state.ResumeTiming();
    }
    form.Document()->setChanged(false);
    SetPrompt(nullptr);
}
BENCHMARK(BM_OpenEffectWindow)->Unit(benchmark::kMillisecond);

// One change of page in a shown effect window, laid out and painted: the pages in turn,
// each backed up as it is left and restored as it is entered.
static void BM_EffectPageSwitch(benchmark::State &state)
{
    StartCore();
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    frmTiming form;
    form.Init();
    {
        frmEffect window(&form);
        window.Init(form);
        window.show();
        QCoreApplication::processEvents();
        int page = 0;
        for (auto _ : state) {
            page = (page + 1) % CEffectPages::PageCount;
            window.SelectPage(page);
            QCoreApplication::processEvents();
        }
        if (window.Model().Pages.CurrentPage() != page)
            state.SkipWithError("the page did not change");
    }
    form.Document()->setChanged(false);
    SetPrompt(nullptr);
}
BENCHMARK(BM_EffectPageSwitch)->Unit(benchmark::kMillisecond);

// A colour cycle over a 40-character line with the page's defaults (20 s of 1 s cycles).
static void BM_ColourCycle40(benchmark::State &state)
{
    CEffectPages pages;
    pages.Load();
    pages.SelectPage(4);
    CEffectArgs args = pages.Args();
    args.rtfArg = QStringLiteral(
        "云帆字幕组的颜色循环渐进效果，一行四十个字，从开始颜色到结束颜色像波浪一样推进下去。");
    args.rtfArg = args.rtfArg.left(40).leftJustified(40, u'字');
    qsizetype bytes = 0;
    for (auto _ : state) {
        const CEffectResult result = basEffectFx::BuildColourCycle(args);
        bytes += result.Text().size() * 2;
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_ColourCycle40)->Unit(benchmark::kMicrosecond);
