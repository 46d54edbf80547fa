#include "core/basLanguage.h"

#include "core/basSetting.h"

namespace {
const QString kChinese = QStringLiteral("zh");
const QString kEnglish = QStringLiteral("en");
QString g_runLanguage;
} // namespace

QStringList InterfaceLanguages()
{
    return { kChinese, kEnglish };
}

QString InterfaceLanguageName(const QString &code)
{
    if (code == kChinese)
        return QStringLiteral("中文");
    if (code == kEnglish)
        return QStringLiteral("English");
    return {};
}

bool IsInterfaceLanguage(const QString &code)
{
    return code == kChinese || code == kEnglish;
}

QString StoredInterfaceLanguage()
{
    const QString stored = GetSetting(QStringLiteral("Setting"), QStringLiteral("Language"));
    return IsInterfaceLanguage(stored) ? stored : kChinese;
}

bool SaveInterfaceLanguage(const QString &code)
{
    return IsInterfaceLanguage(code)
        && SaveSetting(QStringLiteral("Setting"), QStringLiteral("Language"), code);
}

void SetRunInterfaceLanguage(const QString &code)
{
    g_runLanguage = IsInterfaceLanguage(code) ? code : QString();
}

QString InterfaceLanguage()
{
    return g_runLanguage.isEmpty() ? StoredInterfaceLanguage() : g_runLanguage;
}

QString LanguageChangeNotice()
{
    return QStringLiteral("界面语言将在下次启动Velmar时更改。\r\n"
                          "The interface language changes the next time Velmar starts.");
}
