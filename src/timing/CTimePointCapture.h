#pragma once

#include "timing/CCaptureKey.h"

#include <QString>
#include <functional>
#include <optional>

class CHotKeys;
class CPlayer;
class CSliderTimeModel;
class CSpread;
class CTiming;
class CTimingGrid;
class QObject;

// Time-point capture of a timing window: one key stroke puts the position of the
// document's player into the active row of its grid, moves the cursor to the cell that
// comes next in the work and keeps the row in view. Around it: the automatic end point,
// the pause after each line, karaoke recording and tracing the player to a row.
//
// The window forwards its grid's key events and clicks here and does what the results
// say (cancel the key, let events run once). It wires ClearCells and ShiftTimes to the
// line operations. While it lives, the capture is the document's OnNewTime routine, so
// a time handed out by CTimings::SendNewTime stamps the active cell.
class CTimePointCapture
{
public:
    // `keys` nullptr: the run's hot keys (HotKeys), none while there are none.
    CTimePointCapture(CTiming &document, CTimingGrid &grid, const CHotKeys *keys = nullptr);
    ~CTimePointCapture();
    CTimePointCapture(const CTimePointCapture &) = delete;
    CTimePointCapture &operator=(const CTimePointCapture &) = delete;

    // Key events of the grid. KeyDown and KeyPress are the two halves of a stroke;
    // KeyStroke is a stroke that arrives as one event (key code and character): the
    // character half runs only when the key half left the key alone, so one stroke acts
    // once. KeyUp traces the player on the up and down arrows.
    CaptureKeyResult KeyDown(const CCaptureKey &key);
    CaptureKeyResult KeyPress(const CCaptureKey &key);
    CaptureKeyResult KeyStroke(const CCaptureKey &key);
    void KeyUp(const CCaptureKey &key);
    // A click in the grid: traces the player when tracing is on.
    void CellClicked();
    // The button cmdInsertTimePoint.
    void InsertTimePoint() { TimePointAtCell(); }

    // Stamps the active cell if it is one of the two time cells; elsewhere nothing.
    // A given time is taken as it is; without one the player's position plus the
    // reaction offset is used. Results: whether a time was written.
    bool TimePointAtCell(std::optional<double> time = std::nullopt);
    // Column 3 of the active row; the cursor goes to column 4 of the same row.
    bool SetStartTimePoint(std::optional<double> time = std::nullopt);
    // Column 4 of the active row; the cursor goes to column 3 of the next row.
    bool SetEndTimePoint(std::optional<double> time = std::nullopt);
    // The stamp's own write for a given row and time column (3 or 4) and a time taken as
    // it is: the cell's text, the preview told, the document changed, the cursor where it
    // was; one undo step. What the waveform strip calls when an edge is dragged. A time no
    // string can hold reports the stamp's fault. Result: whether the time was written.
    bool SetRowTime(int row, int column, double seconds);
    // Current row to the row below the active one, appending and scrolling.
    void MoveToNextRow();
    // Rows in view from TopRow on (those with a time or dialogue cell visible).
    int VisibleRowCount() const;
    // Seeks the player to the start of the active row less the player's BackStep.
    void TraceToPlayer();

    // The KaraOK mode button. Without a translation window it says so and the button
    // comes up. Result: the state the button takes.
    bool KaraOKToggle(bool pressed);
    void KaraOKStartLine();
    void KaraOKNewLyrics(const QString &text);
    void KaraOKEndLine();
    // The recording events of the main window; acted on only when they come from this
    // document's translation window and karaoke mode is on.
    void KaraOKRecordStart(QObject *window);
    void KaraOKRecordNewLyrics(QObject *window, const QString &text);
    void KaraOKRecordEnd(QObject *window);

    // The reaction-offset dialog: `end` chooses the end offset, else the start offset.
    void PrepareReactOffsetDialog(CSliderTimeModel &dialog, bool end) const;
    // After the dialog: unless cancelled, the value goes to CTimings (clamped, written
    // to every document and stored), or to this document alone when it has no list.
    void TakeReactOffset(const CSliderTimeModel &dialog, bool end);

    // The player of the document's player window, if any.
    CPlayer *Player() const;

    // Line operations the keys reach (set by the window).
    std::function<void()> ClearCells;
    std::function<void(double seconds)> ShiftTimes;
    // Tells the translation document to go into or out of karaoke mode.
    std::function<void(bool on)> TranslateKaraOKMode;

private:
    CaptureKeyResult Act(CaptureAction action, bool keyDown);
    const CHotKeys &Keys() const;
    CSpread &Grid() const;
    bool ActiveRowValid() const;
    void FillEndOfRowAbove(int row, const QString &stamp);
    void WriteStamp(int row, int col, const QString &stamp);

    CTiming &m_doc;
    CTimingGrid &m_grid;
    const CHotKeys *m_keys;
    // The key half of the present stroke was taken: its character must not act again.
    bool m_keyDownCancelled = false;
};
