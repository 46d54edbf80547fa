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
    { u"VELMAR_WAVE_600", u"波形", u"Waveform" },
    { u"VELMAR_WAVE_601", u"显示/隐藏音频波形", u"Show or hide the audio waveform" },
    { u"VELMAR_WAVE_602", u"没有链接播放器，无法显示波形",
        u"No player is linked: there is no waveform to show" },
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
    // Undo in the timing grid: the buttons and popup entries, then the captions of steps.
    { u"VELMAR_UNDO_100", u"撤销", u"Undo" },
    { u"VELMAR_UNDO_101", u"重做", u"Redo" },
    { u"VELMAR_UNDO_102", u"撤销(Ctrl + Z)", u"Undo (Ctrl+Z)" },
    { u"VELMAR_UNDO_103", u"重做(Ctrl + Y)", u"Redo (Ctrl+Y)" },
    { u"VELMAR_UNDO_104", u"撤销: %1(Ctrl + Z)", u"Undo: %1 (Ctrl+Z)" },
    { u"VELMAR_UNDO_105", u"重做: %1(Ctrl + Y)", u"Redo: %1 (Ctrl+Y)" },
    { u"VELMAR_UNDO_200", u"更改", u"Change" },
    { u"VELMAR_UNDO_201", u"编辑单元格", u"Edit a cell" },
    { u"VELMAR_UNDO_202", u"输入文字", u"Typing" },
    { u"VELMAR_UNDO_203", u"开始时间点", u"Start time" },
    { u"VELMAR_UNDO_204", u"结束时间点", u"End time" },
    { u"VELMAR_UNDO_205", u"插入时间点", u"Time point" },
    { u"VELMAR_UNDO_206", u"拖动时间点", u"Time dragged" },
    { u"VELMAR_UNDO_207", u"卡拉OK音节", u"Karaoke syllable" },
    { u"VELMAR_UNDO_208", u"平移时间轴", u"Shift times" },
    { u"VELMAR_UNDO_209", u"缩放时间轴", u"Scale times" },
    { u"VELMAR_UNDO_210", u"差分填充", u"Fill in steps" },
    { u"VELMAR_UNDO_211", u"替换", u"Replace" },
    { u"VELMAR_UNDO_212", u"全部替换", u"Replace all" },
    { u"VELMAR_UNDO_213", u"标记", u"Mark lines" },
    { u"VELMAR_UNDO_214", u"选择列表项", u"Choose an item" },
    { u"VELMAR_UNDO_215", u"粘贴", u"Paste" },
    { u"VELMAR_UNDO_216", u"写入特效", u"Apply an effect" },
    { u"VELMAR_UNDO_217", u"追加打开文件", u"Append a file" },
    { u"VELMAR_UNDO_218", u"写入对白", u"Fill the dialogue" },
    { u"VELMAR_UNDO_219", u"追加空行", u"Add a spare row" },
    { u"VELMAR_UNDO_220", u"刷新字体", u"Refresh the styles" },
    { u"VELMAR_UNDO_221", u"刷新说话人", u"Refresh the speakers" },
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
