#pragma once

#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "platform/ports/Registry.h"

namespace quillbox {

// Two hives in memory. The key of the programs that start with the system exists from the beginning.
class MemoryRegistry : public Registry {
 public:
  struct Value {
    std::uint32_t type = 0;
    std::string bytes;
  };

  MemoryRegistry() {
    for (const Hive hive : {Hive::CurrentUser, Hive::LocalMachine}) keys_[At(hive, {})];
    keys_[At(Hive::LocalMachine, u"Software\\Microsoft\\Windows\\CurrentVersion\\Run")];
  }

  std::optional<Key> Open(Hive hive, TextView path, std::uint32_t access) override {
    const auto key = keys_.find(At(hive, path));
    const bool forbidden = (access & registry::kSetValue) != 0 && denied.contains(hive);
    if (forbidden || key == keys_.end()) return {};
    open_[next_] = &*key;
    return next_++;
  }
  std::optional<Key> Create(Hive hive, TextView path) override {
    if (!denied.contains(hive)) keys_[At(hive, path)];
    return Open(hive, path, 0);
  }
  bool Query(Key key, TextView name, std::size_t maxBytes, std::uint32_t& type, std::string& bytes) override {
    const Value* const value = Look(open_.at(key)->second, name);
    if (!value || value->bytes.size() > maxBytes) return false;
    std::tie(type, bytes) = std::tie(value->type, value->bytes);
    return true;
  }
  bool Set(Key key, TextView name, std::uint32_t type, const std::string& bytes) override {
    auto& [place, values] = *open_.at(key);
    if (denied.contains(place.first)) return false;
    values[AsciiUpper(name)] = {type, bytes};
    return true;
  }
  bool Delete(Key key, TextView name) override {
    auto& [place, values] = *open_.at(key);
    return !denied.contains(place.first) && values.erase(AsciiUpper(name)) > 0;
  }
  void Close(Key key) override { open_.erase(key); }

  std::set<Hive> denied;  // in which the program may only read

  // From outside of the program, whatever it is denied. The key is made if need be.
  void Store(Hive hive, TextView path, TextView name, const Value& value) {
    keys_[At(hive, path)][AsciiUpper(name)] = value;
  }
  void Remove(Hive hive, TextView path, TextView name) {
    const auto key = keys_.find(At(hive, path));
    if (key != keys_.end()) key->second.erase(AsciiUpper(name));
  }
  // Null if there is none.
  const Value* Find(Hive hive, TextView path, TextView name) const {
    const auto key = keys_.find(At(hive, path));
    return key == keys_.end() ? nullptr : Look(key->second, name);
  }

 private:
  using Place = std::pair<Hive, Text>;   // a path in capitals
  using Values = std::map<Text, Value>;  // by name in capitals
  using Keys = std::map<Place, Values>;  // those between a key and its root are of no interest

  static Place At(Hive hive, TextView path) {
    path = path.substr(0, path.find(u'\0'));
    while (path.starts_with(u'\\')) path.remove_prefix(1);
    while (path.ends_with(u'\\')) path.remove_suffix(1);
    return {hive, AsciiUpper(path)};
  }
  static const Value* Look(const Values& values, TextView name) {
    const auto value = values.find(AsciiUpper(name));
    return value == values.end() ? nullptr : &value->second;
  }

  Keys keys_;
  std::map<Key, Keys::value_type*> open_;
  Key next_ = 1;
};

}  // namespace quillbox
