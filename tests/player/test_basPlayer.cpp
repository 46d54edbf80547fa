#include "PlayerFixture.h"

#include "core/CHotKeys.h"
#include "core/Class.h"
#include "core/basTime.h"
#include "player/CPlayers.h"
#include "player/basPlayer.h"

namespace {

// Two opened players, both stopped at 10 s in a 60-second file.
class PlayerCommandTest : public PlayerTest
{
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        players = Class::MakeCollection<CPlayers>();
        for (int i = 0; i < 2; ++i) {
            controls[i].AutoStart = false;
            members[i] = players->Create(&windows[i], &controls[i]);
            members[i]->setContent(QStringLiteral("/film.mkv"));
            controls[i].setPositionDirect(10.0);
            controls[i].Calls.clear();
        }
        keys.setHOTKEY_PlayPause(KeyNameToCode(u"F3"));
        keys.setHOTKEY_PlayBack(KeyNameToCode(u"F4"));
        keys.setHOTKEY_PlayForword(KeyNameToCode(u"F6"));
        keys.setHOTKEY_Refresh(KeyNameToCode(u"F5"));
    }

    std::unique_ptr<CPlayers> players;
    FakePlayerWindow windows[2];
    CFakeMediaControl controls[2];
    CPlayer *members[2] = {};
    CHotKeys keys;
};

} // namespace

TEST_F(PlayerCommandTest, ActivePlayerAloneTakesTheCommand)
{
    PlayPause(*players, members[1]);
    EXPECT_EQ(controls[1].playState(), MediaPlayState::Playing);
    EXPECT_EQ(controls[0].playState(), MediaPlayState::Stopped);
    PlayForword(*players, members[0]);
    EXPECT_DOUBLE_EQ(controls[0].currentPosition(), 13.0);
    EXPECT_DOUBLE_EQ(controls[1].currentPosition(), 10.0);
}

TEST_F(PlayerCommandTest, WithoutActivePlayerEveryPlayerTakesIt)
{
    PlayPause(*players, nullptr);
    EXPECT_EQ(controls[0].playState(), MediaPlayState::Playing);
    EXPECT_EQ(controls[1].playState(), MediaPlayState::Playing);
    players->setBackStep(4.0);
    PlayBack(*players, nullptr);
    EXPECT_DOUBLE_EQ(controls[0].currentPosition(), 6.0);
    EXPECT_DOUBLE_EQ(controls[1].currentPosition(), 6.0);
    PlayReset(*players, nullptr);
    EXPECT_TRUE(controls[0].Calls.contains(QStringLiteral("seek 6")));
    EXPECT_TRUE(controls[1].Calls.contains(QStringLiteral("stop")));
}

TEST_F(PlayerCommandTest, PlayerWindowKeysMapToCommands)
{
    EXPECT_EQ(PlayerKeyCommandOf(KeyNameToCode(u"F3"), keys), PlayerKeyCommand::PlayPause);
    EXPECT_EQ(PlayerKeyCommandOf(KeyNameToCode(u"F4"), keys), PlayerKeyCommand::PlayBack);
    EXPECT_EQ(PlayerKeyCommandOf(KeyNameToCode(u"F6"), keys), PlayerKeyCommand::PlayForword);
    // Refresh is not a player window key; an undefined hot key never matches.
    EXPECT_EQ(PlayerKeyCommandOf(KeyNameToCode(u"F5"), keys), PlayerKeyCommand::None);
    keys.setHOTKEY_PlayPause(0);
    EXPECT_EQ(PlayerKeyCommandOf(0, keys), PlayerKeyCommand::None);
    // The same key for two commands: the back jump wins.
    keys.setHOTKEY_PlayForword(KeyNameToCode(u"F4"));
    EXPECT_EQ(PlayerKeyCommandOf(KeyNameToCode(u"F4"), keys), PlayerKeyCommand::PlayBack);

    RunPlayerKeyCommand(PlayerKeyCommand::PlayBack, *players, members[0]);
    EXPECT_DOUBLE_EQ(controls[0].currentPosition(), 7.0);
    RunPlayerKeyCommand(PlayerKeyCommand::None, *players, nullptr);
    EXPECT_DOUBLE_EQ(controls[1].currentPosition(), 10.0);
}

TEST_F(PlayerCommandTest, CommandSurvivesAWindowClosingDuringAMessage)
{
    controls[0].Failing << QStringLiteral("playState");
    prompt.Echo = [&](const CScriptedPrompt::Record &) { players->Delete(QStringLiteral("2")); };
    PlayPause(*players, nullptr);
    EXPECT_EQ(prompt.Messages(), QStringList(QStringLiteral("状态改变错误")));
    EXPECT_EQ(players->Count(), 1);
}

TEST(basPlayer, SpeedBandGivesUnclampedTip)
{
    EXPECT_DOUBLE_EQ(SliderSpeed(10, 0), 1.0);
    EXPECT_DOUBLE_EQ(SliderSpeed(15, 0), 1.5);
    EXPECT_DOUBLE_EQ(SliderSpeed(7, 2), 2.1);
    EXPECT_DOUBLE_EQ(SliderSpeed(0, 3), 0.0);
    EXPECT_EQ(SliderSpeedTip(20, 4), QStringLiteral("播放速度1000%"));
    EXPECT_EQ(SliderSpeedTip(0, 0), QStringLiteral("播放速度0%"));
    EXPECT_EQ(SliderSpeedTip(13, 1), QStringLiteral("播放速度260%"));
    EXPECT_EQ(SpeedListEntries(),
        QStringList({ QStringLiteral("1倍"), QStringLiteral("2倍"), QStringLiteral("3倍"),
            QStringLiteral("4倍"), QStringLiteral("5倍") }));
}

TEST(basPlayer, ToolTipsShowStepsAndKeys)
{
    CHotKeys keys;
    keys.setHOTKEY_PlayBack(KeyNameToCode(u"F4"));
    keys.setHOTKEY_PlayForword(KeyNameToCode(u"F6"));
    keys.setHOTKEY_Refresh(KeyNameToCode(u"F5"));
    EXPECT_EQ(SmallBackTip(3.0, keys), QStringLiteral("后退3秒(F4)"));
    EXPECT_EQ(SmallForwordTip(0.5, keys), QStringLiteral("前进0.5秒(F6)"));
    EXPECT_EQ(ResetTip(keys), QStringLiteral("更新(F5)"));
    keys.setHOTKEY_PlayBack(0);
    EXPECT_EQ(SmallBackTip(2.0, keys), QStringLiteral("后退2秒(Undefined)"));
}

TEST(basPlayer, PictureSizeFallsBackTo640By480)
{
    EXPECT_EQ(PictureSize(0, 0), QSize(640, 480));
    EXPECT_EQ(PictureSize(720, 0), QSize(720, 480));
    EXPECT_EQ(PictureSize(0, 576), QSize(640, 576));
    EXPECT_EQ(PictureSize(1920, 1080), QSize(1920, 1080));
}

TEST(basPlayer, PositionPanelText)
{
    EXPECT_EQ(PositionPanelInitialText(), QStringLiteral(" X=0000  Y=0000 "));
    EXPECT_EQ(PositionPanelText(1, 1), QStringLiteral(" X=1  Y=1  "));
    EXPECT_EQ(PositionPanelText(320, 24), QStringLiteral(" X=320  Y=24  "));
}
