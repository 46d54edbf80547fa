#pragma once

#include "core/basConvert.h"

#include <QString>
#include <QStringView>
#include <QtGlobal>

#include <vector>

// Small text helpers shared by the script readers and writers. They work on views of
// the whole file so that a reader makes no temporary strings for the lines it skips.
namespace basScript {

using basConvert::LTrimView;
using basConvert::TrimView;
inline QList<QStringView> SplitLines(QStringView text)
{
    return basConvert::SplitCrlf(text);
}

// The readers count lines in a 16-bit signed counter: a text of more than this many
// lines overflows once the counter passes the last one.
constexpr qsizetype MaxReaderLines = 32768;
// Raises Basic's overflow (error 6) when the 0-based line index no longer fits.
void CheckLineIndex(qsizetype index);

// Whether `text` equals / starts with an ASCII upper-case word, ignoring case.
bool EqualsUpper(QStringView text, QStringView upperWord);
bool StartsWithUpper(QStringView text, QStringView upperWord);

// A margin-like text through the "0000" pattern: numbers are padded, other text
// (effect words, "") passes unchanged.
void AppendPattern0000(QString &out, const QString &text);

// The strict time parser with a fast path for the common "H:MM:SS.hh" form; the result
// is the same as StringToTime's.
double FastStringToTime(QStringView text);

// Appends `text` without its override blocks: "{\" up to the next "}" goes, and a
// block that never closes cuts the rest. Removing a block can join a "{" in front with
// a "\" behind into a new block, which goes too. Returns the appended part's length.
qsizetype AppendWithoutOverrideBlocks(QString &out, QStringView text);

// The names scripts use by rule.
struct ScriptNames
{
    QString DefaultStyle; // the style a style list starts with and a line falls back to
    QString StarDefault; // how a line shows that style
    QString DefaultOwner; // the speaker of a new line
    // The effects a line writes out.
    QString Karaoke;
    QString ScrollUp;
    QString ScrollDown;
    QString Banner;
};
const ScriptNames &Names();

} // namespace basScript
