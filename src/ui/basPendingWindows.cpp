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
    { "frmTiming", "EffectSpecial", u"特效：打开特效窗口，为选中的对白生成特效标签（此窗口尚未完成）" },
    { "frmTiming", "PicPreview",
        u"SST文件输出：打开图片预览窗口，把时间轴分页输出为位图和SST文件（此窗口尚未完成）" },
    { "frmTiming", "FileOpenTranslate", u"打开翻译稿到翻译窗口（此窗口尚未完成）" },
    { "MdiVelmar", "mnuFileNewTranslate", u"新建翻译稿的翻译窗口（此窗口尚未完成）" },
    { "MdiVelmar", "mnuFileOpenTranslate", u"打开翻译稿到翻译窗口（此窗口尚未完成）" },
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
