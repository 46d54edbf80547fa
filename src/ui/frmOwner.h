#pragma once

#include "shell/COwnerDialogModel.h"

#include <QDialog>

class QListWidget;
class QPushButton;

// The list of speakers of a timing window: a view over COwnerDialogModel.
class frmOwner : public QDialog
{
    Q_OBJECT

public:
    explicit frmOwner(QWidget *parent = nullptr);

    void Init(const QStringList &names);
    COwnerDialogModel &Model() { return m_model; }
    // The list's value after OK.
    QStringList OwnerNames() const { return m_model.OwnerNames; }
    bool Canceled() const { return m_model.Canceled; }

    QListWidget *lstOwner = nullptr;
    QPushButton *cmdAdd = nullptr;
    QPushButton *cmdDel = nullptr;
    QPushButton *cmdRename = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

    void reject() override;

private:
    void fillList(int selected);

    COwnerDialogModel m_model;
};
