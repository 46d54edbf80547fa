#pragma once

#include "core/isub.h"
#include "formats/basFormatRead.h"

#include <QString>
#include <cmath>

// What every format line holds: a start and an end in seconds, the text as read and the
// text as the conversions read it, whether it is blank, and the outcome of its parse.
// `ParentT` is the list class of the format.
template <typename ParentT> class CFormatContentLine : public isub
{
public:
    bool Blank = true;
    QString DialogText;
    qint16 ErrNumber = 0;

    void Init(qint32 SerialNo = 0) { setSerialNo(SerialNo); }

    ParentT *Parent() const { return m_parent; }
    void setParent(ParentT *parent) { m_parent = parent; }

    // A value that isn't >= 0 (negative or NaN) stores and reads as 0.
    double StartTime() const { return m_startTime >= 0 ? m_startTime : 0; }
    void setStartTime(double seconds) { m_startTime = seconds >= 0 ? seconds : 0; }
    double EndTime() const { return m_endTime >= 0 ? m_endTime : 0; }
    void setEndTime(double seconds) { m_endTime = seconds >= 0 ? seconds : 0; }

    const QString &Dialog() const { return m_dialog; }

    void Clear() override { }

protected:
    // Stores the text in both fields; with `setBlank`, Blank follows the trimmed text.
    void storeDialog(const QString &text, bool setBlank)
    {
        m_dialog = text;
        DialogText = text;
        if (setBlank)
            Blank = basFormatRead::IsBlankText(text);
    }

    ParentT *m_parent = nullptr;
    double m_startTime = 0;
    double m_endTime = 0;
    QString m_dialog;
};
