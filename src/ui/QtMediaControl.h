#pragma once

#include "player/CMediaControlEvents.h"
#include "player/IMediaControl.h"

#include <QMediaPlayer>
#include <QVideoFrame>
#include <QWidget>

#include <optional>

class QAudioOutput;
class QLabel;
class QSlider;
class QVideoSink;

// The media control of a player window: a QMediaPlayer that draws its frames from a
// QVideoSink into a picture area, with an optional progress bar underneath.
//
// The play state the program sees is kept here, not read from the media player: a
// stopped video is held paused underneath so that it shows its frame, and a play or
// stop asked for while the file still loads is kept until it has loaded. A seek given
// before the pipeline has delivered a frame would be dropped by the decoder, so it is
// held (and reported as the position) until the first frame arrives.
class QtMediaControl : public QWidget, public IMediaControl
{
    Q_OBJECT

public:
    explicit QtMediaControl(QWidget *parent = nullptr);
    ~QtMediaControl() override;

    QString URL() const override;
    void setURL(const QString &url) override;
    int openState() const override { return m_openState; }
    int playState() const override;
    void play() override;
    void pause() override;
    void stop() override;
    double currentPosition() const override;
    void setCurrentPosition(double seconds) override;
    bool isAvailable(const QString &name) const override;
    double rate() const override;
    void setRate(double factor) override;
    int volume() const override { return m_volume; }
    void setVolume(int volume) override;
    void setAutoStart(bool autoStart) override { m_autoStart = autoStart; }
    void setMode(const QString &mode, bool on) override;
    double duration() const override;
    int imageSourceWidth() const override;
    int imageSourceHeight() const override;
    QString uiMode() const override { return m_uiMode; }
    void setUiMode(const QString &mode) override;
    CMediaControlEvents *Events() override { return &m_events; }
    void setPictureFilter(PictureFilter filter) override;
    void RefreshPicture() override;

    // The sink the frames arrive at (tests read frames from it) and the player itself.
    QVideoSink *videoSink() const { return m_sink; }
    QMediaPlayer *mediaPlayer() const { return m_player; }
    bool hasAudioOutput() const { return m_audio != nullptr; }
    // Height the progress bar takes while shown.
    int BarHeight() const;
    // Where the picture is drawn inside the picture area, keeping its proportions.
    QRect PictureRect() const;
    // A point of the picture area in pixels of the picture, counted from 0.
    QPoint ToPicturePixel(const QPoint &areaPoint) const;
    // The frame to show now, or an invalid one for a blank picture.
    QVideoFrame ShownFrame() const;
    // The picture drawn for the frame shown: the frame as an image, through the filter.
    QImage ShownPicture();

    QSize sizeHint() const override;

private:
    class PictureArea;
    friend class PictureArea;

    void onMediaStatus(QMediaPlayer::MediaStatus status);
    void onPlaybackState(QMediaPlayer::PlaybackState state);
    void onFrame(const QVideoFrame &frame);
    void updateOpenState();
    void updateBar();
    void holdFrame();
    bool loaded() const;
    void pictureClicked(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, const QPoint &areaPoint);

    CMediaControlEvents m_events;
    QMediaPlayer *m_player = nullptr;
    QVideoSink *m_sink = nullptr;
    QAudioOutput *m_audio = nullptr;
    PictureArea *m_picture = nullptr;
    QWidget *m_bar = nullptr;
    QSlider *m_slider = nullptr;
    QLabel *m_time = nullptr;

    QString m_url;
    QString m_uiMode = QStringLiteral("full");
    int m_openState = MediaOpenState::Undefined;
    int m_state = MediaPlayState::Undefined;
    int m_volume = 50;
    bool m_autoStart = true;
    bool m_showFrame = false;
    bool m_wasLoaded = false;
    bool m_playWhenLoaded = false;
    // No frame has come since the pipeline was (re)started: seeks must wait.
    bool m_awaitFrame = true;
    bool m_seekQueued = false;
    std::optional<qint64> m_pendingSeek;
    QVideoFrame m_frame;
    // m_frame as an image, made once per frame; null until a paint asks for it.
    QImage m_frameImage;
    PictureFilter m_filter;
};
