#pragma once

#include <QString>

class QAction;

// Controls whose windows are still to be built. Each is shown disabled, its tip saying
// what it will do; a window, once built, takes its rows out of the table.

// The tip of the pending control `key` of the window named `window` (object names), or an
// empty text when the control works.
QString PendingTip(const QString &window, const QString &key);

// Disables `action` and gives it its tip when it is pending in `window`; true when it is.
bool ShowPending(const QString &window, QAction *action);
// The same for a control that stands for another one (a button for its menu entry).
bool ShowPending(const QString &window, const QString &key, QAction *action);
