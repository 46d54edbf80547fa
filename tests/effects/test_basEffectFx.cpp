#include "core/VelmarError.h"
#include "effects/CEffectHistory.h"
#include "effects/basEffectFx.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

using namespace basEffectFx;

namespace {

CEffectArgs boxes(const QString &text, std::initializer_list<const char *> values)
{
    CEffectArgs args;
    args.rtfArg = text;
    int i = 0;
    for (const char *v : values)
        args.txtArg[i++] = QString::fromLatin1(v);
    return args;
}

int errorOf(const std::function<void()> &f)
{
    try {
        f();
    } catch (const VelmarError &e) {
        return e.Number();
    }
    return 0;
}

void setRows(CEffectSpread &grid, std::initializer_list<std::pair<const char *, const char *>> rows)
{
    grid.setMaxRows(int(rows.size()));
    int r = 1;
    for (const auto &[a, b] : rows) {
        grid.setText(r, 1, QString::fromLatin1(a));
        grid.setText(r, 2, QString::fromLatin1(b));
        ++r;
    }
}

} // namespace

// ---- colour cycle

TEST(ColourCycle, WavesStartEarlierForLaterCharacters)
{
    CEffectArgs args = boxes(QStringLiteral("ab"), { "0", "2", "1", "2", "200", "100", "20", "0" });
    args.picArg = { 0x0000FF, 0xFF0000 };
    const CEffectResult r = BuildColourCycle(args);
    ASSERT_EQ(r.Lines.size(), 2);
    // the first character stands at X0 + DX, not at X0
    EXPECT_EQ(r.Lines[0],
        QStringLiteral("{\\pos(220,100)}{\\c&H0000FF&}{\\t(0,1000,1,\\c&HFF0000&)}"
                       "{\\t(1000,2000,1,\\c&H0000FF&)}a"));
    EXPECT_EQ(r.Lines[1],
        QStringLiteral("{\\pos(240,100)}{\\c&H0000FF&}{\\t(-500,500,1,\\c&HFF0000&)}"
                       "{\\t(500,1500,1,\\c&H0000FF&)}{\\t(1500,2500,1,\\c&HFF0000&)}b"));
    EXPECT_EQ(r.Text(), r.Lines[0] + QStringLiteral("\r\n") + r.Lines[1] + QStringLiteral("\r\n"));
}

TEST(ColourCycle, EndTakesTheIntegerPartAndStartRoundsTheNext)
{
    CEffectArgs args = boxes(QStringLiteral("x"), { "0", "0.9", "0.3333", "5", "0", "0", "10", "5" });
    args.picArg = { 0, 0xFFFFFF };
    const QString line = BuildColourCycle(args).Lines[0];
    EXPECT_EQ(line,
        QStringLiteral("{\\pos(10,5)}{\\c&H000000&}{\\t(0,333,1,\\c&HFFFFFF&)}"
                       "{\\t(333,666,1,\\c&H000000&)}{\\t(667,999,1,\\c&HFFFFFF&)}x"));
}

TEST(ColourCycle, NoTimeLeavesTheCharacterBare)
{
    CEffectArgs args = boxes(QStringLiteral("字幕"), { "0", "0", "1", "5", "200", "100", "20", "0" });
    const CEffectResult r = BuildColourCycle(args);
    EXPECT_EQ(r.Lines[0], QStringLiteral("字"));
    // the second starts before zero, so it still gets its tags
    EXPECT_TRUE(r.Lines[1].startsWith(QStringLiteral("{\\pos(240,100)}")));
    EXPECT_TRUE(r.Lines[1].endsWith(QStringLiteral("(-200,800,1,\\c&H0000FF&)}幕")));
}

TEST(ColourCycle, StartOffsetLengthensTheRun)
{
    CEffectArgs args = boxes(QStringLiteral("a"), { "1", "1", "1", "5", "0", "0", "0", "0" });
    EXPECT_EQ(BuildColourCycle(args).Lines[0].count(QStringLiteral("{\\t(")), 2);
}

TEST(ColourCycle, FaultsOfTheBoxes)
{
    EXPECT_EQ(errorOf([] { BuildColourCycle(boxes("ab", { "0", "2", "1", "x", "0", "0", "0", "0" })); }), 13);
    // no characters per cycle: 0 / 0 for the first character
    EXPECT_EQ(errorOf([] { BuildColourCycle(boxes("ab", { "0", "2", "1", "0", "0", "0", "0", "0" })); }), 6);
    EXPECT_TRUE(
        BuildColourCycle(boxes(QString(), { "0", "2", "1", "0", "0", "0", "0", "0" })).Lines.isEmpty());
}

TEST(ColourCycle, EndlessCyclesAreCut)
{
    const CEffectResult r = BuildColourCycle(boxes("ab", { "0", "5", "0", "5", "0", "0", "0", "0" }));
    ASSERT_EQ(r.Lines.size(), 2);
    EXPECT_EQ(r.Lines[0].count(QStringLiteral("{\\t(")), 1);
    // a millisecond cycle over a day: bounded for the whole text, every character kept
    const CEffectResult day
        = BuildColourCycle(boxes("abc", { "0", "86400", "0.001", "5", "0", "0", "0", "0" }));
    ASSERT_EQ(day.Lines.size(), 3);
    EXPECT_EQ(day.Text().count(QStringLiteral("{\\t(")), MaxColourSteps);
    EXPECT_TRUE(day.Lines[2].endsWith(u'c'));
}

// ---- move

TEST(Move, FourArgumentsWithoutTimes)
{
    const CEffectResult r = BuildMove(boxes("ab", { "10", "10", "300", "300", "5", "-3", "0", "0", "10" }));
    EXPECT_EQ(r.Lines, QStringList({ "{\\move(10,10,300,300)}a", "{\\move(15,7,305,297)}b" }));
}

TEST(Move, SixArgumentsWhenEitherTimeIsSet)
{
    EXPECT_EQ(BuildMove(boxes("a", { "1", "2", "3", "4", "0", "0", "0", "500", "10" })).Lines[0],
        QStringLiteral("{\\move(1,2,3,4,0,500)}a"));
    EXPECT_EQ(BuildMove(boxes("a", { "1", "2", "3", "4", "0", "0", "-100", "0", "10" })).Lines[0],
        QStringLiteral("{\\move(1,2,3,4,-100,0)}a"));
}

TEST(Move, SliderSelectionMakesTheSameFadeForEveryCharacter)
{
    CEffectArgs args = boxes("ab", { "30", "450", "30", "50", "0", "0", "0", "0", "10" });
    args.sldArg = CEffectSlider { 100, 0, 0, 0 };
    args.sldArg.SelectRange(20, 80);
    const CEffectResult r = BuildMove(args);
    EXPECT_EQ(r.Lines,
        QStringList({ "{\\fade(255,0,255,0,2000,8000,10000)}{\\move(30,450,30,50)}a",
            "{\\fade(255,0,255,0,2000,8000,10000)}{\\move(30,450,30,50)}b" }));
}

TEST(Move, FadeTimesRoundToIntegers)
{
    CEffectArgs args = boxes("a", { "0", "0", "0", "0", "0", "0", "0", "0", "1" });
    args.sldArg = CEffectSlider { 3, 0, 1, 1 };
    EXPECT_EQ(
        BuildMove(args).Lines[0], QStringLiteral("{\\fade(255,0,255,0,333,667,1000)}{\\move(0,0,0,0)}a"));
    args.sldArg = CEffectSlider { 0, 0, 1, 1 };
    EXPECT_EQ(errorOf([&] { BuildMove(args); }), 11);
}

TEST(Move, NoSelectionNoFade)
{
    CEffectArgs args = boxes("a", { "0", "0", "0", "0", "0", "0", "0", "0", "10" });
    args.sldArg = CEffectSlider { 100, 50, 30, 0 };
    EXPECT_FALSE(BuildMove(args).Lines[0].contains(QStringLiteral("fade")));
}

// ---- position steps

TEST(PositionSteps, EachCharacterOneStepFurther)
{
    const CEffectResult r = BuildPositionSteps(boxes("字幕组", { "100", "100", "0", "20" }));
    EXPECT_EQ(r.Lines, QStringList({ "{\\pos(100,100)}字", "{\\pos(100,120)}幕", "{\\pos(100,140)}组" }));
    EXPECT_EQ(r.Text(), QStringLiteral("{\\pos(100,100)}字\r\n{\\pos(100,120)}幕\r\n{\\pos(100,140)}组\r\n"));
}

TEST(PositionSteps, SpacingIsReadOnlyForCharacters)
{
    EXPECT_TRUE(BuildPositionSteps(boxes("", { "1", "2", "x", "y" })).Lines.isEmpty());
    EXPECT_EQ(errorOf([] { BuildPositionSteps(boxes("", { "x", "2", "0", "0" })); }), 13);
    EXPECT_EQ(errorOf([] { BuildPositionSteps(boxes("ab", { "1", "2", "x", "0" })); }), 13);
    EXPECT_EQ(
        BuildPositionSteps(boxes("a", { "1.5", "2.5", "0", "0" })).Lines[0], QStringLiteral("{\\pos(2,2)}a"));
}

// ---- drawing

TEST(Drawing, TriangleWithTheCurveLetterAfterTheFirstPoint)
{
    CEffectArgs args;
    args.sldArg.Value = 1;
    setRows(args.spdArg, { { "10", "20" }, { "30", "40" }, { "50", "60" } });
    const CEffectResult r = BuildDrawing(args);
    EXPECT_FALSE(r.LineEnds);
    EXPECT_EQ(r.Text(), QStringLiteral("{\\p1}m 10 20 s 30 40 50 60 c{\\p0}"));
}

TEST(Drawing, ScaleMultipliesByAPowerOfTwo)
{
    CEffectArgs args;
    args.sldArg.Value = 3;
    setRows(args.spdArg, { { "10", "20" }, { "1.1", "2" } });
    EXPECT_EQ(BuildDrawing(args).Text(), QStringLiteral("{\\p3}m 40 80 s 4 8 c{\\p0}"));
    args.sldArg.Value = 0; // below 2 counts as 1
    EXPECT_EQ(BuildDrawing(args).Text(), QStringLiteral("{\\p1}m 10 20 s 1 2 c{\\p0}"));
}

TEST(Drawing, OneKeptRowHasNoCurveLetter)
{
    CEffectArgs args;
    setRows(args.spdArg, { { "10", "20" }, { " ", "5" }, { "7", "" } });
    EXPECT_EQ(BuildDrawing(args).Text(), QStringLiteral("{\\p1}m 10 20 c{\\p0}"));
    args.optDrawMN = 1;
    args.txtDrawYbaseline = QStringLiteral("-5");
    EXPECT_EQ(BuildDrawing(args).Text(), QStringLiteral("{\\p1}{\\pbo-5}n 10 20 c{\\p0}"));
    args.spdArg.setMaxRows(0);
    EXPECT_EQ(BuildDrawing(args).Text(), QStringLiteral("{\\p1}{\\pbo-5}c{\\p0}"));
}

// ---- karaoke

TEST(Karaoke, SplitsAtEachTagInAnyCase)
{
    const auto r = SplitKaraoke(QStringLiteral("前{\\K50}云{\\k40}帆{\\kf30}字{\\Ko7}幕{\\K1a2}组"));
    ASSERT_EQ(r.size(), 6);
    EXPECT_EQ(r[0].Text, QStringLiteral("前"));
    EXPECT_EQ(r[1].TagName, QStringLiteral("K"));
    EXPECT_EQ(r[1].Duration, 50);
    EXPECT_EQ(r[1].Text, QStringLiteral("云"));
    EXPECT_EQ(r[2].TagName, QStringLiteral("k"));
    EXPECT_EQ(r[3].TagName, QStringLiteral("kf"));
    EXPECT_EQ(r[3].Duration, 30);
    EXPECT_EQ(r[4].TagName, QStringLiteral("Ko"));
    EXPECT_EQ(r[5].Duration, 12) << "every digit up to the brace counts";
    EXPECT_EQ(r[5].Text, QStringLiteral("组"));
}

TEST(Karaoke, DurationIsSixteenBits)
{
    EXPECT_EQ(SplitKaraoke(QStringLiteral("{\\K32767}a"))[1].Duration, 32767);
    EXPECT_EQ(errorOf([] { SplitKaraoke(QStringLiteral("{\\K32768}a")); }), 6);
}

TEST(Karaoke, UnclosedTagStaysText)
{
    const auto r = SplitKaraoke(QStringLiteral("a{\\K10}b{\\K20 c"));
    ASSERT_EQ(r.size(), 2);
    EXPECT_EQ(r[1].Text, QStringLiteral("b{\\K20 c"));
}

TEST(KaraokePlus, EachSyllableGetsItsOwnSpan)
{
    CEffectArgs args;
    args.rtfArg = QStringLiteral("前{\\K50}云{\\kf40}帆");
    args.txtArg[0] = QStringLiteral("\\1c&HFF0000&");
    args.chkArg = false;
    const CEffectResult plain = BuildKaraokePlus(args);
    EXPECT_FALSE(plain.LineEnds);
    EXPECT_EQ(plain.Text(),
        QStringLiteral("前{\\t(0,500,\\1c&HFF0000&)}云{\\r}{\\t(500,900,\\1c&HFF0000&)}帆{\\r}"));
    args.chkArg = true;
    EXPECT_EQ(BuildKaraokePlus(args).Text(),
        QStringLiteral(
            "前{\\t(0,500,\\1c&HFF0000&)}{\\K50}云{\\r}{\\t(500,900,\\1c&HFF0000&)}{\\kf40}帆{\\r}"));
}

TEST(KaraokePlus, TextWithoutTagsComesBackAsItIs)
{
    CEffectArgs args;
    args.rtfArg = QStringLiteral("没有标签的一行 {\\b1}");
    args.txtArg[0] = QStringLiteral("\\\\alpha&HFF&");
    EXPECT_EQ(BuildKaraokePlus(args).Text(), args.rtfArg);
    args.rtfArg.clear();
    EXPECT_EQ(BuildKaraokePlus(args).Text(), QString());
}

// ---- time difference

TEST(TimeDifference, RowsOneAndTwoGiveTheStep)
{
    CEffectSpread grid;
    setRows(grid, { { "0:00:05.00", "0:00:15.00" }, { "0:00:06.00", "0:00:16.00" } });
    BuildTimeDifference(0, QStringLiteral("5"), grid);
    ASSERT_EQ(grid.MaxRows(), 6);
    EXPECT_EQ(grid.Text(3, 1), QStringLiteral("0:00:07.00"));
    EXPECT_EQ(grid.Text(5, 1), QStringLiteral("0:00:09.00"));
    EXPECT_EQ(grid.Text(5, 2), QStringLiteral("0:00:19.00"));
    EXPECT_EQ(grid.Text(6, 1), QString());
}

TEST(TimeDifference, ThirdRowAddsAccelerationWithTheRunningCounter)
{
    CEffectSpread grid;
    setRows(grid,
        { { "0:00:01.00", "0:00:01.00" }, { "0:00:02.00", "0:00:02.00" }, { "0:00:04.00", "0:00:04.00" } });
    BuildTimeDifference(1, QStringLiteral("6"), grid);
    // d = 1 and acc = 1; the counter starts at 0 and is not reset for the second column
    const char *expected[2][3]
        = { { "0:00:04.00", "0:00:09.00", "0:00:15.00" }, { "0:00:10.00", "0:00:15.00", "0:00:21.00" } };
    for (int col = 1; col <= 2; ++col)
        for (int row = 4; row <= 6; ++row)
            EXPECT_EQ(grid.Text(row, col), QString::fromLatin1(expected[col - 1][row - 4]))
                << row << "," << col;
    EXPECT_EQ(grid.MaxRows(), 7);
}

TEST(TimeDifference, FirstAndLastRowAreSharedOut)
{
    CEffectSpread grid;
    setRows(grid,
        { { "0:00:00.00", "0:00:01.00" }, { "", "" }, { "", "" }, { "", "" },
            { "0:00:10.00", "0:00:03.00" } });
    BuildTimeDifference(2, QStringLiteral("5"), grid);
    EXPECT_EQ(grid.MaxRows(), 5);
    EXPECT_EQ(grid.Text(2, 1), QStringLiteral("0:00:02.50"));
    EXPECT_EQ(grid.Text(4, 1), QStringLiteral("0:00:07.50"));
    EXPECT_EQ(grid.Text(5, 1), QStringLiteral("0:00:10.00"));
    EXPECT_EQ(grid.Text(3, 2), QStringLiteral("0:00:02.00"));
    EXPECT_EQ(errorOf([&] { BuildTimeDifference(2, QStringLiteral("1"), grid); }), 6);
    EXPECT_EQ(errorOf([&] { BuildTimeDifference(0, QStringLiteral("ten"), grid); }), 13);
}

// ---- applying and history

TEST(ResultText, SplitKeepsTheEmptyTail)
{
    EXPECT_EQ(SplitResultText(QStringLiteral("a\r\nb\r\n")), QStringList({ "a", "b", "" }));
    EXPECT_EQ(SplitResultText(QStringLiteral("a\nb")), QStringList({ "a\nb" }));
}

TEST(ResultHistory, KeepsTextsBeforeGenerationsAndStepsThroughThem)
{
    CEffectHistory h;
    EXPECT_FALSE(h.BackEnabled());
    h.Remember(QString()); // first generation: the empty box is kept
    h.Changed(); // the box shows "one"
    EXPECT_TRUE(h.BackEnabled());
    EXPECT_FALSE(h.ForwardEnabled());
    h.Remember(QStringLiteral("one")); // second generation adds to the first
    h.Changed(); // the box shows "one two"
    h.Remember(QStringLiteral("one two")); // page change
    h.Remember(QStringLiteral("one two")); // another page change: kept already
    EXPECT_EQ(h.Items(), QStringList({ "", "one", "one two" }));
    EXPECT_EQ(h.Back(QStringLiteral("one two")), QStringLiteral("one"));
    EXPECT_TRUE(h.ForwardEnabled());
    EXPECT_EQ(h.Back(QStringLiteral("one")), QString());
    EXPECT_FALSE(h.Back(QString()).has_value());
    EXPECT_EQ(h.Forward(), QStringLiteral("one"));
    EXPECT_EQ(h.Forward(), QStringLiteral("one two"));
    EXPECT_FALSE(h.Forward().has_value());
    EXPECT_EQ(h.Items().size(), 3);
}
