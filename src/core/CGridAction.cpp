#include "core/CGridAction.h"

#include "core/CSpread.h"

CGridAction::CGridAction(CSpread &grid, const char *captionKey, Kind kind)
    : m_journal(grid.Journal())
{
    if (m_journal)
        m_journal->BeginAction(captionKey, kind);
}

CGridAction::~CGridAction()
{
    if (m_journal)
        m_journal->EndAction();
}
