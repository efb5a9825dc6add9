#pragma once

#include <QDate>
#include <QString>

// The runtime's DatePart with its default arguments: weeks start on Sunday and
// week 1 is the week that holds 1 January (so the last days of December can be
// week 53 or even 54). Intervals: "yyyy" year, "q" quarter 1-4, "m" month,
// "y" day of the year, "d" day of the month, "w" weekday (1 = Sunday),
// "ww" week of the year. Another interval raises error 5.
class VbDatePart
{
public:
    static int datePart(const QString &interval, const QDate &date);

    static int quarter(const QDate &date);
    static int weekday(const QDate &date);
    static int weekOfYear(const QDate &date);
};
