#pragma once

#include "shell/CAutoSave.h"
#include "shell/CDocumentRouter.h"
#include "shell/CRecentFile.h"
#include "shell/basSettings.h"

#include <QHash>
#include <QList>
#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <map>
#include <optional>
#include <vector>

class CVelmar;
class CPlayer;
class CSettingDialogModel;
class CSliderTimeModel;
class IForm;
class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QSlider;
class QTimer;
class QToolBar;

// The main frame: holds every document window in its multi-document area, makes new
// documents and opens files through the router, tells every window what came and went,
// shows the hot keys in its status bar, watches the clipboard and runs the auto-save.
class MdiVelmar : public QMainWindow
{
    Q_OBJECT

public:
    explicit MdiVelmar(QWidget *parent = nullptr);
    ~MdiVelmar() override;

    // Loads the window: the settings from the store in their order (geometry, auto-save,
    // hot keys, steps and offsets, flags), captions from the catalogue, the status bar;
    // then enters the clipboard watch and the on-top state when they are on.
    void Init(CVelmar *root);

    CVelmar *Root() const { return m_root; }
    QMdiArea *MdiArea() const { return m_mdiArea; }

    // A window kind is made by the factory registered for it; the frame registers the
    // player window itself. The factory makes the window and gives it back; a window the
    // factory has not put into the area with AddDocumentWindow (as one whose set-up
    // needs its place there does) is put there and shown. Its IForm goes to the router.
    using WindowFactory = std::function<QWidget *(MdiVelmar &frame)>;
    void RegisterWindowFactory(DocumentWindowKind kind, WindowFactory factory);
    // Puts a document window into the area and shows it.
    QMdiSubWindow *AddDocumentWindow(QWidget *window);
    // The window of the active child, or nullptr.
    QWidget *ActiveDocument() const;
    // Every document window, in the order they were made.
    QList<QWidget *> DocumentWindows() const;
    CDocumentRouter &Router() { return m_router; }

    // Routing of the File menu, dropped files and recent entries.
    IForm *NewDocument(int kind) { return m_router.NewDocument(kind); }
    IForm *OpenDocument(int kind) { return m_router.OpenDocument(kind); }
    IForm *OpenFileByType(const QString &fileName, std::optional<ScriptType> fileType = std::nullopt)
    {
        return m_router.OpenFileByType(fileName, fileType);
    }
    IForm *OpenRecentFile(const QString &caption) { return m_router.OpenRecentFile(caption); }
    bool SaveDocument(int kind) { return m_router.SaveDocument(kind); }
    bool SaveDocumentAs(int kind) { return m_router.SaveDocumentAs(kind); }
    // Each file in the order given, as a drop does.
    void DropFiles(const QStringList &fileNames);

    // Notifications: each raises its event.
    void OpenPlayer(QObject *form) { emit PlayerCreated(form); }
    void ChangePlayerName(QObject *form) { emit PlayerNameChanged(form); }
    void ClosePlayer(QObject *form) { emit PlayerDestroyed(form); }
    void OpenTranslate(QObject *form) { emit TranslateCreated(form); }
    void ChangeTranslateName(QObject *form) { emit TranslateNameChanged(form); }
    void CloseTranslate(QObject *form) { emit TranslateDestroyed(form); }
    void StartKaraOKRecord(QObject *sender) { emit KaraOKRecordStart(sender); }
    void NewKaraOKRecordLyrics(QObject *sender, const QString &lyrics)
    {
        emit KaraOKRecordNewLyrics(sender, lyrics);
    }
    void EndKaraOKRecord(QObject *sender) { emit KaraOKRecordEnd(sender); }
    void CloseFont(QObject *window) { emit FontDestroyed(window); }

    // The player commands of the hot keys: the active player window's player, or every
    // player when the active child is no player window.
    void PlayPause();
    void PlayBack();
    void PlayForword();
    void PlayReset();

    // Status bar panels by key.
    QString PanelText(const QString &key) const;
    void setPanelText(const QString &key, const QString &text);
    // Rebuilds the panels that show hot keys and steps.
    void UpdateStatusBar();
    // The Back (true) or Forword panel was clicked: asks the step in seconds.
    void ShowStepDialog(bool back);
    // Runs the time value dialog modally; false when it could not be shown. Tests
    // replace it.
    std::function<bool(CSliderTimeModel &)> RunTimeDialog;

    // The settings dialog, and how it is run (tests replace it).
    void ShowSettingDialog();
    std::function<void(CSettingDialogModel &, AutoSaveSettings &)> RunSettingDialog;
    const AutoSaveSettings &AutoSaveSetting() const { return m_autoSaveSettings; }

    // Watching the clipboard: copied text that reads as a time goes to the active
    // timing window.
    void ClipboardViewerSwitch(bool on);
    bool WatchingClipboard() const { return m_watchClipboard; }
    // Keeps a window above the others, or not, without moving it.
    static void SetWindowOnTop(QWidget *window, bool flag);

    // The Window menu: the open windows tiled in rows (Qt::Horizontal: each a band across
    // the area) or in columns (Qt::Vertical), and the minimised ones lined up along the
    // bottom of the area. Cascading is the area's own.
    void TileSubWindows(Qt::Orientation bands);
    void ArrangeIcons();

    // The auto-save timer and its work.
    QTimer *timAutoSave = nullptr;
    CAutoSave &AutoSave() { return m_autoSave; }
    void AutoSaveTick();

    // The recent-file list whose entries the File menu shows.
    void AttachRecentFile(CRecentFile *list);
    void ShowRecentMenu(const std::vector<RecentFileMenuEntry> &entries);
    // The entries last shown; other windows with a File menu render these when told by
    // RecentFilesChanged.
    const std::vector<RecentFileMenuEntry> &RecentEntries() const { return m_recentEntries; }

    QMenu *mnuFile = nullptr;
    QAction *mnuFileNewTranslate = nullptr;
    QAction *mnuFileNewTiming = nullptr;
    QAction *mnuFileOpenAVI = nullptr;
    QAction *mnuFileOpenTranslate = nullptr;
    QAction *mnuFileOpenTiming = nullptr;
    // One entry per slot, made as needed; the first stays even when hidden.
    QList<QAction *> mnuFileRecent;
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
    QToolBar *tlbFile = nullptr;
    QToolBar *tlbAVI = nullptr;
    QSlider *sldAviSpeed = nullptr;

signals:
    void PlayerCreated(QObject *form);
    void PlayerNameChanged(QObject *form);
    void PlayerDestroyed(QObject *form);
    void TranslateCreated(QObject *form);
    void TranslateNameChanged(QObject *form);
    void TranslateDestroyed(QObject *form);
    void KaraOKRecordStart(QObject *sender);
    void KaraOKRecordNewLyrics(QObject *sender, const QString &lyrics);
    void KaraOKRecordEnd(QObject *sender);
    void FontDestroyed(QObject *window);
    // Hot keys or player steps changed: tool tips that show them are to be rebuilt.
    void KeyTextsChanged();
    // The recent-file list changed: every window's File menu is to show RecentEntries().
    void RecentFilesChanged();

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct MenuTitle;
    struct MenuEntry;
    struct ToolButton;
    // The menus, their entries and the tool buttons in their order: what builds them also
    // gives them their captions and tips.
    static const std::vector<MenuTitle> &MenuTitles();
    static const std::vector<MenuEntry> &MenuEntries();
    static const std::vector<ToolButton> &ToolButtons();
    QAction *button(const ToolButton &b) const;

    void createMenus();
    void createToolBars();
    void createStatusBar();
    void applyCatalogue();
    void readSettings();
    void saveGeometryToStore();
    void applyAutoSaveSettings();
    void onClipboardChanged();
    void showAbout();
    // The File menu shows the entries of the current document window, if it has any.
    void showWindowEntries();
    CPlayer *activePlayer() const;
    IForm *addFromFactory(DocumentWindowKind kind);

    CVelmar *m_root = nullptr;
    QMdiArea *m_mdiArea = nullptr;
    CDocumentRouter m_router;
    std::map<DocumentWindowKind, WindowFactory> m_factories;
    QHash<QString, QLabel *> m_panels;
    CAutoSave m_autoSave;
    AutoSaveSettings m_autoSaveSettings;
    CRecentFile *m_recent = nullptr;
    QAction *m_recentSeparator = nullptr;
    QAction *m_windowEntriesSeparator = nullptr;
    QList<QPointer<QAction>> m_windowEntries;
    std::vector<RecentFileMenuEntry> m_recentEntries;
    bool m_watchClipboard = false;
    QMetaObject::Connection m_clipboardLink;
};
