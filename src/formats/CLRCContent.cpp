#include "formats/CLRCContent.h"

using namespace basFormatRead;

QString CLRCContent::Content()
{
    QString text;
    CLRCContentLine *previous = nullptr;
    for (CLRCContentLine *line : m_lines) {
        if (previous) {
            text += line->StartTime() != previous->EndTime() ? previous->Content()
                                                             : previous->ContentNoEndTimeString();
            text += QStringLiteral("\r\n");
        }
        previous = line;
    }
    if (previous) {
        text += previous->Content();
        text += QStringLiteral("\r\n");
    }
    return text;
}

void CLRCContent::setContent(const QString &text)
{
    Clear();
    GuardedRead("TIMING_ERR_116", [&] { read(text); });
}

void CLRCContent::read(QStringView text)
{
    const QList<QStringView> lines = SplitLines(text);
    Index16::CheckCount(lines.size());
    CLRCContentLine *previous = nullptr;
    std::unique_ptr<CLRCContentLine> previousUnlisted;
    Index16 i;
    for (;;) {
        const QStringView fileLine = lines[i.value];
        if (!IsBlankText(fileLine)) {
            auto line = Class::Make<CLRCContentLine>();
            line->setParent(this);
            line->setContent(fileLine.toString());
            CLRCContentLine *current = line.get();
            std::unique_ptr<CLRCContentLine> unlisted;
            if (line->ErrNumber != 0) {
                if (!AskContinueAfterBadLine())
                    return;
                unlisted = std::move(line);
            } else if (!line->Blank) {
                Add(std::move(line));
            } else {
                unlisted = std::move(line);
            }
            // Each lyric ends at the next stamp; lines without a stamp neither take nor
            // give an end.
            if (previous && !previous->IsComment && !current->IsComment)
                previous->setEndTime(current->StartTime());
            if (!current->IsComment) {
                previous = current;
                previousUnlisted = std::move(unlisted);
                if (current->Dialog().isEmpty()) {
                    previous = nullptr;
                    previousUnlisted.reset();
                }
            }
        }
        if (i.value >= lines.size() - 1)
            break;
        i.Next();
    }
}
