#pragma once

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

// The key code of a Qt key (Qt::Key), as the hot keys store it: F1 to F12 are 112 to
// 123, letters their capitals, digits their characters, Enter 13, the arrows 37 to 40.
// 0 for keys without a code.
int KeyCodeOfQtKey(int qtKey);
