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
