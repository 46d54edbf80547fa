#pragma once

// Key codes in the numbering the hot keys are stored in: letters and digits are their
// upper-case characters ('A' 65 ... 'Z' 90, '0' 48 ... '9' 57).
namespace KeyCode {
inline constexpr int Backspace = 8;
inline constexpr int Tab = 9;
inline constexpr int Enter = 13;
inline constexpr int Escape = 27;
inline constexpr int Space = 32;
inline constexpr int PageUp = 33;
inline constexpr int PageDown = 34;
inline constexpr int End = 35;
inline constexpr int Home = 36;
inline constexpr int Left = 37;
inline constexpr int Up = 38;
inline constexpr int Right = 39;
inline constexpr int Down = 40;
inline constexpr int Insert = 45;
inline constexpr int Delete = 46; // as a typed character the same number is "."
inline constexpr int F1 = 112;
inline constexpr int F12 = 123;
inline constexpr int Period = 190;
} // namespace KeyCode
