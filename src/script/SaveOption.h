#pragma once

#include <QtGlobal>

// The bits of a timing document's TimingOption, which goes to its event list as the
// SaveOption: which sections and columns a written script holds. The event list honours
// the bits from StartTime on.
namespace SaveOption {
inline constexpr qint32 Head = 1; // the script information section
inline constexpr qint32 Styles = 2; // the style section
inline constexpr qint32 StartTime = 4;
inline constexpr qint32 EndTime = 8;
inline constexpr qint32 Dialog = 16; // the text
inline constexpr qint32 DialogTags = 32; // the text keeps its override tags
inline constexpr qint32 OtherColumns = 64; // the other columns, and the section and line structure
inline constexpr qint32 Whole = 255; // a whole script
} // namespace SaveOption
