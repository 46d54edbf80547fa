#include "core/basBackup.h"

#include "core/basPlatform.h"
#include "core/basText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

QString BackupFolder()
{
    return ProgramFolder() + QStringLiteral("AutoBak/");
}

void BackupFile(const QString &fileName)
{
    const QFileInfo source(fileName);
    if (!source.isFile())
        return;
    const QString folder = BackupFolder();
    if (!QDir().mkpath(folder))
        return;
    const QString target = folder + source.fileName();
    // Copy beside the old copy first, so a failed copy keeps the previous generation.
    const QString partial = target + QStringLiteral(".part");
    QFile::remove(partial);
    if (!QFile::copy(source.absoluteFilePath(), partial)) {
        QFile::remove(partial);
        return;
    }
    QFile::remove(target);
    if (!QFile::rename(partial, target))
        QFile::remove(partial);
}

bool SaveWithBackup(const QString &fileName, const QString &text, bool unicode, QString *error)
{
    BackupFile(fileName);
    return WriteTextFile(fileName, text, unicode, error);
}

bool SaveWithBackup(const QString &fileName, const QString &text, const TextCoding &coding, QString *error)
{
    BackupFile(fileName);
    return WriteTextFile(fileName, text, coding, error);
}
