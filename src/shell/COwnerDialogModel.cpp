#include "shell/COwnerDialogModel.h"

#include "core/IPrompt.h"

void COwnerDialogModel::Init(const QStringList &names)
{
    Items = names;
    OwnerNames = names;
    Canceled = true;
}

bool COwnerDialogModel::Add()
{
    const std::optional<QString> name
        = Prompt().InputBox(QStringLiteral("请输入新人名"), QStringLiteral("新人名"));
    if (!name || name->isEmpty())
        return false;
    if (Items.contains(*name)) {
        MsgBox(QStringLiteral("已经存在这个名字了，请使用其他名字"));
        return false;
    }
    Items << *name;
    return true;
}

bool COwnerDialogModel::Delete(int selected)
{
    if (selected < 0 || selected >= Items.size()) {
        MsgBox(QStringLiteral("请先选择一个要删除的人名"));
        return false;
    }
    if (Items.size() <= 1) {
        MsgBox(QStringLiteral("至少需要保留一个人名"));
        return false;
    }
    if (MsgBox(QStringLiteral("确定删除这个人名吗？"), MsgBoxStyle::YesNo | MsgBoxStyle::Question)
        != MsgBoxResult::Yes)
        return false;
    Items.removeAt(selected);
    return true;
}

bool COwnerDialogModel::Rename(int selected)
{
    if (selected < 0 || selected >= Items.size()) {
        MsgBox(QStringLiteral("请先选择一个要改变的名字"));
        return false;
    }
    const std::optional<QString> name
        = Prompt().InputBox(QStringLiteral("请输入新的名字"), QStringLiteral("新名字"));
    if (!name || name->isEmpty())
        return false;
    if (Items.contains(*name)) {
        MsgBox(QStringLiteral("已经存在这个名字了，请使用其他名字"));
        return false;
    }
    Items[selected] = *name;
    return true;
}

void COwnerDialogModel::OK()
{
    OwnerNames = Items;
    Canceled = false;
}
