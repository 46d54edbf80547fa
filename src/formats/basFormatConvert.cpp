#include "formats/basFormatConvert.h"

#include "core/basConvert.h"
#include "core/basTime.h"
#include "formats/CLRCContent.h"
#include "formats/CSMIContent.h"
#include "formats/CSMPContent.h"
#include "formats/CSRTContent.h"
#include "formats/CSSTContent.h"
#include "script/CSSAContent.h"
#include "script/basScript.h"

namespace basFormatConvert {

namespace {

QString eventsHead()
{
    return QStringLiteral(
        "[Events]\r\n"
        "Format: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n");
}

// The LRC form of an event line, whose times come from the stamps without their hour.
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

void appendEvent(QString &out, double start, double end, const QString &text)
{
    out += QStringLiteral("Dialogue: Marked=0,");
    AppendTimeString(out, start, 2);
    out += u',';
    AppendTimeString(out, end, 2);
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
        appendEvent(out, line->StartTime(), line->EndTime(), text(line));
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

namespace {

const QString kLineEnd = QStringLiteral("\r\n");

// "00:00:01:23": a time as SMP sub-type 1 and SST write it.
QString frameTime(double seconds)
{
    const QString t = TimeToString(seconds, 2);
    return u'0' + t.left(7) + u':' + t.mid(t.indexOf(u'.') + 1, 2);
}

// The decimal digits of a count, appended without a string of their own.
void appendNumber(QString &out, qint32 value)
{
    char16_t digits[12];
    int count = 0;
    quint32 v = value < 0 ? 0u - quint32(value) : quint32(value);
    do {
        digits[count++] = char16_t(u'0' + v % 10);
        v /= 10;
    } while (v > 0);
    if (value < 0)
        digits[count++] = u'-';
    while (count > 0)
        out += QChar(digits[--count]);
}

// SMP, SST and LRC write a line only when it says something.
bool isWritten(const CSSAContentLine *line)
{
    return !line->Blank && (!line->Dialog().isEmpty() || line->StartTime() != 0 || line->EndTime() != 0);
}

// "0:01:23.45" as "[01:23.45]".
QString lrcStamp(const QString &time)
{
    return u'[' + time.mid(2) + u']';
}

} // namespace

QString ContentToSMI(const CSSAContent &content)
{
    QString text = QStringLiteral("<SAMI>\r\n") + SMIHeadText() + QStringLiteral("<BODY>\r\n");
    for (const CSSAContentLine *line : content) {
        if (line->Blank)
            continue;
        text += QStringLiteral("<SYNC Start=") + basConvert::CStr(line->StartTime() * 1000)
            + QStringLiteral("><P>");
        text += line->DialogText();
        text += kLineEnd;
        text += QStringLiteral("<SYNC Start=") + basConvert::CStr(line->EndTime() * 1000)
            + QStringLiteral("><P>&nbsp;\r\n");
    }
    text += QStringLiteral("</BODY>\r\n</SAMI>");
    return text;
}

QString ContentToSRT(const CSSAContent &content)
{
    QString text;
    text.reserve(content.Count() * 80);
    qint32 counter = 0;
    QString time;
    auto appendTime = [&text, &time](const CSSAContentLine *line, double seconds, bool start) {
        time.clear();
        if (line->TimeFormat == 0)
            AppendTimeString(time, seconds, 2);
        else
            time = start ? line->StartTimeString() : line->EndTimeString();
        time.replace(u'.', u',');
        text += u'0';
        text += time;
        text += u'0';
    };
    for (const CSSAContentLine *line : content) {
        if (line->Blank)
            continue;
        ++counter;
        appendNumber(text, counter);
        text += kLineEnd;
        appendTime(line, line->StartTime(), true);
        text += QStringLiteral(" --> ");
        appendTime(line, line->EndTime(), false);
        text += kLineEnd;
        AppendStripOverridesToLines(text, line->Dialog());
        text += QStringLiteral("\r\n\r\n");
    }
    return text;
}

QString ContentToSMP(const CSSAContent &content)
{
    QString text;
    const qint32 subType = content.ScriptSubType;
    for (const CSSAContentLine *line : content) {
        if (!isWritten(line))
            continue;
        if (subType == 0) {
            text += u'0' + line->StartTimeString().left(9) + u':' + line->DialogText() + kLineEnd;
            text += u'0' + line->EndTimeString().left(9) + u':' + kLineEnd;
        } else if (subType == 1) {
            text += frameTime(line->StartTime()) + QStringLiteral("     ") + frameTime(line->EndTime())
                + QStringLiteral("     ") + line->DialogText() + kLineEnd;
        }
    }
    return text;
}

QString ContentToSST(const CSSAContent &content)
{
    QString text;
    qint32 counter = 0;
    for (const CSSAContentLine *line : content) {
        if (!isWritten(line))
            continue;
        ++counter;
        text += QString::number(counter) + QStringLiteral("\t\t") + frameTime(line->StartTime()) + u'\t'
            + frameTime(line->EndTime()) + u'\t' + line->DialogText() + kLineEnd;
    }
    return text;
}

QString ContentToLRC(const CSSAContent &content)
{
    QString text;
    const CSSAContentLine *previous = nullptr;
    auto appendLyric = [&text](const CSSAContentLine *line) {
        text += lrcStamp(line->StartTimeString()) + line->DialogText() + kLineEnd;
    };
    for (const CSSAContentLine *line : content) {
        if (!isWritten(line))
            continue;
        if (previous) {
            appendLyric(previous);
            // A gap needs a bare stamp that ends the lyric in front of it.
            if (line->StartTime() != previous->EndTime())
                text += lrcStamp(previous->EndTimeString()) + kLineEnd;
        }
        previous = line;
    }
    // The last lyric's end isn't in the file.
    if (previous)
        appendLyric(previous);
    return text;
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

void AppendStripOverridesToLines(QString &out, QStringView dialog)
{
    // Every pattern begins with a backslash: a text without one passes as it is.
    if (!dialog.contains(u'\\')) {
        out += dialog;
        return;
    }
    const qsizetype base = out.size();
    const qsizetype m = basScript::AppendWithoutOverrideBlocks(out, dialog);
    // "\h" becomes a blank, "\n" and "\N" a line end, in one pass from the left. No
    // replacement is longer than its pair, so the pass works in place.
    QChar *data = out.data() + base;
    qsizetype w = 0;
    for (qsizetype r = 0; r < m; ++r) {
        const QChar c = data[r];
        if (c == u'\\' && r + 1 < m) {
            const QChar next = data[r + 1];
            if (next == u'h') {
                data[w++] = u' ';
                ++r;
                continue;
            }
            if (next == u'n' || next == u'N') {
                data[w++] = u'\r';
                data[w++] = u'\n';
                ++r;
                continue;
            }
        }
        data[w++] = c;
    }
    out.truncate(base + w);
}

QString StripOverridesToLines(const QString &dialog)
{
    if (!dialog.contains(u'\\'))
        return dialog;
    QString out;
    AppendStripOverridesToLines(out, dialog);
    return out;
}

} // namespace basFormatConvert
