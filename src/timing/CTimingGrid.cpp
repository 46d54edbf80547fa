#include "timing/CTimingGrid.h"

#include "core/CGridAction.h"
#include "core/CSpreadCellKeeper.h"
#include "core/CSpreadDrawingStop.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "formats/CTiming.h"
#include "player/ITimingPreviewHooks.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"
#include "script/basScript.h"
#include "timing/CGridHistory.h"

#include <QSet>
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

// The effect names of the six items of column 10, in item order; 4 and 5 are the two
// directions of "Banner".
const QString &effectName(qsizetype item)
{
    const basScript::ScriptNames &n = basScript::Names();
    static const QString names[6] = { QString(), n.Karaoke, n.ScrollUp, n.ScrollDown, n.Banner, n.Banner };
    return names[item];
}

// A whole number cell as a 16-bit integer: empty reads as 0, anything else that is no
// number is a type mismatch, and a number out of range an overflow.
qint16 NumberCell(const QString &text)
{
    const QStringView trimmed = basScript::TrimView(text);
    if (trimmed.isEmpty())
        return 0;
    return basConvert::CInt(trimmed);
}

// A cell that the model keeps as text but that must hold a number.
const QString &CheckedNumberText(const QString &text)
{
    const QStringView trimmed = basScript::TrimView(text);
    if (!trimmed.isEmpty() && !basConvert::IsNumeric(trimmed))
        throw VelmarError::TypeMismatch();
    return text;
}

QString NumberText(qint64 value)
{
    // The one-digit numbers (layers, most effect fields) are shared, not made per cell.
    static const QString digits[10] = { QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"),
        QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5"), QStringLiteral("6"),
        QStringLiteral("7"), QStringLiteral("8"), QStringLiteral("9") };
    if (value >= 0 && value <= 9)
        return digits[value];
    return basConvert::CStr(value);
}

} // namespace

CTimingGrid::CTimingGrid()
    : m_spread(std::make_unique<CSpread>())
    , m_columnView(*this)
{
    SetupColumns();
    m_history = std::make_unique<CGridHistory>(*this);
    m_history->SetBudget(CGridHistory::BudgetSetting());
    m_spread->SetJournal(m_history.get());
}

CTimingGrid::~CTimingGrid()
{
    m_spread->SetJournal(nullptr);
}

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
    setType(ColStyle, CSpreadCellType::ListType({ basScript::Names().DefaultStyle }));
    setType(ColOwner, CSpreadCellType::ListType({ basScript::Names().DefaultOwner }));
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
    if (openMode != 0) {
        grid.setMaxCols(ColumnCount);
        return;
    }
    const CGridAction reset(*this, nullptr, CGridAction::Reset);
    grid.setMaxCols(ColumnCount);
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
    return basScript::TrimView(grid.TextAt(ColStartTime, row)).isEmpty()
        && basScript::TrimView(grid.TextAt(ColEndTime, row)).isEmpty()
        && basScript::TrimView(grid.TextAt(ColDialog, row)).isEmpty();
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

// ---- exchange with the script model --------------------------------------------------

void CTimingGrid::SetDocument(CTiming *document)
{
    const auto attach = [](CTiming *doc, ITimingGrid *grid) {
        // A document not yet set up has no event list to tell.
        if (doc->SSAContent)
            doc->setTimingTable(grid);
        else
            doc->TimingTable = grid;
    };
    if (m_document && m_document != document && m_document->TimingTable == this)
        attach(m_document, nullptr);
    m_document = document;
    if (m_document)
        attach(m_document, this);
    m_history->SetStack(m_document ? &m_document->UndoStack() : nullptr);
}

const CFonts *CTimingGrid::DocumentFonts() const
{
    return m_document && m_document->Fonts ? m_document->Fonts.get() : nullptr;
}

void CTimingGrid::SetColumnItems(int col, const QStringList &items)
{
    CSpread &grid = *m_spread;
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    grid.setRow(-1);
    grid.setCol(col);
    grid.setListItems(items.join(QChar(u'\t')));
}

QStringList CTimingGrid::ColumnItems(int col) const
{
    // The column's kind, read through the whole-column target and put back at once.
    CSpread &grid = *m_spread;
    const CSpreadCellKeeper keep(grid);
    grid.setRow(-1);
    grid.setCol(col);
    return grid.CellType().ListItems;
}

QStringList CTimingGrid::StyleItems() const
{
    return ColumnItems(ColStyle);
}

QStringList CTimingGrid::OwnerItems() const
{
    return ColumnItems(ColOwner);
}

void CTimingGrid::RefreshStyleColumn(const CFonts &fonts)
{
    QStringList names;
    names.reserve(fonts.Count());
    for (const CFont *font : fonts)
        names << font->StyleName();
    SetColumnItems(ColStyle, names);
}

void CTimingGrid::RefreshStyleColumn()
{
    if (const CFonts *fonts = DocumentFonts())
        RefreshStyleColumn(*fonts);
}

void CTimingGrid::RefreshOwnerColumn(const QStringList &names)
{
    SetColumnItems(ColOwner, names);
}

void CTimingGrid::RestoreListCells(
    int col, const QStringList &kept, const CFonts *fonts, const QString &fallback)
{
    CSpread &grid = *m_spread;
    grid.setRow(1);
    grid.setCol(col);
    const QStringList items = grid.CellType().ListItems;
    int fallbackIndex = int(items.indexOf(fallback));
    if (fallbackIndex < 0 && fallback == basScript::Names().DefaultStyle)
        fallbackIndex = int(items.indexOf(basScript::Names().StarDefault));
    QStringList originals;
    if (fonts) {
        originals.reserve(items.size());
        for (const QString &item : items)
            originals << fonts->GetOriginalStyleName(item);
    }
    const int rows = std::min<int>(grid.MaxRows(), int(kept.size()));
    for (int row = 1; row <= rows; ++row) {
        QString name = kept.at(row - 1);
        if (fonts && name == basScript::Names().StarDefault)
            name = basScript::Names().DefaultStyle;
        int choice = -1;
        for (int i = 0; i < items.size() && choice < 0; ++i) {
            if (items.at(i) == name || (fonts && !name.isEmpty() && originals.at(i) == name))
                choice = i;
        }
        if (choice < 0)
            choice = fallbackIndex;
        if (choice >= 0) {
            grid.setRow(row);
            grid.setListChoice(choice);
        }
    }
}

QStringList CTimingGrid::ColumnTexts(int col) const
{
    const CSpread &grid = *m_spread;
    QStringList texts;
    texts.reserve(grid.MaxRows());
    for (int row = 1; row <= grid.MaxRows(); ++row)
        texts << grid.GetText(col, row);
    return texts;
}

void CTimingGrid::RefreshStyleCells(const CFonts &fonts)
{
    CSpread &grid = *m_spread;
    const CGridAction action(*this, "VELMAR_UNDO_220");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    const QStringList kept = ColumnTexts(ColStyle);
    RefreshStyleColumn(fonts);
    RestoreListCells(ColStyle, kept, &fonts, basScript::Names().DefaultStyle);
}

void CTimingGrid::RefreshStyleCells()
{
    if (const CFonts *fonts = DocumentFonts())
        RefreshStyleCells(*fonts);
}

void CTimingGrid::RefreshOwnerCells(const QStringList &names)
{
    CSpread &grid = *m_spread;
    const CGridAction action(*this, "VELMAR_UNDO_221");
    const CSpreadCellKeeper keep(grid);
    const CSpreadDrawingStop stop(grid);
    const QStringList kept = ColumnTexts(ColOwner);
    RefreshOwnerColumn(names);
    RestoreListCells(ColOwner, kept, nullptr, basScript::Names().DefaultOwner);
}

void CTimingGrid::LoadRow(
    int row, CSSAContentLine &line, bool ssa, const CFonts *fonts, const QStringList &styles)
{
    CSpread &grid = *m_spread;
    if (line.m_Changed)
        SetRowChanged(row, true);
    if (line.m_Question)
        SetRowQuestion(row, true);
    if (line.m_DisableCheckTiming)
        SetRowCheckDisabled(row, true);

    grid.setRow(row);
    grid.setCol(ColLineType);
    grid.setListChoice(line.LineType);
    grid.SetText(ColLayer, row, NumberText(ssa ? line.Marked() : line.Layer()));
    grid.SetText(ColStartTime, row, line.StartTimeString());
    grid.SetText(ColEndTime, row, line.EndTimeString());

    QString style = line.Style();
    if (style == basScript::Names().StarDefault) {
        line.setStyle(basScript::Names().DefaultStyle);
        style = basScript::Names().DefaultStyle;
    }
    if (!grid.ChooseItem(ColStyle, row, style) && fonts) {
        for (int i = 0; i < styles.size(); ++i) {
            if (fonts->GetOriginalStyleName(styles.at(i)) == style) {
                grid.setCol(ColStyle);
                grid.setListChoice(i);
                break;
            }
        }
    }

    grid.SetText(ColOwner, row, line.Owner());
    grid.SetText(ColMarginL, row, line.MarginL());
    grid.SetText(ColMarginR, row, line.MarginR());
    grid.SetText(ColMarginV, row, line.MarginV());

    const QString &effect = line.EffectName();
    int item = -1;
    bool scroll = false;
    if (effect.isEmpty()) {
        item = 0;
    } else if (effect == effectName(1)) {
        item = 1;
    } else if (effect == effectName(2) || effect == effectName(3)) {
        item = effect == effectName(2) ? 2 : 3;
        scroll = true;
    } else if (effect == effectName(4)) {
        item = line.EffectLeftToRight() ? 5 : 4;
    }
    if (item >= 0) {
        grid.setCol(ColEffect);
        grid.setListChoice(item);
        const bool banner = item >= 4;
        grid.SetText(ColEffectY1, row, scroll ? NumberText(line.EffectY1()) : QString());
        grid.SetText(ColEffectY2, row, scroll ? NumberText(line.EffectY2()) : QString());
        grid.SetText(ColEffectDelay, row, scroll || banner ? NumberText(line.EffectDelay()) : QString());
        grid.SetText(ColEffectFade, row, scroll || banner ? NumberText(line.EffectFade()) : QString());
    }

    grid.SetText(ColDialog, row, line.Dialog());
}

void CTimingGrid::LoadGridFromContent(CSSAContent &content, const CFonts *fonts)
{
    CSpread &grid = *m_spread;
    // A file read over the grid starts its history afresh; lines added behind the rows
    // are one step.
    const CGridAction action(
        *this, "VELMAR_UNDO_217", OpenMode == 0 ? CGridAction::Reset : CGridAction::Step);
    const CSpreadDrawingStop stop(grid);
    ResetGrid(OpenMode);

    // A file of another format becomes event lines first; its own list holds what was read.
    if (CTiming *owner = content.Parent(); owner && &content == owner->SSAContent.get()) {
        if (CTimingFormats::IsFormatType(owner->ScriptType()))
            owner->Formats.FillEvents();
    }

    if (!fonts && content.Parent() && content.Parent()->Fonts)
        fonts = content.Parent()->Fonts.get();
    if (!fonts)
        fonts = DocumentFonts();
    if (fonts)
        RefreshStyleColumn(*fonts);

    // Speakers in the order of their first line.
    QStringList owners;
    QSet<QString> seen;
    for (const CSSAContentLine *line : content) {
        const QString &owner = line->Owner();
        if (!owner.isEmpty() && !seen.contains(owner)) {
            seen.insert(owner);
            owners << owner;
        }
    }
    RefreshOwnerColumn(owners);

    const QStringList styles = StyleItems();
    const bool ssa = content.ScriptType == ScriptType::SSA;
    int row = grid.MaxRows() - 1;
    for (CSSAContentLine *line : content) {
        if (line->Blank)
            continue;
        LoadRow(row, *line, ssa, fonts, styles);
        TellPreview(-1, row);
        AppendRow();
        ++row;
    }
    grid.setRow(1);
    grid.setCol(ColStartTime);
}

void CTimingGrid::StoreRow(int row, CSSAContentLine &line, const QStringList &effects) const
{
    const CSpread &grid = *m_spread;
    line.Blank = false;
    line.m_Changed = RowChanged(row);
    line.m_Question = RowQuestion(row);
    line.m_DisableCheckTiming = RowCheckDisabled(row);
    line.LineType = LineTypeFromChinese(grid.TextAt(ColLineType, row));
    const qint16 layer = NumberCell(grid.TextAt(ColLayer, row));
    line.setMarked(layer);
    line.setLayer(layer);
    line.setStartTimeString(grid.TextAt(ColStartTime, row));
    line.setEndTimeString(grid.TextAt(ColEndTime, row));
    const QString style = grid.TextAt(ColStyle, row);
    line.setStyle(style == basScript::Names().DefaultStyle ? basScript::Names().StarDefault : style);
    line.setOwner(grid.TextAt(ColOwner, row));
    line.setMarginL(CheckedNumberText(grid.TextAt(ColMarginL, row)));
    line.setMarginR(CheckedNumberText(grid.TextAt(ColMarginR, row)));
    line.setMarginV(CheckedNumberText(grid.TextAt(ColMarginV, row)));

    const qsizetype item = effects.indexOf(grid.TextAt(ColEffect, row));
    if (item >= 0 && item < 6) {
        line.setEffectName(effectName(item));
        if (item == 4)
            line.setEffectLeftToRight(0);
        else if (item == 5)
            line.setEffectLeftToRight(1);
    } else {
        line.setEffectName(QString());
    }
    line.setEffectY1(NumberCell(grid.TextAt(ColEffectY1, row)));
    line.setEffectY2(NumberCell(grid.TextAt(ColEffectY2, row)));
    line.setEffectDelay(NumberCell(grid.TextAt(ColEffectDelay, row)));
    line.setEffectFade(NumberCell(grid.TextAt(ColEffectFade, row)));
    line.setDialog(grid.TextAt(ColDialog, row));
    line.ForcePosition = false;
    line.Displayed = false;
    line.DisplayX = line.DisplayY = line.DisplayHeight = line.DisplayWidth = 0;
}

void CTimingGrid::StoreGridToContent(CSSAContent &content)
{
    try {
        content.Clear();
        const CTiming *document = content.Parent() ? content.Parent() : m_document;
        if (document) {
            content.ScriptType = document->ScriptType();
            content.ScriptSubType = document->ScriptSubType();
        }
        const QStringList effects = EffectItems();
        const int rows = m_spread->MaxRows();
        content.Reserve(rows);
        for (int row = 1; row <= rows; ++row) {
            const bool blank = IsRowBlank(row);
            CSSAContentLine *line = content.Create();
            if (blank) {
                line->Blank = true;
                continue;
            }
            StoreRow(row, *line, effects);
        }
        if (document)
            content.setTimeFormat(document->TimeFormat());
    } catch (const VelmarError &fault) {
        MsgBox(Msg(QStringLiteral("TIMING_ERR_112")) + fault.Description());
    } catch (...) {
        MsgBox(Msg(QStringLiteral("TIMING_ERR_112")));
    }
}

// ---- the dialogue column ---------------------------------------------------------------

void CTimingGrid::FillTextColumn(const QStringList &lines)
{
    CSpread &grid = *m_spread;
    const CGridAction action(*this, "VELMAR_UNDO_218");
    try {
        const CSpreadDrawingStop stop(grid);
        grid.setRow(1);
        grid.setCol(ColDialog);
        grid.setRow2(grid.MaxRows());
        grid.setCol2(ColDialog);
        grid.ClearBlock();
        for (int row = 1; row <= grid.MaxRows(); ++row)
            TellPreview(-1, row);
        int row = 1;
        for (const QString &line : lines) {
            if (row > grid.MaxRows())
                AppendRow();
            grid.SetText(ColDialog, row, line);
            TellPreview(ColDialog, row);
            ++row;
            if (row >= grid.MaxRows())
                AppendRow();
        }
        grid.setRow(1);
        grid.setCol(ColDialog);
    } catch (const VelmarError &fault) {
        MsgBox(Msg(QStringLiteral("TIMING_ERR_108")) + QStringLiteral(": ") + fault.Description());
    } catch (...) {
        MsgBox(Msg(QStringLiteral("TIMING_ERR_108")));
    }
}

QString CTimingGrid::TextColumn() const
{
    QString out;
    try {
        const CSpread &grid = *m_spread;
        qsizetype size = 0;
        for (int row = 1; row <= grid.MaxRows(); ++row)
            size += grid.GetText(ColDialog, row).size() + 2;
        out.reserve(size);
        for (int row = 1; row <= grid.MaxRows(); ++row) {
            if (row > 1)
                out += u"\r\n";
            out += grid.GetText(ColDialog, row);
        }
    } catch (...) {
        MsgBox(Msg(QStringLiteral("TIMING_ERR_107")));
    }
    return out;
}
