#pragma once

#include <QDateTime>
#include <QString>
#include <functional>

// The program folder: where "Message.txt", "AutoBak/" and "AutoSave/" live. The
// executable's folder when it is writable, otherwise $XDG_DATA_HOME/Velmar. Always
// ends with "/".
QString ProgramFolder();
// Tests and tools point it elsewhere; an empty path goes back to the rule above.
void SetProgramFolder(const QString &path);

// The clock of the generated comment lines and the auto-save stamps.
QDateTime Now();
// Sets a fixed time (a null time returns to the real clock).
void SetNow(const QDateTime &fixed);
