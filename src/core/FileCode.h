#pragma once

#include <QtGlobal>

// How a document's text file is coded. The values are those stored with a document and
// given on the command line.
enum class FileCode : qint32 {
    SystemDefault = -2, // read by the byte-order mark; written as Unicode (rich text: ANSI)
    Unicode = -1, // UTF-16LE with its mark
    ANSI = 0, // the system code page (or the code page a modern read detected)
    UTF8 = 65001, // UTF-8 without a mark; an addition beside the three codes above
};
