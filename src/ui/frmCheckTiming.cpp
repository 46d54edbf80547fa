#include "ui/frmCheckTiming.h"

#include "formats/CTiming.h"
#include "timing/CTimingGrid.h"
#include "ui/CSpreadView.h"
#include "ui/frmTiming.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

frmCheckTiming::frmCheckTiming(QWidget *parent)
    : QWidget(parent, Qt::Tool)
{
    setObjectName(QStringLiteral("frmCheckTiming"));
    setWindowTitle(QStringLiteral("检查时间轴"));
    auto field = [this](const char *name, int width) {
        auto *e = new QLineEdit(this);
        e->setObjectName(QString::fromLatin1(name));
        e->setMaximumWidth(width);
        return e;
    };
    auto box = [this](const char *name, const QString &text) {
        auto *c = new QCheckBox(text, this);
        c->setObjectName(QString::fromLatin1(name));
        c->setChecked(true);
        return c;
    };
    txtFrom = field("txtFrom", 70);
    txtTo = field("txtTo", 70);
    chkDialogLength = box("chkDialogLength", QStringLiteral("对白长度超过"));
    txtDialogLength = field("txtDialogLength", 50);
    chkTimeErr = box("chkTimeErr", QStringLiteral("开始时间晚于结束时间"));
    chkNoTime = box("chkNoTime", QStringLiteral("没有时间"));
    chkDoubleTime = box("chkDoubleTime", QStringLiteral("时间重叠"));
    chkShortTime = box("chkShortTime", QStringLiteral("时间短于"));
    txtShortTime = field("txtShortTime", 50);
    cmdCheck = new QPushButton(QStringLiteral("检查"), this);
    cmdCheck->setObjectName(QStringLiteral("cmdCheck"));
    cmdClose = new QPushButton(QStringLiteral("关闭"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    spdErr = new CSpreadView(this);
    spdErr->setObjectName(QStringLiteral("spdErr"));
    spdErr->setEditTriggers(QAbstractItemView::NoEditTriggers);

    auto *grid = new QGridLayout(this);
    grid->addWidget(new QLabel(QStringLiteral("从行"), this), 0, 0);
    grid->addWidget(txtFrom, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("到行"), this), 0, 2);
    grid->addWidget(txtTo, 0, 3);
    grid->addWidget(chkDialogLength, 1, 0, 1, 2);
    grid->addWidget(txtDialogLength, 1, 2);
    grid->addWidget(chkShortTime, 2, 0, 1, 2);
    grid->addWidget(txtShortTime, 2, 2);
    grid->addWidget(chkTimeErr, 3, 0, 1, 2);
    grid->addWidget(chkNoTime, 3, 2, 1, 2);
    grid->addWidget(chkDoubleTime, 4, 0, 1, 2);
    grid->addWidget(cmdCheck, 5, 0, 1, 2);
    grid->addWidget(cmdClose, 5, 2, 1, 2);
    grid->addWidget(spdErr, 6, 0, 1, 4);
    resize(380, 420);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
}

frmCheckTiming::~frmCheckTiming()
{
    spdErr->SetSpread(nullptr);
}

void frmCheckTiming::Init(frmTiming &timingForm)
{
    CSpread &grid = timingForm.Grid().Spread();
    m_check = std::make_unique<CTimingCheck>(*timingForm.Document()->Preview, grid);
    spdErr->SetSpread(&m_check->spdErr());
    spdErr->horizontalHeader()->setStretchLastSection(true);
    const CTimingCheck::Options start = CTimingCheck::DefaultOptions(grid);
    txtFrom->setText(start.txtFrom);
    txtTo->setText(start.txtTo);
    txtDialogLength->setText(start.txtDialogLength);
    txtShortTime->setText(start.txtShortTime);
    connect(cmdCheck, &QPushButton::clicked, this, [this] { m_check->cmdCheck(Fields()); });
    connect(
        spdErr, &CSpreadView::CellClicked, this, [this](int col, int row) { m_check->ClickFault(col, row); });
}

CTimingCheck::Options frmCheckTiming::Fields() const
{
    CTimingCheck::Options o;
    o.txtFrom = txtFrom->text();
    o.txtTo = txtTo->text();
    o.chkDialogLength = chkDialogLength->isChecked();
    o.txtDialogLength = txtDialogLength->text();
    o.chkTimeErr = chkTimeErr->isChecked();
    o.chkNoTime = chkNoTime->isChecked();
    o.chkDoubleTime = chkDoubleTime->isChecked();
    o.chkShortTime = chkShortTime->isChecked();
    o.txtShortTime = txtShortTime->text();
    return o;
}
