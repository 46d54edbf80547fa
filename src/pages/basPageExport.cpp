#include "pages/basPageExport.h"

#include "core/VelmarError.h"
#include "formats/basFileTypes.h"
#include "pages/CPictureBox.h"
#include "pages/basBitmap.h"
#include "pages/basPageCut.h"
#include "pages/basPageLayout.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <vector>

namespace basPageExport {

namespace {

// The workers of every export; their threads stay a while, and with them the fonts
// each has loaded. The pool goes with the application, while the fonts' thread data is
// still there to be released.
QThreadPool *pagePool()
{
    static QThreadPool *pool = nullptr;
    static std::once_flag made;
    std::call_once(made, [] {
        pool = new QThreadPool;
        qAddPostRoutine([] {
            delete pool;
            pool = nullptr;
        });
    });
    return pool;
}

VelmarError fileAccessError()
{
    return VelmarError(75, QStringLiteral("Path/File access error"));
}

// The page list is a Unicode text: UTF-16LE behind its byte-order mark.
void writeOrFail(QFile &file, const QString &text)
{
    const auto size = qint64(text.size()) * 2;
    if (file.write(reinterpret_cast<const char *>(text.utf16()), size) != size)
        throw fileAccessError();
}

// The font the shared box holds as each page is begun, and after the last one.
QList<CBoxFont> fontsBeforeEachPage(const QList<CPageDrawing> &pages, const CBoxFont &first)
{
    CPictureBox scratch(1, 1);
    first.ApplyTo(scratch);
    QList<CBoxFont> fonts;
    fonts.reserve(pages.size() + 1);
    for (const CPageDrawing &page : pages) {
        fonts.append(CBoxFont::Of(scratch));
        basPageLayout::ApplyPageFonts(scratch, page.Lines);
    }
    fonts.append(CBoxFont::Of(scratch));
    return fonts;
}

// A picture box of one worker, on which its pages are drawn one after another.
class Drawer
{
public:
    Drawer(const Settings &settings, const Target &where)
        : m_box(settings.Width, settings.Height)
        , m_margins(settings.Margins)
        , m_where(where)
    {
        m_box.setAntialiased(settings.Antialiased);
        m_box.setBackColor(settings.BackColor);
    }

    PageResult Draw(const CPageDrawing &page, const CBoxFont &font)
    {
        PageResult result { page.SerialNo, page.Content, page.Lines };
        font.ApplyTo(m_box);
        basPageLayout::DisplayPageLines(m_box, result.Lines, m_margins);
        if (page.StartTime == 0 && page.EndTime == 0)
            return result;
        result.Content = basPageCut::PageBitmapName(m_where.BitmapFolder, page.SerialNo);
        // A bitmap that cannot be written is left out without a word.
        basBitmap::SavePictureAsBmp(m_box.Image(), result.Content);
        return result;
    }

private:
    CPictureBox m_box;
    CPageMargins m_margins;
    Target m_where;
};

// Pages drawn by workers that each take the next page not yet taken; the caller lists
// them in order as they come in. Stopping lets the pages under way finish, so that every
// bitmap begun is whole and belongs to a page that can still be listed.
class ParallelDrawing
{
public:
    ParallelDrawing(const QList<CPageDrawing> &pages, const QList<CBoxFont> &fonts, const Settings &settings,
        const Target &where, int workers)
        : m_pages(pages)
        , m_fonts(fonts)
        , m_done(size_t(pages.size()))
        , m_running(workers)
    {
        QThreadPool *pool = pagePool();
        pool->setMaxThreadCount(std::max(pool->maxThreadCount(), workers));
        for (int w = 0; w < workers; ++w)
            pool->start([this, settings, where] { work(settings, where); });
    }
    ~ParallelDrawing()
    {
        Stop();
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_running == 0; });
    }

    // The page drawn at a position, waiting for it; nothing when it will not come
    // (stopped before it was taken, or failed).
    std::optional<PageResult> Take(qsizetype index)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return m_done[size_t(index)].has_value() || m_running == 0; });
        std::optional<PageResult> page = std::move(m_done[size_t(index)]);
        m_done[size_t(index)].reset();
        return page;
    }
    void Stop() { m_stop = true; }
    bool Failed() const { return m_failed; }

private:
    void work(const Settings &settings, const Target &where)
    {
        try {
            Drawer drawer(settings, where);
            for (qsizetype index; !m_stop && (index = m_next++) < m_pages.size();) {
                PageResult page = drawer.Draw(m_pages[index], m_fonts[index]);
                const std::lock_guard lock(m_mutex);
                m_done[size_t(index)] = std::move(page);
                m_changed.notify_all();
            }
        } catch (...) {
            // Out of memory: the pages before stay listed, the export ends.
            m_failed = true;
            m_stop = true;
        }
        const std::lock_guard lock(m_mutex);
        --m_running;
        m_changed.notify_all();
    }

    const QList<CPageDrawing> &m_pages;
    const QList<CBoxFont> &m_fonts;
    std::vector<std::optional<PageResult>> m_done;
    std::atomic<qsizetype> m_next = 0;
    std::atomic<bool> m_stop = false;
    std::atomic<bool> m_failed = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_running;
};

} // namespace

Target PageListTarget(const QString &name, bool pictureFolder)
{
    const auto [folder, fileName] = basPageCut::PageListFolder(name);
    Target target { fileName, folder, fileName };
    if (pictureFolder) {
        const qsizetype dot = ExtensionDot(fileName);
        target.BitmapFolder = dot < 0 ? fileName + QStringLiteral("_bmp") : fileName.left(dot);
    }
    return target;
}

QString SSTHead(const QString &folder, int videoType)
{
    const bool pal = videoType == 1;
    const char16_t *const lines[] = {
        u"st_format 2",
        u"Display_Start non_forced",
        pal ? u"TV_Type PAL" : u"TV_Type NTSC",
        pal ? u"Tape_Type NON_DROP" : u"Tape_Type Drop",
        pal ? u"Pixel_Area  (0 573)" : u"Pixel_Area  (0 477)",
        nullptr, // the folder
        u"Subtitle zh",
        pal ? u"Display_Area    (0 2 719 575)" : u"Display_Area    (0 2 719 479)",
        u"Contrast    (15 15 15 0)",
        u"",
        u"PA  (0 0 255 - - - )",
        u"E1  (255 0 0 - - - )",
        u"E2  (0 0 0 - - - )",
        u"BG  (255 255 255 - - - )",
        u"",
        u"SP_NUMBER   START   END FILE_NAME",
        u"Color    (3 9 4 4)",
        u"Contrast (15 0 15 15)",
    };
    QString head;
    for (const char16_t *line : lines)
        head += (line ? QString::fromUtf16(line) : QStringLiteral("Directory   ") + folder)
            + QStringLiteral("\r\n");
    return head;
}

int WorkerCount(int requested, qsizetype pages)
{
    const int wanted = requested > 0 ? requested : QThread::idealThreadCount();
    return int(std::clamp<qsizetype>(std::min<qsizetype>(wanted, pages), 1, 64));
}

Result ExportPages(
    const QString &name, const QList<CPageDrawing> &pages, const Settings &settings, IProgress *progress)
{
    Result result;
    result.Where = PageListTarget(name, settings.PictureFolder);
    result.Font = settings.Font;
    result.Pages.reserve(pages.size());
    const int total = int(pages.size());
    // Written as it goes, so that a fault or a cancel keeps what stands in the file by then.
    QFile file(result.Where.FileName);
    try {
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            throw fileAccessError();
        writeOrFail(file, QString(QChar(0xFEFF)) + SSTHead(result.Where.Folder, settings.VideoType));
        if (settings.PictureFolder)
            QDir().mkpath(result.Where.BitmapFolder);
        const QList<CBoxFont> fonts = fontsBeforeEachPage(pages, settings.Font);

        // Lists a page; false once the export is to stop.
        const auto list = [&](PageResult &&page) {
            const CPageDrawing &drawn = pages[result.Pages.size()];
            writeOrFail(file,
                basPageCut::PageListLine(int(result.Pages.size()) + 1,
                    basPageCut::PageTimeString(drawn.StartTime), basPageCut::PageTimeString(drawn.EndTime),
                    page.Content));
            result.Pages.append(std::move(page));
            result.Font = fonts[result.Pages.size()];
            if (progress)
                progress->Listed(int(result.Pages.size()), total);
            return !result.Cancelled && !(progress && progress->Cancelled());
        };

        const int workers = WorkerCount(settings.Threads, pages.size());
        result.Cancelled = progress && progress->Cancelled();
        if (result.Cancelled) {
            // Cancelled before the first page: the list is its head.
        } else if (workers == 1) {
            Drawer drawer(settings, result.Where);
            for (qsizetype i = 0; i < pages.size() && !result.Cancelled; ++i)
                result.Cancelled = !list(drawer.Draw(pages[i], fonts[i]));
        } else {
            ParallelDrawing drawing(pages, fonts, settings, result.Where, workers);
            for (qsizetype i = 0; i < pages.size(); ++i) {
                std::optional<PageResult> page = drawing.Take(i);
                if (!page)
                    break;
                // After a cancel the pages under way still come in and are listed.
                if (!list(std::move(*page))) {
                    result.Cancelled = true;
                    drawing.Stop();
                }
            }
            if (drawing.Failed())
                throw VelmarError(7, QStringLiteral("Out of memory"));
        }
        if (!file.flush())
            throw fileAccessError();
    } catch (const VelmarError &error) {
        result.Error = error.Description();
    }
    file.close();
    return result;
}

} // namespace basPageExport
