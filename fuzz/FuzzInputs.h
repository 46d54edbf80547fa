#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// What each fuzz target does with one input, apart from libFuzzer so that the tests can
// replay the inputs that once failed. `target` is the name behind "fuzz_" (ass_script,
// ssa_script, srt, sami, lrc, smp0, smp1, sst, text, catalogue, style_line,
// event_line). Questions must be answered by the prompt in place. Returns false for an
// unknown name.
bool RunFuzzInput(std::string_view target, const uint8_t *data, size_t size);
