#include "PlayerFixture.h"
#include "formats/CTiming.h"
#include "pages/CPictureBox.h"
#include "player/CPlayer.h"
#include "player/CPreview.h"
#include "player/basPreview.h"
#include "script/CFont.h"
#include "timing/CTimingGrid.h"

#include <QImage>
#include <QRect>
#include <gtest/gtest.h>

namespace {

using TG = CTimingGrid;

class FakeDocument : public isub
{
public:
    QString Content() override { return {}; }
    void setContent(const QString &) override { }
    void Clear() override { }
};

// The rectangle of every pixel that differs from the background, in pixels.
QRect Ink(const QImage &image, QRgb background)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != background)
                box |= QRect(x, y, 1, 1);
    return box;
}

int CountPixels(const QImage &image, QRgb colour)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += image.pixel(x, y) == colour;
    return n;
}

// Rows of the image that hold ink, gathered into bands of consecutive rows.
QList<QPair<int, int>> InkBands(const QImage &image, QRgb background)
{
    QList<QPair<int, int>> bands;
    int start = -1;
    for (int y = 0; y <= image.height(); ++y) {
        bool ink = false;
        for (int x = 0; y < image.height() && x < image.width() && !ink; ++x)
            ink = image.pixel(x, y) != background;
        if (ink && start < 0)
            start = y;
        if (!ink && start >= 0) {
            bands.append({ start, y - 1 });
            start = -1;
        }
    }
    return bands;
}

class PreviewTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        preview.Init(&document);
        preview.AttachGrid(&grid.Spread());
        grid.SetPreviewHooks(&preview);
        grid.ResetGrid();
        box.setBackColor(0);
        preview.setPicture(&box);
        document.setChanged(false);
    }

    // Writes a row's times and dialogue and tells the preview, as an edit does.
    void SetRow(int row, const QString &start, const QString &end, const QString &dialog)
    {
        while (grid.Spread().MaxRows() <= row)
            grid.AppendRow();
        grid.Spread().SetText(TG::ColStartTime, row, start);
        grid.Spread().SetText(TG::ColEndTime, row, end);
        grid.Spread().SetText(TG::ColDialog, row, dialog);
        grid.TellPreview(-1, row);
    }

    CPreviewLine *LineOf(int row) { return preview.RowLine(row); }
    QRgb Black() const { return qRgb(0, 0, 0); }

    FakeDocument document;
    TG grid;
    CPreview preview;
    CPictureBox box { 400, 200 };
};

} // namespace

// ---- the dialogue as the preview prints it -------------------------------------------

TEST(PreviewDialog, BreaksBlanksAndOverrideBlocks)
{
    const std::pair<const char *, const char *> cases[] = {
        { "{\\fad(100,100)}abc\\Ndef", "abc\r\ndef" }, { "a\\nb\\hc", "a\r\nb c" }, { "abc{\\b1", "abc" },
        { "{\\b1}a{\\i1}b{\\b0\\i0}c", "abc" },
        { "{note} x}", "{note} x}" }, // a brace without a backslash is text, a lone closing one too
        { "a{\\}b", "ab" }, // the closing brace is looked for only behind the backslash
        { "x\\{\\b1}Ny", "x y" }, // a backslash joined to a letter by removing a block: a blank
        { "a\\\\Nb\\", "a\\\r\nb\\" }, // a doubled backslash: the second one starts the escape
        { "plain", "plain" }, { "a\\Hb", "a\\Hb" }, // lower and upper case are different escapes: "\H" stays
    };
    for (const auto &[dialog, shown] : cases)
        EXPECT_EQ(CPreviewLine::CleanDialog(QString::fromLatin1(dialog)), QString::fromLatin1(shown))
            << dialog;
}

// ---- lines kept in step with the grid ---------------------------------------------------

TEST_F(PreviewTest, EveryRowHasALineKeyedBySerialNumber)
{
    ASSERT_EQ(grid.Spread().MaxRows(), 2);
    EXPECT_EQ(preview.Count(), 2);
    grid.AppendRow();
    EXPECT_EQ(preview.Count(), 3);
    const qint32 serial = grid.RowSerial(3);
    ASSERT_NE(preview.Item(QString::number(serial)), nullptr);
    EXPECT_EQ(preview.Item(QString::number(serial))->SerialNo(), serial);
    EXPECT_EQ(preview.SerialNo(), serial);

    grid.RemoveLastRow();
    EXPECT_EQ(preview.Count(), 2);
    EXPECT_FALSE(preview.Exists(QString::number(serial)));

    // A new document empties the preview and makes the lines of its two rows again.
    SetRow(5, "0:00:01.00", "0:00:02.00", "x");
    grid.ResetGrid();
    EXPECT_EQ(preview.Count(), 2);
    EXPECT_NE(LineOf(1), nullptr);
    EXPECT_NE(LineOf(2), nullptr);
}

TEST_F(PreviewTest, TellingACellReadsOnlyThatColumn)
{
    CSpread &s = grid.Spread();
    s.SetText(TG::ColStartTime, 1, QStringLiteral("0:00:01.50"));
    s.SetText(TG::ColEndTime, 1, QStringLiteral("0:01:02.25"));
    s.SetText(TG::ColDialog, 1, QStringLiteral("a\\Nb"));
    grid.TellPreview(TG::ColStartTime, 1);
    CPreviewLine *line = LineOf(1);
    EXPECT_DOUBLE_EQ(line->StartTime(), 1.5);
    EXPECT_DOUBLE_EQ(line->EndTime(), 0);
    EXPECT_EQ(line->Dialog(), QString());

    grid.TellPreview(TG::ColDialog, 1);
    EXPECT_EQ(line->Dialog(), QStringLiteral("a\r\nb"));
    EXPECT_DOUBLE_EQ(line->EndTime(), 0);

    // Any other column reads all three.
    grid.TellPreview(TG::ColStyle, 1);
    EXPECT_DOUBLE_EQ(line->EndTime(), 62.25);

    // Times are read strictly: a text of another length counts as 0.
    s.SetText(TG::ColStartTime, 1, QStringLiteral("1.5"));
    grid.TellPreview(TG::ColStartTime, 1);
    EXPECT_DOUBLE_EQ(line->StartTime(), 0);
}

TEST_F(PreviewTest, TellingRaisesChangedAndKeepsTheCurrentCell)
{
    CSpread &s = grid.Spread();
    s.setRow(2);
    s.setCol(7);
    grid.TellPreview(-1, 1);
    EXPECT_TRUE(document.Changed());
    EXPECT_EQ(s.Row(), 2);
    EXPECT_EQ(s.Col(), 7);

    document.setChanged(false);
    grid.AppendRow();
    EXPECT_TRUE(document.Changed());
    document.setChanged(false);
    grid.RemoveLastRow();
    EXPECT_TRUE(document.Changed());

    // A row whose serial number has no line is left alone.
    document.setChanged(false);
    s.SetText(TG::ColSerialNo, 2, QStringLiteral("9999"));
    grid.TellPreview(-1, 2);
    EXPECT_FALSE(document.Changed());
}

TEST_F(PreviewTest, LineFollowsItsRowThroughMoves)
{
    SetRow(1, "0:00:01.00", "0:00:02.00", "first");
    SetRow(2, "0:00:03.00", "0:00:04.00", "second");
    CPreviewLine *first = LineOf(1);
    CPreviewLine *second = LineOf(2);

    // A row inserted above shifts both rows down; their lines go with them.
    CSpread &s = grid.Spread();
    s.setRow(1);
    s.InsertRow();
    s.SetText(TG::ColSerialNo, 1, QString::number(grid.RowSerialNo()));
    grid.PreviewHooks()->CreatePreviewLine(1);
    EXPECT_EQ(LineOf(2), first);
    EXPECT_EQ(LineOf(3), second);
    EXPECT_EQ(first->Dialog(), QStringLiteral("first"));

    preview.UpdateLineNumber();
    EXPECT_EQ(first->RealRowNumber, 2);
    EXPECT_EQ(second->RealRowNumber, 3);

    // A block move carries both rows one down; the row numbers change, the lines do not.
    grid.AppendRow();
    s.setRow(2);
    s.setRow2(3);
    s.setCol(1);
    s.setCol2(TG::ColumnCount);
    s.setDestRow(3);
    s.setDestCol(1);
    s.MoveBlock();
    preview.UpdateLineNumber();
    EXPECT_EQ(first->RealRowNumber, 3);
    EXPECT_EQ(second->RealRowNumber, 4);
    EXPECT_EQ(LineOf(4)->Dialog(), QStringLiteral("second"));
    EXPECT_EQ(LineOf(2), nullptr);
}

TEST_F(PreviewTest, LineNumbersTakeTheCheckMarkAndActivateTheFirstCell)
{
    grid.AppendRow();
    grid.SetRowCheckDisabled(2, true);
    CSpread &s = grid.Spread();
    s.setRow(3);
    s.setCol(4);
    s.ActivateCell();
    preview.UpdateLineNumber();
    EXPECT_FALSE(LineOf(1)->m_bDisableCheckTiming);
    EXPECT_TRUE(LineOf(2)->m_bDisableCheckTiming);
    EXPECT_EQ(LineOf(3)->RealRowNumber, 3);
    EXPECT_EQ(s.Row(), 3);
    EXPECT_EQ(s.Col(), 4);
    EXPECT_EQ(s.ActiveRow(), 1);
    EXPECT_EQ(s.ActiveCol(), 1);
}

TEST(PreviewOwner, TimingDocumentOwnsItsPreview)
{
    CTiming timing;
    timing.Init(1);
    ASSERT_NE(timing.Preview, nullptr);
    EXPECT_EQ(timing.Preview->Document(), &timing);
    timing.setChanged(false);
    CTimingGrid grid;
    timing.Preview->AttachGrid(&grid.Spread());
    grid.SetPreviewHooks(timing.Preview.get());
    grid.ResetGrid();
    EXPECT_EQ(timing.Preview->Count(), 2);
    EXPECT_TRUE(timing.Changed());
}

// ---- the tick ---------------------------------------------------------------------------

TEST_F(PreviewTest, LineIsShownOnlyStrictlyInsideItsSpan)
{
    SetRow(1, "0:00:01.00", "0:00:03.00", "abc");
    CPreviewLine *line = LineOf(1);

    preview.Refresh(1.0);
    EXPECT_FALSE(line->Shown());
    EXPECT_EQ(Ink(box.Image(), Black()), QRect());

    preview.Refresh(2.0);
    EXPECT_TRUE(line->Shown());
    EXPECT_FALSE(Ink(box.Image(), Black()).isEmpty());

    // Exactly at the end a shown line stays.
    preview.Refresh(3.0);
    EXPECT_TRUE(line->Shown());

    // Outside it is wiped, and the wipe leaves nothing behind.
    preview.Refresh(3.01);
    EXPECT_FALSE(line->Shown());
    EXPECT_EQ(Ink(box.Image(), Black()), QRect());

    // Going back before the start wipes too.
    preview.Refresh(2.0);
    preview.Refresh(0.5);
    EXPECT_FALSE(line->Shown());
    EXPECT_EQ(Ink(box.Image(), Black()), QRect());
}

TEST_F(PreviewTest, LineWithoutASpanIsNeverShown)
{
    SetRow(1, "0:00:02.00", "0:00:02.00", "equal");
    SetRow(2, "0:00:05.00", "0:00:01.00", "reversed");
    for (double t : { 0.0, 1.0, 2.0, 3.0, 5.0, 6.0 }) {
        preview.Refresh(t);
        EXPECT_FALSE(LineOf(1)->Shown()) << t;
        EXPECT_FALSE(LineOf(2)->Shown()) << t;
    }
    EXPECT_EQ(Ink(box.Image(), Black()), QRect());
}

TEST_F(PreviewTest, BlockIsCentredOnTheBottomEdgeOneTextLineAPart)
{
    SetRow(1, "0:00:01.00", "0:00:03.00", "{\\fad(100,100)}abc\\Ndef");
    preview.Refresh(2);
    const QImage image = box.Image();
    const QList<QPair<int, int>> bands = InkBands(image, Black());
    ASSERT_EQ(bands.size(), 2);

    // The block's top is the height of both lines and a 30-twip margin above the bottom.
    box.setFontName(QStringLiteral("Arial"));
    const double height = box.TextHeight(QStringLiteral("abc\r\ndef"));
    EXPECT_EQ(LineOf(1)->StartY, qRound(preview.Height() - (height + 30)));
    EXPECT_GE(bands.first().first, LineOf(1)->StartY / 15 - 1);
    EXPECT_LE(bands.last().second, (preview.Height() - 30) / 15);

    // Each part is centred on its own.
    const QRect ink = Ink(image, Black());
    const int middle = image.width() / 2;
    EXPECT_NEAR((ink.left() + ink.right()) / 2.0, middle, 3);
    // No style: white.
    EXPECT_GT(CountPixels(image, qRgb(255, 255, 255)), 0);
}

TEST_F(PreviewTest, StyleGivesTheColour)
{
    SetRow(1, "0:00:01.00", "0:00:03.00", "XYZ");
    CFont font;
    font.Init(QStringLiteral("Red"));
    font.setFontName(QStringLiteral("Arial"));
    font.setFontSize(20);
    font.setPrimaryColour(u"255"); // red in the low byte
    LineOf(1)->setFont(&font);
    preview.Refresh(2);
    EXPECT_GT(CountPixels(box.Image(), qRgb(255, 0, 0)), 0);
    EXPECT_EQ(CountPixels(box.Image(), qRgb(255, 255, 255)), 0);
    EXPECT_EQ(box.ForeColor(), 255);

    // The copy of the style outlives the style itself.
    LineOf(1)->setFont(nullptr);
    EXPECT_FALSE(LineOf(1)->Font.has_value());
}

TEST_F(PreviewTest, OverlappingLinesPrintAtTheSameBottomPosition)
{
    SetRow(1, "0:00:01.00", "0:00:05.00", "BB");
    SetRow(2, "0:00:02.00", "0:00:04.00", "AAAA");
    preview.Refresh(1.5);
    const QImage first = box.Image();
    const QList<QPair<int, int>> alone = InkBands(first, Black());
    preview.Refresh(3);
    EXPECT_EQ(LineOf(1)->StartY, LineOf(2)->StartY);
    // Printed over each other: still one band of text.
    const QList<QPair<int, int>> both = InkBands(box.Image(), Black());
    ASSERT_EQ(alone.size(), 1);
    ASSERT_EQ(both.size(), 1);
    EXPECT_NEAR(both.first().second, alone.first().second, 1);

    // The lines hear the tick in their order: the first is printed again, then the
    // second wipes itself and cuts gaps into the first where they overlapped.
    preview.Refresh(4.5);
    EXPECT_TRUE(LineOf(1)->Shown());
    EXPECT_FALSE(LineOf(2)->Shown());
    EXPECT_NE(box.Image(), first);
    EXPECT_LT(CountPixels(box.Image(), qRgb(255, 255, 255)), CountPixels(first, qRgb(255, 255, 255)));
    // The next tick prints the current line whole again.
    preview.Refresh(4.6);
    EXPECT_EQ(box.Image(), first);
}

TEST_F(PreviewTest, ClearAllErasesThePicture)
{
    SetRow(1, "0:00:01.00", "0:00:04.00", "text");
    preview.Refresh(2);
    preview.ClearAllPreview();
    EXPECT_EQ(Ink(box.Image(), Black()), QRect());
    EXPECT_FALSE(LineOf(1)->Shown());
    preview.Refresh(2);
    EXPECT_TRUE(LineOf(1)->Shown());
}

TEST_F(PreviewTest, EditingAShownLineWipesItFirst)
{
    SetRow(1, "0:00:01.00", "0:00:04.00", "before");
    preview.Refresh(2);
    grid.Spread().SetText(TG::ColDialog, 1, QStringLiteral("after"));
    grid.TellPreview(TG::ColDialog, 1);
    EXPECT_FALSE(LineOf(1)->Shown());
    EXPECT_EQ(Ink(box.Image(), Black()), QRect());
}

TEST_F(PreviewTest, NoPictureOrNoGridDoesNothing)
{
    SetRow(1, "0:00:01.00", "0:00:04.00", "x");
    preview.setPicture(nullptr);
    preview.Refresh(2);
    preview.ClearAllPreview();
    EXPECT_FALSE(LineOf(1)->Shown());
    EXPECT_EQ(preview.Height(), 0);

    CPreview lonely;
    lonely.UpdateLineNumber();
    lonely.UpdatePreviewCell(-1, 1);
    lonely.CreatePreviewLine(1);
    lonely.DeletePreviewLine(1);
    EXPECT_EQ(lonely.Count(), 0);
}

TEST_F(PreviewTest, TickReadsThePlayersPositionWhenThereIsOne)
{
    SetRow(1, "0:00:01.00", "0:00:04.00", "x");
    FakePlayerWindow window;
    preview.Tick(nullptr);
    preview.Tick(&window); // the window has lost its player
    EXPECT_FALSE(LineOf(1)->Shown());

    CFakeMediaControl control;
    CPlayer player;
    player.Init(1, &window, &control);
    window.document = &player;
    control.setPositionDirect(2);
    preview.Tick(&window);
    EXPECT_TRUE(LineOf(1)->Shown());
}
