#include "platform/vb/VbDatePart.h"

#include "platform/vb/VbError.h"

int VbDatePart::datePart(const QString &interval, const QDate &date)
{
    const QString name = interval.toLower();
    if (name == QLatin1String("yyyy"))
        return date.year();
    if (name == QLatin1String("q"))
        return quarter(date);
    if (name == QLatin1String("m"))
        return date.month();
    if (name == QLatin1String("y"))
        return date.dayOfYear();
    if (name == QLatin1String("d"))
        return date.day();
    if (name == QLatin1String("w"))
        return weekday(date);
    if (name == QLatin1String("ww"))
        return weekOfYear(date);
    throw VbError::invalidArgument();
}

int VbDatePart::quarter(const QDate &date)
{
    return (date.month() - 1) / 3 + 1;
}

int VbDatePart::weekday(const QDate &date)
{
    // Qt counts Monday = 1 .. Sunday = 7; the runtime Sunday = 1 .. Saturday = 7.
    return date.dayOfWeek() % 7 + 1;
}

int VbDatePart::weekOfYear(const QDate &date)
{
    const int firstWeekday = weekday(QDate(date.year(), 1, 1)); // 1 = Sunday
    return (date.dayOfYear() - 1 + firstWeekday - 1) / 7 + 1;
}
