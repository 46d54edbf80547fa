#include "formats/CSSTContentLine.h"

#include "core/basTime.h"

using namespace basFormatRead;

QString CSSTContentLine::timeString(double seconds)
{
    const QString t = TimeToString(seconds, 2);
    return u'0' + t.left(7) + u':' + t.mid(t.indexOf(u'.') + 1, 2);
}

double CSSTContentLine::parseTime(QStringView input)
{
    // The point stands in front of the last two digits: "00:00:23:26" and "00:00:23.26"
    // both read 23.26 seconds.
    const QStringView text = TrimView(input);
    if (text.size() < 3)
        return LooseStringToTime(text);
    const QChar separator = text[text.size() - 3];
    if (separator == u'.')
        return LooseStringToTime(text);
    const QStringView front = separator == u':' ? text.chopped(3) : text.chopped(2);
    return LooseStringToTime(QString(front.toString() + u'.' + text.right(2).toString()));
}

QString CSSTContentLine::Content()
{
    return StartTimeString() + QStringLiteral("\t\t") + EndTimeString() + QStringLiteral("\t\t") + m_dialog;
}

namespace {

// The first 8 characters, ".", and the 2 characters from the tenth: the form the time
// setters are handed.
QString pageTime(QStringView field)
{
    const QStringView t = TrimView(field);
    return t.left(8).toString() + u'.' + t.mid(9, 2).toString();
}

} // namespace

void CSSTContentLine::setContent(const QString &text)
{
    ErrNumber = 0;
    const QStringView s = LTrimView(text);
    if (s.isEmpty()) {
        Blank = true;
        return;
    }
    Blank = false;
    // A line with too few fields keeps what it has got so far.
    const QList<QStringView> fields = s.split(u'\t');
    if (fields.size() > 2)
        setStartTimeString(pageTime(fields[2]));
    if (fields.size() > 3)
        setEndTimeString(pageTime(fields[3]));
    if (fields.size() > 4)
        setDialog(fields[4].toString());
}
