#include "formats/CSRTContentLine.h"

#include "core/basTime.h"

using namespace basFormatRead;

QString CSRTContentLine::timeString(double seconds)
{
    QString text = TimeToString(seconds, 2);
    text.replace(u'.', u',');
    return u' ' + text + u'0';
}

double CSRTContentLine::parseTime(QStringView input)
{
    // Both "00:00:25,360" and " 0:00:25.360" come down to "0:00:25.36"; a two-digit hour
    // loses its first digit and the third decimal is cut.
    QString text = TrimView(input).toString();
    text.replace(u',', u'.');
    text.replace(u' ', u'0');
    if (text.size() > 11)
        text.remove(0, 1);
    text.truncate(10);
    return StringToTime(text);
}

QString CSRTContentLine::Content()
{
    return StartTimeString() + QStringLiteral(" --> ") + EndTimeString() + QStringLiteral("\r\n") + Dialog();
}

void CSRTContentLine::setContent(const QString &text)
{
    ErrNumber = 0;
    if (IsBlankText(text)) {
        Blank = true;
        return;
    }
    ReadBlock(SplitLines(text));
}

void CSRTContentLine::ReadBlock(const QList<QStringView> &pieces)
{
    ErrNumber = 0;
    if (pieces.size() == 1 && IsBlankText(pieces[0])) {
        Blank = true;
        return;
    }
    const QStringView timeLine = pieces[0];
    const qsizetype arrow = timeLine.indexOf(u"-->");
    if (arrow >= 0) {
        setStartTimeString(timeLine.left(arrow));
        setEndTimeString(timeLine.sliced(arrow + 3));
    }
    QString dialog;
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        if (i > 1)
            dialog += QStringLiteral("\\N");
        dialog += pieces[i];
    }
    setDialog(dialog);
}
