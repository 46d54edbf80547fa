#include "core/VelmarError.h"
#include "core/basConvert.h"

#include <gtest/gtest.h>

using namespace basConvert;

static int errorOf(auto f)
{
    try {
        f();
    } catch (const VelmarError &e) {
        return e.Number();
    }
    return 0;
}

TEST(BasConvert, IntegerConversionsRoundHalfEvenAndOverflow)
{
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(3.5), 4);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CInt(32767.4), 32767);
    EXPECT_EQ(errorOf([] { CInt(32767.5); }), 6);
    EXPECT_EQ(errorOf([] { CInt(-32769.0); }), 6);
    EXPECT_EQ(CLng(2147483647.0), 2147483647);
    EXPECT_EQ(errorOf([] { CLng(2147483648.0); }), 6);
    EXPECT_EQ(CInt(u" 12 "), 12);
    EXPECT_EQ(CInt(u"&H10"), 16);
    EXPECT_EQ(CInt(u"&HFFFF"), -1);
    EXPECT_EQ(errorOf([] { CInt(u"abc"); }), 13);
    EXPECT_EQ(errorOf([] { CInt(u""); }), 13);
    EXPECT_EQ(errorOf([] { CInt(u"40000"); }), 6);
}

TEST(BasConvert, TryConversionsGiveNothingWhereTheOthersFault)
{
    for (const char16_t *text : { u" 12 ", u"&H10", u"&HFFFF", u"abc", u"", u"40000", u"-32768", u"2.5",
             u"1e999", u"1,000", u"-", u"32767.5" }) {
        SCOPED_TRACE(QString::fromUtf16(text).toStdString());
        const int fault = errorOf([text] { CInt(text); });
        EXPECT_EQ(TryCInt(text).has_value(), fault == 0);
        if (fault == 0) {
            EXPECT_EQ(*TryCInt(text), CInt(text));
        }
        const int dblFault = errorOf([text] { CDbl(text); });
        EXPECT_EQ(TryCDbl(text).has_value(), dblFault == 0);
        if (dblFault == 0) {
            EXPECT_EQ(*TryCDbl(text), CDbl(text));
        }
    }
}

TEST(BasConvert, ValReadsLeadingNumber)
{
    EXPECT_DOUBLE_EQ(Val(u"12abc"), 12);
    EXPECT_DOUBLE_EQ(Val(u"  -3.5e2x"), -350);
    EXPECT_DOUBLE_EQ(Val(u" 1 2 3"), 123);
    EXPECT_DOUBLE_EQ(Val(u"&HFF"), 255);
    EXPECT_DOUBLE_EQ(Val(u"&HFFFF"), -1);
    EXPECT_DOUBLE_EQ(Val(u"&HFFFFFF"), 16777215);
    EXPECT_DOUBLE_EQ(Val(u"abc"), 0);
    EXPECT_DOUBLE_EQ(Val(u"1.2.3"), 1.2);
    EXPECT_DOUBLE_EQ(Val(u""), 0);
    EXPECT_DOUBLE_EQ(Val(u"1e"), 1);
}

TEST(BasConvert, IsNumeric)
{
    for (const char16_t *yes : { u"1", u" 1.5 ", u"-2", u"+3", u"1e3", u".5", u"5.", u"&H1F", u"1,000" })
        EXPECT_TRUE(IsNumeric(yes)) << QString::fromUtf16(yes).toStdString();
    for (const char16_t *no : { u"", u" ", u"abc", u"1a", u"1e", u"-", u".", u"&H", u"1 2" })
        EXPECT_FALSE(IsNumeric(no)) << QString::fromUtf16(no).toStdString();
}

TEST(BasConvert, PlainDecimalText)
{
    EXPECT_EQ(CStr(23064.0), "23064");
    EXPECT_EQ(CStr(0.5), "0.5");
    EXPECT_EQ(CStr(-0.3), "-0.3");
    EXPECT_EQ(CStr(0.1 + 0.2), "0.3");
    EXPECT_EQ(CStr(1e15), "1E+15");
    EXPECT_EQ(CStr(123456789012345.0), "123456789012345");
    EXPECT_EQ(CStr(0.0001), "0.0001");
    EXPECT_EQ(CStr(0.00001), "1E-05");
    EXPECT_EQ(CStr(-0.0), "0");
    EXPECT_EQ(Str(5.0), " 5");
    EXPECT_EQ(Str(-5.0), "-5");
    EXPECT_EQ(Hex(255), "FF");
    EXPECT_EQ(Hex(-1), "FFFFFFFF");
}

TEST(BasConvert, FormatPatterns)
{
    EXPECT_EQ(Format(7, u"0000"), "0007");
    EXPECT_EQ(Format(12345, u"0000"), "12345");
    EXPECT_EQ(Format(2.5, u"0"), "3"); // half away from zero
    EXPECT_EQ(Format(3.14159, u"0.00"), "3.14");
    EXPECT_EQ(Format(2.675, u"0.00"), "2.68"); // on the 15-digit decimal form
    EXPECT_EQ(Format(1.5, u"000.0000"), "001.5000");
    EXPECT_EQ(Format(-1.25, u"0.0"), "-1.3");
    EXPECT_EQ(Format(0.5, u"#.##"), ".5");
    EXPECT_EQ(Format(1234567.891, u"#,##0.0#"), "1,234,567.89");
    EXPECT_EQ(Format(9.999, u"0.00"), "10.00");
}

TEST(BasConvert, TextHelpersCountFromOne)
{
    EXPECT_EQ(Trim(u"\t a \t"), "\t a \t");
    EXPECT_EQ(Trim(u"  a b  "), "a b");
    EXPECT_EQ(Mid(u"abcdef", 2, 3), "bcd");
    EXPECT_EQ(Mid(u"abc", 5), "");
    EXPECT_EQ(errorOf([] { Mid(u"abc", 0); }), 5);
    EXPECT_EQ(InStr(u"abcabc", u"c"), 3);
    EXPECT_EQ(InStr(4, u"abcabc", u"c"), 6);
    EXPECT_EQ(InStr(u"abc", u"x"), 0);
    EXPECT_EQ(InStr(2, u"abc", u""), 2);
    EXPECT_EQ(InStrRev(u"abcabc", u"b"), 5);
    EXPECT_EQ(Left(u"abc", 5), "abc");
    EXPECT_EQ(Right(u"abc", 2), "bc");
    EXPECT_EQ(UCase(u"aBc"), "ABC");
}

TEST(BasConvert, IntegerDivisionAndModRoundOperands)
{
    EXPECT_EQ(IntDiv(7, 2), 3);
    EXPECT_EQ(IntDiv(-7, 2), -3);
    EXPECT_EQ(IntDiv(7.5, 2), 4); // 7.5 rounds to 8
    EXPECT_EQ(Mod(7, 3), 1);
    EXPECT_EQ(Mod(-7, 3), -1);
    EXPECT_EQ(Mod(5.5, 3), 0); // 5.5 rounds to 6
    EXPECT_EQ(errorOf([] { IntDiv(1, 0); }), 11);
    EXPECT_EQ(errorOf([] { Mod(1, 0.4); }), 11);
}
