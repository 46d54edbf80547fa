#pragma once

#include "core/CSpread.h"
#include "pages/CPicPreviewPages.h"
#include "pages/CPictureBox.h"

#include <QString>

#include <utility>

class CFonts;
class CSSAContent;
class CTiming;

// The rules of the picture-page window: the box the pages are drawn on, the page list
// (`spdTime`, start and end of each page), the name of the page-list file
// (`txtFileName`) and what its buttons do. The window shows the box and the list and
// forwards its clicks here.
class CPicPreviewModel
{
public:
    CPicPreviewModel();

    CPicPreviewPages &Pages() { return m_pages; }
    CPictureBox &Picture() { return m_picture; }
    CSpread &PageList() { return m_pageList; }

    // The name of the page-list file as typed or chosen.
    QString FileName;

    // Loading the window for a timing document (or a script and its styles): NTSC
    // size, the pages cut, listed and drawn.
    void Init(CTiming *timing);
    void Init(CSSAContent *script, const CFonts *fonts);

    // `cmdReload`: the list and the pages emptied, the script taken from the document
    // again (from its grid, where one holds the lines) and cut anew.
    void Reload();
    // `cmdBackColor`: a colour asked for becomes the box's background.
    void ChooseBackColour();
    // A click on a row of the page list shows that page.
    void PageListClicked(int row);
    // `cmdSaveAll`: the page list and its bitmaps under FileName.
    bool SaveAll();
    // Saving the window as a document is not possible: "保存文件出错:".
    void SaveFile();

    // The window's size in twips around a box at (left, top) of a size in twips.
    static std::pair<double, double> FormSize(
        double boxLeft, double boxTop, double boxWidth, double boxHeight);

private:
    void load();

    CPictureBox m_picture;
    CSpread m_pageList;
    CPicPreviewPages m_pages;
    CTiming *m_timing = nullptr;
};
