#include "formats/basFormatRead.h"

#include "core/IPrompt.h"
#include "core/basMessage.h"

namespace basFormatRead {

QList<QStringView> SplitLines(QStringView text)
{
    QList<QStringView> lines;
    lines.reserve(text.size() / 32 + 1);
    qsizetype from = 0;
    for (;;) {
        const qsizetype at = text.indexOf(u"\r\n", from);
        if (at < 0)
            break;
        lines.append(text.sliced(from, at - from));
        from = at + 2;
    }
    lines.append(text.sliced(from));
    return lines;
}

QStringView TrimView(QStringView text)
{
    qsizetype b = 0, e = text.size();
    while (b < e && text[b] == u' ')
        ++b;
    while (e > b && text[e - 1] == u' ')
        --e;
    return text.sliced(b, e - b);
}

QStringView LTrimView(QStringView text)
{
    qsizetype b = 0;
    while (b < text.size() && text[b] == u' ')
        ++b;
    return text.sliced(b);
}

bool IsBlankText(QStringView text)
{
    for (QChar c : text)
        if (c != u' ')
            return false;
    return true;
}

void Index16::CheckCount(qsizetype count)
{
    // The loop's upper bound is the last index, converted to 16 bits up front.
    if (count - 1 > 32767)
        throw VelmarError::Overflow();
}

bool AskContinueAfterBadLine()
{
    return MsgBox(Msg(QStringLiteral("TIMING_ERR_104")), MsgBoxStyle::YesNo) != MsgBoxResult::No;
}

void ReportReadFault(const char *messageKey, const QString &description)
{
    MsgBox(Msg(QString::fromLatin1(messageKey)) + description, MsgBoxStyle::OKOnly);
}

} // namespace basFormatRead
