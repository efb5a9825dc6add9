#include "platform/vb/VbFormat.h"

QString VbFormat::boolean(bool value, const QString &format)
{
    if (format.compare(u"On/Off", Qt::CaseInsensitive) == 0)
        return value ? QStringLiteral("On") : QStringLiteral("Off");
    if (format.compare(u"Yes/No", Qt::CaseInsensitive) == 0)
        return value ? QStringLiteral("Yes") : QStringLiteral("No");
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString VbFormat::dateTime(const QDateTime &value, const QString &format)
{
    const QDate date = value.date();
    const QTime time = value.time();
    if (format.compare(u"Long Date", Qt::CaseInsensitive) == 0)
        return QStringLiteral("%1年%2月%3日").arg(date.year()).arg(date.month()).arg(date.day());
    if (format.compare(u"Short Date", Qt::CaseInsensitive) == 0)
        return date.toString(QStringLiteral("yyyy/MM/dd"));
    if (format.compare(u"Long Time", Qt::CaseInsensitive) == 0)
        return time.toString(QStringLiteral("H:mm:ss"));
    if (format.compare(u"Short Time", Qt::CaseInsensitive) == 0)
        return time.toString(QStringLiteral("HH:mm"));
    return value.toString(QStringLiteral("yyyy/MM/dd H:mm:ss"));
}
