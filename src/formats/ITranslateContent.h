#pragma once

#include "script/ScriptType.h"

#include <QString>
#include <QtGlobal>

// What the file options need of a translation draft: the text it would write as a type
// with the given ChangeOption and TranslateOption bits, the draft left as it was.
class ITranslateContent
{
public:
    virtual ~ITranslateContent() = default;

    virtual QString ContentWith(ScriptType type, qint32 changeOption, qint32 translateOption) = 0;
};
