#pragma once

#include "shell/CImportFontModel.h"

#include <QDialog>

class QListWidget;
class QPushButton;

// Styles of another script offered for a style list: a view over CImportFontModel. Several
// can be chosen; OK stays open while a chosen name is taken.
class frmImportFont : public QDialog
{
    Q_OBJECT

public:
    explicit frmImportFont(QWidget *parent = nullptr);

    // The styles offered and the list they go into (not owned).
    void Init(std::unique_ptr<CFonts> importFonts, CFonts *target);
    CImportFontModel &Model() { return m_model; }

    QListWidget *lstFont = nullptr;
    QPushButton *cmdRename = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

    void reject() override;

private:
    void fillList();

    CImportFontModel m_model;
};
