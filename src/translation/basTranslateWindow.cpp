#include "translation/basTranslateWindow.h"

#include "core/CSpread.h"
#include "core/IPrompt.h"
#include "core/basColour.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "translation/CTranslate.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace basTranslateWindow {

namespace {

constexpr int kShift = 1;
constexpr int kCtrl = 2;
constexpr int kAlt = 4;

bool IsDigit(int keyCode)
{
    return keyCode >= '0' && keyCode <= '9';
}

bool IsLetter(int keyCode)
{
    return keyCode >= 'A' && keyCode <= 'Z';
}

// The first row from the top whose label is the key's character; 0 for none.
int RowOfLabel(const CSpread &table, int keyCode)
{
    const QString label = QString(QChar(char16_t(keyCode)));
    for (int row = 1; row <= table.MaxRows(); ++row)
        if (table.GetText(0, row) == label)
            return row;
    return 0;
}

// One attribute over a run of characters: the first value seen, and whether another
// one came.
template <typename T> struct Running
{
    std::optional<T> Value;
    bool Mixed = false;
    void Add(const T &v)
    {
        if (!Value)
            Value = v;
        else if (*Value != v)
            Mixed = true;
    }
};

FormatState StateOf(const Running<bool> &r)
{
    if (r.Mixed)
        return FormatState::Mixed;
    return r.Value.value_or(false) ? FormatState::On : FormatState::Off;
}

} // namespace

qint64 ColourOfFormat(const QTextCharFormat &format)
{
    if (!format.hasProperty(QTextFormat::ForegroundBrush))
        return 0;
    return ColorToBgr(format.foreground().color());
}

QString ColourText(qint64 colour)
{
    QString hex = basConvert::Hex(colour);
    if (hex.size() < 6)
        hex.prepend(QString(6 - hex.size(), u'0'));
    return QStringLiteral("&H") + hex;
}

QuickKey QuickKeyOf(const CTranslate &doc, int keyCode, int shift)
{
    QuickKey key;
    const bool alt = (shift & kAlt) != 0;
    const bool ctrl = (shift & kCtrl) != 0;
    if (alt && !ctrl && (IsDigit(keyCode) || IsLetter(keyCode))) {
        key.Action = QuickKey::Swallow;
        if (const int row = RowOfLabel(doc.spdChangeTable(), keyCode)) {
            key.Action = QuickKey::InsertText;
            key.Text = doc.spdChangeTable().GetText(1, row);
        }
        return key;
    }
    if (ctrl && !alt && !(shift & kShift) && IsDigit(keyCode))
        if (const int row = RowOfLabel(doc.spdColor(), keyCode)) {
            key.Action = QuickKey::SetColour;
            key.Colour = doc.spdColor().GetBackColor(1, row);
        }
    return key;
}

std::optional<QString> ChangeTableText(const CTranslate &doc, int col, int row)
{
    if (col != 1 || row < 1 || row > doc.spdChangeTable().MaxRows())
        return std::nullopt;
    return doc.spdChangeTable().GetText(1, row);
}

std::optional<qint64> ColorTableColour(const CTranslate &doc, int col, int row)
{
    if (col != 1 || row < 1 || row > doc.spdColor().MaxRows())
        return std::nullopt;
    return doc.spdColor().GetBackColor(1, row);
}

bool AskRowColour(CTranslate &doc, int row)
{
    CSpread &table = doc.spdColor();
    if (row < 1 || row > table.MaxRows())
        return false;
    const std::optional<qint64> chosen = Prompt().ChooseColour(table.GetBackColor(1, row));
    if (!chosen)
        return false;
    table.setRow(row);
    table.setCol(1);
    table.setBackColor(quint32(*chosen & 0xFFFFFF));
    return true;
}

bool ChangeTableRowReached(CTranslate &doc, int row)
{
    if (row < 1 || row != doc.spdChangeTable().MaxRows())
        return false;
    doc.AddChangeTableRow();
    return true;
}

bool ColorTableRowReached(CTranslate &doc, int row)
{
    if (row < 1 || row != doc.spdColor().MaxRows())
        return false;
    doc.AddColorTableRow();
    return true;
}

SelectionFormat ReadSelectionFormat(const QTextDocument &document, int start, int end)
{
    const QFont defaultFont = document.defaultFont();
    Running<bool> bold, italic, underline, strike;
    Running<QString> name;
    Running<double> size;
    Running<qint64> colour;
    auto add = [&](const QTextCharFormat &f) {
        bold.Add(f.fontWeight() > QFont::Normal);
        italic.Add(f.fontItalic());
        underline.Add(f.fontUnderline());
        strike.Add(f.fontStrikeOut());
        const QStringList families = f.fontFamilies().toStringList();
        name.Add(
            !families.isEmpty() && !families.first().isEmpty() ? families.first() : defaultFont.family());
        size.Add(f.hasProperty(QTextFormat::FontPointSize) ? f.fontPointSize() : defaultFont.pointSizeF());
        colour.Add(ColourOfFormat(f));
    };
    if (start > end)
        std::swap(start, end);
    if (start == end) {
        QTextCursor caret(const_cast<QTextDocument *>(&document));
        caret.setPosition(qBound(0, start, document.characterCount() - 1));
        add(caret.charFormat());
    } else {
        for (QTextBlock block = document.findBlock(start); block.isValid() && block.position() < end;
             block = block.next()) {
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextFragment fragment = it.fragment();
                const int from = fragment.position();
                const int to = from + fragment.length();
                if (to <= start || from >= end)
                    continue;
                add(fragment.charFormat());
                if (bold.Mixed && italic.Mixed && underline.Mixed && strike.Mixed && name.Mixed && size.Mixed
                    && colour.Mixed)
                    break;
            }
        }
        if (!bold.Value) // only line ends selected
            add(QTextCursor(const_cast<QTextDocument *>(&document)).charFormat());
    }
    SelectionFormat format;
    format.Bold = StateOf(bold);
    format.Italic = StateOf(italic);
    format.Underline = StateOf(underline);
    format.StrikeOut = StateOf(strike);
    if (!name.Mixed)
        format.FontName = name.Value.value_or(QString());
    if (!size.Mixed && size.Value && *size.Value > 0)
        format.FontSize = basConvert::CStr(*size.Value);
    if (!colour.Mixed)
        format.Colour = colour.Value;
    return format;
}

QString LineStatus(int line)
{
    return Msg(QStringLiteral("TRANSLATE_STATUS_100")) + QString::number(line);
}

QString ColourStatus(const SelectionFormat &format)
{
    return QStringLiteral("颜色: ") + (format.Colour ? ColourText(*format.Colour) : QString());
}

} // namespace basTranslateWindow
