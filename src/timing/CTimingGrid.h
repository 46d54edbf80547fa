#pragma once

#include "core/CSpread.h"
#include "script/ITimingGrid.h"
#include "timing/CTimingColumnView.h"

#include <QStringList>
#include <memory>

class CFonts;
class CGridHistory;
class CSSAContent;
class CSSAContentLine;
class CTiming;
class ITimingPreviewHooks;

// The timing grid: one row per script line in sixteen columns, with the row conventions
// of a timing window (spare rows at the end, a serial number in the last column, the
// three line flags kept as cell appearance). It owns the CSpread that a view shows.
//
// While a document is open the grid, not the event list, holds the lines: loading fills
// the cells from the list after a read, storing rebuilds the list from the cells before
// anything needs the lines (a save, a page export).
//
// The grid keeps an undo history of its content (see CGridHistory and CGridAction): a
// load that replaces the grid starts it afresh, a load that adds lines is one step.
class CTimingGrid : public ITimingGrid
{
public:
    // Cell appearance of the line flags.
    static constexpr quint32 ChangedForeColor = 255;
    static constexpr quint32 UnchangedForeColor = CSpread::ColorButtonText;
    static constexpr quint32 QuestionBackColor = 0xFFFFC0;
    static constexpr quint32 NoQuestionBackColor = CSpread::ColorWindow;

    CTimingGrid();
    ~CTimingGrid() override;
    CTimingGrid(const CTimingGrid &) = delete;
    CTimingGrid &operator=(const CTimingGrid &) = delete;

    CSpread &Spread() { return *m_spread; }
    const CSpread &Spread() const { return *m_spread; }
    CGridHistory &History() const { return *m_history; }

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
    // How a load treats the rows there are: 0 replaces them, any other value keeps them
    // and puts the file's lines behind. The window takes it from the file options.
    int OpenMode = 0;
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

    // The document whose styles fill the style list and whose script type, subtype and
    // time format go into a stored list. Not owned; nullptr for none.
    // Attaching also makes this grid the document's TimingTable, so that assembling the
    // document's file first stores the grid, and puts the grid's undo steps on the
    // document's stack.
    void SetDocument(CTiming *document);
    CTiming *Document() const { return m_document; }

    // Model to grid, after a read: the grid is reset, the style and speaker lists are
    // rebuilt, and each line that is not blank fills the row before the spare rows.
    // Styles come from `fonts`, else from the list's document, else from SetDocument.
    void LoadGridFromContent(CSSAContent &content, const CFonts *fonts = nullptr) override;
    // Grid to model: `content` is emptied and gets one line per row, spare rows included.
    // A fault (a number cell holding no number) shows TIMING_ERR_112 with its text and
    // stops; the lines made so far stay.
    void StoreGridToContent(CSSAContent &content) override;
    // One row into a line, as the store makes it: `effects` are the texts of EffectItems().
    // Throws VelmarError for a number cell that holds no number.
    void StoreRow(int row, CSSAContentLine &line, const QStringList &effects) const;

    // The style list of column 5 from the styles, for all rows (every choice goes back to
    // the first item). The second form keeps each row's style where the list still has it.
    void RefreshStyleColumn(const CFonts &fonts);
    void RefreshStyleColumn();
    void RefreshStyleCells(const CFonts &fonts);
    void RefreshStyleCells();
    // The same for the speakers of column 6 (fallback "NTP").
    void RefreshOwnerColumn(const QStringList &names);
    void RefreshOwnerCells(const QStringList &names);
    // The items of the list of column 5 or 6 as they stand: the menus of styles and
    // speakers follow them.
    QStringList StyleItems() const;
    QStringList OwnerItems() const;

    // The dialogue column: written from row 1 on with drawing stopped (times and other
    // columns stay), and read as lines joined by "\r\n". Faults show TIMING_ERR_108 and
    // TIMING_ERR_107.
    void FillTextColumn(const QStringList &lines) override;
    QString TextColumn() const override;

private:
    // The texts of one column, rows 1 to MaxRows.
    QStringList ColumnTexts(int col) const;
    void SetColumnHidden(int col, bool hidden);
    const CFonts *DocumentFonts() const;
    QStringList ColumnItems(int col) const;
    void SetColumnItems(int col, const QStringList &items);
    void RestoreListCells(int col, const QStringList &kept, const CFonts *fonts, const QString &fallback);
    void LoadRow(int row, CSSAContentLine &line, bool ssa, const CFonts *fonts, const QStringList &styles);

    std::unique_ptr<CSpread> m_spread;
    std::unique_ptr<CGridHistory> m_history;
    ITimingPreviewHooks *m_hooks = nullptr;
    qint32 m_serialNo = 0;
    CTimingColumnView m_columnView;
    CTiming *m_document = nullptr;
};
