#include "core/CHotKeys.h"
#include "core/CKeyedList.h"
#include "core/CMessages.h"
#include "core/CMouse.h"
#include "core/CScriptedPrompt.h"
#include "core/Class.h"
#include "core/VelmarError.h"
#include "core/basMain.h"
#include "core/basSetting.h"
#include "formats/CTimings.h"
#include "player/CPlayers.h"
#include "script/CSSAContents.h"
#include "shell/CVelmar.h"
#include "shell/basStart.h"
#include "translation/CTranslates.h"

#include <QCursor>
#include <QFile>
#include <QGuiApplication>

#include <gtest/gtest.h>

namespace {
struct Item
{
    explicit Item(int v)
        : value(v)
    { }
    int value;
};
} // namespace

TEST(KeyedList, KeepsOrderAndLooksUpByKey)
{
    CKeyedList<Item> list;
    list.Add("b", std::make_unique<Item>(1));
    list.Add("a", std::make_unique<Item>(2));
    list.Insert(1, "c", std::make_unique<Item>(3));
    std::vector<int> order;
    for (Item *i : list)
        order.push_back(i->value);
    EXPECT_EQ(order, (std::vector<int> { 1, 3, 2 }));
    EXPECT_EQ(list.Find("a")->value, 2);
    EXPECT_EQ(list.Find("zz"), nullptr);
    EXPECT_THROW(list.Add("a", std::make_unique<Item>(9)), VelmarError);
    EXPECT_THROW(list.Item("zz"), VelmarError);
    EXPECT_THROW(list.At(3), VelmarError);
    auto taken = list.Take("c");
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->value, 3);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.KeyAt(1), "a");
    EXPECT_THROW(list.Remove("c"), VelmarError);
}

TEST(KeyedList, MembersAddedUncheckedAreFoundAndGuardedLikeTheRest)
{
    CKeyedList<Item> list;
    list.AddNew("1", std::make_unique<Item>(1));
    list.AddNew("2", std::make_unique<Item>(2));
    EXPECT_EQ(list.Find("2")->value, 2);
    list.AddNew("3", std::make_unique<Item>(3));
    // A checked add after unchecked ones still sees every key.
    EXPECT_THROW(list.Add("3", std::make_unique<Item>(9)), VelmarError);
    list.Insert(0, "0", std::make_unique<Item>(0));
    list.AddNew("4", std::make_unique<Item>(4));
    ASSERT_TRUE(list.Take("2"));
    EXPECT_EQ(list.Find("2"), nullptr);
    EXPECT_EQ(list.Find("4")->value, 4);
    EXPECT_EQ(list.Find("0")->value, 0);
    std::vector<int> order;
    for (Item *i : list)
        order.push_back(i->value);
    EXPECT_EQ(order, (std::vector<int> { 0, 1, 3, 4 }));
    list.Clear();
    EXPECT_EQ(list.Find("1"), nullptr);
    list.AddNew("1", std::make_unique<Item>(7));
    EXPECT_EQ(list.Item("1")->value, 7);
}

TEST(DocumentLists, SerialsNeverFallAndKeysAreDecimal)
{
    CTimings timings;
    QStringList created, deleted;
    timings.Created = [&](CTiming *t) { created << QString::number(t->SerialNo()); };
    timings.Deleted = [&](const QString &key) { deleted << key; };
    CTiming *first = timings.Create();
    CTiming *second = timings.Create();
    EXPECT_EQ(first->SerialNo(), 1);
    EXPECT_EQ(second->SerialNo(), 2);
    EXPECT_EQ(timings.item("2"), second);
    timings.Delete("2");
    EXPECT_EQ(timings.item("2"), nullptr);
    EXPECT_EQ(timings.Create()->SerialNo(), 3); // a closed window's number is not reused
    EXPECT_EQ(timings.SerialNo(), 3);
    EXPECT_EQ(timings.Count(), 2);
    EXPECT_EQ(created, QStringList({ "1", "2", "3" }));
    EXPECT_EQ(deleted, QStringList({ "2" }));
    EXPECT_EQ(first->Parent(), &timings);
}

TEST(Root, InitMakesTheCollectionsAndIdIsWriteOnce)
{
    auto root = Class::Make<CVelmar>();
    ASSERT_NE(root->Players(), nullptr);
    ASSERT_NE(root->Translates(), nullptr);
    ASSERT_NE(root->Timings(), nullptr);
    ASSERT_NE(root->SSAContents(), nullptr);
    EXPECT_EQ(root->ID(), 0);
    root->setID(7);
    EXPECT_EQ(root->ID(), 7);
    try {
        root->setID(8);
        FAIL() << "a second write must fault";
    } catch (const VelmarError &e) {
        EXPECT_EQ(e.Number(), 1002);
        EXPECT_EQ(e.Description(), "Write-once property");
    }
    EXPECT_EQ(root->ID(), 7);
}

TEST(Root, ContentShowsTheMessageAndIsEmpty)
{
    CScriptedPrompt prompt;
    SetPrompt(&prompt);
    CVelmar root;
    root.setContent("ignored");
    EXPECT_EQ(root.Content(), "");
    ASSERT_EQ(prompt.Records.size(), 1);
    EXPECT_EQ(prompt.Records[0].Prompt, QStringLiteral("无法打开文件:"));
    SetPrompt(nullptr);
}

TEST(Root, StartCoreWithAnEmptyStoreBuildsEverything)
{
    QFile::remove(SettingsFile());
    StartCore();
    EXPECT_EQ(VersionNo, "0.75");
    ASSERT_NE(HotKeys, nullptr);
    EXPECT_EQ(HotKeys->HOTKEY_SaveFile, 83);
    EXPECT_EQ(HotKeys->HOTKEY_TimingStartTime(), 0); // defaults come with the settings read
    ASSERT_NE(Messages, nullptr);
    ASSERT_NE(MessageList, nullptr);
    EXPECT_EQ(MessageList->item("NO_SUCH_KEY")->Content(), "MESSAGE ERROR");
    ASSERT_NE(Velmar, nullptr);
    EXPECT_EQ(Velmar->Timings()->Parent(), Velmar);
}

TEST(Mouse, RestoresOnlyWhatItRemembered)
{
    {
        CMouse idle;
        EXPECT_FALSE(idle.Remembered());
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    {
        CMouse busy;
        busy.SetPointer(Qt::WaitCursor);
        busy.SetPointer(Qt::BusyCursor);
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BusyCursor);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(SettingsStore, DefaultsTextsAndNumbers)
{
    QFile::remove(SettingsFile());
    EXPECT_EQ(GetSetting("AutoSave", "Interval", "180"), "180");
    EXPECT_TRUE(SaveSetting("TimeOffset", "TimingOffset", "-0.3"));
    EXPECT_EQ(GetSetting("TimeOffset", "TimingOffset", "0"), "-0.3");
    EXPECT_TRUE(SaveSetting("Setting", "Text", QStringLiteral("中文")));
    EXPECT_EQ(GetSetting("Setting", "Text"), QStringLiteral("中文"));
    // A 32-bit number is read byte by byte from the last, each without its leading zero.
    EXPECT_TRUE(SaveSetting("Setting", "One", "dword:00000001"));
    EXPECT_EQ(GetSetting("Setting", "One"), "1");
    EXPECT_TRUE(SaveSetting("Setting", "Mixed", "dword:00000105"));
    EXPECT_EQ(GetSetting("Setting", "Mixed"), "21"); // bytes 00 00 01 05 -> "0015" hex
    QString result = "x";
    EXPECT_TRUE(GetRegistryValue("HKEY_CURRENT_USER", "Software\\Velmar\\Setting", "One", result));
    EXPECT_EQ(result, "1");
    EXPECT_FALSE(GetRegistryValue("HKEY_CURRENT_USER", "Software\\Velmar\\Setting", "None", result));
    EXPECT_EQ(result, "");
}

#include "core/CSparseMatrix.h"

TEST(SparseMatrix, ZeroCellsAreNeverStored)
{
    CSparseMatrix m;
    m.vlaue(1, 2, "5");
    EXPECT_EQ(m.Value(1, 2), "5");
    m.vlaue(1, 2, "0");
    EXPECT_EQ(m.Value(1, 2), "");
    EXPECT_EQ(m.Count(), 0);
    m.vlaue(3, 4, "abc"); // not a number: its value is 0
    EXPECT_EQ(m.Count(), 0);
    m.vlaue(12, 3, "7");
    EXPECT_EQ(m.Value(1, 23), ""); // "12,3" and "1,23" are different keys
}

#include "core/basWindowList.h"

TEST(WindowWalk, FirstByTagAndNext)
{
    const QStringList tags { "3", "5", "8" };
    EXPECT_EQ(FindWindowByTag(tags, "1", false), 0); // "1" with the flag clear: the first window
    EXPECT_EQ(FindWindowByTag(tags, "5", false), 1);
    EXPECT_EQ(FindWindowByTag(tags, "3", true), 1);
    EXPECT_EQ(FindWindowByTag(tags, "8", true), -1); // end of the list
    EXPECT_EQ(FindWindowByTag(tags, "4", false), -1);
    EXPECT_EQ(FindWindowByTag({}, "1", false), -1);
}
