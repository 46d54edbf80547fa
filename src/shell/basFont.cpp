#include "shell/basFont.h"

#include "core/basConvert.h"

namespace {

// Stored values of buttons 1 to 9.
constexpr qint16 ButtonValues[9] = { 1, 2, 3, 9, 10, 11, 5, 6, 7 };

} // namespace

namespace basFont {

qint16 AlignmentOfButton(int button, bool keypad)
{
    if (button < 1 || button > 9)
        return 0;
    return keypad ? qint16(button) : ButtonValues[button - 1];
}

int ButtonOfAlignment(qint16 value, bool keypad)
{
    for (int button = 1; button <= 9; ++button)
        if (AlignmentOfButton(button, keypad) == value)
            return button;
    return 0;
}

QString LimitAlpha(const QString &text)
{
    const std::optional<double> value = basConvert::TryCDbl(text);
    return value && *value > 255 ? QStringLiteral("255") : text;
}

} // namespace basFont
