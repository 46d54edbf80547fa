// A single event line, read under SSA or ASS (by the first byte) and written back under
// the output mask of the second byte.
#include "FuzzInputs.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    RunFuzzInput("event_line", data, size);
    return 0;
}
