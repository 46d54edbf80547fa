#pragma once

#include <QString>

class CVelmar;
class CHotKeys;
class CMessages;
class ICollection;
class QObject;

// The state of a run, set once at start unless noted.
extern QString VersionNo;
extern CVelmar *Velmar;
extern CHotKeys *HotKeys;
extern CMessages *Messages;
extern ICollection *MessageList;
// The main frame, once the windows have made it.
extern QObject *MainWindow;
// Settings read at start and changed by the settings dialog.
extern bool AutoGetClipBoard;
extern bool OnTop;
extern bool AvoidOverlapTiming;

// The first steps of a run, before any window: version, hot keys, catalogue, the root
// with its collections. Each step is tried on its own; a failed step does not stop the
// others. Calling it again starts afresh.
void StartCore();
// Loads the catalogue alone (the first use of a text before StartCore does this).
void LoadMessages();
