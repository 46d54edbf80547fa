#include "ui/QtMediaControl.h"

#include "core/basTime.h"
#include "player/basPlayer.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMediaDevices>
#include <QMediaMetaData>
#include <QMouseEvent>
#include <QPainter>
#include <QSlider>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <QVideoSink>

// Paints the shown frame, scaled to fit and centred, and passes clicks on.
class QtMediaControl::PictureArea : public QWidget
{
public:
    explicit PictureArea(QtMediaControl *owner)
        : QWidget(owner)
        , m_owner(owner)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setMinimumSize(16, 16);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::black);
        const QImage image = m_owner->ShownPicture();
        if (image.isNull())
            return;
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(m_owner->PictureRect(), image);
    }

    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (rect().contains(event->position().toPoint()))
            m_owner->pictureClicked(event->button(), event->modifiers(), event->position().toPoint());
    }

private:
    QtMediaControl *m_owner;
};

QtMediaControl::QtMediaControl(QWidget *parent)
    : QWidget(parent)
{
    m_player = new QMediaPlayer(this);
    m_sink = new QVideoSink(this);
    m_player->setVideoSink(m_sink);
    // A machine without sound has no output to attach, and the player must still run.
    if (!QMediaDevices::audioOutputs().isEmpty()) {
        m_audio = new QAudioOutput(this);
        m_audio->setVolume(float(m_volume) / 100.0f);
        m_player->setAudioOutput(m_audio);
    }

    m_picture = new PictureArea(this);
    m_bar = new QWidget(this);
    m_slider = new QSlider(Qt::Horizontal, m_bar);
    m_slider->setRange(0, 0);
    m_time = new QLabel(m_bar);
    m_time->setText(TimeToString(0, 2) + QStringLiteral(" / ") + TimeToString(0, 2));
    auto *barLayout = new QHBoxLayout(m_bar);
    barLayout->setContentsMargins(4, 2, 4, 2);
    barLayout->addWidget(m_slider, 1);
    barLayout->addWidget(m_time);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_picture, 1);
    layout->addWidget(m_bar);

    connect(m_player, &QMediaPlayer::mediaStatusChanged, this, &QtMediaControl::onMediaStatus);
    connect(m_player, &QMediaPlayer::playbackStateChanged, this, &QtMediaControl::onPlaybackState);
    connect(m_player, &QMediaPlayer::durationChanged, this, [this] {
        updateOpenState();
        updateBar();
    });
    connect(m_player, &QMediaPlayer::metaDataChanged, this, &QtMediaControl::updateOpenState);
    connect(m_player, &QMediaPlayer::positionChanged, this, &QtMediaControl::updateBar);
    connect(m_sink, &QVideoSink::videoFrameChanged, this, &QtMediaControl::onFrame);
    connect(m_slider, &QSlider::sliderMoved, this, [this](int ms) { setCurrentPosition(ms / 1000.0); });
}

QtMediaControl::~QtMediaControl()
{
    // The player first: its last frames and state changes must not reach a half-gone widget.
    disconnect(m_player, nullptr, this, nullptr);
    disconnect(m_sink, nullptr, this, nullptr);
    m_player->stop();
}

QString QtMediaControl::URL() const
{
    return m_url;
}

void QtMediaControl::setURL(const QString &url)
{
    QUrl source;
    const QUrl asUrl(url, QUrl::StrictMode);
    if (url.isEmpty()) {
        // Closing.
    } else if (asUrl.isValid() && asUrl.scheme().size() > 1 && !asUrl.isLocalFile()) {
        source = asUrl; // a stream; whether it opens is known later
    } else {
        const QFileInfo file(asUrl.isLocalFile() ? asUrl.toLocalFile() : url);
        if (file.isFile() && file.isReadable())
            source = QUrl::fromLocalFile(file.absoluteFilePath());
    }

    m_url = source.isEmpty() ? QString() : url;
    m_state = source.isEmpty() ? MediaPlayState::Undefined : MediaPlayState::Stopped;
    m_wasLoaded = false;
    m_playWhenLoaded = !source.isEmpty() && m_autoStart;
    m_awaitFrame = true;
    m_pendingSeek.reset();
    m_frame = QVideoFrame();
    m_frameImage = QImage();
    m_player->setSource(source);
    if (source.isEmpty())
        m_player->stop();
    m_picture->update();
    updateOpenState();
    updateBar();
}

bool QtMediaControl::loaded() const
{
    switch (m_player->mediaStatus()) {
    case QMediaPlayer::LoadedMedia:
    case QMediaPlayer::BufferingMedia:
    case QMediaPlayer::BufferedMedia:
    case QMediaPlayer::StalledMedia:
    case QMediaPlayer::EndOfMedia:
        return true;
    default:
        return false;
    }
}

void QtMediaControl::updateOpenState()
{
    int state = MediaOpenState::Undefined;
    if (!m_url.isEmpty()) {
        if (loaded())
            // Metadata may trail the status by a moment; open means size and length known.
            state = (m_player->duration() > 0 || imageSourceWidth() > 0) ? MediaOpenState::MediaOpen
                                                                         : MediaOpenState::MediaOpening;
        else if (m_player->mediaStatus() == QMediaPlayer::LoadingMedia)
            state = MediaOpenState::MediaOpening;
        else if (m_player->mediaStatus() == QMediaPlayer::NoMedia)
            state = MediaOpenState::MediaChanging;
    }
    if (state == m_openState)
        return;
    m_openState = state;
    emit m_events.OpenStateChange(state);
}

void QtMediaControl::onMediaStatus(QMediaPlayer::MediaStatus status)
{
    if (status == QMediaPlayer::InvalidMedia) {
        m_state = MediaPlayState::Undefined;
        m_playWhenLoaded = false;
    } else if (loaded() && !m_wasLoaded) {
        m_wasLoaded = true;
        if (m_playWhenLoaded) {
            m_playWhenLoaded = false;
            m_state = MediaPlayState::Playing;
            m_player->play();
        } else if (m_state == MediaPlayState::Paused || m_showFrame) {
            holdFrame();
        }
    }
    updateOpenState();
}

void QtMediaControl::onPlaybackState(QMediaPlayer::PlaybackState state)
{
    // Follow what the media player does by itself (end of file, the progress bar);
    // a pause underneath may be a held stop and changes nothing.
    if (m_url.isEmpty())
        return;
    if (state == QMediaPlayer::PlayingState)
        m_state = MediaPlayState::Playing;
    else if (state == QMediaPlayer::StoppedState && m_state == MediaPlayState::Playing)
        m_state = MediaPlayState::Stopped;
    m_picture->update();
}

void QtMediaControl::holdFrame()
{
    // A paused pipeline prerolls one frame; until it is there a seek would be lost.
    m_awaitFrame = true;
    m_player->pause();
}

void QtMediaControl::onFrame(const QVideoFrame &frame)
{
    if (!frame.isValid())
        return;
    m_frame = frame;
    m_frameImage = QImage();
    m_awaitFrame = false;
    if (m_pendingSeek && !m_seekQueued) {
        // Not from inside the sink's call: a seek there upsets the pipeline.
        m_seekQueued = true;
        QTimer::singleShot(0, this, [this] {
            m_seekQueued = false;
            if (!m_pendingSeek)
                return;
            const qint64 target = *m_pendingSeek;
            m_pendingSeek.reset();
            m_player->setPosition(target);
            updateBar();
        });
    }
    m_picture->update();
}

QVideoFrame QtMediaControl::ShownFrame() const
{
    if (m_url.isEmpty() || (m_state == MediaPlayState::Stopped && !m_showFrame))
        return {};
    return m_frame;
}

QImage QtMediaControl::ShownPicture()
{
    const QVideoFrame frame = ShownFrame();
    if (!frame.isValid())
        return {};
    if (m_frameImage.isNull())
        m_frameImage = frame.toImage();
    if (!m_filter || m_frameImage.isNull())
        return m_frameImage;
    return m_filter(m_frameImage, FrameSeconds(frame.startTime(), currentPosition()));
}

void QtMediaControl::setPictureFilter(PictureFilter filter)
{
    m_filter = std::move(filter);
    m_picture->update();
}

void QtMediaControl::RefreshPicture()
{
    m_picture->update();
}

int QtMediaControl::playState() const
{
    return m_state;
}

void QtMediaControl::play()
{
    if (m_url.isEmpty())
        return;
    m_state = MediaPlayState::Playing;
    if (loaded())
        m_player->play();
    else
        m_playWhenLoaded = true;
    m_picture->update();
}

void QtMediaControl::pause()
{
    if (m_url.isEmpty())
        return;
    m_state = MediaPlayState::Paused;
    m_playWhenLoaded = false;
    if (loaded())
        m_player->pause();
    m_picture->update();
}

void QtMediaControl::stop()
{
    if (m_url.isEmpty())
        return;
    m_state = MediaPlayState::Stopped;
    m_playWhenLoaded = false;
    m_pendingSeek.reset();
    if (loaded()) {
        m_player->stop();
        if (m_showFrame)
            holdFrame();
    }
    m_picture->update();
    updateBar();
}

double QtMediaControl::currentPosition() const
{
    if (m_pendingSeek)
        return double(*m_pendingSeek) / 1000.0;
    return double(m_player->position()) / 1000.0;
}

void QtMediaControl::setCurrentPosition(double seconds)
{
    if (m_url.isEmpty())
        return;
    const qint64 ms = qMax<qint64>(0, qRound64(seconds * 1000.0));
    if (!loaded() || m_awaitFrame)
        m_pendingSeek = ms;
    else
        m_player->setPosition(ms);
    updateBar();
}

bool QtMediaControl::isAvailable(const QString &name) const
{
    const bool open = m_openState == MediaOpenState::MediaOpen;
    if (name.compare(QLatin1String("Play"), Qt::CaseInsensitive) == 0)
        return open && m_state != MediaPlayState::Playing;
    if (name.compare(QLatin1String("Pause"), Qt::CaseInsensitive) == 0)
        return open && m_state == MediaPlayState::Playing;
    if (name.compare(QLatin1String("Stop"), Qt::CaseInsensitive) == 0)
        return open && m_state != MediaPlayState::Stopped;
    if (name.compare(QLatin1String("Rate"), Qt::CaseInsensitive) == 0)
        return open;
    return false;
}

double QtMediaControl::rate() const
{
    return m_player->playbackRate();
}

void QtMediaControl::setRate(double factor)
{
    m_player->setPlaybackRate(factor);
}

void QtMediaControl::setVolume(int volume)
{
    m_volume = qBound(0, volume, 100);
    if (m_audio)
        m_audio->setVolume(float(m_volume) / 100.0f);
}

void QtMediaControl::setMode(const QString &mode, bool on)
{
    if (mode.compare(QLatin1String("showFrame"), Qt::CaseInsensitive) != 0)
        return;
    m_showFrame = on;
    // A video already stopped gets its frame now.
    if (on && m_state == MediaPlayState::Stopped && loaded()
        && m_player->playbackState() == QMediaPlayer::StoppedState)
        holdFrame();
    m_picture->update();
}

double QtMediaControl::duration() const
{
    return m_url.isEmpty() ? 0.0 : double(m_player->duration()) / 1000.0;
}

int QtMediaControl::imageSourceWidth() const
{
    if (m_url.isEmpty())
        return 0;
    const QSize size = m_player->metaData().value(QMediaMetaData::Resolution).toSize();
    if (size.width() > 0)
        return size.width();
    return qMax(0, m_sink->videoSize().width());
}

int QtMediaControl::imageSourceHeight() const
{
    if (m_url.isEmpty())
        return 0;
    const QSize size = m_player->metaData().value(QMediaMetaData::Resolution).toSize();
    if (size.height() > 0)
        return size.height();
    return qMax(0, m_sink->videoSize().height());
}

void QtMediaControl::setUiMode(const QString &mode)
{
    m_uiMode = mode;
    m_bar->setVisible(mode.compare(QLatin1String("none"), Qt::CaseInsensitive) != 0);
}

int QtMediaControl::BarHeight() const
{
    return m_bar->isVisibleTo(this) ? m_bar->sizeHint().height() : 0;
}

QSize QtMediaControl::sizeHint() const
{
    const QSize picture(imageSourceWidth() > 0 ? imageSourceWidth() : 640,
        imageSourceHeight() > 0 ? imageSourceHeight() : 480);
    return picture + QSize(0, BarHeight());
}

QRect QtMediaControl::PictureRect() const
{
    const QRect area = m_picture->rect();
    QSize picture(imageSourceWidth(), imageSourceHeight());
    if (picture.isEmpty())
        picture = m_frame.isValid() ? m_frame.size() : area.size();
    if (picture.isEmpty() || area.isEmpty())
        return area;
    const QSize fitted = picture.scaled(area.size(), Qt::KeepAspectRatio);
    return QRect(QPoint(area.x() + (area.width() - fitted.width()) / 2,
                     area.y() + (area.height() - fitted.height()) / 2),
        fitted);
}

QPoint QtMediaControl::ToPicturePixel(const QPoint &areaPoint) const
{
    const QRect shown = PictureRect();
    const int width = imageSourceWidth() > 0 ? imageSourceWidth() : shown.width();
    const int height = imageSourceHeight() > 0 ? imageSourceHeight() : shown.height();
    if (shown.isEmpty() || width <= 0 || height <= 0)
        return areaPoint;
    const qint64 x = qint64(areaPoint.x() - shown.x()) * width / shown.width();
    const qint64 y = qint64(areaPoint.y() - shown.y()) * height / shown.height();
    return QPoint(
        int(qBound<qint64>(0, x, qint64(width) - 1)), int(qBound<qint64>(0, y, qint64(height) - 1)));
}

void QtMediaControl::pictureClicked(
    Qt::MouseButton button, Qt::KeyboardModifiers modifiers, const QPoint &areaPoint)
{
    int code = 0;
    if (button == Qt::LeftButton)
        code = 1;
    else if (button == Qt::RightButton)
        code = 2;
    else if (button == Qt::MiddleButton)
        code = 4;
    int shift = 0;
    if (modifiers & Qt::ShiftModifier)
        shift |= 1;
    if (modifiers & Qt::ControlModifier)
        shift |= 2;
    if (modifiers & Qt::AltModifier)
        shift |= 4;
    const QPoint pixel = ToPicturePixel(areaPoint);
    emit m_events.Click(code, shift, pixel.x(), pixel.y());
}

void QtMediaControl::updateBar()
{
    const qint64 length = m_url.isEmpty() ? 0 : m_player->duration();
    const double position = currentPosition();
    m_slider->setRange(0, int(qMin<qint64>(length, INT_MAX)));
    if (!m_slider->isSliderDown())
        m_slider->setValue(int(position * 1000.0));
    m_time->setText(
        TimeToString(position, 2) + QStringLiteral(" / ") + TimeToString(double(length) / 1000.0, 2));
}
