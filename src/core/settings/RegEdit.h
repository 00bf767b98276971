#pragma once

#include <string>
#include <string_view>

#include "platform/ports/Registry.h"

namespace quillbox {

// Thin wrappers around the registry's calls. No failure is reported: a read gives the empty text.
class RegEdit {
 public:
  explicit RegEdit(Registry& registry) : registry_(registry) {}

  // A length that stands for the length of the text that is written.
  static constexpr long kWholeText = 999999999;
  // The most bytes that a value may have to be read; three times as many if it is written as UTF-8, so that
  // no script has less room than the others.
  static constexpr std::size_t kMostBytes = 1024;

  // The first `length` bytes, or one less when the byte at position `length` is NUL.
  static std::string_view RegEditTrim(std::string_view bytes, std::size_t length);

  Text RegEditRead(Hive hive, TextView path, TextView name);
  // True only when the key was missing and has been created.
  bool RegEditCreateKey(Hive hive, TextView path);
  // Writes a value in an existing key. `length` is in characters of `value`; kWholeText is replaced by the
  // text's length. On failure `value` is emptied.
  bool RegEditWrite(Hive hive, TextView path, TextView name, Text& value, std::uint32_t type, long& length);
  bool RegEditDelete(Hive hive, TextView path, TextView name);
  // Whether values of the key could be set.
  bool CanSetValues(Hive hive, TextView path);

 private:
  Registry& registry_;
};

}  // namespace quillbox
