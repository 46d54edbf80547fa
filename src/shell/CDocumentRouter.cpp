#include "shell/CDocumentRouter.h"

#include "core/IForm.h"
#include "core/IPrompt.h"
#include "core/basConvert.h"

void CDocumentRouter::RegisterFactory(DocumentWindowKind kind, Factory factory)
{
    m_factories[kind] = std::move(factory);
}

bool CDocumentRouter::HasFactory(DocumentWindowKind kind) const
{
    const auto it = m_factories.find(kind);
    return it != m_factories.end() && it->second;
}

IForm *CDocumentRouter::make(DocumentWindowKind kind)
{
    if (!HasFactory(kind))
        return nullptr;
    return m_factories[kind]();
}

IForm *CDocumentRouter::NewDocument(int kind)
{
    return make(WindowKindOfMenuKind(kind, false));
}

IForm *CDocumentRouter::OpenDocument(int kind)
{
    const DocumentWindowKind windowKind = WindowKindOfMenuKind(kind, true);
    IForm *form = make(windowKind);
    if (!form)
        return nullptr;
    if (form->OpenFile(0, QString()))
        return form;
    if (windowKind == DocumentWindowKind::NotePad)
        return form;
    if (Unload)
        Unload(form);
    return nullptr;
}

IForm *CDocumentRouter::OpenFileByType(const QString &fileName, std::optional<ScriptType> fileType)
{
    const QString name = basConvert::Trim(fileName);
    DocumentWindowKind kind;
    if (fileType) {
        kind = WindowKindOfType(*fileType);
        if (kind == DocumentWindowKind::None)
            return nullptr;
    } else {
        kind = WindowKindOfFileName(name);
        if (kind == DocumentWindowKind::None) {
            MsgBox(RefusedFileMessage(name));
            return nullptr;
        }
    }
    IForm *form = make(kind);
    if (form)
        form->OpenFile(0, name);
    return form;
}

IForm *CDocumentRouter::OpenRecentFile(const QString &caption)
{
    const std::optional<RecentCaption> entry = ParseRecentCaption(caption);
    if (!entry)
        return nullptr;
    return OpenFileByType(entry->FileName, entry->Type);
}

bool CDocumentRouter::SaveDocument(int kind)
{
    if (kind != 0 && kind != 1 && kind != 4)
        return false;
    IForm *form = ActiveForm ? ActiveForm() : nullptr;
    return form && form->SaveFile(false, 0);
}

bool CDocumentRouter::SaveDocumentAs(int kind)
{
    if (kind != 0 && kind != 1 && kind != 4)
        return false;
    IForm *form = ActiveForm ? ActiveForm() : nullptr;
    return form && form->SaveFile(true, 0);
}
