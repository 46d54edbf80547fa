#pragma once

#include "timing/CSpread.h"
#include "timing/CTimingColumnView.h"

#include <QStringList>
#include <memory>

class ITimingPreviewHooks;

// The timing grid: one row per script line in sixteen columns, with the row conventions
// of a timing window (spare rows at the end, a serial number in the last column, the
// three line flags kept as cell appearance). It owns the CSpread that a view shows.
//
// The exchange with the script model (loading lines into the grid, storing them back,
// the style and speaker lists) builds on the column layout and flag accessors here.
class CTimingGrid
{
public:
    enum Column {
        ColLineType = 1,
        ColLayer = 2,
        ColStartTime = 3,
        ColEndTime = 4,
        ColStyle = 5,
        ColOwner = 6,
        ColMarginL = 7,
        ColMarginR = 8,
        ColMarginV = 9,
        ColEffect = 10,
        ColEffectY1 = 11,
        ColEffectY2 = 12,
        ColEffectDelay = 13,
        ColEffectFade = 14,
        ColDialog = 15,
        ColSerialNo = 16,
    };
    static constexpr int ColumnCount = 16;

    // Cell appearance of the line flags.
    static constexpr quint32 ChangedForeColor = 255;
    static constexpr quint32 UnchangedForeColor = CSpread::ColorButtonText;
    static constexpr quint32 QuestionBackColor = 0xFFFFC0;
    static constexpr quint32 NoQuestionBackColor = CSpread::ColorWindow;

    CTimingGrid();
    ~CTimingGrid();
    CTimingGrid(const CTimingGrid &) = delete;
    CTimingGrid &operator=(const CTimingGrid &) = delete;

    CSpread &Spread() { return *m_spread; }
    const CSpread &Spread() const { return *m_spread; }

    // The preview that is told of rows; nullptr tells nobody. Not owned.
    void SetPreviewHooks(ITimingPreviewHooks *hooks) { m_hooks = hooks; }
    ITimingPreviewHooks *PreviewHooks() const { return m_hooks; }

    // Titles, kinds, ranges, lists and the columns shown at start, as the window sets
    // them when it loads. The constructor does this once.
    void SetupColumns();

    // The line types by their Chinese names, the effects by their catalogue texts, in
    // the order of their values.
    static QStringList LineTypeItems();
    static QStringList EffectItems();

    // The next serial number of a row; the counter only grows.
    qint32 RowSerialNo();
    qint32 LastRowSerialNo() const { return m_serialNo; }

    // Sets 16 columns; with openMode 0 empties the grid and the preview and makes two
    // rows, each with a serial number and a preview line.
    void ResetGrid(int openMode = 0);
    // One row at the end with cleared flag colours, a serial number and a preview line.
    // The current cell is kept.
    void AppendRow();
    // The last row and its preview line go.
    void RemoveLastRow();

    // Hides or shows a column; column 10 takes 11 to 14 with it. Hiding the column of
    // the active cell first moves the active cell to column 0 of its row.
    void HideColumn(int col);
    void ShowColumn(int col);

    // A row is blank when the trimmed texts of both times and the dialogue are empty.
    bool IsRowBlank(int row) const;
    qint32 RowSerial(int row) const;

    // The line flags of a row, painted and read back exactly as the grid keeps them.
    void SetRowChanged(int row, bool changed);
    bool RowChanged(int row) const;
    void SetRowQuestion(int row, bool question);
    bool RowQuestion(int row) const;
    void SetRowCheckDisabled(int row, bool disabled);
    bool RowCheckDisabled(int row) const;

    // The column view menu of the SSA button.
    CTimingColumnView &ColumnView() { return m_columnView; }

    // Tells the preview, when there is one.
    void TellPreview(int col, int row);

private:
    void SetColumnHidden(int col, bool hidden);

    std::unique_ptr<CSpread> m_spread;
    ITimingPreviewHooks *m_hooks = nullptr;
    qint32 m_serialNo = 0;
    CTimingColumnView m_columnView;
};
