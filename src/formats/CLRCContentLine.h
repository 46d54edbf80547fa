#pragma once

#include "formats/CFormatContentLine.h"

#include <QStringView>

class CLRCContent;

// One line of a lyrics file: a stamp and its words, or a metadata tag, or words without
// a stamp (IsComment). A lyric ends at the next stamp.
class CLRCContentLine : public CFormatContentLine<CLRCContent>
{
public:
    // The line had no usable time stamp.
    bool IsComment = false;

    // "[mm:ss.hh]": the hour is dropped. Assigning takes loose time text.
    QString StartTimeString() const { return timeString(StartTime()); }
    void setStartTimeString(QStringView text);
    QString EndTimeString() const { return timeString(EndTime()); }
    void setEndTimeString(QStringView text);

    void setDialog(const QString &text) { storeDialog(text, true); }
    QString SSADialog() const { return m_dialog; }

    // Stamp, words, "\r\n", end stamp; "" for an empty line.
    QString Content() override;
    // The same without the end stamp.
    QString ContentNoEndTimeString() const;
    // One line of the file, untrimmed.
    void setContent(const QString &text) override;

    static QString timeString(double seconds);
};
