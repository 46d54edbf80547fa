#include "formats/CSRTContent.h"

using namespace basFormatRead;

QString CSRTContent::Content()
{
    QString text;
    qint32 counter = 0;
    for (CSRTContentLine *line : m_lines) {
        ++counter;
        text += QString::number(counter);
        text += QStringLiteral("\r\n");
        text += line->Content();
        text += QStringLiteral("\r\n\r\n");
    }
    return text;
}

void CSRTContent::setContent(const QString &text)
{
    Clear();
    GuardedRead("TIMING_ERR_118", [&] { read(text); });
}

namespace {

// Only a blank line (or a lone carriage return) ends a block.
bool isStopLine(QStringView line)
{
    return IsBlankText(line) || line == u"\r";
}

} // namespace

void CSRTContent::read(QStringView text)
{
    const QList<QStringView> lines = SplitLines(text);
    Index16::CheckCount(lines.size());
    const qsizetype last = lines.size() - 1;
    m_lines.Reserve(m_lines.Count() + lines.size() / 4);
    Index16 i;
    for (;;) {
        if (lines[i.value].contains(u"-->")) {
            const qsizetype first = i.value;
            i.Next();
            // The line is read before the end of the text is looked at: a block that
            // runs into the last element without a stop line faults here.
            while (!isStopLine(basFormatRead::At(lines, i.value)))
                i.Next();
            auto line = Class::Make<CSRTContentLine>();
            line->setParent(this);
            line->ReadBlock(std::span<const QStringView>(lines.constData() + first, size_t(i.value - first)));
            if (line->ErrNumber != 0) {
                if (!AskContinueAfterBadLine())
                    return;
            } else {
                Add(std::move(line));
            }
        }
        if (i.value >= last)
            break;
        i.Next();
    }
}
