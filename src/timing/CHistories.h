#pragma once

#include "core/CKeyedList.h"
#include "timing/CHistory.h"
#include "timing/ITextControl.h"

#include <functional>

// The undo and redo history of one text control: each change becomes a small step
// holding only the text that went and the text that came, caught at key down. Ctrl+Z
// steps back, Ctrl+Y forward. A text longer than 30000 characters ends the history for
// that control.
class CHistories : public ITextControlEvents
{
public:
    static constexpr int MaxTextLength = 30000;

    ~CHistories() override;

    ITextControl *Editer() const { return m_editer; }
    // Attaches the history to a control (nullptr detaches): the steps are dropped, the
    // count and CurrentNo start again, and the present selection is the "before" set.
    void setEditer(ITextControl *editer);

    void Back();
    void Forword();
    static QString GetOpratorString(qint32 code);

    // Makes a step of the "before" and "after" sets.
    void Create();
    bool Exists(const QString &key) const { return m_steps.Exists(key); }
    void Clear();
    CHistory *Add(std::unique_ptr<CHistory> step);
    qsizetype Count() const { return m_steps.Count(); }
    void Delete(const QString &key);
    // An unknown key raises error 5.
    CHistory *item(const QString &key) const { return m_steps.Item(key); }
    auto begin() const { return m_steps.begin(); }
    auto end() const { return m_steps.end(); }
    // The last steps, newest first, at most ten lines.
    QString Content() const;

    qint32 CurrentNo() const { return m_currentNo; }
    qint32 FirstNo() const { return m_firstNo; }
    // The number of steps ever made; the next step gets this plus one.
    qint32 Made() const { return m_made; }
    bool Overtype() const { return m_overtype; }

    // Told whenever the history has moved (a new step, Back, Forword).
    std::function<void()> Moved;

    // The control's events.
    bool KeyDown(int keyCode, int shift) override;
    void SelChange() override;
    void Change() override;

private:
    void Apply(CHistory &step, bool undo);
    HistorySelection Selection() const;
    void Report(const std::exception &e) const;
    void Tell();
    void DropLaterSteps();

    ITextControl *m_editer = nullptr;
    CKeyedList<CHistory> m_steps;
    qint32 m_made = 0;
    qint32 m_currentNo = 0;
    qint32 m_firstNo = 0;
    bool m_guard = false;
    HistorySelection m_before;
    HistorySelection m_after;
    bool m_selChanged = false;
    bool m_overtype = false;
};
