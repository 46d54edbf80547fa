// A single style line, read under SSA or ASS (by the first byte) and written back.
#include "FuzzInputs.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    RunFuzzInput("style_line", data, size);
    return 0;
}
