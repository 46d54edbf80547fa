#include "player/basPreview.h"

#include "core/CSpread.h"
#include "core/IPictureBox.h"
#include "core/basTime.h"
#include "player/CPreview.h"
#include "script/ITimingGrid.h"

namespace basPreview {

void UpdatePreviewCell(CPreview &preview, int column, int row)
{
    const CSpread *grid = preview.Grid();
    if (!grid)
        return;
    CPreviewLine *line = preview.RowLine(row);
    if (!line)
        return;
    // Only a line that stands on the picture has anything to wipe; reprinting a hidden
    // line in the background colour would only cut into the lines that are shown.
    if (IPictureBox *picture = preview.Picture(); picture && line->Shown())
        line->ClearPreview(*picture);
    const auto readStart
        = [&] { line->setStartTime(StringToTime(grid->GetText(ITimingGrid::ColStartTime, row))); };
    const auto readEnd = [&] { line->setEndTime(StringToTime(grid->GetText(ITimingGrid::ColEndTime, row))); };
    const auto readDialog = [&] { line->setDialog(grid->GetText(ITimingGrid::ColDialog, row)); };
    switch (column) {
    case ITimingGrid::ColStartTime:
        readStart();
        break;
    case ITimingGrid::ColEndTime:
        readEnd();
        break;
    case ITimingGrid::ColDialog:
        readDialog();
        break;
    default:
        readStart();
        readEnd();
        readDialog();
        break;
    }
    preview.MarkChanged();
}

void CreatePreviewLine(CPreview &preview, int row)
{
    if (const qint32 serial = preview.RowSerial(row); serial > 0)
        preview.Create(serial);
    preview.MarkChanged();
}

void DeletePreviewLine(CPreview &preview, int row)
{
    if (const qint32 serial = preview.RowSerial(row); serial > 0)
        preview.Delete(QString::number(serial));
    preview.MarkChanged();
}

} // namespace basPreview
