#pragma once

// The three hooks through which the timing grid tells the live preview of its rows,
// and the emptying of the whole preview. The document's preview implements them; the
// grid needs nothing back. Rows are grid rows; a row's identity is the serial number in
// its last column, which the preview reads from the grid.
class ITimingPreviewHooks
{
public:
    virtual ~ITimingPreviewHooks() = default;

    virtual void CreatePreviewLine(int row) = 0;
    virtual void DeletePreviewLine(int row) = 0;
    // col -1 tells that the whole row changed.
    virtual void UpdatePreviewCell(int col, int row) = 0;
    virtual void ClearPreview() = 0;
};
