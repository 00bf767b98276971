#pragma once

#include <map>

#include "platform/linux/files/PosixFiles.h"

namespace quillbox {

// The files on disk, with a count of the writes that succeeded, by file name.
class CountingFiles : public PosixFiles {
 public:
  void WritePieces(const Text& path, const Content& content) override {
    PosixFiles::WritePieces(path, content);
    ++writes_[path.substr(path.rfind(u'/') + 1)];
  }

  // `name` without a folder.
  int Writes(const Text& name) const { return writes_.contains(name) ? writes_.at(name) : 0; }

 private:
  std::map<Text, int> writes_;
};

}  // namespace quillbox
