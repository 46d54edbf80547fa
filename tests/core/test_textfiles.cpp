#include "core/CFile.h"
#include "core/VelmarError.h"
#include "core/basText.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QString writeBytes(const QTemporaryDir &dir, const char *name, const QByteArray &bytes)
{
    const QString path = dir.filePath(QString::fromLatin1(name));
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(bytes);
    return path;
}

QByteArray readBytes(const QString &path)
{
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

} // namespace

TEST(WholeFileRead, ByteOrderMarksAndTheUnmarkedGuess)
{
    QTemporaryDir dir;
    // Empty: nothing decided.
    const WholeFileRead empty = ReadWholeFile(writeBytes(dir, "e", {}), true);
    EXPECT_TRUE(empty.Ok);
    EXPECT_TRUE(empty.Empty);
    EXPECT_FALSE(empty.Unicode);
    EXPECT_EQ(empty.Text, "");

    const WholeFileRead markOnly = ReadWholeFile(writeBytes(dir, "m", QByteArray("\xFF\xFE", 2)), false);
    EXPECT_TRUE(markOnly.Unicode);
    EXPECT_EQ(markOnly.Text, "");

    // FE FF is taken as little endian all the same: no swapping.
    const WholeFileRead bigEndian
        = ReadWholeFile(writeBytes(dir, "b", QByteArray("\xFE\xFF\x00\x41", 4)), false);
    EXPECT_TRUE(bigEndian.Unicode);
    ASSERT_EQ(bigEndian.Text.size(), 1);
    EXPECT_EQ(bigEndian.Text[0].unicode(), 0x4100);

    // "A" and a zero byte: UTF-16 for the file helper, system code page for the windows.
    const QString unmarked = writeBytes(dir, "u", QByteArray("A\0B\0", 4));
    EXPECT_TRUE(ReadWholeFile(unmarked, true).Unicode);
    EXPECT_EQ(ReadWholeFile(unmarked, true).Text, "AB");
    EXPECT_FALSE(ReadWholeFile(unmarked, false).Unicode);

    EXPECT_FALSE(ReadWholeFile(dir.filePath("missing"), false).Ok);
}

TEST(WholeFileRead, CodePages)
{
    // Valid UTF-8, with or without its mark, is UTF-8; anything else is GBK.
    EXPECT_EQ(DecodeSystemCodePage(QByteArray("\xE5\xAD\x97\xE5\xB9\x95")), QStringLiteral("字幕"));
    EXPECT_EQ(DecodeSystemCodePage(QByteArray("\xEF\xBB\xBF\xE5\xAD\x97")), QStringLiteral("字"));
    EXPECT_EQ(DecodeSystemCodePage(QByteArray("\xD7\xD6\xC4\xBB")), QStringLiteral("字幕"));
    EXPECT_EQ(EncodeSystemCodePage(QStringLiteral("字幕a")),
        QByteArray("\xD7\xD6\xC4\xBB"
                   "a"));
    // Characters GBK cannot hold become "?", one per character (a surrogate pair too).
    EXPECT_EQ(EncodeSystemCodePage(QStringLiteral("a\u0E01b\U0001F600c")), QByteArray("a?b?c"));
    // A broken GBK byte does not stop the rest.
    const QString broken = DecodeSystemCodePage(QByteArray("\xD7\xD6\xFF"
                                                           "ab"));
    EXPECT_TRUE(broken.startsWith(QStringLiteral("字")));
    EXPECT_TRUE(broken.endsWith("ab"));
}

TEST(TextStream, FileCodesChooseTheReading)
{
    QTemporaryDir dir;
    const QString text = QStringLiteral("时间轴\r\nline");
    const QString unicodePath = dir.filePath("u.txt");
    const QString ansiPath = dir.filePath("a.txt");
    ASSERT_TRUE(WriteTextFile(unicodePath, text, true));
    ASSERT_TRUE(WriteTextFile(ansiPath, text, false));
    EXPECT_TRUE(readBytes(unicodePath).startsWith("\xFF\xFE"));
    EXPECT_EQ(readBytes(ansiPath), EncodeSystemCodePage(text));

    EXPECT_EQ(ReadTextStream(unicodePath, FileCode::Unicode).Text, text);
    EXPECT_EQ(ReadTextStream(unicodePath, FileCode::SystemDefault).Text, text);
    EXPECT_EQ(ReadTextStream(unicodePath, FileCode(5)).Text, text); // any other code behaves as -2
    EXPECT_EQ(ReadTextStream(ansiPath, FileCode::ANSI).Text, text);
    EXPECT_EQ(ReadTextStream(ansiPath, FileCode::SystemDefault).Text, text);
    EXPECT_FALSE(ReadTextStream(dir.filePath("none"), FileCode::ANSI).Ok);
}

TEST(TextStream, FailedWriteKeepsTheOldFile)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("keep.txt");
    ASSERT_TRUE(WriteTextFile(path, "old", false));
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    QString error;
    const bool written = WriteTextFile(path, "new", false, &error);
    QFile::setPermissions(
        dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    if (written)
        GTEST_SKIP() << "running as a user who can write anywhere";
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(readBytes(path), "old");
}

TEST(CFileTest, ReadWriteHandlesAndProgress)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("c.txt");
    {
        CFile out;
        ASSERT_TRUE(out.OpenFile(path, 1));
        EXPECT_GT(out.Handle(), 0);
        out.WriteFile(QStringLiteral("字幕"));
        out.CloseFile();
        EXPECT_EQ(out.Handle(), 0);
    }
    CFile in;
    ASSERT_TRUE(in.OpenFile(path, 0));
    EXPECT_EQ(in.Mode(), 0);
    EXPECT_EQ(in.ReadFile(), QStringLiteral("字幕"));
    CFile other;
    ASSERT_TRUE(other.OpenFile(path, 4));
    EXPECT_NE(other.Handle(), in.Handle());
    EXPECT_FALSE(CFile().OpenFile(dir.filePath("no/such/dir/x"), 0));

    CFile progress;
    int fired = 0, last = -1;
    progress.ProgressPercent = [&](qint32 p) {
        ++fired;
        last = p;
    };
    auto errorOf = [&](auto f) {
        try {
            f();
        } catch (const VelmarError &e) {
            return e.Number();
        }
        return 0;
    };
    EXPECT_EQ(errorOf([&] { progress.Progress(); }), 9999);
    EXPECT_EQ(errorOf([&] { progress.Progress(3); }), 9998);
    progress.Progress(std::nullopt, 200);
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(last, 0);
    progress.Progress(); // 1 of 200: still 0 percent, no event
    EXPECT_EQ(fired, 1);
    progress.Progress(99); // 100 of 200
    EXPECT_EQ(last, 50);
    EXPECT_EQ(fired, 2);
}
