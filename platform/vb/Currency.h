#pragma once

#include <QString>
#include <QtGlobal>

// The runtime's Currency: a 64-bit whole count of ten-thousandths, so four
// fixed decimals and a range of about ±922 trillion.
class Currency
{
public:
    Currency() = default;

    static Currency fromTenThousandths(qint64 count);
    qint64 tenThousandths() const { return m_count; }

    // All four decimals, no group separators: "-1234.5000".
    QString toString() const;

    friend bool operator==(const Currency &a, const Currency &b) { return a.m_count == b.m_count; }
    friend bool operator!=(const Currency &a, const Currency &b) { return a.m_count != b.m_count; }

private:
    explicit Currency(qint64 count)
        : m_count(count)
    {}

    qint64 m_count = 0;
};
