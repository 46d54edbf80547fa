#pragma once

#include <QString>

// The contract of a document window: open and save, each true on success.
class IForm
{
public:
    virtual ~IForm() = default;
    virtual bool SaveFile(bool SaveAs, int SaveType) = 0;
    // An empty FileName means: ask the user first.
    virtual bool OpenFile(int OpenType, const QString &FileName) = 0;
};
