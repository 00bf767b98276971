#include "base/NumberText.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "base/RuntimeError.h"

namespace quillbox {

namespace {

constexpr double kTooLarge = std::numeric_limits<double>::infinity();

// No two neighbouring doubles have a middle of more digits than this; of the rest it only matters whether it
// is 0.
constexpr std::size_t kDigitsThatMatter = 800;

// Far beyond every exponent that can be made up for by the digits of a text.
constexpr long long kHugeExponent = 1'000'000'000'000'000;

// Walks through a text, blind for blanks.
class Cursor {
 public:
  explicit Cursor(TextView text) : text_(text) { SkipBlanks(); }

  char16_t Peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }

  void Next() {
    ++at_;
    SkipBlanks();
  }

  bool Take(TextView anyOf) {
    if (at_ >= text_.size() || anyOf.find(text_[at_]) == TextView::npos) return false;
    Next();
    return true;
  }

 private:
  void SkipBlanks() {
    while (at_ < text_.size() && (text_[at_] == u' ' || text_[at_] == u'\t' || text_[at_] == u'\n')) ++at_;
  }

  TextView text_;
  std::size_t at_ = 0;
};

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// 16 or more if `unit` is no hexadecimal digit.
unsigned DigitValue(char16_t unit) {
  if (IsDigit(unit)) return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10U;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10U;
  return 16;
}

double ReadBaseDigits(Cursor& cursor, unsigned base) {
  std::uint64_t value = 0;
  for (unsigned digit = 0; (digit = DigitValue(cursor.Peek())) < base; cursor.Next()) {
    value = value * base + digit;
    if (value > 0xFFFFFFFF) return kTooLarge;
  }
  if (value <= 0xFFFF) return static_cast<std::int16_t>(value);
  return static_cast<std::int32_t>(value);
}

// The digits before the exponent, as a whole number of limited length times a power of ten.
struct Mantissa {
  std::string digits;          // without leading zeros
  long long exponent = 0;      // of the last of `digits`
  bool restIsNotZero = false;  // digits that were left out
  bool any = false;            // the text has digits at all
};

Mantissa ReadMantissa(Cursor& cursor) {
  Mantissa mantissa;
  bool behindPoint = false;
  for (;; cursor.Next()) {
    const char16_t unit = cursor.Peek();
    if (unit == u'.' && !behindPoint) {
      behindPoint = true;
      continue;
    }
    if (!IsDigit(unit)) return mantissa;
    mantissa.any = true;
    const bool isKept = mantissa.digits.size() < kDigitsThatMatter;
    if (isKept && (unit != u'0' || !mantissa.digits.empty()))
      mantissa.digits.push_back(static_cast<char>(unit));
    if (!isKept && unit != u'0') mantissa.restIsNotZero = true;
    mantissa.exponent += (isKept ? 0 : 1) - (behindPoint ? 1 : 0);
  }
}

long long ReadExponent(Cursor& cursor) {
  if (!cursor.Take(u"EeDd")) return 0;
  const bool isNegative = cursor.Peek() == u'-';
  cursor.Take(u"+-");
  long long exponent = 0;
  for (; IsDigit(cursor.Peek()); cursor.Next()) {
    exponent = std::min(exponent * 10 + (cursor.Peek() - u'0'), kHugeExponent);
  }
  return isNegative ? -exponent : exponent;
}

double ReadDecimal(Cursor& cursor) {
  Mantissa mantissa = ReadMantissa(cursor);
  if (!mantissa.any) return 0;
  long long exponent = mantissa.exponent + ReadExponent(cursor);
  if (mantissa.digits.empty()) return 0;
  if (mantissa.restIsNotZero) {
    mantissa.digits.push_back('1');
    --exponent;
  }
  const bool isLarge = exponent + static_cast<long long>(mantissa.digits.size()) > 0;
  const std::string number = mantissa.digits + 'e' + std::to_string(std::clamp(exponent, -9999LL, 9999LL));
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) return isLarge ? kTooLarge : 0;
  return value;
}

}  // namespace

double NumberOrInfinity(TextView text) {
  Cursor cursor(text);
  if (cursor.Take(u"&")) {
    if (cursor.Take(u"Hh")) return ReadBaseDigits(cursor, 16);
    if (cursor.Take(u"Oo")) return ReadBaseDigits(cursor, 8);
    return 0;
  }
  const bool isNegative = cursor.Peek() == u'-';
  cursor.Take(u"+-");
  const double value = ReadDecimal(cursor);
  return isNegative && value != 0 ? -value : value;
}

namespace {

// A decimal number d.ddd times 10 to `exponent`.
struct Scientific {
  bool isNegative = false;
  std::string digits;  // without trailing zeros, at least one
  int exponent = 0;
};

// Takes apart what to_chars writes: [-]d[.ddd]e(+|-)dd.
Scientific TakeApart(std::string_view written) {
  Scientific parts;
  if (written.front() == '-') {
    parts.isNegative = true;
    written.remove_prefix(1);
  }
  const std::size_t letter = written.find('e');
  parts.digits.push_back(written.front());
  if (letter > 2) parts.digits.append(written, 2, letter - 2);
  parts.digits.erase(std::max<std::size_t>(parts.digits.find_last_not_of('0') + 1, 1));
  const std::size_t exponentAt = letter + (written[letter + 1] == '+' ? 2 : 1);
  std::from_chars(written.data() + exponentAt, written.data() + written.size(), parts.exponent);
  return parts;
}

std::string Plain(const Scientific& parts) {
  const std::string& digits = parts.digits;
  if (parts.exponent < 0)
    return "0." + std::string(static_cast<std::size_t>(-parts.exponent - 1), '0') + digits;
  const std::size_t whole = static_cast<std::size_t>(parts.exponent) + 1;
  if (digits.size() <= whole) return digits + std::string(whole - digits.size(), '0');
  return digits.substr(0, whole) + '.' + digits.substr(whole);
}

std::string WithExponent(const Scientific& parts) {
  std::string text = parts.digits;
  if (text.size() > 1) text.insert(1, 1, '.');
  const std::string exponent = std::to_string(std::abs(parts.exponent));
  text.append(parts.exponent < 0 ? "E-" : "E+");
  if (exponent.size() < 2) text.push_back('0');
  return text.append(exponent);
}

}  // namespace

double GetNumberFromText(TextView text) {
  const double value = NumberOrInfinity(text);
  if (std::isinf(value)) throw RuntimeError(errors::kOverflow, "Overflow");
  return value;
}

long long NearestWhole(double number) {
  constexpr double limit = 2147483648.0;
  return static_cast<long long>(std::nearbyint(std::clamp(number, -limit, limit)));
}

long long WholeNumber(TextView text) { return NearestWhole(NumberOrInfinity(text)); }

Text MakeTextFromNumber(double value, char16_t decimalSeparator) {
  if (!std::isfinite(value)) throw RuntimeError(errors::kOverflow, "Overflow");
  if (value == 0) return u"0";
  constexpr int places = 15;
  char buffer[32];
  const auto end =
      std::to_chars(buffer, std::end(buffer), value, std::chars_format::scientific, places - 1).ptr;
  const Scientific parts = TakeApart({buffer, static_cast<std::size_t>(end - buffer)});
  const int count = static_cast<int>(parts.digits.size());
  const bool isPlain = parts.exponent >= 0 ? parts.exponent < places : -parts.exponent - 1 + count <= places;
  std::string text = isPlain ? Plain(parts) : WithExponent(parts);
  if (parts.isNegative) text.insert(0, 1, '-');
  Text result(text.begin(), text.end());
  if (const std::size_t point = result.find(u'.'); point != Text::npos) result[point] = decimalSeparator;
  return result;
}

double RoundToDecimals(double value, int decimals) {
  assert(decimals >= 0);
  if (!std::isfinite(value)) return value;
  char buffer[32];
  const auto end = std::to_chars(buffer, std::end(buffer), value, std::chars_format::scientific).ptr;
  Scientific parts = TakeApart({buffer, static_cast<std::size_t>(end - buffer)});
  // How many of the digits stay; none, or fewer, if the number is below the last place.
  const long long kept = static_cast<long long>(parts.exponent) + 1 + decimals;
  if (kept >= static_cast<long long>(parts.digits.size())) return value;
  if (kept < 0) return 0;
  const std::string_view rest = std::string_view(parts.digits).substr(static_cast<std::size_t>(kept));
  const bool isOdd = kept > 0 && (parts.digits[static_cast<std::size_t>(kept) - 1] - '0') % 2 == 1;
  const bool isUp = rest[0] > '5' || (rest[0] == '5' && (rest.size() > 1 || isOdd));
  // As a whole number of the last place it has at most 17 digits.
  long long units = 0;
  std::from_chars(parts.digits.data(), parts.digits.data() + kept, units);
  if (isUp) ++units;
  const std::string number = std::to_string(units) + "e-" + std::to_string(decimals);
  double rounded = 0;
  std::from_chars(number.data(), number.data() + number.size(), rounded);
  return parts.isNegative && rounded != 0 ? -rounded : rounded;
}

}  // namespace quillbox
