#pragma once

#include "effects/CKaraokeRecording.h"
#include "effects/CTagPage.h"

#include <QString>

// Single override tags from the values of the tag page, and the karaoke tags recorded
// while a video plays.
namespace basEffectTag {

constexpr int TagCount = 24;

// The caption of a tab of the tag page; the tab index is the tag number.
QString TagCaption(int tagNumber);

// "&H" and the value in upper-case hexadecimal, zero-padded to 6 digits.
QString ColourText(qint64 value);

// The tag for a tab, in braces, wrapped in "\t(...)" when the gradual frame is ticked
// and the tag can be animated. An empty body shows "设置可能有错误，不能产生效果符号"
// and gives an empty text. A number box that holds no number raises VelmarError 13 (a
// number out of range 6) and no tag is built.
QString BuildTag(const CTagPage &page, int tagNumber);

// Whether the gradual frame is enabled on a tab: only for the properties that can be
// animated (colour, size, shadow, border, spacing, rotation, scaling).
bool AccelFrameEnabled(int tagNumber);

// Appends one syllable to the dialogue cell of the active row while a line is being
// recorded: the time since the last stroke in hundredths (rounded down) as "{\K..}",
// then the lyric. Nothing happens while no line is being recorded; the result says
// whether the cell changed.
bool RecordKaraokeLyric(CKaraokeRecording &recording, double currentPosition, double reactOffsetStart,
    QString &cellText, const QString &lyric);

} // namespace basEffectTag
