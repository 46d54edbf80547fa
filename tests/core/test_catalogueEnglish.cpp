// The English catalogue: complete, shaped like the built-in one where the code relies on
// the shape, and loaded by the language choice under "Message.txt".
#include "core/CMessages.h"
#include "core/CScriptedPrompt.h"
#include "core/basLanguage.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// Both texts through the catalogue's own parser.
struct ParsedCatalogues
{
    CMessages Chinese;
    CMessages English;
    ParsedCatalogues()
    {
        Chinese.setContent(DefaultMessageText());
        English.setContent(EnglishMessageText());
    }
};

// What the code counts on inside a text: line-break codes, the file dialog's "|" fields
// and patterns, the shown and hidden marks of the column menu, a hot key's name.
std::string marks(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral(R"(\\[Nn]|\*\.[\w*]+|\||[☆★]|^F\d+:)"));
    QStringList found;
    for (const QRegularExpressionMatch &m : pattern.globalMatch(text))
        found << m.captured();
    found.sort();
    return found.join(u' ').toStdString();
}

} // namespace

TEST(EnglishCatalogue, EveryBuiltInKeyHasAnEnglishTextWithTheSameMarks)
{
    ParsedCatalogues c;
    ASSERT_EQ(c.Chinese.Count(), 297);
    for (qsizetype i = 0; i < c.Chinese.Count(); ++i) {
        const CMessage *zh = c.Chinese.At(i);
        CMessage *en = c.English.item(zh->MessageID);
        if (!en) {
            ADD_FAILURE() << "the English catalogue (src/core/basMessageTextEnglish.cpp) has no entry for "
                          << zh->MessageID.toStdString();
            continue;
        }
        EXPECT_FALSE(en->Content().trimmed().isEmpty())
            << "the English text of " << zh->MessageID.toStdString() << " is empty";
        EXPECT_EQ(marks(en->Content()), marks(c.Chinese.item(zh->MessageID)->Content()))
            << "the English text of " << zh->MessageID.toStdString() << " lost or gained a mark";
    }
    // A key the built-in catalogue lacks is a misspelt key (or one the table must not get).
    for (qsizetype i = 0; i < c.English.Count(); ++i)
        EXPECT_TRUE(c.Chinese.Exists(c.English.At(i)->MessageID))
            << c.English.At(i)->MessageID.toStdString() << " is not a key of the built-in catalogue";
}

// The texts of our own additions: each in both languages, with the same place-holders, and
// none taking a key of the built-in catalogue.
TEST(OwnTexts, EveryKeyHasBothLanguagesAndNoneShadowsTheCatalogue)
{
    ParsedCatalogues c;
    CMessages zh, en;
    zh.setContent(OwnMessageText(false));
    en.setContent(OwnMessageText(true));
    ASSERT_EQ(zh.Count(), en.Count());
    static const QRegularExpression placeHolders(QStringLiteral("%\\d"));
    for (qsizetype i = 0; i < zh.Count(); ++i) {
        const QString key = zh.At(i)->MessageID;
        CMessage *english = en.item(key);
        ASSERT_NE(english, nullptr) << key.toStdString();
        EXPECT_TRUE(key.startsWith(u"VELMAR_")) << key.toStdString();
        EXPECT_FALSE(c.Chinese.Exists(key)) << key.toStdString() << " is a key of the built-in catalogue";
        EXPECT_FALSE(zh.At(i)->Content().isEmpty() || english->Content().isEmpty()) << key.toStdString();
        EXPECT_EQ(zh.At(i)->Content().count(placeHolders), english->Content().count(placeHolders))
            << key.toStdString();
        EXPECT_EQ(marks(zh.At(i)->Content()), marks(english->Content())) << key.toStdString();
    }
}

class InterfaceLanguage : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_oldSettings = SettingsFile();
        m_oldProgram = ProgramFolder();
        SetSettingsFile(m_dir.filePath(QStringLiteral("Velmar.ini")));
        SetProgramFolder(m_dir.path());
        SetPrompt(&prompt);
    }
    void TearDown() override
    {
        SetRunInterfaceLanguage({});
        SetPrompt(nullptr);
        SetSettingsFile(m_oldSettings);
        SetProgramFolder(m_oldProgram);
        LoadMessages();
    }
    static QString menuFile()
    {
        LoadMessages();
        return Msg(QStringLiteral("MENU_FILE_000"));
    }
    void writeMessageFile(const QByteArray &bytes)
    {
        QFile f(m_dir.filePath(QStringLiteral("Message.txt")));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }

    QTemporaryDir m_dir;
    QString m_oldSettings;
    QString m_oldProgram;
    CScriptedPrompt prompt;
};

TEST_F(InterfaceLanguage, StoreAndRunChooseMessageFileStillWins)
{
    // Nothing chosen: Chinese, and nothing is written to the store.
    EXPECT_EQ(menuFile(), QStringLiteral("文件"));
    EXPECT_TRUE(GetSetting(QStringLiteral("Setting"), QStringLiteral("Language")).isEmpty());

    ASSERT_TRUE(SaveInterfaceLanguage(QStringLiteral("en")));
    EXPECT_EQ(menuFile(), QStringLiteral("File"));
    // The run's choice goes before the stored one, for this run only.
    SetRunInterfaceLanguage(QStringLiteral("zh"));
    EXPECT_EQ(menuFile(), QStringLiteral("文件"));
    SetRunInterfaceLanguage({});
    EXPECT_EQ(StoredInterfaceLanguage(), QStringLiteral("en"));

    // An unknown stored language is Chinese, and is refused when saved.
    SaveSetting(QStringLiteral("Setting"), QStringLiteral("Language"), QStringLiteral("fr"));
    EXPECT_EQ(menuFile(), QStringLiteral("文件"));
    EXPECT_FALSE(SaveInterfaceLanguage(QStringLiteral("fr")));

    // "Message.txt" overrides the English as it does the Chinese; keys the table lacks
    // still read as the fall-back text.
    SetRunInterfaceLanguage(QStringLiteral("en"));
    writeMessageFile("MENU_FILE_000 = Datei\r\n");
    EXPECT_EQ(menuFile(), QStringLiteral("Datei"));
    EXPECT_EQ(Msg(QStringLiteral("MENU_OPTION_000")), QStringLiteral("Options"));
    EXPECT_EQ(Msg(QStringLiteral("MENU_TIMING_501")), QStringLiteral("MESSAGE ERROR"));
    // Our own texts follow the language and give way to "Message.txt" alike.
    EXPECT_EQ(Msg(QStringLiteral("VELMAR_WAVE_200")), QStringLiteral("This file has no audio track"));
    writeMessageFile("VELMAR_WAVE_200 = keine Tonspur\r\n");
    LoadMessages();
    EXPECT_EQ(Msg(QStringLiteral("VELMAR_WAVE_200")), QStringLiteral("keine Tonspur"));
    EXPECT_EQ(Messages->FileName(), QStringLiteral("Message.txt"));
}
