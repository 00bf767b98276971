#include "calc/BaseText.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

#include "base/NumberText.h"
#include "base/RuntimeError.h"

namespace quillbox {

namespace {

// Takes the digits at the start of `text` away; false if there are none.
bool TakeDigits(TextView& text) {
  const std::size_t count = std::min(text.find_first_not_of(u"0123456789"), text.size());
  text.remove_prefix(count);
  return count > 0;
}

bool TakeOneOf(TextView& text, TextView units) {
  if (text.empty() || units.find(text.front()) == TextView::npos) return false;
  text.remove_prefix(1);
  return true;
}

// Blanks and line ends around the number are no part of it.
TextView Trimmed(TextView text) {
  constexpr TextView blanks = u" \t\r\n";
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool IsCompleteNumber(TextView text) {
  text = Trimmed(text);
  TakeOneOf(text, u"+-");
  bool any = TakeDigits(text);
  if (TakeOneOf(text, u".")) any = TakeDigits(text) || any;
  if (!any) return false;
  if (TakeOneOf(text, u"EeDd")) {
    TakeOneOf(text, u"+-");
    if (!TakeDigits(text)) return false;
  }
  return text.empty();
}

}  // namespace

Text BaseTextFromDecimal(TextView decimal, NumberBase base) {
  assert(base != NumberBase::Decimal);
  if (!IsCompleteNumber(decimal)) throw RuntimeError(errors::kTypeMismatch, "Type mismatch");
  const double value = std::nearbyint(GetNumberFromText(decimal));
  if (value < INT32_MIN || value > INT32_MAX) throw RuntimeError(errors::kOverflow, "Overflow");
  const auto bits = static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
  char buffer[16];
  const auto end = std::to_chars(buffer, std::end(buffer), bits, base == NumberBase::Octal ? 8 : 16).ptr;
  return AsciiUpper(Text(buffer, end));
}

double NumberFromBaseText(TextView digits, NumberBase base) {
  if (base == NumberBase::Decimal) return GetNumberFromText(digits);
  return GetNumberFromText((base == NumberBase::Octal ? u"&O" : u"&H") + Text(digits));
}

}  // namespace quillbox
