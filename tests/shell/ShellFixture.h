#pragma once

#include "core/CScriptedPrompt.h"
#include "core/basMain.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// Each test gets its own settings store and program folder, a scripted prompt and the
// module flags cleared; everything goes back afterwards.
class ShellFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_oldSettings = SettingsFile();
        m_oldProgram = ProgramFolder();
        SetSettingsFile(m_dir.filePath(QStringLiteral("config/Velmar.ini")));
        QDir().mkpath(m_dir.filePath(QStringLiteral("program")));
        SetProgramFolder(m_dir.filePath(QStringLiteral("program")));
        SetPrompt(&prompt);
        AutoGetClipBoard = OnTop = AvoidOverlapTiming = ModernFiles = false;
    }
    void TearDown() override
    {
        SetPrompt(nullptr);
        SetNow({});
        SetSettingsFile(m_oldSettings);
        SetProgramFolder(m_oldProgram);
        AutoGetClipBoard = OnTop = AvoidOverlapTiming = ModernFiles = false;
    }

    // Replaces the store with the given INI text, before it is first read.
    void WriteStore(const QByteArray &ini)
    {
        const QString path = m_dir.filePath(QStringLiteral("config/Velmar.ini"));
        QDir().mkpath(m_dir.filePath(QStringLiteral("config")));
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(ini);
        f.close();
        SetSettingsFile(path);
    }

    QString Program() const { return ProgramFolder(); }
    QString TempPath(const QString &name) const { return m_dir.filePath(name); }

    CScriptedPrompt prompt;

private:
    QTemporaryDir m_dir;
    QString m_oldSettings;
    QString m_oldProgram;
};
