#pragma once

#include "formats/CFormatContent.h"
#include "formats/CSMIContentLine.h"

// A SAMI file as read: the text SYNCs of its body in order.
class CSMIContent : public CFormatContent<CSMIContent, CSMIContentLine>
{
public:
    // "<SAMI>", the shared head, the body of every line.
    QString Content() override;
    // Reads a whole file; a fault ends the read under TIMING_ERR_105.
    void setContent(const QString &text) override;

private:
    void read(const QString &text);
};
