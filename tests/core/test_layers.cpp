// The folders of src/ are layers: a file includes only its own folder and the folders
// below it, in the order the README's Architecture section gives.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QString readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The numbered lines of the section ("1. `core` ..."), bottom layer first.
QStringList layersOfReadme(const QString &readme)
{
    static const QRegularExpression item(QStringLiteral("^\\d+\\.\\s+`([a-z]+)`"));
    QStringList layers;
    bool inSection = false;
    for (const QString &line : readme.split(u'\n')) {
        if (line.startsWith(QStringLiteral("## ")))
            inSection = line.trimmed() == QStringLiteral("## Architecture");
        else if (inSection)
            if (const QRegularExpressionMatch m = item.match(line); m.hasMatch())
                layers << m.captured(1);
    }
    return layers;
}

// Every folder of `src` that is not a layer, and every include of a file into a folder
// above its own, as "path:line: ..." relative to `src`'s parent.
QStringList layerFaults(const QString &src, const QStringList &layers)
{
    static const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s+\"([a-z]+)/[^\"]+\""));
    QStringList faults;
    const QDir root(src);
    for (const QString &folder : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        if (!layers.contains(folder))
            faults << QStringLiteral("src/%1 is not one of the layers").arg(folder);
    QDirIterator files(
        src, { QStringLiteral("*.h"), QStringLiteral("*.cpp") }, QDir::Files, QDirIterator::Subdirectories);
    QStringList paths;
    while (files.hasNext())
        paths << files.next();
    paths.sort();
    for (const QString &path : paths) {
        const QString relative = root.relativeFilePath(path);
        const QString own = relative.section(u'/', 0, 0);
        const QStringList lines = readAll(path).split(u'\n');
        for (qsizetype n = 0; n < lines.size(); ++n) {
            const QRegularExpressionMatch m = include.match(lines[n]);
            if (!m.hasMatch())
                continue;
            const QString target = m.captured(1);
            if (layers.indexOf(target) > layers.indexOf(own))
                faults << QStringLiteral("src/%1:%2: %3 is above %4: %5")
                              .arg(relative)
                              .arg(n + 1)
                              .arg(target, own, lines[n].trimmed());
        }
    }
    return faults;
}

} // namespace

TEST(Layers, EveryIncludeStaysInItsLayerOrGoesBelow)
{
    const QString project = QStringLiteral(VELMAR_SOURCE_DIR);
    const QStringList layers = layersOfReadme(readAll(project + QStringLiteral("/README.md")));
    ASSERT_GE(layers.size(), 10) << "README.md has no numbered list of layers under ## Architecture";
    const QStringList faults = layerFaults(project + QStringLiteral("/src"), layers);
    EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

TEST(Layers, AFaultNamesTheFileAndTheLine)
{
    QTemporaryDir dir;
    const QString src = dir.filePath(QStringLiteral("src"));
    const auto write = [&](const QString &path, const QByteArray &text) {
        QDir().mkpath(QFileInfo(src + u'/' + path).path());
        QFile file(src + u'/' + path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    write(QStringLiteral("low/a.h"), "#pragma once\n#include \"low/b.h\"\n");
    write(QStringLiteral("high/c.cpp"), "#include \"low/a.h\"\n#include <QString>\n");
    write(QStringLiteral("low/b.h"), "// below\n\n  #  include \"high/c.h\" // up\n");
    write(QStringLiteral("stray/d.h"), "\n");
    const QStringList readme = { QStringLiteral("# X"), QStringLiteral("## Architecture"),
        QStringLiteral("1. `low` the bottom"), QStringLiteral("2. `high` above it"),
        QStringLiteral("## Next"), QStringLiteral("3. `stray` not a layer") };
    const QStringList layers = layersOfReadme(readme.join(u'\n'));
    EXPECT_EQ(layers, QStringList({ QStringLiteral("low"), QStringLiteral("high") }));
    EXPECT_EQ(layerFaults(src, layers),
        QStringList({ QStringLiteral("src/stray is not one of the layers"),
            QStringLiteral("src/low/b.h:3: high is above low: #  include \"high/c.h\" // up") }));
}
