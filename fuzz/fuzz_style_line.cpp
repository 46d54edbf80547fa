// A single style line, read under SSA or ASS (by the first byte) and written back.
#include "FuzzSupport.h"

#include "core/Class.h"
#include "script/CFont.h"
#include "script/CFonts.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    if (size == 0)
        return 0;
    std::unique_ptr<CFonts> fonts = Class::MakeCollection<CFonts>();
    fonts->ScriptType = (data[0] & 1) ? 1 : 2;
    std::unique_ptr<CFont> font = Class::Make<CFont>();
    font->setParent(fonts.get());
    font->setContent(FuzzText(data + 1, size - 1));
    font->Content();
    return 0;
}
