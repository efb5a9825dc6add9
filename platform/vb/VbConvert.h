#pragma once

#include <QString>

// The runtime's conversions of text to values (CBool, CLng, CInt), with the
// errors the runtime raises: a text that is not a value is a type mismatch
// (13), a value out of range an overflow (6).
class VbConvert
{
public:
    // "True" and "False" in any letter case, or a number (0 is false, any
    // other number true).
    static bool toBoolean(const QString &text);
    // A number rounded to the nearest whole number, halves to even.
    static qint32 toLong(const QString &text);
    static qint16 toInteger(const QString &text);
    // The text form of a boolean, as the settings store writes it.
    static QString fromBoolean(bool value);

private:
    static double toNumber(const QString &text);
};
