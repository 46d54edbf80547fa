#pragma once

#include "formats/CFileOptionModel.h"

#include <QDialog>

class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QTextEdit;

// The file-option dialog: every open, save and conversion of a document passes through
// it. It shows the state of its model (type, code, options, what may be used, the sample
// and the preview) and hands every click to the model, which holds the rules.
class frmFileOption : public QDialog
{
    Q_OBJECT

public:
    explicit frmFileOption(QWidget *parent = nullptr);

    CFileOptionModel Model;

    // Shows the model's state in the widgets (after the caller has set it up, and after
    // each change).
    void Refresh();

    // rtfPreview holds a long plain text in pieces of about this many characters: the
    // first when the text is shown, the next each time the view is scrolled to its end.
    // What OK reads and writes is the model's whole FileContent all the same.
    static constexpr qsizetype PreviewPiece = 32 * 1024;
    bool PreviewComplete() const;

    QButtonGroup *optFileType = nullptr;
    QButtonGroup *optFileSubType = nullptr;
    QButtonGroup *optCodeType = nullptr;
    QButtonGroup *optOpenMode = nullptr;
    QCheckBox *chkTitle = nullptr;
    QCheckBox *chkFont = nullptr;
    QCheckBox *chkStart = nullptr;
    QCheckBox *chkEnd = nullptr;
    QCheckBox *chkDialog = nullptr;
    QCheckBox *chkDialogEffect = nullptr;
    QCheckBox *chkOtherCol = nullptr;
    QCheckBox *chkText = nullptr;
    QCheckBox *chkColor = nullptr;
    QCheckBox *chkFontName = nullptr;
    QCheckBox *chkFontSize = nullptr;
    QCheckBox *chkThrough = nullptr;
    QCheckBox *chkUnderline = nullptr;
    QCheckBox *chkBold = nullptr;
    QCheckBox *chkItaric = nullptr;
    QCheckBox *chkBlackWhite = nullptr;
    QCheckBox *chkChangeTable = nullptr;
    QCheckBox *chkDelSpace = nullptr;
    QCheckBox *chkSpaceAsReturn = nullptr;
    QComboBox *cmbTimeFormat = nullptr;
    QLineEdit *txtFileName = nullptr;
    QPushButton *cmdFileName = nullptr;
    QTextEdit *rtbSample = nullptr;
    QTextEdit *rtfPreview = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
    QGroupBox *fraTimingOption = nullptr;
    QGroupBox *fraTranslateOption = nullptr;

private:
    void changed();
    void showPreview();
    void showMorePreview();

    bool m_refreshing = false;
    QString m_previewText; // what the preview shows, in part or whole
    bool m_previewRich = false;
    qsizetype m_previewShown = -1;
};
