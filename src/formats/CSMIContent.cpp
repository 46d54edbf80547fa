#include "formats/CSMIContent.h"

#include "formats/basFormatConvert.h"

using namespace basFormatRead;

QString CSMIContent::Content()
{
    QString text
        = QStringLiteral("<SAMI>\r\n") + basFormatConvert::SMIHeadText() + QStringLiteral("<BODY>\r\n");
    for (CSMIContentLine *line : m_lines) {
        text += line->Content();
        text += QStringLiteral("\r\n");
    }
    text += QStringLiteral("</BODY>\r\n</SAMI>");
    return text;
}

void CSMIContent::setContent(const QString &text)
{
    Clear();
    GuardedRead("TIMING_ERR_105", [&] { read(text); });
}

namespace {

// The text of every section between a plain <WORD> and its </WORD>, joined. The tags
// are matched whatever their case, but only when they hold nothing but the word.
QString sections(QStringView text, QStringView word)
{
    const QString closing = u'/' + word.toString();
    QString result;
    qsizetype start = -1;
    qsizetype from = 0;
    for (;;) {
        const qsizetype open = text.indexOf(u'<', from);
        if (open < 0)
            break;
        const qsizetype close = text.indexOf(u'>', open + 1);
        if (close < 0)
            break;
        const QStringView tag = TrimView(text.sliced(open + 1, close - open - 1));
        if (tag.compare(word, Qt::CaseInsensitive) == 0) {
            start = close + 1;
        } else if (tag.compare(closing, Qt::CaseInsensitive) == 0) {
            if (start >= 0 && open > start)
                result += text.sliced(start, open - start);
            start = -1;
        }
        from = close + 1;
    }
    return result;
}

} // namespace

void CSMIContent::read(const QString &text)
{
    QString oneLine = text;
    oneLine.remove(QStringLiteral("\r\n"));
    const QString body = sections(sections(oneLine, u"SAMI"), u"BODY");
    // Case matters here, unlike in the section tags: "<Sync" doesn't split.
    const QList<QStringView> pieces = QStringView(body).split(u"<SYNC");
    Index16::CheckCount(pieces.size());

    CSMIContentLine *previous = nullptr;
    std::unique_ptr<CSMIContentLine> previousUnlisted; // a previous line that wasn't added
    Index16 i;
    for (;;) {
        const QStringView piece = pieces[i.value];
        if (!IsBlankText(piece)) {
            auto line = Class::Make<CSMIContentLine>();
            line->setParent(this);
            line->setContent(QStringLiteral("<SYNC") + piece.toString());
            CSMIContentLine *current = line.get();
            std::unique_ptr<CSMIContentLine> unlisted;
            if (line->ErrNumber != 0) {
                if (!AskContinueAfterBadLine())
                    return;
                unlisted = std::move(line);
            } else if (!line->Blank) {
                Add(std::move(line));
            } else {
                unlisted = std::move(line);
            }
            // A SYNC of any kind ends the one before it.
            if (previous)
                previous->setEndTime(current->StartTime());
            previous = current;
            previousUnlisted = std::move(unlisted);
        }
        if (i.value >= pieces.size() - 1)
            break;
        i.Next();
    }
    if (previous)
        previous->setEndTimeString(u"9:59:59.99");
}
