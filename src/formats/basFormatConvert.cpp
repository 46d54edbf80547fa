#include "formats/basFormatConvert.h"

#include "core/basTime.h"
#include "formats/CLRCContent.h"
#include "formats/CSMIContent.h"
#include "formats/CSMPContent.h"
#include "formats/CSRTContent.h"
#include "formats/CSSTContent.h"

namespace basFormatConvert {

namespace {

QString eventsHead()
{
    return QStringLiteral("[Events]\r\n"
                          "Format: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n");
}

void appendEvent(QString &out, const QString &start, const QString &end, const QString &text)
{
    out += QStringLiteral("Dialogue: Marked=0,");
    out += start;
    out += u',';
    out += end;
    out += QStringLiteral(",*Default,说话人,0000,0000,0000,,");
    out += text;
    out += QStringLiteral("\r\n");
}

// The lines of a list as events; `text` picks what each format gives as the text.
template <typename List, typename TextOf> QString toEvents(const List &content, TextOf text)
{
    QString out = eventsHead();
    out.reserve(out.size() + content.Count() * 96);
    for (auto *line : content) {
        if (line->Blank)
            continue;
        appendEvent(out, TimeToString(line->StartTime(), 2), TimeToString(line->EndTime(), 2), text(line));
    }
    return out;
}

// "[01:23.45]" as "0:01:23.45".
QString lrcTime(const QString &stamp)
{
    return QStringLiteral("0:") + stamp.mid(1, stamp.size() - 2);
}

} // namespace

QString SMIToEvents(const CSMIContent &content)
{
    return toEvents(content, [](CSMIContentLine *line) { return line->DialogText; });
}

QString SRTToEvents(const CSRTContent &content)
{
    return toEvents(content, [](CSRTContentLine *line) { return line->DialogText; });
}

QString SMPToEvents(const CSMPContent &content)
{
    return toEvents(content, [](CSMPContentLine *line) { return line->SSADialog(); });
}

QString SSTToEvents(const CSSTContent &content)
{
    return toEvents(content, [](CSSTContentLine *line) { return line->Dialog(); });
}

QString LRCToEvents(const CLRCContent &content)
{
    QString out = eventsHead();
    for (CLRCContentLine *line : content) {
        if (line->Blank)
            continue;
        appendEvent(out, lrcTime(line->StartTimeString()), lrcTime(line->EndTimeString()), line->SSADialog());
    }
    return out;
}

QString SMIHeadText()
{
    return QStringLiteral(
        "<HEAD>\r\n"
        "<TITLE></TITLE>\r\n"
        "<!-- Velmar -->\r\n"
        "<STYLE type=\"text/css\">\r\n"
        "<!--P {margin-left:8pt; margin-right:8pt;margin-bottom:2pt;margin-top:6pt;text-align:center;}"
        "#Normal {name:标准字型;font-family:Verdana;font-size:16pt;}-->\r\n"
        "</STYLE>\r\n"
        "</HEAD>\r\n");
}

QString StripOverridesToLines(const QString &dialog)
{
    QString text = dialog;
    for (;;) {
        const qsizetype open = text.indexOf(QStringLiteral("{\\"));
        if (open < 0)
            break;
        const qsizetype close = text.indexOf(u'}', open + 2);
        if (close < 0)
            text.truncate(open);
        else
            text.remove(open, close - open + 1);
    }
    text.replace(QStringLiteral("\\h"), QStringLiteral(" "));
    text.replace(QStringLiteral("\\n"), QStringLiteral("\\N"));
    text.replace(QStringLiteral("\\N"), QStringLiteral("\r\n"));
    return text;
}

} // namespace basFormatConvert
