#pragma once

class CSpreadChanges;

// Where a grid that keeps a history reports its changes. The grid asks for the record of
// the open action before each change of its content and writes the old state into it;
// actions are opened and closed by CGridAction. A grid without a journal records nothing.
class ISpreadJournal
{
public:
    virtual ~ISpreadJournal() = default;

    // Opens an action (`kind` is a CGridAction::Kind); an action opened inside another
    // one joins it, and the outermost one's caption names the step.
    virtual void BeginAction(const char *captionKey, int kind) = 0;
    virtual void EndAction() = 0;
    // The record the next change goes into: the open action's, or an implicit one opened
    // for a change made outside any action. nullptr while nothing is recorded (a change
    // that starts the history afresh, or an undo being applied).
    virtual CSpreadChanges *Recording() = 0;
};
