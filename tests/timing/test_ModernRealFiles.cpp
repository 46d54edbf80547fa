// Every real file opened as a timing window opens it by name, as modern files: the number
// of lines and the first and last texts were counted by reading each file, not by running
// the program. Without the setting the same files keep what the seed readers make of them
// (tests/formats/test_RealFiles.cpp).
#include "GridOpsFixture.h"

#include "core/Class.h"
#include "core/basMain.h"
#include "formats/CTiming.h"
#include "formats/basTimingFile.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

struct Expected
{
    const char *File;
    int Lines; // events, cues, SYNC blocks with text, lyric stamps with words, text lines
    const char16_t *First; // a piece of the first line's text
    const char16_t *Last; // a piece of the last line's text
    // Where a reader's own rule reads fewer lines than a person counts (line ends and
    // encodings aside, which is all that modern files change): the lines read, and a piece
    // of the last one.
    int Read = -1;
    const char16_t *ReadLast = u"";
};

// Lines: ASS and SSA count the Dialogue and Comment lines of [Events]; SRT the blocks
// with a time line; SAMI the SYNC blocks whose text is not only "&nbsp;"; LRC one line
// per time stamp in front of words; a TXT file (dialogue text) one row per line up to
// its last line with text.
const Expected expectations[] = {
    { "ass/jso-feature-test-override-tags-karaoke-crlf.ass", 41, u"This line is a com",
        u"And the last thing" },
    { "ass/pyasstosrt-fansub-english-single-style-376-events.ass", 376, u"It's time for the ",
        u"Next time: \"Quest " },
    { "ass/pyasstosrt-fansub-tc-chinese-japanese-karaoke-comments.ass", 4803, u"第3話　星空的鎮魂曲", u"" },
    { "ass/pysubs2-fonts-section-embedded-ttf-bom.ass", 1, u"Test subtitle.", u"Test subtitle." },
    { "ass/pysubs2-graphics-section-embedded-images-bom.ass", 1, u"", u"" },
    { "ass/subsrt-leading-space-lines-no-final-newline.ass", 1, u"Like an Angel with",
        u"Like an Angel with" },
    { "lrc/lrcview-chinese-crlf-trailing-spaces.lrc", 80, u"什么是幸福", u"再让彼此受伤害" },
    { "lrc/lrcview-enhanced-word-timing-chinese.lrc", 26, u"又是九月九重阳夜难聚首",
        u"家中才有自由才有九月九噢" },
    { "lrc/pylrc-crlf-empty-timed-lines.lrc", 66, u"You get up every m", u"Takin' Care Of Bus" },
    // One row per lyric line: a second stamp in front of the same words is not read.
    { "lrc/pylrc-multiple-timestamps-per-line.lrc", 49, u"The Day You Went A", u"Cause I've been mi", 30,
        u"Cause I've been mi" },
    { "lrc/pylrc-spaced-id-tags-negative-offset.lrc", 37, u"Is all you got,", u"a bridge of light." },
    { "lrc/spv2-milliseconds-and-hour-timestamps.lrc", 8, u"This text,", u"Centiseconds with t" },
    // "[offset:+/- Overall ...]" is no number: the read stops with the format's message.
    { "lrc/subsrt-placeholder-id-tags-no-final-newline.lrc", 6, u"Line 1 lyrics", u"Line 6 lyrics", 0 },
    { "smi/sami-parser-broken-tags.smi", 4, u"Lorem ipsum dolor ", u"기다리게 만들 거라는군" },
    { "smi/sami-parser-korean-style-sync-split-across-lines-crlf.smi", 3, u"Lorem ipsum dolor ",
        u"Lorem ipsum dolor " },
    { "smi/sami-parser-two-language-classes-crlf.smi", 7, u"Lorem ipsum dolor ", u"Lorem ipsum dolor " },
    { "smi/spv2-samiparam-two-languages-closing-tags.smi", 4, u"The Speaker", u"SAMI 3000 text" },
    // Tags in lower case are not SYNC tags to the reader: the body is one line.
    { "smi/subaligner-lowercase-quoted-attributes.smi", 17, u"I've spent nearly ", u"(SOUND EFFECT)", 1,
        u"(SOUND EFFECT)" },
    { "smi/subsrt-korean-font-color-tags.smi", 6, u"500년 전,", u"빨리! 빨리!" },
    // The last cue of a file without a line end behind its text is not read.
    { "srt/aspasia-gbk-chinese.srt", 3, u"这是中文", u"再见", 2, u"还有更多的中文" },
    { "srt/astisub-cr-only-line-ends-bom.srt", 3, u"Did one of the las", u"at a busy bus stop" },
    { "srt/astisub-font-b-i-u-tags-no-final-newline.srt", 10, u"[instrumental musi", u"x^3 * x = 100", 9,
        u"Do no fall to the next item" },
    { "srt/astisub-html-entities-bom.srt", 3, u"The man in black f", u"there are other" },
    { "srt/astisub-missing-index-lines.srt", 6, u"(deep rumbling)", u"(computer playing" },
    { "srt/astisub-utf16le-bom-loose-timestamps.srt", 6, u"(deep rumbling)", u"(computer playing" },
    { "srt/dawfilekit-bom-crlf-font-color-music-notes.srt", 5, u"- Subtitles Author", u"♪ Another song lyr" },
    // A cue without a text line takes the next block into it.
    { "srt/openlrc-chinese-empty-text-cue.srt", 8, u"你好", u"123", 7, u"123" },
    { "srt/subtitlejs-big-1586-cues-bom-italics.srt", 1586, u"I used to want to ", u"English - SDH" },
    { "ssa/alexpoint-hp2-kotus-ssa4-wav-lines-cp1252.ssa", 622, u"¡Ayúdenme!", u"No realmente." },
    { "ssa/astisub-cr-only-line-ends.ssa", 3, u"Did one of the las", u"at a busy bus stop" },
    { "ssa/astisub-unknown-section-junk-lines-star-style.ssa", 6, u"(deep rumbling)", u"(computer playing" },
    { "ssa/dotsub-v4plus-content-in-ssa-file-comment-line.ssa", 6, u"[Dotsub", u"to communicate wor" },
    { "ssa/subaligner-pysubs2-written-v4.ssa", 17, u"I've spent nearly ", u"(SOUND EFFECT)" },
    { "ssa/subsrt-leading-space-wrapped-format-line.ssa", 1, u"Like an angel with", u"Like an angel with" },
    { "txt/spv2-tmplayer-pipe-line-break.txt", 6, u"00:01:52:This text", u"00:02:40:Friendly " },
    { "txt/subaligner-plain-untimed-text.txt", 33, u"I've spent nearly ", u"(SOUND EFFECT)" },
    { "txt/subaligner-tmplayer-hh-mm-ss-colon-text.txt", 17, u"00:00:12:I've spen", u"00:01:01:(SOUND EF" },
};

// The text of a dialogue cell as it reads: override blocks and markup tags left out.
QString readable(QString text)
{
    static const QRegularExpression blocks(QStringLiteral("\\{[^}]*\\}|<[^>]*>"));
    return text.remove(blocks);
}

class ModernRealFiles : public GridOpsTest
{
protected:
    void SetUp() override
    {
        GridOpsTest::SetUp();
        if (!QFileInfo(QStringLiteral(VELMAR_TESTDATA)).isDir())
            GTEST_SKIP() << "no real test files here";
        prompt.DefaultYesNo = MsgBoxResult::Yes;
        ModernFiles = true;
    }
    void TearDown() override
    {
        ModernFiles = false;
        GridOpsTest::TearDown();
    }
};

TEST_F(ModernRealFiles, EveryFileOpensLineByLine)
{
    for (const Expected &e : expectations) {
        SCOPED_TRACE(e.File);
        auto doc = Class::Make<CTiming>();
        CTimingGrid grid;
        grid.SetDocument(doc.get());
        ASSERT_EQ(basTimingFile::OpenTimingFile(*doc, QStringLiteral(VELMAR_TESTDATA "/") + e.File),
            basTimingFile::OpenResult::Opened);
        EXPECT_FALSE(doc->BareLineFeeds);
        const CSpread &cells = grid.Spread();
        int last = cells.MaxRows();
        while (last > 0 && grid.IsRowBlank(last))
            --last;
        EXPECT_EQ(last, e.Read >= 0 ? e.Read : e.Lines);
        if (last < 1)
            continue;
        EXPECT_TRUE(readable(cells.GetText(CTimingGrid::ColDialog, 1)).contains(QString::fromUtf16(e.First)))
            << cells.GetText(CTimingGrid::ColDialog, 1).toStdString();
        const QString lastText = QString::fromUtf16(e.Read >= 0 ? e.ReadLast : e.Last);
        EXPECT_TRUE(readable(cells.GetText(CTimingGrid::ColDialog, last)).contains(lastText))
            << cells.GetText(CTimingGrid::ColDialog, last).toStdString();
    }
}

} // namespace
