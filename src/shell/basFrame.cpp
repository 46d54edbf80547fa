#include "shell/basFrame.h"

#include "core/CHotKeys.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "player/basPlayer.h"

#include <Qt>

QStringList StatusPanelKeys()
{
    return { QStringLiteral("Play"), QStringLiteral("Back"), QStringLiteral("Forword"),
        QStringLiteral("StartPoint"), QStringLiteral("EndPoint"), QStringLiteral("Save"),
        QStringLiteral("Position"), QStringLiteral("Message") };
}

namespace {
QString keyed(qint16 code, const char *captionKey)
{
    return KeyCodeToName(code) + QStringLiteral(":  ") + Msg(QString::fromLatin1(captionKey));
}
} // namespace

QString StatusPanelText(const QString &key, const CHotKeys &keys, double backStep, double forwordStep)
{
    const QString seconds = Msg(QStringLiteral("MDI_MSG_104"));
    if (key == u"Play")
        return keyed(keys.HOTKEY_PlayPause(), "MDI_STATUS_100");
    if (key == u"Back")
        return keyed(keys.HOTKEY_PlayBack(), "MDI_STATUS_200") + QStringLiteral("  ")
            + basConvert::CStr(backStep) + seconds;
    if (key == u"Forword")
        return keyed(keys.HOTKEY_PlayForword(), "MDI_STATUS_300") + QStringLiteral("  ")
            + basConvert::CStr(forwordStep) + seconds;
    if (key == u"StartPoint")
        return keyed(keys.HOTKEY_TimingStartTime(), "MDI_STATUS_400");
    if (key == u"EndPoint")
        return keyed(keys.HOTKEY_TimingEndTime(), "MDI_STATUS_500");
    if (key == u"Save")
        return keyed(keys.HOTKEY_SaveFile2(), "MDI_STATUS_600");
    if (key == u"Position")
        return PositionPanelInitialText();
    if (key == u"Message")
        return Msg(QStringLiteral("MDI_STATUS_700"));
    return {};
}

QString StepDialogTitle(bool back)
{
    return Msg(back ? QStringLiteral("MDI_MSG_100") : QStringLiteral("MDI_MSG_101"))
        + Msg(QStringLiteral("AJUST_TIME_MSG_100"));
}

QString StepDialogDescription(bool back)
{
    return Msg(QStringLiteral("AJUST_TIME_MSG_101")) + StepDialogTitle(back)
        + Msg(QStringLiteral("AJUST_TIME_MSG_102"));
}
