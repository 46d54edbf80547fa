#include "GridOpsFixture.h"

#include "core/basTime.h"
#include "player/CPreview.h"
#include "timing/CTimingCheck.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using TG = CTimingGrid;
using TC = CTimingCheck;

// A timing grid with its preview and a check over both; rows are filled through the
// grid's cells and told to the preview, as edits do.
class CheckTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SetPrompt(&prompt);
        preview.Init(&document);
        preview.AttachGrid(&grid.Spread());
        grid.SetPreviewHooks(&preview);
        grid.ResetGrid();
    }
    void TearDown() override { SetPrompt(nullptr); }

    void SetRow(int row, const QString &start, const QString &end, const QString &dialog)
    {
        while (grid.Spread().MaxRows() <= row)
            grid.AppendRow();
        grid.Spread().SetText(TG::ColStartTime, row, start);
        grid.Spread().SetText(TG::ColEndTime, row, end);
        grid.Spread().SetText(TG::ColDialog, row, dialog);
        grid.TellPreview(-1, row);
    }
    void SetRow(int row, double start, double end, const QString &dialog = QStringLiteral("text"))
    {
        SetRow(row, ::TimeToString(start, 2), ::TimeToString(end, 2), dialog);
    }

    static TC::Options Only(int kind)
    {
        TC::Options o;
        o.chkDialogLength = kind == TC::KindDialogLength;
        o.chkTimeErr = kind == TC::KindTimeOrder;
        o.chkDoubleTime = kind == TC::KindOverlap;
        o.chkNoTime = kind == TC::KindNoTime;
        o.chkShortTime = kind == TC::KindShortTime;
        return o;
    }

    // The fault grid as "kind:row:related" texts, one per fault row, joined by blanks.
    QString Faults()
    {
        QStringList out;
        const CSpread &err = check.spdErr();
        for (int r = 1; r <= err.MaxRows(); ++r) {
            int kind = 0;
            for (int k = 1; k <= 5; ++k)
                if (err.GetText(1, r) == TC::KindText(k))
                    kind = k;
            QString text = QStringLiteral("%1:%2").arg(kind).arg(err.GetText(2, r));
            if (!err.GetText(3, r).isEmpty())
                text += QStringLiteral(":") + err.GetText(3, r);
            out << text;
        }
        return out.join(u' ');
    }

    CScriptedPrompt prompt;
    BlankDocument document;
    TG grid;
    CPreview preview;
    CTimingCheck check { preview, grid.Spread() };
};

const QString NoFault = QStringLiteral("没有发现错误");

} // namespace

// ---- the fault grid and the message ----------------------------------------------------

TEST_F(CheckTest, EmptyDocumentAndAllChecksOffFindNothing)
{
    EXPECT_EQ(check.spdErr().MaxCols(), 3);
    EXPECT_EQ(check.spdErr().MaxRows(), 0);
    CSpread &err = check.spdErr();
    err.setRow(0);
    err.setCol(2);
    EXPECT_EQ(err.Text(), QStringLiteral("错误行"));

    EXPECT_EQ(check.cmdCheck(TC::Options()), 0);
    EXPECT_EQ(prompt.Messages(), QStringList { NoFault });

    SetRow(1, 5, 1, QStringLiteral("reversed"));
    TC::Options off = Only(0);
    EXPECT_EQ(check.cmdCheck(off), 0);
    EXPECT_EQ(prompt.Messages().size(), 2);

    // A run that finds something says nothing and starts from an empty list. A line
    // with its times reversed is also too short.
    EXPECT_EQ(check.cmdCheck(TC::Options()), 2);
    EXPECT_EQ(check.cmdCheck(TC::Options()), 2);
    EXPECT_EQ(prompt.Messages().size(), 2);
}

TEST_F(CheckTest, ReportIsGroupedByKindInThePreviewsOrder)
{
    SetRow(1, 0, 0, QStringLiteral("no time"));
    SetRow(2, 5, 4); // kind 2 and kind 5
    SetRow(3, 10, 12);
    SetRow(4, 11, 13); // overlaps row 3
    SetRow(5, 20, 22, QString(26, QChar(0x4E2D))); // too long
    // A row inserted at the top: its line is the last one of the preview.
    CSpread &s = grid.Spread();
    s.setRow(1);
    s.InsertRow();
    s.SetText(TG::ColSerialNo, 1, QString::number(grid.RowSerialNo()));
    grid.PreviewHooks()->CreatePreviewLine(1);
    SetRow(1, 30, 30.2, QStringLiteral("short"));

    EXPECT_EQ(check.cmdCheck(TC::Options()), 7);
    EXPECT_EQ(Faults(), "1:6 2:3 3:4:5 3:5:4 4:2 5:3 5:1");
    EXPECT_TRUE(prompt.Messages().isEmpty());

    // Text in the kind's colour.
    EXPECT_EQ(check.spdErr().GetForeColor(1, 1), 0xFF0000u);
    EXPECT_EQ(check.spdErr().GetForeColor(1, 2), 255u);
    EXPECT_EQ(check.spdErr().GetForeColor(1, 3), 0x400080u);
    EXPECT_EQ(check.spdErr().GetForeColor(1, 5), 0xFF00FFu);
    EXPECT_EQ(check.spdErr().GetForeColor(1, 6), 0x80FF00u);
    EXPECT_EQ(TC::KindText(9), QStringLiteral("未定义错误内容"));
    EXPECT_EQ(TC::KindColour(9), 0u);
}

// ---- each check ---------------------------------------------------------------------

TEST_F(CheckTest, TimeOrderAndShortLines)
{
    SetRow(1, 3, 3); // equal, not 0: short, not reversed
    SetRow(2, 4, 0); // start only: reversed and nothing else
    SetRow(3, 6, 6.4); // short
    SetRow(4, 7, 7.5); // exactly the shortest: fine
    SetRow(5, 9, 8, QString()); // reversed without text: reversed, not short
    check.cmdCheck(TC::Options());
    EXPECT_EQ(Faults(), "2:2 2:5 5:1 5:3");

    // With a shortest of 0 an empty span is no fault.
    TC::Options zero = Only(TC::KindShortTime);
    zero.txtShortTime = QStringLiteral("0");
    check.cmdCheck(zero);
    EXPECT_EQ(check.spdErr().MaxRows(), 0);
    // An empty field means 0.5; a larger value catches more.
    TC::Options longer = Only(TC::KindShortTime);
    longer.txtShortTime = QStringLiteral(" ");
    check.cmdCheck(longer);
    EXPECT_EQ(check.spdErr().MaxRows(), 2);
    longer.txtShortTime = QStringLiteral("0.6");
    check.cmdCheck(longer);
    EXPECT_EQ(check.spdErr().MaxRows(), 3);
}

TEST_F(CheckTest, NoTimeNeedsTextButNotTrimmedText)
{
    SetRow(1, 0, 0, QStringLiteral("text"));
    SetRow(2, 0, 0, QStringLiteral(" "));
    SetRow(3, 0, 0, QString());
    EXPECT_EQ(
        TC::CheckNoTime(preview), (QStringList { QString(), QStringLiteral("0"), QStringLiteral("0") }));
    check.cmdCheck(Only(TC::KindNoTime));
    EXPECT_EQ(Faults(), "4:1 4:2");
}

TEST_F(CheckTest, OverlapRules)
{
    SetRow(1, 10, 20); // covers row 2 exactly from outside
    SetRow(2, 12, 15);
    SetRow(3, 30, 35); // same times as row 4
    SetRow(4, 30, 35);
    SetRow(5, 40, 45); // touches row 6 only at an end
    SetRow(6, 45, 50);
    SetRow(7, 60, 65); // partly overlaps row 8
    SetRow(8, 63, 70);
    check.cmdCheck(Only(TC::KindOverlap));
    EXPECT_EQ(Faults(), "3:2:1 3:7:8 3:8:7");
}

TEST_F(CheckTest, OverlapFindsEveryHolderOnce)
{
    // One long line and many short ones inside it; one short line overlapping two.
    SetRow(1, 100, 200);
    SetRow(2, 110, 120);
    SetRow(3, 115, 125);
    SetRow(4, 119, 121);
    preview.UpdateLineNumber();
    const QStringList pairs = TC::CheckOverlap(preview);
    QStringList expected { QString() };
    for (const char *pair : { "21", "23", "24", "31", "32", "41", "42", "43" })
        expected << QString(QChar(pair[0])) << QString(QChar(pair[1]));
    EXPECT_EQ(pairs, expected);
}

TEST_F(CheckTest, OverlapAgreesWithTheDefinitionOnRandomLines)
{
    std::mt19937 random(20261122);
    std::uniform_int_distribution<int> second(0, 60);
    std::uniform_int_distribution<int> length(-3, 12);
    for (int row = 1; row <= 150; ++row) {
        const double start = second(random) * (row % 7 == 0 ? 0 : 1);
        SetRow(row, start, std::max(0.0, start + length(random) / 2.0));
        grid.SetRowCheckDisabled(row, row % 11 == 0);
    }
    // One line over everything, and rows moved so that the preview's order is not the rows'.
    SetRow(151, 0.5, 100);
    CSpread &s = grid.Spread();
    for (int i = 0; i < 5; ++i) {
        s.setRow(1 + i * 17);
        s.InsertRow();
        s.SetText(TG::ColSerialNo, 1 + i * 17, QString::number(grid.RowSerialNo()));
        grid.PreviewHooks()->CreatePreviewLine(1 + i * 17);
        SetRow(1 + i * 17, 10.0 + i, 14.0 + i);
    }
    preview.UpdateLineNumber();

    QStringList expected { QString() };
    for (const CPreviewLine *a : preview) {
        if (a->m_bDisableCheckTiming || a->RealRowNumber < 2 || a->RealRowNumber > 120)
            continue;
        for (const CPreviewLine *b : preview) {
            if (b == a || b->m_bDisableCheckTiming || b->RealRowNumber < 2 || b->RealRowNumber > 120)
                continue;
            const auto inside = [b](double x) { return x > b->StartTime() && x < b->EndTime(); };
            if (inside(a->StartTime()) || inside(a->EndTime()))
                expected << QString::number(a->RealRowNumber) << QString::number(b->RealRowNumber);
        }
    }
    EXPECT_GT(expected.size(), 100);
    EXPECT_EQ(TC::CheckOverlap(preview, 2, 120), expected);
}

TEST_F(CheckTest, DisabledLinesAreLeftOutExceptForTheTimeOrder)
{
    SetRow(1, 0, 0, QString(30, QChar(0x4E2D))); // no time, too long
    SetRow(2, 5, 4); // reversed, short
    SetRow(3, 10, 20);
    SetRow(4, 12, 15); // overlap with row 3
    for (int row = 1; row <= 4; ++row)
        grid.SetRowCheckDisabled(row, row != 3);
    check.cmdCheck(TC::Options());
    EXPECT_EQ(Faults(), "2:2");
}

TEST_F(CheckTest, LengthLimitInWideCharacters)
{
    const QChar wide(0x4E2D);
    SetRow(1, 1, 2, QString(25, wide));
    SetRow(2, 3, 4, QString(26, wide));
    SetRow(3, 5, 6, QString(50, u'a'));
    SetRow(4, 7, 8, QString(51, u'a'));
    SetRow(5, 9, 10, QString(24, wide) + QStringLiteral("ab"));
    SetRow(6, 11, 12, QString(24, wide) + QStringLiteral("abc"));
    // Each screen line counts on its own; one entry per line however many are long.
    SetRow(7, 13, 14, QString(20, wide) + QStringLiteral("\\N") + QString(20, wide));
    SetRow(8, 15, 16, QString(30, wide) + QStringLiteral("\\N") + QString(30, wide));
    // Override blocks are not text.
    SetRow(9, 17, 18, QStringLiteral("{\\fad(100,100)\\pos(320,240)}") + QString(25, wide));
    // A blank dialogue is never too long.
    SetRow(10, 19, 20, QString(60, u' '));
    check.cmdCheck(Only(TC::KindDialogLength));
    EXPECT_EQ(Faults(), "1:2 1:4 1:6 1:8");

    TC::Options wider = Only(TC::KindDialogLength);
    wider.txtDialogLength = QStringLiteral("30");
    check.cmdCheck(wider);
    EXPECT_EQ(Faults(), "");
    wider.txtDialogLength = QString();
    check.cmdCheck(wider);
    EXPECT_EQ(check.spdErr().MaxRows(), 4);
}

TEST(CheckWidth, WideCharactersCountTwo)
{
    // Full-width forms, Chinese punctuation, wide letters outside the code page, beyond the basic plane.
    const std::pair<const char16_t *, int> cases[] = { { u"abc", 3 }, { u"中文", 4 }, { u"ＡＢ", 4 },
        { u"，。“”", 8 }, { u"한국", 4 }, { u"\U0002000B", 2 } };
    for (const auto &[text, width] : cases)
        EXPECT_EQ(TC::DisplayWidth(text), width) << QString::fromUtf16(text).toStdString();
    EXPECT_EQ(TC::DisplayWidth(QString(QChar(0xD800))), 1);
    // Upper-casing changes no count of the code page.
    EXPECT_EQ(TC::DisplayWidth(u"abc中"), TC::DisplayWidth(u"ABC中"));
}

// ---- rows and ranges -----------------------------------------------------------------

TEST_F(CheckTest, RangeLimitsTheRowsChecked)
{
    for (int row = 1; row <= 6; ++row)
        SetRow(row, row * 10.0 + 5, row * 10.0);
    TC::Options o = Only(TC::KindTimeOrder);
    o.txtFrom = QStringLiteral("2");
    o.txtTo = QStringLiteral("4");
    check.cmdCheck(o);
    EXPECT_EQ(Faults(), "2:2 2:3 2:4");

    // Empty, 0 and negative fields open the range; letters read as 0.
    o.txtFrom = QStringLiteral("  ");
    o.txtTo = QStringLiteral("0");
    check.cmdCheck(o);
    EXPECT_EQ(check.spdErr().MaxRows(), 6);
    o.txtFrom = QStringLiteral("-1");
    o.txtTo = QStringLiteral("abc");
    check.cmdCheck(o);
    EXPECT_EQ(check.spdErr().MaxRows(), 6);
    o.txtFrom = QStringLiteral("5");
    o.txtTo = QStringLiteral("99999999999");
    check.cmdCheck(o);
    EXPECT_EQ(Faults(), "2:5 2:6");
}

TEST_F(CheckTest, DefaultsComeFromTheSelection)
{
    CSpread &s = grid.Spread();
    for (int row = 1; row <= 10; ++row)
        SetRow(row, row, row + 0.8);
    EXPECT_EQ(TC::SelectionRows(s), std::make_pair(-1, -1));
    const TC::Options none = TC::DefaultOptions(s);
    EXPECT_EQ(none.txtFrom, QStringLiteral("-1"));
    EXPECT_EQ(none.txtTo, QStringLiteral("-1"));
    EXPECT_EQ(none.txtDialogLength, QStringLiteral("25"));
    EXPECT_EQ(none.txtShortTime, QStringLiteral("0.5"));

    s.setRow(7);
    s.setCol(3);
    s.SetSelection({ CSpreadBlock { 4, 3, 5, 4 }, CSpreadBlock { 2, -1, 3, -1 } });
    EXPECT_EQ(TC::SelectionRows(s), std::make_pair(2, 5));
    EXPECT_EQ(s.Row(), 7);
    EXPECT_EQ(s.Col(), 3);
    s.AddSelection(CSpreadBlock { -1, 15, -1, 15 });
    EXPECT_EQ(TC::SelectionRows(s), std::make_pair(1, s.MaxRows()));
}

TEST_F(CheckTest, ClickGoesToTheRowAndKeepsTheColumn)
{
    SetRow(1, 10, 20);
    SetRow(2, 15, 25);
    SetRow(3, 5, 4);
    check.cmdCheck(TC::Options());
    ASSERT_EQ(Faults(), "2:3 3:1:2 3:2:1 5:3");
    CSpread &s = grid.Spread();
    s.setRow(1);
    s.setCol(15);
    check.ClickFault(1, 1);
    EXPECT_EQ(s.ActiveRow(), 3);
    EXPECT_EQ(s.ActiveCol(), 15);
    check.ClickFault(3, 2);
    EXPECT_EQ(s.ActiveRow(), 2);
    check.ClickFault(2, 3);
    EXPECT_EQ(s.ActiveRow(), 2);
    check.ClickFault(3, 3);
    EXPECT_EQ(s.ActiveRow(), 1);
    // An empty related cell, the title row and rows past the list do nothing.
    check.ClickFault(3, 1);
    check.ClickFault(2, 0);
    check.ClickFault(2, 99);
    EXPECT_EQ(s.ActiveRow(), 1);
    EXPECT_EQ(s.Col(), 15);
}
