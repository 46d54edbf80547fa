#include "core/basPlatform.h"
#include "shell/CRecentFile.h"
#include "timing/CHistories.h"
#include "translation/CTranslate.h"
#include "translation/basRtf.h"

#include <QTextCursor>
#include <QTextDocument>

#include <benchmark/benchmark.h>

namespace {

// A draft of about 2,000 characters whose colour, font and size change every few words.
void fillRichDraft(QTextDocument &doc, int characters)
{
    QTextCursor c(&doc);
    const QStringList fonts { QStringLiteral("SimSun"), QStringLiteral("SimHei"), QStringLiteral("Arial") };
    int written = 0;
    int run = 0;
    while (written < characters) {
        QTextCharFormat f;
        f.setForeground(QColor((run * 40) % 256, (run * 90) % 256, (run * 150) % 256));
        f.setFontFamilies(QStringList { fonts[run % 3] });
        f.setFontPointSize(10 + run % 5);
        f.setFontWeight(run % 4 == 0 ? QFont::Bold : QFont::Normal);
        f.setFontItalic(run % 6 == 0);
        const QString words = QStringLiteral("字幕翻译 line %1 ").arg(run);
        c.insertText(words, f);
        written += int(words.size());
        if (++run % 8 == 0) {
            c.insertBlock();
            written += 2;
        }
    }
}

} // namespace

static void BM_RichTextToTags2k(benchmark::State &state)
{
    CTranslate doc;
    fillRichDraft(*doc.Translate(), 2000);
    doc.ChangeOption = 511;
    doc.TranslateOption = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(doc.Content());
}
BENCHMARK(BM_RichTextToTags2k)->Unit(benchmark::kMillisecond);

static void BM_RtfWriteRead2k(benchmark::State &state)
{
    QTextDocument doc;
    fillRichDraft(doc, 2000);
    for (auto _ : state) {
        const QString rtf = DocumentToRtf(doc);
        QTextDocument back;
        RtfToDocument(rtf, back);
        benchmark::DoNotOptimize(back.characterCount());
    }
}
BENCHMARK(BM_RtfWriteRead2k)->Unit(benchmark::kMillisecond);

// A control that only keeps text and selection: the history's own cost per key.
class BenchControl : public ITextControl
{
public:
    QString Text() const override { return text; }
    void setText(const QString &t) override { text = t; }
    qint32 SelStart() const override { return start; }
    void setSelStart(qint32 s) override
    {
        start = s;
        length = 0;
    }
    qint32 SelLength() const override { return length; }
    void setSelLength(qint32 l) override { length = l; }
    QString SelText() const override { return text.mid(start, length); }
    void setSelText(const QString &t) override
    {
        text.replace(start, length, t);
        start += qint32(t.size());
        length = 0;
    }
    void setEvents(ITextControlEvents *e) override { events = e; }
    QString text;
    qint32 start = 0, length = 0;
    ITextControlEvents *events = nullptr;
};

static void BM_HistoryTyping(benchmark::State &state)
{
    for (auto _ : state) {
        BenchControl control;
        control.text = QString(20000, u'x');
        control.start = 10000;
        CHistories history;
        history.setEditer(&control);
        for (int i = 0; i < 200; ++i) {
            history.KeyDown(65, 0);
            control.setSelText(QStringLiteral("a"));
            history.SelChange();
            history.Change();
        }
        benchmark::DoNotOptimize(history.Count());
    }
    state.SetItemsProcessed(state.iterations() * 200);
}
BENCHMARK(BM_HistoryTyping)->Unit(benchmark::kMillisecond);
