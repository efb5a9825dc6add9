#!/usr/bin/python3
"""Checks Decimal against an exact reference on many random operations.

The reference works on Python's whole numbers, so nothing in it is ever
rounded by accident. It follows the OLE DECIMAL rules:

- a value is a sign, a whole number below 2**96 and a scale of 0 to 28;
- a sum, difference or product keeps its natural scale (the larger scale, or
  the sum of the scales) when the exact result fits there; otherwise it is
  rounded, halves to even, at the largest smaller scale where it fits;
- a quotient is worked out by long division from its natural scale (dividend
  scale minus divisor scale), taking up to nine more places at a time while
  its upper 64 bits show that they surely fit, up to scale 28, and then
  rounded half to even (see divide below);
- whatever fits at no scale is an overflow (error 6); dividing by zero is
  error 11, a text that is not a number error 13.

Text goes in as the runtime reads it (groups with ",", a trailing "."), and
comes out in the calculator's display format "#,0.##" (halves away from zero)
and as currency (four decimals, halves to even).

The random cases are drawn from a fixed seed; set LANTERN_DECIMAL_SEED to try
others. The probe program reads one operation a line and prints its result.
"""

import os
import random
import subprocess
import sys
from collections import Counter
from decimal import Decimal as PyDecimal, ROUND_HALF_EVEN, ROUND_HALF_UP, localcontext

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "support"))
import isolation  # noqa: E402,F401  (run by hand, the script starts again in temporary folders)

MAX = 2**96 - 1
MAX_SCALE = 28
CURRENCY_LIMIT = 2**63


class Overflow(Exception):
    pass


class DivisionByZero(Exception):
    pass


def divide_half_even(numerator, denominator):
    """numerator / denominator (both >= 0) rounded to a whole number, halves to even."""
    quotient, remainder = divmod(numerator, denominator)
    if 2 * remainder > denominator or (2 * remainder == denominator and quotient % 2 == 1):
        quotient += 1
    return quotient


def fit(numerator, denominator, top_scale):
    """The exact value numerator / denominator at the largest scale <= top_scale that holds it."""
    negative = (numerator < 0) != (denominator < 0)
    numerator, denominator = abs(numerator), abs(denominator)
    for scale in range(top_scale, -1, -1):
        mantissa = divide_half_even(numerator * 10**scale, denominator)
        if mantissa <= MAX:
            return (negative and mantissa != 0, mantissa, scale)
    raise Overflow()


def signed(value):
    negative, mantissa, _ = value
    return -mantissa if negative else mantissa


def add(a, b):
    scale = max(a[2], b[2])
    total = signed(a) * 10 ** (scale - a[2]) + signed(b) * 10 ** (scale - b[2])
    return fit(total, 10**scale, scale)


def subtract(a, b):
    return add(a, (not b[0], b[1], b[2]))


def multiply(a, b):
    scale = a[2] + b[2]
    return fit(signed(a) * signed(b), 10**scale, min(scale, MAX_SCALE))


def quotient_step(quotient, scale):
    """How many places (at most nine) a quotient may take next: while its upper
    64 bits stay below 2**64 / 10**step the new digits surely fit in 96 bits."""
    step = 0
    if scale < MAX_SCALE:
        for candidate in range(min(9, MAX_SCALE - scale), 0, -1):
            if quotient >> 32 < 2**64 // 10**candidate:
                step = candidate
                break
    if step < 9 and step + scale < 0:
        return -1
    return step


def divide(a, b):
    """The platform's long division: start at the natural scale (dividend scale
    minus divisor scale); while the remainder is not zero, take up to nine more
    places at a time as quotient_step allows, then round half to even; an even
    quotient at a negative scale goes on to scale 0."""
    if b[1] == 0:
        raise DivisionByZero()
    divisor = b[1]
    scale = a[2] - b[2]
    quotient, remainder = divmod(a[1], divisor)
    while True:
        if remainder == 0:
            if scale >= 0:
                break
            step = min(9, -scale)
        else:
            step = quotient_step(quotient, scale)
            if step == 0:
                if 2 * remainder > divisor or (2 * remainder == divisor and quotient % 2 == 1):
                    quotient += 1
                break
            if step < 0:
                raise Overflow()
        scale += step
        quotient *= 10**step
        if quotient > MAX:
            raise Overflow()
        remainder *= 10**step
        quotient += remainder // divisor
        remainder %= divisor
    # Whatever the steps, the result is the exact quotient rounded half to even
    # at the scale they reached, with 28 or 29 significant digits unless even.
    exact_numerator, exact_denominator = a[1] * 10 ** (b[2] + scale), divisor * 10 ** a[2]
    assert quotient == divide_half_even(exact_numerator, exact_denominator)
    return ((a[0] != b[0]) and quotient != 0, quotient, scale)


def parse(text):
    """The value of a text as the runtime reads it (only the forms this test writes)."""
    negative = text.startswith("-")
    body = text.lstrip("+-").replace(",", "")
    whole, _, fraction = body.partition(".")
    if int(whole or "0") > MAX:
        raise Overflow()
    digits = int((whole + fraction) or "0")
    value = fit(digits, 10 ** len(fraction), min(len(fraction), MAX_SCALE))
    return (negative, value[1], value[2])


def plain_text(value):
    negative, mantissa, scale = value
    digits = str(mantissa).rjust(scale + 1, "0")
    if scale:
        digits = digits[:-scale] + "." + digits[-scale:]
    return ("-" if negative and mantissa else "") + digits


def plain_text_signed(value):
    """Like plain_text, but keeps the sign of a negative zero as the probe reads it."""
    text = plain_text(value)
    return "-" + text if value[0] and value[1] == 0 else text


def display_text(value):
    negative, mantissa, scale = value
    with localcontext() as context:
        context.prec = 100
        rounded = PyDecimal(mantissa).scaleb(-scale).quantize(PyDecimal("0.01"), rounding=ROUND_HALF_UP)
    whole, _, fraction = f"{rounded:f}".partition(".")
    return ("-" if negative else "") + f"{int(whole):,}" + "." + fraction.rstrip("0")


def currency_text(value):
    negative, mantissa, scale = value
    with localcontext() as context:
        context.prec = 100
        count = int(PyDecimal(mantissa).scaleb(4 - scale).quantize(PyDecimal(1), rounding=ROUND_HALF_EVEN))
    if count > (CURRENCY_LIMIT if negative else CURRENCY_LIMIT - 1):
        raise Overflow()
    sign = "-" if negative and count else ""
    return f"{sign}{count // 10000}.{count % 10000:04d}"


# ---- random operands -------------------------------------------------------

def random_mantissa(rng):
    kind = rng.randrange(8)
    if kind == 0:
        return rng.randrange(1000)
    if kind == 1:
        return MAX - rng.randrange(1000)
    if kind == 2:
        power = 10 ** rng.randrange(29)
        return max(0, min(MAX, power + rng.randrange(-3, 4)))
    if kind == 3:
        power = 2 ** rng.randrange(97)
        return max(0, min(MAX, power + rng.randrange(-3, 4)))
    if kind == 4:
        # Trailing zeros, so that some results come out even.
        return rng.randrange(10**6) * 10 ** rng.randrange(20)
    if kind == 5:
        return rng.randrange(2**96)
    return rng.randrange(2 ** rng.randrange(1, 97))


def random_scale(rng):
    kind = rng.randrange(4)
    if kind == 0:
        return 0
    if kind == 1:
        return MAX_SCALE - rng.randrange(3)
    return rng.randrange(MAX_SCALE + 1)


def random_value(rng):
    return (rng.random() < 0.4, random_mantissa(rng), random_scale(rng))


def random_pair(rng, operation):
    a, b = random_value(rng), random_value(rng)
    if operation == "div" and rng.random() < 0.25:
        # A dividend that is a multiple of the divisor: the even quotients.
        product = b[1] * rng.randrange(1, 10**6)
        if product <= MAX:
            a = (a[0], product, a[2])
    if operation == "div" and rng.random() < 0.2:
        # A quotient whose upper bits sit near 2**64 / 10**k, where the number
        # of places taken changes.
        k = rng.randrange(1, 10)
        target = (2**64 // 10**k << 32) + rng.randrange(-2**34, 2**34)
        divisor = rng.randrange(1, 2**rng.randrange(1, 40))
        dividend = target * divisor + rng.randrange(divisor)
        if 0 < target and dividend <= MAX:
            scale = rng.randrange(MAX_SCALE + 1)
            a = (a[0], dividend, scale)
            b = (b[0], divisor, scale)
    if operation == "div" and rng.random() < 0.05:
        b = (b[0], 0, b[2])
    return a, b


def random_number_text(rng):
    """A number as a user types it: groups, a trailing ".", long fractions."""
    whole = str(rng.randrange(10 ** rng.randrange(0, 31)))
    if rng.random() < 0.3:
        whole = f"{int(whole):,}"
    fraction = "".join(rng.choice("0123456789") for _ in range(rng.choice([0, 0, 1, 2, 5, 27, 28, 29, 35, 45])))
    if rng.random() < 0.1:
        fraction = fraction[:-1] + "5" if fraction else "5"
    text = whole
    if fraction or rng.random() < 0.5:
        text += "." + fraction
    if rng.random() < 0.4:
        text = "-" + text
    return text


# ---- the run ----------------------------------------------------------------

def expected_result(function, *arguments):
    try:
        return function(*arguments)
    except Overflow:
        return "error 6"
    except DivisionByZero:
        return "error 11"


def same(expected, actual_text):
    """Compares a probe line with the reference; zeros are compared by value only."""
    if isinstance(expected, str):
        return actual_text == expected
    if expected[1] == 0:
        try:
            return PyDecimal(actual_text) == 0
        except Exception:
            return False
    return actual_text == plain_text(expected)


def main():
    seed = int(os.environ.get("LANTERN_DECIMAL_SEED", "20261123"))
    rng = random.Random(seed)
    build = os.environ.get("LANTERN_BUILD_DIR", os.path.join(os.path.dirname(__file__), "..", "..", "..", "build"))
    probe = os.path.join(build, "tests", "decimal_probe")

    operations = {"add": add, "sub": subtract, "mul": multiply, "div": divide}
    cases = []  # (line sent, expected)
    for name, function in operations.items():
        for _ in range(12000):
            a, b = random_pair(rng, name)
            cases.append((f"{name} {plain_text_signed(a)} {plain_text_signed(b)}", expected_result(function, a, b)))
    for _ in range(6000):
        text = random_number_text(rng)
        cases.append((f"parse {text}", expected_result(parse, text)))
    for _ in range(4000):
        value = random_value(rng)
        cases.append((f"display {plain_text_signed(value)}", display_text(value)))
    for _ in range(4000):
        value = random_value(rng)
        if rng.random() < 0.7:
            value = (value[0], value[1] % 10**24, value[2])
        cases.append((f"currency {plain_text_signed(value)}", expected_result(currency_text, value)))

    run = subprocess.run([probe], input="\n".join(line for line, _ in cases) + "\n",
                         capture_output=True, text=True, check=True)
    answers = run.stdout.splitlines()
    if len(answers) != len(cases):
        print(f"the probe answered {len(answers)} of {len(cases)} lines")
        return 1

    failures = [(line, expected, answer) for (line, expected), answer in zip(cases, answers)
                if not same(expected, answer)]
    for line, expected, answer in failures[:25]:
        shown = expected if isinstance(expected, str) else plain_text(expected)
        print(f"{line}\n  expected {shown}\n  got      {answer}")
    errors = Counter(line.split()[0] for line, expected in cases if str(expected).startswith("error"))
    print(f"seed {seed}: {len(cases)} cases ({', '.join(f'{n} {op} errors' for op, n in sorted(errors.items()))}), "
          f"{len(failures)} differ")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
