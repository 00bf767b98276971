#pragma once

#include <sys/stat.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/files/DiskSync.h"
#include "platform/linux/files/SystemCalls.h"
#include "platform/linux/registry/RegDocument.h"

namespace quillbox {

// One registry file on disk, kept parsed for as long as it stays the same.
class RegStore {
 public:
  // The new text of the file; nothing if the change can't be made.
  using Edit = std::function<std::optional<std::string>(const RegDocument&)>;

  RegStore(std::shared_ptr<SystemCalls> calls, std::string path);

  // The file as it is now; empty if it is missing or can't be read. Costs one stat while nothing changes.
  const RegDocument& Current();
  // Reads the file afresh, changes it and replaces it, under a lock that is waited for a second at most.
  // False if that fails; the file is then as it was.
  bool Change(const Edit& edit, DiskSync& sync);
  // Whether a change could be written.
  bool Writable() const;

 private:
  void Load();

  std::shared_ptr<SystemCalls> calls_;
  std::string path_;
  RegDocument document_;
  struct stat stamp_ {};   // of the file that was parsed; zero for a missing one
  bool trusted_ = false;   // the same stamp means the same content
  bool readable_ = false;  // missing, or read whole
};

// Whether the file could be written, or made, with its folders.
bool CanWriteFile(std::string path);

}  // namespace quillbox
