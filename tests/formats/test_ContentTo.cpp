#include "FormatTestSupport.h"

#include "core/Class.h"
#include "formats/CLRCContent.h"
#include "formats/CSMIContent.h"
#include "formats/CSMPContent.h"
#include "formats/CSRTContent.h"
#include "formats/basFormatConvert.h"
#include "script/CSSAContent.h"

using namespace basFormatConvert;

namespace {

class ContentTo : public FormatTest
{
protected:
    // An event list read from SSA event lines, as a timing document fills it.
    static std::unique_ptr<CSSAContent> events(const QStringList &dialogues)
    {
        auto list = Class::Make<CSSAContent>();
        list->ScriptType = ScriptType::SSA;
        QStringList lines { "[Events]",
            "Format: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text" };
        for (const QString &d : dialogues)
            lines << (d.isEmpty() ? d : QStringLiteral("Dialogue: Marked=0,") + d);
        list->setContent(lines.join(QStringLiteral("\r\n")));
        return list;
    }
    static QString line(const char *start, const char *end, const QString &text)
    {
        return QString::fromLatin1(start) + u',' + QString::fromLatin1(end)
            + QStringLiteral(",*Default,说话人,0000,0000,0000,,") + text;
    }
};

TEST_F(ContentTo, SRTRoundTripLosesTheThirdDecimal)
{
    CSRTContent srt;
    srt.setContent(crlf({ "1", "00:00:25,369 --> 00:00:27,001", "{\\b1}Hello{\\b0}", "World", "", "2",
        "10:00:00,000 --> 10:00:01,000", "x", "", "" }));
    auto list = events({});
    list->setContent(SRTToEvents(srt));
    // The event text ends in "\r\n": its empty last line is a blank member.
    ASSERT_EQ(list->Count(), 3);
    EXPECT_TRUE(list->At(2)->Blank);
    // The hour of two digits lost its first digit on reading.
    EXPECT_EQ(ContentToSRT(*list),
        "1\r\n00:00:25,360 --> 00:00:27,000\r\nHello\r\nWorld\r\n\r\n"
        "2\r\n00:00:00,000 --> 00:00:01,000\r\nx\r\n\r\n");
}

TEST_F(ContentTo, SRTCountsOnlyLinesThatAreWritten)
{
    auto list = events({ line("0:00:01.00", "0:00:02.00", "a"), "", line("0:00:00.00", "0:00:00.00", ""),
        line("0:00:00.00", "0:00:00.00", "{\\b1 unclosed") });
    ASSERT_EQ(list->Count(), 4);
    list->At(3)->setStartTime(36000);
    list->At(3)->setEndTime(36001);
    EXPECT_EQ(ContentToSRT(*list),
        "1\r\n00:00:01,000 --> 00:00:02,000\r\na\r\n\r\n"
        "2\r\n00:00:00,000 --> 00:00:00,000\r\n\r\n\r\n"
        "3\r\n010:00:00,000 --> 010:00:01,000\r\n\r\n\r\n");
}

TEST_F(ContentTo, EmptyListGivesEmptySRTAndAnEmptySAMIBody)
{
    auto list = events({});
    EXPECT_EQ(ContentToSRT(*list), "");
    EXPECT_EQ(ContentToSMI(*list), "<SAMI>\r\n" + SMIHeadText() + "<BODY>\r\n</BODY>\r\n</SAMI>");
    EXPECT_EQ(ContentToSMP(*list), "");
    EXPECT_EQ(ContentToSST(*list), "");
    EXPECT_EQ(ContentToLRC(*list), "");
}

TEST_F(ContentTo, SMIGivesEveryLineAClosingSyncAndWritesThePlainText)
{
    auto list = events(
        { line("0:00:01.50", "0:00:02.00", "{\\b1}a{\\b0}\\Nb"), "", line("0:00:03.00", "0:00:04.25", "c") });
    EXPECT_EQ(ContentToSMI(*list),
        "<SAMI>\r\n" + SMIHeadText()
            + "<BODY>\r\n"
              "<SYNC Start=1500><P>a b\r\n<SYNC Start=2000><P>&nbsp;\r\n"
              "<SYNC Start=3000><P>c\r\n<SYNC Start=4250><P>&nbsp;\r\n"
              "</BODY>\r\n</SAMI>");

    CSMIContent back;
    back.setContent(ContentToSMI(*list));
    ASSERT_EQ(back.Count(), 2);
    EXPECT_DOUBLE_EQ(back.At(0)->EndTime(), 2);
    EXPECT_EQ(back.At(1)->DialogText, "c");
    EXPECT_DOUBLE_EQ(back.At(1)->EndTime(), 4.25);
}

TEST_F(ContentTo, SMPBySubType)
{
    auto list = events({ line("0:00:01.29", "0:00:03.40", "Hi"), line("0:00:00.00", "0:00:00.00", "") });
    list->ScriptSubType = 0;
    EXPECT_EQ(ContentToSMP(*list), "00:00:01.2:Hi\r\n00:00:03.4:\r\n");
    list->ScriptSubType = 1;
    EXPECT_EQ(ContentToSMP(*list), "00:00:01:29     00:00:03:40     Hi\r\n");
    list->ScriptSubType = 2;
    EXPECT_EQ(ContentToSMP(*list), "");

    TestHost host;
    host.SubType = 1;
    auto smp = Class::Make<CSMPContent>(&host);
    list->ScriptSubType = 1;
    smp->setContent(ContentToSMP(*list));
    ASSERT_EQ(smp->Count(), 1);
    EXPECT_DOUBLE_EQ(smp->At(0)->StartTime(), 1.29);
    EXPECT_DOUBLE_EQ(smp->At(0)->EndTime(), 3.4);
    EXPECT_TRUE(SMPToEvents(*smp).endsWith(line("0:00:01.29", "0:00:03.40", "Hi") + "\r\n"));
}

TEST_F(ContentTo, SSTNumbersTheWrittenLinesFromOne)
{
    QStringList dialogues;
    for (int i = 0; i < 12; ++i)
        dialogues << line("0:00:01.00", "0:00:02.50", QStringLiteral("p%1.bmp").arg(i + 40));
    dialogues.insert(3, line("0:00:00.00", "0:00:00.00", ""));
    auto list = events(dialogues);
    const QStringList out = ContentToSST(*list).split(QStringLiteral("\r\n"));
    ASSERT_EQ(out.size(), 13);
    EXPECT_EQ(out[0], "1\t\t00:00:01:00\t00:00:02:50\tp40.bmp");
    EXPECT_EQ(out[11], "12\t\t00:00:01:00\t00:00:02:50\tp51.bmp");
}

TEST_F(ContentTo, LRCWritesAnEndStampOnlyBeforeAGap)
{
    auto list = events({ line("0:00:01.00", "0:00:02.00", "a"), line("0:00:02.00", "0:00:03.00", "b"),
        line("0:00:03.01", "0:00:04.00", "c"), line("1:00:05.00", "1:00:06.00", "d") });
    EXPECT_EQ(ContentToLRC(*list),
        "[00:01.00]a\r\n"
        "[00:02.00]b\r\n[00:03.00]\r\n"
        "[00:03.01]c\r\n[00:04.00]\r\n"
        "[00:05.00]d\r\n");

    TestHost host;
    auto lrc = Class::Make<CLRCContent>(&host);
    lrc->setContent(ContentToLRC(*list));
    ASSERT_EQ(lrc->Count(), 4);
    EXPECT_DOUBLE_EQ(lrc->At(0)->EndTime(), 2);
    EXPECT_DOUBLE_EQ(lrc->At(1)->EndTime(), 3);
    EXPECT_DOUBLE_EQ(lrc->At(2)->EndTime(), 4);
}

TEST_F(ContentTo, EventTextFromEveryFormatReadsBackAsEvents)
{
    CSRTContent srt;
    srt.setContent(crlf({ "00:00:01,000 --> 00:00:02,000", "a, with comma", "", "" }));
    auto list = events({});
    list->setContent(SRTToEvents(srt));
    ASSERT_EQ(list->Count(), 2);
    EXPECT_EQ(list->At(0)->Dialog(), "a, with comma");
    EXPECT_EQ(list->At(0)->Owner(), "说话人");
    EXPECT_EQ(list->At(0)->Style(), "*Default");
    EXPECT_DOUBLE_EQ(list->At(0)->EndTime(), 2);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

} // namespace
