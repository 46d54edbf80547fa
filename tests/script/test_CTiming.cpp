#include "ScriptFixture.h"

#include "core/Class.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "formats/CTimings.h"
#include "script/ITimingGrid.h"

#include <QDir>
#include <QObject>
#include <QTemporaryDir>

namespace {

// A grid that holds a text column and, on store, writes its rows back as lines.
class FakeGrid : public ITimingGrid
{
public:
    void StoreGridToContent(CSSAContent &content) override
    {
        ++stores;
        content.Clear();
        for (const QString &text : column) {
            CSSAContentLine *line = content.Create();
            line->setEndTime(1);
            line->setDialog(text);
        }
    }
    void LoadGridFromContent(CSSAContent &, const CFonts *) override { }
    void FillTextColumn(const QStringList &lines) override { column = lines; }
    QString TextColumn() const override { return column.join(QStringLiteral("\r\n")); }

    QStringList column;
    int stores = 0;
};

class TimingTest : public ScriptTest
{
protected:
    void SetUp() override
    {
        ScriptTest::SetUp();
        timings = Class::MakeCollection<CTimings>();
        doc = timings->Create();
    }
    std::unique_ptr<CTimings> timings;
    CTiming *doc = nullptr;
};

const QString smallAss = QStringLiteral(
    "[Script Info]\r\nTitle: T\r\nScriptType: v4.00+\r\n\r\n"
    "[V4+ Styles]\r\nFormat: Name\r\n"
    "Style: "
    "Main,Arial,20,&H00FFFFFF,&H000000FF,&H00000000,&H80000000,0,0,0,0,100,100,0,0,1,2,0,2,10,10,10,1\r\n\r\n"
    "[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n"
    "Dialogue: 0,0:00:01.00,0:00:02.00,Main,,0,0,0,,{\\b1}第一行\r\n"
    "Dialogue: 0,0:00:03.00,0:00:04.00,Main,,0,0,0,,second, line\r\n");

} // namespace

TEST_F(TimingTest, NewDocumentIsAnEmptyAssScript)
{
    EXPECT_EQ(doc->ScriptType(), ScriptType::ASS);
    EXPECT_EQ(doc->TimingOption, 255);
    EXPECT_EQ(doc->TimeFormat(), 0);
    const QString out = doc->Content();
    EXPECT_TRUE(out.startsWith(QStringLiteral("[Script Info]\r\n")));
    // Head, empty line, styles, empty line, events.
    EXPECT_TRUE(out.contains(QStringLiteral("WrapStyle:0\r\n\r\n[V4+ Styles]\r\n")));
    EXPECT_TRUE(out.contains(QStringLiteral("Style: "
                                            "Default,楷体,25,&H00FFFFFF,&HF0000000,&H00000000,&HF0000000,1,0,"
                                            "0,0,100,100,0,0.00,1,1,0,2,30,30,10,134\r\n\r\n[Events]\r\n")));
    EXPECT_TRUE(out.endsWith(QStringLiteral(
        "Format: Layer, Start, End, Style, Actor, MarginL, MarginR, MarginV, Effect, Text\r\n")));
}

TEST_F(TimingTest, ScriptTypeAndTimeFormatArePushedDown)
{
    doc->setScriptType(ScriptType::SSA);
    EXPECT_EQ(doc->ScriptInfo->ScriptType(), ScriptType::SSA);
    EXPECT_EQ(doc->Fonts->ScriptType, ScriptType::SSA);
    EXPECT_EQ(doc->SSAContent->ScriptType, ScriptType::SSA);
    doc->setScriptSubType(2);
    EXPECT_EQ(doc->SSAContent->ScriptSubType, 2);
    doc->SSAContent->Create();
    doc->setTimeFormat(2);
    EXPECT_EQ(doc->SSAContent->TimeFormat(), 2);
    EXPECT_EQ(doc->SSAContent->At(0)->TimeFormat, 2);
}

TEST_F(TimingTest, ReadsAWholeAssFileAndClearsChanged)
{
    doc->setChanged(true);
    doc->setContent(smallAss);
    EXPECT_FALSE(doc->Changed());
    EXPECT_EQ(doc->ScriptInfo->Title(), QStringLiteral(" T"));
    ASSERT_EQ(doc->Fonts->Count(), 1);
    EXPECT_EQ(doc->Fonts->At(0)->StyleName(), QStringLiteral("Main"));
    ASSERT_EQ(doc->SSAContent->Count(), 3); // the final "\r\n" leaves a blank line
    EXPECT_EQ(doc->SSAContent->At(1)->Dialog(), QStringLiteral("second, line"));
    EXPECT_TRUE(prompt.Messages().isEmpty());

    const QString out = doc->Content();
    EXPECT_TRUE(out.contains(
        QStringLiteral("\r\n\r\n[Events]\r\nFormat: Layer, Start, End, Style, Actor, MarginL, MarginR, "
                       "MarginV, Effect, Text\r\n"
                       "Dialogue: 0,0:00:01.00,0:00:02.00,Main,,0000,0000,0000,,{\\b1}第一行\r\n"
                       "Dialogue: 0,0:00:03.00,0:00:04.00,Main,,0000,0000,0000,,second, line\r\n\r\n")));
}

TEST_F(TimingTest, TimingOptionSelectsSections)
{
    doc->setContent(smallAss);
    doc->TimingOption = 4 + 8 + 16;
    EXPECT_EQ(doc->Content(),
        QStringLiteral("0:00:01.00,0:00:02.00,第一行\r\n0:00:03.00,0:00:04.00,second, line\r\n\r\n"));
    EXPECT_EQ(doc->SSAContent->SaveOption, 28);
    doc->TimingOption = 2 + 64 + 4 + 8 + 16 + 32;
    const QString noHead = doc->Content();
    EXPECT_TRUE(noHead.startsWith(QStringLiteral("[V4+ Styles]\r\n")));
    doc->setScriptType(ScriptType::Plain);
    EXPECT_TRUE(doc->Content().startsWith(QStringLiteral("[Events]\r\n")));
}

TEST_F(TimingTest, ExtraAndUnknownSectionsAndLineEnds)
{
    QString withExtras = smallAss;
    withExtras.replace(QStringLiteral("[Events]"),
        QStringLiteral("[Fonts]\r\nfontname: a.ttf\r\nM1!!\r\n\r\n[Graphics]\r\nx\r\n\r\n[Events]"));
    withExtras += QStringLiteral("[Aegisub Extradata]\r\nData: 1,x");
    prompt.DefaultYesNo = MsgBoxResult::Yes;
    doc->setContent(withExtras);
    EXPECT_EQ(doc->Fonts->Count(), 1);
    // The section behind [Events] is tried as events: its head has no ":" and its line
    // too few fields. Both are asked about, and the events before them stay.
    EXPECT_EQ(prompt.Messages().size(), 2);
    EXPECT_EQ(doc->SSAContent->Count(), 2);

    prompt.Reset();
    QString lf = smallAss;
    lf.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    doc->setContent(lf);
    EXPECT_EQ(doc->SSAContent->Count(), 0);
    EXPECT_EQ(doc->Fonts->Count(), 0);
    QString cr = smallAss;
    cr.replace(QStringLiteral("\r\n"), QStringLiteral("\r"));
    doc->setContent(cr);
    EXPECT_EQ(doc->SSAContent->Count(), 0);
    EXPECT_TRUE(prompt.Messages().isEmpty());

    doc->setContent(QChar(0xFEFF) + smallAss);
    EXPECT_EQ(doc->ScriptInfo->Title(), QStringLiteral(" T"));
    EXPECT_EQ(doc->SSAContent->Count(), 3);
}

TEST_F(TimingTest, Utf16FileWithMarkReadsLikeAnyOther)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("u16.ass"));
    ASSERT_TRUE(WriteTextFile(path, smallAss, true));
    const WholeFileRead read = ReadWholeFile(path, false);
    ASSERT_TRUE(read.Ok);
    doc->setContent(read.Text);
    EXPECT_EQ(doc->SSAContent->Count(), 3);
    EXPECT_EQ(doc->SSAContent->At(0)->Dialog(), QStringLiteral("{\\b1}第一行"));
}

TEST_F(TimingTest, FiftyThousandLinesOverflowKeepingWhatWasRead)
{
    QString text = QStringLiteral("[Script Info]\r\nTitle: big\r\n[Events]\r\nFormat: x\r\n");
    for (int i = 0; i < 50000; ++i)
        text += QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,S,,0,0,0,,%1\r\n").arg(i);
    doc->setChanged(true);
    doc->setContent(text);
    ASSERT_EQ(prompt.Messages().size(), 1);
    EXPECT_TRUE(prompt.Messages()[0].startsWith(Msg(QStringLiteral("TIMING_ERR_114"))));
    EXPECT_EQ(doc->SSAContent->Count(), 32768 - 4);
    EXPECT_EQ(doc->ScriptInfo->Title(), QStringLiteral(" big"));
    EXPECT_TRUE(doc->Changed()); // the read did not end
}

TEST_F(TimingTest, BadFieldsAskAndNoKeepsTheLinesRead)
{
    QString text = smallAss;
    text.replace(QStringLiteral("Dialogue: 0,0:00:03.00"), QStringLiteral("Dialogue: x,0:00:03.00"));
    text += QStringLiteral("Dialogue: 0,0:00:05.00,0:00:06.00,Main,,0,0,0,,third\r\n");
    prompt.Answers = { MsgBoxResult::OK, MsgBoxResult::No };
    doc->setContent(text);
    EXPECT_EQ(doc->SSAContent->Count(), 1);
    ASSERT_EQ(prompt.Messages().size(), 2); // the field message, then the question
}

TEST_F(TimingTest, PlainTextGoesToTheGridColumn)
{
    FakeGrid grid;
    grid.column = { QStringLiteral("old") };
    doc->setTimingTable(&grid);
    doc->setScriptType(ScriptType::DialogueText);
    doc->setChanged(true);
    doc->setContent(QStringLiteral("一\r\n二\r\n三"));
    EXPECT_EQ(
        grid.column, (QStringList { QStringLiteral("一"), QStringLiteral("二"), QStringLiteral("三") }));
    EXPECT_TRUE(doc->Changed());
    EXPECT_EQ(doc->TextColumn(), QStringLiteral("一\r\n二\r\n三"));

    grid.column = { QStringLiteral("{\\i1}a\\Nb"), QStringLiteral("c") };
    EXPECT_EQ(doc->Content(), QStringLiteral("a b\r\nc\r\n"));
    EXPECT_EQ(grid.stores, 1);
}

TEST_F(TimingTest, WithoutAGridPlainTextBecomesUntimedLines)
{
    doc->setScriptType(ScriptType::DialogueText);
    doc->setContent(QStringLiteral("one\r\n{\\b1}two"));
    ASSERT_EQ(doc->SSAContent->Count(), 2);
    EXPECT_EQ(doc->Content(), QStringLiteral("one\r\ntwo\r\n"));
}

TEST_F(TimingTest, GridIsStoredBeforeAssembling)
{
    FakeGrid grid;
    grid.column = { QStringLiteral("from grid") };
    doc->setContent(smallAss);
    doc->setTimingTable(&grid);
    EXPECT_TRUE(doc->Content().endsWith(
        QStringLiteral("Dialogue: 0,0:00:00.00,0:00:01.00,Default,NTP,0000,0000,0000,,from grid\r\n")));
}

TEST_F(TimingTest, ReactionOffsetsClampPushAndSave)
{
    CTiming *second = timings->Create();
    timings->setReactOffset(2);
    EXPECT_EQ(timings->ReactOffset(), 1);
    timings->setReactOffset(-2);
    EXPECT_EQ(timings->ReactOffset(), -1);
    timings->setReactOffset(-0.5);
    EXPECT_EQ(doc->ReactOffsetStart, -0.5);
    EXPECT_EQ(second->ReactOffsetEnd, -0.5);
    EXPECT_EQ(timings->ReactOffsetStart(), 0);
    EXPECT_EQ(timings->ReactOffsetEnd(), 0);
    EXPECT_EQ(
        GetSetting(QStringLiteral("TimeOffset"), QStringLiteral("TimingOffset")), QStringLiteral("-0.5"));

    timings->setReactOffsetStart(0.25);
    timings->setReactOffsetEnd(-3);
    EXPECT_EQ(doc->ReactOffsetStart, 0.25);
    EXPECT_EQ(doc->ReactOffsetEnd, -1);
    EXPECT_EQ(GetSetting(QStringLiteral("TimeOffset"), QStringLiteral("TimingOffsetStart")),
        QStringLiteral("0.25"));
    EXPECT_EQ(
        GetSetting(QStringLiteral("TimeOffset"), QStringLiteral("TimingOffsetEnd")), QStringLiteral("-1"));
    EXPECT_EQ(timings->Create()->ReactOffsetStart, 0.25);
}

TEST_F(TimingTest, CreateNamesTheWindowAndSerialsNeverFall)
{
    QObject window;
    CTiming *t = timings->Create(&window);
    EXPECT_EQ(t->SerialNo(), 2);
    EXPECT_EQ(t->TimingWindow, &window);
    EXPECT_EQ(window.property("Tag").toString(), QStringLiteral("2"));
    EXPECT_EQ(window.property("windowTitle").toString(),
        Msg(QStringLiteral("TIMING_TITLE_000")) + QStringLiteral("(2)"));
    EXPECT_EQ(timings->Item(QStringLiteral("2")), t);
    timings->Delete(QStringLiteral("2"));
    EXPECT_EQ(timings->Item(QStringLiteral("2")), nullptr);
    EXPECT_EQ(timings->Create()->SerialNo(), 3);
}

TEST_F(TimingTest, SendNewTimeReachesOnlyTheActiveWindow)
{
    QObject w1, w2;
    CTiming *a = timings->Create(&w1);
    CTiming *b = timings->Create(&w2);
    double gotA = -1, gotB = -1;
    a->OnNewTime = [&](double t) { gotA = t; };
    b->OnNewTime = [&](double t) { gotB = t; };
    timings->SendNewTime(5); // no active window
    EXPECT_EQ(gotA, -1);
    QObject *active = nullptr;
    timings->ActiveWindow = [&] { return active; };
    timings->SendNewTime(6);
    EXPECT_EQ(gotA, -1);
    active = &w2;
    timings->SendNewTime(7.5);
    EXPECT_EQ(gotA, -1);
    EXPECT_EQ(gotB, 7.5);
}

// Every real script is read (Yes to every question), written and read again; the second
// reading must give the same lines, styles and head as the first.
namespace {

struct Snapshot
{
    QStringList lines, styles, comments;
    QString title, originalScript;
    double playResX = 0, playResY = 0;
    ScriptType scriptType = ScriptType::Plain;
};

Snapshot snapshot(CTiming &doc)
{
    Snapshot s;
    for (CSSAContentLine *line : *doc.SSAContent) {
        const int flags
            = int(line->m_Question) + 2 * int(line->m_Changed) + 4 * int(line->m_DisableCheckTiming);
        const QString text = line->Content();
        s.lines << (flags ? text + QStringLiteral(" flags ") + QString::number(flags) : text);
    }
    // Writing keeps the last blank line and the next reading adds one: trailing blanks
    // are not part of the comparison.
    while (!s.lines.isEmpty() && s.lines.last().isEmpty())
        s.lines.removeLast();
    for (CFont *font : *doc.Fonts)
        s.styles << font->Content();
    // Each save writes a comment line as "; " + the text read behind ";".
    for (const QString &c : doc.ScriptInfo->Comment().split(QStringLiteral("\r\n")))
        s.comments << c.trimmed();
    s.title = doc.ScriptInfo->Title();
    s.originalScript = doc.ScriptInfo->OriginalScript();
    s.playResX = doc.ScriptInfo->PlayResX();
    s.playResY = doc.ScriptInfo->PlayResY();
    s.scriptType = doc.ScriptInfo->ScriptType();
    return s;
}

// What a save fills in by rule: a blank title or original script becomes the "not
// set" text, and an empty style list the built-in style.
void expectSameAfterSave(const Snapshot &first, const Snapshot &second, ScriptType scriptType)
{
    auto filled = [](const QString &value) {
        return value.trimmed().isEmpty() ? QStringLiteral(" ") + Msg(QStringLiteral("SUBINFO_MSG_106"))
                                         : value;
    };
    EXPECT_EQ(second.lines, first.lines);
    if (first.styles.isEmpty()) {
        ASSERT_EQ(second.styles.size(), 1);
        EXPECT_TRUE(second.styles[0].startsWith(scriptType == ScriptType::SSA
                ? QStringLiteral("Style: Default,楷体,24,")
                : QStringLiteral("Style: Default,simhei,18,")));
    } else {
        EXPECT_EQ(second.styles, first.styles);
    }
    EXPECT_EQ(second.comments, first.comments);
    EXPECT_EQ(second.title, filled(first.title));
    EXPECT_EQ(second.originalScript, filled(first.originalScript));
    EXPECT_EQ(second.playResX, first.playResX);
    EXPECT_EQ(second.playResY, first.playResY);
    EXPECT_EQ(second.scriptType, first.scriptType);
}

QString withoutUserComments(const QString &text)
{
    QStringList kept;
    for (const QString &line : text.split(QStringLiteral("\r\n")))
        if (!line.startsWith(u';') || line.startsWith(QStringLiteral("; //")))
            kept << line;
    return kept.join(QStringLiteral("\r\n"));
}

} // namespace

TEST_F(TimingTest, RealScriptsSurviveAWriteAndARead)
{
    const QString root = QStringLiteral(VELMAR_TESTDATA);
    if (!QDir(root).exists())
        GTEST_SKIP() << "no real test data";
    prompt.DefaultYesNo = MsgBoxResult::Yes;
    SetNow(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7)));
    int files = 0;
    for (const QString &sub : { QStringLiteral("ass"), QStringLiteral("ssa") }) {
        QDir dir(root + u'/' + sub);
        for (const QString &name : dir.entryList(QDir::Files)) {
            SCOPED_TRACE(name.toStdString());
            const WholeFileRead read = ReadWholeFile(dir.filePath(name), false);
            ASSERT_TRUE(read.Ok);
            // As stored, and with every line end made "\r\n" so that the files kept
            // with other line ends exercise the readers as well.
            QString crlfText = read.Text;
            crlfText.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
            crlfText.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
            const QString sources[2] = { read.Text, crlfText };
            for (int variant = 0; variant < 2; ++variant) {
                const QString &source = sources[variant];
                auto list = Class::MakeCollection<CTimings>();
                const ScriptType type = sub == u"ssa" ? ScriptType::SSA : ScriptType::ASS;
                CTiming *docs[3];
                QString written[3];
                QString text = source;
                for (int i = 0; i < 3; ++i) {
                    docs[i] = list->Create();
                    docs[i]->setScriptType(type);
                    docs[i]->setContent(text);
                    written[i] = docs[i]->Content();
                    text = written[i];
                }
                expectSameAfterSave(snapshot(*docs[0]), snapshot(*docs[1]), type);
                expectSameAfterSave(snapshot(*docs[1]), snapshot(*docs[2]), type);
                // From the first save on, a save is read back exactly but for two rules:
                // each reading adds a blank line at the end, and a user comment line
                // gains the blank written behind its ";".
                EXPECT_EQ(withoutUserComments(written[2]),
                    withoutUserComments(written[1]) + QStringLiteral("\r\n"));
                if (variant == 1) {
                    EXPECT_GT(docs[0]->SSAContent->Count(), 0);
                }
            }
            ++files;
        }
    }
    SetNow(QDateTime());
    EXPECT_GT(files, 0);
}
