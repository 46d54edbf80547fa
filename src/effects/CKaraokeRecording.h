#pragma once

// The karaoke state a timing document keeps while a line is recorded syllable by
// syllable from the translation window.
struct CKaraokeRecording
{
    bool KaraOKRecording = false;
    // Seconds: when the syllable now being sung began.
    double KaraOKStartTime = 0;
    // The document's changed flag, raised by each recorded syllable.
    bool Changed = false;
};
