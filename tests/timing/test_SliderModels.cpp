#include "core/CScriptedPrompt.h"
#include "core/VelmarError.h"
#include "timing/CSliderModel.h"
#include "timing/CSliderTimeModel.h"

#include <gtest/gtest.h>

namespace {

using F = CSliderTimeModel;

QString Fields(const CSliderTimeModel &m)
{
    return QStringLiteral("%1 %2:%3:%4.%5")
        .arg(m.SignCaption(), m.FieldText(F::FieldHour), m.FieldText(F::FieldMinite),
            m.FieldText(F::FieldSecond), m.FieldText(F::FieldMiniSecond));
}

class SliderTimeTest : public ::testing::Test
{
protected:
    void SetUp() override { SetPrompt(&prompt); }
    void TearDown() override { SetPrompt(nullptr); }

    CScriptedPrompt prompt;
    CSliderTimeModel m;
};

TEST_F(SliderTimeTest, ValueSplitsIntoFieldsWithTheirFormats)
{
    m.setValue(3723.45);
    EXPECT_EQ(Fields(m), "+ 1:02:03.45");
    EXPECT_DOUBLE_EQ(m.Value(), 3723.45);

    m.setValue(-0.1);
    EXPECT_EQ(Fields(m), "- 0:00:00.10");
    EXPECT_DOUBLE_EQ(m.Value(), -0.1);
    m.setValue(0);
    EXPECT_EQ(m.Sign(), 1); // zero counts as positive
    EXPECT_EQ(Fields(m), "+ 0:00:00.00");
}

TEST_F(SliderTimeTest, HoursStopAtNine)
{
    m.setValue(10 * 3600 + 61);
    EXPECT_EQ(Fields(m), "+ 9:01:01.00");
}

TEST_F(SliderTimeTest, WholeNumberArithmeticRoundsBeforeTheMinutes)
{
    // The remainder is taken of the rounded number, so 59.6 seconds shows a minute
    // and 59 seconds: the dialog's own rounding, kept as it is.
    m.setValue(59.6);
    EXPECT_EQ(Fields(m), "+ 0:01:59.60");
    m.setValue(0.5); // half to even: 0, no minute
    EXPECT_EQ(Fields(m), "+ 0:00:00.50");
    m.setValue(0.125); // hundredths round half to even as well
    EXPECT_EQ(m.MiniSecond, 12);
}

TEST_F(SliderTimeTest, DisabledFieldsAreNotWritten)
{
    m.Second = 7;
    m.setEnableSign(false);
    m.setEnableHour(false);
    m.setEnableMinite(false);
    m.setEnableMiniSecond(false);
    m.setValue(5);
    EXPECT_EQ(m.Second, 5);
    m.setValue(3725.5);
    EXPECT_EQ(Fields(m), "+ 0:00:05.00");
    EXPECT_EQ(m.Hour, 0);
    EXPECT_EQ(m.MiniSecond, 0);
    EXPECT_DOUBLE_EQ(m.Value(), 5);
}

TEST_F(SliderTimeTest, SixteenBitSumOverflows)
{
    m.Hour = 9;
    m.Minite = 6;
    m.Second = 7; // 32767 seconds: the largest that fits
    EXPECT_DOUBLE_EQ(m.Value(), 32767);
    m.Second = 8;
    EXPECT_THROW(m.Value(), VelmarError);
    m.Second = 0;
    m.Minite = 59; // nine hours, 59 minutes
    int number = 0;
    try {
        m.Value();
    } catch (const VelmarError &e) {
        number = e.Number();
    }
    EXPECT_EQ(number, 6);
    EXPECT_THROW(m.setValue(1e12), VelmarError);
}

TEST_F(SliderTimeTest, SignButtonSwaps)
{
    m.setValue(2);
    m.ToggleSign();
    EXPECT_EQ(Fields(m), "- 0:00:02.00");
    EXPECT_DOUBLE_EQ(m.Value(), -2);
    m.ToggleSign();
    EXPECT_EQ(m.SignCaption(), "+");
    m.setSign(0);
    EXPECT_EQ(m.Sign(), 1);
}

TEST_F(SliderTimeTest, LeavingAFieldChecksItsRange)
{
    m.setFieldText(F::FieldMinite, QStringLiteral("7"));
    EXPECT_TRUE(m.LeaveField(F::FieldMinite));
    EXPECT_EQ(m.Minite, 7);
    EXPECT_EQ(m.FieldText(F::FieldMinite), "07");

    m.setFieldText(F::FieldHour, QStringLiteral("10"));
    EXPECT_FALSE(m.LeaveField(F::FieldHour));
    m.setFieldText(F::FieldMinite, QStringLiteral("60"));
    EXPECT_FALSE(m.LeaveField(F::FieldMinite));
    m.setFieldText(F::FieldSecond, QStringLiteral("x"));
    EXPECT_FALSE(m.LeaveField(F::FieldSecond));
    m.setFieldText(F::FieldMiniSecond, QStringLiteral("-1"));
    EXPECT_FALSE(m.LeaveField(F::FieldMiniSecond));
    EXPECT_EQ(prompt.Messages(),
        QStringList({ QString::fromUtf8("小时的范围在0-9之内"), QString::fromUtf8("分钟的范围在0-59之内"),
            QString::fromUtf8("秒的范围在0-59之内"), QString::fromUtf8("百分之一秒的范围在0-99之内") }));
    EXPECT_EQ(m.Minite, 7); // a refused text leaves the field
    EXPECT_EQ(m.FieldText(F::FieldHour), "10"); // and the box, for the user to mend

    m.setFieldText(F::FieldSecond, QStringLiteral(" 59 "));
    EXPECT_TRUE(m.LeaveField(F::FieldSecond));
    EXPECT_EQ(m.FieldText(F::FieldSecond), "59");
    m.setFieldText(F::FieldHour, QStringLiteral("0"));
    EXPECT_TRUE(m.LeaveField(F::FieldHour));
    EXPECT_EQ(m.FieldText(F::FieldHour), "0");
}

TEST_F(SliderTimeTest, SpinAndKeys)
{
    m.Spin(F::FieldSecond, 5);
    EXPECT_EQ(m.Second, 5);
    EXPECT_EQ(m.FieldText(F::FieldSecond), "05");
    m.Spin(F::FieldHour, 12);
    EXPECT_EQ(m.FieldText(F::FieldHour), "9");
    EXPECT_TRUE(CSliderTimeModel::KeyAccepted('7'));
    EXPECT_TRUE(CSliderTimeModel::KeyAccepted(8)); // backspace
    EXPECT_FALSE(CSliderTimeModel::KeyAccepted('-'));
    EXPECT_FALSE(CSliderTimeModel::KeyAccepted('a'));
}

TEST(SliderTest, InitTakesTheMiddleWithoutACurrentValue)
{
    CSliderModel s;
    s.Init(-1, 1, 0.01);
    EXPECT_EQ(s.SliderMax(), 200);
    EXPECT_DOUBLE_EQ(s.CurValue(), 0);
    EXPECT_EQ(s.SliderPosition(), 100);
    s.Init(0, 10, 3, 6);
    EXPECT_EQ(s.SliderMax(), 3); // int(10 / 3 + 0.5)
    EXPECT_EQ(s.SliderPosition(), 2);
}

TEST(SliderTest, CurValueOnlyWithinTheRange)
{
    CSliderModel s;
    s.Init(0, 2, 0.5, 1);
    s.setCurValue(2.00000005); // within the tolerance
    EXPECT_DOUBLE_EQ(s.CurValue(), 2.00000005);
    EXPECT_EQ(s.SliderPosition(), 4);
    s.setCurValue(2.001);
    EXPECT_DOUBLE_EQ(s.CurValue(), 2.00000005);
    s.setCurValue(-0.001);
    EXPECT_DOUBLE_EQ(s.CurValue(), 2.00000005);
}

TEST(SliderTest, MovingTheSliderSetsTheValueAndTip)
{
    CSliderModel s;
    s.Init(1, 3, 0.25);
    s.MoveSlider(3);
    EXPECT_DOUBLE_EQ(s.CurValue(), 1.75);
    EXPECT_EQ(s.TipText(), QString::fromUtf8("移动值:1.75"));
    s.MoveSlider(99);
    EXPECT_DOUBLE_EQ(s.CurValue(), 3);
    EXPECT_EQ(s.TipText(), QString::fromUtf8("移动值:3.00"));
}

TEST(SliderTest, StepMustBeAboveZero)
{
    CSliderModel s;
    s.Init(0, 10, 1);
    s.setStepValue(0);
    s.setStepValue(-2);
    EXPECT_DOUBLE_EQ(s.StepValue(), 1);
    EXPECT_EQ(s.SliderMax(), 10);
    s.Init(5, 1, 1); // max below min: no positions, nothing accepted
    EXPECT_EQ(s.SliderMax(), 0);
}

} // namespace
