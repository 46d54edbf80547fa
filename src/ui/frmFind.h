#pragma once

#include "translation/CTextFind.h"

#include <QDialog>
#include <functional>

class ITextControl;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

// The find and replace dialog of the translation and notepad windows. It searches the
// control in FindTarget by the rules of CTextFind; the strings, the case switch and the
// direction stay for the next use. Range, whole-word and highlight are shown and have no
// effect on the search.
class frmFind : public QDialog
{
    Q_OBJECT

public:
    explicit frmFind(QWidget *parent = nullptr);
    ~frmFind() override;

    // The control searched (not owned).
    void setFindTarget(ITextControl *target);
    ITextControl *FindTarget() const { return Finder.FindTarget; }

    CTextFind Finder;
    // The window's FindWindow_BeforeClose: told when the dialog closes.
    std::function<void()> BeforeClose;

    QComboBox *txtFind = nullptr;
    QLineEdit *txtReplace = nullptr;
    QCheckBox *chkCase = nullptr;
    QButtonGroup *optDirection = nullptr;
    QCheckBox *chkWord = nullptr;
    QCheckBox *chkHighLight = nullptr;
    QGroupBox *fraRange = nullptr;
    QRadioButton *optAll = nullptr;
    QRadioButton *optFromCurrent = nullptr;
    QRadioButton *optSeleted = nullptr;
    QPushButton *cmdFindNext = nullptr;
    QPushButton *cmdReplace = nullptr;
    QPushButton *cmdReplaceAll = nullptr;
    QPushButton *cmdCancel = nullptr;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    // The dialog's choices to the finder and to what is kept for the next use.
    void takeChoices();

    bool m_told = false;
};
