#include "ui/frmTranslate.h"

#include "core/CHotKeys.h"
#include "core/CSpread.h"
#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/basColour.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "formats/CTiming.h"
#include "player/CPlayer.h"
#include "player/CPlayers.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"
#include "shell/basRouting.h"
#include "timing/CTimingGrid.h"
#include "translation/CTranslate.h"
#include "translation/CTranslates.h"
#include "translation/basTranslateFile.h"
#include "ui/CSpreadView.h"
#include "ui/CTextEditControl.h"
#include "ui/MdiVelmar.h"
#include "ui/basWindowLists.h"
#include "ui/basWindowMenu.h"
#include "ui/frmFileOption.h"
#include "ui/frmFind.h"
#include "ui/frmTiming.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFontComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTextBlock>
#include <QTextEdit>
#include <QToolBar>
#include <QVBoxLayout>

using namespace basTranslateWindow;

namespace {

constexpr int kCtrl = 2;

// The swatch the colour button shows.
QIcon ColourIcon(const QColor &colour)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(Qt::darkGray);
    painter.setBrush(colour);
    painter.drawRect(1, 1, 13, 13);
    return QIcon(pixmap);
}

} // namespace

// A button of the bars: its key, tip, look and what it runs.
struct frmTranslate::BarButton
{
    QToolBar *frmTranslate::*Bar;
    const char *Key;
    const char *TipKey;
    const char16_t *Text = nullptr; // shown beside or instead of the icon
    QStyle::StandardPixmap Icon = QStyle::SP_CustomBase; // SP_CustomBase: none
    bool Checkable = false;
    void (*Run)(frmTranslate &) = nullptr;
};

const std::vector<frmTranslate::BarButton> &frmTranslate::BarButtons()
{
    using B = BarButton;
    static const std::vector<B> buttons = {
        { &frmTranslate::tlbFile, "Open", "TRANSLATE_BUTTON_TIP_100", nullptr, QStyle::SP_DialogOpenButton,
            false, [](frmTranslate &w) { w.OpenFile(0, QString()); } },
        { &frmTranslate::tlbFile, "Save", "TRANSLATE_BUTTON_TIP_101", nullptr, QStyle::SP_DialogSaveButton,
            false, [](frmTranslate &w) { w.SaveFile(false); } },
        { &frmTranslate::tlbFile, "SaveAs", "VELMAR_TRANSLATE_100", nullptr, QStyle::SP_DriveFDIcon, false,
            [](frmTranslate &w) { w.SaveFile(true); } },
        { &frmTranslate::tlbEdit, "Find", "TRANSLATE_BUTTON_TIP_109", nullptr,
            QStyle::SP_FileDialogContentsView, false, [](frmTranslate &w) { w.OpenFindWindow(); } },
        { &frmTranslate::tlbEdit, "ChangeTo", "TRANSLATE_BUTTON_TIP_110", u"时间轴", QStyle::SP_ArrowRight,
            false, [](frmTranslate &w) { w.ChangeTo(); } },
        { &frmTranslate::tlbFormat, "Color", "TRANSLATE_BUTTON_TIP_104", nullptr, QStyle::SP_CustomBase,
            false, [](frmTranslate &w) { w.chooseColour(); } },
        { &frmTranslate::tlbFormat, "Bold", "TRANSLATE_BUTTON_TIP_105", u"B", QStyle::SP_CustomBase, true,
            [](frmTranslate &w) { w.toggleFormat(QStringLiteral("Bold")); } },
        { &frmTranslate::tlbFormat, "Italic", "TRANSLATE_BUTTON_TIP_106", u"I", QStyle::SP_CustomBase, true,
            [](frmTranslate &w) { w.toggleFormat(QStringLiteral("Italic")); } },
        { &frmTranslate::tlbFormat, "UnderLine", "TRANSLATE_BUTTON_TIP_107", u"U", QStyle::SP_CustomBase,
            true, [](frmTranslate &w) { w.toggleFormat(QStringLiteral("UnderLine")); } },
        { &frmTranslate::tlbFormat, "StrikeThru", "TRANSLATE_BUTTON_TIP_108", u"S", QStyle::SP_CustomBase,
            true, [](frmTranslate &w) { w.toggleFormat(QStringLiteral("StrikeThru")); } },
    };
    return buttons;
}

using MenuItem = WindowMenuItem<frmTranslate>;

const std::vector<MenuItem> &frmTranslate::MenuItems()
{
    using M = MenuItem;
    static const std::vector<M> items = WithFrameMenus<frmTranslate>({
        { M::Title, "mnuFile", "MENU_FILE_000" },
        { M::Entry, "mnuFileNewTiming", "MENU_FILE_101", nullptr, &MdiVelmar::mnuFileNewTiming },
        { M::Entry, "mnuFileNewTranslate", "MENU_FILE_100", nullptr, &MdiVelmar::mnuFileNewTranslate },
        { M::Separator },
        { M::Entry, "mnuFileOpenTiming", "MENU_FILE_112", nullptr, &MdiVelmar::mnuFileOpenTiming },
        { M::Entry, "mnuFileOpenTranslate", "MENU_FILE_111", nullptr, &MdiVelmar::mnuFileOpenTranslate },
        { M::Entry, "mnuFileOpenAVI", "MENU_FILE_110", nullptr, &MdiVelmar::mnuFileOpenAVI },
        { M::Separator },
        { M::Entry, "mnuFileSaveTranslate", "MENU_FILE_120", [](frmTranslate &w) { w.SaveFile(false); } },
        { M::Entry, "mnuFileSaveTranslateAs", "MENU_FILE_130", [](frmTranslate &w) { w.SaveFile(true); } },
        { M::Entry, "mnuFileCloseTranslate", "VELMAR_TRANSLATE_101",
            [](frmTranslate &w) {
                if (auto *sub = w.parentWidget(); sub && sub->inherits("QMdiSubWindow"))
                    sub->close();
                else
                    w.close();
            } },
        { M::Recent },
        { M::Separator },
        { M::Entry, "mnuFileExit", "VELMAR_TRANSLATE_102", nullptr, &MdiVelmar::mnuFileExit },
    });
    return items;
}

frmTranslate::frmTranslate(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmTranslate"));
    RunFileOption = [](frmFileOption &dialog) { return dialog.exec() == QDialog::Accepted; };
    buildBars();
    buildMenus();
    buildLayout();
    applyTexts();
}

frmTranslate::~frmTranslate()
{
    // A window destroyed without closing (the frame going away) takes its document along.
    if (m_doc) {
        CTranslates *list = m_doc->Parent();
        const QString key = QString::number(m_doc->SerialNo());
        detachDocument();
        m_doc = nullptr;
        if (list)
            list->Delete(key);
    }
}

void frmTranslate::buildBars()
{
    auto bar = [this](const char *name, Qt::ToolButtonStyle style) {
        auto *b = new QToolBar(this);
        b->setObjectName(QString::fromLatin1(name));
        b->setToolButtonStyle(style);
        b->setIconSize(QSize(16, 16));
        // The bars keep all their buttons; the player list gives way instead.
        b->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
        return b;
    };
    tlbFile = bar("tlbFile", Qt::ToolButtonIconOnly);
    tlbEdit = bar("tlbEdit", Qt::ToolButtonTextBesideIcon);
    tlbFormat = bar("tlbFormat", Qt::ToolButtonTextBesideIcon);
    // A format button over a selection of mixed formats shows it by its frame.
    tlbFormat->setStyleSheet(QStringLiteral("QToolButton[mixed=\"true\"] { border: 1px dashed gray; }"));
    for (const BarButton &b : BarButtons()) {
        QToolBar *toolBar = this->*b.Bar;
        QAction *a = toolBar->addAction(b.Text ? QString::fromUtf16(b.Text) : QString());
        a->setObjectName(QString::fromLatin1(b.Key));
        if (b.Icon != QStyle::SP_CustomBase)
            a->setIcon(style()->standardIcon(b.Icon));
        a->setCheckable(b.Checkable);
        const auto run = b.Run;
        connect(a, &QAction::triggered, this, [this, run] { run(*this); });
    }
    Button(QStringLiteral("Color"))->setIcon(ColourIcon(Qt::black));
    const std::pair<const char *, void (*)(QFont &)> looks[] = {
        { "Bold", [](QFont &f) { f.setBold(true); } },
        { "Italic", [](QFont &f) { f.setItalic(true); } },
        { "UnderLine", [](QFont &f) { f.setUnderline(true); } },
        { "StrikeThru", [](QFont &f) { f.setStrikeOut(true); } },
    };
    for (const auto &[key, look] : looks) {
        QAction *a = Button(QString::fromLatin1(key));
        QFont f = a->font();
        look(f);
        a->setFont(f);
    }

    cmbFontName = new QFontComboBox(tlbFormat);
    cmbFontName->setObjectName(QStringLiteral("cmbFontName"));
    cmbFontName->setMaximumWidth(150);
    cmbFontSize = new QComboBox(tlbFormat);
    cmbFontSize->setObjectName(QStringLiteral("cmbFontSize"));
    cmbFontSize->setEditable(true);
    cmbFontSize->setInsertPolicy(QComboBox::NoInsert);
    for (int size : { 8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72 })
        cmbFontSize->addItem(QString::number(size));
    cmbFontSize->setMinimumContentsLength(3);
    tlbFormat->addSeparator();
    tlbFormat->addWidget(cmbFontName);
    tlbFormat->addWidget(cmbFontSize);
    connect(cmbFontName, &QComboBox::textActivated, this, &frmTranslate::fontNameChosen);
    connect(cmbFontSize, &QComboBox::textActivated, this, &frmTranslate::fontSizeChosen);
    // A size typed that the list does not hold is taken on Enter as well.
    connect(cmbFontSize->lineEdit(), &QLineEdit::returnPressed, this,
        [this] { fontSizeChosen(cmbFontSize->lineEdit()->text()); });

    cmbPlayer = new QComboBox(this);
    cmbPlayer->setObjectName(QStringLiteral("cmbPlayer"));
    cmbPlayer->setMinimumContentsLength(10);
    cmbPlayer->addItem(QString(), QString());
    UpdateWindowListTag(cmbPlayer);
}

void frmTranslate::buildMenus()
{
    menuBar = new QMenuBar(this);
    menuBar->setObjectName(QStringLiteral("mnuTranslate"));
    BuildWindowMenu(
        *this, menuBar, MenuItems(), mnuFileRecent, [this](QAction *entry) { connectRecent(entry); });

    // The right-button menu of the text: its three items are shown and do nothing.
    mnuPopup = new QMenu(this);
    mnuPopup->setObjectName(QStringLiteral("mnuPopup"));
    QMenu *translate = mnuPopup->addMenu(Msg(QStringLiteral("MENU_TRANSLATE_000")));
    translate->setObjectName(QStringLiteral("mnuTranslateLine"));
    const std::pair<const char *, const char *> inert[] = {
        { "mnuTranslateLineHeadEndChangeColor", "MENU_TRANSLATE_100" },
        { "mnuTranslateLineLineColorLoop", "MENU_TRANSLATE_101" },
        { "mnuTranslateLineHeadEndChangeFontSize", "MENU_TRANSLATE_102" },
    };
    for (const auto &[name, key] : inert)
        translate->addAction(Msg(QString::fromLatin1(key)))->setObjectName(QString::fromLatin1(name));
}

void frmTranslate::connectRecent(QAction *entry)
{
    connect(entry, &QAction::triggered, this, [this, entry] {
        if (OpenRecent)
            OpenRecent(entry->text());
    });
}

void frmTranslate::buildLayout()
{
    rtfTranslate = new QTextEdit(this);
    rtfTranslate->setObjectName(QStringLiteral("rtfTranslate"));
    // Pasted and dropped text comes in plain, so that no foreign format enters the draft.
    rtfTranslate->setAcceptRichText(false);
    rtfTranslate->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(rtfTranslate, &QWidget::customContextMenuRequested, this,
        [this](const QPoint &at) { mnuPopup->popup(rtfTranslate->viewport()->mapToGlobal(at)); });
    m_text = std::make_unique<CTextEditControl>(rtfTranslate);
    m_text->setEvents(this);

    auto table = [this](const char *name) {
        auto *view = new CSpreadView(this);
        view->setObjectName(QString::fromLatin1(name));
        view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
        return view;
    };
    spdChangeTable = table("spdChangeTable");
    spdColor = table("spdColor");
    connect(spdChangeTable, &CSpreadView::CellClicked, this, &frmTranslate::changeTableClicked);
    connect(spdColor, &CSpreadView::CellClicked, this, &frmTranslate::colorTableClicked);
    connect(spdColor, &CSpreadView::RowHeaderClicked, this, [this](int row) {
        if (m_doc && AskRowColour(*m_doc, row))
            m_doc->setChanged(true);
    });

    fraUpDown = new QSplitter(Qt::Vertical, this);
    fraUpDown->setObjectName(QStringLiteral("fraUpDown"));
    fraUpDown->addWidget(spdChangeTable);
    fraUpDown->addWidget(spdColor);
    fraLeftRight = new QSplitter(Qt::Horizontal, this);
    fraLeftRight->setObjectName(QStringLiteral("fraLeftRight"));
    fraLeftRight->addWidget(rtfTranslate);
    fraLeftRight->addWidget(fraUpDown);
    fraLeftRight->setStretchFactor(0, 3);
    fraLeftRight->setStretchFactor(1, 1);
    fraLeftRight->setChildrenCollapsible(false);

    stbTranslate = new QStatusBar(this);
    stbTranslate->setObjectName(QStringLiteral("stbTranslate"));
    stbTranslate->setSizeGripEnabled(false);
    m_linePanel = new QLabel(this);
    m_linePanel->setObjectName(QStringLiteral("Line"));
    m_colourPanel = new QLabel(this);
    m_colourPanel->setObjectName(QStringLiteral("Color"));
    m_karaokePanel = new QLabel(this);
    m_karaokePanel->setObjectName(QStringLiteral("KaraOK"));
    m_karaokePanel->hide();
    stbTranslate->addWidget(m_linePanel);
    stbTranslate->addWidget(m_colourPanel);
    stbTranslate->addWidget(m_karaokePanel, 1);

    auto *bars = new QHBoxLayout;
    bars->setSpacing(2);
    for (QToolBar *bar : { tlbFile, tlbEdit, tlbFormat })
        bars->addWidget(bar);
    bars->addWidget(new QLabel(Msg(QStringLiteral("TIMING_BAND_CAPTION_100")), this));
    bars->addWidget(cmbPlayer);
    bars->addStretch(1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->setMenuBar(menuBar);
    layout->addLayout(bars);
    layout->addWidget(fraLeftRight, 1);
    layout->addWidget(stbTranslate);
    resize(900, 560);
}

void frmTranslate::applyTexts()
{
    for (const BarButton &b : BarButtons())
        Button(QString::fromLatin1(b.Key))->setToolTip(Msg(QString::fromLatin1(b.TipKey)));
    cmbFontName->setToolTip(Msg(QStringLiteral("TRANSLATE_BUTTON_TIP_103")));
    cmbFontSize->setToolTip(Msg(QStringLiteral("VELMAR_TRANSLATE_103")));
}

void frmTranslate::Register(MdiVelmar &frame)
{
    frame.RegisterWindowFactory(DocumentWindowKind::Translate, [](MdiVelmar &f) -> QWidget * {
        auto *w = new frmTranslate;
        f.AddDocumentWindow(w)->resize(960, 600);
        w->Init(f.Root());
        w->BindFrame(f);
        f.OpenTranslate(w);
        return w;
    });
}

void frmTranslate::BindFrame(MdiVelmar &frame)
{
    MdiVelmar *f = &frame;
    connect(f, &MdiVelmar::PlayerCreated, this, &frmTranslate::MainWindow_PlayerCreated);
    connect(f, &MdiVelmar::PlayerDestroyed, this, &frmTranslate::MainWindow_PlayerDestroyed);
    connect(f, &MdiVelmar::PlayerNameChanged, this, &frmTranslate::MainWindow_PlayerNameChanged);
    connect(f, &MdiVelmar::RecentFilesChanged, this, [this, f] { ShowRecentMenu(f->RecentEntries()); });
    connect(
        f, &MdiVelmar::KeyTextsChanged, this, [this] { karaOKModeChanged(m_doc && m_doc->KaraOK.Mode()); });
    BindWindowMenu(menuBar, MenuItems(), frame);
    ShowRecentMenu(f->RecentEntries());
    NewTimingWindow = [f] { return dynamic_cast<frmTiming *>(f->NewDocument(0)); };
    KaraOKRecordStart = [f](QObject *window) { f->StartKaraOKRecord(window); };
    KaraOKRecordNewLyrics
        = [f](QObject *window, const QString &text) { f->NewKaraOKRecordLyrics(window, text); };
    KaraOKRecordEnd = [f](QObject *window) { f->EndKaraOKRecord(window); };
    PlayPause = [f] { f->PlayPause(); };
    PlayBack = [f] { f->PlayBack(); };
    PlayForword = [f] { f->PlayForword(); };
    NameChanged = [this, f] { f->ChangeTranslateName(this); };
    Closing = [this, f] { f->CloseTranslate(this); };
    OpenRecent = [f](const QString &caption) { f->OpenRecentFile(caption); };
}

void frmTranslate::Init(CVelmar *root, CTranslate *document)
{
    if (!root)
        root = Velmar;
    if (document)
        m_doc = document;
    else if (root && root->Translates())
        m_doc = root->Translates()->Create(this);
    if (!m_doc)
        return;
    m_doc->setWindow(this);
    setProperty("Tag", QString::number(m_doc->SerialNo()));
    m_doc->setTranslate(rtfTranslate->document());
    rtfShadow = &m_doc->Shadow();
    spdChangeTable->SetSpread(&m_doc->spdChangeTable());
    spdColor->SetSpread(&m_doc->spdColor());
    // Leaving the last row of a table makes the next one; the tables travel with the draft.
    connect(&m_doc->spdChangeTable(), &CSpread::LeaveCell, this, [this](int, int row, int, int newRow) {
        if (m_doc && newRow != row)
            ChangeTableRowReached(*m_doc, row);
    });
    connect(&m_doc->spdColor(), &CSpread::LeaveCell, this, [this](int, int row, int, int newRow) {
        if (m_doc && newRow != row)
            ColorTableRowReached(*m_doc, row);
    });
    for (CSpread *table : { &m_doc->spdChangeTable(), &m_doc->spdColor() })
        connect(table, &CSpread::CellEdited, this, [this] {
            if (m_doc)
                m_doc->setChanged(true);
        });
    CKaraOKStrokes &karaok = m_doc->KaraOK;
    karaok.ModeChanged = [this](bool on) { karaOKModeChanged(on); };
    karaok.RecordStart = [this] {
        if (KaraOKRecordStart)
            KaraOKRecordStart(this);
    };
    karaok.NewLyrics = [this](const QString &text) {
        if (KaraOKRecordNewLyrics)
            KaraOKRecordNewLyrics(this, text);
    };
    karaok.RecordEnd = [this] {
        if (KaraOKRecordEnd)
            KaraOKRecordEnd(this);
    };
    if (root && root->Players())
        for (CPlayer *player : *root->Players())
            if (IPlayerWindow *window = player->Window())
                addPlayerItem(window->Tag(), window->Caption());
    updateCaption();
    m_text->setSelStart(0);
    m_doc->setChanged(false);
    showSelection();
}

void frmTranslate::detachDocument()
{
    CKaraOKStrokes &karaok = m_doc->KaraOK;
    karaok.ModeChanged = nullptr;
    karaok.RecordStart = nullptr;
    karaok.NewLyrics = nullptr;
    karaok.RecordEnd = nullptr;
    disconnect(&m_doc->spdChangeTable(), nullptr, this, nullptr);
    disconnect(&m_doc->spdColor(), nullptr, this, nullptr);
    m_doc->setWindow(nullptr);
    m_doc->setTranslate(nullptr);
    spdChangeTable->SetSpread(nullptr);
    spdColor->SetSpread(nullptr);
    rtfShadow = nullptr;
}

ITextControl &frmTranslate::TextControl()
{
    return *m_text;
}

QAction *frmTranslate::Button(const QString &key) const
{
    for (QToolBar *bar : { tlbFile, tlbEdit, tlbFormat })
        if (QAction *a = bar->findChild<QAction *>(key))
            return a;
    return nullptr;
}

QAction *frmTranslate::MenuEntry(const QString &name) const
{
    return menuBar->findChild<QAction *>(name);
}

FormatState frmTranslate::ButtonState(const QString &key) const
{
    const QAction *a = Button(key);
    if (!a)
        return FormatState::Off;
    if (a->property("mixed").toBool())
        return FormatState::Mixed;
    return a->isChecked() ? FormatState::On : FormatState::Off;
}

// ---- auto-save --------------------------------------------------------------------------

QString frmTranslate::Content()
{
    return m_doc ? m_doc->Content() : QString();
}

::ScriptType frmTranslate::ScriptType() const
{
    return m_doc ? m_doc->ScriptType : ::ScriptType::Plain;
}

void frmTranslate::setScriptType(::ScriptType type)
{
    if (m_doc)
        m_doc->ScriptType = type;
}

// ---- keys and the selection ---------------------------------------------------------------

bool frmTranslate::KeyDown(int keyCode, int shift)
{
    if (!m_doc)
        return false;
    if (HotKeys && keyCode == HotKeys->HOTKEY_SaveFile && shift == kCtrl) {
        SaveFile(false);
        return true;
    }
    if (m_doc->KaraOK.Mode())
        return karaOKKey(keyCode, shift);
    const QuickKey quick = QuickKeyOf(*m_doc, keyCode, shift);
    switch (quick.Action) {
    case QuickKey::InsertText:
        m_text->setSelText(quick.Text);
        return true;
    case QuickKey::SetColour:
        setSelectionColour(quick.Colour);
        return true;
    case QuickKey::Swallow:
        return true;
    case QuickKey::None:
        break;
    }
    return false;
}

// In karaoke mode the draft takes no typing: the recording keys act, the player keys go
// to the frame, and every other key only moves about.
bool frmTranslate::karaOKKey(int keyCode, int shift)
{
    KaraOKKeys keys;
    if (HotKeys) {
        keys.Start = HotKeys->HOTKEY_TimingStartTime();
        keys.Lyrics = HotKeys->HOTKEY_TimingTime();
        keys.End = HotKeys->HOTKEY_TimingEndTime();
    }
    const CKaraOKStrokes::Stroke stroke
        = m_doc->KaraOK.KeyDown(keyCode, shift, rtfTranslate->textCursor().position(), keys);
    if (stroke.Caret) {
        QTextCursor cursor = rtfTranslate->textCursor();
        cursor.setPosition(*stroke.Caret);
        rtfTranslate->setTextCursor(cursor);
    }
    if (stroke.Swallow) {
        showNextSyllable();
        return true;
    }
    if (HotKeys && shift == 0 && keyCode > 0) {
        const std::pair<qint16, std::function<void()> *> players[] = {
            { HotKeys->HOTKEY_PlayPause(), &PlayPause },
            { HotKeys->HOTKEY_PlayBack(), &PlayBack },
            { HotKeys->HOTKEY_PlayForword(), &PlayForword },
        };
        for (const auto &[code, run] : players)
            if (code != 0 && keyCode == code) {
                if (*run)
                    (*run)();
                return true;
            }
    }
    return false;
}

void frmTranslate::SelChange()
{
    if (!m_doc)
        return;
    m_doc->KaraOK.CaretMoved(rtfTranslate->textCursor().position());
    showSelection();
    if (m_doc->KaraOK.Mode())
        showNextSyllable();
}

void frmTranslate::Change()
{
    if (m_doc)
        m_doc->setChanged(true);
}

void frmTranslate::showSelection()
{
    const QTextCursor cursor = rtfTranslate->textCursor();
    m_format = ReadSelectionFormat(*rtfTranslate->document(), cursor.selectionStart(), cursor.selectionEnd());
    m_linePanel->setText(LineStatus(cursor.blockNumber() + 1));
    m_colourPanel->setText(ColourStatus(m_format));
    Button(QStringLiteral("Color"))
        ->setIcon(ColourIcon(m_format.Colour ? BgrToColor(*m_format.Colour) : Qt::gray));
    const std::pair<const char *, FormatState> states[] = {
        { "Bold", m_format.Bold },
        { "Italic", m_format.Italic },
        { "UnderLine", m_format.Underline },
        { "StrikeThru", m_format.StrikeOut },
    };
    for (const auto &[key, state] : states) {
        QAction *a = Button(QString::fromLatin1(key));
        a->setChecked(state == FormatState::On);
        a->setProperty("mixed", state == FormatState::Mixed);
        for (QObject *o : a->associatedObjects()) {
            auto *w = qobject_cast<QWidget *>(o);
            if (!w || qobject_cast<QMenu *>(w) || qobject_cast<QToolBar *>(w))
                continue;
            w->setProperty("mixed", state == FormatState::Mixed);
            w->style()->unpolish(w);
            w->style()->polish(w);
        }
    }
    {
        const QSignalBlocker quiet(cmbFontName);
        if (m_format.FontName.isEmpty())
            cmbFontName->setCurrentIndex(-1);
        else
            cmbFontName->setCurrentFont(QFont(m_format.FontName));
        cmbFontName->setEditText(m_format.FontName);
    }
    {
        const QSignalBlocker quiet(cmbFontSize);
        cmbFontSize->setEditText(m_format.FontSize);
    }
}

// ---- formats ----------------------------------------------------------------------------------

void frmTranslate::toggleFormat(const QString &key)
{
    if (!m_doc || m_doc->KaraOK.Mode()) {
        showSelection();
        return;
    }
    QTextCharFormat f;
    if (key == u"Bold")
        f.setFontWeight(PressedAfterClick(m_format.Bold) ? QFont::Bold : QFont::Normal);
    else if (key == u"Italic")
        f.setFontItalic(PressedAfterClick(m_format.Italic));
    else if (key == u"UnderLine")
        f.setFontUnderline(PressedAfterClick(m_format.Underline));
    else if (key == u"StrikeThru")
        f.setFontStrikeOut(PressedAfterClick(m_format.StrikeOut));
    rtfTranslate->mergeCurrentCharFormat(f);
    showSelection();
    rtfTranslate->setFocus();
}

void frmTranslate::setSelectionColour(qint64 colour)
{
    if (!m_doc || m_doc->KaraOK.Mode())
        return;
    QTextCharFormat f;
    f.setForeground(BgrToColor(colour));
    rtfTranslate->mergeCurrentCharFormat(f);
    showSelection();
}

void frmTranslate::chooseColour()
{
    const std::optional<qint64> chosen = Prompt().ChooseColour(m_format.Colour.value_or(0));
    if (chosen)
        setSelectionColour(*chosen);
    rtfTranslate->setFocus();
}

void frmTranslate::fontNameChosen(const QString &name)
{
    if (!m_doc || m_doc->KaraOK.Mode() || name.trimmed().isEmpty())
        return;
    QTextCharFormat f;
    f.setFontFamilies(QStringList { name.trimmed() });
    rtfTranslate->mergeCurrentCharFormat(f);
    showSelection();
    rtfTranslate->setFocus();
}

void frmTranslate::fontSizeChosen(const QString &size)
{
    bool number = false;
    const double points = size.trimmed().toDouble(&number);
    if (!m_doc || m_doc->KaraOK.Mode() || !number || points <= 0 || points > 1638) {
        showSelection();
        return;
    }
    QTextCharFormat f;
    f.setFontPointSize(points);
    rtfTranslate->mergeCurrentCharFormat(f);
    showSelection();
    rtfTranslate->setFocus();
}

// ---- the tables ---------------------------------------------------------------------------------

void frmTranslate::changeTableClicked(int col, int row)
{
    if (!m_doc)
        return;
    if (!m_doc->KaraOK.Mode())
        if (const std::optional<QString> text = ChangeTableText(*m_doc, col, row)) {
            m_text->setSelText(*text);
            rtfTranslate->setFocus();
        }
    ChangeTableRowReached(*m_doc, row);
}

void frmTranslate::colorTableClicked(int col, int row)
{
    if (!m_doc)
        return;
    if (const std::optional<qint64> colour = ColorTableColour(*m_doc, col, row))
        setSelectionColour(*colour);
    ColorTableRowReached(*m_doc, row);
}

// ---- karaoke ------------------------------------------------------------------------------------

void frmTranslate::karaOKModeChanged(bool on)
{
    rtfTranslate->setReadOnly(on);
    if (on)
        rtfTranslate->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    tlbFormat->setEnabled(!on);
    if (on && HotKeys)
        m_karaokePanel->setText(Msg(QStringLiteral("VELMAR_TRANSLATE_104"))
                                    .arg(KeyCodeToName(HotKeys->HOTKEY_TimingStartTime()),
                                        KeyCodeToName(HotKeys->HOTKEY_TimingEndTime())));
    m_karaokePanel->setVisible(on);
    showNextSyllable();
}

void frmTranslate::showNextSyllable()
{
    QList<QTextEdit::ExtraSelection> marks;
    if (m_doc && m_doc->KaraOK.Mode()) {
        const auto [at, length] = m_doc->KaraOK.NextSyllable();
        if (length > 0) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(rtfTranslate->document());
            mark.cursor.setPosition(at);
            mark.cursor.setPosition(at + length, QTextCursor::KeepAnchor);
            mark.format.setBackground(QColor(255, 220, 80));
            marks << mark;
        }
    }
    rtfTranslate->setExtraSelections(marks);
}

// ---- players ------------------------------------------------------------------------------------

void frmTranslate::addPlayerItem(const QString &tag, const QString &name)
{
    if (IndexOfWindowTag(cmbPlayer, tag) >= 0)
        return;
    cmbPlayer->addItem(name, tag);
    UpdateWindowListTag(cmbPlayer);
}

void frmTranslate::MainWindow_PlayerCreated(QObject *form)
{
    if (form)
        addPlayerItem(WindowTagOf(form), WindowNameOf(form));
}

void frmTranslate::MainWindow_PlayerDestroyed(QObject *form)
{
    const int index = IndexOfWindowTag(cmbPlayer, WindowTagOf(form));
    if (index <= 0)
        return;
    cmbPlayer->removeItem(index);
    UpdateWindowListTag(cmbPlayer);
}

void frmTranslate::MainWindow_PlayerNameChanged(QObject *form)
{
    const int index = IndexOfWindowTag(cmbPlayer, WindowTagOf(form));
    if (index > 0)
        cmbPlayer->setItemText(index, WindowNameOf(form));
}

// ---- find -------------------------------------------------------------------------------------

void frmTranslate::OpenFindWindow()
{
    if (FindWindow) {
        FindWindow->raise();
        FindWindow->activateWindow();
        return;
    }
    FindWindow = new frmFind(this);
    FindWindow->setFindTarget(m_text.get());
    FindWindow->BeforeClose = [this] { FindWindow_BeforeClose(); };
    FindWindow->show();
}

void frmTranslate::FindWindow_BeforeClose()
{
    FindWindow = nullptr;
}

// ---- ChangeTo --------------------------------------------------------------------------------

void frmTranslate::ChangeTo()
{
    if (!m_doc || !NewTimingWindow)
        return;
    frmTiming *timing = NewTimingWindow();
    if (!timing || !timing->Document())
        return;
    frmFileOption dialog(this);
    const bool taken = basTranslateFile::ChangeTo(*m_doc, *timing->Document(), dialog.Model, [this, &dialog] {
        dialog.Refresh();
        return RunFileOption && RunFileOption(dialog);
    });
    if (!taken)
        return;
    // The new script starts on its first line, linked to this draft.
    timing->TranslateWindow(this);
    CSpread &grid = timing->Grid().Spread();
    grid.setRow(1);
    grid.setCol(CTimingGrid::ColStartTime);
    grid.ActivateCell();
    timing->spdTiming->setFocus();
}

// ---- open, save, close ----------------------------------------------------------------------

void frmTranslate::updateCaption()
{
    if (!m_doc)
        return;
    QString title = m_doc->Caption();
    if (!m_doc->FileName().isEmpty())
        title += QStringLiteral(" - ") + m_doc->FileName();
    if (title == windowTitle())
        return;
    setWindowTitle(title);
    if (NameChanged)
        NameChanged();
}

bool frmTranslate::askToSave()
{
    return !m_doc || QueryCloseDocument(m_doc->Changed(), [this] { return SaveFile(false); });
}

bool frmTranslate::runFileOption(frmFileOption &dialog)
{
    dialog.Refresh();
    return RunFileOption && RunFileOption(dialog) && !dialog.Model.Cancelled;
}

bool frmTranslate::OpenFile(int, const QString &FileName)
{
    if (!m_doc || !askToSave())
        return false;
    bool opened = false;
    if (FileName.isEmpty()) {
        frmFileOption dialog(this);
        CFileOptionModel &model = dialog.Model;
        basTranslateFile::PrepareOpen(model, *m_doc);
        model.SelectFileDialog();
        if (model.Cancelled || !runFileOption(dialog))
            return false;
        opened = basTranslateFile::TakeOverOpen(*m_doc, model);
    } else {
        opened = basTranslateFile::OpenDraftFile(*m_doc, FileName);
    }
    if (!opened)
        return false;
    m_doc->setChanged(false);
    updateCaption();
    if (RecentFile)
        RecentFile->InsertRecentFileList(m_doc->FileName(), m_doc->ScriptType);
    m_text->setSelStart(0);
    rtfTranslate->setFocus();
    return true;
}

bool frmTranslate::SaveFile(bool SaveAs, int)
{
    if (!m_doc)
        return false;
    const QString name = TranslateSaveName(m_doc->FileName(), m_doc->Caption());
    frmFileOption dialog(this);
    CFileOptionModel &model = dialog.Model;
    basTranslateFile::PrepareSave(model, *m_doc, name);
    if (SaveAs || m_doc->FileName().isEmpty()) {
        // The dialog writes the file itself on OK.
        if (!runFileOption(dialog) || model.OperateError)
            return false;
    } else {
        QString error;
        if (!model.SaveFile(&error)) {
            MsgBox(error);
            return false;
        }
    }
    basTranslateFile::TakeOverSave(*m_doc, model);
    updateCaption();
    return true;
}

void frmTranslate::ShowRecentMenu(const std::vector<RecentFileMenuEntry> &entries)
{
    ShowRecentEntries(mnuFileRecent, entries, [this](QAction *entry) { connectRecent(entry); });
}

void frmTranslate::closeEvent(QCloseEvent *event)
{
    if (!askToSave()) {
        event->ignore();
        return;
    }
    if (FindWindow)
        FindWindow->close();
    if (m_doc) {
        if (Closing)
            Closing();
        CTranslates *list = m_doc->Parent();
        const QString key = QString::number(m_doc->SerialNo());
        detachDocument();
        m_doc = nullptr;
        if (list)
            list->Delete(key);
    }
    event->accept();
}
