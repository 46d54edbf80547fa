#pragma once

#include "formats/CFormatContent.h"
#include "formats/CSSTContentLine.h"
#include "formats/IFormatHost.h"

// An SST script as read: the head goes to the document behind ParentTiming (kept here
// when there is none), the page lines to the list.
class CSSTContent : public CFormatContent<CSSTContent, CSSTContentLine>
{
public:
    IFormatHost *ParentTiming = nullptr;

    void Init() override { }
    void Init(IFormatHost *parentTiming) { ParentTiming = parentTiming; }

    // The head of the last file read by a list without a document.
    const QString &SSTHead() const { return m_head; }

    // Each line's text followed by "\r\n".
    QString Content() override;
    // Reads a whole file; a fault ends the read under TIMING_ERR_119.
    void setContent(const QString &text) override;

private:
    void read(QStringView text);

    QString m_head;
};
