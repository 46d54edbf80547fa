// The sample page of each file type that the file-option dialog shows beside the
// choice. They are illustrations only: nothing reads them.
#include "formats/CFileOptionModel.h"

QString CFileOptionModel::Sample(::ScriptType type, qint32 subType)
{
    switch (type) {
    case ScriptType::Plain:
        return QString::fromUtf16(u"第一句对白\r\n第二句对白\r\n\r\n第三句对白，下一段\r\n");
    case ScriptType::SSA:
        return QString::fromUtf16(
            u"[Script Info]\r\nTitle: 示例\r\nScriptType: v4.00\r\nCollisions: Normal\r\n"
            u"PlayResX: 640\r\nPlayResY: 480\r\n\r\n[V4 Styles]\r\n"
            u"Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, TertiaryColour, "
            u"BackColour, Bold, Italic, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, "
            u"MarginV, AlphaLevel, Encoding\r\n"
            u"Style: Default,SimHei,28,16777215,65535,0,0,-1,0,1,2,1,2,10,10,10,0,134\r\n\r\n"
            u"[Events]\r\nFormat: Marked, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, "
            u"Text\r\n"
            u"Dialogue: Marked=0,0:00:01.20,0:00:03.45,Default,NTP,0000,0000,0000,,第一句对白\r\n"
            u"Dialogue: "
            u"Marked=0,0:00:04.00,0:00:06.10,Default,NTP,0000,0000,0000,,{\\i1}第二句{\\i0}对白\r\n");
    case ScriptType::ASS:
        return QString::fromUtf16(
            u"[Script Info]\r\nTitle: 示例\r\nScriptType: v4.00+\r\nCollisions: Normal\r\n"
            u"PlayResX: 640\r\nPlayResY: 480\r\n\r\n[V4+ Styles]\r\n"
            u"Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, OutlineColour, "
            u"BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, "
            u"BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n"
            u"Style: Default,SimHei,28,&H00FFFFFF,&H0000FFFF,&H00000000,&H00000000,-1,0,0,0,100,100,"
            u"0,0,1,2,1,2,10,10,10,134\r\n\r\n"
            u"[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n"
            u"Dialogue: 0,0:00:01.20,0:00:03.45,Default,NTP,0000,0000,0000,,第一句对白\r\n"
            u"Dialogue: 0,0:00:04.00,0:00:06.10,Default,NTP,0000,0000,0000,,{\\k50}第二{\\k60}句对白\r\n");
    case ScriptType::SAMI:
        return QString::fromUtf16(
            u"<SAMI>\r\n<HEAD>\r\n<TITLE>示例</TITLE>\r\n<STYLE TYPE=\"text/css\">\r\n<!--\r\n"
            u"P { margin-left:8pt; margin-right:8pt; text-align:center; }\r\n"
            u".CNCC { Name:Chinese; lang:zh-CN; }\r\n-->\r\n</STYLE>\r\n</HEAD>\r\n<BODY>\r\n"
            u"<SYNC Start=1200><P Class=CNCC>第一句对白\r\n"
            u"<SYNC Start=3450><P Class=CNCC>&nbsp;\r\n"
            u"<SYNC Start=4000><P Class=CNCC>第二句<br>对白\r\n"
            u"<SYNC Start=6100><P Class=CNCC>&nbsp;\r\n</BODY>\r\n</SAMI>\r\n");
    case ScriptType::SRT:
        return QString::fromUtf16(u"1\r\n00:00:01,200 --> 00:00:03,450\r\n第一句对白\r\n\r\n"
                                  u"2\r\n00:00:04,000 --> 00:00:06,100\r\n第二句\r\n对白\r\n\r\n");
    case ScriptType::SMP:
        if (subType == 0)
            return QString::fromUtf16(
                u"00:00:01.2:第一句对白\r\n00:00:03.4:\r\n00:00:04.0:第二句对白\r\n00:00:06.1:\r\n");
        return QString::fromUtf16(u"00:00:01:06     00:00:03:13     第一句对白\r\n"
                                  u"00:00:04:00     00:00:06:03     第二句对白\r\n");
    case ScriptType::RichText:
        return QString::fromUtf16(
            u"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 SimSun;}}{\\colortbl;\\red255\\green0\\blue0;}\r\n"
            u"\\pard First line of the draft\\par\r\n\\cf1 Second line, in red\\cf0\\par\r\n}\r\n");
    case ScriptType::DialogueText:
        return QString::fromUtf16(u"第一句对白\r\n第二句对白\r\n第三句对白\r\n");
    case ScriptType::LRC:
        return QString::fromUtf16(u"[ti:示例]\r\n[ar:歌手]\r\n[al:专辑]\r\n[by:制作]\r\n[offset:0]\r\n"
                                  u"[00:01.20]第一句歌词\r\n[00:04.00]第二句歌词\r\n[00:06.10]\r\n");
    case ScriptType::SST:
        return QString::fromUtf16(
            u"st_format 2\r\nDisplay_Start non_forced\r\nTV_Type PAL\r\nTape_Type NON_DROP\r\n"
            u"Pixel_Area (0 575)\r\nDisplay_Area (0 0 719 575)\r\nContrast (15 15 15 0)\r\n"
            u"Color (1 2 3 4)\r\nFile_Path ./\r\n"
            u"SP_NUMBER START END FILE_NAME\r\n"
            u"1 00:00:01:05 00:00:03:11 page0001.bmp\r\n"
            u"2 00:00:04:00 00:00:06:02 page0002.bmp\r\n");
    default:
        return QString::fromUtf16(u"没有参考例子");
    }
}
