#pragma once

#include <QString>

class CHotKeys;
class CMessages;
class ICollection;
class QObject;

// The state of a run, set once at start unless noted.
extern QString VersionNo;
extern CHotKeys *HotKeys;
extern CMessages *Messages;
extern ICollection *MessageList;
// The main frame, once the windows have made it.
extern QObject *MainWindow;
// Settings read at start and changed by the settings dialog.
extern bool AutoGetClipBoard;
extern bool OnTop;
extern bool AvoidOverlapTiming;
// "Modern files" (off unless chosen): documents' line ends normalised, encodings detected
// and kept (see ReadWholeFile and ReadTextStream).
extern bool ModernFiles;

// Loads the catalogue alone (the first use of a text before the start, StartCore of
// shell/basStart, does this).
void LoadMessages();
