#include "ScriptFixture.h"

#include "core/Class.h"
#include "core/IPlayerWindow.h"
#include "core/VelmarError.h"
#include "core/basMain.h"
#include "core/basPlatform.h"
#include "formats/CTiming.h"
#include "player/CPlayer.h"
#include "script/CSubInfo.h"

#include <QDateTime>

namespace {

class FakePlayer : public IPlayerWindow
{
public:
    FakePlayer()
    {
        m_player.setImageSourceWidth(720);
        m_player.setImageSourceHeight(480);
    }
    QString Tag() const override { return QStringLiteral("1"); }
    void setTag(const QString &) override { }
    QString Caption() const override { return QStringLiteral("播放器(1)"); }
    void setCaption(const QString &) override { }
    CPlayer *player() const override { return &m_player; }

private:
    mutable CPlayer m_player;
};

class SubInfoTest : public ScriptTest
{
protected:
    void SetUp() override
    {
        ScriptTest::SetUp();
        SetNow(QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)));
        info = Class::Make<CSubInfo>(nullptr);
    }
    void TearDown() override
    {
        SetNow(QDateTime());
        ScriptTest::TearDown();
    }
    std::unique_ptr<CSubInfo> info;
};

} // namespace

TEST_F(SubInfoTest, DefaultsAndMissingSection)
{
    info->setContent(QStringLiteral("[V4+ Styles]\r\nTitle: not a head"));
    EXPECT_EQ(info->Title(), QStringLiteral("云帆字幕"));
    EXPECT_EQ(info->OriginalScript(), QStringLiteral("云帆字幕组"));
    EXPECT_EQ(info->ScriptType(), ScriptType::ASS);
    EXPECT_EQ(info->Timer(), 100);
    EXPECT_EQ(info->SMIStyleType, QStringLiteral("text/css"));
}

TEST_F(SubInfoTest, ReadsKeysCommentsAndStopsAtTheNextSection)
{
    info->setContent(crlf({ QStringLiteral("  [script info] "), QStringLiteral("; first comment"),
        QStringLiteral("!:second"), QStringLiteral("; // generated, dropped"), QStringLiteral("Title: X"),
        QStringLiteral(" original script :Me"), QStringLiteral("ScriptType: V4.00+"),
        QStringLiteral("Collisions: reverse"), QStringLiteral("PlayResX: 640"),
        QStringLiteral("PlayResY: abc"), QStringLiteral("Timer: 100,0000"), QStringLiteral("WrapStyle: 2"),
        QStringLiteral("Unknown Key: 1"), QStringLiteral("no colon here"), QStringLiteral("[V4+ Styles]"),
        QStringLiteral("Title: late") }));
    EXPECT_EQ(info->Comment(), QStringLiteral(" first comment\r\nsecond"));
    EXPECT_EQ(info->Title(), QStringLiteral(" X"));
    EXPECT_EQ(info->OriginalScript(), QStringLiteral("Me"));
    EXPECT_EQ(info->ScriptType(), ScriptType::SSA); // the key's value is compared case-sensitively
    EXPECT_EQ(info->Collisions(), 1);
    EXPECT_EQ(info->PlayResX(), 640);
    EXPECT_EQ(info->PlayResY(), 0);
    EXPECT_EQ(info->Timer(), 1000000); // grouping comma: read as a number, as Basic does
    EXPECT_EQ(info->WrapStyle(), 2);
}

TEST_F(SubInfoTest, WritesTheAssHead)
{
    info->setContent(crlf({ QStringLiteral("[Script Info]"), QStringLiteral("; keep me"),
        QStringLiteral("Title: X"), QStringLiteral("Original Script:"), QStringLiteral("Original Timing: T"),
        QStringLiteral("PlayResY: 480"), QStringLiteral("ScriptType: v4.00+") }));
    const QString expected = QStringLiteral("[Script Info]\r\n"
                                            ";  keep me\r\n"
                                            "; // 此字幕由Velmar生成  2026-01-02 03:04:05\r\n")
        + QStringLiteral("; // ") + Msg(QStringLiteral("SUBINFO_MSG_103")) + QStringLiteral(" ") + VersionNo
        + QStringLiteral("\r\n");
    const QString out = info->Content();
    EXPECT_TRUE(out.startsWith(expected)) << out.toStdString();
    EXPECT_TRUE(out.endsWith(QStringLiteral("Title: X\r\n"
                                            "Original Script: 未设定\r\n"
                                            "Original Timing: T\r\n"
                                            "Synch Point:0\r\n"
                                            "ScriptType:v4.00+\r\n"
                                            "Collisions:Normal\r\n"
                                            "PlayResY:480\r\n"
                                            "Timer:100.0000\r\n"
                                            "WrapStyle:0\r\n")))
        << out.toStdString();
    EXPECT_EQ(out.count(QStringLiteral("; // ")), 4);
    info->setTitle(QString());
    EXPECT_TRUE(info->Content().contains(QStringLiteral("\r\nTitle: 未设定\r\n")));
}

TEST_F(SubInfoTest, GeneratedCommentFollowsTheClock)
{
    EXPECT_TRUE(
        info->VelmarComment().startsWith(QStringLiteral("此字幕由Velmar生成  2026-01-02 03:04:05\r\n")));
    EXPECT_EQ(info->VelmarComment().count(QStringLiteral("\r\n")), 4);
    SetNow(QDateTime(QDate(2027, 5, 6), QTime(7, 8, 9)));
    info->Clear();
    EXPECT_TRUE(info->VelmarComment().contains(QStringLiteral("2027-05-06 07:08:09")));
}

TEST_F(SubInfoTest, ClearKeepsSizeAndOtherHeads)
{
    info->setPlayResX(640);
    info->SSTHead = QStringLiteral("st_format 2");
    info->setTitle(QStringLiteral("x"));
    info->setLrcOffset(5);
    info->setScriptType(ScriptType::LRC);
    info->Clear();
    EXPECT_EQ(info->PlayResX(), 640);
    EXPECT_EQ(info->SSTHead, QStringLiteral("st_format 2"));
    EXPECT_EQ(info->Title(), QStringLiteral("云帆字幕"));
    EXPECT_EQ(info->LrcOffset(), 0);
    EXPECT_EQ(info->ScriptType(), ScriptType::ASS);
}

TEST_F(SubInfoTest, NamesAndTheirFault)
{
    int type = 0;
    for (const char *name : { "SSA V4.00", "AAS V4.00+", "SAMI" }) {
        info->setScriptType(ScriptType(++type));
        EXPECT_EQ(info->ScriptTypeName(), QString::fromLatin1(name));
    }
    info->setScriptType(ScriptType::SRT);
    int number = 0;
    try {
        info->ScriptTypeName();
    } catch (const VelmarError &e) {
        number = e.Number();
    }
    EXPECT_EQ(number, 5);
    EXPECT_EQ(info->SubCollisionsName(), QStringLiteral("Normal"));
    info->setCollisions(1);
    EXPECT_EQ(info->SubCollisionsName(), QStringLiteral("Reverse"));
}

TEST_F(SubInfoTest, OtherHeads)
{
    info->setScriptType(ScriptType::LRC);
    EXPECT_EQ(info->Content(), QString());
    info->setLrcName(QStringLiteral("歌"));
    info->setLrcEditor(QStringLiteral("me"));
    info->setLrcOffset(-0.5);
    EXPECT_EQ(info->Content(), QStringLiteral("[ti:歌]\r\n[by:me]\r\n[offset:-0.5]\r\n"));

    info->setScriptType(ScriptType::SST);
    info->SSTHead = QStringLiteral("st_format\t2");
    EXPECT_EQ(info->Content(), QStringLiteral("st_format\t2"));

    info->setScriptType(ScriptType::SAMI);
    const QString sami = info->Content();
    EXPECT_TRUE(sami.startsWith(
        QStringLiteral("<HEAD>\r\n<TITLE>云帆字幕</TITLE>\r\n<!--\r\n; // 此字幕由Velmar生成")));
    EXPECT_TRUE(sami.endsWith(QStringLiteral(
        "-->\r\n<STYLE type\"text/css\">\r\n<!--\r\n"
        "P {margin-left:8pt; margin-right:8pt;margin-bottom:2pt;margin-top:6pt;text-align:center;}\r\n"
        "#Normal {name:标准字型;font-family:Verdana;font-size:16pt;}\r\n-->\r\n</STYLE>\r\n</HEAD>\r\n")));
    info->setScriptType(ScriptType::SRT);
    EXPECT_EQ(info->Content(), QString());
}

TEST_F(SubInfoTest, PictureSizeComesFromThePlayer)
{
    auto timing = std::make_unique<CTiming>();
    timing->Init(1, nullptr);
    timing->ScriptInfo->setPlayResX(320);
    timing->ScriptInfo->UpdateAVISize();
    EXPECT_EQ(timing->ScriptInfo->PlayResX(), 320); // no player: kept
    FakePlayer player;
    timing->setPlayerWindow(&player);
    timing->ScriptInfo->UpdateAVISize();
    EXPECT_EQ(timing->ScriptInfo->PlayResX(), 720);
    EXPECT_EQ(timing->ScriptInfo->PlayResY(), 480);
    auto fresh = Class::Make<CSubInfo>(timing.get());
    EXPECT_EQ(fresh->PlayResY(), 480);
}
