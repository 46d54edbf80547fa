#include "core/CTracer.h"

#include "core/basPlatform.h"

#include <QLoggingCategory>

namespace {
Q_LOGGING_CATEGORY(lcTrace, "velmar.trace", QtCriticalMsg)

void trace(const char *verb, const char *typeName)
{
    if (!lcTrace().isDebugEnabled())
        return;
    qCDebug(lcTrace).noquote() << verb << typeName << " Object at time "
                               << Now().toString(QStringLiteral("hh:mm:ss.zzz"));
}
} // namespace

CTracer::~CTracer()
{
    if (m_timer.isValid())
        m_timer.elapsed();
}

void CTracer::Enter(const QString &ProcName)
{
    m_procName = ProcName;
    m_timer.start();
}

void TraceCreate(const char *typeName)
{
    trace("Created a ", typeName);
}

void TraceDestroy(const char *typeName)
{
    trace("Destroyed a ", typeName);
}
