#include "ShellFixture.h"

#include "shell/CRecentFile.h"

namespace {

class RecentFileTest : public ShellFixture
{
protected:
    QStringList Names(const CRecentFile &r)
    {
        QStringList out;
        for (int slot = 1; slot <= r.Length(); ++slot)
            out << r.FileName(slot);
        return out;
    }
};

TEST_F(RecentFileTest, NewFilesGoFirstAndTheLastFallsOut)
{
    CRecentFile r;
    r.Init();
    ASSERT_EQ(r.Length(), 5);
    for (const char *n : { "/a.ass", "/b.srt", "/c.txt", "/d.rtf", "/e.avi", "/f.lrc" })
        r.InsertRecentFileList(QString::fromLatin1(n), ScriptType::ASS);
    EXPECT_EQ(Names(r), (QStringList { "/f.lrc", "/e.avi", "/d.rtf", "/c.txt", "/b.srt" }));
}

TEST_F(RecentFileTest, AListedFileMovesUpAndCaseDoesNotMatter)
{
    CRecentFile r;
    r.Init(4);
    r.InsertRecentFileList(QStringLiteral("C:\\A.SRT"), ScriptType::SRT);
    r.InsertRecentFileList(QStringLiteral("/x.ass"), ScriptType::ASS);
    r.InsertRecentFileList(QStringLiteral("/movie.mkv"), ScriptType::Video);
    r.InsertRecentFileList(QStringLiteral("c:\\a.srt"), ScriptType::SRT);
    EXPECT_EQ(Names(r), (QStringList { "c:\\a.srt", "/movie.mkv", "/x.ass", "" }));
    EXPECT_EQ(r.FileType(2), ScriptType::Video);
    EXPECT_EQ(r.FileType(3), ScriptType::ASS);

    // The first again: nothing moves.
    r.InsertRecentFileList(QStringLiteral("c:\\a.srt"), ScriptType::SRT);
    EXPECT_EQ(Names(r), (QStringList { "c:\\a.srt", "/movie.mkv", "/x.ass", "" }));
    // The middle one comes up and the others keep their order.
    r.InsertRecentFileList(QStringLiteral("/X.ASS"), ScriptType::SSA);
    EXPECT_EQ(Names(r), (QStringList { "/X.ASS", "c:\\a.srt", "/movie.mkv", "" }));
    EXPECT_EQ(r.FileType(1), ScriptType::SSA);
    EXPECT_EQ(r.FileType(3), ScriptType::Video);
}

TEST_F(RecentFileTest, TheMenuShowsUsedSlotsWithTheirLabels)
{
    CRecentFile r;
    std::vector<RecentFileMenuEntry> shown;
    int told = 0;
    r.MenuChanged = [&](const std::vector<RecentFileMenuEntry> &m) {
        shown = m;
        ++told;
    };
    r.Init(3);
    EXPECT_EQ(told, 1);
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_FALSE(shown[0].Visible);

    r.InsertRecentFileList(QStringLiteral("/s/ep1.sst"), ScriptType::SST);
    r.InsertRecentFileList(QStringLiteral("/d/draft.txt"), ScriptType::Plain);
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[0].Caption, QStringLiteral("1: 翻译: /d/draft.txt"));
    EXPECT_EQ(shown[1].Caption, QStringLiteral("2: 时间轴: /s/ep1.sst"));
    EXPECT_TRUE(shown[1].Visible);
    EXPECT_FALSE(shown[2].Visible);
    EXPECT_EQ(shown[2].Slot, 3);
    EXPECT_EQ(r.Menu().size(), 3u);
}

TEST_F(RecentFileTest, TheStoreKeepsTheListBetweenRuns)
{
    {
        CRecentFile r;
        r.Init();
        r.InsertRecentFileList(QStringLiteral("/one.ass"), ScriptType::ASS);
        r.InsertRecentFileList(QStringLiteral("/two.mp4"), ScriptType::Video);
    }
    EXPECT_EQ(GetSetting(QStringLiteral("Recent"), QStringLiteral("FileName1")), QStringLiteral("/two.mp4"));
    EXPECT_EQ(GetSetting(QStringLiteral("Recent"), QStringLiteral("FileType1")), QStringLiteral("100"));
    EXPECT_EQ(
        GetSetting(QStringLiteral("Recent"), QStringLiteral("FileName5"), QStringLiteral("x")), QString());

    CRecentFile again;
    again.Init();
    EXPECT_EQ(again.FileName(1), QStringLiteral("/two.mp4"));
    EXPECT_EQ(again.FileType(1), ScriptType::Video);
    EXPECT_EQ(again.FileName(2), QStringLiteral("/one.ass"));
    EXPECT_EQ(again.FileType(2), ScriptType::ASS);
}

TEST_F(RecentFileTest, CountAndHostileTypesFromTheStore)
{
    WriteStore(
        "[RecentFiles]\nCount=2\n[Recent]\nFileName1=/k.ass\nFileType1=zz\nFileName2=/m.srt\nFileType2=4\n");
    CRecentFile r;
    r.Init();
    EXPECT_EQ(r.Length(), 2);
    EXPECT_EQ(r.FileType(1), ScriptType::Plain);
    EXPECT_EQ(r.FileType(2), ScriptType::SRT);
    EXPECT_EQ(r.FileName(3), QString()); // beyond the list
}

TEST_F(RecentFileTest, ALengthOfZeroHoldsAndWritesNothing)
{
    CRecentFile r;
    r.Init(0);
    r.InsertRecentFileList(QStringLiteral("/a.ass"), ScriptType::ASS);
    EXPECT_EQ(r.Length(), 0);
    EXPECT_TRUE(r.Menu().empty());
    EXPECT_EQ(GetSetting(QStringLiteral("Recent"), QStringLiteral("FileName1"), QStringLiteral("none")),
        QStringLiteral("none"));
}

TEST(RecentFileLabels, TypesAndLabels)
{
    EXPECT_EQ(CRecentFile::ScripyTypeName(ScriptType::Plain), QStringLiteral("翻译"));
    EXPECT_EQ(CRecentFile::ScripyTypeName(ScriptType::RichText), QStringLiteral("翻译"));
    for (int t : { 1, 2, 3, 4, 5, 7, 8, 9 })
        EXPECT_EQ(CRecentFile::ScripyTypeName(ScriptType(t)), QStringLiteral("时间轴")) << t;
    EXPECT_EQ(CRecentFile::ScripyTypeName(ScriptType::Video), QStringLiteral("动画"));
    EXPECT_EQ(CRecentFile::ScripyTypeName(ScriptType(10)), QStringLiteral("未知类型"));
    EXPECT_EQ(CRecentFile::ScripyTypeName(ScriptType(-1)), QStringLiteral("未知类型"));

    EXPECT_EQ(CRecentFile::ScripyType(QStringLiteral("翻译")), ScriptType::Plain);
    EXPECT_EQ(CRecentFile::ScripyType(QStringLiteral("时间轴")), ScriptType::SSA);
    EXPECT_EQ(CRecentFile::ScripyType(QStringLiteral("动画")), ScriptType::Video);
    EXPECT_EQ(CRecentFile::ScripyType(QStringLiteral("未知类型")), ScriptType::Plain);
}

} // namespace
