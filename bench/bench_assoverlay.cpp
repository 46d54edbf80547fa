#include "BenchData.h"

#include "core/Class.h"
#include "formats/CTiming.h"
#include "script/CSSAContent.h"
#include "timing/CAssOverlay.h"
#include "timing/CTimingGrid.h"
#include "timing/basLineOps.h"

#include <QImage>

#include <benchmark/benchmark.h>

namespace {

// Ten lines on screen at once at 1280 x 720 in five styles with outlines, shadows and
// blur, moving, fading, changing colour and sweeping karaoke, in Chinese and Latin.
const char16_t *kTenLines
    = u"[Script Info]\r\nScriptType: v4.00+\r\nPlayResX: 1280\r\nPlayResY: 720\r\n\r\n"
      u"[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
      u"OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, "
      u"Spacing, Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, "
      u"Encoding\r\n"
      u"Style: 中文,Noto Sans CJK SC,54,&H00FFFFFF,&H000080FF,&H00402000,&H80000000,0,0,0,0,"
      u"100,100,0,0.00,1,2.5,1.5,2,20,20,30,134\r\n"
      u"Style: 注释,Noto Serif CJK SC,36,&H0000FFFF,&H000000FF,&H00000000,&H80000000,-1,0,0,"
      u"0,100,100,0,0.00,1,2,1,8,20,20,20,134\r\n"
      u"Style: English,DejaVu Sans,40,&H00E0E0E0,&H000000FF,&H00000000,&H80000000,-1,0,0,0,"
      u"100,100,0,0.00,1,2,1,2,20,20,100,1\r\n"
      u"Style: 卡拉OK,Noto Sans CJK SC,48,&H00FF8000,&H00FFFFFF,&H00000000,&H80000000,-1,0,"
      u"0,0,100,100,2,0.00,1,3,0,7,20,20,20,134\r\n"
      u"Style: 标题,Noto Sans CJK SC,72,&H0040C0FF,&H000000FF,&H00200000,&H80000000,-1,0,0,"
      u"0,110,100,4,0.00,1,4,2,5,20,20,20,134\r\n\r\n"
      u"[Events]\r\nFormat: Layer, Start, End, Style, Actor, MarginL, MarginR, MarginV, "
      u"Effect, Text\r\n";

const char16_t *kTenEvents[] = {
    u"0,0:00:00.00,0:00:10.00,中文,NTP,0000,0000,0000,,这件事情你不用担心，交给我就好",
    u"0,0:00:00.00,0:00:10.00,English,NTP,0000,0000,0000,,Leave it to me, {\\i1}you don't have to "
    u"worry{\\i0}",
    u"0,0:00:00.00,0:00:10.00,注释,NTP,0000,0000,0000,,{\\fad(300,300)}注：字幕组的大家辛苦了",
    u"0,0:00:00.00,0:00:10.00,卡拉OK,NTP,0000,0000,0000,Karaoke,{\\pos(40,80)\\K50}我{\\K50}们{\\K60}今{"
    u"\\K60}天"
    u"{\\K80}一{\\K80}起{\\K100}去",
    u"0,0:00:00.00,0:00:10.00,标题,NTP,0000,0000,0000,,{\\move(200,300,1000,300)\\blur2}时间轴已经对好了",
    u"1,0:00:00.00,0:00:10.00,中文,NTP,0000,0000,0000,,{\\pos(640,420)\\t(0,4000,\\1c&H0000FF&\\frz15)}"
    u"颜色在变",
    u"0,0:00:00.00,0:00:10.00,English,NTP,0000,0000,0000,,{\\pos(1000,200)\\fscx120\\bord4}Episode 12",
    u"0,0:00:00.00,0:00:10.00,注释,NTP,0000,0000,0000,,{\\an9\\pos(1260,20)\\be1}第十二话",
    u"0,0:00:00.00,0:00:10.00,中文,NTP,0000,0000,0000,,{\\pos(640,560)\\fad(500,0)}我们今天一起去看电影吧",
    u"2,0:00:00.00,0:00:10.00,English,NTP,0000,0000,0000,,{\\move(1280,650,0,650)}Line ten scrolls across",
};

// A timing document, its grid and an overlay attached to it.
struct Overlaid
{
    std::unique_ptr<CTiming> doc = Class::Make<CTiming>();
    CTimingGrid grid;
    CAssOverlay overlay;

    explicit Overlaid(const QString &script)
    {
        doc->Read(script);
        grid.SetDocument(doc.get());
        grid.LoadGridFromContent(*doc->SSAContent);
        overlay.Attach(&grid);
    }
};

QString TenLineScript()
{
    QString script = QString::fromUtf16(kTenLines);
    for (const char16_t *event : kTenEvents)
        script += QStringLiteral("Dialogue: ") + QString::fromUtf16(event) + QStringLiteral("\r\n");
    return script;
}

} // namespace

// One video frame of 25 a second: the time moves on by 40 ms each time, so the animated
// lines are drawn anew, and the subtitles are blended over the 1280 x 720 frame.
static void BM_AssOverlayFrame720p(benchmark::State &state)
{
    Overlaid o(TenLineScript());
    QImage frame(1280, 720, QImage::Format_RGB32);
    frame.fill(QColor(30, 60, 90));
    int tick = 0;
    for (auto _ : state) {
        const double seconds = 1.0 + (tick++ % 200) * 0.04;
        benchmark::DoNotOptimize(o.overlay.Render(frame, seconds));
    }
    state.counters["events"] = o.overlay.Renderer().EventCount();
}
BENCHMARK(BM_AssOverlayFrame720p)->Unit(benchmark::kMillisecond);

// One keystroke in a 30,000-line script: a dialogue cell changes and the change is
// brought into the track (the head checked, one line made and read).
static void BM_AssOverlayEditOneLine30k(benchmark::State &state)
{
    Overlaid o(Script30k());
    CSpread &grid = o.grid.Spread();
    const QString texts[2]
        = { QStringLiteral("{\\pos(960,1000)}改过的一行对白"), QStringLiteral("{\\fad(200,200)}又改了一次") };
    int i = 0;
    for (auto _ : state) {
        const int row = 1 + (i * 7919) % 30000;
        grid.SetText(CTimingGrid::ColDialog, row, texts[i++ % 2]);
        o.overlay.Flush();
    }
    state.counters["events"] = o.overlay.Renderer().EventCount();
}
BENCHMARK(BM_AssOverlayEditOneLine30k)->Unit(benchmark::kMicrosecond);

// A row inserted and deleted again near the top of a 30,000-line script: each resets the
// grid's model, and every row is compared with the cells of its event.
static void BM_AssOverlayInsertDeleteRow30k(benchmark::State &state)
{
    Overlaid o(Script30k());
    CSpread &grid = o.grid.Spread();
    grid.setRow(5);
    grid.setCol(CTimingGrid::ColDialog);
    grid.ActivateCell();
    const qint64 parsed = o.overlay.Renderer().ParsedLines();
    for (auto _ : state) {
        basLineOps::InsertRows(o.grid, basLineOps::WholeRows);
        o.overlay.Flush();
        basLineOps::DeleteRows(o.grid, basLineOps::WholeRows);
        o.overlay.Flush();
    }
    state.counters["lines read"] = double(o.overlay.Renderer().ParsedLines() - parsed);
}
BENCHMARK(BM_AssOverlayInsertDeleteRow30k)->Unit(benchmark::kMillisecond);
