#include "core/CHotKeys.h"
#include "core/CScriptedPrompt.h"
#include "core/IPlayerWindow.h"
#include "core/basMain.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayers.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "timing/CTimingGrid.h"
#include "ui/CSpreadView.h"
#include "ui/frmFileOption.h"
#include "ui/frmTiming.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

QString Script(int lines)
{
    QString text
        = QStringLiteral("[Script Info]\r\nScriptType: v4.00+\r\n\r\n[Events]\r\n"
                         "Format: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, "
                         "Text\r\n");
    for (int i = 0; i < lines; ++i) {
        const int s = i * 2;
        text += QStringLiteral(
            "Dialogue: 0,0:%1:%2.00,0:%1:%3.50,Default,,0000,0000,0000,,第%4句台词 line\r\n")
                    .arg((s / 60) % 60, 2, 10, QChar(u'0'))
                    .arg(s % 60, 2, 10, QChar(u'0'))
                    .arg((s + 1) % 60, 2, 10, QChar(u'0'))
                    .arg(i);
    }
    return text;
}

class BenchPlayerWindow : public IPlayerWindow
{
public:
    QString Tag() const override { return m_tag; }
    void setTag(const QString &tag) override { m_tag = tag; }
    QString Caption() const override { return QStringLiteral("bench"); }
    void setCaption(const QString &) override { }
    CPlayer *player() const override { return Velmar->Players()->Item(m_tag); }

private:
    QString m_tag;
};

void Key(QWidget *target, int key)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &release);
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

// Stamping start and end of a line in the middle of an open 30,000-line window with the
// keys, as a timer does while the video plays: the view must not rebuild on each stamp.
static void BM_StampInTimingWindow30k(benchmark::State &state)
{
    StartCore();
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    HotKeys->setHOTKEY_TimingStartTime(119);
    HotKeys->setHOTKEY_TimingEndTime(120);
    CFakeMediaControl control;
    control.MediaDuration = 7200;
    BenchPlayerWindow window;
    Velmar->Players()->Create(&window, &control);
    control.setPlayStateDirect(3);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.ass"));
    WriteTextFile(path, Script(30000), true);
    {
        frmTiming form;
        form.Init();
        form.show();
        if (!form.OpenFile(0, path)) {
            state.SkipWithError("the script did not open");
            return;
        }
        QCoreApplication::processEvents();
        CSpread &grid = form.Grid().Spread();
        int row = 15000;
        double at = 100;
        const QString before = grid.GetText(CTimingGrid::ColEndTime, row);
        for (auto _ : state) {
            grid.setRow(row);
            grid.setCol(CTimingGrid::ColStartTime);
            grid.ActivateCell();
            control.setPositionDirect(at);
            Key(form.spdTiming, Qt::Key_F8);
            control.setPositionDirect(at + 1.5);
            Key(form.spdTiming, Qt::Key_F9);
            QCoreApplication::processEvents();
            row = row < 29000 ? row + 1 : 15000;
            at += 2;
        }
        // The keys must have stamped: the first line's end is the player's time now.
        if (grid.GetText(CTimingGrid::ColEndTime, 15000) == before)
            state.SkipWithError("the keys stamped nothing");
        form.Document()->setChanged(false);
        form.close();
    }
    Velmar->Players()->Clear();
    SetPrompt(nullptr);
}
BENCHMARK(BM_StampInTimingWindow30k)->Unit(benchmark::kMicrosecond);

// The open's file-option dialog for a 30,000-line ASS script: the file picked (its text
// read into the model and the preview), the dialog refreshed, shown and painted.
static void BM_FileOptionDialog30k(benchmark::State &state)
{
    StartCore();
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.ass"));
    WriteTextFile(path, Script(30000), true);
    for (auto _ : state) {
        frmFileOption dialog;
        CFileOptionModel &model = dialog.Model;
        model.Init();
        model.ParentWindowType = ParentWindowType::Timing;
        model.setDocumentType(ScriptType::ASS, 0);
        model.setOperation(FileOperation::Open);
        model.TakeFileName(path);
        dialog.Refresh();
        dialog.show();
        QCoreApplication::processEvents();
        state.PauseTiming();
        state.counters["chars"] = double(model.FileContent.size());
        dialog.close();
        state.ResumeTiming();
    }
    SetPrompt(nullptr);
}
BENCHMARK(BM_FileOptionDialog30k)->Unit(benchmark::kMillisecond);
