#include "ui/frmTiming.h"

#include "core/CHotKeys.h"
#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/basBackup.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "formats/CTimings.h"
#include "formats/basTimingFile.h"
#include "pages/CPictureBox.h"
#include "player/CPlayer.h"
#include "player/CPlayers.h"
#include "player/CPreview.h"
#include "script/CSSAContent.h"
#include "script/CSSAContentLine.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"
#include "shell/basRouting.h"
#include "timing/CCaptureKey.h"
#include "timing/CSliderTimeModel.h"
#include "timing/CTimePointCapture.h"
#include "timing/CTimingGrid.h"
#include "timing/basLineOps.h"
#include "timing/basTimeAdjust.h"
#include "translation/CTranslate.h"
#include "translation/CTranslates.h"
#include "ui/CSpreadView.h"
#include "ui/MdiVelmar.h"
#include "ui/frmCheckTiming.h"
#include "ui/frmFileOption.h"
#include "ui/frmFindSpread.h"
#include "ui/frmSliderTime.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
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

QString TagOf(QObject *form)
{
    if (auto *player = dynamic_cast<IPlayerWindow *>(form))
        return player->Tag();
    return form ? form->property("Tag").toString() : QString();
}

QString NameOf(QObject *form)
{
    if (auto *player = dynamic_cast<IPlayerWindow *>(form))
        return player->Caption();
    return form ? form->property("windowTitle").toString() : QString();
}

int IndexOfTag(const QComboBox *box, const QString &tag)
{
    for (int i = 0; i < box->count(); ++i)
        if (box->itemData(i).toString() == tag)
            return i;
    return -1;
}

// The list's tag: the windows' keys in the order of the items, joined by "*".
void UpdateListTag(QComboBox *box)
{
    QStringList keys;
    for (int i = 0; i < box->count(); ++i)
        keys << box->itemData(i).toString();
    box->setProperty("Tag", keys.join(u'*'));
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
    m_picture = std::make_unique<CPictureBox>(640, 120);
    AskFileOptions = [](frmTiming &form, FileOperation operation) {
        frmFileOption dialog(&form);
        return form.runFileOption(
            dialog, operation, [&dialog] { return dialog.exec() == QDialog::Accepted; });
    };
    buildBars();
    buildLayout();
    wireGrid();
    applyTips();
}

frmTiming::~frmTiming()
{
    m_capture.reset();
    // A window destroyed without closing (the frame going away) takes its document
    // along, so that no list keeps a document whose window is gone.
    if (m_doc) {
        detachDocument();
        m_doc->TimingWindow = nullptr;
        if (CTimings *list = m_doc->Parent())
            list->Delete(QString::number(m_doc->SerialNo()));
        m_doc = nullptr;
    }
    if (spdTiming)
        spdTiming->SetSpread(nullptr);
}

QAction *frmTiming::addButton(QToolBar *bar, const QString &key, const QString &tipKey, const QString &text)
{
    QAction *a = bar->addAction(text);
    a->setObjectName(key);
    a->setProperty("TipKey", tipKey);
    return a;
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

    QAction *open = addButton(
        tlbFile, QStringLiteral("Open"), QStringLiteral("TIMING_BUTTON_TIP_100"), QStringLiteral("打开"));
    auto *openMenu = new QMenu(this);
    QAction *a = openMenu->addAction(Msg(QStringLiteral("TIMING_BUTTON_MENU_100")));
    a->setObjectName(QStringLiteral("FileOpenSSA"));
    connect(a, &QAction::triggered, this, [this] { OpenFile(0, QString()); });
    a = openMenu->addAction(Msg(QStringLiteral("TIMING_BUTTON_MENU_101")));
    a->setObjectName(QStringLiteral("FileOpenTranslate"));
    connect(a, &QAction::triggered, this, [this] {
        if (OpenTranslate)
            OpenTranslate();
    });
    a = openMenu->addAction(Msg(QStringLiteral("TIMING_BUTTON_MENU_102")));
    a->setObjectName(QStringLiteral("FileOpenFont"));
    open->setMenu(openMenu);
    connect(open, &QAction::triggered, this, [this] { OpenFile(0, QString()); });

    QAction *save = addButton(
        tlbFile, QStringLiteral("Save"), QStringLiteral("TIMING_BUTTON_TIP_200"), QStringLiteral("保存"));
    auto *saveMenu = new QMenu(this);
    a = saveMenu->addAction(Msg(QStringLiteral("TIMING_BUTTON_MENU_200")));
    a->setObjectName(QStringLiteral("FileSaveASS"));
    connect(a, &QAction::triggered, this, [this] { SaveFile(false); });
    a = saveMenu->addAction(Msg(QStringLiteral("TIMING_BUTTON_MENU_201")));
    a->setObjectName(QStringLiteral("FileSaveCustom"));
    connect(a, &QAction::triggered, this, [this] { SaveFile(true); });
    save->setMenu(saveMenu);
    connect(save, &QAction::triggered, this, [this] { SaveFile(false); });
    for (QToolButton *b : tlbFile->findChildren<QToolButton *>())
        b->setPopupMode(QToolButton::MenuButtonPopup);

    addButton(tlbUtility, QStringLiteral("SubInfomation"), QStringLiteral("TIMING_BUTTON_TIP_300"),
        QStringLiteral("注释"));
    addButton(
        tlbUtility, QStringLiteral("Font"), QStringLiteral("TIMING_BUTTON_TIP_400"), QStringLiteral("字体"));
    QAction *ssa = addButton(
        tlbUtility, QStringLiteral("SSA"), QStringLiteral("TIMING_BUTTON_TIP_500"), QStringLiteral("SSA"));
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
    ssa->setMenu(ssaMenu);
    connect(ssa, &QAction::triggered, this, [this] { m_grid->ColumnView().PressButton(); });
    addButton(tlbUtility, QStringLiteral("EffectSpecial"), QStringLiteral("TIMING_BUTTON_TIP_E00"),
        QStringLiteral("特效"));

    QAction *check = addButton(
        tlbAjust, QStringLiteral("Check"), QStringLiteral("TIMING_BUTTON_TIP_600"), QStringLiteral("检查"));
    connect(check, &QAction::triggered, this,
        [this] { openChild(CheckWindow, MakeCheckWindow, QStringLiteral("检查时间轴窗口已经存在")); });
    addButton(tlbAjust, QStringLiteral("PicPreview"), QStringLiteral("TIMING_BUTTON_TIP_H00"),
        QStringLiteral("SST"));
    QAction *back = addButton(tlbAjust, QStringLiteral("TimeOffsetBack"),
        QStringLiteral("TIMING_BUTTON_TIP_700"), QStringLiteral("-0.1"));
    connect(back, &QAction::triggered, this, [this] {
        if (m_capture && m_capture->ShiftTimes)
            m_capture->ShiftTimes(-0.1);
    });
    QAction *forword = addButton(tlbAjust, QStringLiteral("TimeOffsetForword"),
        QStringLiteral("TIMING_BUTTON_TIP_800"), QStringLiteral("+0.1"));
    connect(forword, &QAction::triggered, this, [this] {
        if (m_capture && m_capture->ShiftTimes)
            m_capture->ShiftTimes(0.1);
    });
    QAction *find = addButton(
        tlbAjust, QStringLiteral("Find"), QStringLiteral("TIMING_BUTTON_TIP_I00"), QStringLiteral("查找"));
    connect(find, &QAction::triggered, this, [this] { openChild(FindWindow, MakeFindWindow, QString()); });

    auto toggle = [this](const QString &key, const QString &tip, const QString &text, auto apply) {
        QAction *t = addButton(tlbMode, key, tip, text);
        t->setCheckable(true);
        connect(t, &QAction::toggled, this, apply);
        return t;
    };
    toggle(QStringLiteral("AutoEndTimePoint"), QStringLiteral("TIMING_BUTTON_TIP_F00"),
        QStringLiteral("自动结束"), [this](bool on) {
            if (m_doc)
                m_doc->AutoEndTimePoint = on;
        });
    toggle(QStringLiteral("StepPause"), QStringLiteral("TIMING_BUTTON_TIP_900"), QStringLiteral("单步暂停"),
        [this](bool on) {
            if (m_doc)
                m_doc->StepPause = on;
        });
    toggle(QStringLiteral("TraceAVI"), QStringLiteral("TIMING_BUTTON_TIP_A00"), QStringLiteral("画面跟踪"),
        [this](bool on) {
            if (m_doc)
                m_doc->TraceAVI = on;
        });
    QAction *karaok = toggle(QStringLiteral("KaraOK"), QStringLiteral("TIMING_BUTTON_TIP_B00"),
        QStringLiteral("卡拉OK"), [](bool) {});
    connect(karaok, &QAction::triggered, this, [this, karaok](bool pressed) {
        if (!m_capture)
            return;
        const bool state = m_capture->KaraOKToggle(pressed);
        if (state != karaok->isChecked())
            karaok->setChecked(state);
    });
    karaok->setEnabled(false);
    timPreview = new QTimer(this);
    timPreview->setObjectName(QStringLiteral("timPreview"));
    timPreview->setInterval(100);
    connect(timPreview, &QTimer::timeout, this, &frmTiming::paintPreview);
    toggle(QStringLiteral("Preview"), QStringLiteral("PREVIEW_BUTTON_TIP_101"), QStringLiteral("预览"),
        [this](bool on) {
            picPreview->setVisible(on);
            if (on)
                timPreview->start();
            else
                timPreview->stop();
        });

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

void frmTiming::applyTips()
{
    for (QToolBar *bar : { tlbFile, tlbUtility, tlbAjust, tlbMode })
        for (QAction *a : bar->actions()) {
            const QString tipKey = a->property("TipKey").toString();
            if (!tipKey.isEmpty())
                a->setToolTip(Msg(tipKey));
        }
    if (HotKeys) {
        Button(QStringLiteral("TimeOffsetBack"))->setToolTip(TimeOffsetBackTip(*HotKeys));
        Button(QStringLiteral("TimeOffsetForword"))->setToolTip(TimeOffsetForwordTip(*HotKeys));
        cmdInsertTimePoint->setText(InsertTimePointCaption(*HotKeys));
    }
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
    layout->addWidget(spdTiming, 1);
    resize(900, 560);
}

void frmTiming::InitTimingFormSize(int height)
{
    resize(width(), height);
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
        connect(w, &frmTiming::Closed, &f, [&f](frmTiming *form) { f.CloseTiming(form); });
        f.OpenTiming(w);
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
    TimePrecision = 2;
    m_grid->SetPreviewHooks(m_doc->Preview.get());
    m_grid->SetDocument(m_doc);
    m_grid->ResetGrid(0);
    m_doc->Preview->AttachGrid(&m_grid->Spread());
    m_doc->Preview->setPicture(m_picture.get());
    m_capture = std::make_unique<CTimePointCapture>(*m_doc, *m_grid);
    m_capture->ClearCells = [this] { basLineOps::ClearCells(*m_grid); };
    m_capture->ShiftTimes = [this](double seconds) { basTimeAdjust::ShiftTimes(*m_grid, seconds); };
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
        if (formKey(key.KeyCode, key.Ctrl))
            return true;
        const bool grid = watched == spdTiming || watched->property("GridEditor").toBool();
        if (grid && m_capture) {
            const CaptureKeyResult result = m_capture->KeyStroke(key);
            if (result.Yield)
                QCoreApplication::processEvents();
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
    if (newRow == s.MaxRows())
        m_grid->AppendRow();
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
    for (int r : rows)
        m_grid->SetRowChanged(r, !m_grid->RowChanged(r));
}

// ---- players and translations ----------------------------------------------------------

void frmTiming::MainWindow_PlayerCreated(QObject *form)
{
    if (form)
        addPlayerItem(TagOf(form), NameOf(form));
}

void frmTiming::addPlayerItem(const QString &tag, const QString &name)
{
    if (IndexOfTag(cmbPlayer, tag) >= 0)
        return;
    cmbPlayer->addItem(name, tag);
    UpdateListTag(cmbPlayer);
    if (m_doc && !m_doc->PlayerWindow())
        playerChosen(cmbPlayer->count() - 1);
}

void frmTiming::MainWindow_PlayerDestroyed(QObject *form)
{
    const int index = IndexOfTag(cmbPlayer, TagOf(form));
    if (index < 0)
        return;
    const bool selected = index == cmbPlayer->currentIndex();
    cmbPlayer->removeItem(index);
    UpdateListTag(cmbPlayer);
    if (selected && m_doc)
        m_doc->setPlayerWindow(nullptr);
}

void frmTiming::MainWindow_PlayerNameChanged(QObject *form)
{
    const int index = IndexOfTag(cmbPlayer, TagOf(form));
    if (index >= 0)
        cmbPlayer->setItemText(index, NameOf(form));
}

void frmTiming::MainWindow_TranslateCreated(QObject *form)
{
    if (!form || IndexOfTag(cmbTranslate, TagOf(form)) >= 0)
        return;
    cmbTranslate->addItem(NameOf(form), TagOf(form));
    UpdateListTag(cmbTranslate);
    if (m_doc && !m_doc->TranslateWindow)
        translateChosen(cmbTranslate->count() - 1);
}

void frmTiming::MainWindow_TranslateDestroyed(QObject *form)
{
    const int index = IndexOfTag(cmbTranslate, TagOf(form));
    if (index < 0)
        return;
    const bool selected = index == cmbTranslate->currentIndex();
    cmbTranslate->removeItem(index);
    UpdateListTag(cmbTranslate);
    if (selected)
        translateChosen(cmbTranslate->currentIndex());
}

void frmTiming::MainWindow_TranslateNameChanged(QObject *form)
{
    const int index = IndexOfTag(cmbTranslate, TagOf(form));
    if (index >= 0)
        cmbTranslate->setItemText(index, NameOf(form));
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
    const int index = IndexOfTag(cmbTranslate, TagOf(form));
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
    m_doc->TranslateWindow = window;
    QAction *karaok = Button(QStringLiteral("KaraOK"));
    if (!window)
        karaok->setChecked(false);
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

void frmTiming::buildPopup()
{
    mnuPopup = new QMenu(this);
    mnuPopup->setObjectName(QStringLiteral("mnuPopup"));
    auto item = [this](QMenu *menu, const char *name, const QString &text, std::function<void()> run = {}) {
        QAction *a = menu->addAction(text);
        a->setObjectName(QString::fromLatin1(name));
        if (run)
            connect(a, &QAction::triggered, this, run);
        return a;
    };
    auto sub = [this](QMenu *menu, const char *name, const QString &text) {
        QMenu *m = menu->addMenu(text);
        m->setObjectName(QString::fromLatin1(name));
        m->menuAction()->setObjectName(QString::fromLatin1(name));
        return m;
    };
    CTimingGrid &g = *m_grid;
    const auto msg = [](const char *key) { return Msg(QString::fromLatin1(key)); };
    item(mnuPopup, "mnuTimingAjustTime", msg("MENU_TIMING_100"),
        [&g] { basTimeAdjust::AskTimeAdjust(g, basTimeAdjust::AdjustShift); });
    QMenu *scale = sub(mnuPopup, "mnuTimingScaleTime", QStringLiteral("缩放时间轴"));
    item(scale, "mnuTimingScaleTimeAsk", QStringLiteral("缩放时间轴..."),
        [&g] { basTimeAdjust::AskTimeAdjust(g, basTimeAdjust::AdjustScale); });
    item(scale, "mnuTimingScaleTime23To25", QStringLiteral("23.976 → 25"),
        [&g] { basTimeAdjust::AskTimeAdjust(g, basTimeAdjust::AdjustScale23To25); });
    item(scale, "mnuTimingScaleTime25To23", QStringLiteral("25 → 23.976"),
        [&g] { basTimeAdjust::AskTimeAdjust(g, basTimeAdjust::AdjustScale25To23); });
    item(mnuPopup, "mnuTimingReactOffsetStart", msg("MENU_TIMING_101"), [this] { askReactOffset(false); });
    item(mnuPopup, "mnuTimingReactOffsetEnd", msg("MENU_TIMING_102"), [this] { askReactOffset(true); });
    mnuPopup->addSeparator();
    item(mnuPopup, "mnuTimingInsertLine", msg("MENU_TIMING_200"),
        [&g] { basLineOps::InsertRows(g, basLineOps::WholeRows); });
    item(mnuPopup, "mnuTimingInsertTimeLine", msg("MENU_TIMING_201"),
        [&g] { basLineOps::InsertRows(g, basLineOps::TimeCells); });
    item(mnuPopup, "mnuTimingInsertDialogLine", msg("MENU_TIMING_202"),
        [&g] { basLineOps::InsertRows(g, basLineOps::DialogCells); });
    item(mnuPopup, "mnuTimingDeleteLine", msg("MENU_TIMING_300"),
        [&g] { basLineOps::DeleteRows(g, basLineOps::WholeRows); });
    item(mnuPopup, "mnuTimingDeleteTimeLine", msg("MENU_TIMING_301"),
        [&g] { basLineOps::DeleteRows(g, basLineOps::TimeCells); });
    item(mnuPopup, "mnuTimingDeleteDialogLine", msg("MENU_TIMING_302"),
        [&g] { basLineOps::DeleteRows(g, basLineOps::DialogCells); });
    item(mnuPopup, "mnuTimingClear", msg("MENU_TIMING_400"), [&g] { basLineOps::ClearCells(g); });
    QMenu *increace = sub(mnuPopup, "mnuTimingIncreace", QStringLiteral("差分填充"));
    item(increace, "mnuTimingOneTwoIncreace", msg("MENU_TIMING_500"),
        [&g] { basTimeAdjust::FillIncrement(g, 1); });
    item(increace, "mnuTimingFirstLastIncreace", QStringLiteral("第一最后行差分"),
        [&g] { basTimeAdjust::FillIncrement(g, 2); });
    mnuPopup->addSeparator();
    item(mnuPopup, "mnuTimingSetChangedFlg", QStringLiteral("标记为已修改"),
        [&g] { basLineOps::SetChangedFlag(g, true); });
    item(mnuPopup, "mnuTimingSetUnChangedFlg", QStringLiteral("取消已修改标记"),
        [&g] { basLineOps::SetChangedFlag(g, false); });
    item(mnuPopup, "mnuTimingSetQuestionFlg", QStringLiteral("标记为有疑问"),
        [&g] { basLineOps::SetQuestionFlag(g, true); });
    item(mnuPopup, "mnuTimingSetUnQuestionFlg", QStringLiteral("取消疑问标记"),
        [&g] { basLineOps::SetQuestionFlag(g, false); });
    item(mnuPopup, "mnuTimingDisableCheckFlg", QStringLiteral("不检查时间轴"),
        [&g] { basLineOps::SetCheckDisabledFlag(g, true); });
    item(mnuPopup, "mnuTimingEnableCheckFlg", QStringLiteral("检查时间轴"),
        [&g] { basLineOps::SetCheckDisabledFlag(g, false); });
    mnuPopup->addSeparator();
    QMenu *font = sub(mnuPopup, "mnuTimingFont", QStringLiteral("字体"));
    QMenu *owner = sub(mnuPopup, "mnuTimingOwner", QStringLiteral("说话人"));
    QMenu *scroll = sub(mnuPopup, "mnuTimingScroll", QStringLiteral("效果"));
    QMenu *effect = sub(mnuPopup, "mnuTimingEffect", QStringLiteral("特效标签"));
    for (const char *tag : { "mnuTimingEffectBold", "mnuTimingEffectItalic", "mnuTimingEffectColor" })
        item(effect, tag, QString::fromLatin1(tag).mid(15));
    // The lists of the style, speaker and effect submenus follow the list cells of the
    // grid as they stand when the menu opens.
    auto fillList = [this](QMenu *menu, const QStringList &names, int column) {
        menu->clear();
        for (const QString &name : names) {
            QAction *a = menu->addAction(name);
            connect(a, &QAction::triggered, this,
                [this, name, column] { basLineOps::SetListChoice(*m_grid, name, column); });
        }
    };
    connect(mnuPopup, &QMenu::aboutToShow, this, [this, font, owner, scroll, fillList] {
        CSpread &s = m_grid->Spread();
        s.GetMultiSelection();
        const basLineOps::PopupEnabling on = basLineOps::PopupMenuEnabling(s);
        auto enable = [this](const char *name, bool state) {
            for (QAction *a : mnuPopup->findChildren<QAction *>(QString::fromLatin1(name)))
                a->setEnabled(state);
        };
        enable("mnuTimingAjustTime", on.AjustTime);
        enable("mnuTimingScaleTime", on.AjustTime);
        for (const char *n :
            { "mnuTimingInsertLine", "mnuTimingInsertTimeLine", "mnuTimingInsertDialogLine" })
            enable(n, on.InsertLines);
        for (const char *n :
            { "mnuTimingDeleteLine", "mnuTimingDeleteTimeLine", "mnuTimingDeleteDialogLine" })
            enable(n, on.DeleteLines);
        enable("mnuTimingIncreace", on.Increace);
        enable("mnuTimingEffect", on.Effect);
        const int row = qMax(1, s.ActiveRow());
        const auto items = [&s, row](int col) {
            return s.index(row - 1, col - 1).data(CSpread::ListItemsRole).toStringList();
        };
        fillList(font, items(CTimingGrid::ColStyle), CTimingGrid::ColStyle);
        fillList(owner, items(CTimingGrid::ColOwner), CTimingGrid::ColOwner);
        fillList(scroll, CTimingGrid::EffectItems(), CTimingGrid::ColEffect);
    });
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
        result = basTimingFile::OpenWithOptions(
            *m_doc, m_doc->FileName(), m_doc->ScriptType(), m_doc->FileCode, m_doc->TimingOption);
    } else {
        if (!askFileByDialog(FileOperation::Open))
            return false;
        result = basTimingFile::OpenTimingFile(*m_doc, m_doc->FileName(), m_doc->ScriptType());
    }
    if (result != basTimingFile::OpenResult::Opened)
        return false;
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
    if (!SaveWithBackup(m_doc->FileName(), text, m_doc->FileCode != FileCode::ANSI, &error)) {
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
    for (QPointer<QWidget> *child : { &CheckWindow, &FindWindow })
        if (*child)
            (*child)->close();
    if (!askToSave()) {
        event->ignore();
        return;
    }
    if (m_doc && m_doc->Parent()) {
        m_capture.reset();
        timPreview->stop();
        detachDocument();
        const QString key = QString::number(m_doc->SerialNo());
        CTimings *list = m_doc->Parent();
        m_doc = nullptr;
        list->Delete(key);
    }
    event->accept();
    emit Closed(this);
}
