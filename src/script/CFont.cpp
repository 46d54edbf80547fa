#include "script/CFont.h"

#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basTime.h"
#include "script/CFonts.h"
#include "script/basScript.h"

#include <functional>

using namespace basConvert;
using basScript::TrimView;

namespace {

// SSA position numbers and their ASS keypad numbers, in the same order.
constexpr int ssaNumbers[] = { 1, 2, 3, 5, 6, 7, 9, 10, 11 };
constexpr int assNumbers[] = { 1, 2, 3, 7, 8, 9, 4, 5, 6 };

} // namespace

QString SSAAlignToASS(const QString &ssa)
{
    for (int i = 0; i < 9; ++i)
        if (ssa == QString::number(ssaNumbers[i]))
            return QString::number(assNumbers[i]);
    return QString();
}

QString ASSAlignToSSA(qint32 ass)
{
    for (int i = 0; i < 9; ++i)
        if (ass == assNumbers[i])
            return QString::number(ssaNumbers[i]);
    return QString();
}

void CFont::Init(const QString &StyleName)
{
    Comment.clear();
    OriginalStyleName.clear();
    PrimaryAlpha = 0;
    SecondaryAlpha = 240;
    OutlineAlpha = 0;
    BackAlpha = 240;
    ErrNumber = 0;
    m_styleName = StyleName;
    m_fontName = QStringLiteral("楷体");
    m_fontSize = 25;
    m_primary = 16777215;
    m_secondary = m_tertiary = m_outline = m_back = 0;
    m_bold = 1;
    m_italic = m_underLine = m_strikeOut = 0;
    m_scaleX = m_scaleY = 100;
    m_spacing = 0;
    m_angle = 0;
    m_borderStyle = 1;
    m_outlineWidth = 1;
    m_shadow = 0;
    m_alignment = 2;
    m_marginL = m_marginR = 30;
    m_marginV = 10;
    m_alphaLevel = 0;
    m_encoding = 134;
}

void CFont::setParent(CFonts *parent)
{
    m_parent = parent;
    m_expectedFields = parent && parent->ScriptType == ScriptType::ASS ? 22 : 16;
}

::ScriptType CFont::ScriptType() const
{
    return m_parent ? m_parent->ScriptType : ::ScriptType::ASS;
}

void CFont::setColour(QStringView value, qint32 &colour, qint32 *alpha)
{
    qint32 v = 0;
    try {
        v = CLng(value);
    } catch (const VelmarError &) {
        return;
    }
    const quint32 bits = quint32(v);
    colour = qint32(bits & 0xFFFFFFu);
    if (alpha)
        *alpha = qint32((bits >> 24) & 0xFFu);
}

QString CFont::Angle() const
{
    return Format(m_angle, u"0.00");
}

void CFont::setAngle(QStringView value)
{
    try {
        m_angle = CDbl(value);
    } catch (const VelmarError &) { }
}

void CFont::Parse(QStringView s)
{
    ErrNumber = 0;
    if (TrimView(s).isEmpty()) {
        ErrNumber = 1;
        return;
    }
    if (TrimView(s).left(5).compare(u"STYLE", Qt::CaseInsensitive) != 0) {
        ErrNumber = 2;
        return;
    }
    const qsizetype colon = s.indexOf(u':');
    if (colon < 0) {
        ErrNumber = 3;
        return;
    }
    const QList<QStringView> parts = s.sliced(colon + 1).split(u',');
    const qsizetype highest = parts.size() - 1;
    if (highest < m_expectedFields) {
        ErrNumber = 4;
        return;
    }
    OriginalStyleName.clear();
    const ::ScriptType type = ScriptType();
    qsizetype i = -1;
    // Each field on its own: a value that does not convert leaves the field as it was.
    auto next = [&](const std::function<void(QStringView)> &assign) {
        ++i;
        if (i > highest)
            return;
        try {
            assign(TrimView(parts[i]));
        } catch (const VelmarError &) { }
    };
    auto int16 = [&](qint16 &target) { next([&](QStringView v) { target = CInt(v); }); };
    auto dbl = [&](double &target) { next([&](QStringView v) { target = CDbl(v); }); };

    next([&](QStringView v) { m_styleName = v.toString(); });
    next([&](QStringView v) { m_fontName = v.toString(); });
    int16(m_fontSize);
    next([&](QStringView v) { setPrimaryColour(v); });
    next([&](QStringView v) { setSecondaryColour(v); });
    if (type == ::ScriptType::SSA)
        next([&](QStringView v) { setTertiaryColour(v); });
    else
        next([&](QStringView v) { setOutlineColor(v); });
    next([&](QStringView v) { setBackColour(v); });
    int16(m_bold);
    int16(m_italic);
    if (type == ::ScriptType::ASS) {
        int16(m_underLine);
        int16(m_strikeOut);
        dbl(m_scaleX);
        dbl(m_scaleY);
        dbl(m_spacing);
        next([&](QStringView v) { setAngle(v); });
    }
    int16(m_borderStyle);
    int16(m_outlineWidth);
    int16(m_shadow);
    if (type == ::ScriptType::SSA)
        next([&](QStringView v) { m_alignment = CInt(SSAAlignToASS(v.toString())); });
    else
        int16(m_alignment);
    dbl(m_marginL);
    dbl(m_marginR);
    dbl(m_marginV);
    // A 17-field SSA line has no AlphaLevel: its last field is the encoding.
    if (type == ::ScriptType::SSA && i + 1 < highest)
        int16(m_alphaLevel);
    dbl(m_encoding);
}

QString CFont::Content()
{
    QString out;
    if (!Comment.isEmpty()) {
        for (QStringView line : QStringView(Comment).split(u"\r\n")) {
            out += u';';
            out += line;
            out += u"\r\n";
        }
    }
    const bool ssa = ScriptType() == ::ScriptType::SSA;
    const QChar comma = u',';
    out += u"Style: ";
    out += m_styleName + comma + m_fontName + comma + QString::number(m_fontSize) + comma;
    if (ssa) {
        for (qint32 c : { m_primary, m_secondary, m_tertiary, m_back })
            out += ColourToHex(c) + comma;
    } else {
        out += ColourToHex(m_primary, PrimaryAlpha) + comma;
        out += ColourToHex(m_secondary, SecondaryAlpha) + comma;
        out += ColourToHex(m_outline, OutlineAlpha) + comma;
        out += ColourToHex(m_back, BackAlpha) + comma;
    }
    out += QString::number(m_bold) + comma + QString::number(m_italic) + comma;
    if (!ssa) {
        out += QString::number(m_underLine) + comma + QString::number(m_strikeOut) + comma;
        out += CStr(m_scaleX) + comma + CStr(m_scaleY) + comma + CStr(m_spacing) + comma + Angle() + comma;
    }
    out += QString::number(m_borderStyle) + comma + QString::number(m_outlineWidth) + comma
        + QString::number(m_shadow) + comma;
    out += (ssa ? ASSAlignToSSA(m_alignment) : QString::number(m_alignment)) + comma;
    out += CStr(m_marginL) + comma + CStr(m_marginR) + comma + CStr(m_marginV) + comma;
    if (ssa)
        out += QString::number(m_alphaLevel) + comma;
    out += CStr(m_encoding);
    return out;
}
