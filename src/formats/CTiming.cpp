#include "formats/CTiming.h"

#include "core/CScopeExit.h"
#include "core/CUndoStack.h"
#include "core/Class.h"
#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basMessage.h"
#include "player/CPlayer.h"
#include "player/CPreview.h"
#include "script/ITimingGrid.h"
#include "script/basScript.h"

namespace {

const QString crlf = QStringLiteral("\r\n");

void report(const char *key, const VelmarError *fault)
{
    QString text = Msg(QString::fromLatin1(key));
    if (fault)
        text += QStringLiteral(": ") + fault->Description();
    MsgBox(text);
}

} // namespace

CTiming::CTiming()
    : m_undoStack(std::make_unique<CUndoStack>())
{ }

CTiming::~CTiming() = default;

void CTiming::setChanged(bool changed)
{
    isub::setChanged(changed);
    if (!changed)
        m_undoStack->SetClean();
}

void CTiming::Init(qint32 SerialNo, QObject *Window)
{
    TimingWindow = Window;
    setSerialNo(SerialNo);
    setFileName(QString());
    TranslateWindow = nullptr;
    m_playerWindow = nullptr;
    ScriptInfo = Class::Make<CSubInfo>(this);
    SSAContent = Class::Make<CSSAContent>();
    SSAContent->setParent(this);
    Fonts = Class::MakeCollection<CFonts>();
    Formats.Init(this);
    Preview = Class::Make<CPreview>(static_cast<isub *>(this));
    setScriptType(ScriptType::ASS);
    TimingOption = SaveOption::Whole;
    setTimeFormat(0);
}

void CTiming::setScriptType(::ScriptType type)
{
    m_scriptType = type;
    ScriptInfo->setScriptType(type);
    Fonts->ScriptType = type;
    SSAContent->ScriptType = type;
}

void CTiming::setScriptSubType(qint32 subType)
{
    m_scriptSubType = subType;
    SSAContent->ScriptSubType = subType;
}

void CTiming::setTimeFormat(qint32 format)
{
    m_timeFormat = format;
    SSAContent->setTimeFormat(format);
}

std::optional<QSize> CTiming::VideoPictureSize() const
{
    const CPlayer *player = m_playerWindow ? m_playerWindow->player() : nullptr;
    if (!player)
        return std::nullopt;
    return QSize(player->ImageSourceWidth(), player->ImageSourceHeight());
}

void CTiming::setTimingTable(ITimingGrid *grid)
{
    TimingTable = grid;
    SSAContent->setSpreadSheet(grid);
}

void CTiming::Read(QStringView text)
{
    try {
        if (m_scriptType == ScriptType::DialogueText) {
            FillTextColumn(text);
            return;
        }
        readBody(text);
        setChanged(false);
    } catch (const VelmarError &fault) {
        report("TIMING_ERR_114", &fault);
    } catch (...) {
        report("TIMING_ERR_114", nullptr);
    }
}

// Each part scans the whole text for its own section.
void CTiming::readBody(QStringView text)
{
    switch (m_scriptType) {
    case ScriptType::Plain:
        SSAContent->Read(text);
        break;
    case ScriptType::SSA:
    case ScriptType::ASS:
        ScriptInfo->Read(text);
        Fonts->Read(text);
        SSAContent->Read(text);
        break;
    case ScriptType::SAMI:
    case ScriptType::SRT:
    case ScriptType::SMP:
    case ScriptType::LRC:
    case ScriptType::SST:
        Formats.ReadBody(m_scriptType, text);
        // The grid fills the events from the body when it loads; without one, here.
        if (!TimingTable)
            Formats.FillEvents();
        break;
    default:
        break;
    }
}

QString CTiming::Content()
{
    QString out;
    try {
        if (TimingTable)
            TimingTable->StoreGridToContent(*SSAContent);
        assembleBody(out);
    } catch (const VelmarError &fault) {
        report("TIMING_ERR_115", &fault);
    } catch (...) {
        report("TIMING_ERR_115", nullptr);
    }
    return out;
}

QString CTiming::ContentWith(::ScriptType type, qint32 subType, qint32 timingOption, qint32 timeFormat)
{
    const CScopeExit putBack([this, oldType = m_scriptType, oldSubType = m_scriptSubType,
                                 oldOption = TimingOption, oldFormat = m_timeFormat, oldChanged = Changed()] {
        setScriptType(oldType);
        setScriptSubType(oldSubType);
        TimingOption = oldOption;
        setTimeFormat(oldFormat);
        setChanged(oldChanged);
    });
    setScriptType(type);
    setScriptSubType(subType);
    TimingOption = timingOption;
    setTimeFormat(timeFormat);
    return Content();
}

void CTiming::assembleBody(QString &out)
{
    switch (m_scriptType) {
    case ScriptType::Plain:
        out += SSAContent->Content();
        break;
    case ScriptType::SSA:
    case ScriptType::ASS:
        if (TimingOption & SaveOption::Head)
            out += ScriptInfo->Content() + crlf;
        if (TimingOption & SaveOption::Styles)
            out += Fonts->Content() + crlf;
        SSAContent->SaveOption = TimingOption;
        out += SSAContent->Content();
        break;
    case ScriptType::DialogueText:
        out += StripOverrides(SSAContent->Dialog());
        break;
    case ScriptType::LRC: // the tags, then the converted lines
        out += ScriptInfo->Content();
        Formats.AssembleBody(m_scriptType, out);
        break;
    case ScriptType::SST: // the head, then the converted lines
        out += ScriptInfo->Content() + crlf;
        Formats.AssembleBody(m_scriptType, out);
        break;
    case ScriptType::SAMI:
    case ScriptType::SRT:
    case ScriptType::SMP:
        Formats.AssembleBody(m_scriptType, out);
        break;
    default:
        break;
    }
}

QString CTiming::TextColumn() const
{
    if (TimingTable)
        return TimingTable->TextColumn();
    QStringList lines;
    for (const CSSAContentLine *line : *SSAContent)
        lines << line->Dialog();
    return lines.join(crlf);
}

void CTiming::FillTextColumn(QStringView text)
{
    const QList<QStringView> lines = basScript::SplitLines(text);
    if (TimingTable) {
        QStringList column;
        column.reserve(qsizetype(lines.size()));
        for (QStringView line : lines)
            column << line.toString();
        TimingTable->FillTextColumn(column);
        return;
    }
    // Without a grid the event list stands in for it: one untimed line per text line.
    SSAContent->Clear();
    SSAContent->Reserve(qsizetype(lines.size()));
    for (QStringView line : lines)
        SSAContent->Create()->setDialog(line.toString());
}
