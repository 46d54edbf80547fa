// velmar-convert run as a process on small files.
#include "core/CScriptedPrompt.h"
#include "core/Class.h"
#include "core/basText.h"
#include "formats/CFileOptionModel.h"
#include "formats/CTiming.h"
#include "formats/basTimingFile.h"
#include "pages/CPicPreviewModel.h"
#include "timing/CTimingGrid.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct ToolRun
{
    int Exit = -1;
    QStringList Errors; // the lines of standard error
};

QString tool(const char *name = "velmar-convert")
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../") + QString::fromLatin1(name);
}

// Every file under a folder but one, by its path below the folder, with its bytes.
QMap<QString, QByteArray> filesUnder(const QString &folder, const QString &except)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.fileName() != except && file.open(QIODevice::ReadOnly))
            files.insert(QDir(folder).relativeFilePath(file.fileName()), file.readAll());
    }
    return files;
}

ToolRun run(const QStringList &args)
{
    QProcess p;
    p.start(tool(), args);
    p.waitForFinished(30000);
    ToolRun r;
    r.Exit = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.Errors = QString::fromUtf8(p.readAllStandardError()).split(u'\n', Qt::SkipEmptyParts);
    return r;
}

// A decoded output without the generated comment lines, which carry the clock.
QString decoded(const QString &path)
{
    QString text = ReadWholeFile(path, false).Text;
    QStringList lines = text.split(QStringLiteral("\r\n"));
    lines.removeIf([](const QString &l) { return l.startsWith(QStringLiteral("; // ")); });
    return lines.join(QStringLiteral("\r\n"));
}

class Convert : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!QFile::exists(tool()))
            GTEST_SKIP() << "velmar-convert is not built";
        SetPrompt(&prompt);
    }
    void TearDown() override { SetPrompt(nullptr); }

    QString path(const QString &name) const { return dir.filePath(name); }
    QString write(const QString &name, const QString &text, bool unicode = true)
    {
        WriteTextFile(path(name), text, unicode);
        return path(name);
    }
    // The timing window's own result: open by name into a document with its grid, then
    // the save options and OK.
    QString window(const QString &input, ScriptType to, qint32 subType, const QString &output)
    {
        std::unique_ptr<CTiming> doc = Class::Make<CTiming>();
        CTimingGrid grid;
        grid.SetDocument(doc.get());
        basTimingFile::OpenTimingFile(*doc, input);
        CFileOptionModel model;
        basTimingFile::PrepareSave(model, *doc);
        model.BackupBeforeSave = false;
        model.setSubTypeButton(subType);
        model.ClickFileType(to);
        model.FileName = output;
        EXPECT_TRUE(model.Ok());
        return decoded(output);
    }

    QTemporaryDir dir;
    CScriptedPrompt prompt;
};

struct Kind
{
    const char *Name; // the file name written
    ScriptType Type;
    qint32 SubType;
};

const Kind kinds[] = {
    { "in.ass", ScriptType::ASS, 0 },
    { "in.ssa", ScriptType::SSA, 0 },
    { "in.smi", ScriptType::SAMI, 0 },
    { "in.srt", ScriptType::SRT, 0 },
    { "in0.smp", ScriptType::SMP, 0 },
    { "in1.smp", ScriptType::SMP, 1 },
    { "in.txt", ScriptType::DialogueText, 0 },
    { "in.lrc", ScriptType::LRC, 0 },
    { "in.sst", ScriptType::SST, 0 },
};

TEST_F(Convert, EveryPairGivesTheWindowsResult)
{
    for (const Kind &from : kinds) {
        const QString input
            = write(QString::fromLatin1(from.Name), CFileOptionModel::Sample(from.Type, from.SubType));
        for (const Kind &to : kinds) {
            SCOPED_TRACE(std::string(from.Name) + " -> " + to.Name);
            const QString out = path(QStringLiteral("tool-out"));
            const ToolRun r = run(
                { QStringLiteral("--no-backup"), QStringLiteral("--to"), QString::number(qint32(to.Type)),
                    QStringLiteral("--sub-type"), QString::number(to.SubType), input, out });
            EXPECT_EQ(r.Exit, 0);
            const QString expected = window(input, to.Type, to.SubType, path(QStringLiteral("win-out")));
            EXPECT_EQ(decoded(out), expected);
            if (from.Type != ScriptType::SST) { // picture pages carry no text
                EXPECT_FALSE(expected.isEmpty());
            }
        }
    }
}

TEST_F(Convert, SrtToAssByExtensionsKeepsTimesAndText)
{
    const QString in = write(QStringLiteral("a.srt"),
        QStringLiteral("1\r\n00:00:01,200 --> 00:00:03,450\r\nHello\r\nthere\r\n\r\n"), false);
    const ToolRun r = run({ QStringLiteral("--no-backup"), in, path(QStringLiteral("a.ass")) });
    ASSERT_EQ(r.Exit, 0);
    EXPECT_TRUE(r.Errors.isEmpty());
    const QString out = decoded(path(QStringLiteral("a.ass")));
    EXPECT_TRUE(out.startsWith(QStringLiteral("[Script Info]")));
    EXPECT_TRUE(out.contains(QStringLiteral("[V4+ Styles]")));
    EXPECT_TRUE(out.contains(QStringLiteral(",0:00:01.20,0:00:03.45,")));
    EXPECT_TRUE(out.contains(QStringLiteral("Hello\\Nthere")));

    // Times and text only; in ANSI without a mark.
    ASSERT_EQ(
        run({ QStringLiteral("--no-backup"), QStringLiteral("--option"), QStringLiteral("28"),
                QStringLiteral("--encoding"), QStringLiteral("ansi"), in, path(QStringLiteral("b.ass")) })
            .Exit,
        0);
    QFile f(path(QStringLiteral("b.ass")));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray bytes = f.readAll();
    EXPECT_FALSE(bytes.startsWith("\xff\xfe"));
    EXPECT_FALSE(bytes.contains("[Script Info]"));
    EXPECT_FALSE(bytes.contains("Style:"));
    EXPECT_TRUE(bytes.contains("0:00:01.20"));

    // The name picks the type: an unknown extension writes dialogue text, plain.
    ASSERT_EQ(run({ QStringLiteral("--no-backup"), in, path(QStringLiteral("c.out")) }).Exit, 0);
    EXPECT_TRUE(decoded(path(QStringLiteral("c.out"))).startsWith(QStringLiteral("Hello there\r\n")));
}

TEST_F(Convert, OpenAsPicksTheTypeAndReadsWithTheChosenCode)
{
    // An SRT body under a name that says nothing, in UTF-16 without a mark.
    const QString srt = QStringLiteral("1\r\n00:00:01,000 --> 00:00:02,000\r\n") + QString::fromUtf16(u"你好")
        + QStringLiteral("\r\n\r\n");
    const QString in = path(QStringLiteral("cues.dat"));
    {
        QFile f(in);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(reinterpret_cast<const char *>(srt.utf16()), srt.size() * 2);
    }
    const QString out = path(QStringLiteral("cues.txt"));
    ASSERT_EQ(run({ QStringLiteral("--no-backup"), QStringLiteral("--open-as"), QStringLiteral("srt"),
                      QStringLiteral("--encoding"), QStringLiteral("unicode"), in, out })
                  .Exit,
        0);
    EXPECT_TRUE(decoded(out).startsWith(QString::fromUtf16(u"你好") + QStringLiteral("\r\n")));
    // By its name alone it is plain text, read in the system code page.
    ASSERT_EQ(run({ QStringLiteral("--no-backup"), in, out }).Exit, 0);
    EXPECT_FALSE(decoded(out).startsWith(QString::fromUtf16(u"你好")));
}

// Modern files for one run: an LF file of Windows-1252 read line by line and written back
// in its own code page (the lines CR LF), or as UTF-8 without a mark, or read in a
// code page given by name. Without --modern it is one block, as the window reads it.
TEST_F(Convert, ModernFilesAndEncodings)
{
    const QString in = path(QStringLiteral("west.srt"));
    {
        QFile f(in);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(EncodeCodePage(
            QStringLiteral(
                "1\n00:00:01,000 --> 00:00:02,000\nÇa va? Où est le café crème?\n\n"
                "2\n00:00:03,000 --> 00:00:04,000\nDéjà vu, naïve façade, señor, très bien à 5 €.\n\n"),
            "WINDOWS-1252"));
    }
    const QString out = path(QStringLiteral("out.srt"));
    const QStringList quiet { QStringLiteral("--no-backup") };
    ASSERT_EQ(run(quiet + QStringList { QStringLiteral("--modern"), in, out }).Exit, 0);
    const WholeFileRead kept = ReadWholeFile(out, false);
    EXPECT_FALSE(kept.Unicode);
    EXPECT_EQ(ReadTextStream(out, FileCode::ANSI, "WINDOWS-1252").Text,
        QStringLiteral(
            "1\r\n00:00:01,000 --> 00:00:02,000\r\nÇa va? Où est le café crème?\r\n\r\n"
            "2\r\n00:00:03,000 --> 00:00:04,000\r\nDéjà vu, naïve façade, señor, très bien à 5 €.\r\n\r\n"));

    ASSERT_EQ(run(quiet
                  + QStringList { QStringLiteral("--modern"), QStringLiteral("--encoding"),
                      QStringLiteral("utf8"), in, out })
                  .Exit,
        0);
    QFile utf8(out);
    ASSERT_TRUE(utf8.open(QIODevice::ReadOnly));
    const QByteArray bytes = utf8.readAll();
    EXPECT_TRUE(bytes.startsWith("1\r\n00:00:01,000"));
    EXPECT_TRUE(bytes.contains(QStringLiteral("\r\nDéjà vu").toUtf8()));

    // A code page by name; without --modern the bare line feeds leave one block and no cue.
    const QStringList named { QStringLiteral("--from-encoding"), QStringLiteral("windows-1252"),
        QStringLiteral("--encoding"), QStringLiteral("utf8"), in, out };
    ASSERT_EQ(run(quiet + QStringList { QStringLiteral("--modern") } + named).Exit, 0);
    EXPECT_TRUE(ReadTextStream(out, FileCode::UTF8).Text.contains(QStringLiteral("\r\nDéjà vu")));
    const ToolRun plain = run(quiet + named);
    EXPECT_EQ(plain.Exit, 0);
    EXPECT_EQ(plain.Errors.size(), 1);
    EXPECT_EQ(ReadTextStream(out, FileCode::UTF8).Text, QString());
    EXPECT_EQ(run({ QStringLiteral("--from-encoding"), QStringLiteral("no-such-code"), in, out }).Exit, 2);
}

TEST_F(Convert, StatusAndMessages)
{
    const ToolRun usage
        = run({ QStringLiteral("--to"), QStringLiteral("docx"), QStringLiteral("a"), QStringLiteral("b") });
    EXPECT_EQ(usage.Exit, 2);
    EXPECT_TRUE(usage.Errors.join(u'\n').contains(QStringLiteral("usage: velmar-convert")));
    EXPECT_EQ(run({ QStringLiteral("only-one") }).Exit, 2);
    EXPECT_EQ(
        run({ QStringLiteral("--option"), QStringLiteral("256"), QStringLiteral("a"), QStringLiteral("b") })
            .Exit,
        2);

    const ToolRun missing = run({ path(QStringLiteral("none.srt")), path(QStringLiteral("x.ass")) });
    EXPECT_EQ(missing.Exit, 1);
    ASSERT_FALSE(missing.Errors.isEmpty());
    EXPECT_EQ(missing.Errors[0],
        QStringLiteral("message: ") + QString::fromUtf16(u" 无法打开文件。 ")
            + path(QStringLiteral("none.srt")));
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("x.ass"))));

    const QString in = write(QStringLiteral("ok.srt"), CFileOptionModel::Sample(ScriptType::SRT, 0));
    const ToolRun unwritable = run({ in, path(QStringLiteral("no/such/dir/x.ass")) });
    EXPECT_EQ(unwritable.Exit, 1);
    ASSERT_GE(unwritable.Errors.size(), 2);
    EXPECT_TRUE(unwritable.Errors[0].startsWith(QStringLiteral("message: ")));
    EXPECT_TRUE(unwritable.Errors.last().contains(QStringLiteral("no/such/dir/x.ass")));

    // A line that is no event asks whether to go on: the answer is printed and followed.
    const QString bad = write(QStringLiteral("bad.ass"),
        QStringLiteral("[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, "
                       "Effect, Text\r\nDialogue: x\r\n"
                       "Dialogue: 0,0:00:03.00,0:00:04.00,Default,,0,0,0,,B\r\n"));
    for (const char *answer : { "yes", "no" }) {
        const ToolRun r = run({ QStringLiteral("--no-backup"), QStringLiteral("--answer"),
            QString::fromLatin1(answer), bad, path(QStringLiteral("bad.txt")) });
        EXPECT_EQ(r.Exit, 0);
        ASSERT_EQ(r.Errors.size(), 1);
        EXPECT_TRUE(r.Errors[0].startsWith(QStringLiteral("question: ")));
        EXPECT_TRUE(r.Errors[0].endsWith(QStringLiteral(": Dialogue: x -> ") + QString::fromLatin1(answer)));
        EXPECT_EQ(decoded(path(QStringLiteral("bad.txt"))).startsWith(QStringLiteral("B\r\n")),
            answer == std::string("yes"));
    }
}

// The converter starts without the graphics or media libraries that the core can use:
// the linker drops them when nothing it links needs them. Its build that draws pages
// takes the graphics library, and still no widget or media one.
TEST_F(Convert, LoadsNoGraphicsOrMediaLibrary)
{
    const auto libraries = [](const QString &program) {
        QProcess ldd;
        ldd.start(QStringLiteral("ldd"), { program });
        return ldd.waitForFinished(30000) && ldd.exitCode() == 0
            ? QString::fromLocal8Bit(ldd.readAllStandardOutput())
            : QString();
    };
    const QString converter = libraries(tool());
    if (converter.isEmpty())
        GTEST_SKIP() << "ldd is not available";
    ASSERT_TRUE(converter.contains(QStringLiteral("libQt6Core")));
    for (const char *unwanted : { "libQt6Gui", "libavformat", "libavcodec", "libswresample", "libavutil" })
        EXPECT_FALSE(converter.contains(QString::fromLatin1(unwanted))) << unwanted;
    const QString pages = libraries(tool("velmar-convert-pages"));
    ASSERT_TRUE(pages.contains(QStringLiteral("libQt6Gui")));
    for (const char *unwanted : { "libQt6Widgets", "libQt6Multimedia", "libavformat", "libavcodec" })
        EXPECT_FALSE(pages.contains(QString::fromLatin1(unwanted))) << unwanted;
}

// --pages draws the script as the picture window does on loading and writes what its
// save of all pages writes, byte for byte, without a display.
TEST_F(Convert, PagesAreWrittenAsThePictureWindowWritesThem)
{
    const QString input = write(QStringLiteral("film.ass"),
        QStringLiteral(
            "[Script Info]\r\nScriptType: v4.00+\r\n\r\n[V4+ Styles]\r\nFormat: Name, Fontname, "
            "Fontsize, PrimaryColour, SecondaryColour, OutlineColour, BackColour, Bold, Italic, "
            "Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, BorderStyle, Outline, Shadow, "
            "Alignment, MarginL, MarginR, MarginV, Encoding\r\n"
            "Style: Top,Noto Sans CJK SC,20,&H0000ffff,&H0000ffff,&H00000000,&H80000000,-1,0,0,0,"
            "100,100,0,0.00,1,2,3,8,20,20,25,134\r\n\r\n[Events]\r\nFormat: Layer, Start, End, "
            "Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n"
            "Dialogue: 0,0:00:01.00,0:00:03.00,Top,,0000,0000,0000,,上面的字\r\n"
            "Dialogue: 0,0:00:02.00,0:00:04.00,Default,,0000,0000,0000,,下面{\\i1}的字\\N第二行\r\n"
            "Dialogue: 0,0:00:05.00,0:00:05.00,Default,,0000,0000,0000,,no page\r\n"));
    const QString list = path(QStringLiteral("film.sst"));
    {
        std::unique_ptr<CTiming> doc = Class::Make<CTiming>();
        CTimingGrid grid;
        grid.SetDocument(doc.get());
        ASSERT_EQ(basTimingFile::OpenTimingFile(*doc, input), basTimingFile::OpenResult::Opened);
        CPicPreviewModel window;
        window.Init(doc.get());
        window.Pages().PictureFolder = true;
        window.FileName = list;
        ASSERT_TRUE(window.SaveAll());
    }
    const QMap<QString, QByteArray> byWindow = filesUnder(dir.path(), input);
    ASSERT_EQ(byWindow.keys(),
        QStringList({ QStringLiteral("film.sst"), QStringLiteral("film/1.1.bmp"),
            QStringLiteral("film/1.2.bmp"), QStringLiteral("film/1.3.bmp") }));
    QFile::remove(list);
    QDir(path(QStringLiteral("film"))).removeRecursively();

    ToolRun r = run({ QStringLiteral("--to"), QStringLiteral("sst"), QStringLiteral("--pages"),
        QStringLiteral("--picture-folder"), input, list });
    EXPECT_EQ(r.Exit, 0);
    EXPECT_TRUE(r.Errors.isEmpty()) << r.Errors.join(u'\n').toStdString();
    EXPECT_EQ(filesUnder(dir.path(), input), byWindow);

    // PAL pages, by the extension, with the bitmaps named under the list (no folder:
    // none can be written there).
    QFile::remove(list);
    QDir(path(QStringLiteral("film"))).removeRecursively();
    r = run({ QStringLiteral("--pages"), QStringLiteral("--video-type"), QStringLiteral("1"), input, list });
    EXPECT_EQ(r.Exit, 0);
    const QString text = ReadWholeFile(list, false).Text;
    EXPECT_TRUE(text.contains(QStringLiteral("\r\nTV_Type PAL\r\n")));
    EXPECT_TRUE(text.endsWith(
        QStringLiteral("3\t\t00:00:03:00\t00:00:04:00\t") + list + QStringLiteral("/1.3.bmp\r\n")));
    EXPECT_EQ(filesUnder(dir.path(), input).size(), 1);
    r = run({ QStringLiteral("--pages"), QStringLiteral("--video-type"), QStringLiteral("1"),
        QStringLiteral("--picture-folder"), input, list });
    EXPECT_EQ(QFileInfo(path(QStringLiteral("film/1.1.bmp"))).size(), 118 + 364 * 580);

    // A list that cannot be written: the fault as the window shows it, and status 1.
    r = run({ QStringLiteral("--pages"), input, path(QStringLiteral("no/such.sst")) });
    EXPECT_EQ(r.Exit, 1);
    EXPECT_EQ(r.Errors.value(0), QStringLiteral("message: Path/File access error"));
    // The options of pages go with --pages, and --pages with an SST list.
    EXPECT_EQ(
        run({ QStringLiteral("--pages"), QStringLiteral("--to"), QStringLiteral("srt"), input, list }).Exit,
        2);
    EXPECT_EQ(run({ QStringLiteral("--picture-folder"), input, list }).Exit, 2);
    EXPECT_EQ(
        run({ QStringLiteral("--pages"), QStringLiteral("--video-type"), QStringLiteral("2"), input, list })
            .Exit,
        2);
}

} // namespace
