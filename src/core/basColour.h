#pragma once

#include <QColor>
#include <QtGlobal>

// Colours as scripts, drafts and the settings keep them: a 24-bit number with red in the
// low byte and blue in the high byte.

QColor BgrToColor(qint64 bgr);
qint64 ColorToBgr(const QColor &color);
