#pragma once

#include "core/basTime.h"

#include <QString>
#include <QStringList>

class CHotKeys;

// Texts of the main frame that follow the hot keys and the player steps, and the key
// codes the working keys are compared in.

// The status-bar panel keys, left to right.
QStringList StatusPanelKeys();
// The text of a panel: the hot key's name, ":  " and its caption; Back and Forword also
// show the step and "秒"; Position its initial text; Message "MDI_STATUS_700".
QString StatusPanelText(const QString &key, const CHotKeys &keys, double backStep, double forwordStep);

// The step dialog opened from the Back (back = true) or Forword panel.
QString StepDialogTitle(bool back);
QString StepDialogDescription(bool back);
