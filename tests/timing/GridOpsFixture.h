#pragma once

#include "core/CScriptedPrompt.h"
#include "core/isub.h"
#include "player/ITimingPreviewHooks.h"
#include "timing/CTimingGrid.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

// A document without text of its own, for a preview to belong to.
class BlankDocument : public isub
{
public:
    QString Content() override { return {}; }
    void setContent(const QString &) override { }
    void Clear() override { }
};

// Records what the grid tells the preview, as "create 3 #5" (row and serial number),
// "delete 4 #2", "update -1 3", "clear".
class GridOpsHooks : public ITimingPreviewHooks
{
public:
    explicit GridOpsHooks(const CTimingGrid &grid)
        : m_grid(grid)
    { }
    void CreatePreviewLine(int row) override
    {
        Calls << QStringLiteral("create %1 #%2").arg(row).arg(m_grid.RowSerial(row));
    }
    void DeletePreviewLine(int row) override
    {
        Calls << QStringLiteral("delete %1 #%2").arg(row).arg(m_grid.RowSerial(row));
    }
    void UpdatePreviewCell(int col, int row) override
    {
        Calls << QStringLiteral("update %1 %2").arg(col).arg(row);
    }
    void ClearPreview() override { Calls << QStringLiteral("clear"); }

    QStringList Calls;

private:
    const CTimingGrid &m_grid;
};

// One row of a small grid: start, end, dialogue.
struct GridRow
{
    QString Start;
    QString End;
    QString Dialog;
};

// A timing grid with recorded preview calls and a scripted prompt.
class GridOpsTest : public ::testing::Test
{
protected:
    GridOpsTest()
        : hooks(t)
    {
        t.SetPreviewHooks(&hooks);
    }
    void SetUp() override { SetPrompt(&prompt); }
    void TearDown() override { SetPrompt(nullptr); }

    CSpread &g() { return t.Spread(); }

    // Fills rows 1..n as a timer would, leaving two spare rows at the end; the hooks'
    // record starts empty afterwards.
    void Fill(const std::vector<GridRow> &rows)
    {
        t.ResetGrid();
        for (int r = 1; r <= int(rows.size()); ++r) {
            g().SetText(CTimingGrid::ColStartTime, r, rows[size_t(r - 1)].Start);
            g().SetText(CTimingGrid::ColEndTime, r, rows[size_t(r - 1)].End);
            g().SetText(CTimingGrid::ColDialog, r, rows[size_t(r - 1)].Dialog);
            t.AppendRow();
        }
        hooks.Calls.clear();
    }

    QStringList Column(int col)
    {
        QStringList texts;
        for (int r = 1; r <= g().MaxRows(); ++r)
            texts << g().GetText(col, r);
        return texts;
    }
    QStringList Starts() { return Column(CTimingGrid::ColStartTime); }
    QStringList Ends() { return Column(CTimingGrid::ColEndTime); }
    QStringList Dialogs() { return Column(CTimingGrid::ColDialog); }
    QList<qint32> Serials()
    {
        QList<qint32> serials;
        for (int r = 1; r <= g().MaxRows(); ++r)
            serials << t.RowSerial(r);
        return serials;
    }

    void Activate(int col, int row)
    {
        g().setRow(row);
        g().setCol(col);
        g().ActivateCell();
    }
    void Select(const QList<CSpreadBlock> &blocks) { g().SetSelection(blocks); }

    CTimingGrid t;
    GridOpsHooks hooks;
    CScriptedPrompt prompt;
};
