#!/usr/bin/env python3
"""Writes ../unit/calc_table.txt: what each function and unit button of the calculator shows for a number.

A line is the caption of the button, the number shown before and the text shown after, with tabs between them.

The values are computed here with mpmath (50 digits) from the exact value of each double, and rounded and written
with the decimal module, so that they owe nothing to the program's own arithmetic.
Needs python3-mpmath. Run without arguments after a change of the lists below.
"""
import os
from decimal import ROUND_HALF_EVEN, Context, Decimal

import mpmath

mpmath.mp.dps = 50
DEGREE = 0.0174532925199433
ERROR = "Error!"


class Failure(Exception):
    pass


def to_double(exact):
    """The nearest double of an exact value; too large is a failure."""
    value = float(exact)
    if value in (float("inf"), float("-inf")):
        raise Failure
    return value


def text_of(value):
    """15 significant digits, plain or scientific."""
    if value == 0:
        return "0"
    rounded = Context(prec=15, rounding=ROUND_HALF_EVEN, Emin=-400, Emax=400).plus(Decimal(value))
    sign, digits, _ = rounded.normalize().as_tuple()
    exponent = rounded.adjusted()
    digits = "".join(map(str, digits))
    places = len(digits) - 1 - exponent
    minus = "-" if sign else ""
    if 0 <= exponent < 15 or (exponent < 0 and places <= 15):
        return minus + format(Decimal(int(digits)).scaleb(-places, Context(prec=60)), "f")
    mantissa = digits[0] + ("." + digits[1:] if len(digits) > 1 else "")
    return f"{minus}{mantissa}E{'-' if exponent < 0 else '+'}{abs(exponent):02d}"


def number_of(text):
    return to_double(Decimal(text))


def rounded_text(text, places):
    context = Context(prec=400)
    return text_of(number_of(Decimal(text).quantize(Decimal(1).scaleb(-places), ROUND_HALF_EVEN, context)))


def exact(value):
    return mpmath.mpf(value)


def angle(function):
    def show(x):
        text = text_of(to_double(function(exact(x * DEGREE))))
        return rounded_text(text, 14)

    return show


def tangent(x):
    text = angle(mpmath.tan)(x)
    if abs(number_of(text)) > 1e15:
        raise Failure
    return text


def arc(function):
    def show(x):
        text = text_of(function(x))
        text = text_of(to_double(number_of(text) * (1 / DEGREE)))
        return rounded_text(text, 12)

    return show


def atan(x):
    return to_double(mpmath.atan(exact(x)))


def cathetus(x):
    under = -x * x + 1
    if under <= 0:
        raise Failure
    return to_double(mpmath.sqrt(exact(under)))


def logarithm(x):
    if x <= 0:
        raise Failure
    return text_of(to_double(mpmath.log(exact(x))))


def exponential(x):
    if x < -800:
        return "0"
    return text_of(to_double(mpmath.exp(exact(x))))


def root(x):
    if x < 0:
        return "Sorry... no complex numbers!"
    return text_of(to_double(mpmath.sqrt(exact(x))))


def reciprocal(x):
    if x == 0:
        raise Failure
    return text_of(to_double(1 / exact(x)))


FUNCTIONS = {
    "sin": angle(mpmath.sin),
    "cos": angle(mpmath.cos),
    "tan": tangent,
    "asin": arc(lambda x: atan(x / cathetus(x))),
    "acos": arc(lambda x: to_double(atan(-x / cathetus(x)) + 2 * atan(1.0))),
    "atan": arc(atan),
    "Sqrt": root,
    "%": lambda x: text_of(to_double(exact(x) / 100)),
    "x^2": lambda x: text_of(to_double(exact(x) * exact(x))),
    "e^x": exponential,
    "ln": logarithm,
    "1/x": reciprocal,
    "cm > in  ": lambda x: text_of(to_double(exact(x) / exact(2.54))),
    "  in > cm": lambda x: text_of(to_double(exact(x) * exact(2.54))),
    " g > oz": lambda x: text_of(to_double(exact(x) / exact(28.34952313))),
    "oz > g  ": lambda x: text_of(to_double(exact(x) * exact(28.34952313))),
    "kg > lb ": lambda x: text_of(to_double(exact(x) * exact(2.204622622))),
    " lb > kg": lambda x: text_of(to_double(exact(x) / exact(2.204622622))),
}

ANGLES = [*range(-360, 721, 15), *range(1, 90, 4), "0.5", "22.5", "89.9999", "1E-10", "-1E-20", "123456.789", "1E+15"]
RATIOS = ["0", "0.1", "0.25", "0.5", "0.707106781186548", "0.866025403784439", "0.999999", "0.999999999999999",
          "1", "1.00000001", "2", "1E-10", "1E-20", "1E+200"]
PLAIN = ["0", "1", "2", "3", "7", "10", "12.5", "81", "99", "100", "0.04", "0.001", "123456789", "709.7", "709.8",
         "710", "745", "746", "1000", "1E-5", "1E-200", "1E+154", "1.4E+154", "1E+200", "1.7E+308", "1E-308", "5E-324",
         "2.71828182845905", "3.14159265358979"]


def with_negatives(texts):
    return texts + ["-" + text for text in texts if text != "0"]


def inputs(caption):
    if caption in ("sin", "cos", "tan"):
        return [str(angle_) for angle_ in ANGLES]
    if caption in ("asin", "acos", "atan"):
        return with_negatives(RATIOS)
    return with_negatives(PLAIN)


def main():
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "unit", "calc_table.txt")
    with open(path, "w", encoding="ascii", newline="\n") as out:
        for caption, show in FUNCTIONS.items():
            for text in inputs(caption):
                try:
                    result = show(number_of(text))
                except Failure:
                    result = ERROR
                out.write(f"{caption}\t{text}\t{result}\n")


if __name__ == "__main__":
    main()
