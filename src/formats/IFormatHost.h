#pragma once

#include <QString>
#include <QtGlobal>

// What a format list reaches in the timing document that owns it: the sub-type of the
// timed-text format and the head fields that LRC tags and the SST head fill. A list
// without a host reads alone: LRC lines then get no times, as in a list that has no
// document behind it.
class IFormatHost
{
public:
    virtual ~IFormatHost() = default;

    virtual qint32 ScriptSubType() const = 0;
    virtual void setScriptSubType(qint32 value) = 0;

    virtual void setLrcName(const QString &value) = 0;
    virtual void setLrcArtist(const QString &value) = 0;
    virtual void setLrcCDName(const QString &value) = 0;
    virtual void setLrcEditor(const QString &value) = 0;
    virtual void setLrcOffset(double value) = 0;

    virtual void setSSTHead(const QString &value) = 0;
};
