#include "player/basPreview.h"

#include "core/basTime.h"
#include "pages/IPictureBox.h"
#include "player/CPreview.h"
#include "timing/CSpread.h"
#include "timing/CTimingGrid.h"

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
        = [&] { line->setStartTime(StringToTime(grid->GetText(CTimingGrid::ColStartTime, row))); };
    const auto readEnd = [&] { line->setEndTime(StringToTime(grid->GetText(CTimingGrid::ColEndTime, row))); };
    const auto readDialog = [&] { line->setDialog(grid->GetText(CTimingGrid::ColDialog, row)); };
    switch (column) {
    case CTimingGrid::ColStartTime:
        readStart();
        break;
    case CTimingGrid::ColEndTime:
        readEnd();
        break;
    case CTimingGrid::ColDialog:
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
