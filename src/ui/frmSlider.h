#pragma once

#include "timing/CSliderModel.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QSlider;

// The slider dialog: a view over CSliderModel, ready for a caller that wants a value
// between two limits in fixed steps.
class frmSlider : public QDialog
{
    Q_OBJECT

public:
    explicit frmSlider(CSliderModel &model, QWidget *parent = nullptr);

    QLabel *lblTitle = nullptr;
    QLabel *lblDescription = nullptr;
    QSlider *sldOffset = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

    void reject() override;

private:
    CSliderModel &m_model;
};
