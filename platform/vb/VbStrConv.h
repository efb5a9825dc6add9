#pragma once

#include <QString>

// The runtime's StrConv conversions that the program uses.
class VbStrConv
{
public:
    // The first letter of every word upper-case, the rest lower-case. Words
    // are separated by NUL, tab, line feed, vertical tab, form feed, carriage
    // return and the blank (half- or full-width), as in the runtime.
    static QString properCase(const QString &text);
};
