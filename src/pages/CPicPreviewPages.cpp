#include "pages/CPicPreviewPages.h"

#include "core/CSpread.h"
#include "core/Class.h"
#include "core/IPictureBox.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "formats/CTiming.h"
#include "pages/basPageCut.h"
#include "script/CFont.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"

#include <QFile>

namespace {

// The page list is a Unicode text: UTF-16LE behind its byte-order mark.
QByteArray utf16Bytes(const QString &text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

void writeOrFail(QFile &file, const QString &text)
{
    const QByteArray bytes = utf16Bytes(text);
    if (file.write(bytes) != bytes.size())
        throw VelmarError(75, QStringLiteral("Path/File access error"));
}

} // namespace

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
    if (name.isEmpty()) {
        MsgBox(QStringLiteral("请选择SST文件名"));
        return false;
    }
    const auto [folder, fileName] = basPageCut::PageListFolder(name);
    setFileName(fileName);
    try {
        writePageList(fileName, folder);
    } catch (const VelmarError &error) {
        MsgBox(error.Description());
        return false;
    }
    DisplayPage(1);
    return true;
}

void CPicPreviewPages::writePageList(const QString &fileName, const QString &folder)
{
    // Written as it goes, so that a fault keeps what stands in the file by then.
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw VelmarError(75, QStringLiteral("Path/File access error"));
    writeOrFail(file, QString(QChar(0xFEFF)) + SSTHead(folder));
    int number = 0;
    for (CPicPreviewPage *page : m_pages) {
        ++number;
        page->Display();
        page->Save(fileName);
        writeOrFail(file,
            basPageCut::PageListLine(
                number, page->StartTimeString(), page->EndTimeString(), page->Content()));
    }
    if (!file.flush())
        throw VelmarError(75, QStringLiteral("Path/File access error"));
}

void CPicPreviewPages::SavePage(int index)
{
    if (index < 1 || index > m_pages.Count() || FileName().isEmpty())
        return;
    CPicPreviewPage *page = m_pages.At(index - 1);
    page->Display();
    page->Save(FileName());
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

QString CPicPreviewPages::SSTHead(const QString &folder)
{
    static const char16_t *const before[] = {
        u"st_format 2",
        u"Display_Start non_forced",
        u"TV_Type NTSC",
        u"Tape_Type Drop",
        u"Pixel_Area  (0 477)",
    };
    static const char16_t *const after[] = {
        u"Subtitle zh",
        u"Display_Area    (0 2 719 479)",
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
    for (const char16_t *line : before)
        head += QString::fromUtf16(line) + QStringLiteral("\r\n");
    head += QStringLiteral("Directory   ") + folder + QStringLiteral("\r\n");
    for (const char16_t *line : after)
        head += QString::fromUtf16(line) + QStringLiteral("\r\n");
    return head;
}
