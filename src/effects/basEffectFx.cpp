#include "effects/basEffectFx.h"

#include "core/CSpread.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basTime.h"
#include "effects/basEffectTag.h"

#include <cmath>
#include <utility>

using namespace basConvert;

namespace basEffectFx {

namespace {

QString num(qint64 value)
{
    return CStr(value);
}

QString num(double value)
{
    return CStr(value);
}

// Division as Basic does it: 0 / 0 overflows, anything else over 0 divides by zero.
double divide(double a, double b)
{
    if (b == 0)
        throw a == 0 ? VelmarError::Overflow() : VelmarError::DivisionByZero();
    return a / b;
}

// Integer arithmetic in 32 bits: the exact result, or the overflow fault.
qint32 lng(double value)
{
    return CLng(value);
}

} // namespace

CEffectResult BuildColourCycle(const CEffectArgs &args)
{
    const double startOffset = CDbl(args.txtArg[0]) * 1000;
    const double total = CDbl(args.txtArg[1]) * 1000;
    const double cycle = CDbl(args.txtArg[2]) * 1000;
    const qint32 perCycle = CLng(args.txtArg[3]);
    const qint32 x0 = CLng(args.txtArg[4]);
    const qint32 y0 = CLng(args.txtArg[5]);
    const qint32 dx = CLng(args.txtArg[6]);
    const qint32 dy = CLng(args.txtArg[7]);

    CEffectResult result;
    const QString &text = args.rtfArg;
    int steps = 0;
    for (qsizetype i = 1; i <= text.size(); ++i) {
        qint64 colour1 = args.picArg[0];
        qint64 colour2 = args.picArg[1];
        // later characters start earlier by (i - 1) / N cycles: that makes the wave travel
        qint32 t = lng(-divide(double(i - 1), perCycle) * cycle);
        double next = t + cycle;
        bool first = true;
        QString line;
        for (; t < total + startOffset && steps < MaxColourSteps; ++steps) {
            if (first) {
                line += QStringLiteral("{\\pos(") + num(qint64(lng(double(dx) * i + x0))) + u','
                    + num(qint64(lng(double(dy) * i + y0))) + QStringLiteral(")}{\\c")
                    + basEffectTag::ColourText(colour1) + QStringLiteral("&}");
                first = false;
            }
            line += QStringLiteral("{\\t(") + num(qint64(t)) + u',' + num(Int(next))
                + QStringLiteral(",1,\\c") + basEffectTag::ColourText(colour2) + QStringLiteral("&)}");
            const qint32 previous = t;
            t = lng(next);
            next += cycle;
            std::swap(colour1, colour2);
            if (t <= previous && cycle <= 0)
                break; // a cycle that does not move on would never reach the end
        }
        line += text[i - 1];
        result.Lines << line;
    }
    return result;
}

CEffectResult BuildMove(const CEffectArgs &args)
{
    const qint32 x1 = CLng(args.txtArg[0]);
    const qint32 y1 = CLng(args.txtArg[1]);
    const qint32 x2 = CLng(args.txtArg[2]);
    const qint32 y2 = CLng(args.txtArg[3]);
    const qint32 dx = CLng(args.txtArg[4]);
    const qint32 dy = CLng(args.txtArg[5]);
    const qint32 t1 = CLng(args.txtArg[6]);
    const qint32 t2 = CLng(args.txtArg[7]);
    const double length = CDbl(args.txtArg[8]) * 1000;

    QString fade;
    const CEffectSlider &s = args.sldArg;
    if (s.HasSelection()) {
        const qint32 a = lng(divide(s.SelStart, s.Max) * length);
        const qint32 b = lng(divide(double(s.SelStart) + s.SelLength, s.Max) * length);
        fade = QStringLiteral("{\\fade(255,0,255,0,") + num(qint64(a)) + u',' + num(qint64(b)) + u','
            + num(qint64(lng(length))) + QStringLiteral(")}");
    }

    CEffectResult result;
    const QString &text = args.rtfArg;
    for (qsizetype i = 1; i <= text.size(); ++i) {
        const double k = double(i - 1);
        QString line = fade + QStringLiteral("{\\move(") + num(qint64(lng(x1 + k * dx))) + u','
            + num(qint64(lng(y1 + k * dy))) + u',' + num(qint64(lng(x2 + k * dx))) + u','
            + num(qint64(lng(y2 + k * dy)));
        if (t1 != 0 || t2 != 0)
            line += u',' + num(qint64(t1)) + u',' + num(qint64(t2));
        line += QStringLiteral(")}") + text[i - 1];
        result.Lines << line;
    }
    return result;
}

CEffectResult BuildPositionSteps(const CEffectArgs &args)
{
    qint32 x = CLng(args.txtArg[0]);
    qint32 y = CLng(args.txtArg[1]);
    CEffectResult result;
    for (const QChar c : args.rtfArg) {
        result.Lines << QStringLiteral("{\\pos(") + num(qint64(x)) + u',' + num(qint64(y))
                + QStringLiteral(")}") + c;
        // the spacing is read anew for each character
        x = lng(double(x) + CLng(args.txtArg[2]));
        y = lng(double(y) + CLng(args.txtArg[3]));
    }
    return result;
}

CEffectResult BuildDrawing(const CEffectArgs &args)
{
    qint32 scale = args.sldArg.Value;
    if (scale < 2)
        scale = 1;
    QString out = QStringLiteral("{\\p") + num(qint64(scale)) + u'}';
    const qint32 baseline = CLng(args.txtDrawYbaseline);
    if (baseline != 0)
        out += QStringLiteral("{\\pbo") + num(qint64(baseline)) + u'}';
    // straight lines, Bezier and B-spline are offered, but the letter is always "s"
    const QString curve = QStringLiteral("s");
    const double factor = std::pow(2.0, scale - 1);

    int kept = 0;
    const CEffectSpread &grid = args.spdArg;
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        const QString xText = Trim(grid.Text(row, 1));
        const QString yText = Trim(grid.Text(row, 2));
        if (xText.isEmpty() || yText.isEmpty())
            continue;
        const qint32 x = lng(CDbl(xText) * factor);
        const qint32 y = lng(CDbl(yText) * factor);
        ++kept;
        if (kept == 1)
            out += args.optDrawMN == 0 ? QStringLiteral("m ") : QStringLiteral("n ");
        else if (kept == 2)
            out += curve + u' ';
        out += num(qint64(x)) + u' ' + num(qint64(y)) + u' ';
    }
    out += QStringLiteral("c{\\p0}");

    CEffectResult result;
    result.Lines << out;
    result.LineEnds = false;
    return result;
}

QList<CKaraokeSyllable> SplitKaraoke(const QString &text)
{
    QList<CKaraokeSyllable> records(1);
    qsizetype from = 0;
    for (;;) {
        const qsizetype open = text.indexOf(QStringLiteral("{\\K"), from, Qt::CaseInsensitive);
        const qsizetype close = open < 0 ? -1 : text.indexOf(u'}', open + 3);
        if (open < 0 || close < 0) {
            // an unclosed tag is no tag: the rest stays text
            records.last().Text = text.mid(from);
            return records;
        }
        records.last().Text = text.mid(from, open - from);
        CKaraokeSyllable next;
        const qsizetype k = open + 2;
        const QChar after = k + 1 < text.size() ? text[k + 1] : QChar();
        next.TagName = text.mid(k, after == u'f' || after == u'o' ? 2 : 1);
        for (qsizetype i = k + next.TagName.size(); i < close; ++i) {
            const char16_t c = text[i].unicode();
            if (c >= u'0' && c <= u'9')
                next.Duration = CInt(double(next.Duration) * 10 + (c - u'0'));
        }
        records.append(next);
        from = close + 1;
    }
}

CEffectResult BuildKaraokePlus(const CEffectArgs &args)
{
    const QString &symbols = args.txtArg[0];
    const QList<CKaraokeSyllable> records = SplitKaraoke(args.rtfArg);
    QString out = records.first().Text;
    double time = 0;
    for (qsizetype i = 1; i < records.size(); ++i) {
        const CKaraokeSyllable &r = records[i];
        const double end = time + r.Duration * 10.0;
        out += QStringLiteral("{\\t(") + num(time) + u',' + num(end) + u',' + symbols + QStringLiteral(")}");
        if (args.chkArg)
            out += QStringLiteral("{\\") + r.TagName + num(qint64(r.Duration)) + u'}';
        out += r.Text + QStringLiteral("{\\r}");
        time = end;
    }
    CEffectResult result;
    result.Lines << out;
    result.LineEnds = false;
    return result;
}

namespace {

// The time-difference filling over any grid that reads and writes cells by row and
// column from 1 and grows by rows.
template <typename Cells> void timeDifference(int option, const QString &countText, Cells cells)
{
    const qint32 count = CLng(countText);
    const int last = qMin(count, MaxTimeDifferenceRows);
    qint32 k = 0; // not reset between the columns
    for (int col = 1; col <= 2; ++col) {
        const double t1 = StringToTime(cells.text(1, col));
        double d = 0, acc = 0;
        int firstRow = 0, lastRow = 0;
        if (option == 0) {
            d = StringToTime(cells.text(2, col)) - t1;
            firstRow = 3;
            lastRow = last;
        } else if (option == 1) {
            d = StringToTime(cells.text(2, col)) - t1;
            acc = StringToTime(cells.text(3, col)) - t1 - 2 * d;
            firstRow = 4;
            lastRow = last;
        } else if (option == 2) {
            d = divide(StringToTime(cells.text(count, col)) - t1, double(count) - 1);
            firstRow = 2;
            lastRow = last - 1;
        } else {
            return;
        }
        double t = t1 + (firstRow - 1) * d + k * acc;
        for (int r = firstRow; r <= lastRow; ++r) {
            if (cells.maxRows() <= r)
                cells.setMaxRows(r + 1);
            cells.setText(r, col, TimeToString(t, 2));
            k = r;
            t = t + d + r * acc;
        }
    }
}

struct EffectSpreadCells
{
    CEffectSpread &grid;
    QString text(int row, int col) const { return grid.Text(row, col); }
    void setText(int row, int col, const QString &text) { grid.setText(row, col, text); }
    int maxRows() const { return grid.MaxRows(); }
    void setMaxRows(int rows) { grid.setMaxRows(rows); }
};

struct SpreadCells
{
    CSpread &grid;
    QString text(int row, int col) const { return grid.GetText(col, row); }
    void setText(int row, int col, const QString &text) { grid.SetText(col, row, text); }
    int maxRows() const { return grid.MaxRows(); }
    void setMaxRows(int rows) { grid.setMaxRows(rows); }
};

} // namespace

void BuildTimeDifference(int option, const QString &countText, CEffectSpread &grid)
{
    timeDifference(option, countText, EffectSpreadCells { grid });
}

void BuildTimeDifference(int option, const QString &countText, CSpread &grid)
{
    timeDifference(option, countText, SpreadCells { grid });
}

QStringList SplitResultText(const QString &text)
{
    return text.split(QStringLiteral("\r\n"));
}

} // namespace basEffectFx
