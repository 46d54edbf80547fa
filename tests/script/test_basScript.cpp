#include "core/basTime.h"
#include "script/basScript.h"

#include <gtest/gtest.h>

using namespace basScript;

TEST(basScript, SplitsAtCrLfOnly)
{
    const QString text = QStringLiteral("a\r\nb\rc\nd\r\n\r\ne\r");
    const auto lines = SplitLines(text);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], u"a");
    EXPECT_EQ(lines[1], u"b\rc\nd");
    EXPECT_EQ(lines[2], u"");
    EXPECT_EQ(lines[3], u"e\r");
    EXPECT_EQ(SplitLines(u"").size(), 1u);
    EXPECT_EQ(SplitLines(u"x\r\n").size(), 2u);
}

TEST(basScript, TrimsBlanksOnly)
{
    EXPECT_EQ(TrimView(u"  \tx \t "), u"\tx \t");
    EXPECT_EQ(LTrimView(u"  x  "), u"x  ");
    EXPECT_TRUE(TrimView(u"   ").isEmpty());
}

TEST(basScript, FastTimesAgreeWithTheCodec)
{
    for (double t = 0; t < 36000 + 50; t += 0.37) {
        QString fast;
        AppendTime2(fast, t);
        ASSERT_EQ(fast, TimeToString(t, 2)) << t;
        ASSERT_EQ(FastStringToTime(fast), StringToTime(fast)) << fast.toStdString();
    }
    QString negative;
    AppendTime2(negative, -1);
    EXPECT_EQ(negative, TimeToString(-1, 2));
    for (const char16_t *odd :
        { u"0:00:01.5", u"0:0a:01.50", u"x:00:01.50", u"0:00:01.555", u"00:00:01.5", u"", u"0-00-01-50" })
        EXPECT_EQ(FastStringToTime(odd), StringToTime(odd)) << QString::fromUtf16(odd).toStdString();
}

TEST(basScript, PatternOfMargins)
{
    QString out;
    AppendPattern0000(out, QStringLiteral("7"));
    out += u'|';
    AppendPattern0000(out, QStringLiteral("12.6"));
    out += u'|';
    AppendPattern0000(out, QStringLiteral("Karaoke"));
    out += u'|';
    AppendPattern0000(out, QString());
    EXPECT_EQ(out, QStringLiteral("0007|0013|Karaoke|"));
}
