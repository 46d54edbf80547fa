#pragma once

#include "core/IForm.h"
#include "formats/FileOptions.h"
#include "shell/IAutoSaveDocument.h"
#include "ui/IWindowMenu.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class CTiming;
class CTimingGrid;
class CTimingWaveform;
class CWaveformLoader;
class CWaveformStrip;
class CTimePointCapture;
class CSpreadView;
class CVelmar;
class MdiVelmar;
class frmFileOption;
class QAction;
class QComboBox;
class QDialog;
class QLabel;
class QMenu;
class QPushButton;
class QSplitter;
class QTextEdit;
class QTimer;
class QToolBar;

// The working window of a timing document: the grid with the text editor of its active
// cell, the time-point button, the preview picture and the five bars. Keys of the grid go
// to the time-point capture first; the form's own keys (save, player commands) are taken
// before the grid sees them.
class frmTiming : public QWidget, public IForm, public IAutoSaveDocument, public IWindowMenu
{
    Q_OBJECT

public:
    explicit frmTiming(QWidget *parent = nullptr);
    ~frmTiming() override;

    // Makes timing windows for the frame: each is put into its area, hears the frame's
    // events and reaches its player commands.
    static void Register(MdiVelmar &frame);

    // Makes the document in the root's timing list, sets the precision and hands the
    // grid to the document.
    void Init(CVelmar *root = nullptr);

    CTiming *Document() const { return m_doc; }
    CTimingGrid &Grid() { return *m_grid; }
    CTimePointCapture &Capture() { return *m_capture; }
    // A button of the bars by its key ("Open", "Check", "KaraOK" ...).
    QAction *Button(const QString &key) const;

    // 0: a loaded file replaces the grid; otherwise its lines go behind the rows.
    qint32 OpenMode = 0;

    // IForm. OpenType and SaveType are not used by this window.
    bool OpenFile(int OpenType, const QString &FileName) override;
    bool SaveFile(bool SaveAs, int SaveType = 0) override;

    // IAutoSaveDocument: the document's text in its type and options.
    Kind AutoSaveKind() const override { return Timing; }
    QString Content() override;
    ::ScriptType ScriptType() const override;
    void setScriptType(::ScriptType type) override;
    qint32 TimingOption() const override;
    void setTimingOption(qint32 option) override;

    // IWindowMenu: save and save as, by the catalogue's File menu texts.
    QList<QAction *> FileMenuEntries() const override;

    // The main window's events.
    void MainWindow_PlayerCreated(QObject *form);
    void MainWindow_PlayerDestroyed(QObject *form);
    void MainWindow_PlayerNameChanged(QObject *form);
    void MainWindow_TranslateCreated(QObject *form);
    void MainWindow_TranslateDestroyed(QObject *form);
    void MainWindow_TranslateNameChanged(QObject *form);
    void MainWindow_KaraOKRecordStart(QObject *form);
    void MainWindow_KaraOKRecordEnd(QObject *form);
    void MainWindow_KaraOKRecordNewLyrics(QObject *form, const QString &text);
    // The 特效 button: the effect window, one per timing window; a second request says
    // that it exists.
    void openEffectWindow();
    // Selects the translation window in cmbTranslate.
    void TranslateWindow(QObject *form);
    // Sets the file-option dialog up for an open (1) or a save (2) of this document,
    // shows it by `show`, and takes its results over; false when cancelled or failed.
    bool runFileOption(frmFileOption &dialog, FileOperation operation, const std::function<bool()> &show);
    // Tool tips and captions that show hot keys, written again after a key changed.
    void applyTips();
    // Takes the grid's last step back (redo: does the next one again), as the Undo and
    // Redo buttons, the popup's first entries and Ctrl+Z, Ctrl+Y, Ctrl+Shift+Z do.
    void historyStep(bool redo);

    // The frame's player commands the form keys reach, and its file commands the Open
    // menu offers; unset ones do nothing.
    std::function<void()> PlayBack;
    std::function<void()> PlayForword;
    std::function<void()> PlayPause;
    std::function<void()> OpenTranslate;
    // Shows a hint of the last open in the frame's status bar (empty: none).
    std::function<void(const QString &)> ShowStatus;
    // Makes the child windows of the Check, Find and effect buttons (nullptr: none).
    std::function<QWidget *(frmTiming &)> MakeCheckWindow;
    std::function<QWidget *(frmTiming &)> MakeFindWindow;
    std::function<QWidget *(frmTiming &)> MakeEffectWindow;
    // Makes the picture preview of the SST button (the frame's registration puts it into
    // the frame's area as a document window).
    std::function<QWidget *(frmTiming &)> MakePicPreviewWindow;
    // Makes the style window (nullptr: none).
    std::function<QWidget *(frmTiming &)> MakeFontWindow;
    // Shows a modal dialog of this window (script information, speakers); unset: exec().
    std::function<void(QDialog &)> RunDialog;
    // The file-option dialog: runs it for the operation (open or save) over this window
    // and its document; false when cancelled. The default one shows frmFileOption.
    std::function<bool(frmTiming &, FileOperation operation)> AskFileOptions;
    // Runs the time value dialog of the reaction offsets; unset: frmSliderTime, modal.
    std::function<void(class CSliderTimeModel &)> RunTimeDialog;

    CSpreadView *spdTiming = nullptr;
    QTextEdit *rtfEdit = nullptr;
    QTextEdit *rtfShadow = nullptr;
    QPushButton *cmdInsertTimePoint = nullptr;
    QLabel *picPreview = nullptr;
    QToolBar *tlbFile = nullptr;
    QToolBar *tlbUtility = nullptr;
    QToolBar *tlbAjust = nullptr;
    QToolBar *tlbMode = nullptr;
    QToolBar *cbaTiming = nullptr;
    QComboBox *cmbPlayer = nullptr;
    QComboBox *cmbTranslate = nullptr;
    QTimer *timPreview = nullptr;
    QMenu *mnuPopup = nullptr;
    QAction *mnuFileSaveTiming = nullptr;
    QAction *mnuFileSaveAsTiming = nullptr;
    // The grid below the edit box, with the waveform strip above it once the strip has
    // been shown (the Waveform toggle of tlbMode); the strip is made on its first showing.
    QSplitter *splWaveform = nullptr;
    CWaveformStrip *wavStrip = nullptr;
    QTimer *timWaveform = nullptr;
    // The audio of the linked player's file being read for the strip.
    bool WaveformLoading() const;

    // The child windows this window opened (each at most one).
    QPointer<QWidget> CheckWindow;
    QPointer<QWidget> FindWindow;
    QPointer<QWidget> EffectWindow;
    QPointer<QWidget> PicPreviewWindow;
    QPointer<QWidget> FontWindow;

    // The style window (or, when it is open, its message); the script information dialog
    // over the document's head; the speaker list of the owner column; a style file into the
    // style window, which opens for it when it is not open.
    void ShowFontWindow();
    void ShowScriptInfo();
    void ShowOwnerWindow();
    void OpenFontFile();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    struct BarButton;
    struct BarMenuEntry;
    struct PopupItem;
    // The bars' buttons, the entries of their drop-down menus and the grid's popup menu,
    // in their order: what builds the controls also refreshes their tips and enabling.
    static const std::vector<BarButton> &BarButtons();
    static const std::vector<BarMenuEntry> &BarMenuEntries();
    static const std::vector<PopupItem> &PopupItems();

    void buildBars();
    void buildButtonMenus();
    void buildLayout();
    void wireGrid();
    bool askFileByDialog(FileOperation operation);
    void openChild(QPointer<QWidget> &slot, const std::function<QWidget *(frmTiming &)> &make,
        const QString &existsText);
    bool formKey(int keyCode, bool ctrl);
    void leaveCell(int col, int row, int newCol, int newRow);
    void refreshEditor(int col, int row);
    void setEditorText(const QString &text, bool enabled);
    void editorChanged();
    void rowHeaderDoubleClicked(int row);
    void playerChosen(int index);
    void addPlayerItem(const QString &tag, const QString &name);
    void translateChosen(int index);
    void updateCaption();
    bool askToSave();
    void paintPreview();
    void buildPopup();
    void fillPopupList(QMenu *menu, const QStringList &names, int column, QAction *window);
    void runDialog(QDialog &dialog);
    QStringList listItems(int column) const;
    void karaOKPressed(bool pressed);
    void previewToggled(bool on);
    void shiftTimes(double seconds);
    void detachDocument();
    // The open effect window follows the document's player.
    void handPlayerToEffect();
    void askReactOffset(bool end);
    void updateHistoryControls();
    void waveformToggled(bool on);
    void refreshWaveform();

    CTiming *m_doc = nullptr;
    std::unique_ptr<CTimingGrid> m_grid;
    std::unique_ptr<class CPictureBox> m_picture;
    std::unique_ptr<CTimePointCapture> m_capture;
    std::unique_ptr<CTimingWaveform> m_wave;
    std::unique_ptr<CWaveformLoader> m_waveLoader;
    // The file whose audio the strip shows or reads.
    QString m_wavePath;
    bool m_editorGuard = false;
};
