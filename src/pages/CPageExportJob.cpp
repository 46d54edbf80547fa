#include "pages/CPageExportJob.h"

CPageExportJob::~CPageExportJob()
{
    Cancel();
    Wait();
}

void CPageExportJob::Start(CPicPreviewPages::PreparedSave save)
{
    Wait();
    m_listed = 0;
    m_total = int(save.Pages.size());
    m_finished = false;
    m_thread = std::thread([this, save = std::move(save)] {
        m_result = basPageExport::ExportPages(save.Name, save.Pages, save.Settings, this);
        m_finished = true;
    });
}

void CPageExportJob::Wait()
{
    if (m_thread.joinable())
        m_thread.join();
}

void CPageExportJob::Listed(int listed, int total)
{
    m_listed = listed;
    m_total = total;
}
