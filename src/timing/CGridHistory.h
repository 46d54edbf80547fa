#pragma once

#include "core/CSpreadChanges.h"
#include "core/ISpreadJournal.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>

class CTimingGrid;
class CUndoStack;

// The undo history of a timing grid. While an action is open (CGridAction) the grid's
// changes are recorded; closing it puts one step on the undo stack of the grid's
// document (or on the grid's own stack while it has none). Undoing a step puts the grid
// back exactly as it was (texts, choices, colours, marks, rows, the active cell), tells
// the preview of every row it touched, and leaves the document changed unless the stack
// is back at the state last read or saved; redoing does the same forwards.
//
// A change outside every action makes an implicit step, closed when control returns to
// the event loop.
class CGridHistory : public QObject, public ISpreadJournal
{
    Q_OBJECT

public:
    // The budget of the settings: "UndoMemoryMB" in the "Setting" section, whole
    // megabytes from 1 to 4096; anything else is the default of 64 MB.
    static qint64 BudgetSetting();

    explicit CGridHistory(CTimingGrid &grid);
    ~CGridHistory() override;
    CGridHistory(const CGridHistory &) = delete;
    CGridHistory &operator=(const CGridHistory &) = delete;

    // The stack steps go on: the document's, or nullptr for the history's own. The steps
    // of the stack left and of the one taken are dropped: they are of no use to this grid.
    void SetStack(CUndoStack *stack);
    CUndoStack &Stack() const;

    // ISpreadJournal
    void BeginAction(const char *captionKey, int kind) override;
    void EndAction() override;
    CSpreadChanges *Recording() override;
    bool InAction() const { return m_depth > 0; }

    // Closes the implicit step, if one is open.
    void CloseImplicitStep();

    // Undo and redo, refused inside an action. Each closes an implicit step first.
    bool CanUndo();
    bool CanRedo();
    // The caption of the step that would be undone (redone); empty for none.
    QString UndoText();
    QString RedoText();
    bool Undo();
    bool Redo();
    // Drops every step.
    void Clear();

    // The memory the steps may hold before the oldest go, in bytes, and what they hold.
    qint64 Budget() const { return m_budget; }
    void SetBudget(qint64 bytes);
    qint64 Bytes() const;

signals:
    // A step was undone or redone; the cursor stands at col, row.
    void Restored(int col, int row);
    // The steps or the position among them changed: captions and enabling follow.
    void StateChanged();

private:
    class Step;

    void OpenStep(const char *captionKey, int kind, bool implicit);
    void CloseStep();
    void Apply(Step &step, bool redo);
    void StackChanged();

    CTimingGrid &m_grid;
    std::unique_ptr<CUndoStack> m_own;
    QPointer<CUndoStack> m_stack;
    qint64 m_budget;

    // The open step.
    // The open step, once the action changed the grid.
    std::unique_ptr<Step> m_step;
    const char *m_captionKey = nullptr;
    int m_kind = 0;
    int m_depth = 0;
    bool m_open = false;
    bool m_implicit = false;
    bool m_reset = false;
    int m_beforeCol = 0;
    int m_beforeRow = 0;
    quint32 m_implicitGeneration = 0;

    // A step is being applied: the grid's changes are not recorded.
    bool m_applying = false;
    // A step was applied since the stack last moved: Changed follows the clean state.
    bool m_applied = false;
};
