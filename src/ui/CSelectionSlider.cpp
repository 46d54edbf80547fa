#include "ui/CSelectionSlider.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>

namespace {

// The span of pixels the handle's centre runs along.
struct Track
{
    int First = 0;
    int Length = 0;
};

Track TrackOf(const QSlider &slider, const QStyleOptionSlider &option)
{
    const QRect groove
        = slider.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, &slider);
    const QRect handle
        = slider.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider);
    const int half = handle.width() / 2;
    return { groove.x() + half, std::max(groove.width() - handle.width(), 1) };
}

} // namespace

CSelectionSlider::CSelectionSlider(QWidget *parent)
    : QSlider(Qt::Horizontal, parent)
{
    setTickPosition(QSlider::TicksBelow);
}

void CSelectionSlider::setSelection(int start, int length)
{
    if (start == m_selStart && length == m_selLength)
        return;
    m_selStart = start;
    m_selLength = length;
    update();
}

int CSelectionSlider::ValueAt(const QPoint &point) const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const Track track = TrackOf(*this, option);
    const int at = std::clamp(point.x() - track.First, 0, track.Length);
    return QStyle::sliderValueFromPosition(minimum(), maximum(), at, track.Length);
}

void CSelectionSlider::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QSlider::mousePressEvent(event);
        return;
    }
    m_pressedAt = ValueAt(event->position().toPoint());
    setValue(m_pressedAt);
    event->accept();
}

void CSelectionSlider::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressedAt < 0) {
        QSlider::mouseMoveEvent(event);
        return;
    }
    const int at = ValueAt(event->position().toPoint());
    setValue(at);
    // The range being dragged shows while the mouse is down.
    setSelection(std::min(m_pressedAt, at), std::abs(at - m_pressedAt));
    event->accept();
}

void CSelectionSlider::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_pressedAt < 0 || event->button() != Qt::LeftButton) {
        QSlider::mouseReleaseEvent(event);
        return;
    }
    const int pressedAt = m_pressedAt;
    m_pressedAt = -1;
    const int at = ValueAt(event->position().toPoint());
    setValue(at);
    emit RangeSelected(pressedAt, at);
    event->accept();
}

void CSelectionSlider::paintEvent(QPaintEvent *event)
{
    QSlider::paintEvent(event);
    if (m_selLength <= 0 || maximum() <= minimum())
        return;
    QStyleOptionSlider option;
    initStyleOption(&option);
    const Track track = TrackOf(*this, option);
    const QRect groove = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
    const int from
        = track.First + QStyle::sliderPositionFromValue(minimum(), maximum(), m_selStart, track.Length);
    const int to = track.First
        + QStyle::sliderPositionFromValue(minimum(), maximum(), m_selStart + m_selLength, track.Length);
    QPainter painter(this);
    const int height = std::max(groove.height(), 6);
    painter.fillRect(QRect(from, groove.center().y() - height / 2, std::max(to - from, 1), height),
        QColor(0, 90, 255, 170));
}
