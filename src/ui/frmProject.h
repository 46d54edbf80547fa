#pragma once

#include "shell/CProject.h"

#include <QWidget>

#include <memory>

class QTreeWidget;
class MdiVelmar;

// The project tool window: one tree with a root named after the window, and the
// project document whose .vlr file it opens and saves. Made hidden at start.
class frmProject : public QWidget
{
    Q_OBJECT

public:
    explicit frmProject(QWidget *parent = nullptr);
    ~frmProject() override;

    void Init(MdiVelmar *mainWindow);
    CProject *Project() const { return m_project.get(); }
    QTreeWidget *trvProject() const { return m_tree; }
    // Asks for a project file and reads it; true when one was read.
    bool OpenFile();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void FullWindow();

    MdiVelmar *m_mainWindow = nullptr;
    QTreeWidget *m_tree = nullptr;
    std::unique_ptr<CProject> m_project;
};
