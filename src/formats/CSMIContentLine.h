#pragma once

#include "formats/CFormatContentLine.h"

#include <QStringView>

class CSMIContent;

// One SYNC of a SAMI body: its start, the raw text behind the tag, and that text with
// the tags taken out. The end is the start of the next SYNC.
class CSMIContentLine : public CFormatContentLine<CSMIContent>
{
public:
    // Milliseconds in plain decimal, as "23064". Assigning takes a time string instead.
    QString StartTimeString() const;
    void setStartTimeString(QStringView text);
    QString EndTimeString() const;
    void setEndTimeString(QStringView text);

    // Keeps the raw text; DialogText gets the text without tags, "\N" for each BR.
    void setDialog(const QString &text);
    // The raw text with FONT tags turned into override tags.
    QString SSADialog();

    QString Content() override;
    // One piece that starts with "<SYNC"; ErrNumber 2 or 3 for a piece that isn't one.
    void setContent(const QString &text) override;
};
