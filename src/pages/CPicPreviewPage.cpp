#include "pages/CPicPreviewPage.h"

#include "core/IPictureBox.h"
#include "core/basConvert.h"
#include "pages/CPicPreviewPages.h"
#include "pages/basBitmap.h"
#include "pages/basPageCut.h"
#include "pages/basPageLayout.h"
#include "script/CFont.h"

QString CPicPreviewPage::StartTimeString() const
{
    return basPageCut::PageTimeString(m_startTime);
}

void CPicPreviewPage::setStartTimeString(QStringView text)
{
    m_startTime = basPageCut::PageTimeFromString(text);
}

QString CPicPreviewPage::EndTimeString() const
{
    return basPageCut::PageTimeString(m_endTime);
}

void CPicPreviewPage::setEndTimeString(QStringView text)
{
    m_endTime = basPageCut::PageTimeFromString(text);
}

void CPicPreviewPage::setDialog(const QString &text)
{
    m_dialog = basPageLayout::PreviewDialog(text);
}

CSSAContentLine *CPicPreviewPage::Add(std::unique_ptr<CSSAContentLine> line)
{
    ++m_lineCounter;
    return m_lines.Add(basConvert::CStr(qint64(m_lineCounter)), std::move(line));
}

void CPicPreviewPage::Clear()
{
    m_lines.Clear();
}

void CPicPreviewPage::Display()
{
    if (!m_parent || !m_parent->Picture())
        return;
    QList<CPageLine> lines;
    lines.reserve(m_lines.Count());
    for (const CSSAContentLine *source : m_lines) {
        setDialog(source->Dialog());
        CPageLine line;
        line.Dialog = m_dialog;
        if (const CFont *style = m_parent->FindStyle(source->Style())) {
            line.HasStyle = true;
            line.FontName = style->FontName();
            line.FontSize = style->FontSize();
            line.Bold = style->Bold() != 0;
            line.Italic = style->Italic() != 0;
            line.UnderLine = style->UnderLine() != 0;
            line.StrikeOut = style->StrikeOut() != 0;
            line.PrimaryColour = style->PrimaryColourValue();
            line.Alignment = style->Alignment();
        }
        line.ForcePosition = source->ForcePosition;
        line.DisplayY = source->DisplayY;
        line.DisplayHeight = source->DisplayHeight;
        lines.append(std::move(line));
    }
    basPageLayout::DisplayPageLines(*m_parent->Picture(), lines, m_parent->Margins());
    qsizetype i = 0;
    for (CSSAContentLine *target : m_lines) {
        target->DisplayY = lines[i].DisplayY;
        target->DisplayHeight = lines[i].DisplayHeight;
        target->Displayed = lines[i].Displayed;
        ++i;
    }
}

void CPicPreviewPage::Save(const QString &name)
{
    if (m_startTime == 0 && m_endTime == 0)
        return;
    const QString fileName = basPageCut::PageBitmapName(name, m_serialNo);
    // The bitmap writer gives up silently on a file it cannot write.
    if (m_parent && m_parent->Picture())
        basBitmap::SavePictureAsBmp(*m_parent->Picture(), fileName);
    m_content = fileName;
}
