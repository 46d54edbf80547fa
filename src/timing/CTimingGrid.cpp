#include "timing/CTimingGrid.h"

#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "timing/CSpreadCellKeeper.h"
#include "timing/ITimingPreviewHooks.h"

#include <limits>

namespace {

// Title keys of columns 1 to 15; column 16 has a literal title.
constexpr const char16_t *kTitleKeys[CTimingGrid::ColumnCount - 1]
    = { u"TIMING_COL_TITLE_F00", u"TIMING_COL_TITLE_100", u"TIMING_COL_TITLE_200", u"TIMING_COL_TITLE_300",
          u"TIMING_COL_TITLE_400", u"TIMING_COL_TITLE_500", u"TIMING_COL_TITLE_600", u"TIMING_COL_TITLE_700",
          u"TIMING_COL_TITLE_800", u"TIMING_COL_TITLE_900", u"TIMING_COL_TITLE_A00", u"TIMING_COL_TITLE_B00",
          u"TIMING_COL_TITLE_C00", u"TIMING_COL_TITLE_D00", u"TIMING_COL_TITLE_E00" };

bool ShownAtStart(int col)
{
    return col == CTimingGrid::ColStartTime || col == CTimingGrid::ColEndTime
        || col == CTimingGrid::ColDialog;
}

} // namespace

CTimingGrid::CTimingGrid()
    : m_spread(std::make_unique<CSpread>())
    , m_columnView(*this)
{
    SetupColumns();
}

CTimingGrid::~CTimingGrid() = default;

QStringList CTimingGrid::LineTypeItems()
{
    return LineTypeChineseNames();
}

QStringList CTimingGrid::EffectItems()
{
    QStringList items;
    for (int i = 900; i <= 905; ++i)
        items << Msg(QStringLiteral("TIMING_COL_LIST_%1").arg(i));
    return items;
}

void CTimingGrid::SetupColumns()
{
    CSpread &grid = *m_spread;
    const CSpreadCellKeeper keep(grid);
    const bool drawing = grid.ReDraw();
    grid.setReDraw(false);
    grid.setMaxCols(ColumnCount);

    grid.setRow(0);
    for (int col = 1; col < ColumnCount; ++col) {
        grid.setCol(col);
        grid.setText(Msg(QString::fromUtf16(kTitleKeys[col - 1])));
    }
    grid.setCol(ColSerialNo);
    grid.setText(QStringLiteral("序列号"));

    const auto setType = [&grid](int col, const CSpreadCellType &type) {
        grid.setCol(col);
        grid.setCellType(type);
    };
    grid.setRow(-1);
    setType(ColLineType, CSpreadCellType::ListType(LineTypeItems()));
    setType(ColLayer, CSpreadCellType::IntegerType(0, 9999));
    CSpreadCellType time = CSpreadCellType::TextType();
    time.Default = QStringLiteral("0:00:00.00");
    setType(ColStartTime, time);
    setType(ColEndTime, time);
    setType(ColStyle, CSpreadCellType::ListType({ QStringLiteral("Default") }));
    setType(ColOwner, CSpreadCellType::ListType({ QStringLiteral("NTP") }));
    for (int col : { ColMarginL, ColMarginR, ColMarginV, ColEffectY1, ColEffectY2, ColEffectFade })
        setType(col, CSpreadCellType::IntegerType(-9999, 9999));
    setType(ColEffect, CSpreadCellType::ListType(EffectItems()));
    CSpreadCellType delay = CSpreadCellType::IntegerType(0, 100);
    delay.Default = QStringLiteral("15");
    setType(ColEffectDelay, delay);
    setType(ColDialog, CSpreadCellType::TextType(10000, true));
    setType(ColSerialNo, CSpreadCellType::IntegerType(0, 99999));

    // Rows made later start with the cleared flag colours.
    grid.setCol(-1);
    grid.setForeColor(UnchangedForeColor);
    grid.setCol(ColDialog);
    grid.setBackColor(NoQuestionBackColor);

    for (int col = 1; col <= ColumnCount; ++col) {
        grid.setCol(col);
        grid.setColHidden(!ShownAtStart(col));
    }
    grid.setReDraw(drawing);
    m_columnView.LoadTexts();
}

qint32 CTimingGrid::RowSerialNo()
{
    if (m_serialNo < std::numeric_limits<qint32>::max())
        ++m_serialNo;
    return m_serialNo;
}

void CTimingGrid::TellPreview(int col, int row)
{
    if (m_hooks)
        m_hooks->UpdatePreviewCell(col, row);
}

void CTimingGrid::ResetGrid(int openMode)
{
    CSpread &grid = *m_spread;
    grid.setMaxCols(ColumnCount);
    if (openMode != 0)
        return;
    grid.setMaxRows(0);
    if (m_hooks)
        m_hooks->ClearPreview();
    grid.setMaxRows(2);
    for (int row = 1; row <= 2; ++row) {
        grid.SetText(ColSerialNo, row, basConvert::CStr(qint64(RowSerialNo())));
        if (m_hooks)
            m_hooks->CreatePreviewLine(row);
    }
}

void CTimingGrid::AppendRow()
{
    CSpread &grid = *m_spread;
    const CSpreadCellKeeper keep(grid);
    const int row = grid.MaxRows() + 1;
    grid.setMaxRows(row);
    if (grid.MaxRows() != row)
        return; // the grid is at its size limit
    grid.setRow(row);
    grid.setCol(ColDialog);
    grid.setBackColor(NoQuestionBackColor);
    grid.setCol(-1);
    grid.setForeColor(UnchangedForeColor);
    grid.SetText(ColSerialNo, row, basConvert::CStr(qint64(RowSerialNo())));
    if (m_hooks)
        m_hooks->CreatePreviewLine(row);
}

void CTimingGrid::RemoveLastRow()
{
    CSpread &grid = *m_spread;
    const int last = grid.MaxRows();
    if (last < 1)
        return;
    if (m_hooks)
        m_hooks->DeletePreviewLine(last);
    grid.setMaxRows(last - 1);
}

void CTimingGrid::SetColumnHidden(int col, bool hidden)
{
    CSpread &grid = *m_spread;
    const CSpreadCellKeeper keep(grid);
    if (hidden && grid.ActiveCol() == col && grid.ActiveRow() >= 1) {
        grid.setRow(grid.ActiveRow());
        grid.setCol(0);
        grid.ActivateCell();
    }
    grid.setCol(col);
    grid.setColHidden(hidden);
}

void CTimingGrid::HideColumn(int col)
{
    SetColumnHidden(col, true);
    if (col == ColEffect)
        for (int c = ColEffectY1; c <= ColEffectFade; ++c)
            SetColumnHidden(c, true);
}

void CTimingGrid::ShowColumn(int col)
{
    SetColumnHidden(col, false);
    if (col == ColEffect)
        for (int c = ColEffectY1; c <= ColEffectFade; ++c)
            SetColumnHidden(c, false);
}

bool CTimingGrid::IsRowBlank(int row) const
{
    const CSpread &grid = *m_spread;
    return basConvert::Trim(grid.GetText(ColStartTime, row)).isEmpty()
        && basConvert::Trim(grid.GetText(ColEndTime, row)).isEmpty()
        && basConvert::Trim(grid.GetText(ColDialog, row)).isEmpty();
}

qint32 CTimingGrid::RowSerial(int row) const
{
    const double value = basConvert::Val(m_spread->GetText(ColSerialNo, row));
    return value >= 0 && value <= std::numeric_limits<qint32>::max() ? qint32(value) : 0;
}

void CTimingGrid::SetRowChanged(int row, bool changed)
{
    CSpread &grid = *m_spread;
    if (row < 1 || row > grid.MaxRows())
        return;
    const CSpreadCellKeeper keep(grid);
    grid.setRow(row);
    for (int col = 1; col <= ColumnCount; ++col) {
        grid.setCol(col);
        grid.setForeColor(changed ? ChangedForeColor : UnchangedForeColor);
    }
}

bool CTimingGrid::RowChanged(int row) const
{
    if (row < 1 || row > m_spread->MaxRows())
        return false;
    for (int col = 1; col <= ColumnCount; ++col)
        if (m_spread->GetForeColor(col, row) == ChangedForeColor)
            return true;
    return false;
}

void CTimingGrid::SetRowQuestion(int row, bool question)
{
    CSpread &grid = *m_spread;
    if (row < 1 || row > grid.MaxRows())
        return;
    const CSpreadCellKeeper keep(grid);
    grid.setRow(row);
    grid.setCol(ColDialog);
    grid.setBackColor(question ? QuestionBackColor : NoQuestionBackColor);
}

bool CTimingGrid::RowQuestion(int row) const
{
    return row >= 1 && row <= m_spread->MaxRows()
        && m_spread->GetBackColor(ColDialog, row) == QuestionBackColor;
}

void CTimingGrid::SetRowCheckDisabled(int row, bool disabled)
{
    CSpread &grid = *m_spread;
    if (row < 1 || row > grid.MaxRows())
        return;
    const CSpreadCellKeeper keep(grid);
    grid.setRow(row);
    for (int col : { ColStartTime, ColEndTime }) {
        grid.setCol(col);
        grid.setCellMark(disabled);
    }
}

bool CTimingGrid::RowCheckDisabled(int row) const
{
    return m_spread->GetCellMark(ColStartTime, row) || m_spread->GetCellMark(ColEndTime, row);
}
