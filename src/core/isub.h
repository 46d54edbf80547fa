#pragma once

#include <QString>
#include <QtGlobal>

// The contract of every document object: a text form, a changed flag, a serial number
// within its owning list and the file it belongs to. Changed, SerialNo and FileName are
// plain storage unless a class gives them meaning.
class isub
{
public:
    virtual ~isub() = default;

    // Reading formats the object into its text form; writing parses a text into it.
    virtual QString Content() = 0;
    virtual void setContent(const QString &text) = 0;

    virtual bool Changed() const { return m_changed; }
    virtual void setChanged(bool changed) { m_changed = changed; }
    virtual qint32 SerialNo() const { return m_serialNo; }
    virtual void setSerialNo(qint32 serialNo) { m_serialNo = serialNo; }
    virtual QString FileName() const { return m_fileName; }
    virtual void setFileName(const QString &fileName) { m_fileName = fileName; }

    virtual void Clear() = 0;

protected:
    bool m_changed = false;
    qint32 m_serialNo = 0;
    QString m_fileName;
};
