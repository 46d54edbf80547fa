#include "script/CFonts.h"

#include "core/Class.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "script/basScript.h"

using namespace basScript;

void CFonts::Init()
{
    ScriptType = ::ScriptType::ASS;
    m_fonts.Clear();
    Create(basScript::Names().DefaultStyle);
}

CFont *CFonts::Create(const QString &StyleName)
{
    auto font = Class::Make<CFont>(StyleName);
    font->setParent(this);
    CFont *raw = m_fonts.Add(StyleName, std::move(font));
    ++m_counter;
    if (FontCreated)
        FontCreated(StyleName);
    return raw;
}

CFont *CFonts::Add(std::unique_ptr<CFont> font)
{
    if (!font)
        return nullptr;
    try {
        font->setParent(this);
        bool sameName = false;
        for (const CFont *present : m_fonts) {
            if (present->StyleName() != font->StyleName())
                continue;
            sameName = true;
            if (IsSameFont(*present, *font)) {
                MsgBox(QStringLiteral("加入字体错误: 已存在完全相同的字体[") + font->StyleName() + u']');
                return nullptr;
            }
        }
        if (sameName) {
            font->OriginalStyleName = font->StyleName();
            font->setStyleName(font->StyleName() + u'(' + basConvert::CStr(qint64(m_counter)) + u')');
            MsgBox(QStringLiteral("加入字体警告: 已存在相同名字的字体,自动改名后加入[") + font->StyleName()
                + u']');
        }
        const QString name = font->StyleName();
        CFont *raw = m_fonts.Add(name, std::move(font));
        ++m_counter;
        if (FontCreated)
            FontCreated(name);
        return raw;
    } catch (const VelmarError &) {
        return nullptr;
    }
}

void CFonts::Delete(const QString &key)
{
    if (m_fonts.Take(key) && FontDestroyed)
        FontDestroyed(key);
}

QString CFonts::GetOriginalStyleName(const QString &key) const
{
    const CFont *font = m_fonts.Find(key);
    return font ? font->OriginalStyleName : QString();
}

bool CFonts::IsSameFont(const CFont &a, const CFont &b)
{
    return a.FontName() == b.FontName() && a.FontSize() == b.FontSize()
        && a.PrimaryColourValue() == b.PrimaryColourValue()
        && a.SecondaryColourValue() == b.SecondaryColourValue()
        && a.TertiaryColourValue() == b.TertiaryColourValue() && a.BackColourValue() == b.BackColourValue()
        && a.Bold() == b.Bold() && a.Italic() == b.Italic() && a.BorderStyle() == b.BorderStyle()
        && a.Outline() == b.Outline() && a.Shadow() == b.Shadow() && a.Alignment() == b.Alignment()
        && a.MarginL() == b.MarginL() && a.MarginR() == b.MarginR() && a.MarginV() == b.MarginV()
        && a.AlphaLevel() == b.AlphaLevel() && a.Encoding() == b.Encoding();
}

std::unique_ptr<CFont> CFonts::CopyFont(const CFont &src)
{
    auto copy = Class::Make<CFont>(src.StyleName());
    copy->OriginalStyleName = src.OriginalStyleName;
    copy->Comment = src.Comment;
    copy->setFontName(src.FontName());
    copy->setFontSize(src.FontSize());
    // The colour setters also set the alphas, so the alphas are copied after them.
    copy->setPrimaryColour(src.PrimaryColour());
    copy->setSecondaryColour(src.SecondaryColour());
    copy->setOutlineColor(src.OutlineColor());
    copy->setBackColour(src.BackColour());
    copy->PrimaryAlpha = src.PrimaryAlpha;
    copy->SecondaryAlpha = src.SecondaryAlpha;
    copy->OutlineAlpha = src.OutlineAlpha;
    copy->BackAlpha = src.BackAlpha;
    copy->setBold(src.Bold());
    copy->setItalic(src.Italic());
    copy->setUnderLine(src.UnderLine());
    copy->setStrikeOut(src.StrikeOut());
    copy->setScaleX(src.ScaleX());
    copy->setScaleY(src.ScaleY());
    copy->setSpacing(src.Spacing());
    copy->setAngle(basConvert::CStr(src.AngleValue()));
    copy->setBorderStyle(src.BorderStyle());
    copy->setOutline(src.Outline());
    copy->setShadow(src.Shadow());
    copy->setAlignment(src.Alignment());
    copy->setMarginL(src.MarginL());
    copy->setMarginR(src.MarginR());
    copy->setMarginV(src.MarginV());
    copy->setAlphaLevel(src.AlphaLevel());
    copy->setEncoding(src.Encoding());
    copy->ErrNumber = src.ErrNumber;
    return copy;
}

void CFonts::Read(QStringView text)
{
    if (ScriptType != ::ScriptType::SSA && ScriptType != ::ScriptType::ASS)
        return;
    Clear();
    const QList<QStringView> lines = SplitLines(text);
    const size_t n = lines.size();
    size_t i = 0;
    for (; i < n; ++i) {
        const QStringView t = TrimView(lines[i]);
        if (EqualsUpper(t, u"[V4 STYLES]") || EqualsUpper(t, u"[V4+ STYLES]"))
            break;
    }
    for (++i; i < n; ++i)
        if (StartsWithUpper(TrimView(lines[i]), u"FORMAT"))
            break;
    QString comment;
    for (++i; i < n; ++i) {
        const QStringView line = lines[i];
        const QStringView t = TrimView(line);
        if (StartsWithUpper(t, u"[EVENTS]"))
            return;
        if (t.startsWith(u';')) {
            if (!comment.isEmpty())
                comment += u"\r\n";
            comment += LTrimView(line).sliced(1);
            continue;
        }
        if (!StartsWithUpper(t, u"STYLE"))
            continue;
        auto font = Class::Make<CFont>(QStringLiteral("NewFont"));
        font->setParent(this);
        font->Parse(line);
        CFont *added = nullptr;
        if (font->ErrNumber != 0) {
            const QString question = Msg(QStringLiteral("FONT_MSG_101")) + QStringLiteral(": ")
                + line.toString()
                + QStringLiteral("\r\n建议取消打开操作，重新打开文件，并选择正确的文件格式。继续读取字体吗?");
            if (MsgBox(question, MsgBoxStyle::YesNo) == MsgBoxResult::No)
                return;
        } else {
            added = Add(std::move(font));
        }
        if (added)
            added->Comment = comment;
        comment.clear();
    }
}

QString CFonts::Content()
{
    QString out;
    if (ScriptType == ::ScriptType::SSA) {
        out += u"[V4 Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
               u"TertiaryColour, "
               u"BackColour, Bold, Italic, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, "
               u"MarginV, "
               u"AlphaLevel, Encoding\r\n";
    } else if (ScriptType == ::ScriptType::ASS) {
        out += u"[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
               u"OutlineColour, "
               u"BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, "
               u"BorderStyle, "
               u"Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n";
    } else {
        return out;
    }
    for (CFont *font : m_fonts) {
        out += font->Content();
        out += u"\r\n";
    }
    if (m_fonts.IsEmpty()) {
        out += ScriptType == ::ScriptType::SSA
            ? u"Style: Default,楷体,24,16777215,65535,65280,0,0,0,1,1,1,2,30,30,10,0,134\r\n"
            : u"Style: "
              u"Default,simhei,18,&H00ffffff,&H0000ffff,&H00000000,&H80000000,-1,0,0,0,100,100,0,0.00,1,2,3,"
              u"2,20,20,25,134\r\n";
    }
    return out;
}
