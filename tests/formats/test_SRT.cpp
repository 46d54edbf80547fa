#include "FormatTestSupport.h"

#include "formats/CSRTContent.h"

namespace {

class SRT : public FormatTest
{
protected:
    CSRTContent srt;
};

TEST_F(SRT, ReadsBlocksWithLineBreaksAsBackslashN)
{
    srt.setContent(crlf({ "1", "00:00:01,000 --> 00:00:03,500", "Hello", "<i>World</i>", "", "2",
        "00:00:04,250 --> 00:00:05,000", "Second", "", "" }));
    ASSERT_EQ(srt.Count(), 2);
    const CSRTContentLine *first = srt.At(0);
    EXPECT_DOUBLE_EQ(first->StartTime(), 1.0);
    EXPECT_DOUBLE_EQ(first->EndTime(), 3.5);
    EXPECT_EQ(first->Dialog(), "Hello\\N<i>World</i>");
    EXPECT_EQ(first->DialogText, first->Dialog());
    EXPECT_FALSE(first->Blank);
    EXPECT_DOUBLE_EQ(srt.At(1)->StartTime(), 4.25);
    EXPECT_EQ(srt.At(1)->Dialog(), "Second");
    EXPECT_TRUE(srt.Exists("1"));
    EXPECT_TRUE(srt.Exists("2"));
    EXPECT_EQ(srt.At(1)->Parent(), &srt);
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(SRT, EmptyTextGivesNothingAndNoMessage)
{
    srt.setContent(QString());
    EXPECT_EQ(srt.Count(), 0);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(SRT, LastBlockWithoutStopLineFaultsAndEarlierBlocksStay)
{
    srt.setContent(crlf(
        { "1", "00:00:01,000 --> 00:00:02,000", "Kept", "", "2", "00:00:03,000 --> 00:00:04,000", "Lost" }));
    ASSERT_EQ(srt.Count(), 1);
    EXPECT_EQ(srt.At(0)->Dialog(), "Kept");
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_118", "Subscript out of range") });
}

TEST_F(SRT, TimeLineAsLastElementFaults)
{
    srt.setContent(crlf({ "1", "00:00:01,000 --> 00:00:02,000" }));
    EXPECT_EQ(srt.Count(), 0);
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_118", "Subscript out of range") });
}

TEST_F(SRT, BareLineFeedsDoNotSplit)
{
    // The whole file is one element holding "-->": the block runs off the end.
    srt.setContent(QStringLiteral("1\n00:00:01,000 --> 00:00:02,000\nHi\n\n"));
    EXPECT_EQ(srt.Count(), 0);
    EXPECT_EQ(prompt.Messages().size(), 1);
}

TEST_F(SRT, TimeStringsCutTheThirdDecimalAndTheFirstHourDigit)
{
    CSRTContentLine line;
    line.setStartTimeString(u"00:00:25,369");
    EXPECT_DOUBLE_EQ(line.StartTime(), 25.36);
    line.setStartTimeString(u" 0:00:25,360");
    EXPECT_DOUBLE_EQ(line.StartTime(), 25.36);
    line.setStartTimeString(u"00:00:25.360");
    EXPECT_DOUBLE_EQ(line.StartTime(), 25.36);
    line.setStartTimeString(u"12:00:00,000");
    EXPECT_DOUBLE_EQ(line.StartTime(), 7200);
    line.setStartTimeString(u"00:00:25");
    EXPECT_DOUBLE_EQ(line.StartTime(), 0);
    line.setEndTimeString(u" 00:02:07,12 X1:40 X2:600");
    EXPECT_DOUBLE_EQ(line.EndTime(), 127.12);

    line.setStartTime(25.36);
    EXPECT_EQ(line.StartTimeString(), " 0:00:25,360");
    line.setEndTime(36000);
    EXPECT_EQ(line.EndTimeString(), " 10:00:00,000");
}

TEST_F(SRT, NegativeAndNaNTimesStoreZero)
{
    CSRTContentLine line;
    line.setStartTime(-1);
    line.setEndTime(std::nan(""));
    EXPECT_EQ(line.StartTime(), 0);
    EXPECT_EQ(line.EndTime(), 0);
}

TEST_F(SRT, BlockBoundaries)
{
    srt.setContent(crlf({ "00:00:01,000 -->", "No end", "", "00:00:02,000 --> 00:00:03,000", "A", "   ",
        "dropped", "00:00:04,000 --> 00:00:05,000", "B", "\t", "C", "", "00:00:06,000 --> 00:00:07,000",
        "00:00:08,000 --> 00:00:09,000", "\r", "also dropped", "00:00:10,000 --> 00:00:11,000", "", "" }));
    ASSERT_EQ(srt.Count(), 5);
    EXPECT_DOUBLE_EQ(srt.At(0)->StartTime(), 1);
    EXPECT_DOUBLE_EQ(srt.At(0)->EndTime(), 0);
    EXPECT_EQ(srt.At(0)->Dialog(), "No end");
    // A line of blanks ends the block; a tab doesn't.
    EXPECT_EQ(srt.At(1)->Dialog(), "A");
    EXPECT_EQ(srt.At(2)->Dialog(), "B\\N\t\\NC");
    // A second time line is text; a lone carriage return ends the block.
    EXPECT_EQ(srt.At(3)->Dialog(), "00:00:08,000 --> 00:00:09,000");
    // A time line with nothing behind it is added as a blank line.
    EXPECT_TRUE(srt.At(4)->Blank);
    EXPECT_EQ(srt.At(4)->Dialog(), "");
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(SRT, IndexLinesChangeNothing)
{
    srt.setContent(crlf({ "7", "00:00:01,000 --> 00:00:02,000", "a", "", "7", "junk",
        "00:00:03,000 --> 00:00:04,000", "b", "", "" }));
    ASSERT_EQ(srt.Count(), 2);
    EXPECT_EQ(srt.At(1)->Dialog(), "b");
}

TEST_F(SRT, WritesNumberedBlocks)
{
    srt.setContent(crlf({ "5", "00:00:01,000 --> 00:00:03,500", "Hello", "World", "", "" }));
    EXPECT_EQ(srt.Content(), "1\r\n 0:00:01,000 -->  0:00:03,500\r\nHello\\NWorld\r\n\r\n");
    EXPECT_EQ(srt.Dialog(), "Hello\\NWorld\r\n");
}

TEST_F(SRT, SerialNumbersNeverRepeatAcrossReads)
{
    const QString text
        = crlf({ "00:00:01,000 --> 00:00:02,000", "a", "", "00:00:03,000 --> 00:00:04,000", "b", "" });
    srt.setContent(text);
    srt.setContent(text);
    ASSERT_EQ(srt.Count(), 2);
    EXPECT_TRUE(srt.Exists("3"));
    EXPECT_TRUE(srt.Exists("4"));
    EXPECT_FALSE(srt.Exists("1"));

    int changes = 0;
    srt.ContentChanged = [&] { ++changes; };
    CSRTContentLine *made = srt.Create();
    EXPECT_EQ(made->SerialNo(), 5);
    EXPECT_EQ(made->Parent(), &srt);
    EXPECT_TRUE(made->Blank);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(srt.SerialNo(), 5);
}

TEST_F(SRT, CollectionMembers)
{
    srt.setContent(
        crlf({ "00:00:01,000 --> 00:00:02,000", "a", "", "00:00:03,000 --> 00:00:04,000", "b", "" }));
    EXPECT_EQ(srt.item("2"), srt.At(1));
    EXPECT_EQ(srt.item("9"), nullptr);
    srt.Delete("1");
    ASSERT_EQ(srt.Count(), 1);
    EXPECT_EQ(srt.At(0)->Dialog(), "b");
    EXPECT_THROW(srt.Delete("1"), VelmarError);
    srt.Clear();
    EXPECT_EQ(srt.Count(), 0);
    EXPECT_EQ(srt.SerialNo(), 2);
}

TEST_F(SRT, SixteenBitLineIndex)
{
    QStringList lines { "00:00:01,000 --> 00:00:02,000", "a", "" };
    while (lines.size() < 32768)
        lines << "x";
    srt.setContent(crlf(lines));
    EXPECT_EQ(srt.Count(), 1);
    EXPECT_TRUE(prompt.Records.isEmpty());

    lines << "x";
    srt.setContent(crlf(lines));
    EXPECT_EQ(srt.Count(), 0);
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_118", "Overflow") });
}

} // namespace
