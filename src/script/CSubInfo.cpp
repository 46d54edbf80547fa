#include "script/CSubInfo.h"

#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basPlatform.h"
#include "core/basSetting.h"
#include "script/basScript.h"

using namespace basConvert;
using namespace basScript;

namespace {

const QString crlf = QStringLiteral("\r\n");

} // namespace

void CSubInfo::Init(ISubInfoHost *parentTiming)
{
    ParentTiming = parentTiming;
    SMIStyleType = QStringLiteral("text/css");
    SMIComment
        = QStringLiteral(
              "P {margin-left:8pt; margin-right:8pt;margin-bottom:2pt;margin-top:6pt;text-align:center;}")
        + crlf + QStringLiteral("#Normal {name:标准字型;font-family:Verdana;font-size:16pt;}");
    SSTHead.clear();
    m_originalTranslation.clear();
    m_originalEditing.clear();
    m_originalTiming.clear();
    m_synchPoint = 0;
    m_scriptUpdatedBy.clear();
    m_updateDetails.clear();
    m_playResX = m_playResY = 0;
    m_wrapStyle = 0;
    Clear();
    UpdateAVISize();
}

void CSubInfo::Clear()
{
    m_title = QStringLiteral("云帆字幕");
    m_originalScript = QStringLiteral("云帆字幕组");
    m_scriptType = ScriptType::ASS;
    m_collisions = 0;
    m_playDepth = 0;
    m_timer = 100;
    m_comment.clear();
    m_lrcName.clear();
    m_lrcArtist.clear();
    m_lrcCDName.clear();
    m_lrcEditor.clear();
    m_lrcOffset = 0;
    makeVelmarComment();
}

void CSubInfo::makeVelmarComment()
{
    // The contact and forum lines are the team's to choose: they come from the settings
    // store when set there.
    const QString contact = GetSetting(QStringLiteral("ScriptInfo"), QStringLiteral("ContactLine"),
        QStringLiteral("联系我们: 云帆字幕组时间轴小组"));
    const QString forum = GetSetting(QStringLiteral("ScriptInfo"), QStringLiteral("ForumLine"),
        QStringLiteral("欢迎光临云帆字幕组论坛，与我们一起做字幕"));
    m_velmarComment = QStringLiteral("此字幕由Velmar生成  ")
        + Now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + crlf
        + Msg(QStringLiteral("SUBINFO_MSG_103")) + u' ' + VersionNo + crlf + contact + crlf + forum + crlf;
}

QString CSubInfo::ScriptTypeName() const
{
    switch (m_scriptType) {
    case ScriptType::SSA:
        return QStringLiteral("SSA V4.00");
    case ScriptType::ASS:
        return QStringLiteral("AAS V4.00+");
    case ScriptType::SAMI:
        return QStringLiteral("SAMI");
    default:
        throw VelmarError::InvalidCall();
    }
}

QString CSubInfo::scriptTypeKey() const
{
    if (m_scriptType == ScriptType::SSA)
        return QStringLiteral("v4.00");
    if (m_scriptType == ScriptType::SAMI)
        return QStringLiteral("SAMI");
    return QStringLiteral("v4.00+");
}

QString CSubInfo::SubCollisionsName() const
{
    return m_collisions == 1 ? QStringLiteral("Reverse") : QStringLiteral("Normal");
}

void CSubInfo::UpdateAVISize()
{
    const std::optional<QSize> picture = ParentTiming ? ParentTiming->VideoPictureSize() : std::nullopt;
    if (!picture)
        return;
    m_playResX = picture->width();
    m_playResY = picture->height();
}

void CSubInfo::Read(QStringView text)
{
    Clear();
    m_comment.clear();
    const QList<QStringView> lines = SplitLines(text);
    const size_t n = lines.size();
    size_t i = 0;
    while (i < n && !lines[i].contains(u"[SCRIPT INFO]", Qt::CaseInsensitive))
        ++i;
    for (++i; i < n; ++i) {
        const QStringView s = LTrimView(lines[i]);
        if (s.startsWith(u';') || s.startsWith(u"!:")) {
            const QStringView x = s.sliced(s.startsWith(u';') ? 1 : 2);
            // "//" lines are the generated ones: a fresh set is written at each save.
            if (LTrimView(x).startsWith(u"//"))
                continue;
            if (!m_comment.isEmpty())
                m_comment += crlf;
            m_comment += x;
            continue;
        }
        if (s.startsWith(u'['))
            return;
        const qsizetype colon = s.indexOf(u':');
        if (colon < 0)
            continue;
        const QString key = TrimView(s.left(colon)).toString().toUpper();
        const QStringView value = s.sliced(colon + 1);
        try {
            if (key == u"TITLE")
                m_title = value.toString();
            else if (key == u"ORIGINAL SCRIPT")
                m_originalScript = value.toString();
            else if (key == u"ORIGINAL TRANSLATION")
                m_originalTranslation = value.toString();
            else if (key == u"ORIGINAL EDITING")
                m_originalEditing = value.toString();
            else if (key == u"ORIGINAL TIMING")
                m_originalTiming = value.toString();
            else if (key == u"SYNCH POINT")
                m_synchPoint = CDbl(value);
            else if (key == u"SCRIPT UPDATED BY")
                m_scriptUpdatedBy = value.toString();
            else if (key == u"UPDATE DETAILS")
                m_updateDetails = value.toString();
            else if (key == u"SCRIPTTYPE")
                m_scriptType = TrimView(value) == u"v4.00+" ? ScriptType::ASS : ScriptType::SSA;
            else if (key == u"COLLISIONS")
                m_collisions = EqualsUpper(TrimView(value), u"REVERSE") ? 1 : 0;
            else if (key == u"PLAYRESX")
                m_playResX = CDbl(value);
            else if (key == u"PLAYRESY")
                m_playResY = CDbl(value);
            else if (key == u"PLAYDEPTH")
                m_playDepth = CDbl(value);
            else if (key == u"TIMER")
                m_timer = CDbl(value);
            else if (key == u"WRAPSTYLE")
                m_wrapStyle = CInt(value);
        } catch (const VelmarError &) { }
    }
}

QString CSubInfo::Content()
{
    QString out;
    switch (m_scriptType) {
    case ScriptType::SSA:
    case ScriptType::ASS: {
        out += QStringLiteral("[Script Info]") + crlf;
        if (!m_comment.isEmpty())
            for (QStringView line : QStringView(m_comment).split(crlf))
                out += QStringLiteral("; ") + line.toString() + crlf;
        makeVelmarComment();
        for (QStringView line : QStringView(m_velmarComment).split(crlf))
            if (!line.isEmpty())
                out += QStringLiteral("; // ") + line.toString() + crlf;
        const QString unset = Msg(QStringLiteral("SUBINFO_MSG_106"));
        out += (Trim(m_title).isEmpty() ? QStringLiteral("Title: ") + unset
                                        : QStringLiteral("Title:") + m_title)
            + crlf;
        out += (Trim(m_originalScript).isEmpty() ? QStringLiteral("Original Script: ") + unset
                                                 : QStringLiteral("Original Script:") + m_originalScript)
            + crlf;
        auto optional = [&](const char16_t *name, const QString &value) {
            if (!Trim(value).isEmpty())
                out += QString::fromUtf16(name) + value + crlf;
        };
        optional(u"Original Translation:", m_originalTranslation);
        optional(u"Original Editing:", m_originalEditing);
        optional(u"Original Timing:", m_originalTiming);
        out += QStringLiteral("Synch Point:") + CStr(m_synchPoint) + crlf;
        optional(u"Script Updated By:", m_scriptUpdatedBy);
        optional(u"Update Details:", m_updateDetails);
        out += QStringLiteral("ScriptType:") + scriptTypeKey() + crlf;
        out += QStringLiteral("Collisions:") + SubCollisionsName() + crlf;
        if (m_playResX != 0)
            out += QStringLiteral("PlayResX:") + CStr(m_playResX) + crlf;
        if (m_playResY != 0)
            out += QStringLiteral("PlayResY:") + CStr(m_playResY) + crlf;
        if (m_playDepth != 0)
            out += QStringLiteral("PlayDepth:") + CStr(m_playDepth) + crlf;
        out += QStringLiteral("Timer:") + Format(m_timer, u"000.0000") + crlf;
        out += QStringLiteral("WrapStyle:") + QString::number(m_wrapStyle) + crlf;
        break;
    }
    case ScriptType::SAMI:
        out += QStringLiteral("<HEAD>") + crlf + QStringLiteral("<TITLE>") + m_title
            + QStringLiteral("</TITLE>") + crlf + QStringLiteral("<!--") + crlf;
        makeVelmarComment();
        for (QStringView line : QStringView(m_velmarComment).split(crlf))
            if (!line.isEmpty())
                out += QStringLiteral("; // ") + line.toString() + crlf;
        // No "=" after "type": the head is kept exactly as it has always been written.
        out += QStringLiteral("-->") + crlf + QStringLiteral("<STYLE type\"") + SMIStyleType
            + QStringLiteral("\">") + crlf + QStringLiteral("<!--") + crlf + SMIComment + crlf
            + QStringLiteral("-->") + crlf + QStringLiteral("</STYLE>") + crlf + QStringLiteral("</HEAD>")
            + crlf;
        break;
    case ScriptType::LRC:
        if (!m_lrcName.isEmpty())
            out += QStringLiteral("[ti:") + m_lrcName + QStringLiteral("]") + crlf;
        if (!m_lrcArtist.isEmpty())
            out += QStringLiteral("[ar:") + m_lrcArtist + QStringLiteral("]") + crlf;
        if (!m_lrcCDName.isEmpty())
            out += QStringLiteral("[al:") + m_lrcCDName + QStringLiteral("]") + crlf;
        if (!m_lrcEditor.isEmpty())
            out += QStringLiteral("[by:") + m_lrcEditor + QStringLiteral("]") + crlf;
        if (m_lrcOffset != 0)
            out += QStringLiteral("[offset:") + CStr(m_lrcOffset) + QStringLiteral("]") + crlf;
        break;
    case ScriptType::SST:
        out = SSTHead;
        break;
    default:
        break;
    }
    return out;
}
