#pragma once

#include "formats/CFormatContent.h"
#include "formats/CSRTContentLine.h"

// An SRT file as read: its blocks in order.
class CSRTContent : public CFormatContent<CSRTContent, CSRTContentLine>
{
public:
    // Numbered blocks, each followed by an empty line.
    QString Content() override;
    // Reads a whole file; a fault ends the read under TIMING_ERR_118.
    void setContent(const QString &text) override;

private:
    void read(QStringView text);
};
