#pragma once

#include "effects/CEffectWindowModel.h"

#include <QMetaObject>
#include <QPointer>
#include <QWidget>

#include <array>
#include <vector>

class CSelectionSlider;
class CSpreadView;
class IPlayerWindow;
class QButtonGroup;
class QGridLayout;
class QGroupBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTextEdit;
class QTreeWidget;
class frmTiming;

// The effect window of a timing window: a tree of eight pages, the page area whose
// controls each page declares (the tag page with one tab per tag), the explanation of
// the page or tag, and the result box with its history, which is applied to the timing
// grid. Points clicked and dragged on the player's picture and the player's position
// fill its boxes. Everything it decides is in CEffectWindowModel.
class frmEffect : public QWidget
{
    Q_OBJECT

public:
    explicit frmEffect(QWidget *parent = nullptr);
    ~frmEffect() override;

    // Serves the timing window: its grid takes the results, its document's player gives
    // points and times.
    void Init(frmTiming &timingForm);
    // The player whose picture and clock the window uses (nullptr: none).
    void setPlayerWindow(IPlayerWindow *player);
    IPlayerWindow *PlayerWindow() const { return m_model.PlayerWindow; }

    CEffectWindowModel &Model() { return m_model; }
    // Selects the tree node of a page, as a click on it does.
    void SelectPage(int page);
    // The widget of a control of the page area or the tag page by its key, "txtArg(3)",
    // "sldArg(0)", "txtFontSize", "optBold(1)".
    QWidget *Control(const QString &key) const;

    // The player window's events: a click, and a drag's start, moves and end.
    void PlayerWindow_PosSelected(int x, int y);
    void PlayerWindow_StartPosSelected(int x, int y);
    void PlayerWindow_ChangePosSelected(int x, int y);
    void PlayerWindow_EndPosSelected(int x, int y);

    QTreeWidget *trvSpecialEffect = nullptr;
    QGroupBox *fraEffect = nullptr;
    QTabWidget *tabEffectSample = nullptr;
    QGroupBox *fraAccel = nullptr;
    QTextEdit *rtfExplain = nullptr;
    QPlainTextEdit *rtfResult = nullptr;
    QPushButton *cmdCreate = nullptr;
    QPushButton *cmdApply = nullptr;
    QPushButton *cmdClear = nullptr;
    std::array<QPushButton *, 2> cmdRestore {};
    CSpreadView *spdArg = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildPool();
    void buildTagPage();
    void buildResult();
    void buildLayout();
    void showPage();
    void showValues();
    void showControl(const CEffectControl &control, QWidget *widget);
    void showExplanation();
    void showHistory();
    void tabChanged(int tab);
    void create();
    void restore(bool back);
    void clear();
    void apply();
    void colourClicked(int index);
    // The result box's text with CR LF line ends, and back.
    QString resultText() const;
    void setResultText(const QString &text);
    // The key of the control that has (or last had) the focus in this window.
    QString focusKey() const;

    CEffectWindowModel m_model;
    // The widgets of the pool, in the order of the pool's controls.
    std::vector<QWidget *> m_pool;
    std::vector<QLabel *> m_units;
    std::vector<QButtonGroup *> m_optionGroups;
    QGridLayout *m_poolLayout = nullptr;
    QPointer<QObject> m_player;
    std::vector<QMetaObject::Connection> m_playerLinks;
    bool m_showing = false;
};
