#pragma once

#include <QString>
#include <QStringList>

// The language the windows speak: Chinese ("zh"), the catalogue built into the program,
// or English ("en"), the English catalogue loaded over it. The choice is kept in the
// settings store (section "Setting", value "Language") and may be overridden for one
// run; with neither, the program speaks Chinese.

// The codes, Chinese first.
QStringList InterfaceLanguages();
// A language's name as its own speakers write it ("中文", "English"); "" for an unknown code.
QString InterfaceLanguageName(const QString &code);
bool IsInterfaceLanguage(const QString &code);

// The stored choice: "zh" when the store has none or an unknown one.
QString StoredInterfaceLanguage();
// Stores the choice; false for an unknown code or a store that cannot be written.
bool SaveInterfaceLanguage(const QString &code);

// The language of this run only (the command line); "" returns to the stored choice.
void SetRunInterfaceLanguage(const QString &code);
// The language this run speaks: the run's own when set, otherwise the stored choice.
QString InterfaceLanguage();

// Shown when the stored choice changed: the catalogue is read at start, so the windows
// change language at the next start. In both languages, as the reader may know either.
QString LanguageChangeNotice();
