#include "formats/CSMIContentLine.h"

#include "core/basConvert.h"
#include "core/basTime.h"

using namespace basFormatRead;

QString CSMIContentLine::StartTimeString() const
{
    return basConvert::CStr(StartTime() * 1000);
}

void CSMIContentLine::setStartTimeString(QStringView text)
{
    setStartTime(StringToTime(text));
}

QString CSMIContentLine::EndTimeString() const
{
    return basConvert::CStr(EndTime() * 1000);
}

void CSMIContentLine::setEndTimeString(QStringView text)
{
    setEndTime(StringToTime(text));
}

namespace {

bool isTag(QStringView tag, QStringView upperWord)
{
    return TrimView(tag).compare(upperWord, Qt::CaseInsensitive) == 0;
}

} // namespace

void CSMIContentLine::setDialog(const QString &text)
{
    m_dialog = text;
    QString plain;
    const QStringView view(text);
    qsizetype closed = -1; // index behind the last ">", none yet
    qsizetype from = 0;
    for (;;) {
        const qsizetype open = view.indexOf(u'<', from);
        if (open < 0)
            break;
        const qsizetype close = view.indexOf(u'>', open);
        // A "<" that no ">" follows is no tag: it stays in the text with what follows.
        if (close < 0)
            break;
        // Text in front of the first tag is dropped: no tag has closed yet.
        if (closed >= 0)
            plain += view.sliced(closed, open - closed);
        if (isTag(view.sliced(open + 1, close - open - 1), u"BR"))
            plain += QStringLiteral("\\N");
        closed = close + 1;
        from = close + 1;
    }
    plain += view.sliced(closed < 0 ? 0 : closed);
    DialogText = plain;
    const QStringView trimmed = TrimView(plain);
    Blank = trimmed.isEmpty() || trimmed == u"&nbsp;";
}

namespace {

// The value of an attribute: what stands behind the first `separator` (the whole text
// when there is none), up to the next blank or the end.
QString attributeValue(QStringView attribute, QChar separator)
{
    const qsizetype at = attribute.indexOf(separator);
    QStringView value = at < 0 ? attribute : attribute.sliced(at + 1);
    const qsizetype blank = value.indexOf(u' ');
    if (blank >= 0)
        value = value.left(blank);
    return value.toString();
}

} // namespace

QString CSMIContentLine::SSADialog()
{
    if (TrimView(m_dialog) == u"&nbsp;") {
        Blank = true;
        return {};
    }
    QString text = m_dialog;
    text.replace(QStringLiteral("\\N"), QStringLiteral("<br>"));
    for (;;) {
        const qsizetype open = text.indexOf(u'<');
        const qsizetype close = text.indexOf(u'>');
        // A ">" in front of the first "<" leaves no tag to take: the scan ends.
        if (open < 0 || close < 0 || close < open)
            break;
        const QString tag = TrimView(QStringView(text).sliced(open + 1, close - open - 1)).toString();
        const QString cut = text.left(open);
        QString replacement;
        if (tag.left(4).toUpper() == u"FONT") {
            const QStringView attribute = LTrimView(QStringView(tag).sliced(4));
            const QString name = attribute.left(5).toString().toUpper();
            if (name == u"COLOR") {
                const qsizetype eq = attribute.indexOf(u'=');
                replacement = QStringLiteral("{\\c&H") + attributeValue(attribute.sliced(eq + 1), u'#')
                    + QStringLiteral("&}");
            } else if (name.startsWith(u"NAME")) {
                replacement = QStringLiteral("{\\fn") + attributeValue(attribute, u'=') + u'}';
            } else if (name.startsWith(u"SIZE")) {
                replacement = QStringLiteral("{\\fs") + attributeValue(attribute, u'=') + u'}';
            }
        } else if (tag.left(5).toUpper() == u"/FONT") {
            replacement = QStringLiteral("{\\r}");
        }
        // The working text was cut in front of the tag, so nothing behind it survives.
        text = cut + replacement + QStringView(cut).mid(close + 1).toString();
    }
    return text;
}

QString CSMIContentLine::Content()
{
    if (Blank || (StartTime() == 0 && m_dialog.isEmpty()))
        return {};
    return QStringLiteral("<SYNC Start=") + StartTimeString() + u'>' + m_dialog + QStringLiteral("\r\n")
        + QStringLiteral("<SYNC Start=") + EndTimeString() + QStringLiteral("><P>&nbsp;");
}

void CSMIContentLine::setContent(const QString &text)
{
    ErrNumber = 0;
    const QStringView trimmed = TrimView(text);
    if (trimmed.isEmpty()) {
        Blank = true;
        return;
    }
    if (trimmed.left(5).compare(u"<SYNC", Qt::CaseInsensitive) != 0) {
        ErrNumber = 2;
        return;
    }
    const QStringView view(text);
    const qsizetype eq = view.indexOf(u'=');
    const qsizetype gt = view.indexOf(u'>');
    if (gt < 0 || gt < eq) {
        ErrNumber = 3;
        return;
    }
    // Only the first "=" counts; a value that isn't a plain number leaves the start at 0.
    try {
        setStartTime(basConvert::CDbl(view.sliced(eq + 1, gt - eq - 1)) / 1000);
    } catch (const VelmarError &) { }
    setDialog(view.sliced(gt + 1).toString());
}
