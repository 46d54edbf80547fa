#include "core/basMessage.h"

#include <QStringBuilder>

// Texts of Velmar's own additions (the waveform, the subtitle overlay, undo, the modern-files
// option ...), each in Chinese and in English. They are loaded after the built-in
// catalogue and before "Message.txt", so a "Message.txt" can replace them like any other
// text; the built-in catalogue itself stays as the program ships it.
namespace {

struct OwnText
{
    const char16_t *Key;
    const char16_t *Chinese;
    const char16_t *English;
};

// Keys are VELMAR_<AREA>_<NNN>. Add a new text at the end of its area.
const OwnText OwnTexts[] = {
    { u"VELMAR_WAVE_100", u"音频数据不完整，波形只到 %1", u"The audio ends early: the waveform stops at %1" },
    { u"VELMAR_WAVE_200", u"此文件没有音轨", u"This file has no audio track" },
    { u"VELMAR_WAVE_300", u"不支持此音频编码：%1", u"This audio codec is not supported: %1" },
    { u"VELMAR_WAVE_400", u"无法读取音频：%1", u"The audio cannot be read: %1" },
    { u"VELMAR_WAVE_500", u"正在读取音频波形… %1%", u"Reading the audio waveform… %1%" },
    { u"VELMAR_OVERLAY_100", u"显示字幕", u"Show subtitles" },
    { u"VELMAR_OVERLAY_101", u"在画面上显示选用此播放器的时间轴的字幕",
        u"Draw the subtitles of the timing window that uses this player over the picture" },
    { u"VELMAR_OVERLAY_110", u"没有时间轴选用此播放器，不显示字幕",
        u"No timing window uses this player: no subtitles are shown" },
    { u"VELMAR_OVERLAY_200", u"字幕渲染器无法启动：libass 不能初始化",
        u"The subtitle renderer cannot start: libass did not initialise" },
    { u"VELMAR_OVERLAY_210", u"字幕渲染器无法启动：libass 的渲染器不能初始化",
        u"The subtitle renderer cannot start: the libass renderer did not initialise" },
    { u"VELMAR_OVERLAY_220", u"字幕渲染器不接受这个脚本：脚本头里没有它能用的样式",
        u"The subtitle renderer rejects this script: its head has no style it can use" },
    { u"VELMAR_OVERLAY_230", u"字幕渲染器读不了 %1 行：%2",
        u"The subtitle renderer cannot read %1 lines: %2" },
    { u"VELMAR_OVERLAY_240", u"字幕渲染器找不到样式「%1」，这些行用默认样式显示",
        u"The subtitle renderer has no style \"%1\": those lines use the default style" },
    { u"VELMAR_OVERLAY_250", u"找不到字体「%1」，已用 %2 等替代字体显示",
        u"Fonts not found: %1; shown with %2 or another substitute" },
    { u"VELMAR_OVERLAY_260", u"没有字体能显示字符 %1", u"No font can show the characters %1" },
    { u"VELMAR_OVERLAY_270", u"字幕渲染器出错：%1", u"The subtitle renderer failed: %1" },
    { u"VELMAR_OVERLAY_300", u"%1 行的数字格里不是数字：这些行按改动前的样子显示",
        u"%1 lines have a number cell without a number: they show as they were before" },
};

} // namespace

QString OwnMessageText(bool english)
{
    QString text = QStringLiteral("<Velmar>");
    for (const OwnText &own : OwnTexts)
        text += QStringLiteral("\r\n") % QString::fromUtf16(own.Key) % QStringLiteral(" = ")
            % QString::fromUtf16(english ? own.English : own.Chinese);
    return text;
}
