#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basText.h"
#include "script/CTiming.h"
#include "timing/CTimingGrid.h"
#include "ui/frmTiming.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

QString Script(int lines)
{
    QString text = QStringLiteral("[Script Info]\r\nScriptType: v4.00+\r\n\r\n[Events]\r\n"
                                  "Format: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, "
                                  "Text\r\n");
    for (int i = 0; i < lines; ++i) {
        const int s = i * 2;
        text += QStringLiteral("Dialogue: 0,0:%1:%2.00,0:%1:%3.50,Default,,0000,0000,0000,,第%4句台词 line\r\n")
                    .arg((s / 60) % 60, 2, 10, QChar(u'0'))
                    .arg(s % 60, 2, 10, QChar(u'0'))
                    .arg((s + 1) % 60, 2, 10, QChar(u'0'))
                    .arg(i);
    }
    return text;
}

} // namespace

// A 30,000-line ASS script opened into a new timing window by name, and the window shown.
static void BM_OpenTimingWindow30k(benchmark::State &state)
{
    StartCore();
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.ass"));
    WriteTextFile(path, Script(30000), true);
    for (auto _ : state) {
        frmTiming form;
        form.Init();
        form.show();
        const bool ok = form.OpenFile(0, path);
        QCoreApplication::processEvents();
        state.PauseTiming();
        if (!ok) {
            state.SkipWithError("the script did not open");
            break;
        }
        state.counters["rows"] = form.Grid().Spread().MaxRows();
        form.Document()->setChanged(false);
        form.close();
        state.ResumeTiming();
    }
    SetPrompt(nullptr);
}
BENCHMARK(BM_OpenTimingWindow30k)->Unit(benchmark::kMillisecond)->Iterations(3);
