#include "translation/basRtf.h"

#include <QColor>
#include <QTextBlock>
#include <QTextDocument>

#include <gtest/gtest.h>

namespace {

// The effective format of each run of a document, in a comparable form.
struct Run
{
    QString Text;
    bool Bold, Italic, Underline, Strike;
    QString Family;
    double Size;
    int Colour; // -1: none given
    bool operator==(const Run &o) const
    {
        return Text == o.Text && Bold == o.Bold && Italic == o.Italic && Underline == o.Underline
            && Strike == o.Strike && Family == o.Family && Size == o.Size && Colour == o.Colour;
    }
};

std::vector<Run> runs(const QTextDocument &doc)
{
    std::vector<Run> out;
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat f = it.fragment().charFormat();
            const QStringList fam = f.fontFamilies().toStringList();
            const int colour = f.hasProperty(QTextFormat::ForegroundBrush) ? f.foreground().color().red()
                    | (f.foreground().color().green() << 8) | (f.foreground().color().blue() << 16)
                                                                           : -1;
            Run r { it.fragment().text(), f.fontWeight() > QFont::Normal, f.fontItalic(), f.fontUnderline(),
                f.fontStrikeOut(), fam.isEmpty() ? doc.defaultFont().family() : fam.first(),
                f.hasProperty(QTextFormat::FontPointSize) ? f.fontPointSize()
                                                          : doc.defaultFont().pointSizeF(),
                colour };
            // Adjacent runs of one format count as one.
            if (!out.empty() && out.back().Text != QStringLiteral("\u2029")) {
                Run &last = out.back();
                Run probe = r;
                probe.Text = last.Text;
                if (probe == last) {
                    last.Text += r.Text;
                    continue;
                }
            }
            out.push_back(r);
        }
        out.push_back(Run { QStringLiteral("\u2029"), false, false, false, false, {}, 0, -1 });
    }
    return out;
}

QString plain(const QString &rtf)
{
    QTextDocument doc;
    RtfToDocument(rtf, doc);
    return DocumentPlainText(doc);
}

TEST(RtfReader, FormatsFontsAndColours)
{
    QTextDocument doc;
    ASSERT_TRUE(
        RtfToDocument(QStringLiteral("{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fnil Arial;}{\\f1\\fswiss "
                                     "Courier New;}}{\\colortbl ;\\red255\\green0\\blue0;\\red0\\green0"
                                     "\\blue128;}\\pard\\fs20 plain \\b bold\\b0  {\\i\\cf1 red italic} "
                                     "\\ul u\\ulnone  \\strike s\\strike0  \\f1\\fs32\\cf2 big\\par next}"),
            doc));
    EXPECT_EQ(DocumentPlainText(doc), QStringLiteral("plain bold red italic u s big\r\nnext"));
    const auto r = runs(doc);
    ASSERT_GE(r.size(), 9u);
    EXPECT_EQ(r[0].Text, QStringLiteral("plain "));
    EXPECT_EQ(r[0].Family, QStringLiteral("Arial"));
    EXPECT_DOUBLE_EQ(r[0].Size, 10);
    EXPECT_EQ(r[1].Text, QStringLiteral("bold"));
    EXPECT_TRUE(r[1].Bold);
    EXPECT_EQ(r[3].Text, QStringLiteral("red italic"));
    EXPECT_TRUE(r[3].Italic);
    EXPECT_EQ(r[3].Colour, 0x0000FF); // blue in the high byte
    EXPECT_FALSE(r[4].Italic); // the group ended
    EXPECT_EQ(r[5].Text, QStringLiteral("u"));
    EXPECT_TRUE(r[5].Underline);
    EXPECT_EQ(r[7].Text, QStringLiteral("s"));
    EXPECT_TRUE(r[7].Strike);
    EXPECT_EQ(r[9].Text, QStringLiteral("big"));
    EXPECT_EQ(r[9].Family, QStringLiteral("Courier New"));
    EXPECT_DOUBLE_EQ(r[9].Size, 16);
    EXPECT_EQ(r[9].Colour, 0x800000);
}

TEST(RtfReader, CodePagesAndUnicode)
{
    // GBK bytes under \ansicpg936, and by the font's character set.
    EXPECT_EQ(
        plain(QStringLiteral("{\\rtf1\\ansi\\ansicpg936 \\'c4\\'e3\\'ba\\'c3}")), QStringLiteral("你好"));
    EXPECT_EQ(plain(QStringLiteral("{\\rtf1\\ansi{\\fonttbl{\\f0\\fcharset134 \\'cb\\'ce\\'cc\\'e5;}}\\f0 "
                                   "\\'d7\\'d6\\'c4\\'bb}")),
        QStringLiteral("字幕"));
    // Western text under 1252.
    EXPECT_EQ(plain(QStringLiteral("{\\rtf1\\ansi\\ansicpg1252 caf\\'e9 \\'93q\\'94}")),
        QStringLiteral("café “q”"));
    // \u with its fallbacks, by \uc.
    EXPECT_EQ(plain(QStringLiteral("{\\rtf1 \\u23383?\\u24149?}")), QStringLiteral("字幕"));
    EXPECT_EQ(plain(QStringLiteral("{\\rtf1\\uc2 \\u23383\\'d7\\'d6 x}")), QStringLiteral("字 x"));
    EXPECT_EQ(
        plain(QStringLiteral("{\\rtf1\\uc0 \\u-3913 y}")), QString(QChar(0xF0B7)) + QStringLiteral("y"));
    // A surrogate pair written as two negative values.
    EXPECT_EQ(plain(QStringLiteral("{\\rtf1 \\u-10179?\\u-8704?}")), QStringLiteral("\U0001F600"));
    // Escapes and special characters.
    EXPECT_EQ(
        plain(QStringLiteral("{\\rtf1 a\\\\b\\{c\\}\\tab d\\line e}")), QStringLiteral("a\\b{c}\td\r\ne"));
}

TEST(RtfReader, DestinationsAreSkipped)
{
    EXPECT_EQ(plain(QStringLiteral("{\\rtf1{\\info{\\title secret}{\\author me}}{\\stylesheet{\\s0 Normal;}}"
                                   "{\\*\\generator Writer 1.0;}{\\*\\unknownthing hidden}"
                                   "{\\pict\\pngblip 89504e47}{\\field{\\*\\fldinst HYPERLINK \"x\"}"
                                   "{\\fldrslt shown}} end}")),
        QStringLiteral("shown end"));
}

TEST(RtfReader, WordProcessorOutput)
{
    const QString rtf = QStringLiteral(
        "{\\rtf1\\adeflang1025\\ansi\\ansicpg936\\uc2\\adeff0\\deff0\\stshfdbch13\\stshfloch0\\deflang1033"
        "\\deflangfe2052{\\fonttbl{\\f0\\froman\\fcharset0\\fprq2{\\*\\panose 02020603050405020304}Times New "
        "Roman;}"
        "{\\f13\\fbidi \\fnil\\fcharset134\\fprq2{\\*\\panose "
        "02010600030101010101}\\'cb\\'ce\\'cc\\'e5{\\*\\falt "
        "SimSun};}}{\\colortbl;\\red0\\green0\\blue0;\\red255\\green0\\blue0;}{\\stylesheet{\\ql \\li0\\ri0"
        "\\widctlpar\\wrapdefault\\aspalpha\\aspnum\\faauto\\adjustright\\rin0\\lin0\\itap0 \\rtlch\\fcs1 "
        "\\af0"
        "\\afs24\\alang1025 \\ltrch\\fcs0 "
        "\\fs21\\lang1033\\langfe2052\\kerning2\\loch\\f0\\hich\\af0\\dbch\\af13"
        "\\cgrid\\langnp1033\\langfenp2052 \\snext0 \\sqformat \\spriority0 Normal;}}{\\*\\rsidtbl "
        "\\rsid1\\rsid2}"
        "{\\info{\\author x}{\\creatim\\yr2024\\mo3\\dy9}}\\paperw11906\\paperh16838\\margl1800\\margr1800"
        "{\\*\\xmlnstbl {\\xmlns1 http://schemas.example/}}\\pard\\plain \\ltrpar\\qj \\li0\\ri0\\nowidctlpar"
        "\\rtlch\\fcs1 \\af0\\afs24 \\ltrch\\fcs0 \\fs21\\loch\\af0\\hich\\af0\\dbch\\f13 {\\rtlch\\fcs1 "
        "\\af0 "
        "\\ltrch\\fcs0 \\cf2\\hich\\af0\\dbch\\af13\\loch\\f13 "
        "\\u31532\\'b5\\'da\\u19968\\'d2\\'bb\\u21477\\'be"
        "\\'e4}{\\rtlch\\fcs1 \\af0 \\ltrch\\fcs0 \\insrsid2 \\hich\\af0\\dbch\\af13\\loch\\f0  Line one.}"
        "{\\rtlch\\fcs1 \\af0 \\ltrch\\fcs0 \\insrsid2 \\par }{\\*\\themedata 504b0304}"
        "{\\*\\latentstyles\\lsdstimax375{\\lsdlockedexcept \\lsdqformat1 Normal;}}}");
    QTextDocument doc;
    ASSERT_TRUE(RtfToDocument(rtf, doc));
    EXPECT_EQ(DocumentPlainText(doc), QStringLiteral("第一句 Line one.\r\n"));
    const auto r = runs(doc);
    EXPECT_EQ(r[0].Text, QStringLiteral("第一句"));
    EXPECT_EQ(r[0].Colour, 0x0000FF);
    EXPECT_EQ(r[0].Family, QStringLiteral("宋体"));
    EXPECT_DOUBLE_EQ(r[0].Size, 10.5);
}

TEST(RtfReader, HostileInputDoesNotCrash)
{
    const QStringList hostile {
        QStringLiteral("{\\rtf1 unclosed {\\b bold"),
        QStringLiteral("{\\rtf1 }}}}} after}"),
        QStringLiteral("{\\rtf1 \\fs99999999999999999999 big \\cf-5 neg \\u99999999 \\uc99999 x}"),
        QStringLiteral("{\\rtf1 \\'zz \\'4 \\"),
        QStringLiteral("{\\rtf1 ") + QString(100000, u'{') + QStringLiteral("deep") + QString(100000, u'}')
            + QStringLiteral(" tail}"),
        QStringLiteral(
            "{\\rtf1{\\colortbl\\red999\\green-1\\blue3;;}{\\fonttbl\\f99999999999 x}\\cf1\\f5 t}"),
        QStringLiteral("{\\rtf1 \\") + QString(5000, u'a') + QStringLiteral(" word}"),
        QStringLiteral("{\\rtf1 \x01\x02\x03 ctrl}"),
        QStringLiteral("{\\rtf"),
        QStringLiteral("{\\rtf1 a\\bin5 }}}}}b\\bin999999999 c}"),
    };
    for (const QString &h : hostile) {
        QTextDocument doc;
        EXPECT_TRUE(RtfToDocument(h, doc));
        (void)DocumentPlainText(doc);
    }
    EXPECT_EQ(plain(hostile[0]), QStringLiteral("unclosed bold"));
    EXPECT_EQ(plain(hostile[1]), QStringLiteral(" after"));
    EXPECT_EQ(plain(hostile[4]), QStringLiteral("deep tail"));
    EXPECT_EQ(plain(hostile[6]), QStringLiteral("word"));
    EXPECT_EQ(plain(hostile[9]), QStringLiteral("ab"));
}

TEST(RtfReader, RandomTokenSoupDoesNotCrash)
{
    const QStringList tokens { "{", "}", "\\b", "\\b0", "\\u-5", "\\u70000", "\\'", "\\'c4", "\\*",
        "\\fonttbl", "\\colortbl", "\\red300", ";", "\\f", "\\f-1", "\\fs0", "\\cf99", "\\par", "\\line",
        "\\uc5", "\\bin3", "\\fldrslt", "\\pict", "text", "字", " ", "\\", "\\ansicpg0", "\\ansicpg936",
        "\\fcharset134" };
    quint32 seed = 12345;
    for (int round = 0; round < 300; ++round) {
        QString rtf = QStringLiteral("{\\rtf1");
        for (int i = 0; i < 60; ++i) {
            seed = seed * 1103515245u + 12345u;
            rtf += tokens[(seed >> 16) % tokens.size()];
        }
        QTextDocument doc;
        RtfToDocument(rtf, doc);
        QTextDocument back;
        RtfToDocument(DocumentToRtf(doc), back);
        EXPECT_EQ(DocumentPlainText(back), DocumentPlainText(doc)) << rtf.toStdString();
    }
}

TEST(RtfReader, TextThatIsNotRtfGoesInAsPlainText)
{
    QTextDocument doc;
    EXPECT_FALSE(RtfToDocument(QStringLiteral("line {one}\r\nline \\two"), doc));
    EXPECT_EQ(DocumentPlainText(doc), QStringLiteral("line {one}\r\nline \\two"));
    EXPECT_TRUE(IsRtf(QStringLiteral("\r\n {\\rtf1}")));
    EXPECT_FALSE(IsRtf(QStringLiteral("rtf")));
}

TEST(RtfWriter, WhatIsWrittenReadsBackTheSame)
{
    QTextDocument doc;
    RtfToDocument(
        QStringLiteral("{\\rtf1\\ansi\\ansicpg936{\\fonttbl{\\f0 Arial;}{\\f1\\fcharset134 "
                       "\\'cb\\'ce\\'cc\\'e5;}}{\\colortbl ;\\red255\\green0\\blue0;\\red0\\green128"
                       "\\blue255;}\\f0\\fs24 Hello {\\b\\cf1 bold red} {\\f1\\fs36\\i 中文\\u-10179?"
                       "\\u-8704?}\\par {\\ul\\strike\\cf2 under\\tab strike}\\line {\\{\\}\\\\}\\par"
                       "\\par last}"),
        doc);
    const QString rtf = DocumentToRtf(doc);
    for (QChar c : rtf)
        ASSERT_LT(c.unicode(), 128) << "RTF is written in 7-bit text";
    QTextDocument back;
    ASSERT_TRUE(RtfToDocument(rtf, back));
    EXPECT_EQ(DocumentPlainText(back), DocumentPlainText(doc));
    EXPECT_EQ(DocumentPlainText(back),
        QStringLiteral("Hello bold red 中文\U0001F600\r\nunder\tstrike\r\n{}\\\r\n\r\nlast"));
    const auto a = runs(doc);
    const auto b = runs(back);
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i)
        EXPECT_TRUE(a[i] == b[i]) << i << " " << a[i].Text.toStdString();
    // And once more: the writer is stable.
    EXPECT_EQ(DocumentToRtf(back), rtf);
}

TEST(RtfWriter, AnEmptyDocument)
{
    QTextDocument doc;
    QTextDocument back;
    ASSERT_TRUE(RtfToDocument(DocumentToRtf(doc), back));
    EXPECT_EQ(DocumentPlainText(back), QString());
}

} // namespace
