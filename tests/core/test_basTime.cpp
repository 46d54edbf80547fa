#include "core/basTime.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <limits>

TEST(TimeToString, FormatsWithoutCarryAndRoundsTenthsHalfEven)
{
    EXPECT_EQ(TimeToString(0.1, 2), "0:00:00.10");
    EXPECT_EQ(TimeToString(-0.5, 1), "0:00:00.0");
    EXPECT_EQ(TimeToString(-0.5, 2), "0:00:00.00");
    EXPECT_EQ(TimeToString(1.96, 1), "0:00:01.0"); // no carry into the seconds
    EXPECT_EQ(TimeToString(1.95, 1), "0:00:01.0"); // 19.5 rounds to 20, mod 10
    EXPECT_EQ(TimeToString(1.85, 1), "0:00:01.8"); // 18.5 rounds to 18
    EXPECT_EQ(TimeToString(1.94, 1), "0:00:01.9");
    EXPECT_EQ(TimeToString(36000, 2), "10:00:00.00");
    EXPECT_EQ(TimeToString(3723.45, 2), "1:02:03.45");
    EXPECT_EQ(TimeToString(59.999, 2), "0:00:59.99");
    EXPECT_EQ(TimeToString(4000.0, 1), "1:06:40.0");
}

TEST(TimeToString, DamagedTimesGiveAStringNotAFault)
{
    // A damaged file can carry any number: the hours grow, nothing overflows.
    EXPECT_EQ(TimeToString(1e15, 2), "277777777777:46:40.00");
    EXPECT_EQ(TimeToString(3.6e12 + 61.5, 2), "1000000000:01:01.50");
    EXPECT_EQ(TimeToString(3.6e12 + 61.96, 1), "1000000000:01:01.0");
    const QString huge = TimeToString(2.4e80, 2);
    EXPECT_TRUE(huge.startsWith(u"66666666666666")) << qPrintable(huge);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9]{77}:[0-5][0-9]:[0-5][0-9]\\.[0-9][0-9]$"))
                    .match(huge)
                    .hasMatch())
        << qPrintable(huge);
    EXPECT_EQ(TimeToString(std::numeric_limits<double>::quiet_NaN(), 2), "0:00:00.00");
    EXPECT_EQ(TimeToString(std::numeric_limits<double>::infinity(), 1), "0:00:00.0");
}

TEST(StringToTime, StrictColumns)
{
    EXPECT_DOUBLE_EQ(StringToTime(u"0:00:01.5"), 1.05);
    EXPECT_DOUBLE_EQ(StringToTime(u"0:00:01.555"), 1.55);
    EXPECT_DOUBLE_EQ(StringToTime(u"1:02:03.45"), 3723.45);
    EXPECT_DOUBLE_EQ(StringToTime(u"abc"), 0);
    EXPECT_DOUBLE_EQ(StringToTime(u"0:00:1.50"), 1.0); // columns 6-7 are "1.", 9 is "0"
    // Hours beyond one digit put the fields at the wrong columns.
    EXPECT_NE(StringToTime(u"10:00:00.00"), 36000);
    // A term that is not numeric is left out, the others count.
    EXPECT_DOUBLE_EQ(StringToTime(u"x:01:02.03"), 62.03);
}

TEST(LooseStringToTime, ShiftsFieldsAndOverflowsAt16Bits)
{
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"1:02:03.5"), 3723.5);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"12"), 12);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"1:05"), 65);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"  5.25  "), 5.25);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"9:06:07"), 32767);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"9:06:08"), 0);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"9:59:59.99"), 0);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u".5"), 0.5);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u""), 0);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"junk"), 0);
    // A field that is no 16-bit number keeps the value the field before it had.
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"1:x:5"), 3665);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"1:40000"), 61);
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"2.x"), 2);
    // Only the first 11 characters count.
    EXPECT_DOUBLE_EQ(LooseStringToTime(u"0:00:01.123456"), 1.123);
}

TEST(Names, ColoursKeysAndLineTypes)
{
    EXPECT_EQ(ColourToHex(255), "&H0000FF");
    EXPECT_EQ(ColourToHex(255, 128), "&H800000FF");
    EXPECT_EQ(ColourToHex(0xFF0000, 0), "&H00FF0000");

    EXPECT_EQ(KeyNameToCode(u"Undefined"), 0);
    EXPECT_EQ(KeyCodeToName(0), "Undefined");
    EXPECT_EQ(KeyCodeToName(119), "F8");
    EXPECT_EQ(KeyNameToCode(u"F8"), 119);
    EXPECT_EQ(KeyNameToCode(u"F12"), 123);
    EXPECT_EQ(KeyNameToCode(u"Enter"), 13);
    EXPECT_EQ(KeyNameToCode(u"Q"), 81);
    EXPECT_EQ(KeyNameToCode(u"Foo"), 70); // sorts between "A" and "Z"
    EXPECT_EQ(KeyNameToCode(u"f8"), 0); // case matters
    EXPECT_EQ(KeyNameToCode(u"Za"), 0);
    for (int code : { 13, 37, 38, 39, 40, 65, 90, 112, 123 })
        EXPECT_EQ(KeyNameToCode(KeyCodeToName(code)), code);
    EXPECT_EQ(KeyCodeToName(64), "Undefined");

    EXPECT_EQ(LineTypeName(1), "Comment");
    EXPECT_EQ(LineTypeFromName(u"comment"), 1);
    EXPECT_EQ(LineTypeFromName(u"Whatever"), 0);
    EXPECT_EQ(LineTypeFromChinese(u"命令"), 5);
    EXPECT_EQ(LineTypeFromChinese(u"x"), 0);
}
