#pragma once

#include "pages/CBoxFont.h"
#include "pages/CPageDrawing.h"
#include "pages/CPageMargins.h"

#include <QList>
#include <QString>

// Writing a page list (an SST script) with the 16-colour bitmaps of its pages. Pages are
// independent once cut, so they are drawn and written on every core, each worker on a
// picture box of its own; the lines of the list are written in page order as the pages
// come in. The files are the same, byte for byte, as those of one page after another on
// one box.
namespace basPageExport {

// Where a page list and its bitmaps go.
struct Target
{
    QString FileName; // the page list, with its folder
    QString Folder; // the folder its head names
    QString BitmapFolder; // the bitmaps are "1.<serial>.bmp" in it
};

// The name as typed: a name with a folder keeps it, a bare name goes into the program's
// folder. The bitmaps are named under the list's own name used as a folder, where no
// bitmap can be written while the list stands there; with `pictureFolder` they go into
// the folder named after the list without its extension (a list without an extension
// gets the folder "<name>_bmp").
Target PageListTarget(const QString &name, bool pictureFolder);

// The head of a page list, each line ending in CR LF, naming the folder. The window
// always draws NTSC pages (0); PAL pages (1, which only a batch asks for) get the PAL
// television type, tape type and picture areas.
QString SSTHead(const QString &folder, int videoType = 0);

// How the pages are drawn and where their bitmaps go.
struct Settings
{
    int Width = 724; // the box in pixels
    int Height = 484;
    int VideoType = 0; // for the head of the list
    qint64 BackColor = 0;
    bool Antialiased = false;
    // The font the box holds when the first page is drawn.
    CBoxFont Font;
    CPageMargins Margins;
    // The bitmaps into the folder named after the list (made when missing).
    bool PictureFolder = false;
    // Workers drawing pages: 0 one per core; 1 one page after another on the calling thread.
    int Threads = 0;
};

// Told as the pages are listed; may stop the export.
class IProgress
{
public:
    virtual ~IProgress() = default;
    // `listed` of `total` pages stand in the list.
    virtual void Listed(int listed, int total) = 0;
    // Asked before the first page and after each page listed: true ends the export
    // behind the pages under way.
    virtual bool Cancelled() = 0;
};

// A page as it was drawn and saved.
struct PageResult
{
    qint32 SerialNo = 0;
    QString Content; // the bitmap's name (unchanged for a page not saved)
    QList<CPageLine> Lines; // placed
};

struct Result
{
    Target Where;
    // The pages listed, in order. On a cancel the list is complete up to the last of
    // them, and every bitmap written is listed.
    QList<PageResult> Pages;
    bool Cancelled = false;
    // The font the shared box would hold after the pages listed.
    CBoxFont Font;
    // A fault's own description; empty when the list was written.
    QString Error;
};

// Creates the list (UTF-16 with its mark, replacing an old one), writes its head, and
// for each page in order draws it, saves its bitmap (a page from 0 to 0 is drawn and
// listed, not saved; a bitmap that cannot be written is left out silently) and lists it.
// A fault of the list ends the export; what was written stays.
Result ExportPages(const QString &name, const QList<CPageDrawing> &pages, const Settings &settings,
    IProgress *progress = nullptr);

// The workers an export of `pages` pages uses for a requested count (0: one per core).
int WorkerCount(int requested, qsizetype pages);

} // namespace basPageExport
