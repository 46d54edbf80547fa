#include "shell/CAutoSave.h"

#include "core/CScopeExit.h"
#include "core/basPlatform.h"
#include "core/basText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

namespace {

QString wholeText(IAutoSaveDocument &doc)
{
    switch (doc.AutoSaveKind()) {
    case IAutoSaveDocument::Timing: {
        // The whole ASS script, whatever format the document is kept in; the type and
        // option come back however the read ends.
        const CScopeExit putBack([&doc, type = doc.ScriptType(), option = doc.TimingOption()] {
            doc.setScriptType(type);
            doc.setTimingOption(option);
        });
        doc.setScriptType(ScriptType::ASS);
        doc.setTimingOption(SaveOption::Whole);
        return doc.Content();
    }
    case IAutoSaveDocument::Translate: {
        // Rich text with its tables, the options as they stand.
        const CScopeExit putBack([&doc, type = doc.ScriptType()] { doc.setScriptType(type); });
        doc.setScriptType(ScriptType::RichText);
        return doc.Content();
    }
    default:
        return doc.Content();
    }
}

QString extensionOf(IAutoSaveDocument::Kind kind)
{
    switch (kind) {
    case IAutoSaveDocument::Timing:
        return QStringLiteral(".ass");
    case IAutoSaveDocument::Translate:
        return QStringLiteral(".rtf");
    case IAutoSaveDocument::NotePad:
        return QStringLiteral(".txt");
    default:
        return {};
    }
}

// The system code page, unless it would lose characters: a copy that is meant to save
// the work must hold all of it, so such a text goes out as UTF-16.
bool needsUnicode(const QString &text)
{
    const QByteArray bytes = EncodeSystemCodePage(text);
    // GBK trail bytes never take the value of "?", so every extra "?" is a lost character.
    return bytes.count('?') != text.count(u'?');
}

} // namespace

QString CAutoSave::Folder()
{
    return ProgramFolder() + QStringLiteral("AutoSave/");
}

QString CAutoSave::Stamp()
{
    return Now().toString(QStringLiteral("(yyyy-MM-dd-HH-mm-ss)"));
}

QString CAutoSave::FileNameFor(const QString &folder, const QString &extension)
{
    QString name = folder + QStringLiteral("AutoSave") + Stamp() + extension;
    // Two windows in one second: the stamp gives way to a made-up temporary name.
    while (QFileInfo::exists(name)) {
        const quint32 r = QRandomGenerator::global()->bounded(0x100000u);
        name = folder + QStringLiteral("AutoSaverad")
            + QStringLiteral("%1").arg(r, 5, 16, QChar(u'0')).toUpper() + extension;
    }
    return name;
}

void CAutoSave::DeleteOldFiles(const QString &folder) const
{
    const QDateTime now = Now();
    const double ms = AutoDelTime * 3600.0 * 1000.0;
    // No age that a file could reach: nothing to delete.
    if (!(ms < 9.0e18))
        return;
    const qint64 limitMs = ms < -9.0e18 ? qint64(-9.0e18) : qint64(ms);
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo &f : files) {
        if (!f.fileName().startsWith(QStringLiteral("AutoSave"), Qt::CaseSensitive))
            continue;
        if (f.lastModified().addMSecs(limitMs) < now)
            QFile::remove(f.absoluteFilePath());
    }
}

bool CAutoSave::Tick(const std::vector<IAutoSaveDocument *> &documents)
{
    if (m_counter > AutoSaveTime || m_counter < 1)
        m_counter = AutoSaveTime;
    if (m_counter != 1) {
        --m_counter;
        return false;
    }
    m_counter = AutoSaveTime;
    Written.clear();
    auto status = [this](const QString &text) {
        if (StatusMessage)
            StatusMessage(text);
    };

    // A fault ends the run; the timer goes on.
    try {
        const QString folder = Folder();
        if (!QDir().mkpath(folder))
            return true;
        DeleteOldFiles(folder);
        for (IAutoSaveDocument *doc : documents) {
            if (!doc)
                continue;
            const QString extension = extensionOf(doc->AutoSaveKind());
            if (extension.isEmpty())
                continue;
            status(QStringLiteral("正在自动保存文件... "));
            const QString name = FileNameFor(folder, extension);
            const QString text = wholeText(*doc);
            if (!WriteTextFile(name, text, needsUnicode(text)))
                return true;
            Written << name;
            status(QStringLiteral("已自动保存文件: ") + name);
        }
    } catch (const std::exception &) { }
    return true;
}
