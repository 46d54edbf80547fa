// The "Message.txt" parser over arbitrary bytes.
#include "FuzzInputs.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    RunFuzzInput("catalogue", data, size);
    return 0;
}
