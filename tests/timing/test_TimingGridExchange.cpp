#include "GridOpsFixture.h"

#include "core/Class.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"

#include <QDir>

namespace {

using TG = CTimingGrid;

class GridExchangeTest : public GridOpsTest
{
protected:
    void SetUp() override
    {
        GridOpsTest::SetUp();
        doc = Class::Make<CTiming>();
        t.SetDocument(doc.get());
    }

    CSSAContentLine *AddLine(const QString &start, const QString &end, const QString &dialog)
    {
        CSSAContentLine *line = doc->SSAContent->Create();
        line->setStartTimeString(start);
        line->setEndTimeString(end);
        line->setDialog(dialog);
        return line;
    }
    QString Cell(int col, int row) { return g().GetText(col, row); }
    // Every cell of a row, joined by "|".
    QString Cells(int row)
    {
        QStringList texts;
        for (int col = 1; col <= g().MaxCols(); ++col)
            texts << Cell(col, row);
        return texts.join(u'|');
    }

    std::unique_ptr<CTiming> doc;
};

} // namespace

// ---- model to grid -------------------------------------------------------------------

TEST_F(GridExchangeTest, LoadOfNoLinesLeavesTwoEmptyRows)
{
    t.LoadGridFromContent(*doc->SSAContent);
    EXPECT_EQ(g().MaxRows(), 2);
    EXPECT_EQ(Dialogs(), QStringList({ "", "" }));
    EXPECT_EQ(hooks.Calls, QStringList({ "clear", "create 1 #1", "create 2 #2" }));
    EXPECT_TRUE(g().ReDraw());
    EXPECT_EQ(g().Row(), 1);
    EXPECT_EQ(g().Col(), 3);
}

TEST_F(GridExchangeTest, LoadFillsEveryColumnOfEachLine)
{
    doc->Fonts->Create(QStringLiteral("Main"));
    doc->Fonts->Create(QStringLiteral("Renamed"))->OriginalStyleName = QStringLiteral("Old");

    CSSAContentLine *a = AddLine("0:00:01.00", "0:00:02.50", "one\\Ntwo");
    a->LineType = 1;
    a->setLayer(3);
    a->setMarked(7);
    a->setStyle(QString()); // reads as "*Default"
    a->setOwner(QStringLiteral("Bob"));
    a->setMarginL(QStringLiteral("0010"));
    a->setMarginR(QStringLiteral("0020"));
    a->setMarginV(QStringLiteral("0030"));
    a->setEffect(u"Scroll up;10;20;5;3");
    a->m_Changed = true;
    a->m_Question = true;
    a->m_DisableCheckTiming = true;
    doc->SSAContent->Create()->Blank = true;
    CSSAContentLine *b = AddLine("0:00:03.00", "0:00:04.00", "three");
    b->setStyle(QStringLiteral("Old"));
    b->setOwner(QStringLiteral("Ann"));
    b->setEffect(u"Banner;9;1;4");
    CSSAContentLine *c = AddLine("0:00:05.00", "0:00:06.00", "four");
    c->setStyle(QStringLiteral("Nowhere"));
    c->setOwner(QStringLiteral("Bob"));
    c->setEffect(u"Karaoke");

    t.LoadGridFromContent(*doc->SSAContent);

    ASSERT_EQ(g().MaxRows(), 5);
    EXPECT_EQ(t.StyleItems(), QStringList({ "Default", "Main", "Renamed" }));
    // Every line counts, the blank one (with the default speaker) too.
    EXPECT_EQ(t.OwnerItems(), QStringList({ "Bob", "NTP", "Ann" }));

    // ASS: the layer column holds the layer.
    EXPECT_EQ(Cells(1),
        QString::fromUtf8("注释|3|0:00:01.00|0:00:02.50|Default|Bob|0010|0020|0030|从下到上滚动|"
                          "10|20|5|3|one\\Ntwo|1"));
    EXPECT_EQ(a->StoredStyle(), "Default"); // the line itself is renamed too
    EXPECT_TRUE(t.RowChanged(1));
    EXPECT_TRUE(t.RowQuestion(1));
    EXPECT_TRUE(t.RowCheckDisabled(1));

    // The blank line is skipped; the style is found by its name before renaming.
    EXPECT_EQ(Cell(TG::ColDialog, 2), "three");
    EXPECT_EQ(Cell(TG::ColStyle, 2), "Renamed");
    EXPECT_EQ(Cell(TG::ColOwner, 2), "Ann");
    EXPECT_EQ(Cell(TG::ColEffect, 2), QString::fromUtf8("从左到右滚动"));
    EXPECT_EQ(QStringList({ Cell(11, 2), Cell(12, 2), Cell(13, 2), Cell(14, 2) }),
        QStringList({ "", "", "9", "4" }));
    EXPECT_FALSE(t.RowChanged(2));
    EXPECT_FALSE(t.RowQuestion(2));
    EXPECT_FALSE(t.RowCheckDisabled(2));

    // An unknown style keeps the row's choice.
    EXPECT_EQ(Cell(TG::ColStyle, 3), "Default");
    EXPECT_EQ(Cell(TG::ColEffect, 3), QString::fromUtf8("卡拉OK"));
    EXPECT_EQ(Cell(13, 3), "");

    EXPECT_EQ(Dialogs(), QStringList({ "one\\Ntwo", "three", "four", "", "" }));
    EXPECT_EQ(Serials(), QList<qint32>({ 1, 2, 3, 4, 5 }));
    EXPECT_EQ(hooks.Calls,
        QStringList({ "clear", "create 1 #1", "create 2 #2", "update -1 1", "create 3 #3", "update -1 2",
            "create 4 #4", "update -1 3", "create 5 #5" }));
}

TEST_F(GridExchangeTest, SsaLoadsTheMarkedField)
{
    doc->setScriptType(ScriptType::SSA);
    CSSAContentLine *a = AddLine("0:00:01.00", "0:00:02.00", "x");
    a->setMarked(1);
    a->setLayer(5);
    t.LoadGridFromContent(*doc->SSAContent);
    EXPECT_EQ(Cell(TG::ColLayer, 1), "1");
}

// ---- grid to model -------------------------------------------------------------------

TEST_F(GridExchangeTest, StoreMakesOneLinePerRowWithSpareRowsBlank)
{
    doc->setScriptType(ScriptType::SSA);
    doc->setScriptSubType(1);
    doc->setTimeFormat(2);
    Fill({ { "0:00:01.00", "0:00:02.00", "first" }, { "", "", "only text" }, { "  ", " ", "   " } });
    g().SetText(TG::ColMarginL, 3, QStringLiteral("12")); // ignored: the row is blank
    g().SetText(TG::ColLayer, 1, QStringLiteral("4"));
    g().setRow(1);
    g().setCol(TG::ColEffect);
    g().setListChoice(5);
    g().SetText(TG::ColEffectDelay, 1, QStringLiteral("7"));
    g().SetText(TG::ColEffectFade, 1, QString());
    t.SetRowQuestion(1, true);
    t.SetRowCheckDisabled(2, true);

    CSSAContent &content = *doc->SSAContent;
    t.StoreGridToContent(content);

    ASSERT_EQ(content.Count(), 5);
    EXPECT_EQ(content.ScriptType, ScriptType::SSA);
    EXPECT_EQ(content.ScriptSubType, 1);
    EXPECT_EQ(content.TimeFormat(), 2);
    const CSSAContentLine *first = content.At(0);
    EXPECT_FALSE(first->Blank);
    EXPECT_EQ(first->LineType, 0);
    EXPECT_EQ(first->Marked(), 4);
    EXPECT_EQ(first->Layer(), 4);
    EXPECT_DOUBLE_EQ(first->StartTime(), 1);
    EXPECT_DOUBLE_EQ(first->EndTime(), 2);
    EXPECT_EQ(first->StoredStyle(), "*Default");
    EXPECT_EQ(first->Owner(), "NTP");
    EXPECT_EQ(first->EffectName(), "Banner");
    EXPECT_EQ(first->EffectLeftToRight(), 1);
    EXPECT_EQ(first->EffectDelay(), 7);
    EXPECT_EQ(first->EffectFade(), 0);
    EXPECT_TRUE(first->m_Question);
    EXPECT_FALSE(first->m_Changed);
    EXPECT_FALSE(first->m_DisableCheckTiming);
    EXPECT_EQ(first->Dialog(), "first");

    // A row with text and no times is a line with empty times.
    const CSSAContentLine *second = content.At(1);
    EXPECT_FALSE(second->Blank);
    EXPECT_DOUBLE_EQ(second->StartTime(), 0);
    EXPECT_EQ(second->Dialog(), "only text");
    EXPECT_TRUE(second->m_DisableCheckTiming);
    EXPECT_EQ(second->EffectName(), "");

    EXPECT_TRUE(content.At(2)->Blank);
    EXPECT_TRUE(content.At(3)->Blank);
    EXPECT_TRUE(content.At(4)->Blank);
    EXPECT_TRUE(prompt.Messages().isEmpty());
}

TEST_F(GridExchangeTest, StoreStopsAtANumberCellWithoutANumber)
{
    Fill({ { "0:00:01.00", "0:00:02.00", "a" }, { "0:00:03.00", "0:00:04.00", "b" } });
    g().SetText(TG::ColMarginR, 2, QStringLiteral("abc"));
    t.StoreGridToContent(*doc->SSAContent);
    EXPECT_EQ(prompt.Messages(), QStringList({ QString::fromUtf8("取得时间轴内容发生错误:Type mismatch") }));
    // What was made before the fault stays.
    ASSERT_EQ(doc->SSAContent->Count(), 2);
    EXPECT_EQ(doc->SSAContent->At(0)->Dialog(), "a");

    prompt.Reset();
    g().SetText(TG::ColMarginR, 2, QString());
    g().SetText(TG::ColLayer, 1, QStringLiteral("x1"));
    t.StoreGridToContent(*doc->SSAContent);
    EXPECT_EQ(doc->SSAContent->Count(), 1);
    EXPECT_EQ(prompt.Messages().size(), 1);

    prompt.Reset();
    g().SetText(TG::ColLayer, 1, QStringLiteral("40000"));
    t.StoreGridToContent(*doc->SSAContent);
    EXPECT_EQ(prompt.Messages(), QStringList({ QString::fromUtf8("取得时间轴内容发生错误:Overflow") }));
}

TEST_F(GridExchangeTest, DocumentContentStoresTheGridFirst)
{
    EXPECT_EQ(doc->TimingTable, &t);
    doc->TimingOption = 4 + 8 + 16;
    Fill({ { "0:00:01.00", "0:00:02.00", "typed in the grid" } });
    const QString out = doc->Content();
    // The two spare rows go out as blank lines.
    EXPECT_EQ(out.toStdString(), "0:00:01.00,0:00:02.00,typed in the grid\r\n\r\n\r\n");
}

TEST_F(GridExchangeTest, AttachingMovesTheTimingTable)
{
    auto other = Class::Make<CTiming>();
    t.SetDocument(other.get());
    EXPECT_EQ(doc->TimingTable, nullptr);
    EXPECT_EQ(other->TimingTable, &t);
    EXPECT_EQ(other->SSAContent->SpreadSheet(), &t);
    // A document that is not set up yet gets the grid as well.
    CTiming bare;
    t.SetDocument(&bare);
    EXPECT_EQ(bare.TimingTable, &t);
    t.SetDocument(nullptr);
    EXPECT_EQ(bare.TimingTable, nullptr);
}

TEST_F(GridExchangeTest, StarDefaultSurvivesTheRoundTrip)
{
    CSSAContentLine *a = AddLine("0:00:01.00", "0:00:02.00", "x");
    a->setStyle(QStringLiteral("*Default"));
    t.LoadGridFromContent(*doc->SSAContent);
    EXPECT_EQ(Cell(TG::ColStyle, 1), "Default");
    t.StoreGridToContent(*doc->SSAContent);
    EXPECT_EQ(doc->SSAContent->At(0)->StoredStyle(), "*Default");
}

// Each line of a real script comes back from the grid as it went in.
TEST_F(GridExchangeTest, RealScriptsRoundTrip)
{
    const QDir dir(QStringLiteral(VELMAR_TESTDATA "/ass"));
    if (!dir.exists())
        GTEST_SKIP() << "no test scripts";
    const QStringList files = dir.entryList({ QStringLiteral("*.ass") }, QDir::Files);
    ASSERT_FALSE(files.isEmpty());
    for (const QString &name : files) {
        SCOPED_TRACE(name.toStdString());
        auto script = Class::Make<CTiming>();
        const WholeFileRead file = ReadWholeFile(dir.filePath(name), true);
        ASSERT_TRUE(file.Ok);
        script->Read(file.Text);
        QStringList before;
        for (CSSAContentLine *line : *script->SSAContent)
            if (!line->Blank)
                before << line->Content();
        CTimingGrid grid;
        grid.SetDocument(script.get());
        grid.LoadGridFromContent(*script->SSAContent);
        EXPECT_EQ(grid.Spread().MaxRows(), before.size() + 2);
        grid.StoreGridToContent(*script->SSAContent);
        QStringList after;
        for (CSSAContentLine *line : *script->SSAContent)
            if (!line->Blank)
                after << line->Content();
        ASSERT_EQ(after.size(), before.size());
        for (qsizetype i = 0; i < before.size(); ++i)
            ASSERT_EQ(after.at(i), before.at(i)) << "line " << i;
    }
}

// ---- style and speaker lists ---------------------------------------------------------

TEST_F(GridExchangeTest, RefreshStyleCellsKeepsEachRowsStyle)
{
    doc->Fonts->Create(QStringLiteral("Main"));
    doc->Fonts->Create(QStringLiteral("Gone"));
    t.RefreshStyleColumn();
    Fill({ { "1", "", "" }, { "2", "", "" }, { "3", "", "" }, { "4", "", "" } });
    t.RefreshStyleColumn();
    for (auto [row, style] : { std::pair { 1, "Main" }, { 2, "Default" }, { 3, "Gone" }, { 4, "Main" } })
        ASSERT_TRUE(g().ChooseItem(TG::ColStyle, row, QString::fromLatin1(style)));
    doc->Fonts->Delete(QStringLiteral("Gone"));
    doc->Fonts->Create(QStringLiteral("Renamed"))->OriginalStyleName = QStringLiteral("Main");
    doc->Fonts->Delete(QStringLiteral("Main"));
    g().setRow(2);
    g().setCol(9);

    t.RefreshStyleCells();

    EXPECT_EQ(t.StyleItems(), QStringList({ "Default", "Renamed" }));
    EXPECT_EQ(Column(TG::ColStyle),
        QStringList({ "Renamed", "Default", "Default", "Renamed", "Default", "Default" }));
    EXPECT_EQ(g().Row(), 2);
    EXPECT_EQ(g().Col(), 9);

    // Without a "Default" item an unknown style leaves the first item chosen.
    doc->Fonts->Delete(QStringLiteral("Default"));
    doc->Fonts->Create(QStringLiteral("Other"));
    t.RefreshStyleCells();
    EXPECT_EQ(Column(TG::ColStyle).first(), "Renamed");
    EXPECT_EQ(Column(TG::ColStyle).at(1), "Renamed");
}

TEST_F(GridExchangeTest, RefreshOwnerCellsFallsBackToNtp)
{
    Fill({ { "1", "", "" }, { "2", "", "" } });
    t.RefreshOwnerColumn({ "Bob", "Ann" });
    ASSERT_TRUE(g().ChooseItem(TG::ColOwner, 2, QStringLiteral("Ann")));
    t.RefreshOwnerCells({ "NTP", "Ann", "Cid" });
    EXPECT_EQ(Column(TG::ColOwner), QStringList({ "NTP", "Ann", "NTP", "NTP" }));
    t.RefreshOwnerCells({ "Cid", "Dee" });
    EXPECT_EQ(Column(TG::ColOwner), QStringList({ "Cid", "Cid", "Cid", "Cid" }));
}

// ---- the dialogue column -------------------------------------------------------------

TEST_F(GridExchangeTest, TextColumnIsPouredUnderExistingTimes)
{
    Fill({ { "0:00:01.00", "0:00:02.00", "old one" }, { "0:00:03.00", "0:00:04.00", "old two" } });
    t.FillTextColumn({ "a", "b", "c" });
    EXPECT_EQ(Dialogs(), QStringList({ "a", "b", "c", "", "" }));
    EXPECT_EQ(Starts(), QStringList({ "0:00:01.00", "0:00:03.00", "", "", "" }));
    EXPECT_EQ(g().Row(), 1);
    EXPECT_EQ(g().Col(), 15);
    EXPECT_TRUE(g().ReDraw());
    EXPECT_EQ(t.TextColumn(), QStringLiteral("a\r\nb\r\nc\r\n\r\n"));
    // Each row is told of the clearing, then each written cell.
    EXPECT_EQ(hooks.Calls.mid(0, 5),
        QStringList({ "update -1 1", "update -1 2", "update -1 3", "update -1 4", "update 15 1" }));

    doc->setScriptType(ScriptType::DialogueText);
    doc->Read(u"x\r\ny");
    EXPECT_EQ(Dialogs().mid(0, 3), QStringList({ "x", "y", "" }));
}

TEST_F(GridExchangeTest, OtherFormatsBecomeEventRowsOnLoadAndGoBackOnSave)
{
    doc->setScriptType(ScriptType::SRT);
    doc->setContent(QStringLiteral("1\r\n00:00:01,500 --> 00:00:03,250\r\n第一行\r\n第二行\r\n\r\n"
                                   "2\r\n00:01:00,000 --> 00:01:02,000\r\nSecond\r\n\r\n"));
    t.LoadGridFromContent(*doc->SSAContent);
    EXPECT_EQ(doc->ScriptType(), ScriptType::SRT); // the type is switched back after the conversion
    EXPECT_EQ(Cell(3, 1), "0:00:01.50");
    EXPECT_EQ(Cell(4, 1), "0:00:03.25");
    EXPECT_EQ(Cell(5, 1), "Default");
    EXPECT_EQ(Cell(6, 1), QStringLiteral("说话人"));
    EXPECT_EQ(Cell(15, 1), QStringLiteral("第一行\\N第二行"));
    EXPECT_EQ(Cell(3, 2), "0:01:00.00");
    EXPECT_EQ(Cell(15, 2), "Second");

    g().SetText(15, 2, "Changed");
    EXPECT_EQ(doc->Content(),
        QStringLiteral("1\r\n00:00:01,500 --> 00:00:03,250\r\n第一行\r\n第二行\r\n\r\n"
                       "2\r\n00:01:00,000 --> 00:01:02,000\r\nChanged\r\n\r\n"));
}

TEST_F(GridExchangeTest, OpenModeOneKeepsTheRowsAndAddsTheFileBehind)
{
    AddLine("0:00:01.00", "0:00:02.00", "first file");
    t.LoadGridFromContent(*doc->SSAContent);
    const int rowsBefore = g().MaxRows();
    doc->SSAContent->Clear();
    AddLine("0:00:05.00", "0:00:06.00", "second file");
    t.OpenMode = 1;
    t.LoadGridFromContent(*doc->SSAContent);
    EXPECT_EQ(Cell(15, 1), "first file");
    EXPECT_EQ(g().MaxRows(), rowsBefore + 1);
    bool found = false;
    for (int row = 2; row <= g().MaxRows(); ++row)
        found = found || Cell(15, row) == "second file";
    EXPECT_TRUE(found);
    t.OpenMode = 0;
    t.LoadGridFromContent(*doc->SSAContent);
    EXPECT_EQ(Cell(15, 1), "second file");
}
