#include "pages/CPicPreviewModel.h"

#include "core/Class.h"
#include "core/IPrompt.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"
#include "script/ITimingGrid.h"

namespace {

const QString SettingSection = QStringLiteral("PicPreview");
const QString SettingPictureFolder = QStringLiteral("PictureFolder");

} // namespace

CPicPreviewModel::CPicPreviewModel()
{
    m_pageList.setMaxCols(2);
    m_pageList.setMaxRows(0);
    // The list's columns carry the timing grid's titles of the two times.
    m_pageList.setRow(0);
    m_pageList.setCol(1);
    m_pageList.setText(Msg(QStringLiteral("TIMING_COL_TITLE_200")));
    m_pageList.setCol(2);
    m_pageList.setText(Msg(QStringLiteral("TIMING_COL_TITLE_300")));
    m_pages.setPicture(&m_picture);
    m_pages.PictureFolder = GetSetting(SettingSection, SettingPictureFolder, QStringLiteral("0")) == u"1";
}

CPicPreviewModel::~CPicPreviewModel() = default;

void CPicPreviewModel::Init(CTiming *timing, qint32 videoType)
{
    Source = [timing] { return timing; };
    m_pages.setVideoType(videoType);
    Reload();
}

void CPicPreviewModel::Init(const CSSAContent *script, const CFonts *fonts)
{
    Source = nullptr;
    m_pages.setVideoType(0);
    m_pageList.setMaxRows(0);
    m_pages.Clear();
    copyFrom(script, fonts);
    load();
}

void CPicPreviewModel::takeFromSource()
{
    CTiming *timing = Source ? Source() : nullptr;
    if (!timing)
        return;
    // While a grid shows the document it holds the lines, not the event list.
    if (timing->TimingTable && timing->SSAContent)
        timing->TimingTable->StoreGridToContent(*timing->SSAContent);
    copyFrom(timing->SSAContent.get(), timing->Fonts.get());
}

void CPicPreviewModel::copyFrom(const CSSAContent *script, const CFonts *fonts)
{
    m_script = script ? script->DuplicateSSA() : nullptr;
    if (fonts) {
        m_fonts = Class::MakeCollection<CFonts>();
        m_fonts->Clear();
        for (const CFont *font : *fonts)
            m_fonts->Add(CFonts::CopyFont(*font));
    } else {
        m_fonts.reset();
    }
    m_pages.setSource(m_script.get(), m_fonts.get());
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
    takeFromSource();
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

std::optional<CPicPreviewPages::PreparedSave> CPicPreviewModel::PrepareSave()
{
    return m_pages.PrepareSave(FileName);
}

bool CPicPreviewModel::FinishSave(const basPageExport::Result &result)
{
    return m_pages.FinishSave(result);
}

void CPicPreviewModel::SaveFile()
{
    MsgBox(Msg(QStringLiteral("COMM_MSG_101")));
}

bool CPicPreviewModel::OpenScript(const QString &fileName, ScriptType type, FileCode fileCode)
{
    const TextFileRead read = ReadTextStream(fileName, fileCode);
    if (!read.Ok) {
        MsgBox(QString::fromUtf16(u" 无法打开文件。 ") + fileName);
        return false;
    }
    if (read.Text.isEmpty())
        return false;
    auto opened = Class::Make<CTiming>();
    opened->FileCode = fileCode;
    opened->setScriptType(type);
    opened->setContent(read.Text);
    // A page list or another format was read into its own list: its lines become events.
    opened->Formats.FillEvents();
    opened->setFileName(fileName);
    opened->setChanged(false);
    m_opened = std::move(opened);
    Source = [this] { return m_opened.get(); };
    Reload();
    return true;
}

void CPicPreviewModel::setPictureFolder(bool on)
{
    m_pages.PictureFolder = on;
    SaveSetting(SettingSection, SettingPictureFolder, on ? QStringLiteral("1") : QStringLiteral("0"));
}

std::pair<double, double> CPicPreviewModel::FormSize(
    double boxLeft, double boxTop, double boxWidth, double boxHeight)
{
    return { boxLeft + boxWidth + 200, boxTop + boxHeight + 550 };
}
