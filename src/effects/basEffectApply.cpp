#include "effects/basEffectApply.h"

#include "core/CGridAction.h"
#include "core/CSpreadCellKeeper.h"
#include "core/IPrompt.h"
#include "effects/CKaraokeRecording.h"
#include "effects/basEffectFx.h"
#include "effects/basEffectTag.h"
#include "formats/CTiming.h"
#include "timing/CTimingGrid.h"

namespace basEffectApply {

bool ApplyResult(CTimingGrid *grid, const QString &result)
{
    if (!grid) {
        MsgBox(QStringLiteral("没有找到时间轴窗口"));
        return false;
    }
    CSpread &spread = grid->Spread();
    const CGridAction action(*grid, "VELMAR_UNDO_216");
    {
        const CSpreadCellKeeper keep(spread);
        // Without an active line the writing starts at the first one, not in the head.
        int row = qMax(spread.ActiveRow(), 1);
        for (const QString &part : basEffectFx::SplitResultText(result)) {
            spread.setCol(CTimingGrid::ColDialog);
            spread.setRow(row);
            spread.SetText(CTimingGrid::ColDialog, row, part);
            grid->TellPreview(CTimingGrid::ColDialog, row);
            ++row;
            // Stepping onto the last row adds one at the end; a writing that began on
            // the very last row gets the rows it needs, so no part is lost.
            while (row >= spread.MaxRows()) {
                const int before = spread.MaxRows();
                grid->AppendRow();
                if (spread.MaxRows() == before)
                    break; // the grid is full
            }
        }
    }
    spread.ActivateCell();
    return true;
}

bool RecordKaraokeLyric(CTiming &timing, CTimingGrid &grid, double currentPosition, const QString &lyric)
{
    CKaraokeRecording recording { timing.KaraOKRecording, timing.KaraOKStartTime, false };
    CSpread &spread = grid.Spread();
    if (!recording.KaraOKRecording)
        return false;
    const CGridAction action(grid, "VELMAR_UNDO_207");
    spread.setRow(spread.ActiveRow());
    spread.setCol(CTimingGrid::ColDialog);
    QString text = spread.Text();
    basEffectTag::RecordKaraokeLyric(recording, currentPosition, timing.ReactOffsetStart, text, lyric);
    spread.setText(text);
    timing.KaraOKStartTime = recording.KaraOKStartTime;
    timing.setChanged(true);
    return true;
}

} // namespace basEffectApply
