#include "FormatTestSupport.h"

#include "core/Class.h"
#include "formats/CTiming.h"
#include "formats/CTimingFormats.h"
#include "formats/basFormatConvert.h"

namespace {

// A timing document with the bodies of the other formats beside it, read and saved the
// way the window does it: read the file, fill the events, assemble the file.
class TimingFormats : public FormatTest
{
protected:
    void open(ScriptType type, const QString &text)
    {
        timing->setScriptType(type);
        ASSERT_TRUE(timing->Formats.ReadBody(type, text));
        ASSERT_TRUE(timing->Formats.FillEvents());
    }
    QString save() { return timing->Content(); }
    std::unique_ptr<CTiming> timing = Class::Make<CTiming>();
    CTimingFormats &formats = timing->Formats;
};

TEST_F(TimingFormats, SrtFileBecomesEventsAndComesBackWithoutTheThirdDecimal)
{
    open(ScriptType::SRT, crlf({ "1", "00:00:25,369 --> 00:00:27,001", "Hello", "World", "", "" }));
    EXPECT_EQ(timing->ScriptType(), ScriptType::SRT);
    const CSSAContent &events = *timing->SSAContent;
    ASSERT_GE(events.Count(), 1);
    const CSSAContentLine *line = events.At(0);
    EXPECT_EQ(line->Style(), "*Default");
    EXPECT_EQ(line->Owner(), "说话人");
    EXPECT_EQ(line->Dialog(), "Hello\\NWorld");
    EXPECT_DOUBLE_EQ(line->StartTime(), 25.36);
    EXPECT_EQ(save(), "1\r\n00:00:25,360 --> 00:00:27,000\r\nHello\r\nWorld\r\n\r\n");
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(TimingFormats, LrcTagsGoToTheHeadAndAreWrittenBack)
{
    open(ScriptType::LRC,
        crlf({ "[ti:song]", "[ar:me]", "[offset:-20]", "[00:01.00]a", "[00:02.00]b", "[00:04.00]", "" }));
    EXPECT_EQ(timing->ScriptInfo->LrcName(), "song");
    EXPECT_EQ(timing->ScriptInfo->LrcArtist(), "me");
    EXPECT_DOUBLE_EQ(timing->ScriptInfo->LrcOffset(), -20);
    EXPECT_EQ(save(), "[ti:song]\r\n[ar:me]\r\n[offset:-20]\r\n[00:01.00]a\r\n[00:02.00]b\r\n");
}

TEST_F(TimingFormats, SstHeadGoesToTheHeadAndPagesAreNumberedAnew)
{
    open(ScriptType::SST,
        crlf({ "st_format 2", "SP_NUMBER   START   END FILE_NAME", "7\t\t00:00:23:26\t00:00:25:23\t1.1.bmp",
            "9\t\t00:00:26:00\t00:00:27:00\t1.2.bmp", "" }));
    EXPECT_EQ(timing->ScriptInfo->SSTHead, "st_format 2\r\nSP_NUMBER   START   END FILE_NAME");
    EXPECT_EQ(save(),
        "st_format 2\r\nSP_NUMBER   START   END FILE_NAME\r\n"
        "1\t\t00:00:23:26\t00:00:25:23\t1.1.bmp\r\n"
        "2\t\t00:00:26:00\t00:00:27:00\t1.2.bmp\r\n");
}

TEST_F(TimingFormats, SmpSubTypeIsTheDocumentsAndIsWrittenBackTheSameWay)
{
    open(ScriptType::SMP, crlf({ "00:00:01:23     00:00:03:45     Hello  there" }));
    EXPECT_EQ(timing->ScriptSubType(), 1);
    EXPECT_EQ(timing->SSAContent->ScriptSubType, 1);
    EXPECT_EQ(save(), "00:00:01:23     00:00:03:45     Hello  there\r\n");

    open(ScriptType::SMP, crlf({ "00:00:01.2:Hello", "00:00:03.4:", "" }));
    EXPECT_EQ(timing->ScriptSubType(), 0);
    // The end mark is a blank line: it ends "Hello" and becomes no event of its own.
    EXPECT_EQ(save(), "00:00:01.2:Hello\r\n00:00:03.4:\r\n");
}

TEST_F(TimingFormats, SamiOfAnEmptyDocumentIsHeadAndEmptyBody)
{
    open(ScriptType::SAMI, QString());
    EXPECT_EQ(save(), "<SAMI>\r\n" + basFormatConvert::SMIHeadText() + "<BODY>\r\n</BODY>\r\n</SAMI>");
}

TEST_F(TimingFormats, OtherTypesAreNotTheirs)
{
    QString out;
    EXPECT_FALSE(formats.ReadBody(ScriptType::ASS, u"x"));
    EXPECT_FALSE(formats.AssembleBody(ScriptType::DialogueText, out));
    timing->setScriptType(ScriptType::ASS);
    EXPECT_FALSE(formats.FillEvents());
    EXPECT_FALSE(CTimingFormats::IsFormatType(ScriptType::DialogueText));
    EXPECT_TRUE(CTimingFormats::IsFormatType(ScriptType::SST));
}

TEST_F(TimingFormats, TypeComesBackWhenTheEventsFault)
{
    // 32,767 SYNCs fit the SAMI reader, but their events are more lines than the event
    // list reads.
    timing->setScriptType(ScriptType::SAMI);
    formats.ReadBody(ScriptType::SAMI,
        "<SAMI><BODY>" + QStringLiteral("<SYNC Start=1000><P>x").repeated(32767) + "</BODY></SAMI>");
    EXPECT_EQ(formats.SMIContent->Count(), 32767);
    EXPECT_THROW(formats.FillEvents(), VelmarError);
    EXPECT_EQ(timing->ScriptType(), ScriptType::SAMI);
}

} // namespace
