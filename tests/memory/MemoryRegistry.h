#pragma once

#include <map>

#include "platform/ports/Registry.h"

namespace quillbox {

// Two hives in memory. The key of the programs that start with the system exists from the beginning.
class MemoryRegistry : public Registry {
 public:
  struct Value {
    std::uint32_t type = 0;
    std::string bytes;
  };

  MemoryRegistry();
  std::optional<Key> Open(Hive hive, TextView path, std::uint32_t access) override;
  std::optional<Key> Create(Hive hive, TextView path) override;
  bool Query(Key key, TextView name, std::size_t maxBytes, std::uint32_t& type, std::string& bytes) override;
  bool Set(Key key, TextView name, std::uint32_t type, const std::string& bytes) override;
  bool Delete(Key key, TextView name) override;
  void Close(Key key) override { open_.erase(key); }

  // The program may only read in that hive.
  void Deny(Hive hive, bool denied) { Of(hive).denied = denied; }

  // From outside of the program, whatever it is denied.
  void Store(Hive hive, TextView path, TextView name, const Value& value);
  std::optional<Value> Find(Hive hive, TextView path, TextView name) const;
  void Remove(Hive hive, TextView path, TextView name);

 private:
  using Values = std::map<Text, Value>;  // by name in capitals
  struct Branch {
    bool denied = false;
    std::map<Text, Values> keys;  // by path in capitals
  };
  struct Handle {
    Branch* branch;
    Text path;
  };

  Branch& Of(Hive hive) { return hive == Hive::CurrentUser ? user_ : machine_; }
  const Branch& Of(Hive hive) const { return hive == Hive::CurrentUser ? user_ : machine_; }
  static Text Normal(TextView path);
  // The key with its missing parents.
  static Values& Make(Branch& branch, const Text& path);
  Key Hand(Branch& branch, const Text& path);
  // The values of an open key; null if there is none, or no right to change them.
  Values* Writable(Key key);

  Branch user_;
  Branch machine_;
  std::map<Key, Handle> open_;
  Key next_ = 1;
};

}  // namespace quillbox
