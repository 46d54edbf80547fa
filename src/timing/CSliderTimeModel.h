#pragma once

#include <QString>
#include <QtGlobal>

// The value logic of the time value dialog (frmSliderTime): a signed time split into
// hours, minutes, seconds and hundredths, each with a text box, a spin control and an
// enable flag. The dialog binds its controls to this and shows it modally; the caller
// sets Value, Title, Description and the flags, and reads Cancelled and Value.
class CSliderTimeModel
{
public:
    enum Field { FieldHour, FieldMinite, FieldSecond, FieldMiniSecond };

    qint16 Hour = 0;
    qint16 Minite = 0;
    qint16 Second = 0;
    qint16 MiniSecond = 0;
    bool Cancelled = false;

    // Seconds with their sign. The sum of hours, minutes and seconds is made in 16-bit
    // arithmetic, so more than 32767 whole seconds (9:06:07) raises VelmarError 6.
    double Value() const;
    // Takes the sign of the value (0 is positive) and writes each enabled field from the
    // absolute value, the hours limited to 9. Raises VelmarError 6 beyond 32-bit range.
    void setValue(double value);

    qint16 Sign() const { return m_sign; }
    void setSign(qint16 sign) { m_sign = sign < 0 ? -1 : 1; }
    // The caption of the sign button, "+" or "-".
    QString SignCaption() const;
    // The sign button: swaps between "+" and "-".
    void ToggleSign() { setSign(qint16(-m_sign)); }

    bool EnableSign() const { return m_enableSign; }
    void setEnableSign(bool on) { m_enableSign = on; }
    bool EnableHour() const { return m_enable[FieldHour]; }
    void setEnableHour(bool on) { m_enable[FieldHour] = on; }
    bool EnableMinite() const { return m_enable[FieldMinite]; }
    void setEnableMinite(bool on) { m_enable[FieldMinite] = on; }
    bool EnableSecond() const { return m_enable[FieldSecond]; }
    void setEnableSecond(bool on) { m_enable[FieldSecond] = on; }
    bool EnableMiniSecond() const { return m_enable[FieldMiniSecond]; }
    void setEnableMiniSecond(bool on) { m_enable[FieldMiniSecond] = on; }
    bool FieldEnabled(Field field) const { return m_enable[field]; }

    QString Title() const { return m_title; }
    void setTitle(const QString &title) { m_title = title; }
    QString Description() const { return m_description; }
    void setDescription(const QString &text) { m_description = text; }

    // The text boxes. Typing changes only the text; leaving the box checks it.
    QString FieldText(Field field) const { return m_text[field]; }
    void setFieldText(Field field, const QString &text) { m_text[field] = text; }
    // The box loses the focus: a number in the field's range is taken and written back
    // in its format; anything else shows the field's range message, and the result is
    // false (the focus stays in the box).
    bool LeaveField(Field field);
    // A spin control moved to a value.
    void Spin(Field field, int value);

    static int FieldMin(Field) { return 0; }
    static int FieldMax(Field field);
    // Key press on the form: control characters and digits pass, all else is dropped.
    static bool KeyAccepted(int character);

    void OK() { Cancelled = false; }
    void Cancel() { Cancelled = true; }

private:
    qint16 &FieldValue(Field field);
    void WriteField(Field field, qint16 value);

    qint16 m_sign = 1;
    bool m_enableSign = true;
    bool m_enable[4] = { true, true, true, true };
    QString m_text[4]
        = { QStringLiteral("0"), QStringLiteral("00"), QStringLiteral("00"), QStringLiteral("00") };
    QString m_title;
    QString m_description;
};
