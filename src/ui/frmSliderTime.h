#pragma once

#include "timing/CSliderTimeModel.h"

#include <QDialog>
#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

// The time value dialog: a view over CSliderTimeModel. The caller fills the model (value,
// title, description, enable flags), shows the dialog modally and reads Cancelled and
// Value from the model.
class frmSliderTime : public QDialog
{
    Q_OBJECT

public:
    explicit frmSliderTime(CSliderTimeModel &model, QWidget *parent = nullptr);

    QLabel *lblTitle = nullptr;
    QLabel *lblDescription = nullptr;
    QPushButton *cmdSign = nullptr;
    // Hours, minutes, seconds, hundredths, in the model's field order.
    std::array<QLineEdit *, 4> txtField {};
    std::array<QScrollBar *, 4> updField {};
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

    // The buttons' work; OK is false while a field holds a bad value.
    bool OK();
    void Cancel();
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void showModel();
    bool leave(int field);

    CSliderTimeModel &m_model;
    bool m_syncing = false;
};
