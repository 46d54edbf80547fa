#pragma once

#include <QString>

struct TextCoding;

// The safety copies beside the user's own saves.

// The folder of the last-overwritten copies, with its closing "/".
QString BackupFolder();
// Copies a file that is about to be overwritten to the backup folder under its own
// name, replacing the copy there. A file that does not exist yet is not copied; every
// error is ignored. Only one generation is kept.
void BackupFile(const QString &fileName);
// The user's save: the old file goes to the backup folder, then the new text replaces
// it in one piece. A write that fails leaves the old file as it was.
bool SaveWithBackup(const QString &fileName, const QString &text, bool unicode, QString *error = nullptr);
// The same in a document's coding (see WriteTextFile).
bool SaveWithBackup(
    const QString &fileName, const QString &text, const TextCoding &coding, QString *error = nullptr);
