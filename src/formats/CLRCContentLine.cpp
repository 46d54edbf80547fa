#include "formats/CLRCContentLine.h"

#include "core/basConvert.h"
#include "core/basTime.h"
#include "formats/CLRCContent.h"

using namespace basFormatRead;

QString CLRCContentLine::timeString(double seconds)
{
    return u'[' + TimeToString(seconds, 2).mid(2) + u']';
}

void CLRCContentLine::setStartTimeString(QStringView text)
{
    setStartTime(LooseStringToTime(text));
}

void CLRCContentLine::setEndTimeString(QStringView text)
{
    setEndTime(LooseStringToTime(text));
}

QString CLRCContentLine::Content()
{
    if (StartTime() == 0 && EndTime() == 0 && m_dialog.isEmpty())
        return {};
    return ContentNoEndTimeString() + EndTimeString();
}

QString CLRCContentLine::ContentNoEndTimeString() const
{
    return StartTimeString() + m_dialog + QStringLiteral("\r\n");
}

void CLRCContentLine::setContent(const QString &text)
{
    ErrNumber = 0;
    if (IsBlankText(text)) {
        Blank = true;
        return;
    }
    const QStringView view(text);
    // Positions count from 1: p is the "[", r the "]" counted behind it.
    const qsizetype p = view.indexOf(u'[') + 1;
    const qsizetype r = p > 0 ? view.sliced(p).indexOf(u']') + 1 : 0;
    if (p == 0 || r == 0) {
        setStartTimeString(u"00:00.00");
        setDialog(text);
        IsComment = true;
        return;
    }
    // Both cuts are right for a line that begins with its "[" only; further in they take
    // the wrong stretch, and a stretch of negative length is taken as empty.
    const qsizetype tagLength = r - p;
    const QString tag
        = tagLength > 0 ? TrimView(basConvert::Mid(view, p + 1, tagLength)).toString() : QString();
    const QString rest = basConvert::Mid(view, r + 2);
    setDialog(rest);
    if (!rest.isEmpty())
        Blank = false;

    const qsizetype colon = tag.indexOf(u':');
    IFormatHost *host = m_parent ? m_parent->ParentTiming : nullptr;
    if (colon < 0 || !host)
        return;
    const QString key = tag.left(colon).toUpper();
    const QString value = tag.mid(colon + 1);
    if (key == u"AR")
        host->setLrcArtist(value);
    else if (key == u"TI")
        host->setLrcName(value);
    else if (key == u"AL")
        host->setLrcCDName(value);
    else if (key == u"BY")
        host->setLrcEditor(value);
    else if (key == u"OFFSET")
        host->setLrcOffset(basConvert::CDbl(value));
    else
        setStartTimeString(tag);
}
