#include "core/CScriptedPrompt.h"
#include "core/Class.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "pages/CPicPreviewModel.h"
#include "script/ITimingGrid.h"

#include "PageTestSupport.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// A grid that holds its lines as (start, end, text) and rebuilds the event list.
struct FakeGrid : ITimingGrid
{
    struct Row
    {
        double start, end;
        QString text;
    };
    QList<Row> rows;
    int stores = 0;

    void StoreGridToContent(CSSAContent &content) override
    {
        ++stores;
        content.Clear();
        for (const Row &r : rows) {
            CSSAContentLine *line = content.Create();
            line->setStartTime(r.start);
            line->setEndTime(r.end);
            line->setDialog(r.text);
        }
    }
    void LoadGridFromContent(CSSAContent &, const CFonts *) override { }
    void FillTextColumn(const QStringList &) override { }
    QString TextColumn() const override { return {}; }
};

class PicPreviewModel : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        timing = Class::Make<CTiming>();
        grid.rows = { { 1, 3, QStringLiteral("A") }, { 2, 4, QStringLiteral("B") } };
        grid.StoreGridToContent(*timing->SSAContent);
    }
    void TearDown() override
    {
        timing->TimingTable = nullptr;
        SetPrompt(nullptr);
    }

    CScriptedPrompt prompt;
    FakeGrid grid;
    std::unique_ptr<CTiming> timing;
    CPicPreviewModel model;
};

} // namespace

TEST_F(PicPreviewModel, LoadingListsAndDrawsThePages)
{
    model.Picture().SetPixelSize(100, 100);
    model.Init(timing.get());
    EXPECT_EQ(model.Picture().PixelWidth(), 724);
    EXPECT_EQ(model.Picture().PixelHeight(), 484);
    ASSERT_EQ(model.PageList().MaxRows(), 3);
    EXPECT_EQ(model.PageList().GetText(1, 2), QStringLiteral("00:00:02:00"));
    EXPECT_EQ(model.PageList().GetText(2, 2), QStringLiteral("00:00:03:00"));
    // the columns keep the titles of the two times through a reload
    model.Reload();
    EXPECT_EQ(model.PageList().headerData(1, Qt::Horizontal).toString(),
        Msg(QStringLiteral("TIMING_COL_TITLE_300")));
    EXPECT_NE(Msg(QStringLiteral("TIMING_COL_TITLE_300")), QStringLiteral("TIMING_COL_TITLE_300"));
    // the first page stands on the box, in white for lines without a style of their own
    EXPECT_EQ(model.Pages().At(0)->Dialog(), QStringLiteral("A"));
    EXPECT_GT(countColour(model.Picture().Image(), 0xFFFFFF), 0);
    model.PageListClicked(3);
    EXPECT_EQ(model.Pages().At(2)->Dialog(), QStringLiteral("B"));
}

TEST_F(PicPreviewModel, ReloadTakesTheLinesFromTheGrid)
{
    model.Init(timing.get());
    timing->TimingTable = &grid;
    grid.rows = { { 5, 6, QStringLiteral("C") } };
    model.Reload();
    EXPECT_EQ(grid.stores, 2);
    ASSERT_EQ(model.PageList().MaxRows(), 1);
    ASSERT_EQ(model.Pages().Count(), 1);
    EXPECT_EQ(model.Pages().At(0)->StartTime(), 5);
    EXPECT_EQ(model.Pages().At(0)->SerialNo(), 4); // numbers are not given twice
}

TEST_F(PicPreviewModel, BackColourMessagesAndFormSize)
{
    model.Init(timing.get());
    prompt.Colours.push_back(0xFF0000); // blue
    model.ChooseBackColour();
    EXPECT_EQ(model.Picture().BackColor(), 0xFF0000);
    prompt.Colours.push_back(std::nullopt); // cancelled: nothing changes
    model.ChooseBackColour();
    EXPECT_EQ(model.Picture().BackColor(), 0xFF0000);

    model.SaveFile();
    EXPECT_FALSE(model.SaveAll()); // no name yet
    EXPECT_EQ(prompt.Messages(),
        QStringList({ Msg(QStringLiteral("COMM_MSG_101")), QStringLiteral("请选择SST文件名") }));
    EXPECT_EQ(Msg(QStringLiteral("COMM_MSG_101")), QStringLiteral("保存文件出错:"));

    EXPECT_EQ(CPicPreviewModel::FormSize(120, 240, 724 * 15, 484 * 15),
        std::make_pair(120.0 + 10860 + 200, 240.0 + 7260 + 550));
}

TEST_F(PicPreviewModel, PagesStayWhenTheDocumentGoes)
{
    model.Init(timing.get());
    // The window's source follows its timing window, which is gone: nothing to take.
    model.Source = [] { return nullptr; };
    timing.reset();
    model.Reload();
    ASSERT_EQ(model.Pages().Count(), 3);
    model.PageListClicked(2);
    EXPECT_EQ(model.Pages().At(1)->Dialog(), QStringLiteral("B"));
    timing = Class::Make<CTiming>();
}

TEST_F(PicPreviewModel, OpensAPageListAsTheSourceOfThePages)
{
    QTemporaryDir dir;
    const QString list = dir.filePath(QStringLiteral("disc.sst"));
    WriteTextFile(list,
        QStringLiteral("st_format 2\r\n1\t\t00:00:23:26\t00:00:25:23\t1.1.bmp\r\n"
                       "2\t\t00:00:24:00\t00:00:26:00\tsecond.bmp\r\n"),
        true);
    model.Init(timing.get());
    ASSERT_TRUE(model.OpenScript(list, ScriptType::SST));
    ASSERT_EQ(model.Pages().Count(), 3);
    EXPECT_EQ(model.Pages().At(1)->StartTimeString(), QStringLiteral("00:00:24:00"));
    EXPECT_EQ(model.Pages().At(2)->Dialog(), QStringLiteral("second.bmp"));
    EXPECT_EQ(model.PageList().MaxRows(), 3);
    // a reload cuts the opened list again, not the document
    model.Reload();
    EXPECT_EQ(model.Pages().Count(), 3);
    EXPECT_EQ(grid.stores, 1);

    EXPECT_FALSE(model.OpenScript(dir.filePath(QStringLiteral("none.sst")), ScriptType::SST));
    EXPECT_EQ(prompt.Messages(),
        QStringList { QStringLiteral(" 无法打开文件。 ") + dir.filePath(QStringLiteral("none.sst")) });
    EXPECT_EQ(model.Pages().Count(), 3);
}

TEST_F(PicPreviewModel, ThePictureFolderOptionIsRememberedAndOffAtFirst)
{
    const QString section = QStringLiteral("PicPreview"), key = QStringLiteral("PictureFolder");
    EXPECT_EQ(GetSetting(section, key, QStringLiteral("none")), QStringLiteral("none"));
    EXPECT_FALSE(model.PictureFolder());
    model.setPictureFolder(true);
    EXPECT_TRUE(CPicPreviewModel().PictureFolder());
    EXPECT_TRUE(CPicPreviewModel().Pages().PictureFolder);
    model.setPictureFolder(false);
    EXPECT_FALSE(CPicPreviewModel().PictureFolder());
    EXPECT_EQ(GetSetting(section, key), QStringLiteral("0"));
}
