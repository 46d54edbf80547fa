#include "timing/CGridHistory.h"

#include "core/CGridAction.h"
#include "core/CUndoStack.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "formats/CTiming.h"
#include "player/ITimingPreviewHooks.h"
#include "timing/CTimingGrid.h"

#include <QTimer>
#include <typeinfo>

namespace {

// The caption of a change made outside every action.
constexpr const char *kImplicitCaption = "VELMAR_UNDO_200";

} // namespace

// One closed action: its record, its caption and where the cursor stood before and after.
// The caption is kept as its catalogue key and looked up when it is shown.
class CGridHistory::Step : public IUndoStep
{
public:
    Step(CGridHistory &history, const char *captionKey, int kind)
        : History(history)
        , CaptionKey(captionKey)
        , Kind(kind)
    { }

    QString Text() const override { return Msg(QString::fromLatin1(CaptionKey)); }
    void Undo() override { History.Apply(*this, false); }
    void Redo() override { History.Apply(*this, true); }
    qint64 Bytes() const override
    {
        return qint64(sizeof(*this)) - qint64(sizeof(Changes)) + Changes.Bytes();
    }

    // A spare row joins whatever came before; typing joins typing into the same cell.
    bool MergeWith(IUndoStep &other) override
    {
        if (typeid(other) != typeid(Step))
            return false;
        auto &later = static_cast<Step &>(other);
        if (&later.History != &History)
            return false;
        bool join = later.Kind == CGridAction::FollowsPrevious;
        if (!join && later.Kind == CGridAction::Typing && Kind == CGridAction::Typing) {
            int col = 0;
            int row = 0;
            int laterCol = 0;
            int laterRow = 0;
            join = Changes.SingleCell(col, row) && later.Changes.SingleCell(laterCol, laterRow)
                && col == laterCol && row == laterRow;
        }
        if (!join)
            return false;
        Changes.Append(std::move(later.Changes));
        AfterCol = later.AfterCol;
        AfterRow = later.AfterRow;
        return true;
    }

    CGridHistory &History;
    CSpreadChanges Changes;
    const char *CaptionKey;
    int Kind;
    int BeforeCol = 0;
    int BeforeRow = 0;
    int AfterCol = 0;
    int AfterRow = 0;
};

qint64 CGridHistory::BudgetSetting()
{
    const QString stored
        = GetSetting(QStringLiteral("Setting"), QStringLiteral("UndoMemoryMB"), QString()).trimmed();
    if (stored.isEmpty() || !basConvert::IsNumeric(stored))
        return CUndoStack::DefaultBudget;
    const double megabytes = basConvert::Val(stored);
    if (megabytes < 1 || megabytes > 4096 || megabytes != double(qint64(megabytes)))
        return CUndoStack::DefaultBudget;
    return qint64(megabytes) << 20;
}

CGridHistory::CGridHistory(CTimingGrid &grid)
    : m_grid(grid)
    , m_own(std::make_unique<CUndoStack>())
    , m_budget(CUndoStack::DefaultBudget)
{
    SetStack(nullptr);
}

CGridHistory::~CGridHistory()
{
    // The steps apply to this grid only.
    if (m_stack && m_stack != m_own.get()) {
        disconnect(m_stack, nullptr, this, nullptr);
        m_stack->Clear(m_stack->IsClean());
    }
}

// ---- the stack --------------------------------------------------------------------------

CUndoStack &CGridHistory::Stack() const
{
    return m_stack ? *m_stack : *m_own;
}

void CGridHistory::SetStack(CUndoStack *stack)
{
    CUndoStack *next = stack ? stack : m_own.get();
    if (m_stack == next)
        return;
    if (m_depth == 0)
        CloseImplicitStep();
    if (m_stack) {
        disconnect(m_stack, nullptr, this, nullptr);
        m_stack->Clear(m_stack->IsClean());
    }
    m_stack = next;
    next->Clear(next->IsClean());
    next->SetBudget(m_budget);
    connect(next, &CUndoStack::Changed, this, &CGridHistory::StackChanged);
    emit StateChanged();
}

void CGridHistory::Clear()
{
    if (m_depth == 0)
        CloseImplicitStep();
    Stack().Clear(Stack().IsClean());
}

void CGridHistory::SetBudget(qint64 bytes)
{
    m_budget = std::max<qint64>(bytes, 0);
    Stack().SetBudget(m_budget);
}

qint64 CGridHistory::Bytes() const
{
    return Stack().Bytes();
}

// ---- recording --------------------------------------------------------------------------

void CGridHistory::BeginAction(const char *captionKey, int kind)
{
    // An implicit step ends where an action begins.
    if (m_depth == 0 && m_open)
        CloseStep();
    if (m_depth++ == 0)
        OpenStep(captionKey, kind, false);
    else if (kind == CGridAction::Reset)
        m_reset = true;
}

void CGridHistory::EndAction()
{
    if (m_depth == 0)
        return;
    if (--m_depth == 0 && m_open)
        CloseStep();
}

CSpreadChanges *CGridHistory::Recording()
{
    if (m_applying)
        return nullptr;
    if (!m_open) {
        OpenStep(kImplicitCaption, CGridAction::Step, true);
        // Closed when control is back in the event loop, unless something closed it before.
        const quint32 generation = ++m_implicitGeneration;
        QTimer::singleShot(0, this, [this, generation] {
            if (generation == m_implicitGeneration)
                CloseImplicitStep();
        });
    }
    if (m_reset)
        return nullptr;
    // The step is made when the action first changes the grid: an action that changes
    // nothing costs nothing.
    if (!m_step) {
        m_step = std::make_unique<Step>(*this, m_captionKey ? m_captionKey : kImplicitCaption, m_kind);
        m_step->BeforeCol = m_beforeCol;
        m_step->BeforeRow = m_beforeRow;
    }
    return &m_step->Changes;
}

void CGridHistory::CloseImplicitStep()
{
    if (m_open && m_implicit && m_depth == 0)
        CloseStep();
}

void CGridHistory::OpenStep(const char *captionKey, int kind, bool implicit)
{
    const CSpread &grid = m_grid.Spread();
    m_open = true;
    m_implicit = implicit;
    m_captionKey = captionKey;
    m_kind = kind;
    m_reset = kind == CGridAction::Reset;
    m_beforeCol = grid.ActiveCol();
    m_beforeRow = grid.ActiveRow();
}

void CGridHistory::CloseStep()
{
    m_open = false;
    m_implicit = false;
    std::unique_ptr<Step> step = std::move(m_step);
    // A handler that changes the grid while a step is applied records nothing.
    if (m_applying)
        return;
    if (m_reset || (step && step->Changes.Irreversible())) {
        // The grid is another one now: no step applies to it any more. It is the state
        // read from a file only while the document says so.
        m_reset = false;
        const CTiming *doc = m_grid.Document();
        Stack().Clear(doc && !doc->Changed());
        return;
    }
    if (!step)
        return;
    step->Changes.Finish(m_grid.Spread());
    if (step->Changes.IsEmpty())
        return;
    step->AfterCol = m_grid.Spread().ActiveCol();
    step->AfterRow = m_grid.Spread().ActiveRow();
    Stack().Push(std::move(step));
}

// ---- undo and redo ----------------------------------------------------------------------

bool CGridHistory::CanUndo()
{
    CloseImplicitStep();
    return m_depth == 0 && Stack().CanUndo();
}

bool CGridHistory::CanRedo()
{
    CloseImplicitStep();
    return m_depth == 0 && Stack().CanRedo();
}

QString CGridHistory::UndoText()
{
    return CanUndo() ? Stack().UndoText() : QString();
}

QString CGridHistory::RedoText()
{
    return CanRedo() ? Stack().RedoText() : QString();
}

bool CGridHistory::Undo()
{
    if (!CanUndo())
        return false;
    Stack().Undo();
    return true;
}

bool CGridHistory::Redo()
{
    if (!CanRedo())
        return false;
    Stack().Redo();
    return true;
}

void CGridHistory::Apply(Step &step, bool redo)
{
    CSpread &grid = m_grid.Spread();
    ITimingPreviewHooks *preview = m_grid.PreviewHooks();
    CSpreadChanges::Hooks hooks;
    hooks.KeyColumn = CTimingGrid::ColSerialNo;
    if (preview) {
        hooks.Leaving = [preview](int row) { preview->DeletePreviewLine(row); };
        hooks.Came = [preview](int row) { preview->CreatePreviewLine(row); };
    }
    m_applying = true;
    const CSpreadChanges::Touched touched
        = redo ? step.Changes.Redo(grid, hooks) : step.Changes.Undo(grid, hooks);
    grid.RestoreActiveCell(redo ? step.AfterCol : step.BeforeCol, redo ? step.AfterRow : step.BeforeRow);
    if (preview) {
        if (touched.RowsMoved) {
            for (int r = std::max(touched.FirstRow, 1); r <= grid.MaxRows(); ++r)
                preview->UpdatePreviewCell(-1, r);
        } else {
            for (int r : touched.Rows)
                preview->UpdatePreviewCell(-1, r);
        }
    }
    m_applying = false;
    m_applied = true;
    emit Restored(grid.ActiveCol(), grid.ActiveRow());
}

void CGridHistory::StackChanged()
{
    // Telling the preview raised Changed; it stays up unless the grid is back at the
    // state last read or saved.
    if (m_applied) {
        m_applied = false;
        if (CTiming *doc = m_grid.Document(); doc && &doc->UndoStack() == &Stack())
            doc->setChanged(!Stack().IsClean());
    }
    emit StateChanged();
}
