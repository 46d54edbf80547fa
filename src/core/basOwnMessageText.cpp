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
