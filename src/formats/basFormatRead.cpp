#include "formats/basFormatRead.h"

#include "core/IPrompt.h"
#include "core/basMessage.h"

namespace basFormatRead {

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
