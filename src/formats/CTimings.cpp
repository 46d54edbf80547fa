#include "formats/CTimings.h"

#include "core/Class.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basSetting.h"

#include <QObject>
#include <QVariant>
#include <algorithm>

namespace {

double clampOffset(double value)
{
    return std::clamp(value, -1.0, 1.0);
}

void saveOffset(const char *key, double value)
{
    SaveSetting(QStringLiteral("TimeOffset"), QString::fromLatin1(key), basConvert::CStr(value));
}

} // namespace

CTiming *CTimings::Create(QObject *Window)
{
    auto member = std::make_unique<CTiming>();
    member->Init(m_counter + 1, Window);
    member->setParent(this);
    member->ReactOffsetStart = m_reactOffsetStart;
    member->ReactOffsetEnd = m_reactOffsetEnd;
    CTiming *raw = Adopt(std::move(member));
    if (Window) {
        const QString serial = QString::number(m_counter);
        Window->setProperty("Tag", serial);
        Window->setProperty("windowTitle", Msg(QStringLiteral("TIMING_TITLE_000")) + u'(' + serial + u')');
    }
    return raw;
}

void CTimings::SaveFile()
{
    if (!SaveWindow)
        return;
    for (CTiming *member : m_list)
        if (member->TimingWindow)
            SaveWindow(member);
}

void CTimings::SendNewTime(double Time)
{
    QObject *active = ActiveWindow ? ActiveWindow() : nullptr;
    if (!active)
        return;
    for (CTiming *member : m_list)
        if (member->TimingWindow == active && member->OnNewTime)
            member->OnNewTime(Time);
}

void CTimings::setReactOffset(double value)
{
    m_reactOffset = clampOffset(value);
    for (CTiming *member : m_list) {
        member->ReactOffsetStart = m_reactOffset;
        member->ReactOffsetEnd = m_reactOffset;
    }
    saveOffset("TimingOffset", m_reactOffset);
}

void CTimings::setReactOffsetStart(double value)
{
    m_reactOffsetStart = clampOffset(value);
    for (CTiming *member : m_list)
        member->ReactOffsetStart = m_reactOffsetStart;
    saveOffset("TimingOffsetStart", m_reactOffsetStart);
}

void CTimings::setReactOffsetEnd(double value)
{
    m_reactOffsetEnd = clampOffset(value);
    for (CTiming *member : m_list)
        member->ReactOffsetEnd = m_reactOffsetEnd;
    saveOffset("TimingOffsetEnd", m_reactOffsetEnd);
}
