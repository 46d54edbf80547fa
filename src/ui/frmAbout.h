#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

// The about window of the frame: the program's name and version, the catalogue's notes,
// and the system information a user reports with a fault.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget *parent = nullptr);

    QLabel *picIcon = nullptr;
    QLabel *lblTitle = nullptr;
    QLabel *lblVersion = nullptr;
    QLabel *lblDescription = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdSysInfo = nullptr;
};
