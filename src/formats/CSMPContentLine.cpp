#include "formats/CSMPContentLine.h"

#include "core/basTime.h"
#include "formats/CSMPContent.h"

using namespace basFormatRead;

qint32 CSMPContentLine::SubType() const
{
    return m_parent ? m_parent->ScriptSubType() : 0;
}

QString CSMPContentLine::timeString(double seconds) const
{
    const QString t = TimeToString(seconds, 2);
    if (SubType() == 0)
        return u'0' + t.left(9);
    return u'0' + t.left(7) + u':' + t.mid(t.indexOf(u'.') + 1, 2);
}

void CSMPContentLine::setStartTimeString(QStringView text)
{
    setStartTime(LooseStringToTime(text));
}

void CSMPContentLine::setEndTimeString(QStringView text)
{
    setEndTime(LooseStringToTime(text));
}

void CSMPContentLine::setDialog(const QString &text)
{
    storeDialog(text, SubType() == 0);
}

QString CSMPContentLine::Content()
{
    if (SubType() == 0)
        return StartTimeString() + u':' + m_dialog + QStringLiteral("\r\n") + EndTimeString() + u':';
    return StartTimeString() + QStringLiteral("     ") + EndTimeString() + QStringLiteral("     ") + m_dialog;
}

void CSMPContentLine::setContent(const QString &text)
{
    ErrNumber = 0;
    const QStringView s = LTrimView(text);
    if (s.isEmpty()) {
        Blank = true;
        return;
    }
    Blank = false;
    if (SubType() == 0)
        readSubType0(text, s);
    else
        readSubType1(s);
}

void CSMPContentLine::readSubType0(const QString &text, QStringView s)
{
    const bool timed = s.size() >= 9 && s[2] == u':' && s[5] == u':' && s[8] == u'.';
    if (!timed) {
        setStartTimeString(u"0:00:00.00");
        setDialog(text);
        IsComment = true;
        return;
    }
    // The first hour digit is dropped and the tenths become hundredths; the character
    // behind the time, as a rule ":", is never looked at.
    setStartTimeString(QString(s.mid(1, 9).toString() + u'0'));
    setDialog(s.mid(11).toString());
}

namespace {

// "00:00:01:23" as "00:00:01.23": the fourth number is hundredths.
QString fieldTime(QStringView field)
{
    return field.left(8).toString() + u'.' + field.mid(9, 2).toString();
}

// The leading field up to the first blank (the whole text when there is none), and the
// text behind it without its leading blanks.
QStringView takeField(QStringView &s)
{
    const qsizetype blank = s.indexOf(u' ');
    const QStringView field = blank < 0 ? s : s.left(blank);
    s = blank < 0 ? QStringView() : LTrimView(s.sliced(blank));
    return field;
}

} // namespace

void CSMPContentLine::readSubType1(QStringView s)
{
    setStartTimeString(fieldTime(takeField(s)));
    setEndTimeString(fieldTime(takeField(s)));
    setDialog(s.toString());
}
