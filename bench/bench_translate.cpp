#include "BenchData.h"
#include "shell/basStart.h"

#include "core/CHotKeys.h"
#include "core/CScriptedPrompt.h"
#include "core/CSpread.h"
#include "core/IPlayerWindow.h"
#include "core/basMain.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayers.h"
#include "shell/CVelmar.h"
#include "timing/CTimingGrid.h"
#include "translation/CTranslate.h"
#include "translation/basRtf.h"
#include "ui/MdiVelmar.h"
#include "ui/frmFileOption.h"
#include "ui/frmTiming.h"
#include "ui/frmTranslate.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

// A draft of `lines` lines whose colour changes every few characters, as a translator
// marks speakers and stresses.
void FillColouredDraft(QTextDocument &doc, int lines)
{
    QTextCursor c(&doc);
    for (int line = 0; line < lines; ++line) {
        if (line > 0)
            c.insertBlock();
        for (int run = 0; run < 3; ++run) {
            QTextCharFormat f;
            f.setForeground(QColor((line * 40 + run * 90) % 256, (run * 70) % 256, (line * 13) % 256));
            c.insertText(run == 0 ? QStringLiteral("第%1句").arg(line) : QStringLiteral("翻译 line "), f);
        }
    }
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
    const QString text = key == Qt::Key_Space ? QStringLiteral(" ") : QString();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(target, &release);
}

// The frame as the program makes it, with its timing and translation windows.
struct Workspace
{
    Workspace()
    {
        StartCore();
        SetPrompt(&prompt);
        frame = std::make_unique<MdiVelmar>();
        frame->Init(Velmar);
        frmTiming::Register(*frame);
        frmTranslate::Register(*frame);
    }
    ~Workspace()
    {
        for (QWidget *w : frame->DocumentWindows()) {
            if (auto *t = dynamic_cast<frmTiming *>(w))
                t->Document()->setChanged(false);
            if (auto *t = dynamic_cast<frmTranslate *>(w))
                t->Document()->setChanged(false);
        }
        frame.reset();
        SetPrompt(nullptr);
    }
    CScriptedPrompt prompt;
    std::unique_ptr<MdiVelmar> frame;
};

} // namespace

// "ChangeTo" of a 2,000-line coloured draft with colour tags on (past the 2K warning, which
// is answered Retry): the file options' preview walks the draft, and a new timing window
// takes its lines.
static void BM_TranslateChangeTo2k(benchmark::State &state)
{
    Workspace space;
    auto *draft = dynamic_cast<frmTranslate *>(space.frame->NewDocument(1));
    FillColouredDraft(*draft->rtfTranslate->document(), 2000);
    draft->Document()->ChangeOption = ChangeOption::Text | ChangeOption::Color;
    draft->RunFileOption = [](frmFileOption &dialog) { return dialog.Model.Ok(); };
    for (auto _ : state) {
        space.prompt.Answers = { MsgBoxResult::Retry };
        draft->ChangeTo();
        state.PauseTiming();
        auto *timing = dynamic_cast<frmTiming *>(space.frame->DocumentWindows().last());
        if (!timing || timing->Grid().Spread().GetText(CTimingGrid::ColDialog, 2000).isEmpty()) {
            state.SkipWithError("the timing window did not take the draft");
            break;
        }
        timing->Document()->setChanged(false);
        delete timing->parentWidget();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_TranslateChangeTo2k)->Unit(benchmark::kMillisecond);

// A rich-text draft of 1 MB opened by name into a translation window.
static void BM_OpenRtf1MB(benchmark::State &state)
{
    Workspace space;
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("draft.rtf"));
    QString rtf;
    {
        QTextDocument doc;
        int lines = 4000;
        do {
            doc.clear();
            FillColouredDraft(doc, lines);
            rtf = DocumentToRtf(doc);
            lines += 2000;
        } while (rtf.size() < 1024 * 1024);
    }
    WriteTextFile(path, rtf, false);
    auto *draft = dynamic_cast<frmTranslate *>(space.frame->NewDocument(1));
    for (auto _ : state) {
        const bool ok = draft->OpenFile(0, path);
        state.PauseTiming();
        if (!ok || draft->rtfTranslate->document()->blockCount() < 4000) {
            state.SkipWithError("the draft did not open");
            break;
        }
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * rtf.size());
}
BENCHMARK(BM_OpenRtf1MB)->Unit(benchmark::kMillisecond);

// One karaoke stroke in a 30,000-line draft recorded into the middle of a 30,000-line
// timing window, both shown: the start key, a syllable, or the end key, from the key event
// to the cell and the draft's highlight, with the events it leaves behind.
static void BM_KaraOKStroke30k(benchmark::State &state)
{
    Workspace space;
    CFakeMediaControl control;
    control.MediaDuration = 4 * 3600;
    BenchPlayerWindow window;
    Velmar->Players()->Create(&window, &control);
    control.setPlayStateDirect(3);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.ass"));
    WriteTextFile(path, Script30k(), true);
    auto *timing = dynamic_cast<frmTiming *>(space.frame->NewDocument(0));
    auto *draft = dynamic_cast<frmTranslate *>(space.frame->NewDocument(1));
    if (!timing || !draft || !timing->OpenFile(0, path)) {
        state.SkipWithError("the windows did not open");
        return;
    }
    QStringList lines;
    for (int i = 0; i < 30000; ++i)
        lines << QStringLiteral("第%1句歌词 la la").arg(i);
    draft->rtfTranslate->setPlainText(lines.join(u'\n'));
    space.frame->show();
    CSpread &grid = timing->Grid().Spread();
    grid.setRow(15000);
    grid.setCol(CTimingGrid::ColStartTime);
    grid.ActivateCell();
    QTextCursor caret(draft->rtfTranslate->document()->findBlockByNumber(15000));
    draft->rtfTranslate->setTextCursor(caret);
    timing->Button(QStringLiteral("KaraOK"))->trigger();
    QCoreApplication::processEvents();
    const QString before = grid.GetText(CTimingGrid::ColStartTime, 15000);

    const int keys[] = { Qt::Key_F8, Qt::Key_Space, Qt::Key_Space, Qt::Key_Space, Qt::Key_Space,
        Qt::Key_Space, Qt::Key_Space, Qt::Key_F9 };
    std::size_t next = 0;
    double at = 100;
    for (auto _ : state) {
        if (grid.ActiveRow() > 29000) {
            state.PauseTiming();
            grid.setRow(15000);
            grid.setCol(CTimingGrid::ColStartTime);
            grid.ActivateCell();
            state.ResumeTiming();
        }
        control.setPositionDirect(at);
        at += 0.25;
        Key(draft->rtfTranslate, keys[next]);
        next = (next + 1) % std::size(keys);
        QCoreApplication::processEvents();
    }
    if (grid.GetText(CTimingGrid::ColStartTime, 15000) == before)
        state.SkipWithError("the strokes recorded nothing");
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_KaraOKStroke30k)->Unit(benchmark::kMicrosecond);
