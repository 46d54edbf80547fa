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
    { u"VELMAR_STYLES_100", u"样式", u"Styles" },
    { u"VELMAR_STYLES_101", u"系统字体", u"System fonts" },
    { u"VELMAR_STYLES_102", u"输出字体名", u"Font name written" },
    { u"VELMAR_STYLES_103", u"字号", u"Size" },
    { u"VELMAR_STYLES_104", u"注释", u"Comment" },
    { u"VELMAR_STYLES_105", u"粗体", u"Bold" },
    { u"VELMAR_STYLES_106", u"斜体", u"Italic" },
    { u"VELMAR_STYLES_107", u"下划线", u"Underline" },
    { u"VELMAR_STYLES_108", u"删除线", u"Strike-out" },
    { u"VELMAR_STYLES_109", u"边框样式", u"Border style" },
    { u"VELMAR_STYLES_110", u"边框+阴影", u"Outline and shadow" },
    { u"VELMAR_STYLES_111", u"不透明背景", u"Opaque box" },
    { u"VELMAR_STYLES_112", u"边框宽度", u"Outline" },
    { u"VELMAR_STYLES_113", u"阴影深度", u"Shadow" },
    { u"VELMAR_STYLES_114", u"对齐", u"Alignment" },
    { u"VELMAR_STYLES_115", u"按小键盘数字保存对齐(ASS)", u"Store the keypad number (ASS)" },
    { u"VELMAR_STYLES_116", u"边距", u"Margins" },
    { u"VELMAR_STYLES_117", u"左", u"Left" },
    { u"VELMAR_STYLES_118", u"右", u"Right" },
    { u"VELMAR_STYLES_119", u"垂直", u"Vertical" },
    { u"VELMAR_STYLES_120", u"缩放(%)", u"Scale (%)" },
    { u"VELMAR_STYLES_121", u"间距", u"Spacing" },
    { u"VELMAR_STYLES_122", u"角度", u"Angle" },
    { u"VELMAR_STYLES_123", u"编码", u"Encoding" },
    { u"VELMAR_STYLES_124", u"透明度值", u"Alpha level" },
    { u"VELMAR_STYLES_125", u"颜色", u"Colours" },
    { u"VELMAR_STYLES_126", u"主要颜色", u"Primary" },
    { u"VELMAR_STYLES_127", u"次要颜色", u"Secondary" },
    { u"VELMAR_STYLES_128", u"边框颜色", u"Outline" },
    { u"VELMAR_STYLES_129", u"阴影颜色", u"Shadow" },
    { u"VELMAR_STYLES_130", u"透明度", u"Alpha" },
    { u"VELMAR_STYLES_131", u"增加", u"Add" },
    { u"VELMAR_STYLES_132", u"删除", u"Delete" },
    { u"VELMAR_STYLES_133", u"改名", u"Rename" },
    { u"VELMAR_STYLES_134", u"应用", u"Apply" },
    { u"VELMAR_STYLES_135", u"关闭", u"Close" },
    { u"VELMAR_STYLES_136", u"样式文件 (*.ass;*.ssa)|*.ass;*.ssa|其他 (*.*)|*.*",
        u"Style files (*.ass;*.ssa)|*.ass;*.ssa|Other (*.*)|*.*" },
    { u"VELMAR_STYLES_137", u"示例", u"Sample" },
    { u"VELMAR_STYLES_138", u"确定", u"OK" },
    { u"VELMAR_STYLES_139", u"取消", u"Cancel" },
    { u"VELMAR_STYLES_200", u"导入字体", u"Import Styles" },
    { u"VELMAR_STYLES_201", u"选择要导入的字体：", u"Choose the styles to import:" },
    { u"VELMAR_STYLES_300", u"人名", u"Speakers" },
    { u"VELMAR_STYLES_400", u"字体窗口...", u"Style Window..." },
    { u"VELMAR_STYLES_401", u"人名窗口...", u"Speaker Window..." },
    { u"VELMAR_STYLES_500", u"一般", u"General" },
    { u"VELMAR_STYLES_501", u"LRC", u"LRC" },
    { u"VELMAR_STYLES_502", u"歌名:", u"Title:" },
    { u"VELMAR_STYLES_503", u"艺人:", u"Artist:" },
    { u"VELMAR_STYLES_504", u"专辑:", u"Album:" },
    { u"VELMAR_STYLES_505", u"编辑者:", u"Made by:" },
    { u"VELMAR_STYLES_506", u"偏移:", u"Offset:" },
    { u"VELMAR_STYLES_507", u"生成的注释:", u"Generated comment:" },
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
