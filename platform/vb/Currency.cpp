#include "platform/vb/Currency.h"

Currency Currency::fromTenThousandths(qint64 count)
{
    return Currency(count);
}

QString Currency::toString() const
{
    // Work on the magnitude as unsigned so that the most negative count works too.
    const bool negative = m_count < 0;
    const quint64 magnitude = negative ? 0 - static_cast<quint64>(m_count) : static_cast<quint64>(m_count);
    return QStringLiteral("%1%2.%3")
        .arg(negative ? QStringLiteral("-") : QString())
        .arg(magnitude / 10000)
        .arg(magnitude % 10000, 4, 10, QLatin1Char('0'));
}
