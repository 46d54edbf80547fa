// A single event line, read under SSA or ASS (by the first byte) and written back under
// the output mask of the second byte.
#include "FuzzSupport.h"

#include "core/Class.h"
#include "script/CSSAContent.h"
#include "script/CSSAContentLine.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    if (size < 2)
        return 0;
    std::unique_ptr<CSSAContent> list = Class::Make<CSSAContent>();
    list->ScriptType = (data[0] & 1) ? 1 : 2;
    list->SaveOption = data[1];
    CSSAContentLine *line = list->Create();
    line->setContent(FuzzText(data + 2, size - 2));
    line->Content();
    list->Content();
    return 0;
}
