#pragma once

class CSliderTimeModel;

// The time value dialog as the logic needs it: shown modally over a prepared model
// (value, title, description, enable flags), it leaves the user's choice in the model's
// Cancelled and Value. A window implements it with the real dialog, a test with a script.
class ITimeValueDialog
{
public:
    virtual ~ITimeValueDialog() = default;

    virtual void ShowModal(CSliderTimeModel &model) = 0;
};
