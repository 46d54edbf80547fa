#include "ScriptFixture.h"

#include "core/Class.h"
#include "core/VelmarError.h"
#include "script/CSSAContent.h"
#include "script/CSSAContents.h"

namespace {

const QString assHead = QStringLiteral(
    "[Events]\r\nFormat: Layer, Start, End, Style, Actor, MarginL, MarginR, MarginV, Effect, Text");

class ContentTest : public ScriptTest
{
protected:
    void SetUp() override
    {
        ScriptTest::SetUp();
        list = Class::Make<CSSAContent>();
        list->ScriptType = ScriptType::ASS;
    }
    QString ev(const QString &start, const QString &text, const QString &type = QStringLiteral("Dialogue"))
    {
        return type + QStringLiteral(": 0,") + start + QStringLiteral(",0:00:05.00,S,,0,0,0,,") + text;
    }
    std::unique_ptr<CSSAContent> list;
};

} // namespace

TEST_F(ContentTest, NewListDefaults)
{
    auto fresh = Class::Make<CSSAContent>();
    EXPECT_EQ(fresh->ScriptType, ScriptType::SSA);
    EXPECT_EQ(fresh->SaveOption, 255);
    EXPECT_EQ(fresh->Count(), 0);
}

TEST_F(ContentTest, ReadsOnlyAfterEventsAndFormat)
{
    list->setContent(crlf({ QStringLiteral("[Script Info]"),
        QStringLiteral("Dialogue: 0,0:00:01.00,0:00:02.00,S,,0,0,0,,early"), QStringLiteral("  [events]  "),
        QStringLiteral("junk skipped unread"), QStringLiteral("  format: whatever"),
        ev(QStringLiteral("0:00:01.00"), QStringLiteral("one")),
        ev(QStringLiteral("0:00:02.00"), QStringLiteral("two")) }));
    ASSERT_EQ(list->Count(), 2);
    EXPECT_EQ(list->At(0)->Dialog(), QStringLiteral("one"));
    EXPECT_EQ(list->At(1)->Dialog(), QStringLiteral("two"));
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(ContentTest, MissingSectionOrFormatReadsNothingSilently)
{
    list->setContent(
        crlf({ QStringLiteral("[Events]"), ev(QStringLiteral("0:00:01.00"), QStringLiteral("one")) }));
    EXPECT_EQ(list->Count(), 0);
    list->setContent(
        crlf({ QStringLiteral("Format: x"), ev(QStringLiteral("0:00:01.00"), QStringLiteral("one")) }));
    EXPECT_EQ(list->Count(), 0);
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(ContentTest, OtherLineEndsAreNotLineBreaks)
{
    const QString lf
        = assHead + QStringLiteral("\n") + ev(QStringLiteral("0:00:01.00"), QStringLiteral("one"));
    list->setContent(lf);
    EXPECT_EQ(list->Count(), 0);
    QString cr = lf;
    cr.replace(u'\n', u'\r');
    list->setContent(cr);
    EXPECT_EQ(list->Count(), 0);
}

TEST_F(ContentTest, BadLineAsksAndNoKeepsWhatWasRead)
{
    const QString bad = QStringLiteral("[Fonts]");
    const QString text = crlf({ assHead, ev(QStringLiteral("0:00:01.00"), QStringLiteral("one")), bad,
        ev(QStringLiteral("0:00:02.00"), QStringLiteral("two")) });
    prompt.Answers = { MsgBoxResult::No };
    list->setContent(text);
    ASSERT_EQ(list->Count(), 1);
    ASSERT_EQ(prompt.Records.size(), 1);
    EXPECT_EQ(
        prompt.Records[0].Prompt, Msg(QStringLiteral("TIMING_ERR_104")) + QStringLiteral(":\r\n") + bad);
    EXPECT_EQ(prompt.Records[0].Style & MsgBoxStyle::ButtonMask, MsgBoxStyle::YesNo);

    prompt.Reset();
    prompt.Answers = { MsgBoxResult::Yes };
    list->setContent(text);
    ASSERT_EQ(list->Count(), 2);
    EXPECT_EQ(list->At(1)->Dialog(), QStringLiteral("two"));
}

TEST_F(ContentTest, UnusableFieldShowsTwoBoxesAndSkipsTheLine)
{
    prompt.DefaultYesNo = MsgBoxResult::Yes;
    list->setContent(crlf({ assHead, QStringLiteral("Dialogue: Marked=0,0:00:01.00,0:00:02.00,S,,0,0,0,,x"),
        ev(QStringLiteral("0:00:02.00"), QStringLiteral("two")) }));
    EXPECT_EQ(list->Count(), 1);
    ASSERT_EQ(prompt.Messages().size(), 2);
    EXPECT_TRUE(prompt.Messages()[0].startsWith(Msg(QStringLiteral("TIMING_ERR_106"))));
    EXPECT_TRUE(prompt.Messages()[1].startsWith(Msg(QStringLiteral("TIMING_ERR_104"))));
}

TEST_F(ContentTest, FlagLinesSpeakOfTheNextRealLine)
{
    const QString flag
        = QStringLiteral("Comment: 0,0:00:00.00,0:00:00.00,Default,Velmar,0000,0000,0000,,// Velmar注释: ");
    list->setContent(crlf({ assHead, flag + QStringLiteral("下一行已被修改 "),
        flag + QStringLiteral("下一行有疑问 "), ev(QStringLiteral("0:00:01.00"), QStringLiteral("flagged")),
        ev(QStringLiteral("0:00:02.00"), QStringLiteral("plain")),
        QStringLiteral("Comment: 0,0:00:03.00,0:00:00.00,S,,0,0,0,,// VELMAR注释: 下一行有疑问 "),
        ev(QStringLiteral("0:00:04.00"), QStringLiteral("after ordinary comment")),
        flag + QStringLiteral("下一行不需要检查时间轴 "), QString(),
        ev(QStringLiteral("0:00:05.00"), QStringLiteral("last")) }));
    ASSERT_EQ(list->Count(), 6);
    const CSSAContentLine *flagged = list->At(0);
    EXPECT_TRUE(flagged->m_Changed);
    EXPECT_TRUE(flagged->m_Question);
    EXPECT_FALSE(flagged->m_DisableCheckTiming);
    EXPECT_FALSE(list->At(1)->m_Question);
    EXPECT_EQ(list->At(2)->Dialog(), QStringLiteral("// VELMAR注释: 下一行有疑问 ")); // kept, no flag
    EXPECT_FALSE(list->At(3)->m_Question);
    // A blank line takes the pending flags (and loses them on output).
    EXPECT_TRUE(list->At(4)->Blank);
    EXPECT_TRUE(list->At(4)->m_DisableCheckTiming);
    EXPECT_FALSE(list->At(5)->m_DisableCheckTiming);
}

TEST_F(ContentTest, WriterEmitsFlagLinesAndBlankLines)
{
    auto *a = list->Create();
    a->setStartTime(1);
    a->setEndTime(2);
    a->setDialog(QStringLiteral("a"));
    a->m_Question = true;
    a->m_DisableCheckTiming = true;
    auto *blank = list->Create();
    blank->m_Changed = true; // dropped with its empty line
    auto *b = list->Create();
    b->setEndTime(3);
    b->setDialog(QStringLiteral("b"));
    EXPECT_EQ(list->Content(),
        QStringLiteral(
            "[Events]\r\nFormat: Layer, Start, End, Style, Actor, MarginL, MarginR, MarginV, Effect, Text\r\n"
            "Comment: 0,0:00:00.00,0:00:00.00,Default,Velmar,0000,0000,0000,,// Velmar注释: 下一行有疑问 "
            "下一行不需要检查时间轴 \r\n"
            "Dialogue: 0,0:00:01.00,0:00:02.00,Default,NTP,0000,0000,0000,,a\r\n"
            "\r\n"
            "Dialogue: 0,0:00:00.00,0:00:03.00,Default,NTP,0000,0000,0000,,b\r\n"));
    list->ScriptType = ScriptType::SSA;
    const QString ssa = list->Content();
    EXPECT_TRUE(ssa.startsWith(QStringLiteral(
        "[Events]\r\nFormat: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n"
        "Comment: Marked=0,0:00:00.00,0:00:00.00,Default,Velmar,0000,0000,0000,,// Velmar注释: ")));

    // The flags survive a write and a read.
    list->ScriptType = ScriptType::ASS;
    auto again = Class::Make<CSSAContent>();
    again->ScriptType = ScriptType::ASS;
    again->setContent(list->Content());
    // The text ends in "\r\n", so the reading ends with a blank line.
    ASSERT_EQ(again->Count(), 4);
    EXPECT_TRUE(again->At(3)->Blank);
    EXPECT_TRUE(again->At(0)->m_Question);
    EXPECT_TRUE(again->At(0)->m_DisableCheckTiming);
    EXPECT_FALSE(again->At(0)->m_Changed);
    EXPECT_TRUE(again->At(1)->Blank);
}

TEST_F(ContentTest, SaveOptionMasksOfTheSection)
{
    list->setContent(crlf({ assHead, ev(QStringLiteral("0:00:01.00"), QStringLiteral("{\\i1}one")),
        ev(QStringLiteral("0:00:02.00"), QStringLiteral("two")) }));
    list->SaveOption = 16;
    EXPECT_EQ(list->Content(), QStringLiteral("one\r\ntwo\r\n"));
    list->SaveOption = 4 + 8 + 16;
    EXPECT_EQ(list->Content(), QStringLiteral("0:00:01.00,0:00:05.00,one\r\n0:00:02.00,0:00:05.00,two\r\n"));
    EXPECT_EQ(list->Dialog(), QStringLiteral("{\\i1}one\r\ntwo\r\n"));
}

TEST_F(ContentTest, SerialsNeverRepeatThroughClearAndReload)
{
    const QString text = crlf({ assHead, ev(QStringLiteral("0:00:01.00"), QStringLiteral("one")),
        ev(QStringLiteral("0:00:02.00"), QStringLiteral("two")) });
    list->setContent(text);
    EXPECT_EQ(list->At(0)->SerialNo(), 1);
    EXPECT_TRUE(list->Exists(QStringLiteral("2")));
    list->setContent(text);
    EXPECT_EQ(list->At(0)->SerialNo(), 3);
    EXPECT_FALSE(list->Exists(QStringLiteral("1")));
    list->Clear();
    EXPECT_EQ(list->Create()->SerialNo(), 5);
    EXPECT_THROW(list->item(QStringLiteral("1")), VelmarError);

    // Add overwrites the serial a line brings along, and announces it.
    int created = 0;
    list->ContentLineCreated = [&](CSSAContentLine *) { ++created; };
    auto foreign = Class::Make<CSSAContentLine>(77);
    EXPECT_EQ(list->Add(std::move(foreign))->SerialNo(), 6);
    EXPECT_EQ(list->Item(QStringLiteral("6"))->Parent(), list.get());
    EXPECT_EQ(created, 1);
    list->Delete(QStringLiteral("6"));
    EXPECT_FALSE(list->Exists(QStringLiteral("6")));
    EXPECT_THROW(list->Delete(QStringLiteral("6")), VelmarError);
}

TEST_F(ContentTest, TimeFormatIsPushedIntoEveryLine)
{
    list->Create();
    list->Create();
    list->setTimeFormat(3);
    for (CSSAContentLine *line : *list)
        EXPECT_EQ(line->TimeFormat, 3);
}

TEST_F(ContentTest, DuplicateCopiesDeeplyAndRenumbers)
{
    list->setContent(crlf({ assHead, ev(QStringLiteral("0:00:01.25"), QStringLiteral("one")),
        QStringLiteral("Dialogue: 2,0:00:02.50,0:00:03.75,Sign,Bob,10,20,30,Banner;4;1;2,two") }));
    list->At(1)->m_Question = true;
    list->SaveOption = 4 + 16;
    auto copy = list->DuplicateSSA();
    ASSERT_EQ(copy->Count(), 2);
    EXPECT_EQ(copy->At(0)->SerialNo(), 1);
    EXPECT_EQ(copy->At(1)->SerialNo(), 2);
    EXPECT_EQ(copy->At(1)->Parent(), copy.get());
    EXPECT_EQ(copy->ScriptType, ScriptType::ASS);
    EXPECT_EQ(copy->SaveOption, 4 + 16);
    const CSSAContentLine *two = copy->At(1);
    EXPECT_DOUBLE_EQ(two->StartTime(), 2.5);
    EXPECT_DOUBLE_EQ(two->EndTime(), 3.75);
    EXPECT_EQ(two->Layer(), 2);
    EXPECT_EQ(two->Owner(), QStringLiteral("Bob"));
    EXPECT_EQ(two->MarginV(), QStringLiteral("30"));
    EXPECT_EQ(two->Effect(), QStringLiteral("Banner;4;1;2"));
    EXPECT_TRUE(two->m_Question);
    list->SaveOption = 255;
    copy->SaveOption = 255;
    EXPECT_EQ(copy->Content(), list->Content());

    copy->At(0)->setDialog(QStringLiteral("changed"));
    EXPECT_EQ(list->At(0)->Dialog(), QStringLiteral("one"));
}

TEST_F(ContentTest, DuplicateGoesThroughTheTimeStrings)
{
    list->setContent(crlf({ assHead, ev(QStringLiteral("0:00:01.25"), QStringLiteral("one")) }));
    list->setTimeFormat(2);
    auto whole = list->DuplicateSSA();
    EXPECT_DOUBLE_EQ(whole->At(0)->StartTime(), 0); // "0:00:01" is not a strict time string
    list->setTimeFormat(1);
    auto tenths = list->DuplicateSSA();
    EXPECT_DOUBLE_EQ(tenths->At(0)->StartTime(), 1.2); // "0:00:01.20"
    list->setTimeFormat(0);
    list->At(0)->setTimeOffset(1);
    auto shifted = list->DuplicateSSA();
    // The copy takes the shifted time and the offset as well.
    EXPECT_DOUBLE_EQ(shifted->At(0)->StartTime(), 3.25);
}

TEST_F(ContentTest, MoreThan32768LinesOverflowAfterKeepingTheFirst)
{
    QStringList lines { assHead };
    for (int i = 0; i < 50000; ++i)
        lines << ev(QStringLiteral("0:00:01.00"), QStringLiteral("line %1").arg(i));
    try {
        list->setContent(crlf(lines));
        FAIL() << "no overflow";
    } catch (const VelmarError &e) {
        EXPECT_EQ(e.Number(), 6);
    }
    EXPECT_EQ(list->Count(), 32768 - 2);
    EXPECT_EQ(list->At(list->Count() - 1)->Dialog(), QStringLiteral("line 32765"));

    lines.resize(32767); // the head is two lines: 32768 in all
    list->setContent(crlf(lines));
    EXPECT_EQ(list->Count(), 32768 - 2);
}

TEST(SSAContents, KeysPlayersAndDestruction)
{
    auto all = Class::MakeCollection<CSSAContents>();
    CSSAContent *a = all->Create();
    CSSAContent *b = all->Create();
    EXPECT_EQ(a->SerialNo(), 1);
    EXPECT_EQ(all->Item(QStringLiteral("2")), b);
    EXPECT_EQ(all->Item(QStringLiteral("9")), nullptr);
    QString destroyed;
    all->SSAContentDestroyed = [&](const QString &key) { destroyed = key; };
    all->Delete(QStringLiteral("1"));
    EXPECT_EQ(destroyed, QStringLiteral("1"));
    EXPECT_EQ(all->Count(), 1);
    EXPECT_EQ(all->Create()->SerialNo(), 3);
}
