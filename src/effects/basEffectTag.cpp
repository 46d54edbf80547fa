#include "effects/basEffectTag.h"

#include "core/IPrompt.h"
#include "core/basConvert.h"
#include "core/basTime.h"

#include <QStringList>

#include <cmath>

using namespace basConvert;

namespace basEffectTag {

namespace {

// A number box through a 32-bit integer and back: "12.6" gives "13".
QString intText(const QString &box)
{
    return CStr(qint64(CLng(box)));
}

QString onOff(const QString &name, int option)
{
    return name + (option == 0 ? u'1' : u'0');
}

// The old numbering of an alignment given by its keypad position; empty when unknown.
QString oldAlignment(int keypad)
{
    static const int table[10] = { 0, 1, 2, 3, 9, 10, 11, 5, 6, 7 };
    if (keypad < 1 || keypad > 9)
        return {};
    return CStr(qint64(table[keypad]));
}

QString colourTag(const CTagPage &p)
{
    QString body;
    if (p.sldAlpha != 0) {
        static const char16_t *alphaNames[] = { u"\\1a", u"\\2a", u"\\3a", u"\\4a" };
        body += p.optAlpha >= 0 && p.optAlpha < 4 ? QString::fromUtf16(alphaNames[p.optAlpha])
                                                  : QStringLiteral("\\alpha");
        QString hex = Hex(p.sldAlpha);
        if (hex.size() < 2)
            hex.prepend(QString(2 - hex.size(), u'0'));
        body += QStringLiteral("&H") + hex + u'&';
    }
    static const char16_t *colourNames[] = { u"\\1c", u"\\2c", u"\\3c", u"\\4c" };
    body += p.optColor >= 0 && p.optColor < 4 ? QString::fromUtf16(colourNames[p.optColor])
                                              : QStringLiteral("\\c");
    body += ColourText(p.picColor) + u'&';
    return body;
}

// Rotation tags of the ticked boxes among first..first+2, in x, y, z order.
QString rotationTags(const CTagPage &p, int first)
{
    static const char16_t *names[] = { u"\\frx", u"\\fry", u"\\frz" };
    QString body;
    for (int i = 0; i < 3; ++i)
        if (p.chkRotate[first + i])
            body += QString::fromUtf16(names[i]) + p.txtRotateAngle[first + i];
    return body;
}

QString fadingTag(const CTagPage &p)
{
    if (p.optFading == 0) {
        QStringList values;
        for (const QString &a : p.txtAlpha)
            values << intText(a);
        for (int i = 0; i < 4; ++i)
            values << intText(p.txtFadingTime[i]);
        return QStringLiteral("\\fade(") + values.join(u',') + u')';
    }
    if (p.optFading == 1)
        return QStringLiteral("\\fad(") + intText(p.txtFadingTime[4]) + u',' + intText(p.txtFadingTime[5])
            + u')';
    return {};
}

QString moveTag(const CTagPage &p)
{
    QString body = QStringLiteral("\\move(") + p.txtMoveStart[0] + u',' + p.txtMoveStart[1] + u','
        + p.txtMoveEnd[0] + u',' + p.txtMoveEnd[1];
    if (!Trim(p.txtMoveTime[0]).isEmpty() && !Trim(p.txtMoveTime[1]).isEmpty())
        body += u',' + p.txtMoveTime[0] + u',' + p.txtMoveTime[1];
    return body + u')';
}

QString alignmentTag(const CTagPage &p)
{
    if (p.optAlignment < 0 || p.optAlignment > 8)
        return {};
    const int keypad = p.optAlignment + 1;
    if (p.optAlia == 0)
        return QStringLiteral("\\an") + CStr(qint64(keypad));
    return QStringLiteral("\\a") + oldAlignment(keypad);
}

QString tagBody(const CTagPage &p, int tag)
{
    switch (tag) {
    case 0:
        return QStringLiteral("\\N");
    case 1:
        return colourTag(p);
    case 2:
        return QStringLiteral("\\fn") + p.lstFontName;
    case 3:
        return QStringLiteral("\\fs") + intText(p.txtFontSize);
    case 4:
        return onOff(QStringLiteral("\\b"), p.optBold);
    case 5:
        return onOff(QStringLiteral("\\i"), p.optItalic);
    case 6:
        return onOff(QStringLiteral("\\u"), p.optUnderline);
    case 7:
        return onOff(QStringLiteral("\\s"), p.optStrikeThru);
    case 8:
        return alignmentTag(p);
    case 9:
        return onOff(QStringLiteral("\\be"), p.optBlur);
    case 10:
        return QStringLiteral("\\shad") + intText(p.txtShadow);
    case 11:
        return QStringLiteral("\\bord") + intText(p.txtBorder);
    case 12:
        return QStringLiteral("\\fsp") + intText(p.txtDistance);
    case 13:
        return rotationTags(p, 0);
    case 14: {
        QString body;
        if (!Trim(p.txtScale[0]).isEmpty())
            body += QStringLiteral("\\fscx") + intText(p.txtScale[0]);
        if (!Trim(p.txtScale[1]).isEmpty())
            body += QStringLiteral("\\fscy") + intText(p.txtScale[1]);
        return body;
    }
    case 15:
        return fadingTag(p);
    case 16:
        return QStringLiteral("\\K") + intText(p.txtKaraOK);
    case 17:
        return moveTag(p);
    case 18:
        return QStringLiteral("\\org(") + p.txtOrgX + u',' + p.txtOrgY + u')';
    case 19:
        return QStringLiteral("\\pos(") + p.txtSiteX + u',' + p.txtSiteY + u')';
    case 20:
        return QStringLiteral("\\clip(") + p.txtClipStart[0] + u',' + p.txtClipStart[1] + u','
            + p.txtClipEnd[0] + u',' + p.txtClipEnd[1] + u')';
    case 21:
        if (p.optWrap < 0 || p.optWrap > 3)
            return {};
        return QStringLiteral("\\q") + CStr(qint64(p.optWrap));
    case 22:
        return QStringLiteral("\\fe") + p.txtEncode;
    case 23:
        return QStringLiteral("\\r");
    default:
        return {};
    }
}

} // namespace

QString TagCaption(int tagNumber)
{
    static const char16_t *captions[TagCount] = {
        u"换行",
        u"颜色",
        u"字体",
        u"字体大小",
        u"粗体",
        u"斜体",
        u"下划线",
        u"中划线",
        u"对齐方式",
        u"边界弱化",
        u"影子",
        u"边框",
        u"间距",
        u"旋转",
        u"伸缩",
        u"淡入淡出",
        u"卡拉OK",
        u"移动",
        u"原点",
        u"位置",
        u"截取",
        u"换行方式",
        u"字符集",
        u"取消",
    };
    if (tagNumber < 0 || tagNumber >= TagCount)
        return {};
    return QString::fromUtf16(captions[tagNumber]);
}

QString ColourText(qint64 value)
{
    return ColourToHex(value);
}

bool AccelFrameEnabled(int tagNumber)
{
    switch (tagNumber) {
    case 1:
    case 3:
    case 10:
    case 11:
    case 12:
    case 13:
    case 14:
        return true;
    default:
        return false;
    }
}

QString BuildTag(const CTagPage &page, int tagNumber)
{
    QString body = tagBody(page, tagNumber);
    if (Trim(body).isEmpty()) {
        MsgBox(QStringLiteral("设置可能有错误，不能产生效果符号"));
        return {};
    }
    if (tagNumber != 0 && page.chkAccel) {
        const QString startState = tagNumber == 13 ? rotationTags(page, 3) : QString();
        body = startState + QStringLiteral("\\t(") + page.txtAccelStart + u',' + page.txtAccelEnd + u','
            + page.txtAccel + u',' + body + u')';
    }
    return u'{' + body + u'}';
}

bool RecordKaraokeLyric(CKaraokeRecording &recording, double currentPosition, double reactOffsetStart,
    QString &cellText, const QString &lyric)
{
    if (!recording.KaraOKRecording)
        return false;
    const double now = currentPosition + reactOffsetStart;
    const double duration = now - recording.KaraOKStartTime;
    cellText += QStringLiteral("{\\K") + CStr(Int(duration * 100)) + u'}' + lyric;
    recording.KaraOKStartTime = now;
    recording.Changed = true;
    return true;
}

} // namespace basEffectTag
