#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

class CHotKeys;
class CPlayer;
class CPlayers;

// The player commands of the hot keys and the small rules of a player window that need
// no window.

// What a key pressed in a player window asks for.
enum class PlayerKeyCommand { None, PlayPause, PlayBack, PlayForword };

// The command of a key code: HOTKEY_PlayBack, then HOTKEY_PlayForword, then
// HOTKEY_PlayPause; a matched key is swallowed by the window. Code 0 is no key.
PlayerKeyCommand PlayerKeyCommandOf(int keyCode, const CHotKeys &keys);

// The commands of the main frame. `active` is the player of the active child window when
// that is a player window, else nullptr: then the command goes to every player.
void PlayPause(CPlayers &players, CPlayer *active);
void PlayBack(CPlayers &players, CPlayer *active);
void PlayForword(CPlayers &players, CPlayer *active);
void PlayReset(CPlayers &players, CPlayer *active);
// Runs one of the three key commands.
void RunPlayerKeyCommand(PlayerKeyCommand command, CPlayers &players, CPlayer *active);

// The speed band: a slider from 0 to 20 and a list of "1倍" to "5倍" (index 0 to 4).
// The speed asked for is slider / 10 × (index + 1), before the player clamps it.
double SliderSpeed(int sliderValue, int listIndex);
// The slider's tip: "播放速度" and slider × 10 × (index + 1) and "%", not clamped.
QString SliderSpeedTip(int sliderValue, int listIndex);
// The entries of the speed list.
QStringList SpeedListEntries();

// Tool tips of the player window's buttons, with the step sizes and key names in them.
QString SmallBackTip(double backStep, const CHotKeys &keys);
QString SmallForwordTip(double forwordStep, const CHotKeys &keys);
QString ResetTip(const CHotKeys &keys);

// The time of a video frame in seconds: its own start time in microseconds, or the
// player's position where the frame has none (a negative start time).
double FrameSeconds(qint64 startMicroseconds, double position);

// The picture size of an opened file: its own size, or 640 and 480 where it gives 0.
QSize PictureSize(int imageSourceWidth, int imageSourceHeight);

// The main frame's "Position" panel for a picture position counted from 1.
QString PositionPanelText(int x, int y);
// The panel's text before any click.
QString PositionPanelInitialText();
