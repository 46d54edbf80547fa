#include "ShellFixture.h"

#include "core/basBackup.h"
#include "core/basText.h"
#include "shell/CAutoSave.h"

#include <QFileInfo>
#include <csignal>
#include <stdexcept>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// A document that records the type and option it was read with.
class FakeDocument : public IAutoSaveDocument
{
public:
    FakeDocument(Kind kind, QString text, ::ScriptType type = ::ScriptType::Plain, qint32 option = 0)
        : kind(kind)
        , text(std::move(text))
        , type(type)
        , option(option)
    { }
    Kind AutoSaveKind() const override { return kind; }
    QString Content() override
    {
        seenType = type;
        seenOption = option;
        if (fail)
            throw std::runtime_error("disk gone");
        return text;
    }
    ::ScriptType ScriptType() const override { return type; }
    void setScriptType(::ScriptType t) override { type = t; }
    qint32 TimingOption() const override { return option; }
    void setTimingOption(qint32 o) override { option = o; }

    Kind kind;
    QString text;
    ::ScriptType type;
    qint32 option;
    ::ScriptType seenType = ::ScriptType(-1);
    qint32 seenOption = -1;
    bool fail = false;
};

QByteArray readAll(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return "<missing>";
    return f.readAll();
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

class AutoSaveTest : public ShellFixture
{
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        SetNow(QDateTime(QDate(2024, 3, 9), QTime(7, 5, 4)));
        save.StatusMessage = [this](const QString &t) { status << t; };
    }
    // Ticks until a run happens; returns the number of ticks it took.
    int TicksToRun(const std::vector<IAutoSaveDocument *> &docs, int limit = 1000)
    {
        for (int i = 1; i <= limit; ++i)
            if (save.Tick(docs))
                return i;
        return -1;
    }
    CAutoSave save;
    QStringList status;
};

TEST_F(AutoSaveTest, TheCounterRunsEveryAutoSaveTimeTicks)
{
    save.AutoSaveTime = 3;
    EXPECT_EQ(TicksToRun({}), 3);
    EXPECT_EQ(TicksToRun({}), 3);

    save.AutoSaveTime = 1;
    EXPECT_EQ(TicksToRun({}), 1);
    EXPECT_EQ(TicksToRun({}), 1);

    // Lowered below a running counter: the next tick starts from the new value.
    // Raised while the counter stands at 1: that tick still runs.
    save.AutoSaveTime = 100;
    EXPECT_TRUE(save.Tick({}));
    EXPECT_EQ(save.Counter(), 100);
    EXPECT_FALSE(save.Tick({}));
    EXPECT_EQ(save.Counter(), 99);
    save.AutoSaveTime = 4;
    EXPECT_EQ(TicksToRun({}), 4);
}

TEST_F(AutoSaveTest, EachOpenDocumentIsWrittenWithTheStamp)
{
    save.AutoSaveTime = 1;
    FakeDocument srt(IAutoSaveDocument::Timing, QStringLiteral("[Script Info]\r\n对白"), ScriptType::SRT, 16);
    FakeDocument draft(IAutoSaveDocument::Translate, QStringLiteral("{\\rtf1 draft}"), ScriptType::Plain, 1);
    FakeDocument notes(IAutoSaveDocument::NotePad, QStringLiteral("notes"));
    FakeDocument player(IAutoSaveDocument::Other, QStringLiteral("never"));
    ASSERT_TRUE(save.Tick({ &srt, &player, &draft, &notes }));

    const QString folder = Program() + QStringLiteral("AutoSave/");
    ASSERT_EQ(save.Written.size(), 2 + 1);
    EXPECT_EQ(save.Written[0], folder + QStringLiteral("AutoSave(2024-03-09-07-05-04).ass"));
    EXPECT_EQ(save.Written[1], folder + QStringLiteral("AutoSave(2024-03-09-07-05-04).rtf"));
    EXPECT_EQ(save.Written[2], folder + QStringLiteral("AutoSave(2024-03-09-07-05-04).txt"));

    // The SRT document went out as a whole ASS script and kept its own type.
    EXPECT_EQ(srt.seenType, ScriptType::ASS);
    EXPECT_EQ(srt.seenOption, 255);
    EXPECT_EQ(srt.type, ScriptType::SRT);
    EXPECT_EQ(srt.option, 16);
    // The draft went out as rich text with its options as they stood.
    EXPECT_EQ(draft.seenType, ScriptType::RichText);
    EXPECT_EQ(draft.seenOption, 1);
    EXPECT_EQ(draft.type, ScriptType::Plain);
    EXPECT_EQ(player.seenType, ScriptType(-1));

    // Written in the system code page.
    EXPECT_EQ(DecodeSystemCodePage(readAll(save.Written[0])), srt.text);
    EXPECT_EQ(readAll(save.Written[2]), QByteArray("notes"));

    EXPECT_EQ(status.size(), 6);
    EXPECT_EQ(status[0], QStringLiteral("正在自动保存文件... "));
    EXPECT_EQ(status[1], QStringLiteral("已自动保存文件: ") + save.Written[0]);
}

TEST_F(AutoSaveTest, TwoWindowsInOneSecondDoNotOverwriteEachOther)
{
    save.AutoSaveTime = 1;
    FakeDocument a(IAutoSaveDocument::Timing, QStringLiteral("first"), ScriptType::ASS);
    FakeDocument b(IAutoSaveDocument::Timing, QStringLiteral("second"), ScriptType::ASS);
    ASSERT_TRUE(save.Tick({ &a, &b }));
    ASSERT_EQ(save.Written.size(), 2);
    EXPECT_TRUE(save.Written[0].endsWith(QStringLiteral("AutoSave(2024-03-09-07-05-04).ass")));
    const QString second = QFileInfo(save.Written[1]).fileName();
    EXPECT_TRUE(second.startsWith(QStringLiteral("AutoSaverad"))) << second.toStdString();
    EXPECT_TRUE(second.endsWith(QStringLiteral(".ass")));
    EXPECT_EQ(readAll(save.Written[0]), QByteArray("first"));
    EXPECT_EQ(readAll(save.Written[1]), QByteArray("second"));
}

TEST_F(AutoSaveTest, TextTheCodePageCannotHoldIsKeptWhole)
{
    save.AutoSaveTime = 1;
    const QString text = QStringLiteral("emoji \U0001F600 and 한국어?");
    FakeDocument notes(IAutoSaveDocument::NotePad, text);
    ASSERT_TRUE(save.Tick({ &notes }));
    const WholeFileRead back = ReadWholeFile(save.Written[0], false);
    EXPECT_TRUE(back.Unicode);
    EXPECT_EQ(back.Text, text);
}

TEST_F(AutoSaveTest, OldAutoSaveFilesAreDeletedOthersAreNot)
{
    const QString folder = Program() + QStringLiteral("AutoSave/");
    QDir().mkpath(folder);
    const QDateTime now = Now();
    auto make = [&](const QString &name, qint64 ageSeconds) {
        writeBytes(folder + name, "x");
        QFile f(folder + name);
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        ASSERT_TRUE(f.setFileTime(now.addSecs(-ageSeconds), QFileDevice::FileModificationTime));
    };
    make(QStringLiteral("AutoSave(old).ass"), 3 * 3600);
    make(QStringLiteral("AutoSaved.txt"), 3 * 3600); // only the first eight letters count
    make(QStringLiteral("autosave(old).ass"), 3 * 3600); // a different name
    make(QStringLiteral("Mine.ass"), 3 * 3600);
    make(QStringLiteral("AutoSave(young).ass"), 1 * 3600);

    save.AutoSaveTime = 1;
    save.AutoDelTime = 2;
    ASSERT_TRUE(save.Tick({}));
    EXPECT_FALSE(QFileInfo::exists(folder + QStringLiteral("AutoSave(old).ass")));
    EXPECT_FALSE(QFileInfo::exists(folder + QStringLiteral("AutoSaved.txt")));
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("autosave(old).ass")));
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("Mine.ass")));
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("AutoSave(young).ass")));

    // A limit no file can reach deletes nothing.
    save.AutoDelTime = 1e300;
    SetNow(now.addYears(50));
    ASSERT_TRUE(save.Tick({}));
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("AutoSave(young).ass")));
}

TEST_F(AutoSaveTest, AFaultEndsTheRunAndTheTimerGoesOn)
{
    save.AutoSaveTime = 2;
    FakeDocument good(IAutoSaveDocument::NotePad, QStringLiteral("a"));
    FakeDocument bad(IAutoSaveDocument::Timing, QStringLiteral("b"), ScriptType::SRT, 8);
    FakeDocument later(IAutoSaveDocument::NotePad, QStringLiteral("c"));
    bad.fail = true;
    EXPECT_EQ(TicksToRun({ &good, &bad, &later }), 2);
    EXPECT_EQ(save.Written.size(), 1);
    EXPECT_EQ(bad.type, ScriptType::SRT); // put back even though the read failed
    EXPECT_EQ(bad.option, 8);
    bad.fail = false;
    SetNow(Now().addSecs(2));
    EXPECT_EQ(TicksToRun({ &good, &bad, &later }), 2);
    EXPECT_EQ(save.Written.size(), 3);
}

class BackupTest : public ShellFixture
{
};

TEST_F(BackupTest, OneGenerationIsKeptAndMissingFilesAreNotCopied)
{
    const QString user = TempPath(QStringLiteral("work/ep01.ass"));
    QDir().mkpath(TempPath(QStringLiteral("work")));
    BackupFile(user); // not there yet
    EXPECT_FALSE(QFileInfo::exists(BackupFolder() + QStringLiteral("ep01.ass")));

    writeBytes(user, "version 1");
    BackupFile(user);
    EXPECT_EQ(readAll(BackupFolder() + QStringLiteral("ep01.ass")), QByteArray("version 1"));
    writeBytes(user, "version 2");
    BackupFile(user);
    EXPECT_EQ(readAll(BackupFolder() + QStringLiteral("ep01.ass")), QByteArray("version 2"));
    EXPECT_EQ(QDir(BackupFolder()).entryList(QDir::Files).size(), 1);

    ASSERT_TRUE(SaveWithBackup(user, QStringLiteral("version 3"), false));
    EXPECT_EQ(readAll(user), QByteArray("version 3"));
    EXPECT_EQ(readAll(BackupFolder() + QStringLiteral("ep01.ass")), QByteArray("version 2"));
}

TEST_F(BackupTest, AWriteThatFailsHalfWayKeepsTheOldFileAndTheBackup)
{
    const QString user = TempPath(QStringLiteral("ep02.ass"));
    writeBytes(user, "the old script");

    // A file-size limit makes the write fail part-way, even for the superuser.
    struct rlimit old
    {
    };
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = old;
    small.rlim_cur = 64 * 1024;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    QString error;
    const bool ok = SaveWithBackup(user, QStringLiteral("new line\r\n").repeated(40000), true, &error);
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(ok);
    EXPECT_EQ(readAll(user), QByteArray("the old script"));
    EXPECT_EQ(readAll(BackupFolder() + QStringLiteral("ep02.ass")), QByteArray("the old script"));
    QStringList left = QDir(TempPath(QString())).entryList(QDir::Files);
    EXPECT_EQ(left, QStringList { QStringLiteral("ep02.ass") }); // no half-written leftovers
}

TEST_F(BackupTest, AReadOnlyFolderKeepsTheOldFileAndTheBackup)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "folder permissions do not bind the superuser";
    const QString dir = TempPath(QStringLiteral("locked"));
    QDir().mkpath(dir);
    const QString user = dir + QStringLiteral("/ep03.ass");
    writeBytes(user, "the old script");
    QFile::setPermissions(dir, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    const bool ok = SaveWithBackup(user, QStringLiteral("new"), false);
    QFile::setPermissions(dir, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_FALSE(ok);
    EXPECT_EQ(readAll(user), QByteArray("the old script"));
    EXPECT_EQ(readAll(BackupFolder() + QStringLiteral("ep03.ass")), QByteArray("the old script"));
}

} // namespace
