// A whole SMP file of sub-type 1 opened into a timing document with its grid, as the
// window opens it, then assembled again as the same type.
#include "FuzzInputs.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    RunFuzzInput("smp1", data, size);
    return 0;
}
