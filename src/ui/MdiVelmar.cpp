#include "ui/MdiVelmar.h"

#include "core/CHotKeys.h"
#include "core/CMessages.h"
#include "core/IForm.h"
#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "formats/CTimings.h"
#include "player/CPlayers.h"
#include "player/basPlayer.h"
#include "shell/CSettingDialogModel.h"
#include "shell/CVelmar.h"
#include "shell/IAutoSaveDocument.h"
#include "shell/basFrame.h"
#include "shell/basWindowArrange.h"
#include "timing/CSliderTimeModel.h"
#include "ui/basPendingWindows.h"
#include "ui/basWindowMenu.h"
#include "ui/frmPlayer.h"
#include "ui/frmSetting.h"
#include "ui/frmSliderTime.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSlider>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

MdiVelmar::MdiVelmar(QWidget *parent)
    : QMainWindow(parent)
{
    setObjectName(QStringLiteral("MdiVelmar"));
    m_mdiArea = new QMdiArea(this);
    m_mdiArea->setObjectName(QStringLiteral("mdiArea"));
    setCentralWidget(m_mdiArea);
    setWindowTitle(QStringLiteral("Velmar"));
    setAcceptDrops(true);
    createMenus();
    createToolBars();
    createStatusBar();

    timAutoSave = new QTimer(this);
    timAutoSave->setObjectName(QStringLiteral("timAutoSave"));
    timAutoSave->setInterval(1000);
    connect(timAutoSave, &QTimer::timeout, this, &MdiVelmar::AutoSaveTick);
    m_autoSave.StatusMessage = [this](const QString &text) { setPanelText(QStringLiteral("Message"), text); };

    m_router.Unload = [this](IForm *form) {
        for (QMdiSubWindow *sub : m_mdiArea->subWindowList())
            if (dynamic_cast<IForm *>(sub->widget()) == form) {
                sub->widget()->setAttribute(Qt::WA_DeleteOnClose);
                sub->close();
                delete sub;
                return;
            }
    };
    m_router.ActiveForm = [this] { return dynamic_cast<IForm *>(ActiveDocument()); };

    RegisterWindowFactory(DocumentWindowKind::Player, [](MdiVelmar &frame) -> QWidget * {
        auto *window = new frmPlayer;
        frame.AddDocumentWindow(window);
        window->Init(frame.Root() ? frame.Root()->Players() : nullptr);
        return window;
    });
    RunTimeDialog = [this](CSliderTimeModel &model) {
        frmSliderTime dialog(model, this);
        if (OnTop)
            SetWindowOnTop(&dialog, true);
        dialog.exec();
        return true;
    };
    RunSettingDialog = [this](CSettingDialogModel &model, AutoSaveSettings &autoSave) {
        frmSetting dialog(model, &autoSave, this);
        if (OnTop)
            SetWindowOnTop(&dialog, true);
        dialog.exec();
    };
}

MdiVelmar::~MdiVelmar()
{
    if (m_recent && m_recent->MenuChanged)
        m_recent->MenuChanged = nullptr;
    if (m_root && m_root->Timings()) {
        m_root->Timings()->ActiveWindow = nullptr;
        m_root->Timings()->SaveWindow = nullptr;
    }
    if (m_root && m_root->Players())
        m_root->Players()->StepsChanged = nullptr;
    if (HotKeys)
        HotKeys->Changed = nullptr;
    // Document windows go first, while the frame they report to still stands.
    for (QMdiSubWindow *sub : m_mdiArea->subWindowList())
        delete sub;
}

void MdiVelmar::Init(CVelmar *root)
{
    m_root = root;
    readSettings();
    applyCatalogue();
    UpdateStatusBar();
    if (m_root && m_root->Timings()) {
        m_root->Timings()->ActiveWindow = [this]() -> QObject * { return ActiveDocument(); };
        // A document saves through the window that shows it.
        m_root->Timings()->SaveWindow = [](CTiming *document) {
            if (auto *form = dynamic_cast<IForm *>(document ? document->TimingWindow : nullptr))
                form->SaveFile(false, 0);
        };
    }
    if (m_root && m_root->Players())
        m_root->Players()->StepsChanged = [this] {
            UpdateStatusBar();
            emit KeyTextsChanged();
        };
    if (HotKeys)
        HotKeys->Changed = [this] {
            UpdateStatusBar();
            emit KeyTextsChanged();
        };
    if (AutoGetClipBoard)
        ClipboardViewerSwitch(true);
    if (OnTop)
        SetWindowOnTop(this, true);
}

void MdiVelmar::readSettings()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
    StartupSettings settings;
    settings.AutoSave = m_autoSaveSettings;
    CHotKeys scratch;
    // The hot keys' own change handler would rebuild the panels ten times: it is set
    // after the read.
    ReadStartupSettings(settings, HotKeys ? *HotKeys : scratch, float(area.width()), float(area.height()));
    const StartupGeometry &g = settings.Geometry;
    setGeometry(int(g.Left), int(g.Top), qMax(320, int(g.Width)), qMax(240, int(g.Height)));

    m_autoSaveSettings = settings.AutoSave;
    applyAutoSaveSettings();

    if (m_root && m_root->Players()) {
        CPlayers *players = m_root->Players();
        if (players->BackStep() != settings.Offsets.BackStep)
            players->setBackStep(settings.Offsets.BackStep);
        if (players->ForwordStep() != settings.Offsets.ForwordStep)
            players->setForwordStep(settings.Offsets.ForwordStep);
    }
    if (m_root && m_root->Timings()) {
        CTimings *timings = m_root->Timings();
        timings->setReactOffset(settings.Offsets.ReactOffset);
        timings->setReactOffsetStart(settings.Offsets.ReactOffsetStart);
        timings->setReactOffsetEnd(settings.Offsets.ReactOffsetEnd);
    }
}

// A menu of the bar with the catalogue key of its title.
struct MdiVelmar::MenuTitle
{
    QMenu *MdiVelmar::*Menu;
    const char *Name;
    const char *TitleKey;
};

// An entry of a menu, in menu order: an entry with its command, a separator, or the place
// of the recent-file entries. A caption comes from the catalogue when it holds the key
// (until then the entry shows its name), or is the entry's own text.
struct MdiVelmar::MenuEntry
{
    enum Kind { Entry, Separator, RecentFiles };
    QMenu *MdiVelmar::*Menu;
    Kind Type = Entry;
    QAction *MdiVelmar::*Field = nullptr;
    const char *Name = nullptr;
    const char *TextKey = nullptr;
    const char16_t *Text = nullptr;
    void (*Run)(MdiVelmar &) = nullptr;
};

// A tool button. One that stands for a menu entry does what the entry does and shows the
// entry's caption as its tip; a player button runs its command and shows its hot key.
struct MdiVelmar::ToolButton
{
    QToolBar *MdiVelmar::*Bar;
    const char *Key;
    QStyle::StandardPixmap Icon;
    QAction *MdiVelmar::*Entry = nullptr;
    void (MdiVelmar::*Run)() = nullptr;
    QString (*KeyTip)(const QString &key, const CHotKeys &keys, double back, double forword) = nullptr;
};

const std::vector<MdiVelmar::MenuTitle> &MdiVelmar::MenuTitles()
{
    static const std::vector<MenuTitle> titles = {
        { &MdiVelmar::mnuFile, "mnuFile", "MENU_FILE_000" },
        { &MdiVelmar::mnuOption, "mnuOption", "MENU_OPTION_000" },
        { &MdiVelmar::mnuWindow, "mnuWindow", "MENU_WINDOW_000" },
        { &MdiVelmar::mnuHelp, "mnuHelp", "MENU_HELP_000" },
    };
    return titles;
}

const std::vector<MdiVelmar::MenuEntry> &MdiVelmar::MenuEntries()
{
    using M = MenuEntry;
    static const std::vector<M> entries = {
        { &MdiVelmar::mnuFile, M::Entry, &MdiVelmar::mnuFileNewTranslate, "mnuFileNewTranslate",
            "MENU_FILE_100", nullptr, [](MdiVelmar &f) { f.NewDocument(1); } },
        { &MdiVelmar::mnuFile, M::Entry, &MdiVelmar::mnuFileNewTiming, "mnuFileNewTiming", "MENU_FILE_101",
            nullptr, [](MdiVelmar &f) { f.NewDocument(0); } },
        { &MdiVelmar::mnuFile, M::Separator },
        { &MdiVelmar::mnuFile, M::Entry, &MdiVelmar::mnuFileOpenAVI, "mnuFileOpenAVI", "MENU_FILE_110",
            nullptr, [](MdiVelmar &f) { f.OpenDocument(3); } },
        { &MdiVelmar::mnuFile, M::Entry, &MdiVelmar::mnuFileOpenTranslate, "mnuFileOpenTranslate",
            "MENU_FILE_111", nullptr, [](MdiVelmar &f) { f.OpenDocument(1); } },
        { &MdiVelmar::mnuFile, M::Entry, &MdiVelmar::mnuFileOpenTiming, "mnuFileOpenTiming", "MENU_FILE_112",
            nullptr, [](MdiVelmar &f) { f.OpenDocument(0); } },
        { &MdiVelmar::mnuFile, M::RecentFiles },
        { &MdiVelmar::mnuFile, M::Separator },
        { &MdiVelmar::mnuFile, M::Entry, &MdiVelmar::mnuFileExit, "mnuFileExit", nullptr, u"退出",
            [](MdiVelmar &f) { f.close(); } },
        { &MdiVelmar::mnuOption, M::Entry, &MdiVelmar::mnuOptionSetting, "mnuOptionSetting",
            "MENU_OPTION_100", nullptr, [](MdiVelmar &f) { f.ShowSettingDialog(); } },
        { &MdiVelmar::mnuWindow, M::Entry, &MdiVelmar::mnuWindowTileHorizontally, "mnuWindowTileHorizontally",
            "MENU_WINDOW_100", nullptr, [](MdiVelmar &f) { f.TileSubWindows(Qt::Horizontal); } },
        { &MdiVelmar::mnuWindow, M::Entry, &MdiVelmar::mnuWindowTileVertically, "mnuWindowTileVertically",
            "MENU_WINDOW_101", nullptr, [](MdiVelmar &f) { f.TileSubWindows(Qt::Vertical); } },
        { &MdiVelmar::mnuWindow, M::Entry, &MdiVelmar::mnuWindowCascade, "mnuWindowCascade",
            "MENU_WINDOW_102", nullptr, [](MdiVelmar &f) { f.m_mdiArea->cascadeSubWindows(); } },
        { &MdiVelmar::mnuWindow, M::Entry, &MdiVelmar::mnuWindowArrange, "mnuWindowArrange",
            "MENU_WINDOW_103", nullptr, [](MdiVelmar &f) { f.ArrangeIcons(); } },
        { &MdiVelmar::mnuHelp, M::Entry, &MdiVelmar::mnuHelpVersion, "mnuHelpVersion", "MENU_HELP_100",
            nullptr, [](MdiVelmar &f) { f.showAbout(); } },
    };
    return entries;
}

const std::vector<MdiVelmar::ToolButton> &MdiVelmar::ToolButtons()
{
    const auto panelTip = [](const QString &key, const CHotKeys &keys, double back, double forword) {
        return StatusPanelText(key, keys, back, forword);
    };
    const auto resetTip
        = [](const QString &, const CHotKeys &keys, double, double) { return ResetTip(keys); };
    static const std::vector<ToolButton> buttons = {
        { &MdiVelmar::tlbFile, "NewTranslate", QStyle::SP_FileIcon, &MdiVelmar::mnuFileNewTranslate },
        { &MdiVelmar::tlbFile, "NewTiming", QStyle::SP_FileDialogNewFolder, &MdiVelmar::mnuFileNewTiming },
        { &MdiVelmar::tlbFile, "OpenTranslate", QStyle::SP_DialogOpenButton,
            &MdiVelmar::mnuFileOpenTranslate },
        { &MdiVelmar::tlbFile, "OpenTiming", QStyle::SP_DirOpenIcon, &MdiVelmar::mnuFileOpenTiming },
        { &MdiVelmar::tlbAVI, "OpenAVI", QStyle::SP_DriveDVDIcon, &MdiVelmar::mnuFileOpenAVI },
        // The player buttons say what the status panels of the same keys say.
        { &MdiVelmar::tlbAVI, "Back", QStyle::SP_MediaSeekBackward, nullptr, &MdiVelmar::PlayBack, panelTip },
        { &MdiVelmar::tlbAVI, "Play", QStyle::SP_MediaPlay, nullptr, &MdiVelmar::PlayPause, panelTip },
        { &MdiVelmar::tlbAVI, "Forword", QStyle::SP_MediaSeekForward, nullptr, &MdiVelmar::PlayForword,
            panelTip },
        { &MdiVelmar::tlbAVI, "Reset", QStyle::SP_BrowserReload, nullptr, &MdiVelmar::PlayReset, resetTip },
    };
    return buttons;
}

void MdiVelmar::createMenus()
{
    for (const MenuTitle &t : MenuTitles()) {
        QMenu *menu = menuBar()->addMenu(QString::fromLatin1(t.Name));
        menu->setObjectName(QString::fromLatin1(t.Name));
        // Entries whose windows are still to come say so in their tips.
        menu->setToolTipsVisible(true);
        this->*t.Menu = menu;
    }
    for (const MenuEntry &e : MenuEntries()) {
        QMenu *menu = this->*e.Menu;
        if (e.Type == MenuEntry::Separator) {
            menu->addSeparator();
            continue;
        }
        if (e.Type == MenuEntry::RecentFiles) {
            m_recentSeparator = menu->addSeparator();
            m_recentSeparator->setVisible(false);
            QAction *first = menu->addAction(QString());
            first->setObjectName(QStringLiteral("mnuFileRecent"));
            first->setVisible(false);
            connect(first, &QAction::triggered, this, [this, first] { OpenRecentFile(first->text()); });
            mnuFileRecent << first;
            continue;
        }
        QAction *a = menu->addAction(QString::fromLatin1(e.Name));
        a->setObjectName(QString::fromLatin1(e.Name));
        this->*e.Field = a;
        const auto run = e.Run;
        connect(a, &QAction::triggered, this, [this, run] { run(*this); });
        ShowPending(objectName(), a);
    }
}

void MdiVelmar::createToolBars()
{
    tlbFile = addToolBar(QStringLiteral("tlbFile"));
    tlbFile->setObjectName(QStringLiteral("tlbFile"));
    tlbAVI = addToolBar(QStringLiteral("tlbAVI"));
    tlbAVI->setObjectName(QStringLiteral("tlbAVI"));
    for (const ToolButton &b : ToolButtons()) {
        QToolBar *bar = this->*b.Bar;
        QAction *a = bar->addAction(bar->style()->standardIcon(b.Icon), QString::fromLatin1(b.Key));
        a->setObjectName(QString::fromLatin1(b.Key));
        if (b.Entry) {
            QAction *entry = this->*b.Entry;
            connect(a, &QAction::triggered, entry, &QAction::trigger);
            ShowPending(objectName(), entry->objectName(), a);
        } else {
            connect(a, &QAction::triggered, this, b.Run);
        }
    }
    // The frame's speed band sets the speed of every player.
    sldAviSpeed = new QSlider(Qt::Horizontal, tlbAVI);
    sldAviSpeed->setObjectName(QStringLiteral("sldAviSpeed"));
    sldAviSpeed->setRange(0, 20);
    sldAviSpeed->setValue(10);
    sldAviSpeed->setMaximumWidth(120);
    tlbAVI->addWidget(sldAviSpeed);
    connect(sldAviSpeed, &QSlider::valueChanged, this, [this](int value) {
        sldAviSpeed->setToolTip(SliderSpeedTip(value, 0));
        if (m_root && m_root->Players())
            m_root->Players()->setSpeed(SliderSpeed(value, 0));
    });
}

void MdiVelmar::createStatusBar()
{
    statusBar()->setObjectName(QStringLiteral("stbMessage"));
    for (const QString &key : StatusPanelKeys()) {
        auto *panel = new QLabel(this);
        panel->setObjectName(key);
        panel->setFrameShape(QFrame::StyledPanel);
        statusBar()->addWidget(panel, key == u"Message" ? 1 : 0);
        m_panels.insert(key, panel);
        if (key == u"Back" || key == u"Forword")
            panel->installEventFilter(this);
    }
}

QString MdiVelmar::PanelText(const QString &key) const
{
    const QLabel *panel = m_panels.value(key);
    return panel ? panel->text() : QString();
}

void MdiVelmar::setPanelText(const QString &key, const QString &text)
{
    if (QLabel *panel = m_panels.value(key))
        panel->setText(text);
}

void MdiVelmar::UpdateStatusBar()
{
    CHotKeys none;
    const CHotKeys &keys = HotKeys ? *HotKeys : none;
    const double back = m_root && m_root->Players() ? m_root->Players()->BackStep() : 3;
    const double forword = m_root && m_root->Players() ? m_root->Players()->ForwordStep() : 3;
    for (const QString &key : StatusPanelKeys()) {
        // The position and message panels keep what they were last told.
        if ((key == u"Position" || key == u"Message") && !PanelText(key).isEmpty())
            continue;
        setPanelText(key, StatusPanelText(key, keys, back, forword));
    }
    for (const ToolButton &b : ToolButtons())
        if (b.KeyTip)
            button(b)->setToolTip(b.KeyTip(QString::fromLatin1(b.Key), keys, back, forword));
}

QAction *MdiVelmar::button(const ToolButton &b) const
{
    return (this->*b.Bar)->findChild<QAction *>(QString::fromLatin1(b.Key));
}

bool MdiVelmar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        if (watched == m_panels.value(QStringLiteral("Back"))) {
            ShowStepDialog(true);
            return true;
        }
        if (watched == m_panels.value(QStringLiteral("Forword"))) {
            ShowStepDialog(false);
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MdiVelmar::ShowStepDialog(bool back)
{
    if (!m_root || !m_root->Players() || !RunTimeDialog)
        return;
    CPlayers *players = m_root->Players();
    CSliderTimeModel model;
    model.setEnableSign(false);
    model.setEnableHour(false);
    model.setEnableMinite(false);
    model.setEnableMiniSecond(false);
    model.setTitle(StepDialogTitle(back));
    model.setDescription(StepDialogDescription(back));
    try {
        model.setValue(back ? players->BackStep() : players->ForwordStep());
        if (!RunTimeDialog(model) || model.Cancelled)
            return;
        const double value = model.Value();
        if (back)
            players->setBackStep(value);
        else
            players->setForwordStep(value);
    } catch (const VelmarError &error) {
        MsgBox(error.Description());
    }
}

void MdiVelmar::applyCatalogue()
{
    // A caption whose key the catalogue does not hold keeps the caption it had.
    auto caption = [](const char *key, auto apply) {
        if (!Messages)
            return;
        if (CMessage *m = Messages->item(QString::fromLatin1(key)))
            apply(m->Content());
    };
    for (const MenuTitle &t : MenuTitles())
        caption(t.TitleKey, [this, &t](const QString &text) { (this->*t.Menu)->setTitle(text); });
    for (const MenuEntry &e : MenuEntries()) {
        if (e.Type != MenuEntry::Entry)
            continue;
        QAction *entry = this->*e.Field;
        if (e.TextKey)
            caption(e.TextKey, [entry](const QString &text) { entry->setText(text); });
        else
            entry->setText(QString::fromUtf16(e.Text));
        ShowPending(objectName(), entry);
    }
    for (const ToolButton &b : ToolButtons())
        if (b.Entry && !ShowPending(objectName(), (this->*b.Entry)->objectName(), button(b)))
            button(b)->setToolTip((this->*b.Entry)->text());
    sldAviSpeed->setToolTip(SliderSpeedTip(sldAviSpeed->value(), 0));
}

void MdiVelmar::showAbout()
{
    MsgBox(QStringLiteral("Velmar ") + VersionNo, MsgBoxStyle::Information, mnuHelpVersion->text());
}

void MdiVelmar::RegisterWindowFactory(DocumentWindowKind kind, WindowFactory factory)
{
    m_factories[kind] = std::move(factory);
    m_router.RegisterFactory(kind, [this, kind] { return addFromFactory(kind); });
}

IForm *MdiVelmar::addFromFactory(DocumentWindowKind kind)
{
    const auto it = m_factories.find(kind);
    if (it == m_factories.end() || !it->second)
        return nullptr;
    QWidget *window = it->second(*this);
    if (!window)
        return nullptr;
    // A factory that needs its window in the area before its own set-up puts it there
    // itself; any other window is put there now.
    if (!qobject_cast<QMdiSubWindow *>(window->parentWidget()))
        AddDocumentWindow(window);
    return dynamic_cast<IForm *>(window);
}

QMdiSubWindow *MdiVelmar::AddDocumentWindow(QWidget *window)
{
    window->setAttribute(Qt::WA_DeleteOnClose);
    QMdiSubWindow *sub = m_mdiArea->addSubWindow(window);
    sub->show();
    return sub;
}

QWidget *MdiVelmar::ActiveDocument() const
{
    // The current child stays known while another program has the focus, which is when
    // copied times arrive.
    QMdiSubWindow *sub = m_mdiArea->currentSubWindow();
    if (!sub) {
        // Without any activation (no window system) the top child is the active one.
        const QList<QMdiSubWindow *> stack = m_mdiArea->subWindowList(QMdiArea::StackingOrder);
        if (!isActiveWindow() && !stack.isEmpty())
            sub = stack.last();
    }
    return sub ? sub->widget() : nullptr;
}

QList<QWidget *> MdiVelmar::DocumentWindows() const
{
    QList<QWidget *> windows;
    for (QMdiSubWindow *sub : m_mdiArea->subWindowList(QMdiArea::CreationOrder))
        if (sub->widget())
            windows << sub->widget();
    return windows;
}

void MdiVelmar::DropFiles(const QStringList &fileNames)
{
    for (const QString &name : fileNames)
        OpenFileByType(name);
}

void MdiVelmar::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MdiVelmar::dropEvent(QDropEvent *event)
{
    QStringList names;
    for (const QUrl &url : event->mimeData()->urls())
        if (url.isLocalFile())
            names << url.toLocalFile();
    event->acceptProposedAction();
    DropFiles(names);
}

CPlayer *MdiVelmar::activePlayer() const
{
    if (auto *window = dynamic_cast<IPlayerWindow *>(ActiveDocument()))
        return window->player();
    return nullptr;
}

void MdiVelmar::PlayPause()
{
    if (m_root && m_root->Players())
        ::PlayPause(*m_root->Players(), activePlayer());
}

void MdiVelmar::PlayBack()
{
    if (m_root && m_root->Players())
        ::PlayBack(*m_root->Players(), activePlayer());
}

void MdiVelmar::PlayForword()
{
    if (m_root && m_root->Players())
        ::PlayForword(*m_root->Players(), activePlayer());
}

void MdiVelmar::PlayReset()
{
    if (m_root && m_root->Players())
        ::PlayReset(*m_root->Players(), activePlayer());
}

void MdiVelmar::ShowSettingDialog()
{
    if (!HotKeys || !RunSettingDialog)
        return;
    CSettingDialogModel model;
    model.Init(*HotKeys, m_autoSaveSettings);
    model.ClipboardViewerSwitch = [this](bool on) { ClipboardViewerSwitch(on); };
    model.SetWindowOnTop = [this](bool on) { SetWindowOnTop(this, on); };
    model.BeginShow();
    RunSettingDialog(model, m_autoSaveSettings);
    applyAutoSaveSettings();
    model.EndShow();
}

// The auto-save follows its settings: the timer runs while they say so, and each run
// takes their interval and age limit.
void MdiVelmar::applyAutoSaveSettings()
{
    m_autoSave.AutoSaveTime = m_autoSaveSettings.AutoSaveTime;
    m_autoSave.AutoDelTime = m_autoSaveSettings.AutoDelTime;
    if (!m_autoSaveSettings.Enabled)
        timAutoSave->stop();
    else if (!timAutoSave->isActive())
        timAutoSave->start();
}

void MdiVelmar::ClipboardViewerSwitch(bool on)
{
    // The frame listens to the clipboard only while the watch is on.
    if (on && !m_watchClipboard)
        m_clipboardLink = connect(
            QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &MdiVelmar::onClipboardChanged);
    else if (!on && m_watchClipboard)
        disconnect(m_clipboardLink);
    m_watchClipboard = on;
}

void MdiVelmar::onClipboardChanged()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (data && data->hasText())
        SendClipboardTime(data->text());
}

void MdiVelmar::SetWindowOnTop(QWidget *window, bool flag)
{
    if (!window || window->windowFlags().testFlag(Qt::WindowStaysOnTopHint) == flag)
        return;
    const bool shown = window->isVisible();
    const QRect where = window->geometry();
    window->setWindowFlag(Qt::WindowStaysOnTopHint, flag);
    if (shown) {
        window->setGeometry(where);
        window->show();
    }
}

void MdiVelmar::TileSubWindows(Qt::Orientation bands)
{
    QList<QMdiSubWindow *> windows;
    for (QMdiSubWindow *sub : m_mdiArea->subWindowList(QMdiArea::CreationOrder))
        if (sub->isVisible() && !sub->isMinimized())
            windows << sub;
    const QList<QRect> places = TileWindowRects(m_mdiArea->viewport()->rect(), int(windows.size()), bands);
    for (qsizetype i = 0; i < windows.size(); ++i) {
        if (windows[i]->isMaximized())
            windows[i]->showNormal();
        windows[i]->setGeometry(places[i]);
    }
}

void MdiVelmar::ArrangeIcons()
{
    QList<QMdiSubWindow *> icons;
    QSize size;
    for (QMdiSubWindow *sub : m_mdiArea->subWindowList(QMdiArea::CreationOrder))
        if (sub->isVisible() && sub->isMinimized()) {
            icons << sub;
            size = size.expandedTo(sub->size());
        }
    const QList<QRect> places = MinimisedWindowRects(m_mdiArea->viewport()->rect(), size, int(icons.size()));
    for (qsizetype i = 0; i < icons.size(); ++i)
        icons[i]->move(places[i].topLeft());
}

void MdiVelmar::AutoSaveTick()
{
    std::vector<IAutoSaveDocument *> documents;
    for (QWidget *window : DocumentWindows())
        if (auto *document = dynamic_cast<IAutoSaveDocument *>(window))
            documents.push_back(document);
    m_autoSave.Tick(documents);
}

void MdiVelmar::AttachRecentFile(CRecentFile *list)
{
    if (m_recent)
        m_recent->MenuChanged = nullptr;
    m_recent = list;
    if (m_recent) {
        m_recent->MenuChanged
            = [this](const std::vector<RecentFileMenuEntry> &entries) { ShowRecentMenu(entries); };
        ShowRecentMenu(m_recent->Menu());
    }
}

void MdiVelmar::ShowRecentMenu(const std::vector<RecentFileMenuEntry> &entries)
{
    const bool any = ShowRecentEntries(mnuFileRecent, entries, [this](QAction *entry) {
        connect(entry, &QAction::triggered, this, [this, entry] { OpenRecentFile(entry->text()); });
    });
    m_recentSeparator->setVisible(any);
    m_recentEntries = entries;
    emit RecentFilesChanged();
}

void MdiVelmar::saveGeometryToStore()
{
    if (isMinimized())
        return;
    const QRect g = geometry();
    StartupGeometry geometry;
    geometry.Left = float(g.x());
    geometry.Top = float(g.y());
    geometry.Width = float(g.width());
    geometry.Height = float(g.height());
    SaveStartupGeometry(geometry);
}

void MdiVelmar::closeEvent(QCloseEvent *event)
{
    // Each child asks to save first, in the order they were made; a refusal stops the
    // whole close and leaves the windows after it alone.
    for (QMdiSubWindow *sub : m_mdiArea->subWindowList(QMdiArea::CreationOrder)) {
        if (!sub->close()) {
            event->ignore();
            return;
        }
    }
    saveGeometryToStore();
    ClipboardViewerSwitch(false);
    event->accept();
}
