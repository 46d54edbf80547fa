#pragma once

#include <QString>

// What a grid needs from whatever shows it: scrolling, visibility, keyboard focus and
// the in-place editor. A window installs its table view behind this; without one the
// grid uses CSpreadHeadlessViewport, so logic and tests run without a window.
class ISpreadViewport
{
public:
    virtual ~ISpreadViewport() = default;

    virtual int TopRow() const = 0;
    virtual void setTopRow(int row) = 0;
    virtual bool IsVisible(int col, int row) const = 0;
    // Scroll so that the cell can be seen (after ActivateCell).
    virtual void ShowCell(int col, int row) = 0;
    virtual void SetFocus() = 0;

    // The in-place editor of the active cell; positions are 0-based, as in an editor.
    virtual bool EditMode() const = 0;
    virtual void setEditMode(bool on) = 0;
    virtual int SelStart() const = 0;
    virtual void setSelStart(int start) = 0;
    virtual int SelLength() const = 0;
    virtual void setSelLength(int length) = 0;
    virtual QString SelText() const = 0;
    virtual void setSelText(const QString &text) = 0;
};
