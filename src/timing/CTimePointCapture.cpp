#include "timing/CTimePointCapture.h"

#include "core/CGridAction.h"
#include "core/CHotKeys.h"
#include "core/CSpreadCellKeeper.h"
#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/KeyCode.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "formats/CTiming.h"
#include "formats/CTimings.h"
#include "player/CPlayer.h"
#include "player/IMediaControl.h"
#include "timing/CSliderTimeModel.h"
#include "timing/CTimingGrid.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kStart = CTimingGrid::ColStartTime;
constexpr int kEnd = CTimingGrid::ColEndTime;
constexpr int kDialog = CTimingGrid::ColDialog;

void Report(const char *key)
{
    MsgBox(Msg(QString::fromLatin1(key)));
}

[[noreturn]] void NoPlayer()
{
    throw VelmarError(91, QStringLiteral("Object variable or With block variable not set"));
}

// The time string of a stamp. A time that no string can hold (not a number, or beyond
// any film) is a run-time fault of the stroke, not a cell text.
QString StampText(double seconds)
{
    if (std::isnan(seconds) || seconds > 1e12)
        throw VelmarError::Overflow();
    return TimeToString(seconds, 2);
}

} // namespace

CTimePointCapture::CTimePointCapture(CTiming &document, CTimingGrid &grid, const CHotKeys *keys)
    : m_doc(document)
    , m_grid(grid)
    , m_keys(keys)
{
    m_doc.OnNewTime = [this](double time) { TimePointAtCell(time); };
}

CTimePointCapture::~CTimePointCapture()
{
    m_doc.OnNewTime = nullptr;
}

const CHotKeys &CTimePointCapture::Keys() const
{
    static const CHotKeys none;
    if (m_keys)
        return *m_keys;
    return ::HotKeys ? *::HotKeys : none;
}

CSpread &CTimePointCapture::Grid() const
{
    return m_grid.Spread();
}

CPlayer *CTimePointCapture::Player() const
{
    IPlayerWindow *window = m_doc.PlayerWindow();
    return window ? window->player() : nullptr;
}

bool CTimePointCapture::ActiveRowValid() const
{
    const CSpread &grid = Grid();
    return grid.ActiveRow() >= 1 && grid.ActiveRow() <= grid.MaxRows();
}

// ---- keys ----------------------------------------------------------------------------

CaptureKeyResult CTimePointCapture::KeyDown(const CCaptureKey &key)
{
    m_keyDownCancelled = false;
    const CaptureKeyResult result = Act(CCaptureKey::KeyDownAction(Keys(), key.KeyCode), true);
    m_keyDownCancelled = result.Cancel;
    return result;
}

CaptureKeyResult CTimePointCapture::KeyPress(const CCaptureKey &key)
{
    // The character of a stroke whose key was already taken must not act again.
    if (m_keyDownCancelled) {
        m_keyDownCancelled = false;
        CaptureKeyResult swallowed;
        swallowed.Cancel = key.Char != 0;
        return swallowed;
    }
    return Act(CCaptureKey::KeyPressAction(Keys(), key.Char), false);
}

CaptureKeyResult CTimePointCapture::KeyStroke(const CCaptureKey &key)
{
    CaptureKeyResult down = KeyDown(key);
    if (down.Cancel || key.Char == 0) {
        m_keyDownCancelled = false;
        return down;
    }
    CaptureKeyResult press = KeyPress(key);
    press.Yield = press.Yield || down.Yield;
    return press;
}

void CTimePointCapture::KeyUp(const CCaptureKey &key)
{
    m_keyDownCancelled = false;
    if (m_doc.TraceAVI && (key.KeyCode == KeyCode::Up || key.KeyCode == KeyCode::Down))
        TraceToPlayer();
}

void CTimePointCapture::CellClicked()
{
    if (m_doc.TraceAVI)
        TraceToPlayer();
}

CaptureKeyResult CTimePointCapture::Act(CaptureAction action, bool keyDown)
{
    CaptureKeyResult result;
    switch (action) {
    case CaptureAction::None:
        return result;
    case CaptureAction::TimePoint:
        TimePointAtCell();
        break;
    case CaptureAction::StartTime:
        SetStartTimePoint();
        break;
    case CaptureAction::EndTime:
        SetEndTimePoint();
        break;
    case CaptureAction::ShiftForword:
    case CaptureAction::ShiftBack:
        if (ShiftTimes)
            ShiftTimes(action == CaptureAction::ShiftForword ? 0.1 : -0.1);
        // A letter used as a shift key still goes on into a cell being edited.
        result.Action = action;
        result.Cancel = keyDown;
        result.Yield = keyDown;
        return result;
    case CaptureAction::ClearCells:
        // While editing in place, Delete and "." belong to the cell's editor.
        if (Grid().EditMode())
            return result;
        if (ClearCells)
            ClearCells();
        break;
    case CaptureAction::Refresh:
        break;
    }
    result.Action = action;
    result.Cancel = true;
    result.Yield = keyDown;
    return result;
}

// ---- stamps --------------------------------------------------------------------------

bool CTimePointCapture::TimePointAtCell(std::optional<double> time)
{
    CSpread &grid = Grid();
    const CGridAction action(m_grid, "VELMAR_UNDO_205");
    if (!ActiveRowValid())
        return false;
    grid.setRow(grid.ActiveRow());
    grid.setCol(grid.ActiveCol());
    grid.ActivateCell();
    if (grid.Col() == kStart)
        return SetStartTimePoint(time);
    if (grid.Col() == kEnd)
        return SetEndTimePoint(time);
    return false;
}

bool CTimePointCapture::SetStartTimePoint(std::optional<double> time)
{
    CSpread &grid = Grid();
    const CGridAction action(m_grid, "VELMAR_UNDO_203");
    try {
        // While a karaoke line is recorded its start belongs to the recording.
        if (m_doc.KaraOKRecording) {
            grid.SetFocus();
            return false;
        }
        if (!ActiveRowValid())
            return false;
        const int row = grid.ActiveRow();
        grid.setRow(row);
        grid.setCol(kStart);
        double seconds;
        if (time) {
            seconds = *time;
        } else {
            CPlayer *player = Player();
            if (!player)
                NoPlayer();
            seconds = player->CurrentPosition() + m_doc.ReactOffsetStart;
        }
        const QString stamp = StampText(seconds);
        WriteStamp(row, kStart, stamp);
        grid.setCol(kEnd);
        if (m_doc.AutoEndTimePoint && row != 1)
            FillEndOfRowAbove(row, stamp);
        grid.ActivateCell();
        m_doc.setChanged(true);
        return true;
    } catch (...) {
        Report("TIMING_ERR_110");
        return false;
    }
}

// A line above left without an end time ends where this one starts; a line with an end
// time, or without a start time, stays as it is.
void CTimePointCapture::FillEndOfRowAbove(int row, const QString &stamp)
{
    CSpread &grid = Grid();
    const CSpreadCellKeeper keep(grid);
    grid.setRow(row - 1);
    grid.setCol(kEnd);
    if (StringToTime(grid.Text()) != 0)
        return;
    grid.setCol(kStart);
    if (StringToTime(grid.Text()) == 0)
        return;
    grid.setCol(kEnd);
    grid.setText(stamp);
}

bool CTimePointCapture::SetEndTimePoint(std::optional<double> time)
{
    CSpread &grid = Grid();
    const CGridAction action(m_grid, "VELMAR_UNDO_204");
    try {
        CPlayer *player = Player();
        if (!time && !player) {
            Report("TIMING_ERR_109");
            grid.SetFocus();
            return false;
        }
        if (!ActiveRowValid())
            return false;
        const int row = grid.ActiveRow();
        grid.setRow(row);
        grid.setCol(kEnd);
        const double seconds = time ? *time : player->CurrentPosition() + m_doc.ReactOffsetEnd;
        WriteStamp(row, kEnd, StampText(seconds));
        MoveToNextRow();
        grid.setCol(kStart);
        grid.ActivateCell();
        // The film stops at the end of each line, so that the next one can be read.
        if (m_doc.StepPause && player && player->PlayState() == MediaPlayState::Playing)
            player->Pause();
        m_doc.setChanged(true);
        return true;
    } catch (...) {
        Report("TIMING_ERR_111");
        return false;
    }
}

// The cell write of every stamp: the text into the time cell, the preview told.
void CTimePointCapture::WriteStamp(int row, int col, const QString &stamp)
{
    CSpread &grid = Grid();
    grid.setRow(row);
    grid.setCol(col);
    grid.setText(stamp);
    m_grid.TellPreview(col, row);
}

bool CTimePointCapture::SetRowTime(int row, int column, double seconds)
{
    CSpread &grid = Grid();
    if (row < 1 || row > grid.MaxRows() || (column != kStart && column != kEnd))
        return false;
    const CGridAction action(m_grid, "VELMAR_UNDO_206");
    try {
        const CSpreadCellKeeper keep(grid);
        WriteStamp(row, column, StampText(seconds));
        m_doc.setChanged(true);
        return true;
    } catch (...) {
        Report(column == kStart ? "TIMING_ERR_110" : "TIMING_ERR_111");
        return false;
    }
}

void CTimePointCapture::MoveToNextRow()
{
    CSpread &grid = Grid();
    // There is always a row below the next one.
    while (grid.ActiveRow() + 1 >= grid.MaxRows()) {
        const int before = grid.MaxRows();
        m_grid.AppendRow();
        if (grid.MaxRows() == before)
            break; // the grid is at its size limit
    }
    const int row = grid.ActiveRow() + 1;
    grid.setRow(row);
    // Once the working line has come to the middle of the view it stays there.
    const int offset = row - grid.TopRow();
    const int count = VisibleRowCount();
    if (offset > count / 2.0)
        grid.setTopRow(basConvert::CLng(row - (count - 1) / 2.0));
}

int CTimePointCapture::VisibleRowCount() const
{
    const CSpread &grid = Grid();
    int count = 0;
    for (int row = grid.TopRow(); row <= grid.MaxRows(); ++row) {
        if (!grid.IsVisible(kStart, row) && !grid.IsVisible(kEnd, row) && !grid.IsVisible(kDialog, row))
            break;
        ++count;
    }
    return count;
}

void CTimePointCapture::TraceToPlayer()
{
    try {
        CPlayer *player = Player();
        if (!player || !ActiveRowValid())
            return;
        const QString text = Grid().GetText(kStart, Grid().ActiveRow());
        if (basConvert::Trim(text).isEmpty())
            return;
        player->setCurrentPosition(std::max(0.0, StringToTime(text) - player->BackStep()));
    } catch (...) {
        // Tracing is a convenience: a failure leaves the player where it is.
    }
}

// ---- karaoke -------------------------------------------------------------------------

bool CTimePointCapture::KaraOKToggle(bool pressed)
{
    if (!m_doc.TranslateWindow) {
        Report("TIMING_ERR_100");
        return false;
    }
    m_doc.KaraOKMode = pressed;
    if (TranslateKaraOKMode)
        TranslateKaraOKMode(pressed);
    return pressed;
}

void CTimePointCapture::KaraOKStartLine()
{
    const CGridAction action(m_grid, "VELMAR_UNDO_203");
    SetStartTimePoint();
    if (!ActiveRowValid())
        return;
    const int row = Grid().ActiveRow();
    m_doc.KaraOKStartTime = StringToTime(Grid().GetText(kStart, row));
    Grid().SetText(kDialog, row, QString());
    m_doc.KaraOKRecording = true;
}

void CTimePointCapture::KaraOKNewLyrics(const QString &text)
{
    if (!m_doc.KaraOKRecording)
        return;
    const CGridAction action(m_grid, "VELMAR_UNDO_207");
    try {
        CPlayer *player = Player();
        if (!player)
            NoPlayer();
        if (!ActiveRowValid())
            return;
        const double now = player->CurrentPosition() + m_doc.ReactOffsetStart;
        const double d = now - m_doc.KaraOKStartTime;
        // The tag holds the length of the syllable before this stroke, in hundredths,
        // taken downwards (so a negative length grows away from zero).
        const int row = Grid().ActiveRow();
        QString cell = Grid().GetText(kDialog, row);
        cell += QStringLiteral("{\\K");
        cell += basConvert::CStr(basConvert::Int(d * 100));
        cell += u'}';
        cell += text;
        Grid().SetText(kDialog, row, cell);
        m_doc.KaraOKStartTime = now;
        m_doc.setChanged(true);
    } catch (...) {
        Report("TIMING_ERR_113");
    }
}

void CTimePointCapture::KaraOKEndLine()
{
    const CGridAction action(m_grid, "VELMAR_UNDO_204");
    SetEndTimePoint();
    m_doc.KaraOKStartTime = 0;
    m_doc.KaraOKRecording = false;
}

void CTimePointCapture::KaraOKRecordStart(QObject *window)
{
    if (window && window == m_doc.TranslateWindow && m_doc.KaraOKMode)
        KaraOKStartLine();
}

void CTimePointCapture::KaraOKRecordNewLyrics(QObject *window, const QString &text)
{
    if (window && window == m_doc.TranslateWindow && m_doc.KaraOKMode)
        KaraOKNewLyrics(text);
}

void CTimePointCapture::KaraOKRecordEnd(QObject *window)
{
    if (window && window == m_doc.TranslateWindow && m_doc.KaraOKMode)
        KaraOKEndLine();
}

// ---- reaction offsets ----------------------------------------------------------------

void CTimePointCapture::PrepareReactOffsetDialog(CSliderTimeModel &dialog, bool end) const
{
    dialog.setTitle(Msg(end ? QStringLiteral("AJUST_TIME_MSG_203") : QStringLiteral("AJUST_TIME_MSG_202")));
    dialog.setDescription(Msg(QStringLiteral("AJUST_TIME_MSG_201")));
    dialog.setEnableSign(true);
    dialog.setEnableHour(true);
    dialog.setEnableMinite(true);
    dialog.setEnableSecond(true);
    dialog.setEnableMiniSecond(true);
    dialog.setValue(end ? m_doc.ReactOffsetEnd : m_doc.ReactOffsetStart);
}

void CTimePointCapture::TakeReactOffset(const CSliderTimeModel &dialog, bool end)
{
    if (dialog.Cancelled)
        return;
    double value;
    try {
        value = dialog.Value();
    } catch (const VelmarError &) {
        return; // a value beyond the dialog's arithmetic changes nothing
    }
    if (CTimings *timings = m_doc.Parent()) {
        if (end)
            timings->setReactOffsetEnd(value);
        else
            timings->setReactOffsetStart(value);
        return;
    }
    (end ? m_doc.ReactOffsetEnd : m_doc.ReactOffsetStart) = std::clamp(value, -1.0, 1.0);
}
