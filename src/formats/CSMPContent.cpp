#include "formats/CSMPContent.h"

using namespace basFormatRead;

void CSMPContent::setScriptSubType(qint32 value)
{
    if (ParentTiming)
        ParentTiming->setScriptSubType(value);
    else
        m_subType = value;
}

QString CSMPContent::Content()
{
    QString text;
    for (CSMPContentLine *line : m_lines) {
        text += line->Content();
        text += QStringLiteral("\r\n");
    }
    return text;
}

void CSMPContent::setContent(const QString &text)
{
    Clear();
    GuardedRead("TIMING_ERR_117", [&] { read(text); });
}

void CSMPContent::read(QStringView text)
{
    const QList<QStringView> lines = SplitLines(text);
    Index16::CheckCount(lines.size());

    // The ninth character of the first line that has one of "." or ":" there decides.
    for (QStringView line : lines) {
        const QStringView t = TrimView(line);
        if (t.size() < 9)
            continue;
        if (t[8] == u'.') {
            setScriptSubType(0);
            break;
        }
        if (t[8] == u':') {
            setScriptSubType(1);
            break;
        }
    }
    const bool subType0 = ScriptSubType() == 0;

    CSMPContentLine *previous = nullptr;
    CSMPContentLine *lastMade = nullptr;
    Index16 i;
    for (;;) {
        const QStringView fileLine = lines[i.value];
        if (!IsBlankText(fileLine)) {
            auto line = Class::Make<CSMPContentLine>();
            line->setParent(this);
            line->setContent(fileLine.toString());
            if (line->ErrNumber != 0) {
                if (!AskContinueAfterBadLine())
                    return;
            } else {
                CSMPContentLine *current = Add(std::move(line));
                if (subType0 && previous && !previous->IsComment && !current->IsComment)
                    previous->setEndTime(current->StartTime());
                if (!current->IsComment)
                    previous = current;
                lastMade = current;
            }
        }
        if (i.value >= lines.size() - 1)
            break;
        i.Next();
    }
    // The loose parser gives 0 for this string, so the last line's end is 0.
    if (subType0 && lastMade)
        lastMade->setEndTimeString(u"9:59:59.99");
}
