#pragma once

#include "timing/CAssOverlay.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>

class CTiming;
class CTimings;
class IPlayerWindow;

// The subtitles a player window draws over its video: the script of the timing document
// linked to that player, kept in step with the document's grid by a CAssOverlay and
// blended over each frame at the frame's size.
//
// Which document: the one of the active timing window when it is linked to this player,
// else the one drawn so far while it stays linked, else the first linked one. The links
// are looked at again on every frame and, while the subtitles are on, five times a second,
// so that a relink, a closed document or a changed style shows while the video is paused
// too. A document is held by its key, never by its address: a closed one is not touched.
//
// Off (the default), nothing is attached, no timer runs and frames pass unchanged.
class CPlayerSubtitles : public QObject
{
    Q_OBJECT

public:
    explicit CPlayerSubtitles(QObject *parent = nullptr);
    ~CPlayerSubtitles() override;

    // Where the timing documents are, asked each time the links are looked at (the list
    // of the root that runs at that moment); nullptr or a null answer means none.
    std::function<CTimings *()> Documents;
    // The window whose linked document is drawn. Not owned.
    void setPlayer(const IPlayerWindow *window);

    bool Enabled() const { return m_enabled; }
    void setEnabled(bool on);
    // The toggle as the settings remember it: off until it was switched on once.
    static bool SavedEnabled();
    static void SaveEnabled(bool on);

    // Looks which document is linked now and attaches its grid; true when that changed.
    bool Follow();
    // The document drawn, nullptr for none.
    CTiming *Document() const;
    CAssOverlay &Overlay() { return m_overlay; }

    // The frame with the subtitles of its time blended over it, at the frame's size. The
    // frame itself while off, without a linked document, or when the renderer cannot run.
    // The last picture is kept: the same frame at the same time over an unchanged track
    // is not drawn again.
    QImage Compose(const QImage &frame, double seconds);

    // One line for the player's status: why the subtitles do not show (as written);
    // "" when they do, and always while off.
    QString Status() const;

signals:
    // The picture on show is to be drawn again: the track or the linked document changed.
    void PictureChanged();
    // The status line changed.
    void StatusChanged(const QString &line);

private:
    CTiming *FindLinked() const;
    CTiming *DocumentOfKey(const QString &key) const;
    void Changed();
    void Poll();
    void UpdateStatus();

    CAssOverlay m_overlay;
    QTimer m_poll;
    const IPlayerWindow *m_player = nullptr;
    bool m_enabled = false;
    QString m_documentKey;
    QString m_status;
    // The last picture and what it was made of.
    QImage m_picture;
    qint64 m_pictureFrame = 0;
    double m_pictureSeconds = -1;
    quint64 m_generation = 0;
    quint64 m_pictureGeneration = 0;
};
