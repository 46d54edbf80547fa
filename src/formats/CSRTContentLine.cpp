#include "formats/CSRTContentLine.h"

#include "core/basTime.h"
#include "script/basScript.h"

#include <QVarLengthArray>

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
    const QStringView trimmed = TrimView(input);
    QVarLengthArray<QChar, 32> text(trimmed.begin(), trimmed.end());
    for (QChar &c : text) {
        if (c == u',')
            c = u'.';
        else if (c == u' ')
            c = u'0';
    }
    const qsizetype from = text.size() > 11 ? 1 : 0;
    const qsizetype length = std::min<qsizetype>(10, text.size() - from);
    return basScript::FastStringToTime(QStringView(text.data() + from, length));
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
    const QList<QStringView> pieces = SplitLines(text);
    ReadBlock(pieces);
}

void CSRTContentLine::ReadBlock(std::span<const QStringView> pieces)
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
    if (pieces.size() == 2) {
        setDialog(pieces[1].toString());
        return;
    }
    QString dialog;
    for (size_t i = 1; i < pieces.size(); ++i) {
        if (i > 1)
            dialog += QStringLiteral("\\N");
        dialog += pieces[i];
    }
    setDialog(dialog);
}
