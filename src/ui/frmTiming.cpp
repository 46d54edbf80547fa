#include "ui/frmTiming.h"

#include "core/CGridAction.h"
#include "core/CHotKeys.h"
#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/basBackup.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "formats/CTimings.h"
#include "formats/basTimingFile.h"
#include "pages/CPictureBox.h"
#include "player/CPlayer.h"
#include "player/CPlayers.h"
#include "player/CPreview.h"
#include "player/CWaveformLoader.h"
#include "script/CSSAContent.h"
#include "script/CSSAContentLine.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"
#include "shell/basRouting.h"
#include "timing/CCaptureKey.h"
#include "timing/CGridHistory.h"
#include "timing/CSliderTimeModel.h"
#include "timing/CTimePointCapture.h"
#include "timing/CTimingGrid.h"
#include "timing/CTimingWaveform.h"
#include "timing/basLineOps.h"
#include "timing/basTimeAdjust.h"
#include "translation/CTranslate.h"
#include "translation/CTranslates.h"
#include "ui/CSpreadView.h"
#include "ui/CWaveformStrip.h"
#include "ui/MdiVelmar.h"
#include "ui/basWindowLists.h"
#include "ui/frmCheckTiming.h"
#include "ui/frmEffect.h"
#include "ui/frmFileOption.h"
#include "ui/frmFindSpread.h"
#include "ui/frmFont.h"
#include "ui/frmOwner.h"
#include "ui/frmPicPreview.h"
#include "ui/frmScriptInfo.h"
#include "ui/frmSliderTime.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QStringDecoder>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

bool IsEditorColumn(int col)
{
    return col == CTimingGrid::ColStartTime || col == CTimingGrid::ColEndTime
        || col == CTimingGrid::ColDialog;
}

// The draft shown by a translation window.
CTranslate *DraftOfWindow(QObject *window)
{
    if (!window || !Velmar || !Velmar->Translates())
        return nullptr;
    for (CTranslate *translate : *Velmar->Translates())
        if (translate->Window() == window)
            return translate;
    return nullptr;
}

void TellDraftKaraOK(QObject *window, bool on)
{
    if (CTranslate *draft = DraftOfWindow(window))
        draft->KaraOK.setMode(on);
}

} // namespace

frmTiming::frmTiming(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmTiming"));
    m_grid = std::make_unique<CTimingGrid>();
    MakeCheckWindow = [](frmTiming &form) -> QWidget * {
        auto *w = new frmCheckTiming(&form);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->Init(form);
        return w;
    };
    MakeFindWindow = [](frmTiming &form) -> QWidget * {
        auto *w = new frmFindSpread(&form);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->Init(&form.Grid().Spread());
        return w;
    };
    MakeEffectWindow = [](frmTiming &form) -> QWidget * {
        auto *w = new frmEffect(&form);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->Init(form);
        return w;
    };
    MakePicPreviewWindow = [](frmTiming &form) -> QWidget * {
        auto *w = new frmPicPreview(&form);
        w->setWindowFlag(Qt::Window);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->Init(form);
        return w;
    };
    MakeFontWindow = [](frmTiming &form) -> QWidget * {
        auto *w = new frmFont(&form);
        w->setAttribute(Qt::WA_DeleteOnClose);
        w->Init(form);
        return w;
    };
    m_picture = std::make_unique<CPictureBox>(640, 120);
    AskFileOptions = [](frmTiming &form, FileOperation operation) {
        frmFileOption dialog(&form);
        return form.runFileOption(
            dialog, operation, [&dialog] { return dialog.exec() == QDialog::Accepted; });
    };
    buildBars();
    mnuFileSaveTiming = new QAction(Msg(QStringLiteral("MENU_FILE_121")), this);
    mnuFileSaveTiming->setObjectName(QStringLiteral("mnuFileSaveTiming"));
    connect(mnuFileSaveTiming, &QAction::triggered, this, [this] { SaveFile(false); });
    mnuFileSaveAsTiming = new QAction(Msg(QStringLiteral("MENU_FILE_131")), this);
    mnuFileSaveAsTiming->setObjectName(QStringLiteral("mnuFileSaveAsTiming"));
    connect(mnuFileSaveAsTiming, &QAction::triggered, this, [this] { SaveFile(true); });
    buildLayout();
    wireGrid();
    applyTips();
}

frmTiming::~frmTiming()
{
    m_waveLoader.reset();
    m_wave.reset();
    m_capture.reset();
    // A window destroyed without closing (the frame going away) takes its document
    // along, so that no list keeps a document whose window is gone.
    if (m_doc) {
        if (m_doc->KaraOKMode)
            TellDraftKaraOK(m_doc->TranslateWindow, false);
        detachDocument();
        m_doc->TimingWindow = nullptr;
        if (CTimings *list = m_doc->Parent())
            list->Delete(QString::number(m_doc->SerialNo()));
        m_doc = nullptr;
    }
    if (spdTiming)
        spdTiming->SetSpread(nullptr);
}

// One button of the bars. Push buttons run on a press; toggles set their state on every
// change of it; the karaoke toggle asks first, on a press by the user only.
struct frmTiming::BarButton
{
    enum Kind { Push, Toggle, UserToggle };
    QToolBar *frmTiming::*Bar;
    const char *Key;
    const char *TipKey;
    const char16_t *Text;
    Kind Type = Push;
    void (*Run)(frmTiming &, bool) = nullptr;
    // A tip that shows a hot key; nullptr: the catalogue's tip.
    QString (*KeyTip)(const CHotKeys &) = nullptr;
    // The caption's catalogue key, where the caption is not the literal text.
    const char *TextKey = nullptr;
};

// An entry of a button's drop-down menu, with the catalogue key of its caption.
struct frmTiming::BarMenuEntry
{
    const char *Button;
    const char *Key;
    const char *TextKey;
    void (*Run)(frmTiming &) = nullptr;
};

const std::vector<frmTiming::BarButton> &frmTiming::BarButtons()
{
    using B = BarButton;
    static const std::vector<B> buttons = {
        { &frmTiming::tlbFile, "Open", "TIMING_BUTTON_TIP_100", u"打开", B::Push,
            [](frmTiming &w, bool) { w.OpenFile(0, QString()); } },
        { &frmTiming::tlbFile, "Save", "TIMING_BUTTON_TIP_200", u"保存", B::Push,
            [](frmTiming &w, bool) { w.SaveFile(false); } },
        { &frmTiming::tlbUtility, "SubInfomation", "TIMING_BUTTON_TIP_300", u"注释", B::Push,
            [](frmTiming &w, bool) { w.ShowScriptInfo(); } },
        { &frmTiming::tlbUtility, "Font", "TIMING_BUTTON_TIP_400", u"字体", B::Push,
            [](frmTiming &w, bool) { w.ShowFontWindow(); } },
        { &frmTiming::tlbUtility, "SSA", "TIMING_BUTTON_TIP_500", u"SSA", B::Push,
            [](frmTiming &w, bool) { w.m_grid->ColumnView().PressButton(); } },
        { &frmTiming::tlbUtility, "EffectSpecial", "TIMING_BUTTON_TIP_E00", u"特效", B::Push,
            [](frmTiming &w, bool) { w.openEffectWindow(); } },
        { &frmTiming::tlbAjust, "Check", "TIMING_BUTTON_TIP_600", u"检查", B::Push,
            [](frmTiming &w, bool) {
                w.openChild(w.CheckWindow, w.MakeCheckWindow, QStringLiteral("检查时间轴窗口已经存在"));
            } },
        { &frmTiming::tlbAjust, "PicPreview", "TIMING_BUTTON_TIP_H00", u"SST", B::Push,
            [](frmTiming &w, bool) {
                // The pages are cut from the lines as the grid holds them now.
                if (w.m_doc && w.m_doc->SSAContent)
                    w.m_grid->StoreGridToContent(*w.m_doc->SSAContent);
                w.openChild(
                    w.PicPreviewWindow, w.MakePicPreviewWindow, QStringLiteral("图片预览窗口已经存在"));
            } },
        { &frmTiming::tlbAjust, "TimeOffsetBack", "TIMING_BUTTON_TIP_700", u"-0.1", B::Push,
            [](frmTiming &w, bool) { w.shiftTimes(-0.1); }, TimeOffsetBackTip },
        { &frmTiming::tlbAjust, "TimeOffsetForword", "TIMING_BUTTON_TIP_800", u"+0.1", B::Push,
            [](frmTiming &w, bool) { w.shiftTimes(0.1); }, TimeOffsetForwordTip },
        { &frmTiming::tlbAjust, "Find", "TIMING_BUTTON_TIP_I00", u"查找", B::Push,
            [](frmTiming &w, bool) { w.openChild(w.FindWindow, w.MakeFindWindow, QString()); } },
        { &frmTiming::tlbMode, "AutoEndTimePoint", "TIMING_BUTTON_TIP_F00", u"自动结束", B::Toggle,
            [](frmTiming &w, bool on) {
                if (w.m_doc)
                    w.m_doc->AutoEndTimePoint = on;
            } },
        { &frmTiming::tlbMode, "StepPause", "TIMING_BUTTON_TIP_900", u"单步暂停", B::Toggle,
            [](frmTiming &w, bool on) {
                if (w.m_doc)
                    w.m_doc->StepPause = on;
            } },
        { &frmTiming::tlbMode, "TraceAVI", "TIMING_BUTTON_TIP_A00", u"画面跟踪", B::Toggle,
            [](frmTiming &w, bool on) {
                if (w.m_doc)
                    w.m_doc->TraceAVI = on;
            } },
        { &frmTiming::tlbMode, "KaraOK", "TIMING_BUTTON_TIP_B00", u"卡拉OK", B::UserToggle,
            [](frmTiming &w, bool pressed) { w.karaOKPressed(pressed); } },
        { &frmTiming::tlbMode, "Preview", "PREVIEW_BUTTON_TIP_101", u"预览", B::Toggle,
            [](frmTiming &w, bool on) { w.previewToggled(on); } },
        { &frmTiming::tlbFile, "Undo", "VELMAR_UNDO_102", u"撤销", B::Push,
            [](frmTiming &w, bool) { w.historyStep(false); }, nullptr, "VELMAR_UNDO_100" },
        { &frmTiming::tlbFile, "Redo", "VELMAR_UNDO_103", u"重做", B::Push,
            [](frmTiming &w, bool) { w.historyStep(true); }, nullptr, "VELMAR_UNDO_101" },
        { &frmTiming::tlbMode, "Waveform", "VELMAR_WAVE_601", u"波形", B::Toggle,
            [](frmTiming &w, bool on) { w.waveformToggled(on); }, nullptr, "VELMAR_WAVE_600" },
    };
    return buttons;
}

const std::vector<frmTiming::BarMenuEntry> &frmTiming::BarMenuEntries()
{
    static const std::vector<BarMenuEntry> entries = {
        { "Open", "FileOpenSSA", "TIMING_BUTTON_MENU_100", [](frmTiming &w) { w.OpenFile(0, QString()); } },
        { "Open", "FileOpenTranslate", "TIMING_BUTTON_MENU_101",
            [](frmTiming &w) {
                if (w.OpenTranslate)
                    w.OpenTranslate();
            } },
        { "Open", "FileOpenFont", "TIMING_BUTTON_MENU_102", [](frmTiming &w) { w.OpenFontFile(); } },
        { "Save", "FileSaveASS", "TIMING_BUTTON_MENU_200", [](frmTiming &w) { w.SaveFile(false); } },
        { "Save", "FileSaveCustom", "TIMING_BUTTON_MENU_201", [](frmTiming &w) { w.SaveFile(true); } },
    };
    return entries;
}

QAction *frmTiming::Button(const QString &key) const
{
    return findChild<QAction *>(key);
}

void frmTiming::buildBars()
{
    auto bar = [this](const char *name) {
        auto *b = new QToolBar(this);
        b->setObjectName(QString::fromLatin1(name));
        b->setToolButtonStyle(Qt::ToolButtonTextOnly);
        return b;
    };
    tlbFile = bar("tlbFile");
    tlbUtility = bar("tlbUtility");
    tlbAjust = bar("tlbAjust");
    tlbMode = bar("tlbMode");
    cbaTiming = bar("cbaTiming");
    timPreview = new QTimer(this);
    timPreview->setObjectName(QStringLiteral("timPreview"));
    timPreview->setInterval(100);
    connect(timPreview, &QTimer::timeout, this, &frmTiming::paintPreview);

    for (const BarButton &b : BarButtons()) {
        QAction *a
            = (this->*b.Bar)
                  ->addAction(b.TextKey ? Msg(QString::fromLatin1(b.TextKey)) : QString::fromUtf16(b.Text));
        a->setObjectName(QString::fromLatin1(b.Key));
        a->setCheckable(b.Type != BarButton::Push);
        if (!b.Run)
            continue;
        const auto run = b.Run;
        if (b.Type == BarButton::Toggle)
            connect(a, &QAction::toggled, this, [this, run](bool on) { run(*this, on); });
        else
            connect(a, &QAction::triggered, this, [this, run](bool on) { run(*this, on); });
    }
    // Karaoke needs a translation window: the button waits for one to be chosen.
    Button(QStringLiteral("KaraOK"))->setEnabled(false);
    buildButtonMenus();

    auto *playerLabel = new QLabel(Msg(QStringLiteral("TIMING_BAND_CAPTION_100")), cbaTiming);
    cmbPlayer = new QComboBox(cbaTiming);
    cmbPlayer->setObjectName(QStringLiteral("cmbPlayer"));
    cmbPlayer->setMinimumContentsLength(10);
    auto *translateLabel = new QLabel(Msg(QStringLiteral("TIMING_BAND_CAPTION_101")), cbaTiming);
    cmbTranslate = new QComboBox(cbaTiming);
    cmbTranslate->setObjectName(QStringLiteral("cmbTranslate"));
    cmbTranslate->setMinimumContentsLength(10);
    cbaTiming->addWidget(playerLabel);
    cbaTiming->addWidget(cmbPlayer);
    cbaTiming->addWidget(translateLabel);
    cbaTiming->addWidget(cmbTranslate);
    connect(cmbPlayer, &QComboBox::activated, this, &frmTiming::playerChosen);
    connect(cmbTranslate, &QComboBox::activated, this, &frmTiming::translateChosen);
}

void frmTiming::buildButtonMenus()
{
    for (const BarMenuEntry &e : BarMenuEntries()) {
        QAction *button = Button(QString::fromLatin1(e.Button));
        auto *menu = button->menu<QMenu *>();
        if (!menu) {
            menu = new QMenu(this);
            button->setMenu(menu);
        }
        QAction *a = menu->addAction(Msg(QString::fromLatin1(e.TextKey)));
        a->setObjectName(QString::fromLatin1(e.Key));
        if (const auto run = e.Run)
            connect(a, &QAction::triggered, this, [this, run] { run(*this); });
    }
    for (QToolButton *b : tlbFile->findChildren<QToolButton *>())
        if (b->defaultAction() && b->defaultAction()->menu<QMenu *>())
            b->setPopupMode(QToolButton::MenuButtonPopup);

    auto *ssaMenu = new QMenu(this);
    ssaMenu->setObjectName(QStringLiteral("mnuSSA"));
    CTimingColumnView &view = m_grid->ColumnView();
    view.LoadTexts();
    for (int item = 1; item <= CTimingColumnView::ItemCount; ++item) {
        QAction *entry = ssaMenu->addAction(view.ItemText(item));
        entry->setObjectName(view.ItemKey(item));
        connect(entry, &QAction::triggered, this, [this, item] { m_grid->ColumnView().PickItem(item); });
    }
    // The menu texts are the record of the view: show them as they stand each time.
    connect(ssaMenu, &QMenu::aboutToShow, this, [this, ssaMenu] {
        const QList<QAction *> entries = ssaMenu->actions();
        for (int item = 1; item <= entries.size(); ++item)
            entries.at(item - 1)->setText(m_grid->ColumnView().ItemText(item));
    });
    Button(QStringLiteral("SSA"))->setMenu(ssaMenu);
}

void frmTiming::karaOKPressed(bool pressed)
{
    if (!m_capture)
        return;
    const bool state = m_capture->KaraOKToggle(pressed);
    QAction *karaok = Button(QStringLiteral("KaraOK"));
    if (state != karaok->isChecked())
        karaok->setChecked(state);
}

void frmTiming::previewToggled(bool on)
{
    picPreview->setVisible(on);
    if (on)
        timPreview->start();
    else
        timPreview->stop();
}

// ---- the waveform strip ------------------------------------------------------------------

void frmTiming::waveformToggled(bool on)
{
    SaveSetting(QStringLiteral("Setting"), QStringLiteral("TimingWaveform"),
        on ? QStringLiteral("1") : QStringLiteral("0"));
    if (!m_wave)
        return;
    if (on && !wavStrip) {
        wavStrip = new CWaveformStrip(splWaveform);
        wavStrip->setObjectName(QStringLiteral("wavStrip"));
        splWaveform->insertWidget(0, wavStrip);
        splWaveform->setStretchFactor(0, 0);
        splWaveform->setStretchFactor(1, 1);
        m_waveLoader = std::make_unique<CWaveformLoader>();
        m_waveLoader->OnProgress = [this](double done) { wavStrip->setProgress(done); };
        m_waveLoader->OnLoaded = [this](const CWaveformResult &result) { wavStrip->ShowResult(result); };
        // Each request goes to the player or the grid; the keys go back to the grid.
        connect(wavStrip, &CWaveformStrip::SeekRequested, this, [this](double seconds) {
            m_wave->Seek(seconds);
            refreshWaveform();
            spdTiming->setFocus();
        });
        connect(wavStrip, &CWaveformStrip::EdgeDragged, this, [this](WaveformEdge edge, double seconds) {
            m_wave->SetEdge(edge, seconds);
            // The edit box shows the cell's new time when it is the one at the cursor.
            const CSpread &grid = m_grid->Spread();
            if (IsEditorColumn(grid.ActiveCol()) && grid.ActiveRow() >= 1)
                refreshEditor(grid.ActiveCol(), grid.ActiveRow());
            refreshWaveform();
            spdTiming->setFocus();
        });
        connect(wavStrip, &CWaveformStrip::PlaySpanRequested, this, [this](double start, double end) {
            m_wave->PlaySpan(start, end);
            spdTiming->setFocus();
        });
    }
    if (!wavStrip)
        return;
    wavStrip->setVisible(on);
    if (on) {
        refreshWaveform();
        timWaveform->start();
    } else {
        // A hidden strip reads nothing: the next showing starts again (from the cache).
        timWaveform->stop();
        m_waveLoader->Cancel();
        m_wavePath.clear();
    }
}

bool frmTiming::WaveformLoading() const
{
    return m_waveLoader && m_waveLoader->Busy();
}

// The strip follows the player (its file, its position) and the active row.
void frmTiming::refreshWaveform()
{
    if (!wavStrip || !m_wave)
        return;
    m_wave->Tick();
    const QString path = m_wave->MediaPath();
    if (path != m_wavePath) {
        // Another player or another file: the reading under way is of no use any more.
        m_wavePath = path;
        if (path.isEmpty()) {
            m_waveLoader->Cancel();
            wavStrip->setPeaks(nullptr);
            wavStrip->setMessage(Msg(QStringLiteral("VELMAR_WAVE_602")));
        } else {
            wavStrip->setPeaks(nullptr);
            wavStrip->setProgress(0);
            m_waveLoader->Load(path);
        }
    }
    if (const std::optional<double> position = m_wave->Position())
        wavStrip->setPosition(*position);
    wavStrip->setActiveSpan(m_wave->ActiveSpan());
    wavStrip->setNeighbourSpans(m_wave->NeighbourSpans());
}

void frmTiming::shiftTimes(double seconds)
{
    if (m_capture && m_capture->ShiftTimes)
        m_capture->ShiftTimes(seconds);
}

void frmTiming::applyTips()
{
    for (const BarButton &b : BarButtons()) {
        QAction *a = Button(QString::fromLatin1(b.Key));
        a->setToolTip(b.KeyTip && HotKeys ? b.KeyTip(*HotKeys) : Msg(QString::fromLatin1(b.TipKey)));
    }
    if (HotKeys)
        cmdInsertTimePoint->setText(InsertTimePointCaption(*HotKeys));
    updateHistoryControls();
}

// The undo and redo controls follow the steps: enabled when there is one, the tip naming it.
void frmTiming::updateHistoryControls()
{
    CGridHistory &history = m_grid->History();
    const struct
    {
        const char *Button;
        const char *Popup;
        const char *TipKey;
        bool On;
        QString Step;
    } controls[] = {
        { "Undo", "mnuTimingUndo", "VELMAR_UNDO_104", history.CanUndo(), history.UndoText() },
        { "Redo", "mnuTimingRedo", "VELMAR_UNDO_105", history.CanRedo(), history.RedoText() },
    };
    for (const auto &c : controls) {
        if (QAction *button = Button(QString::fromLatin1(c.Button))) {
            button->setEnabled(c.On);
            if (c.On)
                button->setToolTip(Msg(QString::fromLatin1(c.TipKey)).arg(c.Step));
        }
        if (mnuPopup)
            if (QAction *entry = mnuPopup->findChild<QAction *>(QString::fromLatin1(c.Popup)))
                entry->setEnabled(c.On);
    }
}

void frmTiming::historyStep(bool redo)
{
    CSpread &s = m_grid->Spread();
    // An open cell editor gives its text to the cell first: the step taken back is then
    // the edit that was under way.
    if (s.EditMode())
        s.setEditMode(false);
    CGridHistory &history = m_grid->History();
    if (redo)
        history.Redo();
    else
        history.Undo();
    spdTiming->setFocus();
}

void frmTiming::buildLayout()
{
    spdTiming = new CSpreadView(this);
    spdTiming->setObjectName(QStringLiteral("spdTiming"));
    spdTiming->SetSpread(&m_grid->Spread());
    spdTiming->setColumnWidth(CTimingGrid::ColDialog - 1, 420);
    spdTiming->setContextMenuPolicy(Qt::CustomContextMenu);

    rtfEdit = new QTextEdit(this);
    rtfEdit->setObjectName(QStringLiteral("rtfEdit"));
    rtfEdit->setAcceptRichText(false);
    rtfEdit->setEnabled(false);
    rtfEdit->setFixedHeight(fontMetrics().height() * 3 + 12);
    rtfShadow = new QTextEdit(this);
    rtfShadow->setObjectName(QStringLiteral("rtfShadow"));
    rtfShadow->hide();
    cmdInsertTimePoint = new QPushButton(this);
    cmdInsertTimePoint->setObjectName(QStringLiteral("cmdInsertTimePoint"));
    cmdInsertTimePoint->setFocusPolicy(Qt::NoFocus);
    picPreview = new QLabel(this);
    picPreview->setObjectName(QStringLiteral("picPreview"));
    picPreview->setMinimumHeight(60);
    picPreview->setAlignment(Qt::AlignCenter);
    picPreview->hide();

    auto *bars = new QHBoxLayout;
    bars->setSpacing(2);
    for (QToolBar *bar : { tlbFile, tlbUtility, tlbAjust, tlbMode })
        bars->addWidget(bar);
    bars->addStretch(1);
    auto *editRow = new QHBoxLayout;
    editRow->addWidget(rtfEdit, 1);
    editRow->addWidget(cmdInsertTimePoint);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addLayout(bars);
    layout->addWidget(cbaTiming);
    layout->addWidget(picPreview);
    layout->addLayout(editRow);
    splWaveform = new QSplitter(Qt::Vertical, this);
    splWaveform->setObjectName(QStringLiteral("splWaveform"));
    splWaveform->setChildrenCollapsible(false);
    splWaveform->addWidget(spdTiming);
    layout->addWidget(splWaveform, 1);
    timWaveform = new QTimer(this);
    timWaveform->setObjectName(QStringLiteral("timWaveform"));
    timWaveform->setInterval(40);
    connect(timWaveform, &QTimer::timeout, this, &frmTiming::refreshWaveform);
    resize(900, 560);
}

void frmTiming::wireGrid()
{
    CSpread &s = m_grid->Spread();
    connect(&s, &CSpread::LeaveCell, this, &frmTiming::leaveCell);
    connect(spdTiming, &CSpreadView::EditEnded, this, [this](int, int row) {
        const int col = m_grid->Spread().ActiveCol();
        if (IsEditorColumn(col))
            refreshEditor(col, row);
        m_grid->TellPreview(-1, row);
    });
    connect(&s, &CSpread::CellEdited, this, [this](int col, int row) {
        if (m_doc)
            m_doc->setChanged(true);
        m_grid->TellPreview(col, row);
    });
    connect(spdTiming, &CSpreadView::CellClicked, this, [this](int col, int row) {
        if (m_capture)
            m_capture->CellClicked();
        m_grid->TellPreview(col, row);
    });
    connect(spdTiming, &CSpreadView::RowHeaderDoubleClicked, this, &frmTiming::rowHeaderDoubleClicked);
    connect(spdTiming, &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
        if (mnuPopup && !mnuPopup->isEmpty())
            mnuPopup->popup(spdTiming->viewport()->mapToGlobal(at));
    });
    connect(rtfEdit, &QTextEdit::textChanged, this, &frmTiming::editorChanged);
    connect(cmdInsertTimePoint, &QPushButton::clicked, this, [this] {
        if (m_capture)
            m_capture->InsertTimePoint();
        spdTiming->setFocus();
    });
    spdTiming->installEventFilter(this);
    rtfEdit->installEventFilter(this);
    CGridHistory &history = m_grid->History();
    connect(&history, &CGridHistory::StateChanged, this, &frmTiming::updateHistoryControls);
    // The editor shows the cell a step put the cursor back on.
    connect(&history, &CGridHistory::Restored, this, [this](int col, int row) {
        if (IsEditorColumn(col) && row >= 1)
            refreshEditor(col, row);
        else
            setEditorText(QString(), false);
    });
    // The grid's in-place editor is part of the grid: the same keys act there.
    connect(spdTiming, &CSpreadView::EditorOpened, this, [this](QWidget *editor) {
        editor->installEventFilter(this);
        editor->setProperty("GridEditor", true);
    });
}

void frmTiming::Register(MdiVelmar &frame)
{
    frame.RegisterWindowFactory(DocumentWindowKind::Timing, [](MdiVelmar &f) -> QWidget * {
        auto *w = new frmTiming;
        f.AddDocumentWindow(w);
        w->Init(f.Root());
        w->PlayBack = [&f] { f.PlayBack(); };
        w->PlayForword = [&f] { f.PlayForword(); };
        w->PlayPause = [&f] { f.PlayPause(); };
        w->OpenTranslate = [&f] { f.OpenDocument(1); };
        w->MakePicPreviewWindow = [&f](frmTiming &form) -> QWidget * {
            auto *preview = new frmPicPreview;
            preview->Init(form);
            f.AddDocumentWindow(preview);
            return preview;
        };
        // A hint of the open goes to the message panel; the next open takes it away.
        w->ShowStatus = [&f](const QString &hint) {
            if (!hint.isEmpty()
                || f.PanelText(QStringLiteral("Message")) == Msg(QStringLiteral("VELMAR_FILE_200")))
                f.setPanelText(QStringLiteral("Message"), hint);
        };
        connect(&f, &MdiVelmar::PlayerCreated, w, &frmTiming::MainWindow_PlayerCreated);
        connect(&f, &MdiVelmar::PlayerDestroyed, w, &frmTiming::MainWindow_PlayerDestroyed);
        connect(&f, &MdiVelmar::PlayerNameChanged, w, &frmTiming::MainWindow_PlayerNameChanged);
        connect(&f, &MdiVelmar::TranslateCreated, w, &frmTiming::MainWindow_TranslateCreated);
        connect(&f, &MdiVelmar::TranslateDestroyed, w, &frmTiming::MainWindow_TranslateDestroyed);
        connect(&f, &MdiVelmar::TranslateNameChanged, w, &frmTiming::MainWindow_TranslateNameChanged);
        connect(&f, &MdiVelmar::KaraOKRecordStart, w, &frmTiming::MainWindow_KaraOKRecordStart);
        connect(&f, &MdiVelmar::KaraOKRecordEnd, w, &frmTiming::MainWindow_KaraOKRecordEnd);
        connect(&f, &MdiVelmar::KaraOKRecordNewLyrics, w, &frmTiming::MainWindow_KaraOKRecordNewLyrics);
        connect(&f, &MdiVelmar::KeyTextsChanged, w, &frmTiming::applyTips);
        return w;
    });
}

void frmTiming::Init(CVelmar *root)
{
    if (!root)
        root = Velmar;
    if (!root || !root->Timings())
        return;
    m_doc = root->Timings()->Create(this);
    m_doc->TimingWindow = this;
    m_grid->SetPreviewHooks(m_doc->Preview.get());
    m_grid->SetDocument(m_doc);
    m_grid->ResetGrid(0);
    m_doc->Preview->AttachGrid(&m_grid->Spread());
    m_doc->Preview->setPicture(m_picture.get());
    m_capture = std::make_unique<CTimePointCapture>(*m_doc, *m_grid);
    m_capture->ClearCells = [this] { basLineOps::ClearCells(*m_grid); };
    m_capture->ShiftTimes = [this](double seconds) { basTimeAdjust::ShiftTimes(*m_grid, seconds); };
    m_capture->TranslateKaraOKMode = [this](bool on) { TellDraftKaraOK(m_doc->TranslateWindow, on); };
    buildPopup();
    if (CPlayers *players = root->Players())
        for (CPlayer *player : *players)
            if (IPlayerWindow *window = player->Window())
                addPlayerItem(window->Tag(), window->Caption());
    if (CTranslates *translates = root->Translates())
        for (CTranslate *translate : *translates)
            if (translate->Window())
                MainWindow_TranslateCreated(translate->Window());
    m_grid->Spread().setRow(1);
    m_grid->Spread().setCol(CTimingGrid::ColStartTime);
    m_grid->Spread().ActivateCell();
    // Making the first rows tells the preview, which counts as a change: a new window
    // holds nothing to save.
    m_doc->setChanged(false);
    m_wave = std::make_unique<CTimingWaveform>(*m_doc, *m_grid, *m_capture);
    if (GetSetting(QStringLiteral("Setting"), QStringLiteral("TimingWaveform")) == QStringLiteral("1"))
        Button(QStringLiteral("Waveform"))->setChecked(true);
}

// ---- auto-save ----------------------------------------------------------------------------

QString frmTiming::Content()
{
    return m_doc ? m_doc->Content() : QString();
}

::ScriptType frmTiming::ScriptType() const
{
    return m_doc ? m_doc->ScriptType() : ::ScriptType::Plain;
}

void frmTiming::setScriptType(::ScriptType type)
{
    if (m_doc)
        m_doc->setScriptType(type);
}

qint32 frmTiming::TimingOption() const
{
    return m_doc ? m_doc->TimingOption : 0;
}

void frmTiming::setTimingOption(qint32 option)
{
    if (m_doc)
        m_doc->TimingOption = option;
}

// ---- keys ------------------------------------------------------------------------------

bool frmTiming::formKey(int keyCode, bool ctrl)
{
    if (!HotKeys || keyCode <= 0)
        return false;
    if ((keyCode == HotKeys->HOTKEY_SaveFile && ctrl) || (keyCode == HotKeys->HOTKEY_SaveFile2() && !ctrl)) {
        SaveFile(false);
        return true;
    }
    const std::pair<qint16, std::function<void()> *> players[] = {
        { HotKeys->HOTKEY_PlayBack(), &PlayBack },
        { HotKeys->HOTKEY_PlayForword(), &PlayForword },
        { HotKeys->HOTKEY_PlayPause(), &PlayPause },
    };
    for (const auto &[code, run] : players)
        if (code != 0 && keyCode == code) {
            if (*run)
                (*run)();
            return true;
        }
    return false;
}

bool frmTiming::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return QWidget::eventFilter(watched, event);
    auto *keyEvent = static_cast<QKeyEvent *>(event);
    const CCaptureKey key = CCaptureKey::FromQt(keyEvent->key(), keyEvent->modifiers(), keyEvent->text());
    if (event->type() == QEvent::KeyPress) {
        // The grid's undo keys come before every hot key; the editors keep their own.
        if (const HistoryKey step = HistoryKeyOf(key); step != HistoryKey::None) {
            if (watched != spdTiming)
                return QWidget::eventFilter(watched, event);
            if (!m_grid->Spread().EditMode())
                historyStep(step == HistoryKey::Redo);
            return true;
        }
        if (formKey(key.KeyCode, key.Ctrl))
            return true;
        const bool grid = watched == spdTiming || watched->property("GridEditor").toBool();
        if (grid && m_capture) {
            // A stroke yields to the event queue by ending here: what it left behind (the
            // view's layout of new rows, repaints, the player's news) runs before the next
            // key comes out of the queue, and nothing runs in the middle of this stroke.
            const CaptureKeyResult result = m_capture->KeyStroke(key);
            if (result.Cancel)
                return true;
        }
    } else if ((watched == spdTiming || watched->property("GridEditor").toBool()) && m_capture
        && !keyEvent->isAutoRepeat()) {
        m_capture->KeyUp(key);
    }
    return QWidget::eventFilter(watched, event);
}

// ---- the editor of the active cell ---------------------------------------------------------

void frmTiming::setEditorText(const QString &text, bool enabled)
{
    m_editorGuard = true;
    rtfEdit->setPlainText(text);
    rtfEdit->setEnabled(enabled);
    m_editorGuard = false;
}

void frmTiming::refreshEditor(int col, int row)
{
    QString text = m_grid->Spread().GetText(col, row);
    text.replace(QStringLiteral("\\N"), QStringLiteral("\n"));
    text.replace(QStringLiteral("\\n"), QStringLiteral("\n"));
    setEditorText(text, true);
}

void frmTiming::leaveCell(int col, int, int newCol, int newRow)
{
    CSpread &s = m_grid->Spread();
    if (newRow == s.MaxRows()) {
        // The spare row goes with the step before it: undoing that takes it back too.
        const CGridAction action(*m_grid, "VELMAR_UNDO_219", CGridAction::FollowsPrevious);
        m_grid->AppendRow();
    }
    if (IsEditorColumn(newCol) || (newCol == -1 && IsEditorColumn(col))) {
        rtfEdit->setEnabled(true);
        if (newCol != -1 && newRow != -1)
            refreshEditor(newCol, newRow);
    } else {
        setEditorText(QString(), false);
    }
}

void frmTiming::editorChanged()
{
    const QString plain = rtfEdit->toPlainText();
    rtfShadow->setPlainText(plain);
    if (m_editorGuard)
        return;
    CSpread &s = m_grid->Spread();
    const int col = s.ActiveCol();
    const int row = s.ActiveRow();
    if (!IsEditorColumn(col) || row < 1)
        return;
    const CGridAction action(*m_grid, "VELMAR_UNDO_202", CGridAction::Typing);
    QString text = plain;
    if (col == CTimingGrid::ColDialog) {
        text.replace(u'\n', QStringLiteral("\\N"));
    } else {
        text.remove(u'\n');
        text = text.trimmed();
    }
    s.SetText(col, row, text);
    if (m_doc)
        m_doc->setChanged(true);
    m_grid->TellPreview(col, row);
}

void frmTiming::rowHeaderDoubleClicked(int row)
{
    CSpread &s = m_grid->Spread();
    QList<int> rows;
    for (const CSpreadBlock &block : s.Selection()) {
        const CSpreadBlock b = block.Normalized();
        if (b.Row < 1)
            continue;
        for (int r = b.Row; r <= b.Row2; ++r)
            rows << r;
    }
    if (rows.isEmpty())
        rows << row;
    const CGridAction action(*m_grid, "VELMAR_UNDO_213");
    for (int r : rows)
        m_grid->SetRowChanged(r, !m_grid->RowChanged(r));
}

// ---- players and translations ----------------------------------------------------------

void frmTiming::MainWindow_PlayerCreated(QObject *form)
{
    if (form)
        addPlayerItem(WindowTagOf(form), WindowNameOf(form));
}

void frmTiming::addPlayerItem(const QString &tag, const QString &name)
{
    if (IndexOfWindowTag(cmbPlayer, tag) >= 0)
        return;
    cmbPlayer->addItem(name, tag);
    UpdateWindowListTag(cmbPlayer);
    if (m_doc && !m_doc->PlayerWindow())
        playerChosen(cmbPlayer->count() - 1);
}

void frmTiming::MainWindow_PlayerDestroyed(QObject *form)
{
    const int index = IndexOfWindowTag(cmbPlayer, WindowTagOf(form));
    if (index < 0)
        return;
    const bool selected = index == cmbPlayer->currentIndex();
    cmbPlayer->removeItem(index);
    UpdateWindowListTag(cmbPlayer);
    if (selected && m_doc) {
        m_doc->setPlayerWindow(nullptr);
        handPlayerToEffect();
    }
}

void frmTiming::MainWindow_PlayerNameChanged(QObject *form)
{
    const int index = IndexOfWindowTag(cmbPlayer, WindowTagOf(form));
    if (index >= 0)
        cmbPlayer->setItemText(index, WindowNameOf(form));
}

void frmTiming::MainWindow_TranslateCreated(QObject *form)
{
    if (!form || IndexOfWindowTag(cmbTranslate, WindowTagOf(form)) >= 0)
        return;
    cmbTranslate->addItem(WindowNameOf(form), WindowTagOf(form));
    UpdateWindowListTag(cmbTranslate);
    if (m_doc && !m_doc->TranslateWindow)
        translateChosen(cmbTranslate->count() - 1);
}

void frmTiming::MainWindow_TranslateDestroyed(QObject *form)
{
    const int index = IndexOfWindowTag(cmbTranslate, WindowTagOf(form));
    if (index < 0)
        return;
    const bool selected = index == cmbTranslate->currentIndex();
    cmbTranslate->removeItem(index);
    UpdateWindowListTag(cmbTranslate);
    if (selected)
        translateChosen(cmbTranslate->currentIndex());
}

void frmTiming::MainWindow_TranslateNameChanged(QObject *form)
{
    const int index = IndexOfWindowTag(cmbTranslate, WindowTagOf(form));
    if (index >= 0)
        cmbTranslate->setItemText(index, WindowNameOf(form));
}

void frmTiming::MainWindow_KaraOKRecordStart(QObject *form)
{
    if (m_capture)
        m_capture->KaraOKRecordStart(form);
}

void frmTiming::MainWindow_KaraOKRecordEnd(QObject *form)
{
    if (m_capture)
        m_capture->KaraOKRecordEnd(form);
}

void frmTiming::MainWindow_KaraOKRecordNewLyrics(QObject *form, const QString &text)
{
    if (m_capture)
        m_capture->KaraOKRecordNewLyrics(form, text);
}

void frmTiming::TranslateWindow(QObject *form)
{
    const int index = IndexOfWindowTag(cmbTranslate, WindowTagOf(form));
    if (index >= 0)
        translateChosen(index);
}

void frmTiming::playerChosen(int index)
{
    if (!m_doc)
        return;
    cmbPlayer->setCurrentIndex(index);
    IPlayerWindow *window = nullptr;
    if (index >= 0 && Velmar && Velmar->Players())
        if (CPlayer *player = Velmar->Players()->Item(cmbPlayer->itemData(index).toString()))
            window = player->Window();
    m_doc->setPlayerWindow(window);
    handPlayerToEffect();
    if (m_doc->ScriptInfo)
        m_doc->ScriptInfo->UpdateAVISize();
    spdTiming->setFocus();
}

void frmTiming::translateChosen(int index)
{
    if (!m_doc)
        return;
    cmbTranslate->setCurrentIndex(index);
    QObject *window = nullptr;
    if (index >= 0 && Velmar && Velmar->Translates())
        if (CTranslate *translate = Velmar->Translates()->Item(cmbTranslate->itemData(index).toString()))
            window = translate->Window();
    QObject *previous = m_doc->TranslateWindow;
    m_doc->TranslateWindow = window;
    QAction *karaok = Button(QStringLiteral("KaraOK"));
    // A draft in karaoke mode for this window leaves it when another one is chosen, and
    // the chosen one takes the mode over.
    if (m_doc->KaraOKMode && previous != window) {
        TellDraftKaraOK(previous, false);
        TellDraftKaraOK(window, true);
    }
    if (!window) {
        karaok->setChecked(false);
        m_doc->KaraOKMode = false;
    }
    karaok->setEnabled(window != nullptr);
    spdTiming->setFocus();
}

// ---- child windows and preview ---------------------------------------------------------

void frmTiming::openChild(
    QPointer<QWidget> &slot, const std::function<QWidget *(frmTiming &)> &make, const QString &existsText)
{
    if (slot) {
        // A window without a message of its own comes to the front instead.
        if (existsText.isEmpty()) {
            slot->raise();
            slot->activateWindow();
        } else {
            MsgBox(existsText);
        }
        return;
    }
    if (!make)
        return;
    slot = make(*this);
    if (slot)
        slot->show();
}

void frmTiming::openEffectWindow()
{
    openChild(EffectWindow, MakeEffectWindow, QStringLiteral("特效时间轴窗口已经存在"));
}

void frmTiming::handPlayerToEffect()
{
    if (auto *effect = qobject_cast<frmEffect *>(EffectWindow.data()))
        effect->setPlayerWindow(m_doc ? m_doc->PlayerWindow() : nullptr);
}

void frmTiming::runDialog(QDialog &dialog)
{
    if (RunDialog)
        RunDialog(dialog);
    else
        dialog.exec();
}

void frmTiming::ShowFontWindow()
{
    openChild(FontWindow, MakeFontWindow, QStringLiteral("字体窗口已经存在"));
}

void frmTiming::OpenFontFile()
{
    if (!FontWindow && MakeFontWindow) {
        FontWindow = MakeFontWindow(*this);
        if (FontWindow)
            FontWindow->show();
    }
    if (auto *window = dynamic_cast<IForm *>(FontWindow.data())) {
        FontWindow->raise();
        window->OpenFile(0, QString());
    }
}

void frmTiming::ShowScriptInfo()
{
    if (!m_doc || !m_doc->ScriptInfo)
        return;
    frmScriptInfo dialog(this);
    dialog.Init(m_doc->ScriptInfo.get());
    runDialog(dialog);
    if (dialog.result() == QDialog::Accepted)
        m_doc->setChanged(true);
}

void frmTiming::ShowOwnerWindow()
{
    frmOwner dialog(this);
    dialog.Init(m_grid->OwnerItems());
    runDialog(dialog);
    if (dialog.Canceled())
        return;
    if (dialog.OwnerNames() != m_grid->OwnerItems() && m_doc)
        m_doc->setChanged(true);
    m_grid->RefreshOwnerCells(dialog.OwnerNames());
}

QList<QAction *> frmTiming::FileMenuEntries() const
{
    return { mnuFileSaveTiming, mnuFileSaveAsTiming };
}

void frmTiming::paintPreview()
{
    if (!m_doc)
        return;
    m_doc->Preview->Tick(m_doc->PlayerWindow());
    picPreview->setPixmap(QPixmap::fromImage(m_picture->Image()));
}

void frmTiming::askReactOffset(bool end)
{
    if (!m_capture)
        return;
    CSliderTimeModel model;
    m_capture->PrepareReactOffsetDialog(model, end);
    if (RunTimeDialog) {
        RunTimeDialog(model);
    } else {
        frmSliderTime dialog(model, this);
        dialog.exec();
    }
    m_capture->TakeReactOffset(model, end);
}

void frmTiming::detachDocument()
{
    m_grid->SetPreviewHooks(nullptr);
    m_grid->SetDocument(nullptr);
    m_doc->setTimingTable(nullptr);
    m_doc->Preview->setPicture(nullptr);
    m_doc->Preview->setGrid(nullptr);
}

// An entry of the grid's popup menu. Items run when chosen; a submenu only opens and holds
// the sub-items that follow it; a list submenu is filled, each time the menu opens, with the
// names the list cells of its column offer, and a chosen name goes to that column.
struct frmTiming::PopupItem
{
    enum Kind { Item, Submenu, SubItem, List, Separator };
    Kind Type;
    const char *Name = nullptr;
    // The caption: a catalogue key, or a text of its own where the catalogue has none.
    const char *TextKey = nullptr;
    const char16_t *Text = nullptr;
    // Enabled by this rule of the selection when the menu opens; nullptr: always.
    bool basLineOps::PopupEnabling::*On = nullptr;
    // What the item runs; for a list submenu, its last entry, which opens the list's window.
    void (*Run)(frmTiming &) = nullptr;
    int Column = 0;
    // The name and caption key of a list submenu's window entry.
    const char *WindowItem = nullptr;
    const char *WindowTextKey = nullptr;
};

const std::vector<frmTiming::PopupItem> &frmTiming::PopupItems()
{
    using P = PopupItem;
    using E = basLineOps::PopupEnabling;
    using namespace basLineOps;
    using namespace basTimeAdjust;
    static const std::vector<P> items = {
        { P::Item, "mnuTimingUndo", "VELMAR_UNDO_102", nullptr, nullptr,
            [](frmTiming &w) { w.historyStep(false); } },
        { P::Item, "mnuTimingRedo", "VELMAR_UNDO_103", nullptr, nullptr,
            [](frmTiming &w) { w.historyStep(true); } },
        { P::Separator },
        { P::Item, "mnuTimingAjustTime", "MENU_TIMING_100", nullptr, &E::AjustTime,
            [](frmTiming &w) { AskTimeAdjust(*w.m_grid, AdjustShift); } },
        { P::Submenu, "mnuTimingScaleTime", nullptr, u"缩放时间轴", &E::AjustTime },
        { P::SubItem, "mnuTimingScaleTimeAsk", nullptr, u"缩放时间轴...", nullptr,
            [](frmTiming &w) { AskTimeAdjust(*w.m_grid, AdjustScale); } },
        { P::SubItem, "mnuTimingScaleTime23To25", nullptr, u"23.976 → 25", nullptr,
            [](frmTiming &w) { AskTimeAdjust(*w.m_grid, AdjustScale23To25); } },
        { P::SubItem, "mnuTimingScaleTime25To23", nullptr, u"25 → 23.976", nullptr,
            [](frmTiming &w) { AskTimeAdjust(*w.m_grid, AdjustScale25To23); } },
        { P::Item, "mnuTimingReactOffsetStart", "MENU_TIMING_101", nullptr, nullptr,
            [](frmTiming &w) { w.askReactOffset(false); } },
        { P::Item, "mnuTimingReactOffsetEnd", "MENU_TIMING_102", nullptr, nullptr,
            [](frmTiming &w) { w.askReactOffset(true); } },
        { P::Separator },
        { P::Item, "mnuTimingInsertLine", "MENU_TIMING_200", nullptr, &E::InsertLines,
            [](frmTiming &w) { InsertRows(*w.m_grid, WholeRows); } },
        { P::Item, "mnuTimingInsertTimeLine", "MENU_TIMING_201", nullptr, &E::InsertLines,
            [](frmTiming &w) { InsertRows(*w.m_grid, TimeCells); } },
        { P::Item, "mnuTimingInsertDialogLine", "MENU_TIMING_202", nullptr, &E::InsertLines,
            [](frmTiming &w) { InsertRows(*w.m_grid, DialogCells); } },
        { P::Item, "mnuTimingDeleteLine", "MENU_TIMING_300", nullptr, &E::DeleteLines,
            [](frmTiming &w) { DeleteRows(*w.m_grid, WholeRows); } },
        { P::Item, "mnuTimingDeleteTimeLine", "MENU_TIMING_301", nullptr, &E::DeleteLines,
            [](frmTiming &w) { DeleteRows(*w.m_grid, TimeCells); } },
        { P::Item, "mnuTimingDeleteDialogLine", "MENU_TIMING_302", nullptr, &E::DeleteLines,
            [](frmTiming &w) { DeleteRows(*w.m_grid, DialogCells); } },
        { P::Item, "mnuTimingClear", "MENU_TIMING_400", nullptr, nullptr,
            [](frmTiming &w) { ClearCells(*w.m_grid); } },
        { P::Submenu, "mnuTimingIncreace", nullptr, u"差分填充", &E::Increace },
        { P::SubItem, "mnuTimingOneTwoIncreace", "MENU_TIMING_500", nullptr, nullptr,
            [](frmTiming &w) { FillIncrement(*w.m_grid, 1); } },
        { P::SubItem, "mnuTimingFirstLastIncreace", nullptr, u"第一最后行差分", nullptr,
            [](frmTiming &w) { FillIncrement(*w.m_grid, 2); } },
        { P::Separator },
        { P::Item, "mnuTimingSetChangedFlg", nullptr, u"标记为已修改", nullptr,
            [](frmTiming &w) { SetChangedFlag(*w.m_grid, true); } },
        { P::Item, "mnuTimingSetUnChangedFlg", nullptr, u"取消已修改标记", nullptr,
            [](frmTiming &w) { SetChangedFlag(*w.m_grid, false); } },
        { P::Item, "mnuTimingSetQuestionFlg", nullptr, u"标记为有疑问", nullptr,
            [](frmTiming &w) { SetQuestionFlag(*w.m_grid, true); } },
        { P::Item, "mnuTimingSetUnQuestionFlg", nullptr, u"取消疑问标记", nullptr,
            [](frmTiming &w) { SetQuestionFlag(*w.m_grid, false); } },
        { P::Item, "mnuTimingDisableCheckFlg", nullptr, u"不检查时间轴", nullptr,
            [](frmTiming &w) { SetCheckDisabledFlag(*w.m_grid, true); } },
        { P::Item, "mnuTimingEnableCheckFlg", nullptr, u"检查时间轴", nullptr,
            [](frmTiming &w) { SetCheckDisabledFlag(*w.m_grid, false); } },
        { P::Separator },
        { P::List, "mnuTimingFont", nullptr, u"字体", nullptr, [](frmTiming &w) { w.ShowFontWindow(); },
            CTimingGrid::ColStyle, "mnuTimingFontWindow", "VELMAR_STYLES_400" },
        { P::List, "mnuTimingOwner", nullptr, u"说话人", nullptr, [](frmTiming &w) { w.ShowOwnerWindow(); },
            CTimingGrid::ColOwner, "mnuTimingOwnerWindow", "VELMAR_STYLES_401" },
        { P::List, "mnuTimingScroll", nullptr, u"效果", nullptr, nullptr, CTimingGrid::ColEffect },
        { P::Submenu, "mnuTimingEffect", nullptr, u"特效标签", &E::Effect },
        // The tag items carry the names of override tags and have no action in this window.
        { P::SubItem, "mnuTimingEffectBold", nullptr, u"Bold" },
        { P::SubItem, "mnuTimingEffectItalic", nullptr, u"Italic" },
        { P::SubItem, "mnuTimingEffectColor", nullptr, u"Color" },
        // An addition: the effect window, as the 特效 button opens it.
        { P::Separator },
        { P::Item, "mnuTimingEffectWindow", "VELMAR_EFFECT_108", nullptr, nullptr,
            [](frmTiming &w) { w.openEffectWindow(); } },
    };
    return items;
}

void frmTiming::buildPopup()
{
    mnuPopup = new QMenu(this);
    mnuPopup->setObjectName(QStringLiteral("mnuPopup"));
    QMenu *submenu = nullptr;
    for (const PopupItem &item : PopupItems()) {
        if (item.Type == PopupItem::Separator) {
            mnuPopup->addSeparator();
            continue;
        }
        const QString name = QString::fromLatin1(item.Name);
        const QString text
            = item.TextKey ? Msg(QString::fromLatin1(item.TextKey)) : QString::fromUtf16(item.Text);
        if (item.Type == PopupItem::Submenu || item.Type == PopupItem::List) {
            submenu = mnuPopup->addMenu(text);
            submenu->setObjectName(name);
            submenu->menuAction()->setObjectName(name);
            // The window entry outlives the names, which are made anew each time.
            if (item.WindowItem) {
                auto *window = new QAction(Msg(QString::fromLatin1(item.WindowTextKey)), this);
                window->setObjectName(QString::fromLatin1(item.WindowItem));
                const auto run = item.Run;
                connect(window, &QAction::triggered, this, [this, run] { run(*this); });
                submenu->addAction(window);
            }
            continue;
        }
        QAction *a = (item.Type == PopupItem::SubItem ? submenu : mnuPopup)->addAction(text);
        a->setObjectName(name);
        if (const auto run = item.Run)
            connect(a, &QAction::triggered, this, [this, run] { run(*this); });
    }
    connect(mnuPopup, &QMenu::aboutToShow, this, [this] {
        CSpread &s = m_grid->Spread();
        s.GetMultiSelection();
        const basLineOps::PopupEnabling on = basLineOps::PopupMenuEnabling(s);
        for (const PopupItem &item : PopupItems()) {
            const QString name = QString::fromLatin1(item.Name);
            if (item.On)
                for (QAction *a : mnuPopup->findChildren<QAction *>(name))
                    a->setEnabled(on.*item.On);
            if (item.Type == PopupItem::List)
                fillPopupList(mnuPopup->findChild<QMenu *>(name), listItems(item.Column), item.Column,
                    item.WindowItem ? findChild<QAction *>(QString::fromLatin1(item.WindowItem)) : nullptr);
        }
        updateHistoryControls();
    });
}

QStringList frmTiming::listItems(int column) const
{
    const CSpread &s = m_grid->Spread();
    const int row = qMax(1, s.ActiveRow());
    return s.index(row - 1, column - 1).data(CSpread::ListItemsRole).toStringList();
}

void frmTiming::fillPopupList(QMenu *menu, const QStringList &names, int column, QAction *window)
{
    menu->clear();
    for (const QString &name : names) {
        QAction *a = menu->addAction(name);
        connect(a, &QAction::triggered, this,
            [this, name, column] { basLineOps::SetListChoice(*m_grid, name, column); });
    }
    if (window) {
        menu->addSeparator();
        menu->addAction(window);
    }
}

// ---- open, save, close -----------------------------------------------------------------

void frmTiming::updateCaption()
{
    if (!m_doc)
        return;
    QString title
        = Msg(QStringLiteral("TIMING_TITLE_000")) + u'(' + QString::number(m_doc->SerialNo()) + u')';
    if (!m_doc->FileName().isEmpty())
        title += QStringLiteral(" - ") + m_doc->FileName();
    setWindowTitle(title);
}

// Without the options dialog: the plain file dialog, the type by the extension.
bool frmTiming::askFileByDialog(FileOperation operation)
{
    QString proposal = m_doc->FileName();
    if (operation == FileOperation::Save) {
        QString playerFile;
        if (IPlayerWindow *player = m_doc->PlayerWindow())
            if (CPlayer *p = player->player())
                playerFile = p->PlayerFileName();
        proposal = TimingSaveName(m_doc->FileName(), playerFile, windowTitle());
    }
    const QString name = ShowFileDialog(operation, m_doc->ScriptType(), proposal);
    if (name.isEmpty())
        return false;
    m_doc->setScriptType(basTimingFile::OpenTypeFromExtension(name));
    m_doc->setFileName(name);
    return true;
}

bool frmTiming::askToSave()
{
    if (!m_doc || !m_doc->Changed())
        return true;
    const int answer = MsgBox(Msg(QStringLiteral("COMM_MSG_100")), MsgBoxStyle::YesNoCancel);
    if (answer == MsgBoxResult::Cancel)
        return false;
    if (answer == MsgBoxResult::Yes)
        return SaveFile(false);
    return true;
}

bool frmTiming::OpenFile(int, const QString &FileName)
{
    if (!m_doc || !askToSave())
        return false;
    basTimingFile::OpenResult result;
    if (!FileName.isEmpty()) {
        result = basTimingFile::OpenTimingFile(*m_doc, FileName);
    } else if (AskFileOptions) {
        // Picked through the file options: read with the code chosen there.
        if (!AskFileOptions(*this, FileOperation::Open))
            return false;
        result = basTimingFile::OpenWithOptions(*m_doc, m_doc->FileName(), m_doc->ScriptType(),
            m_doc->FileCode, m_doc->TimingOption, m_doc->FileCodePage);
    } else {
        if (!askFileByDialog(FileOperation::Open))
            return false;
        result = basTimingFile::OpenTimingFile(*m_doc, m_doc->FileName(), m_doc->ScriptType());
    }
    if (result != basTimingFile::OpenResult::Opened)
        return false;
    // An open style window starts again from the styles just read.
    if (auto *font = qobject_cast<frmFont *>(FontWindow.data()))
        font->Init(*this);
    if (ShowStatus)
        ShowStatus(m_doc->BareLineFeeds ? Msg(QStringLiteral("VELMAR_FILE_200")) : QString());
    m_doc->Preview->ClearAllPreview();
    m_doc->setChanged(false);
    updateCaption();
    CSpread &s = m_grid->Spread();
    s.setRow(1);
    s.setCol(CTimingGrid::ColStartTime);
    s.ActivateCell();
    // The timer starts stamping at once.
    spdTiming->setFocus();
    return true;
}

bool frmTiming::runFileOption(
    frmFileOption &dialog, FileOperation operation, const std::function<bool()> &show)
{
    CFileOptionModel &model = dialog.Model;
    if (operation == FileOperation::Save) {
        basTimingFile::PrepareSave(model, *m_doc);
        model.OpenModeAllowed = true;
    } else {
        model.Init();
        model.ParentWindowType = ParentWindowType::Timing;
        model.TimingDocument = m_doc;
        model.FileCode = m_doc->FileCode;
        model.CodePage = m_doc->FileCodePage;
        model.setDocumentType(m_doc->ScriptType(), m_doc->ScriptSubType());
        model.setOperation(FileOperation::Open);
        model.SelectFileDialog();
        if (model.Cancelled)
            return false;
    }
    dialog.Refresh();
    if (!show() || model.Cancelled)
        return false;
    if (operation == FileOperation::Save) {
        basTimingFile::TakeOverSave(*m_doc, model);
        return !model.OperateError;
    }
    m_doc->setFileName(model.FileName);
    m_doc->setScriptType(model.ScriptType());
    m_doc->setScriptSubType(model.ScriptSubType());
    m_doc->FileCode = model.FileCode;
    m_doc->FileCodePage = model.CodePage;
    m_doc->TimingOption = model.TimingOption;
    OpenMode = model.OpenMode;
    m_grid->OpenMode = OpenMode;
    return true;
}

bool frmTiming::SaveFile(bool SaveAs, int)
{
    if (!m_doc)
        return false;
    if (SaveAs || m_doc->FileName().isEmpty()) {
        if (AskFileOptions) {
            // The dialog writes the file itself on OK.
            if (!AskFileOptions(*this, FileOperation::Save))
                return false;
            m_doc->setChanged(false);
            updateCaption();
            return true;
        }
        if (!askFileByDialog(FileOperation::Save))
            return false;
    }
    QString error;
    const QString text = m_doc->Content();
    if (!SaveWithBackup(
            m_doc->FileName(), text, TextCoding { m_doc->FileCode, m_doc->FileCodePage }, &error)) {
        MsgBox(error);
        return false;
    }
    if (RecentFile)
        RecentFile->InsertRecentFileList(m_doc->FileName(), m_doc->ScriptType());
    m_doc->setChanged(false);
    updateCaption();
    return true;
}

void frmTiming::closeEvent(QCloseEvent *event)
{
    for (QPointer<QWidget> *child : { &CheckWindow, &FindWindow, &EffectWindow, &FontWindow })
        if (*child)
            (*child)->close();
    if (!askToSave()) {
        event->ignore();
        return;
    }
    if (m_doc && m_doc->Parent()) {
        if (m_doc->KaraOKMode)
            TellDraftKaraOK(m_doc->TranslateWindow, false);
        timWaveform->stop();
        m_waveLoader.reset();
        m_wave.reset();
        m_capture.reset();
        timPreview->stop();
        detachDocument();
        const QString key = QString::number(m_doc->SerialNo());
        CTimings *list = m_doc->Parent();
        m_doc = nullptr;
        list->Delete(key);
    }
    event->accept();
}
