#include "BenchData.h"
#include "formats/CTiming.h"

#include <benchmark/benchmark.h>

#include <QString>

#include <memory>

namespace {

qint64 utf8Size()
{
    static const qint64 size = Script30k().toUtf8().size();
    return size;
}

void BM_ReadAss30k(benchmark::State &state)
{
    const QString &text = Script30k();
    qsizetype events = 0;
    for (auto _ : state) {
        // Each read goes into a new document, as opening a file does; making and
        // freeing the document are not timed.
        state.PauseTiming();
        auto doc = std::make_unique<CTiming>();
        doc->Init(1, nullptr);
        state.ResumeTiming();
        doc->setContent(text);
        events = doc->SSAContent->Count();
        state.PauseTiming();
        doc.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * utf8Size());
    state.counters["events"] = double(events);
}
BENCHMARK(BM_ReadAss30k)->Unit(benchmark::kMillisecond);

void BM_WriteAss30k(benchmark::State &state)
{
    CTiming doc;
    doc.Init(1, nullptr);
    doc.setContent(Script30k());
    qint64 bytes = 0;
    for (auto _ : state) {
        const QString out = doc.Content();
        bytes = out.size();
        benchmark::DoNotOptimize(out.constData());
    }
    state.SetBytesProcessed(state.iterations() * utf8Size());
    state.counters["chars"] = double(bytes);
}
BENCHMARK(BM_WriteAss30k)->Unit(benchmark::kMillisecond);

} // namespace
