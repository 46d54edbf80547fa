#pragma once

#include "core/CScriptedPrompt.h"
#include "core/IPlayerWindow.h"
#include "core/basSetting.h"
#include "player/CFakeMediaControl.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

// A window that only holds what the player documents write into it.
class FakePlayerWindow : public IPlayerWindow
{
public:
    QString Tag() const override { return tag; }
    void setTag(const QString &t) override { tag = t; }
    QString Caption() const override { return caption; }
    void setCaption(const QString &c) override { caption = c; }
    CPlayer *player() const override { return document; }

    QString tag;
    QString caption;
    CPlayer *document = nullptr;
};

// Scripted prompt and a settings store of the test's own.
class PlayerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        previousSettings = SettingsFile();
        SetSettingsFile(dir.filePath(QStringLiteral("Velmar.ini")));
    }
    void TearDown() override
    {
        SetPrompt(nullptr);
        SetSettingsFile(previousSettings);
    }

    CScriptedPrompt prompt;
    QTemporaryDir dir;
    QString previousSettings;
};
