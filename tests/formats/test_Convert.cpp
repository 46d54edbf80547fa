#include "FormatTestSupport.h"

#include "core/Class.h"
#include "formats/CLRCContent.h"
#include "formats/CSMIContent.h"
#include "formats/CSMPContent.h"
#include "formats/CSRTContent.h"
#include "formats/CSSTContent.h"
#include "formats/basFormatConvert.h"

using namespace basFormatConvert;

namespace {

class ToEvents : public FormatTest
{
protected:
    static QString events(const QStringList &dialogues)
    {
        QString text
            = QStringLiteral("[Events]\r\nFormat: Marked, Start, End, Style, Name, MarginL, MarginR, "
                             "MarginV, Effect, Text\r\n");
        for (const QString &d : dialogues)
            text += QStringLiteral("Dialogue: Marked=0,") + d + QStringLiteral("\r\n");
        return text;
    }
    TestHost host;
};

TEST_F(ToEvents, SRTSkipsBlankLinesAndKeepsLineBreaks)
{
    CSRTContent srt;
    srt.setContent(crlf({ "1", "00:00:01,000 --> 00:00:03,500", "Hello", "World", "", "2",
        "00:00:04,000 --> 00:00:05,000", "", "3", "01:02:03,456 --> 01:02:04,000", "x", "", "" }));
    ASSERT_EQ(srt.Count(), 3);
    EXPECT_EQ(SRTToEvents(srt),
        events({ "0:00:01.00,0:00:03.50,*Default,说话人,0000,0000,0000,,Hello\\NWorld",
            "1:02:03.45,1:02:04.00,*Default,说话人,0000,0000,0000,,x" }));
}

TEST_F(ToEvents, EmptyListGivesTheSectionHeadOnly)
{
    CSRTContent srt;
    EXPECT_EQ(SRTToEvents(srt), events({}));
}

TEST_F(ToEvents, SMIUsesTheTextWithoutTags)
{
    CSMIContent smi;
    smi.setContent(QStringLiteral("<SAMI><BODY><SYNC Start=1500><P><b>a</b><br>b<SYNC Start=2000><P>&nbsp;"
                                  "</BODY></SAMI>"));
    EXPECT_EQ(SMIToEvents(smi), events({ "0:00:01.50,0:00:02.00,*Default,说话人,0000,0000,0000,,a\\Nb" }));
}

TEST_F(ToEvents, SMPAndSSTUseTheirStoredText)
{
    auto smp = Class::Make<CSMPContent>(&host);
    smp->setContent(crlf({ "00:00:01:23     00:00:03:45     {\\b1}Hi" }));
    EXPECT_EQ(
        SMPToEvents(*smp), events({ "0:00:01.23,0:00:03.45,*Default,说话人,0000,0000,0000,,{\\b1}Hi" }));

    auto sst = Class::Make<CSSTContent>(&host);
    sst->setContent(crlf({ "head", "1\t\t00:00:23:26\t00:00:25:23\t1.1.bmp" }));
    EXPECT_EQ(SSTToEvents(*sst), events({ "0:00:23.26,0:00:25.23,*Default,说话人,0000,0000,0000,,1.1.bmp" }));
}

TEST_F(ToEvents, LRCTimesLoseTheirHour)
{
    auto lrc = Class::Make<CLRCContent>(&host);
    lrc->setContent(crlf({ "[ti:x]", "[00:01.46]Hello", "[1:00:02.00]World" }));
    EXPECT_EQ(LRCToEvents(*lrc),
        events({ "0:00:01.46,0:00:02.00,*Default,说话人,0000,0000,0000,,Hello",
            "0:00:02.00,0:00:00.00,*Default,说话人,0000,0000,0000,,World" }));
}

TEST(StripOverridesToLines, TagsGoAndBreaksBecomeLines)
{
    EXPECT_EQ(StripOverridesToLines("{\\b1}Hello{\\b0}\\NWorld"), "Hello\r\nWorld");
    EXPECT_EQ(StripOverridesToLines("{\\b1 Hello"), "");
    EXPECT_EQ(StripOverridesToLines("a\\hb\\nc"), "a b\r\nc");
    EXPECT_EQ(StripOverridesToLines("{comment}kept{\\}x"), "{comment}keptx");
    EXPECT_EQ(StripOverridesToLines("end\\N"), "end\r\n");
}

TEST(SMIHeadText, SevenLinesWithLineEnds)
{
    const QStringList lines = SMIHeadText().split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(), 8);
    EXPECT_EQ(lines[0], "<HEAD>");
    EXPECT_EQ(lines[2], "<!-- Velmar -->");
    EXPECT_EQ(lines[3], "<STYLE type=\"text/css\">");
    EXPECT_TRUE(lines[4].contains("#Normal {name:标准字型;font-family:Verdana;font-size:16pt;}-->"));
    EXPECT_EQ(lines[6], "</HEAD>");
    EXPECT_EQ(lines[7], "");
}

} // namespace

namespace {

// The one-pass cleaning must give what the steps give one after another.
QString stepByStep(QString text)
{
    for (;;) {
        const qsizetype open = text.indexOf(QStringLiteral("{\\"));
        if (open < 0)
            break;
        const qsizetype close = text.indexOf(u'}', open + 2);
        if (close < 0)
            text.truncate(open);
        else
            text.remove(open, close - open + 1);
    }
    text.replace(QStringLiteral("\\h"), QStringLiteral(" "));
    text.replace(QStringLiteral("\\n"), QStringLiteral("\\N"));
    return text.split(QStringLiteral("\\N")).join(QStringLiteral("\r\n"));
}

TEST(StripOverridesToLines, MatchesTheStepsOnAwkwardTexts)
{
    for (const char *text : { "{{\\x}\\b1}a", "\\\\h", "\\\\n", "\\\\nN", "a{\\b1}{\\i1}b\\Nc", "{\\}",
             "{\\a}}{\\", "x\\", "\\h\\n\\N\\H", "{\\p1}m 0 0 l 1 1{\\p0}end", "{x}{\\y}" })
        EXPECT_EQ(StripOverridesToLines(QString::fromUtf8(text)), stepByStep(QString::fromUtf8(text)))
            << text;
}

} // namespace
