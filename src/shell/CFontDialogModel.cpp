#include "shell/CFontDialogModel.h"

#include "core/Class.h"
#include "core/IPrompt.h"
#include "core/basBackup.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "shell/basFont.h"
#include "timing/CTimingGrid.h"

#include <optional>

using basConvert::TryCDbl;
using basConvert::TryCInt;

namespace {

const QString SettingSection = QStringLiteral("Font");
const QString KeypadSetting = QStringLiteral("AlignmentKeypad");

QString UpperExtension(const QString &fileName)
{
    return fileName.mid(fileName.lastIndexOf(u'.') + 1).toUpper();
}

// A 16-bit field from its text; a text that is no such number leaves the field alone.
template <typename Set> void TakeInt16(const QString &text, Set set)
{
    if (const std::optional<qint16> v = TryCInt(text))
        set(*v);
}
template <typename Set> void TakeDouble(const QString &text, Set set)
{
    if (const std::optional<double> v = TryCDbl(text))
        set(*v);
}

qint32 *AlphaOf(CFont &font, FontColour colour)
{
    switch (colour) {
    case FontColour::Primary:
        return &font.PrimaryAlpha;
    case FontColour::Secondary:
        return &font.SecondaryAlpha;
    case FontColour::Third:
        return &font.OutlineAlpha;
    case FontColour::Back:
        return &font.BackAlpha;
    }
    return nullptr;
}

// Only 0 to 255 is an alpha; a larger number is brought back by LeaveAlpha.
void TakeAlpha(CFont &font, FontColour colour, const QString &text)
{
    const std::optional<double> v = TryCDbl(text);
    if (v && *v >= 0 && *v <= 255)
        *AlphaOf(font, colour) = qint32(basConvert::CLng(*v));
}

} // namespace

CFontDialogModel::CFontDialogModel()
    : Fonts(Class::MakeCollection<CFonts>())
{ }

CFontDialogModel::~CFontDialogModel() = default;

void CFontDialogModel::Init(CTiming *timing, CTimingGrid *grid)
{
    TimingWindow = timing;
    Grid = grid;
    m_keypad = GetSetting(SettingSection, KeypadSetting, QStringLiteral("0")) == u"1";
    const QString kept = SelectedFont() ? SelectedFont()->StyleName() : QString();
    const int keptIndex = m_selected;
    copyFromDocument();
    if (Fonts->Count() == 0)
        Fonts->Create(QStringLiteral("Default"));
    const qsizetype byName = kept.isEmpty() ? -1 : Fonts->IndexOf(kept);
    if (byName >= 0)
        m_selected = int(byName);
    else
        m_selected = keptIndex >= 0 && keptIndex < Fonts->Count() ? keptIndex : 0;
}

void CFontDialogModel::copyFromDocument()
{
    Fonts->Clear();
    m_documentNames.clear();
    if (!TimingWindow || !TimingWindow->Fonts)
        return;
    Fonts->ScriptType = TimingWindow->ScriptType();
    for (const CFont *font : *TimingWindow->Fonts)
        if (CFont *copy = Fonts->Add(CFonts::CopyFont(*font)))
            m_documentNames.insert(copy, font->StyleName());
}

QStringList CFontDialogModel::StyleNames() const
{
    QStringList names;
    for (const CFont *font : *Fonts)
        names << font->StyleName();
    return names;
}

void CFontDialogModel::Select(int index)
{
    m_selected = index >= 0 && index < Fonts->Count() ? index : -1;
}

CFont *CFontDialogModel::SelectedFont() const
{
    return m_selected >= 0 && m_selected < Fonts->Count() ? Fonts->At(m_selected) : nullptr;
}

FontFields CFontDialogModel::Fields() const
{
    FontFields f;
    const CFont *font = SelectedFont();
    if (!font)
        return f;
    using basConvert::CStr;
    f.FontName = font->FontName();
    f.FontSize = QString::number(font->FontSize());
    f.Comment = font->Comment;
    f.Bold = font->Bold() != 0;
    f.Italic = font->Italic() != 0;
    f.Underline = font->UnderLine() != 0;
    f.StrikeOut = font->StrikeOut() != 0;
    f.BorderStyle = font->BorderStyle();
    f.Outline = QString::number(font->Outline());
    f.Shadow = QString::number(font->Shadow());
    f.AlignmentButton = basFont::ButtonOfAlignment(font->Alignment(), m_keypad);
    f.Margin = { CStr(font->MarginL()), CStr(font->MarginR()), CStr(font->MarginV()) };
    f.Scale = { CStr(font->ScaleX()), CStr(font->ScaleY()) };
    f.AlphaLevel = QString::number(font->AlphaLevel());
    f.Alpha = { QString::number(font->PrimaryAlpha), QString::number(font->SecondaryAlpha),
        QString::number(font->OutlineAlpha), QString::number(font->BackAlpha) };
    f.Spacing = CStr(font->Spacing());
    f.Angle = font->Angle();
    f.Encode = CStr(font->Encoding());
    return f;
}

bool CFontDialogModel::UpdateFont(const FontFields &f)
{
    CFont *font = SelectedFont();
    if (!font)
        return true;
    font->setFontName(f.FontName);
    font->Comment = f.Comment;
    // A set flag keeps the style's own true value (-1 or 1); a newly set one is -1, the
    // scripts' true.
    auto flag = [](bool on, qint16 old) -> qint16 { return on ? (old != 0 ? old : qint16(-1)) : qint16(0); };
    font->setBold(flag(f.Bold, font->Bold()));
    font->setItalic(flag(f.Italic, font->Italic()));
    font->setStrikeOut(flag(f.StrikeOut, font->StrikeOut()));
    font->setUnderLine(flag(f.Underline, font->UnderLine()));
    font->setBorderStyle(f.BorderStyle);
    TakeInt16(f.Outline, [font](qint16 v) { font->setOutline(v); });
    TakeInt16(f.Shadow, [font](qint16 v) { font->setShadow(v); });
    if (const qint16 alignment = basFont::AlignmentOfButton(f.AlignmentButton, m_keypad))
        font->setAlignment(alignment);
    TakeInt16(f.FontSize, [font](qint16 v) { font->setFontSize(v); });
    TakeDouble(f.Margin[0], [font](double v) { font->setMarginL(v); });
    TakeDouble(f.Margin[1], [font](double v) { font->setMarginR(v); });
    TakeDouble(f.Margin[2], [font](double v) { font->setMarginV(v); });
    TakeInt16(f.AlphaLevel, [font](qint16 v) { font->setAlphaLevel(v); });
    TakeDouble(f.Scale[0], [font](double v) { font->setScaleX(v); });
    TakeDouble(f.Scale[1], [font](double v) { font->setScaleY(v); });
    TakeDouble(f.Spacing, [font](double v) { font->setSpacing(v); });
    font->setAngle(f.Angle);
    for (int i = 0; i < 4; ++i)
        TakeAlpha(*font, FontColour(i), f.Alpha[size_t(i)]);
    if (!basConvert::IsNumeric(f.Encode)) {
        MsgBox(QStringLiteral("文字编码项请输入数字"));
        return false;
    }
    font->setEncoding(basConvert::CDbl(f.Encode));
    return true;
}

QString CFontDialogModel::LeaveAlpha(FontColour colour, const QString &text)
{
    const QString shown = basFont::LimitAlpha(text);
    if (CFont *font = SelectedFont())
        TakeAlpha(*font, colour, shown);
    return shown;
}

qint64 CFontDialogModel::Colour(FontColour colour) const
{
    const CFont *font = SelectedFont();
    if (!font)
        return 0;
    switch (colour) {
    case FontColour::Primary:
        return font->PrimaryColourValue();
    case FontColour::Secondary:
        return font->SecondaryColourValue();
    case FontColour::Third:
        return font->ScriptType() == ScriptType::SSA ? font->TertiaryColourValue()
                                                     : font->OutlineColorValue();
    case FontColour::Back:
        return font->BackColourValue();
    }
    return 0;
}

void CFontDialogModel::SetColour(FontColour colour, qint64 value)
{
    CFont *font = SelectedFont();
    if (!font)
        return;
    // The colour setters take the alpha from the top byte: the style's alpha goes with it.
    const qint32 alpha = *AlphaOf(*font, colour);
    const QString text = QString::number(qint32((quint32(alpha) << 24) | quint32(value & 0xFFFFFF)));
    switch (colour) {
    case FontColour::Primary:
        font->setPrimaryColour(text);
        break;
    case FontColour::Secondary:
        font->setSecondaryColour(text);
        break;
    case FontColour::Third:
        if (font->ScriptType() == ScriptType::SSA)
            font->setTertiaryColour(QString::number(value & 0xFFFFFF));
        else
            font->setOutlineColor(text);
        break;
    case FontColour::Back:
        font->setBackColour(text);
        break;
    }
}

bool CFontDialogModel::Add()
{
    const std::optional<QString> name
        = Prompt().InputBox(QStringLiteral("请输入新字体的名字"), QStringLiteral("新字体"));
    if (!name || name->isEmpty())
        return false;
    if (Fonts->Exists(*name)) {
        MsgBox(QStringLiteral("已经存在这个名字了，请使用其他名字新建字体"));
        return false;
    }
    Fonts->Create(*name);
    m_selected = int(Fonts->Count() - 1);
    return true;
}

bool CFontDialogModel::Delete()
{
    CFont *font = SelectedFont();
    if (!font) {
        MsgBox(QStringLiteral("请先选择一个要删除的字体"));
        return false;
    }
    if (Fonts->Count() <= 1) {
        MsgBox(QStringLiteral("至少需要保留一个字体"));
        return false;
    }
    if (MsgBox(QStringLiteral("确定删除这个字体吗？"), MsgBoxStyle::YesNo | MsgBoxStyle::Question)
        != MsgBoxResult::Yes)
        return false;
    m_documentNames.remove(font);
    Fonts->Delete(font->StyleName());
    m_selected = std::min(m_selected, int(Fonts->Count() - 1));
    return true;
}

bool CFontDialogModel::Rename()
{
    CFont *font = SelectedFont();
    if (!font) {
        MsgBox(QStringLiteral("请先选择一个要改名的字体"));
        return false;
    }
    const QString old = font->StyleName();
    const std::optional<QString> name
        = Prompt().InputBox(QStringLiteral("请输入新的名字"), QStringLiteral("新名字"), old);
    if (!name || name->isEmpty())
        return false;
    if (Fonts->Exists(*name)) {
        MsgBox(QStringLiteral("已经存在这个名字了，请改用其他名字"));
        return false;
    }
    // Lines know a style by its name in the document: that is the name they follow.
    if (const auto known = m_documentNames.constFind(font); known != m_documentNames.constEnd())
        font->OriginalStyleName = known.value();
    return Fonts->Rename(old, *name);
}

void CFontDialogModel::Apply()
{
    if (!TimingWindow || !TimingWindow->Fonts)
        return;
    CFonts &target = *TimingWindow->Fonts;
    target.Clear();
    for (const QString &name : StyleNames())
        target.Add(Fonts->Take(name));
    if (Grid)
        Grid->RefreshStyleCells(target);
    TimingWindow->setChanged(true);
    Init(TimingWindow, Grid);
}

bool CFontDialogModel::FontInstalled(const QString &fontName, const QStringList &families)
{
    return families.contains(fontName, Qt::CaseInsensitive);
}

QString CFontDialogModel::HelpText(FontHelp control, const QStringList &families) const
{
    switch (control) {
    case FontHelp::Alpha:
        return QStringLiteral("颜色透明度：0-255的整数,越大透明度越高");
    case FontHelp::AlphaLevel:
        return QStringLiteral("透明度值，无效");
    case FontHelp::ShowFontName:
        return QStringLiteral("字体名：真正作为输出的字体名，可以与选择的字体名不同");
    case FontHelp::Angle:
        return QStringLiteral("旋转角度：顺时针旋转的角度");
    case FontHelp::Encode:
        return QStringLiteral("简体中文:134    繁体中文:137    日文:128    英文:0    自动选择:1");
    case FontHelp::FontList:
        if (const CFont *font = SelectedFont(); font && !FontInstalled(font->FontName(), families))
            return QStringLiteral("在字体列表中没有找到同样名字的字体：") + font->FontName();
        return {};
    }
    return {};
}

void CFontDialogModel::setAlignmentKeypad(bool on)
{
    m_keypad = on;
    SaveSetting(SettingSection, KeypadSetting, on ? QStringLiteral("1") : QStringLiteral("0"));
}

std::unique_ptr<CFonts> CFontDialogModel::ReadStyleFile(const QString &fileName)
{
    const QString extension = UpperExtension(fileName);
    if (extension != u"ASS" && extension != u"SSA") {
        MsgBox(Msg(QStringLiteral("COMM_MSG_201")));
        return nullptr;
    }
    const WholeFileRead read = ReadWholeFile(fileName, false);
    if (!read.Ok) {
        MsgBox(Msg(QStringLiteral("FONT_MSG_100")) + read.Error);
        return nullptr;
    }
    auto fonts = Class::MakeCollection<CFonts>();
    fonts->ScriptType = extension == u"SSA" ? ScriptType::SSA : ScriptType::ASS;
    fonts->Read(read.Text);
    return fonts;
}

bool CFontDialogModel::SaveStyleFile(const QString &fileName)
{
    const ScriptType kept = Fonts->ScriptType;
    Fonts->ScriptType = UpperExtension(fileName) == u"SSA" ? ScriptType::SSA : ScriptType::ASS;
    const QString text = Fonts->Content();
    Fonts->ScriptType = kept;
    const bool unicode = TimingWindow && TimingWindow->FileCode != FileCode::ANSI;
    QString error;
    if (!SaveWithBackup(fileName, text, unicode, &error)) {
        MsgBox(Msg(QStringLiteral("COMM_MSG_101")) + error);
        return false;
    }
    return true;
}

QString CFontDialogModel::AskStyleFileToOpen()
{
    return Prompt().OpenFileName(
        Msg(QStringLiteral("FONT_LABLE_100")), Msg(QStringLiteral("VELMAR_STYLES_136")));
}

QString CFontDialogModel::AskStyleFileToSave()
{
    return Prompt().SaveFileName(
        Msg(QStringLiteral("FONT_LABLE_101")), Msg(QStringLiteral("VELMAR_STYLES_136")));
}
