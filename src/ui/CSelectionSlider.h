#pragma once

#include <QSlider>

// A horizontal slider that also holds a selected range, drawn in blue over its groove.
// Pressing sets the value where the mouse is; letting go reports the range between the
// press and the release, which the owner may take as the selection. A press and release
// at one value reports an empty range.
class CSelectionSlider : public QSlider
{
    Q_OBJECT

public:
    explicit CSelectionSlider(QWidget *parent = nullptr);

    void setSelection(int start, int length);
    int SelectionStart() const { return m_selStart; }
    int SelectionLength() const { return m_selLength; }
    // The value under a point of the widget.
    int ValueAt(const QPoint &point) const;

signals:
    void RangeSelected(int pressedAt, int releasedAt);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int m_pressedAt = -1;
    int m_selStart = 0;
    int m_selLength = 0;
};
