#include "base/Text.h"

namespace quillbox {

Text ReplaceAll(TextView text, TextView from, TextView to) {
  Text result;
  if (from.empty()) return Text(text);
  result.reserve(text.size());
  std::size_t at = 0;
  for (std::size_t hit = text.find(from); hit != TextView::npos; hit = text.find(from, at)) {
    result.append(text, at, hit - at).append(to);
    at = hit + from.size();
  }
  return result.append(text, at, TextView::npos);
}

Text AsciiUpper(TextView text) {
  Text result(text);
  for (char16_t& unit : result) {
    if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - u'a' + u'A');
  }
  return result;
}

Text Decimal(long long number) {
  const std::string digits = std::to_string(number);
  return Text(digits.begin(), digits.end());
}

}  // namespace quillbox
