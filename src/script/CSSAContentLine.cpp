#include "script/CSSAContentLine.h"

#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "script/CSSAContent.h"
#include "script/SaveOption.h"
#include "script/basScript.h"

using namespace basScript;

namespace {

const QString &zeroText()
{
    static const QString s = QStringLiteral("0");
    return s;
}

// The fields of consecutive lines repeat (styles, speakers, margins): handing out the
// previous string when the text is the same saves an allocation per field.
const QString &intern(QStringView text, QString &cache)
{
    if (cache.size() != text.size() || QStringView(cache) != text)
        cache = text.toString();
    return cache;
}

// A 16-bit number from text the way an implicit Basic conversion reads it; raises
// type mismatch or overflow.
qint16 toInteger(QStringView text)
{
    const QStringView t = TrimView(text);
    if (t.size() > 0 && t.size() <= 4) {
        int v = 0;
        bool ok = true;
        for (QChar c : t) {
            if (c < u'0' || c > u'9') {
                ok = false;
                break;
            }
            v = v * 10 + (c.unicode() - u'0');
        }
        if (ok)
            return qint16(v);
    }
    return basConvert::CInt(text);
}

} // namespace

QString StripOverrides(const QString &text)
{
    if (!text.contains(u'\\'))
        return text;
    QString out;
    const qsizetype m = AppendWithoutOverrideBlocks(out, text);
    // "\n", "\N" and "\h" become blanks. Two such pairs never overlap and a blank never
    // makes a new one, so one pass gives what three replacements in turn would.
    qsizetype w = 0;
    QChar *data = out.data();
    for (qsizetype r = 0; r < m; ++r) {
        if (data[r] == u'\\' && r + 1 < m
            && (data[r + 1] == u'n' || data[r + 1] == u'N' || data[r + 1] == u'h')) {
            data[w++] = u' ';
            ++r;
        } else {
            data[w++] = data[r];
        }
    }
    out.truncate(w);
    return out;
}

void CSSAContentLine::Init(qint32 SerialNo)
{
    setSerialNo(SerialNo);
    m_marked = 0;
    m_layer = 0;
    m_startTime = 0;
    m_endTime = 0;
    m_style = Names().DefaultStyle;
    m_owner = Names().DefaultOwner;
    m_marginL = zeroText();
    m_marginR = zeroText();
    m_marginV = zeroText();
    m_effectName.clear();
    m_effectY1 = m_effectY2 = m_effectDelay = m_effectFade = m_effectLeftToRight = 0;
    setDialog(QString());
    m_timeOffset = 0;
    ErrNumber = 0;
    DisplayX = DisplayY = DisplayHeight = DisplayWidth = 0;
}

double CSSAContentLine::StartTime() const
{
    const double t = m_startTime + m_timeOffset;
    return t < 0 ? 0 : t;
}

void CSSAContentLine::setStartTime(double seconds)
{
    m_startTime = seconds < 0 ? 0 : seconds;
}

double CSSAContentLine::EndTime() const
{
    const double t = m_endTime + m_timeOffset;
    return t < 0 ? 0 : t;
}

void CSSAContentLine::setEndTime(double seconds)
{
    m_endTime = seconds < 0 ? 0 : seconds;
}

QString CSSAContentLine::timeString(double seconds) const
{
    const QString full = TimeToString(seconds, 2);
    switch (TimeFormat) {
    case 1:
        return full.left(9) + QLatin1Char('0');
    case 2:
        return full.left(7);
    case 3:
        return basConvert::Mid(full, 3, 5);
    default:
        return full;
    }
}

void CSSAContentLine::appendTimeString(QString &out, double seconds) const
{
    if (TimeFormat == 0 || TimeFormat > 3 || TimeFormat < 0)
        AppendTimeString(out, seconds, 2);
    else
        out += timeString(seconds);
}

QString CSSAContentLine::StartTimeString() const
{
    return timeString(StartTime());
}

void CSSAContentLine::setStartTimeString(QStringView text)
{
    setStartTime(FastStringToTime(text));
}

QString CSSAContentLine::EndTimeString() const
{
    return timeString(EndTime());
}

void CSSAContentLine::setEndTimeString(QStringView text)
{
    setEndTime(FastStringToTime(text));
}

QString CSSAContentLine::Style() const
{
    if (TrimView(m_style).isEmpty())
        return Names().StarDefault;
    return m_style;
}

QString CSSAContentLine::checkedMargin(const QString &value)
{
    const qsizetype n = value.size();
    bool digits = n > 0 && n <= 4;
    for (qsizetype i = 0; digits && i < n; ++i)
        digits = value[i] >= u'0' && value[i] <= u'9';
    if (digits)
        return value;
    try {
        if (basConvert::IsNumeric(value)) {
            const double v = basConvert::CDbl(value);
            if (v >= 0 && v <= 9999)
                return value;
        }
    } catch (const VelmarError &) { }
    return zeroText();
}

QString CSSAContentLine::Effect() const
{
    if (m_effectName == Names().Karaoke)
        return m_effectName;
    using basConvert::CStr;
    const QChar sep = u';';
    if (m_effectName == Names().ScrollUp || m_effectName == Names().ScrollDown)
        return m_effectName + sep + CStr(qint64(m_effectY1)) + sep + CStr(qint64(m_effectY2)) + sep
            + CStr(qint64(m_effectDelay)) + sep + CStr(qint64(m_effectFade));
    if (m_effectName == Names().Banner)
        return m_effectName + sep + CStr(qint64(m_effectDelay)) + sep + CStr(qint64(m_effectLeftToRight))
            + sep + CStr(qint64(m_effectFade));
    return QString();
}

void CSSAContentLine::setEffect(QStringView value)
{
    if (TrimView(value).isEmpty()) {
        m_effectName.clear();
        return;
    }
    const QList<QStringView> parts = value.split(u';');
    m_effectName = TrimView(parts[0]).toString();
    auto field = [&parts](qsizetype i, qint16 &target) {
        if (i >= parts.size())
            return;
        try {
            target = toInteger(parts[i]);
        } catch (const VelmarError &) { }
    };
    if (m_effectName == Names().ScrollUp || m_effectName == Names().ScrollDown) {
        field(1, m_effectY1);
        field(2, m_effectY2);
        field(3, m_effectDelay);
        field(4, m_effectFade);
    } else if (m_effectName == Names().Banner) {
        field(1, m_effectDelay);
        field(2, m_effectLeftToRight);
        field(3, m_effectFade);
    }
}

void CSSAContentLine::setDialog(const QString &value)
{
    m_dialog = value;
    m_dialogText.clear();
    m_dialogTextMade = false;
}

const QString &CSSAContentLine::DialogText() const
{
    if (!m_dialogTextMade) {
        m_dialogText = StripOverrides(m_dialog);
        m_dialogTextMade = true;
    }
    return m_dialogText;
}

::ScriptType CSSAContentLine::ScriptType() const
{
    return m_parent ? m_parent->ScriptType : ::ScriptType::ASS;
}

qint32 CSSAContentLine::SaveOption() const
{
    return m_parent ? m_parent->SaveOption : ::SaveOption::Whole;
}

void CSSAContentLine::fail()
{
    ErrNumber = -1;
    MsgBox(Msg(QStringLiteral("TIMING_ERR_106")) + QStringLiteral(": 可能时间轴格式不符合所选者的文件格式"));
}

void CSSAContentLine::Parse(QStringView s)
{
    ErrNumber = 0;
    const QStringView trimmed = TrimView(s);
    if (trimmed.isEmpty()) {
        Blank = true;
        return;
    }
    // A bare comment: the mark is cut in the untrimmed text.
    if (trimmed.startsWith(u';') || trimmed.startsWith(u"!:")) {
        const qsizetype cut = trimmed.startsWith(u';') ? 1 : 2;
        m_IsComment = true;
        LineType = 1;
        setDialog(s.size() > cut ? s.sliced(cut).toString() : QString());
        return;
    }
    const qsizetype colon = s.indexOf(u':');
    if (colon < 0) {
        ErrNumber = 3;
        return;
    }
    const QStringView word = TrimView(s.left(colon));
    if (word.compare(u"Dialogue", Qt::CaseInsensitive) == 0)
        LineType = 0;
    else if (word.compare(u"Comment", Qt::CaseInsensitive) == 0)
        LineType = 1;
    else
        LineType = LineTypeFromName(word);

    // The fields behind the colon, split at every comma; the text is whatever follows
    // the ninth comma, commas included.
    const QStringView rest = s.sliced(colon + 1);
    // The fields are short: one pass over the characters finds the commas sooner than a
    // search started anew for each.
    qsizetype commas[9];
    int found = 0;
    const QChar *chars = rest.data();
    for (qsizetype at = 0, n = rest.size(); at < n && found < 9; ++at)
        if (chars[at] == u',')
            commas[found++] = at;
    if (found < 8) {
        ErrNumber = 5;
        return;
    }
    auto part = [&](int k) {
        const qsizetype from = k == 0 ? 0 : commas[k - 1] + 1;
        const qsizetype to = k < found ? commas[k] : rest.size();
        return rest.sliced(from, to - from);
    };

    thread_local QString styleCache, ownerCache, marginCache[3];
    try {
        const QStringView first = part(0);
        if (ScriptType() == ::ScriptType::SSA) {
            const qsizetype eq = first.indexOf(u'=');
            m_marked = toInteger(eq < 0 ? first : first.sliced(eq + 1));
        } else {
            m_layer = toInteger(TrimView(first));
        }
        setStartTimeString(TrimView(part(1)));
        setEndTimeString(TrimView(part(2)));
        const QStringView style = TrimView(part(3));
        m_style = style == Names().DefaultStyle ? Names().StarDefault : intern(style, styleCache);
        m_owner = intern(TrimView(part(4)), ownerCache);
        m_marginL = checkedMargin(intern(TrimView(part(5)), marginCache[0]));
        m_marginR = checkedMargin(intern(TrimView(part(6)), marginCache[1]));
        m_marginV = checkedMargin(intern(TrimView(part(7)), marginCache[2]));
        setEffect(TrimView(part(8)));
        if (found == 9)
            setDialog(rest.sliced(commas[8] + 1).toString());
    } catch (...) {
        fail();
    }
}

QString CSSAContentLine::Content()
{
    QString out;
    AppendContent(out);
    return out;
}

void CSSAContentLine::AppendContent(QString &out) const
{
    if (Blank || (m_dialog.isEmpty() && StartTime() == 0 && EndTime() == 0))
        return;
    const qint32 mask = SaveOption();
    const bool ssa = ScriptType() == ::ScriptType::SSA;
    if (mask & ::SaveOption::OtherColumns) {
        out += LineTypeName(LineType);
        out += u": ";
        if (ssa) {
            out += u"Marked=";
            out += QString::number(m_marked);
        } else if (m_layer >= 0 && m_layer < 10) {
            out += QChar(u'0' + m_layer);
        } else {
            out += QString::number(m_layer);
        }
        out += u',';
    }
    if (mask & ::SaveOption::StartTime) {
        appendTimeString(out, StartTime());
        out += u',';
    }
    if (mask & ::SaveOption::EndTime) {
        appendTimeString(out, EndTime());
        out += u',';
    }
    if (mask & ::SaveOption::OtherColumns) {
        if (TrimView(m_style).isEmpty())
            out += Names().StarDefault;
        else
            out += m_style;
        out += u',';
        out += m_owner;
        out += u',';
        AppendPattern0000(out, m_marginL);
        out += u',';
        AppendPattern0000(out, m_marginR);
        out += u',';
        AppendPattern0000(out, m_marginV);
        out += u',';
        if (!m_effectName.isEmpty())
            AppendPattern0000(out, Effect());
        out += u',';
    }
    if (mask & ::SaveOption::Dialog)
        out += (mask & ::SaveOption::DialogTags) ? m_dialog : DialogText();
}
