#pragma once

#include "platform/vb/Currency.h"

#include <QString>
#include <QtGlobal>

// An exact decimal number with the rules of the OLE Automation DECIMAL: a
// 96-bit unsigned whole number, a sign and a power-of-ten scale of 0 to 28.
//
// Sums, differences and products keep every digit that fits; when the exact
// result does not fit in 96 bits (or needs a scale above 28) the last digits
// are rounded off, halves to the even neighbour. A quotient that does not come
// out even at its natural scale takes further places nine at a time while they
// surely fit, and is rounded the same way: 28 or 29 significant digits, and
// trailing zeros where the division ended early (1 / 4 gives 0.250000000).
// Beyond ±79,228,162,514,264,337,593,543,950,335 an operation overflows.
//
// Failures are thrown as VbError: overflow (6), division by zero (11), and
// type mismatch (13) for a text that is not a number.
//
// A zero computed by arithmetic is never negative; a typed "-0" keeps its sign
// so that the display can show it while the user goes on typing.
class Decimal
{
public:
    static constexpr int MaxScale = 28;

    Decimal() = default;
    explicit Decimal(qint64 value);

    // The text as the runtime reads a number: blanks around it, a leading "+"
    // or "-", digits with "," anywhere in the whole part, and a "." followed by
    // any number of fraction digits ("1,234.", "-0.5", ".25"). Fraction digits
    // that do not fit are rounded off.
    static Decimal fromText(const QString &text);

    // Every digit of the scale and no group separators: "-1234.50", "7".
    QString toString() const;
    // The calculator's display format "#,0.##": groups of three, a "." that is
    // always there, up to two fraction digits without trailing zeros, rounded
    // half away from zero (as the runtime's Format function rounds): "0.",
    // "1,234.5", "0.67", "-5.". A negative number that rounds to nothing keeps
    // its sign ("-0."), as Format does.
    QString toDisplayText() const;
    // Rounded to four decimals, halves to even; throws overflow when out of range.
    Currency toCurrency() const;

    int scale() const { return m_scale; }
    bool isNegative() const { return m_negative; }
    bool isZero() const { return m_mantissa == 0; }

    Decimal operator-() const;
    friend Decimal operator+(const Decimal &a, const Decimal &b);
    friend Decimal operator-(const Decimal &a, const Decimal &b);
    friend Decimal operator*(const Decimal &a, const Decimal &b);
    friend Decimal operator/(const Decimal &a, const Decimal &b);

    // Compares values: 1.5 equals 1.50, and -0 equals 0.
    friend bool operator==(const Decimal &a, const Decimal &b) { return compare(a, b) == 0; }
    friend bool operator!=(const Decimal &a, const Decimal &b) { return compare(a, b) != 0; }
    friend bool operator<(const Decimal &a, const Decimal &b) { return compare(a, b) < 0; }
    static int compare(const Decimal &a, const Decimal &b);

private:
    // The 96-bit whole number; the upper 32 bits of the 128 are always zero.
    using Mantissa = unsigned __int128;
    class Wide;

    Decimal(Mantissa mantissa, int scale, bool negative);
    static Decimal sum(const Decimal &a, const Decimal &b, bool bNegative);
    static Decimal fitted(Wide value, int scale, int digitsToDrop, bool negative);

    Mantissa m_mantissa = 0;
    quint8 m_scale = 0;
    bool m_negative = false;
};
