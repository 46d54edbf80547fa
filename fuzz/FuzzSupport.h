#pragma once

// Sets up what every target needs once: a Qt application without a display, the silent
// prompt answering Yes, the settings and program folder in a temporary place. Called at
// the start of every input, it empties the prompt's record.
void FuzzInit();
