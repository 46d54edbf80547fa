#include "GridOpsFixture.h"

#include "player/CPreview.h"
#include "timing/CGridFind.h"

#include <gtest/gtest.h>

namespace {

using TG = CTimingGrid;

class FindTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        CGridFind::setKeptFindText(QString());
        CGridFind::setKeptReplaceText(QString());
        preview.Init(&document);
        preview.AttachGrid(&s);
        grid.SetPreviewHooks(&preview);
        grid.ResetGrid();
    }
    void TearDown() override { SetPrompt(nullptr); }

    // Dialogue texts of rows 1 on; the grid keeps one spare row at the end.
    void Fill(const QStringList &dialogs)
    {
        while (s.MaxRows() < dialogs.size() + 1)
            grid.AppendRow();
        for (int i = 0; i < dialogs.size(); ++i)
            s.SetText(TG::ColDialog, i + 1, dialogs.at(i));
        document.setChanged(false);
    }
    QStringList Column() const
    {
        QStringList out;
        for (int row = 1; row <= s.MaxRows(); ++row)
            out << s.GetText(TG::ColDialog, row);
        return out;
    }
    void StartAt(int row)
    {
        s.setRow(row);
        s.setCol(3);
    }
    // Row and 1-based position of the hit as the editor shows it.
    QString Hit() const
    {
        return QStringLiteral("%1@%2+%3").arg(s.ActiveRow()).arg(s.SelStart() + 1).arg(s.SelLength());
    }

    CScriptedPrompt prompt;
    BlankDocument document;
    TG grid;
    CSpread &s = grid.Spread();
    CPreview preview;
    CGridFind find;
};

const QString NotFound = QStringLiteral("没有发现相同文字");

} // namespace

// ---- the window's texts ------------------------------------------------------------------

TEST_F(FindTest, InitTakesTheSelectionOrTheKeptText)
{
    CGridFind::setKeptFindText(QStringLiteral("kept"));
    CGridFind::setKeptReplaceText(QStringLiteral("with"));
    find.Init(&s);
    EXPECT_EQ(find.txtFind(), QStringLiteral("kept"));
    EXPECT_EQ(find.txtReplace(), QStringLiteral("with"));
    EXPECT_TRUE(find.CommandsEnabled());

    Fill({ QStringLiteral("hello world") });
    s.setRow(1);
    s.setCol(TG::ColDialog);
    s.ActivateCell();
    s.setEditMode(true);
    s.setSelStart(6);
    s.setSelLength(5);
    CGridFind second;
    second.Init(&s);
    EXPECT_EQ(second.txtFind(), QStringLiteral("world"));
    EXPECT_EQ(CGridFind::KeptFindText(), QStringLiteral("world"));

    second.setTxtFind(QString());
    EXPECT_FALSE(second.CommandsEnabled());
    EXPECT_FALSE(second.cmdFind());
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(FindTest, ClosingKeepsBothTextsAndTellsTheWindow)
{
    find.Init(&s);
    EXPECT_FALSE(find.CommandsEnabled());
    int told = 0;
    find.BeforeClose = [&] { ++told; };
    find.setTxtFind(QStringLiteral("a"));
    find.setTxtReplace(QStringLiteral("b"));
    EXPECT_EQ(CGridFind::KeptReplaceText(), QString());
    find.cmdCancel();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(CGridFind::KeptFindText(), QStringLiteral("a"));
    EXPECT_EQ(CGridFind::KeptReplaceText(), QStringLiteral("b"));
    CGridFind next;
    next.Init(&s);
    EXPECT_EQ(next.txtFind(), QStringLiteral("a"));
    EXPECT_EQ(next.txtReplace(), QStringLiteral("b"));
}

// ---- the search ----------------------------------------------------------------------------

TEST_F(FindTest, SearchGoesDownAndWrapsOnce)
{
    Fill({ QStringLiteral("xx needle"), QStringLiteral("none"), QStringLiteral("needle here") });
    find.Init(&s);
    find.setTxtFind(QStringLiteral("needle"));
    StartAt(2);
    ASSERT_TRUE(find.cmdFind());
    EXPECT_EQ(Hit(), QStringLiteral("3@1+6"));
    EXPECT_EQ(s.ActiveCol(), TG::ColDialog);
    EXPECT_TRUE(s.EditMode());
    EXPECT_EQ(s.SelText(), QStringLiteral("needle"));
    EXPECT_EQ(find.LastRow, 3);
    EXPECT_EQ(find.LastPos, 1);
    // From the last row the search comes round to row 1.
    ASSERT_TRUE(find.cmdFind());
    EXPECT_EQ(Hit(), QStringLiteral("1@4+6"));
    ASSERT_TRUE(find.cmdFind());
    EXPECT_EQ(Hit(), QStringLiteral("3@1+6"));
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(FindTest, OneHitIsFoundAgainAndAgain)
{
    Fill({ QStringLiteral("a"), QStringLiteral("b target"), QStringLiteral("c") });
    find.Init(&s);
    find.setTxtFind(QStringLiteral("target"));
    StartAt(1);
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(find.cmdFind()) << i;
        EXPECT_EQ(Hit(), QStringLiteral("2@3+6"));
    }
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(FindTest, OverlappingHitsAndExactCase)
{
    Fill({ QStringLiteral("aaa"), QStringLiteral("AA") });
    find.Init(&s);
    find.setTxtFind(QStringLiteral("aa"));
    StartAt(1);
    ASSERT_TRUE(find.cmdFind());
    EXPECT_EQ(Hit(), QStringLiteral("1@1+2"));
    ASSERT_TRUE(find.cmdFind());
    EXPECT_EQ(Hit(), QStringLiteral("1@2+2"));
    // Upper case is another text; the search wraps back to row 1.
    ASSERT_TRUE(find.cmdFind());
    EXPECT_EQ(Hit(), QStringLiteral("1@1+2"));
}

TEST_F(FindTest, NoHitSaysSoAndStartsTheRowAgain)
{
    Fill({ QStringLiteral("a.c"), QStringLiteral("abc") });
    s.SetText(TG::ColStartTime, 2, QStringLiteral("x.*"));
    find.Init(&s);
    // The text is no pattern; other columns are not searched.
    find.setTxtFind(QStringLiteral("x.*"));
    StartAt(1);
    EXPECT_FALSE(find.cmdFind());
    ASSERT_EQ(prompt.Records.size(), 1);
    EXPECT_EQ(prompt.Records.first().Prompt, NotFound);
    EXPECT_EQ(prompt.Records.first().Title, QStringLiteral("提示"));
    EXPECT_EQ(find.LastPos, 0);

    find.setTxtFind(QStringLiteral("."));
    ASSERT_TRUE(find.cmdFind());
    EXPECT_EQ(Hit(), QStringLiteral("1@2+1"));
}

TEST_F(FindTest, EveryRowToTheLastIsSearched)
{
    Fill({ QStringLiteral("one") });
    while (s.MaxRows() < 6)
        grid.AppendRow();
    s.SetText(TG::ColDialog, 6, QStringLiteral("spare text"));
    // A hidden column is searched all the same.
    s.setCol(TG::ColDialog);
    s.setColHidden(true);
    find.Init(&s);
    find.setTxtFind(QStringLiteral("spare"));
    StartAt(1);
    ASSERT_TRUE(find.cmdFind());
    EXPECT_EQ(find.LastRow, 6);
}

TEST_F(FindTest, EmptyOrStrangeGridsDoNotFail)
{
    find.Init(&s);
    find.setTxtFind(QStringLiteral("x"));
    s.setMaxRows(0);
    s.setRow(5);
    EXPECT_FALSE(find.cmdFind());
    EXPECT_EQ(prompt.Messages(), QStringList { NotFound });
    find.cmdReplace();
    find.cmdReplaceAll();

    CGridFind none;
    none.Init(nullptr);
    none.setTxtFind(QStringLiteral("x"));
    EXPECT_FALSE(none.cmdFind());
    none.cmdReplace();
    none.cmdReplaceAll();
}

// ---- replacing -----------------------------------------------------------------------------

TEST_F(FindTest, ReplaceKeepsTheHitsFirstCharacter)
{
    Fill({ QStringLiteral("abcdef") });
    find.Init(&s);
    find.setTxtFind(QStringLiteral("cd"));
    find.setTxtReplace(QStringLiteral("X"));
    find.cmdReplace(); // nothing found yet
    EXPECT_EQ(s.GetText(TG::ColDialog, 1), QStringLiteral("abcdef"));

    StartAt(1);
    ASSERT_TRUE(find.cmdFind());
    find.cmdReplace();
    EXPECT_EQ(s.GetText(TG::ColDialog, 1), QStringLiteral("abcXef"));
    // The search does not go on; a second replace works at the same place.
    EXPECT_EQ(find.LastPos, 3);
    find.cmdReplace();
    EXPECT_EQ(s.GetText(TG::ColDialog, 1), QStringLiteral("abcXef"));
    find.setTxtReplace(QStringLiteral("YZ"));
    find.cmdReplace();
    EXPECT_EQ(s.GetText(TG::ColDialog, 1), QStringLiteral("abcYZef"));
    EXPECT_FALSE(document.Changed());
}

TEST_F(FindTest, ReplaceAllIsAnExactPlainReplacement)
{
    Fill({ QStringLiteral("cat Cat cat"), QStringLiteral("concatenate"), QStringLiteral("dog") });
    s.SetText(TG::ColStartTime, 3, QStringLiteral("cat"));
    grid.TellPreview(-1, 1);
    const QString before = preview.RowLine(1)->Dialog();
    document.setChanged(false);
    find.Init(&s);
    find.setTxtFind(QStringLiteral("cat"));
    find.setTxtReplace(QStringLiteral("[.]"));
    find.cmdReplaceAll();
    EXPECT_EQ(Column().mid(0, 3),
        (QStringList {
            QStringLiteral("[.] Cat [.]"), QStringLiteral("con[.]enate"), QStringLiteral("dog") }));
    EXPECT_EQ(s.GetText(TG::ColStartTime, 3), QStringLiteral("cat"));
    EXPECT_TRUE(prompt.Messages().isEmpty());
    // No preview is told, and the document stays unchanged.
    EXPECT_FALSE(document.Changed());
    EXPECT_EQ(preview.RowLine(1)->Dialog(), before);

    // An empty replacement removes the text everywhere.
    find.setTxtFind(QStringLiteral("[.]"));
    find.setTxtReplace(QString());
    find.cmdReplaceAll();
    EXPECT_EQ(Column().mid(0, 2), (QStringList { QStringLiteral(" Cat "), QStringLiteral("conenate") }));
}
