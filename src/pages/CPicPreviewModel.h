#pragma once

#include "core/CSpread.h"
#include "core/FileCode.h"
#include "pages/CPicPreviewPages.h"
#include "pages/CPictureBox.h"
#include "script/ScriptType.h"

#include <QString>

#include <functional>
#include <memory>
#include <utility>

class CFonts;
class CSSAContent;
class CTiming;

// The rules of the picture-page window: the box the pages are drawn on, the page list
// (`spdTime`, start and end of each page), the name of the page-list file
// (`txtFileName`) and what its buttons do. The window shows the box and the list and
// forwards its clicks here. The pages are cut from copies of the script and its styles,
// taken at each load, so that the window outlives a change or the close of the document
// it was opened for.
class CPicPreviewModel
{
public:
    CPicPreviewModel();
    ~CPicPreviewModel();

    CPicPreviewPages &Pages() { return m_pages; }
    CPictureBox &Picture() { return m_picture; }
    CSpread &PageList() { return m_pageList; }

    // The name of the page-list file as typed or chosen.
    QString FileName;

    // Where a load takes its lines and styles: the document the window was opened for,
    // while it is there (nullptr once it is gone: the copies taken last are cut again).
    std::function<CTiming *()> Source;

    // Loading the window for a timing document (or a script and its styles): NTSC
    // size, the pages cut, listed and drawn. The window always loads NTSC; a batch may
    // ask for PAL (1).
    void Init(CTiming *timing, qint32 videoType = 0);
    void Init(const CSSAContent *script, const CFonts *fonts);

    // `cmdReload`: the list and the pages emptied, the script taken from the document
    // again (from its grid, where one holds the lines) and cut anew.
    void Reload();
    // `cmdBackColor`: a colour asked for becomes the box's background.
    void ChooseBackColour();
    // A click on a row of the page list shows that page.
    void PageListClicked(int row);
    // `cmdSaveAll`: the page list and its bitmaps under FileName, on this thread.
    bool SaveAll();
    // The same in steps, for a window that runs the export in the background.
    std::optional<CPicPreviewPages::PreparedSave> PrepareSave();
    bool FinishSave(const basPageExport::Result &result);
    // Saving the window as a document is not possible: "保存文件出错:".
    void SaveFile();

    // `cmdLoadSST`: a script file (an SST page list, or any type a timing window reads)
    // becomes the source of the pages. False, with " 无法打开文件。 " for a file that
    // cannot be read, and without a word for an empty one; the pages stay as they were.
    bool OpenScript(const QString &fileName, ScriptType type, FileCode fileCode = FileCode::SystemDefault);

    // The option beside the file name: bitmaps into a folder named after the list.
    // Remembered in the settings; off until it is set.
    bool PictureFolder() const { return m_pages.PictureFolder; }
    void setPictureFolder(bool on);

    // The window's size in twips around a box at (left, top) of a size in twips.
    static std::pair<double, double> FormSize(
        double boxLeft, double boxTop, double boxWidth, double boxHeight);

private:
    void takeFromSource();
    void copyFrom(const CSSAContent *script, const CFonts *fonts);
    void load();

    CPictureBox m_picture;
    CSpread m_pageList;
    CPicPreviewPages m_pages;
    std::unique_ptr<CSSAContent> m_script;
    std::unique_ptr<CFonts> m_fonts;
    // A script the window opened itself.
    std::unique_ptr<CTiming> m_opened;
};
