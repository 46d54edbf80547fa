#include "player/CPlayer.h"

#include "core/CMouse.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basMessage.h"
#include "player/CMediaControlEvents.h"
#include "player/IMediaControl.h"

namespace {

// One message box with the catalogue text of the fault; the caller goes on.
void report(const char *key)
{
    MsgBox(Msg(QString::fromLatin1(key)));
}

} // namespace

CPlayer::CPlayer() = default;

CPlayer::~CPlayer()
{
    QObject::disconnect(m_openStateLink);
}

void CPlayer::Init(qint32 serial, IPlayerWindow *window, IMediaControl *control)
{
    setSerialNo(serial);
    m_window = window;
    setplayer(control);
    m_imageHeight = 480;
    m_imageWidth = 640;
}

void CPlayer::setplayer(IMediaControl *control)
{
    QObject::disconnect(m_openStateLink);
    m_control = control;
    if (control && control->Events())
        m_openStateLink = QObject::connect(control->Events(), &CMediaControlEvents::OpenStateChange,
            [this](int state) { onOpenStateChange(state); });
}

IMediaControl &CPlayer::control() const
{
    if (!m_control)
        throw VelmarError(91, QStringLiteral("Object variable or With block variable not set"));
    return *m_control;
}

void CPlayer::onOpenStateChange(int state)
{
    // A control sets the rate back to 1 when it opens a file, so the speed is written
    // again at every change of the open state, available or not.
    try {
        control().setRate(m_speed);
    } catch (...) {
        report("PLAYER_MSG_203");
    }
    // A file that opens late gives its picture size only now.
    if (state == MediaOpenState::MediaOpen) {
        try {
            const int width = control().imageSourceWidth();
            const int height = control().imageSourceHeight();
            if (width > 0 && height > 0) {
                m_imageWidth = width;
                m_imageHeight = height;
            }
        } catch (...) { }
    }
}

QString CPlayer::PlayerFileName() const
{
    try {
        return control().URL();
    } catch (...) {
        return {};
    }
}

void CPlayer::setPlayerFileName(const QString &fileName)
{
    if (fileName.isEmpty())
        return;
    try {
        control().setURL(fileName);
        if (control().URL().isEmpty()) {
            MsgBox(Msg(QStringLiteral("COMM_MSG_103")));
            return;
        }
        m_imageHeight = control().imageSourceHeight();
        m_imageWidth = control().imageSourceWidth();
    } catch (...) {
        report("PLAYER_MSG_200");
    }
}

double CPlayer::CurrentPosition() const
{
    try {
        return control().currentPosition();
    } catch (...) {
        report("PLAYER_MSG_201");
        return 0;
    }
}

void CPlayer::setCurrentPosition(double seconds)
{
    try {
        if (seconds >= 0 && seconds < control().duration())
            control().setCurrentPosition(seconds);
    } catch (...) {
        report("PLAYER_MSG_202");
    }
}

void CPlayer::setSpeed(double factor)
{
    if (factor <= 0)
        factor = 0.1;
    else if (factor > 2.0)
        factor = 2.0;
    try {
        if (control().isAvailable(QStringLiteral("Rate")))
            control().setRate(factor);
        m_speed = factor;
    } catch (...) {
        report("PLAYER_MSG_203");
    }
}

int CPlayer::PlayState() const
{
    try {
        return control().playState();
    } catch (...) {
        report("PLAYER_MSG_204");
        return MediaPlayState::Undefined;
    }
}

void CPlayer::Pause()
{
    try {
        switch (control().playState()) {
        case MediaPlayState::Stopped:
            control().play();
            break;
        case MediaPlayState::Paused:
            control().setRate(m_speed);
            control().play();
            break;
        case MediaPlayState::Playing:
            control().pause();
            break;
        default:
            break;
        }
    } catch (...) {
        report("PLAYER_MSG_205");
    }
}

void CPlayer::SamllForword()
{
    Move(m_forwordStep);
}

void CPlayer::SamllBack()
{
    Move(-m_backStep);
}

void CPlayer::Move(double delta)
{
    try {
        double target = control().currentPosition() + delta;
        if (target < 0)
            target = 0;
        if (target < control().duration())
            control().setCurrentPosition(target);
        if (control().playState() == MediaPlayState::Paused)
            control().play();
    } catch (...) {
        report("PLAYER_MSG_206");
    }
}

void CPlayer::Reset()
{
    try {
        if (control().URL().isEmpty())
            return;
        const double position = control().currentPosition();
        control().stop();
        control().setCurrentPosition(0);
        control().setCurrentPosition(position);
        control().play();
    } catch (...) {
        report("PLAYER_MSG_207");
    }
}

QPoint CPlayer::Click(int x, int y, bool mousePause)
{
    if (mousePause) {
        try {
            if (control().playState() == MediaPlayState::Playing)
                control().pause();
            else if (control().isAvailable(QStringLiteral("Play")))
                control().play();
        } catch (...) {
            report("PLAYER_MSG_205");
        }
    }
    return QPoint(x + 1, y + 1);
}

void CPlayer::setContent(const QString &fileName)
{
    if (fileName.isEmpty())
        return;
    CMouse mouse;
    mouse.SetPointer(Qt::WaitCursor);
    try {
        control().setURL(fileName);
        if (control().URL().isEmpty()) {
            MsgBox(Msg(QStringLiteral("COMM_MSG_103")));
            return;
        }
        // Play and stop make the control read the media header without playing on.
        control().play();
        control().stop();
        if (control().openState() == MediaOpenState::MediaOpen) {
            m_imageHeight = control().imageSourceHeight();
            m_imageWidth = control().imageSourceWidth();
        }
    } catch (...) {
        report("PLAYER_MSG_200");
    }
}

void CPlayer::Clear()
{
    try {
        control().setURL(QString());
    } catch (...) {
        report("PLAYER_MSG_208");
    }
}
