#include "ui/frmSlider.h"

#include "core/basMessage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

frmSlider::frmSlider(CSliderModel &model, QWidget *parent)
    : QDialog(parent)
    , m_model(model)
{
    setObjectName(QStringLiteral("frmSlider"));
    setWindowTitle(Msg(QStringLiteral("AJUST_TITLE_000")));
    auto *layout = new QVBoxLayout(this);
    lblTitle = new QLabel(m_model.Title(), this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    layout->addWidget(lblTitle);
    sldOffset = new QSlider(Qt::Horizontal, this);
    sldOffset->setObjectName(QStringLiteral("sldOffset"));
    sldOffset->setRange(0, m_model.SliderMax());
    sldOffset->setValue(m_model.SliderPosition());
    sldOffset->setToolTip(m_model.TipText());
    layout->addWidget(sldOffset);
    lblDescription = new QLabel(m_model.Description(), this);
    lblDescription->setObjectName(QStringLiteral("lblDescription"));
    lblDescription->setWordWrap(true);
    layout->addWidget(lblDescription);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmdOK = new QPushButton(Msg(QStringLiteral("AJUST_BUTTON_100")), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(Msg(QStringLiteral("AJUST_BUTTON_200")), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons);

    connect(sldOffset, &QSlider::valueChanged, this, [this](int position) {
        m_model.MoveSlider(position);
        sldOffset->setToolTip(m_model.TipText());
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        m_model.OK();
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &frmSlider::reject);
}

void frmSlider::reject()
{
    // Escape and the title bar's close are a cancel as well.
    m_model.Cancel();
    QDialog::reject();
}
