#pragma once

#include "core/IForm.h"
#include "pages/CPicPreviewModel.h"

#include <QPointer>
#include <QProgressDialog>
#include <QWidget>

#include <functional>
#include <memory>

class CPageExportJob;
class CSpreadView;
class CTiming;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;
class frmFileOption;
class frmTiming;

// The picture pages of a timing document for DVD authoring: the page list, the page
// shown as it will be burnt, and the save of every page as a bitmap with the SST page
// list that names them. The save runs in the background behind a progress dialog that
// can cancel it; the window goes on painting meanwhile.
class frmPicPreview : public QWidget, public IForm
{
    Q_OBJECT

public:
    explicit frmPicPreview(QWidget *parent = nullptr);
    ~frmPicPreview() override;

    // Loads the window for the document of a timing window: its pages cut, listed and
    // drawn. A reload takes the lines from that window again while it is open.
    void Init(frmTiming &timingForm);
    // The same for a document without a window.
    void Init(CTiming *document);

    CPicPreviewModel &Model() { return m_model; }

    // IForm. Opening takes a script (an SST page list) through the file options, or the
    // file named, as the source of the pages. Saving the window is not possible: it says
    // so ("保存文件出错:") and gives false.
    bool OpenFile(int OpenType, const QString &FileName) override;
    bool SaveFile(bool SaveAs, int SaveType = 0) override;

    // `cmdSaveAll`: the list under the name in txtFileName, with the bitmaps, written in
    // the background. A cancel ends it behind the pages under way; the list is whole up
    // to its last page.
    void SaveAll();
    bool Saving() const { return m_job != nullptr; }
    QProgressDialog *Progress() const { return m_progress; }

    // Runs the file-option dialog set up for the open; false when cancelled. Unset: the
    // dialog, modal.
    std::function<bool(frmFileOption &)> RunFileOption;

    QLabel *picPreview = nullptr;
    CSpreadView *spdTime = nullptr;
    QLineEdit *txtFileName = nullptr;
    QPushButton *cmdSelFilename = nullptr;
    QCheckBox *chkPictureFolder = nullptr;
    QPushButton *cmdLoadSST = nullptr;
    QPushButton *cmdReload = nullptr;
    QPushButton *cmdBackColor = nullptr;
    QPushButton *cmdSaveAll = nullptr;
    QPushButton *cmdClose = nullptr;

signals:
    // A save of all pages has ended: written, cancelled or failed.
    void SaveFinished();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void showPicture();
    void showPageList();
    void selectFileName();
    void pollSave();
    void finishSave();

    CPicPreviewModel m_model;
    std::unique_ptr<CPageExportJob> m_job;
    QPointer<QProgressDialog> m_progress;
    QTimer *m_poll = nullptr;
};
