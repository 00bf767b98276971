#include "memory/MemoryRegistry.h"

namespace quillbox {

MemoryRegistry::MemoryRegistry() {
  Make(user_, {});
  Make(machine_, Normal(u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"));
}

Text MemoryRegistry::Normal(TextView path) {
  path = path.substr(0, path.find(u'\0'));
  while (!path.empty() && path.front() == u'\\') path.remove_prefix(1);
  while (!path.empty() && path.back() == u'\\') path.remove_suffix(1);
  return AsciiUpper(path);
}

MemoryRegistry::Values& MemoryRegistry::Make(Branch& branch, const Text& path) {
  branch.keys.try_emplace({});
  for (std::size_t at = path.find(u'\\'); at != Text::npos; at = path.find(u'\\', at + 1)) {
    branch.keys.try_emplace(path.substr(0, at));
  }
  return branch.keys[path];
}

Registry::Key MemoryRegistry::Hand(Branch& branch, const Text& path) {
  open_[next_] = {&branch, path};
  return next_++;
}

std::optional<Registry::Key> MemoryRegistry::Open(Hive hive, TextView path, std::uint32_t access) {
  Branch& branch = Of(hive);
  const Text normal = Normal(path);
  if (branch.keys.count(normal) == 0) return {};
  if (branch.denied && (access & registry::kSetValue) != 0) return {};
  return Hand(branch, normal);
}

std::optional<Registry::Key> MemoryRegistry::Create(Hive hive, TextView path) {
  Branch& branch = Of(hive);
  const Text normal = Normal(path);
  if (branch.keys.count(normal) == 0) {
    if (branch.denied) return {};
    Make(branch, normal);
  }
  return Hand(branch, normal);
}

bool MemoryRegistry::Query(Key key, TextView name, std::size_t maxBytes, std::uint32_t& type,
                           std::string& bytes) {
  if (open_.count(key) == 0) return false;
  const Values& values = open_[key].branch->keys[open_[key].path];
  const auto found = values.find(AsciiUpper(name));
  if (found == values.end() || found->second.bytes.size() > maxBytes) return false;
  type = found->second.type;
  bytes = found->second.bytes;
  return true;
}

MemoryRegistry::Values* MemoryRegistry::Writable(Key key) {
  if (open_.count(key) == 0 || open_[key].branch->denied) return nullptr;
  return &open_[key].branch->keys[open_[key].path];
}

bool MemoryRegistry::Set(Key key, TextView name, std::uint32_t type, const std::string& bytes) {
  Values* const values = Writable(key);
  if (values) (*values)[AsciiUpper(name)] = {type, bytes};
  return values != nullptr;
}

bool MemoryRegistry::Delete(Key key, TextView name) {
  Values* const values = Writable(key);
  return values && values->erase(AsciiUpper(name)) > 0;
}

void MemoryRegistry::Store(Hive hive, TextView path, TextView name, const Value& value) {
  Make(Of(hive), Normal(path))[AsciiUpper(name)] = value;
}

std::optional<MemoryRegistry::Value> MemoryRegistry::Find(Hive hive, TextView path, TextView name) const {
  const Branch& branch = Of(hive);
  const auto key = branch.keys.find(Normal(path));
  if (key == branch.keys.end()) return {};
  const auto found = key->second.find(AsciiUpper(name));
  return found == key->second.end() ? std::nullopt : std::optional(found->second);
}

void MemoryRegistry::Remove(Hive hive, TextView path, TextView name) {
  const auto key = Of(hive).keys.find(Normal(path));
  if (key != Of(hive).keys.end()) key->second.erase(AsciiUpper(name));
}

}  // namespace quillbox
