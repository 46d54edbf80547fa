#include "BenchData.h"

#include "core/Class.h"
#include "core/basTime.h"
#include "formats/CSRTContent.h"
#include "formats/CTiming.h"
#include "formats/CTimingFormats.h"
#include "formats/basFormatConvert.h"
#include "script/CSSAContent.h"

#include <benchmark/benchmark.h>

namespace {

// A timing document reads an SRT: the file into its list, the list into the events.
qsizetype readSrtIntoDocument(const QString &srtText)
{
    auto timing = Class::Make<CTiming>();
    CTimingFormats formats;
    formats.Init(timing.get());
    timing->setScriptType(ScriptType::SRT);
    formats.ReadBody(ScriptType::SRT, srtText);
    formats.FillEvents();
    return formats.SRTContent->Count();
}

void readSrt(benchmark::State &state, int cues)
{
    const QString text = GeneratedSrt(cues);
    qsizetype read = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(read = readSrtIntoDocument(text));
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
    state.counters["cues_read"] = double(read);
}

} // namespace

// 30,000 cues are about 120,000 lines: more than the 16-bit line index of the reader
// walks, so this read ends at once with its overflow message and no cues read.
static void BM_ReadSrt30k(benchmark::State &state)
{
    readSrt(state, 30000);
}
BENCHMARK(BM_ReadSrt30k)->Unit(benchmark::kMillisecond);

// The largest SRT the reader takes whole: 8,191 cues in 32,765 lines.
static void BM_ReadSrt8k(benchmark::State &state)
{
    readSrt(state, 8191);
}
BENCHMARK(BM_ReadSrt8k)->Unit(benchmark::kMillisecond);

// A document of 30,000 event lines assembled as an SRT file.
static void BM_WriteSrt30k(benchmark::State &state)
{
    auto timing = Class::Make<CTiming>();
    CTimingFormats formats;
    formats.Init(timing.get());
    QString eventText
        = QStringLiteral("[Events]\r\nFormat: Marked, Start, End, Style, Name, MarginL, MarginR, "
                         "MarginV, Effect, Text\r\n");
    for (int i = 0; i < 30000; ++i)
        eventText
            += QStringLiteral("Dialogue: Marked=0,%1,%2,*Default,NTP,0000,0000,0000,,{\\b1}Line %3{\\b0} of "
                              "the generated script\\Nsecond row.\r\n")
                   .arg(TimeToString(i, 2), TimeToString(i + 0.8, 2))
                   .arg(i);
    timing->setScriptType(ScriptType::SSA);
    timing->SSAContent->Read(eventText);
    timing->setScriptType(ScriptType::SRT);
    qsizetype size = 0;
    for (auto _ : state) {
        QString srt;
        formats.AssembleBody(ScriptType::SRT, srt);
        size = srt.size();
        benchmark::DoNotOptimize(srt);
    }
    state.SetBytesProcessed(state.iterations() * size * 2);
    state.counters["lines"] = double(timing->SSAContent->Count());
}
BENCHMARK(BM_WriteSrt30k)->Unit(benchmark::kMillisecond);

// The SRT reader alone, without the events it becomes.
static void BM_ReadSrt8kFormatOnly(benchmark::State &state)
{
    const QString text = GeneratedSrt(8191);
    for (auto _ : state) {
        CSRTContent srt;
        srt.setContent(text);
        benchmark::DoNotOptimize(srt.Count());
    }
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
}
BENCHMARK(BM_ReadSrt8kFormatOnly)->Unit(benchmark::kMillisecond);
