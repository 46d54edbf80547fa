// The style, speaker and script information dialogs without their windows: the checks and
// messages of the commands, Apply into the document and its grid, the fields' limits, the
// style files, the import, the sample.
#include "ShellFixture.h"

#include "core/Class.h"
#include "core/basMessage.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "formats/basTimingFile.h"
#include "script/CSubInfo.h"
#include "shell/CFontDialogModel.h"
#include "shell/CImportFontModel.h"
#include "shell/COwnerDialogModel.h"
#include "shell/CScriptInfoFields.h"
#include "shell/basAbout.h"
#include "shell/basFont.h"
#include "shell/basFontSample.h"
#include "timing/CTimingGrid.h"

#include <QFile>

#include <ostream>

// Readable failures for texts.
static void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace {

const QString Script = QStringLiteral(
    "[Script Info]\r\nScriptType: v4.00+\r\n\r\n"
    "[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, OutlineColour, "
    "BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, BorderStyle, Outline, "
    "Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n"
    "Style: Default,simhei,18,&H00FFFFFF,&H0000FFFF,&H00000000,&H80000000,-1,0,0,0,100,100,0,0.00,1,2,3,2,"
    "20,20,25,134\r\n"
    "Style: Sign,Arial,30,&H000000FF,&H0000FFFF,&H00FF0000,&H80000000,0,0,0,0,100,100,0,0.00,1,2,0,8,"
    "10,10,10,1\r\n\r\n"
    "[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n"
    "Dialogue: 0,0:00:01.00,0:00:02.00,*Default,Ann,0000,0000,0000,,一\r\n"
    "Dialogue: 0,0:00:03.00,0:00:04.00,Sign,Bob,0000,0000,0000,,二\r\n"
    "Dialogue: 0,0:00:05.00,0:00:06.00,Default,Ann,0000,0000,0000,,三\r\n");

// A timing document with its grid, as a timing window holds them, the script above loaded.
class StyleDialogTest : public ShellFixture
{
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        doc = Class::Make<CTiming>();
        grid.SetDocument(doc.get());
        basTimingFile::ReadIntoDocument(*doc, ScriptType::ASS, Script, true);
        model.Init(doc.get(), &grid);
    }
    QStringList StyleCells()
    {
        return { grid.Spread().GetText(CTimingGrid::ColStyle, 1),
            grid.Spread().GetText(CTimingGrid::ColStyle, 2),
            grid.Spread().GetText(CTimingGrid::ColStyle, 3) };
    }
    QStringList DocumentStyles()
    {
        QStringList names;
        for (const CFont *font : *doc->Fonts)
            names << font->StyleName();
        return names;
    }
    void Answer(const std::optional<QString> &input) { prompt.Inputs.push_back(input); }

    std::unique_ptr<CTiming> doc;
    CTimingGrid grid;
    CFontDialogModel model;
};

} // namespace

TEST_F(StyleDialogTest, CommandsRefuseWhatTheyMustWithTheirMessages)
{
    EXPECT_EQ(model.StyleNames(), QStringList({ "Default", "Sign" }));
    EXPECT_EQ(model.Selected(), 0);

    // Add: an empty answer ends, a present name is refused, a new one is made and chosen.
    Answer(QString());
    Answer(QStringLiteral("Sign"));
    Answer(QStringLiteral("Title"));
    EXPECT_FALSE(model.Add());
    EXPECT_FALSE(model.Add());
    EXPECT_TRUE(model.Add());
    EXPECT_EQ(model.StyleNames(), QStringList({ "Default", "Sign", "Title" }));
    EXPECT_EQ(model.Selected(), 2);
    EXPECT_EQ(prompt.Messages(),
        QStringList({ "请输入新字体的名字", "请输入新字体的名字",
            "已经存在这个名字了，请使用其他名字新建字体", "请输入新字体的名字" }));
    EXPECT_EQ(prompt.Records.at(0).Title, "新字体");

    // Rename: the old name is proposed, and taken as it is it counts as present.
    prompt.Reset();
    EXPECT_FALSE(model.Rename());
    EXPECT_EQ(prompt.Messages(), QStringList({ "请输入新的名字", "已经存在这个名字了，请改用其他名字" }));
    Answer(QStringLiteral("Caption"));
    EXPECT_TRUE(model.Rename());
    EXPECT_EQ(model.StyleNames(), QStringList({ "Default", "Sign", "Caption" }));
    EXPECT_TRUE(model.Fonts->Exists(QStringLiteral("Caption")));

    // Delete: No keeps it; Yes removes it and chooses the style that took its place.
    model.Select(1);
    prompt.Answers = { MsgBoxResult::No, MsgBoxResult::Yes };
    EXPECT_FALSE(model.Delete());
    EXPECT_TRUE(model.Delete());
    EXPECT_EQ(model.StyleNames(), QStringList({ "Default", "Caption" }));
    EXPECT_EQ(model.SelectedFont()->StyleName(), "Caption");
    EXPECT_TRUE(model.Delete());
    // The last style stays.
    prompt.Reset();
    EXPECT_FALSE(model.Delete());
    EXPECT_EQ(prompt.Messages(), QStringList({ "至少需要保留一个字体" }));

    // Nothing chosen.
    model.Select(-1);
    prompt.Reset();
    EXPECT_FALSE(model.Delete());
    EXPECT_FALSE(model.Rename());
    EXPECT_EQ(prompt.Messages(), QStringList({ "请先选择一个要删除的字体", "请先选择一个要改名的字体" }));

    // None of it reached the document.
    EXPECT_EQ(DocumentStyles(), QStringList({ "Default", "Sign" }));
    EXPECT_FALSE(doc->Changed());
}

TEST_F(StyleDialogTest, ApplyMovesEveryLineOfARenamedStyleAndRefreshesTheList)
{
    EXPECT_EQ(StyleCells(), QStringList({ "Default", "Sign", "Default" }));
    model.Select(0);
    Answer(QStringLiteral("Main"));
    ASSERT_TRUE(model.Rename());
    Answer(QStringLiteral("Temp"));
    ASSERT_TRUE(model.Rename()); // renamed twice: the lines still follow
    model.Select(1);
    Answer(QStringLiteral("Title"));
    ASSERT_TRUE(model.Rename());
    EXPECT_EQ(StyleCells(), QStringList({ "Default", "Sign", "Default" }));

    model.Apply();
    EXPECT_EQ(DocumentStyles(), QStringList({ "Temp", "Title" }));
    EXPECT_EQ(grid.StyleItems(), QStringList({ "Temp", "Title" }));
    // "*Default" of the file and "Default" are the same style.
    EXPECT_EQ(StyleCells(), QStringList({ "Temp", "Title", "Temp" }));
    EXPECT_TRUE(doc->Changed());
    EXPECT_EQ(doc->Fonts->Item(QStringLiteral("Title"))->Parent(), doc->Fonts.get());
    // Init ran again over the document: the copy is new, the selection kept.
    EXPECT_NE(model.Fonts->Item(QStringLiteral("Title")), doc->Fonts->Item(QStringLiteral("Title")));
    EXPECT_EQ(model.SelectedFont()->StyleName(), "Title");

    // A rename after an Apply follows from the name the document has now.
    Answer(QStringLiteral("Sign2"));
    ASSERT_TRUE(model.Rename());
    model.Apply();
    EXPECT_EQ(StyleCells(), QStringList({ "Temp", "Sign2", "Temp" }));

    // The saved script carries the new names.
    const QString text = doc->Content();
    EXPECT_TRUE(text.contains(QStringLiteral("Style: Sign2,Arial,30,")));
    EXPECT_TRUE(text.contains(QStringLiteral(",Sign2,Bob,")));
}

TEST_F(StyleDialogTest, FieldsWriteTheStyleWithinTheirLimits)
{
    model.Select(1); // Sign: bottom-centre "8" in the file, top-centre on an ASS keypad
    FontFields f = model.Fields();
    EXPECT_EQ(f.FontName, "Arial");
    EXPECT_EQ(f.Alpha[3], "128");
    EXPECT_EQ(f.Margin[2], "10");
    EXPECT_EQ(f.Angle, "0.00");
    EXPECT_EQ(f.AlignmentButton, 0); // 8 is no stored value of the keypad
    f.FontName = QStringLiteral("Noto Sans CJK SC");
    f.FontSize = QStringLiteral("big"); // not a number: the size stays
    f.Bold = true;
    f.Underline = true;
    f.BorderStyle = 3;
    f.Margin = { QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("7.5") };
    f.Angle = QStringLiteral("15");
    f.AlignmentButton = 7;
    f.Comment = QStringLiteral("a\r\nb");
    EXPECT_TRUE(model.UpdateFont(f));
    CFont *sign = model.SelectedFont();
    EXPECT_EQ(sign->FontName(), "Noto Sans CJK SC");
    EXPECT_EQ(sign->FontSize(), 30);
    EXPECT_EQ(sign->Bold(), -1);
    EXPECT_EQ(sign->UnderLine(), -1);
    EXPECT_EQ(sign->BorderStyle(), 3);
    EXPECT_EQ(sign->MarginV(), 7.5);
    EXPECT_EQ(sign->Angle(), "15.00");
    EXPECT_EQ(sign->Alignment(), 5); // the top-left button stores the SSA code 5
    EXPECT_EQ(model.Fields().AlignmentButton, 7);

    // An encoding that is no number is refused and stays; the other fields still go in.
    f.Encode = QStringLiteral("gb");
    f.FontSize = QStringLiteral("40");
    EXPECT_FALSE(model.UpdateFont(f));
    EXPECT_EQ(prompt.Messages(), QStringList({ "文字编码项请输入数字" }));
    EXPECT_EQ(sign->Encoding(), 1);
    EXPECT_EQ(sign->FontSize(), 40);

    // An alpha above 255 goes back to 255 on leaving the field.
    EXPECT_EQ(model.LeaveAlpha(FontColour::Primary, QStringLiteral("300")), "255");
    EXPECT_EQ(sign->PrimaryAlpha, 255);
    EXPECT_EQ(model.LeaveAlpha(FontColour::Primary, QStringLiteral("64")), "64");
    EXPECT_EQ(sign->PrimaryAlpha, 64);
    // A new colour keeps its alpha; the third colour of an ASS script is the outline's.
    model.SetColour(FontColour::Back, 0x123456);
    EXPECT_EQ(sign->BackColourValue(), 0x123456);
    EXPECT_EQ(sign->BackAlpha, 128);
    model.SetColour(FontColour::Third, 0xABCDEF);
    EXPECT_EQ(sign->OutlineColorValue(), 0xABCDEF);
    EXPECT_EQ(sign->TertiaryColourValue(), 0);
    EXPECT_TRUE(sign->Content().contains(QStringLiteral("&H80123456")));

    // The keypad option: a button stores its own (ASS) number, and is remembered.
    model.setAlignmentKeypad(true);
    EXPECT_EQ(model.Fields().AlignmentButton, 5); // 5 is the middle of the keypad
    f = model.Fields();
    f.AlignmentButton = 8;
    model.UpdateFont(f);
    EXPECT_EQ(sign->Alignment(), 8);
    CFontDialogModel again;
    again.Init(doc.get(), &grid);
    EXPECT_TRUE(again.AlignmentKeypad());
}

TEST(StyleAlignment, KeypadButtonsAndTheirStoredValues)
{
    const qint16 stored[9] = { 1, 2, 3, 9, 10, 11, 5, 6, 7 };
    for (int button = 1; button <= 9; ++button) {
        EXPECT_EQ(basFont::AlignmentOfButton(button), stored[button - 1]);
        EXPECT_EQ(basFont::ButtonOfAlignment(stored[button - 1]), button);
        EXPECT_EQ(basFont::AlignmentOfButton(button, true), button);
        EXPECT_EQ(basFont::ButtonOfAlignment(qint16(button), true), button);
    }
    EXPECT_EQ(basFont::ButtonOfAlignment(4), 0);
    EXPECT_EQ(basFont::AlignmentOfButton(0), 0);
    EXPECT_EQ(basFont::LimitAlpha(QStringLiteral("255")), "255");
    EXPECT_EQ(basFont::LimitAlpha(QStringLiteral("256")), "255");
    EXPECT_EQ(basFont::LimitAlpha(QStringLiteral("x")), "x");
}

TEST_F(StyleDialogTest, HelpTextsAndAMissingFontThatKeepsItsName)
{
    const QStringList families = { QStringLiteral("SimHei"), QStringLiteral("Noto Sans CJK SC") };
    EXPECT_EQ(model.HelpText(FontHelp::FontList, families), ""); // "simhei": names match without case
    model.Select(1);
    EXPECT_EQ(model.HelpText(FontHelp::FontList, families), "在字体列表中没有找到同样名字的字体：Arial");
    EXPECT_EQ(model.Fields().FontName, "Arial");
    EXPECT_EQ(model.HelpText(FontHelp::Encode, families),
        "简体中文:134    繁体中文:137    日文:128    英文:0    自动选择:1");
    EXPECT_EQ(model.HelpText(FontHelp::Alpha, families), "颜色透明度：0-255的整数,越大透明度越高");
}

TEST_F(StyleDialogTest, StyleFilesSaveInTheFormOfTheirNameAndReadBack)
{
    model.SetColour(FontColour::Primary, 0x00FF00);
    const QString ssa = TempPath(QStringLiteral("styles.ssa"));
    ASSERT_TRUE(model.SaveStyleFile(ssa));
    const WholeFileRead written = ReadWholeFile(ssa, false);
    ASSERT_TRUE(written.Ok);
    EXPECT_TRUE(written.Text.startsWith(QStringLiteral("[V4 Styles]\r\nFormat: Name, Fontname, Fontsize, ")));
    EXPECT_TRUE(written.Text.contains(QStringLiteral("Style: Sign,Arial,30,&H0000FF,")));
    EXPECT_EQ(model.Fonts->ScriptType, ScriptType::ASS); // the copy keeps its own form

    std::unique_ptr<CFonts> back = CFontDialogModel::ReadStyleFile(ssa);
    ASSERT_TRUE(back);
    ASSERT_EQ(back->Count(), 2);
    for (const CFont *font : *model.Fonts) {
        const CFont *read = back->Item(font->StyleName());
        ASSERT_TRUE(read) << font->StyleName().toStdString();
        EXPECT_TRUE(CFonts::IsSameFont(*font, *read)) << font->StyleName().toStdString();
    }

    // A second save keeps the first in the backup folder; ".ass" writes the ASS form.
    ASSERT_TRUE(model.SaveStyleFile(ssa));
    EXPECT_TRUE(QFile::exists(Program() + QStringLiteral("AutoBak/styles.ssa")));
    const QString ass = TempPath(QStringLiteral("styles.ass"));
    ASSERT_TRUE(model.SaveStyleFile(ass));
    EXPECT_TRUE(
        ReadWholeFile(ass, false).Text.contains(QStringLiteral("Style: Default,simhei,18,&H0000FF00,")));

    // Only ASS and SSA scripts give styles; a missing file says why.
    EXPECT_FALSE(CFontDialogModel::ReadStyleFile(TempPath(QStringLiteral("a.srt"))));
    EXPECT_FALSE(CFontDialogModel::ReadStyleFile(TempPath(QStringLiteral("none.ass"))));
    ASSERT_EQ(prompt.Messages().size(), 2);
    EXPECT_EQ(prompt.Messages().at(0), Msg(QStringLiteral("COMM_MSG_201")));
    EXPECT_TRUE(prompt.Messages().at(1).startsWith(Msg(QStringLiteral("FONT_MSG_100"))));
}

TEST_F(StyleDialogTest, AnImportWithOneClashAddsNothing)
{
    auto offered = Class::MakeCollection<CFonts>();
    offered->Create(QStringLiteral("Karaoke"));
    CImportFontModel import;
    import.Init(std::move(offered), model.Fonts.get());
    ASSERT_EQ(import.Names(), QStringList({ "Default", "Karaoke" }));

    EXPECT_FALSE(import.OK({ 0, 1 }));
    EXPECT_EQ(prompt.Messages(),
        QStringList({ "所选字体的名字[Default]已经存在于现有字体中，请改变名字后再导入" }));
    EXPECT_EQ(model.StyleNames(), QStringList({ "Default", "Sign" }));

    // Renamed, it goes in with the other, each now of the target list.
    Answer(QStringLiteral("Karaoke"));
    EXPECT_FALSE(import.Rename(0)); // the offered list has that name
    Answer(QStringLiteral("Imported"));
    ASSERT_TRUE(import.Rename(0));
    EXPECT_TRUE(import.OK({ 0, 1 }));
    EXPECT_FALSE(import.Canceled);
    EXPECT_EQ(import.Added, QStringList({ "Imported", "Karaoke" }));
    EXPECT_EQ(model.StyleNames(), QStringList({ "Default", "Sign", "Imported", "Karaoke" }));
    EXPECT_EQ(model.Fonts->Item(QStringLiteral("Karaoke"))->Parent(), model.Fonts.get());
    EXPECT_EQ(DocumentStyles(), QStringList({ "Default", "Sign" }));

    import.Cancel();
    EXPECT_TRUE(import.Canceled);
    EXPECT_FALSE(import.Rename(-1));
    EXPECT_EQ(prompt.Messages().last(), "请先选择一个要改名的字体");
}

TEST_F(ShellFixture, OwnerListChecksEachCommandAndCancelKeepsTheNames)
{
    COwnerDialogModel owners;
    owners.Init({ QStringLiteral("Ann"), QStringLiteral("Bob") });
    prompt.Inputs
        = { QStringLiteral("Ann"), QStringLiteral("Cat"), QStringLiteral("Bob"), QStringLiteral("Dan") };
    EXPECT_FALSE(owners.Add());
    EXPECT_TRUE(owners.Add());
    EXPECT_FALSE(owners.Rename(0)); // a name present
    EXPECT_TRUE(owners.Rename(0));
    EXPECT_EQ(owners.Items, QStringList({ "Dan", "Bob", "Cat" }));
    EXPECT_FALSE(owners.Rename(-1));
    EXPECT_FALSE(owners.Delete(-1));
    prompt.Answers = { MsgBoxResult::Yes, MsgBoxResult::Yes };
    EXPECT_TRUE(owners.Delete(2));
    EXPECT_TRUE(owners.Delete(0));
    EXPECT_FALSE(owners.Delete(0));
    EXPECT_EQ(prompt.Messages(),
        QStringList({ "请输入新人名", "已经存在这个名字了，请使用其他名字", "请输入新人名", "请输入新的名字",
            "已经存在这个名字了，请使用其他名字", "请输入新的名字", "请先选择一个要改变的名字",
            "请先选择一个要删除的人名", "确定删除这个人名吗？", "确定删除这个人名吗？",
            "至少需要保留一个人名" }));
    owners.Cancel();
    EXPECT_TRUE(owners.Canceled);
    EXPECT_EQ(owners.OwnerNames, QStringList({ "Ann", "Bob" }));
    owners.OK();
    EXPECT_FALSE(owners.Canceled);
    EXPECT_EQ(owners.OwnerNames, QStringList({ "Bob" }));
}

TEST_F(ShellFixture, ScriptInfoFieldsGoBothWaysExceptTheGeneratedComment)
{
    SetNow(QDateTime(QDate(2024, 5, 6), QTime(7, 8, 9)));
    auto info = Class::Make<CSubInfo>(nullptr);
    info->Read(u"[Script Info]\r\nTitle: Episode\r\n; mine\r\n; two\r\nScriptType: v4.00\r\nPlayResX: 640\r\n"
               u"WrapStyle: 2\r\nCollisions: Reverse\r\n");
    CScriptInfoFields f;
    f.Read(*info);
    EXPECT_EQ(f.Title, " Episode");
    EXPECT_EQ(f.Comment, " mine\n two"); // the blank behind ";" is part of the line
    EXPECT_EQ(f.ScriptType, 0);
    EXPECT_EQ(f.Collisions, 1);
    EXPECT_EQ(f.WrapStyle, 2);
    EXPECT_EQ(f.PlayResX, "640");
    EXPECT_EQ(f.Timer, "100");
    EXPECT_TRUE(f.VelmarComment.startsWith(QStringLiteral("此字幕由Velmar生成  2024-05-06 07:08:09\n")));
    EXPECT_FALSE(CScriptInfoFields::WrapStyleEnabled(f.ScriptType));
    EXPECT_TRUE(CScriptInfoFields::WrapStyleEnabled(1));
    EXPECT_EQ(CScriptInfoFields::WrapStyleItems().at(1), "1: \\N换行");
    EXPECT_EQ(CScriptInfoFields::ScriptTypeItems(), QStringList({ "SSA格式  V4.00", "ASS格式  V4.00+" }));

    f.Title = QStringLiteral("Another");
    f.Comment = QStringLiteral("one\nthree");
    f.ScriptType = 1;
    f.PlayResY = QStringLiteral("480");
    f.PlayResX = QStringLiteral("wide"); // not a number: kept
    f.LrcName = QStringLiteral("Song");
    f.LrcOffset = QStringLiteral("-120");
    f.VelmarComment = QStringLiteral("edited");
    f.Write(*info);
    EXPECT_EQ(info->Title(), "Another");
    EXPECT_EQ(info->Comment(), "one\r\nthree");
    EXPECT_EQ(info->ScriptType(), ScriptType::ASS);
    EXPECT_EQ(info->PlayResX(), 640);
    EXPECT_EQ(info->PlayResY(), 480);
    EXPECT_EQ(info->LrcName(), "Song");
    EXPECT_EQ(info->LrcOffset(), -120);
    EXPECT_TRUE(info->VelmarComment().startsWith(QStringLiteral("此字幕由Velmar生成")));
    const QString head = info->Content();
    EXPECT_TRUE(head.contains(QStringLiteral("; one\r\n; three\r\n")));
    EXPECT_TRUE(head.contains(QStringLiteral("ScriptType:v4.00+\r\n")));
    EXPECT_TRUE(head.contains(QStringLiteral("PlayResY:480\r\n")));
}

TEST(FontSample, DrawsTheTextInItsColoursWhereItsAlignmentPutsIt)
{
    auto font = Class::Make<CFont>(QStringLiteral("S"));
    font->setFontSize(40);
    font->setPrimaryColour(u"255"); // red
    font->setOutline(0);
    font->setShadow(0);
    auto redRows = [](const QImage &image) {
        int top = image.height(), bottom = -1;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor c = image.pixelColor(x, y);
                if (c.red() > 200 && c.green() < 60 && c.blue() < 60) {
                    top = std::min(top, y);
                    bottom = std::max(bottom, y);
                }
            }
        return std::pair(top, bottom);
    };
    font->setAlignment(2);
    const auto [lowTop, lowBottom] = redRows(basFontSample::Draw(*font, QSize(400, 200)));
    ASSERT_GE(lowBottom, 0) << "no text drawn";
    EXPECT_GT(lowTop, 100);
    font->setAlignment(8);
    const auto [highTop, highBottom] = redRows(basFontSample::Draw(*font, QSize(400, 200)));
    ASSERT_GE(highBottom, 0);
    EXPECT_LT(highBottom, 100);
    // Fully transparent text leaves only the ground.
    font->PrimaryAlpha = 255;
    EXPECT_LT(redRows(basFontSample::Draw(*font, QSize(400, 200))).second, 0);
    EXPECT_EQ(basFontSample::StyleColour(0xFF0000, 0x40), QColor(0, 0, 255, 0xBF));
}

TEST(About, CatalogueNotesAreNotShownAndTheSystemIsDescribed)
{
    LoadMessages();
    EXPECT_EQ(basAbout::AboutText(QStringLiteral("ABOUT_MSG_100")), "Velmar");
    EXPECT_EQ(basAbout::AboutText(QStringLiteral("ABOUT_MSG_200")), "仅用于KALVO字幕组内部测试");
    const QString info = basAbout::SystemInformation();
    EXPECT_TRUE(info.startsWith(basAbout::VersionLine() + u'\n'));
    EXPECT_TRUE(info.contains(QStringLiteral("Qt ") + QString::fromLatin1(qVersion())));
}
