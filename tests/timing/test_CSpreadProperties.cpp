#include "core/CSpread.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>
#include <random>

namespace {

// A plain table of texts that does each row and block operation in the most direct
// way; the grid must agree with it after every step of a random run.
struct Reference
{
    int cols = 0;
    std::vector<std::vector<QString>> rows; // rows[r-1][c-1]

    QString At(qint64 c, qint64 r) const
    {
        if (r < 1 || r > qint64(rows.size()) || c < 1 || c > cols)
            return {};
        return rows[size_t(r - 1)][size_t(c - 1)];
    }
    void Set(qint64 c, qint64 r, const QString &text)
    {
        if (r >= 1 && r <= qint64(rows.size()) && c >= 1 && c <= cols)
            rows[size_t(r - 1)][size_t(c - 1)] = text;
    }
    void Resize(int n) { rows.resize(size_t(std::max(n, 0)), std::vector<QString>(size_t(cols))); }
    void Insert(int r)
    {
        if (r < 1 || r > int(rows.size()))
            return;
        rows.pop_back();
        rows.insert(rows.begin() + (r - 1), std::vector<QString>(size_t(cols)));
    }
    void Delete(int r)
    {
        if (r < 1 || r > int(rows.size()))
            return;
        rows.erase(rows.begin() + (r - 1));
        rows.emplace_back(size_t(cols));
    }
    struct Box
    {
        qint64 r1, c1, r2, c2;
    };
    Box Normal(CSpreadBlock b) const
    {
        b = b.Normalized();
        return { b.Row == -1 ? 1 : b.Row, b.Col == -1 ? 1 : b.Col, b.Row == -1 ? qint64(rows.size()) : b.Row2,
            b.Col == -1 ? cols : b.Col2 };
    }
    void Clear(const CSpreadBlock &block)
    {
        const Box b = Normal(block);
        for (qint64 r = std::max<qint64>(b.r1, 1); r <= std::min<qint64>(b.r2, rows.size()); ++r)
            for (qint64 c = std::max<qint64>(b.c1, 1); c <= std::min<qint64>(b.c2, cols); ++c)
                Set(c, r, {});
    }
    void Move(const CSpreadBlock &block, int destRow, int destCol)
    {
        const CSpreadBlock n = block.Normalized();
        const Box b = Normal(block);
        const qint64 dr = n.Row == -1 ? 0 : destRow - b.r1;
        const qint64 dc = n.Col == -1 ? 0 : destCol - std::max<qint64>(b.c1, 1);
        const auto before = rows;
        const auto old = [&](qint64 c, qint64 r) {
            if (r < 1 || r > qint64(before.size()) || c < 1 || c > cols)
                return QString();
            return before[size_t(r - 1)][size_t(c - 1)];
        };
        for (qint64 r = 1; r <= qint64(rows.size()); ++r)
            for (qint64 c = 1; c <= cols; ++c)
                if (r >= b.r1 && r <= b.r2 && c >= std::max<qint64>(b.c1, 1) && c <= b.c2)
                    Set(c, r, {});
        for (qint64 r = 1; r <= qint64(rows.size()); ++r)
            for (qint64 c = 1; c <= cols; ++c) {
                const qint64 sr = r - dr, sc = c - dc;
                if (sr >= b.r1 && sr <= b.r2 && sc >= std::max<qint64>(b.c1, 1) && sc <= b.c2)
                    Set(c, r, old(sc, sr));
            }
    }
};

void ExpectSame(const CSpread &g, const Reference &ref, int step)
{
    ASSERT_EQ(g.MaxRows(), int(ref.rows.size())) << "step " << step;
    for (int r = 1; r <= g.MaxRows(); ++r)
        for (int c = 1; c <= ref.cols; ++c)
            ASSERT_EQ(g.GetText(c, r), ref.At(c, r)) << "step " << step << " cell " << c << "," << r;
}

TEST(SpreadProperties, RandomRowAndBlockOperationsAgreeWithAPlainTable)
{
    std::mt19937 random(20261122);
    const auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random); };
    // Corners now and then -1, beyond the grid, or reversed.
    const auto corner = [&](int size) {
        const int kind = pick(0, 9);
        return kind == 0 ? -1 : kind == 1 ? size + pick(1, 5) : pick(0, size);
    };

    CSpread g;
    QAbstractItemModelTester tester(&g, QAbstractItemModelTester::FailureReportingMode::Fatal);
    Reference ref;
    g.setMaxCols(5);
    ref.cols = 5;
    int counter = 0;

    for (int step = 0; step < 3000; ++step) {
        const int rows = g.MaxRows();
        switch (pick(0, 9)) {
        case 0: {
            const int n = pick(0, 12);
            g.setMaxRows(n);
            ref.Resize(n);
            break;
        }
        case 1:
        case 2: {
            const int r = pick(-1, rows + 1);
            const int c = pick(-1, 6);
            const QString text = QString::number(++counter);
            g.setRow(r);
            g.setCol(c);
            g.setText(text);
            for (int rr = 1; rr <= rows; ++rr)
                for (int cc = 1; cc <= 5; ++cc)
                    if ((r == -1 || r == rr) && (c == -1 || c == cc))
                        ref.Set(cc, rr, text);
            break;
        }
        case 3: {
            const int r = pick(-1, rows + 1);
            g.setRow(r);
            g.InsertRow();
            ref.Insert(r);
            break;
        }
        case 4: {
            const int r = pick(-1, rows + 1);
            g.setRow(r);
            g.DeleteRow();
            ref.Delete(r);
            break;
        }
        case 5: {
            const CSpreadBlock b { corner(rows), corner(5), corner(rows), corner(5) };
            g.setRow(b.Row);
            g.setCol(b.Col);
            g.setRow2(b.Row2);
            g.setCol2(b.Col2);
            g.ClearBlock();
            ref.Clear(b);
            break;
        }
        case 6:
        case 7: {
            const CSpreadBlock b { corner(rows), corner(5), corner(rows), corner(5) };
            const int destRow = pick(-2, rows + 2);
            const int destCol = pick(-2, 7);
            g.setRow(b.Row);
            g.setCol(b.Col);
            g.setRow2(b.Row2);
            g.setCol2(b.Col2);
            g.setDestRow(destRow);
            g.setDestCol(destCol);
            g.MoveBlock();
            ref.Move(b, destRow, destCol);
            break;
        }
        case 8:
            g.setReDraw(!g.ReDraw());
            break;
        default:
            g.setRow(pick(-1, rows + 1));
            g.setCol(pick(-1, 6));
            g.ActivateCell();
            break;
        }
        ExpectSame(g, ref, step);
        if (HasFatalFailure())
            return;
    }
}

} // namespace
