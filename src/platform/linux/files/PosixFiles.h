#pragma once

#include <memory>

#include "platform/linux/files/DiskSync.h"
#include "platform/linux/files/SystemCalls.h"
#include "platform/ports/Files.h"

namespace quillbox {

// The data files on disk. Folders are made with mode 0700 and files with 0600, whatever the umask. Symbolic
// links are followed: a linked file stays linked, and a link that leads nowhere counts as no file until it is
// written. A path with a NUL in it leads nowhere.
class PosixFiles : public Files {
 public:
  PosixFiles() : PosixFiles(std::make_shared<SystemCalls>()) {}
  explicit PosixFiles(std::shared_ptr<SystemCalls> calls);

  // `folder` is made, with its parents, when a folder in it is made.
  void MakeOnDemand(const Text& folder);

  // A file that may not be looked at exists.
  bool Exists(const Text& path) override;
  // Regular files of at most 1 GiB.
  std::string Read(const Text& path) override;
  void MakeFolder(const Text& path) override;
  void WritePieces(const Text& path, const Content& content) override;
  void Rename(const Text& from, const Text& to) override;

 private:
  std::shared_ptr<SystemCalls> calls_;
  std::string onDemand_;
  DiskSync sync_;
};

}  // namespace quillbox
