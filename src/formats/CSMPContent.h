#pragma once

#include "formats/CFormatContent.h"
#include "formats/CSMPContentLine.h"
#include "formats/IFormatHost.h"

// A timed plain-text file as read. The sub-type lives in the document behind
// ParentTiming; a list without one keeps its own.
class CSMPContent : public CFormatContent<CSMPContent, CSMPContentLine>
{
public:
    IFormatHost *ParentTiming = nullptr;

    void Init() override { }
    void Init(IFormatHost *parentTiming) { ParentTiming = parentTiming; }

    qint32 ScriptSubType() const { return ParentTiming ? ParentTiming->ScriptSubType() : m_subType; }
    void setScriptSubType(qint32 value);

    // Each line's text followed by "\r\n".
    QString Content() override;
    // Reads a whole file, deciding the sub-type first; a fault ends the read under
    // TIMING_ERR_117.
    void setContent(const QString &text) override;

private:
    void read(QStringView text);

    qint32 m_subType = 0;
};
