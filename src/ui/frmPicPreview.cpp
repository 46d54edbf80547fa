#include "ui/frmPicPreview.h"

#include "core/basMessage.h"
#include "formats/basTimingFile.h"
#include "pages/CPageExportJob.h"
#include "shell/basRouting.h"
#include "ui/CSpreadView.h"
#include "ui/frmFileOption.h"
#include "ui/frmTiming.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// The pixels the page list and its controls take left of the box.
constexpr int ListWidth = 250;

QString Own(const char *key)
{
    return Msg(QString::fromLatin1(key));
}

} // namespace

frmPicPreview::frmPicPreview(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmPicPreview"));
    setWindowTitle(Own("VELMAR_PAGES_100"));
    auto button = [this](const char *name, const char *textKey) {
        auto *b = new QPushButton(Own(textKey), this);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    cmdLoadSST = button("cmdLoadSST", "VELMAR_PAGES_101");
    cmdReload = button("cmdReload", "VELMAR_PAGES_102");
    cmdBackColor = button("cmdBackColor", "VELMAR_PAGES_103");
    cmdSelFilename = button("cmdSelFilename", "VELMAR_PAGES_104");
    cmdSaveAll = button("cmdSaveAll", "VELMAR_PAGES_105");
    cmdClose = button("cmdClose", "VELMAR_PAGES_106");
    txtFileName = new QLineEdit(this);
    txtFileName->setObjectName(QStringLiteral("txtFileName"));
    chkPictureFolder = new QCheckBox(Own("VELMAR_PAGES_108"), this);
    chkPictureFolder->setObjectName(QStringLiteral("chkPictureFolder"));
    chkPictureFolder->setToolTip(Own("VELMAR_PAGES_109"));
    chkPictureFolder->setChecked(m_model.PictureFolder());

    spdTime = new CSpreadView(this);
    spdTime->setObjectName(QStringLiteral("spdTime"));
    spdTime->setEditTriggers(QAbstractItemView::NoEditTriggers);
    spdTime->SetSpread(&m_model.PageList());
    spdTime->horizontalHeader()->setStretchLastSection(true);

    picPreview = new QLabel(this);
    picPreview->setObjectName(QStringLiteral("picPreview"));
    auto *scroll = new QScrollArea(this);
    scroll->setWidget(picPreview);
    scroll->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto *side = new QVBoxLayout;
    side->addWidget(spdTime, 1);
    side->addWidget(new QLabel(Own("VELMAR_PAGES_107"), this));
    auto *nameRow = new QHBoxLayout;
    nameRow->addWidget(txtFileName, 1);
    nameRow->addWidget(cmdSelFilename);
    side->addLayout(nameRow);
    side->addWidget(chkPictureFolder);
    auto *buttons = new QGridLayout;
    buttons->addWidget(cmdLoadSST, 0, 0);
    buttons->addWidget(cmdReload, 0, 1);
    buttons->addWidget(cmdBackColor, 1, 0);
    buttons->addWidget(cmdSaveAll, 1, 1);
    buttons->addWidget(cmdClose, 2, 1);
    side->addLayout(buttons);
    auto *sideWidget = new QWidget(this);
    sideWidget->setLayout(side);
    sideWidget->setFixedWidth(ListWidth);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(sideWidget);
    layout->addWidget(scroll, 1);

    m_poll = new QTimer(this);
    m_poll->setInterval(50);
    connect(m_poll, &QTimer::timeout, this, &frmPicPreview::pollSave);

    connect(spdTime, &CSpreadView::CellClicked, this, [this](int, int row) {
        m_model.PageListClicked(row);
        showPicture();
    });
    connect(
        txtFileName, &QLineEdit::textChanged, this, [this](const QString &text) { m_model.FileName = text; });
    connect(chkPictureFolder, &QCheckBox::toggled, this, [this](bool on) { m_model.setPictureFolder(on); });
    connect(cmdSelFilename, &QPushButton::clicked, this, &frmPicPreview::selectFileName);
    connect(cmdLoadSST, &QPushButton::clicked, this, [this] { OpenFile(0, QString()); });
    connect(cmdReload, &QPushButton::clicked, this, [this] {
        m_model.Reload();
        showPageList();
        showPicture();
    });
    connect(cmdBackColor, &QPushButton::clicked, this, [this] {
        m_model.ChooseBackColour();
        showPicture();
    });
    connect(cmdSaveAll, &QPushButton::clicked, this, &frmPicPreview::SaveAll);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
}

frmPicPreview::~frmPicPreview()
{
    // A save under way ends before the pages it came from go.
    m_job.reset();
    spdTime->SetSpread(nullptr);
}

void frmPicPreview::Init(frmTiming &timingForm)
{
    Init(timingForm.Document());
    // Reloads follow the timing window while it is open, and keep the copy taken last
    // once it has gone.
    m_model.Source = [form = QPointer<frmTiming>(&timingForm)]() -> CTiming * {
        return form ? form->Document() : nullptr;
    };
}

void frmPicPreview::Init(CTiming *document)
{
    m_model.Init(document);
    showPageList();
    showPicture();
    const CPictureBox &box = m_model.Picture();
    const auto [width, height] = CPicPreviewModel::FormSize(
        ListWidth * CPictureBox::TwipsPerPixel, 0, box.ScaleWidth(), box.ScaleHeight());
    resize(int(width / CPictureBox::TwipsPerPixel), int(height / CPictureBox::TwipsPerPixel));
}

void frmPicPreview::showPicture()
{
    const QImage &image = m_model.Picture().Image();
    picPreview->setPixmap(QPixmap::fromImage(image));
    picPreview->resize(image.size());
}

void frmPicPreview::showPageList()
{
    spdTime->resizeColumnsToContents();
}

void frmPicPreview::selectFileName()
{
    const QString name = ShowFileDialog(FileOperation::Save, ScriptType::SST, txtFileName->text());
    if (!name.isEmpty())
        txtFileName->setText(name);
}

bool frmPicPreview::OpenFile(int, const QString &FileName)
{
    bool opened = false;
    if (!FileName.isEmpty()) {
        opened = m_model.OpenScript(FileName, basTimingFile::OpenTypeFromExtension(FileName));
    } else {
        frmFileOption dialog(this);
        CFileOptionModel &options = dialog.Model;
        options.Init();
        options.ParentWindowType = ParentWindowType::Timing;
        options.OpenModeAllowed = false;
        options.setDocumentType(ScriptType::SST, 0);
        options.setOperation(FileOperation::Open);
        options.SelectFileDialog();
        if (options.Cancelled)
            return false;
        dialog.Refresh();
        const bool accepted = RunFileOption ? RunFileOption(dialog) : dialog.exec() == QDialog::Accepted;
        if (!accepted || options.Cancelled)
            return false;
        opened = m_model.OpenScript(options.FileName, options.ScriptType(), options.FileCode);
    }
    showPageList();
    showPicture();
    return opened;
}

bool frmPicPreview::SaveFile(bool, int)
{
    m_model.SaveFile();
    return false;
}

void frmPicPreview::SaveAll()
{
    if (m_job)
        return;
    std::optional<CPicPreviewPages::PreparedSave> save = m_model.PrepareSave();
    if (!save)
        return;
    const int total = int(save->Pages.size());
    m_job = std::make_unique<CPageExportJob>();
    m_job->Start(std::move(*save));

    m_progress = new QProgressDialog(this);
    m_progress->setObjectName(QStringLiteral("prgSaveAll"));
    m_progress->setWindowTitle(Own("VELMAR_PAGES_100"));
    m_progress->setLabelText(Own("VELMAR_PAGES_110").arg(0).arg(total));
    m_progress->setCancelButtonText(Own("VELMAR_PAGES_111"));
    m_progress->setRange(0, total);
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    m_progress->setMinimumDuration(0);
    m_progress->setWindowModality(Qt::WindowModal);
    connect(m_progress, &QProgressDialog::canceled, this, [this] {
        if (m_job)
            m_job->Cancel();
    });
    m_progress->show();
    m_poll->start();
}

void frmPicPreview::pollSave()
{
    if (!m_job)
        return;
    if (m_progress && !m_job->CancelAsked()) {
        const int listed = m_job->PagesListed();
        m_progress->setValue(listed);
        m_progress->setLabelText(Own("VELMAR_PAGES_110").arg(listed).arg(m_job->PagesTotal()));
    }
    if (m_job->Finished())
        finishSave();
}

void frmPicPreview::finishSave()
{
    m_poll->stop();
    m_job->Wait();
    const basPageExport::Result result = m_job->Result();
    m_job.reset();
    if (m_progress)
        m_progress->deleteLater();
    m_progress = nullptr;
    m_model.FinishSave(result);
    showPicture();
    emit SaveFinished();
}

void frmPicPreview::closeEvent(QCloseEvent *event)
{
    if (m_job) {
        m_job->Cancel();
        finishSave();
    }
    QWidget::closeEvent(event);
}
