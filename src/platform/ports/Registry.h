#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Text.h"

namespace quillbox {

enum class Hive : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

namespace registry {
inline constexpr std::uint32_t kSetValue = 2;                // access: set values
inline constexpr std::uint32_t kMaximumAllowed = 0x2000000;  // access: whatever is allowed
inline constexpr std::uint32_t kString = 1;                  // value type REG_SZ
inline constexpr std::uint32_t kDword = 4;                   // value type REG_DWORD
}  // namespace registry

// Typed byte values under named keys. Names of keys and values are compared without regard to (ASCII) case; a
// path separates its keys by backslashes. Nothing throws: a failure is an empty result or false.
class Registry {
 public:
  using Key = int;  // a handle, from Open or Create until Close
  virtual ~Registry() = default;
  // An existing key; an empty path is the hive's root. Fails for kSetValue where values can't be set.
  virtual std::optional<Key> Open(Hive hive, TextView path, std::uint32_t access) = 0;
  // Opens the key below the hive's root, and creates it with its missing parents first if need be.
  virtual std::optional<Key> Create(Hive hive, TextView path) = 0;
  // Type and bytes of a value; false if it is missing or longer than `maxBytes`.
  virtual bool Query(Key key, TextView name, std::size_t maxBytes, std::uint32_t& type,
                     std::string& bytes) = 0;
  virtual bool Set(Key key, TextView name, std::uint32_t type, const std::string& bytes) = 0;
  virtual bool Delete(Key key, TextView name) = 0;
  virtual void Close(Key key) = 0;
};

}  // namespace quillbox
