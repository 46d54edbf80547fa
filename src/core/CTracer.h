#pragma once

#include <QElapsedTimer>
#include <QString>

// A scope timer for debugging: Enter stores the name and starts the timer; the time is
// read again on destruction and reported nowhere.
class CTracer
{
public:
    ~CTracer();
    void Enter(const QString &ProcName);
    const QString &ProcName() const { return m_procName; }

private:
    QString m_procName;
    QElapsedTimer m_timer;
};

// The trace of object creation and destruction: composed for a debug channel that a
// release build does not have, so it has no visible effect.
void TraceCreate(const char *typeName);
void TraceDestroy(const char *typeName);
