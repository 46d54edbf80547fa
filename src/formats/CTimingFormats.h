#pragma once

#include "formats/CLRCContent.h"
#include "formats/CSMIContent.h"
#include "formats/CSMPContent.h"
#include "formats/CSRTContent.h"
#include "formats/CSSTContent.h"
#include "formats/IFormatHost.h"
#include "script/ScriptType.h"

#include <QString>
#include <QStringView>
#include <memory>

class CTiming;

// The bodies of the other file formats of one timing document, and the three points
// where they meet it: a file of the format is read into its list, the list becomes the
// document's event lines, and the event lines are assembled as a file of the format.
// It is the document side of the lists too: the sub-type, the LRC tags and the SST head
// go through it to the document and its head.
class CTimingFormats : public IFormatHost
{
public:
    std::unique_ptr<CSMIContent> SMIContent;
    std::unique_ptr<CSMPContent> SMPContent;
    std::unique_ptr<CSRTContent> SRTContent;
    std::unique_ptr<CLRCContent> LRCContent;
    std::unique_ptr<CSSTContent> SSTContent;

    void Init(CTiming *timing);
    CTiming *Timing() const { return m_timing; }

    // Whether the type is one of SAMI, SRT, SMP, LRC and SST.
    static bool IsFormatType(ScriptType scriptType);

    // A whole file of that type into its list; false for any other type.
    bool ReadBody(ScriptType scriptType, QStringView text);
    // The document's event lines made anew from the list of its present type, read as
    // SSA events: ScriptType is SSA while they are read and goes back behind them. False
    // for any other type.
    bool FillEvents();
    // The file of that type assembled from the document's event lines, appended to
    // `out`: the whole file for SAMI, SRT and SMP, the lines behind the head for LRC and
    // SST.
    bool AssembleBody(ScriptType scriptType, QString &out) const;

    qint32 ScriptSubType() const override;
    void setScriptSubType(qint32 value) override;
    void setLrcName(const QString &value) override;
    void setLrcArtist(const QString &value) override;
    void setLrcCDName(const QString &value) override;
    void setLrcEditor(const QString &value) override;
    void setLrcOffset(double value) override;
    void setSSTHead(const QString &value) override;

private:
    CTiming *m_timing = nullptr;
};
