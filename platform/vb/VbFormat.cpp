#include "platform/vb/VbFormat.h"

QString VbFormat::boolean(bool value, const QString &format)
{
    if (format.compare(u"On/Off", Qt::CaseInsensitive) == 0)
        return value ? QStringLiteral("On") : QStringLiteral("Off");
    if (format.compare(u"Yes/No", Qt::CaseInsensitive) == 0)
        return value ? QStringLiteral("Yes") : QStringLiteral("No");
    return value ? QStringLiteral("True") : QStringLiteral("False");
}
