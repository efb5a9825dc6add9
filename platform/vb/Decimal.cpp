#include "platform/vb/Decimal.h"
#include "platform/vb/VbError.h"

#include <algorithm>
#include <utility>

namespace {

using Mantissa = unsigned __int128;

// 2^96 - 1: the largest whole number a decimal holds.
constexpr Mantissa MaxMantissa = (Mantissa(1) << 96) - 1;

Mantissa powerOfTen(int exponent)
{
    Mantissa power = 1;
    for (int i = 0; i < exponent; ++i)
        power *= 10;
    return power;
}

// Whether a number whose last kept digit is odd or even (keptIsOdd) rounds up
// when the next digit is droppedDigit and any digit after it is non-zero
// (sticky): halves go to the even neighbour.
bool roundsUpToEven(int droppedDigit, bool sticky, bool keptIsOdd)
{
    return droppedDigit > 5 || (droppedDigit == 5 && (sticky || keptIsOdd));
}

QString digitsOf(Mantissa value)
{
    if (value == 0)
        return QStringLiteral("0");
    char buffer[40];
    int start = sizeof buffer;
    while (value != 0) {
        buffer[--start] = static_cast<char>('0' + static_cast<int>(value % 10));
        value /= 10;
    }
    return QString::fromLatin1(buffer + start, static_cast<qsizetype>(sizeof buffer) - start);
}

} // namespace

// An unsigned 256-bit whole number: room for a product of two mantissas, or a
// mantissa scaled up by 10^28, before it is rounded back into 96 bits.
class Decimal::Wide
{
public:
    explicit Wide(Mantissa value)
    {
        m_limbs[0] = static_cast<quint64>(value);
        m_limbs[1] = static_cast<quint64>(value >> 64);
    }

    static Wide product(Mantissa a, Mantissa b)
    {
        // Schoolbook on 64-bit halves; each partial product fits in 128 bits.
        const quint64 a0 = static_cast<quint64>(a), a1 = static_cast<quint64>(a >> 64);
        const quint64 b0 = static_cast<quint64>(b), b1 = static_cast<quint64>(b >> 64);
        Wide result(Mantissa(a0) * b0);
        result.addAt(Mantissa(a0) * b1, 1);
        result.addAt(Mantissa(a1) * b0, 1);
        result.addAt(Mantissa(a1) * b1, 2);
        return result;
    }

    void multiplyByPowerOfTen(int exponent)
    {
        while (exponent > 0) {
            const int step = std::min(exponent, 19);
            multiply(static_cast<quint64>(powerOfTen(step)));
            exponent -= step;
        }
    }

    // Divides in place and returns the remainder.
    quint64 divide(quint64 divisor)
    {
        Mantissa remainder = 0;
        for (int i = LimbCount - 1; i >= 0; --i) {
            const Mantissa current = (remainder << 64) | m_limbs[i];
            m_limbs[i] = static_cast<quint64>(current / divisor);
            remainder = current % divisor;
        }
        return static_cast<quint64>(remainder);
    }

    void add(const Wide &other)
    {
        Mantissa carry = 0;
        for (int i = 0; i < LimbCount; ++i) {
            const Mantissa sum = Mantissa(m_limbs[i]) + other.m_limbs[i] + carry;
            m_limbs[i] = static_cast<quint64>(sum);
            carry = sum >> 64;
        }
    }

    // this -= other, where other is not larger.
    void subtract(const Wide &other)
    {
        quint64 borrow = 0;
        for (int i = 0; i < LimbCount; ++i) {
            const quint64 before = m_limbs[i];
            const quint64 difference = before - other.m_limbs[i] - borrow;
            borrow = (before < other.m_limbs[i] || (before == other.m_limbs[i] && borrow)) ? 1 : 0;
            m_limbs[i] = difference;
        }
    }

    int compare(const Wide &other) const
    {
        for (int i = LimbCount - 1; i >= 0; --i) {
            if (m_limbs[i] != other.m_limbs[i])
                return m_limbs[i] < other.m_limbs[i] ? -1 : 1;
        }
        return 0;
    }

    bool fitsMantissa() const { return m_limbs[3] == 0 && m_limbs[2] == 0 && low() <= MaxMantissa; }
    Mantissa low() const { return (Mantissa(m_limbs[1]) << 64) | m_limbs[0]; }
    bool isOdd() const { return (m_limbs[0] & 1) != 0; }

private:
    static constexpr int LimbCount = 4; // least significant first

    void multiply(quint64 factor)
    {
        Mantissa carry = 0;
        for (int i = 0; i < LimbCount; ++i) {
            const Mantissa part = Mantissa(m_limbs[i]) * factor + carry;
            m_limbs[i] = static_cast<quint64>(part);
            carry = part >> 64;
        }
    }

    // Adds value shifted left by limb whole limbs.
    void addAt(Mantissa value, int limb)
    {
        Wide shifted(0);
        shifted.m_limbs[limb] = static_cast<quint64>(value);
        if (limb + 1 < LimbCount)
            shifted.m_limbs[limb + 1] = static_cast<quint64>(value >> 64);
        add(shifted);
    }

    quint64 m_limbs[LimbCount] = {};
};

Decimal::Decimal(qint64 value)
    : m_mantissa(value < 0 ? 0 - static_cast<quint64>(value) : static_cast<quint64>(value))
    , m_negative(value < 0)
{
}

Decimal::Decimal(Mantissa mantissa, int scale, bool negative)
    : m_mantissa(mantissa)
    , m_scale(static_cast<quint8>(scale))
    , m_negative(negative)
{
}

Decimal Decimal::fromText(const QString &text)
{
    // First the syntax, so that a malformed text is a type mismatch even when
    // it is also too long.
    const QString trimmed = text.trimmed();
    qsizetype position = 0;
    bool negative = false;
    if (position < trimmed.size() && (trimmed[position] == u'-' || trimmed[position] == u'+')) {
        negative = trimmed[position] == u'-';
        ++position;
    }
    QString wholeDigits;
    QString fractionDigits;
    bool inFraction = false;
    for (; position < trimmed.size(); ++position) {
        const QChar c = trimmed[position];
        if (c >= u'0' && c <= u'9')
            (inFraction ? fractionDigits : wholeDigits).append(c);
        else if (c == u',' && !inFraction)
            continue;
        else if (c == u'.' && !inFraction)
            inFraction = true;
        else
            throw VbError::typeMismatch();
    }
    if (wholeDigits.isEmpty() && fractionDigits.isEmpty())
        throw VbError::typeMismatch();

    Mantissa mantissa = 0;
    for (const QChar digit : std::as_const(wholeDigits)) {
        mantissa = mantissa * 10 + (digit.unicode() - u'0');
        if (mantissa > MaxMantissa)
            throw VbError::overflow();
    }
    // Take fraction digits while they fit; the first one that does not, and
    // whether any after it is non-zero, decide the rounding.
    int scale = 0;
    int droppedDigit = 0;
    bool sticky = false;
    bool full = false;
    for (const QChar c : std::as_const(fractionDigits)) {
        const int digit = c.unicode() - u'0';
        if (!full && scale < MaxScale && mantissa * 10 + digit <= MaxMantissa) {
            mantissa = mantissa * 10 + digit;
            ++scale;
        } else if (!full) {
            full = true;
            droppedDigit = digit;
        } else if (digit != 0) {
            sticky = true;
        }
    }
    if (roundsUpToEven(droppedDigit, sticky, mantissa & 1)) {
        ++mantissa;
        if (mantissa > MaxMantissa) {
            // Rounded up to exactly 2^96: one digit fewer.
            if (scale == 0)
                throw VbError::overflow();
            const int last = static_cast<int>(mantissa % 10);
            mantissa /= 10;
            --scale;
            if (roundsUpToEven(last, true, mantissa & 1))
                ++mantissa;
        }
    }
    return Decimal(mantissa, scale, negative);
}

QString Decimal::toString() const
{
    QString digits = digitsOf(m_mantissa);
    if (m_scale > 0) {
        if (digits.size() <= m_scale)
            digits.prepend(QString(m_scale - digits.size() + 1, u'0'));
        digits.insert(digits.size() - m_scale, u'.');
    }
    if (m_negative && m_mantissa != 0)
        digits.prepend(u'-');
    return digits;
}

QString Decimal::toDisplayText() const
{
    // Round to two fraction digits, halves away from zero.
    Mantissa value = m_mantissa;
    int scale = m_scale;
    if (scale > 2) {
        const Mantissa divisor = powerOfTen(scale - 2);
        const Mantissa remainder = value % divisor;
        value /= divisor;
        if (remainder * 2 >= divisor)
            ++value;
        scale = 2;
    }
    const Mantissa unit = powerOfTen(scale);
    const QString whole = digitsOf(value / unit);

    QString text;
    if (m_negative)
        text.append(u'-');
    for (qsizetype i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % 3 == 0)
            text.append(u',');
        text.append(whole[i]);
    }
    text.append(u'.');
    if (scale > 0) {
        QString fraction = digitsOf(value % unit).rightJustified(scale, u'0');
        while (fraction.endsWith(u'0'))
            fraction.chop(1);
        text.append(fraction);
    }
    return text;
}

Currency Decimal::toCurrency() const
{
    constexpr int CurrencyScale = 4;
    Mantissa count = m_mantissa;
    if (m_scale < CurrencyScale) {
        count *= powerOfTen(CurrencyScale - m_scale);
    } else if (m_scale > CurrencyScale) {
        const Mantissa divisor = powerOfTen(m_scale - CurrencyScale);
        const Mantissa remainder = count % divisor;
        count /= divisor;
        if (remainder * 2 > divisor || (remainder * 2 == divisor && (count & 1)))
            ++count;
    }
    const Mantissa limit = m_negative ? Mantissa(1) << 63 : (Mantissa(1) << 63) - 1;
    if (count > limit)
        throw VbError::overflow();
    const quint64 bits = static_cast<quint64>(count);
    return Currency::fromTenThousandths(m_negative ? static_cast<qint64>(0 - bits) : static_cast<qint64>(bits));
}

Decimal Decimal::operator-() const
{
    return Decimal(m_mantissa, m_scale, !m_negative && m_mantissa != 0);
}

// Rounds value / 10^k to the even neighbour for the smallest k (at least
// digitsToDrop, at most scale) that leaves a 96-bit whole number.
Decimal Decimal::fitted(Wide value, int scale, int digitsToDrop, bool negative)
{
    int dropped = 0;
    int droppedDigit = 0;
    bool sticky = false;
    for (;;) {
        if (dropped >= digitsToDrop) {
            Wide rounded = value;
            if (roundsUpToEven(droppedDigit, sticky, value.isOdd()))
                rounded.add(Wide(1));
            if (rounded.fitsMantissa()) {
                const Mantissa mantissa = rounded.low();
                return Decimal(mantissa, scale - dropped, negative && mantissa != 0);
            }
        }
        if (dropped == scale)
            throw VbError::overflow();
        sticky = sticky || droppedDigit != 0;
        droppedDigit = static_cast<int>(value.divide(10));
        ++dropped;
    }
}

Decimal Decimal::sum(const Decimal &a, const Decimal &b, bool bNegative)
{
    // Bring both to the larger scale; exact in 256 bits.
    const int scale = std::max(a.m_scale, b.m_scale);
    Wide x(a.m_mantissa);
    x.multiplyByPowerOfTen(scale - a.m_scale);
    Wide y(b.m_mantissa);
    y.multiplyByPowerOfTen(scale - b.m_scale);

    if (a.m_negative == bNegative) {
        x.add(y);
        return fitted(x, scale, 0, a.m_negative);
    }
    if (x.compare(y) >= 0) {
        x.subtract(y);
        return fitted(x, scale, 0, a.m_negative);
    }
    y.subtract(x);
    return fitted(y, scale, 0, bNegative);
}

Decimal operator+(const Decimal &a, const Decimal &b)
{
    return Decimal::sum(a, b, b.m_negative);
}

Decimal operator-(const Decimal &a, const Decimal &b)
{
    return Decimal::sum(a, b, !b.m_negative);
}

Decimal operator*(const Decimal &a, const Decimal &b)
{
    const int scale = a.m_scale + b.m_scale;
    return Decimal::fitted(Decimal::Wide::product(a.m_mantissa, b.m_mantissa), scale,
                           std::max(0, scale - Decimal::MaxScale), a.m_negative != b.m_negative);
}

// How many more decimal places (at most nine) a quotient may take in one step:
// as many as keep its upper 64 bits below 2^64 / 10^step, so that the new
// digits surely fit in 96 bits, without passing scale 28. This test looks at
// the upper bits only and may refuse a step that would just have fitted;
// quotients keep exactly the digits the platform type gives them. -1 when the
// steps can no longer reach scale 0.
static int quotientStep(Mantissa quotient, int scale)
{
    int step = 0;
    if (scale < Decimal::MaxScale) {
        const Mantissa upper = quotient >> 32;
        for (step = std::min(9, Decimal::MaxScale - scale); step > 0; --step) {
            if (upper < (Mantissa(1) << 64) / powerOfTen(step))
                break;
        }
    }
    if (step < 9 && step + scale < 0)
        return -1;
    return step;
}

Decimal operator/(const Decimal &a, const Decimal &b)
{
    if (b.m_mantissa == 0)
        throw VbError::divisionByZero();
    const Mantissa divisor = b.m_mantissa;

    // Long division in steps of up to nine decimal places, starting at the
    // natural scale (dividend scale minus divisor scale). An even quotient
    // stops there, or at scale 0 when that was negative; any other takes as
    // many places as fit and is rounded, halves to even. The remainder stays
    // below the divisor, so it times 10^9 still fits in 128 bits.
    int scale = a.m_scale - b.m_scale;
    Mantissa quotient = a.m_mantissa / divisor;
    Mantissa remainder = a.m_mantissa % divisor;
    for (;;) {
        int step = 0;
        if (remainder == 0) {
            if (scale >= 0)
                break;
            step = std::min(9, -scale);
        } else {
            step = quotientStep(quotient, scale);
            if (step == 0) {
                if (remainder > divisor - remainder || (remainder == divisor - remainder && (quotient & 1)))
                    ++quotient;
                break;
            }
            if (step < 0)
                throw VbError::overflow();
        }
        const Mantissa power = powerOfTen(step);
        scale += step;
        quotient *= power;
        if (quotient > MaxMantissa)
            throw VbError::overflow();
        remainder *= power;
        quotient += remainder / divisor;
        remainder %= divisor;
    }
    return Decimal(quotient, scale, a.m_negative != b.m_negative && quotient != 0);
}

int Decimal::compare(const Decimal &a, const Decimal &b)
{
    const bool aNegative = a.m_negative && a.m_mantissa != 0;
    const bool bNegative = b.m_negative && b.m_mantissa != 0;
    if (aNegative != bNegative)
        return aNegative ? -1 : 1;
    const int scale = std::max(a.m_scale, b.m_scale);
    Wide x(a.m_mantissa);
    x.multiplyByPowerOfTen(scale - a.m_scale);
    Wide y(b.m_mantissa);
    y.multiplyByPowerOfTen(scale - b.m_scale);
    const int magnitude = x.compare(y);
    return aNegative ? -magnitude : magnitude;
}
