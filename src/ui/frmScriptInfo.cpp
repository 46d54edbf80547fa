#include "ui/frmScriptInfo.h"

#include "core/basMessage.h"
#include "script/CSubInfo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

QString Text(const char *key)
{
    return Msg(QString::fromLatin1(key));
}

} // namespace

frmScriptInfo::frmScriptInfo(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmScriptInfo"));
    setWindowTitle(Text("SUBINFO_TITLE_000"));
    auto line = [this](const char *name) {
        auto *e = new QLineEdit(this);
        e->setObjectName(QString::fromLatin1(name));
        return e;
    };
    auto list = [this](const char *name, const QStringList &items) {
        auto *c = new QComboBox(this);
        c->setObjectName(QString::fromLatin1(name));
        c->addItems(items);
        return c;
    };
    auto text = [this](const char *name, int lines) {
        auto *e = new QPlainTextEdit(this);
        e->setObjectName(QString::fromLatin1(name));
        e->setFixedHeight(fontMetrics().lineSpacing() * (lines + 1) + 8);
        return e;
    };
    txtTitle = line("txtTitle");
    txtComment = text("txtComment", 3);
    txtVelmarComment = text("txtVelmarComment", 4);
    txtVelmarComment->setReadOnly(true);
    txtOriginalScript = line("txtOriginalScript");
    txtOriginalTranslation = line("txtOriginalTranslation");
    txtOriginalEditing = line("txtOriginalEditing");
    txtOriginalTiming = line("txtOriginalTiming");
    txtSynchPoint = line("txtSynchPoint");
    txtScriptUpdatedBy = line("txtScriptUpdatedBy");
    txtUpdateDetails = line("txtUpdateDetails");
    cmbScriptType = list("cmbScriptType", CScriptInfoFields::ScriptTypeItems());
    cmbCollisions = list("cmbCollisions", CScriptInfoFields::CollisionItems());
    txtPlayResX = line("txtPlayResX");
    txtPlayResY = line("txtPlayResY");
    txtPlayDepth = line("txtPlayDepth");
    txtTimer = line("txtTimer");
    lblWrapStyle = new QLabel(Text("SUBINFO_LABEL_304"), this);
    lblWrapStyle->setObjectName(QStringLiteral("lblWrapStyle"));
    cmbWrapStyle = list("cmbWrapStyle", CScriptInfoFields::WrapStyleItems());
    txtLrcName = line("txtLrcName");
    txtLrcArtist = line("txtLrcArtist");
    txtLrcCDName = line("txtLrcCDName");
    txtLrcEditor = line("txtLrcEditor");
    txtLrcOffset = line("txtLrcOffset");

    tabScriptInfo = new QTabWidget(this);
    tabScriptInfo->setObjectName(QStringLiteral("tabScriptInfo"));

    auto *general = new QWidget(tabScriptInfo);
    auto *generalLayout = new QVBoxLayout(general);
    auto group = [general, generalLayout](const char *key) {
        auto *box = new QGroupBox(Text(key), general);
        auto *form = new QFormLayout(box);
        generalLayout->addWidget(box);
        return form;
    };
    QFormLayout *work = group("SUBINFO_PAGE_100");
    work->addRow(Text("SUBINFO_LABEL_100"), txtTitle);
    work->addRow(Text("SUBINFO_LABEL_101"), txtComment);
    work->addRow(Text("VELMAR_STYLES_507"), txtVelmarComment);
    QFormLayout *team = group("SUBINFO_PAGE_200");
    team->addRow(Text("SUBINFO_LABEL_204"), txtOriginalScript);
    team->addRow(Text("SUBINFO_LABEL_200"), txtOriginalTranslation);
    team->addRow(Text("SUBINFO_LABEL_201"), txtOriginalEditing);
    team->addRow(Text("SUBINFO_LABEL_203"), txtOriginalTiming);
    team->addRow(Text("SUBINFO_LABEL_202"), txtScriptUpdatedBy);
    team->addRow(Text("SUBINFO_LABEL_205"), txtUpdateDetails);
    auto *subtitles = new QGroupBox(Text("SUBINFO_PAGE_300"), general);
    auto *grid = new QGridLayout(subtitles);
    const std::pair<const char *, QWidget *> cells[] = {
        { "SUBINFO_LABEL_300", cmbScriptType },
        { "SUBINFO_LABEL_307", cmbCollisions },
        { "SUBINFO_LABEL_301", txtPlayResX },
        { "SUBINFO_LABEL_305", txtPlayResY },
        { "SUBINFO_LABEL_303", txtPlayDepth },
        { "SUBINFO_LABEL_302", txtTimer },
        { "SUBINFO_LABEL_306", txtSynchPoint },
    };
    int cell = 0;
    for (const auto &[key, widget] : cells) {
        grid->addWidget(new QLabel(Text(key), subtitles), cell / 2, (cell % 2) * 2);
        grid->addWidget(widget, cell / 2, (cell % 2) * 2 + 1);
        ++cell;
    }
    grid->addWidget(lblWrapStyle, cell / 2, (cell % 2) * 2);
    grid->addWidget(cmbWrapStyle, cell / 2, (cell % 2) * 2 + 1);
    generalLayout->addWidget(subtitles);
    tabScriptInfo->addTab(general, Text("VELMAR_STYLES_500"));

    auto *lrc = new QWidget(tabScriptInfo);
    auto *lrcForm = new QFormLayout(lrc);
    lrcForm->addRow(Text("VELMAR_STYLES_502"), txtLrcName);
    lrcForm->addRow(Text("VELMAR_STYLES_503"), txtLrcArtist);
    lrcForm->addRow(Text("VELMAR_STYLES_504"), txtLrcCDName);
    lrcForm->addRow(Text("VELMAR_STYLES_505"), txtLrcEditor);
    lrcForm->addRow(Text("VELMAR_STYLES_506"), txtLrcOffset);
    tabScriptInfo->addTab(lrc, Text("VELMAR_STYLES_501"));

    cmdOK = new QPushButton(Text("SUBINFO_BUTTON_100"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(Text("SUBINFO_BUTTON_200"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabScriptInfo);
    layout->addLayout(buttons);

    connect(cmbScriptType, &QComboBox::currentIndexChanged, this, &frmScriptInfo::enableWrapStyle);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        if (m_info)
            Fields().Write(*m_info);
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmScriptInfo::Init(CSubInfo *info)
{
    m_info = info;
    CScriptInfoFields f;
    if (info)
        f.Read(*info);
    txtTitle->setText(f.Title);
    txtComment->setPlainText(f.Comment);
    txtVelmarComment->setPlainText(f.VelmarComment);
    txtOriginalScript->setText(f.OriginalScript);
    txtOriginalTranslation->setText(f.OriginalTranslation);
    txtOriginalEditing->setText(f.OriginalEditing);
    txtOriginalTiming->setText(f.OriginalTiming);
    txtSynchPoint->setText(f.SynchPoint);
    txtScriptUpdatedBy->setText(f.ScriptUpdatedBy);
    txtUpdateDetails->setText(f.UpdateDetails);
    cmbScriptType->setCurrentIndex(f.ScriptType);
    cmbCollisions->setCurrentIndex(f.Collisions);
    txtPlayResX->setText(f.PlayResX);
    txtPlayResY->setText(f.PlayResY);
    txtPlayDepth->setText(f.PlayDepth);
    txtTimer->setText(f.Timer);
    cmbWrapStyle->setCurrentIndex(f.WrapStyle);
    txtLrcName->setText(f.LrcName);
    txtLrcArtist->setText(f.LrcArtist);
    txtLrcCDName->setText(f.LrcCDName);
    txtLrcEditor->setText(f.LrcEditor);
    txtLrcOffset->setText(f.LrcOffset);
    enableWrapStyle();
}

CScriptInfoFields frmScriptInfo::Fields() const
{
    CScriptInfoFields f;
    f.Title = txtTitle->text();
    f.Comment = txtComment->toPlainText();
    f.OriginalScript = txtOriginalScript->text();
    f.OriginalTranslation = txtOriginalTranslation->text();
    f.OriginalEditing = txtOriginalEditing->text();
    f.OriginalTiming = txtOriginalTiming->text();
    f.SynchPoint = txtSynchPoint->text();
    f.ScriptUpdatedBy = txtScriptUpdatedBy->text();
    f.UpdateDetails = txtUpdateDetails->text();
    f.ScriptType = cmbScriptType->currentIndex();
    f.Collisions = cmbCollisions->currentIndex();
    f.PlayResX = txtPlayResX->text();
    f.PlayResY = txtPlayResY->text();
    f.PlayDepth = txtPlayDepth->text();
    f.Timer = txtTimer->text();
    f.WrapStyle = cmbWrapStyle->currentIndex();
    f.LrcName = txtLrcName->text();
    f.LrcArtist = txtLrcArtist->text();
    f.LrcCDName = txtLrcCDName->text();
    f.LrcEditor = txtLrcEditor->text();
    f.LrcOffset = txtLrcOffset->text();
    f.VelmarComment = txtVelmarComment->toPlainText();
    return f;
}

void frmScriptInfo::enableWrapStyle()
{
    const bool on = CScriptInfoFields::WrapStyleEnabled(cmbScriptType->currentIndex());
    lblWrapStyle->setEnabled(on);
    cmbWrapStyle->setEnabled(on);
}
