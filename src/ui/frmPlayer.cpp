#include "ui/frmPlayer.h"

#include "core/CHotKeys.h"
#include "core/IPrompt.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "player/CMediaControlEvents.h"
#include "player/CPlayer.h"
#include "player/CPlayers.h"
#include "player/IMediaControl.h"
#include "player/basPlayer.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"
#include "shell/basFrame.h"
#include "shell/basRouting.h"
#include "timing/CPlayerSubtitles.h"
#include "ui/MdiVelmar.h"
#include "ui/QtMediaControl.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

// A button of the player's bars. Toggles run on every change of their state.
struct frmPlayer::BarButton
{
    QToolBar *frmPlayer::*Bar;
    const char *Key;
    QStyle::StandardPixmap Icon;
    bool Toggle;
    bool Checked;
    void (*Run)(frmPlayer &, bool);
    // The tip, from the player's steps and the hot keys.
    QString (*Tip)(double back, double forword, const CHotKeys &keys);
};

const std::vector<frmPlayer::BarButton> &frmPlayer::BarButtons()
{
    static const std::vector<BarButton> buttons = {
        { &frmPlayer::tlbFile, "Open", QStyle::SP_DialogOpenButton, false, false,
            [](frmPlayer &w, bool) { w.OpenFile(0, QString()); },
            [](double, double, const CHotKeys &) { return Msg(QStringLiteral("COMM_MSG_104")); } },
        { &frmPlayer::tlbPlayer, "SmallBack", QStyle::SP_MediaSeekBackward, false, false,
            [](frmPlayer &w, bool) {
                if (w.m_player)
                    w.m_player->SamllBack();
            },
            [](double back, double, const CHotKeys &keys) { return SmallBackTip(back, keys); } },
        { &frmPlayer::tlbPlayer, "SmallForword", QStyle::SP_MediaSeekForward, false, false,
            [](frmPlayer &w, bool) {
                if (w.m_player)
                    w.m_player->SamllForword();
            },
            [](double, double forword, const CHotKeys &keys) { return SmallForwordTip(forword, keys); } },
        { &frmPlayer::tlbPlayer, "Reset", QStyle::SP_BrowserReload, false, false,
            [](frmPlayer &w, bool) {
                if (w.m_player)
                    w.m_player->Reset();
            },
            [](double, double, const CHotKeys &keys) { return ResetTip(keys); } },
        { &frmPlayer::tlbPlayer, "SaveSpace", QStyle::SP_TitleBarShadeButton, true, false,
            [](frmPlayer &w, bool pressed) { w.onSaveSpace(pressed); },
            [](double, double, const CHotKeys &) { return Msg(QStringLiteral("PLAYER_BUTTON_TIP_105")); } },
        // Down: a click on the picture also plays or pauses.
        { &frmPlayer::tlbPlayer, "MousePause", QStyle::SP_MediaPause, true, true,
            [](frmPlayer &w, bool pressed) { w.m_mousePause = pressed; },
            [](double, double, const CHotKeys &) { return Msg(QStringLiteral("PLAYER_BUTTON_TIP_106")); } },
        // Down: the subtitles of the linked timing document over the picture. Its state
        // comes from the settings.
        { &frmPlayer::tlbPlayer, "ShowSubtitles", QStyle::SP_FileDialogDetailedView, true, false,
            [](frmPlayer &w, bool on) {
                CPlayerSubtitles::SaveEnabled(on);
                w.onShowSubtitles(on);
            },
            [](double, double, const CHotKeys &) { return Msg(QStringLiteral("VELMAR_OVERLAY_101")); } },
    };
    return buttons;
}

frmPlayer::frmPlayer(IMediaControl *control, QWidget *parent)
    : QWidget(parent)
    , m_control(control)
{
    setObjectName(QStringLiteral("frmPlayer"));
    setFocusPolicy(Qt::StrongFocus);
    m_subtitles = std::make_unique<CPlayerSubtitles>();
    m_subtitles->Documents = [] { return Velmar ? Velmar->Timings() : nullptr; };
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    cbaPlayer = new QWidget(this);
    cbaPlayer->setObjectName(QStringLiteral("cbaPlayer"));
    auto *band = new QHBoxLayout(cbaPlayer);
    band->setContentsMargins(2, 0, 2, 0);
    tlbFile = new QToolBar(cbaPlayer);
    tlbFile->setObjectName(QStringLiteral("tlbFile"));
    tlbFile->setIconSize(QSize(16, 16));
    tlbPlayer = new QToolBar(cbaPlayer);
    tlbPlayer->setObjectName(QStringLiteral("tlbPlayer"));
    tlbPlayer->setIconSize(QSize(16, 16));
    for (const BarButton &b : BarButtons()) {
        QToolBar *bar = this->*b.Bar;
        QAction *a = bar->addAction(style()->standardIcon(b.Icon), QString::fromLatin1(b.Key));
        a->setObjectName(QString::fromLatin1(b.Key));
        a->setCheckable(b.Toggle);
        const auto run = b.Run;
        if (b.Toggle)
            connect(a, &QAction::toggled, this, [this, run](bool on) { run(*this, on); });
        else
            connect(a, &QAction::triggered, this, [this, run](bool on) { run(*this, on); });
        a->setChecked(b.Checked);
    }
    band->addWidget(tlbFile);
    band->addWidget(tlbPlayer);
    auto *speedCaption = new QLabel(Msg(QStringLiteral("PLAYER_BAND_CAPTION_100")), cbaPlayer);
    speedCaption->setObjectName(QStringLiteral("lblAviSpeed"));
    band->addWidget(speedCaption);
    sldAviSpeed = new QSlider(Qt::Horizontal, cbaPlayer);
    sldAviSpeed->setObjectName(QStringLiteral("sldAviSpeed"));
    sldAviSpeed->setRange(0, 20);
    sldAviSpeed->setSingleStep(1);
    sldAviSpeed->setPageStep(1);
    sldAviSpeed->setValue(10);
    sldAviSpeed->setMinimumWidth(80);
    band->addWidget(sldAviSpeed, 1);
    cmbAviSpeed = new QComboBox(cbaPlayer);
    cmbAviSpeed->setObjectName(QStringLiteral("cmbAviSpeed"));
    cmbAviSpeed->addItems(SpeedListEntries());
    cmbAviSpeed->setCurrentIndex(0);
    band->addWidget(cmbAviSpeed);
    layout->addWidget(cbaPlayer);
    connect(sldAviSpeed, &QSlider::valueChanged, this, &frmPlayer::onSpeedBand);
    connect(cmbAviSpeed, &QComboBox::activated, this, &frmPlayer::onSpeedBand);

    picPlayer = new QWidget(this);
    picPlayer->setObjectName(QStringLiteral("picPlayer"));
    auto *pictureLayout = new QVBoxLayout(picPlayer);
    pictureLayout->setContentsMargins(0, 0, 0, 0);
    if (!m_control) {
        auto *media = new QtMediaControl(picPlayer);
        m_control = media;
        m_controlWidget = media;
        // The picture area is the control's first child; its mouse goes to the effects.
        const QList<QWidget *> children = media->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        if (!children.isEmpty()) {
            m_pictureArea = children.first();
            m_pictureArea->installEventFilter(this);
        }
    } else {
        m_controlWidget = new QWidget(picPlayer);
        m_controlWidget->setStyleSheet(QStringLiteral("background: black"));
    }
    m_controlWidget->setObjectName(QStringLiteral("medPlayer"));
    pictureLayout->addWidget(m_controlWidget);
    layout->addWidget(picPlayer, 1);
    lblStatus = new QLabel(this);
    lblStatus->setObjectName(QStringLiteral("lblStatus"));
    lblStatus->setContentsMargins(4, 1, 4, 1);
    lblStatus->setVisible(false);
    layout->addWidget(lblStatus);

    connect(m_control->Events(), &CMediaControlEvents::Click, this, &frmPlayer::onClick);
    connect(m_control->Events(), &CMediaControlEvents::OpenStateChange, this, &frmPlayer::onOpenState);
    // The load of the window: bar shown, no start on open, a frame shown while stopped.
    ShowToolBar(true);
    m_control->setAutoStart(false);
    m_control->setMode(QStringLiteral("showFrame"), true);
    setWindowTitle(Msg(QStringLiteral("PLAYER_TITLE_000")));
    UpdateTips();

    connect(
        m_subtitles.get(), &CPlayerSubtitles::PictureChanged, this, [this] { m_control->RefreshPicture(); });
    connect(m_subtitles.get(), &CPlayerSubtitles::StatusChanged, this, &frmPlayer::onSubtitleStatus);
    m_subtitles->setPlayer(this);
    QAction *subtitles = Button(QStringLiteral("ShowSubtitles"));
    subtitles->setText(Msg(QStringLiteral("VELMAR_OVERLAY_100")));
    {
        // Restoring the remembered state does not write it back.
        const QSignalBlocker quiet(subtitles);
        subtitles->setChecked(CPlayerSubtitles::SavedEnabled());
    }
    onShowSubtitles(subtitles->isChecked());
}

frmPlayer::~frmPlayer()
{
    // A control that is not the window's own outlives it: it must not keep drawing
    // through this window's subtitles.
    m_control->setPictureFilter(nullptr);
    unload();
}

MdiVelmar *frmPlayer::frame() const
{
    if (auto *mdi = qobject_cast<MdiVelmar *>(window()))
        return mdi;
    return qobject_cast<MdiVelmar *>(MainWindow);
}

void frmPlayer::Init(CPlayers *players)
{
    m_players = players;
    if (!m_players)
        return;
    m_player = m_players->Create(this, m_control);
    m_player->setSpeed(SliderSpeed(sldAviSpeed->value(), cmbAviSpeed->currentIndex()));
    // Each new player a little lower and to the right of the one before.
    const int n = int(m_players->Count());
    if (auto *sub = qobject_cast<QMdiSubWindow *>(parentWidget()))
        sub->setGeometry(333 + 20 * (n - 1), 133 + 20 * (n - 1), 400, sub->height());
    UpdateTips();
    if (MdiVelmar *mdi = frame()) {
        connect(mdi, &MdiVelmar::KeyTextsChanged, this, &frmPlayer::UpdateTips);
        mdi->OpenPlayer(this);
    }
}

QAction *frmPlayer::Button(const QString &key) const
{
    for (QToolBar *bar : { tlbPlayer, tlbFile })
        for (QAction *a : bar->actions())
            if (a->objectName() == key)
                return a;
    return nullptr;
}

void frmPlayer::UpdateTips()
{
    CHotKeys none;
    const CHotKeys &keys = HotKeys ? *HotKeys : none;
    const double back = m_player ? m_player->BackStep() : (m_players ? m_players->BackStep() : 3);
    const double forword = m_player ? m_player->ForwordStep() : (m_players ? m_players->ForwordStep() : 3);
    for (const BarButton &b : BarButtons())
        Button(QString::fromLatin1(b.Key))->setToolTip(b.Tip(back, forword, keys));
    sldAviSpeed->setToolTip(SliderSpeedTip(sldAviSpeed->value(), cmbAviSpeed->currentIndex()));
}

void frmPlayer::onSpeedBand()
{
    sldAviSpeed->setToolTip(SliderSpeedTip(sldAviSpeed->value(), cmbAviSpeed->currentIndex()));
    if (!m_player)
        return;
    m_player->setSpeed(SliderSpeed(sldAviSpeed->value(), cmbAviSpeed->currentIndex()));
    emit SpeedChanged(m_player->Speed());
}

int frmPlayer::barHeight() const
{
    if (auto *media = dynamic_cast<QtMediaControl *>(m_control))
        return media->BarHeight();
    return 0;
}

void frmPlayer::ShowToolBar(bool flag)
{
    m_control->setUiMode(flag ? QStringLiteral("full") : QStringLiteral("none"));
}

void frmPlayer::onSaveSpace(bool pressed)
{
    auto *sub = qobject_cast<QMdiSubWindow *>(parentWidget());
    if (sub && sub->isMaximized())
        sub->showNormal();
    const int before = barHeight();
    ShowToolBar(!pressed);
    const int change = barHeight() - before;
    if (sub && change != 0)
        sub->resize(sub->width(), sub->height() + change);
}

void frmPlayer::onShowSubtitles(bool on)
{
    if (on == m_subtitles->Enabled())
        return;
    m_subtitles->setEnabled(on);
    // Off, the control draws its frames as they come, as it does without subtitles.
    if (on)
        m_control->setPictureFilter(
            [this](const QImage &frame, double seconds) { return m_subtitles->Compose(frame, seconds); });
    else
        m_control->setPictureFilter(nullptr);
    onSubtitleStatus(m_subtitles->Status());
}

void frmPlayer::onSubtitleStatus(const QString &line)
{
    lblStatus->setText(line);
    lblStatus->setToolTip(line);
    lblStatus->setVisible(!line.isEmpty());
}

void frmPlayer::fitToPicture(const QSize &picture)
{
    m_fitted = picture;
    auto *sub = qobject_cast<QMdiSubWindow *>(parentWidget());
    if (sub && sub->isMaximized())
        sub->showNormal();
    const QSize content(picture.width(), picture.height() + barHeight() + cbaPlayer->sizeHint().height());
    if (sub) {
        // The sub-window's margins hold its frame and title bar.
        const QMargins chrome = sub->contentsMargins();
        sub->resize(content.grownBy(chrome));
    } else {
        resize(content);
    }
}

void frmPlayer::onOpenState(int state)
{
    if (state == MediaOpenState::MediaOpen)
        fitToPicture(PictureSize(m_control->imageSourceWidth(), m_control->imageSourceHeight()));
}

bool frmPlayer::OpenFile(int OpenType, const QString &FileName)
{
    if (!m_player)
        return false;
    const bool silent = OpenType != 0;
    if (!QueryCloseDocument(m_player->Changed(), [this] {
            MsgBox(Msg(QStringLiteral("PLAYER_MSG_100")));
            return SaveFile(false, 0);
        }))
        return false;
    QString name = basConvert::Trim(FileName);
    if (name.isEmpty() && !silent)
        name = ShowFileDialog(FileOperation::Open, ScriptType::Video);
    if (name.isEmpty())
        return false;
    if (!silent) {
        const int volume = m_control->volume();
        m_player->setContent(name);
        const QSize picture = PictureSize(m_control->imageSourceWidth(), m_control->imageSourceHeight());
        m_control->setVolume(volume);
        fitToPicture(picture);
        m_player->setFileName(name);
        m_player->setChanged(false);
    }
    setCaption(name);
    if (MdiVelmar *mdi = frame())
        mdi->ChangePlayerName(this);
    if (RecentFile)
        RecentFile->InsertRecentFileList(name, ScriptType::Video);
    return true;
}

bool frmPlayer::SaveFile(bool, int)
{
    return false;
}

void frmPlayer::onClick(int, int, int x, int y)
{
    if (!m_player)
        return;
    const QPoint at = m_player->Click(x, y, m_mousePause);
    emit PosSelected(at.x(), at.y());
    if (MdiVelmar *mdi = frame())
        mdi->setPanelText(QStringLiteral("Position"), PositionPanelText(at.x(), at.y()));
}

bool frmPlayer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_pictureArea) {
        const QEvent::Type type = event->type();
        if (type == QEvent::MouseButtonPress || type == QEvent::MouseMove
            || type == QEvent::MouseButtonRelease) {
            auto *media = static_cast<QtMediaControl *>(m_controlWidget);
            const QPoint p = media->ToPicturePixel(static_cast<QMouseEvent *>(event)->position().toPoint());
            const int x = p.x() + 1;
            const int y = p.y() + 1;
            if (type == QEvent::MouseButtonPress)
                emit StartPosSelected(x, y);
            else if (type == QEvent::MouseMove)
                emit ChangePosSelected(x, y);
            else
                emit EndPosSelected(x, y);
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmPlayer::keyPressEvent(QKeyEvent *event)
{
    int code = KeyCodeOfQtKey(event->key());
    emit KeyPress(&code);
    if (code == 0 || !HotKeys) {
        QWidget::keyPressEvent(event);
        return;
    }
    const PlayerKeyCommand command = PlayerKeyCommandOf(code, *HotKeys);
    if (command == PlayerKeyCommand::None) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (MdiVelmar *mdi = frame()) {
        switch (command) {
        case PlayerKeyCommand::PlayPause:
            mdi->PlayPause();
            break;
        case PlayerKeyCommand::PlayBack:
            mdi->PlayBack();
            break;
        case PlayerKeyCommand::PlayForword:
            mdi->PlayForword();
            break;
        case PlayerKeyCommand::None:
            break;
        }
    } else if (m_players) {
        RunPlayerKeyCommand(command, *m_players, m_player);
    }
    event->accept();
}

void frmPlayer::closeEvent(QCloseEvent *event)
{
    if (m_player && !QueryCloseDocument(m_player->Changed(), [this] { return SaveFile(false, 0); })) {
        event->ignore();
        return;
    }
    unload();
    event->accept();
}

void frmPlayer::unload()
{
    if (!m_player || !m_players)
        return;
    const QString key = m_tag;
    m_player = nullptr;
    m_players->Delete(key);
    m_players = nullptr;
    if (MdiVelmar *mdi = frame())
        mdi->ClosePlayer(this);
}
