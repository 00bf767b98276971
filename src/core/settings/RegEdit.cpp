#include "core/settings/RegEdit.h"

#include <algorithm>

#include "base/CodePage.h"

namespace quillbox {

namespace {

constexpr std::size_t kMostBytesOfUtf8 = kUtf8Mark.size() + 3 * RegEdit::kMostBytes;

// An open key that closes itself.
class OpenKey {
 public:
  OpenKey(Registry& registry, std::optional<Registry::Key> key) : registry_(registry), key_(key) {}
  ~OpenKey() {
    if (key_) registry_.Close(*key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;
  explicit operator bool() const { return key_.has_value(); }
  Registry::Key Handle() const { return *key_; }

 private:
  Registry& registry_;
  std::optional<Registry::Key> key_;
};

// The bytes of a number value as text: hexadecimal, from the last byte to the first.
Text DwordText(std::string_view bytes) {
  static constexpr char16_t kDigits[] = u"0123456789ABCDEF";
  Text text = u"&h";
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
    const unsigned value = static_cast<unsigned char>(*byte);
    if (value >= 16) text += kDigits[value / 16];
    text += kDigits[value % 16];
  }
  return text;
}

}  // namespace

std::string_view RegEdit::RegEditTrim(std::string_view bytes, std::size_t length) {
  if (length > 0 && length <= bytes.size() && bytes[length - 1] == '\0') --length;
  return bytes.substr(0, length);
}

Text RegEdit::RegEditRead(Hive hive, TextView path, TextView name) {
  const OpenKey key(registry_, registry_.Open(hive, path, registry::kMaximumAllowed));
  if (!key) return {};
  std::uint32_t type = 0;
  std::string bytes;
  if (!registry_.Query(key.Handle(), name, kMostBytesOfUtf8, type, bytes)) return {};
  std::string_view value = bytes;
  if (value.size() > kMostBytes && !value.starts_with(kUtf8Mark)) return {};
  if (!value.empty()) value = RegEditTrim(value, value.size());
  switch (type) {
    case registry::kString:
      return FromBytes(value);
    case registry::kDword:
      return DwordText(value);
    default:
      return {};
  }
}

bool RegEdit::RegEditCreateKey(Hive hive, TextView path) {
  if (const OpenKey existing(registry_, registry_.Open(hive, path, registry::kMaximumAllowed)); existing)
    return false;
  const OpenKey root(registry_, registry_.Open(hive, u"", registry::kMaximumAllowed));
  if (!root) return false;
  const OpenKey created(registry_, registry_.Create(hive, path));
  return static_cast<bool>(created);
}

bool RegEdit::RegEditWrite(Hive hive, TextView path, TextView name, Text& value, std::uint32_t type,
                           long& length) {
  if (length == kWholeText) length = static_cast<long>(value.size());
  const OpenKey key(registry_, registry_.Open(hive, path, registry::kMaximumAllowed));
  const TextView stored = TextView(value).substr(0, static_cast<std::size_t>(std::max(length, 0L)));
  const bool written = key && registry_.Set(key.Handle(), name, type, ToBytes(stored));
  if (!written) value.clear();
  return written;
}

bool RegEdit::RegEditDelete(Hive hive, TextView path, TextView name) {
  const OpenKey key(registry_, registry_.Open(hive, path, registry::kMaximumAllowed));
  return key && registry_.Delete(key.Handle(), name);
}

bool RegEdit::CanSetValues(Hive hive, TextView path) {
  const OpenKey key(registry_, registry_.Open(hive, path, registry::kSetValue));
  return static_cast<bool>(key);
}

}  // namespace quillbox
