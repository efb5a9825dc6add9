#pragma once

#include <QDateTime>
#include <QString>

// The runtime's Format function for dates and times, with the meaning it has
// on a Japanese system. Supported:
//   named formats "General Date", "Long Date", "Short Date", "Long Time",
//   "Short Time";
//   pattern letters g gg ggg (era: initial, first character, full name),
//   e ee (year of the era), yy yyyy, m mm (month, or minutes right after an
//   hour), d dd, aaa aaaa (weekday, short and full), h hh, n nn, s ss.
// Anything else is copied as it stands; text in double quotes is literal.
// The era comes from ICU's Japanese calendar, so a new era needs no change here.
class VbDateFormat
{
public:
    static QString format(const QDateTime &value, const QString &pattern);

    // The parts of the Japanese era calendar for one day.
    static QString eraName(const QDate &date); // "令和"
    static int eraYear(const QDate &date);     // 1 in the first year
};
