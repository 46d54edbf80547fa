#pragma once

#include "core/isub.h"

#include <QMetaObject>
#include <QPoint>
#include <QString>

class CPlayers;
class IMediaControl;
class IPlayerWindow;

// A player document: one video and its clock. Timing windows read its position, the
// preview follows it, and clicks on its picture give pixel positions to the effects.
// Every operation that touches the control reports its own fault with one message and
// leaves the state as it was; nothing is thrown to the caller. A video is never saved,
// so the document never says that it changed.
class CPlayer : public isub
{
public:
    CPlayer();
    ~CPlayer() override;
    CPlayer(const CPlayer &) = delete;
    CPlayer &operator=(const CPlayer &) = delete;

    // Serial number, window and control; the picture size starts at 640 by 480.
    void Init(qint32 serial, IPlayerWindow *window, IMediaControl *control);

    CPlayers *collection() const { return m_collection; }
    void setcollection(CPlayers *list) { m_collection = list; }
    IPlayerWindow *Window() const { return m_window; }
    void setWindow(IPlayerWindow *window) { m_window = window; }
    // The media control; the document listens to its open-state changes.
    IMediaControl *player() const { return m_control; }
    void setplayer(IMediaControl *control);

    // Sizes of the small jumps, in seconds.
    double BackStep() const { return m_backStep; }
    void setBackStep(double seconds) { m_backStep = seconds; }
    double ForwordStep() const { return m_forwordStep; }
    void setForwordStep(double seconds) { m_forwordStep = seconds; }

    // The file the control plays (its URL). Writing a non-empty name opens it and takes
    // the picture size; a file the control cannot take says "COMM_MSG_103". The name
    // last recorded for the document is the separate FileName() of the document contract.
    QString PlayerFileName() const;
    void setPlayerFileName(const QString &fileName);

    qint32 ImageSourceHeight() const { return m_imageHeight; }
    void setImageSourceHeight(qint32 pixels) { m_imageHeight = pixels; }
    qint32 ImageSourceWidth() const { return m_imageWidth; }
    void setImageSourceWidth(qint32 pixels) { m_imageWidth = pixels; }

    // Seconds. Writing outside 0 <= position < duration does nothing, silently.
    double CurrentPosition() const;
    void setCurrentPosition(double seconds);

    // The rate factor, kept from 0.1 to 2.0 and written to the control where it can take it.
    double Speed() const { return m_speed; }
    void setSpeed(double factor);

    // 1 stopped, 2 paused, 3 playing; 0 when unknown.
    int PlayState() const;

    // Play from stop, play at the stored speed from a pause, pause while playing.
    void Pause();
    void SamllForword();
    void SamllBack();
    // Jumps by delta seconds: never before 0, never to or past the end; a jump out of a
    // pause resumes playing, even when the target was refused.
    void Move(double delta);
    // Stops and comes back to the same position, so that the renderer loads the file and
    // its external subtitles again. Nothing without a file.
    void Reset();

    // A click on the picture at pixels (x, y) counted from 0. With mousePause it toggles
    // playing; in every case it gives the position counted from 1.
    QPoint Click(int x, int y, bool mousePause);

    // Document contract.
    bool Changed() const override { return false; }
    // Always empty: a video has no text form.
    QString Content() override { return {}; }
    // The real open: busy pointer, URL, play and stop to read the header, picture size.
    void setContent(const QString &fileName) override;
    // Closes the media.
    void Clear() override;

private:
    void onOpenStateChange(int state);
    IMediaControl &control() const;

    CPlayers *m_collection = nullptr;
    IPlayerWindow *m_window = nullptr;
    IMediaControl *m_control = nullptr;
    QMetaObject::Connection m_openStateLink;
    double m_speed = 1.0;
    double m_backStep = 3.0;
    double m_forwordStep = 3.0;
    qint32 m_imageHeight = 480;
    qint32 m_imageWidth = 640;
};
