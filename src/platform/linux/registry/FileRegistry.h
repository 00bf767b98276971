#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/files/DiskSync.h"
#include "platform/linux/registry/AutostartFolder.h"
#include "platform/linux/registry/RegStore.h"
#include "platform/ports/Registry.h"

namespace quillbox {

// The folders of the registry. They need not exist; the user's are made when something is written.
struct RegistryPlaces {
  std::string configHome;                    // holds quillbox/user.reg and quillbox/machine.reg
  std::vector<std::string> configDirs;       // may hold quillbox/machine.reg, an administrator's defaults
  std::string autostart;                     // the user's entries for the start of the session
  std::vector<std::string> systemAutostart;  // the system's

  static RegistryPlaces FromEnvironment();
};

// The registry in files of the format REGEDIT4. A value of the local machine that the user's file doesn't
// have is read from the administrators' files; deleting such a value marks it as deleted in the user's. The
// values of the key Run are entries in the autostart folder.
class FileRegistry : public Registry {
 public:
  explicit FileRegistry(const RegistryPlaces& places)
      : FileRegistry(places, std::make_shared<SystemCalls>()) {}
  FileRegistry(const RegistryPlaces& places, const std::shared_ptr<SystemCalls>& calls);

  std::optional<Key> Open(Hive hive, TextView path, std::uint32_t access) override;
  std::optional<Key> Create(Hive hive, TextView path) override;
  bool Query(Key key, TextView name, std::size_t maxBytes, std::uint32_t& type, std::string& bytes) override;
  bool Set(Key key, TextView name, std::uint32_t type, const std::string& bytes) override;
  bool Delete(Key key, TextView name) override;
  void Close(Key key) override;

 private:
  struct OpenKey {
    Hive hive = Hive::CurrentUser;
    Text path;    // with the hive's name
    Text folded;  // the same, as it is compared
    bool run = false;
  };

  RegStore& StoreOf(Hive hive) { return hive == Hive::CurrentUser ? user_ : machine_; }
  const OpenKey* Find(Key key) const;
  bool KeyExists(const OpenKey& key);
  // An administrator's value; nothing in the hive of the user.
  const RegDocument::Entry* Default(const OpenKey& key, const Text& foldedName);
  Key Keep(OpenKey key);

  RegStore user_;
  RegStore machine_;
  std::vector<RegStore> defaults_;
  AutostartFolder autostart_;
  DiskSync sync_;
  std::vector<std::optional<OpenKey>> open_;
};

}  // namespace quillbox
