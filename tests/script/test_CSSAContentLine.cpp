#include "ScriptFixture.h"

#include "core/Class.h"
#include "script/CSSAContent.h"
#include "script/CSSAContentLine.h"

namespace {

class LineTest : public ScriptTest
{
protected:
    void SetUp() override
    {
        ScriptTest::SetUp();
        list = Class::Make<CSSAContent>();
        list->ScriptType = ScriptType::ASS;
    }
    CSSAContentLine *parse(const QString &text, ScriptType scriptType = ScriptType::ASS)
    {
        list->ScriptType = scriptType;
        CSSAContentLine *line = list->Create();
        line->setContent(text);
        return line;
    }
    std::unique_ptr<CSSAContent> list;
};

} // namespace

TEST_F(LineTest, AssDialogueKeepsCommasOfTheTextAndMarksTheDefaultStyle)
{
    auto *l = parse(QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,Default,,0000,0000,0000,,a,b,c"));
    EXPECT_EQ(l->ErrNumber, 0);
    EXPECT_EQ(l->Dialog(), QStringLiteral("a,b,c"));
    EXPECT_EQ(l->Style(), QStringLiteral("*Default"));
    EXPECT_EQ(l->Owner(), QString());
    EXPECT_DOUBLE_EQ(l->StartTime(), 1.0);
    EXPECT_DOUBLE_EQ(l->EndTime(), 2.0);
    EXPECT_EQ(l->LineType, 0);
    EXPECT_FALSE(l->m_IsComment);
}

TEST_F(LineTest, SsaMarkedFieldAndTheSameLineInAssFailsAtTheFirstField)
{
    const QString text = QStringLiteral("Dialogue: Marked=1,0:00:01.00,0:00:02.00,S,,0,0,0,,x");
    auto *ssa = parse(text, ScriptType::SSA);
    EXPECT_EQ(ssa->ErrNumber, 0);
    EXPECT_EQ(ssa->Marked(), 1);
    EXPECT_EQ(ssa->Layer(), 0);
    EXPECT_TRUE(prompt.Messages().isEmpty());

    auto *ass = parse(text, ScriptType::ASS);
    EXPECT_EQ(ass->ErrNumber, -1);
    EXPECT_DOUBLE_EQ(ass->StartTime(), 0.0); // stopped before the times
    EXPECT_EQ(ass->Dialog(), QString());
    ASSERT_EQ(prompt.Messages().size(), 1);
    EXPECT_EQ(prompt.Messages()[0],
        Msg(QStringLiteral("TIMING_ERR_106")) + QStringLiteral(": 可能时间轴格式不符合所选者的文件格式"));
}

TEST_F(LineTest, LayerOutOfSixteenBitsIsAnUnusableField)
{
    EXPECT_EQ(parse(QStringLiteral("Dialogue: 40000,0:00:01.00,0:00:02.00,S,,0,0,0,,x"))->ErrNumber, -1);
    EXPECT_EQ(parse(QStringLiteral("Dialogue: ,0:00:01.00,0:00:02.00,S,,0,0,0,,x"))->ErrNumber, -1);
}

TEST_F(LineTest, LineTypesAndComments)
{
    auto *c = parse(QStringLiteral("Comment: 0,0:00:00.00,0:00:00.00,S,,0,0,0,,note"));
    EXPECT_EQ(c->LineType, 1);
    EXPECT_FALSE(c->m_IsComment);

    auto *foo = parse(QStringLiteral("Foo: 0,0:00:01.00,0:00:02.00,S,,0,0,0,,x"));
    EXPECT_EQ(foo->ErrNumber, 0);
    EXPECT_EQ(foo->LineType, 0);
    EXPECT_EQ(foo->Style(), QStringLiteral("S"));

    EXPECT_EQ(parse(QStringLiteral("  Command: 0,0:00:01.00,0:00:02.00,S,,0,0,0,,x"))->LineType, 5);

    auto *semi = parse(QStringLiteral(";hello, world"));
    EXPECT_TRUE(semi->m_IsComment);
    EXPECT_EQ(semi->LineType, 1);
    EXPECT_EQ(semi->Dialog(), QStringLiteral("hello, world"));
    // A bare comment goes out as a full Comment line with a new line's defaults.
    EXPECT_EQ(semi->Content(),
        QStringLiteral("Comment: 0,0:00:00.00,0:00:00.00,Default,NTP,0000,0000,0000,,hello, world"));

    // The cut of "!:" counts in the untrimmed text.
    auto *bang = parse(QStringLiteral(" !:abc"));
    EXPECT_TRUE(bang->m_IsComment);
    EXPECT_EQ(bang->Dialog(), QStringLiteral(":abc"));
}

TEST_F(LineTest, ParseFaults)
{
    auto *eight = parse(QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,S,,0,0,0"));
    EXPECT_EQ(eight->ErrNumber, 5);
    EXPECT_FALSE(eight->Blank);

    auto *noColon = parse(QStringLiteral("just text"));
    EXPECT_EQ(noColon->ErrNumber, 3);
    EXPECT_FALSE(noColon->Blank);

    auto *empty = parse(QString());
    EXPECT_TRUE(empty->Blank);
    EXPECT_EQ(empty->ErrNumber, 0);
    EXPECT_TRUE(parse(QStringLiteral("   "))->Blank);
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(LineTest, ExactlyNineFieldsKeepThePreviousText)
{
    auto *l = list->Create();
    l->setDialog(QStringLiteral("kept"));
    l->setContent(QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,S,,0,0,0,"));
    EXPECT_EQ(l->ErrNumber, 0);
    EXPECT_EQ(l->Dialog(), QStringLiteral("kept"));
    l->setContent(QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,S,,0,0,0,, spaced "));
    EXPECT_EQ(l->Dialog(), QStringLiteral(" spaced "));
}

TEST_F(LineTest, TimesGoThroughTheStrictParserAndClamp)
{
    auto *l = parse(QStringLiteral("Dialogue: 0,0:00:01.5,0:00:02.555,S,,0,0,0,,x"));
    EXPECT_DOUBLE_EQ(l->StartTime(), 1.05);
    EXPECT_DOUBLE_EQ(l->EndTime(), 2.55);
    l->setStartTime(-3);
    EXPECT_EQ(l->StartTime(), 0);
    l->setStartTime(1);
    l->setTimeOffset(-2);
    EXPECT_EQ(l->StartTime(), 0);
    l->setTimeOffset(0);
    EXPECT_EQ(l->StartTime(), 1);
    l->setTimeOffset(0.5);
    EXPECT_EQ(l->StartTimeString(), QStringLiteral("0:00:01.50"));
}

TEST_F(LineTest, TimeFormatRenderings)
{
    auto *l = list->Create();
    l->setStartTime(12 * 60 + 34.56);
    const QString expected[] = { QStringLiteral("0:12:34.56"), QStringLiteral("0:12:34.50"),
        QStringLiteral("0:12:34"), QStringLiteral("12:34") };
    for (int f = 0; f < 4; ++f) {
        l->TimeFormat = f;
        EXPECT_EQ(l->StartTimeString(), expected[f]) << f;
    }
    l->TimeFormat = 2;
    l->setDialog(QStringLiteral("x"));
    list->SaveOption = 4 + 8 + 16;
    EXPECT_EQ(l->Content(), QStringLiteral("0:12:34,0:00:00,x"));
}

TEST_F(LineTest, MarginSetterKeepsOnlyNumbersFromZeroTo9999)
{
    auto *l = list->Create();
    const std::pair<QString, QString> cases[] = { { QStringLiteral("-1"), QStringLiteral("0") },
        { QStringLiteral("10000"), QStringLiteral("0") }, { QStringLiteral("abc"), QStringLiteral("0") },
        { QStringLiteral(""), QStringLiteral("0") }, { QStringLiteral("9999"), QStringLiteral("9999") },
        { QStringLiteral("12.5"), QStringLiteral("12.5") } };
    for (const auto &[in, out] : cases) {
        l->setMarginL(in);
        EXPECT_EQ(l->MarginL(), out) << in.toStdString();
    }
    l->setMarginL(QStringLiteral("10"));
    l->setMarginR(QStringLiteral("7"));
    l->setMarginV(QStringLiteral("abc"));
    l->setDialog(QStringLiteral("t"));
    EXPECT_EQ(
        l->Content(), QStringLiteral("Dialogue: 0,0:00:00.00,0:00:00.00,Default,NTP,0010,0007,0000,,t"));
}

TEST_F(LineTest, DefaultOutputInBothVersions)
{
    for (ScriptType type : { ScriptType::SSA, ScriptType::ASS }) {
        list->ScriptType = type;
        auto *l = list->Create();
        l->setContent(QStringLiteral("Dialogue: %1,0:00:01.00,0:00:03.50,Default,NTP,0,0,0,,Text")
                          .arg(type == ScriptType::SSA ? QStringLiteral("Marked=0") : QStringLiteral("0")));
        ASSERT_EQ(l->ErrNumber, 0);
        EXPECT_EQ(l->Content(),
            type == ScriptType::SSA
                ? QStringLiteral("Dialogue: Marked=0,0:00:01.00,0:00:03.50,*Default,NTP,0000,0000,0000,,Text")
                : QStringLiteral("Dialogue: 0,0:00:01.00,0:00:03.50,*Default,NTP,0000,0000,0000,,Text"));
    }
}

TEST_F(LineTest, EmptyLinesWriteNothing)
{
    auto *l = list->Create();
    l->setStyle(QStringLiteral("Anything"));
    EXPECT_EQ(l->Content(), QString());
    l->setEndTime(1);
    EXPECT_FALSE(l->Content().isEmpty());
    auto *blank = parse(QString());
    blank->setDialog(QStringLiteral("x"));
    EXPECT_EQ(blank->Content(), QString());
}

TEST_F(LineTest, SaveOptionMasks)
{
    auto *l = parse(QStringLiteral("Dialogue: 3,0:00:01.00,0:00:02.00,S,Ann,0,0,0,,{\\b1}bold\\Nnext"));
    list->SaveOption = 4 + 8 + 16 + 32;
    EXPECT_EQ(l->Content(), QStringLiteral("0:00:01.00,0:00:02.00,{\\b1}bold\\Nnext"));
    list->SaveOption = 16;
    EXPECT_EQ(l->Content(), QStringLiteral("bold next"));
    list->SaveOption = 64;
    EXPECT_EQ(l->Content(), QStringLiteral("Dialogue: 3,S,Ann,0000,0000,0000,,"));
}

TEST_F(LineTest, EffectFieldDecodesFiveFields)
{
    auto *l = list->Create();
    l->setEffectFade(9);
    l->setEffect(u"Scroll up;100;200;5");
    EXPECT_EQ(l->EffectName(), QStringLiteral("Scroll up"));
    EXPECT_EQ(l->EffectY1(), 100);
    EXPECT_EQ(l->EffectY2(), 200);
    EXPECT_EQ(l->EffectDelay(), 5);
    EXPECT_EQ(l->EffectFade(), 9); // untouched
    l->setEffectFade(0);
    EXPECT_EQ(l->Effect(), QStringLiteral("Scroll up;100;200;5;0"));

    l->setEffect(u" Banner;7;1;x");
    EXPECT_EQ(l->EffectDelay(), 7);
    EXPECT_EQ(l->EffectLeftToRight(), 1);
    EXPECT_EQ(l->Effect(), QStringLiteral("Banner;7;1;0")); // the bad field keeps its value

    l->setEffect(u"Karaoke;1;2");
    EXPECT_EQ(l->Effect(), QStringLiteral("Karaoke"));

    // Other tools' effect words are kept in memory and dropped on output.
    l->setEffect(u"Fade;1");
    EXPECT_EQ(l->EffectName(), QStringLiteral("Fade"));
    EXPECT_EQ(l->Effect(), QString());

    l->setEffect(u"  ");
    EXPECT_EQ(l->EffectName(), QString());
    EXPECT_EQ(l->EffectDelay(), 7);

    auto *parsed = parse(QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,S,,0,0,0,scroll up;1;2,x"));
    EXPECT_EQ(parsed->Effect(), QString()); // the name is compared exactly
}

TEST(StripOverrides, RemovesBlocksAndBreaks)
{
    EXPECT_EQ(StripOverrides(QStringLiteral("{\\b1}Hi{\\b0}\\Nthere")), QStringLiteral("Hi there"));
    EXPECT_EQ(StripOverrides(QStringLiteral("a\\nb\\hc")), QStringLiteral("a b c"));
    EXPECT_EQ(StripOverrides(QStringLiteral("ab{\\i1 cd")), QStringLiteral("ab"));
    // A brace left in front of a removed block joins the next one.
    EXPECT_EQ(StripOverrides(QStringLiteral("{{\\x}\\b}c")), QStringLiteral("c"));
    EXPECT_EQ(StripOverrides(QStringLiteral("{comment}x")), QStringLiteral("{comment}x"));
    EXPECT_EQ(StripOverrides(QStringLiteral("\\H\\X")), QStringLiteral("\\H\\X"));
    EXPECT_EQ(StripOverrides(QStringLiteral("中文{\\fs20}字幕")), QStringLiteral("中文字幕"));
}

TEST(StripOverrides, TheLinesStrippedTextFollowsEveryNewDialogue)
{
    auto owned = Class::Make<CSSAContentLine>(0);
    CSSAContentLine &line = *owned;
    line.setDialog(QStringLiteral("{\\b1}one"));
    EXPECT_EQ(line.DialogText(), QStringLiteral("one"));
    line.setDialog(QStringLiteral("two\\Nlines"));
    EXPECT_EQ(line.DialogText(), QStringLiteral("two lines"));
    line.Parse(QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,Default,,0,0,0,,{\\i1}three"));
    EXPECT_EQ(line.DialogText(), QStringLiteral("three"));
}
