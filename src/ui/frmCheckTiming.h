#pragma once

#include "timing/CTimingCheck.h"

#include <QWidget>
#include <memory>

class CSpreadView;
class QCheckBox;
class QLineEdit;
class QPushButton;
class frmTiming;

// The timing check window of one timing window: the range and the checks to run, and
// the fault list whose rows lead back to the grid.
class frmCheckTiming : public QWidget
{
    Q_OBJECT

public:
    explicit frmCheckTiming(QWidget *parent = nullptr);
    ~frmCheckTiming() override;

    void Init(frmTiming &timingForm);
    CTimingCheck *Check() const { return m_check.get(); }
    // The fields as the check reads them.
    CTimingCheck::Options Fields() const;

    QLineEdit *txtFrom = nullptr;
    QLineEdit *txtTo = nullptr;
    QCheckBox *chkDialogLength = nullptr;
    QLineEdit *txtDialogLength = nullptr;
    QCheckBox *chkTimeErr = nullptr;
    QCheckBox *chkNoTime = nullptr;
    QCheckBox *chkDoubleTime = nullptr;
    QCheckBox *chkShortTime = nullptr;
    QLineEdit *txtShortTime = nullptr;
    QPushButton *cmdCheck = nullptr;
    QPushButton *cmdClose = nullptr;
    CSpreadView *spdErr = nullptr;

private:
    std::unique_ptr<CTimingCheck> m_check;
};
