#pragma once

#include "core/VelmarError.h"
#include "core/basConvert.h"

#include <QList>
#include <QString>
#include <QStringView>
#include <QtGlobal>

// What the five format readers share: the split of a whole file, the 16-bit line index
// they walk it with, and the way a fault or a bad line reaches the user.
namespace basFormatRead {

using basConvert::LTrimView;
using basConvert::TrimView;
inline QList<QStringView> SplitLines(QStringView text)
{
    return basConvert::SplitCrlf(text);
}

bool IsBlankText(QStringView text);

// The readers walk the split with a 16-bit signed index. A split whose last index does
// not fit faults at once; stepping past 32,767 faults as well.
class Index16
{
public:
    // Raises Overflow when a split of `count` elements can't be walked.
    static void CheckCount(qsizetype count);
    qint16 value = 0;
    void Next()
    {
        if (value == 32767)
            throw VelmarError::Overflow();
        ++value;
    }
};

// The element at `index`, or the fault of an array read past its end.
inline QStringView At(const QList<QStringView> &lines, qsizetype index)
{
    if (index < 0 || index >= lines.size())
        throw VelmarError::SubscriptOutOfRange();
    return lines[index];
}

// TIMING_ERR_104 as a Yes/No question: true when the user wants the read to go on.
bool AskContinueAfterBadLine();
// The format's catalogue message with the fault's description appended, OK only.
void ReportReadFault(const char *messageKey, const QString &description);

// Runs a reader; any fault ends it and is shown under the format's message. The lines
// the reader added before the fault stay where they are.
template <typename F> void GuardedRead(const char *messageKey, F &&read)
{
    try {
        read();
    } catch (const VelmarError &e) {
        ReportReadFault(messageKey, e.Description());
    } catch (const std::exception &e) {
        ReportReadFault(messageKey, QString::fromLocal8Bit(e.what()));
    }
}

} // namespace basFormatRead
