#include "core/CScriptedPrompt.h"
#include "core/CSpread.h"
#include "formats/CFileOptionModel.h"
#include "translation/CTranslates.h"
#include "translation/basRtf.h"

#include <QTextBlock>
#include <QTextCursor>

#include <gtest/gtest.h>

namespace {

class TranslateTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        QFont f(QStringLiteral("Sans"));
        f.setPointSizeF(12);
        doc.Translate()->setDefaultFont(f);
        doc.ClipboardText = [this] { return clipboard; };
        doc.setClipboardText = [this](const QString &t) { clipboard = t; };
    }
    void TearDown() override { SetPrompt(nullptr); }

    QString ViewText() const { return DocumentPlainText(*doc.Translate()); }

    // Appends text in a format to the view.
    void Add(const QString &text, const QTextCharFormat &f = QTextCharFormat())
    {
        QTextCursor c(doc.Translate());
        c.movePosition(QTextCursor::End);
        const QStringList lines = text.split(QStringLiteral("\r\n"));
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (i > 0)
                c.insertBlock(QTextBlockFormat(), f);
            c.insertText(lines[i], f);
        }
    }
    static QTextCharFormat Colour(int r, int g, int b)
    {
        QTextCharFormat f;
        f.setForeground(QColor(r, g, b));
        return f;
    }

    CScriptedPrompt prompt;
    CTranslate doc;
    QString clipboard;
};

namespace {

// The tables as plain rows: "from=to" and "colour=text" (colour in hexadecimal).
QStringList ChangeRows(const CTranslate &doc)
{
    QStringList rows;
    const CSpread &t = doc.spdChangeTable();
    for (int row = 1; row <= t.MaxRows(); ++row)
        rows << t.GetText(1, row) + u'=' + t.GetText(2, row);
    return rows;
}

QStringList ColorRows(const CTranslate &doc)
{
    QStringList rows;
    const CSpread &t = doc.spdColor();
    for (int row = 1; row <= t.MaxRows(); ++row)
        rows << QString::number(t.GetBackColor(1, row), 16) + u'=' + t.GetText(1, row);
    return rows;
}

void SetChangeRow(CTranslate &doc, int row, const QString &from, const QString &to)
{
    while (doc.spdChangeTable().MaxRows() <= row)
        doc.AddChangeTableRow();
    doc.spdChangeTable().SetText(1, row, from);
    doc.spdChangeTable().SetText(2, row, to);
}

void SetColorRow(CTranslate &doc, int row, quint32 colour, const QString &text)
{
    while (doc.spdColor().MaxRows() <= row)
        doc.AddColorTableRow();
    CSpread &t = doc.spdColor();
    t.setRow(row);
    t.setCol(1);
    t.setBackColor(colour);
    t.SetText(1, row, text);
}
} // namespace

TEST_F(TranslateTest, ADraftWithoutTableRowsStaysWhole)
{
    SetChangeRow(doc, 1, QStringLiteral("old"), QStringLiteral("x"));
    doc.setContent(QStringLiteral("\r\n  first line\r\n//not a row\r\nlast"));
    EXPECT_EQ(ViewText(), QStringLiteral("\r\n  first line\r\n//not a row\r\nlast"));
    EXPECT_EQ(ChangeRows(doc), QStringList({ "=" }));
    EXPECT_EQ(ColorRows(doc), QStringList({ "0=" }));
    EXPECT_EQ(doc.spdChangeTable().GetText(0, 1), "1");
}

TEST_F(TranslateTest, TableRowsFillTheTablesAndLeaveTheDraft)
{
    doc.setContent(QStringLiteral("//a=b\r\n  //  noequals\r\n\r\n// &HFF0000=line\r\n//&H00FF\r\n//x=y\r\n"
                                  "//&Hzz=bad\r\nText one\r\n//after text"));
    EXPECT_EQ(ViewText(), QStringLiteral("\r\nText one\r\n//after text"));
    EXPECT_EQ(ChangeRows(doc), QStringList({ "a=b", "noequals=", "=" }));
    // Once a colour row came, every row goes to the colour loop. Basic reads "&H00FF"
    // as a 16-bit 255; "x" and "&Hzz" are no numbers, so the colour stays 0.
    EXPECT_EQ(ColorRows(doc), QStringList({ "ff0000=line", "ff=", "0=y", "0=bad", "0=" }));
    QString labels;
    for (int row = 1; row <= doc.spdChangeTable().MaxRows(); ++row)
        labels += doc.spdChangeTable().GetText(0, row);
    EXPECT_EQ(labels, "123");
}

TEST_F(TranslateTest, TheTablesStayWhenTheOptionIsOff)
{
    doc.TranslateOption = 0;
    SetChangeRow(doc, 1, QStringLiteral("k"), QStringLiteral("v"));
    doc.setContent(QStringLiteral("//a=b\r\ntext"));
    EXPECT_EQ(ViewText(), QStringLiteral("//a=b\r\ntext"));
    EXPECT_EQ(ChangeRows(doc).first(), "k=v");
    EXPECT_EQ(doc.Content(), QStringLiteral("//a=b\r\ntext"));
}

TEST_F(TranslateTest, RowLabels)
{
    QString change;
    for (int row : { 0, 8, 9, 34, 35 })
        change += CTranslate::ChangeTableLabel(row);
    EXPECT_EQ(change, QStringLiteral("19AZ "));
    EXPECT_EQ(CTranslate::ColorTableLabel(8), QStringLiteral("9"));
    EXPECT_EQ(CTranslate::ColorTableLabel(9), QStringLiteral(" "));
}

TEST_F(TranslateTest, WritingPutsTheTableRowsInFront)
{
    doc.setContent(QStringLiteral("line 1\r\nline 2"));
    SetChangeRow(doc, 1, QStringLiteral("a"), QStringLiteral("b"));
    SetChangeRow(doc, 2, QStringLiteral(" "), QString());
    SetColorRow(doc, 1, 0xFF, QStringLiteral("red"));
    SetColorRow(doc, 2, 0x123456, QStringLiteral(" "));
    EXPECT_EQ(doc.Content(), QStringLiteral("//a=b\r\n//&H0000FF=red\r\nline 1\r\nline 2"));

    // Read back, the same tables come out.
    CTranslate again;
    again.setContent(doc.Content());
    EXPECT_EQ(DocumentPlainText(*again.Translate()), QStringLiteral("line 1\r\nline 2"));
    EXPECT_EQ(ColorRows(again), QStringList({ "ff=red", "0=" }));
    EXPECT_EQ(ChangeRows(again), QStringList({ "a=b", "=" }));
}

TEST_F(TranslateTest, TheWalkTurnsFormatsIntoTags)
{
    QTextCharFormat redBold = Colour(255, 0, 0);
    redBold.setFontWeight(QFont::Bold);
    Add(QStringLiteral("AB"), redBold);
    Add(QStringLiteral("C\r\nD"));
    doc.ChangeOption = 1 | 2 | 64;
    EXPECT_EQ(doc.Content(), QStringLiteral("{\\c&HFF&}{\\b1}AB{\\c&H0&}{\\b0}C\r\n{\\c&H0&}{\\b0}D"));

    // Tags only.
    doc.ChangeOption = 2;
    EXPECT_EQ(doc.Content(), QStringLiteral("{\\c&HFF&}{\\c&H0&}\r\n{\\c&H0&}"));

    // Black and white swapped in the tags.
    doc.ChangeOption = 1 | 2 | 256;
    Add(QStringLiteral("W"), Colour(255, 255, 255));
    EXPECT_EQ(doc.Content(), QStringLiteral("{\\c&HFF&}AB{\\c&HFFFFFF&}C\r\n{\\c&HFFFFFF&}D{\\c&H000000&}W"));
}

TEST_F(TranslateTest, TagOrderAtOnePosition)
{
    QTextCharFormat f = Colour(0, 0, 255);
    f.setFontFamilies(QStringList { QStringLiteral("SimHei") });
    f.setFontPointSize(20);
    f.setFontStrikeOut(true);
    f.setFontUnderline(true);
    f.setFontWeight(QFont::Bold);
    f.setFontItalic(true);
    Add(QStringLiteral("x"), f);
    doc.ChangeOption = 511 & ~256;
    EXPECT_EQ(doc.Content(), QStringLiteral("{\\c&HFF0000&}{\\fnSimHei}{\\fs20}{\\s1}{\\u1}{\\b1}{\\i1}x"));
    Add(QStringLiteral("y"));
    EXPECT_EQ(doc.Content(),
        QStringLiteral("{\\c&HFF0000&}{\\fnSimHei}{\\fs20}{\\s1}{\\u1}{\\b1}{\\i1}x"
                       "{\\c&H0&}{\\fnSans}{\\fs12}{\\s0}{\\u0}{\\b0}{\\i0}y"));
}

TEST_F(TranslateTest, ColourRowsAreWalkedInTheirColour)
{
    doc.setContent(QStringLiteral("text"));
    SetColorRow(doc, 1, 0xFF, QStringLiteral("r"));
    doc.ChangeOption = 3;
    EXPECT_EQ(doc.Content(), QStringLiteral("{\\c&HFF&}//&H0000FF=r\r\n{\\c&H0&}text"));
}

TEST_F(TranslateTest, LongDraftsWarnBeforeTheWalk)
{
    doc.setContent(QString(2049, u'x'));
    doc.ChangeOption = 3;
    prompt.Answers.push_back(MsgBoxResult::Cancel);
    EXPECT_EQ(doc.Content(), QString());
    ASSERT_EQ(prompt.Records.size(), 1);
    EXPECT_EQ(prompt.Records[0].Prompt,
        QStringLiteral("对超过2K的文字进行带SSA格式转换时间轴，预计此操作将非常费时\r\n"
                       "建议停止这个操作或者缩短文字列"));
    EXPECT_EQ(prompt.Records[0].Style & MsgBoxStyle::ButtonMask, MsgBoxStyle::RetryCancel);
    prompt.Answers.push_back(MsgBoxResult::Retry);
    EXPECT_EQ(doc.Content().size(), 2049 + 8);

    // One character less, or plain options, or rich text: no warning.
    doc.setContent(QString(2048, u'x'));
    doc.Content();
    doc.setContent(QString(3000, u'x'));
    doc.ChangeOption = 1;
    doc.Content();
    doc.ChangeOption = 3;
    doc.ScriptType = ScriptType::RichText;
    doc.Content();
    EXPECT_EQ(prompt.Records.size(), 2);
}

TEST_F(TranslateTest, RichDraftsKeepTablesTextAndFormats)
{
    doc.ScriptType = ScriptType::RichText;
    doc.setContent(
        QStringLiteral("{\\rtf1{\\colortbl ;\\red255\\green0\\blue0;}//a=b\\par //&H0000FF=red\\par "
                       "plain {\\cf1\\b red}\\par end}"));
    EXPECT_EQ(ViewText(), QStringLiteral("plain red\r\nend"));
    EXPECT_EQ(ChangeRows(doc).first(), "a=b");
    EXPECT_EQ(ColorRows(doc).first(), "ff=red");

    const QString rtf = doc.Content();
    ASSERT_TRUE(IsRtf(rtf));
    CTranslate back;
    back.ScriptType = ScriptType::RichText;
    back.setContent(rtf);
    EXPECT_EQ(DocumentPlainText(*back.Translate()), QStringLiteral("plain red\r\nend"));
    EXPECT_EQ(ChangeRows(back).first(), "a=b");
    EXPECT_EQ(ColorRows(back).first(), "ff=red");
    back.ScriptType = ScriptType::Plain;
    back.TranslateOption = 0;
    back.ChangeOption = 1 | 2 | 64;
    EXPECT_EQ(
        back.Content(), QStringLiteral("{\\c&H0&}{\\b0}plain {\\c&HFF&}{\\b1}red\r\n{\\c&H0&}{\\b0}end"));
}

TEST_F(TranslateTest, ClipboardGoesThroughPlainText)
{
    QTextCharFormat red = Colour(255, 0, 0);
    Add(QStringLiteral("one two\r\nthree"), red);
    QTextCursor c(doc.Translate());
    c.setPosition(4);
    c.setPosition(10, QTextCursor::KeepAnchor); // "two", a line end, "th"
    doc.Copy(c);
    EXPECT_EQ(clipboard, QStringLiteral("two\r\nth"));
    doc.Cut(c);
    EXPECT_EQ(ViewText(), QStringLiteral("one ree"));
    EXPECT_EQ(c.position(), 4);
    EXPECT_FALSE(
        doc.Translate()->begin().begin().fragment().charFormat().hasProperty(QTextFormat::ForegroundBrush));

    clipboard = QStringLiteral("A\r\nB");
    c.setPosition(4);
    c.setPosition(5, QTextCursor::KeepAnchor);
    doc.Paste(c);
    EXPECT_EQ(ViewText(), QStringLiteral("one A\r\nBee"));
    EXPECT_EQ(c.position(), 7);
}

TEST(TranslatesTest, CreateNumbersAndCaptions)
{
    CTranslates list;
    CTranslate *a = list.Create();
    CTranslate *b = list.Create();
    EXPECT_EQ(a->SerialNo(), 1);
    EXPECT_EQ(b->Caption(), QStringLiteral("翻译(2)"));
    EXPECT_EQ(a->collection(), &list);
    EXPECT_DOUBLE_EQ(a->ReactOffset, -0.3);
    EXPECT_EQ(a->ChangeOption, 1);
    EXPECT_EQ(a->TranslateOption, 128);
    EXPECT_EQ(a->FileCode, FileCode::SystemDefault);
    EXPECT_EQ(a->ScriptType, ScriptType::Plain);
    a->setContent(QStringLiteral("x"));
    a->Clear();
    EXPECT_TRUE(a->Translate()->isEmpty());
    list.Delete(QStringLiteral("1"));
    EXPECT_EQ(list.Count(), 1);
}

} // namespace

TEST_F(TranslateTest, FileOptionPreviewLeavesTheDraftAsItWas)
{
    Add(QStringLiteral("第一句"));
    doc.setChanged(true);
    CFileOptionModel model;
    model.Init();
    model.ParentWindowType = ParentWindowType::Translate;
    model.TranslateDocument = &doc;
    model.setOperation(FileOperation::Save);
    model.ClickFileType(ScriptType::RichText);
    EXPECT_TRUE(model.PreviewIsRich);
    EXPECT_TRUE(model.FileContent.startsWith(QStringLiteral("{\\rtf1")));
    model.setChangeOptionBit(ChangeOption::Bold, true);
    model.ClickFileType(ScriptType::Plain);
    EXPECT_FALSE(model.PreviewIsRich);
    EXPECT_TRUE(model.FileContent.contains(QStringLiteral("第一句")));
    EXPECT_EQ(doc.ScriptType, ScriptType::Plain);
    EXPECT_EQ(doc.ChangeOption, ChangeOption::Text);
    EXPECT_EQ(doc.TranslateOption, TranslateOption::ChangeTable);
    EXPECT_TRUE(doc.Changed());
}
