#include "ui/frmFind.h"

#include "core/basMessage.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

frmFind::frmFind(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmFind"));
    setWindowTitle(Msg(QStringLiteral("TRANSLATE_BUTTON_TIP_109")));
    setAttribute(Qt::WA_DeleteOnClose);

    txtFind = new QComboBox(this);
    txtFind->setObjectName(QStringLiteral("txtFind"));
    txtFind->setEditable(true);
    txtFind->setInsertPolicy(QComboBox::NoInsert);
    txtFind->setMinimumContentsLength(24);
    txtReplace = new QLineEdit(this);
    txtReplace->setObjectName(QStringLiteral("txtReplace"));
    chkCase = new QCheckBox(Msg(QStringLiteral("VELMAR_FIND_102")), this);
    chkCase->setObjectName(QStringLiteral("chkCase"));
    chkWord = new QCheckBox(Msg(QStringLiteral("VELMAR_FIND_103")), this);
    chkWord->setObjectName(QStringLiteral("chkWord"));
    chkHighLight = new QCheckBox(Msg(QStringLiteral("VELMAR_FIND_104")), this);
    chkHighLight->setObjectName(QStringLiteral("chkHighLight"));

    auto *direction = new QGroupBox(Msg(QStringLiteral("VELMAR_FIND_105")), this);
    optDirection = new QButtonGroup(this);
    optDirection->setObjectName(QStringLiteral("optDirection"));
    auto *directionLayout = new QHBoxLayout(direction);
    const QString directions[]
        = { Msg(QStringLiteral("VELMAR_FIND_106")), Msg(QStringLiteral("VELMAR_FIND_107")) };
    for (int i = 0; i < 2; ++i) {
        auto *radio = new QRadioButton(directions[i], direction);
        radio->setObjectName(QStringLiteral("optDirection_%1").arg(i));
        optDirection->addButton(radio, i);
        directionLayout->addWidget(radio);
    }
    fraRange = new QGroupBox(Msg(QStringLiteral("VELMAR_FIND_108")), this);
    fraRange->setObjectName(QStringLiteral("fraRange"));
    auto *rangeLayout = new QVBoxLayout(fraRange);
    optAll = new QRadioButton(Msg(QStringLiteral("VELMAR_FIND_109")), fraRange);
    optAll->setObjectName(QStringLiteral("optAll"));
    optFromCurrent = new QRadioButton(Msg(QStringLiteral("VELMAR_FIND_110")), fraRange);
    optFromCurrent->setObjectName(QStringLiteral("optFromCurrent"));
    optSeleted = new QRadioButton(Msg(QStringLiteral("VELMAR_FIND_111")), fraRange);
    optSeleted->setObjectName(QStringLiteral("optSeleted"));
    optFromCurrent->setChecked(true);
    for (QRadioButton *r : { optAll, optFromCurrent, optSeleted })
        rangeLayout->addWidget(r);

    auto button = [this](const char *name, const char *key) {
        auto *b = new QPushButton(Msg(QString::fromLatin1(key)), this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdFindNext = button("cmdFindNext", "VELMAR_FIND_112");
    cmdFindNext->setDefault(true);
    cmdReplace = button("cmdReplace", "VELMAR_FIND_113");
    cmdReplaceAll = button("cmdReplaceAll", "VELMAR_FIND_114");
    cmdCancel = button("cmdCancel", "VELMAR_FIND_115");

    auto *fields = new QGridLayout;
    fields->addWidget(new QLabel(Msg(QStringLiteral("VELMAR_FIND_100")), this), 0, 0);
    fields->addWidget(txtFind, 0, 1);
    fields->addWidget(new QLabel(Msg(QStringLiteral("VELMAR_FIND_101")), this), 1, 0);
    fields->addWidget(txtReplace, 1, 1);
    auto *boxes = new QVBoxLayout;
    boxes->addWidget(chkCase);
    boxes->addWidget(chkWord);
    boxes->addWidget(chkHighLight);
    auto *options = new QHBoxLayout;
    options->addLayout(boxes);
    options->addWidget(direction);
    options->addWidget(fraRange);
    auto *left = new QVBoxLayout;
    left->addLayout(fields);
    left->addLayout(options);
    auto *buttons = new QVBoxLayout;
    for (QPushButton *b : { cmdFindNext, cmdReplace, cmdReplaceAll, cmdCancel })
        buttons->addWidget(b);
    buttons->addStretch(1);
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(buttons);

    // What the last use left.
    const CFindState &kept = FindState();
    txtFind->addItems(kept.FindList);
    txtFind->setCurrentIndex(kept.FindList.isEmpty() ? -1 : 0);
    txtReplace->setText(kept.ReplaceText);
    chkCase->setChecked(kept.MatchCase);
    optDirection->button(kept.Direction == 0 ? 0 : 1)->setChecked(true);
    Finder.Restart();

    connect(txtFind, &QComboBox::currentTextChanged, this, [this] { Finder.Restart(); });
    connect(cmdFindNext, &QPushButton::clicked, this, [this] {
        takeChoices();
        Finder.FindNext();
    });
    connect(cmdReplace, &QPushButton::clicked, this, [this] {
        takeChoices();
        Finder.Replace();
    });
    connect(cmdReplaceAll, &QPushButton::clicked, this, [this] {
        takeChoices();
        Finder.ReplaceAll();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::close);
}

frmFind::~frmFind() = default;

void frmFind::setFindTarget(ITextControl *target)
{
    Finder.FindTarget = target;
    Finder.Restart();
}

void frmFind::takeChoices()
{
    const QString text = txtFind->currentText();
    Finder.FindText = text;
    Finder.ReplaceText = txtReplace->text();
    Finder.MatchCase = chkCase->isChecked();
    Finder.Direction = optDirection->checkedId() == 0 ? 0 : 1;
    CFindState &kept = FindState();
    kept.Remember(text);
    kept.ReplaceText = Finder.ReplaceText;
    kept.MatchCase = Finder.MatchCase;
    kept.Direction = Finder.Direction;
    // The list shows the strings newest first; the text typed stays as it is.
    if (txtFind->findText(text) < 0 && !text.isEmpty()) {
        const QSignalBlocker quiet(txtFind);
        txtFind->insertItem(0, text);
        txtFind->setCurrentIndex(0);
    }
}

void frmFind::closeEvent(QCloseEvent *event)
{
    takeChoices();
    if (!m_told && BeforeClose) {
        m_told = true;
        BeforeClose();
    }
    QDialog::closeEvent(event);
}
