#include "translation/CTranslate.h"

#include "core/CSpread.h"

#include "core/CScopeExit.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basColour.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "translation/basRtf.h"
#include "translation/basTranslateWindow.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocumentFragment>

using namespace basConvert;
using basTranslateWindow::ColourOfFormat;

namespace {

// The document's own line breaks are paragraph ends; the system's are "\r\n".
QString toDocumentText(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return text;
}

QString fromDocumentText(QString text)
{
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    text.replace(u'\n', QStringLiteral("\r\n"));
    return text;
}

std::optional<qint64> numberOf(const QString &text)
{
    try {
        return qint64(CLng(text));
    } catch (const VelmarError &) {
        return std::nullopt;
    }
}

// The effective attributes of one character, as the walk compares them.
struct Attributes
{
    qint64 Colour = 0;
    QString Name;
    double Size = 0;
    bool Strike = false;
    bool Underline = false;
    bool Bold = false;
    bool Italic = false;
};

Attributes attributesOf(const QTextCharFormat &f, const QFont &defaultFont)
{
    Attributes a;
    a.Colour = ColourOfFormat(f);
    const QStringList families = f.fontFamilies().toStringList();
    a.Name = !families.isEmpty() && !families.first().isEmpty() ? families.first() : defaultFont.family();
    a.Size = f.hasProperty(QTextFormat::FontPointSize) ? f.fontPointSize() : defaultFont.pointSizeF();
    a.Strike = f.fontStrikeOut();
    a.Underline = f.fontUnderline();
    a.Bold = f.fontWeight() > QFont::Normal;
    a.Italic = f.fontItalic();
    return a;
}

} // namespace

CTranslate::CTranslate()
    : m_ownView(std::make_unique<QTextDocument>())
    , m_view(m_ownView.get())
    , m_changeTable(std::make_unique<CSpread>())
    , m_colorTable(std::make_unique<CSpread>())
{
    m_changeTable->setMaxCols(2);
    m_colorTable->setMaxCols(1);
    KaraOK.setDocument(m_view);
    ResetTables();
    ClipboardText = [] {
        auto *app = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
        return app ? QGuiApplication::clipboard()->text() : QString();
    };
    setClipboardText = [](const QString &text) {
        if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
            QGuiApplication::clipboard()->setText(text);
    };
}

CTranslate::~CTranslate() = default;

QString CTranslate::Caption() const
{
    return Msg(QStringLiteral("TRANSLATE_TITLE_000")) + u'(' + QString::number(SerialNo()) + u')';
}

QString CTranslate::ChangeTableLabel(int row)
{
    if (row >= 0 && row < 9)
        return QString::number(row + 1);
    if (row >= 9 && row < 9 + 26)
        return QString(QChar(u'A' + (row - 9)));
    return QStringLiteral(" ");
}

QString CTranslate::ColorTableLabel(int row)
{
    return row >= 0 && row < 9 ? QString::number(row + 1) : QStringLiteral(" ");
}

void CTranslate::ResetTables()
{
    for (CSpread *table : { m_changeTable.get(), m_colorTable.get() }) {
        const bool drawing = table->ReDraw();
        table->setReDraw(false);
        table->setMaxRows(0);
        table->setMaxRows(1);
        table->SetText(0, 1, QStringLiteral("1"));
        table->setReDraw(drawing);
    }
    m_colorTable->setRow(1);
    m_colorTable->setCol(1);
    m_colorTable->setBackColor(0);
}

void CTranslate::AddChangeTableRow()
{
    const int row = m_changeTable->MaxRows() + 1;
    m_changeTable->setMaxRows(row);
    m_changeTable->SetText(0, row, ChangeTableLabel(row - 1));
}

void CTranslate::AddColorTableRow()
{
    const int row = m_colorTable->MaxRows() + 1;
    m_colorTable->setMaxRows(row);
    m_colorTable->SetText(0, row, ColorTableLabel(row - 1));
    m_colorTable->setRow(row);
    m_colorTable->setCol(1);
    m_colorTable->setBackColor(0);
}

void CTranslate::CopyDocument(const QTextDocument &from, QTextDocument &to) const
{
    if (ScriptType == ::ScriptType::RichText) {
        to.clear();
        QTextCursor cursor(&to);
        cursor.insertFragment(QTextDocumentFragment(&from));
    } else {
        to.setPlainText(from.toPlainText());
    }
}

void CTranslate::Clear()
{
    m_view->clear();
}

// ------------------------------------------------------------------ reading a draft

void CTranslate::setContent(const QString &text)
{
    if (ScriptType == ::ScriptType::RichText)
        RtfToDocument(text, m_shadow);
    else
        m_shadow.setPlainText(toDocumentText(text));
    // A fault in the tables leaves the text as far as it got.
    try {
        if (TranslateOption & ::TranslateOption::ChangeTable)
            ReadTables();
    } catch (const std::exception &) { }
    CopyDocument(m_shadow, *m_view);
}

void CTranslate::ReadTables()
{
    ResetTables();
    CSpread &change = *m_changeTable;
    CSpread &colour = *m_colorTable;
    bool colourMode = false;
    // The table rows leave the shadow, the text behind them keeps its formats. Other
    // lines, blank ones among the rows included, stay as they are.
    std::vector<QTextBlock> rows;
    for (QTextBlock block = m_shadow.begin(); block.isValid(); block = block.next()) {
        const QString line = LTrim(block.text());
        if (Trim(line).isEmpty())
            continue;
        if (!line.startsWith(QStringLiteral("//")))
            break;
        rows.push_back(block);
        const QString rest = LTrim(QStringView(line).mid(2));
        if (rest.startsWith(QStringLiteral("&H")))
            colourMode = true;
        const qsizetype e = rest.indexOf(u'=');
        if (colourMode) {
            const int row = colour.MaxRows();
            const auto number = numberOf(e < 0 ? rest : rest.left(e));
            if (number) {
                colour.setRow(row);
                colour.setCol(1);
                colour.setBackColor(quint32(*number));
            }
            if (e >= 0)
                colour.SetText(1, row, rest.mid(e + 1));
            AddColorTableRow();
        } else {
            const int row = change.MaxRows();
            change.SetText(1, row, e < 0 ? rest : rest.left(e));
            if (e >= 0)
                change.SetText(2, row, rest.mid(e + 1));
            AddChangeTableRow();
        }
    }
    for (auto it = rows.rbegin(); it != rows.rend(); ++it) {
        QTextCursor cursor(m_shadow.findBlockByNumber(it->blockNumber()));
        cursor.movePosition(QTextCursor::StartOfBlock);
        if (cursor.block().next().isValid())
            cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
        else
            cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
}

// ------------------------------------------------------------------ writing a draft

qsizetype CTranslate::WriteTables()
{
    QTextCursor cursor(&m_shadow);
    cursor.movePosition(QTextCursor::Start);
    QString last;
    auto write = [&](const QString &row, qint64 colour) {
        QTextCharFormat f;
        f.setForeground(BgrToColor(colour));
        cursor.insertText(row, f);
        cursor.insertBlock(cursor.blockFormat(), f);
    };
    const CSpread &change = *m_changeTable;
    for (int row = 1; row <= change.MaxRows(); ++row) {
        last.clear();
        const QString from = change.GetText(1, row), to = change.GetText(2, row);
        if (Trim(from).isEmpty() && Trim(to).isEmpty())
            continue;
        last = QStringLiteral("//") + from + u'=' + to;
        write(last, 0);
    }
    const CSpread &colour = *m_colorTable;
    for (int row = 1; row <= colour.MaxRows(); ++row) {
        last.clear();
        const QString text = colour.GetText(1, row);
        if (Trim(text).isEmpty())
            continue;
        const qint64 rgb = colour.GetBackColor(1, row);
        last = QStringLiteral("//") + basTranslateWindow::ColourText(rgb) + u'=' + text;
        write(last, rgb);
    }
    // The walk starts behind the row last written: none, as the tables end in an empty
    // row.
    return last.isEmpty() ? 0 : last.size() + 2;
}

QString CTranslate::Content()
{
    try {
        // Always with its formats: the user's colours and fonts in a plain draft are what
        // the character walk turns into tags.
        m_shadow.clear();
        m_shadow.setDefaultFont(m_view->defaultFont());
        QTextCursor(&m_shadow).insertFragment(QTextDocumentFragment(m_view));
        qsizetype start = 0;
        if (TranslateOption & ::TranslateOption::ChangeTable)
            start = WriteTables();
        const bool plainOptions = ChangeOption == 0 || ChangeOption == ::ChangeOption::Text;
        if (!plainOptions && ScriptType == ::ScriptType::Plain
            && fromDocumentText(m_shadow.toPlainText()).size() >= 2049) {
            const int answer
                = MsgBox(QStringLiteral("对超过2K的文字进行带SSA格式转换时间轴，预计此操作将非常费时")
                        + QStringLiteral("\r\n") + QStringLiteral("建议停止这个操作或者缩短文字列"),
                    MsgBoxStyle::RetryCancel);
            if (answer == MsgBoxResult::Cancel)
                return {};
        }
        if (ScriptType != ::ScriptType::Plain)
            return DocumentToRtf(m_shadow);
        if (plainOptions)
            return DocumentPlainText(m_shadow);
        return RichTextToTags(start);
    } catch (const std::exception &e) {
        const auto *v = dynamic_cast<const VelmarError *>(&e);
        MsgBox(
            (v ? v->Description() : QString::fromLocal8Bit(e.what())) + QStringLiteral("\r\n") + Caption());
        return {};
    }
}

QString CTranslate::ContentWith(::ScriptType type, qint32 changeOption, qint32 translateOption)
{
    const CScopeExit putBack([this, oldType = ScriptType, oldChange = ChangeOption,
                                 oldTranslate = TranslateOption, oldChanged = Changed()] {
        ScriptType = oldType;
        ChangeOption = oldChange;
        TranslateOption = oldTranslate;
        setChanged(oldChanged);
    });
    ScriptType = type;
    ChangeOption = changeOption;
    TranslateOption = translateOption;
    return Content();
}

QString CTranslate::RichTextToTags(qsizetype start) const
{
    const qint32 option = ChangeOption;
    const QFont defaultFont = m_shadow.defaultFont();
    QString out;
    out.reserve(m_shadow.characterCount() * 2);
    Attributes last;
    bool first = true;
    qsizetype position = 0;

    auto colourText = [option](qint64 colour) {
        if (option & ChangeOption::BlackWhite) {
            if (colour == 0)
                return QStringLiteral("FFFFFF");
            if (colour == 16777215)
                return QStringLiteral("000000");
        }
        return Hex(colour);
    };
    auto onOff = [](bool on) { return on ? u'1' : u'0'; };

    auto character = [&](const QString &text, const Attributes &a) {
        if ((option & ChangeOption::Color) && (first || a.Colour != last.Colour))
            out += QStringLiteral("{\\c&H") + colourText(a.Colour) + QStringLiteral("&}");
        if ((option & ChangeOption::FontName) && (first || a.Name != last.Name))
            out += QStringLiteral("{\\fn") + a.Name + u'}';
        if ((option & ChangeOption::FontSize) && (first || a.Size != last.Size))
            out += QStringLiteral("{\\fs") + CStr(a.Size) + u'}';
        if ((option & ChangeOption::Through) && (first || a.Strike != last.Strike))
            out += QStringLiteral("{\\s") + onOff(a.Strike) + u'}';
        if ((option & ChangeOption::Underline) && (first || a.Underline != last.Underline))
            out += QStringLiteral("{\\u") + onOff(a.Underline) + u'}';
        if ((option & ChangeOption::Bold) && (first || a.Bold != last.Bold))
            out += QStringLiteral("{\\b") + onOff(a.Bold) + u'}';
        if ((option & ChangeOption::Italic) && (first || a.Italic != last.Italic))
            out += QStringLiteral("{\\i") + onOff(a.Italic) + u'}';
        last = a;
        first = false;
        if (option & ChangeOption::Text)
            out += text;
    };
    auto lineEnd = [&] {
        if (position >= start)
            out += QStringLiteral("\r\n");
        position += 2;
        first = true;
    };

    for (QTextBlock block = m_shadow.begin(); block.isValid(); block = block.next()) {
        if (block != m_shadow.begin())
            lineEnd();
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const Attributes a = attributesOf(fragment.charFormat(), defaultFont);
            const QString text = fragment.text();
            for (qsizetype i = 0; i < text.size(); ++i) {
                const QChar c = text[i];
                if (c == QChar::LineSeparator) {
                    lineEnd();
                    continue;
                }
                const bool pair = c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
                const QString one = text.mid(i, pair ? 2 : 1);
                if (pair)
                    ++i;
                if (position++ < start)
                    continue;
                character(one, a);
            }
        }
    }
    return out;
}

// ------------------------------------------------------------------ clipboard

void CTranslate::Copy(const QTextCursor &selection) const
{
    if (setClipboardText)
        setClipboardText(fromDocumentText(selection.selectedText()));
}

void CTranslate::Cut(QTextCursor &selection)
{
    QTextDocument *doc = selection.document();
    if (!doc)
        return;
    const int start = selection.selectionStart();
    const int end = selection.selectionEnd();
    if (setClipboardText)
        setClipboardText(fromDocumentText(selection.selectedText()));
    const QString text = doc->toPlainText();
    doc->setPlainText(text.left(start) + text.mid(end));
    selection = QTextCursor(doc);
    selection.setPosition(start);
}

void CTranslate::Paste(QTextCursor &selection)
{
    QTextDocument *doc = selection.document();
    if (!doc)
        return;
    const int start = selection.selectionStart();
    const int end = selection.selectionEnd();
    QString pasted = ClipboardText ? ClipboardText() : QString();
    pasted.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    pasted.replace(u'\r', u'\n');
    const QString text = doc->toPlainText();
    doc->setPlainText(text.left(start) + pasted + text.mid(end));
    selection = QTextCursor(doc);
    selection.setPosition(start + int(pasted.size()));
}
