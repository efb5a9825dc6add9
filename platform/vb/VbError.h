#pragma once

#include <QString>
#include <stdexcept>

// A run-time error with the number and description the VB runtime gives it.
// Routines that "resume next" catch it (ErrorTrap); others let it pass up.
class VbError : public std::runtime_error
{
public:
    VbError(int number, const QString &description);

    int number() const { return m_number; }
    QString description() const { return m_description; }

    // The errors of the runtime that this program raises itself.
    static VbError invalidArgument(); // 5
    static VbError overflow();        // 6
    static VbError divisionByZero();  // 11
    static VbError typeMismatch();    // 13

    // Object-defined errors start here (vbObjectError).
    static constexpr int ObjectErrorBase = -2147221504;

private:
    int m_number;
    QString m_description;
};
