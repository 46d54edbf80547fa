#pragma once

#include "player/CMediaControlEvents.h"
#include "player/IMediaControl.h"

#include <QSet>
#include <QStringList>

#include <functional>

// A media control without media, for tests: it keeps the state that the calls give it,
// opens any file at once (or late, on request) with the duration and size set in its
// public fields, writes down every command and throws where it is told to.
class CFakeMediaControl : public IMediaControl
{
public:
    // What the next opened file offers.
    double MediaDuration = 60.0;
    int MediaWidth = 320;
    int MediaHeight = 240;
    // The URL reads back empty after a write: the file cannot be taken.
    bool Refuse = false;
    // setURL leaves the media opening; FinishOpen() opens it.
    bool OpenLate = false;
    bool RateAvailable = true;
    bool AutoStart = true;
    bool ShowFrame = false;
    // Commands given, in order: "url <name>", "play", "pause", "stop", "seek <s>",
    // "rate <r>", "volume <v>", "uiMode <m>".
    QStringList Calls;
    // Names of operations that throw (error 5): "URL", "setURL", "openState", "playState",
    // "play", "pause", "stop", "currentPosition", "setCurrentPosition", "isAvailable",
    // "rate", "setRate", "volume", "setVolume", "duration", "imageSource".
    QSet<QString> Failing;
    // Called with each URL written, before the control acts on it.
    std::function<void(const QString &)> WhenURLWritten;

    // Puts the control in a play state directly, as the media would by itself.
    void setPlayStateDirect(int state) { m_playState = state; }
    void setPositionDirect(double seconds) { m_position = seconds; }
    void setOpenStateDirect(int state);
    void FinishOpen();
    // A click on the picture, as the user makes it.
    void ClickAt(int button, int shift, int x, int y);
    // A frame arrives, as the video delivers it at its time: it is shown at once.
    void FeedFrame(const QImage &frame, double seconds);
    // The picture on show (the last frame through the filter), and how many times a
    // picture was drawn.
    QImage Picture;
    int PicturesDrawn = 0;

    QString URL() const override;
    void setURL(const QString &url) override;
    int openState() const override;
    int playState() const override;
    void play() override;
    void pause() override;
    void stop() override;
    double currentPosition() const override;
    void setCurrentPosition(double seconds) override;
    bool isAvailable(const QString &name) const override;
    double rate() const override;
    void setRate(double factor) override;
    int volume() const override;
    void setVolume(int volume) override;
    void setAutoStart(bool autoStart) override { AutoStart = autoStart; }
    void setMode(const QString &mode, bool on) override;
    double duration() const override;
    int imageSourceWidth() const override;
    int imageSourceHeight() const override;
    QString uiMode() const override { return m_uiMode; }
    void setUiMode(const QString &mode) override;
    CMediaControlEvents *Events() override { return &m_events; }
    void setPictureFilter(PictureFilter filter) override;
    void RefreshPicture() override;

private:
    void check(const QString &operation) const;
    bool open() const { return m_openState == MediaOpenState::MediaOpen; }

    CMediaControlEvents m_events;
    QString m_url;
    int m_openState = MediaOpenState::Undefined;
    int m_playState = MediaPlayState::Undefined;
    double m_position = 0;
    double m_rate = 1.0;
    int m_volume = 50;
    QString m_uiMode = QStringLiteral("full");
    PictureFilter m_filter;
    QImage m_frame;
    double m_frameSeconds = 0;
};
