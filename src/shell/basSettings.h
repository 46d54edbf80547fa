#pragma once

#include <QString>
#include <QtGlobal>
#include <array>

class CHotKeys;

// The settings read once at start. Values that the frame and the document lists own are
// handed back in this record; the hot keys and the module flags are filled directly.

// The frame's geometry, in the store's own units.
struct StartupGeometry
{
    float Left = 0;
    float Top = 0;
    float Width = 0; // the screen's width until the store says otherwise
    float Height = 0; // the screen's height until the store says otherwise
};

// The auto-save timer's settings.
struct AutoSaveSettings
{
    bool Enabled = true;
    qint32 AutoSaveTime = 180; // seconds between runs
    double AutoDelTime = 24; // hours an auto-saved copy is kept
};

// The time steps of the players and the reaction offsets of the timing documents.
struct TimeOffsetSettings
{
    double BackStep = 3;
    double ForwordStep = 3;
    double ReactOffset = -0.3;
    double ReactOffsetStart = -0.3;
    double ReactOffsetEnd = -0.3;
};

struct StartupSettings
{
    StartupGeometry Geometry;
    AutoSaveSettings AutoSave;
    TimeOffsetSettings Offsets;
};

// One changeable hot key: its value name in the "HotKeys" section, its default key
// name, and its index in CHotKeys.
struct HotKeySetting
{
    const char16_t *ValueName;
    const char16_t *DefaultName;
    int Index;
};
// In the order the store is read.
extern const std::array<HotKeySetting, 10> HotKeySettings;
// The value name of a CHotKeys index.
QString HotKeyValueName(int index);
QString HotKeyDefaultName(int index);

// Reads the store in this order: "Startup" into the geometry, "AutoSave", "HotKeys" (each
// name through KeyNameToCode), HOTKEY_SaveFile, "TimeOffset", "Setting" (the module
// flags). `settings` comes in with the present values (or defaults), and a stored value
// that does not convert leaves its field as it was. Missing values take the defaults of
// the table, with the screen size for the geometry.
void ReadStartupSettings(StartupSettings &settings, CHotKeys &hotKeys, float screenWidth, float screenHeight);

// Written back by the frame when it closes, unless it is minimised.
void SaveStartupGeometry(const StartupGeometry &geometry);
// Written by the player and timing lists when their values change.
void SavePlayerSteps(double backStep, double forwordStep);
void SaveReactOffsets(double reactOffset, double reactOffsetStart, double reactOffsetEnd);
