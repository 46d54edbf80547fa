#include "timing/CHistories.h"
#include "ui/CTextEditControl.h"

#include <QTest>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace {
class Recorder : public ITextControlEvents
{
public:
    explicit Recorder(ITextControl &control)
        : m_control(control)
    { }
    bool KeyDown(int keyCode, int shift) override
    {
        Log << QStringLiteral("key %1/%2").arg(keyCode).arg(shift);
        return keyCode == SwallowCode;
    }
    void SelChange() override
    {
        Log << QStringLiteral("sel %1+%2").arg(m_control.SelStart()).arg(m_control.SelLength());
    }
    void Change() override { Log << QStringLiteral("change ") + m_control.Text(); }
    QStringList Log;
    int SwallowCode = -1;

private:
    ITextControl &m_control;
};
} // namespace

TEST(TextEditControl, PositionsCountLineEndsAsTwoCharacters)
{
    QTextEdit edit;
    CTextEditControl control(&edit);
    control.setText(QStringLiteral("ab\r\ncd"));
    EXPECT_EQ(control.Text(), QStringLiteral("ab\r\ncd"));
    control.setSelStart(4);
    control.setSelLength(2);
    EXPECT_EQ(control.SelStart(), 4);
    EXPECT_EQ(control.SelLength(), 2);
    EXPECT_EQ(control.SelText(), QStringLiteral("cd"));
    control.setSelStart(1);
    control.setSelLength(4);
    EXPECT_EQ(control.SelText(), QStringLiteral("b\r\nc"));
    control.setSelText(QStringLiteral("X\r\nY"));
    EXPECT_EQ(control.Text(), QStringLiteral("aX\r\nYd"));
    EXPECT_EQ(control.SelStart(), 5);
    EXPECT_EQ(control.SelLength(), 0);
}

TEST(TextEditControl, KeysAreOfferedFirstAndEditsToldSelectionThenChange)
{
    QTextEdit edit;
    CTextEditControl control(&edit);
    control.setText(QStringLiteral("abc"));
    control.setSelStart(3);
    Recorder recorder(control);
    control.setEvents(&recorder);

    QTest::keyClick(&edit, Qt::Key_D);
    EXPECT_EQ(recorder.Log, QStringList({ "key 68/0", "sel 4+0", "change abcd" }));

    recorder.Log.clear();
    recorder.SwallowCode = 69;
    QTest::keyClick(&edit, Qt::Key_E);
    EXPECT_EQ(recorder.Log, QStringList({ "key 69/0" }));
    EXPECT_EQ(control.Text(), "abcd");
}

TEST(TextEditControl, HistoryUndoesTypingInARealEdit)
{
    QTextEdit edit;
    CTextEditControl control(&edit);
    CHistories history;
    history.setEditer(&control);
    QTest::keyClicks(&edit, QStringLiteral("hello"));
    EXPECT_EQ(control.Text(), "hello");
    QTest::keyClick(&edit, Qt::Key_Left);
    QTest::keyClick(&edit, Qt::Key_Delete); // the caret stays: still one step
    EXPECT_EQ(control.Text(), "hell");
    history.Back();
    EXPECT_EQ(control.Text(), "hello");
    history.Back();
    EXPECT_EQ(control.Text(), "hell");
    history.Forword();
    EXPECT_EQ(control.Text(), "hello");
}
