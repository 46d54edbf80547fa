#include "core/CScriptedPrompt.h"
#include "core/VelmarError.h"
#include "effects/basEffectTag.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

using namespace basEffectTag;

namespace {

const QString NoEffect = QStringLiteral("设置可能有错误，不能产生效果符号");

class TagTest : public ::testing::Test
{
protected:
    void SetUp() override { SetPrompt(&prompt); }
    void TearDown() override { SetPrompt(nullptr); }

    QString build(int tag) { return BuildTag(page, tag); }

    CScriptedPrompt prompt;
    CTagPage page;
};

} // namespace

TEST(TagColourText, PadsToSixUpperCaseDigits)
{
    EXPECT_EQ(ColourText(255), QStringLiteral("&H0000FF"));
    EXPECT_EQ(ColourText(0), QStringLiteral("&H000000"));
    EXPECT_EQ(ColourText(0xABCDEF), QStringLiteral("&HABCDEF"));
}

TEST_F(TagTest, ColourWithoutAlphaGivesTheColourPartOnly)
{
    page.picColor = 255;
    page.sldAlpha = 0;
    page.optAlpha = 2;
    EXPECT_EQ(build(1), QStringLiteral("{\\c&H0000FF&}"));
    page.optColor = 2;
    EXPECT_EQ(build(1), QStringLiteral("{\\3c&H0000FF&}"));
}

TEST_F(TagTest, ColourWithAlphaPutsTheAlphaFirst)
{
    page.picColor = 0x00FF00;
    page.sldAlpha = 10;
    page.optAlpha = -1;
    EXPECT_EQ(build(1), QStringLiteral("{\\alpha&H0A&\\c&H00FF00&}"));
    page.optAlpha = 0;
    page.optColor = 3;
    page.sldAlpha = 255;
    EXPECT_EQ(build(1), QStringLiteral("{\\1a&HFF&\\4c&H00FF00&}"));
}

TEST_F(TagTest, NumberBoxesGoThroughIntegerRounding)
{
    page.txtFontSize = QStringLiteral("12.6");
    EXPECT_EQ(build(3), QStringLiteral("{\\fs13}"));
    page.txtShadow = QStringLiteral("2.5"); // ties to even
    EXPECT_EQ(build(10), QStringLiteral("{\\shad2}"));
    page.txtBorder = QStringLiteral("3.5");
    EXPECT_EQ(build(11), QStringLiteral("{\\bord4}"));
    page.txtDistance = QStringLiteral("-1.4");
    EXPECT_EQ(build(12), QStringLiteral("{\\fsp-1}"));
    page.txtKaraOK = QStringLiteral("49.5");
    EXPECT_EQ(build(16), QStringLiteral("{\\K50}"));
}

TEST_F(TagTest, ABoxWithoutANumberBuildsNoTag)
{
    page.txtFontSize = QStringLiteral("abc");
    try {
        build(3);
        FAIL() << "no error";
    } catch (const VelmarError &e) {
        EXPECT_EQ(e.Number(), VelmarErr::TypeMismatch);
    }
    page.txtBorder = QStringLiteral("1e12");
    EXPECT_THROW(build(11), VelmarError);
}

TEST_F(TagTest, AlignmentInBothNumberings)
{
    const int oldForm[10] = { 0, 1, 2, 3, 9, 10, 11, 5, 6, 7 };
    for (int keypad = 1; keypad <= 9; ++keypad) {
        page.optAlignment = keypad - 1;
        page.optAlia = 0;
        EXPECT_EQ(build(8), QStringLiteral("{\\an%1}").arg(keypad));
        page.optAlia = 1;
        EXPECT_EQ(build(8), QStringLiteral("{\\a%1}").arg(oldForm[keypad]));
    }
}

TEST_F(TagTest, PlainTextTags)
{
    page.lstFontName = QStringLiteral("楷体");
    EXPECT_EQ(build(2), QStringLiteral("{\\fn楷体}"));
    page.txtOrgX = QStringLiteral("10.5");
    page.txtOrgY = QStringLiteral("20");
    EXPECT_EQ(build(18), QStringLiteral("{\\org(10.5,20)}"));
    page.txtSiteX = QStringLiteral("100");
    page.txtSiteY = QStringLiteral("200");
    EXPECT_EQ(build(19), QStringLiteral("{\\pos(100,200)}"));
    page.txtClipStart = { QStringLiteral("1"), QStringLiteral("2") };
    page.txtClipEnd = { QStringLiteral("3"), QStringLiteral("4") };
    EXPECT_EQ(build(20), QStringLiteral("{\\clip(1,2,3,4)}"));
    page.optWrap = 3;
    EXPECT_EQ(build(21), QStringLiteral("{\\q3}"));
    page.txtEncode = QStringLiteral("134");
    EXPECT_EQ(build(22), QStringLiteral("{\\fe134}"));
    EXPECT_EQ(build(23), QStringLiteral("{\\r}"));
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(TagTest, RotationTakesTheTickedAxesInOrder)
{
    page.chkRotate = { true, false, true, false, false, false };
    page.txtRotateAngle = { QStringLiteral("45"), QStringLiteral("9"), QStringLiteral("-30.5"), QString(),
        QString(), QString() };
    EXPECT_EQ(build(13), QStringLiteral("{\\frx45\\frz-30.5}"));
}

TEST_F(TagTest, GradualRotationStartsFromTheSecondSetOfBoxes)
{
    page.chkRotate = { false, false, true, false, true, false };
    page.txtRotateAngle
        = { QString(), QString(), QStringLiteral("360"), QString(), QStringLiteral("10"), QString() };
    page.chkAccel = true;
    page.txtAccelStart = QStringLiteral("0");
    page.txtAccelEnd = QStringLiteral("3000");
    page.txtAccel = QStringLiteral("1.5");
    EXPECT_EQ(build(13), QStringLiteral("{\\fry10\\t(0,3000,1.5,\\frz360)}"));
    // without a ticked start box the wrapper stands alone
    page.chkRotate[4] = false;
    EXPECT_EQ(build(13), QStringLiteral("{\\t(0,3000,1.5,\\frz360)}"));
}

TEST_F(TagTest, GradualWrapperButNeverForTheLineBreak)
{
    page.chkAccel = true;
    page.txtAccelStart = QStringLiteral("100");
    page.txtAccelEnd = QStringLiteral("900");
    page.txtAccel = QStringLiteral("2");
    page.txtFontSize = QStringLiteral("30");
    EXPECT_EQ(build(0), QStringLiteral("{\\N}"));
    EXPECT_EQ(build(3), QStringLiteral("{\\t(100,900,2,\\fs30)}"));
    // a ticked box wraps whatever tab it is built for
    EXPECT_EQ(build(23), QStringLiteral("{\\t(100,900,2,\\r)}"));
}

TEST_F(TagTest, ScalingByTheFilledBoxes)
{
    page.txtScale = { QStringLiteral("150"), QStringLiteral("  ") };
    EXPECT_EQ(build(14), QStringLiteral("{\\fscx150}"));
    page.txtScale = { QString(), QStringLiteral("80.5") };
    EXPECT_EQ(build(14), QStringLiteral("{\\fscy80}"));
    page.txtScale = { QStringLiteral("120"), QStringLiteral("90") };
    EXPECT_EQ(build(14), QStringLiteral("{\\fscx120\\fscy90}"));
}

TEST_F(TagTest, EmptyScalingShowsTheMessageAndGivesNothing)
{
    page.txtScale = { QStringLiteral(" "), QString() };
    page.chkAccel = true;
    EXPECT_EQ(build(14), QString());
    ASSERT_EQ(prompt.Messages().size(), 1);
    EXPECT_EQ(prompt.Messages().first(), NoEffect);
}

TEST_F(TagTest, OtherEmptyBodiesShowTheMessage)
{
    page.chkRotate = {};
    EXPECT_EQ(build(13), QString());
    EXPECT_EQ(build(24), QString());
    page.optWrap = -1;
    EXPECT_EQ(build(21), QString());
    EXPECT_EQ(prompt.Messages(), QStringList({ NoEffect, NoEffect, NoEffect }));
    // a name part alone is not empty
    page.lstFontName.clear();
    EXPECT_EQ(build(2), QStringLiteral("{\\fn}"));
}

TEST_F(TagTest, FadingInBothForms)
{
    page.optFading = 0;
    page.txtAlpha = { QStringLiteral("255"), QStringLiteral("0"), QStringLiteral("254.5") };
    page.txtFadingTime = { QStringLiteral("0"), QStringLiteral("500.4"), QStringLiteral("1000"),
        QStringLiteral("1500"), QStringLiteral("7"), QStringLiteral("8") };
    EXPECT_EQ(build(15), QStringLiteral("{\\fade(255,0,254,0,500,1000,1500)}"));
    page.optFading = 1;
    EXPECT_EQ(build(15), QStringLiteral("{\\fad(7,8)}"));
}

TEST_F(TagTest, MoveNeedsBothTimeBoxesForSixArguments)
{
    page.txtMoveStart = { QStringLiteral("10"), QStringLiteral("20") };
    page.txtMoveEnd = { QStringLiteral("30"), QStringLiteral("40") };
    page.txtMoveTime = { QStringLiteral("100"), QStringLiteral(" ") };
    EXPECT_EQ(build(17), QStringLiteral("{\\move(10,20,30,40)}"));
    page.txtMoveTime = { QString(), QStringLiteral("200") };
    EXPECT_EQ(build(17), QStringLiteral("{\\move(10,20,30,40)}"));
    page.txtMoveTime = { QStringLiteral("100"), QStringLiteral("200") };
    EXPECT_EQ(build(17), QStringLiteral("{\\move(10,20,30,40,100,200)}"));
}

TEST(TagKaraokeRecording, DurationInWholeHundredths)
{
    CKaraokeRecording rec;
    rec.KaraOKRecording = true;
    rec.KaraOKStartTime = 1.0;
    QString cell = QStringLiteral("{\\K10}云");
    // 1.024 s on the player, 0.1 s of reaction offset: 0.124 s since the last stroke
    ASSERT_TRUE(RecordKaraokeLyric(rec, 1.024, 0.1, cell, QStringLiteral("帆")));
    EXPECT_EQ(cell, QStringLiteral("{\\K10}云{\\K12}帆"));
    EXPECT_DOUBLE_EQ(rec.KaraOKStartTime, 1.124);
    EXPECT_TRUE(rec.Changed);
    ASSERT_TRUE(RecordKaraokeLyric(rec, 1.5245, 0.1, cell, QString()));
    EXPECT_EQ(cell, QStringLiteral("{\\K10}云{\\K12}帆{\\K50}"));
}

TEST(TagKaraokeRecording, NegativeDurationRoundsDown)
{
    CKaraokeRecording rec;
    rec.KaraOKRecording = true;
    rec.KaraOKStartTime = 5.0;
    QString cell;
    RecordKaraokeLyric(rec, 4.995, 0, cell, QStringLiteral("a"));
    EXPECT_EQ(cell, QStringLiteral("{\\K-1}a"));
}

TEST(TagKaraokeRecording, NothingWhileNotRecording)
{
    CKaraokeRecording rec;
    rec.KaraOKStartTime = 2;
    QString cell = QStringLiteral("old");
    EXPECT_FALSE(RecordKaraokeLyric(rec, 9, 0, cell, QStringLiteral("x")));
    EXPECT_EQ(cell, QStringLiteral("old"));
    EXPECT_EQ(rec.KaraOKStartTime, 2);
    EXPECT_FALSE(rec.Changed);
}
