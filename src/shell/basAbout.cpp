#include "shell/basAbout.h"

#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"

#include <QLocale>
#include <QSysInfo>
#include <QtGlobal>

namespace basAbout {

QString AboutText(const QString &key)
{
    QString text = Msg(key);
    for (const QString &note : { QStringLiteral("(此项目不能改变)"), QStringLiteral("(do not change)") })
        if (text.endsWith(note))
            return text.chopped(note.size()).trimmed();
    return text;
}

QString VersionLine()
{
    return QStringLiteral("Velmar ") + VersionNo;
}

QString SystemInformation()
{
    const QStringList lines = {
        VersionLine(),
        QStringLiteral("Qt ") + QString::fromLatin1(qVersion()),
        QSysInfo::prettyProductName(),
        QSysInfo::kernelType() + u' ' + QSysInfo::kernelVersion(),
        QSysInfo::currentCpuArchitecture(),
        QLocale::system().name(),
        ProgramFolder(),
        SettingsFile(),
    };
    return lines.join(u'\n');
}

} // namespace basAbout
