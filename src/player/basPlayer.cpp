#include "player/basPlayer.h"

#include "core/CHotKeys.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "player/CPlayers.h"

#include <QStringList>

using namespace basConvert;

PlayerKeyCommand PlayerKeyCommandOf(int keyCode, const CHotKeys &keys)
{
    if (keyCode == 0)
        return PlayerKeyCommand::None;
    if (keyCode == keys.HOTKEY_PlayBack())
        return PlayerKeyCommand::PlayBack;
    if (keyCode == keys.HOTKEY_PlayForword())
        return PlayerKeyCommand::PlayForword;
    if (keyCode == keys.HOTKEY_PlayPause())
        return PlayerKeyCommand::PlayPause;
    return PlayerKeyCommand::None;
}

namespace {

template <typename F> void onTargets(CPlayers &players, CPlayer *active, F &&command)
{
    if (active) {
        command(*active);
        return;
    }
    // A message box of one player may run the event loop, and a window may close in it:
    // walk a snapshot by key, not the live list.
    QStringList keys;
    for (CPlayer *player : players)
        keys << QString::number(player->SerialNo());
    for (const QString &key : keys)
        if (CPlayer *player = players.Item(key))
            command(*player);
}

QString withKeyName(const QString &text, qint16 code)
{
    return text + QLatin1Char('(') + KeyCodeToName(code) + QLatin1Char(')');
}

} // namespace

void PlayPause(CPlayers &players, CPlayer *active)
{
    onTargets(players, active, [](CPlayer &p) { p.Pause(); });
}

void PlayBack(CPlayers &players, CPlayer *active)
{
    onTargets(players, active, [](CPlayer &p) { p.SamllBack(); });
}

void PlayForword(CPlayers &players, CPlayer *active)
{
    onTargets(players, active, [](CPlayer &p) { p.SamllForword(); });
}

void PlayReset(CPlayers &players, CPlayer *active)
{
    onTargets(players, active, [](CPlayer &p) { p.Reset(); });
}

void RunPlayerKeyCommand(PlayerKeyCommand command, CPlayers &players, CPlayer *active)
{
    switch (command) {
    case PlayerKeyCommand::PlayPause:
        PlayPause(players, active);
        break;
    case PlayerKeyCommand::PlayBack:
        PlayBack(players, active);
        break;
    case PlayerKeyCommand::PlayForword:
        PlayForword(players, active);
        break;
    case PlayerKeyCommand::None:
        break;
    }
}

double SliderSpeed(int sliderValue, int listIndex)
{
    return double(sliderValue) / 10.0 * double(listIndex + 1);
}

QString SliderSpeedTip(int sliderValue, int listIndex)
{
    return Msg(QStringLiteral("PLAYER_BAND_CAPTION_100"))
        + QString::number(qint64(sliderValue) * 10 * (listIndex + 1)) + QLatin1Char('%');
}

QStringList SpeedListEntries()
{
    QStringList entries;
    for (int i = 1; i <= 5; ++i)
        entries << QString::number(i) + QString::fromUtf16(u"倍");
    return entries;
}

QString SmallBackTip(double backStep, const CHotKeys &keys)
{
    return withKeyName(
        Msg(QStringLiteral("PLAYER_BUTTON_TIP_101")) + CStr(backStep) + Msg(QStringLiteral("MDI_MSG_104")),
        keys.HOTKEY_PlayBack());
}

QString SmallForwordTip(double forwordStep, const CHotKeys &keys)
{
    return withKeyName(
        Msg(QStringLiteral("PLAYER_BUTTON_TIP_103")) + CStr(forwordStep) + Msg(QStringLiteral("MDI_MSG_104")),
        keys.HOTKEY_PlayForword());
}

QString ResetTip(const CHotKeys &keys)
{
    return withKeyName(Msg(QStringLiteral("PLAYER_BUTTON_TIP_104")), keys.HOTKEY_Refresh());
}

QSize PictureSize(int imageSourceWidth, int imageSourceHeight)
{
    return QSize(
        imageSourceWidth == 0 ? 640 : imageSourceWidth, imageSourceHeight == 0 ? 480 : imageSourceHeight);
}

QString PositionPanelText(int x, int y)
{
    return QStringLiteral(" X=") + QString::number(x) + QStringLiteral("  Y=") + QString::number(y)
        + QStringLiteral("  ");
}

QString PositionPanelInitialText()
{
    return QStringLiteral(" X=0000  Y=0000 ");
}

double FrameSeconds(qint64 startMicroseconds, double position)
{
    return startMicroseconds >= 0 ? double(startMicroseconds) / 1e6 : position;
}
