#include "shell/basCommandLine.h"

#include "core/basLanguage.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QUrl>

namespace {

const QString kProgram = QStringLiteral("velmar");

struct Parser
{
    QCommandLineParser parser;
    QCommandLineOption help { { QStringLiteral("h"), QStringLiteral("help") },
        QStringLiteral("Show this help and exit.") };
    QCommandLineOption version { { QStringLiteral("v"), QStringLiteral("version") },
        QStringLiteral("Show the version and exit.") };
    QCommandLineOption lang { QStringLiteral("lang"),
        QStringLiteral("Interface language for this run: zh (Chinese, the default) or en (English). "
                       "Without it the language chosen in Options > Settings is used."),
        QStringLiteral("zh|en") };

    Parser()
    {
        // "-lang en" reads as "--lang en", and a word such as "-reverse" is not taken for
        // a cluster of one-letter options.
        parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
        parser.setApplicationDescription(
            QStringLiteral("Velmar, an editor for timed subtitle scripts.\n\n"
                           "Each FILE opens as a file dropped on the window does: scripts (.ass, .ssa,\n"
                           ".srt, .smi, .sami) in timing windows, videos (.avi, .mkv, .mpg, .wmv and the\n"
                           "like) in players. Other kinds open through the File menu."));
        parser.addOption(help);
        parser.addOption(version);
        parser.addOption(lang);
        parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Scripts and videos to open."),
            QStringLiteral("[FILE...]"));
    }
};

QString absoluteName(const QString &argument)
{
    if (argument.startsWith(QStringLiteral("file:"), Qt::CaseInsensitive)) {
        const QUrl url(argument);
        if (url.isLocalFile())
            return url.toLocalFile();
    }
    if (argument.isEmpty() || !QDir::isRelativePath(argument))
        return argument;
    return QDir::current().absoluteFilePath(argument);
}

// The help text names the program as users call it, whatever path started it.
QString helpText(const QCommandLineParser &parser)
{
    QString text = parser.helpText();
    const qsizetype usageEnd = text.indexOf(u'\n');
    const QString usage = QStringLiteral("Usage: ") + kProgram + QStringLiteral(" [options] [FILE...]");
    return usage + (usageEnd < 0 ? QString() : text.mid(usageEnd));
}

} // namespace

CommandLine ParseCommandLine(const QStringList &arguments)
{
    Parser p;
    CommandLine out;
    const bool parsed = p.parser.parse(arguments);
    if (p.parser.isSet(p.help)) {
        out.Do = CommandLine::ShowHelp;
        out.Output = helpText(p.parser);
        return out;
    }
    if (p.parser.isSet(p.version)) {
        out.Do = CommandLine::ShowVersion;
        out.Output = QStringLiteral("Velmar ") + QCoreApplication::applicationVersion() + u'\n';
        return out;
    }
    QString fault;
    if (!parsed)
        fault = p.parser.errorText();
    else if (p.parser.isSet(p.lang) && !IsInterfaceLanguage(p.parser.value(p.lang)))
        fault
            = QStringLiteral("Unknown interface language '%1': choose zh or en.").arg(p.parser.value(p.lang));
    if (!fault.isEmpty()) {
        out.Do = CommandLine::UsageError;
        out.Output = kProgram + QStringLiteral(": ") + fault + QStringLiteral("\nTry '") + kProgram
            + QStringLiteral(" --help' for more information.\n");
        return out;
    }
    if (p.parser.isSet(p.lang))
        out.Language = p.parser.value(p.lang);
    for (const QString &argument : p.parser.positionalArguments())
        out.Files << absoluteName(argument);
    return out;
}

bool CommandLineNeedsWindows(const QStringList &arguments)
{
    Parser p;
    p.parser.parse(arguments);
    return !p.parser.isSet(p.help) && !p.parser.isSet(p.version);
}

int CommandLineExitCode(const CommandLine &commandLine)
{
    return commandLine.Do == CommandLine::UsageError ? 2 : 0;
}
