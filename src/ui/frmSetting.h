#pragma once

#include "core/CHotKeys.h"

#include <QDialog>
#include <array>

class CSettingDialogModel;
struct AutoSaveSettings;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

// The settings dialog: a view over CSettingDialogModel. OK applies the model to the hot
// keys (HotKeys) and to the frame's auto-save settings.
class frmSetting : public QDialog
{
    Q_OBJECT

public:
    frmSetting(CSettingDialogModel &model, AutoSaveSettings *autoSave, QWidget *parent = nullptr);

    QTabWidget *SSTab1 = nullptr;
    QCheckBox *chkAutoSave = nullptr;
    QLabel *lblAutoSave = nullptr;
    QLineEdit *txtAutoSaveTime = nullptr;
    QLabel *lblAutoDel = nullptr;
    QLineEdit *txtAutoDelTime = nullptr;
    QCheckBox *chkClipBoard = nullptr;
    QCheckBox *chkOnTop = nullptr;
    QCheckBox *chkAvoidOverlapTiming = nullptr;
    QLabel *lblLanguage = nullptr;
    QComboBox *cmbLanguage = nullptr;
    QCheckBox *chkModernFiles = nullptr;
    std::array<QComboBox *, CHotKeys::Count> cmbHotKey {};
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

    // The OK and Cancel buttons' work; OK is false while the dialog stays open.
    bool OK();
    void Cancel();
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void load();
    void store();
    void updateEnabling();

    CSettingDialogModel &m_model;
    AutoSaveSettings *m_autoSave;
};
