#include "core/CUndoStack.h"

#include <algorithm>

CUndoStack::CUndoStack(QObject *parent)
    : QObject(parent)
{ }

CUndoStack::~CUndoStack() = default;

QString CUndoStack::UndoText() const
{
    return CanUndo() ? m_steps[size_t(m_index - 1)].Step->Text() : QString();
}

QString CUndoStack::RedoText() const
{
    return CanRedo() ? m_steps[size_t(m_index)].Step->Text() : QString();
}

const IUndoStep *CUndoStack::Step(int index) const
{
    return index >= 0 && index < Count() ? m_steps[size_t(index)].Step.get() : nullptr;
}

void CUndoStack::Recount(Entry &entry)
{
    m_bytes -= entry.Bytes;
    entry.Bytes = entry.Step->Bytes();
    m_bytes += entry.Bytes;
}

void CUndoStack::Push(std::unique_ptr<IUndoStep> step)
{
    if (!step)
        return;
    while (Count() > m_index) {
        m_bytes -= m_steps.back().Bytes;
        m_steps.pop_back();
    }
    if (m_clean > m_index)
        m_clean = -1;
    if (m_index > 0 && m_clean != m_index) {
        Entry &below = m_steps.back();
        if (below.Step->MergeWith(*step)) {
            Recount(below);
            Trim();
            emit Changed();
            return;
        }
    }
    m_steps.push_back({ std::move(step), 0 });
    Recount(m_steps.back());
    ++m_index;
    Trim();
    emit Changed();
}

void CUndoStack::Undo()
{
    if (!CanUndo())
        return;
    Entry &entry = m_steps[size_t(m_index - 1)];
    entry.Step->Undo();
    Recount(entry);
    --m_index;
    emit Changed();
}

void CUndoStack::Redo()
{
    if (!CanRedo())
        return;
    Entry &entry = m_steps[size_t(m_index)];
    entry.Step->Redo();
    Recount(entry);
    ++m_index;
    emit Changed();
}

void CUndoStack::Clear(bool clean)
{
    m_steps.clear();
    m_bytes = 0;
    m_index = 0;
    m_clean = clean ? 0 : -1;
    emit Changed();
}

void CUndoStack::SetClean()
{
    if (m_clean == m_index)
        return;
    m_clean = m_index;
    emit Changed();
}

void CUndoStack::ResetClean()
{
    if (m_clean == -1)
        return;
    m_clean = -1;
    emit Changed();
}

void CUndoStack::SetBudget(qint64 bytes)
{
    m_budget = std::max<qint64>(bytes, 0);
    if (m_bytes > m_budget) {
        Trim();
        emit Changed();
    }
}

void CUndoStack::Trim()
{
    while (m_bytes > m_budget && m_index > 1) {
        m_bytes -= m_steps.front().Bytes;
        m_steps.pop_front();
        --m_index;
        m_clean = m_clean > 0 ? m_clean - 1 : -1;
    }
}
