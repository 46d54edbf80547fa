#include "core/CScriptedPrompt.h"
#include "core/CSpread.h"
#include "core/Class.h"
#include "effects/basEffectApply.h"
#include "effects/basEffectFx.h"
#include "formats/CTiming.h"
#include "player/ITimingPreviewHooks.h"
#include "timing/CTimingGrid.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

using basEffectApply::ApplyResult;

namespace {

struct RecordingPreview : ITimingPreviewHooks
{
    QStringList calls;
    void CreatePreviewLine(int row) override { calls << QStringLiteral("create %1").arg(row); }
    void DeletePreviewLine(int row) override { calls << QStringLiteral("delete %1").arg(row); }
    void UpdatePreviewCell(int col, int row) override
    {
        calls << QStringLiteral("cell %1 %2").arg(col).arg(row);
    }
    void ClearPreview() override { calls << QStringLiteral("clear"); }
};

class EffectApply : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        grid.ResetGrid(); // two rows
        grid.SetPreviewHooks(&preview);
    }
    void TearDown() override { SetPrompt(nullptr); }

    QString dialog(int row) const { return grid.Spread().GetText(CTimingGrid::ColDialog, row); }

    CScriptedPrompt prompt;
    CTimingGrid grid;
    RecordingPreview preview;
};

} // namespace

TEST_F(EffectApply, NoTimingWindowNoWriting)
{
    EXPECT_FALSE(ApplyResult(nullptr, QStringLiteral("x")));
    EXPECT_EQ(prompt.Messages(), QStringList { QStringLiteral("没有找到时间轴窗口") });
}

TEST_F(EffectApply, LinesGoDownTheDialogueColumnFromTheActiveRow)
{
    CSpread &spread = grid.Spread();
    spread.SetActiveCell(3, 1);
    spread.setRow(2);
    spread.setCol(5);
    ASSERT_TRUE(ApplyResult(&grid, QStringLiteral("{\\pos(1,2)}a\r\n{\\pos(3,4)}b\r\nc")));
    EXPECT_EQ(dialog(1), QStringLiteral("{\\pos(1,2)}a"));
    EXPECT_EQ(dialog(2), QStringLiteral("{\\pos(3,4)}b"));
    EXPECT_EQ(dialog(3), QStringLiteral("c"));
    // each step onto the last row adds a row at the end
    EXPECT_EQ(spread.MaxRows(), 5);
    EXPECT_EQ(dialog(4), QString());
    EXPECT_TRUE(prompt.Messages().isEmpty());
    // the remembered cell is the current and the active one again
    EXPECT_EQ(spread.Row(), 2);
    EXPECT_EQ(spread.Col(), 5);
    EXPECT_EQ(spread.ActiveRow(), 2);
    EXPECT_EQ(spread.ActiveCol(), 5);
    // the preview hears of every written cell, and of each new row
    EXPECT_EQ(preview.calls,
        QStringList({ "cell 15 1", "create 3", "cell 15 2", "create 4", "cell 15 3", "create 5" }));
}

TEST_F(EffectApply, ExistingTextIsReplacedAndAFinalBreakClearsTheNextRow)
{
    CSpread &spread = grid.Spread();
    grid.AppendRow();
    grid.AppendRow(); // rows 1 to 4
    for (int row = 1; row <= 4; ++row)
        spread.SetText(CTimingGrid::ColDialog, row, QStringLiteral("old %1").arg(row));
    spread.SetActiveCell(15, 2);
    spread.setRow(2);
    spread.setCol(15);
    ASSERT_TRUE(ApplyResult(&grid, QStringLiteral("new\r\n")));
    EXPECT_EQ(dialog(1), QStringLiteral("old 1"));
    EXPECT_EQ(dialog(2), QStringLiteral("new"));
    EXPECT_EQ(dialog(3), QString());
    EXPECT_EQ(dialog(4), QStringLiteral("old 4"));
    EXPECT_EQ(spread.MaxRows(), 5); // the empty part stepped onto row 4, the last
    EXPECT_EQ(dialog(5), QString());
}

TEST_F(EffectApply, WritingThatBeginsOnTheLastRowLosesNothing)
{
    CSpread &spread = grid.Spread();
    spread.SetActiveCell(15, 2);
    ASSERT_TRUE(ApplyResult(&grid, QStringLiteral("a\r\nb")));
    EXPECT_EQ(dialog(2), QStringLiteral("a"));
    EXPECT_EQ(dialog(3), QStringLiteral("b"));
    EXPECT_EQ(spread.MaxRows(), 5);
}

TEST(TimeDifferenceGrid, FillsTheWindowGridAsTheSmallOne)
{
    CSpread grid;
    grid.setMaxCols(2);
    grid.setMaxRows(3);
    const char16_t *rows[3][2] = { { u"0:00:01.00", u"0:00:01.00" }, { u"0:00:02.00", u"0:00:02.00" },
        { u"0:00:04.00", u"0:00:04.00" } };
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 2; ++c)
            grid.SetText(c + 1, r + 1, QString::fromUtf16(rows[r][c]));
    grid.setRow(1);
    grid.setCol(1);
    basEffectFx::BuildTimeDifference(1, QStringLiteral("6"), grid);
    // d = 1 and acc = 1; the row counter runs on into the second column
    EXPECT_EQ(grid.GetText(1, 4), QStringLiteral("0:00:04.00"));
    EXPECT_EQ(grid.GetText(1, 5), QStringLiteral("0:00:09.00"));
    EXPECT_EQ(grid.GetText(1, 6), QStringLiteral("0:00:15.00"));
    EXPECT_EQ(grid.GetText(2, 4), QStringLiteral("0:00:10.00"));
    EXPECT_EQ(grid.GetText(2, 6), QStringLiteral("0:00:21.00"));
    EXPECT_EQ(grid.MaxRows(), 7);
    EXPECT_EQ(grid.GetText(1, 7), QString());
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 1);
}

TEST_F(EffectApply, KaraokeSyllablesGoIntoTheActiveDialogue)
{
    auto timing = Class::Make<CTiming>();
    CSpread &spread = grid.Spread();
    spread.SetText(CTimingGrid::ColDialog, 2, QStringLiteral("{\\K10}a"));
    spread.SetActiveCell(3, 2);
    timing->ReactOffsetStart = -0.2;
    timing->KaraOKStartTime = 10.0;

    EXPECT_FALSE(basEffectApply::RecordKaraokeLyric(*timing, grid, 12, QStringLiteral("b"))); // not recording
    EXPECT_EQ(dialog(2), QStringLiteral("{\\K10}a"));
    EXPECT_FALSE(timing->Changed());

    timing->KaraOKRecording = true;
    // 10.456 + (-0.2) - 10 = 0.256 s: 25 hundredths, rounded down
    EXPECT_TRUE(basEffectApply::RecordKaraokeLyric(*timing, grid, 10.456, QStringLiteral("b")));
    EXPECT_EQ(dialog(2), QStringLiteral("{\\K10}a{\\K25}b"));
    EXPECT_DOUBLE_EQ(timing->KaraOKStartTime, 10.256);
    EXPECT_TRUE(timing->Changed());
    EXPECT_EQ(spread.Row(), 2);
    EXPECT_EQ(spread.Col(), CTimingGrid::ColDialog);
    EXPECT_TRUE(basEffectApply::RecordKaraokeLyric(*timing, grid, 11.256 + 0.2, QStringLiteral("歌")));
    EXPECT_EQ(dialog(2), QStringLiteral("{\\K10}a{\\K25}b{\\K100}歌"));
}
