#pragma once

#include "formats/CFormatContentLine.h"

#include <QStringView>

class CSMPContent;

// One line of a timed plain-text file. Sub-type 0: "00:00:01.2:text", ended by the next
// line's start. Sub-type 1: "00:00:01:23     00:00:03:45     text", with its own end.
class CSMPContentLine : public CFormatContentLine<CSMPContent>
{
public:
    // Sub-type 0: a line that has no valid time.
    bool IsComment = false;

    // Sub-type 0 "00:00:01.2" (tenths, cut); sub-type 1 "00:00:01:29". Assigning takes
    // loose time text.
    QString StartTimeString() const { return timeString(StartTime()); }
    void setStartTimeString(QStringView text);
    QString EndTimeString() const { return timeString(EndTime()); }
    void setEndTimeString(QStringView text);

    // Blank follows the text in sub-type 0 only.
    void setDialog(const QString &text);
    QString SSADialog() const { return m_dialog; }

    QString Content() override;
    void setContent(const QString &text) override;

    // The sub-type of the list, 0 without one.
    qint32 SubType() const;

private:
    QString timeString(double seconds) const;
    void readSubType0(const QString &text, QStringView s);
    void readSubType1(QStringView s);
};
