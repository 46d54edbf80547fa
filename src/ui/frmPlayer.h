#pragma once

#include "core/IForm.h"
#include "core/IPlayerWindow.h"

#include <QSize>
#include <QWidget>
#include <memory>
#include <vector>

class CPlayer;
class CPlayerSubtitles;
class CPlayers;
class IMediaControl;
class MdiVelmar;
class QAction;
class QComboBox;
class QLabel;
class QSlider;
class QToolBar;

// A player window: one video, its buttons and its speed band. The document (CPlayer)
// holds every rule; the window shows it, passes keys and clicks on, and keeps its size
// fitted to the picture.
class frmPlayer : public QWidget, public IPlayerWindow, public IForm
{
    Q_OBJECT

public:
    // Without a control the window makes its own video control; a given control (a
    // stand-in for tests) is not owned and must outlive the window.
    explicit frmPlayer(IMediaControl *control = nullptr, QWidget *parent = nullptr);
    ~frmPlayer() override;

    // Takes the player list, makes the document, places the window and tells the frame.
    void Init(CPlayers *players);

    // IPlayerWindow
    QString Tag() const override { return m_tag; }
    void setTag(const QString &tag) override { m_tag = tag; }
    QString Caption() const override { return windowTitle(); }
    void setCaption(const QString &caption) override { setWindowTitle(caption); }
    CPlayer *player() const override { return m_player; }

    // IForm: a non-zero OpenType opens silently (no dialog, no media); a video is never
    // saved.
    bool OpenFile(int OpenType, const QString &FileName) override;
    bool SaveFile(bool SaveAs, int SaveType) override;

    // With (true) or without the control's progress bar.
    void ShowToolBar(bool flag);
    // The tips that show the steps and hot keys.
    void UpdateTips();

    IMediaControl *medPlayer() const { return m_control; }
    // The picture size the window was last fitted to.
    QSize FittedPicture() const { return m_fitted; }
    // A button of tlbPlayer or tlbFile by key.
    QAction *Button(const QString &key) const;
    // The subtitles of the linked timing document over the picture ("显示字幕").
    CPlayerSubtitles &Subtitles() const { return *m_subtitles; }

    QWidget *cbaPlayer = nullptr;
    QWidget *picPlayer = nullptr;
    QToolBar *tlbPlayer = nullptr;
    QToolBar *tlbFile = nullptr;
    QSlider *sldAviSpeed = nullptr;
    QComboBox *cmbAviSpeed = nullptr;
    // One line under the picture on what keeps the subtitles from showing; hidden when
    // there is none (and always while they are off).
    QLabel *lblStatus = nullptr;

signals:
    // A key went down; a handler may change it (0 swallows it).
    void KeyPress(int *keyCode);
    void SpeedChanged(double speed);
    // Picture pixels counted from 1.
    void PosSelected(int x, int y);
    void StartPosSelected(int x, int y);
    void ChangePosSelected(int x, int y);
    void EndPosSelected(int x, int y);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct BarButton;
    // The buttons of tlbFile and tlbPlayer in their order, with what they run and their
    // tips: what builds them also rewrites the tips.
    static const std::vector<BarButton> &BarButtons();

    MdiVelmar *frame() const;
    void onClick(int button, int shift, int x, int y);
    void onOpenState(int state);
    void onSpeedBand();
    void onSaveSpace(bool pressed);
    void onShowSubtitles(bool on);
    void onSubtitleStatus(const QString &line);
    void fitToPicture(const QSize &picture);
    int barHeight() const;
    void unload();

    IMediaControl *m_control = nullptr;
    QWidget *m_controlWidget = nullptr;
    QWidget *m_pictureArea = nullptr;
    CPlayers *m_players = nullptr;
    CPlayer *m_player = nullptr;
    QString m_tag;
    QSize m_fitted;
    bool m_mousePause = true;
    std::unique_ptr<CPlayerSubtitles> m_subtitles;
};
