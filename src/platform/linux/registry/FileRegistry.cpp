#include "platform/linux/registry/FileRegistry.h"

#include <algorithm>

#include "base/CodePage.h"
#include "platform/linux/system/XdgFolders.h"

namespace quillbox {
namespace {

constexpr TextView kUserHive = u"HKEY_CURRENT_USER";
constexpr TextView kMachineHive = u"HKEY_LOCAL_MACHINE";
constexpr TextView kRunKey = u"hkey_local_machine\\software\\microsoft\\windows\\currentversion\\run";

// Path below the root as one with the hive, each key behind one backslash. Nothing for a path with a NUL
// within.
std::optional<Text> WithHive(Hive hive, TextView path) {
  while (path.ends_with(u'\0')) path.remove_suffix(1);
  if (path.find(u'\0') != TextView::npos) return std::nullopt;
  Text result(hive == Hive::CurrentUser ? kUserHive : kMachineHive);
  while (!path.empty()) {
    const TextView part = path.substr(0, path.find(u'\\'));
    if (!part.empty()) result.append(1, u'\\').append(part);
    path.remove_prefix(std::min(path.size(), part.size() + 1));
  }
  return result;
}

std::string FileIn(const std::string& configFolder, const char* name) {
  return configFolder + "/quillbox/" + name;
}

}  // namespace

RegistryPlaces RegistryPlaces::FromEnvironment() {
  RegistryPlaces places;
  places.configHome = xdg::ConfigHome();
  places.configDirs = xdg::ConfigDirs();
  places.autostart = places.configHome + "/autostart";
  for (const std::string& folder : places.configDirs) places.systemAutostart.push_back(folder + "/autostart");
  return places;
}

FileRegistry::FileRegistry(const RegistryPlaces& places, const std::shared_ptr<SystemCalls>& calls)
    : user_(calls, FileIn(places.configHome, "user.reg")),
      machine_(calls, FileIn(places.configHome, "machine.reg")),
      autostart_(calls, places.autostart, places.systemAutostart),
      sync_(calls) {
  for (const std::string& folder : places.configDirs)
    defaults_.emplace_back(calls, FileIn(folder, "machine.reg"));
}

const FileRegistry::OpenKey* FileRegistry::Find(Key key) const {
  const auto index = static_cast<std::size_t>(key);
  return key >= 0 && index < open_.size() && open_[index] ? &*open_[index] : nullptr;
}

FileRegistry::Key FileRegistry::Keep(OpenKey key) {
  auto place = std::find(open_.begin(), open_.end(), std::nullopt);
  if (place == open_.end()) place = open_.emplace(place);
  *place = std::move(key);
  return static_cast<Key>(place - open_.begin());
}

bool FileRegistry::KeyExists(const OpenKey& key) {
  const auto holds = [&](const RegDocument& document) { return document.HasKey(key.folded); };
  if (key.folded.find(u'\\') == Text::npos || holds(StoreOf(key.hive).Current())) return true;
  if (key.hive == Hive::CurrentUser) return false;
  if (key.run || kRunKey.starts_with(key.folded + u'\\')) return true;
  return std::any_of(defaults_.begin(), defaults_.end(),
                     [&](RegStore& store) { return holds(store.Current()); });
}

std::optional<FileRegistry::Key> FileRegistry::Open(Hive hive, TextView path, std::uint32_t access) {
  const std::optional<Text> whole = WithHive(hive, path);
  if (!whole) return std::nullopt;
  OpenKey key{hive, *whole, FoldCase(*whole), false};
  key.run = key.folded == kRunKey;
  if (!KeyExists(key)) return std::nullopt;
  if ((access & registry::kSetValue) != 0 && !(key.run ? autostart_.Writable() : StoreOf(hive).Writable())) {
    return std::nullopt;
  }
  return Keep(std::move(key));
}

std::optional<FileRegistry::Key> FileRegistry::Create(Hive hive, TextView path) {
  if (const std::optional<Key> key = Open(hive, path, registry::kMaximumAllowed)) return key;
  const std::optional<Text> whole = WithHive(hive, path);
  if (!whole) return std::nullopt;
  const auto add = [&](const RegDocument& document) { return document.WithKey(*whole); };
  if (!StoreOf(hive).Change(add, sync_)) return std::nullopt;
  return Keep({hive, *whole, FoldCase(*whole), false});
}

const RegDocument::Entry* FileRegistry::Default(const OpenKey& key, const Text& foldedName) {
  if (key.hive == Hive::CurrentUser) return nullptr;
  for (RegStore& store : defaults_) {
    const RegDocument::Entry* entry = store.Current().Find(key.folded, foldedName);
    if (entry != nullptr) return entry->deleted ? nullptr : entry;
  }
  return nullptr;
}

bool FileRegistry::Query(Key key, TextView name, std::size_t maxBytes, std::uint32_t& type,
                         std::string& bytes) {
  const OpenKey* open = Find(key);
  if (open == nullptr) return false;
  if (open->run) {
    const std::optional<Text> program = autostart_.Program(name);
    std::string found = program ? ToBytes(*program) : std::string();
    if (!program || found.size() > maxBytes) return false;
    type = registry::kString;
    bytes = std::move(found);
    return true;
  }
  const Text folded = FoldCase(name);
  const RegDocument::Entry* entry = StoreOf(open->hive).Current().Find(open->folded, folded);
  if (entry == nullptr) entry = Default(*open, folded);
  if (entry == nullptr || entry->deleted || entry->bytes.size() > maxBytes) return false;
  type = entry->type;
  bytes = entry->bytes;
  return true;
}

bool FileRegistry::Set(Key key, TextView name, std::uint32_t type, const std::string& bytes) {
  const OpenKey* open = Find(key);
  if (open == nullptr) return false;
  if (open->run) {
    std::string_view program = bytes;
    if (program.ends_with('\0')) program.remove_suffix(1);
    return type == registry::kString && autostart_.Set(name, FromBytes(program), sync_);
  }
  const Text folded = FoldCase(name);
  const auto holds = [&](const RegDocument& document) {
    const RegDocument::Entry* old = document.Find(open->folded, folded);
    return old != nullptr && !old->deleted && old->type == type && old->bytes == bytes;
  };
  RegStore& store = StoreOf(open->hive);
  if (holds(store.Current())) return true;
  const RegDocument::Entry entry{Text(name), false, type, bytes};
  return store.Change([&](const RegDocument& document) { return document.WithEntry(open->path, entry); },
                      sync_);
}

bool FileRegistry::Delete(Key key, TextView name) {
  const OpenKey* open = Find(key);
  if (open == nullptr) return false;
  if (open->run) return autostart_.Delete(name, sync_);
  const Text folded = FoldCase(name);
  return StoreOf(open->hive)
      .Change(
          [&](const RegDocument& document) -> std::optional<std::string> {
            const RegDocument::Entry* own = document.Find(open->folded, folded);
            if (own != nullptr && own->deleted) return std::nullopt;
            if (Default(*open, folded) != nullptr)
              return document.WithEntry(open->path, {Text(name), true, 0, {}});
            return own != nullptr ? document.WithoutEntry(open->path, name) : std::nullopt;
          },
          sync_);
}

void FileRegistry::Close(Key key) {
  if (Find(key) != nullptr) open_[static_cast<std::size_t>(key)].reset();
}

}  // namespace quillbox
