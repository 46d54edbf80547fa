#include "formats/CTimingFormats.h"

#include "core/Class.h"
#include "formats/basFormatConvert.h"
#include "script/CTiming.h"

using namespace basFormatConvert;

void CTimingFormats::Init(CTiming *timing)
{
    m_timing = timing;
    SMIContent = Class::MakeCollection<CSMIContent>();
    SMPContent = Class::Make<CSMPContent>(this);
    SRTContent = Class::MakeCollection<CSRTContent>();
    LRCContent = Class::Make<CLRCContent>(this);
    SSTContent = Class::Make<CSSTContent>(this);
}

bool CTimingFormats::IsFormatType(qint32 scriptType)
{
    return scriptType == 3 || scriptType == 4 || scriptType == 5 || scriptType == 8 || scriptType == 9;
}

bool CTimingFormats::ReadBody(qint32 scriptType, QStringView text)
{
    switch (scriptType) {
    case 3:
        SMIContent->setContent(text.toString());
        return true;
    case 4:
        SRTContent->setContent(text.toString());
        return true;
    case 5:
        SMPContent->setContent(text.toString());
        return true;
    case 8:
        LRCContent->setContent(text.toString());
        return true;
    case 9:
        SSTContent->setContent(text.toString());
        return true;
    default:
        return false;
    }
}

namespace {

// Puts the document's type back however the read of the events ends.
class ScriptTypeSwitch
{
public:
    ScriptTypeSwitch(CTiming &timing, qint32 during)
        : m_timing(timing)
        , m_type(timing.ScriptType())
    {
        m_timing.setScriptType(during);
    }
    ~ScriptTypeSwitch() { m_timing.setScriptType(m_type); }
    ScriptTypeSwitch(const ScriptTypeSwitch &) = delete;
    ScriptTypeSwitch &operator=(const ScriptTypeSwitch &) = delete;

private:
    CTiming &m_timing;
    qint32 m_type;
};

} // namespace

bool CTimingFormats::FillEvents()
{
    if (!m_timing)
        return false;
    QString events;
    switch (m_timing->ScriptType()) {
    case 3:
        events = SMIToEvents(*SMIContent);
        break;
    case 4:
        events = SRTToEvents(*SRTContent);
        break;
    case 5:
        events = SMPToEvents(*SMPContent);
        break;
    case 8:
        events = LRCToEvents(*LRCContent);
        break;
    case 9:
        events = SSTToEvents(*SSTContent);
        break;
    default:
        return false;
    }
    // The event text carries "Marked=" first fields: it reads as SSA.
    ScriptTypeSwitch asSsa(*m_timing, 1);
    m_timing->SSAContent->Read(events);
    return true;
}

bool CTimingFormats::AssembleBody(qint32 scriptType, QString &out) const
{
    if (!m_timing)
        return false;
    const CSSAContent &events = *m_timing->SSAContent;
    switch (scriptType) {
    case 3:
        out += ContentToSMI(events);
        return true;
    case 4:
        out += ContentToSRT(events);
        return true;
    case 5:
        out += ContentToSMP(events);
        return true;
    case 8:
        out += ContentToLRC(events);
        return true;
    case 9:
        out += ContentToSST(events);
        return true;
    default:
        return false;
    }
}

qint32 CTimingFormats::ScriptSubType() const
{
    return m_timing ? m_timing->ScriptSubType() : 0;
}

void CTimingFormats::setScriptSubType(qint32 value)
{
    if (m_timing)
        m_timing->setScriptSubType(value);
}

void CTimingFormats::setLrcName(const QString &value)
{
    if (m_timing)
        m_timing->ScriptInfo->setLrcName(value);
}

void CTimingFormats::setLrcArtist(const QString &value)
{
    if (m_timing)
        m_timing->ScriptInfo->setLrcArtist(value);
}

void CTimingFormats::setLrcCDName(const QString &value)
{
    if (m_timing)
        m_timing->ScriptInfo->setLrcCDName(value);
}

void CTimingFormats::setLrcEditor(const QString &value)
{
    if (m_timing)
        m_timing->ScriptInfo->setLrcEditor(value);
}

void CTimingFormats::setLrcOffset(double value)
{
    if (m_timing)
        m_timing->ScriptInfo->setLrcOffset(value);
}

void CTimingFormats::setSSTHead(const QString &value)
{
    if (m_timing)
        m_timing->ScriptInfo->SSTHead = value;
}
