#include "ScriptFixture.h"

#include "core/Class.h"
#include "script/CFonts.h"

namespace {

const QString ssaStyle
    = QStringLiteral("Style: Default,楷体,24,16777215,65535,65280,0,0,0,1,1,1,2,30,30,10,0,134");
const QString assStyle = QStringLiteral(
    "Style: "
    "Sign,Arial,20,&H00FFFFFF,&HF00000FF,&H00102030,&H80000000,-1,0,0,0,100,100,0,0.00,1,2,3,2,20,20,25,1");
const QString ssaHead = QStringLiteral("[V4 Styles]\r\nFormat: Name, Fontname");
const QString assHead = QStringLiteral("[V4+ Styles]\r\nFormat: Name, Fontname");

class FontTest : public ScriptTest
{
protected:
    std::unique_ptr<CFonts> fonts(ScriptType type)
    {
        auto list = Class::MakeCollection<CFonts>();
        list->ScriptType = type;
        return list;
    }
    std::unique_ptr<CFont> parsed(CFonts *parent, const QString &line)
    {
        auto f = Class::Make<CFont>(QStringLiteral("NewFont"));
        f->setParent(parent);
        f->setContent(line);
        return f;
    }
};

} // namespace

TEST_F(FontTest, SsaLineReadAndWrittenGainsHexColours)
{
    auto list = fonts(ScriptType::SSA);
    auto f = parsed(list.get(), ssaStyle);
    ASSERT_EQ(f->ErrNumber, 0);
    EXPECT_EQ(f->StyleName(), QStringLiteral("Default"));
    EXPECT_EQ(f->FontSize(), 24);
    EXPECT_EQ(f->Alignment(), 2);
    EXPECT_EQ(f->AlphaLevel(), 0);
    EXPECT_EQ(f->Encoding(), 134);
    EXPECT_EQ(f->Content(),
        QStringLiteral(
            "Style: Default,楷体,24,&HFFFFFF,&H00FFFF,&H00FF00,&H000000,0,0,1,1,1,2,30,30,10,0,134"));
}

TEST_F(FontTest, AssLineRoundTripsWithAlpha)
{
    auto list = fonts(ScriptType::ASS);
    auto f = parsed(list.get(), assStyle);
    ASSERT_EQ(f->ErrNumber, 0);
    EXPECT_EQ(f->BackColour(), QStringLiteral("0"));
    EXPECT_EQ(f->BackAlpha, 128);
    EXPECT_EQ(f->SecondaryColour(), QStringLiteral("255"));
    EXPECT_EQ(f->SecondaryAlpha, 240);
    EXPECT_EQ(f->OutlineColor(), QString::number(0x102030));
    EXPECT_EQ(f->TertiaryColour(), QStringLiteral("0"));
    EXPECT_EQ(f->Bold(), -1);
    EXPECT_EQ(f->Content(), assStyle);
}

TEST_F(FontTest, ColourSettersSplitAlphaWithoutSwapping)
{
    auto f = Class::Make<CFont>(QStringLiteral("X"));
    f->setBackColour(u"&H80000000");
    EXPECT_EQ(f->BackColour(), QStringLiteral("0"));
    EXPECT_EQ(f->BackAlpha, 128);
    f->setPrimaryColour(u"&HFF00FFFF");
    EXPECT_EQ(f->PrimaryColour(), QStringLiteral("65535"));
    EXPECT_EQ(f->PrimaryAlpha, 255);
    f->setPrimaryColour(u"255");
    EXPECT_EQ(f->PrimaryAlpha, 0);
    f->setPrimaryColour(u"red");
    EXPECT_EQ(f->PrimaryColour(), QStringLiteral("255"));
}

TEST_F(FontTest, AlignmentTables)
{
    const int ssa[] = { 1, 2, 3, 5, 6, 7, 9, 10, 11 };
    const int ass[] = { 1, 2, 3, 7, 8, 9, 4, 5, 6 };
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(SSAAlignToASS(QString::number(ssa[i])), QString::number(ass[i]));
        EXPECT_EQ(ASSAlignToSSA(ass[i]), QString::number(ssa[i]));
    }
    EXPECT_EQ(SSAAlignToASS(QStringLiteral("4")), QString());
    EXPECT_EQ(SSAAlignToASS(QStringLiteral("02")), QString());
    EXPECT_EQ(ASSAlignToSSA(0), QString());

    auto list = fonts(ScriptType::SSA);
    QString line = ssaStyle;
    line.replace(QStringLiteral(",1,1,1,2,30"), QStringLiteral(",1,1,1,6,30"));
    auto f = parsed(list.get(), line);
    EXPECT_EQ(f->Alignment(), 8);
    EXPECT_TRUE(f->Content().contains(QStringLiteral(",1,1,1,6,30,")));
    line.replace(QStringLiteral(",1,1,1,6,30"), QStringLiteral(",1,1,1,4,30"));
    EXPECT_EQ(parsed(list.get(), line)->Alignment(), 2); // not in the table: not stored
}

TEST_F(FontTest, SeventeenFieldSsaLineHasNoAlphaLevel)
{
    auto list = fonts(ScriptType::SSA);
    auto f = Class::Make<CFont>(QStringLiteral("X"));
    f->setParent(list.get());
    f->setAlphaLevel(7);
    f->setContent(QStringLiteral("Style: A,B,24,1,2,3,4,0,0,1,1,1,2,30,30,10,136"));
    EXPECT_EQ(f->ErrNumber, 0);
    EXPECT_EQ(f->AlphaLevel(), 7);
    EXPECT_EQ(f->Encoding(), 136);
}

TEST_F(FontTest, ErrorNumbers)
{
    auto ass = fonts(ScriptType::ASS);
    EXPECT_EQ(parsed(ass.get(), QStringLiteral("  "))->ErrNumber, 1);
    EXPECT_EQ(parsed(ass.get(), QStringLiteral("Dialogue: x"))->ErrNumber, 2);
    EXPECT_EQ(parsed(ass.get(), QStringLiteral("Style A,B"))->ErrNumber, 3);
    // 22 fields under ASS: too few, and the record keeps its defaults.
    QString short22 = assStyle;
    short22.chop(2); // drop ",1"
    auto f = parsed(ass.get(), short22);
    EXPECT_EQ(f->ErrNumber, 4);
    EXPECT_EQ(f->StyleName(), QStringLiteral("NewFont"));
    EXPECT_EQ(f->FontSize(), 25);
    EXPECT_EQ(
        parsed(fonts(ScriptType::SSA).get(), QStringLiteral("Style: A,B,24,1,2,3,4,0,0,1,1,1,2,30,30,10"))
            ->ErrNumber,
        4);
}

TEST_F(FontTest, NonNumericFieldsKeepTheirValues)
{
    auto list = fonts(ScriptType::ASS);
    QString line = assStyle;
    line.replace(QStringLiteral("Arial,20,"), QStringLiteral("Arial,big,"));
    line.replace(QStringLiteral(",0.00,"), QStringLiteral(",15,"));
    auto f = parsed(list.get(), line);
    EXPECT_EQ(f->ErrNumber, 0);
    EXPECT_EQ(f->FontSize(), 25);
    EXPECT_EQ(f->Angle(), QStringLiteral("15.00"));
}

TEST_F(FontTest, CommentLinesGoAheadOfTheStyle)
{
    auto list = fonts(ScriptType::ASS);
    auto f = parsed(list.get(), assStyle);
    f->Comment = QStringLiteral("first\r\nsecond");
    EXPECT_TRUE(f->Content().startsWith(QStringLiteral(";first\r\n;second\r\nStyle: Sign,")));
}

TEST_F(FontTest, NewListHasDefaultAndClearRemovesIt)
{
    auto list = fonts(ScriptType::ASS);
    ASSERT_EQ(list->Count(), 1);
    EXPECT_TRUE(list->Exists(QStringLiteral("Default")));
    EXPECT_EQ(list->Item(QStringLiteral("Default"))->FontName(), QStringLiteral("楷体"));
    list->Clear();
    EXPECT_EQ(list->Count(), 0);
    EXPECT_THROW(list->Create(QStringLiteral("A")) && list->Create(QStringLiteral("A")), VelmarError);
    EXPECT_EQ(list->item(QStringLiteral("nope")), nullptr);
    list->Delete(QStringLiteral("nope"));
}

TEST_F(FontTest, AddRefusesIdenticalAndRenamesDifferent)
{
    auto list = fonts(ScriptType::ASS); // counter 1 after Default
    auto same = Class::Make<CFont>(QStringLiteral("Default"));
    same->setWindow(nullptr);
    EXPECT_EQ(list->Add(std::move(same)), nullptr);
    EXPECT_EQ(list->Count(), 1);
    ASSERT_EQ(prompt.Messages().size(), 1);
    EXPECT_EQ(prompt.Messages()[0], QStringLiteral("加入字体错误: 已存在完全相同的字体[Default]"));

    // Differences in ASS-only fields do not count.
    auto scaled = Class::Make<CFont>(QStringLiteral("Default"));
    scaled->setScaleX(50);
    scaled->setOutlineColor(u"255");
    EXPECT_EQ(list->Add(std::move(scaled)), nullptr);

    list->Create(QStringLiteral("Other")); // counter 2
    auto bigger = Class::Make<CFont>(QStringLiteral("Default"));
    bigger->setFontSize(40);
    CFont *added = list->Add(std::move(bigger));
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->StyleName(), QStringLiteral("Default(2)"));
    EXPECT_EQ(added->OriginalStyleName, QStringLiteral("Default"));
    EXPECT_EQ(list->GetOriginalStyleName(QStringLiteral("Default(2)")), QStringLiteral("Default"));
    EXPECT_EQ(prompt.Messages().last(),
        QStringLiteral("加入字体警告: 已存在相同名字的字体,自动改名后加入[Default(2)]"));
    EXPECT_EQ(list->Count(), 3);
    EXPECT_EQ(list->SerialNo(), 3);
}

TEST_F(FontTest, CopyFontLeavesTheThirdColourBehind)
{
    auto list = fonts(ScriptType::SSA);
    auto src = parsed(list.get(), ssaStyle);
    src->Comment = QStringLiteral("c");
    src->BackAlpha = 77;
    auto copy = CFonts::CopyFont(*src);
    EXPECT_EQ(copy->Parent(), nullptr);
    EXPECT_EQ(copy->StyleName(), QStringLiteral("Default"));
    EXPECT_EQ(copy->Comment, QStringLiteral("c"));
    EXPECT_EQ(copy->BackAlpha, 77);
    EXPECT_EQ(copy->SecondaryColour(), QStringLiteral("65535"));
    EXPECT_EQ(copy->TertiaryColour(), QStringLiteral("0"));
    EXPECT_FALSE(CFonts::IsSameFont(*src, *copy));
}

TEST_F(FontTest, ReadsTheSectionWithCommentsAndStopsAtEvents)
{
    auto list = fonts(ScriptType::ASS);
    list->setContent(crlf({ QStringLiteral("[Script Info]"), QStringLiteral("Title: x"), QString(), assHead,
        QStringLiteral(";  about sign"), QStringLiteral("; second"), assStyle, QStringLiteral("junk line"),
        QStringLiteral("  style: "
                       "Plain,Arial,20,&H00FFFFFF,&H00000000,&H00000000,&H00000000,0,0,0,0,100,100,0,0,1,2,0,"
                       "2,10,10,10,1"),
        QStringLiteral("; trailing comment is lost"), QString(), QStringLiteral("[Events]"),
        QStringLiteral("Style: "
                       "Late,Arial,20,&H00FFFFFF,&H00000000,&H00000000,&H00000000,0,0,0,0,100,100,0,0,1,2,0,"
                       "2,10,10,10,1") }));
    ASSERT_EQ(list->Count(), 2);
    EXPECT_FALSE(list->Exists(QStringLiteral("Default")));
    EXPECT_EQ(list->At(0)->Comment, QStringLiteral("  about sign\r\n second"));
    EXPECT_EQ(list->At(1)->StyleName(), QStringLiteral("Plain"));
    EXPECT_EQ(list->At(1)->Comment, QString());
    EXPECT_TRUE(prompt.Messages().isEmpty());
    const QString out = list->Content();
    EXPECT_TRUE(out.startsWith(QStringLiteral(
        "[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, OutlineColour, "
        "BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, BorderStyle, "
        "Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n;  about sign\r\n; second\r\n")));
    EXPECT_TRUE(out.endsWith(QStringLiteral("10,10,10,1\r\n")));
    EXPECT_FALSE(out.contains(QStringLiteral("trailing")));
}

TEST_F(FontTest, WrongFieldCountAsksAndNoStops)
{
    auto list = fonts(ScriptType::ASS);
    const QString ssaLine = ssaStyle;
    const QString text = crlf({ ssaHead, ssaLine, assStyle });
    prompt.Answers = { MsgBoxResult::Yes };
    list->setContent(text);
    ASSERT_EQ(list->Count(), 1);
    EXPECT_EQ(list->At(0)->StyleName(), QStringLiteral("Sign"));
    ASSERT_EQ(prompt.Records.size(), 1);
    EXPECT_EQ(prompt.Records[0].Prompt,
        Msg(QStringLiteral("FONT_MSG_101")) + QStringLiteral(": ") + ssaLine
            + QStringLiteral("\r\n建议取消打开操作，重新打开文件，并选择正确的文件格式。继续读取字体吗?"));
    prompt.Reset();
    prompt.Answers = { MsgBoxResult::No };
    list->setContent(text);
    EXPECT_EQ(list->Count(), 0);
}

TEST_F(FontTest, EmptyListWritesTheBuiltInLine)
{
    auto ass = fonts(ScriptType::ASS);
    ass->setContent(QStringLiteral("[Events]"));
    EXPECT_EQ(ass->Count(), 0);
    EXPECT_TRUE(ass->Content().endsWith(
        QStringLiteral("\r\nStyle: "
                       "Default,simhei,18,&H00ffffff,&H0000ffff,&H00000000,&H80000000,-1,0,0,0,100,100,0,0."
                       "00,1,2,3,2,20,20,25,134\r\n")));
    auto ssa = fonts(ScriptType::SSA);
    ssa->Clear();
    EXPECT_EQ(ssa->Content(),
        QStringLiteral("[V4 Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
                       "TertiaryColour, BackColour, Bold, Italic, BorderStyle, Outline, Shadow, Alignment, "
                       "MarginL, MarginR, MarginV, AlphaLevel, Encoding\r\n"
                       "Style: Default,楷体,24,16777215,65535,65280,0,0,0,1,1,1,2,30,30,10,0,134\r\n"));
    EXPECT_EQ(fonts(ScriptType::SAMI)->Content(), QString());
}
