#pragma once

#include "timing/ITextControl.h"

#include <QString>
#include <array>

// The simple history of a text control: a ring of ten whole-text snapshots. Ctrl+Z and
// Ctrl+Y walk it; the oldest entry is never restored.
class CHistoriesSim : public ITextControlEvents
{
public:
    static constexpr int Size = 10;

    CHistoriesSim();
    ~CHistoriesSim() override;

    ITextControl *Editer() const { return m_editer; }
    void setEditer(ITextControl *editer);

    void Back();
    void Forword();

    // Ring positions, 1 to 10.
    int Present() const { return m_present; }
    int Oldest() const { return m_oldest; }
    int Newest() const { return m_newest; }

    bool KeyDown(int keyCode, int shift) override;
    void SelChange() override { }
    void Change() override;

private:
    struct Entry
    {
        QString Text;
        qint32 SelStart = 0;
        qint32 SelLength = 0;
        int Next = 0;
        int Previous = 0;
    };
    void Restore(const Entry &e);
    Entry &at(int index) { return m_ring[size_t(index - 1)]; }

    ITextControl *m_editer = nullptr;
    std::array<Entry, Size> m_ring;
    int m_present = Size;
    int m_oldest = Size;
    int m_newest = Size;
    bool m_guard = false;
};
