#include "core/VelmarError.h"

VelmarError::VelmarError(int number, QString description)
    : m_number(number)
    , m_description(std::move(description))
    , m_what(m_description.toUtf8())
{ }

VelmarError VelmarError::InvalidCall()
{
    return { VelmarErr::InvalidCall, QStringLiteral("Invalid procedure call or argument") };
}

VelmarError VelmarError::Overflow()
{
    return { VelmarErr::Overflow, QStringLiteral("Overflow") };
}

VelmarError VelmarError::SubscriptOutOfRange()
{
    return { VelmarErr::SubscriptOutOfRange, QStringLiteral("Subscript out of range") };
}

VelmarError VelmarError::DivisionByZero()
{
    return { VelmarErr::DivisionByZero, QStringLiteral("Division by zero") };
}

VelmarError VelmarError::TypeMismatch()
{
    return { VelmarErr::TypeMismatch, QStringLiteral("Type mismatch") };
}
