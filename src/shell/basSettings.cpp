#include "shell/basSettings.h"

#include "core/CHotKeys.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basSetting.h"
#include "core/basTime.h"

#include <cmath>
#include <limits>
#include <optional>

using namespace basConvert;

const std::array<HotKeySetting, 10> HotKeySettings { {
    { u"TimingTime", u"Undefined", 5 },
    { u"TimingStartTime", u"F8", 3 },
    { u"TimingEndTime", u"F9", 4 },
    { u"TimingForword", u"Undefined", 6 },
    { u"TimingBack", u"Undefined", 7 },
    { u"Refresh", u"F5", 8 },
    { u"PlayPause", u"F3", 0 },
    { u"PlayBack", u"F4", 1 },
    { u"PlayForword", u"F6", 2 },
    { u"FileSave", u"F10", 9 },
} };

QString HotKeyValueName(int index)
{
    for (const HotKeySetting &h : HotKeySettings)
        if (h.Index == index)
            return QString::fromUtf16(h.ValueName);
    return {};
}

QString HotKeyDefaultName(int index)
{
    for (const HotKeySetting &h : HotKeySettings)
        if (h.Index == index)
            return QString::fromUtf16(h.DefaultName);
    return QStringLiteral("Undefined");
}

namespace {

// Each conversion stands alone: a value that does not convert is skipped.
std::optional<double> toDouble(const QString &text)
{
    try {
        const double v = CDbl(text);
        if (std::isfinite(v))
            return v;
    } catch (const VelmarError &) { }
    return std::nullopt;
}

std::optional<float> toSingle(const QString &text)
{
    const auto v = toDouble(text);
    if (!v || std::fabs(*v) > double(std::numeric_limits<float>::max()))
        return std::nullopt;
    return float(*v);
}

std::optional<qint32> toLong(const QString &text)
{
    try {
        return CLng(text);
    } catch (const VelmarError &) { }
    return std::nullopt;
}

std::optional<qint16> toInteger(const QString &text)
{
    try {
        return CInt(text);
    } catch (const VelmarError &) { }
    return std::nullopt;
}

template <typename T, typename F> void readInto(T &field, const QString &text, F convert)
{
    if (const auto v = convert(text))
        field = T(*v);
}

QString get(const char16_t *section, const char16_t *key, const QString &def)
{
    return GetSetting(QString::fromUtf16(section), QString::fromUtf16(key), def);
}

void readFlag(bool &flag, const char16_t *key)
{
    if (const auto v = toInteger(get(u"Setting", key, QStringLiteral("0"))))
        flag = *v != 0;
}

} // namespace

void ReadStartupSettings(StartupSettings &settings, CHotKeys &hotKeys, float screenWidth, float screenHeight)
{
    StartupGeometry &g = settings.Geometry;
    readInto(g.Left, get(u"Startup", u"Left", QStringLiteral("0")), toSingle);
    readInto(g.Width, get(u"Startup", u"Width", CStr(double(screenWidth))), toSingle);
    readInto(g.Top, get(u"Startup", u"Top", QStringLiteral("0")), toSingle);
    readInto(g.Height, get(u"Startup", u"Height", CStr(double(screenHeight))), toSingle);

    AutoSaveSettings &a = settings.AutoSave;
    const QString enabled = get(u"AutoSave", u"Enabled", QStringLiteral("1"));
    if (const auto v = toInteger(enabled))
        a.Enabled = *v != 0;
    // The dialog's lower limit of 10 seconds is not applied here.
    readInto(a.AutoSaveTime, get(u"AutoSave", u"Interval", QStringLiteral("180")), toLong);
    readInto(a.AutoDelTime, get(u"AutoSave", u"Delete", QStringLiteral("24")), toDouble);

    for (const HotKeySetting &h : HotKeySettings) {
        const QString name = get(u"HotKeys", h.ValueName, QString::fromUtf16(h.DefaultName));
        hotKeys.setKey(h.Index, qint16(KeyNameToCode(name)));
    }
    hotKeys.HOTKEY_SaveFile = 83;

    TimeOffsetSettings &o = settings.Offsets;
    readInto(o.BackStep, get(u"TimeOffset", u"PlayBack", QStringLiteral("3")), toDouble);
    readInto(o.ForwordStep, get(u"TimeOffset", u"PlayForword", QStringLiteral("3")), toDouble);
    readInto(o.ReactOffset, get(u"TimeOffset", u"TimingOffset", QStringLiteral("-0.3")), toDouble);
    readInto(o.ReactOffsetStart, get(u"TimeOffset", u"TimingOffsetStart", CStr(o.ReactOffset)), toDouble);
    readInto(o.ReactOffsetEnd, get(u"TimeOffset", u"TimingOffsetEnd", CStr(o.ReactOffset)), toDouble);

    readFlag(AutoGetClipBoard, u"AutoGetClipBoard");
    readFlag(OnTop, u"OnTop");
    readFlag(AvoidOverlapTiming, u"AvoidOverlapTiming");
    readFlag(ModernFiles, u"ModernFiles");
}

void SaveStartupGeometry(const StartupGeometry &geometry)
{
    const QString s = QStringLiteral("Startup");
    SaveSetting(s, QStringLiteral("Left"), CStr(double(geometry.Left)));
    SaveSetting(s, QStringLiteral("Width"), CStr(double(geometry.Width)));
    SaveSetting(s, QStringLiteral("Top"), CStr(double(geometry.Top)));
    SaveSetting(s, QStringLiteral("Height"), CStr(double(geometry.Height)));
}

void SavePlayerSteps(double backStep, double forwordStep)
{
    const QString s = QStringLiteral("TimeOffset");
    SaveSetting(s, QStringLiteral("PlayBack"), CStr(backStep));
    SaveSetting(s, QStringLiteral("PlayForword"), CStr(forwordStep));
}

void SaveReactOffsets(double reactOffset, double reactOffsetStart, double reactOffsetEnd)
{
    const QString s = QStringLiteral("TimeOffset");
    SaveSetting(s, QStringLiteral("TimingOffset"), CStr(reactOffset));
    SaveSetting(s, QStringLiteral("TimingOffsetStart"), CStr(reactOffsetStart));
    SaveSetting(s, QStringLiteral("TimingOffsetEnd"), CStr(reactOffsetEnd));
}
