#pragma once

#include <concepts>

class CSpread;
class ISpreadJournal;

// One user action on a grid that keeps a history: everything the grid changes while the
// guard lives becomes one undo step, named by the catalogue text of `captionKey` (a string
// literal: the step keeps the key and looks the text up when it is shown). Guards opened
// while one is open join it, so a routine may guard itself and still be part of a larger
// action. The step is closed when the outermost guard goes, however it goes (a fault
// included: what was done until then is one step). On a grid without a history the
// guard does nothing.
//
// A change made outside every guard is not lost: it opens an implicit step of its own,
// closed when control returns to the event loop (or when the next action opens, or the
// history is asked to undo). Guard every action so that it gets its own caption.
class CGridAction
{
public:
    enum Kind {
        // One step of its own.
        Step,
        // Typing into one cell: joins the step before it when that was typing into the
        // same cell, so a line typed in the editor goes back in one step.
        Typing,
        // A consequence of what came before (a spare row added where the cursor went):
        // joins the step before it when there is one, else is a step of its own.
        FollowsPrevious,
        // Replaces the grid as a whole (a file opened over it, a new document): nothing
        // is recorded and every step is dropped when it closes.
        Reset,
    };

    CGridAction(CSpread &grid, const char *captionKey, Kind kind = Step);
    // A window's or a document's grid: anything that hands out its CSpread.
    template <typename Grid>
    requires requires(Grid &g)
    {
        {
            g.Spread()
            } -> std::same_as<CSpread &>;
    }
    CGridAction(Grid &grid, const char *captionKey, Kind kind = Step)
        : CGridAction(grid.Spread(), captionKey, kind)
    { }
    ~CGridAction();
    CGridAction(const CGridAction &) = delete;
    CGridAction &operator=(const CGridAction &) = delete;

private:
    ISpreadJournal *m_journal;
};
