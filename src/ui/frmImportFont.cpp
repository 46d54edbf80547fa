#include "ui/frmImportFont.h"

#include "core/basMessage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmImportFont::frmImportFont(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmImportFont"));
    setWindowTitle(Msg(QStringLiteral("VELMAR_STYLES_200")));
    lstFont = new QListWidget(this);
    lstFont->setObjectName(QStringLiteral("lstFont"));
    lstFont->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto button = [this](const char *name, const char *key) {
        auto *b = new QPushButton(Msg(QString::fromLatin1(key)), this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdRename = button("cmdRename", "VELMAR_STYLES_133");
    cmdOK = button("cmdOK", "VELMAR_STYLES_138");
    cmdCancel = button("cmdCancel", "VELMAR_STYLES_139");

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdRename);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(Msg(QStringLiteral("VELMAR_STYLES_201")), this));
    layout->addWidget(lstFont, 1);
    layout->addLayout(buttons);
    resize(360, 360);

    connect(cmdRename, &QPushButton::clicked, this, [this] {
        const int row = lstFont->currentRow();
        if (m_model.Rename(lstFont->currentItem() && lstFont->currentItem()->isSelected() ? row : -1)) {
            fillList();
            lstFont->setCurrentRow(row);
        }
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        QList<int> chosen;
        for (int row = 0; row < lstFont->count(); ++row)
            if (lstFont->item(row)->isSelected())
                chosen << row;
        if (m_model.OK(chosen))
            accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &frmImportFont::reject);
}

void frmImportFont::Init(std::unique_ptr<CFonts> importFonts, CFonts *target)
{
    m_model.Init(std::move(importFonts), target);
    fillList();
}

void frmImportFont::fillList()
{
    lstFont->clear();
    lstFont->addItems(m_model.Names());
}

void frmImportFont::reject()
{
    m_model.Cancel();
    QDialog::reject();
}
