#pragma once

#include <QtGlobal>

class CSliderTimeModel;

// The time value dialog as the logic needs it: shown modally over a prepared model
// (value, title, description, enable flags), it leaves the user's choice in the model's
// Cancelled and Value. A window implements it with the real dialog, a test with a script.
class ITimeValueDialog
{
public:
    virtual ~ITimeValueDialog() = default;

    virtual void ShowModal(CSliderTimeModel &model) = 0;
    // Called before showing, with the OnTop setting: a dialog over a topmost frame must
    // be topmost too.
    virtual void SetTopMost(bool on) { Q_UNUSED(on); }
};
