#include "core/basSetting.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <memory>

namespace {

QString g_settingsFile;
std::unique_ptr<QSettings> g_store;

QSettings &store()
{
    const QString path = SettingsFile();
    if (!g_store || g_store->fileName() != path) {
        QDir().mkpath(QFileInfo(path).absolutePath());
        g_store = std::make_unique<QSettings>(path, QSettings::IniFormat);
    }
    return *g_store;
}

// A 32-bit number is read byte by byte from the last, each byte in hexadecimal without
// its leading zero, and the joined digits are taken as one hexadecimal number.
QString dwordText(quint32 value)
{
    QString hex;
    for (int i = 3; i >= 0; --i)
        hex += QString::number((value >> (8 * i)) & 0xFF, 16);
    return QString::number(hex.toULongLong(nullptr, 16));
}

bool readValue(const QString &group, const QString &key, QString &out)
{
    QSettings &s = store();
    s.beginGroup(group);
    const QVariant v = s.value(key);
    s.endGroup();
    if (!v.isValid())
        return false;
    QString text = v.toString();
    if (text.startsWith(u"dword:")) {
        bool ok = false;
        const quint32 n = text.mid(6).toUInt(&ok, 16);
        out = ok ? dwordText(n) : QString();
        return true;
    }
    const qsizetype zero = text.indexOf(QChar(0));
    if (zero >= 0)
        text.truncate(zero);
    out = text;
    return true;
}

// "Software\Velmar\Section" maps to the group "Section"; any other path keeps its whole
// name as the group.
QString groupOf(const QString &path)
{
    QString p = path;
    p.replace(u'\\', u'/');
    while (p.endsWith(u'/'))
        p.chop(1);
    const QString prefix = QStringLiteral("Software/Velmar/");
    if (p.startsWith(prefix, Qt::CaseInsensitive))
        return p.mid(prefix.size());
    return p;
}

} // namespace

QString GetSetting(const QString &Section, const QString &Key, const QString &Default)
{
    QString value;
    return readValue(Section, Key, value) ? value : Default;
}

bool SaveSetting(const QString &Section, const QString &Key, const QString &Value)
{
    QSettings &s = store();
    s.beginGroup(Section);
    s.setValue(Key, Value);
    s.endGroup();
    s.sync();
    return s.status() == QSettings::NoError;
}

bool GetRegistryValue(const QString &Hive, const QString &Path, const QString &Key, QString &Result)
{
    Result.clear();
    if (Hive.compare(u"HKEY_CURRENT_USER", Qt::CaseInsensitive) != 0
        && Hive.compare(u"HKCU", Qt::CaseInsensitive) != 0)
        return false;
    return readValue(groupOf(Path), Key, Result);
}

void SetSettingsFile(const QString &path)
{
    g_settingsFile = path;
    g_store.reset();
}

QString SettingsFile()
{
    if (!g_settingsFile.isEmpty())
        return g_settingsFile;
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.isEmpty())
        config = QDir::homePath() + QStringLiteral("/.config");
    return config + QStringLiteral("/Velmar/Velmar.ini");
}
