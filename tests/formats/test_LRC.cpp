#include "FormatTestSupport.h"

#include "core/Class.h"
#include "formats/CLRCContent.h"

namespace {

class LRC : public FormatTest
{
protected:
    TestHost host;
    std::unique_ptr<CLRCContent> lrc = Class::Make<CLRCContent>(&host);
};

TEST_F(LRC, EachLyricEndsAtTheNextStamp)
{
    lrc->setContent(crlf({ "[00:01.46]Hello", "[00:03.00]", "[00:04.00]World", "" }));
    ASSERT_EQ(lrc->Count(), 2);
    EXPECT_DOUBLE_EQ(lrc->At(0)->StartTime(), 1.46);
    EXPECT_DOUBLE_EQ(lrc->At(0)->EndTime(), 3.0);
    EXPECT_EQ(lrc->At(0)->Dialog(), "Hello");
    EXPECT_DOUBLE_EQ(lrc->At(1)->StartTime(), 4.0);
    EXPECT_DOUBLE_EQ(lrc->At(1)->EndTime(), 0);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(LRC, LinesWithoutStampAreCommentsAndDoNotTouchEnds)
{
    lrc->setContent(crlf({ "[00:01.00]a", "plain words", "[00:02.50]b" }));
    ASSERT_EQ(lrc->Count(), 3);
    EXPECT_TRUE(lrc->At(1)->IsComment);
    EXPECT_EQ(lrc->At(1)->Dialog(), "plain words");
    EXPECT_DOUBLE_EQ(lrc->At(1)->StartTime(), 0);
    EXPECT_DOUBLE_EQ(lrc->At(0)->EndTime(), 2.5);
}

TEST_F(LRC, MetadataGoesToTheDocumentHead)
{
    lrc->setContent(
        crlf({ "[ti:a:b]", "[AR:Singer]", "[al: Album ]", "[by:me]", "[offset:+500]", "[la:zh]" }));
    EXPECT_EQ(host.LrcName, "a:b");
    EXPECT_EQ(host.LrcArtist, "Singer");
    EXPECT_EQ(host.LrcCDName, " Album"); // the tag is trimmed as a whole, not the value
    EXPECT_EQ(host.LrcEditor, "me");
    EXPECT_DOUBLE_EQ(host.LrcOffset, 500);
    // Tags with nothing behind them are blank and not kept; "[la:zh]" reads as time 0.
    EXPECT_EQ(lrc->Count(), 0);
}

TEST_F(LRC, MetadataLineEndsThePreviousLyricAtZero)
{
    lrc->setContent(crlf({ "[00:01.00]a", "[ar:x]", "[00:05.00]b" }));
    ASSERT_EQ(lrc->Count(), 2);
    EXPECT_DOUBLE_EQ(lrc->At(0)->EndTime(), 0);
    EXPECT_DOUBLE_EQ(lrc->At(1)->EndTime(), 0);
}

TEST_F(LRC, OnlyTheFirstStampIsRead)
{
    lrc->setContent(QStringLiteral("[00:01.00][00:05.00]text"));
    ASSERT_EQ(lrc->Count(), 1);
    EXPECT_DOUBLE_EQ(lrc->At(0)->StartTime(), 1);
    EXPECT_EQ(lrc->At(0)->Dialog(), "[00:05.00]text");
}

TEST_F(LRC, BlanksBehindTheStampCountAsText)
{
    lrc->setContent(QStringLiteral("[00:01.00]   "));
    ASSERT_EQ(lrc->Count(), 1);
    EXPECT_FALSE(lrc->At(0)->Blank);
}

TEST_F(LRC, BracketFurtherInCutsTheWrongStretchWithoutHarm)
{
    lrc->setContent(crlf({ "xx[00:01.00]yy", "Hello world [chorus]", "[00:09.00]z" }));
    ASSERT_EQ(lrc->Count(), 3);
    // Tag "00:01." and rest "0]yy": the wrong stretch, read as 1 second.
    EXPECT_DOUBLE_EQ(lrc->At(0)->StartTime(), 1);
    EXPECT_EQ(lrc->At(0)->Dialog(), "0]yy");
    // The "]" counted behind the "[" lies in front of it: an empty tag, no time.
    EXPECT_EQ(lrc->At(1)->Dialog(), "rld [chorus]");
    EXPECT_DOUBLE_EQ(lrc->At(1)->StartTime(), 0);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(LRC, WithoutDocumentLinesGetNoTime)
{
    CLRCContent alone;
    alone.setContent(QStringLiteral("[00:01.00]a"));
    ASSERT_EQ(alone.Count(), 1);
    EXPECT_DOUBLE_EQ(alone.At(0)->StartTime(), 0);
    EXPECT_EQ(alone.At(0)->Dialog(), "a");
}

TEST_F(LRC, OffsetThatIsNoNumberEndsTheRead)
{
    lrc->setContent(crlf({ "[00:01.00]kept", "[offset:+/- ms]", "[00:02.00]lost" }));
    EXPECT_EQ(lrc->Count(), 1);
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_116", "Type mismatch") });
}

TEST_F(LRC, TimeStringsDropTheHour)
{
    CLRCContentLine line;
    line.setStartTime(83.45);
    EXPECT_EQ(line.StartTimeString(), "[01:23.45]");
    line.setStartTime(3683);
    EXPECT_EQ(line.StartTimeString(), "[01:23.00]");
    line.setEndTimeString(u"1:00:04.5");
    EXPECT_DOUBLE_EQ(line.EndTime(), 3604.5);
}

TEST_F(LRC, WritesEndStampsOnlyBeforeGaps)
{
    lrc->setContent(crlf({ "[00:01.00]a", "[00:02.00]b", "[00:03.00]", "[00:04.00]c" }));
    ASSERT_EQ(lrc->Count(), 3);
    EXPECT_EQ(lrc->At(0)->Content(), "[00:01.00]a\r\n[00:02.00]");
    EXPECT_EQ(lrc->At(0)->ContentNoEndTimeString(), "[00:01.00]a\r\n");
    EXPECT_EQ(
        lrc->Content(), "[00:01.00]a\r\n\r\n[00:02.00]b\r\n[00:03.00]\r\n[00:04.00]c\r\n[00:00.00]\r\n");

    CLRCContentLine empty;
    EXPECT_EQ(empty.Content(), "");
}

TEST_F(LRC, TooManyLinesOverflow)
{
    QStringList lines { "[00:01.00]a" };
    while (lines.size() < 32769)
        lines << "";
    lrc->setContent(crlf(lines));
    EXPECT_EQ(lrc->Count(), 0);
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_116", "Overflow") });
}

} // namespace
