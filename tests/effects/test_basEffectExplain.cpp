#include "effects/basEffectExplain.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

using namespace basEffectExplain;

namespace {

QStringList linesOf(const QString &text)
{
    return text.split(QStringLiteral("\r\n"));
}

} // namespace

TEST(ExplainEntries, EveryEntryHasTheFixedFrame)
{
    for (int e = 0; e < EntryCount; ++e) {
        const QString text = ExplainEntry(e);
        ASSERT_TRUE(text.startsWith(QStringLiteral("说明: \r\n"))) << e;
        const qsizetype example = text.indexOf(QStringLiteral("\r\n例子: \r\n"));
        ASSERT_GT(example, 0) << e;
        // the example is the last line and has no line end of its own
        EXPECT_FALSE(text.endsWith(QStringLiteral("\r\n"))) << e;
        EXPECT_EQ(linesOf(text.mid(example + 2)).size(), 2) << e;
    }
    EXPECT_TRUE(ExplainEntry(-1).isEmpty());
    EXPECT_TRUE(ExplainEntry(EntryCount).isEmpty());
}

TEST(ExplainEntries, TabsAreShiftedPastTheGradualEntry)
{
    EXPECT_EQ(ExplainTag(0), ExplainEntry(1));
    EXPECT_EQ(ExplainTag(23), ExplainEntry(24));
    EXPECT_TRUE(ExplainTag(24).isEmpty());
    EXPECT_EQ(linesOf(ExplainTag(0)),
        QStringList({ QStringLiteral("说明: "), QStringLiteral("换行符: 大写\\N"),
            QStringLiteral("    小写\\n在换行方式为1时无效"), QStringLiteral("例子: "),
            QStringLiteral("云帆\\N字幕组") }));
    const QStringList gradual = linesOf(ExplainEntry(0));
    EXPECT_EQ(gradual[1], QStringLiteral("渐变: {\\t([<t1>,<t2>,] [<accel>,]<style modifiers>)}"));
    EXPECT_EQ(gradual.last(), QStringLiteral("{\\t(0,3000,2,\\1a&Hff&)}云帆字幕组"));
}

TEST(ExplainEntries, QuirksOfTheTextStay)
{
    // the size entry names \fn, the alignment example has ">" for "}"
    EXPECT_TRUE(ExplainTag(3).contains(QStringLiteral("字体大小: {\\fn<font size>}")));
    EXPECT_TRUE(ExplainTag(3).endsWith(QStringLiteral("云帆{\\fs25}字幕组")));
    EXPECT_TRUE(ExplainTag(8).endsWith(QStringLiteral("云帆{\\an5>字幕组")));
    // the fade syntax and example lack their closing bracket
    EXPECT_TRUE(ExplainTag(15).contains(
        QStringLiteral("淡入淡出: {\\fade(<a1>, <a2>, <a3>, <t1>, <t2>, <t3>, <t4>}\r\n")));
    EXPECT_TRUE(
        ExplainTag(15).endsWith(QStringLiteral("{\\fade(255, 0, 255, 0, 5000, 10000, 15000}云帆字幕组")));
    // a2 is explained twice, the second time for the last span
    EXPECT_EQ(ExplainTag(15).count(QStringLiteral("a2: ")), 2);
    EXPECT_TRUE(ExplainTag(15).contains(QStringLiteral("a2: 时间点3到时间点4之间,透明度由a2变到a3")));
    // the move syntax and its example keep their trailing blank
    EXPECT_TRUE(ExplainTag(17).contains(QStringLiteral("[, <t1>, <t2>])} \r\n")));
    EXPECT_TRUE(
        ExplainTag(17).endsWith(QStringLiteral("云帆{\\move(100, 100, 200, 200, 1000, 5000])}字幕组 ")));
    // alpha syntax as it stands
    EXPECT_TRUE(ExplainTag(1).contains(QStringLiteral("{\\alpha&<Haa>&}")));
    EXPECT_TRUE(ExplainTag(1).contains(QStringLiteral("{\\4a&<Haa>&}")));
}

TEST(ExplainEntries, WrapNumbersDifferFromTheBuiltTags)
{
    const QString wrap = ExplainTag(21);
    EXPECT_TRUE(wrap.contains(QStringLiteral("num: 1:自动换行, 上面一行较长")));
    EXPECT_TRUE(wrap.contains(QStringLiteral("num: 4:自动换行, 让下面一行更长")));
    EXPECT_FALSE(wrap.contains(QStringLiteral("num: 0")));
    EXPECT_TRUE(wrap.endsWith(QStringLiteral("{\\q4}云帆字幕组")));
}

TEST(ExplainEntries, OldAlignmentListsTwoRowsOnly)
{
    const QString text = ExplainTag(8);
    EXPECT_TRUE(text.contains(QStringLiteral("a 时:5-6-7")));
    EXPECT_TRUE(text.contains(QStringLiteral("9-10-11")));
    EXPECT_EQ(text.count(QStringLiteral("1-2-3")), 1);
}

TEST(ExplainPages, PageZeroFollowsTheTab)
{
    for (int tab = 0; tab < 24; ++tab)
        EXPECT_EQ(ExplainPage(0, tab), ExplainTag(tab)) << tab;
    EXPECT_NE(ExplainPage(0, 3), ExplainPage(0, 4));
}

TEST(ExplainPages, PageFiveAndUnknownPagesAreEmpty)
{
    EXPECT_TRUE(ExplainPage(5).isEmpty());
    EXPECT_TRUE(ExplainPage(8).isEmpty());
    EXPECT_TRUE(ExplainPage(-1).isEmpty());
}

TEST(ExplainPages, EachPageOpensWithItsEffect)
{
    const struct
    {
        int page;
        const char16_t *second;
        const char16_t *last;
    } cases[] = {
        { 1, u"效果: 用SSA语句画图", u"此项目未完成，请勿使用" },
        { 2, u"效果: 使用渐变效果符号\"\\r\"加强卡拉OK效果", u"3. 按\"生成\"按钮" },
        { 3, u"效果: 根据输入的时间点，产生差分时间轴", u"生成后用Ctrl+C,Ctrl+V拷贝到时间轴窗口中 " },
        { 4, u"效果: 从一种颜色变到另一种颜色，像波浪式的推进", u"此项目制作途中" },
        { 6, u"效果: 根据给定坐标, 使用move语法产生移动效果", nullptr },
        { 7, u"效果: 用pos语法定位", nullptr },
    };
    for (const auto &c : cases) {
        const QStringList lines = linesOf(ExplainPage(c.page));
        ASSERT_GE(lines.size(), 3) << c.page;
        EXPECT_EQ(lines[0], QStringLiteral("说明: ")) << c.page;
        EXPECT_EQ(lines[1], QString::fromUtf16(c.second)) << c.page;
        // every line ends with CR LF, so the split leaves an empty tail
        EXPECT_TRUE(lines.last().isEmpty()) << c.page;
        if (c.last) {
            EXPECT_EQ(lines[lines.size() - 2], QString::fromUtf16(c.last)) << c.page;
        }
    }
}

TEST(ExplainPages, LinesWithTheirOwnBlanksAndSlips)
{
    const QString move = ExplainPage(6);
    EXPECT_TRUE(move.contains(QStringLiteral("结束时间偏移和结束时间偏移全为0时move句将省略时间参数  \r\n")));
    EXPECT_TRUE(
        move.contains(QStringLiteral("全长度x秒请输入整行的时间轴长度，将由此计算fade的时间轴偏移量 \r\n")));
    const QString drawing = ExplainPage(1);
    EXPECT_TRUE(drawing.contains(QStringLiteral("坐标比列尺: 建议不要改变缺省值1\r\n")));
    EXPECT_TRUE(drawing.contains(QStringLiteral("由坐标1,２画第一条曲线，再由２,３7画第二条曲线...")));
    EXPECT_TRUE(drawing.contains(QStringLiteral("Y轴偏移量: 往上小于0，往下大于0，\r\n")));
    EXPECT_TRUE(ExplainPage(7).contains(QStringLiteral("Y间距: 每个字的Y轴间距\r\n")));
}
