// The "Message.txt" parser over arbitrary bytes.
#include "FuzzSupport.h"

#include "core/CMessages.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInit();
    CMessages messages;
    messages.setContent(FuzzText(data, size));
    messages.CollectionView().item(QStringLiteral("COMM_MSG_100"))->Content();
    messages.Content();
    return 0;
}
