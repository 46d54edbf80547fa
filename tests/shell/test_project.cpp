#include "ShellFixture.h"

#include "shell/CProject.h"

namespace {

class ProjectTest : public ShellFixture
{
protected:
    void WriteFile(const QString &path, const QByteArray &bytes)
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
    }
    QByteArray ReadFile(const QString &path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
};

TEST_F(ProjectTest, RoundTripWithRelativeAndAbsolutePaths)
{
    const QString root = TempPath(QStringLiteral("proj"));
    QDir().mkpath(root + QStringLiteral("/subs"));
    CProject p;
    p.Init();
    EXPECT_EQ(p.SerialNo(), 1);
    p.AddFile(root + QStringLiteral("/subs/第一集.ass"), ScriptType::ASS);
    p.AddFile(root + QStringLiteral("/draft.rtf"), ScriptType::RichText);
    p.AddFile(QStringLiteral("/media/video/ep 1.mkv"), ScriptType::Video);
    p.AddFile(root + QStringLiteral("/subs/../draft.rtf"), ScriptType::Plain); // the same file again
    EXPECT_TRUE(p.Changed());
    ASSERT_EQ(p.Files().size(), 3u);
    EXPECT_EQ(p.Files()[1].ScriptType, ScriptType::Plain);

    const QString name = root + QStringLiteral("/show.vlr");
    ASSERT_TRUE(p.OutputSub(name)) << p.LastError().toStdString();
    EXPECT_FALSE(p.Changed());
    EXPECT_EQ(ReadFile(name),
        QStringLiteral("Velmar Project 1\r\n2\tsubs/第一集.ass\r\n0\tdraft.rtf\r\n"
                       "100\t/media/video/ep 1.mkv\r\n")
            .toUtf8());

    // Moved with its folder, the project still finds its own files.
    const QString moved = TempPath(QStringLiteral("moved"));
    ASSERT_TRUE(QDir().rename(root, moved));
    CProject q;
    q.Init();
    ASSERT_TRUE(q.InputSub(moved + QStringLiteral("/show.vlr"))) << q.LastError().toStdString();
    ASSERT_EQ(q.Files().size(), 3u);
    EXPECT_EQ(q.Files()[0].Path, moved + QStringLiteral("/subs/第一集.ass"));
    EXPECT_EQ(q.Files()[0].ScriptType, ScriptType::ASS);
    EXPECT_EQ(q.Files()[2].Path, QStringLiteral("/media/video/ep 1.mkv"));
    EXPECT_EQ(q.FileName(), moved + QStringLiteral("/show.vlr"));
    EXPECT_FALSE(q.Changed());
    EXPECT_EQ(q.Content(), QString());
}

TEST_F(ProjectTest, ToleratedVariations)
{
    const QString name = TempPath(QStringLiteral("v.vlr"));
    WriteFile(name, "\xEF\xBB\xBFVelmar Project 1\n\n# a comment\n4\ta b.srt\n-1\t/x\ty.txt\n");
    CProject p;
    ASSERT_TRUE(p.InputSub(name)) << p.LastError().toStdString();
    ASSERT_EQ(p.Files().size(), 2u);
    EXPECT_EQ(p.Files()[0].Path, TempPath(QStringLiteral("a b.srt")));
    EXPECT_EQ(p.Files()[1].Path, QStringLiteral("/x\ty.txt")); // only the first tab splits
    EXPECT_EQ(p.Files()[1].ScriptType, ScriptType(-1));
}

TEST_F(ProjectTest, BadFilesAreRefusedAndTheProjectStaysAsItWas)
{
    CProject p;
    p.AddFile(QStringLiteral("/keep.ass"), ScriptType::ASS);
    const QString name = TempPath(QStringLiteral("bad.vlr"));
    const QList<QByteArray> bad {
        QByteArray(),
        "garbage",
        "Velmar Project\r\n2\ta.ass\r\n",
        "Velmar Project x\r\n",
        "Velmar Project 2\r\n2\ta.ass\r\n",
        "Velmar Project 1\r\nfoo\ta.ass\r\n",
        "Velmar Project 1\r\n2 a.ass\r\n",
        "Velmar Project 1\r\n2\t\r\n",
        QByteArray("Velmar Project 1\r\n2\ta\0b\r\n", 25),
        "Velmar Project 1\r\n\xFF\xFE\x80\r\n",
        QByteArray("\x00\x01\x02\x03", 4).repeated(100),
    };
    for (const QByteArray &bytes : bad) {
        WriteFile(name, bytes);
        EXPECT_FALSE(p.InputSub(name)) << bytes.toStdString();
        EXPECT_FALSE(p.LastError().isEmpty());
        ASSERT_EQ(p.Files().size(), 1u);
        EXPECT_EQ(p.Files()[0].Path, QStringLiteral("/keep.ass"));
    }
    EXPECT_FALSE(p.InputSub(TempPath(QStringLiteral("missing.vlr"))));
    EXPECT_FALSE(p.InputSub(TempPath(QString()))); // a folder
}

TEST_F(ProjectTest, AFileNameWithALineBreakIsNotWritten)
{
    CProject p;
    p.AddFile(QStringLiteral("/odd\nname.ass"), ScriptType::ASS);
    const QString name = TempPath(QStringLiteral("odd.vlr"));
    EXPECT_FALSE(p.OutputSub(name));
    EXPECT_FALSE(QFileInfo::exists(name));
    EXPECT_TRUE(p.Changed());
}

TEST_F(ProjectTest, ClosingAskedOnlyWhenChanged)
{
    CProject p;
    EXPECT_TRUE(p.QueryClose());
    EXPECT_TRUE(prompt.Messages().isEmpty());

    p.AddFile(QStringLiteral("/a.ass"), ScriptType::ASS);
    prompt.Answers.push_back(MsgBoxResult::Cancel);
    EXPECT_FALSE(p.QueryClose());
    EXPECT_EQ(prompt.Messages().last(), QStringLiteral("保存所做的修改吗?"));

    const QString name = TempPath(QStringLiteral("saved.vlr"));
    prompt.Answers.push_back(MsgBoxResult::Yes);
    prompt.FileNames.push_back(name);
    EXPECT_TRUE(p.QueryClose());
    EXPECT_TRUE(QFileInfo::exists(name));
    EXPECT_FALSE(p.Changed());
    EXPECT_EQ(CProject::FileFilter(), QStringLiteral("项目字幕文件 (*.vlr)|*.vlr|其他(*.*)|*.*"));
}

} // namespace
