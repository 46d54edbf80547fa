#pragma once

#include "core/IForm.h"
#include "shell/IAutoSaveDocument.h"
#include "timing/ITextControl.h"
#include "translation/basTranslateWindow.h"

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class CTextEditControl;
class CTranslate;
class CSpreadView;
class CVelmar;
class MdiVelmar;
class frmFileOption;
class frmFind;
class frmTiming;
template <typename Window> struct WindowMenuItem;
class QAction;
class QComboBox;
class QFontComboBox;
class QLabel;
class QMenu;
class QMenuBar;
class QSplitter;
class QStatusBar;
class QTextDocument;
class QTextEdit;
class QToolBar;
struct RecentFileMenuEntry;

// The window in which a translator writes a draft: the rich-text view, and beside it the
// change table (phrases typed with Alt and a key) and the colour loop (colours given with
// Ctrl and a digit). It opens and saves drafts through the file options, turns a draft
// into a timing document, and in karaoke mode turns key strokes into syllable times of the
// timing window linked to it.
class frmTranslate : public QWidget, public IForm, public IAutoSaveDocument, public ITextControlEvents
{
    Q_OBJECT

public:
    explicit frmTranslate(QWidget *parent = nullptr);
    ~frmTranslate() override;

    // Makes translation windows for the frame: each is put into its area, hears its
    // players, reaches its commands and tells it of its coming, renaming and going.
    static void Register(MdiVelmar &frame);

    // The document: made in the root's list unless one is given. Fills the player list
    // and puts the caret at the start.
    void Init(CVelmar *root = nullptr, CTranslate *document = nullptr);
    // Wires the window to the frame: events, the commands of its menu, karaoke strokes.
    void BindFrame(MdiVelmar &frame);

    CTranslate *Document() const { return m_doc; }
    ITextControl &TextControl();
    // A button of the bars by its key ("Open", "ChangeTo", "Bold" ...), or a menu entry
    // by its name.
    QAction *Button(const QString &key) const;
    QAction *MenuEntry(const QString &name) const;
    // The pressed state a format button shows ("Bold", "Italic", "UnderLine",
    // "StrikeThru").
    basTranslateWindow::FormatState ButtonState(const QString &key) const;

    // IForm. OpenType and SaveType are not used by this window.
    bool OpenFile(int OpenType, const QString &FileName) override;
    bool SaveFile(bool SaveAs, int SaveType = 0) override;

    // IAutoSaveDocument: the draft as written, in its type and options.
    Kind AutoSaveKind() const override { return Translate; }
    QString Content() override;
    ::ScriptType ScriptType() const override;
    void setScriptType(::ScriptType type) override;

    // The main window's events.
    void MainWindow_PlayerCreated(QObject *form);
    void MainWindow_PlayerDestroyed(QObject *form);
    void MainWindow_PlayerNameChanged(QObject *form);
    void FindWindow_BeforeClose();

    // "ChangeTo": a new timing window gets the draft's lines.
    void ChangeTo();
    // Opens the find dialog on the draft (brings it to the front when it is open).
    void OpenFindWindow();
    void ShowRecentMenu(const std::vector<RecentFileMenuEntry> &entries);

    // Set by the frame: a new timing window; the recording events; the player commands
    // the karaoke mode leaves to the frame; the window's caption changed; the window goes.
    std::function<frmTiming *()> NewTimingWindow;
    std::function<void(QObject *)> KaraOKRecordStart;
    std::function<void(QObject *, const QString &)> KaraOKRecordNewLyrics;
    std::function<void(QObject *)> KaraOKRecordEnd;
    std::function<void()> PlayPause;
    std::function<void()> PlayBack;
    std::function<void()> PlayForword;
    std::function<void()> NameChanged;
    std::function<void()> Closing;
    std::function<void(const QString &caption)> OpenRecent;
    // Shows the file-option dialog modally; true on OK. Tests replace it.
    std::function<bool(frmFileOption &)> RunFileOption;

    QTextEdit *rtfTranslate = nullptr;
    // The hidden twin all conversions work on: the document's own.
    QTextDocument *rtfShadow = nullptr;
    CSpreadView *spdChangeTable = nullptr;
    CSpreadView *spdColor = nullptr;
    QComboBox *cmbPlayer = nullptr;
    QFontComboBox *cmbFontName = nullptr;
    QComboBox *cmbFontSize = nullptr;
    QToolBar *tlbFile = nullptr;
    QToolBar *tlbEdit = nullptr;
    QToolBar *tlbFormat = nullptr;
    QStatusBar *stbTranslate = nullptr;
    QSplitter *fraUpDown = nullptr;
    QSplitter *fraLeftRight = nullptr;
    QMenu *mnuPopup = nullptr;
    QMenuBar *menuBar = nullptr;
    QList<QAction *> mnuFileRecent;
    QPointer<frmFind> FindWindow;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    struct BarButton;
    static const std::vector<BarButton> &BarButtons();
    static const std::vector<WindowMenuItem<frmTranslate>> &MenuItems();

    // ITextControlEvents of the draft.
    bool KeyDown(int keyCode, int shift) override;
    void SelChange() override;
    void Change() override;

    void buildBars();
    void buildMenus();
    void connectRecent(QAction *entry);
    void buildLayout();
    void applyTexts();
    bool karaOKKey(int keyCode, int shift);
    void karaOKModeChanged(bool on);
    void showNextSyllable();
    void showSelection();
    void toggleFormat(const QString &key);
    void chooseColour();
    void setSelectionColour(qint64 colour);
    void changeTableClicked(int col, int row);
    void colorTableClicked(int col, int row);
    void fontNameChosen(const QString &name);
    void fontSizeChosen(const QString &size);
    void addPlayerItem(const QString &tag, const QString &name);
    void updateCaption();
    bool askToSave();
    bool runFileOption(frmFileOption &dialog);
    void detachDocument();

    CTranslate *m_doc = nullptr;
    std::unique_ptr<CTextEditControl> m_text;
    QLabel *m_linePanel = nullptr;
    QLabel *m_colourPanel = nullptr;
    QLabel *m_karaokePanel = nullptr;
    basTranslateWindow::SelectionFormat m_format;
};
