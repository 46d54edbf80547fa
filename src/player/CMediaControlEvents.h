#pragma once

#include <QObject>

// The events of a media control. A control owns one of these and emits on it, so that
// the player document and its window can both listen without the control being a
// QObject of the core library's making.
class CMediaControlEvents : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

signals:
    // The new open state (13: the media is open).
    void OpenStateChange(int newState);
    // A click on the picture. button: 1 left, 2 right, 4 middle; shift: 1 Shift, 2 Ctrl,
    // 4 Alt; x and y: pixels of the picture, counted from 0.
    void Click(int button, int shift, int x, int y);
};
