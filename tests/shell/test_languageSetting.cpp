// The interface language in the settings dialog's rules, and English texts that the code
// joins to values.
#include "core/CHotKeys.h"
#include "core/CScriptedPrompt.h"
#include "core/basLanguage.h"
#include "core/basMain.h"
#include "core/basSetting.h"
#include "core/basTime.h"
#include "player/basPlayer.h"
#include "shell/CSettingDialogModel.h"
#include "shell/basFrame.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class LanguageSetting : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_oldSettings = SettingsFile();
        SetSettingsFile(m_dir.filePath(QStringLiteral("Velmar.ini")));
        SetPrompt(&prompt);
    }
    void TearDown() override
    {
        SetRunInterfaceLanguage({});
        SetPrompt(nullptr);
        SetSettingsFile(m_oldSettings);
        LoadMessages();
    }
    static QString storedValue() { return GetSetting(QStringLiteral("Setting"), QStringLiteral("Language")); }

    QTemporaryDir m_dir;
    QString m_oldSettings;
    CScriptedPrompt prompt;
};

} // namespace

TEST_F(LanguageSetting, StoredOnlyWhenChangedAndTheChangeIsAnnounced)
{
    CHotKeys keys;
    AutoSaveSettings autoSave;
    CSettingDialogModel model;
    model.Init(keys, autoSave);
    EXPECT_EQ(model.cmbLanguage, QStringLiteral("zh"));
    // OK without a change writes no language: the store holds only what it always held.
    model.BeginShow();
    ASSERT_TRUE(model.OK(keys, autoSave));
    EXPECT_FALSE(model.EndShow().LanguageChanged);
    EXPECT_TRUE(storedValue().isEmpty());
    EXPECT_TRUE(prompt.Messages().isEmpty());

    model.Init(keys, autoSave);
    model.BeginShow();
    model.cmbLanguage = QStringLiteral("en");
    ASSERT_TRUE(model.OK(keys, autoSave));
    EXPECT_TRUE(model.EndShow().LanguageChanged);
    EXPECT_EQ(storedValue(), QStringLiteral("en"));
    EXPECT_EQ(prompt.Messages(), QStringList { LanguageChangeNotice() });

    // Cancel keeps the stored choice; a run's own language is not the stored one.
    SetRunInterfaceLanguage(QStringLiteral("zh"));
    model.Init(keys, autoSave);
    EXPECT_EQ(model.cmbLanguage, QStringLiteral("en"));
    model.BeginShow();
    model.cmbLanguage = QStringLiteral("zh");
    model.Cancel();
    EXPECT_FALSE(model.EndShow().LanguageChanged);
    EXPECT_EQ(storedValue(), QStringLiteral("en"));
}

TEST_F(LanguageSetting, EnglishTextsJoinedByTheCodeKeepTheirSpaces)
{
    // The catalogue's parser trims blanks; the seams of joined English texts survive it.
    SetRunInterfaceLanguage(QStringLiteral("en"));
    LoadMessages();
    CHotKeys keys;
    keys.setHOTKEY_PlayBack(qint16(KeyNameToCode(u"F4")));
    EXPECT_EQ(StepDialogTitle(true), QStringLiteral("Back\u00A0step (seconds):"));
    EXPECT_EQ(SmallBackTip(3, keys), QStringLiteral("Back\u00A03s\u00A0(F4)"));
    EXPECT_EQ(StatusPanelText(QStringLiteral("Back"), keys, 2.5, 3), QStringLiteral("F4:  Back  2.5s\u00A0"));
}
