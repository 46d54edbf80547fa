#include "ui/frmProject.h"

#include "core/Class.h"
#include "core/IPrompt.h"
#include "core/basMessage.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QTreeWidget>
#include <QVBoxLayout>

frmProject::frmProject(QWidget *parent)
    : QWidget(parent, Qt::Tool)
{
    setObjectName(QStringLiteral("frmProject"));
    m_tree = new QTreeWidget(this);
    m_tree->setObjectName(QStringLiteral("trvProject"));
    m_tree->setHeaderHidden(true);
    m_tree->setRootIsDecorated(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tree);
    resize(240, 360);
}

frmProject::~frmProject() = default;

void frmProject::Init(MdiVelmar *mainWindow)
{
    m_mainWindow = mainWindow;
    setWindowTitle(Msg(QStringLiteral("PROJECT_TITLE_000")));
    m_project = Class::Make<CProject>(this, m_tree);
    m_project->setSerialNo(1);
    FullWindow();
}

void frmProject::FullWindow()
{
    m_tree->clear();
    auto *root = new QTreeWidgetItem(m_tree, QStringList(windowTitle()));
    for (const ProjectFile &file : m_project->Files())
        new QTreeWidgetItem(root, QStringList(QFileInfo(file.Path).fileName()));
    root->setExpanded(true);
}

bool frmProject::OpenFile()
{
    const QString name = Prompt().OpenFileName(QString(), CProject::FileFilter());
    if (name.isEmpty())
        return false;
    if (!m_project->InputSub(name)) {
        MsgBox(m_project->LastError());
        return false;
    }
    FullWindow();
    return true;
}

void frmProject::closeEvent(QCloseEvent *event)
{
    if (m_project && !m_project->QueryClose()) {
        event->ignore();
        return;
    }
    event->accept();
}
