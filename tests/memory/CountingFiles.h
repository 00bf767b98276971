#pragma once

#include <map>

#include "platform/linux/files/PosixFiles.h"

namespace quillbox {

// The files on disk, with a count of the writes that succeeded, by file name.
class CountingFiles : public Files {
 public:
  bool Exists(const Text& path) override { return files_.Exists(path); }
  std::string Read(const Text& path) override { return files_.Read(path); }
  void MakeFolder(const Text& path) override { files_.MakeFolder(path); }
  void WritePieces(const Text& path, const Content& content) override {
    files_.WritePieces(path, content);
    ++writes_[path.substr(path.rfind(u'/') + 1)];
  }
  void Rename(const Text& from, const Text& to) override { files_.Rename(from, to); }

  // `name` without a folder.
  int Writes(const Text& name) const {
    const auto found = writes_.find(name);
    return found == writes_.end() ? 0 : found->second;
  }

 private:
  PosixFiles files_;
  std::map<Text, int> writes_;
};

}  // namespace quillbox
