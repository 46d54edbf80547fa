#include "script/CSSAContent.h"

#include "core/Class.h"
#include "core/IPrompt.h"
#include "core/basMessage.h"
#include "script/basScript.h"

using namespace basScript;

namespace {

const QString flagWords[3] = { QStringLiteral("下一行已被修改"), QStringLiteral("下一行有疑问"),
    QStringLiteral("下一行不需要检查时间轴") };

// A generated comment line that speaks of the next line: "// Velmar注释: ..." at time 0.
bool isFlagLine(const CSSAContentLine &line)
{
    const QString &dialog = line.Dialog();
    return LTrimView(dialog).startsWith(u"//") && dialog.contains(u"VELMAR注释", Qt::CaseInsensitive)
        && line.StartTime() == 0 && line.EndTime() == 0;
}

} // namespace

void CSSAContent::Init()
{
    ScriptType = ::ScriptType::SSA;
    SaveOption = ::SaveOption::Whole;
    m_lines.Clear();
}

void CSSAContent::setTimeFormat(qint32 format)
{
    m_timeFormat = format;
    for (CSSAContentLine *line : m_lines)
        line->TimeFormat = format;
}

CSSAContentLine *CSSAContent::adopt(std::unique_ptr<CSSAContentLine> line)
{
    line->setSerialNo(m_counter + 1);
    line->setParent(this);
    CSSAContentLine *raw = m_lines.AddNew(QString::number(m_counter + 1), std::move(line));
    ++m_counter;
    if (ContentLineCreated)
        ContentLineCreated(raw);
    return raw;
}

CSSAContentLine *CSSAContent::Create()
{
    return adopt(Class::Make<CSSAContentLine>(m_counter + 1));
}

CSSAContentLine *CSSAContent::Add(std::unique_ptr<CSSAContentLine> line)
{
    if (!line)
        return nullptr;
    return adopt(std::move(line));
}

void CSSAContent::Delete(const QString &key)
{
    m_lines.Remove(key);
    if (ContentLineDestroyed)
        ContentLineDestroyed(key);
}

bool CSSAContent::Exists(const QString &key) const
{
    return m_lines.Exists(key);
}

void CSSAContent::Clear()
{
    m_lines.Clear();
}

QString CSSAContent::Dialog() const
{
    QString out;
    qsizetype size = 0;
    for (const CSSAContentLine *line : m_lines)
        size += line->Dialog().size() + 2;
    out.reserve(size);
    for (const CSSAContentLine *line : m_lines) {
        out += line->Dialog();
        out += u"\r\n";
    }
    return out;
}

std::unique_ptr<CSSAContent> CSSAContent::DuplicateSSA() const
{
    auto copy = Class::Make<CSSAContent>();
    copy->ScriptType = ScriptType;
    copy->ScriptSubType = ScriptSubType;
    copy->Dirty = Dirty;
    copy->setParent(m_parent);
    copy->PlayerWindow = PlayerWindow;
    copy->SaveOption = SaveOption;
    copy->setSpreadSheet(m_spreadSheet);
    copy->setTimeFormat(m_timeFormat);
    copy->Reserve(Count());
    // The order of copying is part of the behaviour: the time strings come after the
    // times and go through the strict parser, and the offset comes last.
    for (const CSSAContentLine *src : m_lines) {
        auto line = Class::Make<CSSAContentLine>(0);
        line->setParent(copy.get());
        line->TimeFormat = src->TimeFormat;
        line->Blank = src->Blank;
        line->setDialog(src->Dialog());
        line->setEffectName(src->EffectName());
        line->setEffect(src->Effect());
        line->setEffectDelay(src->EffectDelay());
        line->setEffectFade(src->EffectFade());
        line->setEffectLeftToRight(src->EffectLeftToRight());
        line->setEffectY1(src->EffectY1());
        line->setEffectY2(src->EffectY2());
        line->setEndTime(src->EndTime());
        line->setEndTimeString(src->EndTimeString());
        line->ErrNumber = src->ErrNumber;
        line->setLayer(src->Layer());
        line->LineType = src->LineType;
        line->m_Changed = src->m_Changed;
        line->m_DisableCheckTiming = src->m_DisableCheckTiming;
        line->m_IsComment = src->m_IsComment;
        line->m_Question = src->m_Question;
        line->setMarginL(src->MarginL());
        line->setMarginR(src->MarginR());
        line->setMarginV(src->MarginV());
        line->setMarked(src->Marked());
        line->setOwner(src->Owner());
        line->setParent(src->Parent());
        line->setStartTime(src->StartTime());
        line->setStartTimeString(src->StartTimeString());
        line->setStyle(src->Style());
        line->ForcePosition = src->ForcePosition;
        line->Displayed = src->Displayed;
        line->DisplayX = src->DisplayX;
        line->DisplayY = src->DisplayY;
        line->DisplayHeight = src->DisplayHeight;
        line->DisplayWidth = src->DisplayWidth;
        line->setTimeOffset(src->TimeOffset());
        const isub &view = *src;
        line->setChanged(view.Changed());
        line->setFileName(view.FileName());
        line->setSerialNo(view.SerialNo());
        copy->adopt(std::move(line));
    }
    return copy;
}

void CSSAContent::Read(QStringView text)
{
    Clear();
    const QList<QStringView> lines = SplitLines(text);
    const qsizetype n = qsizetype(lines.size());
    qsizetype i = 0;
    for (; i < n; ++i) {
        CheckLineIndex(i);
        if (EqualsUpper(TrimView(lines[size_t(i)]), u"[EVENTS]"))
            break;
    }
    // The format line's columns are not used: the field order is fixed.
    for (++i; i < n; ++i) {
        CheckLineIndex(i);
        if (StartsWithUpper(LTrimView(lines[size_t(i)]), u"FORMAT"))
            break;
    }
    if (i >= n)
        return;
    m_lines.Reserve(n - i);
    bool pending[3] = { false, false, false };
    for (++i; i < n; ++i) {
        CheckLineIndex(i);
        const QStringView raw = lines[size_t(i)];
        auto line = Class::Make<CSSAContentLine>(m_counter + 1);
        line->setParent(this);
        line->Parse(raw);
        if (line->ErrNumber != 0) {
            const QString question
                = Msg(QStringLiteral("TIMING_ERR_104")) + QStringLiteral(":\r\n") + raw.toString();
            if (MsgBox(question, MsgBoxStyle::YesNo) == MsgBoxResult::No)
                return;
            continue;
        }
        if (isFlagLine(*line)) {
            for (int k = 0; k < 3; ++k)
                pending[k] = pending[k] || line->Dialog().contains(flagWords[k], Qt::CaseInsensitive);
            continue;
        }
        line->m_Changed = pending[0];
        line->m_Question = pending[1];
        line->m_DisableCheckTiming = pending[2];
        pending[0] = pending[1] = pending[2] = false;
        adopt(std::move(line));
    }
}

QString CSSAContent::Content()
{
    const bool ssa = ScriptType == ::ScriptType::SSA;
    QString out;
    qsizetype size = 128;
    for (const CSSAContentLine *line : m_lines)
        size += line->Dialog().size() + 96;
    out.reserve(size);
    if (SaveOption & ::SaveOption::OtherColumns) {
        out += u"[Events]\r\n";
        out += ssa ? u"Format: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text"
                   : u"Format: Layer, Start, End, Style, Actor, MarginL, MarginR, MarginV, Effect, Text";
        out += u"\r\n";
    }
    for (const CSSAContentLine *line : m_lines) {
        const qsizetype before = out.size();
        if (line->m_Changed || line->m_Question || line->m_DisableCheckTiming) {
            out += ssa
                ? u"Comment: Marked=0,0:00:00.00,0:00:00.00,Default,Velmar,0000,0000,0000,,// Velmar注释: "
                : u"Comment: 0,0:00:00.00,0:00:00.00,Default,Velmar,0000,0000,0000,,// Velmar注释: ";
            if (line->m_Changed)
                out += u"下一行已被修改 ";
            if (line->m_Question)
                out += u"下一行有疑问 ";
            if (line->m_DisableCheckTiming)
                out += u"下一行不需要检查时间轴 ";
            out += u"\r\n";
        }
        const qsizetype textStart = out.size();
        line->AppendContent(out);
        if (out.size() == textStart)
            out.truncate(before); // the flag line of an empty line is dropped
        out += u"\r\n";
    }
    return out;
}
