#pragma once

#include <QImage>
#include <QSize>
#include <QString>

class CFont;

// The sample of a style: a line of text drawn as the style draws it, over a checked
// ground that lets its transparency show.
namespace basFontSample {

// A few words in Chinese and Japanese, with Latin letters.
QString SampleText();

// The colour a style's 24-bit colour number (blue in the high byte) and alpha (0 opaque,
// 255 clear) stand for.
QColor StyleColour(qint64 colour, qint32 alpha = 0);

// The sample at `size`: font name and size, bold, italic, underline and strike-out,
// spacing, scale and angle; the shadow in the back colour, the outline (or, for border
// style 3, an opaque box) in the third colour, the text in the primary colour, each with
// its alpha; placed by the alignment as a keypad (ASS numbering).
QImage Draw(const CFont &font, const QSize &size, const QString &text = SampleText());

} // namespace basFontSample
