#pragma once

#include <QString>
#include <QtGlobal>

// One step of an undo history: something done that can be taken back and done again.
class IUndoStep
{
public:
    virtual ~IUndoStep() = default;

    // What the step did, as the undo and redo controls name it.
    virtual QString Text() const = 0;
    virtual void Undo() = 0;
    virtual void Redo() = 0;
    // Takes `later`, done right after this step, into this one; false when it stays a
    // step of its own.
    virtual bool MergeWith(IUndoStep &later)
    {
        Q_UNUSED(later);
        return false;
    }
    // The memory the step holds, in bytes.
    virtual qint64 Bytes() const = 0;
};
