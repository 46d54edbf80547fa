#include "formats/CTimingFormats.h"

#include "core/CScopeExit.h"
#include "core/Class.h"
#include "formats/CTiming.h"
#include "formats/basFormatConvert.h"

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

bool CTimingFormats::IsFormatType(ScriptType scriptType)
{
    return scriptType == ScriptType::SAMI || scriptType == ScriptType::SRT || scriptType == ScriptType::SMP
        || scriptType == ScriptType::LRC || scriptType == ScriptType::SST;
}

bool CTimingFormats::ReadBody(ScriptType scriptType, QStringView text)
{
    switch (scriptType) {
    case ScriptType::SAMI:
        SMIContent->setContent(text.toString());
        return true;
    case ScriptType::SRT:
        SRTContent->setContent(text.toString());
        return true;
    case ScriptType::SMP:
        SMPContent->setContent(text.toString());
        return true;
    case ScriptType::LRC:
        LRCContent->setContent(text.toString());
        return true;
    case ScriptType::SST:
        SSTContent->setContent(text.toString());
        return true;
    default:
        return false;
    }
}

bool CTimingFormats::FillEvents()
{
    if (!m_timing)
        return false;
    QString events;
    switch (m_timing->ScriptType()) {
    case ScriptType::SAMI:
        events = SMIToEvents(*SMIContent);
        break;
    case ScriptType::SRT:
        events = SRTToEvents(*SRTContent);
        break;
    case ScriptType::SMP:
        events = SMPToEvents(*SMPContent);
        break;
    case ScriptType::LRC:
        events = LRCToEvents(*LRCContent);
        break;
    case ScriptType::SST:
        events = SSTToEvents(*SSTContent);
        break;
    default:
        return false;
    }
    // The event text carries "Marked=" first fields: it reads as SSA, and the type comes
    // back however the read ends.
    const CScopeExit putBack(
        [timing = m_timing, type = m_timing->ScriptType()] { timing->setScriptType(type); });
    m_timing->setScriptType(ScriptType::SSA);
    m_timing->SSAContent->Read(events);
    return true;
}

bool CTimingFormats::AssembleBody(ScriptType scriptType, QString &out) const
{
    if (!m_timing)
        return false;
    const CSSAContent &events = *m_timing->SSAContent;
    switch (scriptType) {
    case ScriptType::SAMI:
        out += ContentToSMI(events);
        return true;
    case ScriptType::SRT:
        out += ContentToSRT(events);
        return true;
    case ScriptType::SMP:
        out += ContentToSMP(events);
        return true;
    case ScriptType::LRC:
        out += ContentToLRC(events);
        return true;
    case ScriptType::SST:
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
