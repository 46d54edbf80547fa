#pragma once

#include "core/CSpread.h"

#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>
#include <utility>

class CPreview;

// The timing check of a timing window: finds the faults a timer makes (text too long
// for the screen, start after end, overlapping lines, lines without times, lines too
// short to read) in the lines of the document's preview, which hold each row's times
// and cleaned dialogue, and lists them in its own fault grid, one row per fault.
class CTimingCheck
{
public:
    enum Kind {
        KindDialogLength = 1,
        KindTimeOrder = 2,
        KindOverlap = 3,
        KindNoTime = 4,
        KindShortTime = 5,
    };

    // The window's fields as the user leaves them; the texts are read as cmdCheck reads
    // them.
    struct Options
    {
        QString txtFrom = QStringLiteral("-1");
        QString txtTo = QStringLiteral("-1");
        bool chkDialogLength = true;
        QString txtDialogLength = QStringLiteral("25");
        bool chkTimeErr = true;
        bool chkNoTime = true;
        bool chkDoubleTime = true;
        bool chkShortTime = true;
        QString txtShortTime = QStringLiteral("0.5");
    };

    // The preview of the document and the timing grid; neither is owned.
    CTimingCheck(CPreview &preview, CSpread &timingGrid);

    // The fault grid: three columns ("错误内容", "错误行", "相关行"), no row at first.
    // Columns 2 and 3 are shown centred.
    CSpread &spdErr() { return m_err; }
    const CSpread &spdErr() const { return m_err; }

    // The fields when the window opens: the rows of the selection, or -1 for none.
    static Options DefaultOptions(CSpread &timingGrid);
    // The smallest first row and the largest last row over all selected blocks, with an
    // open side taken as row 1 or MaxRows; -1 and -1 with no block selected.
    static std::pair<int, int> SelectionRows(CSpread &timingGrid);

    // The checks. Each gives row numbers in a list whose first entry is empty; a line
    // outside `from` to `to` is left out, and so, except for the time order, is a line
    // whose check is disabled. A missing bound sets no limit.
    static QStringList CheckDialogLength(const CPreview &preview, qint32 limit,
        std::optional<qint64> from = {}, std::optional<qint64> to = {});
    static QStringList CheckTimeOrder(
        const CPreview &preview, std::optional<qint64> from = {}, std::optional<qint64> to = {});
    // In pairs: the row of a line, then the row of a line that it overlaps.
    static QStringList CheckOverlap(
        const CPreview &preview, std::optional<qint64> from = {}, std::optional<qint64> to = {});
    static QStringList CheckNoTime(
        const CPreview &preview, std::optional<qint64> from = {}, std::optional<qint64> to = {});
    static QStringList CheckShortTime(const CPreview &preview, double shortest,
        std::optional<qint64> from = {}, std::optional<qint64> to = {});

    // Runs the checks that are on and lists their faults by kind; with none found says
    // "没有发现错误". Gives the number of fault rows.
    int cmdCheck(const Options &options);
    // Adds the faults of one list to the fault grid, each row number taken through the
    // row's line as the preview last numbered it.
    void Report(const QStringList &rows, int kind);
    // A click in the fault grid: moves the timing grid's cursor to the fault's row
    // (column 3: to the related row), keeping the grid's column.
    void ClickFault(int col, int row);

    static QString KindText(int kind);
    static quint32 KindColour(int kind);
    // Width on screen for the length check: 2 for a wide character (one that the system
    // code page holds in two bytes, or an East Asian wide one), 1 for any other.
    static qint64 DisplayWidth(QStringView text);

private:
    QString ResolveRow(const QString &entry);

    CPreview &m_preview;
    CSpread &m_grid;
    CSpread m_err;
};
