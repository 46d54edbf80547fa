#pragma once

#include <QString>
#include <QStringList>

// The program's command line: velmar [--lang zh|en] [FILE...], with --help and --version.
struct CommandLine
{
    enum Action { Run, ShowHelp, ShowVersion, UsageError };
    Action Do = Run;
    // The help text, the version line or the fault, for Do other than Run.
    QString Output;
    // The files to open, in the order given, absolute as a drop gives them.
    QStringList Files;
    // "zh" or "en" when --lang chose one, otherwise "".
    QString Language;
};

// Reads the arguments, the program's own name first. Relative names are taken from the
// current folder; a "file:" URL gives its local file.
CommandLine ParseCommandLine(const QStringList &arguments);

// True unless the arguments ask only for the help or the version, which are answered
// without a window system (and so without a display).
bool CommandLineNeedsWindows(const QStringList &arguments);

// The exit status of a run that ends at the command line: 0 for the help and the version,
// 2 for a usage fault.
int CommandLineExitCode(const CommandLine &commandLine);
