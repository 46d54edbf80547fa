// Input that no format expects: every reader ends normally or with its own message.
#include "FormatTestSupport.h"

#include "core/Class.h"
#include "core/basText.h"
#include "formats/CLRCContent.h"
#include "formats/CSMIContent.h"
#include "formats/CSMPContent.h"
#include "formats/CSRTContent.h"
#include "formats/CSSTContent.h"
#include "formats/basFormatConvert.h"

#include <QRandomGenerator>

namespace {

class BadInput : public FormatTest
{
protected:
    // Reads the text with all five readers and turns every list into event text.
    void readAll(const QString &text)
    {
        srt.setContent(text);
        smi.setContent(text);
        lrc->setContent(text);
        smp->setContent(text);
        sst->setContent(text);
        basFormatConvert::SRTToEvents(srt);
        basFormatConvert::SMIToEvents(smi);
        basFormatConvert::LRCToEvents(*lrc);
        basFormatConvert::SMPToEvents(*smp);
        basFormatConvert::SSTToEvents(*sst);
        for (CSMIContentLine *line : smi)
            line->SSADialog();
    }
    // The messages a reader may show: its fault or the bad-line question.
    void expectOnlyReaderMessages()
    {
        for (const auto &record : prompt.Records) {
            bool known = record.Prompt == Msg("TIMING_ERR_104");
            for (const char *key :
                { "TIMING_ERR_105", "TIMING_ERR_116", "TIMING_ERR_117", "TIMING_ERR_118", "TIMING_ERR_119" })
                known = known || record.Prompt.startsWith(Msg(QString::fromLatin1(key)));
            EXPECT_TRUE(known) << record.Prompt.toStdString();
        }
    }

    TestHost host;
    CSRTContent srt;
    CSMIContent smi;
    std::unique_ptr<CLRCContent> lrc = Class::Make<CLRCContent>(&host);
    std::unique_ptr<CSMPContent> smp = Class::Make<CSMPContent>(&host);
    std::unique_ptr<CSSTContent> sst = Class::Make<CSSTContent>(&host);
};

TEST_F(BadInput, FragmentsOfEveryFormatInRandomOrder)
{
    const QStringList pieces { "\r\n", "\r\n", "\r\n", "\n", "\r", " ", "\t", "-->", "<", ">", "[", "]", ":",
        ".", ",", "=", "<SYNC", "<SYNC Start=", "<sync", "<SAMI>", "</SAMI>", "<BODY>", "</BODY>", "<br>",
        "<font color=#", "&nbsp;", "{\\", "}", "\\N", "0", "1", "9", "00:00:01,000",
        "00:00:01.2:", "00:00:01:23", "[00:01.00]", "[ar:", "[offset:", "字", "\xF0\x9F\x8E\xB5" };
    QRandomGenerator random(1234);
    for (int round = 0; round < 400; ++round) {
        QString text;
        const int n = int(random.bounded(1, 120));
        for (int i = 0; i < n; ++i)
            text += pieces[int(random.bounded(qsizetype(pieces.size())))];
        readAll(text);
    }
    expectOnlyReaderMessages();
}

TEST_F(BadInput, BinaryJunk)
{
    QRandomGenerator random(99);
    for (int round = 0; round < 100; ++round) {
        QByteArray bytes(int(random.bounded(0, 4000)), Qt::Uninitialized);
        for (char &b : bytes)
            b = char(random.bounded(256));
        readAll(DecodeWholeFile(bytes, round % 2 == 0).Text);
    }
    expectOnlyReaderMessages();
}

TEST_F(BadInput, EmptyAndBlankTexts)
{
    for (const QString &text :
        { QString(), QStringLiteral("\r\n"), QStringLiteral("   "), QStringLiteral("\r\n\r\n  \r\n") }) {
        readAll(text);
        EXPECT_EQ(srt.Count() + smi.Count() + lrc->Count() + smp->Count() + sst->Count(), 0);
    }
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(BadInput, TagsWithoutClosingBracket)
{
    smi.setContent(
        QStringLiteral("<SAMI><BODY><SYNC Start=1000><P>a <b <SYNC Start=2000><P>b</BODY></SAMI>"));
    ASSERT_EQ(smi.Count(), 2);
    EXPECT_EQ(smi.At(0)->DialogText, "a <b ");
    smi.setContent(QStringLiteral("<SAMI><BODY><SYNC Start=1000><P>x</BODY"));
    EXPECT_EQ(smi.Count(), 0);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(BadInput, MissingArrowAndMissingTimes)
{
    srt.setContent(
        crlf({ "1", "00:00:01,000 -- 00:00:02,000", "text", "", "2", "-->", "only arrow", "", "" }));
    ASSERT_EQ(srt.Count(), 1);
    EXPECT_DOUBLE_EQ(srt.At(0)->StartTime(), 0);
    EXPECT_EQ(srt.At(0)->Dialog(), "only arrow");

    CSRTContentLine line;
    line.setContent(QStringLiteral("no arrow\r\ntext"));
    EXPECT_DOUBLE_EQ(line.StartTime(), 0);
    EXPECT_EQ(line.Dialog(), "text");
}

} // namespace
