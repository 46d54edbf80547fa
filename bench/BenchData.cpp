#include "BenchData.h"

#include "core/basTime.h"

// A 30,000-event ASS script of about 3.4 MB in UTF-8: two styles, override tags and
// Chinese text, as the team's scripts look.
const QString &Script30k()
{
    static const QString text = [] {
        QString s;
        s.reserve(3'600'000);
        s += QStringLiteral(
            "[Script Info]\r\nTitle: 基准测试\r\nScriptType: v4.00+\r\nCollisions: Normal\r\n"
            "PlayResX: 1920\r\nPlayResY: 1080\r\nTimer: 100.0000\r\n\r\n"
            "[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
            "OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, "
            "Angle, BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\n"
            "Style: "
            "中文,方正黑体_GBK,60,&H00FFFFFF,&HF0000000,&H00402000,&H80000000,0,0,0,0,100,100,0,0.00,1,2,1,2,"
            "10,10,40,134\r\n"
            "Style: "
            "English,Arial,40,&H00E0E0E0,&HF0000000,&H00000000,&H80000000,-1,0,0,0,100,100,0,0.00,1,1,0,2,10,"
            "10,10,1\r\n\r\n"
            "[Events]\r\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, "
            "Text\r\n");
        const QString chinese[]
            = { QStringLiteral("我们今天一起去看电影吧"), QStringLiteral("这件事情你不用担心，交给我就好"),
                  QStringLiteral("时间轴已经对好了"), QStringLiteral("字幕组的大家辛苦了") };
        for (int i = 0; i < 30000; ++i) {
            const double start = i * 0.95; // under ten hours, as strict time strings need
            const QString line = QStringLiteral("Dialogue: 0,%1,%2,%3,NTP,0000,0000,0000,,%4%5\\Nline %6")
                                     .arg(TimeToString(start, 2), TimeToString(start + 0.9, 2),
                                         i % 3 ? QStringLiteral("中文") : QStringLiteral("English"),
                                         i % 2 ? QStringLiteral("{\\fad(200,200)\\be1}")
                                               : QStringLiteral("{\\pos(960,1000)}"),
                                         chinese[i % 4])
                                     .arg(i);
            s += line;
            s += u"\r\n";
        }
        return s;
    }();
    return text;
}

// A generated SRT of `cues` blocks, about 90 bytes each, every block ending in "\r\n".
QString GeneratedSrt(int cues)
{
    QString text;
    text.reserve(qsizetype(cues) * 96);
    auto stamp = [](double t) {
        QString s = TimeToString(t, 2);
        s.replace(u'.', u',');
        return QStringLiteral("0") + s + QStringLiteral("0");
    };
    for (int i = 0; i < cues; ++i) {
        const double start = i;
        text += QString::number(i + 1) + QStringLiteral("\r\n");
        text += stamp(start) + QStringLiteral(" --> ") + stamp(start + 0.8) + QStringLiteral("\r\n");
        text += QStringLiteral("Line %1 of the generated script\\Nsecond row.\r\n\r\n").arg(i);
    }
    return text;
}
