#pragma once

#include "pages/CPicPreviewPages.h"
#include "pages/basPageExport.h"

#include <atomic>
#include <thread>

// A save of all pages run in the background, so that the window that started it stays
// responsive: it reads how far the save has come, may cancel it, and takes the result
// back into its pages once it has finished.
class CPageExportJob : private basPageExport::IProgress
{
public:
    CPageExportJob() = default;
    CPageExportJob(const CPageExportJob &) = delete;
    CPageExportJob &operator=(const CPageExportJob &) = delete;
    // Cancels a save still under way and waits for it.
    ~CPageExportJob() override;

    void Start(CPicPreviewPages::PreparedSave save);
    // Pages listed so far, of all pages.
    int PagesListed() const { return m_listed; }
    int PagesTotal() const { return m_total; }
    // Asks the save to end behind the pages under way; the list stays complete. A job
    // cancelled before it starts writes the head of the list only.
    void Cancel() { m_cancel = true; }
    bool CancelAsked() const { return m_cancel; }
    bool Finished() const { return m_finished; }
    void Wait();
    // Once finished.
    const basPageExport::Result &Result() const { return m_result; }

private:
    void Listed(int listed, int total) override;
    bool Cancelled() override { return m_cancel; }

    std::thread m_thread;
    std::atomic<int> m_listed = 0;
    std::atomic<int> m_total = 0;
    std::atomic<bool> m_cancel = false;
    std::atomic<bool> m_finished = false;
    basPageExport::Result m_result;
};
