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
    Make({Hive::CurrentUser, {}});
    Make(At(Hive::LocalMachine, u"Software\\Microsoft\\Windows\\CurrentVersion\\Run"));
  }

  std::optional<Key> Open(Hive hive, TextView path, std::uint32_t access) override {
    const Place place = At(hive, path);
    const bool forbidden = (access & registry::kSetValue) != 0 && denied.contains(hive);
    if (forbidden || !keys_.contains(place)) return {};
    open_[next_] = place;
    return next_++;
  }
  std::optional<Key> Create(Hive hive, TextView path) override {
    if (!denied.contains(hive)) Make(At(hive, path));
    return Open(hive, path, 0);
  }
  bool Query(Key key, TextView name, std::size_t maxBytes, std::uint32_t& type, std::string& bytes) override {
    const auto place = open_.find(key);
    const Value* const value = place == open_.end() ? nullptr : Look(place->second, name);
    if (!value || value->bytes.size() > maxBytes) return false;
    std::tie(type, bytes) = std::tie(value->type, value->bytes);
    return true;
  }
  bool Set(Key key, TextView name, std::uint32_t type, const std::string& bytes) override {
    if (!MayWrite(key)) return false;
    keys_[open_[key]][AsciiUpper(name)] = {type, bytes};
    return true;
  }
  bool Delete(Key key, TextView name) override {
    return MayWrite(key) && keys_[open_[key]].erase(AsciiUpper(name)) > 0;
  }
  void Close(Key key) override { open_.erase(key); }

  std::set<Hive> denied;  // in which the program may only read

  // From outside of the program, whatever it is denied. The key is made with its missing parents.
  void Store(Hive hive, TextView path, TextView name, const Value& value) {
    Make(At(hive, path))[AsciiUpper(name)] = value;
  }
  // Null if there is none.
  const Value* Find(Hive hive, TextView path, TextView name) const { return Look(At(hive, path), name); }
  void Remove(Hive hive, TextView path, TextView name) {
    const auto key = keys_.find(At(hive, path));
    if (key != keys_.end()) key->second.erase(AsciiUpper(name));
  }

 private:
  using Place = std::pair<Hive, Text>;   // a path in capitals
  using Values = std::map<Text, Value>;  // by name in capitals

  static Place At(Hive hive, TextView path) {
    path = path.substr(0, path.find(u'\0'));
    while (path.starts_with(u'\\')) path.remove_prefix(1);
    while (path.ends_with(u'\\')) path.remove_suffix(1);
    return {hive, AsciiUpper(path)};
  }
  Values& Make(const Place& place) {
    const auto& [hive, path] = place;
    keys_.try_emplace({hive, {}});
    for (std::size_t at = path.find(u'\\'); at != Text::npos; at = path.find(u'\\', at + 1)) {
      keys_.try_emplace({hive, path.substr(0, at)});
    }
    return keys_[place];
  }
  const Value* Look(const Place& place, TextView name) const {
    const auto key = keys_.find(place);
    if (key == keys_.end()) return nullptr;
    const auto value = key->second.find(AsciiUpper(name));
    return value == key->second.end() ? nullptr : &value->second;
  }
  bool MayWrite(Key key) const { return open_.contains(key) && !denied.contains(open_.at(key).first); }

  std::map<Place, Values> keys_;
  std::map<Key, Place> open_;
  Key next_ = 1;
};

}  // namespace quillbox
