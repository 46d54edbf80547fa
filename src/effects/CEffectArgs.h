#pragma once

#include "effects/CEffectSlider.h"
#include "effects/CEffectSpread.h"

#include <QString>

#include <array>

// The parameters of the special-effect generators as the pages hold them: the text,
// the number boxes as typed (converted only when a generator reads them), the colour
// boxes, the options, the slider and the small grid.
struct CEffectArgs
{
    static constexpr int TextBoxCount = 11;

    QString rtfArg;
    std::array<QString, TextBoxCount> txtArg;
    std::array<qint64, 2> picArg { 0xFFFFFF, 0x0000FF };
    int optArg = 0; // the selected option, -1 for none
    bool chkArg = false;
    int optDrawMN = 0; // 0 "m", 1 "n"
    QString txtDrawYbaseline = QStringLiteral("0");
    CEffectSlider sldArg;
    CEffectSpread spdArg;
};
