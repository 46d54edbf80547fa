#include "player/CFakeMediaControl.h"

#include "core/VelmarError.h"
#include "core/basConvert.h"

using namespace basConvert;

void CFakeMediaControl::check(const QString &operation) const
{
    if (Failing.contains(operation))
        throw VelmarError::InvalidCall();
}

void CFakeMediaControl::setOpenStateDirect(int state)
{
    m_openState = state;
    emit m_events.OpenStateChange(state);
}

void CFakeMediaControl::FinishOpen()
{
    if (m_url.isEmpty())
        return;
    m_playState = MediaPlayState::Stopped;
    setOpenStateDirect(MediaOpenState::MediaOpen);
    if (AutoStart)
        m_playState = MediaPlayState::Playing;
}

void CFakeMediaControl::ClickAt(int button, int shift, int x, int y)
{
    emit m_events.Click(button, shift, x, y);
}

QString CFakeMediaControl::URL() const
{
    check(QStringLiteral("URL"));
    return m_url;
}

void CFakeMediaControl::setURL(const QString &url)
{
    check(QStringLiteral("setURL"));
    Calls << QStringLiteral("url ") + url;
    if (WhenURLWritten)
        WhenURLWritten(url);
    m_position = 0;
    m_playState = MediaPlayState::Undefined;
    m_url = Refuse ? QString() : url;
    if (m_url.isEmpty()) {
        setOpenStateDirect(MediaOpenState::Undefined);
        return;
    }
    // A new media resets the rate, which is why the player writes it again on open.
    m_rate = 1.0;
    setOpenStateDirect(MediaOpenState::MediaChanging);
    if (OpenLate)
        setOpenStateDirect(MediaOpenState::MediaOpening);
    else
        FinishOpen();
}

int CFakeMediaControl::openState() const
{
    check(QStringLiteral("openState"));
    return m_openState;
}

int CFakeMediaControl::playState() const
{
    check(QStringLiteral("playState"));
    return m_playState;
}

void CFakeMediaControl::play()
{
    check(QStringLiteral("play"));
    Calls << QStringLiteral("play");
    if (open())
        m_playState = MediaPlayState::Playing;
}

void CFakeMediaControl::pause()
{
    check(QStringLiteral("pause"));
    Calls << QStringLiteral("pause");
    if (open())
        m_playState = MediaPlayState::Paused;
}

void CFakeMediaControl::stop()
{
    check(QStringLiteral("stop"));
    Calls << QStringLiteral("stop");
    if (open()) {
        m_playState = MediaPlayState::Stopped;
        m_position = 0;
    }
}

double CFakeMediaControl::currentPosition() const
{
    check(QStringLiteral("currentPosition"));
    return m_position;
}

void CFakeMediaControl::setCurrentPosition(double seconds)
{
    check(QStringLiteral("setCurrentPosition"));
    Calls << QStringLiteral("seek ") + CStr(seconds);
    m_position = seconds;
}

bool CFakeMediaControl::isAvailable(const QString &name) const
{
    check(QStringLiteral("isAvailable"));
    if (name.compare(QLatin1String("Rate"), Qt::CaseInsensitive) == 0)
        return RateAvailable && open();
    if (name.compare(QLatin1String("Play"), Qt::CaseInsensitive) == 0)
        return open() && m_playState != MediaPlayState::Playing;
    if (name.compare(QLatin1String("Pause"), Qt::CaseInsensitive) == 0)
        return open() && m_playState == MediaPlayState::Playing;
    if (name.compare(QLatin1String("Stop"), Qt::CaseInsensitive) == 0)
        return open() && m_playState != MediaPlayState::Stopped;
    return false;
}

double CFakeMediaControl::rate() const
{
    check(QStringLiteral("rate"));
    return m_rate;
}

void CFakeMediaControl::setRate(double factor)
{
    check(QStringLiteral("setRate"));
    Calls << QStringLiteral("rate ") + CStr(factor);
    m_rate = factor;
}

int CFakeMediaControl::volume() const
{
    check(QStringLiteral("volume"));
    return m_volume;
}

void CFakeMediaControl::setVolume(int volume)
{
    check(QStringLiteral("setVolume"));
    Calls << QStringLiteral("volume ") + CStr(qint64(volume));
    m_volume = volume;
}

void CFakeMediaControl::setMode(const QString &mode, bool on)
{
    if (mode.compare(QLatin1String("showFrame"), Qt::CaseInsensitive) == 0)
        ShowFrame = on;
}

double CFakeMediaControl::duration() const
{
    check(QStringLiteral("duration"));
    return open() ? MediaDuration : 0.0;
}

int CFakeMediaControl::imageSourceWidth() const
{
    check(QStringLiteral("imageSource"));
    return open() ? MediaWidth : 0;
}

int CFakeMediaControl::imageSourceHeight() const
{
    check(QStringLiteral("imageSource"));
    return open() ? MediaHeight : 0;
}

void CFakeMediaControl::setUiMode(const QString &mode)
{
    Calls << QStringLiteral("uiMode ") + mode;
    m_uiMode = mode;
}

void CFakeMediaControl::FeedFrame(const QImage &frame, double seconds)
{
    m_frame = frame;
    m_frameSeconds = seconds;
    RefreshPicture();
}

void CFakeMediaControl::setPictureFilter(PictureFilter filter)
{
    m_filter = std::move(filter);
    RefreshPicture();
}

void CFakeMediaControl::RefreshPicture()
{
    if (m_frame.isNull())
        return;
    Picture = m_filter ? m_filter(m_frame, m_frameSeconds) : m_frame;
    ++PicturesDrawn;
}
