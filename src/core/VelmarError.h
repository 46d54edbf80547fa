#pragma once

#include <QString>
#include <exception>

// A run-time fault of the system: a number and its text, like the faults of Basic.
// Raised by the conversion helpers and by classes whose callers report the fault
// with a catalogue message; never allowed to leave a document boundary.
class VelmarError : public std::exception
{
public:
    VelmarError(int number, QString description);

    int Number() const { return m_number; }
    const QString &Description() const { return m_description; }
    const char *what() const noexcept override { return m_what.constData(); }

    // The standard faults the conversions raise, with their usual texts.
    static VelmarError InvalidCall(); // 5
    static VelmarError Overflow(); // 6
    static VelmarError SubscriptOutOfRange(); // 9
    static VelmarError DivisionByZero(); // 11
    static VelmarError TypeMismatch(); // 13

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

namespace VelmarErr {
constexpr int InvalidCall = 5;
constexpr int Overflow = 6;
constexpr int SubscriptOutOfRange = 9;
constexpr int DivisionByZero = 11;
constexpr int TypeMismatch = 13;
} // namespace VelmarErr
