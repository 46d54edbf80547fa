#pragma once

#include <QtGlobal>

#include <algorithm>

// The values of a slider of the effect pages: a position from 0 to Max and a selected
// range, which the user makes by pressing at one value and letting go at another.
struct CEffectSlider
{
    qint32 Max = 10;
    qint32 Value = 0;
    qint32 SelStart = 0;
    qint32 SelLength = 0;

    bool HasSelection() const { return SelLength > 0; }
    void ClearSelection()
    {
        SelStart = 0;
        SelLength = 0;
    }
    // Press at one value, drag, let go at another: the range between them is selected.
    void SelectRange(qint32 pressedAt, qint32 releasedAt)
    {
        pressedAt = std::clamp(pressedAt, 0, Max);
        releasedAt = std::clamp(releasedAt, 0, Max);
        SelStart = std::min(pressedAt, releasedAt);
        SelLength = std::max(pressedAt, releasedAt) - SelStart;
    }
    bool operator==(const CEffectSlider &) const = default;
};
