#pragma once

#include "core/isub.h"
#include "script/ScriptType.h"

#include <QString>
#include <QStringList>
#include <vector>

class QObject;

// One file of a project.
struct ProjectFile
{
    QString Path; // absolute in memory
    ::ScriptType ScriptType = ::ScriptType::Plain; // stored as its number
};

// A subtitle project: the list of its files with their types, kept in a ".vlr" file.
//
// The ".vlr" format, UTF-8, lines ending in "\r\n" ("\n" alone is read too):
//   Velmar Project 1
//   <ScriptType><TAB><path>
//   ...
// The first line names the format and its version. Each further line is one file: its
// type as a decimal integer, a tab, and its path, relative to the project file's folder
// when the file lies under it, absolute otherwise, always with "/". Empty lines and
// lines starting with "#" are skipped. A file that breaks any rule is refused whole and
// the project stays as it was.
class CProject : public isub
{
public:
    static constexpr int FormatVersion = 1;

    void Init(QObject *window = nullptr, QObject *project = nullptr);
    QObject *Window() const { return m_window; }
    QObject *Project() const { return m_project; }

    // The project has no text form of its own: the file is read and written by
    // InputSub and OutputSub.
    QString Content() override { return {}; }
    void setContent(const QString &) override { }
    void Clear() override { }

    const std::vector<ProjectFile> &Files() const { return m_files; }
    // Adds a file (made absolute); a path already listed only takes the new type.
    void AddFile(const QString &path, ::ScriptType scriptType);
    bool RemoveFile(const QString &path);

    // Reads a project file; false, with LastError, when it cannot be read or breaks the
    // format.
    bool InputSub(const QString &fileName);
    // Writes the project file in one piece; false, with LastError, when it fails.
    bool OutputSub(const QString &fileName);
    QString LastError() const { return m_lastError; }

    // The text of a project file for a given location, and its reading.
    QString Format(const QString &projectFileName) const;
    static bool Parse(
        const QString &text, const QString &projectFileName, std::vector<ProjectFile> &files, QString &error);

    // The filter of the project file dialogs.
    static QString FileFilter();
    // Closing the project window: asks whether to save a changed project (Yes, No,
    // Cancel); Yes asks for a file name and writes it. False keeps the window.
    bool QueryClose();

private:
    QObject *m_window = nullptr;
    QObject *m_project = nullptr;
    std::vector<ProjectFile> m_files;
    QString m_lastError;
};
