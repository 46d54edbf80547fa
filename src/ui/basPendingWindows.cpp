#include "ui/basPendingWindows.h"

#include <QAction>

namespace {

struct PendingControl
{
    const char *Window;
    const char *Key;
    const char16_t *Tip;
};

const PendingControl PendingControls[] = {
    { "frmTiming", "SubInfomation", u"注释：打开脚本信息对话框，编辑标题、作者和画面尺寸（此窗口尚未完成）" },
    { "frmTiming", "Font", u"字体：打开字体窗口，编辑脚本的样式（此窗口尚未完成）" },
    { "frmTiming", "EffectSpecial", u"特效：打开特效窗口，为选中的对白生成特效标签（此窗口尚未完成）" },
    { "frmTiming", "PicPreview",
        u"SST文件输出：打开图片预览窗口，把时间轴分页输出为位图和SST文件（此窗口尚未完成）" },
    { "frmTiming", "FileOpenFont", u"打开样式文件到字体窗口（此窗口尚未完成）" },
};

} // namespace

QString PendingTip(const QString &window, const QString &key)
{
    for (const PendingControl &c : PendingControls)
        if (window == QLatin1String(c.Window) && key == QLatin1String(c.Key))
            return QString::fromUtf16(c.Tip);
    return {};
}

bool ShowPending(const QString &window, const QString &key, QAction *action)
{
    const QString tip = PendingTip(window, key);
    if (tip.isEmpty())
        return false;
    action->setEnabled(false);
    action->setToolTip(tip);
    return true;
}

bool ShowPending(const QString &window, QAction *action)
{
    return ShowPending(window, action->objectName(), action);
}
