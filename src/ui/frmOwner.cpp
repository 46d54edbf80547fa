#include "ui/frmOwner.h"

#include "core/basMessage.h"

#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>

frmOwner::frmOwner(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmOwner"));
    setWindowTitle(Msg(QStringLiteral("VELMAR_STYLES_300")));
    lstOwner = new QListWidget(this);
    lstOwner->setObjectName(QStringLiteral("lstOwner"));
    auto button = [this](const char *name, const char *key) {
        auto *b = new QPushButton(Msg(QString::fromLatin1(key)), this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdAdd = button("cmdAdd", "VELMAR_STYLES_131");
    cmdDel = button("cmdDel", "VELMAR_STYLES_132");
    cmdRename = button("cmdRename", "VELMAR_STYLES_133");
    cmdOK = button("cmdOK", "VELMAR_STYLES_138");
    cmdCancel = button("cmdCancel", "VELMAR_STYLES_139");

    auto *layout = new QGridLayout(this);
    layout->addWidget(lstOwner, 0, 0, 6, 1);
    layout->addWidget(cmdAdd, 0, 1);
    layout->addWidget(cmdDel, 1, 1);
    layout->addWidget(cmdRename, 2, 1);
    layout->setRowStretch(3, 1);
    layout->addWidget(cmdOK, 4, 1);
    layout->addWidget(cmdCancel, 5, 1);
    resize(320, 300);

    auto selection = [this] {
        QListWidgetItem *item = lstOwner->currentItem();
        return item && item->isSelected() ? lstOwner->row(item) : -1;
    };
    connect(cmdAdd, &QPushButton::clicked, this, [this] {
        if (m_model.Add())
            fillList(int(m_model.Items.size()) - 1);
    });
    connect(cmdDel, &QPushButton::clicked, this, [this, selection] {
        const int row = selection();
        if (m_model.Delete(row))
            fillList(std::min(row, int(m_model.Items.size()) - 1));
    });
    connect(cmdRename, &QPushButton::clicked, this, [this, selection] {
        const int row = selection();
        if (m_model.Rename(row))
            fillList(row);
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        m_model.OK();
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &frmOwner::reject);
}

void frmOwner::Init(const QStringList &names)
{
    m_model.Init(names);
    fillList(-1);
}

void frmOwner::fillList(int selected)
{
    lstOwner->clear();
    lstOwner->addItems(m_model.Items);
    if (selected >= 0)
        lstOwner->setCurrentRow(selected);
}

void frmOwner::reject()
{
    m_model.Cancel();
    QDialog::reject();
}
