#pragma once

#include <QString>

// The built-in catalogue text, in the format of "Message.txt".
QString DefaultMessageText();
// The text of a catalogue key through MessageList: an unknown key reads "MESSAGE ERROR".
// Loads the catalogue on first use when start-up has not.
QString Msg(const QString &key);
