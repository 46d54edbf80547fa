#include "pages/CPicPreviewPages.h"

#include "core/CSpread.h"
#include "core/Class.h"
#include "core/IPictureBox.h"
#include "core/IPrompt.h"
#include "core/basConvert.h"
#include "formats/CTiming.h"
#include "pages/CPictureBox.h"
#include "pages/basPageCut.h"
#include "script/CFont.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"

#include <QDir>

void CPicPreviewPages::setPicture(IPictureBox *box)
{
    m_picture = box;
}

void CPicPreviewPages::setDocument(CTiming *timing)
{
    if (!timing) {
        setSource(nullptr, nullptr);
        return;
    }
    setSource(timing->SSAContent.get(), timing->Fonts.get());
}

void CPicPreviewPages::setSource(CSSAContent *script, const CFonts *fonts)
{
    m_script = script;
    m_fonts = fonts;
}

void CPicPreviewPages::setVideoType(qint32 type)
{
    m_videoType = type;
    if (m_picture) {
        const auto [width, height] = basPageCut::VideoTypePixelSize(type);
        m_picture->SetPixelSize(width, height);
    }
}

CPicPreviewPage *CPicPreviewPages::Create()
{
    auto page = Class::Make<CPicPreviewPage>(m_counter + 1);
    page->setParent(this);
    CPicPreviewPage *added = m_pages.Add(basConvert::CStr(qint64(m_counter + 1)), std::move(page));
    ++m_counter;
    return added;
}

QList<CPicPreviewPage *> CPicPreviewPages::CreatePages()
{
    QList<CPicPreviewPage *> created;
    if (!m_script)
        return created;
    // The copy gives the times as a copy of the script reads them; the lines on the
    // pages are copies of its lines.
    const std::unique_ptr<CSSAContent> copy = m_script->DuplicateSSA();
    QList<std::pair<double, double>> times;
    times.reserve(copy->Count());
    for (const CSSAContentLine *line : *copy)
        times.append({ line->StartTime(), line->EndTime() });

    const QList<CPageCut> cuts = basPageCut::CutPages(times);
    created.reserve(cuts.size());
    m_pages.Reserve(m_pages.Count() + cuts.size());
    for (const CPageCut &cut : cuts) {
        CPicPreviewPage *page = Create();
        page->setStartTime(cut.StartTime);
        page->setEndTime(cut.EndTime);
        for (int index : cut.Lines) {
            auto line = std::make_unique<CSSAContentLine>(*copy->At(index));
            line->setParent(m_script);
            line->setTimeOffset(0);
            line->setStartTime(cut.StartTime);
            line->setEndTime(cut.EndTime);
            page->Add(std::move(line));
        }
        created.append(page);
    }
    return created;
}

void CPicPreviewPages::DisplayAllPages()
{
    for (CPicPreviewPage *page : m_pages)
        page->Display();
    DisplayPage(1);
}

void CPicPreviewPages::DisplayPage(int index)
{
    if (index >= 1 && index <= m_pages.Count())
        m_pages.At(index - 1)->Display();
}

bool CPicPreviewPages::SaveAllPages(const QString &name)
{
    const std::optional<PreparedSave> save = PrepareSave(name);
    if (!save)
        return false;
    return FinishSave(basPageExport::ExportPages(save->Name, save->Pages, save->Settings));
}

std::optional<CPicPreviewPages::PreparedSave> CPicPreviewPages::PrepareSave(const QString &name)
{
    if (name.isEmpty()) {
        MsgBox(QStringLiteral("请选择SST文件名"));
        return std::nullopt;
    }
    PreparedSave save;
    save.Name = name;
    setFileName(basPageExport::PageListTarget(name, PictureFolder).FileName);
    save.Pages.reserve(m_pages.Count());
    for (const CPicPreviewPage *page : m_pages)
        save.Pages.append(page->Drawing());
    basPageExport::Settings &settings = save.Settings;
    if (m_picture) {
        settings.Width = m_picture->PixelWidth();
        settings.Height = m_picture->PixelHeight();
        settings.BackColor = m_picture->BackColor();
        settings.Font = CBoxFont::Of(*m_picture);
        if (const auto *box = dynamic_cast<const CPictureBox *>(m_picture))
            settings.Antialiased = box->Antialiased();
    }
    settings.VideoType = m_videoType;
    settings.Margins = Margins();
    settings.PictureFolder = PictureFolder;
    settings.Threads = ExportThreads;
    return save;
}

bool CPicPreviewPages::FinishSave(const basPageExport::Result &result)
{
    for (qsizetype i = 0; i < result.Pages.size() && i < m_pages.Count(); ++i) {
        const basPageExport::PageResult &saved = result.Pages[i];
        CPicPreviewPage *page = m_pages.At(i);
        if (page->SerialNo() != saved.SerialNo)
            break; // the pages were cut anew meanwhile
        page->setContent(saved.Content);
        page->TakePlaced(saved.Lines);
    }
    // The box goes on from where the drawing of the pages left it.
    if (m_picture)
        result.Font.ApplyTo(*m_picture);
    if (!result.Error.isEmpty()) {
        MsgBox(result.Error);
        return false;
    }
    DisplayPage(1);
    return true;
}

void CPicPreviewPages::SavePage(int index)
{
    if (index < 1 || index > m_pages.Count() || FileName().isEmpty())
        return;
    CPicPreviewPage *page = m_pages.At(index - 1);
    const basPageExport::Target where = basPageExport::PageListTarget(FileName(), PictureFolder);
    if (PictureFolder)
        QDir().mkpath(where.BitmapFolder);
    page->Display();
    page->Save(where.BitmapFolder);
    m_content
        = basPageCut::PageListLine(index, page->StartTimeString(), page->EndTimeString(), page->Content());
}

void CPicPreviewPages::FillPageList(CSpread &list) const
{
    if (list.MaxCols() < 2)
        list.setMaxCols(2);
    list.setMaxRows(0);
    int row = 0;
    for (const CPicPreviewPage *page : m_pages) {
        list.setMaxRows(++row);
        list.SetText(1, row, page->StartTimeString());
        list.SetText(2, row, page->EndTimeString());
    }
}

const CFont *CPicPreviewPages::FindStyle(const QString &style) const
{
    if (!m_fonts)
        return nullptr;
    const QStringView bare = style.startsWith(u'*') ? QStringView(style).mid(1) : QStringView();
    for (const CFont *font : *m_fonts) {
        if (font->StyleName() == style || (!bare.isNull() && font->StyleName() == bare))
            return font;
    }
    return nullptr;
}

CPageMargins CPicPreviewPages::Margins() const
{
    return { DefaultMarginBottom, DefaultMarginTop, DefaultMarginLeft, DefaultMarginRight, DefaultBetweenV };
}
