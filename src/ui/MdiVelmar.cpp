#include "ui/MdiVelmar.h"

#include "core/CMessages.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basSetting.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>

MdiVelmar::MdiVelmar(QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("MdiVelmar"));
    m_mdiArea = new QMdiArea(this);
    m_mdiArea->setObjectName(QStringLiteral("mdiArea"));
    setCentralWidget(m_mdiArea);
    statusBar()->setObjectName(QStringLiteral("stbMessage"));
    setWindowTitle(QStringLiteral("Velmar"));
    createMenus();
}

void MdiVelmar::Init(CVelmar *root)
{
    m_root = root;
    applyCatalogue();
    restoreGeometryFromStore();
}

void MdiVelmar::createMenus()
{
    auto action = [this](QMenu *menu, const char *name) {
        QAction *a = menu->addAction(QString::fromLatin1(name));
        a->setObjectName(QString::fromLatin1(name));
        return a;
    };
    mnuFile = menuBar()->addMenu(QStringLiteral("mnuFile"));
    mnuFile->setObjectName(QStringLiteral("mnuFile"));
    mnuFileNewTranslate = action(mnuFile, "mnuFileNewTranslate");
    mnuFileNewTiming = action(mnuFile, "mnuFileNewTiming");
    mnuFile->addSeparator();
    mnuFileOpenAVI = action(mnuFile, "mnuFileOpenAVI");
    mnuFileOpenTranslate = action(mnuFile, "mnuFileOpenTranslate");
    mnuFileOpenTiming = action(mnuFile, "mnuFileOpenTiming");
    mnuFile->addSeparator();
    mnuFileRecent = mnuFile->addMenu(QString());
    mnuFileRecent->setObjectName(QStringLiteral("mnuFileRecent"));
    mnuFileRecent->menuAction()->setVisible(false);
    mnuFileExit = action(mnuFile, "mnuFileExit");
    connect(mnuFileExit, &QAction::triggered, this, &QWidget::close);

    mnuOption = menuBar()->addMenu(QStringLiteral("mnuOption"));
    mnuOption->setObjectName(QStringLiteral("mnuOption"));
    mnuOptionSetting = action(mnuOption, "mnuOptionSetting");

    mnuWindow = menuBar()->addMenu(QStringLiteral("mnuWindow"));
    mnuWindow->setObjectName(QStringLiteral("mnuWindow"));
    mnuWindowTileHorizontally = action(mnuWindow, "mnuWindowTileHorizontally");
    mnuWindowTileVertically = action(mnuWindow, "mnuWindowTileVertically");
    mnuWindowCascade = action(mnuWindow, "mnuWindowCascade");
    mnuWindowArrange = action(mnuWindow, "mnuWindowArrange");
    connect(mnuWindowTileHorizontally, &QAction::triggered, m_mdiArea, &QMdiArea::tileSubWindows);
    connect(mnuWindowTileVertically, &QAction::triggered, m_mdiArea, &QMdiArea::tileSubWindows);
    connect(mnuWindowCascade, &QAction::triggered, m_mdiArea, &QMdiArea::cascadeSubWindows);
    connect(mnuWindowArrange, &QAction::triggered, m_mdiArea, &QMdiArea::tileSubWindows);

    mnuHelp = menuBar()->addMenu(QStringLiteral("mnuHelp"));
    mnuHelp->setObjectName(QStringLiteral("mnuHelp"));
    mnuHelpVersion = action(mnuHelp, "mnuHelpVersion");
}

void MdiVelmar::applyCatalogue()
{
    // A caption whose key the catalogue does not hold keeps the caption it had.
    auto caption = [](const QString &key, auto apply) {
        if (!Messages)
            return;
        if (CMessage *m = Messages->item(key))
            apply(m->Content());
    };
    caption(QStringLiteral("MENU_FILE_000"), [this](const QString &t) { mnuFile->setTitle(t); });
    caption(QStringLiteral("MENU_FILE_100"), [this](const QString &t) { mnuFileNewTranslate->setText(t); });
    caption(QStringLiteral("MENU_FILE_101"), [this](const QString &t) { mnuFileNewTiming->setText(t); });
    caption(QStringLiteral("MENU_FILE_110"), [this](const QString &t) { mnuFileOpenAVI->setText(t); });
    caption(QStringLiteral("MENU_FILE_111"), [this](const QString &t) { mnuFileOpenTranslate->setText(t); });
    caption(QStringLiteral("MENU_FILE_112"), [this](const QString &t) { mnuFileOpenTiming->setText(t); });
    caption(QStringLiteral("MENU_OPTION_000"), [this](const QString &t) { mnuOption->setTitle(t); });
    caption(QStringLiteral("MENU_OPTION_100"), [this](const QString &t) { mnuOptionSetting->setText(t); });
    caption(QStringLiteral("MENU_WINDOW_000"), [this](const QString &t) { mnuWindow->setTitle(t); });
    caption(QStringLiteral("MENU_WINDOW_100"), [this](const QString &t) { mnuWindowTileHorizontally->setText(t); });
    caption(QStringLiteral("MENU_WINDOW_101"), [this](const QString &t) { mnuWindowTileVertically->setText(t); });
    caption(QStringLiteral("MENU_WINDOW_102"), [this](const QString &t) { mnuWindowCascade->setText(t); });
    caption(QStringLiteral("MENU_WINDOW_103"), [this](const QString &t) { mnuWindowArrange->setText(t); });
    caption(QStringLiteral("MENU_HELP_000"), [this](const QString &t) { mnuHelp->setTitle(t); });
    caption(QStringLiteral("MENU_HELP_100"), [this](const QString &t) { mnuHelpVersion->setText(t); });
    mnuFileExit->setText(QStringLiteral("退出"));
}

void MdiVelmar::restoreGeometryFromStore()
{
    const QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry()
                                                          : QRect(0, 0, 1024, 768);
    auto number = [](const QString &key, double fallback) {
        const QString text = GetSetting(QStringLiteral("Startup"), key, QString::number(fallback));
        return basConvert::IsNumeric(text) ? basConvert::CDbl(text) : fallback;
    };
    const int left = int(number(QStringLiteral("Left"), 0));
    const int top = int(number(QStringLiteral("Top"), 0));
    const int width = int(number(QStringLiteral("Width"), screen.width()));
    const int height = int(number(QStringLiteral("Height"), screen.height()));
    setGeometry(left, top, qMax(320, width), qMax(240, height));
}

void MdiVelmar::saveGeometryToStore()
{
    if (isMinimized())
        return;
    const QRect g = geometry();
    SaveSetting(QStringLiteral("Startup"), QStringLiteral("Left"), QString::number(g.x()));
    SaveSetting(QStringLiteral("Startup"), QStringLiteral("Width"), QString::number(g.width()));
    SaveSetting(QStringLiteral("Startup"), QStringLiteral("Top"), QString::number(g.y()));
    SaveSetting(QStringLiteral("Startup"), QStringLiteral("Height"), QString::number(g.height()));
}

void MdiVelmar::closeEvent(QCloseEvent *event)
{
    // Each child asks to save first; any refusal stops the whole close.
    m_mdiArea->closeAllSubWindows();
    if (!m_mdiArea->subWindowList().isEmpty()) {
        event->ignore();
        return;
    }
    saveGeometryToStore();
    event->accept();
}
