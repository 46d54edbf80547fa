#include "shell/CProject.h"

#include "core/IPrompt.h"
#include "core/basMessage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace {
const QString kHeader = QStringLiteral("Velmar Project");
// Larger than any list of files a project could hold: not a project file.
constexpr qint64 kMaxFileSize = 16 * 1024 * 1024;

QString absoluteOf(const QString &path, const QDir &base)
{
    return QDir::cleanPath(base.absoluteFilePath(path));
}
} // namespace

void CProject::Init(QObject *window, QObject *project)
{
    m_window = window;
    m_project = project;
    setSerialNo(1);
}

void CProject::AddFile(const QString &path, ScriptType scriptType)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    setChanged(true);
    for (ProjectFile &f : m_files)
        if (f.Path == absolute) {
            f.ScriptType = scriptType;
            return;
        }
    m_files.push_back({ absolute, scriptType });
}

bool CProject::RemoveFile(const QString &path)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    for (auto it = m_files.begin(); it != m_files.end(); ++it)
        if (it->Path == absolute) {
            m_files.erase(it);
            setChanged(true);
            return true;
        }
    return false;
}

QString CProject::Format(const QString &projectFileName) const
{
    const QDir base = QFileInfo(projectFileName).absoluteDir();
    QString out = kHeader + u' ' + QString::number(FormatVersion) + QStringLiteral("\r\n");
    for (const ProjectFile &f : m_files) {
        QString path = base.relativeFilePath(f.Path);
        if (path.startsWith(QStringLiteral("../")) || path == QStringLiteral("..")
            || QDir::isAbsolutePath(path))
            path = f.Path;
        out += QString::number(qint32(f.ScriptType)) + u'\t' + path + QStringLiteral("\r\n");
    }
    return out;
}

bool CProject::Parse(
    const QString &text, const QString &projectFileName, std::vector<ProjectFile> &files, QString &error)
{
    const QDir base = QFileInfo(projectFileName).absoluteDir();
    QStringList lines = text.split(u'\n');
    for (QString &l : lines)
        if (l.endsWith(u'\r'))
            l.chop(1);
    if (!lines.isEmpty() && lines.first().startsWith(QChar(0xFEFF)))
        lines.first().remove(0, 1);

    const QString first = lines.isEmpty() ? QString() : lines.first().trimmed();
    if (!first.startsWith(kHeader + u' ')) {
        error = QStringLiteral("not a project file");
        return false;
    }
    bool ok = false;
    const int version = first.mid(kHeader.size() + 1).trimmed().toInt(&ok);
    if (!ok || version < 1) {
        error = QStringLiteral("bad version line");
        return false;
    }
    if (version > FormatVersion) {
        error = QStringLiteral("made by a newer version (%1)").arg(version);
        return false;
    }

    std::vector<ProjectFile> read;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QString &line = lines[i];
        if (line.trimmed().isEmpty() || line.startsWith(u'#'))
            continue;
        const qsizetype tab = line.indexOf(u'\t');
        bool typeOk = false;
        const qint32 type = tab > 0 ? line.left(tab).trimmed().toInt(&typeOk) : 0;
        const QString path = tab > 0 ? line.mid(tab + 1) : QString();
        if (!typeOk || path.trimmed().isEmpty() || path.contains(QChar(0))) {
            error = QStringLiteral("line %1 is not a file entry").arg(i + 1);
            return false;
        }
        read.push_back({ absoluteOf(path, base), ScriptType(type) });
    }
    files = std::move(read);
    return true;
}

bool CProject::InputSub(const QString &fileName)
{
    m_lastError.clear();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_lastError = file.errorString();
        return false;
    }
    if (file.size() > kMaxFileSize) {
        m_lastError = QStringLiteral("not a project file");
        return false;
    }
    const QByteArray bytes = file.readAll();
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytes);
    if (decoder.hasError()) {
        m_lastError = QStringLiteral("not a project file");
        return false;
    }
    std::vector<ProjectFile> files;
    if (!Parse(text, fileName, files, m_lastError))
        return false;
    m_files = std::move(files);
    setFileName(fileName);
    setChanged(false);
    return true;
}

bool CProject::OutputSub(const QString &fileName)
{
    m_lastError.clear();
    for (const ProjectFile &f : m_files)
        if (f.Path.contains(u'\n') || f.Path.contains(u'\r')) {
            m_lastError = QStringLiteral("a file name holds a line break: ") + f.Path;
            return false;
        }
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        m_lastError = file.errorString();
        return false;
    }
    file.write(Format(fileName).toUtf8());
    if (!file.commit()) {
        m_lastError = file.errorString();
        return false;
    }
    setFileName(fileName);
    setChanged(false);
    return true;
}

QString CProject::FileFilter()
{
    return Msg(QStringLiteral("COMM_MSG_301")) + QStringLiteral(" (*.vlr)|*.vlr|")
        + Msg(QStringLiteral("COMM_MSG_300")) + QStringLiteral("(*.*)|*.*");
}

bool CProject::QueryClose()
{
    if (!Changed())
        return true;
    const int answer = MsgBox(Msg(QStringLiteral("COMM_MSG_100")), MsgBoxStyle::YesNoCancel);
    if (answer == MsgBoxResult::Cancel)
        return false;
    if (answer == MsgBoxResult::Yes) {
        const QString name = Prompt().SaveFileName(QString(), FileFilter(), nullptr, FileName());
        if (!name.isEmpty() && !OutputSub(name))
            MsgBox(m_lastError);
    }
    return true;
}
