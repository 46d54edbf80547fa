#include "ui/CWaveformStrip.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace {

const QColor Background(0x15, 0x18, 0x1c);
const QColor RulerBackground(0x0e, 0x10, 0x13);
const QColor RulerText(0x9a, 0xa3, 0xad);
const QColor GridLine(0x24, 0x29, 0x30);
const QColor ZeroLine(0x2c, 0x33, 0x3b);
const QColor Wave(0x3e, 0xc1, 0x9f);
const QColor WaveInSpan(0x7c, 0xe8, 0xc6);
const QColor NeighbourFill(0x8a, 0x96, 0xa8, 34);
const QColor NeighbourEdge(0x8a, 0x96, 0xa8, 110);
const QColor ActiveFill(0x3d, 0x7e, 0xff, 62);
const QColor StartEdge(0x5c, 0xd6, 0x6a);
const QColor EndEdge(0xf2, 0x6b, 0x6b);
const QColor PositionLine(0xff, 0xc8, 0x3a);
const QColor MessageText(0xd4, 0xd8, 0xde);

constexpr int RulerHeight = 18;
constexpr int PaintBand = 64;
// The mark labels stand this far apart at least.
constexpr double MarkSpacing = 70;

} // namespace

CWaveformStrip::CWaveformStrip(QWidget *parent)
    : QWidget(parent)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumHeight(60);
    setFocusPolicy(Qt::ClickFocus);
}

QSize CWaveformStrip::sizeHint() const
{
    return { 640, 110 };
}

void CWaveformStrip::setPeaks(std::shared_ptr<const CWaveformPeaks> peaks)
{
    m_peaks = std::move(peaks);
    m_loudest = m_peaks ? m_peaks->Loudest() : 1;
    m_progress = -1;
    m_message.clear();
    update();
}

void CWaveformStrip::ShowResult(const CWaveformResult &result)
{
    setPeaks(result.HasPeaks() ? result.Peaks : nullptr);
    setMessage(result.Message());
}

void CWaveformStrip::setProgress(double done)
{
    m_progress = done < 0 ? -1 : std::min(done, 1.0);
    update();
}

void CWaveformStrip::setMessage(const QString &text)
{
    m_message = text;
    update();
}

void CWaveformStrip::setPosition(double seconds)
{
    if (seconds == m_view.Position())
        return;
    m_view.setPosition(seconds);
    update();
}

void CWaveformStrip::setActiveSpan(std::optional<WaveformSpan> span)
{
    // The owner may refresh the span while an edge is held; the drag goes on unless the
    // line is gone.
    m_active = span;
    if (!m_active)
        m_drag = WaveformEdge::None;
    update();
}

void CWaveformStrip::setNeighbourSpans(std::vector<WaveformSpan> spans)
{
    m_neighbours = std::move(spans);
    update();
}

std::optional<WaveformSpan> CWaveformStrip::shownSpan() const
{
    std::optional<WaveformSpan> span = m_active;
    if (span && m_drag == WaveformEdge::Start)
        span->Start = m_dragTime;
    else if (span && m_drag == WaveformEdge::End)
        span->End = m_dragTime;
    return span;
}

CWaveformView &CWaveformStrip::View()
{
    // A hidden widget gets its resize event only when shown; the width is read here.
    m_view.setWidth(width());
    return m_view;
}

void CWaveformStrip::paintEvent(QPaintEvent *event)
{
    const CWaveformView &v = View();
    const int top = RulerHeight;
    const int height = std::max(1, this->height() - top);
    updateLayer(v, height);
    QPainter p(this);
    // Qt's raster engine hands a fill taller than about a hundred lines to its thread pool,
    // and on a busy machine the hand-off costs more than the fill: painted in bands of
    // 64 lines, a 1280 by 120 strip takes 0.5 ms instead of 1.3 ms.
    const QRect area = event->rect();
    for (int y = area.top(); y <= area.bottom(); y += PaintBand) {
        const QRect band = QRect(area.left(), y, area.width(), PaintBand).intersected(area);
        p.setClipRect(band);
        paintBand(p, v, band, top, height);
    }
}

void CWaveformStrip::paintBand(
    QPainter &p, const CWaveformView &v, const QRect &band, int top, int height) const
{
    p.fillRect(band, Background);
    paintSpans(p, v, top, height);
    if (band.top() < top)
        paintRuler(p, v, top);
    const int mid = top + height / 2;
    p.setPen(ZeroLine);
    p.drawLine(QPointF(0, mid + 0.5), QPointF(width(), mid + 0.5));
    if (!m_layer.isNull())
        p.drawImage(0, top, m_layer);
    // The edges and the position go over the waveform, so that they stay visible on
    // loud passages.
    if (const std::optional<WaveformSpan> span = shownSpan()) {
        const auto edge = [&](double t, const QColor &colour, bool start) {
            const double x = std::round(v.XAt(t));
            if (x < -8 || x > width() + 8)
                return;
            p.setPen(QPen(colour, 2));
            p.drawLine(QPointF(x, top), QPointF(x, top + height));
            // A grip at the top, pointing into the span.
            const double d = start ? 8 : -8;
            const QPointF grip[3] = { { x, double(top) }, { x + d, double(top) }, { x, top + 10.0 } };
            p.setPen(Qt::NoPen);
            p.setBrush(colour);
            p.drawPolygon(grip, 3);
        };
        edge(span->Start, StartEdge, true);
        edge(span->End, EndEdge, false);
    }
    const double px = std::round(v.XAt(v.Position()));
    p.setPen(QPen(PositionLine, 1));
    p.drawLine(QPointF(px + 0.5, 0), QPointF(px + 0.5, this->height()));
    // A small head on the ruler, so that the position is found at a glance.
    const QPointF head[3] = { { px - 4.5, 0 }, { px + 5.5, 0 }, { px + 0.5, 6 } };
    p.setPen(Qt::NoPen);
    p.setBrush(PositionLine);
    p.drawPolygon(head, 3);
    paintStatus(p);
}

void CWaveformStrip::paintRuler(QPainter &p, const CWaveformView &v, int rulerHeight) const
{
    p.fillRect(QRect(0, 0, width(), rulerHeight), RulerBackground);
    const double step = v.MarkStep(MarkSpacing);
    // Short ticks between the labelled marks: fifths, or halves of a 2, 15 or 0.2 step.
    const double minor = (step == 2 || step == 15 || step == 0.2 || step == 120) ? step / 2 : step / 5;
    const double left = v.Left();
    const double right = v.TimeAt(width());
    QFont font = p.font();
    font.setPixelSize(10);
    p.setFont(font);
    const auto first = static_cast<qint64>(std::floor(std::max(0.0, left) / minor));
    for (qint64 i = first; i * minor <= right; ++i) {
        const double t = i * minor;
        const double x = std::round(v.XAt(t)) + 0.5;
        const bool major = std::abs(std::remainder(t, step)) < minor / 10;
        if (major) {
            p.setPen(GridLine);
            p.drawLine(QPointF(x, rulerHeight), QPointF(x, height()));
            p.setPen(RulerText);
            p.drawLine(QPointF(x, rulerHeight - 7), QPointF(x, rulerHeight));
            p.drawText(QPointF(x + 3, rulerHeight - 6), CWaveformView::MarkLabel(t, step));
        } else {
            p.setPen(RulerText.darker(160));
            p.drawLine(QPointF(x, rulerHeight - 3), QPointF(x, rulerHeight));
        }
    }
}

void CWaveformStrip::paintSpans(QPainter &p, const CWaveformView &v, int top, int height) const
{
    const auto shade = [&](const WaveformSpan &s, const QColor &fill) {
        if (s.End <= s.Start)
            return;
        const double x0 = v.XAt(s.Start);
        const double x1 = v.XAt(s.End);
        if (x1 < 0 || x0 > width())
            return;
        p.fillRect(QRectF(x0, top, x1 - x0, height), fill);
    };
    for (const WaveformSpan &s : m_neighbours) {
        shade(s, NeighbourFill);
        p.setPen(NeighbourEdge);
        for (double t : { s.Start, s.End }) {
            const double x = std::round(v.XAt(t)) + 0.5;
            if (x >= 0 && x <= width())
                p.drawLine(QPointF(x, top), QPointF(x, top + height));
        }
    }
    if (const std::optional<WaveformSpan> span = shownSpan())
        shade(*span, ActiveFill);
}

void CWaveformStrip::updateLayer(const CWaveformView &v, int height) const
{
    if (!m_peaks || m_peaks->Count() == 0) {
        m_layer = QImage();
        return;
    }
    const int mid = height / 2;
    const std::vector<WaveformPeak> columns = v.Columns(*m_peaks);
    const double scale = (height / 2.0 - 2) / m_loudest;
    const std::optional<WaveformSpan> span = shownSpan();
    const int inFrom = span ? int(std::ceil(v.XAt(span->Start))) : 0;
    const int inTo = span ? int(std::floor(v.XAt(span->End))) : -1;
    // One vertical stroke a column, the part inside the active span brighter. The strokes
    // are written straight into a layer that is drawn at once: a thousand separate lines
    // through the painter cost about a millisecond.
    if (m_layer.size() != QSize(int(columns.size()), height))
        m_layer = QImage(int(columns.size()), height, QImage::Format_ARGB32_Premultiplied);
    m_layer.fill(Qt::transparent);
    const QRgb outside = Wave.rgb();
    const QRgb inside = WaveInSpan.rgb();
    const int from = std::max(0, int(std::floor(v.XAt(0))));
    const int to = std::min(int(columns.size()), int(std::ceil(v.XAt(m_peaks->Duration()))));
    const qsizetype stride = m_layer.bytesPerLine() / qsizetype(sizeof(QRgb));
    auto *pixels = reinterpret_cast<QRgb *>(m_layer.bits());
    for (int x = from; x < to; ++x) {
        const WaveformPeak &c = columns[size_t(x)];
        const int y0 = std::clamp(int(std::floor(mid - c.Max * scale)), 0, height - 1);
        const int y1 = std::clamp(int(std::ceil(mid - c.Min * scale)), y0, height - 1);
        const QRgb colour = x >= inFrom && x <= inTo ? inside : outside;
        for (int y = y0; y <= y1; ++y)
            pixels[y * stride + x] = colour;
    }
}

void CWaveformStrip::paintStatus(QPainter &p) const
{
    if (m_progress >= 0) {
        p.fillRect(QRectF(0, height() - 3, width() * m_progress, 3), PositionLine);
        p.fillRect(QRectF(width() * m_progress, height() - 3, width() * (1 - m_progress), 3), GridLine);
    }
    QString text = m_message;
    if (text.isEmpty() && m_progress >= 0)
        text = CWaveformResult::ProgressMessage(m_progress);
    if (text.isEmpty())
        return;
    QFont font = p.font();
    font.setPixelSize(13);
    p.setFont(font);
    const QRect area = rect().adjusted(8, RulerHeight, -8, 0);
    const QString line = p.fontMetrics().elidedText(text, Qt::ElideRight, area.width());
    QRect box = p.fontMetrics().boundingRect(area, Qt::AlignCenter, line).adjusted(-8, -3, 8, 3);
    p.fillRect(box, QColor(0, 0, 0, 150));
    p.setPen(MessageText);
    p.drawText(area, Qt::AlignCenter, line);
}

void CWaveformStrip::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    const double x = event->position().x();
    const WaveformEdge edge = m_active ? View().HitEdge(x, *m_active) : WaveformEdge::None;
    if (edge != WaveformEdge::None) {
        m_drag = edge;
        m_dragTime = edge == WaveformEdge::Start ? m_active->Start : m_active->End;
        m_pressed = false;
    } else {
        m_pressed = true;
    }
}

void CWaveformStrip::mouseMoveEvent(QMouseEvent *event)
{
    const double x = event->position().x();
    if (m_drag != WaveformEdge::None && m_active) {
        m_dragTime = View().DragTime(m_drag, x, *m_active);
        update();
        return;
    }
    const bool onEdge = m_active && View().HitEdge(x, *m_active) != WaveformEdge::None;
    setCursor(onEdge ? Qt::SizeHorCursor : Qt::ArrowCursor);
}

void CWaveformStrip::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    if (m_drag != WaveformEdge::None && m_active) {
        const WaveformEdge edge = m_drag;
        const double before = edge == WaveformEdge::Start ? m_active->Start : m_active->End;
        const double time = View().DragTime(edge, event->position().x(), *m_active);
        m_drag = WaveformEdge::None;
        if (time != before) {
            // Shown at once; the owner confirms it by setting the span again.
            (edge == WaveformEdge::Start ? m_active->Start : m_active->End) = time;
            emit EdgeDragged(edge, time);
        }
        update();
    } else if (m_pressed) {
        emit SeekRequested(std::max(0.0, View().TimeAt(event->position().x())));
    }
    m_pressed = false;
}

void CWaveformStrip::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && m_active && m_active->End > m_active->Start) {
        // The second press of a double-click is no click of its own: its release must not
        // seek away from the span being played.
        m_pressed = false;
        emit PlaySpanRequested(m_active->Start, m_active->End);
    } else
        QWidget::mouseDoubleClickEvent(event);
}

void CWaveformStrip::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_drag != WaveformEdge::None) {
        m_drag = WaveformEdge::None; // the edge goes back to where it was
        update();
        return;
    }
    QWidget::keyPressEvent(event);
}

void CWaveformStrip::wheelEvent(QWheelEvent *event)
{
    // Some systems turn Shift+wheel into a sideways wheel.
    const QPoint delta = event->angleDelta();
    const double notches = (delta.y() != 0 ? delta.y() : delta.x()) / 120.0;
    if (event->modifiers() & Qt::ControlModifier) {
        View().Zoom(std::pow(0.8, notches), event->position().x());
    } else if (event->modifiers() & Qt::ShiftModifier) {
        View().ScrollBy(-notches * View().Span() / 10);
    } else {
        event->ignore();
        return;
    }
    event->accept();
    update();
}
