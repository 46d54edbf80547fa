#pragma once

#include <QString>

// What the about window tells about the program and the machine it runs on.
namespace basAbout {

// The text of an ABOUT_MSG_ key as the window shows it: the note that marks a text as not
// for translators ("(此项目不能改变)", "(do not change)") is not shown.
QString AboutText(const QString &key);
// "Velmar" and the version.
QString VersionLine();
// The program, the Qt it runs on and the system, one fact a line: what a user reports
// with a fault.
QString SystemInformation();

} // namespace basAbout
