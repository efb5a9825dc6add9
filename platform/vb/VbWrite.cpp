#include "platform/vb/VbWrite.h"

#include "platform/vb/VbInput.h"

QByteArray VbWrite::string(QByteArrayView text)
{
    QByteArray field;
    field.reserve(text.size() + 2);
    field += '"';
    field += text;
    field += '"';
    return field;
}

QByteArray VbWrite::date(const QDateTime &value)
{
    const QDate day = value.isValid() ? value.date() : VbInput::zeroDate();
    const QTime time = value.isValid() ? value.time() : QTime(0, 0);
    const bool midnight = time.hour() == 0 && time.minute() == 0 && time.second() == 0;

    QString text;
    if (midnight)
        text = day.toString(u"yyyy-MM-dd");
    else if (day == VbInput::zeroDate())
        text = time.toString(u"HH:mm:ss");
    else
        text = day.toString(u"yyyy-MM-dd") + u' ' + time.toString(u"HH:mm:ss");
    return '#' + text.toLatin1() + '#';
}
