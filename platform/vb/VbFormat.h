#pragma once

#include <QDateTime>
#include <QString>

// The runtime's Format function, for the formats the program uses.
class VbFormat
{
public:
    // Named boolean formats: "On/Off", "True/False", "Yes/No".
    static QString boolean(bool value, const QString &format);

    // Named date and time formats as a Japanese system writes them:
    // "Long Date" 2026年11月23日, "Short Date" 2026/11/23, "Long Time" 9:05:07,
    // "Short Time" 09:05 (always 24-hour with two-digit hours).
    static QString dateTime(const QDateTime &value, const QString &format);
};
