// The converter's path in one process: a file opened by name into a document with its
// grid, then saved as another type through the file options. The process start (about
// 5 ms) comes on top; see velmar-convert in the README.
#include "BenchData.h"

#include "core/Class.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "formats/basTimingFile.h"
#include "timing/CTimingGrid.h"

#include <QTemporaryDir>

#include <memory>

#include <benchmark/benchmark.h>

namespace {

void convert(benchmark::State &state, const QString &text, const char *inName, ScriptType to)
{
    QTemporaryDir dir;
    const QString input = dir.filePath(QString::fromLatin1(inName));
    const QString output = dir.filePath(QStringLiteral("out"));
    WriteTextFile(input, text, false);
    for (auto _ : state) {
        auto doc = Class::Make<CTiming>();
        auto grid = std::make_unique<CTimingGrid>();
        grid->SetDocument(doc.get());
        basTimingFile::OpenTimingFile(*doc, input);
        basTimingFile::SaveChoice choice;
        choice.Type = to;
        choice.Backup = false;
        benchmark::DoNotOptimize(basTimingFile::SaveWithOptions(*doc, output, choice));
        state.PauseTiming(); // the teardown of the document and its grid is not the conversion
        grid.reset();
        doc.reset();
        state.ResumeTiming();
    }
}

} // namespace

static void BM_ConvertAss30kToSrt(benchmark::State &state)
{
    convert(state, Script30k(), "in.ass", ScriptType::SRT);
}
BENCHMARK(BM_ConvertAss30kToSrt)->Unit(benchmark::kMillisecond);

// 8,000 cues: the largest SRT the readers' 16-bit line counter lets through, rounded.
static void BM_ConvertSrt8kToAss(benchmark::State &state)
{
    convert(state, GeneratedSrt(8000), "in.srt", ScriptType::ASS);
}
BENCHMARK(BM_ConvertSrt8kToAss)->Unit(benchmark::kMillisecond);
