#pragma once

#include "effects/CEffectSlider.h"
#include "effects/CEffectSpread.h"

#include <QString>

// One control of the shared pool from which the special-effect pages are made up: what
// it is, where it stands on the current page and the value it holds. A form binds one
// widget to each control and mirrors these fields.
struct CEffectControl
{
    QString Name; // the control array, "txtArg", or the single control, "fraEffect"
    int Index = -1; // the place in its array; -1 for a control that is in none
    QString TypeName; // "TextBox", "RichTextBox", "Label", "PictureBox", "OptionButton",
                      // "CheckBox", "Frame", "CommandButton", "vaSpread" or "Slider"

    bool Visible = false;
    bool Enabled = true;
    int Order = -1; // place in the declaration of the current page
    QString Unit; // the unit written after a number box

    QString Caption; // labels, frames, buttons, options, check boxes
    QString Text; // text boxes and the text of a rich-text box
    qint64 BackColor = 0; // colour boxes
    bool Value = false; // options and check boxes
    CEffectSlider Slider;
    CEffectSpread Spread;

    // "txtArg(3)", or the name alone.
    QString Key() const { return Index < 0 ? Name : Name + u'(' + QString::number(Index) + u')'; }
};
