#pragma once

#include "core/isub.h"
#include "script/ScriptType.h"

#include <QString>
#include <QStringView>

class CFonts;
class QObject;

// SSA numbers a position as a line position plus 4 for top and 8 for middle; ASS
// follows a numeric keypad. Numbers outside the tables give "".
QString SSAAlignToASS(const QString &ssa);
QString ASSAlignToSSA(qint32 ass);

// One named style: a "Style:" line of [V4 Styles] or [V4+ Styles]. The record keeps the
// ASS form; SSA colours, alignment and fields are converted at the edge.
class CFont : public isub
{
public:
    // Public fields.
    // Comment lines that stood ahead of the style in the file, joined with "\r\n".
    QString Comment;
    QString OriginalStyleName;
    qint32 PrimaryAlpha = 0;
    qint32 SecondaryAlpha = 240;
    qint32 OutlineAlpha = 0;
    qint32 BackAlpha = 240;
    // Outcome of the last parse: 1 empty line, 2 not a style line, 3 no ":", 4 too few
    // fields.
    qint16 ErrNumber = 0;

    void Init(const QString &StyleName = QStringLiteral("Default"));

    CFonts *Parent() const { return m_parent; }
    // Also fixes the number of fields a line must have: 23 under ASS, 17 otherwise.
    void setParent(CFonts *parent);
    QObject *Window() const { return m_window; }
    void setWindow(QObject *window) { m_window = window; }
    // The parent's type (ASS without a parent).
    ::ScriptType ScriptType() const;

    const QString &StyleName() const { return m_styleName; }
    void setStyleName(const QString &value) { m_styleName = value; }
    const QString &FontName() const { return m_fontName; }
    void setFontName(const QString &value) { m_fontName = value; }
    qint16 FontSize() const { return m_fontSize; }
    void setFontSize(qint16 value) { m_fontSize = value; }

    // Colours: decimal or "&H" text, read as a 32-bit value; the low 24 bits are the
    // colour (blue in the high byte, nothing swapped) and the top 8 the matching alpha.
    // The getters give the 24-bit colour as decimal text. A text that is not a number
    // is ignored.
    QString PrimaryColour() const { return QString::number(m_primary); }
    void setPrimaryColour(QStringView value) { setColour(value, m_primary, &PrimaryAlpha); }
    QString SecondaryColour() const { return QString::number(m_secondary); }
    void setSecondaryColour(QStringView value) { setColour(value, m_secondary, &SecondaryAlpha); }
    // SSA's third colour, kept apart from OutlineColor. It has no alpha of its own.
    QString TertiaryColour() const { return QString::number(m_tertiary); }
    void setTertiaryColour(QStringView value) { setColour(value, m_tertiary, nullptr); }
    QString OutlineColor() const { return QString::number(m_outline); }
    void setOutlineColor(QStringView value) { setColour(value, m_outline, &OutlineAlpha); }
    QString BackColour() const { return QString::number(m_back); }
    void setBackColour(QStringView value) { setColour(value, m_back, &BackAlpha); }
    qint32 PrimaryColourValue() const { return m_primary; }
    qint32 SecondaryColourValue() const { return m_secondary; }
    qint32 TertiaryColourValue() const { return m_tertiary; }
    qint32 OutlineColorValue() const { return m_outline; }
    qint32 BackColourValue() const { return m_back; }

    qint16 Bold() const { return m_bold; }
    void setBold(qint16 v) { m_bold = v; }
    qint16 Italic() const { return m_italic; }
    void setItalic(qint16 v) { m_italic = v; }
    qint16 UnderLine() const { return m_underLine; }
    void setUnderLine(qint16 v) { m_underLine = v; }
    qint16 StrikeOut() const { return m_strikeOut; }
    void setStrikeOut(qint16 v) { m_strikeOut = v; }
    double ScaleX() const { return m_scaleX; }
    void setScaleX(double v) { m_scaleX = v; }
    double ScaleY() const { return m_scaleY; }
    void setScaleY(double v) { m_scaleY = v; }
    double Spacing() const { return m_spacing; }
    void setSpacing(double v) { m_spacing = v; }
    // Reads with the pattern "0.00"; a text that is not a number is ignored.
    QString Angle() const;
    void setAngle(QStringView value);
    double AngleValue() const { return m_angle; }
    qint16 BorderStyle() const { return m_borderStyle; }
    void setBorderStyle(qint16 v) { m_borderStyle = v; }
    qint16 Outline() const { return m_outlineWidth; }
    void setOutline(qint16 v) { m_outlineWidth = v; }
    qint16 Shadow() const { return m_shadow; }
    void setShadow(qint16 v) { m_shadow = v; }
    // Always in ASS numbering.
    qint16 Alignment() const { return m_alignment; }
    void setAlignment(qint16 v) { m_alignment = v; }
    double MarginL() const { return m_marginL; }
    void setMarginL(double v) { m_marginL = v; }
    double MarginR() const { return m_marginR; }
    void setMarginR(double v) { m_marginR = v; }
    double MarginV() const { return m_marginV; }
    void setMarginV(double v) { m_marginV = v; }
    qint16 AlphaLevel() const { return m_alphaLevel; }
    void setAlphaLevel(qint16 v) { m_alphaLevel = v; }
    double Encoding() const { return m_encoding; }
    void setEncoding(double v) { m_encoding = v; }

    // The comment lines as ";" lines, then the "Style:" line (without a line end).
    QString Content() override;
    // Parses one "Style:" line; the outcome is in ErrNumber.
    void setContent(const QString &text) override { Parse(text); }
    void Parse(QStringView text);
    void Clear() override { }

private:
    static void setColour(QStringView value, qint32 &colour, qint32 *alpha);

    CFonts *m_parent = nullptr;
    QObject *m_window = nullptr;
    qint32 m_expectedFields = 16;
    QString m_styleName;
    QString m_fontName;
    qint16 m_fontSize = 25;
    qint32 m_primary = 16777215;
    qint32 m_secondary = 0;
    qint32 m_tertiary = 0;
    qint32 m_outline = 0;
    qint32 m_back = 0;
    qint16 m_bold = 1;
    qint16 m_italic = 0;
    qint16 m_underLine = 0;
    qint16 m_strikeOut = 0;
    double m_scaleX = 100;
    double m_scaleY = 100;
    double m_spacing = 0;
    double m_angle = 0;
    qint16 m_borderStyle = 1;
    qint16 m_outlineWidth = 1;
    qint16 m_shadow = 0;
    qint16 m_alignment = 2;
    double m_marginL = 30;
    double m_marginR = 30;
    double m_marginV = 10;
    qint16 m_alphaLevel = 0;
    double m_encoding = 134;
};
