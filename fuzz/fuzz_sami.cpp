// A whole SAMI file opened into a timing document with its grid, as the window opens
// it, then assembled again as the same type.
#include "FuzzInputs.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    RunFuzzInput("sami", data, size);
    return 0;
}
