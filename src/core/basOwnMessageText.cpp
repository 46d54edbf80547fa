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
    { u"VELMAR_TRANSLATE_100", u"另存为...", u"Save as..." },
    { u"VELMAR_TRANSLATE_101", u"关闭翻译", u"Close translation" },
    { u"VELMAR_TRANSLATE_102", u"退出", u"Exit" },
    { u"VELMAR_TRANSLATE_103", u"字号", u"Font size" },
    { u"VELMAR_TRANSLATE_104", u"卡拉OK: %1 开始一行, 空格 记录下一个音节, %2 结束一行",
        u"Karaoke: %1 starts a line, Space records the next syllable, %2 ends the line" },
    { u"VELMAR_NOTEPAD_100", u"记事本", u"Notepad" },
    { u"VELMAR_NOTEPAD_101", u"编辑", u"Edit" },
    { u"VELMAR_NOTEPAD_102", u"格式", u"Format" },
    { u"VELMAR_NOTEPAD_103", u"打开...", u"Open..." },
    { u"VELMAR_NOTEPAD_104", u"保存", u"Save" },
    { u"VELMAR_NOTEPAD_105", u"另存为...", u"Save as..." },
    { u"VELMAR_NOTEPAD_106", u"打印...", u"Print..." },
    { u"VELMAR_NOTEPAD_107", u"打印设置...", u"Printer setting..." },
    { u"VELMAR_NOTEPAD_108", u"关闭", u"Close" },
    { u"VELMAR_NOTEPAD_109", u"撤消", u"Undo" },
    { u"VELMAR_NOTEPAD_110", u"剪切", u"Cut" },
    { u"VELMAR_NOTEPAD_111", u"复制", u"Copy" },
    { u"VELMAR_NOTEPAD_112", u"粘贴", u"Paste" },
    { u"VELMAR_NOTEPAD_113", u"删除", u"Delete" },
    { u"VELMAR_NOTEPAD_114", u"查找...", u"Find..." },
    { u"VELMAR_NOTEPAD_115", u"查找下一个", u"Find next" },
    { u"VELMAR_NOTEPAD_116", u"替换...", u"Replace..." },
    { u"VELMAR_NOTEPAD_117", u"转到行...", u"Go to line..." },
    { u"VELMAR_NOTEPAD_118", u"全选", u"Select all" },
    { u"VELMAR_NOTEPAD_119", u"插入时间点", u"Time stamp" },
    { u"VELMAR_NOTEPAD_120", u"字体...", u"Font..." },
    { u"VELMAR_NOTEPAD_121", u"颜色...", u"Colour..." },
    { u"VELMAR_NOTEPAD_122", u"新建记事本", u"New notepad" },
    { u"VELMAR_FIND_100", u"查找内容:", u"Find what:" },
    { u"VELMAR_FIND_101", u"替换为:", u"Replace with:" },
    { u"VELMAR_FIND_102", u"区分大小写", u"Match case" },
    { u"VELMAR_FIND_103", u"全字匹配", u"Whole words" },
    { u"VELMAR_FIND_104", u"突出显示", u"Highlight" },
    { u"VELMAR_FIND_105", u"方向", u"Direction" },
    { u"VELMAR_FIND_106", u"向上", u"Up" },
    { u"VELMAR_FIND_107", u"向下", u"Down" },
    { u"VELMAR_FIND_108", u"范围", u"Range" },
    { u"VELMAR_FIND_109", u"全部", u"All" },
    { u"VELMAR_FIND_110", u"从当前位置", u"From the caret" },
    { u"VELMAR_FIND_111", u"选中部分", u"Selection" },
    { u"VELMAR_FIND_112", u"查找下一个", u"Find next" },
    { u"VELMAR_FIND_113", u"替换", u"Replace" },
    { u"VELMAR_FIND_114", u"全部替换", u"Replace all" },
    { u"VELMAR_FIND_115", u"取消", u"Cancel" },
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
    { u"VELMAR_PAGES_100", u"图片预览", u"Picture preview" },
    { u"VELMAR_PAGES_101", u"读入SST...", u"Load SST..." },
    { u"VELMAR_PAGES_102", u"重新载入", u"Reload" },
    { u"VELMAR_PAGES_103", u"背景色...", u"Background..." },
    { u"VELMAR_PAGES_104", u"浏览...", u"Browse..." },
    { u"VELMAR_PAGES_105", u"全部保存", u"Save all" },
    { u"VELMAR_PAGES_106", u"关闭", u"Close" },
    { u"VELMAR_PAGES_107", u"SST文件名", u"SST file" },
    { u"VELMAR_PAGES_108", u"位图写入同名文件夹", u"Bitmaps into a folder of the same name" },
    { u"VELMAR_PAGES_109", u"位图写入与SST文件同名（不含扩展名）的文件夹，文件夹不存在时自动创建",
        u"The bitmaps go into a folder named after the SST file without its extension, made when missing" },
    { u"VELMAR_PAGES_110", u"正在输出位图：第 %1 页，共 %2 页", u"Writing the bitmaps: page %1 of %2" },
    { u"VELMAR_PAGES_111", u"取消", u"Cancel" },
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
