#pragma once

#include <QtGlobal>

// The kind of a document's file. The numbers are those kept in the settings store (the
// recent files), in project files and on the command line.
enum class ScriptType : qint32 {
    Plain = 0, // bare events in a timing document, a plain draft in a translation
    SSA = 1,
    ASS = 2,
    SAMI = 3,
    SRT = 4,
    SMP = 5,
    RichText = 6,
    DialogueText = 7, // one line of text an event
    LRC = 8,
    SST = 9,
    Video = 100, // a video in the recent-file list
};
