#pragma once

class CPreview;

// Keeps the lines of a live preview in step with the timing grid. The preview holds the
// grid and the document; each function leaves the grid's current cell as it found it
// and raises the document's Changed.
namespace basPreview {

// Reads the start time (column 3), end time (column 4) or dialogue (column 15) of a row
// into its line after wiping it; any other column, -1 included, reads all three. A row
// without a line is left alone.
void UpdatePreviewCell(CPreview &preview, int column, int row);
// Makes the line of the row's serial number.
void CreatePreviewLine(CPreview &preview, int row);
// Removes the line of the row's serial number.
void DeletePreviewLine(CPreview &preview, int row);

} // namespace basPreview
