#include "FormatTestSupport.h"

#include "core/Class.h"
#include "formats/CSMPContent.h"

namespace {

class SMP : public FormatTest
{
protected:
    TestHost host;
    std::unique_ptr<CSMPContent> smp = Class::Make<CSMPContent>(&host);
};

TEST_F(SMP, SubTypeZeroEndsAtTheNextStart)
{
    host.SubType = 1;
    smp->setContent(crlf({ "00:00:01.2:Hello", "00:00:03.4:", "" }));
    EXPECT_EQ(host.SubType, 0);
    ASSERT_EQ(smp->Count(), 2);
    EXPECT_DOUBLE_EQ(smp->At(0)->StartTime(), 1.2);
    EXPECT_DOUBLE_EQ(smp->At(0)->EndTime(), 3.4);
    EXPECT_EQ(smp->At(0)->Dialog(), "Hello");
    // The end mark is kept as a blank line, and the far end reads as 0.
    EXPECT_TRUE(smp->At(1)->Blank);
    EXPECT_DOUBLE_EQ(smp->At(1)->StartTime(), 3.4);
    EXPECT_DOUBLE_EQ(smp->At(1)->EndTime(), 0);
}

TEST_F(SMP, LinesWithoutTimeAreCommentsThatDisturbNothing)
{
    smp->setContent(crlf({ "00:00:01.2:A", "  a note", "garbage", "10:00:05.0:B" }));
    ASSERT_EQ(smp->Count(), 4);
    EXPECT_TRUE(smp->At(1)->IsComment);
    EXPECT_EQ(smp->At(1)->Dialog(), "  a note");
    EXPECT_DOUBLE_EQ(smp->At(1)->StartTime(), 0);
    EXPECT_TRUE(smp->At(2)->IsComment);
    // Hour 10 loses its first digit.
    EXPECT_DOUBLE_EQ(smp->At(3)->StartTime(), 5);
    EXPECT_DOUBLE_EQ(smp->At(0)->EndTime(), 5);
}

TEST_F(SMP, SubTypeOneHasItsOwnEnd)
{
    smp->setContent(
        crlf({ "00:00:01:23     00:00:03:45     Hello  big   world", "00:00:04:00 00:00:05:50 x" }));
    EXPECT_EQ(host.SubType, 1);
    ASSERT_EQ(smp->Count(), 2);
    EXPECT_DOUBLE_EQ(smp->At(0)->StartTime(), 1.23);
    EXPECT_DOUBLE_EQ(smp->At(0)->EndTime(), 3.45);
    EXPECT_EQ(smp->At(0)->Dialog(), "Hello  big   world");
    EXPECT_DOUBLE_EQ(smp->At(1)->EndTime(), 5.5);
}

TEST_F(SMP, SubTypeIsDecidedByTheFirstLineThatCan)
{
    host.SubType = 0;
    smp->setContent(crlf({ "", "header line", "short", "00:00:01:23     00:00:03:45     Hi" }));
    EXPECT_EQ(host.SubType, 1);
    host.SubType = 1;
    smp->setContent(crlf({ "nothing", "decides" }));
    EXPECT_EQ(host.SubType, 1);
}

TEST_F(SMP, SubTypeOneLineWithoutBlanksDoesNoHarm)
{
    host.SubType = 1;
    smp->setContent(crlf({ "xxxxxxxx:x", "00:00:01:23" }));
    ASSERT_EQ(smp->Count(), 2);
    EXPECT_DOUBLE_EQ(smp->At(1)->StartTime(), 1.23);
    EXPECT_DOUBLE_EQ(smp->At(1)->EndTime(), 0);
    EXPECT_EQ(smp->At(1)->Dialog(), "");
    EXPECT_FALSE(smp->At(1)->Blank);
}

TEST_F(SMP, TimeStringsBySubType)
{
    CSMPContentLine *line = smp->Create();
    line->setStartTime(1.29);
    host.SubType = 0;
    EXPECT_EQ(line->StartTimeString(), "00:00:01.2");
    line->setEndTime(3.4);
    line->setDialog(QStringLiteral("Hi"));
    EXPECT_EQ(line->Content(), "00:00:01.2:Hi\r\n00:00:03.4:");
    host.SubType = 1;
    EXPECT_EQ(line->StartTimeString(), "00:00:01:29");
    EXPECT_EQ(line->Content(), "00:00:01:29     00:00:03:40     Hi");
    EXPECT_EQ(smp->Content(), "00:00:01:29     00:00:03:40     Hi\r\n");
    // In sub-type 1 the text doesn't decide Blank.
    line->setDialog(QString());
    EXPECT_FALSE(line->Blank);
}

TEST_F(SMP, ListWithoutDocumentKeepsItsOwnSubType)
{
    CSMPContent alone;
    alone.setContent(QStringLiteral("00:00:01:23     00:00:03:45     Hello"));
    EXPECT_EQ(alone.ScriptSubType(), 1);
    ASSERT_EQ(alone.Count(), 1);
    EXPECT_DOUBLE_EQ(alone.At(0)->EndTime(), 3.45);
}

TEST_F(SMP, TooManyLinesOverflow)
{
    smp->setContent(QStringLiteral("00:00:01.2:x\r\n").repeated(32768));
    EXPECT_EQ(smp->Count(), 0);
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_117", "Overflow") });
}

} // namespace
