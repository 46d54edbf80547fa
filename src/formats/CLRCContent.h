#pragma once

#include "formats/CFormatContent.h"
#include "formats/CLRCContentLine.h"
#include "formats/IFormatHost.h"

// A lyrics file as read: its timed and untimed lines; the metadata tags go to the head
// of the document behind ParentTiming.
class CLRCContent : public CFormatContent<CLRCContent, CLRCContentLine>
{
public:
    IFormatHost *ParentTiming = nullptr;

    void Init() override { }
    void Init(IFormatHost *parentTiming) { ParentTiming = parentTiming; }

    // Each line with its end stamp where the next line doesn't start at its end.
    QString Content() override;
    // Reads a whole file; a fault ends the read under TIMING_ERR_116.
    void setContent(const QString &text) override;

private:
    void read(QStringView text);
};
