#include "PlayerFixture.h"

#include "core/Class.h"
#include "player/CPlayers.h"

#include <vector>

namespace {

class CPlayersTest : public PlayerTest
{
protected:
    std::unique_ptr<CPlayers> makeList() { return Class::MakeCollection<CPlayers>(); }
};

} // namespace

TEST_F(CPlayersTest, StepsDefaultToThreeSecondsOnEmptyStore)
{
    auto players = makeList();
    EXPECT_DOUBLE_EQ(players->BackStep(), 3.0);
    EXPECT_DOUBLE_EQ(players->ForwordStep(), 3.0);
    EXPECT_DOUBLE_EQ(players->Speed(), 1.0);
}

TEST_F(CPlayersTest, StepsRoundTripThroughTheStore)
{
    {
        auto players = makeList();
        players->setBackStep(1.5);
        players->setForwordStep(0.25);
    }
    EXPECT_EQ(GetSetting(QStringLiteral("TimeOffset"), QStringLiteral("PlayBack")), QStringLiteral("1.5"));
    EXPECT_EQ(
        GetSetting(QStringLiteral("TimeOffset"), QStringLiteral("PlayForword")), QStringLiteral("0.25"));
    auto again = makeList();
    EXPECT_DOUBLE_EQ(again->BackStep(), 1.5);
    EXPECT_DOUBLE_EQ(again->ForwordStep(), 0.25);
}

TEST_F(CPlayersTest, UnreadableStepKeepsItsValue)
{
    SaveSetting(QStringLiteral("TimeOffset"), QStringLiteral("PlayBack"), QStringLiteral("lots"));
    SaveSetting(QStringLiteral("TimeOffset"), QStringLiteral("PlayForword"), QStringLiteral("5"));
    auto players = makeList();
    EXPECT_DOUBLE_EQ(players->BackStep(), 3.0);
    EXPECT_DOUBLE_EQ(players->ForwordStep(), 5.0);
}

TEST_F(CPlayersTest, CreateNumbersNamesAndAnnounces)
{
    auto players = makeList();
    std::vector<CPlayer *> created;
    players->Created = [&](CPlayer *p) {
        // The window already carries its key when the others hear of it.
        EXPECT_EQ(p->Window()->Tag(), QString::number(p->SerialNo()));
        created.push_back(p);
    };
    FakePlayerWindow w1, w2;
    CFakeMediaControl c1, c2;
    CPlayer *p1 = players->Create(&w1, &c1);
    CPlayer *p2 = players->Create(&w2, &c2);
    EXPECT_EQ(created, (std::vector<CPlayer *> { p1, p2 }));
    EXPECT_EQ(w1.tag, QStringLiteral("1"));
    EXPECT_EQ(w1.caption, QStringLiteral("播放器(1)"));
    EXPECT_EQ(w2.caption, QStringLiteral("播放器(2)"));
    EXPECT_EQ(players->Item(QStringLiteral("2")), p2);
    EXPECT_EQ(p2->collection(), players.get());
    EXPECT_EQ(p2->player(), &c2);
    EXPECT_EQ(players->SerialNo(), 2);
    EXPECT_TRUE(players->Exists(QStringLiteral("1")));
    EXPECT_FALSE(players->Exists(QStringLiteral("3")));
}

TEST_F(CPlayersTest, SerialsAreNeverReused)
{
    auto players = makeList();
    QStringList deleted;
    players->Deleted = [&](const QString &key) { deleted << key; };
    FakePlayerWindow w1, w2, w3;
    CFakeMediaControl c1, c2, c3;
    players->Create(&w1, &c1);
    players->Create(&w2, &c2);
    players->Delete(QStringLiteral("2"));
    players->Delete(QStringLiteral("7")); // unknown: nothing, no event
    EXPECT_EQ(deleted, QStringList(QStringLiteral("2")));
    CPlayer *p3 = players->Create(&w3, &c3);
    EXPECT_EQ(p3->SerialNo(), 3);
    EXPECT_EQ(w3.caption, QStringLiteral("播放器(3)"));
    players->Clear();
    EXPECT_EQ(players->Count(), 0);
    EXPECT_EQ(players->Create(&w1, &c1)->SerialNo(), 4);
}

TEST_F(CPlayersTest, NewPlayersTakeTheSharedValues)
{
    auto players = makeList();
    players->setSpeed(1.5);
    players->setBackStep(2.0);
    players->setForwordStep(5.0);
    FakePlayerWindow w;
    CFakeMediaControl c;
    CPlayer *p = players->Create(&w, &c);
    EXPECT_DOUBLE_EQ(p->Speed(), 1.5);
    EXPECT_DOUBLE_EQ(p->BackStep(), 2.0);
    EXPECT_DOUBLE_EQ(p->ForwordStep(), 5.0);
}

TEST_F(CPlayersTest, SharedValuesReachEveryPlayerAndTellTheTips)
{
    auto players = makeList();
    int told = 0;
    players->StepsChanged = [&] { ++told; };
    FakePlayerWindow w1, w2;
    CFakeMediaControl c1, c2;
    CPlayer *p1 = players->Create(&w1, &c1);
    CPlayer *p2 = players->Create(&w2, &c2);
    players->setSpeed(9.0);
    EXPECT_DOUBLE_EQ(players->Speed(), 9.0); // the list keeps what it was given
    EXPECT_DOUBLE_EQ(p1->Speed(), 2.0);
    EXPECT_DOUBLE_EQ(p2->Speed(), 2.0);
    players->setBackStep(0.5);
    players->setForwordStep(7.0);
    EXPECT_DOUBLE_EQ(p2->BackStep(), 0.5);
    EXPECT_DOUBLE_EQ(p1->ForwordStep(), 7.0);
    EXPECT_EQ(told, 2);
}

TEST_F(CPlayersTest, ResetRunsOnEveryPlayerWithAFile)
{
    auto players = makeList();
    FakePlayerWindow w1, w2;
    CFakeMediaControl c1, c2;
    players->Create(&w1, &c1)->setContent(QStringLiteral("/a.mkv"));
    players->Create(&w2, &c2);
    c1.Calls.clear();
    c2.Calls.clear();
    players->Reset();
    EXPECT_TRUE(c1.Calls.contains(QStringLiteral("stop")));
    EXPECT_TRUE(c2.Calls.isEmpty());
}

TEST_F(CPlayersTest, OpenFileFindsThePlayerByTagAndAnnouncesTheName)
{
    auto players = makeList();
    QList<CPlayer *> renamed;
    players->NameChanged = [&](CPlayer *p) { renamed << p; };
    FakePlayerWindow w1, w2;
    CFakeMediaControl c1, c2;
    players->Create(&w1, &c1);
    CPlayer *p2 = players->Create(&w2, &c2);
    players->OpenFile(&w2, QStringLiteral("/b.avi"));
    EXPECT_EQ(renamed, QList<CPlayer *> { p2 });
    EXPECT_EQ(p2->PlayerFileName(), QStringLiteral("/b.avi"));
    EXPECT_EQ(c1.URL(), QString());

    FakePlayerWindow stranger;
    stranger.tag = QStringLiteral("99");
    players->OpenFile(&stranger, QStringLiteral("/c.avi"));
    players->OpenFile(nullptr, QStringLiteral("/c.avi"));
    EXPECT_EQ(renamed.size(), 1);
}

TEST_F(CPlayersTest, AddTakesInAnExistingPlayer)
{
    auto players = makeList();
    players->setBackStep(1.0);
    FakePlayerWindow w;
    CFakeMediaControl c;
    players->Create(nullptr, &c);
    auto loose = std::make_unique<CPlayer>();
    loose->Init(0, &w, &c);
    CPlayer *added = players->Add(std::move(loose));
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->SerialNo(), 2);
    EXPECT_EQ(players->Item(QStringLiteral("2")), added);
    EXPECT_EQ(w.caption, QStringLiteral("播放器(2)"));
    EXPECT_DOUBLE_EQ(added->BackStep(), 1.0);

    EXPECT_EQ(players->Add(nullptr), nullptr);
    EXPECT_EQ(prompt.Messages().size(), 1);
    EXPECT_EQ(players->Count(), 2);
}
