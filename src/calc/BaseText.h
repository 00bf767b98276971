#pragma once

#include "base/Text.h"

namespace quillbox {

enum class NumberBase { Decimal, Hexadecimal, Octal };

// A complete decimal number as the hexadecimal or octal digits of the nearest whole number (a tie goes to the
// even one), a negative one as its 32-bit two's complement. RuntimeError 13 if the text is anything but a
// number, 6 if the number doesn't fit into signed 32 bits. `base` isn't the decimal one.
Text BaseTextFromDecimal(TextView decimal, NumberBase base);

// The value that digits of a base stand for; see GetNumberFromText.
double NumberFromBaseText(TextView digits, NumberBase base);

}  // namespace quillbox
