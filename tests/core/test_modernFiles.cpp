// Modern files: lone LF and CR line ends, detected encodings that a save keeps, UTF-8; and
// with the setting off, the reads as they always were.
#include "core/basMain.h"
#include "core/basText.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ModernRead : public ::testing::Test
{
protected:
    void TearDown() override { ModernFiles = false; }

    QString write(const char *name, const QByteArray &bytes)
    {
        const QString path = dir.filePath(QString::fromLatin1(name));
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        return path;
    }
    static QByteArray bytesOf(const QString &path)
    {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }
    // Known text in an encoding, made by the system's iconv program.
    static QByteArray iconv(const char *to, const QString &text)
    {
        QProcess p;
        p.start(QStringLiteral("iconv"),
            { QStringLiteral("-f"), QStringLiteral("UTF-8"), QStringLiteral("-t"), QString::fromLatin1(to) });
        p.write(text.toUtf8());
        p.closeWriteChannel();
        p.waitForFinished();
        EXPECT_EQ(p.exitCode(), 0) << to;
        return p.readAllStandardOutput();
    }

    QTemporaryDir dir;
};

TEST_F(ModernRead, LineEndsOfEveryKindBecomeCrLf)
{
    EXPECT_EQ(NormaliseLineEnds(QStringLiteral("a\nb\rc\r\nd\r\r\ne\n\nf\r")),
        "a\r\nb\r\nc\r\nd\r\n\r\ne\r\n\r\nf\r\n");
    EXPECT_EQ(NormaliseLineEnds(QStringLiteral("\r\r\r")), "\r\n\r\n\r\n");
    const QString crlf = QString::fromLatin1("x\r\ny\r\n");
    EXPECT_TRUE(NormaliseLineEnds(crlf).isSharedWith(crlf)); // nothing to do, nothing copied

    EXPECT_TRUE(HasOnlyBareLineFeeds(u"a\nb\n"));
    EXPECT_FALSE(HasOnlyBareLineFeeds(u"a\r\nb\n"));
    EXPECT_FALSE(HasOnlyBareLineFeeds(u"a\rb\r"));

    // Mixed ends in one file, and a file of only CRs: split as written without the
    // setting, line by line with it.
    const QString mixed = write("mixed.srt", "1\n00:00:01,000 --> 00:00:02,000\r\nOne\r\r\n2\r");
    const QString crs = write("crs.ssa", "a\rb\rc");
    EXPECT_EQ(ReadWholeFile(mixed, false).Text, "1\n00:00:01,000 --> 00:00:02,000\r\nOne\r\r\n2\r");
    EXPECT_EQ(ReadTextStream(crs, FileCode::ANSI).Text, "a\rb\rc");
    ModernFiles = true;
    EXPECT_EQ(ReadWholeFile(mixed, false).Text, "1\r\n00:00:01,000 --> 00:00:02,000\r\nOne\r\n\r\n2\r\n");
    EXPECT_EQ(ReadTextStream(crs, FileCode::ANSI).Text, "a\r\nb\r\nc");
    // The catalogue reads as written whatever the setting.
    EXPECT_EQ(ReadTextStream(crs, FileCode::ANSI, {}, ReadRule::Plain).Text, "a\rb\rc");
}

// Big5, Shift_JIS and Windows-1252 texts are detected and written back byte for byte;
// without the setting they are read as the system code page, as always.
TEST_F(ModernRead, DetectedCodePagesAreKeptByASave)
{
    const struct
    {
        const char *Encoding;
        QString Text;
    } samples[] = {
        { "BIG5",
            QStringLiteral("這是一個繁體中文的字幕檔案，我們今天一起去看電影吧。\r\n"
                           "時間軸已經對好了，字幕組的大家辛苦了。\r\n"
                           "請不要擔心這件事情，交給我就好。\r\n") },
        { "SHIFT_JIS",
            QStringLiteral("これは日本語の字幕ファイルです。今日は一緒に映画を見に行きましょう。\r\n"
                           "タイミングはもう合わせました。字幕班のみなさん、お疲れさまでした。\r\n"
                           "心配しないでください、私に任せてください。\r\n") },
        { "WINDOWS-1252",
            QStringLiteral("Ça va? Où est la café crème? Déjà vu, naïve façade, señor.\r\n"
                           "¿Qué pasó? ¡Ayúdenme! El niño está aquí — «très bien» à 5 €.\r\n"
                           "Übermäßig große Straßen, schöne Grüße aus Köln.\r\n") },
    };
    for (const auto &sample : samples) {
        SCOPED_TRACE(sample.Encoding);
        const QByteArray bytes = iconv(sample.Encoding, sample.Text);
        ASSERT_FALSE(bytes.isEmpty());
        const QString path = write("in.txt", bytes);

        ModernFiles = false;
        const WholeFileRead plain = ReadWholeFile(path, false);
        EXPECT_EQ(plain.Text, DecodeSystemCodePage(bytes));
        EXPECT_NE(plain.Text, sample.Text);
        EXPECT_EQ(plain.Coding.Code, FileCode::ANSI);
        EXPECT_TRUE(plain.Coding.CodePage.isEmpty());

        ModernFiles = true;
        const WholeFileRead read = ReadWholeFile(path, false);
        EXPECT_EQ(read.Text, sample.Text);
        EXPECT_EQ(read.Coding.Code, FileCode::ANSI);
        EXPECT_FALSE(read.Coding.CodePage.isEmpty());
        EXPECT_EQ(ModernFileCoding(path, {}).CodePage, read.Coding.CodePage);
        const QString out = dir.filePath(QStringLiteral("out.txt"));
        ASSERT_TRUE(WriteTextFile(out, read.Text, read.Coding));
        EXPECT_EQ(bytesOf(out), bytes);
    }
}

TEST_F(ModernRead, Utf8InUtf8OutAndTheMarks)
{
    const QString text = QStringLiteral("第一行 ♪ ünïcode\n第二行\n");
    const QString path = write("u8.srt", text.toUtf8());
    // Without the setting: valid UTF-8 is read as such but remembered as ANSI.
    EXPECT_EQ(ReadWholeFile(path, false).Text, text);
    EXPECT_EQ(ReadWholeFile(path, false).Coding.Code, FileCode::ANSI);

    ModernFiles = true;
    const WholeFileRead read = ReadWholeFile(path, false);
    EXPECT_EQ(read.Coding.Code, FileCode::UTF8);
    EXPECT_EQ(read.Text, QStringLiteral("第一行 ♪ ünïcode\r\n第二行\r\n"));
    const QString out = dir.filePath(QStringLiteral("out.srt"));
    ASSERT_TRUE(WriteTextFile(out, read.Text, read.Coding));
    EXPECT_EQ(bytesOf(out), read.Text.toUtf8()); // no mark in front

    // Marks: UTF-8's is dropped, big-endian UTF-16 is read in its own byte order.
    EXPECT_EQ(ReadWholeFile(write("bom8", "\xEF\xBB\xBFok"), false).Text, "ok");
    const WholeFileRead be = ReadWholeFile(write("be", QByteArray("\xFE\xFF\x4E\x2D\x00\x0A", 6)), false);
    EXPECT_EQ(be.Text, QStringLiteral("中\r\n"));
    EXPECT_EQ(be.Coding.Code, FileCode::Unicode);
    // A code chosen by name wins over the detector; an unknown byte becomes U+FFFD.
    const TextFileRead forced = ReadTextStream(write("f", "caf\xE9"), FileCode::ANSI, "WINDOWS-1252");
    EXPECT_EQ(forced.Text, QStringLiteral("café"));
    ModernFiles = false;
    EXPECT_EQ(
        ReadTextStream(write("f", "caf\xE9"), FileCode::ANSI, "WINDOWS-1252").Text, QStringLiteral("café"));
    EXPECT_EQ(ReadTextStream(write("u", "\xE4\xB8\xAD"), FileCode::UTF8).Text, QStringLiteral("中"));
}

} // namespace
