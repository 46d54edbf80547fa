#pragma once

#include "core/IForm.h"
#include "shell/CFontDialogModel.h"

#include <QPointer>
#include <QWidget>
#include <array>
#include <functional>

class QAction;
class QButtonGroup;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QToolBar;
class frmImportFont;
class frmTiming;

// The style window of a timing window: a view over CFontDialogModel. The list of the
// script's styles, the system's fonts and every field of the selected style; a change of a
// field goes into the copy at once and the sample is drawn again. Apply hands the copy to
// the document; Open takes styles from a script file through frmImportFont, Save writes
// the styles to one.
class frmFont : public QWidget, public IForm
{
    Q_OBJECT

public:
    explicit frmFont(QWidget *parent = nullptr);
    ~frmFont() override;

    // Over the document and grid of the timing window.
    void Init(frmTiming &timingForm);
    CFontDialogModel &Model() { return m_model; }
    frmTiming *TimingWindow() const { return m_timing; }

    // IForm: a style file into the window through frmImportFont (an empty name asks), and
    // the styles into a style file (the name is always asked).
    bool OpenFile(int OpenType, const QString &FileName) override;
    bool SaveFile(bool SaveAs, int SaveType = 0) override;

    // Runs the import window; unset: modal.
    std::function<void(frmImportFont &)> RunImport;

    QToolBar *tlbFile = nullptr;
    QListWidget *lstFont = nullptr;
    QListWidget *lstFontName = nullptr;
    QLineEdit *txtShowFontName = nullptr;
    QLineEdit *txtFontSize = nullptr;
    QPlainTextEdit *txtComment = nullptr;
    QCheckBox *chkBold = nullptr;
    QCheckBox *chkItalic = nullptr;
    QCheckBox *chkUnderline = nullptr;
    QCheckBox *chkStrikeOut = nullptr;
    // Border style 1 and 3.
    std::array<QRadioButton *, 2> optBorder {};
    QLineEdit *txtOutLine = nullptr;
    QLineEdit *txtShadow = nullptr;
    // Buttons 1 to 9 at [0] to [8], laid out as a keypad.
    std::array<QRadioButton *, 9> optAlignment {};
    QCheckBox *chkAlignmentKeypad = nullptr;
    std::array<QLineEdit *, 3> txtMargin {};
    std::array<QLineEdit *, 2> txtScale {};
    QLineEdit *txtAlphaLevel = nullptr;
    // One colour box and one alpha field per FontColour.
    std::array<QPushButton *, 4> picColor {};
    std::array<QLineEdit *, 4> txtAlpha {};
    QLineEdit *txtSpacing = nullptr;
    QLineEdit *txtAngle = nullptr;
    QLineEdit *txtEncode = nullptr;
    QLabel *picSample = nullptr;
    QLabel *lblDescription = nullptr;
    QPushButton *cmdAdd = nullptr;
    QPushButton *cmdDelete = nullptr;
    QPushButton *cmdRename = nullptr;
    QPushButton *cmdApply = nullptr;
    QPushButton *cmdClose = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildControls();
    void buildLayout();
    void wireControls();
    void fillStyleList();
    void showStyle();
    FontFields fields() const;
    void updateFont();
    void drawSample();
    void paintColourBoxes();
    void chooseColour(int index);
    void styleChosen(int row);

    CFontDialogModel m_model;
    QPointer<frmTiming> m_timing;
    QButtonGroup *m_alignment = nullptr;
    QButtonGroup *m_border = nullptr;
    QStringList m_families;
    // True while the controls are filled from a style: their signals write nothing back.
    bool m_filling = false;
};
