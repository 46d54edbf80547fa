#include "pages/CPicPreviewModel.h"

#include "core/IPrompt.h"
#include "core/basMessage.h"
#include "formats/CTiming.h"
#include "script/ITimingGrid.h"

CPicPreviewModel::CPicPreviewModel()
{
    m_pageList.setMaxCols(2);
    m_pageList.setMaxRows(0);
    m_pages.setPicture(&m_picture);
}

void CPicPreviewModel::Init(CTiming *timing)
{
    m_timing = timing;
    m_pages.setDocument(timing);
    m_pages.setVideoType(0);
    load();
}

void CPicPreviewModel::Init(CSSAContent *script, const CFonts *fonts)
{
    m_timing = nullptr;
    m_pages.setSource(script, fonts);
    m_pages.setVideoType(0);
    load();
}

void CPicPreviewModel::load()
{
    m_pages.CreatePages();
    m_pages.FillPageList(m_pageList);
    m_pages.DisplayAllPages();
}

void CPicPreviewModel::Reload()
{
    m_pageList.setMaxRows(0);
    m_pages.Clear();
    if (m_timing) {
        // While a grid shows the document it holds the lines, not the event list.
        if (m_timing->TimingTable && m_timing->SSAContent)
            m_timing->TimingTable->StoreGridToContent(*m_timing->SSAContent);
        m_pages.setDocument(m_timing);
    }
    load();
}

void CPicPreviewModel::ChooseBackColour()
{
    if (const auto colour = Prompt().ChooseColour(m_picture.BackColor()))
        m_picture.setBackColor(*colour);
}

void CPicPreviewModel::PageListClicked(int row)
{
    m_pages.DisplayPage(row);
}

bool CPicPreviewModel::SaveAll()
{
    return m_pages.SaveAllPages(FileName);
}

void CPicPreviewModel::SaveFile()
{
    MsgBox(Msg(QStringLiteral("COMM_MSG_101")));
}

std::pair<double, double> CPicPreviewModel::FormSize(
    double boxLeft, double boxTop, double boxWidth, double boxHeight)
{
    return { boxLeft + boxWidth + 200, boxTop + boxHeight + 550 };
}
