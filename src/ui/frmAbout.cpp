#include "ui/frmAbout.h"

#include "core/IPrompt.h"
#include "core/basMessage.h"
#include "shell/basAbout.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

frmAbout::frmAbout(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(Msg(QStringLiteral("ABOUT_TITLE_000")));
    picIcon = new QLabel(this);
    picIcon->setObjectName(QStringLiteral("picIcon"));
    picIcon->setPixmap(QApplication::windowIcon().pixmap(64, 64));
    lblTitle = new QLabel(basAbout::AboutText(QStringLiteral("ABOUT_MSG_100")), this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont big = lblTitle->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    lblTitle->setFont(big);
    lblVersion = new QLabel(basAbout::VersionLine(), this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    lblDescription = new QLabel(basAbout::AboutText(QStringLiteral("ABOUT_MSG_200")), this);
    lblDescription->setObjectName(QStringLiteral("lblDescription"));
    lblDescription->setWordWrap(true);
    cmdOK = new QPushButton(Msg(QStringLiteral("ABOUT_BUTTON_100")), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdSysInfo = new QPushButton(Msg(QStringLiteral("ABOUT_BUTTON_200")), this);
    cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    cmdSysInfo->setAutoDefault(false);

    auto *layout = new QGridLayout(this);
    layout->addWidget(picIcon, 0, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(lblTitle, 0, 1);
    layout->addWidget(lblVersion, 1, 1);
    layout->addWidget(lblDescription, 2, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdSysInfo);
    layout->addLayout(buttons, 3, 0, 1, 2);
    layout->setColumnMinimumWidth(1, 280);

    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdSysInfo, &QPushButton::clicked, this,
        [this] { MsgBox(basAbout::SystemInformation(), MsgBoxStyle::Information, cmdSysInfo->text()); });
}
