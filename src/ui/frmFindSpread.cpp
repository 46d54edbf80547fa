#include "ui/frmFindSpread.h"

#include "core/basMain.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

frmFindSpread::frmFindSpread(QWidget *parent)
    : QWidget(parent, Qt::Tool)
{
    setObjectName(QStringLiteral("frmFindSpread"));
    setWindowTitle(QStringLiteral("查找替换"));
    txtFind = new QLineEdit(this);
    txtFind->setObjectName(QStringLiteral("txtFind"));
    txtReplace = new QLineEdit(this);
    txtReplace->setObjectName(QStringLiteral("txtReplace"));
    auto button = [this](const char *name, const QString &text) {
        auto *b = new QPushButton(text, this);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    cmdFind = button("cmdFind", QStringLiteral("查找"));
    cmdReplace = button("cmdReplace", QStringLiteral("替换"));
    cmdReplaceAll = button("cmdReplaceAll", QStringLiteral("全部替换"));
    cmdCancel = button("cmdCancel", QStringLiteral("取消"));
    auto *grid = new QGridLayout(this);
    grid->addWidget(new QLabel(QStringLiteral("查找"), this), 0, 0);
    grid->addWidget(txtFind, 0, 1);
    grid->addWidget(cmdFind, 0, 2);
    grid->addWidget(new QLabel(QStringLiteral("替换为"), this), 1, 0);
    grid->addWidget(txtReplace, 1, 1);
    grid->addWidget(cmdReplace, 1, 2);
    grid->addWidget(cmdReplaceAll, 2, 2);
    grid->addWidget(cmdCancel, 3, 2);

    connect(txtFind, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_find.setTxtFind(text);
        enableCommands();
    });
    connect(txtReplace, &QLineEdit::textChanged, this,
        [this](const QString &text) { m_find.setTxtReplace(text); });
    connect(cmdFind, &QPushButton::clicked, this, [this] { m_find.cmdFind(); });
    connect(cmdReplace, &QPushButton::clicked, this, [this] { m_find.cmdReplace(); });
    connect(cmdReplaceAll, &QPushButton::clicked, this, [this] { m_find.cmdReplaceAll(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QWidget::close);
}

void frmFindSpread::Init(CSpread *grid)
{
    m_find.Init(grid);
    txtFind->setText(m_find.txtFind());
    txtReplace->setText(m_find.txtReplace());
    enableCommands();
    // Centred on the main frame.
    if (auto *frame = qobject_cast<QWidget *>(MainWindow))
        move(frame->geometry().center() - rect().center());
}

void frmFindSpread::enableCommands()
{
    const bool on = m_find.CommandsEnabled();
    cmdFind->setEnabled(on);
    cmdReplace->setEnabled(on);
    cmdReplaceAll->setEnabled(on);
}

void frmFindSpread::closeEvent(QCloseEvent *event)
{
    m_find.Close();
    QWidget::closeEvent(event);
}
