#pragma once

#include "core/isub.h"
#include "script/ScriptType.h"

#include <QString>
#include <QStringView>

class CSSAContent;

// The plain text of a line: override blocks "{\...}" removed (an unclosed one cuts the
// text), then "\n", "\N" and "\h" turned into blanks.
QString StripOverrides(const QString &text);

// One line of the [Events] section in either script version: Dialogue, Comment,
// Picture, Sound, Movie or Command. Keeps the decoded effect field; reads the script
// version and the output mask from its parent list.
class CSSAContentLine : public isub
{
public:
    // Public fields.
    bool Blank = false;
    qint32 LineType = 0;
    // Outcome of the last parse: 0 fine, 3 no ":", 5 fewer than nine fields, -1 a field
    // could not be converted.
    qint16 ErrNumber = 0;
    // 0 full, 1 tenths then "0", 2 whole seconds, 3 "MM:SS": how the time strings render.
    qint32 TimeFormat = 0;
    bool m_Changed = false;
    bool m_Question = false;
    bool m_DisableCheckTiming = false;
    bool m_IsComment = false;
    bool ForcePosition = false;
    bool Displayed = false;
    qint32 DisplayX = 0;
    qint32 DisplayY = 0;
    qint32 DisplayHeight = 0;
    qint32 DisplayWidth = 0;

    void Init(qint32 SerialNo = 0);

    CSSAContent *Parent() const { return m_parent; }
    void setParent(CSSAContent *parent) { m_parent = parent; }

    qint16 Marked() const { return m_marked; }
    void setMarked(qint16 value) { m_marked = value; }
    qint16 Layer() const { return m_layer; }
    void setLayer(qint16 value) { m_layer = value; }

    // Stored time plus TimeOffset; a negative sum reads as 0. A negative value stores 0.
    double StartTime() const;
    void setStartTime(double seconds);
    double EndTime() const;
    void setEndTime(double seconds);
    // Rendered by TimeFormat; written through the strict parser.
    QString StartTimeString() const;
    void setStartTimeString(QStringView text);
    QString EndTimeString() const;
    void setEndTimeString(QStringView text);

    // An empty or all-blank stored style reads as "*Default".
    QString Style() const;
    void setStyle(const QString &value) { m_style = value; }
    const QString &Owner() const { return m_owner; }
    void setOwner(const QString &value) { m_owner = value; }

    // Kept only when numeric and from 0 to 9999; anything else stores "0".
    const QString &MarginL() const { return m_marginL; }
    void setMarginL(const QString &value) { m_marginL = checkedMargin(value); }
    const QString &MarginR() const { return m_marginR; }
    void setMarginR(const QString &value) { m_marginR = checkedMargin(value); }
    const QString &MarginV() const { return m_marginV; }
    void setMarginV(const QString &value) { m_marginV = checkedMargin(value); }

    // Composed from, and decomposed into, the five effect fields. Only "Karaoke",
    // "Scroll up", "Scroll down" and "Banner" are written out.
    QString Effect() const;
    void setEffect(QStringView value);
    const QString &EffectName() const { return m_effectName; }
    void setEffectName(const QString &value) { m_effectName = value; }
    qint16 EffectY1() const { return m_effectY1; }
    void setEffectY1(qint16 value) { m_effectY1 = value; }
    qint16 EffectY2() const { return m_effectY2; }
    void setEffectY2(qint16 value) { m_effectY2 = value; }
    qint16 EffectDelay() const { return m_effectDelay; }
    void setEffectDelay(qint16 value) { m_effectDelay = value; }
    qint16 EffectFade() const { return m_effectFade; }
    void setEffectFade(qint16 value) { m_effectFade = value; }
    qint16 EffectLeftToRight() const { return m_effectLeftToRight; }
    void setEffectLeftToRight(qint16 value) { m_effectLeftToRight = value; }

    // The text with its override tags; writing it makes DialogText anew.
    const QString &Dialog() const { return m_dialog; }
    void setDialog(const QString &value);
    // The text without its override tags. It is made when first asked for: most saves
    // and conversions never read it, and stripping every line of a long script costs.
    const QString &DialogText() const;

    double TimeOffset() const { return m_timeOffset; }
    void setTimeOffset(double value) { m_timeOffset = value; }

    // SSA, anything else ASS: the parent's script type (ASS without a parent).
    ::ScriptType ScriptType() const;
    // The parent's output mask (the whole line without a parent).
    qint32 SaveOption() const;

    // The line's text form under the parent's mask; "" for a blank or empty line.
    QString Content() override;
    void setContent(const QString &text) override { Parse(text); }
    // The parser itself, on a view of the text.
    void Parse(QStringView text);
    // The text form appended to `out`, as Content() gives it.
    void AppendContent(QString &out) const;
    void Clear() override { }

    // The storage of Style as read, without the "*Default" rule.
    const QString &StoredStyle() const { return m_style; }

private:
    static QString checkedMargin(const QString &value);
    void appendTimeString(QString &out, double seconds) const;
    QString timeString(double seconds) const;
    void fail();

    CSSAContent *m_parent = nullptr;
    qint16 m_marked = 0;
    qint16 m_layer = 0;
    double m_startTime = 0;
    double m_endTime = 0;
    QString m_style;
    QString m_owner;
    QString m_marginL;
    QString m_marginR;
    QString m_marginV;
    QString m_effectName;
    qint16 m_effectY1 = 0;
    qint16 m_effectY2 = 0;
    qint16 m_effectDelay = 0;
    qint16 m_effectFade = 0;
    qint16 m_effectLeftToRight = 0;
    QString m_dialog;
    mutable QString m_dialogText;
    mutable bool m_dialogTextMade = false;
    double m_timeOffset = 0;
};
