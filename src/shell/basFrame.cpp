#include "shell/basFrame.h"

#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "player/basPlayer.h"
#include "shell/CHotKeys.h"

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

int KeyCodeOfQtKey(int qtKey)
{
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12)
        return 112 + (qtKey - Qt::Key_F1);
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return qtKey;
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return qtKey;
    switch (qtKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Tab:
        return 9;
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_End:
        return 35;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    default:
        return 0;
    }
}
