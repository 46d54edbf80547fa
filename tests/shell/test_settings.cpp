#include "ShellFixture.h"

#include "core/CHotKeys.h"
#include "core/basTime.h"
#include "shell/CSettingDialogModel.h"
#include "shell/basSettings.h"

namespace {

class SettingsTest : public ShellFixture
{
};

TEST_F(SettingsTest, EmptyStoreGivesTheDefaults)
{
    StartupSettings s;
    CHotKeys keys;
    ReadStartupSettings(s, keys, 1920, 1080);

    EXPECT_FLOAT_EQ(s.Geometry.Left, 0);
    EXPECT_FLOAT_EQ(s.Geometry.Top, 0);
    EXPECT_FLOAT_EQ(s.Geometry.Width, 1920);
    EXPECT_FLOAT_EQ(s.Geometry.Height, 1080);
    EXPECT_TRUE(s.AutoSave.Enabled);
    EXPECT_EQ(s.AutoSave.AutoSaveTime, 180);
    EXPECT_DOUBLE_EQ(s.AutoSave.AutoDelTime, 24);
    EXPECT_DOUBLE_EQ(s.Offsets.BackStep, 3);
    EXPECT_DOUBLE_EQ(s.Offsets.ForwordStep, 3);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffset, -0.3);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffsetStart, -0.3);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffsetEnd, -0.3);
    EXPECT_FALSE(AutoGetClipBoard);
    EXPECT_FALSE(OnTop);
    EXPECT_FALSE(AvoidOverlapTiming);

    EXPECT_EQ(keys.HOTKEY_PlayPause(), 114); // F3
    EXPECT_EQ(keys.HOTKEY_PlayBack(), 115); // F4
    EXPECT_EQ(keys.HOTKEY_PlayForword(), 117); // F6
    EXPECT_EQ(keys.HOTKEY_TimingStartTime(), 119); // F8
    EXPECT_EQ(keys.HOTKEY_TimingEndTime(), 120); // F9
    EXPECT_EQ(keys.HOTKEY_TimingTime(), 0);
    EXPECT_EQ(keys.HOTKEY_TimingForword(), 0);
    EXPECT_EQ(keys.HOTKEY_TimingBack(), 0);
    EXPECT_EQ(keys.HOTKEY_Refresh(), 116); // F5
    EXPECT_EQ(keys.HOTKEY_SaveFile2(), 121); // F10
    EXPECT_EQ(keys.HOTKEY_SaveFile, 83);
}

TEST_F(SettingsTest, StoredValuesAreReadAndTheOffsetsFollowTheReactOffset)
{
    WriteStore("[Startup]\nLeft=10\nTop=20.5\nWidth=800\nHeight=600\n"
               "[AutoSave]\nEnabled=0\nInterval=5\nDelete=1.5\n"
               "[HotKeys]\nPlayPause=F1\nTimingTime=Enter\nFileSave=S\n"
               "[TimeOffset]\nTimingOffset=0.2\nPlayBack=1.5\n"
               "[Setting]\nAutoGetClipBoard=1\nOnTop=1\nAvoidOverlapTiming=1\n");
    StartupSettings s;
    CHotKeys keys;
    ReadStartupSettings(s, keys, 1920, 1080);

    EXPECT_FLOAT_EQ(s.Geometry.Left, 10);
    EXPECT_FLOAT_EQ(s.Geometry.Top, 20.5);
    EXPECT_FLOAT_EQ(s.Geometry.Width, 800);
    EXPECT_FALSE(s.AutoSave.Enabled);
    // The lower limit of 10 seconds belongs to the dialog only.
    EXPECT_EQ(s.AutoSave.AutoSaveTime, 5);
    EXPECT_DOUBLE_EQ(s.AutoSave.AutoDelTime, 1.5);
    EXPECT_EQ(keys.HOTKEY_PlayPause(), 112);
    EXPECT_EQ(keys.HOTKEY_TimingTime(), 13);
    EXPECT_EQ(keys.HOTKEY_SaveFile2(), 83);
    EXPECT_EQ(keys.HOTKEY_TimingStartTime(), 119);
    EXPECT_DOUBLE_EQ(s.Offsets.BackStep, 1.5);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffset, 0.2);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffsetStart, 0.2);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffsetEnd, 0.2);
    EXPECT_TRUE(AutoGetClipBoard);
    EXPECT_TRUE(OnTop);
    EXPECT_TRUE(AvoidOverlapTiming);
}

TEST_F(SettingsTest, HostileValuesLeaveTheFieldsAsTheyWere)
{
    WriteStore("[Startup]\nLeft=abc\nTop=1e999\nWidth=\nHeight=-\n"
               "[AutoSave]\nEnabled=yes\nInterval=99999999999\nDelete=x24\n"
               "[HotKeys]\nPlayPause=nosuchkey\nRefresh=\nPlayBack=f4\n"
               "[TimeOffset]\nTimingOffset=%00\nTimingOffsetEnd=0.5.5\n"
               "[Setting]\nAutoGetClipBoard=70000\nOnTop=on\nAvoidOverlapTiming=2\n");
    StartupSettings s;
    s.Geometry = { 1, 2, 3, 4 };
    s.AutoSave = { false, 77, 9 };
    s.Offsets.ReactOffset = -0.5;
    CHotKeys keys;
    OnTop = true;
    ReadStartupSettings(s, keys, 1920, 1080);

    EXPECT_FLOAT_EQ(s.Geometry.Left, 1);
    EXPECT_FLOAT_EQ(s.Geometry.Top, 2);
    EXPECT_FLOAT_EQ(s.Geometry.Width, 3);
    EXPECT_FLOAT_EQ(s.Geometry.Height, 4);
    EXPECT_FALSE(s.AutoSave.Enabled);
    EXPECT_EQ(s.AutoSave.AutoSaveTime, 77);
    EXPECT_DOUBLE_EQ(s.AutoSave.AutoDelTime, 9);
    // Unknown and empty names read as no key; names are case-sensitive.
    EXPECT_EQ(keys.HOTKEY_PlayPause(), 0);
    EXPECT_EQ(keys.HOTKEY_Refresh(), 0);
    EXPECT_EQ(keys.HOTKEY_PlayBack(), 0);
    // A bad TimingOffset keeps the old one, and the start offset follows it.
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffset, -0.5);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffsetStart, -0.5);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffsetEnd, -0.3);
    EXPECT_FALSE(AutoGetClipBoard); // 70000 overflows a 16-bit integer
    EXPECT_TRUE(OnTop); // "on" is not a number
    EXPECT_TRUE(AvoidOverlapTiming);
}

TEST_F(SettingsTest, NumberValuesOfTheStoreReadAsTheirDecimalText)
{
    WriteStore("[AutoSave]\nInterval=dword:0000003c\nEnabled=dword:00000001\n");
    StartupSettings s;
    CHotKeys keys;
    ReadStartupSettings(s, keys, 100, 100);
    EXPECT_EQ(s.AutoSave.AutoSaveTime, 60);
    EXPECT_TRUE(s.AutoSave.Enabled);
    EXPECT_EQ(GetSetting(QStringLiteral("AutoSave"), QStringLiteral("Enabled")), QStringLiteral("1"));
}

TEST_F(SettingsTest, WrittenValuesReadBack)
{
    SaveStartupGeometry({ 5, 6, 700, 500 });
    SavePlayerSteps(2.5, 4);
    SaveReactOffsets(-0.25, -0.1, 0.1);
    StartupSettings s;
    CHotKeys keys;
    ReadStartupSettings(s, keys, 1, 1);
    EXPECT_FLOAT_EQ(s.Geometry.Left, 5);
    EXPECT_FLOAT_EQ(s.Geometry.Height, 500);
    EXPECT_DOUBLE_EQ(s.Offsets.BackStep, 2.5);
    EXPECT_DOUBLE_EQ(s.Offsets.ForwordStep, 4);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffset, -0.25);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffsetStart, -0.1);
    EXPECT_DOUBLE_EQ(s.Offsets.ReactOffsetEnd, 0.1);
}

class SettingDialogTest : public ShellFixture
{
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        StartupSettings s;
        ReadStartupSettings(s, keys, 800, 600);
        autoSave = s.AutoSave;
        dialog.Init(keys, autoSave);
    }
    CHotKeys keys;
    AutoSaveSettings autoSave;
    CSettingDialogModel dialog;
};

TEST_F(SettingDialogTest, InitShowsTheKeysByName)
{
    EXPECT_EQ(dialog.cmbHotKey[0], QStringLiteral("F3"));
    EXPECT_EQ(dialog.cmbHotKey[3], QStringLiteral("F8"));
    EXPECT_EQ(dialog.cmbHotKey[5], QStringLiteral("Undefined"));
    EXPECT_EQ(dialog.txtAutoSaveTime, QStringLiteral("180"));
    EXPECT_EQ(dialog.txtAutoDelTime, QStringLiteral("24"));
    EXPECT_TRUE(dialog.chkAutoSave);
    EXPECT_TRUE(dialog.AutoSaveFieldsEnabled());
    dialog.chkAutoSave = false;
    EXPECT_FALSE(dialog.AutoSaveFieldsEnabled());

    // A code without a name shows "Undefined".
    keys.setHOTKEY_Refresh(1000);
    dialog.Init(keys, autoSave);
    EXPECT_EQ(dialog.cmbHotKey[8], QStringLiteral("Undefined"));

    // The grid's undo and redo keys are taken by no hot key; Z and Y alone, or with Alt,
    // are keys like any other.
    EXPECT_FALSE(dialog.HotKeyEntryKeyDown(3, 'Z', Qt::ControlModifier));
    EXPECT_FALSE(dialog.HotKeyEntryKeyDown(3, 'Z', Qt::ControlModifier | Qt::ShiftModifier));
    EXPECT_FALSE(dialog.HotKeyEntryKeyDown(4, 'Y', Qt::ControlModifier));
    EXPECT_EQ(dialog.cmbHotKey[3], QStringLiteral("F8"));
    EXPECT_EQ(dialog.cmbHotKey[4], QStringLiteral("F9"));
    EXPECT_TRUE(dialog.HotKeyEntryKeyDown(5, 'Y'));
    EXPECT_TRUE(dialog.HotKeyEntryKeyDown(6, 'Z', Qt::ControlModifier | Qt::AltModifier));
    EXPECT_EQ(dialog.cmbHotKey[6], QStringLiteral("Z"));
}

TEST_F(SettingDialogTest, DuplicateKeysRefuseTheDialogExceptUndefinedAndEntryZero)
{
    dialog.cmbHotKey[4] = QStringLiteral("F8"); // same as entry 3
    EXPECT_FALSE(dialog.OK(keys, autoSave));
    EXPECT_FALSE(dialog.Closed);
    ASSERT_EQ(prompt.Messages().size(), 1);
    EXPECT_EQ(prompt.Messages()[0], QStringLiteral("有重复定义的快捷键,请重新选择"));
    EXPECT_EQ(keys.HOTKEY_TimingEndTime(), 120); // nothing applied

    dialog.cmbHotKey[4] = QStringLiteral("Undefined");
    dialog.cmbHotKey[6] = QStringLiteral("Undefined");
    dialog.cmbHotKey[0] = QStringLiteral("F8"); // entry 0 is outside the comparison
    EXPECT_TRUE(dialog.OK(keys, autoSave));
    EXPECT_TRUE(dialog.Closed);
    EXPECT_EQ(keys.HOTKEY_PlayPause(), 119);
    EXPECT_EQ(keys.HOTKEY_TimingStartTime(), 119);
    EXPECT_EQ(keys.HOTKEY_TimingEndTime(), 0);
}

TEST_F(SettingDialogTest, TimeFieldsAreCheckedWhenLeft)
{
    dialog.txtAutoSaveTime = QStringLiteral("9");
    EXPECT_FALSE(dialog.LeaveAutoSaveTime());
    dialog.txtAutoSaveTime = QStringLiteral("ten");
    EXPECT_FALSE(dialog.LeaveAutoSaveTime());
    dialog.txtAutoSaveTime = QStringLiteral("10");
    EXPECT_TRUE(dialog.LeaveAutoSaveTime());
    dialog.txtAutoDelTime = QStringLiteral("1,5x");
    EXPECT_FALSE(dialog.LeaveAutoDelTime());
    dialog.txtAutoDelTime = QStringLiteral("0.5");
    EXPECT_TRUE(dialog.LeaveAutoDelTime());
    EXPECT_EQ(prompt.Messages(),
        (QStringList { QStringLiteral("自动保存间隔时间请设置10秒以上"),
            QStringLiteral("自动保存间隔时间请设置10秒以上"), QStringLiteral("请输入有效数值") }));
}

TEST_F(SettingDialogTest, OkAppliesAndSavesEverything)
{
    dialog.chkAutoSave = false;
    dialog.txtAutoSaveTime = QStringLiteral("60");
    dialog.txtAutoDelTime = QStringLiteral("2.5");
    dialog.chkClipBoard = true;
    dialog.chkAvoidOverlapTiming = true;
    ASSERT_TRUE(dialog.HotKeyEntryKeyDown(9, 65)); // "A"
    EXPECT_FALSE(dialog.HotKeyEntryKeyDown(9, 16)); // Shift has no name
    EXPECT_EQ(dialog.cmbHotKey[9], QStringLiteral("A"));
    ASSERT_TRUE(dialog.OK(keys, autoSave));

    EXPECT_TRUE(AutoGetClipBoard);
    EXPECT_FALSE(OnTop);
    EXPECT_TRUE(AvoidOverlapTiming);
    EXPECT_FALSE(autoSave.Enabled);
    EXPECT_EQ(autoSave.AutoSaveTime, 60);
    EXPECT_DOUBLE_EQ(autoSave.AutoDelTime, 2.5);
    EXPECT_EQ(keys.HOTKEY_SaveFile2(), 65);

    // A fresh start reads back the same.
    StartupSettings s;
    CHotKeys fresh;
    AutoGetClipBoard = AvoidOverlapTiming = false;
    ReadStartupSettings(s, fresh, 1, 1);
    EXPECT_FALSE(s.AutoSave.Enabled);
    EXPECT_EQ(s.AutoSave.AutoSaveTime, 60);
    EXPECT_DOUBLE_EQ(s.AutoSave.AutoDelTime, 2.5);
    EXPECT_EQ(fresh.HOTKEY_SaveFile2(), 65);
    EXPECT_EQ(GetSetting(QStringLiteral("HotKeys"), QStringLiteral("FileSave")), QStringLiteral("A"));
    EXPECT_EQ(
        GetSetting(QStringLiteral("HotKeys"), QStringLiteral("TimingTime")), QStringLiteral("Undefined"));
    EXPECT_TRUE(AutoGetClipBoard);
    EXPECT_TRUE(AvoidOverlapTiming);
    // Modern files stay off and unwritten until chosen; chosen, they are stored and read.
    EXPECT_FALSE(ModernFiles);
    EXPECT_EQ(GetSetting(QStringLiteral("Setting"), QStringLiteral("ModernFiles"), QStringLiteral("none")),
        QStringLiteral("none"));
    dialog.Init(keys, autoSave);
    dialog.chkModernFiles = true;
    ASSERT_TRUE(dialog.OK(keys, autoSave));
    EXPECT_TRUE(ModernFiles);
    ModernFiles = false;
    ReadStartupSettings(s, fresh, 1, 1);
    EXPECT_TRUE(ModernFiles);
    ModernFiles = false;
}

TEST_F(SettingDialogTest, CancelChangesNothing)
{
    dialog.chkOnTop = true;
    dialog.cmbHotKey[1] = QStringLiteral("Z");
    dialog.Cancel();
    EXPECT_TRUE(dialog.Closed);
    EXPECT_FALSE(OnTop);
    EXPECT_EQ(keys.HOTKEY_PlayBack(), 115);
    EXPECT_EQ(GetSetting(QStringLiteral("Setting"), QStringLiteral("OnTop"), QStringLiteral("none")),
        QStringLiteral("none"));
}

TEST_F(SettingDialogTest, ClosingReportsClipboardAndOnTopChanges)
{
    std::vector<bool> chain, onTop;
    dialog.ClipboardViewerSwitch = [&](bool on) { chain.push_back(on); };
    dialog.SetWindowOnTop = [&](bool on) { onTop.push_back(on); };

    dialog.BeginShow();
    dialog.chkClipBoard = true;
    dialog.chkOnTop = true;
    ASSERT_TRUE(dialog.OK(keys, autoSave));
    auto out = dialog.EndShow();
    EXPECT_TRUE(out.ClipboardChanged);
    EXPECT_TRUE(out.OnTopChanged);
    EXPECT_EQ(chain, std::vector<bool> { true });
    EXPECT_EQ(onTop, std::vector<bool> { true });
    EXPECT_EQ(
        prompt.Messages(), QStringList { QStringLiteral("由于改变了监视剪贴板的设置，请重新启动Velmar") });

    // Off again: the chain is left, the same message shows.
    dialog.Init(keys, autoSave);
    dialog.BeginShow();
    dialog.chkClipBoard = false;
    ASSERT_TRUE(dialog.OK(keys, autoSave));
    out = dialog.EndShow();
    EXPECT_TRUE(out.ClipboardChanged);
    EXPECT_FALSE(out.OnTopChanged);
    EXPECT_EQ(chain, (std::vector<bool> { true, false }));
    EXPECT_EQ(prompt.Messages().size(), 2);

    // Cancelled: nothing changed, nothing told.
    dialog.Init(keys, autoSave);
    dialog.BeginShow();
    dialog.chkClipBoard = true;
    dialog.Cancel();
    out = dialog.EndShow();
    EXPECT_FALSE(out.ClipboardChanged);
    EXPECT_EQ(chain.size(), 2u);
}

TEST(SettingDialogNames, OfferUndefinedFunctionKeysArrowsAndLetters)
{
    const QStringList names = CSettingDialogModel::HotKeyNames();
    EXPECT_EQ(names.first(), QStringLiteral("Undefined"));
    EXPECT_TRUE(names.contains(QStringLiteral("F12")));
    EXPECT_TRUE(names.contains(QStringLiteral("Enter")));
    EXPECT_TRUE(names.contains(QStringLiteral("Z")));
    for (const QString &n : names)
        EXPECT_EQ(KeyCodeToName(KeyNameToCode(n)), n);
}

} // namespace
