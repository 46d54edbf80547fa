#include "ShellFixture.h"
#include "shell/basStart.h"

#include "core/CHotKeys.h"
#include "core/IForm.h"
#include "core/basPlatform.h"
#include "formats/CTimings.h"
#include "shell/CDocumentRouter.h"
#include "shell/CVelmar.h"
#include "shell/basFrame.h"
#include "shell/basRouting.h"

#include <QObject>
#include <memory>
#include <vector>

using K = DocumentWindowKind;

TEST(Routing, TypesChooseTheWindow)
{
    EXPECT_EQ(WindowKindOfType(ScriptType::Plain), K::Translate);
    EXPECT_EQ(WindowKindOfType(ScriptType::RichText), K::Translate);
    for (int type : { 1, 2, 3, 4, 5, 7 })
        EXPECT_EQ(WindowKindOfType(ScriptType(type)), K::Timing) << type;
    EXPECT_EQ(WindowKindOfType(ScriptType::Video), K::Player);
    // LRC and SST documents are not routed by type either.
    EXPECT_EQ(WindowKindOfType(ScriptType::LRC), K::None);
    EXPECT_EQ(WindowKindOfType(ScriptType::SST), K::None);
    EXPECT_EQ(WindowKindOfType(ScriptType(-1)), K::None);
}

TEST(Routing, ExtensionsChooseTheWindowByTheLastDot)
{
    // Without a dot the whole name is the extension.
    const std::pair<const char *, K> cases[]
        = { { "MOVIE.AVI", K::Player }, { "movie.avi", K::Player }, { "/v/clip.mkv", K::Player },
              { "a.b.SRT", K::Timing }, { "x.sami", K::Timing }, { "draft.Rtf", K::Translate },
              { "setup.ini", K::Translate }, { "x.smp", K::None }, { "x.lrc", K::None }, { "x.sst", K::None },
              { "README", K::None }, { "srt", K::Timing }, { "  clip.wmv  ", K::Player } };
    for (const auto &[name, kind] : cases)
        EXPECT_EQ(WindowKindOfFileName(QString::fromLatin1(name)), kind) << name;
}

TEST(Routing, MenuKinds)
{
    EXPECT_EQ(WindowKindOfMenuKind(0, false), K::Timing);
    EXPECT_EQ(WindowKindOfMenuKind(1, false), K::Translate);
    EXPECT_EQ(WindowKindOfMenuKind(3, false), K::None);
    EXPECT_EQ(WindowKindOfMenuKind(3, true), K::Player);
    EXPECT_EQ(WindowKindOfMenuKind(4, true), K::NotePad);
    EXPECT_EQ(WindowKindOfMenuKind(2, true), K::None);
}

TEST(Routing, FileDialogFilters)
{
    // { dialog, document type, catalogue number of the filter }
    const int cases[][3] = { { 1, 0, 202 }, { 2, 6, 202 }, { 1, 1, 203 }, { 1, 5, 203 }, { 2, 4, 204 },
        { 2, 9, 207 }, { 1, 100, 205 }, { 1, 7, 206 }, { 3, 2, 206 } };
    for (const auto &c : cases)
        EXPECT_EQ(FileDialogFilterKey(FileOperation(c[0]), ScriptType(c[1])),
            QStringLiteral("COMM_MSG_%1").arg(c[2]))
            << c[0] << "," << c[1];
}

class RoutingNames : public ShellFixture
{
};

TEST_F(RoutingNames, TimingSaveNameSteps)
{
    EXPECT_EQ(
        TimingSaveName(QStringLiteral("/w/a.srt"), QStringLiteral("/v/m.avi"), QStringLiteral("时间轴(1)")),
        QStringLiteral("/w/a.srt"));
    EXPECT_EQ(TimingSaveName({}, QStringLiteral("/v/m.x.avi"), QStringLiteral("时间轴(1)")),
        QStringLiteral("/v/m.x.ass"));
    // A dot in a folder name is no extension.
    EXPECT_EQ(TimingSaveName({}, QStringLiteral("/v.d/movie"), {}), QStringLiteral("/v.d/movie.ass"));
    EXPECT_EQ(TimingSaveName({}, {}, QStringLiteral("时间轴(2)")),
        ProgramFolder() + QStringLiteral("时间轴(2).ass"));
    EXPECT_EQ(TimingSaveName({}, {}, {}), ProgramFolder() + QStringLiteral("NewTiming.ass"));
    EXPECT_EQ(
        TranslateSaveName({}, QStringLiteral("翻译(3)")), ProgramFolder() + QStringLiteral("翻译(3).txt"));
    EXPECT_EQ(TranslateSaveName(QStringLiteral("/d.rtf"), QStringLiteral("x")), QStringLiteral("/d.rtf"));
}

TEST_F(RoutingNames, FileDialogUsesTheFilterAndCancelGivesEmpty)
{
    prompt.FileNames.push_back(QStringLiteral("/v/a.avi"));
    EXPECT_EQ(ShowFileDialog(FileOperation::Open, ScriptType::Video), QStringLiteral("/v/a.avi"));
    EXPECT_EQ(ShowFileDialog(FileOperation::Save, ScriptType::ASS, QStringLiteral("/x.ass")), QString());
}

TEST_F(RoutingNames, FontAndColourDialogsKeepTheOldValueOnCancel)
{
    prompt.Colours = { std::optional<qint64>(0x00FF00), std::nullopt };
    EXPECT_EQ(ShowColorDialog(0x123456), 0x00FF00);
    EXPECT_EQ(ShowColorDialog(0x123456), 0x123456);
    PromptFont chosen;
    chosen.Name = QStringLiteral("SimHei");
    prompt.Fonts = { std::optional<PromptFont>(chosen), std::nullopt };
    PromptFont start;
    start.Name = QStringLiteral("SimSun");
    EXPECT_EQ(ShowFontDialog(start)->Name, QStringLiteral("SimHei"));
    EXPECT_FALSE(ShowFontDialog(start).has_value());
}

TEST(Routing, RecentCaptions)
{
    auto timing = ParseRecentCaption(QStringLiteral("1: 时间轴: /w/a.srt"));
    ASSERT_TRUE(timing);
    EXPECT_EQ(timing->Type, ScriptType::SSA);
    EXPECT_EQ(timing->FileName, QStringLiteral("/w/a.srt"));
    auto video = ParseRecentCaption(QStringLiteral("动画: /v/m: x.avi"));
    ASSERT_TRUE(video);
    EXPECT_EQ(video->Type, ScriptType::Video);
    EXPECT_EQ(video->FileName, QStringLiteral("/v/m: x.avi"));
    auto draft = ParseRecentCaption(QStringLiteral("3: 翻译: d.txt"));
    ASSERT_TRUE(draft);
    EXPECT_EQ(draft->Type, ScriptType::Plain);
    EXPECT_FALSE(ParseRecentCaption(QStringLiteral("no colon here")));
}

class CloseQuestion : public ShellFixture
{
};

TEST_F(CloseQuestion, AnswersDecide)
{
    int saves = 0;
    auto save = [&] {
        ++saves;
        return saves == 1;
    };
    EXPECT_TRUE(QueryCloseDocument(false, save));
    EXPECT_TRUE(prompt.Messages().isEmpty());

    prompt.Answers = { MsgBoxResult::Yes, MsgBoxResult::Yes, MsgBoxResult::No, MsgBoxResult::Cancel };
    EXPECT_TRUE(QueryCloseDocument(true, save)); // saved
    EXPECT_FALSE(QueryCloseDocument(true, save)); // the save failed
    EXPECT_TRUE(QueryCloseDocument(true, save));
    EXPECT_FALSE(QueryCloseDocument(true, save));
    EXPECT_EQ(saves, 2);
    ASSERT_EQ(prompt.Records.size(), 4);
    EXPECT_EQ(prompt.Records[0].Prompt, QStringLiteral("保存所做的修改吗?"));
    EXPECT_EQ(prompt.Records[0].Style & MsgBoxStyle::ButtonMask, MsgBoxStyle::YesNoCancel);
}

namespace {
// A document window that records what it is asked.
class FakeForm : public IForm
{
public:
    explicit FakeForm(K kind, bool opens)
        : Kind(kind)
        , Opens(opens)
    { }
    bool SaveFile(bool saveAs, int) override
    {
        Saves << saveAs;
        return true;
    }
    bool OpenFile(int openType, const QString &name) override
    {
        Opened << name;
        OpenTypes << openType;
        return Opens;
    }
    K Kind;
    bool Opens;
    QStringList Opened;
    QList<int> OpenTypes;
    QList<bool> Saves;
};

class RouterTest : public ShellFixture
{
protected:
    void SetUp() override
    {
        ShellFixture::SetUp();
        for (K kind : { K::Timing, K::Translate, K::Player, K::NotePad })
            router.RegisterFactory(kind, [this, kind] {
                forms.push_back(std::make_unique<FakeForm>(kind, opens));
                return forms.back().get();
            });
        router.Unload = [this](IForm *f) { unloaded.push_back(static_cast<FakeForm *>(f)); };
    }
    CDocumentRouter router;
    std::vector<std::unique_ptr<FakeForm>> forms;
    std::vector<FakeForm *> unloaded;
    bool opens = true;
};
} // namespace

TEST_F(RouterTest, DroppedFilesGoToTheirWindowsInOrder)
{
    router.OpenFileByType(QStringLiteral("  /v/Movie.MKV "));
    router.OpenFileByType(QStringLiteral("/w/a.b.ass"));
    router.OpenFileByType(QStringLiteral("/w/draft.txt"));
    router.OpenFileByType(QStringLiteral("/w/x.smp"));
    ASSERT_EQ(forms.size(), 3u);
    EXPECT_EQ(forms[0]->Kind, K::Player);
    EXPECT_EQ(forms[0]->Opened, QStringList { QStringLiteral("/v/Movie.MKV") });
    // A player opens the name itself, not silently.
    EXPECT_EQ(forms[0]->OpenTypes, QList<int> { 0 });
    EXPECT_EQ(forms[1]->Kind, K::Timing);
    EXPECT_EQ(forms[2]->Kind, K::Translate);
    EXPECT_EQ(
        prompt.Messages(), QStringList { QStringLiteral("请使用文件打开菜单来打开这个文件: /w/x.smp") });
}

TEST_F(RouterTest, AGivenTypeDecidesAndAnUnknownTypeDoesNothing)
{
    router.OpenFileByType(QStringLiteral("/w/a.lrc"), ScriptType::SRT);
    router.OpenFileByType(QStringLiteral("/w/a.lrc"), ScriptType::LRC);
    ASSERT_EQ(forms.size(), 1u);
    EXPECT_EQ(forms[0]->Kind, K::Timing);
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(RouterTest, OpenDocumentUnloadsAFailedWindowButKeepsTheNotepad)
{
    opens = false;
    EXPECT_EQ(router.OpenDocument(0), nullptr);
    EXPECT_NE(router.OpenDocument(4), nullptr);
    EXPECT_EQ(router.OpenDocument(2), nullptr);
    ASSERT_EQ(forms.size(), 2u);
    EXPECT_EQ(forms[0]->Opened, QStringList { QString() });
    ASSERT_EQ(unloaded.size(), 1u);
    EXPECT_EQ(unloaded[0], forms[0].get());
    opens = true;
    EXPECT_NE(router.OpenDocument(3), nullptr);
    EXPECT_EQ(forms.back()->Kind, K::Player);
    EXPECT_EQ(router.NewDocument(3), nullptr);
}

TEST_F(RouterTest, MissingFactoriesMakeNothing)
{
    CDocumentRouter bare;
    EXPECT_EQ(bare.NewDocument(0), nullptr);
    EXPECT_EQ(bare.OpenFileByType(QStringLiteral("a.ass")), nullptr);
    EXPECT_FALSE(bare.SaveDocument(0));
}

TEST_F(RouterTest, RecentEntriesAndSaves)
{
    router.OpenRecentFile(QStringLiteral("2: 动画: /v/m.avi"));
    router.OpenRecentFile(QStringLiteral("nothing"));
    ASSERT_EQ(forms.size(), 1u);
    EXPECT_EQ(forms[0]->Kind, K::Player);
    router.ActiveForm = [this] { return forms[0].get(); };
    EXPECT_TRUE(router.SaveDocument(0));
    EXPECT_TRUE(router.SaveDocumentAs(1));
    EXPECT_FALSE(router.SaveDocument(3));
    EXPECT_EQ(forms[0]->Saves, (QList<bool> { false, true }));
}

TEST(FrameTexts, StatusPanelsFollowTheKeysAndSteps)
{
    CHotKeys keys;
    keys.setHOTKEY_PlayPause(114);
    keys.setHOTKEY_PlayBack(115);
    keys.setHOTKEY_TimingStartTime(119);
    EXPECT_EQ(StatusPanelText(QStringLiteral("Play"), keys, 3, 3), QStringLiteral("F3:  播放 / 暂停"));
    EXPECT_EQ(StatusPanelText(QStringLiteral("Back"), keys, 2.5, 3), QStringLiteral("F4:  后退  2.5秒"));
    EXPECT_EQ(
        StatusPanelText(QStringLiteral("Forword"), keys, 2.5, 3), QStringLiteral("Undefined:  前进  3秒"));
    EXPECT_EQ(
        StatusPanelText(QStringLiteral("StartPoint"), keys, 0, 0), QStringLiteral("F8:  插入开始时间点"));
    EXPECT_EQ(StatusPanelText(QStringLiteral("Position"), keys, 0, 0), QStringLiteral(" X=0000  Y=0000 "));
    EXPECT_EQ(StatusPanelText(QStringLiteral("Message"), keys, 0, 0), QString());
    EXPECT_EQ(StatusPanelKeys().size(), 8);
}

TEST(FrameTexts, StepDialog)
{
    EXPECT_EQ(StepDialogTitle(true), QStringLiteral("后退的幅度(秒):"));
    EXPECT_EQ(StepDialogDescription(false), QStringLiteral("说明: 设定播放器前进的幅度(秒):的秒数"));
}

TEST(FrameTexts, QtKeysToCodes)
{
    const std::pair<int, int> cases[] = { { Qt::Key_F8, 119 }, { Qt::Key_F12, 123 }, { Qt::Key_S, 83 },
        { Qt::Key_Down, 40 }, { Qt::Key_Return, 13 }, { Qt::Key_F13, 0 } };
    for (const auto &[key, code] : cases)
        EXPECT_EQ(KeyCodeOfQtKey(key), code) << key;
}

class ClipboardTimes : public ShellFixture
{
};

TEST_F(ClipboardTimes, OnlyRealTimesGoToTheActiveTimingWindow)
{
    StartCore();
    QObject window;
    QObject *active = nullptr;
    Velmar->Timings()->ActiveWindow = [&] { return active; };
    CTiming *doc = Velmar->Timings()->Create(&window);
    doc->TimingWindow = &window;
    QList<double> got;
    doc->OnNewTime = [&](double t) { got << t; };

    // No active timing window: the time goes nowhere.
    EXPECT_TRUE(SendClipboardTime(QStringLiteral("0:01:02.50")));
    EXPECT_TRUE(got.isEmpty());
    active = &window;
    EXPECT_TRUE(SendClipboardTime(QStringLiteral("0:01:02.50")));
    EXPECT_FALSE(SendClipboardTime(QStringLiteral("hello")));
    EXPECT_FALSE(SendClipboardTime(QStringLiteral("0")));
    EXPECT_FALSE(SendClipboardTime(QStringLiteral("9:06:08.00")));
    ASSERT_EQ(got.size(), 1);
    EXPECT_DOUBLE_EQ(got[0], 62.5);
    Velmar->Timings()->ActiveWindow = nullptr;
}
