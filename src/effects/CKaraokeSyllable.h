#pragma once

#include <QString>

// One piece of a karaoke line: the tag that opens it ("K", "k", "kf", "ko"), its
// duration in hundredths of a second, and the text that follows. The first piece of a
// line holds only the text before the first tag.
struct CKaraokeSyllable
{
    qint16 Duration = 0;
    QString TagName;
    QString Text;
};
