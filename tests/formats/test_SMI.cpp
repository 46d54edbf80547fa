#include "FormatTestSupport.h"

#include "formats/CSMIContent.h"

namespace {

class SMI : public FormatTest
{
protected:
    // A file around a body, in the usual layout.
    static QString file(const QString &body)
    {
        return QStringLiteral("<SAMI>\r\n<HEAD>\r\n<TITLE>t</TITLE>\r\n</HEAD>\r\n<BODY>\r\n") + body
            + QStringLiteral("\r\n</BODY>\r\n</SAMI>\r\n");
    }
    CSMIContent smi;
};

TEST_F(SMI, EachLineEndsAtTheNextSyncOfAnyKind)
{
    smi.setContent(file(crlf({ "<SYNC Start=1000><P>Hello<br>World", "<SYNC Start=3000><P>&nbsp;",
        "<SYNC Start=4000><P>Second", "<SYNC Start=6000><P>&nbsp;" })));
    ASSERT_EQ(smi.Count(), 2);
    EXPECT_DOUBLE_EQ(smi.At(0)->StartTime(), 1);
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 3);
    EXPECT_EQ(smi.At(0)->DialogText, "Hello\\NWorld");
    EXPECT_EQ(smi.At(0)->Dialog(), "<P>Hello<br>World");
    EXPECT_DOUBLE_EQ(smi.At(1)->StartTime(), 4);
    EXPECT_DOUBLE_EQ(smi.At(1)->EndTime(), 6);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(SMI, LastTextSyncEndsAtTheFarEnd)
{
    smi.setContent(file("<SYNC Start=1000><P>Hello"));
    ASSERT_EQ(smi.Count(), 1);
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 35999.99);
}

TEST_F(SMI, SameStartTwiceGivesAnEndEqualToTheStart)
{
    smi.setContent(file("<SYNC Start=1000><P>a<SYNC Start=1000><P>b"));
    ASSERT_EQ(smi.Count(), 2);
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 1);
}

TEST_F(SMI, SectionTagsIgnoreCaseButTheSyncSplitDoesNot)
{
    smi.setContent(
        QStringLiteral("<sami><body><sync start=1000><p>one<sync start=2000><p>two</body></sami>"));
    ASSERT_EQ(smi.Count(), 1);
    EXPECT_DOUBLE_EQ(smi.At(0)->StartTime(), 1);
    EXPECT_EQ(smi.At(0)->DialogText, "onetwo");
}

TEST_F(SMI, SectionsMustBePlainTags)
{
    smi.setContent(QStringLiteral("<SAMI lang=zh><BODY><SYNC Start=1000><P>x</BODY></SAMI>"));
    EXPECT_EQ(smi.Count(), 0);
    smi.setContent(QStringLiteral("<SYNC Start=1000><P>no sections"));
    EXPECT_EQ(smi.Count(), 0);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(SMI, AllSectionsAreJoined)
{
    smi.setContent(QStringLiteral("<SAMI><BODY><SYNC Start=1000><P>a</BODY></SAMI>"
                                  "<SAMI><BODY><SYNC Start=2000><P>b</BODY></SAMI>"));
    ASSERT_EQ(smi.Count(), 2);
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 2);
}

TEST_F(SMI, LineEndsInsideTagsAreRemovedFirst)
{
    smi.setContent(file(crlf({ "<SYNC Start", "=  7007 ><P>x" })));
    ASSERT_EQ(smi.Count(), 1);
    EXPECT_DOUBLE_EQ(smi.At(0)->StartTime(), 7.007);
}

TEST_F(SMI, StartThatIsNoPlainNumberIsZero)
{
    smi.setContent(file("<SYNC Start=\"1000\"><P>q<SYNC Start=1000 End=2000><P>r<SYNC Start=3000><P>s"));
    ASSERT_EQ(smi.Count(), 3);
    EXPECT_DOUBLE_EQ(smi.At(0)->StartTime(), 0);
    EXPECT_DOUBLE_EQ(smi.At(1)->StartTime(), 0);
    EXPECT_DOUBLE_EQ(smi.At(2)->StartTime(), 3);
}

TEST_F(SMI, BadPieceAsksAndNoStops)
{
    const QString body
        = QStringLiteral("<SYNC Start=1000><P>a<SYNC Start 2000 no tag end<SYNC Start=3000><P>c");
    prompt.Answers = { MsgBoxResult::No };
    smi.setContent(file(body));
    ASSERT_EQ(smi.Count(), 1);
    EXPECT_EQ(prompt.Messages(), QStringList { Msg("TIMING_ERR_104") });
    EXPECT_EQ(prompt.Records[0].Style, MsgBoxStyle::YesNo);
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 0);

    prompt.Reset();
    prompt.Answers = { MsgBoxResult::Yes };
    smi.setContent(file(body));
    ASSERT_EQ(smi.Count(), 2);
    // The bad piece still counts as a SYNC: it ends "a" at its own start, 0.
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 0);
    EXPECT_EQ(smi.At(1)->DialogText, "c");
    EXPECT_DOUBLE_EQ(smi.At(1)->EndTime(), 35999.99);
}

TEST_F(SMI, LineParseErrors)
{
    CSMIContentLine line;
    line.setContent(QStringLiteral("<P>not a sync"));
    EXPECT_EQ(line.ErrNumber, 2);
    line.setContent(QStringLiteral("<sync start=1000"));
    EXPECT_EQ(line.ErrNumber, 3);
    line.setContent(QStringLiteral("<SYNC>x=1"));
    EXPECT_EQ(line.ErrNumber, 3);
    line.setContent(QStringLiteral("<SYNC Start=5000><P>"));
    EXPECT_EQ(line.ErrNumber, 0);
    EXPECT_TRUE(line.Blank);
    EXPECT_DOUBLE_EQ(line.StartTime(), 5);
}

TEST_F(SMI, PlainTextKeepsOnlyWhatStandsBehindTags)
{
    CSMIContentLine line;
    line.setDialog(QStringLiteral("abc<BR>def"));
    EXPECT_EQ(line.DialogText, "\\Ndef");
    line.setDialog(QStringLiteral("no tags at all"));
    EXPECT_EQ(line.DialogText, "no tags at all");
    line.setDialog(QStringLiteral("<P>a &nbsp; b< br >c"));
    EXPECT_EQ(line.DialogText, "a &nbsp; b\\Nc");
    EXPECT_FALSE(line.Blank);
    line.setDialog(QStringLiteral("<P> &nbsp; "));
    EXPECT_TRUE(line.Blank);
    // A "<" that no ">" follows is text, not a tag.
    line.setDialog(QStringLiteral("<P>1 < 2"));
    EXPECT_EQ(line.DialogText, "1 < 2");
    EXPECT_FALSE(line.Blank);
}

TEST_F(SMI, TimeStringsAreMillisecondsOutAndTimeTextIn)
{
    CSMIContentLine line;
    line.setStartTime(23.064);
    EXPECT_EQ(line.StartTimeString(), "23064");
    line.setEndTimeString(u"0:00:01.50");
    EXPECT_DOUBLE_EQ(line.EndTime(), 1.5);
}

TEST_F(SMI, FontTagsBecomeOverrideTagsAndTheRestIsLost)
{
    CSMIContentLine line;
    line.setDialog(QStringLiteral("<font color=#FF0000>Red</font>"));
    EXPECT_EQ(line.SSADialog(), "{\\c&HFF0000&}");
    line.setDialog(QStringLiteral("<FONT name=Arial>x"));
    EXPECT_EQ(line.SSADialog(), "{\\fnArial}");
    line.setDialog(QStringLiteral("<font size=20 color=#00FF00>x"));
    EXPECT_EQ(line.SSADialog(), "{\\fs20}");
    line.setDialog(QStringLiteral("Hello\\NWorld"));
    EXPECT_EQ(line.SSADialog(), "Hello");
    line.setDialog(QStringLiteral("plain"));
    EXPECT_EQ(line.SSADialog(), "plain");
    line.setDialog(QStringLiteral("a</font>"));
    EXPECT_EQ(line.SSADialog(), "a{\\r}");
    line.setDialog(QStringLiteral("a > b < c"));
    EXPECT_EQ(line.SSADialog(), "a > b < c");
    line.setDialog(QStringLiteral(" &nbsp; "));
    line.Blank = false;
    EXPECT_EQ(line.SSADialog(), "");
    EXPECT_TRUE(line.Blank);
}

TEST_F(SMI, WritesHeadBodyAndClosingSyncs)
{
    smi.setContent(file("<SYNC Start=1000><P>Hello<SYNC Start=2500><P>&nbsp;"));
    ASSERT_EQ(smi.Count(), 1);
    EXPECT_EQ(smi.At(0)->Content(), "<SYNC Start=1000><P>Hello\r\n<SYNC Start=2500><P>&nbsp;");
    const QString text = smi.Content();
    EXPECT_TRUE(text.startsWith("<SAMI>\r\n<HEAD>\r\n<TITLE></TITLE>\r\n<!-- Velmar -->\r\n"));
    EXPECT_TRUE(
        text.endsWith("</HEAD>\r\n<BODY>\r\n<SYNC Start=1000><P>Hello\r\n<SYNC Start=2500><P>&nbsp;\r\n"
                      "</BODY>\r\n</SAMI>"));

    CSMIContentLine empty;
    empty.Blank = false;
    EXPECT_EQ(empty.Content(), "");
}

TEST_F(SMI, SerialCounterIsSixteenBitAndSurvivesClear)
{
    // Keys never repeat, so a list that has numbered 32,767 lines can take no more.
    const QString full = file(QStringLiteral("<SYNC Start=1000><P>x").repeated(32767));
    smi.setContent(full);
    EXPECT_EQ(smi.Count(), 32767);
    EXPECT_TRUE(prompt.Records.isEmpty());
    smi.setContent(file("<SYNC Start=1000><P>one more"));
    EXPECT_EQ(smi.Count(), 0);
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_105", "Overflow") });
}

TEST_F(SMI, TooManyPiecesOverflow)
{
    smi.setContent(file(QStringLiteral("<SYNC Start=1000><P>x").repeated(32769)));
    EXPECT_EQ(smi.Count(), 0);
    EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_105", "Overflow") });
}

} // namespace
