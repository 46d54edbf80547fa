#include "shell/CImportFontModel.h"

#include "core/IPrompt.h"

void CImportFontModel::Init(std::unique_ptr<CFonts> importFonts, CFonts *target)
{
    m_import = std::move(importFonts);
    m_target = target;
    Canceled = false;
    Added.clear();
}

QStringList CImportFontModel::Names() const
{
    QStringList names;
    if (m_import)
        for (const CFont *font : *m_import)
            names << font->StyleName();
    return names;
}

bool CImportFontModel::Rename(int index)
{
    const QStringList names = Names();
    if (index < 0 || index >= names.size()) {
        MsgBox(QStringLiteral("请先选择一个要改名的字体"));
        return false;
    }
    const QString old = names.at(index);
    const std::optional<QString> name
        = Prompt().InputBox(QStringLiteral("请输入新的名字"), QStringLiteral("新名字"), old);
    if (!name || name->isEmpty())
        return false;
    if (m_import->Exists(*name)) {
        MsgBox(QStringLiteral("已经存在这个名字了，请改用其他名字"));
        return false;
    }
    return m_import->Rename(old, *name);
}

bool CImportFontModel::OK(const QList<int> &chosen)
{
    Added.clear();
    const QStringList names = Names();
    QStringList taken;
    for (int index : chosen)
        if (index >= 0 && index < names.size() && !taken.contains(names.at(index)))
            taken << names.at(index);
    for (const QString &name : taken) {
        if (m_target && m_target->Exists(name)) {
            MsgBox(QStringLiteral("所选字体的名字[") + name
                + QStringLiteral("]已经存在于现有字体中，请改变名字后再导入"));
            return false;
        }
    }
    if (m_target)
        for (const QString &name : taken)
            if (CFont *font = m_target->Add(m_import->Take(name)))
                Added << font->StyleName();
    Canceled = false;
    return true;
}
