#include "script/basScript.h"

#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basTime.h"

#include <cmath>

namespace basScript {

void CheckLineIndex(qsizetype index)
{
    if (index >= MaxReaderLines)
        throw VelmarError::Overflow();
}

bool EqualsUpper(QStringView text, QStringView upperWord)
{
    return text.compare(upperWord, Qt::CaseInsensitive) == 0;
}

bool StartsWithUpper(QStringView text, QStringView upperWord)
{
    return text.startsWith(upperWord, Qt::CaseInsensitive);
}

void AppendPattern0000(QString &out, const QString &text)
{
    const qsizetype n = text.size();
    bool digits = n > 0 && n <= 4;
    for (qsizetype i = 0; digits && i < n; ++i)
        digits = text[i] >= u'0' && text[i] <= u'9';
    if (digits) {
        for (qsizetype i = n; i < 4; ++i)
            out += u'0';
        out += text;
        return;
    }
    if (!basConvert::IsNumeric(text)) {
        out += text;
        return;
    }
    out += basConvert::Format(basConvert::CDbl(text), u"0000");
}

namespace {

inline int digit(QChar c)
{
    const char16_t u = c.unicode();
    return u >= u'0' && u <= u'9' ? int(u - u'0') : -1;
}

} // namespace

double FastStringToTime(QStringView t)
{
    if (t.size() == 10 && t[1] == u':' && t[4] == u':' && t[7] == u'.') {
        const int h = digit(t[0]), m1 = digit(t[2]), m2 = digit(t[3]), s1 = digit(t[5]), s2 = digit(t[6]),
                  f1 = digit(t[8]), f2 = digit(t[9]);
        if ((h | m1 | m2 | s1 | s2 | f1 | f2) >= 0) {
            return double(h) * 3600 + double(m1 * 10 + m2) * 60 + double(s1 * 10 + s2)
                + double(f1 * 10 + f2) / 100;
        }
    }
    return StringToTime(t);
}

qsizetype AppendWithoutOverrideBlocks(QString &out, QStringView text)
{
    const qsizetype base = out.size();
    const qsizetype n = text.size();
    out.resize(base + n);
    QChar *kept = out.data() + base;
    const QChar *src = text.data();
    qsizetype w = 0;
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = src[i];
        // What is kept never holds "{\": a backslash behind a kept "{" opens a block,
        // the leftmost one there is.
        if (c == u'\\' && w > 0 && kept[w - 1] == u'{') {
            --w;
            const qsizetype close = text.indexOf(u'}', i + 1);
            if (close < 0)
                break;
            i = close;
            continue;
        }
        kept[w++] = c;
    }
    out.truncate(base + w);
    return w;
}

const ScriptNames &Names()
{
    static const ScriptNames names { QStringLiteral("Default"), QStringLiteral("*Default"),
        QStringLiteral("NTP"), QStringLiteral("Karaoke"), QStringLiteral("Scroll up"),
        QStringLiteral("Scroll down"), QStringLiteral("Banner") };
    return names;
}

} // namespace basScript
