#include "timing/CGridAction.h"

#include "timing/CSpread.h"
#include "timing/CTimingGrid.h"

CGridAction::CGridAction(CSpread &grid, const char *captionKey, Kind kind)
    : m_journal(grid.Journal())
{
    if (m_journal)
        m_journal->BeginAction(captionKey, kind);
}

CGridAction::CGridAction(CTimingGrid &grid, const char *captionKey, Kind kind)
    : CGridAction(grid.Spread(), captionKey, kind)
{
}

CGridAction::~CGridAction()
{
    if (m_journal)
        m_journal->EndAction();
}
