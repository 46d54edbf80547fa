#include "core/basTime.h"
#include "script/CTiming.h"

#include <benchmark/benchmark.h>

#include <QString>

#include <memory>

namespace {

// A 30,000-event ASS script of about 3.4 MB in UTF-8: two styles, override tags and
// Chinese text, as the team's scripts look.
const QString &script30k()
{
    static const QString text = [] {
        QString s;
        s.reserve(3'600'000);
        s += QStringLiteral(
            "[Script Info]\r\nTitle: 基准测试\r\nScriptType: v4.00+\r\nCollisions: Normal\r\n"
            "PlayResX: 1920\r\nPlayResY: 1080\r\nTimer: 100.0000\r\n\r\n"
            "[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
            "OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, "
            "Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n"
            "Style: "
            "中文,方正黑体_GBK,60,&H00FFFFFF,&HF0000000,&H00402000,&H80000000,0,0,0,0,100,100,0,0.00,1,2,1,2,"
            "10,10,40,134\r\n"
            "Style: "
            "English,Arial,40,&H00E0E0E0,&HF0000000,&H00000000,&H80000000,-1,0,0,0,100,100,0,0.00,1,1,0,2,10,"
            "10,10,1\r\n\r\n"
            "[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, "
            "Text\r\n");
        const QString chinese[]
            = { QStringLiteral("我们今天一起去看电影吧"), QStringLiteral("这件事情你不用担心，交给我就好"),
                  QStringLiteral("时间轴已经对好了"), QStringLiteral("字幕组的大家辛苦了") };
        for (int i = 0; i < 30000; ++i) {
            const double start = i * 0.95; // under ten hours, as strict time strings need
            const QString line = QStringLiteral("Dialogue: 0,%1,%2,%3,NTP,0000,0000,0000,,%4%5\\Nline %6")
                                     .arg(TimeToString(start, 2), TimeToString(start + 0.9, 2),
                                         i % 3 ? QStringLiteral("中文") : QStringLiteral("English"),
                                         i % 2 ? QStringLiteral("{\\fad(200,200)\\be1}")
                                               : QStringLiteral("{\\pos(960,1000)}"),
                                         chinese[i % 4])
                                     .arg(i);
            s += line;
            s += u"\r\n";
        }
        return s;
    }();
    return text;
}

qint64 utf8Size()
{
    static const qint64 size = script30k().toUtf8().size();
    return size;
}

void BM_ReadAss30k(benchmark::State &state)
{
    const QString &text = script30k();
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
    doc.setContent(script30k());
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
