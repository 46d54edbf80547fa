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

TEST(basScript, TimesInHundredthsPrintAndParseBack)
{
    // k hundredths of a second, as a grid cell or a file holds them: the printed form is
    // k's own digits whatever the binary error of k / 100, and the fast parser agrees with
    // the strict one on it.
    for (qint64 k = 0; k < 3600000 + 5000; k += 37) {
        const QString expected = QString::asprintf(
            "%lld:%02lld:%02lld.%02lld", k / 360000, k / 6000 % 60, k / 100 % 60, k % 100);
        const QString text = TimeToString(double(k) / 100, 2);
        ASSERT_EQ(text, expected) << k;
        QString appended = QStringLiteral("x");
        AppendTimeString(appended, double(k) / 100);
        ASSERT_EQ(appended, u'x' + expected) << k;
        ASSERT_EQ(FastStringToTime(text), StringToTime(text)) << text.toStdString();
    }
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
