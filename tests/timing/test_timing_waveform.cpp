// What the timing window's waveform strip is given: the active row's span and its
// neighbours', and an edge dragged written into the active row as one undo step.
#include "core/CSpread.h"
#include "core/CUndoStack.h"
#include "formats/CTiming.h"
#include "player/CPreview.h"
#include "timing/CGridHistory.h"
#include "timing/CTimePointCapture.h"
#include "timing/CTimingGrid.h"
#include "timing/CTimingWaveform.h"

#include <gtest/gtest.h>

namespace {

using TG = CTimingGrid;

TEST(TimingWaveform, SpansComeFromTimedRowsAndAnEdgeIsWrittenAsOneStep)
{
    CTiming doc;
    doc.Init(1);
    CTimingGrid t;
    t.SetPreviewHooks(doc.Preview.get());
    t.SetDocument(&doc);
    t.ResetGrid();
    doc.Preview->AttachGrid(&t.Spread());
    CTimePointCapture capture(doc, t);
    CTimingWaveform wave(doc, t, capture);
    CSpread &g = t.Spread();
    const char16_t *times[][2] = { { u"0:00:01.00", u"0:00:02.50" }, { u"0:00:03.00", u"0:00:04.25" },
        { u"", u"" }, { u"0:00:07.00", u"0:00:08.00" } };
    for (int r = 1; r <= 4; ++r) {
        t.AppendRow();
        g.SetText(TG::ColStartTime, r, QString::fromUtf16(times[r - 1][0]));
        g.SetText(TG::ColEndTime, r, QString::fromUtf16(times[r - 1][1]));
        t.TellPreview(-1, r);
    }
    t.History().Clear();

    // Without a player there is no file and no position; nothing is active yet.
    EXPECT_TRUE(wave.MediaPath().isEmpty());
    EXPECT_FALSE(wave.Position());
    g.setRow(2);
    g.setCol(TG::ColDialog);
    g.ActivateCell();
    ASSERT_TRUE(wave.ActiveSpan());
    EXPECT_EQ(*wave.ActiveSpan(), (WaveformSpan { 3, 4.25 }));
    // The row below holds no times: only the one above is dimmed.
    EXPECT_EQ(wave.NeighbourSpans(), (std::vector<WaveformSpan> { { 1, 2.5 } }));
    g.setRow(3);
    g.ActivateCell();
    EXPECT_FALSE(wave.ActiveSpan());
    EXPECT_EQ(wave.NeighbourSpans(), (std::vector<WaveformSpan> { { 3, 4.25 }, { 7, 8 } }));
    EXPECT_FALSE(wave.SetEdge(WaveformEdge::None, 5));

    // An edge of the active row, as the stamp writes it and without reaction offsets.
    doc.ReactOffsetStart = 0.4;
    g.setRow(4);
    g.ActivateCell();
    ASSERT_TRUE(wave.SetEdge(WaveformEdge::Start, 6.5));
    EXPECT_EQ(g.GetText(TG::ColStartTime, 4), QStringLiteral("0:00:06.50"));
    EXPECT_EQ(g.ActiveRow(), 4);
    EXPECT_EQ(g.ActiveCol(), TG::ColDialog);
    EXPECT_EQ(doc.UndoStack().Count(), 1);
    ASSERT_TRUE(doc.Preview->RowLine(4));
    EXPECT_DOUBLE_EQ(doc.Preview->RowLine(4)->StartTime(), 6.5);
    doc.UndoStack().Undo();
    EXPECT_EQ(g.GetText(TG::ColStartTime, 4), QStringLiteral("0:00:07.00"));
}

} // namespace
