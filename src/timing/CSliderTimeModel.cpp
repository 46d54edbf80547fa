#include "timing/CSliderTimeModel.h"

#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMessage.h"

#include <cmath>

namespace {

constexpr int kMaxOf[4] = { 9, 59, 59, 99 };
constexpr const char *kRangeMessage[4]
    = { "AJUST_TIME_MSG_000", "AJUST_TIME_MSG_001", "AJUST_TIME_MSG_002", "AJUST_TIME_MSG_003" };

// One step of a 16-bit sum: the system adds these fields as Integers.
qint32 Checked16(qint32 value)
{
    if (value < -32768 || value > 32767)
        throw VelmarError::Overflow();
    return value;
}

QString FieldFormat(CSliderTimeModel::Field field, double value)
{
    return basConvert::Format(value, field == CSliderTimeModel::FieldHour ? u"0" : u"00");
}

} // namespace

double CSliderTimeModel::Value() const
{
    qint32 seconds = Checked16(qint32(Hour) * 3600);
    seconds = Checked16(seconds + Checked16(qint32(Minite) * 60));
    seconds = Checked16(seconds + Second);
    return (seconds + MiniSecond / 100.0) * m_sign;
}

void CSliderTimeModel::setValue(double value)
{
    setSign(value < 0 ? -1 : 1);
    const double v = std::fabs(value);
    if (m_enable[FieldHour])
        WriteField(FieldHour, qint16(std::min(basConvert::Int(v / 3600), 9.0)));
    // Mod works on whole numbers, rounding its operand first, as all of this
    // system's arithmetic does.
    if (m_enable[FieldMinite])
        WriteField(FieldMinite, qint16(basConvert::Int(basConvert::Mod(v, 3600) / 60.0)));
    if (m_enable[FieldSecond])
        WriteField(FieldSecond, qint16(basConvert::Mod(basConvert::Int(v), 60)));
    if (m_enable[FieldMiniSecond])
        WriteField(FieldMiniSecond, qint16(basConvert::Mod(v * 100, 100)));
}

QString CSliderTimeModel::SignCaption() const
{
    return m_sign < 0 ? QStringLiteral("-") : QStringLiteral("+");
}

qint16 &CSliderTimeModel::FieldValue(Field field)
{
    switch (field) {
    case FieldHour:
        return Hour;
    case FieldMinite:
        return Minite;
    case FieldSecond:
        return Second;
    case FieldMiniSecond:
        break;
    }
    return MiniSecond;
}

void CSliderTimeModel::WriteField(Field field, qint16 value)
{
    FieldValue(field) = value;
    m_text[field] = FieldFormat(field, value);
}

int CSliderTimeModel::FieldMax(Field field)
{
    return kMaxOf[field];
}

bool CSliderTimeModel::LeaveField(Field field)
{
    const QString text = basConvert::Trim(m_text[field]);
    if (basConvert::IsNumeric(text)) {
        const double value = basConvert::CDbl(text);
        if (value >= FieldMin(field) && value <= FieldMax(field)) {
            WriteField(field, basConvert::CInt(value));
            return true;
        }
    }
    MsgBox(Msg(QString::fromLatin1(kRangeMessage[field])));
    return false;
}

void CSliderTimeModel::Spin(Field field, int value)
{
    WriteField(field, qint16(std::clamp(value, FieldMin(field), FieldMax(field))));
}

bool CSliderTimeModel::KeyAccepted(int character)
{
    return character < 32 || (character >= '0' && character <= '9');
}
