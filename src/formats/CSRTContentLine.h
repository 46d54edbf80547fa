#pragma once

#include "formats/CFormatContentLine.h"

#include <QStringView>

#include <span>

class CSRTContent;

// One SRT block: a time line and its text lines, the line ends kept as "\N".
class CSRTContentLine : public CFormatContentLine<CSRTContent>
{
public:
    bool IsComment = false;

    // " H:MM:SS,hh0": the blank stands for the tens of the hour, the "0" for the third
    // decimal.
    QString StartTimeString() const { return timeString(StartTime()); }
    void setStartTimeString(QStringView text) { setStartTime(parseTime(text)); }
    QString EndTimeString() const { return timeString(EndTime()); }
    void setEndTimeString(QStringView text) { setEndTime(parseTime(text)); }

    // Sets the text and Blank; in SRT DialogText is the text itself.
    void setDialog(const QString &text) { storeDialog(text, true); }

    QString Content() override;
    void setContent(const QString &text) override;
    // The block as the reader holds it: the time line first, then the text lines.
    void ReadBlock(std::span<const QStringView> pieces);

    static QString timeString(double seconds);
    static double parseTime(QStringView text);
};
