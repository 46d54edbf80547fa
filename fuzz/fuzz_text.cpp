// A whole plain text file, one line a row opened into a timing document with its grid, as the window opens
// it, then assembled again as the same type.
#include "FuzzSupport.h"

#include "core/Class.h"
#include "formats/basTimingFile.h"
#include "script/CTiming.h"
#include "timing/CTimingGrid.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    std::unique_ptr<CTiming> doc = Class::Make<CTiming>();
    CTimingGrid grid;
    grid.SetDocument(doc.get());
    doc->setScriptSubType(0);
    basTimingFile::ReadIntoDocument(*doc, 7, FuzzText(data, size), false);
    doc->Content();
    return 0;
}
