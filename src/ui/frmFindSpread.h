#pragma once

#include "timing/CGridFind.h"

#include <QWidget>

class QLineEdit;
class QPushButton;
class CSpread;

// The find and replace window of a timing grid's dialogue column.
class frmFindSpread : public QWidget
{
    Q_OBJECT

public:
    explicit frmFindSpread(QWidget *parent = nullptr);

    void Init(CSpread *grid);
    CGridFind &Find() { return m_find; }

    QLineEdit *txtFind = nullptr;
    QLineEdit *txtReplace = nullptr;
    QPushButton *cmdFind = nullptr;
    QPushButton *cmdReplace = nullptr;
    QPushButton *cmdReplaceAll = nullptr;
    QPushButton *cmdCancel = nullptr;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void enableCommands();

    CGridFind m_find;
};
