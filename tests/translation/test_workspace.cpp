// The translation workspace's rules without windows: karaoke strokes, find and replace,
// the quick tables, the format state of a selection, drafts opened by name, ChangeTo,
// and the notepad's slots and helpers.
#include "FakeTextControl.h"

#include "core/CScriptedPrompt.h"
#include "core/CSpread.h"
#include "core/basPlatform.h"
#include "core/basText.h"
#include "formats/CFileOptionModel.h"
#include "formats/CTiming.h"
#include "script/CSSAContent.h"
#include "script/CSSAContentLine.h"
#include "translation/CKaraOKStrokes.h"
#include "translation/CNotePads.h"
#include "translation/CTextFind.h"
#include "translation/CTranslate.h"
#include "translation/basRtf.h"
#include "translation/basTranslateFile.h"
#include "translation/basTranslateWindow.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace basTranslateWindow;

namespace {

// The syllables of a line, one after another, as the strokes take them.
QStringList Syllables(const QString &line)
{
    QStringList out;
    int at = 0;
    while (const int n = CKaraOKStrokes::SyllableLength(line, at)) {
        out << line.mid(at, n);
        at += n;
    }
    return out;
}

class WorkspaceTest : public ::testing::Test
{
protected:
    void SetUp() override { SetPrompt(&prompt); }
    void TearDown() override { SetPrompt(nullptr); }
    CScriptedPrompt prompt;
};

} // namespace

TEST(KaraOKStrokes, SyllablesAreCjkCharactersOrWordsWithWhatFollowsThem)
{
    EXPECT_EQ(Syllables(QStringLiteral("你好，世界！")),
        QStringList(
            { QStringLiteral("你"), QStringLiteral("好，"), QStringLiteral("世"), QStringLiteral("界！") }));
    EXPECT_EQ(Syllables(QStringLiteral("Hello, world! 2024")),
        QStringList({ QStringLiteral("Hello, "), QStringLiteral("world! "), QStringLiteral("2024") }));
    // Kana with the length mark, hangul syllables, and punctuation in front of the first.
    EXPECT_EQ(Syllables(QStringLiteral("ラーメン")),
        QStringList({ QStringLiteral("ラー"), QStringLiteral("メ"), QStringLiteral("ン") }));
    EXPECT_EQ(Syllables(QStringLiteral("안녕 하세요")),
        QStringList({ QStringLiteral("안"), QStringLiteral("녕 "), QStringLiteral("하"), QStringLiteral("세"),
            QStringLiteral("요") }));
    EXPECT_EQ(Syllables(QStringLiteral("「爱」la")),
        QStringList({ QStringLiteral("「爱」"), QStringLiteral("la") }));
    // A character outside the basic plane is one syllable, never half of one.
    EXPECT_EQ(Syllables(QStringLiteral("𠀀好")), QStringList({ QStringLiteral("𠀀"), QStringLiteral("好") }));
    EXPECT_EQ(Syllables(QStringLiteral("……")), QStringList({ QStringLiteral("……") }));
    EXPECT_EQ(CKaraOKStrokes::SyllableLength(QStringLiteral("ab"), 2), 0);
}

TEST(KaraOKStrokes, StartLyricsAndEndWalkTheCaretsLine)
{
    QTextDocument draft;
    draft.setPlainText(QStringLiteral("标题\n我爱 you!\n\n  \n下一行"));
    CKaraOKStrokes strokes;
    strokes.setDocument(&draft);
    QStringList told;
    std::optional<bool> mode;
    strokes.RecordStart = [&] { told << QStringLiteral("start"); };
    strokes.NewLyrics = [&](const QString &text) { told << text; };
    strokes.RecordEnd = [&] { told << QStringLiteral("end"); };
    strokes.ModeChanged = [&](bool on) { mode = on; };
    const KaraOKKeys keys { 119, 118, 120 }; // F8, F7, F9

    // Outside the mode every key goes on.
    EXPECT_FALSE(strokes.KeyDown(119, 0, 0, keys).Swallow);
    EXPECT_TRUE(told.isEmpty());

    const int line2 = draft.findBlockByNumber(1).position();
    strokes.CaretMoved(line2 + 2);
    strokes.setMode(true);
    EXPECT_EQ(mode, true);
    EXPECT_EQ(strokes.Pointer(), line2);
    EXPECT_EQ(strokes.NextSyllable(), std::make_pair(line2, 1));

    EXPECT_TRUE(strokes.KeyDown(119, 0, line2 + 2, keys).Swallow);
    EXPECT_TRUE(strokes.KeyDown(32, 0, line2 + 2, keys).Swallow);
    // Keys with Shift, Ctrl or Alt are no strokes.
    EXPECT_FALSE(strokes.KeyDown(32, 2, line2 + 2, keys).Swallow);
    EXPECT_TRUE(strokes.KeyDown(118, 0, line2 + 2, keys).Swallow);
    strokes.KeyDown(32, 0, line2 + 2, keys);
    // The line is done: a stroke more is taken and says nothing.
    EXPECT_TRUE(strokes.KeyDown(32, 0, line2 + 2, keys).Swallow);
    EXPECT_EQ(strokes.NextSyllable().second, 0);
    const CKaraOKStrokes::Stroke end = strokes.KeyDown(120, 0, line2 + 2, keys);
    EXPECT_TRUE(end.Swallow);
    // The caret passes the empty and the blank line.
    ASSERT_TRUE(end.Caret);
    EXPECT_EQ(*end.Caret, draft.findBlockByNumber(4).position());
    EXPECT_EQ(told,
        QStringList({ QStringLiteral("start"), QStringLiteral("我"), QStringLiteral("爱 "),
            QStringLiteral("you!"), QStringLiteral("end") }));
    EXPECT_EQ(strokes.Pointer(), *end.Caret);

    // A caret moved to another line takes the pointer along; a move inside the line
    // keeps it.
    strokes.CaretMoved(line2 + 1);
    EXPECT_EQ(strokes.Pointer(), line2);
    strokes.KeyDown(32, 0, line2 + 1, keys);
    strokes.CaretMoved(line2 + 3);
    EXPECT_EQ(strokes.Pointer(), line2 + 1);

    // The end key on the last line leaves the caret where it is.
    EXPECT_FALSE(strokes.KeyDown(120, 0, draft.characterCount() - 1, keys).Caret);
    strokes.setMode(false);
    EXPECT_EQ(mode, false);
    EXPECT_FALSE(strokes.KeyDown(32, 0, 0, keys).Swallow);
}

TEST_F(WorkspaceTest, FindNextRulesUpDownCaseAndTheMessage)
{
    FakeTextControl text;
    text.setText(QStringLiteral("Abc abc\r\nABC x"));
    CTextFind find;
    find.FindTarget = &text;
    find.FindText = QStringLiteral("abc");

    // Without case every form is found, and a repeated search moves on.
    ASSERT_TRUE(find.FindNext());
    EXPECT_EQ(text.SelStart(), 0);
    EXPECT_EQ(text.SelLength(), 3);
    ASSERT_TRUE(find.FindNext());
    EXPECT_EQ(text.SelStart(), 4);
    ASSERT_TRUE(find.FindNext());
    EXPECT_EQ(text.SelStart(), 9); // the line end counts two
    EXPECT_FALSE(find.FindNext());
    EXPECT_EQ(prompt.Records.last().Prompt,
        QStringLiteral("没有找到文字: [abc]\r\n如想继续查找，请把光标移动到文件开始点"));
    EXPECT_EQ(prompt.Records.last().Title, QStringLiteral("Find"));

    // Up walks back from the caret; from the start of the text there is nothing.
    find.Direction = 0;
    text.setSelStart(9);
    ASSERT_TRUE(find.FindNext());
    EXPECT_EQ(text.SelStart(), 4);
    text.setSelStart(0);
    const auto before = prompt.Records.size();
    EXPECT_FALSE(find.FindNext());
    EXPECT_EQ(prompt.Records.size(), before + 1);

    // With case only the exact form.
    find.Direction = 1;
    find.MatchCase = true;
    find.FindText = QStringLiteral("ABC");
    find.Restart();
    ASSERT_TRUE(find.FindNext());
    EXPECT_EQ(text.SelStart(), 9);

    // The empty string finds nothing and says so.
    find.FindText.clear();
    EXPECT_FALSE(find.FindNext());
    EXPECT_EQ(prompt.Records.last().Prompt, CTextFind::NotFoundText(QString()));
    EXPECT_EQ(text.SelStart(), 9);
}

TEST_F(WorkspaceTest, ReplaceAndReplaceAllInTwoRoundsWithoutCase)
{
    FakeTextControl text;
    text.setText(QStringLiteral("abc ABC Abc aBC"));
    CTextFind find;
    find.FindTarget = &text;
    find.FindText = QStringLiteral("abc");
    find.ReplaceText = QStringLiteral("x");

    // Replace takes the selection only when it is the search string, then finds on.
    text.Select(4, 3);
    ASSERT_TRUE(find.Replace());
    EXPECT_EQ(text.Text(), QStringLiteral("abc x Abc aBC"));
    EXPECT_EQ(text.SelStart(), 6);
    text.Select(0, 2);
    find.Replace();
    EXPECT_EQ(text.Text(), QStringLiteral("abc x Abc aBC"));

    // As typed to upper case, then the upper case form: the mixed forms stay.
    text.setText(QStringLiteral("abc ABC Abc aBC"));
    text.setSelStart(5);
    find.ReplaceAll();
    EXPECT_EQ(text.Text(), QStringLiteral("x x Abc aBC"));
    EXPECT_EQ(text.SelStart(), 0);

    find.MatchCase = true;
    text.setText(QStringLiteral("abc ABC Abc"));
    find.ReplaceAll();
    EXPECT_EQ(text.Text(), QStringLiteral("x ABC Abc"));
}

TEST_F(WorkspaceTest, QuickKeysAndTableClicks)
{
    CTranslate doc;
    doc.spdChangeTable().SetText(1, 1, QStringLiteral("字幕组"));
    doc.AddChangeTableRow();
    doc.spdColor().setRow(1);
    doc.spdColor().setCol(1);
    doc.spdColor().setBackColor(0xFF0000);
    doc.AddColorTableRow();
    constexpr int alt = 4, ctrl = 2;

    QuickKey k = QuickKeyOf(doc, '1', alt);
    EXPECT_EQ(k.Action, QuickKey::InsertText);
    EXPECT_EQ(k.Text, QStringLiteral("字幕组"));
    // A key without a row (the table has "1" and "2") is swallowed all the same.
    EXPECT_EQ(QuickKeyOf(doc, '5', alt).Action, QuickKey::Swallow);
    EXPECT_EQ(QuickKeyOf(doc, 'Q', alt).Action, QuickKey::Swallow);
    EXPECT_EQ(QuickKeyOf(doc, '1', 0).Action, QuickKey::None);
    k = QuickKeyOf(doc, '1', ctrl);
    EXPECT_EQ(k.Action, QuickKey::SetColour);
    EXPECT_EQ(k.Colour, 0xFF0000);
    EXPECT_EQ(QuickKeyOf(doc, '3', ctrl).Action, QuickKey::None);
    EXPECT_EQ(QuickKeyOf(doc, 'A', ctrl).Action, QuickKey::None);

    EXPECT_EQ(ChangeTableText(doc, 1, 1), QStringLiteral("字幕组"));
    EXPECT_FALSE(ChangeTableText(doc, 2, 1));
    EXPECT_FALSE(ChangeTableText(doc, 1, 0));
    EXPECT_EQ(ColorTableColour(doc, 1, 1), 0xFF0000);

    // Only the last row makes a new one, with the next label.
    EXPECT_FALSE(ChangeTableRowReached(doc, 1));
    EXPECT_TRUE(ChangeTableRowReached(doc, 2));
    EXPECT_EQ(doc.spdChangeTable().MaxRows(), 3);
    EXPECT_EQ(doc.spdChangeTable().GetText(0, 3), QStringLiteral("3"));
    EXPECT_TRUE(ColorTableRowReached(doc, 2));
    EXPECT_EQ(doc.spdColor().GetBackColor(1, 3), 0u);

    // The colour dialog on a row's label: cancel keeps the colour.
    prompt.Colours = { std::nullopt, qint64(0x00FF00) };
    EXPECT_FALSE(AskRowColour(doc, 1));
    EXPECT_EQ(doc.spdColor().GetBackColor(1, 1), 0xFF0000u);
    EXPECT_TRUE(AskRowColour(doc, 1));
    EXPECT_EQ(doc.spdColor().GetBackColor(1, 1), 0x00FF00u);
}

TEST(TranslateWindowRules, SelectionFormatIsMixedOrWhole)
{
    QTextDocument doc;
    QFont font(QStringLiteral("Sans"));
    font.setPointSizeF(12);
    doc.setDefaultFont(font);
    QTextCursor c(&doc);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    bold.setForeground(QColor(0, 0, 255));
    bold.setFontFamilies(QStringList { QStringLiteral("Serif") });
    c.insertText(QStringLiteral("粗体"), bold);
    c.insertText(QStringLiteral("plain"), QTextCharFormat());

    SelectionFormat all = ReadSelectionFormat(doc, 0, 2);
    EXPECT_EQ(all.Bold, FormatState::On);
    EXPECT_EQ(all.Italic, FormatState::Off);
    EXPECT_EQ(all.FontName, QStringLiteral("Serif"));
    EXPECT_EQ(all.FontSize, QStringLiteral("12"));
    EXPECT_EQ(all.Colour, 0xFF0000);
    EXPECT_EQ(ColourStatus(all), QStringLiteral("颜色: &HFF0000"));

    const SelectionFormat mixed = ReadSelectionFormat(doc, 1, 4);
    EXPECT_EQ(mixed.Bold, FormatState::Mixed);
    EXPECT_TRUE(mixed.FontName.isEmpty());
    EXPECT_EQ(mixed.FontSize, QStringLiteral("12"));
    EXPECT_FALSE(mixed.Colour);
    EXPECT_EQ(ColourStatus(mixed), QStringLiteral("颜色: "));
    EXPECT_TRUE(PressedAfterClick(FormatState::Mixed));
    EXPECT_FALSE(PressedAfterClick(FormatState::On));

    // A caret reads the character before it.
    EXPECT_EQ(ReadSelectionFormat(doc, 1, 1).Bold, FormatState::On);
    EXPECT_EQ(ReadSelectionFormat(doc, 5, 5).Bold, FormatState::Off);
    EXPECT_EQ(LineStatus(3), QStringLiteral("行:3"));
}

TEST_F(WorkspaceTest, DraftsOpenedByNameByTheMarkAndTheCodePage)
{
    QTemporaryDir dir;
    auto write = [&dir](const char *name, const QByteArray &bytes) {
        const QString path = dir.filePath(QString::fromLatin1(name));
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        return path;
    };
    const QString text = QStringLiteral("//甲=乙\r\n第一行\r\n第二行");
    QByteArray utf16("\xFF\xFE", 2);
    utf16.append(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);

    CTranslate doc;
    doc.TranslateOption = 0;
    ASSERT_TRUE(basTranslateFile::OpenDraftFile(doc, write("marked.txt", utf16)));
    // The mark is gone and the text Unicode; the table rows are read under the options
    // the document had, and from then on travel with it.
    EXPECT_EQ(DocumentPlainText(*doc.Translate()), text);
    EXPECT_EQ(doc.FileCode, FileCode::Unicode);
    EXPECT_EQ(doc.TranslateOption, TranslateOption::ChangeTable);
    EXPECT_EQ(doc.ScriptType, ScriptType::Plain);
    EXPECT_FALSE(doc.Changed());

    ASSERT_TRUE(basTranslateFile::OpenDraftFile(doc, write("ansi.TXT", EncodeSystemCodePage(text))));
    EXPECT_EQ(DocumentPlainText(*doc.Translate()), QStringLiteral("第一行\r\n第二行"));
    EXPECT_EQ(doc.spdChangeTable().GetText(1, 1), QStringLiteral("甲"));
    EXPECT_EQ(doc.FileCode, FileCode::ANSI);

    ASSERT_TRUE(basTranslateFile::OpenDraftFile(doc, write("empty.txt", QByteArray())));
    EXPECT_TRUE(DocumentPlainText(*doc.Translate()).isEmpty());
    EXPECT_EQ(basTranslateFile::DraftTypeOfName(QStringLiteral("/a.b/draft.Rtf")), ScriptType::RichText);
    EXPECT_EQ(basTranslateFile::DraftTypeOfName(QStringLiteral("/a.rtf/draft")), ScriptType::Plain);

    const QString missing = dir.filePath(QStringLiteral("none.txt"));
    EXPECT_FALSE(basTranslateFile::OpenDraftFile(doc, missing));
    EXPECT_EQ(prompt.Messages().last(), missing + QStringLiteral(" 无法打开文件。 "));
    EXPECT_EQ(doc.FileName(), dir.filePath(QStringLiteral("empty.txt")));
}

TEST_F(WorkspaceTest, ChangeToMakesEventsOfTheLinesWithoutTheTables)
{
    CTranslate draft;
    draft.setContent(QStringLiteral("//a=b\r\n第一句\r\n第二句"));
    draft.setChanged(true);
    CTiming timing;
    timing.Init(1);
    CFileOptionModel model;
    int shown = 0;
    ASSERT_TRUE(basTranslateFile::ChangeTo(draft, timing, model, [&] {
        ++shown;
        EXPECT_EQ(model.ParentWindowType, ParentWindowType::TranslateToTiming);
        EXPECT_EQ(model.Operation(), FileOperation::Convert);
        EXPECT_EQ(model.FileContent, QStringLiteral("第一句\r\n第二句"));
        model.setChangeOptionBit(ChangeOption::Color, true);
        return model.Ok();
    }));
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(timing.ScriptType(), ScriptType::ASS);
    ASSERT_EQ(timing.SSAContent->Count(), 2);
    EXPECT_EQ(timing.SSAContent->At(1)->Dialog(), QStringLiteral("第二句"));
    // The draft keeps its tables and its flag, and takes the chosen options.
    EXPECT_EQ(draft.TranslateOption, TranslateOption::ChangeTable);
    EXPECT_EQ(draft.ChangeOption, ChangeOption::Text | ChangeOption::Color);
    EXPECT_TRUE(draft.Changed());

    // Cancel changes nothing.
    CTiming other;
    other.Init(2);
    EXPECT_FALSE(basTranslateFile::ChangeTo(draft, other, model, [&] {
        model.Cancel();
        return false;
    }));
    EXPECT_EQ(other.SSAContent->Count(), 0);
    EXPECT_EQ(draft.ChangeOption, ChangeOption::Text | ChangeOption::Color);
}

TEST(NotePads, SlotsDecodingLinesAndNames)
{
    CNotePads pads;
    QObject a, b, c;
    EXPECT_EQ(pads.Open(&a), 1);
    EXPECT_EQ(pads.Open(&b), 2);
    pads.Close(1);
    EXPECT_EQ(pads.At(1), nullptr);
    EXPECT_EQ(pads.Open(&c), 1);
    EXPECT_EQ(pads.At(1)->Window, &c);
    EXPECT_EQ(pads.Count(), 2);

    const QString text = QStringLiteral("中文");
    QByteArray marked("\xFE\xFF", 2);
    marked.append(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    bool unicode = false;
    EXPECT_EQ(CNotePads::Decode(marked, 1, &unicode), text);
    EXPECT_TRUE(unicode);
    EXPECT_EQ(CNotePads::Decode(marked.mid(2), 2, &unicode), text);
    EXPECT_TRUE(unicode);
    EXPECT_EQ(CNotePads::Decode(EncodeSystemCodePage(text), 1, &unicode), text);
    EXPECT_FALSE(unicode);
    EXPECT_EQ(CNotePads::Decode(EncodeSystemCodePage(text), 3), text);

    const QString lines = QStringLiteral("ab\r\ncde\r\n\r\nf");
    EXPECT_EQ(CNotePads::LinePosition(lines, 1), 0);
    EXPECT_EQ(CNotePads::LinePosition(lines, 3), 9);
    EXPECT_EQ(CNotePads::LinePosition(lines, 4), 11);
    EXPECT_EQ(CNotePads::LinePosition(lines, 99), 11);
    EXPECT_EQ(CNotePads::LinePosition(lines, -5), 0);

    EXPECT_EQ(CNotePads::ProposedName(3), ProgramFolder() + QStringLiteral("翻译3.txt"));
    EXPECT_EQ(CNotePads::CloseQuestion(QStringLiteral("a.txt")),
        QStringLiteral("[a.txt] 已改变.\r\n要保存文件吗 ?"));
    EXPECT_FALSE(CNotePads::TimeStamp(nullptr));
}
