#include "formats/CSSTContent.h"

using namespace basFormatRead;

QString CSSTContent::Content()
{
    QString text;
    for (CSSTContentLine *line : m_lines) {
        text += line->Content();
        text += QStringLiteral("\r\n");
    }
    return text;
}

void CSSTContent::setContent(const QString &text)
{
    Clear();
    GuardedRead("TIMING_ERR_119", [&] { read(text); });
}

namespace {

bool isPageLine(QStringView line)
{
    const QStringView t = TrimView(line);
    return !t.isEmpty() && t[0] >= u'0' && t[0] <= u'9';
}

} // namespace

void CSSTContent::read(QStringView text)
{
    const QList<QStringView> lines = SplitLines(text);
    Index16::CheckCount(lines.size());

    // The head is every line in front of the first one that begins with a digit.
    QString head;
    for (qsizetype i = 0; i < lines.size() && !isPageLine(lines[i]); ++i) {
        if (i > 0)
            head += QStringLiteral("\r\n");
        head += lines[i];
    }
    m_head = head;
    if (ParentTiming)
        ParentTiming->setSSTHead(head);

    Index16 i;
    for (;;) {
        const QStringView fileLine = lines[i.value];
        if (isPageLine(fileLine)) {
            auto line = Class::Make<CSSTContentLine>();
            line->setParent(this);
            line->setContent(fileLine.toString());
            if (line->ErrNumber != 0) {
                if (!AskContinueAfterBadLine())
                    return;
            } else {
                Add(std::move(line));
            }
        }
        if (i.value >= lines.size() - 1)
            break;
        i.Next();
    }
}
