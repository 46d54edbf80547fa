#include "translation/basRtf.h"

#include "core/basColour.h"
#include "core/basConvert.h"
#include "core/basText.h"

#include <QSet>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

namespace {

// ---------------------------------------------------------------- code pages

// The code page of a font character set.
int charsetCodePage(int charset)
{
    switch (charset) {
    case 0:
        return 1252;
    case 77:
        return 10000;
    case 128:
        return 932;
    case 129:
        return 949;
    case 134:
        return 936;
    case 136:
        return 950;
    case 161:
        return 1253;
    case 162:
        return 1254;
    case 163:
        return 1258;
    case 177:
        return 1255;
    case 178:
        return 1256;
    case 186:
        return 1257;
    case 204:
        return 1251;
    case 222:
        return 874;
    case 238:
        return 1250;
    default:
        return 0; // the document's own code page
    }
}

// ---------------------------------------------------------------- reader

struct RtfFont
{
    QString Name;
    int Charset = -1;
    int CodePage = 0;
};

enum class Dest { Text, FontTable, Font, ColourTable, Skip };

struct State
{
    Dest dest = Dest::Text;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    int font = -1;
    int size = 24; // half-points
    int colour = 0;
    int uc = 1;
    bool starSeen = false; // "\*" opened this group
};

constexpr int kMaxDepth = 2000;

class RtfReader
{
public:
    RtfReader(const QString &rtf, QTextDocument &doc)
        : m_in(rtf)
        , m_doc(doc)
        , m_cursor(&doc)
    { }

    void Read()
    {
        m_doc.clear();
        m_cursor = QTextCursor(&m_doc);
        m_cursor.beginEditBlock();
        m_stack.push_back(State());
        const qsizetype n = m_in.size();
        while (m_pos < n) {
            const QChar c = m_in[m_pos];
            if (c == u'{') {
                ++m_pos;
                openGroup();
            } else if (c == u'}') {
                ++m_pos;
                closeGroup();
            } else if (c == u'\\') {
                ++m_pos;
                controlWord();
            } else if (c == u'\r' || c == u'\n') {
                ++m_pos;
            } else {
                ++m_pos;
                textChar(c);
            }
        }
        flushBytes();
        flushText();
        m_cursor.endEditBlock();
    }

private:
    State &st() { return m_stack.back(); }

    void openGroup()
    {
        flushBytes();
        m_skipChars = 0;
        if (m_stack.size() >= size_t(kMaxDepth)) {
            ++m_overflow;
            return;
        }
        State copy = st();
        copy.starSeen = false;
        if (copy.dest == Dest::FontTable)
            copy.dest = Dest::Font;
        m_stack.push_back(copy);
    }

    void closeGroup()
    {
        flushBytes();
        m_skipChars = 0;
        if (m_overflow > 0) {
            --m_overflow;
            return;
        }
        if (m_stack.size() <= 1)
            return; // a stray "}" is ignored
        const Dest was = st().dest;
        m_stack.pop_back();
        if (was == Dest::Font && st().dest != Dest::Font)
            endFont();
    }

    // Reads "\word[-]digits[ ]" or a control symbol after the backslash.
    void controlWord()
    {
        const qsizetype n = m_in.size();
        if (m_pos >= n)
            return;
        const QChar c = m_in[m_pos];
        if (!isAsciiLetter(c)) {
            ++m_pos;
            controlSymbol(c);
            return;
        }
        const qsizetype start = m_pos;
        while (m_pos < n && isAsciiLetter(m_in[m_pos]) && m_pos - start < 32)
            ++m_pos;
        while (m_pos < n && isAsciiLetter(m_in[m_pos])) // an over-long word is cut
            ++m_pos;
        const QString word = m_in.mid(start, std::min<qsizetype>(m_pos - start, 32));
        bool hasParam = false;
        bool negative = false;
        qint64 value = 0;
        if (m_pos < n && m_in[m_pos] == u'-' && m_pos + 1 < n && m_in[m_pos + 1].isDigit()) {
            negative = true;
            ++m_pos;
        }
        while (m_pos < n && m_in[m_pos] >= u'0' && m_in[m_pos] <= u'9') {
            hasParam = true;
            if (value < 100000000000LL)
                value = value * 10 + (m_in[m_pos].unicode() - u'0');
            ++m_pos;
        }
        if (m_pos < n && m_in[m_pos] == u' ')
            ++m_pos;
        value = std::clamp<qint64>(
            negative ? -value : value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
        apply(word, hasParam, int(value));
    }

    static bool isAsciiLetter(QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }

    void controlSymbol(QChar c)
    {
        switch (c.unicode()) {
        case '\'': {
            const qsizetype n = m_in.size();
            int v = 0;
            int digits = 0;
            while (digits < 2 && m_pos < n) {
                const int d = basConvert::HexDigit(m_in[m_pos]);
                if (d < 0)
                    break;
                v = v * 16 + d;
                ++digits;
                ++m_pos;
            }
            if (digits == 0)
                return;
            if (m_skipChars > 0) {
                --m_skipChars;
                return;
            }
            if (st().dest == Dest::Text || st().dest == Dest::Font)
                m_bytes.append(char(v));
            return;
        }
        case '*':
            st().starSeen = true;
            // An ignorable destination unless a later word says otherwise.
            st().dest = Dest::Skip;
            return;
        case '~':
            textChar(QChar(0x00A0));
            return;
        case '_':
            textChar(u'-');
            return;
        case '-':
            return;
        case '\r':
        case '\n':
            apply(QStringLiteral("par"), false, 0);
            return;
        case '\\':
        case '{':
        case '}':
            textChar(c);
            return;
        case '\t':
            apply(QStringLiteral("tab"), false, 0);
            return;
        default:
            return;
        }
    }

    void apply(const QString &w, bool hasParam, int v)
    {
        flushBytes();
        // The fallback of a Unicode character may be any one token, a control word too.
        if (m_skipChars > 0 && w != u"u") {
            --m_skipChars;
            return;
        }
        State &s = st();
        if (w == u"bin") {
            // Raw binary data of the given length, never text.
            if (hasParam && v > 0)
                m_pos += std::min<qsizetype>(v, m_in.size() - m_pos);
            return;
        }
        // Destinations.
        if (w == u"fonttbl") {
            s.dest = Dest::FontTable;
            return;
        }
        if (w == u"colortbl") {
            s.dest = Dest::ColourTable;
            m_colours.clear();
            m_red = m_green = m_blue = 0;
            m_colourSet = false;
            return;
        }
        if (w == u"fldrslt") {
            // The visible result of a field is text; its instruction is not.
            if (s.dest == Dest::Skip && !s.starSeen)
                return;
            s.dest = Dest::Text;
            return;
        }
        // Destinations whose text is not the draft's.
        static const QSet<QString> skipped = [] {
            QSet<QString> words;
            for (const char *w :
                { "stylesheet", "info", "pict", "object", "header", "headerl", "headerr", "headerf", "footer",
                    "footerl", "footerr", "footerf", "footnote", "fldinst", "listtable", "listoverridetable",
                    "rsidtbl", "generator", "xmlnstbl", "themedata", "colorschememapping", "latentstyles",
                    "datastore", "revtbl", "filetbl", "pgdsctbl", "mmathPr", "bkmkstart", "bkmkend", "shp",
                    "shpinst", "nonshppict", "author", "operator", "title", "subject", "keywords", "comment",
                    "doccomm", "company", "annotation", "atnid", "atnauthor", "private", "template",
                    "listtext", "pntext", "pntxta", "pntxtb", "protusertbl", "userprops", "wgrffmtfilter",
                    "xmlopen", "background", "ftnsep", "ftnsepc", "aftnsep", "aftnsepc" })
                words.insert(QString::fromLatin1(w));
            return words;
        }();
        if (skipped.contains(w)) {
            s.dest = Dest::Skip;
            return;
        }
        if (s.dest == Dest::Skip)
            return;
        if (w == u"u") {
            int code = v;
            if (code < 0)
                code += 65536;
            if (code >= 0 && code <= 0xFFFF) {
                const QChar ch { char16_t(code) };
                if (s.dest == Dest::Font || s.dest == Dest::FontTable)
                    m_fontName += ch;
                else
                    addChar(ch);
            }
            m_skipChars = s.uc;
            return;
        }
        if (s.dest == Dest::ColourTable) {
            if (w == u"red") {
                m_red = std::clamp(v, 0, 255);
                m_colourSet = true;
            } else if (w == u"green") {
                m_green = std::clamp(v, 0, 255);
                m_colourSet = true;
            } else if (w == u"blue") {
                m_blue = std::clamp(v, 0, 255);
                m_colourSet = true;
            }
            return;
        }
        if (s.dest == Dest::Font || s.dest == Dest::FontTable) {
            if (w == u"f") {
                if (s.dest == Dest::FontTable) // fonts written without their own group
                    endFont();
                m_fontNo = v;
                m_font = RtfFont();
            } else if (w == u"fcharset") {
                m_font.Charset = v;
            } else if (w == u"cpg") {
                m_font.CodePage = v;
            }
            return;
        }
        // Header.
        if (w == u"ansicpg") {
            if (v > 0)
                m_codePage = v;
            return;
        }
        if (w == u"deff") {
            m_defaultFont = v;
            if (s.font < 0)
                s.font = v;
            return;
        }
        if (w == u"uc") {
            s.uc = std::clamp(v, 0, 10);
            return;
        }
        // Character formats.
        const bool on = !hasParam || v != 0;
        if (w == u"b")
            s.bold = on;
        else if (w == u"i")
            s.italic = on;
        else if (w == u"ul" || w == u"uld" || w == u"uldb" || w == u"ulw" || w == u"ulth" || w == u"uldash")
            s.underline = on;
        else if (w == u"ulnone")
            s.underline = false;
        else if (w == u"strike" || w == u"striked")
            s.strike = on;
        else if (w == u"f")
            s.font = v;
        else if (w == u"fs")
            s.size = hasParam && v > 0 ? std::min(v, 3276) : 24;
        else if (w == u"cf")
            s.colour = std::max(v, 0);
        else if (w == u"plain") {
            s.bold = s.italic = s.underline = s.strike = false;
            s.font = m_defaultFont;
            s.size = 24;
            s.colour = 0;
        } else if (w == u"par" || w == u"sect" || w == u"page")
            newParagraph();
        else if (w == u"line")
            addChar(QChar(QChar::LineSeparator));
        else if (w == u"tab")
            addChar(u'\t');
        else if (w == u"emdash")
            addChar(QChar(0x2014));
        else if (w == u"endash")
            addChar(QChar(0x2013));
        else if (w == u"lquote")
            addChar(QChar(0x2018));
        else if (w == u"rquote")
            addChar(QChar(0x2019));
        else if (w == u"ldblquote")
            addChar(QChar(0x201C));
        else if (w == u"rdblquote")
            addChar(QChar(0x201D));
        else if (w == u"bullet")
            addChar(QChar(0x2022));
        else if (s.starSeen)
            s.dest = Dest::Skip; // an ignorable destination this reader does not know
    }

    void textChar(QChar c)
    {
        if (m_skipChars > 0) {
            --m_skipChars;
            return;
        }
        const Dest d = st().dest;
        if (d == Dest::Font || d == Dest::FontTable) {
            flushBytes();
            m_fontName += c;
            if (c == u';')
                endFont();
            return;
        }
        if (d == Dest::ColourTable) {
            if (c == u';') {
                m_colours.push_back(m_colourSet ? (m_red | (m_green << 8) | (m_blue << 16)) : -1);
                m_red = m_green = m_blue = 0;
                m_colourSet = false;
            }
            return;
        }
        if (d != Dest::Text)
            return;
        if (c.unicode() < 32 && c != u'\t')
            return;
        flushBytes();
        addChar(c);
    }

    void endFont()
    {
        flushBytes();
        QString name = m_fontName;
        m_fontName.clear();
        while (name.endsWith(u';'))
            name.chop(1);
        name = name.trimmed();
        if (m_fontNo < 0 && name.isEmpty())
            return;
        m_font.Name = name;
        if (m_fontNo >= 0 && m_fonts.size() < 100000)
            m_fontsByNo[m_fontNo] = m_fonts.size(), m_fonts.push_back(m_font);
        m_fontNo = -1;
        m_font = RtfFont();
    }

    int codePageOfFont() const
    {
        const State &s = m_stack.back();
        const auto it = m_fontsByNo.find(s.font);
        if (it != m_fontsByNo.end()) {
            const RtfFont &f = m_fonts[size_t(it->second)];
            if (f.CodePage > 0)
                return f.CodePage;
            const int cp = charsetCodePage(f.Charset);
            if (cp > 0)
                return cp;
        }
        return m_codePage;
    }

    void flushBytes()
    {
        if (m_bytes.isEmpty())
            return;
        const QByteArray bytes = m_bytes;
        m_bytes.clear();
        const Dest d = st().dest;
        if (d == Dest::Font || d == Dest::FontTable) {
            m_fontName += DecodeCodePage(bytes, m_codePage);
            return;
        }
        const QString text = DecodeCodePage(bytes, codePageOfFont());
        for (QChar c : text)
            addChar(c);
    }

    QTextCharFormat formatOf(const State &s) const
    {
        QTextCharFormat f;
        f.setFontWeight(s.bold ? QFont::Bold : QFont::Normal);
        f.setFontItalic(s.italic);
        f.setFontUnderline(s.underline);
        f.setFontStrikeOut(s.strike);
        f.setFontPointSize(s.size / 2.0);
        const auto it = m_fontsByNo.find(s.font);
        if (it != m_fontsByNo.end() && !m_fonts[size_t(it->second)].Name.isEmpty())
            f.setFontFamilies(QStringList { m_fonts[size_t(it->second)].Name });
        if (s.colour > 0 && size_t(s.colour) < m_colours.size() && m_colours[size_t(s.colour)] >= 0) {
            f.setForeground(BgrToColor(m_colours[size_t(s.colour)]));
        }
        return f;
    }

    void addChar(QChar c)
    {
        if (st().dest != Dest::Text)
            return;
        const State &s = st();
        if (!m_haveRun || !sameFormat(s, m_runState)) {
            flushText();
            m_runState = s;
            m_haveRun = true;
        }
        m_run += c;
    }

    static bool sameFormat(const State &a, const State &b)
    {
        return a.bold == b.bold && a.italic == b.italic && a.underline == b.underline && a.strike == b.strike
            && a.font == b.font && a.size == b.size && a.colour == b.colour;
    }

    void flushText()
    {
        if (m_run.isEmpty())
            return;
        m_cursor.insertText(m_run, formatOf(m_runState));
        m_run.clear();
    }

    void newParagraph()
    {
        if (st().dest != Dest::Text)
            return;
        flushText();
        m_cursor.insertBlock(QTextBlockFormat(), formatOf(st()));
    }

    const QString &m_in;
    QTextDocument &m_doc;
    QTextCursor m_cursor;
    qsizetype m_pos = 0;
    std::vector<State> m_stack;
    int m_overflow = 0;
    int m_skipChars = 0;
    QByteArray m_bytes;
    int m_codePage = 1252;
    int m_defaultFont = -1;

    std::vector<RtfFont> m_fonts;
    std::map<int, qsizetype> m_fontsByNo;
    RtfFont m_font;
    int m_fontNo = -1;
    QString m_fontName;

    std::vector<int> m_colours;
    int m_red = 0, m_green = 0, m_blue = 0;
    bool m_colourSet = false;

    QString m_run;
    State m_runState;
    bool m_haveRun = false;
};

// ---------------------------------------------------------------- writer

QString escapeText(const QString &text)
{
    QString out;
    out.reserve(text.size() + 8);
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'\\' || u == u'{' || u == u'}') {
            out += u'\\';
            out += c;
        } else if (u == u'\t') {
            out += QStringLiteral("\\tab ");
        } else if (u == QChar::LineSeparator || u == u'\n') {
            out += QStringLiteral("\\line ");
        } else if (u == 0x00A0) {
            out += QStringLiteral("\\~");
        } else if (u < 32) {
            continue;
        } else if (u < 128) {
            out += c;
        } else {
            out += QStringLiteral("\\u") + QString::number(qint16(u)) + u'?';
        }
    }
    return out;
}

int colourOf(const QTextCharFormat &f)
{
    if (!f.hasProperty(QTextFormat::ForegroundBrush))
        return -1;
    return int(ColorToBgr(f.foreground().color()));
}

QString familyOf(const QTextCharFormat &f, const QString &fallback)
{
    const QStringList families = f.fontFamilies().toStringList();
    if (!families.isEmpty() && !families.first().isEmpty())
        return families.first();
    return fallback;
}

int halfPointsOf(const QTextCharFormat &f, double fallback)
{
    const double pt = f.hasProperty(QTextFormat::FontPointSize) ? f.fontPointSize() : fallback;
    return std::clamp(int(pt * 2 + 0.5), 1, 3276);
}

} // namespace

bool IsRtf(const QString &text)
{
    qsizetype i = 0;
    while (i < text.size()
        && (text[i] == u' ' || text[i] == u'\r' || text[i] == u'\n' || text[i] == u'\t'
            || text[i] == QChar(0xFEFF)))
        ++i;
    return QStringView(text).mid(i).startsWith(u"{\\rtf");
}

bool RtfToDocument(const QString &rtf, QTextDocument &document)
{
    if (!IsRtf(rtf)) {
        QString plain = rtf;
        plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        document.setPlainText(plain);
        return false;
    }
    RtfReader reader(rtf, document);
    reader.Read();
    return true;
}

QString DocumentPlainText(const QTextDocument &document)
{
    QString text = document.toPlainText();
    text.replace(u'\n', QStringLiteral("\r\n"));
    return text;
}

QString DocumentToRtf(const QTextDocument &document)
{
    const QString defaultFamily = document.defaultFont().family();
    const double defaultSize
        = document.defaultFont().pointSizeF() > 0 ? document.defaultFont().pointSizeF() : 12;

    // Tables first: every font and colour the text uses.
    QStringList fonts { defaultFamily };
    std::vector<int> colours;
    for (QTextBlock b = document.begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat f = it.fragment().charFormat();
            const QString family = familyOf(f, defaultFamily);
            if (!fonts.contains(family))
                fonts << family;
            const int c = colourOf(f);
            if (c >= 0 && std::find(colours.begin(), colours.end(), c) == colours.end())
                colours.push_back(c);
        }

    QString out = QStringLiteral("{\\rtf1\\ansi\\ansicpg936\\deff0\\uc1{\\fonttbl");
    for (qsizetype i = 0; i < fonts.size(); ++i)
        out += QStringLiteral("{\\f%1\\fnil\\fcharset134 ").arg(i) + escapeText(fonts[i])
            + QStringLiteral(";}");
    out += QStringLiteral("}\r\n{\\colortbl ;");
    for (int c : colours) {
        const QColor colour = BgrToColor(c);
        out += QStringLiteral("\\red%1\\green%2\\blue%3;")
                   .arg(colour.red())
                   .arg(colour.green())
                   .arg(colour.blue());
    }
    out += QStringLiteral("}\r\n\\viewkind4\\pard\\plain\\f0\\fs%1 ")
               .arg(halfPointsOf(QTextCharFormat(), defaultSize));

    bool firstBlock = true;
    for (QTextBlock b = document.begin(); b.isValid(); b = b.next()) {
        if (!firstBlock)
            out += QStringLiteral("\\par\r\n");
        firstBlock = false;
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextFragment frag = it.fragment();
            const QTextCharFormat f = frag.charFormat();
            const int c = colourOf(f);
            const int colourIndex
                = c < 0 ? 0 : int(std::find(colours.begin(), colours.end(), c) - colours.begin()) + 1;
            // Each run states its whole format, so that runs read back on their own.
            out += QStringLiteral("{\\f%1\\fs%2\\cf%3")
                       .arg(fonts.indexOf(familyOf(f, defaultFamily)))
                       .arg(halfPointsOf(f, defaultSize))
                       .arg(colourIndex);
            if (f.fontWeight() > QFont::Normal)
                out += QStringLiteral("\\b");
            if (f.fontItalic())
                out += QStringLiteral("\\i");
            if (f.fontUnderline())
                out += QStringLiteral("\\ul");
            if (f.fontStrikeOut())
                out += QStringLiteral("\\strike");
            out += u' ' + escapeText(frag.text()) + u'}';
        }
    }
    out += QStringLiteral("}\r\n");
    return out;
}
