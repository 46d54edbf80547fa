#include "ui/frmFont.h"

#include "core/basMain.h"
#include "core/basMessage.h"
#include "formats/CTiming.h"
#include "shell/basFontSample.h"
#include "shell/basRouting.h"
#include "ui/MdiVelmar.h"
#include "ui/frmImportFont.h"
#include "ui/frmTiming.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

QString Text(const char *key)
{
    return Msg(QString::fromLatin1(key));
}

// The border styles of the two option buttons.
constexpr qint16 BorderStyles[2] = { 1, 3 };

} // namespace

frmFont::frmFont(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frmFont"));
    setWindowTitle(Msg(QStringLiteral("FONT_TITLE_000")));
    m_families = QFontDatabase::families();
    buildControls();
    buildLayout();
    wireControls();
}

frmFont::~frmFont() = default;

void frmFont::buildControls()
{
    auto line = [this](const QString &name, int width = 0) {
        auto *e = new QLineEdit(this);
        e->setObjectName(name);
        // Number fields keep their width however the window is sized.
        if (width)
            e->setFixedWidth(width);
        return e;
    };
    auto check = [this](const char *name, const char *textKey) {
        auto *c = new QCheckBox(Text(textKey), this);
        c->setObjectName(QString::fromLatin1(name));
        return c;
    };
    auto button = [this](const char *name, const QString &text) {
        auto *b = new QPushButton(text, this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };

    tlbFile = new QToolBar(this);
    tlbFile->setObjectName(QStringLiteral("tlbFile"));
    tlbFile->setToolButtonStyle(Qt::ToolButtonTextOnly);
    QAction *open = tlbFile->addAction(Msg(QStringLiteral("FONT_LABLE_100")));
    open->setObjectName(QStringLiteral("Open"));
    connect(open, &QAction::triggered, this, [this] { OpenFile(0, QString()); });
    QAction *save = tlbFile->addAction(Msg(QStringLiteral("FONT_LABLE_101")));
    save->setObjectName(QStringLiteral("Save"));
    connect(save, &QAction::triggered, this, [this] { SaveFile(true); });

    lstFont = new QListWidget(this);
    lstFont->setObjectName(QStringLiteral("lstFont"));
    lstFontName = new QListWidget(this);
    lstFontName->setObjectName(QStringLiteral("lstFontName"));
    lstFontName->addItems(m_families);
    lstFontName->setMinimumWidth(230);
    txtShowFontName = line(QStringLiteral("txtShowFontName"));
    txtFontSize = line(QStringLiteral("txtFontSize"), 64);
    txtComment = new QPlainTextEdit(this);
    txtComment->setObjectName(QStringLiteral("txtComment"));
    txtComment->setMaximumHeight(fontMetrics().height() * 3 + 12);
    chkBold = check("chkBold", "VELMAR_STYLES_105");
    chkItalic = check("chkItalic", "VELMAR_STYLES_106");
    chkUnderline = check("chkUnderline", "VELMAR_STYLES_107");
    chkStrikeOut = check("chkStrikeOut", "VELMAR_STYLES_108");

    m_border = new QButtonGroup(this);
    const char *borderTexts[2] = { "VELMAR_STYLES_110", "VELMAR_STYLES_111" };
    for (int i = 0; i < 2; ++i) {
        optBorder[size_t(i)] = new QRadioButton(Text(borderTexts[i]), this);
        optBorder[size_t(i)]->setObjectName(QStringLiteral("optBorder%1").arg(i));
        m_border->addButton(optBorder[size_t(i)], BorderStyles[i]);
    }
    txtOutLine = line(QStringLiteral("txtOutLine"), 56);
    txtShadow = line(QStringLiteral("txtShadow"), 56);

    m_alignment = new QButtonGroup(this);
    for (int button = 1; button <= 9; ++button) {
        auto *b = new QRadioButton(QString::number(button), this);
        b->setObjectName(QStringLiteral("optAlignment%1").arg(button));
        optAlignment[size_t(button - 1)] = b;
        m_alignment->addButton(b, button);
    }
    chkAlignmentKeypad = check("chkAlignmentKeypad", "VELMAR_STYLES_115");

    for (int i = 0; i < 3; ++i)
        txtMargin[size_t(i)] = line(QStringLiteral("txtMargin%1").arg(i), 64);
    for (int i = 0; i < 2; ++i)
        txtScale[size_t(i)] = line(QStringLiteral("txtScale%1").arg(i), 64);
    txtAlphaLevel = line(QStringLiteral("txtAlphaLevel"), 64);
    for (int i = 0; i < 4; ++i) {
        picColor[size_t(i)] = button(QStringLiteral("picColor%1").arg(i).toLatin1().constData(), QString());
        picColor[size_t(i)]->setFixedSize(48, 22);
        txtAlpha[size_t(i)] = line(QStringLiteral("txtAlpha%1").arg(i), 56);
    }
    txtSpacing = line(QStringLiteral("txtSpacing"), 64);
    txtAngle = line(QStringLiteral("txtAngle"), 64);
    txtEncode = line(QStringLiteral("txtEncode"), 64);

    picSample = new QLabel(this);
    picSample->setObjectName(QStringLiteral("picSample"));
    picSample->setMinimumSize(360, 90);
    // The sample follows the window's size, never the other way round.
    picSample->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    lblDescription = new QLabel(this);
    lblDescription->setObjectName(QStringLiteral("lblDescription"));
    lblDescription->setWordWrap(true);
    lblDescription->setMinimumHeight(fontMetrics().height() * 2);

    cmdAdd = button("cmdAdd", Text("VELMAR_STYLES_131"));
    cmdDelete = button("cmdDelete", Text("VELMAR_STYLES_132"));
    cmdRename = button("cmdRename", Text("VELMAR_STYLES_133"));
    cmdApply = button("cmdApply", Text("VELMAR_STYLES_134"));
    cmdClose = button("cmdClose", Text("VELMAR_STYLES_135"));
}

void frmFont::buildLayout()
{
    auto label = [this](const char *key) { return new QLabel(Text(key), this); };

    auto *styles = new QVBoxLayout;
    styles->addWidget(label("VELMAR_STYLES_100"));
    styles->addWidget(lstFont, 1);
    auto *commands = new QHBoxLayout;
    commands->addWidget(cmdAdd);
    commands->addWidget(cmdDelete);
    commands->addWidget(cmdRename);
    styles->addLayout(commands);

    auto *face = new QGridLayout;
    face->addWidget(label("VELMAR_STYLES_101"), 0, 0, 1, 2);
    face->addWidget(lstFontName, 1, 0, 1, 2);
    face->setRowStretch(1, 1);
    face->addWidget(label("VELMAR_STYLES_102"), 2, 0);
    face->addWidget(txtShowFontName, 2, 1);
    face->addWidget(label("VELMAR_STYLES_103"), 3, 0);
    face->addWidget(txtFontSize, 3, 1);
    auto *flags = new QGridLayout;
    flags->addWidget(chkBold, 0, 0);
    flags->addWidget(chkItalic, 0, 1);
    flags->addWidget(chkUnderline, 1, 0);
    flags->addWidget(chkStrikeOut, 1, 1);
    face->addLayout(flags, 4, 0, 1, 2);

    auto *border = new QGroupBox(Text("VELMAR_STYLES_109"), this);
    auto *borderGrid = new QGridLayout(border);
    borderGrid->addWidget(optBorder[0], 0, 0, 1, 2);
    borderGrid->addWidget(optBorder[1], 0, 2, 1, 2);
    borderGrid->addWidget(label("VELMAR_STYLES_112"), 1, 0);
    borderGrid->addWidget(txtOutLine, 1, 1);
    borderGrid->addWidget(label("VELMAR_STYLES_113"), 1, 2);
    borderGrid->addWidget(txtShadow, 1, 3);

    auto *alignment = new QGroupBox(Text("VELMAR_STYLES_114"), this);
    auto *keypad = new QGridLayout(alignment);
    for (int button = 1; button <= 9; ++button)
        keypad->addWidget(optAlignment[size_t(button - 1)], 2 - (button - 1) / 3, (button - 1) % 3);
    keypad->addWidget(chkAlignmentKeypad, 3, 0, 1, 3);

    auto *measures = new QGroupBox(Text("VELMAR_STYLES_116"), this);
    auto *measureGrid = new QGridLayout(measures);
    const char *marginKeys[3] = { "VELMAR_STYLES_117", "VELMAR_STYLES_118", "VELMAR_STYLES_119" };
    for (int i = 0; i < 3; ++i) {
        measureGrid->addWidget(label(marginKeys[i]), 0, 2 * i);
        measureGrid->addWidget(txtMargin[size_t(i)], 0, 2 * i + 1);
    }
    measureGrid->addWidget(label("VELMAR_STYLES_120"), 1, 0);
    measureGrid->addWidget(txtScale[0], 1, 1);
    measureGrid->addWidget(txtScale[1], 1, 3);
    measureGrid->addWidget(label("VELMAR_STYLES_121"), 2, 0);
    measureGrid->addWidget(txtSpacing, 2, 1);
    measureGrid->addWidget(label("VELMAR_STYLES_122"), 2, 2);
    measureGrid->addWidget(txtAngle, 2, 3);
    measureGrid->addWidget(label("VELMAR_STYLES_123"), 3, 0);
    measureGrid->addWidget(txtEncode, 3, 1);
    measureGrid->addWidget(label("VELMAR_STYLES_124"), 3, 2);
    measureGrid->addWidget(txtAlphaLevel, 3, 3);

    auto *colours = new QGroupBox(Text("VELMAR_STYLES_125"), this);
    auto *colourGrid = new QGridLayout(colours);
    const char *colourKeys[4]
        = { "VELMAR_STYLES_126", "VELMAR_STYLES_127", "VELMAR_STYLES_128", "VELMAR_STYLES_129" };
    for (int i = 0; i < 4; ++i) {
        const int row = i / 2;
        const int col = (i % 2) * 4;
        colourGrid->addWidget(label(colourKeys[i]), row, col);
        colourGrid->addWidget(picColor[size_t(i)], row, col + 1);
        colourGrid->addWidget(label("VELMAR_STYLES_130"), row, col + 2);
        colourGrid->addWidget(txtAlpha[size_t(i)], row, col + 3);
    }

    auto *fields = new QGridLayout;
    fields->addWidget(border, 0, 0);
    fields->addWidget(alignment, 0, 1, 2, 1);
    fields->addWidget(measures, 1, 0);
    fields->addWidget(colours, 2, 0, 1, 2);

    auto *top = new QHBoxLayout;
    top->addLayout(styles, 2);
    top->addLayout(face, 3);
    top->addLayout(fields, 5);

    auto *bottom = new QHBoxLayout;
    bottom->addWidget(lblDescription, 1);
    bottom->addWidget(cmdApply);
    bottom->addWidget(cmdClose);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tlbFile);
    layout->addLayout(top, 3);
    auto *comment = new QHBoxLayout;
    comment->addWidget(label("VELMAR_STYLES_104"));
    comment->addWidget(txtComment, 1);
    layout->addLayout(comment);
    layout->addWidget(label("VELMAR_STYLES_137"));
    layout->addWidget(picSample, 2);
    layout->addLayout(bottom);
    resize(1080, 640);
}

void frmFont::wireControls()
{
    connect(lstFont, &QListWidget::currentRowChanged, this, &frmFont::styleChosen);
    connect(lstFontName, &QListWidget::currentTextChanged, this, [this](const QString &family) {
        if (m_filling || family.isEmpty())
            return;
        txtShowFontName->setText(family);
        updateFont();
    });
    for (QLineEdit *e : findChildren<QLineEdit *>()) {
        const int alpha = int(std::find(txtAlpha.begin(), txtAlpha.end(), e) - txtAlpha.begin());
        if (alpha < 4) {
            connect(e, &QLineEdit::editingFinished, this, [this, e, alpha] {
                if (m_filling)
                    return;
                e->setText(m_model.LeaveAlpha(FontColour(alpha), e->text()));
                updateFont();
            });
        } else {
            connect(e, &QLineEdit::editingFinished, this, [this] {
                if (!m_filling)
                    updateFont();
            });
        }
    }
    connect(txtComment, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_filling)
            updateFont();
    });
    for (QCheckBox *c : { chkBold, chkItalic, chkUnderline, chkStrikeOut })
        connect(c, &QCheckBox::toggled, this, [this] {
            if (!m_filling)
                updateFont();
        });
    for (QButtonGroup *group : { m_border, m_alignment })
        connect(group, &QButtonGroup::idClicked, this, [this] {
            if (!m_filling)
                updateFont();
        });
    connect(chkAlignmentKeypad, &QCheckBox::toggled, this, [this](bool on) {
        if (m_filling)
            return;
        m_model.setAlignmentKeypad(on);
        showStyle();
    });
    for (int i = 0; i < 4; ++i)
        connect(picColor[size_t(i)], &QPushButton::clicked, this, [this, i] { chooseColour(i); });
    connect(cmdAdd, &QPushButton::clicked, this, [this] {
        if (m_model.Add())
            fillStyleList();
    });
    connect(cmdDelete, &QPushButton::clicked, this, [this] {
        if (m_model.Delete())
            fillStyleList();
    });
    connect(cmdRename, &QPushButton::clicked, this, [this] {
        if (m_model.Rename())
            fillStyleList();
    });
    connect(cmdApply, &QPushButton::clicked, this, [this] {
        m_model.Apply();
        fillStyleList();
    });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);

    // The help texts of the controls that take the focus.
    for (QWidget *w : std::initializer_list<QWidget *> { txtAlpha[0], txtAlpha[1], txtAlpha[2], txtAlpha[3],
             txtAlphaLevel, txtShowFontName, txtAngle, txtEncode, lstFont })
        w->installEventFilter(this);
}

void frmFont::Init(frmTiming &timingForm)
{
    m_timing = &timingForm;
    m_model.Init(timingForm.Document(), &timingForm.Grid());
    fillStyleList();
}

bool frmFont::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        FontHelp help = FontHelp::Alpha;
        if (watched == txtAlphaLevel)
            help = FontHelp::AlphaLevel;
        else if (watched == txtShowFontName)
            help = FontHelp::ShowFontName;
        else if (watched == txtAngle)
            help = FontHelp::Angle;
        else if (watched == txtEncode)
            help = FontHelp::Encode;
        else if (watched == lstFont)
            help = FontHelp::FontList;
        lblDescription->setText(m_model.HelpText(help, m_families));
    }
    return QWidget::eventFilter(watched, event);
}

void frmFont::fillStyleList()
{
    m_filling = true;
    lstFont->clear();
    lstFont->addItems(m_model.StyleNames());
    lstFont->setCurrentRow(m_model.Selected());
    m_filling = false;
    showStyle();
}

void frmFont::styleChosen(int row)
{
    if (m_filling)
        return;
    m_model.Select(row);
    showStyle();
    lblDescription->setText(m_model.HelpText(FontHelp::FontList, m_families));
}

void frmFont::showStyle()
{
    const FontFields f = m_model.Fields();
    m_filling = true;
    txtShowFontName->setText(f.FontName);
    const QList<QListWidgetItem *> found = lstFontName->findItems(f.FontName, Qt::MatchFixedString);
    if (found.isEmpty()) {
        lstFontName->setCurrentRow(-1);
        lstFontName->clearSelection();
    } else {
        lstFontName->setCurrentItem(found.first());
        lstFontName->scrollToItem(found.first());
    }
    txtFontSize->setText(f.FontSize);
    txtComment->setPlainText(QString(f.Comment).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    chkBold->setChecked(f.Bold);
    chkItalic->setChecked(f.Italic);
    chkUnderline->setChecked(f.Underline);
    chkStrikeOut->setChecked(f.StrikeOut);
    for (int i = 0; i < 2; ++i)
        optBorder[size_t(i)]->setChecked(f.BorderStyle == BorderStyles[i]);
    txtOutLine->setText(f.Outline);
    txtShadow->setText(f.Shadow);
    // A value no button stores leaves every button up.
    m_alignment->setExclusive(false);
    for (int button = 1; button <= 9; ++button)
        optAlignment[size_t(button - 1)]->setChecked(button == f.AlignmentButton);
    m_alignment->setExclusive(true);
    chkAlignmentKeypad->setChecked(m_model.AlignmentKeypad());
    for (size_t i = 0; i < 3; ++i)
        txtMargin[i]->setText(f.Margin[i]);
    for (size_t i = 0; i < 2; ++i)
        txtScale[i]->setText(f.Scale[i]);
    txtAlphaLevel->setText(f.AlphaLevel);
    for (size_t i = 0; i < 4; ++i)
        txtAlpha[i]->setText(f.Alpha[i]);
    txtSpacing->setText(f.Spacing);
    txtAngle->setText(f.Angle);
    txtEncode->setText(f.Encode);
    m_filling = false;
    paintColourBoxes();
    drawSample();
}

FontFields frmFont::fields() const
{
    FontFields f;
    f.FontName = txtShowFontName->text();
    f.FontSize = txtFontSize->text();
    f.Comment = txtComment->toPlainText().replace(u'\n', QStringLiteral("\r\n"));
    f.Bold = chkBold->isChecked();
    f.Italic = chkItalic->isChecked();
    f.Underline = chkUnderline->isChecked();
    f.StrikeOut = chkStrikeOut->isChecked();
    f.BorderStyle = m_border->checkedId() > 0 ? qint16(m_border->checkedId()) : m_model.Fields().BorderStyle;
    f.Outline = txtOutLine->text();
    f.Shadow = txtShadow->text();
    f.AlignmentButton = std::max(0, m_alignment->checkedId());
    for (size_t i = 0; i < 3; ++i)
        f.Margin[i] = txtMargin[i]->text();
    for (size_t i = 0; i < 2; ++i)
        f.Scale[i] = txtScale[i]->text();
    f.AlphaLevel = txtAlphaLevel->text();
    for (size_t i = 0; i < 4; ++i)
        f.Alpha[i] = txtAlpha[i]->text();
    f.Spacing = txtSpacing->text();
    f.Angle = txtAngle->text();
    f.Encode = txtEncode->text();
    return f;
}

void frmFont::updateFont()
{
    if (!m_model.UpdateFont(fields())) {
        // A refused encoding shows the style's value again.
        m_filling = true;
        txtEncode->setText(m_model.Fields().Encode);
        m_filling = false;
    }
    drawSample();
}

void frmFont::chooseColour(int index)
{
    const FontColour colour = FontColour(index);
    m_model.SetColour(colour, ShowColorDialog(m_model.Colour(colour)));
    paintColourBoxes();
    drawSample();
}

void frmFont::paintColourBoxes()
{
    for (int i = 0; i < 4; ++i) {
        const QColor c = basFontSample::StyleColour(m_model.Colour(FontColour(i)));
        picColor[size_t(i)]->setStyleSheet(
            QStringLiteral("background-color: %1; border: 1px solid palette(dark);").arg(c.name()));
    }
}

void frmFont::drawSample()
{
    const CFont *font = m_model.SelectedFont();
    if (!font || picSample->width() < 2 || picSample->height() < 2) {
        picSample->clear();
        return;
    }
    picSample->setPixmap(QPixmap::fromImage(basFontSample::Draw(*font, picSample->size())));
}

void frmFont::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    drawSample();
}

void frmFont::closeEvent(QCloseEvent *event)
{
    if (auto *frame = qobject_cast<MdiVelmar *>(MainWindow))
        frame->CloseFont(this);
    QWidget::closeEvent(event);
}

bool frmFont::OpenFile(int, const QString &FileName)
{
    const QString name = FileName.isEmpty() ? CFontDialogModel::AskStyleFileToOpen() : FileName;
    if (name.isEmpty())
        return false;
    std::unique_ptr<CFonts> styles = CFontDialogModel::ReadStyleFile(name);
    if (!styles)
        return false;
    frmImportFont dialog(this);
    dialog.Init(std::move(styles), m_model.Fonts.get());
    if (RunImport)
        RunImport(dialog);
    else
        dialog.exec();
    if (dialog.Model().Canceled)
        return false;
    if (!dialog.Model().Added.isEmpty())
        m_model.Select(int(m_model.Fonts->IndexOf(dialog.Model().Added.last())));
    fillStyleList();
    return true;
}

bool frmFont::SaveFile(bool, int)
{
    const QString name = CFontDialogModel::AskStyleFileToSave();
    return !name.isEmpty() && m_model.SaveStyleFile(name);
}
