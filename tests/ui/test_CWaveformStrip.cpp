// The waveform strip turns the mouse into requests: a click seeks, an edge dragged sets
// a time, a double-click plays the span, Ctrl+wheel zooms around the mouse.
#include "ui/CWaveformStrip.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

// 1000 pixels over 15 to 25 s: 10 ms a pixel; the active line runs from 18 to 21 s
// (pixels 300 to 600).
struct Strip
{
    Strip()
    {
        strip.resize(1000, 100);
        strip.setPosition(20);
        strip.setActiveSpan(WaveformSpan { 18, 21 });
        strip.setNeighbourSpans({ { 15.5, 17.9 }, { 21.2, 24 } });
    }
    CWaveformStrip strip;
    QSignalSpy seek { &strip, &CWaveformStrip::SeekRequested };
    QSignalSpy dragged { &strip, &CWaveformStrip::EdgeDragged };
    QSignalSpy play { &strip, &CWaveformStrip::PlaySpanRequested };
};

} // namespace

TEST(CWaveformStrip, ClickSeeksDragSetsAnEdgeDoubleClickPlays)
{
    Strip s;
    QTest::mouseClick(&s.strip, Qt::LeftButton, {}, QPoint(750, 50));
    ASSERT_EQ(s.seek.count(), 1);
    EXPECT_DOUBLE_EQ(s.seek.at(0).at(0).toDouble(), 22.5);
    EXPECT_EQ(s.dragged.count(), 0);

    // The end edge, grabbed 3 pixels off and dropped at 22.34 s; nothing seeks.
    QTest::mousePress(&s.strip, Qt::LeftButton, {}, QPoint(603, 50));
    QTest::mouseMove(&s.strip, QPoint(700, 50));
    QTest::mouseRelease(&s.strip, Qt::LeftButton, {}, QPoint(734, 50));
    ASSERT_EQ(s.dragged.count(), 1);
    EXPECT_EQ(s.dragged.at(0).at(0).value<WaveformEdge>(), WaveformEdge::End);
    EXPECT_DOUBLE_EQ(s.dragged.at(0).at(1).toDouble(), 22.34);
    EXPECT_EQ(s.seek.count(), 1);

    // The start edge cannot pass the (new) end.
    QTest::mousePress(&s.strip, Qt::LeftButton, {}, QPoint(300, 50));
    QTest::mouseRelease(&s.strip, Qt::LeftButton, {}, QPoint(990, 50));
    ASSERT_EQ(s.dragged.count(), 2);
    EXPECT_EQ(s.dragged.at(1).at(0).value<WaveformEdge>(), WaveformEdge::Start);
    EXPECT_DOUBLE_EQ(s.dragged.at(1).at(1).toDouble(), 22.34);

    // An edge let go where it was taken is no change, nor is one let go after Escape; a
    // span refreshed by the owner meanwhile does not end the drag.
    s.strip.setActiveSpan(WaveformSpan { 18, 21 });
    QTest::mousePress(&s.strip, Qt::LeftButton, {}, QPoint(300, 50));
    QTest::mouseRelease(&s.strip, Qt::LeftButton, {}, QPoint(300, 50));
    QTest::mousePress(&s.strip, Qt::LeftButton, {}, QPoint(300, 50));
    QTest::mouseMove(&s.strip, QPoint(200, 50));
    QTest::keyClick(&s.strip, Qt::Key_Escape);
    QTest::mouseRelease(&s.strip, Qt::LeftButton, {}, QPoint(200, 50));
    EXPECT_EQ(s.dragged.count(), 2);
    QTest::mousePress(&s.strip, Qt::LeftButton, {}, QPoint(300, 50));
    s.strip.setActiveSpan(WaveformSpan { 18, 21 });
    QTest::mouseRelease(&s.strip, Qt::LeftButton, {}, QPoint(200, 50));
    ASSERT_EQ(s.dragged.count(), 3);
    EXPECT_DOUBLE_EQ(s.dragged.at(2).at(1).toDouble(), 17);
    EXPECT_EQ(s.seek.count(), 1); // letting go of an edge never seeks

    QTest::mouseDClick(&s.strip, Qt::LeftButton, {}, QPoint(450, 50));
    ASSERT_EQ(s.play.count(), 1);
    EXPECT_DOUBLE_EQ(s.play.at(0).at(0).toDouble(), 17);
    EXPECT_DOUBLE_EQ(s.play.at(0).at(1).toDouble(), 21);
}

TEST(CWaveformStrip, CtrlWheelZoomsAroundTheMouseShiftWheelScrolls)
{
    Strip s;
    const auto wheel = [&](Qt::KeyboardModifiers modifiers, int delta) {
        QWheelEvent e(QPointF(250, 50), s.strip.mapToGlobal(QPointF(250, 50)), {}, QPoint(0, delta),
            Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&s.strip, &e);
        return e.isAccepted();
    };
    EXPECT_FALSE(wheel(Qt::NoModifier, 120)); // a plain wheel is left to the window
    EXPECT_DOUBLE_EQ(s.strip.View().Span(), 10);
    EXPECT_TRUE(wheel(Qt::ControlModifier, 120));
    EXPECT_DOUBLE_EQ(s.strip.View().Span(), 8);
    EXPECT_NEAR(s.strip.View().TimeAt(250), 17.5, 1e-9);
    EXPECT_TRUE(wheel(Qt::ShiftModifier, -120));
    EXPECT_NEAR(s.strip.View().TimeAt(250), 18.3, 1e-9);

    // After a zoom the mouse still maps to the time under it.
    QTest::mouseClick(&s.strip, Qt::LeftButton, {}, QPoint(500, 50));
    ASSERT_EQ(s.seek.count(), 1);
    EXPECT_NEAR(s.seek.at(0).at(0).toDouble(), s.strip.View().TimeAt(500), 1e-9);
}

TEST(CWaveformStrip, ShowsAResultsMessageAndDrawsPeaks)
{
    Strip s;
    CWaveformResult none;
    none.Status = WaveformStatus::NoAudio;
    s.strip.ShowResult(none);
    EXPECT_EQ(s.strip.Message(), QStringLiteral("此文件没有音轨"));

    auto peaks = std::make_shared<CWaveformPeaks>();
    peaks->Bins.assign(3000, WaveformPeak { -20000, 20000 });
    CWaveformResult ready;
    ready.Status = WaveformStatus::Ready;
    ready.Peaks = peaks;
    s.strip.setProgress(0.4);
    s.strip.ShowResult(ready);
    EXPECT_TRUE(s.strip.Message().isEmpty());
    // The waveform's green fills the columns of the audio's 30 s, in and out of the active
    // span, and nothing after them.
    QImage image(s.strip.size(), QImage::Format_RGB32);
    s.strip.render(&image);
    for (int x : { 100, 450, 990 }) {
        const QColor c = image.pixelColor(x, 40);
        EXPECT_GT(c.green(), c.red() + 60) << x;
    }
    s.strip.setPosition(40); // 35 to 45 s
    s.strip.render(&image);
    EXPECT_LT(image.pixelColor(700, 40).green(), 60);
}
