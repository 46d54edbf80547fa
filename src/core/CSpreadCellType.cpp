#include "core/CSpreadCellType.h"

#include "core/basConvert.h"

bool CSpreadCellType::Accepts(const QString &text) const
{
    switch (Kind) {
    case SpreadCellKind::Text:
        if (MaxLength > 0 && text.size() > MaxLength)
            return false;
        return MultiLine || !text.contains(QLatin1Char('\n'));
    case SpreadCellKind::Integer:
    case SpreadCellKind::Float: {
        const QString trimmed = basConvert::Trim(text);
        if (trimmed.isEmpty())
            return true; // an empty number cell reads as 0
        if (!basConvert::IsNumeric(trimmed))
            return false;
        const double value = basConvert::CDbl(trimmed);
        if (Kind == SpreadCellKind::Integer && value != basConvert::Int(value))
            return false;
        return value >= Min && value <= Max;
    }
    case SpreadCellKind::List:
        return true;
    }
    return true;
}

CSpreadCellType CSpreadCellType::TextType(int maxLength, bool multiLine)
{
    CSpreadCellType type;
    type.MaxLength = maxLength;
    type.MultiLine = multiLine;
    return type;
}

CSpreadCellType CSpreadCellType::IntegerType(double min, double max, double spinStep)
{
    CSpreadCellType type;
    type.Kind = SpreadCellKind::Integer;
    type.Min = min;
    type.Max = max;
    type.SpinStep = spinStep;
    return type;
}

CSpreadCellType CSpreadCellType::FloatType(double min, double max)
{
    CSpreadCellType type;
    type.Kind = SpreadCellKind::Float;
    type.Min = min;
    type.Max = max;
    return type;
}

CSpreadCellType CSpreadCellType::ListType(const QStringList &items)
{
    CSpreadCellType type;
    type.Kind = SpreadCellKind::List;
    type.ListItems = items;
    return type;
}
