#pragma once

#include <QString>

// The user's settings store: sections of named text values, kept in an INI file at
// $XDG_CONFIG_HOME/Velmar/Velmar.ini (one group per section). A value stored as
// "dword:XXXXXXXX" stands for a 32-bit number and is read the way the store reads one.

// The value, or `Default` when the section or value is missing.
QString GetSetting(const QString &Section, const QString &Key, const QString &Default = {});
// Writes the value as text; false when the store cannot be written.
bool SaveSetting(const QString &Section, const QString &Key, const QString &Value);
// The same reading with a free hive and path ("Software\Velmar\Section"); "" in Result
// and false when the value is missing.
bool GetRegistryValue(const QString &Hive, const QString &Path, const QString &Key, QString &Result);

// Where the store lives; tests point it at a temporary file. Empty goes back to the rule.
void SetSettingsFile(const QString &path);
QString SettingsFile();
