#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/linux/files/DiskSync.h"
#include "platform/linux/files/SystemCalls.h"

namespace quillbox {

// What starts with the session: a name stands for the entry NAME.desktop, in small letters, of the user's
// folder, and where the user has none, of the system's folders.
class AutostartFolder {
 public:
  AutostartFolder(std::shared_ptr<SystemCalls> calls, std::string folder,
                  std::vector<std::string> systemFolders);

  // The path of the program that is started; nothing for a name without an entry.
  std::optional<Text> Program(TextView name);
  // False if the entry can't be written, or the name is none for a file.
  bool Set(TextView name, TextView program, DiskSync& sync);
  // False if there is nothing under that name or it can't be taken away.
  bool Delete(TextView name, DiskSync& sync);
  bool Writable() const;

 private:
  struct Found {
    std::string entry;
    bool own = false;
  };
  std::optional<Found> Find(const std::string& file) const;
  bool Write(const std::string& file, const std::string& entry, DiskSync& sync) const;
  std::optional<std::string> Read(const std::string& path) const;

  std::shared_ptr<SystemCalls> calls_;
  std::string folder_;
  std::vector<std::string> systemFolders_;
};

}  // namespace quillbox
