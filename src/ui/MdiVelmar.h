#pragma once

#include <QMainWindow>

class CVelmar;
class QMdiArea;
class QAction;
class QMenu;

// The main frame: holds every document window in its multi-document area.
class MdiVelmar : public QMainWindow
{
    Q_OBJECT

public:
    explicit MdiVelmar(QWidget *parent = nullptr);

    // Loads the window: menus and captions from the catalogue, geometry and the
    // settings from the store.
    void Init(CVelmar *root);

    CVelmar *Root() const { return m_root; }
    QMdiArea *MdiArea() const { return m_mdiArea; }

    QMenu *mnuFile = nullptr;
    QAction *mnuFileNewTranslate = nullptr;
    QAction *mnuFileNewTiming = nullptr;
    QAction *mnuFileOpenAVI = nullptr;
    QAction *mnuFileOpenTranslate = nullptr;
    QAction *mnuFileOpenTiming = nullptr;
    QMenu *mnuFileRecent = nullptr;
    QAction *mnuFileExit = nullptr;
    QMenu *mnuOption = nullptr;
    QAction *mnuOptionSetting = nullptr;
    QMenu *mnuWindow = nullptr;
    QAction *mnuWindowTileHorizontally = nullptr;
    QAction *mnuWindowTileVertically = nullptr;
    QAction *mnuWindowCascade = nullptr;
    QAction *mnuWindowArrange = nullptr;
    QMenu *mnuHelp = nullptr;
    QAction *mnuHelpVersion = nullptr;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void createMenus();
    void applyCatalogue();
    void restoreGeometryFromStore();
    void saveGeometryToStore();

    CVelmar *m_root = nullptr;
    QMdiArea *m_mdiArea = nullptr;
};
