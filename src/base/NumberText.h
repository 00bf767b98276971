#pragma once

#include "base/Text.h"

// Numbers as the program writes and reads them. Nothing here looks at the process's locale.
namespace quillbox {

// The value of the number that `text` begins with, correctly rounded; 0 if it begins with none. Spaces, tabs
// and line feeds are skipped wherever they stand, also within the number. The point is ".", the exponent's
// letter E or D. After "&H" or "&O" come hexadecimal or octal digits: up to FFFF a signed 16-bit number,
// above that a signed 32-bit one. A value too small for a double is 0; one beyond its range, or hexadecimal
// and octal digits beyond 32 bits, is RuntimeError 6.
double GetNumberFromText(TextView text);

// The same, infinite where the number is beyond the range. Never fails.
double NumberOrInfinity(TextView text);

// The nearest whole number, of a half the even one; clamped to -2147483648 and 2147483648.
long long NearestWhole(double number);

// NearestWhole of the number that `text` begins with. Never fails.
long long WholeNumber(TextView text);

// The value in 15 significant digits, with "E" and a signed exponent where it has no short plain form.
// RuntimeError 6 if the value isn't finite.
Text MakeTextFromNumber(double value, char16_t decimalSeparator = u'.');

// The value's decimal digits (the shortest that stand for it) cut to `decimals` places behind the point, 0 or
// more; a tie goes to the even digit.
double RoundToDecimals(double value, int decimals);

}  // namespace quillbox
