#include "FakeTextControl.h"

#include "core/CScriptedPrompt.h"
#include "core/VelmarError.h"
#include "timing/CHistories.h"
#include "timing/CHistoriesSim.h"

#include <gtest/gtest.h>

namespace {

class HistoryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        history.Moved = [this] { ++moved; };
        history.setEditer(&edit);
    }
    void TearDown() override { SetPrompt(nullptr); }

    CScriptedPrompt prompt;
    FakeTextControl edit;
    CHistories history;
    int moved = 0;
};

TEST_F(HistoryTest, TypingMakesInsertStepsThatUndoAndRedo)
{
    edit.Type(QStringLiteral("ab字"));
    EXPECT_EQ(edit.Text(), QStringLiteral("ab字"));
    ASSERT_EQ(history.Count(), 3);
    EXPECT_EQ(history.item(QStringLiteral("3"))->Operate, 1);
    EXPECT_EQ(history.item(QStringLiteral("3"))->AfterText, QStringLiteral("字"));
    EXPECT_EQ(history.Content(), QStringLiteral("insert : 字\r\ninsert : b\r\ninsert : a"));

    EXPECT_TRUE(edit.Ctrl('z'));
    EXPECT_EQ(edit.Text(), QStringLiteral("ab"));
    EXPECT_EQ(edit.SelStart(), 2);
    EXPECT_TRUE(edit.Ctrl('z'));
    EXPECT_TRUE(edit.Ctrl('z'));
    EXPECT_EQ(edit.Text(), QString());
    EXPECT_EQ(history.CurrentNo(), 0);
    EXPECT_EQ(history.Content(), QString());

    EXPECT_TRUE(edit.Ctrl('y'));
    EXPECT_TRUE(edit.Ctrl('y'));
    EXPECT_EQ(edit.Text(), QStringLiteral("ab"));
    EXPECT_EQ(history.CurrentNo(), 2);
    EXPECT_TRUE(edit.Ctrl('y'));
    EXPECT_EQ(edit.Text(), QStringLiteral("ab字"));
    EXPECT_EQ(edit.SelStart(), 3);
}

TEST_F(HistoryTest, BackAtTheStartAndForwordAtTheEndDoNothingButTell)
{
    EXPECT_TRUE(edit.Ctrl('z'));
    EXPECT_TRUE(edit.Ctrl('y'));
    EXPECT_EQ(moved, 2);
    EXPECT_TRUE(prompt.Messages().isEmpty());

    edit.Type(QStringLiteral("x"));
    moved = 0;
    history.Forword();
    EXPECT_EQ(edit.Text(), QStringLiteral("x"));
    EXPECT_EQ(moved, 1);
    history.Back();
    history.Back();
    EXPECT_EQ(edit.Text(), QString());
    EXPECT_EQ(moved, 3);
}

TEST_F(HistoryTest, ANewEditAfterBackDropsTheLaterStepsAndNumbersAreNotReused)
{
    edit.Type(QStringLiteral("abc"));
    edit.Ctrl('z');
    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("a"));
    edit.Type(QStringLiteral("x"));
    EXPECT_EQ(edit.Text(), QStringLiteral("ax"));
    EXPECT_EQ(history.Count(), 2);
    EXPECT_FALSE(history.Exists(QStringLiteral("2")));
    EXPECT_FALSE(history.Exists(QStringLiteral("3")));
    EXPECT_TRUE(history.Exists(QStringLiteral("4")));
    EXPECT_EQ(history.Made(), 4);
    EXPECT_EQ(history.item(QStringLiteral("1"))->NextNo, 4);
    EXPECT_EQ(history.item(QStringLiteral("4"))->PreviousNo, 1);
    EXPECT_THROW(history.item(QStringLiteral("2")), VelmarError);

    edit.Ctrl('y'); // already at the newest
    EXPECT_EQ(edit.Text(), QStringLiteral("ax"));
    edit.Ctrl('z');
    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QString());
    // Back at the very start, a new edit drops every step.
    edit.Type(QStringLiteral("q"));
    EXPECT_EQ(history.Count(), 1);
    EXPECT_EQ(history.FirstNo(), 5);
    edit.Ctrl('z');
    edit.Ctrl('y');
    EXPECT_EQ(edit.Text(), QStringLiteral("q"));
}

TEST_F(HistoryTest, TypingOverASelectionIsAnUpdate)
{
    edit.setText(QStringLiteral("one two"));
    history.setEditer(&edit);
    edit.Select(4, 3);
    EXPECT_EQ(history.Count(), 0); // selecting changes nothing
    edit.Type(QStringLiteral("2"));
    EXPECT_EQ(edit.Text(), QStringLiteral("one 2"));
    ASSERT_EQ(history.Count(), 1);
    const CHistory *step = history.item(QStringLiteral("1"));
    EXPECT_EQ(step->Operate, 3);
    EXPECT_EQ(step->BeforeText, QStringLiteral("two"));
    EXPECT_EQ(step->BeforeSelStart, 4);
    EXPECT_EQ(step->BeforeSelLength, 3);
    EXPECT_EQ(step->AfterText, QStringLiteral("2"));
    EXPECT_EQ(history.Content(), QStringLiteral("update : two TO 2"));

    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("one two"));
    edit.Ctrl('y');
    EXPECT_EQ(edit.Text(), QStringLiteral("one 2"));
}

TEST_F(HistoryTest, DeletingKeysAndLineBreaks)
{
    edit.Type(QStringLiteral("ab"));
    edit.Enter();
    edit.Type(QStringLiteral("c"));
    EXPECT_EQ(edit.Text(), QStringLiteral("ab\r\nc"));
    edit.Backspace();
    edit.Backspace(); // takes the whole line break
    EXPECT_EQ(edit.Text(), QStringLiteral("ab"));
    EXPECT_EQ(history.item(QStringLiteral("6"))->BeforeText, QStringLiteral("\r\n"));
    EXPECT_EQ(history.item(QStringLiteral("6"))->Operate, 2);
    EXPECT_TRUE(history.Content().startsWith(
        QStringLiteral("delete : Enter\r\ndelete : c\r\ninsert : c\r\ninsert : Enter")));

    edit.Delete(); // at the end: swallowed, no step
    EXPECT_EQ(history.Count(), 6);
    edit.Select(0, 0);
    edit.Backspace(); // at the start: swallowed
    EXPECT_EQ(history.Count(), 6);
    edit.Delete();
    EXPECT_EQ(edit.Text(), QStringLiteral("b"));
    EXPECT_EQ(history.item(QStringLiteral("7"))->BeforeText, QStringLiteral("a"));

    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("ab"));
    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("ab\r\n"));
    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("ab\r\nc"));
}

TEST_F(HistoryTest, ALineBreakLeftBehindByTheControlIsRemoved)
{
    edit.setText(QStringLiteral("first\r\nsecond"));
    history.setEditer(&edit);
    edit.Select(0, 7); // "first\r\n"
    edit.Type(QStringLiteral("X"));
    EXPECT_EQ(edit.Text(), QStringLiteral("Xsecond"));
    EXPECT_EQ(history.item(QStringLiteral("1"))->Operate, 3);
    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("first\r\nsecond"));
}

TEST_F(HistoryTest, OvertypeTakesTheCharacterAtTheCaret)
{
    edit.setText(QStringLiteral("abc"));
    history.setEditer(&edit);
    edit.Select(1, 0);
    edit.InsertKey();
    EXPECT_TRUE(history.Overtype());
    edit.Type(QStringLiteral("X"));
    EXPECT_EQ(edit.Text(), QStringLiteral("aXc"));
    EXPECT_EQ(history.item(QStringLiteral("1"))->Operate, 3);
    EXPECT_EQ(history.Content(), QStringLiteral("update : b TO X"));
    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("abc"));
    edit.InsertKey();
    EXPECT_FALSE(history.Overtype());
}

TEST_F(HistoryTest, ContentShowsAtMostTenSteps)
{
    edit.Type(QStringLiteral("abcdefghijkl"));
    const QStringList lines = history.Content().split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(), 10);
    EXPECT_EQ(lines.first(), QStringLiteral("insert : l"));
    EXPECT_EQ(lines.last(), QStringLiteral("insert : c"));
    EXPECT_EQ(CHistories::GetOpratorString(0), QStringLiteral("no change"));
    EXPECT_EQ(CHistories::GetOpratorString(7), QStringLiteral("UnKnow"));
}

TEST_F(HistoryTest, ALongTextEndsTheHistoryForGood)
{
    edit.setText(QString(CHistories::MaxTextLength - 1, u'a'));
    history.setEditer(&edit);
    edit.Type(QStringLiteral("b")); // 30000: still kept
    ASSERT_EQ(history.Count(), 1);
    edit.Type(QStringLiteral("c")); // 30001
    EXPECT_EQ(history.Editer(), nullptr);
    EXPECT_EQ(edit.Events(), nullptr);
    EXPECT_FALSE(edit.Ctrl('z'));
    edit.Backspace();
    edit.Backspace();
    EXPECT_FALSE(edit.Ctrl('z'));
    EXPECT_EQ(edit.Text().size(), CHistories::MaxTextLength - 1);
}

TEST_F(HistoryTest, AFaultIsReportedAndTheHistoryStaysUsable)
{
    edit.Type(QStringLiteral("ab"));
    edit.Ctrl('z');
    edit.Ctrl('z');
    history.Create(); // steps remain but none is current: the link fails
    ASSERT_EQ(prompt.Messages().size(), 1);
    EXPECT_TRUE(prompt.Messages()[0].startsWith(QStringLiteral("ERROR SET HISTORY DATA")));
    EXPECT_EQ(history.Count(), 2);
    edit.Ctrl('y');
    EXPECT_EQ(edit.Text(), QStringLiteral("a"));
}

class HistorySimTest : public ::testing::Test
{
protected:
    void SetUp() override { sim.setEditer(&edit); }
    FakeTextControl edit;
    CHistoriesSim sim;
};

TEST_F(HistorySimTest, TheRingKeepsTheLastSnapshots)
{
    edit.Type(QStringLiteral("a"));
    EXPECT_TRUE(edit.Ctrl('z')); // the first snapshot alone cannot go back
    EXPECT_EQ(edit.Text(), QStringLiteral("a"));
    edit.Type(QStringLiteral("b"));
    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("a"));
    EXPECT_EQ(edit.SelStart(), 1);
    edit.Ctrl('y');
    EXPECT_EQ(edit.Text(), QStringLiteral("ab"));
    EXPECT_EQ(sim.Present(), sim.Newest());
}

TEST_F(HistorySimTest, OldSnapshotsFallOutOfTheRing)
{
    for (int i = 1; i <= 12; ++i)
        edit.setText(QStringLiteral("t%1").arg(i));
    int undone = 0;
    QString last = edit.Text();
    while (edit.Ctrl('z') && edit.Text() != last) {
        last = edit.Text();
        ++undone;
    }
    EXPECT_EQ(undone, 8);
    EXPECT_EQ(edit.Text(), QStringLiteral("t4"));
    for (int i = 0; i < 20; ++i)
        edit.Ctrl('y');
    EXPECT_EQ(edit.Text(), QStringLiteral("t12"));

    // An edit in the middle makes that the newest.
    edit.Ctrl('z');
    edit.Ctrl('z');
    edit.setText(QStringLiteral("new"));
    edit.Ctrl('y');
    EXPECT_EQ(edit.Text(), QStringLiteral("new"));
    edit.Ctrl('z');
    EXPECT_EQ(edit.Text(), QStringLiteral("t10"));
}

} // namespace
