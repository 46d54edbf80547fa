#include "ui/frmSliderTime.h"

#include "core/basMessage.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

namespace {
const char *const kFieldNames[4] = { "Hour", "Minite", "Second", "MiniSecond" };
const char *const kLabelKeys[4]
    = { "AJUST_TIME_LABEL_100", "AJUST_TIME_LABEL_101", "AJUST_TIME_LABEL_102", "AJUST_TIME_LABEL_103" };
} // namespace

frmSliderTime::frmSliderTime(CSliderTimeModel &model, QWidget *parent)
    : QDialog(parent)
    , m_model(model)
{
    setObjectName(QStringLiteral("frmSliderTime"));
    setWindowTitle(Msg(QStringLiteral("AJUST_TIME_TITLE_000")));
    auto *layout = new QVBoxLayout(this);
    lblTitle = new QLabel(this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    layout->addWidget(lblTitle);

    auto *fields = new QHBoxLayout;
    cmdSign = new QPushButton(this);
    cmdSign->setObjectName(QStringLiteral("cmdSign"));
    cmdSign->setFixedWidth(28);
    fields->addWidget(cmdSign);
    for (int i = 0; i < 4; ++i) {
        const auto field = CSliderTimeModel::Field(i);
        txtField[i] = new QLineEdit(this);
        txtField[i]->setObjectName(QStringLiteral("txt") + QLatin1String(kFieldNames[i]));
        txtField[i]->setFixedWidth(36);
        txtField[i]->setAlignment(Qt::AlignRight);
        txtField[i]->installEventFilter(this);
        updField[i] = new QScrollBar(Qt::Vertical, this);
        updField[i]->setObjectName(QStringLiteral("upd") + QLatin1String(kFieldNames[i]));
        updField[i]->setRange(CSliderTimeModel::FieldMin(field), CSliderTimeModel::FieldMax(field));
        // Up counts up, as a spin control does.
        updField[i]->setInvertedAppearance(true);
        updField[i]->setInvertedControls(true);
        updField[i]->setFixedHeight(txtField[i]->sizeHint().height());
        fields->addWidget(txtField[i]);
        fields->addWidget(updField[i]);
        fields->addWidget(new QLabel(Msg(QString::fromLatin1(kLabelKeys[i])), this));
        connect(updField[i], &QScrollBar::valueChanged, this, [this, field](int value) {
            if (m_syncing)
                return;
            m_model.Spin(field, value);
            txtField[field]->setText(m_model.FieldText(field));
        });
    }
    fields->addStretch(1);
    layout->addLayout(fields);
    lblDescription = new QLabel(this);
    lblDescription->setObjectName(QStringLiteral("lblDescription"));
    lblDescription->setWordWrap(true);
    layout->addWidget(lblDescription);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmdOK = new QPushButton(Msg(QStringLiteral("AJUST_TIME_BUTTON_100")), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(Msg(QStringLiteral("AJUST_TIME_BUTTON_101")), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons);

    connect(cmdSign, &QPushButton::clicked, this, [this] {
        m_model.ToggleSign();
        cmdSign->setText(m_model.SignCaption());
    });
    connect(cmdOK, &QPushButton::clicked, this, &frmSliderTime::OK);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSliderTime::Cancel);
    showModel();
}

void frmSliderTime::showModel()
{
    m_syncing = true;
    lblTitle->setText(m_model.Title());
    lblDescription->setText(m_model.Description());
    cmdSign->setText(m_model.SignCaption());
    cmdSign->setEnabled(m_model.EnableSign());
    const qint16 values[4] = { m_model.Hour, m_model.Minite, m_model.Second, m_model.MiniSecond };
    for (int i = 0; i < 4; ++i) {
        const auto field = CSliderTimeModel::Field(i);
        txtField[i]->setText(m_model.FieldText(field));
        txtField[i]->setEnabled(m_model.FieldEnabled(field));
        updField[i]->setEnabled(m_model.FieldEnabled(field));
        updField[i]->setValue(values[i]);
    }
    m_syncing = false;
}

bool frmSliderTime::leave(int field)
{
    const auto f = CSliderTimeModel::Field(field);
    m_model.setFieldText(f, txtField[field]->text());
    if (!m_model.LeaveField(f)) {
        QLineEdit *box = txtField[field];
        QTimer::singleShot(0, box, [box] { box->setFocus(); });
        return false;
    }
    m_syncing = true;
    txtField[field]->setText(m_model.FieldText(f));
    const qint16 values[4] = { m_model.Hour, m_model.Minite, m_model.Second, m_model.MiniSecond };
    updField[field]->setValue(values[field]);
    m_syncing = false;
    return true;
}

bool frmSliderTime::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut)
        for (int i = 0; i < 4; ++i)
            if (watched == txtField[i] && txtField[i]->isEnabled())
                leave(i);
    if (event->type() == QEvent::KeyPress) {
        const QString text = static_cast<QKeyEvent *>(event)->text();
        if (!text.isEmpty() && !CSliderTimeModel::KeyAccepted(text.at(0).unicode()))
            return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmSliderTime::keyPressEvent(QKeyEvent *event)
{
    const QString text = event->text();
    if (!text.isEmpty() && !CSliderTimeModel::KeyAccepted(text.at(0).unicode())) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

bool frmSliderTime::OK()
{
    // A box being typed in is left first, as a click elsewhere would do.
    for (int i = 0; i < 4; ++i)
        if (txtField[i]->isEnabled() && txtField[i]->text() != m_model.FieldText(CSliderTimeModel::Field(i))
            && !leave(i))
            return false;
    m_model.OK();
    accept();
    return true;
}

void frmSliderTime::Cancel()
{
    reject();
}

void frmSliderTime::reject()
{
    // Escape and the title bar's close are a cancel as well.
    m_model.Cancel();
    QDialog::reject();
}
