#include "FormatTestSupport.h"

#include "core/Class.h"
#include "formats/CSSTContent.h"

namespace {

class SST : public FormatTest
{
protected:
    TestHost host;
    std::unique_ptr<CSSTContent> sst = Class::Make<CSSTContent>(&host);
};

TEST_F(SST, HeadThenTabSeparatedPages)
{
    sst->setContent(crlf({ "st_format 2", "", "SP_NUMBER   START   END FILE_NAME",
        "1\t\t00:00:23:26\t00:00:25:23\t1.1.bmp", "2\t\t00:01:00:00\t00:01:02:50\t 1.2.bmp", "" }));
    EXPECT_EQ(host.SSTHead, "st_format 2\r\n\r\nSP_NUMBER   START   END FILE_NAME");
    ASSERT_EQ(sst->Count(), 2);
    EXPECT_DOUBLE_EQ(sst->At(0)->StartTime(), 23.26);
    EXPECT_DOUBLE_EQ(sst->At(0)->EndTime(), 25.23);
    EXPECT_EQ(sst->At(0)->Dialog(), "1.1.bmp");
    EXPECT_EQ(sst->At(1)->Dialog(), " 1.2.bmp"); // the picture field is not trimmed
    EXPECT_DOUBLE_EQ(sst->At(1)->EndTime(), 62.5);
}

TEST_F(SST, FileWithoutPagesIsAllHead)
{
    const QString text = crlf({ "st_format 2", "TV_Type NTSC", "" });
    sst->setContent(text);
    EXPECT_EQ(host.SSTHead, text);
    EXPECT_EQ(sst->Count(), 0);
}

TEST_F(SST, AnyLineBeginningWithADigitIsAPage)
{
    sst->setContent(crlf(
        { "st_format 2", "  3D header", "Display_Area (0 2 719 479)", "1\t\t00:00:01:00\t00:00:02:00\ta" }));
    EXPECT_EQ(host.SSTHead, "st_format 2");
    ASSERT_EQ(sst->Count(), 2);
    // The header line is read as a page with no fields.
    EXPECT_DOUBLE_EQ(sst->At(0)->StartTime(), 0);
    EXPECT_EQ(sst->At(0)->Dialog(), "");
    EXPECT_FALSE(sst->At(0)->Blank);
    EXPECT_DOUBLE_EQ(sst->At(1)->StartTime(), 1);
}

TEST_F(SST, BlanksInsteadOfTabsGiveNoTimes)
{
    sst->setContent(QStringLiteral("1  00:00:23:26  00:00:25:23  1.1.bmp"));
    ASSERT_EQ(sst->Count(), 1);
    EXPECT_DOUBLE_EQ(sst->At(0)->StartTime(), 0);
    EXPECT_DOUBLE_EQ(sst->At(0)->EndTime(), 0);
    EXPECT_EQ(sst->At(0)->Dialog(), "");
}

TEST_F(SST, TimeStringsAndLineForm)
{
    CSSTContentLine line;
    line.setStartTime(23.26);
    EXPECT_EQ(line.StartTimeString(), "00:00:23:26");
    line.setEndTimeString(u"00:00:25:23");
    EXPECT_DOUBLE_EQ(line.EndTime(), 25.23);
    line.setDialog(QStringLiteral("p.bmp"));
    EXPECT_EQ(line.Content(), "00:00:23:26\t\t00:00:25:23\t\tp.bmp");
    // Setting the picture leaves Blank alone.
    EXPECT_TRUE(line.Blank);
}

TEST_F(SST, ListWithoutDocumentKeepsTheHead)
{
    CSSTContent alone;
    alone.setContent(crlf({ "head", "1\t\t00:00:01:00\t00:00:02:00\ta" }));
    EXPECT_EQ(alone.SSTHead(), "head");
    EXPECT_EQ(alone.Count(), 1);
}

TEST_F(SST, TooManyLinesOverflow)
{
    sst->setContent(QStringLiteral("1\t\t00:00:01:00\t00:00:02:00\ta\r\n").repeated(32768));
    EXPECT_EQ(sst->Count(), 0);
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_119", "Overflow") });
}

} // namespace
