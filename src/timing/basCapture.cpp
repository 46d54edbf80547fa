#include "timing/basCapture.h"

#include "core/basMain.h"
#include "core/basTime.h"
#include "formats/CTimings.h"

bool SendClipboardTime(CTimings &timings, const QString &text)
{
    if (!AutoGetClipBoard)
        return false;
    const double time = LooseStringToTime(text);
    if (time == 0)
        return false;
    timings.SendNewTime(time);
    return true;
}
