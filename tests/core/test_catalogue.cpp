#include "core/CMessages.h"
#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basPlatform.h"

#include <QDir>
#include <QFile>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

class Catalogue : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        QFile::remove(messageFile());
    }
    void TearDown() override
    {
        QFile::remove(messageFile());
        SetPrompt(nullptr);
    }
    static QString messageFile() { return ProgramFolder() + QStringLiteral("Message.txt"); }
    static void writeMessageFile(const QByteArray &bytes)
    {
        QFile f(messageFile());
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    static QString text(CMessages &m, const char *key)
    {
        return m.CollectionView().item(QString::fromLatin1(key))->Content();
    }
    CScriptedPrompt prompt;
};

QStringList keysOfDefaultText()
{
    QStringList keys;
    for (const QString &line : DefaultMessageText().split(QStringLiteral("\r\n"))) {
        const qsizetype eq = line.indexOf(u'=');
        if (eq >= 0)
            keys << line.left(eq).trimmed();
    }
    return keys;
}

} // namespace

TEST_F(Catalogue, BuiltInTextHolds297KeysInTwelveSections)
{
    const QStringList keys = keysOfDefaultText();
    EXPECT_EQ(keys.size(), 297);
    EXPECT_EQ(QSet<QString>(keys.begin(), keys.end()).size(), 297);
    EXPECT_EQ(keys.first(), "MENU_FILE_000");
    EXPECT_EQ(keys.last(), "COMM_MSG_301");
    EXPECT_FALSE(keys.contains("MENU_TIMING_501"));
    EXPECT_FALSE(keys.contains("TRANSLATE_BUTTON_TIP_102"));

    QStringList marks;
    for (const QString &line : DefaultMessageText().split(QStringLiteral("\r\n")))
        if (!line.contains(u'='))
            marks << line;
    EXPECT_EQ(marks.size(), 12);
    EXPECT_EQ(marks.first(), "<Main Window>");
    EXPECT_TRUE(marks.contains("'<Timing Window>"));
    EXPECT_EQ(marks.last(), "<Common Message>");
    // Sections keep the order of the shipped file.
    EXPECT_LT(keys.indexOf("FONT_MSG_101"), keys.indexOf("ABOUT_TITLE_000"));
    EXPECT_LT(keys.indexOf("ABOUT_MSG_200"), keys.indexOf("COMM_MSG_100"));
}

TEST_F(Catalogue, DefaultsLookupsAndFallback)
{
    CMessages m;
    m.Init();
    EXPECT_EQ(text(m, "MENU_FILE_000"), QStringLiteral("文件"));
    EXPECT_EQ(text(m, "COMM_MSG_100"), QStringLiteral("保存所做的修改吗?"));
    EXPECT_EQ(text(m, "NO_SUCH_KEY"), "MESSAGE ERROR");
    EXPECT_EQ(m.item("NO_SUCH_KEY"), nullptr);
    EXPECT_EQ(text(m, "MENU_TIMING_501"), "MESSAGE ERROR");
    EXPECT_TRUE(text(m, "SUBINFO_MSG_104").endsWith(QStringLiteral("(此项目不能改变)")));
    EXPECT_TRUE(text(m, "SUBINFO_MSG_105").endsWith(QStringLiteral("(此项目不能改变)")));
    EXPECT_TRUE(m.FileName().isEmpty());
    EXPECT_TRUE(prompt.Records.isEmpty());
}

TEST_F(Catalogue, FileOverridesOnlyTheKeysItHolds)
{
    writeMessageFile("<Main Window>\r\n"
                     "COMM_MSG_100 = Save?\r\n"
                     "A=B=C\r\n"
                     "MDI_STATUS_700 =\r\n"
                     "'<Timing Window>\r\n"
                     "DEFAULTE_MESSAGE = x\r\n"
                     "a line without an equals sign\r\n"
                     " = empty key\r\n");
    CMessages m;
    m.Init();
    EXPECT_EQ(text(m, "COMM_MSG_100"), "Save?");
    EXPECT_EQ(text(m, "COMM_MSG_101"), QStringLiteral("保存文件出错:"));
    EXPECT_EQ(text(m, "A"), "B=C");
    EXPECT_EQ(text(m, "MDI_STATUS_700"), "");
    EXPECT_EQ(text(m, "NO_SUCH_KEY"), "MESSAGE ERROR"); // the file cannot change the fall-back
    EXPECT_EQ(m.item("")->Message, "empty key");
    EXPECT_EQ(m.FileName(), "Message.txt");
    EXPECT_FALSE(m.Changed());
}

TEST_F(Catalogue, HostileFilesNeverStopTheStart)
{
    const QByteArray gbk("COMM_MSG_100 = \xb1\xa3\xb4\xe6\xa3\xbf\r\n"); // "保存？" in GBK
    const QString utf16Text = QStringLiteral("COMM_MSG_100 = 保存\r\n");
    QByteArray utf16("\xFF\xFE", 2);
    utf16.append(reinterpret_cast<const char *>(utf16Text.utf16()), utf16Text.size() * 2);
    QByteArray binary;
    for (int i = 0; i < 4096; ++i)
        binary.append(char(i * 37 % 256));
    const QByteArray huge = QByteArray("X = y\r\n").repeated(200000);

    struct Case
    {
        const char *name;
        QByteArray bytes;
        QString expected100;
    };
    const QList<Case> cases { { "empty", QByteArray(), QStringLiteral("保存所做的修改吗?") },
        { "gbk", gbk, QStringLiteral("保存？") }, { "utf16", utf16, QStringLiteral("保存") },
        { "utf8", QByteArray("COMM_MSG_100 = 保存!\r\n"), QStringLiteral("保存!") },
        { "binary", binary, QString() }, { "huge", huge, QStringLiteral("保存所做的修改吗?") } };
    for (const Case &c : cases) {
        writeMessageFile(c.bytes);
        CMessages m;
        m.Init();
        if (!c.expected100.isNull()) {
            EXPECT_EQ(text(m, "COMM_MSG_100"), c.expected100) << c.name;
        }
        EXPECT_EQ(text(m, "MENU_FILE_000"), QStringLiteral("文件")) << c.name;
        EXPECT_EQ(text(m, "NO_SUCH_KEY"), "MESSAGE ERROR") << c.name;
    }
}

TEST_F(Catalogue, UnreadableFileShowsReadErrorAndKeepsDefaults)
{
    // A folder in the file's place cannot be read, whoever runs the test.
    ASSERT_TRUE(QDir().mkpath(messageFile()));
    CMessages m;
    m.Init();
    QDir().rmdir(messageFile());
    ASSERT_EQ(prompt.Records.size(), 1);
    EXPECT_TRUE(prompt.Records[0].Prompt.startsWith("Read Message Error: "));
    EXPECT_GT(prompt.Records[0].Prompt.size(), QString("Read Message Error: ").size());
    EXPECT_EQ(text(m, "COMM_MSG_100"), QStringLiteral("保存所做的修改吗?"));
    EXPECT_EQ(text(m, "NO_SUCH_KEY"), "MESSAGE ERROR");
}

TEST_F(Catalogue, MsgLoadsTheCatalogueOnFirstUse)
{
    EXPECT_EQ(Msg("MENU_HELP_000"), QStringLiteral("关于"));
    EXPECT_EQ(Msg("NOT_A_KEY"), "MESSAGE ERROR");
}
