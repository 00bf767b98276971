#include "pad/Rot47.h"

namespace quillbox {

Text Rot47(TextView text) {
  constexpr char16_t kFirst = u'!';
  constexpr char16_t kLast = u'~';
  Text result(text);
  for (char16_t& unit : result) {
    if (unit >= kFirst && unit <= kLast) unit = static_cast<char16_t>(kFirst + (unit - kFirst + 47) % 94);
  }
  return result;
}

}  // namespace quillbox
