#pragma once

#include <QtGlobal>

// The vocabulary of the file options: what a pass through them does, which window asks,
// and the option bits of a translation draft.

// What the file options are run for.
enum class FileOperation : qint32 {
    Open = 1,
    Save = 2,
    Convert = 3, // convert the time axis: no file of its own is written
};

// The window whose document the file options serve.
enum class ParentWindowType : qint32 {
    Timing = 0,
    Translate = 1,
    TranslateToTiming = 2, // a translation made into a new timing document (both given)
};

// The bits of a translation document's ChangeOption: what of its rich text becomes text
// with override tags.
namespace ChangeOption {
inline constexpr qint32 Text = 1; // the characters themselves
inline constexpr qint32 Color = 2;
inline constexpr qint32 FontName = 4;
inline constexpr qint32 FontSize = 8;
inline constexpr qint32 Through = 16;
inline constexpr qint32 Underline = 32;
inline constexpr qint32 Bold = 64;
inline constexpr qint32 Italic = 128;
inline constexpr qint32 BlackWhite = 256; // black and white swapped; only with Color
} // namespace ChangeOption

// The bit of a translation document's TranslateOption.
namespace TranslateOption {
inline constexpr qint32 ChangeTable = 128; // the change table and colour loop travel with the text
} // namespace TranslateOption
