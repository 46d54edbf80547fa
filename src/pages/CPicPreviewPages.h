#pragma once

#include "core/CKeyedList.h"
#include "core/ICollection.h"
#include "core/isub.h"
#include "pages/CPageMargins.h"
#include "pages/CPicPreviewPage.h"
#include "pages/basPageExport.h"

#include <QList>
#include <QString>

#include <optional>

class CFont;
class CFonts;
class CSpread;
class CSSAContent;
class CTiming;
class IPictureBox;

// The picture pages of a script for DVD authoring: the script cut into spans during
// which one fixed set of lines is on the screen, each drawn on one picture box, saved
// as a numbered 16-colour bitmap and listed in an SST page list.
class CPicPreviewPages : public isub, public ICollection
{
public:
    // Margins and spacing of the drawing in the box's units (twips). The side margins
    // are kept but the drawing centres every line and never reads them.
    qint16 DefaultMarginBottom = 800;
    qint16 DefaultMarginTop = 400;
    qint16 DefaultMarginLeft = 400;
    qint16 DefaultMarginRight = 400;
    qint16 DefaultBetweenV = 20;

    // The bitmaps into a folder named after the page list without its extension, rather
    // than under the list's own name (where none can be written). Off by default.
    bool PictureFolder = false;
    // Workers that draw and write the pages of a save: 0 one per core, 1 one page after
    // another. The files are the same either way.
    int ExportThreads = 0;

    void Init() override { }

    // The box the pages are drawn on (not owned).
    IPictureBox *Picture() const { return m_picture; }
    void setPicture(IPictureBox *box);

    // Where the lines and the styles come from: a timing document, or a script and its
    // styles directly. Neither is owned. A script without styles draws every line in
    // white Arial.
    void setDocument(CTiming *timing);
    void setSource(CSSAContent *script, const CFonts *fonts);
    CSSAContent *Script() const { return m_script; }
    const CFonts *Fonts() const { return m_fonts; }

    // 0 NTSC (a box of 724 by 484 pixels) or 1 PAL (724 by 580); sizes the box.
    qint32 VideoType() const { return m_videoType; }
    void setVideoType(qint32 type);

    // A new empty page with the next serial number, keyed by its decimal text.
    CPicPreviewPage *Create();
    bool Exists(const QString &key) const { return m_pages.Exists(key); }
    // Empties the list; serial numbers go on rising, so a reload never reuses one.
    void Clear() override { m_pages.Clear(); }

    // Cuts a copy of the script into pages and adds them in order of time. Only lines
    // that start before they end count; pages never overlap; a line spanning a change
    // of the lines on the screen stands on each of its pages, with the page's times.
    QList<CPicPreviewPage *> CreatePages();

    // Draws every page in turn, then the first again.
    void DisplayAllPages();
    // The page at a 1-based position, as the page list numbers its rows; others are
    // ignored.
    void DisplayPage(int index);

    // Writes the page list under the name given (a bare name goes into the program's
    // folder): the SST head naming the folder, then each page drawn, saved and listed.
    // An empty name shows "请选择SST文件名" and writes nothing. A fault shows its own
    // description; what was written stays. Shows the first page at the end.
    bool SaveAllPages(const QString &name);

    // The same save in three steps, for a caller that runs the middle one elsewhere (on
    // another thread, with a progress and a cancel). Prepare checks the name (the
    // message, and nothing, for an empty one), takes it as the list's file name and
    // takes the pages as their drawing needs them; the export runs on that alone, so the
    // pages may change meanwhile. Finish takes the bitmaps' names and the lines' places
    // back into the pages that are still there, shows a fault, and shows the first page.
    struct PreparedSave
    {
        QString Name;
        QList<CPageDrawing> Pages;
        basPageExport::Settings Settings;
    };
    std::optional<PreparedSave> PrepareSave(const QString &name);
    bool FinishSave(const basPageExport::Result &result);
    // Draws and saves one page (1-based) under the name of the last page list, and keeps
    // its page-list line as the content of the list; no file is written but the bitmap.
    void SavePage(int index);

    // The page list of the window: one row a page with its start and end.
    void FillPageList(CSpread &list) const;

    // The style of a line: the first whose name equals the line's style, or equals it
    // without a leading "*". None for an unknown style or without styles.
    const CFont *FindStyle(const QString &style) const;
    CPageMargins Margins() const;

    // ICollection
    qint32 SerialNo() const override { return m_counter; }
    void Delete(const QString &key) override { m_pages.Remove(key); }
    qsizetype Count() const override { return m_pages.Count(); }
    isub *item(const QString &key) override { return m_pages.Find(key); }
    isub *itemAt(qsizetype index) override { return m_pages.At(index); }
    CPicPreviewPage *Item(const QString &key) const { return m_pages.Find(key); }
    CPicPreviewPage *At(qsizetype index) const { return m_pages.At(index); }
    auto begin() const { return m_pages.begin(); }
    auto end() const { return m_pages.end(); }

    // The page-list line of the page saved last by SavePage.
    QString Content() override { return m_content; }
    void setContent(const QString &text) override { m_content = text; }

private:
    IPictureBox *m_picture = nullptr;
    CSSAContent *m_script = nullptr;
    const CFonts *m_fonts = nullptr;
    qint32 m_videoType = 0;
    CKeyedList<CPicPreviewPage> m_pages;
    qint32 m_counter = 0;
    QString m_content;
};
