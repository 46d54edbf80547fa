#pragma once

#include "core/IUndoStep.h"

#include <QObject>
#include <deque>
#include <memory>

// The undo history of a document: steps in the order they were done, and the position
// among them (Index: the number of steps done; those above it can be redone). The clean
// index is the position of the state the document was last read or saved in, -1 when that
// state cannot come back.
//
// The steps are kept until together they hold more than the budget; then the oldest go,
// never the newest step done and never a step that can be redone.
//
// It holds nothing of the graphics libraries: a document that is only converted (a tool
// without a display) carries one too.
class CUndoStack : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 DefaultBudget = qint64(64) << 20;

    explicit CUndoStack(QObject *parent = nullptr);
    ~CUndoStack() override;

    int Count() const { return int(m_steps.size()); }
    int Index() const { return m_index; }
    int CleanIndex() const { return m_clean; }
    bool IsClean() const { return m_clean == m_index; }
    bool CanUndo() const { return m_index > 0; }
    bool CanRedo() const { return m_index < Count(); }
    // The text of the step that would be undone (redone); empty for none.
    QString UndoText() const;
    QString RedoText() const;
    const IUndoStep *Step(int index) const;

    // Puts a step that is already done on top, after dropping the steps that were undone.
    // A step that the one below takes in (MergeWith) is not kept; nothing joins the step
    // of the clean state, which must stay as it was saved.
    void Push(std::unique_ptr<IUndoStep> step);
    // Takes back the step below the index; redoes the one above it.
    void Undo();
    void Redo();
    // Drops every step; the state now is the clean one when `clean`.
    void Clear(bool clean = true);
    void SetClean();
    void ResetClean();

    // The memory the steps may hold, and what they hold, in bytes.
    qint64 Budget() const { return m_budget; }
    void SetBudget(qint64 bytes);
    qint64 Bytes() const { return m_bytes; }

signals:
    // The steps, the index or the clean state changed.
    void Changed();

private:
    struct Entry
    {
        std::unique_ptr<IUndoStep> Step;
        qint64 Bytes = 0;
    };
    void Recount(Entry &entry);
    void Trim();

    std::deque<Entry> m_steps;
    int m_index = 0;
    int m_clean = 0;
    qint64 m_budget = DefaultBudget;
    qint64 m_bytes = 0;
};
