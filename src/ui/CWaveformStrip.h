#pragma once

#include "player/CWaveformResult.h"
#include "player/CWaveformView.h"

#include <QImage>
#include <QString>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

// A strip that draws a media file's waveform around the playing position: the peaks,
// the position as a line, the active line's start to end as a shaded span with its
// neighbours' spans dimmed, and time marks. While the audio is read it shows a progress
// line; when there is none to show, one line of text says why. The owner sets every
// value; the strip only draws them and turns the mouse into requests: a click seeks, an
// edge of the active span dragged to a new time sets that time, a double-click plays the
// span; Escape lets go of a held edge without a change. Ctrl+wheel zooms, Shift+wheel
// scrolls.
class CWaveformStrip : public QWidget
{
    Q_OBJECT
public:
    explicit CWaveformStrip(QWidget *parent = nullptr);

    // The peaks to draw; clears progress and message.
    void setPeaks(std::shared_ptr<const CWaveformPeaks> peaks);
    // A load's end: its peaks, and its message when there is one.
    void ShowResult(const CWaveformResult &result);
    // The share of the audio read so far, 0 to 1; a negative value hides the line.
    void setProgress(double done);
    void setMessage(const QString &text);
    QString Message() const { return m_message; }
    void setPosition(double seconds);
    void setActiveSpan(std::optional<WaveformSpan> span);
    void setNeighbourSpans(std::vector<WaveformSpan> spans);

    // The strip's window of time, at the strip's present width.
    CWaveformView &View();

    QSize sizeHint() const override;

signals:
    void SeekRequested(double seconds);
    void EdgeDragged(WaveformEdge edge, double seconds);
    void PlaySpanRequested(double start, double end);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    // The active span as drawn: with the dragged edge where the mouse has it.
    std::optional<WaveformSpan> shownSpan() const;
    void paintRuler(QPainter &p, const CWaveformView &v, int rulerHeight) const;
    void paintSpans(QPainter &p, const CWaveformView &v, int top, int height) const;
    void paintBand(QPainter &p, const CWaveformView &v, const QRect &band, int top, int height) const;
    // Draws the waveform's strokes into m_layer, `height` pixels tall.
    void updateLayer(const CWaveformView &v, int height) const;
    void paintStatus(QPainter &p) const;

    CWaveformView m_view;
    std::shared_ptr<const CWaveformPeaks> m_peaks;
    int m_loudest = 1;
    double m_progress = -1;
    QString m_message;
    std::optional<WaveformSpan> m_active;
    std::vector<WaveformSpan> m_neighbours;
    mutable QImage m_layer; // the waveform's strokes, made again each paint

    WaveformEdge m_drag = WaveformEdge::None;
    double m_dragTime = 0;
    bool m_pressed = false;
};
