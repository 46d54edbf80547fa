#include "core/CScriptedPrompt.h"
#include "effects/CEffectWindowModel.h"
#include "timing/CTimingGrid.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

class WindowModel : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        model.Load();
    }
    void TearDown() override { SetPrompt(nullptr); }

    CScriptedPrompt prompt;
    CEffectWindowModel model;
};

} // namespace

TEST_F(WindowModel, NodesAreKeyedByPageAndTheWordPage)
{
    EXPECT_EQ(CEffectWindowModel::PageKey(6), QStringLiteral("PAGE6"));
    EXPECT_EQ(CEffectWindowModel::PageOfKey(QStringLiteral("PAGE6")), 6);
    EXPECT_EQ(CEffectWindowModel::PageOfKey(QStringLiteral("PAGE8")), -1);
    EXPECT_EQ(CEffectWindowModel::PageOfKey(QStringLiteral("6")), -1);
    EXPECT_EQ(CEffectWindowModel::PageCaption(3), QStringLiteral("时间轴差分"));
    EXPECT_FALSE(CEffectWindowModel::PageCaption(5).isEmpty());
}

TEST_F(WindowModel, TheShownGridIsThePagesGridAcrossChanges)
{
    model.SelectPage(3, QString());
    CSpread &grid = model.spdArg();
    ASSERT_EQ(grid.MaxRows(), 3);
    grid.setRow(0);
    grid.setCol(2);
    EXPECT_EQ(grid.Text(), QStringLiteral("结束时间"));
    grid.SetText(1, 2, QStringLiteral("0:00:02.00"));
    // The time difference fills the shown grid; a count that is no number stops it
    // with the fault's text and no result.
    model.Pages.Control(QStringLiteral("txtArg"), 0)->Text = QStringLiteral("5");
    EXPECT_EQ(model.Create(QString()), QString());
    EXPECT_EQ(grid.GetText(1, 5), QStringLiteral("0:00:08.00"));
    model.Pages.Control(QStringLiteral("txtArg"), 0)->Text = QStringLiteral("five");
    EXPECT_EQ(model.Create(QString()), QString());
    EXPECT_EQ(prompt.Messages(), QStringList { QStringLiteral("Type mismatch") });
    model.SelectPage(1, QString());
    EXPECT_EQ(grid.MaxRows(), 10);
    EXPECT_EQ(grid.GetText(1, 5), QString());
    model.SelectPage(3, QString());
    EXPECT_EQ(grid.GetText(1, 5), QStringLiteral("0:00:08.00"));
    // Without a timing window nothing is written.
    EXPECT_FALSE(model.Apply(QStringLiteral("x")));
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("没有找到时间轴窗口"));
}
