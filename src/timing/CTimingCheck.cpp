#include "timing/CTimingCheck.h"

#include "core/CSpreadCellKeeper.h"
#include "core/IPrompt.h"
#include "core/basConvert.h"
#include "core/basText.h"
#include "player/CPreview.h"
#include "timing/CTimingGrid.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

namespace {

const QString crlf = QStringLiteral("\r\n");

// The lines that a check looks at, in the preview's order.
struct Candidate
{
    double Start;
    double End;
    qint32 Row;
};

// The lines that hold a point strictly inside their span. A line holds x when it starts
// before x and ends after it. With the lines sorted by start, those starting before x
// are a prefix; a tree of the latest end over that order finds the ones in it that end
// after x without walking the others, so a line spanning the whole film costs no more
// than a short one.
class SpanTree
{
public:
    explicit SpanTree(const std::vector<Candidate> &lines)
        : m_lines(lines)
        , m_byStart(lines.size())
    {
        for (size_t i = 0; i < lines.size(); ++i)
            m_byStart[i] = i;
        std::stable_sort(m_byStart.begin(), m_byStart.end(),
            [&](size_t a, size_t b) { return lines[a].Start < lines[b].Start; });
        while (m_leaves < lines.size())
            m_leaves *= 2;
        m_latestEnd.assign(2 * m_leaves, -std::numeric_limits<double>::infinity());
        for (size_t i = 0; i < m_byStart.size(); ++i)
            m_latestEnd[m_leaves + i] = lines[m_byStart[i]].End;
        for (size_t node = m_leaves - 1; node >= 1; --node)
            m_latestEnd[node] = std::max(m_latestEnd[2 * node], m_latestEnd[2 * node + 1]);
    }

    // Appends the index of every line but `self` that holds x.
    void Holders(double x, size_t self, std::vector<size_t> &out) const
    {
        const auto startsBefore = [this](size_t i, double v) { return m_lines[i].Start < v; };
        const size_t before = size_t(
            std::lower_bound(m_byStart.begin(), m_byStart.end(), x, startsBefore) - m_byStart.begin());
        // Depth-first over the nodes that cover part of the prefix and end after x.
        m_stack.assign(1, { 1, 0 }); // node, its first leaf
        while (!m_stack.empty()) {
            const auto [node, first] = m_stack.back();
            m_stack.pop_back();
            if (first >= before || !(m_latestEnd[node] > x))
                continue;
            const size_t width = m_leaves >> (std::bit_width(node) - 1);
            if (width == 1) {
                if (m_byStart[first] != self)
                    out.push_back(m_byStart[first]);
                continue;
            }
            m_stack.push_back({ 2 * node + 1, first + width / 2 });
            m_stack.push_back({ 2 * node, first });
        }
    }

private:
    const std::vector<Candidate> &m_lines;
    std::vector<size_t> m_byStart;
    size_t m_leaves = 1;
    std::vector<double> m_latestEnd;
    mutable std::vector<std::pair<size_t, size_t>> m_stack;
};

bool InRange(qint64 row, std::optional<qint64> from, std::optional<qint64> to)
{
    return !(from && row < *from) && !(to && row > *to);
}

QString RowText(qint32 row)
{
    return QString::number(row);
}

// A whole number from a field: its leading number, rounded, kept within 32 bits.
qint64 FieldNumber(const QString &text)
{
    const double value = basConvert::Round(basConvert::Val(text));
    if (!std::isfinite(value))
        return 0;
    return qint64(std::clamp(
        value, double(std::numeric_limits<qint32>::min()), double(std::numeric_limits<qint32>::max())));
}

double FieldDouble(const QString &text)
{
    try {
        if (basConvert::IsNumeric(text))
            return basConvert::CDbl(text);
    } catch (...) { }
    return basConvert::Val(text);
}

bool EastAsianWide(char32_t c)
{
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0x303E) || (c >= 0x3041 && c <= 0x33FF)
        || (c >= 0x3400 && c <= 0x4DBF) || (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xA000 && c <= 0xA4CF)
        || (c >= 0xA960 && c <= 0xA97F) || (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF)
        || (c >= 0xFE10 && c <= 0xFE19) || (c >= 0xFE30 && c <= 0xFE6F) || (c >= 0xFF00 && c <= 0xFF60)
        || (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1F64F) || (c >= 0x1F900 && c <= 0x1F9FF)
        || (c >= 0x20000 && c <= 0x2FFFD) || (c >= 0x30000 && c <= 0x3FFFD);
}

// Width of a character of the basic plane, found once and kept: two bytes in the system
// code page or an East Asian wide character counts 2.
int BmpWidth(char16_t c)
{
    static std::array<quint8, 0x10000> widths {};
    quint8 &w = widths[c];
    if (w == 0) {
        const bool wide = EastAsianWide(c) || EncodeSystemCodePage(QString(QChar(c))).size() >= 2;
        w = wide ? 2 : 1;
    }
    return w;
}

} // namespace

CTimingCheck::CTimingCheck(CPreview &preview, CSpread &timingGrid)
    : m_preview(preview)
    , m_grid(timingGrid)
{
    m_err.setMaxCols(3);
    m_err.setMaxRows(0);
    m_err.setRow(0);
    const QStringList titles { QStringLiteral("错误内容"), QStringLiteral("错误行"),
        QStringLiteral("相关行") };
    for (int col = 1; col <= 3; ++col) {
        m_err.setCol(col);
        m_err.setText(titles.at(col - 1));
    }
}

QString CTimingCheck::KindText(int kind)
{
    switch (kind) {
    case KindDialogLength:
        return QStringLiteral("文字超过设定长度");
    case KindTimeOrder:
        return QStringLiteral("开始时间大于结束时间");
    case KindOverlap:
        return QStringLiteral("重叠时间轴");
    case KindNoTime:
        return QStringLiteral("没有时间轴");
    case KindShortTime:
        return QStringLiteral("时间轴太短");
    default:
        return QStringLiteral("未定义错误内容");
    }
}

quint32 CTimingCheck::KindColour(int kind)
{
    switch (kind) {
    case KindDialogLength:
        return 0xFF0000;
    case KindTimeOrder:
        return 255;
    case KindOverlap:
        return 0x400080;
    case KindNoTime:
        return 0xFF00FF;
    case KindShortTime:
        return 0x80FF00;
    default:
        return 0;
    }
}

qint64 CTimingCheck::DisplayWidth(QStringView text)
{
    qint64 width = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c < 0x80) {
            ++width;
        } else if (QChar::isHighSurrogate(c) && i + 1 < n && QChar::isLowSurrogate(text[i + 1].unicode())) {
            width += EastAsianWide(QChar::surrogateToUcs4(c, text[i + 1].unicode())) ? 2 : 1;
            ++i;
        } else if (QChar::isSurrogate(c)) {
            ++width;
        } else {
            width += BmpWidth(c);
        }
    }
    return width;
}

std::pair<int, int> CTimingCheck::SelectionRows(CSpread &timingGrid)
{
    const CSpreadCellKeeper keep(timingGrid);
    timingGrid.GetMultiSelection();
    const int blocks = timingGrid.MultiSelCount();
    if (blocks == 0)
        return { -1, -1 };
    int first = std::numeric_limits<int>::max();
    int last = std::numeric_limits<int>::min();
    for (int i = 0; i < blocks; ++i) {
        timingGrid.setMultiSelIndex(i);
        first = std::min(first, timingGrid.Row() == -1 ? 1 : timingGrid.Row());
        last = std::max(last, timingGrid.Row2() == -1 ? timingGrid.MaxRows() : timingGrid.Row2());
    }
    return { first, last };
}

CTimingCheck::Options CTimingCheck::DefaultOptions(CSpread &timingGrid)
{
    Options options;
    const auto [first, last] = SelectionRows(timingGrid);
    options.txtFrom = QString::number(first);
    options.txtTo = QString::number(last);
    return options;
}

QStringList CTimingCheck::CheckDialogLength(
    const CPreview &preview, qint32 limit, std::optional<qint64> from, std::optional<qint64> to)
{
    QStringList faults { QString() };
    const qint64 most = qint64(limit) * 2;
    for (const CPreviewLine *line : preview) {
        if (!InRange(line->RealRowNumber, from, to) || line->m_bDisableCheckTiming)
            continue;
        if (basConvert::Trim(line->Dialog()).isEmpty())
            continue;
        const QString upper = basConvert::UCase(line->Dialog());
        for (QStringView piece : QStringView(upper).split(crlf)) {
            if (DisplayWidth(piece) > most) {
                faults << RowText(line->RealRowNumber);
                break;
            }
        }
    }
    return faults;
}

QStringList CTimingCheck::CheckTimeOrder(
    const CPreview &preview, std::optional<qint64> from, std::optional<qint64> to)
{
    QStringList faults { QString() };
    for (const CPreviewLine *line : preview)
        if (InRange(line->RealRowNumber, from, to) && line->StartTime() > line->EndTime())
            faults << RowText(line->RealRowNumber);
    return faults;
}

QStringList CTimingCheck::CheckOverlap(
    const CPreview &preview, std::optional<qint64> from, std::optional<qint64> to)
{
    std::vector<Candidate> lines;
    lines.reserve(size_t(preview.Count()));
    for (const CPreviewLine *line : preview)
        if (InRange(line->RealRowNumber, from, to) && !line->m_bDisableCheckTiming)
            lines.push_back({ line->StartTime(), line->EndTime(), line->RealRowNumber });

    const SpanTree tree(lines);
    QStringList faults { QString() };
    std::vector<size_t> found;
    for (size_t a = 0; a < lines.size(); ++a) {
        found.clear();
        tree.Holders(lines[a].Start, a, found);
        tree.Holders(lines[a].End, a, found);
        if (found.empty())
            continue;
        std::sort(found.begin(), found.end());
        found.erase(std::unique(found.begin(), found.end()), found.end());
        for (size_t b : found)
            faults << RowText(lines[a].Row) << RowText(lines[b].Row);
    }
    return faults;
}

QStringList CTimingCheck::CheckNoTime(
    const CPreview &preview, std::optional<qint64> from, std::optional<qint64> to)
{
    QStringList faults { QString() };
    for (const CPreviewLine *line : preview) {
        if (!InRange(line->RealRowNumber, from, to) || line->m_bDisableCheckTiming)
            continue;
        if (line->StartTime() == 0 && line->EndTime() == 0 && !line->Dialog().isEmpty())
            faults << RowText(line->RealRowNumber);
    }
    return faults;
}

QStringList CTimingCheck::CheckShortTime(
    const CPreview &preview, double shortest, std::optional<qint64> from, std::optional<qint64> to)
{
    QStringList faults { QString() };
    for (const CPreviewLine *line : preview) {
        if (!InRange(line->RealRowNumber, from, to) || line->m_bDisableCheckTiming)
            continue;
        if (line->StartTime() != 0 && line->EndTime() != 0 && !line->Dialog().isEmpty()
            && line->EndTime() - line->StartTime() < shortest)
            faults << RowText(line->RealRowNumber);
    }
    return faults;
}

int CTimingCheck::cmdCheck(const Options &options)
{
    m_err.setMaxRows(0);
    const bool noFrom = basConvert::Trim(options.txtFrom).isEmpty();
    const qint64 fromValue = noFrom ? 0 : FieldNumber(options.txtFrom);
    const qint64 from = noFrom || fromValue < 1 ? 1 : fromValue;
    const bool noTo = basConvert::Trim(options.txtTo).isEmpty();
    const qint64 toValue = noTo ? 0 : FieldNumber(options.txtTo);
    const qint64 to = noTo || toValue < 1 ? m_grid.MaxRows() : toValue;
    const qint32 limit = basConvert::Trim(options.txtDialogLength).isEmpty()
        ? 25
        : qint32(FieldNumber(options.txtDialogLength));
    const double shortest
        = basConvert::Trim(options.txtShortTime).isEmpty() ? 0.5 : FieldDouble(options.txtShortTime);

    m_preview.UpdateLineNumber();

    if (options.chkDialogLength)
        Report(CheckDialogLength(m_preview, limit, from, to), KindDialogLength);
    if (options.chkTimeErr)
        Report(CheckTimeOrder(m_preview, from, to), KindTimeOrder);
    if (options.chkDoubleTime)
        Report(CheckOverlap(m_preview, from, to), KindOverlap);
    if (options.chkNoTime)
        Report(CheckNoTime(m_preview, from, to), KindNoTime);
    if (options.chkShortTime)
        Report(CheckShortTime(m_preview, shortest, from, to), KindShortTime);

    if (m_err.MaxRows() == 0)
        MsgBox(QStringLiteral("没有发现错误"));
    return m_err.MaxRows();
}

QString CTimingCheck::ResolveRow(const QString &entry)
{
    QString row = entry;
    {
        const CSpreadCellKeeper keep(m_grid);
        const double value = basConvert::Val(entry);
        if (value >= 1 && value <= m_grid.MaxRows()) {
            m_grid.setRow(int(value));
            if (const CPreviewLine *line = m_preview.RowLine(int(value)))
                row = RowText(line->RealRowNumber);
        }
    }
    m_grid.ActivateCell();
    return row;
}

void CTimingCheck::Report(const QStringList &rows, int kind)
{
    const bool drawing = m_err.ReDraw();
    m_err.setReDraw(false);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (rows.at(i).isEmpty())
            continue;
        const int errRow = m_err.MaxRows() + 1;
        m_err.setMaxRows(errRow);
        m_err.setRow(errRow);
        m_err.setCol(1);
        m_err.setText(KindText(kind));
        m_err.setForeColor(KindColour(kind));
        m_err.setCol(2);
        m_err.setText(ResolveRow(rows.at(i)));
        if (kind == KindOverlap && i + 1 < rows.size()) {
            ++i;
            m_err.setCol(3);
            m_err.setText(rows.at(i).isEmpty() ? QString() : ResolveRow(rows.at(i)));
        }
    }
    m_err.setReDraw(drawing);
}

void CTimingCheck::ClickFault(int col, int row)
{
    if (row < 1 || row > m_err.MaxRows() || col < 1 || col > 3)
        return;
    const QString text = basConvert::Trim(m_err.GetText(col == 3 ? 3 : 2, row));
    if (text.isEmpty())
        return;
    const double value = basConvert::Val(text);
    if (value < 1 || value > m_grid.MaxRows())
        return;
    m_grid.setRow(int(value));
    m_grid.ActivateCell();
}
