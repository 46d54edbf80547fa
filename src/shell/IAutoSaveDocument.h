#pragma once

#include "script/SaveOption.h"
#include "script/ScriptType.h"

#include <QString>
#include <QtGlobal>

// What the auto-save run needs of an open window: its kind, and the document's type
// and option values that are swapped while its whole text is read.
class IAutoSaveDocument
{
public:
    enum Kind { Other = 0, Timing = 1, Translate = 2, NotePad = 3 };

    virtual ~IAutoSaveDocument() = default;
    virtual Kind AutoSaveKind() const = 0;
    // The document's text in its present type and options (the notepad's editor text).
    virtual QString Content() = 0;
    // Timing and translation documents; others may keep the defaults.
    virtual ::ScriptType ScriptType() const { return ::ScriptType::Plain; }
    virtual void setScriptType(::ScriptType) { }
    // Timing documents only: SaveOption bits.
    virtual qint32 TimingOption() const { return 0; }
    virtual void setTimingOption(qint32) { }
};
