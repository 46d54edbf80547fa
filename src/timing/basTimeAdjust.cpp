#include "timing/basTimeAdjust.h"

#include "core/CGridAction.h"
#include "core/CSpreadCellKeeper.h"
#include "core/CSpreadDrawingStop.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "script/basScript.h"
#include "timing/CSliderTimeModel.h"
#include "timing/CTimingGrid.h"
#include "timing/ITimeValueDialog.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace basTimeAdjust {

namespace {

using TG = CTimingGrid;

void ReportFault()
{
    MsgBox(Msg(QStringLiteral("TIMING_ERR_102")));
}

bool IsTimeColumn(int col)
{
    return col == TG::ColStartTime || col == TG::ColEndTime;
}

// The selected blocks as the time functions read them, with -1 resolved: rows 1 to
// MaxRows - 1, columns 3 to 4, and then clipped to the grid.
struct TimeBlock
{
    int Row;
    int Row2;
    int Col;
    int Col2;
};

TimeBlock Resolve(const CSpread &grid, int row, int row2, int col, int col2)
{
    TimeBlock b { row, row2, col, col2 };
    if (b.Row == -1)
        b.Row = 1;
    if (b.Row2 == -1)
        b.Row2 = grid.MaxRows() - 1;
    if (b.Col == -1)
        b.Col = TG::ColStartTime;
    if (b.Col2 == -1)
        b.Col2 = TG::ColEndTime;
    b.Row = std::max(b.Row, 1);
    b.Row2 = std::min(b.Row2, grid.MaxRows());
    b.Col = std::max<int>(b.Col, TG::ColStartTime);
    b.Col2 = std::min<int>(b.Col2, TG::ColEndTime);
    return b;
}

// Gathers the selection: with no block, `whenNone` decides the one block.
std::vector<TimeBlock> SelectedTimeBlocks(CSpread &grid, bool allWhenNone)
{
    std::vector<TimeBlock> blocks;
    grid.GetMultiSelection();
    if (!grid.IsBlockSelected() && grid.MultiSelCount() == 0) {
        if (allWhenNone)
            blocks.push_back(Resolve(grid, -1, -1, -1, -1));
        else if (IsTimeColumn(grid.ActiveCol()))
            blocks.push_back(
                Resolve(grid, grid.ActiveRow(), grid.ActiveRow(), grid.ActiveCol(), grid.ActiveCol()));
        return blocks;
    }
    for (int i = 0; i < grid.MultiSelCount(); ++i) {
        grid.setMultiSelIndex(i);
        blocks.push_back(Resolve(grid, grid.Row(), grid.Row2(), grid.Col(), grid.Col2()));
    }
    return blocks;
}

// Visits each cell of the blocks, column first, telling whether it holds text.
template <typename F>
void ForEachTimeCell(const CSpread &grid, const std::vector<TimeBlock> &blocks, F &&visit)
{
    for (const TimeBlock &b : blocks) {
        for (int col = b.Col; col <= b.Col2; ++col) {
            for (int row = b.Row; row <= b.Row2; ++row) {
                const QString text = grid.GetText(col, row);
                visit(col, row, text, !basScript::TrimView(text).isEmpty());
            }
        }
    }
}

// The times of every row, read once and kept up to date while a shift writes, so that
// the overlap guard sees the rows as they stand at each moment. Each row's earlier and
// later time are also kept in order of value: the guard only has to look at rows whose
// time lies between a cell's old and new time.
class RowTimes
{
public:
    explicit RowTimes(const CSpread &grid)
    {
        const int rows = grid.MaxRows();
        m_start.resize(size_t(rows) + 1);
        m_end.resize(size_t(rows) + 1);
        for (int row = 1; row <= rows; ++row) {
            m_start[size_t(row)] = StringToTime(grid.GetText(TG::ColStartTime, row));
            m_end[size_t(row)] = StringToTime(grid.GetText(TG::ColEndTime, row));
            index(row);
        }
    }

    int Rows() const { return int(m_start.size()) - 1; }
    double Start(int row) const { return m_start[size_t(row)]; }
    double End(int row) const { return m_end[size_t(row)]; }

    void Set(int row, int column, double value)
    {
        unindex(row);
        (column == TG::ColStartTime ? m_start : m_end)[size_t(row)] = value;
        index(row);
    }

    // The rows (not `row`) whose earlier time (`later` false) or later time lies in
    // [from, to] with the ends taken as asked, in row order, with that time.
    std::vector<std::pair<int, double>> RowsBetween(
        bool later, double from, bool fromOpen, double to, bool toOpen, int row) const
    {
        const std::set<Entry> &byValue = later ? m_hi : m_lo;
        std::vector<std::pair<int, double>> found;
        auto it = byValue.lower_bound(Entry { from, 0 });
        for (; it != byValue.end(); ++it) {
            const double v = it->first;
            if (v > to || (toOpen && v == to))
                break;
            if ((fromOpen && v == from) || it->second == row)
                continue;
            found.emplace_back(it->second, v);
        }
        std::sort(found.begin(), found.end());
        return found;
    }

private:
    using Entry = std::pair<double, int>;

    // A time of 0 never holds a move back, so rows without times stay out of the order.
    void index(int row)
    {
        if (const double lo = std::min(Start(row), End(row)); lo != 0)
            m_lo.insert({ lo, row });
        if (const double hi = std::max(Start(row), End(row)); hi != 0)
            m_hi.insert({ hi, row });
    }
    void unindex(int row)
    {
        m_lo.erase({ std::min(Start(row), End(row)), row });
        m_hi.erase({ std::max(Start(row), End(row)), row });
    }

    std::vector<double> m_start;
    std::vector<double> m_end;
    std::set<Entry> m_lo;
    std::set<Entry> m_hi;
};

// Walks the other rows in order as the guard's rule does, but only those that can stop
// the move: a start moved earlier can only be held by a row ending in [S + delta, S),
// an end moved later only by a row starting in (E, E + delta]. The limit only ever
// grows towards the old time, so a row outside that range can never count.
double Limit(const RowTimes &times, int row, int column, double delta)
{
    if (delta == 0 || !IsTimeColumn(column))
        return delta;
    if ((column == TG::ColStartTime && delta > 0) || (column == TG::ColEndTime && delta < 0))
        return delta;
    if (row < 1 || row > times.Rows())
        return delta;
    const double s = times.Start(row);
    const double e = times.End(row);
    if (column == TG::ColStartTime) {
        double newS = s + delta;
        for (const auto &[other, hi] : times.RowsBetween(true, newS, false, s, true, row)) {
            if (hi != 0 && hi < s && hi >= newS)
                newS = hi + 0.01;
        }
        return std::min(newS, s) - s;
    }
    double newE = e + delta;
    for (const auto &[other, lo] : times.RowsBetween(false, e, true, newE, false, row)) {
        if (lo != 0 && lo > e && lo <= newE)
            newE = lo - 0.01;
    }
    return std::max(newE, e) - e;
}

// A cell of a number column: empty reads as 0, other text that is no number is a fault.
double NumberValue(const QString &text)
{
    const QStringView trimmed = basScript::TrimView(text);
    return trimmed.isEmpty() ? 0 : basConvert::CDbl(trimmed);
}

// The value typed into the input box: an optional sign, then a time as a person types
// it ("1.5", "1:02.5").
double ParseTypedValue(const QString &typed)
{
    QStringView text = basScript::TrimView(typed);
    double sign = 1;
    if (text.startsWith(u'-') || text.startsWith(u'+')) {
        sign = text.startsWith(u'-') ? -1 : 1;
        text = text.sliced(1);
    }
    return sign * LooseStringToTime(text);
}

} // namespace

double LatestTime(const CTimingGrid &form)
{
    const CSpread &grid = form.Spread();
    double latest = 0;
    bool any = false;
    for (int col : { TG::ColStartTime, TG::ColEndTime }) {
        for (int row = 1; row <= grid.MaxRows(); ++row) {
            const QString text = grid.GetText(col, row);
            if (text.isEmpty())
                continue;
            const double t = StringToTime(text);
            latest = any ? std::max(latest, t) : t;
            any = true;
        }
    }
    return latest;
}

double LimitShiftForOverlap(const CTimingGrid &form, int row, int column, double delta)
{
    return Limit(RowTimes(form.Spread()), row, column, delta);
}

void ShiftTimes(CTimingGrid &form, double delta)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "VELMAR_UNDO_208");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    try {
        const std::vector<TimeBlock> blocks = SelectedTimeBlocks(grid, false);
        const bool guard = AvoidOverlapTiming;
        std::unique_ptr<RowTimes> times;
        if (guard)
            times = std::make_unique<RowTimes>(grid);
        ForEachTimeCell(grid, blocks, [&](int col, int row, const QString &text, bool taken) {
            if (taken) {
                const double t = StringToTime(text);
                const double moved = t + (guard ? Limit(*times, row, col, delta) : delta);
                grid.SetText(col, row, TimeToString(moved, 2));
                if (guard) // the guard reads the cell back as the next cells will see it
                    times->Set(row, col, StringToTime(grid.GetText(col, row)));
            }
            form.TellPreview(col, row);
        });
    } catch (...) {
        ReportFault();
    }
}

void ScaleTimes(CTimingGrid &form, double delta)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "VELMAR_UNDO_209");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    try {
        const double total = LatestTime(form);
        if (total == 0)
            return;
        const std::vector<TimeBlock> blocks = SelectedTimeBlocks(grid, true);
        ForEachTimeCell(grid, blocks, [&](int col, int row, const QString &text, bool taken) {
            if (!taken)
                return;
            const double t = StringToTime(text);
            grid.SetText(col, row, TimeToString(t + delta / total * t, 2));
            form.TellPreview(col, row);
        });
    } catch (...) {
        ReportFault();
    }
}

void AskTimeAdjust(CTimingGrid &form, int kind, ITimeValueDialog *dialog)
{
    try {
        CSliderTimeModel model;
        model.setDescription(Msg(kind == AdjustShift ? QStringLiteral("AJUST_TIME_MSG_301")
                                                     : QStringLiteral("AJUST_TIME_MSG_302")));
        double start = 0;
        if (kind == AdjustScale25To23)
            start = LatestTime(form) * 0.04096;
        else if (kind == AdjustScale23To25)
            start = LatestTime(form) * -0.04096;
        model.setEnableSign(true);
        model.setEnableHour(true);
        model.setEnableMinite(true);
        model.setEnableSecond(true);
        model.setEnableMiniSecond(true);
        model.setValue(start);
        model.setTitle(Msg(QStringLiteral("AJUST_TIME_MSG_300")));

        if (dialog) {
            dialog->SetTopMost(OnTop);
            dialog->ShowModal(model);
        } else {
            const std::optional<QString> typed = Prompt().InputBox(
                model.Description(), model.Title(), basConvert::Format(model.Value(), u"0.00"));
            if (typed) {
                model.setValue(ParseTypedValue(*typed));
                model.OK();
            } else {
                model.Cancel();
            }
        }
        if (model.Cancelled)
            return;
        const double value = model.Value();
        if (kind == AdjustShift)
            ShiftTimes(form, value);
        else
            ScaleTimes(form, value);
    } catch (...) {
        ReportFault();
    }
}

void FillIncrement(CTimingGrid &form, int mode)
{
    CSpread &grid = form.Spread();
    const CGridAction action(form, "VELMAR_UNDO_210");
    const CSpreadDrawingStop stop(grid);
    grid.GetMultiSelection();
    if (grid.MultiSelCount() != 1)
        return;
    const CSpreadCellKeeper keep(grid);
    const int first = grid.SelBlockRow();
    const int last = std::min(grid.SelBlockRow2(), grid.MaxRows());
    const int col = grid.SelBlockCol();
    if (first < 1 || first > grid.MaxRows())
        return;
    const bool times = IsTimeColumn(col);
    const bool numbers = col == TG::ColMarginL || col == TG::ColMarginR || col == TG::ColMarginV;
    if (!times && !numbers)
        return;
    try {
        const auto value = [&](int row) {
            const QString text = grid.GetText(col, row);
            return times ? StringToTime(text) : NumberValue(text);
        };
        const double base = value(first);
        double step = 0;
        int from = 0;
        if (mode == 1) {
            step = value(first + 1) - base;
            from = first + 2;
        } else {
            const double span = value(last) - base;
            if (last == first)
                throw span == 0 ? VelmarError::Overflow() : VelmarError::DivisionByZero();
            step = span / (last - first);
            from = first + 1;
        }
        for (int row = from; row <= last; ++row) {
            const double v = base + step * (row - first);
            if (times)
                grid.SetText(col, row, TimeToString(v, 2));
            else
                grid.SetText(col, row, v < 0 ? QStringLiteral("0") : basConvert::CStr(basConvert::Round(v)));
            form.TellPreview(-1, row);
        }
    } catch (...) {
        ReportFault();
    }
}

} // namespace basTimeAdjust
