#pragma once

#include <QString>

// The runtime's Format function, for the formats the program uses.
class VbFormat
{
public:
    // Named boolean formats: "On/Off", "True/False", "Yes/No".
    static QString boolean(bool value, const QString &format);
};
