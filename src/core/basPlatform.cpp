#include "core/basPlatform.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {
QString g_programFolder;
QDateTime g_fixedNow;

QString withSlash(QString path)
{
    if (!path.endsWith(u'/'))
        path += u'/';
    return path;
}
} // namespace

QString ProgramFolder()
{
    if (!g_programFolder.isEmpty())
        return g_programFolder;
    const QString exeDir = QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    if (!exeDir.isEmpty() && QFileInfo(exeDir).isWritable())
        return withSlash(exeDir);
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty())
        data = QDir::homePath() + QStringLiteral("/.local/share");
    const QString folder = data + QStringLiteral("/Velmar");
    QDir().mkpath(folder);
    return withSlash(folder);
}

void SetProgramFolder(const QString &path)
{
    g_programFolder = path.isEmpty() ? QString() : withSlash(path);
}

QDateTime Now()
{
    return g_fixedNow.isValid() ? g_fixedNow : QDateTime::currentDateTime();
}

void SetNow(const QDateTime &fixed)
{
    g_fixedNow = fixed;
}
