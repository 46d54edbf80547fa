#pragma once

#include <QString>

// Generated inputs shared by the benchmarks.

// A 30,000-event ASS script of about 3.4 MB in UTF-8: two styles, override tags and
// Chinese text, as the team's scripts look.
const QString &Script30k();
// An SRT of `cues` blocks, about 90 bytes each, every block ending in "\r\n".
QString GeneratedSrt(int cues);
