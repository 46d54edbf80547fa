#include "test_capture_fixture.h"

namespace {

using namespace TestKeys;

// Working keys as the settings may give them, letters included.
CHotKeys LetterKeys()
{
    CHotKeys keys;
    keys.setHOTKEY_TimingTime('T');
    keys.setHOTKEY_TimingStartTime(F8);
    keys.setHOTKEY_TimingEndTime(Enter);
    keys.setHOTKEY_TimingForword('P');
    keys.setHOTKEY_TimingBack(123); // F12
    keys.setHOTKEY_Refresh(F5);
    return keys;
}

// ---- the decision tables alone ----------------------------------------------------------

TEST(CaptureKeyTables, KeyDownLeavesLettersAloneAndMatchesOtherCodesInOrder)
{
    using A = CaptureAction;
    const std::pair<int, CaptureAction> cases[] = { { 'T', A::None }, { 'P', A::None }, { F8, A::StartTime },
        { Enter, A::EndTime }, { 123, A::ShiftBack }, { Delete, A::ClearCells }, { F5, A::Refresh },
        { F7, A::None }, { '5', A::None } };
    for (const auto &[code, action] : cases)
        EXPECT_EQ(CCaptureKey::KeyDownAction(LetterKeys(), code), action) << code;

    // Undefined keys (0) never meet a key.
    const CHotKeys none;
    EXPECT_EQ(CCaptureKey::KeyDownAction(none, 0), CaptureAction::None);
    EXPECT_EQ(CCaptureKey::KeyPressAction(none, 0), CaptureAction::None);

    // The first match wins when a code stands twice.
    CHotKeys twice;
    twice.setHOTKEY_TimingStartTime(F8);
    twice.setHOTKEY_TimingEndTime(F8);
    twice.setHOTKEY_Refresh(Delete);
    EXPECT_EQ(CCaptureKey::KeyDownAction(twice, F8), CaptureAction::StartTime);
    EXPECT_EQ(CCaptureKey::KeyDownAction(twice, Delete), CaptureAction::ClearCells);
}

TEST(CaptureKeyTables, KeyPressComparesTheUpperCasedCharacter)
{
    using A = CaptureAction;
    // "w" is 119 like F8, but it is compared as "W"; "{" stays 123 when upper-cased, the code of F12.
    const std::pair<char16_t, CaptureAction> cases[] = { { u't', A::TimePoint }, { u'T', A::TimePoint },
        { u'p', A::ShiftForword }, { u'.', A::ClearCells }, { u'\r', A::EndTime }, { u'w', A::None },
        { u'{', A::ShiftBack }, { u'字', A::None } };
    for (const auto &[ch, action] : cases)
        EXPECT_EQ(CCaptureKey::KeyPressAction(LetterKeys(), ch), action) << int(ch);
}

TEST(CaptureKeyTables, QtKeysBecomeHotKeyCodes)
{
    const CCaptureKey f8 = CCaptureKey::FromQt(Qt::Key_F8, Qt::NoModifier, QString());
    EXPECT_EQ(f8.KeyCode, F8);
    EXPECT_EQ(f8.Char, 0);
    const CCaptureKey a = CCaptureKey::FromQt(Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A"));
    EXPECT_EQ(a.KeyCode, 65);
    EXPECT_EQ(a.Char, u'A');
    EXPECT_TRUE(a.Shift);
    const CCaptureKey del = CCaptureKey::FromQt(Qt::Key_Delete, Qt::NoModifier, QStringLiteral("\x7f"));
    EXPECT_EQ(del.KeyCode, Delete);
    EXPECT_EQ(del.Char, 0);
    // The full stop is a character, never the Delete key.
    const CCaptureKey dot = CCaptureKey::FromQt(Qt::Key_Period, Qt::NoModifier, QStringLiteral("."));
    EXPECT_NE(dot.KeyCode, Delete);
    EXPECT_EQ(dot.Char, u'.');
}

TEST(CaptureKeyTables, CaptionsCarryTheKeyNames)
{
    CHotKeys keys = LetterKeys();
    EXPECT_EQ(InsertTimePointCaption(keys), "插入时间点(T)");
    EXPECT_EQ(TimeOffsetForwordTip(keys), "时间轴+0.1秒(P)");
    EXPECT_EQ(TimeOffsetBackTip(keys), "时间轴-0.1秒(F12)");
    keys.setHOTKEY_TimingTime(0);
    EXPECT_EQ(InsertTimePointCaption(keys), "插入时间点(Undefined)");
}

// ---- keys on a grid --------------------------------------------------------------------

class CaptureKeysTest : public CaptureTest
{
protected:
    CaptureKeysTest()
    {
        keys = LetterKeys();
        capture->ClearCells = [this]() { Calls << QStringLiteral("clear"); };
        capture->ShiftTimes = [this](double s) { Calls << QStringLiteral("shift %1").arg(s); };
    }
    QStringList Calls;
};

TEST_F(CaptureKeysTest, LetterHotKeyActsOnItsCharacterAndNeverReachesTheCell)
{
    Activate(3, 1);
    At(5);
    const CaptureKeyResult down = Down('T');
    EXPECT_EQ(down.Action, CaptureAction::None);
    EXPECT_FALSE(down.Cancel);
    EXPECT_EQ(Cell(3, 1), "");

    const CaptureKeyResult press = Press(u't');
    EXPECT_EQ(press.Action, CaptureAction::TimePoint);
    EXPECT_TRUE(press.Cancel);
    EXPECT_FALSE(press.Yield);
    EXPECT_EQ(Cell(3, 1), "0:00:05.00");
    EXPECT_EQ(Cursor(), "4,1");
}

TEST_F(CaptureKeysTest, ShiftKeysShiftAndOnlyTheKeyDownHalfIsCancelled)
{
    const CaptureKeyResult letter = Press(u'p');
    EXPECT_EQ(letter.Action, CaptureAction::ShiftForword);
    EXPECT_FALSE(letter.Cancel); // the letter goes on into a cell being edited
    const CaptureKeyResult f12 = Down(123);
    EXPECT_EQ(f12.Action, CaptureAction::ShiftBack);
    EXPECT_TRUE(f12.Cancel);
    EXPECT_TRUE(f12.Yield);
    EXPECT_EQ(Calls, QStringList({ "shift 0.1", "shift -0.1" }));
}

TEST_F(CaptureKeysTest, DeleteAndFullStopClearOutsideEditModeOnly)
{
    Activate(15, 2);
    const CaptureKeyResult del = Down(Delete);
    EXPECT_EQ(del.Action, CaptureAction::ClearCells);
    EXPECT_TRUE(del.Cancel);
    // The full stop comes as its own key (no action) and then as the character ".".
    EXPECT_FALSE(Down(190).Cancel);
    const CaptureKeyResult dot = Press(u'.');
    EXPECT_EQ(dot.Action, CaptureAction::ClearCells);
    EXPECT_TRUE(dot.Cancel);
    EXPECT_EQ(Calls, QStringList({ "clear", "clear" }));

    Calls.clear();
    g().setEditMode(true);
    EXPECT_FALSE(Down(Delete).Cancel);
    Down(190);
    EXPECT_FALSE(Press(u'.').Cancel);
    EXPECT_TRUE(Calls.isEmpty());
}

TEST_F(CaptureKeysTest, RefreshIsSwallowedAndDoesNothingElse)
{
    Activate(3, 1);
    const CaptureKeyResult r = Down(F5);
    EXPECT_EQ(r.Action, CaptureAction::Refresh);
    EXPECT_TRUE(r.Cancel);
    EXPECT_TRUE(Calls.isEmpty());
    EXPECT_TRUE(control.Calls.isEmpty());
    EXPECT_EQ(Cell(3, 1), "");
    EXPECT_FALSE(doc.Changed());
}

TEST_F(CaptureKeysTest, OneStrokeActsOnce)
{
    // Enter as the end key comes as a key and as a character: one row, not two.
    Activate(4, 1);
    At(3);
    EXPECT_TRUE(Down(Enter).Cancel);
    EXPECT_TRUE(Press(u'\r').Cancel);
    EXPECT_EQ(Cursor(), "3,2");
    EXPECT_EQ(Cell(4, 2), "");

    // The same stroke forwarded as one event.
    Activate(4, 3);
    const CaptureKeyResult r
        = capture->KeyStroke(CCaptureKey::FromQt(Qt::Key_Return, {}, QStringLiteral("\r")));
    EXPECT_TRUE(r.Cancel);
    EXPECT_EQ(Cursor(), "3,4");

    // A letter key: the key half passes, the character half acts once.
    Activate(3, 5);
    At(8);
    const CaptureKeyResult t = capture->KeyStroke(CCaptureKey::FromQt(Qt::Key_T, {}, QStringLiteral("t")));
    EXPECT_EQ(t.Action, CaptureAction::TimePoint);
    EXPECT_TRUE(t.Cancel);
    EXPECT_EQ(Cell(3, 5), "0:00:08.00");
    EXPECT_EQ(Cursor(), "4,5");

    // A key taken by its key half does not swallow the next stroke's character.
    Activate(15, 6);
    Down(F8);
    EXPECT_EQ(Cursor(), "4,6");
    Down('Q');
    EXPECT_FALSE(Press(u'q').Cancel);
    // Nor does anything else act on a plain character.
    const CaptureKeyResult plain
        = capture->KeyStroke(CCaptureKey::FromQt(Qt::Key_X, {}, QStringLiteral("x")));
    EXPECT_EQ(plain.Action, CaptureAction::None);
    EXPECT_FALSE(plain.Cancel);
}

} // namespace
