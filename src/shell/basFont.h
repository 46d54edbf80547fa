#pragma once

#include <QString>
#include <QtGlobal>

// The rules of the style window that are not about the window: the alignment keypad and
// the limits of its fields.
namespace basFont {

// The nine alignment buttons stand as a numeric keypad: 7 8 9 on top, 4 5 6 in the middle,
// 1 2 3 at the bottom. The value a button stores in a style is the SSA alignment code of
// its place (1 2 3, 9 10 11, 5 6 7). With `keypad` (an option of the window, off by
// default) a button stores its own keypad number instead, which is the style's ASS number.
// 0 for a button outside 1 to 9.
qint16 AlignmentOfButton(int button, bool keypad = false);
// The button of a stored value, or 0 when no button stores it.
int ButtonOfAlignment(qint16 value, bool keypad = false);

// An alpha field left with a number above 255 goes back to 255; anything else stays.
QString LimitAlpha(const QString &text);

} // namespace basFont
