#include "platform/vb/VbConvert.h"
#include "platform/vb/VbError.h"

#include <cmath>
#include <limits>

double VbConvert::toNumber(const QString &text)
{
    const QString trimmed = text.trimmed();
    bool ok = false;
    double value = 0;
    if (trimmed.startsWith(u"&H", Qt::CaseInsensitive)) {
        const qlonglong hex = trimmed.mid(2).toLongLong(&ok, 16);
        value = static_cast<double>(hex);
    } else {
        value = trimmed.toDouble(&ok);
    }
    if (!ok || !std::isfinite(value))
        throw VbError::typeMismatch();
    return value;
}

bool VbConvert::toBoolean(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.compare(u"True", Qt::CaseInsensitive) == 0)
        return true;
    if (trimmed.compare(u"False", Qt::CaseInsensitive) == 0)
        return false;
    return toNumber(trimmed) != 0.0;
}

qint32 VbConvert::toLong(const QString &text)
{
    // The runtime rounds halves to the even neighbour: 2.5 gives 2, 3.5 gives 4.
    const double rounded = std::nearbyint(toNumber(text));
    if (rounded < std::numeric_limits<qint32>::min() || rounded > std::numeric_limits<qint32>::max())
        throw VbError::overflow();
    return static_cast<qint32>(rounded);
}

qint16 VbConvert::toInteger(const QString &text)
{
    const qint32 value = toLong(text);
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        throw VbError::overflow();
    return static_cast<qint16>(value);
}

QString VbConvert::fromBoolean(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}
