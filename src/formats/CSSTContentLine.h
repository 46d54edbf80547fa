#pragma once

#include "formats/CFormatContentLine.h"

#include <QStringView>

class CSSTContent;

// One page line of an SST script: number, empty field, start, end and picture file,
// separated by tabs. The last number of a time is hundredths, whatever the TV type.
class CSSTContentLine : public CFormatContentLine<CSSTContent>
{
public:
    bool IsComment = false;

    // "00:00:23:26". Assigning takes the same form.
    QString StartTimeString() const { return timeString(StartTime()); }
    void setStartTimeString(QStringView text) { setStartTime(parseTime(text)); }
    QString EndTimeString() const { return timeString(EndTime()); }
    void setEndTimeString(QStringView text) { setEndTime(parseTime(text)); }

    // The picture file name; Blank stays as it is.
    void setDialog(const QString &text) { storeDialog(text, false); }
    QString SSADialog() const { return m_dialog; }

    // Start, two tabs, end, two tabs, picture: a form of its own that no file uses.
    QString Content() override;
    // One page line of the file.
    void setContent(const QString &text) override;

    static QString timeString(double seconds);
    static double parseTime(QStringView text);
};
