#pragma once

#include "shell/CScriptInfoFields.h"

#include <QDialog>

class CSubInfo;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

// The script information of a timing document, on a page of general fields and a page of
// LRC tags. OK writes every field into the head; Cancel writes none.
class frmScriptInfo : public QDialog
{
    Q_OBJECT

public:
    explicit frmScriptInfo(QWidget *parent = nullptr);

    // Fills the fields from the head, which OK writes to (not owned).
    void Init(CSubInfo *info);
    // The fields as the controls hold them.
    CScriptInfoFields Fields() const;

    QTabWidget *tabScriptInfo = nullptr;
    QLineEdit *txtTitle = nullptr;
    QPlainTextEdit *txtComment = nullptr;
    QPlainTextEdit *txtVelmarComment = nullptr;
    QLineEdit *txtOriginalScript = nullptr;
    QLineEdit *txtOriginalTranslation = nullptr;
    QLineEdit *txtOriginalEditing = nullptr;
    QLineEdit *txtOriginalTiming = nullptr;
    QLineEdit *txtSynchPoint = nullptr;
    QLineEdit *txtScriptUpdatedBy = nullptr;
    QLineEdit *txtUpdateDetails = nullptr;
    QComboBox *cmbScriptType = nullptr;
    QComboBox *cmbCollisions = nullptr;
    QLineEdit *txtPlayResX = nullptr;
    QLineEdit *txtPlayResY = nullptr;
    QLineEdit *txtPlayDepth = nullptr;
    QLineEdit *txtTimer = nullptr;
    QLabel *lblWrapStyle = nullptr;
    QComboBox *cmbWrapStyle = nullptr;
    QLineEdit *txtLrcName = nullptr;
    QLineEdit *txtLrcArtist = nullptr;
    QLineEdit *txtLrcCDName = nullptr;
    QLineEdit *txtLrcEditor = nullptr;
    QLineEdit *txtLrcOffset = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

private:
    void enableWrapStyle();

    CSubInfo *m_info = nullptr;
};
