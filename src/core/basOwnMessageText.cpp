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
    { u"VELMAR_EFFECT_100", u"颜色循环（沿用当前参数）", u"Colour cycle (the values shown)" },
    { u"VELMAR_EFFECT_101", u"后退", u"Back" },
    { u"VELMAR_EFFECT_102", u"前进", u"Forward" },
    { u"VELMAR_EFFECT_103", u"清除", u"Clear" },
    { u"VELMAR_EFFECT_104", u"应用", u"Apply" },
    { u"VELMAR_EFFECT_105", u"把结果逐行写入时间轴窗口的对白列：从当前行开始，原有对白被替换",
        u"Writes the result into the timing window's dialogue column, a line a row from the active row, "
        u"replacing the dialogue there" },
    { u"VELMAR_EFFECT_106", u"透明度", u"Transparency" },
    { u"VELMAR_EFFECT_107", u"渐变开始时的角度", u"Angle when the transition starts" },
    { u"VELMAR_EFFECT_108", u"特效窗口...", u"Effects window..." },
    { u"VELMAR_EFFECT_109", u"单击选择颜色", u"Click to choose a colour" },
    { u"VELMAR_EFFECT_110", u"结果", u"Result" },
    { u"VELMAR_EFFECT_111", u"%1、%2、%3：把播放器的当前时间填入当前格",
        u"%1, %2, %3: the player's position into the current cell" },
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
