#include "core/basText.h"
#include "core/basTime.h"

#include <benchmark/benchmark.h>

static void BM_TimeToString(benchmark::State &state)
{
    double t = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(TimeToString(t, 2));
        t += 0.37;
    }
}
BENCHMARK(BM_TimeToString);

static void BM_DecodeGbk1MB(benchmark::State &state)
{
    const QByteArray gbk
        = EncodeSystemCodePage(QStringLiteral("字幕时间轴 timing line 对白\r\n").repeated(40000));
    for (auto _ : state)
        benchmark::DoNotOptimize(DecodeSystemCodePage(gbk));
    state.SetBytesProcessed(state.iterations() * gbk.size());
}
BENCHMARK(BM_DecodeGbk1MB)->Unit(benchmark::kMillisecond);
