#include "ui/frmSetting.h"

#include "core/basLanguage.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "shell/CSettingDialogModel.h"
#include "shell/basFrame.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {
const char16_t *const kHotKeyCaptions[CHotKeys::Count] = {
    u"播放 / 暂停",
    u"后退",
    u"前进",
    u"插入开始时间点",
    u"插入结束时间点",
    u"插入时间点",
    u"所选时间轴 +0.1秒",
    u"所选时间轴 -0.1秒",
    u"更新",
    u"保存文件",
};
} // namespace

frmSetting::frmSetting(CSettingDialogModel &model, AutoSaveSettings *autoSave, QWidget *parent)
    : QDialog(parent)
    , m_model(model)
    , m_autoSave(autoSave)
{
    setObjectName(QStringLiteral("frmSetting"));
    setWindowTitle(QStringLiteral("设置"));
    auto *layout = new QVBoxLayout(this);
    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    layout->addWidget(SSTab1);

    auto *general = new QWidget(SSTab1);
    auto *form = new QGridLayout(general);
    chkAutoSave = new QCheckBox(QStringLiteral("自动保存"), general);
    chkAutoSave->setObjectName(QStringLiteral("chkAutoSave"));
    lblAutoSave = new QLabel(QStringLiteral("自动保存间隔时间(秒)"), general);
    lblAutoSave->setObjectName(QStringLiteral("lblAutoSave"));
    txtAutoSaveTime = new QLineEdit(general);
    txtAutoSaveTime->setObjectName(QStringLiteral("txtAutoSaveTime"));
    lblAutoDel = new QLabel(QStringLiteral("自动保存文件保留时间(小时)"), general);
    lblAutoDel->setObjectName(QStringLiteral("lblAutoDel"));
    txtAutoDelTime = new QLineEdit(general);
    txtAutoDelTime->setObjectName(QStringLiteral("txtAutoDelTime"));
    chkClipBoard = new QCheckBox(QStringLiteral("自动取得剪贴板时间"), general);
    chkClipBoard->setObjectName(QStringLiteral("chkClipBoard"));
    chkOnTop = new QCheckBox(QStringLiteral("窗口置顶"), general);
    chkOnTop->setObjectName(QStringLiteral("chkOnTop"));
    chkAvoidOverlapTiming = new QCheckBox(QStringLiteral("平移时间轴时避免重叠"), general);
    chkAvoidOverlapTiming->setObjectName(QStringLiteral("chkAvoidOverlapTiming"));
    form->addWidget(chkAutoSave, 0, 0, 1, 2);
    form->addWidget(lblAutoSave, 1, 0);
    form->addWidget(txtAutoSaveTime, 1, 1);
    form->addWidget(lblAutoDel, 2, 0);
    form->addWidget(txtAutoDelTime, 2, 1);
    form->addWidget(chkClipBoard, 3, 0, 1, 2);
    form->addWidget(chkOnTop, 4, 0, 1, 2);
    form->addWidget(chkAvoidOverlapTiming, 5, 0, 1, 2);
    // Named in both languages, so that a reader of either finds it.
    lblLanguage = new QLabel(QStringLiteral("界面语言 (Language)"), general);
    lblLanguage->setObjectName(QStringLiteral("lblLanguage"));
    cmbLanguage = new QComboBox(general);
    cmbLanguage->setObjectName(QStringLiteral("cmbLanguage"));
    for (const QString &code : InterfaceLanguages())
        cmbLanguage->addItem(InterfaceLanguageName(code), code);
    lblLanguage->setBuddy(cmbLanguage);
    form->addWidget(lblLanguage, 6, 0);
    form->addWidget(cmbLanguage, 6, 1);
    chkModernFiles = new QCheckBox(Msg(QStringLiteral("VELMAR_FILE_100")), general);
    chkModernFiles->setObjectName(QStringLiteral("chkModernFiles"));
    chkModernFiles->setToolTip(Msg(QStringLiteral("VELMAR_FILE_110")));
    form->addWidget(chkModernFiles, 7, 0, 1, 2);
    form->setRowStretch(8, 1);
    SSTab1->addTab(general, QStringLiteral("常规"));

    auto *keys = new QWidget(SSTab1);
    auto *keyForm = new QFormLayout(keys);
    const QStringList names = CSettingDialogModel::HotKeyNames();
    for (int i = 0; i < CHotKeys::Count; ++i) {
        cmbHotKey[i] = new QComboBox(keys);
        cmbHotKey[i]->setObjectName(QStringLiteral("cmbHotKey%1").arg(i));
        cmbHotKey[i]->addItems(names);
        cmbHotKey[i]->installEventFilter(this);
        keyForm->addRow(QString::fromUtf16(kHotKeyCaptions[i]), cmbHotKey[i]);
    }
    SSTab1->addTab(keys, QStringLiteral("快捷键"));

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmdOK = new QPushButton(QStringLiteral("确定"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("取消"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons);

    load();
    connect(chkAutoSave, &QCheckBox::toggled, this, [this](bool on) {
        m_model.chkAutoSave = on;
        updateEnabling();
    });
    txtAutoSaveTime->installEventFilter(this);
    txtAutoDelTime->installEventFilter(this);
    connect(cmdOK, &QPushButton::clicked, this, &frmSetting::OK);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSetting::Cancel);
}

void frmSetting::load()
{
    chkAutoSave->setChecked(m_model.chkAutoSave);
    txtAutoSaveTime->setText(m_model.txtAutoSaveTime);
    txtAutoDelTime->setText(m_model.txtAutoDelTime);
    chkClipBoard->setChecked(m_model.chkClipBoard);
    chkOnTop->setChecked(m_model.chkOnTop);
    chkAvoidOverlapTiming->setChecked(m_model.chkAvoidOverlapTiming);
    for (int i = 0; i < CHotKeys::Count; ++i)
        cmbHotKey[i]->setCurrentText(m_model.cmbHotKey[i]);
    cmbLanguage->setCurrentIndex(cmbLanguage->findData(m_model.cmbLanguage));
    chkModernFiles->setChecked(m_model.chkModernFiles);
    updateEnabling();
}

void frmSetting::store()
{
    m_model.chkAutoSave = chkAutoSave->isChecked();
    m_model.txtAutoSaveTime = txtAutoSaveTime->text();
    m_model.txtAutoDelTime = txtAutoDelTime->text();
    m_model.chkClipBoard = chkClipBoard->isChecked();
    m_model.chkOnTop = chkOnTop->isChecked();
    m_model.chkAvoidOverlapTiming = chkAvoidOverlapTiming->isChecked();
    for (int i = 0; i < CHotKeys::Count; ++i)
        m_model.cmbHotKey[i] = cmbHotKey[i]->currentText();
    m_model.cmbLanguage = cmbLanguage->currentData().toString();
    m_model.chkModernFiles = chkModernFiles->isChecked();
}

void frmSetting::updateEnabling()
{
    const bool on = m_model.AutoSaveFieldsEnabled();
    for (QWidget *w : { static_cast<QWidget *>(txtAutoSaveTime), static_cast<QWidget *>(txtAutoDelTime),
             static_cast<QWidget *>(lblAutoSave), static_cast<QWidget *>(lblAutoDel) })
        w->setEnabled(on);
}

bool frmSetting::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut && (watched == txtAutoSaveTime || watched == txtAutoDelTime)) {
        store();
        const bool ok = watched == txtAutoSaveTime ? m_model.LeaveAutoSaveTime() : m_model.LeaveAutoDelTime();
        if (!ok) {
            auto *box = static_cast<QLineEdit *>(watched);
            QTimer::singleShot(0, box, [box] { box->setFocus(); });
        }
    }
    if (event->type() == QEvent::KeyPress) {
        for (int i = 0; i < CHotKeys::Count; ++i) {
            if (watched != cmbHotKey[i])
                continue;
            const auto *key = static_cast<QKeyEvent *>(event);
            if (m_model.HotKeyEntryKeyDown(i, KeyCodeOfQtKey(key->key()), key->modifiers())) {
                cmbHotKey[i]->setCurrentText(m_model.cmbHotKey[i]);
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

bool frmSetting::OK()
{
    store();
    // The time boxes are checked as they would be on leaving them.
    if (m_model.chkAutoSave && (!m_model.LeaveAutoSaveTime() || !m_model.LeaveAutoDelTime()))
        return false;
    AutoSaveSettings scratch;
    if (!HotKeys || !m_model.OK(*HotKeys, m_autoSave ? *m_autoSave : scratch))
        return false;
    accept();
    return true;
}

void frmSetting::Cancel()
{
    reject();
}

void frmSetting::reject()
{
    m_model.Cancel();
    QDialog::reject();
}
